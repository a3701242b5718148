// What the control needs of the form it stands on. One implementation per host system; OffscreenWindow serves where there is
// none.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/device_context.h"
#include "platform/values.h"

namespace orvane {

enum class CursorShape : std::int32_t { Arrow = 0, Cross, SizeAll, Hand, Wait, Pan = 202, Scroll = 203 };

enum class MessageIcon : std::uint32_t { None = 0, Stop = 0x10, Question = 0x20, Exclamation = 0x30, Information = 0x40 };

class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    /// A context on the client area in its starting state, the caller's until the returned object dies.
    virtual std::unique_ptr<DeviceContext> AcquireDC() = 0;
    /// A context that stands for the desktop: its device numbers, and memory contexts and bitmaps compatible with it.
    virtual DeviceContext& Desktop() = 0;
    /// The desktop window's rectangle in screen pixels.
    virtual Rect DesktopRect() const = 0;

    /// The client area, from (0, 0).
    virtual Rect ClientRect() const = 0;
    /// The whole window in screen pixels.
    virtual Rect WindowRect() const = 0;
    virtual Point ClientToScreen(Point client) const = 0;
    virtual Point ScreenToClient(Point screen) const = 0;
    /// The cursor in screen pixels.
    virtual Point CursorPos() const = 0;

    /// Asks for a paint of the whole client area and returns.
    virtual void Invalidate() = 0;
    virtual void SetCursorShape(CursorShape shape) = 0;
    /// The shape that was set last.
    virtual CursorShape CurrentCursorShape() const = 0;
    virtual void StartTimer(std::int32_t id, std::int32_t period_ms) = 0;
    virtual void StopTimer(std::int32_t id) = 0;
    virtual void CaptureMouse(bool on) = 0;
    /// Shows a message with an OK button and waits. Texts are code page 932 bytes. It runs host code.
    virtual void ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) = 0;
    virtual void ShowWaitCursor(bool on) = 0;
    /// Dispatches the messages that wait. It runs host code.
    virtual void PumpMessages() = 0;
    /// Seconds since some fixed moment, with fractions.
    virtual double Clock_s() const = 0;
};

}  // namespace orvane
