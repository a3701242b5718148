#include "render/tick_end.h"

#include <cmath>

#include "platform/to_int.h"

namespace orvane {

namespace {

double Rounded(double v) { return std::trunc(v > 0 ? v + 0.5 : v - 0.5); }

}  // namespace

Point TickEnd(std::int32_t length_px, double angle_deg, Point a, Point b) {
    const double dx = static_cast<double>(std::int64_t{b.x} - a.x);
    const double dy = static_cast<double>(std::int64_t{a.y} - b.y);
    const double t = std::atan2(dy, dx) + angle_deg * kTickDegree_rad;
    const double length = length_px;
    return {TruncToInt32(b.x + Rounded(length * std::cos(t))), TruncToInt32(b.y - Rounded(length * std::sin(t)))};
}

}  // namespace orvane
