#include "tests/ocx/client.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include "hosts/ocx/guids.h"
#include "hosts/ocx/wide_text.h"

namespace orvane::test {

namespace {

std::atomic<ULONGLONG> due{0};
std::atomic<const char*> what{""};

void Watch() {
    for (;;) {
        Sleep(100);
        const ULONGLONG at = due;
        if (at == 0 || GetTickCount64() < at) continue;
        std::printf("FAILED: out of time in %s\n", what.load());
        std::fflush(stdout);
        TerminateProcess(GetCurrentProcess(), 99);
    }
}

Value Reference(VARTYPE type, void* place) {
    Value value;
    value.v.vt = static_cast<VARTYPE>(VT_BYREF | type);
    value.v.byref = place;
    return value;
}

template <class T>
Value ArrayOfPlain(VARTYPE type, std::initializer_list<T> values) {
    Value value;
    SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(values.size()));
    long i = 0;
    for (T each : values) {
        SafeArrayPutElement(array, &i, &each);
        ++i;
    }
    value.v.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    value.v.parray = array;
    return value;
}

}  // namespace

Deadline::Deadline(const char* name, unsigned seconds) : whatBefore_(what), dueBefore_(due) {
    static const bool watched = (std::thread(Watch).detach(), true);
    (void)watched;
    what = name;
    due = GetTickCount64() + 1000ULL * seconds;
}

Deadline::~Deadline() {
    what = whatBefore_;
    due = dueBefore_;
}

std::wstring Value::Text() const {
    const Value text = As(VT_BSTR);
    return std::wstring(View(text.v.bstrVal));
}

Value Value::As(VARTYPE type) const {
    Value converted;
    const HRESULT done = VariantChangeTypeEx(&converted.v, const_cast<VARIANT*>(&v), LOCALE_INVARIANT, 0, type);
    EXPECT_EQ(done, S_OK) << "a value of type " << v.vt << " is no " << type;
    return converted;
}

Value Ref(long& n) { return Reference(VT_I4, &n); }
Value Ref(short& n) { return Reference(VT_I2, &n); }
Value Ref(double& d) { return Reference(VT_R8, &d); }
Value Ref(BSTR& text) { return Reference(VT_BSTR, &text); }
Value Ref(VARIANT& value) { return Reference(VT_VARIANT, &value); }
Value Ref(SAFEARRAY*& array, VARTYPE type) { return Reference(static_cast<VARTYPE>(VT_ARRAY | type), &array); }

Value Doubles(std::initializer_list<double> values) { return ArrayOfPlain(VT_R8, values); }
Value Longs(std::initializer_list<long> values) { return ArrayOfPlain(VT_I4, values); }

Value Variants(std::initializer_list<Value> values) {
    Value value;
    value.v.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
    value.v.vt = VT_ARRAY | VT_VARIANT;
    long i = 0;
    for (const Value& each : values) {
        SafeArrayPutElement(value.v.parray, &i, const_cast<VARIANT*>(&each.v));
        ++i;
    }
    return value;
}

Value Element(const VARIANT& array, long index) {
    Value element;
    if ((array.vt & VT_ARRAY) == 0) return element;
    if ((array.vt & ~VT_ARRAY) == VT_VARIANT) {
        EXPECT_EQ(SafeArrayGetElement(array.parray, &index, &element.v), S_OK);
    } else {
        element.v.vt = static_cast<VARTYPE>(array.vt & ~VT_ARRAY);
        EXPECT_EQ(SafeArrayGetElement(array.parray, &index, &element.v.byref), S_OK);
    }
    return element;
}

long CountOf(const VARIANT& array) {
    if ((array.vt & VT_ARRAY) == 0 || array.parray == nullptr || SafeArrayGetDim(array.parray) != 1) return -1;
    return static_cast<long>(array.parray->rgsabound[0].cElements);
}

Client Client::New() {
    const Deadline deadline("making a control");
    CLSID clsid{};
    EXPECT_EQ(CLSIDFromProgID(L"ORVANE4.Orvane4Ctrl.1", &clsid), S_OK) << "the control is not registered";
    void* made = nullptr;
    const HRESULT done = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &made);
    EXPECT_EQ(done, S_OK);
    Com<IDispatch> object;
    if (done == S_OK) *object.Out() = static_cast<IDispatch*>(made);
    return Client(std::move(object));
}

DISPID Client::IdOf(const wchar_t* name) {
    DISPID dispid = DISPID_UNKNOWN;
    auto* text = const_cast<LPOLESTR>(name);
    object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &dispid);
    return dispid;
}

HRESULT Client::Try(const wchar_t* name, WORD flags, const std::vector<Value>& args, Value* result) {
    const Deadline deadline("a call");
    const DISPID dispid = IdOf(name);
    std::vector<VARIANT> params;
    for (const Value& each : args) params.insert(params.begin(), each.v);
    DISPID putName = DISPID_PROPERTYPUT;
    const bool put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS passed{params.data(), put ? &putName : nullptr, static_cast<UINT>(params.size()), put ? 1U : 0U};
    Value ignored;
    exception = EXCEPINFO{};
    argError = 0xFFFF;
    VARIANT* answer = put ? nullptr : (result == nullptr ? &ignored.v : &result->v);
    return object_->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, flags, &passed, answer, &exception, &argError);
}

Value Client::Call(const wchar_t* name, std::initializer_list<Value> args) {
    Value result;
    EXPECT_EQ(Try(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, args, &result), S_OK);
    return result;
}

void Client::PutAt(const wchar_t* name, std::initializer_list<Value> index, const Value& value) {
    std::vector<Value> args(index);
    args.push_back(value);
    EXPECT_EQ(Try(name, DISPATCH_PROPERTYPUT, args), S_OK);
}

void Client::MakeTriangle() {
    EXPECT_TRUE(Call(L"OrvInit").Bool());
    EXPECT_TRUE(Call(L"OrvAddLayer", {L"A", 3, 3, 0}).Bool());
    EXPECT_TRUE(Call(L"OrvAddDatEx", {L"A", 3, 7, 0, Doubles({0, 100, 50}), Doubles({0, 0, 100}), Doubles({1, 2, 3})}).Bool());
}

void ComTest::Pump(unsigned milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    do {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (milliseconds > 0) Sleep(5);
    } while (GetTickCount64() < end);
}

BoxCloser::BoxCloser() : thread_([this] { Run(); }) {}

BoxCloser::~BoxCloser() {
    ends_ = true;
    thread_.join();
}

void BoxCloser::Run() {
    while (!ends_) {
        for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr;) {
            DWORD process = 0;
            GetWindowThreadProcessId(box, &process);
            if (process != GetCurrentProcessId() || !IsWindowVisible(box)) continue;
            wchar_t text[512] = L"";
            GetDlgItemTextW(box, 0xFFFF, text, 512);
            texts_.emplace_back(text);
            PostMessageW(box, WM_COMMAND, IDOK, 0);
            while (IsWindow(box) && !ends_) Sleep(10);
            break;
        }
        Sleep(20);
    }
}

std::wstring OwnFolder() {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring whole = path;
    return whole.substr(0, whole.find_last_of(L'\\') + 1);
}

std::wstring ControlFile() { return OwnFolder() + L"orvane4.ocx"; }

}  // namespace orvane::test
