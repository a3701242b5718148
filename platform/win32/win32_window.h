// A window of the system as the control sees it: its form. It owns no window: whoever makes one attaches it, and passes on its
// timer messages and its requests for a cursor.
#pragma once

#include <windows.h>
// windows.h comes first
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "platform/files.h"
#include "platform/win32/win32_context.h"
#include "platform/window.h"

namespace orvane {

class Win32Window : public Window {
public:
    /// Starts without a window. `files` is where pictures are read from; it must outlive this. Calls UseSystemContexts().
    explicit Win32Window(Files& files);
    ~Win32Window() override;

    /// Null while there is none.
    HWND Handle() const { return window_; }
    /// The window's clock ticks by WM_TIMER messages to it, whose number is the timer's. To be detached before it is destroyed,
    /// or while it is.
    void Attach(HWND window);
    void Detach();
    /// The client area's size while there is no window: a form in design, a page. It starts as 1 x 1.
    void SetSizeWithout(std::int32_t width_px, std::int32_t height_px);
    /// A context that draws on somebody else's, in the state that that one has, for as long as that one lives.
    std::unique_ptr<Win32Context> ContextOn(HDC dc) const;

    /// For WM_SETCURSOR in the client area: shows the shape that was set last, or the wait cursor. Always true.
    bool ShowCursorShape() const;
    /// Makes a shape the one to be shown unless the control sets another, without showing it.
    void ExpectCursorShape(CursorShape shape) { cursor_ = shape; }

    /// Called before and after a message box, for a container that stops its own input meanwhile. May be empty.
    std::function<void(bool begins)> onModal;

    /// Without a window, a context that draws nothing.
    std::unique_ptr<DeviceContext> AcquireDC() override;
    DeviceContext& Desktop() override { return desktop_; }
    Rect DesktopRect() const override;
    Rect ClientRect() const override;
    Rect WindowRect() const override;
    Point ClientToScreen(Point client) const override;
    Point ScreenToClient(Point screen) const override;
    Point CursorPos() const override;
    void Invalidate() override;
    void SetCursorShape(CursorShape shape) override;
    CursorShape CurrentCursorShape() const override { return cursor_; }
    /// Without a window no timer runs.
    void StartTimer(std::int32_t id, std::int32_t period_ms) override;
    void StopTimer(std::int32_t id) override;
    void CaptureMouse(bool on) override;
    void ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) override;
    void ShowWaitCursor(bool on) override;
    /// What was posted after the call began is left for later, so that a host that is slower than its timers gets out again. A
    /// request to quit ends it and is posted anew.
    void PumpMessages() override;
    double Clock_s() const override;

private:
    HWND window_ = nullptr;
    std::int32_t width_px_ = 1;
    std::int32_t height_px_ = 1;
    std::shared_ptr<Win32Shared> shared_;
    Win32Context desktop_;
    CursorShape cursor_ = CursorShape::Arrow;
    std::int32_t waitDepth_ = 0;
};

}  // namespace orvane
