#include "platform/qt/clip_region.h"

#include <algorithm>

#include "platform/rect.h"

namespace orvane {

namespace {

// No surface has a side of this length, and sums of two such coordinates stay within 32 bits.
constexpr std::int32_t kFarthest_px = 1 << 29;

std::int32_t Near(std::int32_t coordinate) { return std::clamp(coordinate, -kFarthest_px, kFarthest_px); }

}  // namespace

QRegion ToRegion(const Rect& rect) {
    const Rect r = NormalizeRect(rect);
    const std::int32_t left = Near(r.left);
    const std::int32_t top = Near(r.top);
    return QRegion(left, top, Near(r.right) - left, Near(r.bottom) - top);
}

void ToClipArea(const QRegion& region, ClipArea& out) {
    out.rects.clear();
    out.bounds = {};
    for (const QRect& r : region) out.rects.push_back({r.x(), r.y(), r.x() + r.width(), r.y() + r.height()});
    if (out.rects.empty()) return;
    const QRect round = region.boundingRect();
    out.bounds = {round.x(), round.y(), round.x() + round.width(), round.y() + round.height()};
}

void ClipRegion::Select(const Rect& rect, RgnMode mode, const Rect& surface) {
    const QRegion current = region_ ? *region_ : ToRegion(surface);
    const QRegion other = ToRegion(rect);
    switch (mode) {
        case RgnMode::And:
            region_ = current.intersected(other);
            break;
        case RgnMode::Or:
            region_ = current.united(other);
            break;
        case RgnMode::Xor:
            region_ = current.xored(other);
            break;
        case RgnMode::Diff:
            region_ = current.subtracted(other);
            break;
        case RgnMode::Copy:
            region_ = other;
            break;
    }
}

QRegion ClipRegion::On(const Rect& surface) const {
    const QRegion whole = ToRegion(surface);
    return region_ ? region_->intersected(whole) : whole;
}

}  // namespace orvane
