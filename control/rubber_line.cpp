#include "control/rubber_line.h"

namespace orvane {

void DrawRubberLine(COrvane4Ctrl& ctrl, std::span<const Point> pixels) {
    if (ctrl.TopDC() == nullptr) return;
    const Rect client = ctrl.window().ClientRect();
    const std::unique_ptr<DeviceContext> dc = ctrl.window().AcquireDC();
    const Pen before = dc->SelectPen(CreatePen(PenStyle::Dot, 1, 0));
    dc->BitBlt(1, 1, client.right - 1, client.bottom - 1, *ctrl.TopDC(), 1, 1, Rop3::SrcCopy);
    dc->Polyline(pixels.data(), static_cast<std::int32_t>(pixels.size()));
    dc->SelectPen(before);
}

}  // namespace orvane
