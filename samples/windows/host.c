/* A host of the map control in C: a window of the system's own control host with the map in it, and a triangle on the map.

   Build:  x86_64-w64-mingw32-gcc -municode -mwindows host.c -o host.exe -lole32 -loleaut32 -luuid
   Run:    host.exe          shows the window
           host.exe /once    shows it, writes what it read to host.txt, and ends; exit status 0 when all went well */
#define COBJMACROS
#include <windows.h>
#include <oleauto.h>
#include <stdio.h>

typedef BOOL(WINAPI* AtlAxWinInitFn)(void);
typedef HRESULT(WINAPI* AtlAxGetControlFn)(HWND, IUnknown**);

/* Calls a member by its name. Arguments stand from last to first, as COM has them. */
static HRESULT Call(IDispatch* map, LPOLESTR name, WORD flags, VARIANT* args, UINT count, VARIANT* result) {
    DISPID dispid = 0;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params = {args, NULL, count, 0};
    HRESULT done = IDispatch_GetIDsOfNames(map, &IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &dispid);
    if (FAILED(done)) return done;
    if (flags == DISPATCH_PROPERTYPUT) {
        params.rgdispidNamedArgs = &put;
        params.cNamedArgs = 1;
    }
    return IDispatch_Invoke(map, dispid, &IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result, NULL, NULL);
}

static VARIANT Number(LONG value) {
    VARIANT v;
    VariantInit(&v);
    V_VT(&v) = VT_I4;
    V_I4(&v) = value;
    return v;
}

static VARIANT Text(LPCOLESTR value) {
    VARIANT v;
    VariantInit(&v);
    V_VT(&v) = VT_BSTR;
    V_BSTR(&v) = SysAllocString(value);
    return v;
}

static VARIANT Doubles(const double* values, LONG count) {
    VARIANT v;
    LONG i;
    VariantInit(&v);
    V_VT(&v) = VT_ARRAY | VT_R8;
    V_ARRAY(&v) = SafeArrayCreateVector(VT_R8, 0, (ULONG)count);
    for (i = 0; i < count; ++i) SafeArrayPutElement(V_ARRAY(&v), &i, (void*)&values[i]);
    return v;
}

/* A layer "Parks" of polygons, and a triangle in it. Returns the number of points that the control then tells. */
static LONG MakeMap(IDispatch* map) {
    const double x[] = {0, 100, 50, 0};
    const double y[] = {0, 0, 100, 0};
    const double z[] = {0, 0, 0, 0};
    LONG told[4] = {0, 0, -1, 0};
    VARIANT layer[] = {Number(0), Number(3), Number(1), Text(L"Parks")};
    VARIANT points[] = {Doubles(z, 4), Doubles(y, 4), Doubles(x, 4), Number(0), Number(7), Number(1), Text(L"Parks")};
    VARIANT info[7];
    int i;
    Call(map, L"OrvInit", DISPATCH_METHOD, NULL, 0, NULL);
    Call(map, L"OrvAddLayer", DISPATCH_METHOD, layer, 4, NULL);
    Call(map, L"OrvAddDatEx", DISPATCH_METHOD, points, 7, NULL);
    for (i = 0; i < 4; ++i) {  /* places for the four results */
        VariantInit(&info[i]);
        V_VT(&info[i]) = VT_BYREF | VT_I4;
        V_I4REF(&info[i]) = &told[3 - i];
    }
    info[4] = Number(7);
    info[5] = Number(1);
    info[6] = Text(L"Parks");
    Call(map, L"OrvGetDatInfoEx", DISPATCH_METHOD, info, 7, NULL);
    for (i = 0; i < 4; ++i) VariantClear(&layer[i]);
    for (i = 0; i < 7; ++i) VariantClear(&points[i]);
    VariantClear(&info[6]);
    return told[2];
}

static void Pump(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    MSG message;
    do {
        while (PeekMessageW(&message, NULL, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        Sleep(5);
    } while (GetTickCount() - start < milliseconds);
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE before, PWSTR arguments, int show) {
    const BOOL once = wcsstr(arguments, L"/once") != NULL;
    HMODULE atl = LoadLibraryW(L"atl.dll");
    AtlAxWinInitFn init = atl ? (AtlAxWinInitFn)(void*)GetProcAddress(atl, "AtlAxWinInit") : NULL;
    AtlAxGetControlFn get = atl ? (AtlAxGetControlFn)(void*)GetProcAddress(atl, "AtlAxGetControl") : NULL;
    IUnknown* object = NULL;
    IDispatch* map = NULL;
    LONG points = -1;
    HWND window;
    (void)before;
    OleInitialize(NULL);
    if (init == NULL || get == NULL || !init()) return 2;
    window = CreateWindowExW(0, L"AtlAxWin", L"ORVANE4.Orvane4Ctrl.1", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 640, 480,
                             NULL, NULL, instance, NULL);
    if (window == NULL || FAILED(get(window, &object)) || object == NULL) {
        if (!once)
            MessageBoxW(NULL, L"The map control cannot be created. Was register.cmd run, for this width?", L"host", MB_ICONSTOP);
        return 3;
    }
    ShowWindow(window, show);
    if (SUCCEEDED(IUnknown_QueryInterface(object, &IID_IDispatch, (void**)&map))) {
        points = MakeMap(map);
        Pump(100); /* the first paint makes the picture that the next call fits the data into */
        Call(map, L"OrvDspFit", DISPATCH_METHOD, NULL, 0, NULL);
    }
    while (!once && IsWindow(window)) {
        MSG message;
        if (GetMessageW(&message, NULL, 0, 0) <= 0) break;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (map != NULL) IDispatch_Release(map);
    IUnknown_Release(object);
    if (IsWindow(window)) DestroyWindow(window);
    OleUninitialize();
    if (once) {
        FILE* out = fopen("host.txt", "w");
        if (out != NULL) {
            fprintf(out, "feature 7 has %ld points\n", (long)points);
            fclose(out);
        }
    }
    return points == 4 ? 0 : 1;
}
