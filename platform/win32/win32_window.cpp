#include "platform/win32/win32_window.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "platform/context_registry.h"
#include "platform/win32/reach.h"
#include "platform/win32/wide.h"

namespace orvane {

namespace {

Rect RectOf(const RECT& r) {
    return {static_cast<std::int32_t>(r.left), static_cast<std::int32_t>(r.top), static_cast<std::int32_t>(r.right),
            static_cast<std::int32_t>(r.bottom)};
}

Point PointOf(POINT p) { return {static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)}; }

/// The program or library that this code is linked into: its resources are ours.
HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OwnModule), &module);
    return module;
}

/// Shared by the system, so there is nothing to free. Null for a resource that is not linked in.
HCURSOR CursorOf(CursorShape shape) {
    const auto standard = [](ULONG_PTR name) { return LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(name)); };
    switch (shape) {
        case CursorShape::Cross:
            return standard(32515);
        case CursorShape::SizeAll:
            return standard(32646);
        case CursorShape::Hand:
            return standard(32649);
        case CursorShape::Wait:
            return standard(32514);
        case CursorShape::Pan:
        case CursorShape::Scroll:
            return LoadCursorW(OwnModule(), reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(shape)));
        case CursorShape::Arrow:
            break;
    }
    return standard(32512);
}

DcHandle ScreenDevice() { return DcHandle::Own(CreateICW(L"DISPLAY", nullptr, nullptr, nullptr)); }

}  // namespace

Win32Window::Win32Window(Files& files) : shared_(std::make_shared<Win32Shared>(files)), desktop_(ScreenDevice(), shared_) {
    UseSystemContexts();
}

Win32Window::~Win32Window() = default;

void Win32Window::Attach(HWND window) { window_ = window; }

void Win32Window::Detach() {
    if (window_ != nullptr && GetCapture() == window_) ReleaseCapture();
    window_ = nullptr;
}

void Win32Window::SetSizeWithout(std::int32_t width_px, std::int32_t height_px) {
    width_px_ = (std::max)(width_px, 0);
    height_px_ = (std::max)(height_px, 0);
}

std::unique_ptr<Win32Context> Win32Window::ContextOn(HDC dc) const {
    return std::make_unique<Win32Context>(DcHandle::Borrowed(dc), shared_);
}

std::unique_ptr<DeviceContext> Win32Window::AcquireDC() {
    if (window_ == nullptr) return Win32Context::InMemory(shared_);
    return std::make_unique<Win32Context>(DcHandle::OfWindow(window_), shared_);
}

Rect Win32Window::DesktopRect() const {
    RECT whole{};
    GetWindowRect(GetDesktopWindow(), &whole);
    return RectOf(whole);
}

Rect Win32Window::ClientRect() const {
    RECT client{0, 0, width_px_, height_px_};
    if (window_ != nullptr) GetClientRect(window_, &client);
    return RectOf(client);
}

Rect Win32Window::WindowRect() const {
    RECT whole{0, 0, width_px_, height_px_};
    if (window_ != nullptr) GetWindowRect(window_, &whole);
    return RectOf(whole);
}

Point Win32Window::ClientToScreen(Point client) const {
    POINT p{client.x, client.y};
    if (window_ != nullptr) ::ClientToScreen(window_, &p);
    return PointOf(p);
}

Point Win32Window::ScreenToClient(Point screen) const {
    POINT p{screen.x, screen.y};
    if (window_ != nullptr) ::ScreenToClient(window_, &p);
    return PointOf(p);
}

Point Win32Window::CursorPos() const {
    POINT p{};
    GetCursorPos(&p);
    return PointOf(p);
}

void Win32Window::Invalidate() {
    if (window_ != nullptr) InvalidateRect(window_, nullptr, FALSE);
}

void Win32Window::SetCursorShape(CursorShape shape) {
    cursor_ = shape;
    if (window_ != nullptr) ShowCursorShape();
}

bool Win32Window::ShowCursorShape() const {
    const HCURSOR cursor = CursorOf(waitDepth_ > 0 ? CursorShape::Wait : cursor_);
    if (cursor != nullptr) SetCursor(cursor);
    return true;
}

void Win32Window::StartTimer(std::int32_t id, std::int32_t period_ms) {
    if (window_ == nullptr) return;
    SetTimer(window_, static_cast<UINT_PTR>(id), static_cast<UINT>((std::max)(period_ms, 0)), nullptr);
}

void Win32Window::StopTimer(std::int32_t id) {
    if (window_ != nullptr) KillTimer(window_, static_cast<UINT_PTR>(id));
}

void Win32Window::CaptureMouse(bool on) {
    if (window_ == nullptr) return;
    if (on) {
        SetCapture(window_);
    } else if (GetCapture() == window_) {
        ReleaseCapture();
    }
}

void Win32Window::ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    // The box belongs to the form's own window, which must not take input meanwhile. While it waits the host may do anything, to
    // this object too, so nothing of it is touched afterwards.
    const std::function<void(bool)> modal = onModal;
    const HWND owner = window_ != nullptr ? GetAncestor(window_, GA_ROOT) : nullptr;
    const std::wstring words = WideShown(text);
    const std::wstring head = WideShown(title);
    if (modal) modal(true);
    MessageBoxW(owner, words.c_str(), head.c_str(), MB_OK | static_cast<UINT>(icon));
    if (modal) modal(false);
}

void Win32Window::ShowWaitCursor(bool on) {
    waitDepth_ = (std::max)(waitDepth_ + (on ? 1 : -1), 0);
    ShowCursorShape();
}

void Win32Window::PumpMessages() {
    const DWORD begin = GetTickCount();
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
        if (static_cast<std::int32_t>(message.time - begin) > 0) return;
    }
}

double Win32Window::Clock_s() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace orvane
