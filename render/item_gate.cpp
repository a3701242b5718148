#include "render/item_gate.h"

#include <algorithm>
#include <cstdint>

#include "platform/rect.h"
#include "platform/to_int.h"
#include "store/strips.h"

namespace orvane {

namespace {

/// A box of world units, y downward; `top` is the greater y, as the southern edge of an item's bounds comes out.
struct WorldBox {
    double left, top, right, bottom;
};

/// The box around the turned corners. Which edge was the southern one is lost with the turn: it is the one of the greatest y, or
/// the box would be inside out and a turned view empty. Its start lies far outside of any map; bounds beyond it count as the
/// start.
WorldBox Turned(const WorldBox& box, const ViewRotation& rotation) {
    constexpr double kFarAway = 99999999999.0;
    const double xs[] = {box.left, box.left, box.right, box.right};
    const double ys[] = {box.top, box.bottom, box.bottom, box.top};
    WorldBox around{kFarAway, -kFarAway, -kFarAway, kFarAway};
    for (int i = 0; i < 4; ++i) {
        double x = xs[i];
        double y = ys[i];
        rotation.Apply(x, y);
        around.left = (std::min)(around.left, x);
        around.right = (std::max)(around.right, x);
        around.top = (std::max)(around.top, y);
        around.bottom = (std::min)(around.bottom, y);
    }
    return around;
}

}  // namespace

StripBox::StripBox(const ViewParams& view, const FrameTarget& frame, double GX, double GY)
    : gx_(GX),
      gy_(GY),
      rotation_(view.Rotate),
      scaleX_(view.ScaleX),
      scaleY_(view.ScaleY),
      originX_(frame.x),
      originY_(frame.y),
      offX_(view.OffX),
      offY_(view.OffY),
      pixPerUnit_(view.PixPerUnit()),
      pendX_(frame.pendX),
      pendY_(frame.pendY),
      stripA_(frame.stripA),
      stripB_(frame.stripB) {}

Rect StripBox::ToDevice(const Rect& rect, double hx, double hy) const {
    WorldBox box{rect.left - hx + gx_ - 1.0, -(rect.top - hy + gy_ - 1.0), rect.right + hx + gx_ + 1.0,
                 -(rect.bottom + hy + gy_ + 1.0)};
    if (rotation_.Turns()) box = Turned(box, rotation_);
    box.left = box.left * scaleX_ - originX_ - offX_;
    box.right = box.right * scaleX_ - originX_ - offX_;
    box.top = box.top * scaleY_ - originY_ - offY_;
    box.bottom = box.bottom * scaleY_ - originY_ - offY_;

    // Truncated without the half that points get: the box is only compared with the strips.
    Rect device{TruncToInt32(box.left * pixPerUnit_ + pendX_), TruncToInt32(box.bottom * pixPerUnit_ + pendY_),
                TruncToInt32(box.right * pixPerUnit_ + pendX_), TruncToInt32(box.top * pixPerUnit_ + pendY_)};
    if (device.top == device.bottom) device.top = (std::max)(device.top, -INT32_MAX) - 1;
    if (device.left == device.right) device.right = (std::min)(device.right, INT32_MAX - 1) + 1;
    return device;
}

bool StripBox::InStrips(const Rect& rect, double hx, double hy) const {
    // Bounds that no point has touched yet are inside out and meet nothing; turned they would be put right and meet everything.
    if (rotation_.Turns() && rect.left > rect.right) return false;
    return RectInStrips(ToDevice(rect, hx, hy), stripA_, stripB_);
}

}  // namespace orvane
