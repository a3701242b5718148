// One line in a line type, drawn straight into a context of the host.
#include <memory>

#include "control/ctrl.h"
#include "platform/context_registry.h"
#include "render/line_pattern.h"
#include "render/line_polygon.h"

namespace orvane {

namespace {

/// Takes the fineness of another device for the time of one call.
class OtherDpiRatio {
public:
    OtherDpiRatio(ViewParams& view, double ratio) : view_(view), saved_(view.DpiRatio) { view.DpiRatio = ratio; }
    ~OtherDpiRatio() { view_.DpiRatio = saved_; }
    OtherDpiRatio(const OtherDpiRatio&) = delete;
    OtherDpiRatio& operator=(const OtherDpiRatio&) = delete;

private:
    ViewParams& view_;
    double saved_;
};

}  // namespace

void COrvane4Ctrl::DrawLine(std::int32_t userDC, const Rect& clip, Point from, Point to, std::int32_t lineType,
                            std::int32_t lineWidth, Rgb lineColor) {
    const std::shared_ptr<DeviceContext> context = OpenContext(userDC);
    // Before the first paint there is no screen yet that the device could be compared with.
    if (context == nullptr || store.view.ScreenDpi == 0) return;
    DeviceContext& dc = *context;
    const double dpi = dc.GetDeviceCaps(DeviceCap::LogPixelsX);
    const OtherDpiRatio ratio(store.view, dpi / static_cast<double>(store.view.ScreenDpi));
    const std::int32_t w = store.view.PenFactor();

    std::int32_t kind = kLineStandard, index = -1;
    const Pen oldPen = dc.SelectPen(MakeLinePen(store, lineType, PenUnitsToPix(lineWidth, w), lineColor, kind, index));
    const Brush oldBrush = dc.SelectBrush(CreateSolidBrush(0));
    dc.SetROP2(Rop2::CopyPen);
    const Point pts[] = {from, to};
    if (kind > kLineEndMarks) {
        // Only the far sides of the clip grow with the device.
        DrawLinePattern(store, dc, {clip.left, clip.top, PenUnitsToPix(clip.right, w), PenUnitsToPix(clip.bottom, w)}, pts, 2,
                        index);
    } else {
        dc.Polyline(pts, 2);
        if (kind == kLineEndMarks) DrawLineEndMarks(store, dc, pts, 2, index);
    }
    dc.SelectPen(oldPen);
    dc.SelectBrush(oldBrush);
}

}  // namespace orvane
