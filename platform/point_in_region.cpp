#include "platform/point_in_region.h"

#include <algorithm>
#include <utility>

#include "platform/rect.h"

namespace orvane {

namespace {

/// True when the side a-b crosses the row of `at` there or left of it. Only the upper of its ends belongs to it.
bool CrossesLeftOf(Point a, Point b, Point at) {
    if (a.y > b.y) std::swap(a, b);
    if (at.y < a.y || at.y >= b.y) return false;
    if (at.x >= (std::max)(a.x, b.x)) return true;
    if (at.x < (std::min)(a.x, b.x)) return false;
    // The product of two 32-bit differences fills 64 bits without a sign; here both sides have the same one.
    const std::int64_t wide = std::int64_t{b.x} - a.x;
    const std::int64_t way = std::int64_t{at.x} - a.x;
    const auto product = [](std::int64_t u, std::int64_t v) {
        return static_cast<std::uint64_t>(u < 0 ? -u : u) * static_cast<std::uint64_t>(v);
    };
    const std::uint64_t crossing = product(wide, std::int64_t{at.y} - a.y);
    const std::uint64_t pixel = product(way, std::int64_t{b.y} - a.y);
    return wide > 0 ? crossing <= pixel : crossing >= pixel;
}

bool OddSidesLeftOf(const Point* pts, std::int32_t count, Point at) {
    bool odd = false;
    for (std::int32_t i = 0; i < count; ++i) {
        const Point& next = pts[i + 1 < count ? i + 1 : 0];
        if (CrossesLeftOf(pts[i], next, at)) odd = !odd;
    }
    return odd;
}

}  // namespace

bool PtInPolygon(const Point* pts, std::int32_t count, Point at) { return OddSidesLeftOf(pts, count, at); }

bool PtInPolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t polygonCnt, Point at) {
    bool odd = false;
    for (std::int32_t i = 0; i < polygonCnt; ++i) {
        odd = odd != OddSidesLeftOf(pts, counts[i], at);
        pts += counts[i];
    }
    return odd;
}

bool PtInEllipse(const Rect& box, Point at) {
    const Rect b = NormalizeRect(box);
    if (!PtInRect(b, at)) return false;
    // In half pixels from the middle, so that centres of pixels and of the box are whole numbers.
    const std::int64_t width = std::int64_t{b.right} - b.left;
    const std::int64_t height = std::int64_t{b.bottom} - b.top;
    const std::int64_t x = 2 * std::int64_t{at.x} + 1 - b.left - b.right;
    const std::int64_t y = 2 * std::int64_t{at.y} + 1 - b.top - b.bottom;
    constexpr std::int64_t kExact = 30000;  // the fourth power of it fits
    if (width <= kExact && height <= kExact) {
        return x * x * height * height + y * y * width * width <= width * width * height * height;
    }
    const double u = static_cast<double>(x) / static_cast<double>(width);
    const double v = static_cast<double>(y) / static_cast<double>(height);
    return u * u + v * v <= 1.0;
}

}  // namespace orvane
