// Making and ending controls again and again, and calls from other apartments.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <thread>

#include "tests/ocx/container.h"
#include "tests/win32/handle_probe.h"
// they bring the system headers, which come first
#include <psapi.h>

namespace orvane::test {
namespace {

class LifetimeTest : public ComTest {
protected:
    /// What a map does in a day: every kind of member and every way to a picture once.
    static void UseEveryKindOfMember(int round);
};

/// What the process holds. Not every system counts handles for a process, so they are probed.
struct Use {
    double memory_kb = 0;
    std::uintptr_t kernel = 0;
    std::uintptr_t gdi = 0;
    std::uintptr_t user = 0;
};

Use UseNow() {
    PROCESS_MEMORY_COUNTERS memory{};
    memory.cb = sizeof memory;
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    Use use;
    use.memory_kb = static_cast<double>(memory.WorkingSetSize) / 1024;
    use.kernel = ProbeKernelHandles();
    use.gdi = ProbeGdiHandles();
    use.user = ProbeUserHandles();
    return use;
}

int CycleCnt() {
    const char* told = std::getenv("ORVANE_CYCLES");
    return told == nullptr ? 300 : std::atoi(told);
}

TEST_F(LifetimeTest, thousands_of_controls_leave_memory_and_handles_as_they_were) {
    const int cycles = CycleCnt();
    const Deadline deadline("the cycles", 1500);
    Use early;
    Container* form = nullptr;
    for (int i = 0; i < cycles; ++i) {
        form = new Container(200, 150);
        form->Connect();
        ASSERT_EQ(form->Activate(OLEIVERB_UIACTIVATE), S_OK);
        form->control.MakeTriangle();
        Pump();
        form->control.Call(L"OrvDspFit");
        form->Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 50, 50);
        form->Mouse(WM_LBUTTONUP, 0, 50, 50);
        ASSERT_EQ(form->References() > 1, true);
        form->Close();
        ASSERT_EQ(form->References(), 1U);
        delete form;
        Pump();
        if (i == 99) early = UseNow();
    }
    const Use late = UseNow();
    RecordProperty("cycles", cycles);
    std::printf("cycle 100: %.0f kB, handles %zu %zu %zu; cycle %d: %.0f kB, handles %zu %zu %zu\n", early.memory_kb,
                early.kernel, early.gdi, early.user, cycles, late.memory_kb, late.kernel, late.gdi, late.user);
    EXPECT_LT(std::fabs(late.memory_kb - early.memory_kb), early.memory_kb / 100);
    EXPECT_LE(static_cast<double>(late.kernel), static_cast<double>(early.kernel) * 1.01);
    EXPECT_LE(static_cast<double>(late.gdi), static_cast<double>(early.gdi) * 1.01);
    EXPECT_LE(static_cast<double>(late.user), static_cast<double>(early.user) * 1.01);
}

void LifetimeTest::UseEveryKindOfMember(int round) {
    Container form(200, 150);
    form.Connect();
    ASSERT_EQ(form.Activate(), S_OK);
    Client& map = form.control;
    map.MakeTriangle();
    Pump();
    const std::wstring file = OwnFolder() + L"leak" + std::to_wstring(GetCurrentProcessId()) + L".Ovb";
    map.Call(L"OrvPutOFileB", {file, L""});
    map.Call(L"OrvInit");
    EXPECT_TRUE(map.Call(L"OrvGetOFileB", {file}).Bool());
    for (const wchar_t* ending : {L"vb", L"vl", L"vi"}) DeleteFileW((file.substr(0, file.size() - 2) + ending).c_str());
    EXPECT_TRUE(map.Call(L"OrvAddLayer", {L"T", 3, 5, 0}).Bool());
    EXPECT_TRUE(map.Call(L"OrvAddDatEx", {L"T", 3, 1, 0, Doubles({40}), Doubles({30}), Doubles({0})}).Bool());
    EXPECT_TRUE(map.Call(L"OrvSetDatString", {L"T", 3, 1, 40.0, 30.0, L"\x6771\x4eac"}).Bool());
    const int figure = map.Call(L"OrvMakeOrgDatEx", {3, 1 + round % 40, round * 7919, 1}).Int();
    for (const double x : {10.0, 60.0, 30.0}) map.Call(L"OrvAddOrgPnt", {figure, x, x / 2});
    map.Call(L"OrvSetLayColor", {L"A", round * 104729 % 0xFFFFFF});
    map.Call(L"OrvSetLayLineSize", {L"A", 1 + round % 50});
    map.Call(L"OrvDspFit");
    for (const int mode : {0, 10, 51, 200, 250, 300}) {
        map.Put(L"RunMode", mode);
        form.Mouse(WM_LBUTTONDOWN, MK_LBUTTON, 50, 50);
        form.Mouse(WM_MOUSEMOVE, MK_LBUTTON, 70, 60);
        form.Mouse(WM_LBUTTONUP, 0, 70, 60);
        form.Mouse(WM_MOUSEMOVE, 0, 80, 60);
        form.Key(VK_ESCAPE);
    }
    const HDC page = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    map.Call(L"OrvUserDcDrawEx", {static_cast<int>(reinterpret_cast<LONG_PTR>(page)), 0, 0, 150, 200, 50.0, 50.0, 2000, 0});
    DeleteEnhMetaFile(CloseEnhMetaFile(page));
    const Com<IDataObject> data = map.As<IDataObject>(IID_IDataObject);
    const std::pair<CLIPFORMAT, DWORD> formats[] = {
        {CF_ENHMETAFILE, TYMED_ENHMF}, {CF_METAFILEPICT, TYMED_MFPICT}, {CF_BITMAP, TYMED_GDI}};
    for (const auto& [format, medium] : formats) {
        FORMATETC wanted{format, nullptr, DVASPECT_CONTENT, -1, medium};
        STGMEDIUM got{};
        EXPECT_EQ(data->GetData(&wanted, &got), S_OK);
        ReleaseStgMedium(&got);
    }
    map.Call(L"OrvSetLayImage", {L"T", L"none.bmp", L"none.bmp", 10, 10, 0.0, 0.0});
    map.Call(L"OrvTermRast");
    form.Resize(180, 120);
    Pump();
}

TEST_F(LifetimeTest, every_kind_of_member_leaves_memory_and_handles_as_they_were) {
    const Deadline deadline("the members", 280);
    constexpr int kWarm = 20;
    constexpr int kRounds = 80;
    Use early;
    for (int i = 1; i <= kRounds; ++i) {
        UseEveryKindOfMember(i);
        if (i == kWarm) early = UseNow();
    }
    const Use late = UseNow();
    std::printf("round %d: %.0f kB, handles %zu %zu %zu; round %d: %.0f kB, handles %zu %zu %zu\n", kWarm, early.memory_kb,
                early.kernel, early.gdi, early.user, kRounds, late.memory_kb, late.kernel, late.gdi, late.user);
    // One object a round would be sixty.
    EXPECT_LT(late.memory_kb - early.memory_kb, early.memory_kb / 50);
    EXPECT_LE(late.kernel, early.kernel + 40);
    EXPECT_LE(late.gdi, early.gdi + 10);
    EXPECT_LE(late.user, early.user + 10);
}

TEST_F(LifetimeTest, another_apartment_calls_through_a_marshalled_interface) {
    Container form;
    ASSERT_EQ(form.Activate(), S_OK);
    form.control.MakeTriangle();
    Pump(20);
    for (const DWORD apartment : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
        Com<IStream> stream;
        ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, form.control.Get(), stream.Out()), S_OK);
        std::atomic<bool> done{false};
        int zoom = 0;
        long count = 0;
        bool read = false;
        IStream* const passed = stream.Detach();
        std::thread other([&] {
            CoInitializeEx(nullptr, apartment);
            void* out = nullptr;
            if (SUCCEEDED(CoGetInterfaceAndReleaseStream(passed, IID_IDispatch, &out))) {
                Com<IDispatch> object;
                *object.Out() = static_cast<IDispatch*>(out);
                Client far_(std::move(object));
                far_.Put(L"Zoom", 3210);
                zoom = far_.Get(L"Zoom").Int();
                long a = 0;
                long b = 0;
                long c = 0;
                read = far_.Call(L"OrvGetDatInfoEx", {L"A", 3, 7, Ref(a), Ref(b), Ref(count), Ref(c)}).Bool();
                far_.Reset();
            }
            CoUninitialize();
            done = true;
        });
        const Deadline deadline("a call from another apartment");
        while (!done) Pump(5);
        other.join();
        EXPECT_EQ(zoom, 3210);
        EXPECT_TRUE(read);
        EXPECT_EQ(count, 3);
    }
}

TEST_F(LifetimeTest, a_control_that_was_never_on_a_form_ends_with_its_last_reference) {
    for (int i = 0; i < 20; ++i) {
        Client control = Client::New();
        control.MakeTriangle();
        control.Call(L"OrvReDraw");
    }
    const HMODULE module = GetModuleHandleW(L"orvane4.ocx");
    ASSERT_NE(module, nullptr);
    const auto unused = reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    EXPECT_EQ(unused(), S_OK);
}

TEST_F(LifetimeTest, the_systems_own_host_window_takes_the_control) {
    const HMODULE atl = LoadLibraryW(L"atl.dll");
    if (atl == nullptr) GTEST_SKIP() << "this system has no such host";
    const auto start = reinterpret_cast<BOOL(WINAPI*)()>(reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxWinInit")));
    const auto get =
        reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxGetControl")));
    ASSERT_TRUE(start != nullptr && get != nullptr && start());
    const Deadline deadline("the system's host window");
    const HWND window = CreateWindowExW(0, L"AtlAxWin", L"ORVANE4.Orvane4Ctrl.1", WS_POPUP | WS_VISIBLE, 20, 20, 300, 200,
                                        nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(window, nullptr);
    {
        Com<IUnknown> object;
        ASSERT_EQ(get(window, object.Out()), S_OK);
        Client control(Query<IDispatch>(object.Get(), IID_IDispatch));
        control.MakeTriangle();
        Pump(50);
        HWND inner = nullptr;
        EXPECT_EQ(control.As<IOleWindow>(IID_IOleWindow)->GetWindow(&inner), S_OK);
        RECT client{};
        GetClientRect(inner, &client);
        EXPECT_EQ(client.right, 300);
        EXPECT_EQ(client.bottom, 200);
        SetWindowPos(window, nullptr, 0, 0, 250, 150, SWP_NOMOVE | SWP_NOZORDER);
        Pump(20);
        GetClientRect(inner, &client);
        EXPECT_EQ(client.right, 250);
        EXPECT_NE(control.Get(L"GetDC").Int(), 0) << "it was painted";
    }
    DestroyWindow(window);
    Pump(20);
}

}  // namespace
}  // namespace orvane::test
