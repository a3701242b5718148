#include "platform/win32/win32_window.h"
// win32_window.h brings the system headers, which come first
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "platform/win32/win32_files.h"

namespace orvane {
namespace {

/// A window on the screen that passes its timers on and answers a request for its cursor.
class WindowTest : public testing::Test {
protected:
    static LRESULT CALLBACK Proc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const test = reinterpret_cast<WindowTest*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
        if (test != nullptr && message == WM_TIMER) test->ticks.push_back(static_cast<std::int32_t>(wParam));
        if (test != nullptr && message == WM_PAINT) ++test->paints;
        if (test != nullptr && message == WM_USER) {
            ++test->posts;
            if (test->posts < 1000000) PostMessageW(handle, WM_USER, 0, 0);
            Sleep(1);
            return 0;
        }
        if (test != nullptr && message == WM_SETCURSOR) return test->window.ShowCursorShape() ? TRUE : FALSE;
        return DefWindowProcW(handle, message, wParam, lParam);
    }

    void SetUp() override {
        WNDCLASSW wanted{};
        wanted.lpfnWndProc = Proc;
        wanted.hInstance = GetModuleHandleW(nullptr);
        wanted.lpszClassName = L"WindowTest";
        RegisterClassW(&wanted);
        handle = CreateWindowW(L"WindowTest", L"", WS_POPUP | WS_VISIBLE | WS_BORDER, 100, 120, 202, 152, nullptr, nullptr,
                               wanted.hInstance, nullptr);
        if (handle == nullptr) GTEST_SKIP() << "no desktop here";
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        window.Attach(handle);
    }
    void TearDown() override {
        window.Detach();
        if (handle != nullptr) DestroyWindow(handle);
    }
    void PumpFor(double seconds) {
        const double end_s = window.Clock_s() + seconds;
        while (window.Clock_s() < end_s) {
            window.PumpMessages();
            Sleep(5);
        }
    }

    Win32Files files;
    Win32Window window{files};
    HWND handle = nullptr;
    std::vector<std::int32_t> ticks;
    int paints = 0;
    int posts = 0;
};

TEST_F(WindowTest, RectanglesAndPositionsAreTheSystems) {
    EXPECT_EQ(window.ClientRect(), (Rect{0, 0, 200, 150}));
    EXPECT_EQ(window.WindowRect(), (Rect{100, 120, 302, 272}));
    EXPECT_EQ(window.ClientToScreen({10, 20}), (Point{111, 141}));
    EXPECT_EQ(window.ScreenToClient({111, 141}), (Point{10, 20}));
    const Rect desktop = window.DesktopRect();
    EXPECT_EQ(desktop.right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(desktop.bottom, GetSystemMetrics(SM_CYSCREEN));
    EXPECT_EQ(window.Desktop().GetDeviceCaps(DeviceCap::HorzRes), desktop.right);
    EXPECT_GT(window.Desktop().GetDeviceCaps(DeviceCap::HorzSize), 0);
    EXPECT_GE(window.Desktop().GetDeviceCaps(DeviceCap::LogPixelsX), 96);
}

TEST_F(WindowTest, EachContextDrawsOnTheClientAreaAndStartsAfresh) {
    {
        const auto dc = window.AcquireDC();
        dc->SetROP2(Rop2::XorPen);
        dc->SetTextColor(0x112233);
        dc->FillRect({0, 0, 200, 150}, CreateSolidBrush(0x0000FF));
    }
    const auto dc = window.AcquireDC();
    EXPECT_EQ(dc->SetROP2(Rop2::CopyPen), Rop2::CopyPen);
    EXPECT_EQ(dc->SetTextColor(0), 0u);
    EXPECT_EQ(GetPixel(static_cast<Win32Context&>(*dc).Handle(), 50, 50), static_cast<COLORREF>(0x0000FF));
}

TEST_F(WindowTest, ContextsAreGivenBack) {
    std::set<HDC> seen;
    for (int i = 0; i < 100; ++i) seen.insert(static_cast<Win32Context&>(*window.AcquireDC()).Handle());
    EXPECT_FALSE(seen.contains(nullptr));
    EXPECT_LT(seen.size(), 10u) << "the system hands the same few out again";
}

TEST_F(WindowTest, ContextsAndBitmapsOfTheDesktopServeTheWindow) {
    const auto memory = window.Desktop().CreateCompatibleDC();
    const auto bitmap = window.AcquireDC()->CreateCompatibleBitmap(20, 20);
    memory->SelectBitmap(bitmap.get());
    memory->FillRect({0, 0, 20, 20}, CreateSolidBrush(0x00FF00));
    const auto dc = window.AcquireDC();
    dc->BitBlt(30, 30, 20, 20, *memory, 0, 0, Rop3::SrcCopy);
    EXPECT_EQ(GetPixel(static_cast<Win32Context&>(*dc).Handle(), 40, 40), static_cast<COLORREF>(0x00FF00));
    memory->SelectBitmap(nullptr);
}

TEST_F(WindowTest, TimersTickUntilTheyAreStopped) {
    window.StartTimer(11, 30);
    window.StartTimer(2, 10);
    PumpFor(0.4);
    window.StopTimer(2);
    window.StopTimer(11);
    const auto count = [&](std::int32_t id) { return std::count(ticks.begin(), ticks.end(), id); };
    EXPECT_GE(count(11), 3);
    EXPECT_GT(count(2), count(11));
    window.PumpMessages();
    ticks.clear();
    PumpFor(0.1);
    EXPECT_TRUE(ticks.empty());
    window.StopTimer(77);  // never started
}

TEST_F(WindowTest, InvalidateAsksForOnePaintAndReturns) {
    ValidateRect(handle, nullptr);
    const int before = paints;
    window.Invalidate();
    EXPECT_EQ(paints, before);
    RECT asked{};
    EXPECT_TRUE(GetUpdateRect(handle, &asked, FALSE));
    EXPECT_EQ(asked.right, 200);
    EXPECT_EQ(asked.bottom, 150);
    window.PumpMessages();
    EXPECT_GT(paints, before);
}

TEST_F(WindowTest, TheMouseIsCapturedAndLetGo) {
    window.CaptureMouse(true);
    EXPECT_EQ(GetCapture(), handle);
    window.CaptureMouse(false);
    EXPECT_EQ(GetCapture(), nullptr);
    window.CaptureMouse(true);
    window.Detach();
    EXPECT_EQ(GetCapture(), nullptr) << "gone with the window";
}

TEST_F(WindowTest, TheCursorIsWhereItWasSet) {
    SetCursorPos(150, 160);
    EXPECT_EQ(window.CursorPos(), (Point{150, 160}));
}

TEST_F(WindowTest, TheShapeSetLastIsShownAtEachRequest) {
    window.SetCursorShape(CursorShape::Cross);
    EXPECT_EQ(window.CurrentCursorShape(), CursorShape::Cross);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_CROSS)));
    SetCursor(nullptr);
    SendMessageW(handle, WM_SETCURSOR, reinterpret_cast<WPARAM>(handle), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_CROSS)));
    window.SetCursorShape(CursorShape::Arrow);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW)));
}

TEST_F(WindowTest, TheTwoCursorsOfItsOwnAreResources202And203) {
    std::vector<HCURSOR> seen;
    for (const CursorShape shape : {CursorShape::Pan, CursorShape::Scroll}) {
        const HCURSOR resource = LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(static_cast<int>(shape)));
        ASSERT_NE(resource, nullptr);
        window.SetCursorShape(shape);
        EXPECT_EQ(GetCursor(), resource);
        ICONINFO info{};
        ASSERT_TRUE(GetIconInfo(resource, &info));
        EXPECT_FALSE(info.fIcon);
        EXPECT_GT(info.xHotspot, 0u);
        DeleteObject(info.hbmMask);
        DeleteObject(info.hbmColor);
        seen.push_back(resource);
    }
    EXPECT_NE(seen[0], seen[1]);
}

TEST_F(WindowTest, TheWaitCursorStandsUntilTheLastOneWhoShowedItHidesIt) {
    const HCURSOR wait = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT));
    const HCURSOR cross = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_CROSS));
    window.SetCursorShape(CursorShape::Cross);
    window.ShowWaitCursor(true);
    window.ShowWaitCursor(true);
    EXPECT_EQ(GetCursor(), wait);
    window.ShowWaitCursor(false);
    EXPECT_EQ(GetCursor(), wait);
    window.ShowWaitCursor(false);
    EXPECT_EQ(GetCursor(), cross);
    window.ShowWaitCursor(false);
    window.ShowWaitCursor(true);
    EXPECT_EQ(GetCursor(), wait) << "one hide too many counts for nothing";
    window.ShowWaitCursor(false);
}

/// Reads the box that stands and presses its button.
void CALLBACK AnswerBox(HWND, UINT, UINT_PTR, DWORD);
std::wstring boxTitle, boxText;
bool boxWasModal = false;
bool inModal = false;

BOOL CALLBACK ReadChild(HWND child, LPARAM) {
    wchar_t text[200] = {};
    wchar_t kind[20] = {};
    GetClassNameW(child, kind, 20);
    GetWindowTextW(child, text, 200);
    if (std::wstring(kind) == L"Static" && text[0] != 0) boxText = text;
    return TRUE;
}

BOOL CALLBACK ReadBox(HWND box, LPARAM) {
    wchar_t kind[20] = {};
    GetClassNameW(box, kind, 20);
    if (std::wstring(kind) != L"#32770") return TRUE;
    wchar_t title[200] = {};
    GetWindowTextW(box, title, 200);
    boxTitle = title;
    EnumChildWindows(box, ReadChild, 0);
    boxWasModal = inModal;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    return FALSE;
}

void CALLBACK AnswerBox(HWND, UINT, UINT_PTR, DWORD) { EnumThreadWindows(GetCurrentThreadId(), ReadBox, 0); }

TEST_F(WindowTest, AMessageShowsItsBytesAsCodePage932AndWaits) {
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, AnswerBox);
    window.onModal = [](bool begins) { inModal = begins; };
    window.ShowMessage("\x93\x8C\x8B\x9E", "\x92\x6E\x90\x7D", MessageIcon::Exclamation);
    KillTimer(nullptr, timer);
    EXPECT_EQ(boxText, L"\x6771\x4EAC");
    EXPECT_EQ(boxTitle, L"\x5730\x56F3");
    EXPECT_TRUE(boxWasModal);
    EXPECT_FALSE(inModal);
}

TEST_F(WindowTest, ThePumpEndsThoughMessagesBreedMessages) {
    PostMessageW(handle, WM_USER, 0, 0);
    const double begin_s = window.Clock_s();
    window.PumpMessages();
    EXPECT_LT(window.Clock_s() - begin_s, 5.0);
    EXPECT_GE(posts, 1);
    posts = 1000000;
    window.PumpMessages();
}

TEST_F(WindowTest, AQuitThatWaitsIsLeftForTheHost) {
    PostQuitMessage(7);
    window.PumpMessages();
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
    }
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(WindowTest, TheClockGoesOn) {
    const double begin_s = window.Clock_s();
    Sleep(50);
    const double passed_s = window.Clock_s() - begin_s;
    EXPECT_GE(passed_s, 0.04);
}

TEST(WindowlessTest, WithoutAWindowItHasASizeAndDrawsNothing) {
    Win32Files files;
    Win32Window window(files);
    EXPECT_EQ(window.ClientRect(), (Rect{0, 0, 1, 1}));
    window.SetSizeWithout(300, 200);
    EXPECT_EQ(window.ClientRect(), (Rect{0, 0, 300, 200}));
    EXPECT_EQ(window.WindowRect(), (Rect{0, 0, 300, 200}));
    EXPECT_EQ(window.ClientToScreen({5, 6}), (Point{5, 6}));
    window.SetSizeWithout(-3, 5);
    EXPECT_EQ(window.ClientRect(), (Rect{0, 0, 0, 5}));
    const auto dc = window.AcquireDC();
    ASSERT_NE(dc, nullptr);
    dc->FillRect({0, 0, 10, 10}, WhiteBrush());
    EXPECT_NE(dc->CreateCompatibleBitmap(5, 5), nullptr);
    EXPECT_GT(dc->GetDeviceCaps(DeviceCap::HorzRes), 0);
    window.Invalidate();
    window.StartTimer(1, 10);
    window.StopTimer(1);
    window.CaptureMouse(true);
    window.SetCursorShape(CursorShape::Cross);
    EXPECT_EQ(window.CurrentCursorShape(), CursorShape::Cross);
}

}  // namespace
}  // namespace orvane
