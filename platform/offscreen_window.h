// A window that is on no screen: its client area is a bitmap of some back end, its clock, cursor and timers move only when told
// to, and what the control asks of it is kept in public fields for a host or a test to read.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/window.h"

namespace orvane {

struct ShownMessage {
    std::string text;  ///< code page 932 bytes, as the title
    std::string title;
    MessageIcon icon = MessageIcon::None;
    friend bool operator==(const ShownMessage&, const ShownMessage&) = default;
};

class OffscreenWindow : public Window {
public:
    /// `device` is any context of the back end that the client area is to be a bitmap of; it must outlive the window, as must
    /// every context acquired. The client area starts white. A side below 1 is a window without pixels.
    OffscreenWindow(DeviceContext& device, std::int32_t width_px, std::int32_t height_px);

    // --- What a host or a test sets ---------------------------------------------------------------------------------------
    /// The pixels that both sizes have stay where they are, the new ones are white. Contexts acquired before stay good: they
    /// go on drawing on the surface of the size that they were acquired at.
    void Resize(std::int32_t width_px, std::int32_t height_px);
    /// Frees the surfaces of former sizes. Only for a moment at which no context of this window is alive.
    void DropFormerSurfaces();
    /// Moves the clock on, and calls onTimer for each timer at the moment it is due.
    void Advance(double seconds);
    /// Tells whether a paint was asked for since the last call.
    bool TakePaintRequest();

    Point position;  ///< left top of the window and of its client area, in screen pixels; there is no frame
    Rect desktopRect{0, 0, 1920, 1080};
    Point cursorPos;     ///< screen pixels
    double clock_s = 0;  ///< may be set to any moment; only Advance runs timers
    /// Stands for the desktop towards the control; null for the device itself. A recorder puts its own context here.
    DeviceContext* desktop = nullptr;

    // Hooks; an empty one does nothing. Those named on... are where host code runs.
    /// May wrap each acquired context, for a recorder.
    std::function<std::unique_ptr<DeviceContext>(std::unique_ptr<DeviceContext>)> dressContext;
    std::function<void(const ShownMessage&)> onMessage;
    std::function<void()> onPumpMessages;
    std::function<void()> onInvalidate;
    std::function<void(std::int32_t id)> onTimer;

    // --- What the control did, for reading --------------------------------------------------------------------------------
    std::vector<ShownMessage> messages;
    CursorShape cursorShape = CursorShape::Arrow;
    bool captured = false;
    std::int32_t waitCursorDepth = 0;  ///< shown minus hidden
    std::int32_t waitCursorCnt = 0;    ///< times shown
    std::int32_t invalidateCnt = 0;
    std::int32_t pumpCnt = 0;
    std::int32_t acquireCnt = 0;

    struct Timer {
        std::int32_t period_ms = 0;
        double due_s = 0;
    };
    const std::map<std::int32_t, Timer>& Timers() const { return timers_; }
    /// The client area's pixels, of the back end's own kind; null for a window without pixels.
    Bitmap* ClientBitmap() const { return current_; }

    // --- Window -----------------------------------------------------------------------------------------------------------
    std::unique_ptr<DeviceContext> AcquireDC() override;
    DeviceContext& Desktop() override;
    Rect DesktopRect() const override { return desktopRect; }
    Rect ClientRect() const override { return {0, 0, width_px_, height_px_}; }
    Rect WindowRect() const override;
    Point ClientToScreen(Point client) const override;
    Point ScreenToClient(Point screen) const override;
    Point CursorPos() const override { return cursorPos; }
    void Invalidate() override;
    void SetCursorShape(CursorShape shape) override { cursorShape = shape; }
    CursorShape CurrentCursorShape() const override { return cursorShape; }
    void StartTimer(std::int32_t id, std::int32_t period_ms) override;
    void StopTimer(std::int32_t id) override { timers_.erase(id); }
    void CaptureMouse(bool on) override { captured = on; }
    void ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) override;
    void ShowWaitCursor(bool on) override;
    void PumpMessages() override;
    double Clock_s() const override { return clock_s; }

private:
    struct Surface {
        std::int32_t width_px = 0;
        std::int32_t height_px = 0;
        std::unique_ptr<Bitmap> bitmap;
    };
    Bitmap* SurfaceOf(std::int32_t width_px, std::int32_t height_px);

    DeviceContext& device_;
    std::int32_t width_px_ = 0;
    std::int32_t height_px_ = 0;
    // One for each size so far: code that a host runs inside a frame may resize while that frame still draws on the old one.
    std::vector<Surface> surfaces_;
    Bitmap* current_ = nullptr;
    bool paintAsked_ = false;
    std::map<std::int32_t, Timer> timers_;
};

}  // namespace orvane
