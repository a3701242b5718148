// A widget as the control sees it: its form, in device pixels.
//
// The control draws on a picture of the client area, which the widget shows. So nothing is lost between two paints, and one pixel
// of the control is one of the screen whatever the desktop's scaling.
#pragma once

#include <QImage>
#include <QPointF>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <map>

#include "platform/qt/qt_context.h"
#include "platform/window.h"

namespace orvane {

class WidgetWindow final : public Window {
public:
    /// `files` must outlive the window.
    WidgetWindow(QWidget& widget, Files& files);
    ~WidgetWindow() override;

    /// The widget goes: from now on this is a window of the last size that nobody sees.
    void Detach();
    /// Hears where the mouse is, in the widget and on the desktop as Qt tells it. The answer is the client pixel.
    Point Follow(QPointF inWidget, QPointF onDesktop);
    /// Makes a shape the one to be shown unless the control sets another, and shows what came of it. In between the cursor on the
    /// screen is left alone, so that it does not flicker from one shape to the other and back.
    void ExpectCursorShape(CursorShape shape) { cursor_ = shape; }
    void ShowCursorShape();
    /// Called for each tick of a timer, by its number.
    std::function<void(std::int32_t id)> onTimer;

    /// Gives the picture the widget's size; what both sizes have stays, the rest is white. False when it had that size.
    bool Resize();
    const QImage& Picture() const { return picture_; }
    /// Whether the control asked for a paint since the last call.
    bool TakePaintRequest();

    std::unique_ptr<DeviceContext> AcquireDC() override;
    DeviceContext& Desktop() override { return desktop_; }
    Rect DesktopRect() const override;
    Rect ClientRect() const override { return {0, 0, picture_.width(), picture_.height()}; }
    Rect WindowRect() const override;
    Point ClientToScreen(Point client) const override;
    Point ScreenToClient(Point screen) const override;
    Point CursorPos() const override;
    void Invalidate() override;
    void SetCursorShape(CursorShape shape) override;
    CursorShape CurrentCursorShape() const override { return cursor_; }
    void StartTimer(std::int32_t id, std::int32_t period_ms) override;
    void StopTimer(std::int32_t id) override;
    // From the first press to the last release Qt sends all moves to the widget that was pressed.
    void CaptureMouse(bool) override {}
    void ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) override;
    void ShowWaitCursor(bool on) override;
    void PumpMessages() override;
    double Clock_s() const override;

private:
    struct LaterDeleter {
        void operator()(QTimer* timer) const;
    };

    double Ratio() const;

    QPointer<QWidget> widget_;
    QtContext desktop_;
    QImage picture_;
    bool paintAsked_ = true;
    CursorShape cursor_ = CursorShape::Arrow;
    CursorShape shown_ = CursorShape::Arrow;
    // A stopped timer is kept: it may be the one whose tick runs.
    std::map<std::int32_t, std::unique_ptr<QTimer, LaterDeleter>> timers_;
    QPointF mouseOnDesktop_;
    Point mouseOnScreen_;  // pixels
};

}  // namespace orvane
