#include "select/pick_window.h"

#include <algorithm>
#include <cmath>

#include "platform/to_int.h"

namespace orvane {

namespace {

/// One axis of a view that is not turned.
struct Axis {
    double base = 0;  ///< block origin, in the flipped sense on the y axis
    double sign = 1;  ///< -1 on the y axis, which is flipped
    double scale = 1;
    double origin = 0;  ///< view position and world offset
    double pend_px = 0;
};

bool AllFinite(const Axis& axis) {
    return std::isfinite(axis.base) && std::isfinite(axis.scale) && std::isfinite(axis.origin) && std::isfinite(axis.pend_px);
}

/// Keeps `low` and `high` where no local coordinate at or below `low`, or at or above `high`, comes within the margin.
/// `toDevice` carries a coordinate of this axis to its pixel. It is monotonic whatever the rounding, for each of its steps is.
template <class ToDevice>
void FindSpan(const Axis& axis, double r, std::int32_t at, std::int64_t margin_px, std::int32_t& low, std::int32_t& high,
              ToDevice toDevice) {
    if (!AllFinite(axis) || !std::isfinite(r) || r == 0) return;
    const auto guess = [&axis, r](double px) {
        return axis.sign * ((px - axis.pend_px) / r + axis.origin) / axis.scale - axis.sign * axis.base;
    };
    const double first = static_cast<double>(at - margin_px - 2);
    const double last = static_cast<double>(at + margin_px + 2);
    const double guess1 = guess(first);
    const double guess2 = guess(last);
    const std::int32_t from = TruncToInt32(std::floor((std::min)(guess1, guess2)) - 2);
    const std::int32_t to = TruncToInt32(std::ceil((std::max)(guess1, guess2)) + 2);
    const std::int32_t pixFrom = toDevice(from);
    const std::int32_t pixTo = toDevice(to);
    if (pixFrom == pixTo) return;
    const bool rises = pixFrom < pixTo;
    const std::int64_t nearest = at - margin_px;
    const std::int64_t furthest = at + margin_px;
    if (rises ? pixFrom < nearest : pixFrom > furthest) low = from;
    if (rises ? pixTo > furthest : pixTo < nearest) high = to;
}

}  // namespace

PickWindow::PickWindow(const ViewParams& view, const PickPlace& place, double GX, double GY, Point at, std::int64_t margin_px)
    : turned_(view.Rotate != 0) {
    if (turned_) {
        FindTurned(view, place, GX, GY, at, margin_px);
    } else {
        FindStraight(view, place, GX, GY, at, margin_px);
    }
}

void PickWindow::FindStraight(const ViewParams& view, const PickPlace& place, double GX, double GY, Point at,
                              std::int64_t margin_px) {
    const DeviceTransform transform(view, place.viewX, place.viewY, place.devOffX, place.devOffY, GX, GY);
    const double r = view.PixPerUnit();
    FindSpan({GX, 1, view.ScaleX, place.viewX + view.OffX, place.devOffX}, r, at.x, margin_px, left_, right_,
             [&transform](double x) { return transform.ToDevice(x, 0).x; });
    FindSpan({-GY, -1, view.ScaleY, place.viewY + view.OffY, place.devOffY}, r, at.y, margin_px, top_, bottom_,
             [&transform](double y) { return transform.ToDevice(0, y).y; });
}

void PickWindow::FindTurned(const ViewParams& view, const PickPlace& place, double GX, double GY, Point at,
                            std::int64_t margin_px) {
    constexpr double kPixelBudget = 0x1p30;  // far from where pixels saturate
    constexpr double kMostUneven = 1024.0;   // stretches beyond which rounding of one axis shows in the other
    constexpr std::int64_t kSlack_px = 4;    // device points are up to one and a half pixels off
    const double r = view.PixPerUnit();
    const double scaleX = std::fabs(view.ScaleX);
    const double scaleY = std::fabs(view.ScaleY);
    const double scale = (std::max)(scaleX, scaleY);
    const double shift_px =
        std::fabs(r) * (std::fabs(place.viewX) + std::fabs(place.viewY) + std::fabs(view.OffX) + std::fabs(view.OffY)) +
        std::fabs(place.devOffX) + std::fabs(place.devOffY);
    const double limit = (kPixelBudget - shift_px) / (2 * std::fabs(r) * scale) - std::fabs(GX) - std::fabs(GY) - 2;
    const double reach_px =
        static_cast<double>(margin_px) + std::fabs(static_cast<double>(at.x)) + std::fabs(static_cast<double>(at.y));
    // Written so that a NaN anywhere leaves all of it undone.
    const bool sound = limit >= 1 && std::isfinite(limit) && reach_px <= kPixelBudget && (std::min)(scaleX, scaleY) > 0 &&
                       scale <= kMostUneven * (std::min)(scaleX, scaleY);
    if (!sound) return;

    const ViewRotation back(-view.Rotate);
    double left = 0, right = 0, top = 0, bottom = 0;
    for (int corner = 0; corner < 4; ++corner) {
        const std::int64_t reach = margin_px + kSlack_px;
        const double px = static_cast<double>(at.x + (corner % 2 == 0 ? -reach : reach));
        const double py = static_cast<double>(at.y + (corner / 2 == 0 ? -reach : reach));
        double x = ((px - place.devOffX) / r + place.viewX + view.OffX) / view.ScaleX;
        double y = ((py - place.devOffY) / r + place.viewY + view.OffY) / view.ScaleY;
        back.Apply(x, y);
        const double localX = x - GX;
        const double localY = -y - GY;
        left = corner == 0 ? localX : (std::min)(left, localX);
        right = corner == 0 ? localX : (std::max)(right, localX);
        top = corner == 0 ? localY : (std::min)(top, localY);
        bottom = corner == 0 ? localY : (std::max)(bottom, localY);
    }
    if (!std::isfinite(left + right + top + bottom)) return;
    left_ = TruncToInt32(std::floor(left) - 2);
    right_ = TruncToInt32(std::ceil(right) + 2);
    top_ = TruncToInt32(std::floor(top) - 2);
    bottom_ = TruncToInt32(std::ceil(bottom) + 2);
    limit_ = TruncToInt32(limit);
}

}  // namespace orvane
