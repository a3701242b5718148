// A widget as the control sees it: its form, in device pixels.
//
// The control draws on a picture of the client area, which the widget shows. So nothing is lost between two paints, and one pixel
// of the control is one of the screen whatever the desktop's scaling.
#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

#include "platform/qt/qt_context.h"
#include "platform/window.h"

namespace orvane {

class WidgetWindow final : public Window {
public:
    /// `widget` and `files` must outlive the window.
    WidgetWindow(QWidget& widget, Files& files);

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
    // Nothing that this window passes on to the control holds a button down, so nothing asks for timers or the mouse.
    void StartTimer(std::int32_t, std::int32_t) override {}
    void StopTimer(std::int32_t) override {}
    void CaptureMouse(bool) override {}
    void ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) override;
    void ShowWaitCursor(bool on) override;
    void PumpMessages() override;
    double Clock_s() const override;

private:
    QWidget& widget_;
    QtContext desktop_;
    QImage picture_;
    bool paintAsked_ = true;
    CursorShape cursor_ = CursorShape::Arrow;
};

}  // namespace orvane
