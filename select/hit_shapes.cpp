#include "select/hit_shapes.h"

#include "platform/point_in_region.h"
#include "platform/rect.h"
#include "platform/to_int.h"

namespace orvane {

bool InBoxAround(Point centre, std::int32_t halfWidth_px, std::int32_t halfHeight_px, Point at) {
    const Box box = NormalizeBox({std::int64_t{centre.x} - halfWidth_px, std::int64_t{centre.y} - halfHeight_px,
                                  std::int64_t{centre.x} + halfWidth_px, std::int64_t{centre.y} + halfHeight_px});
    return at.x >= box.left && at.x < box.right && at.y >= box.top && at.y < box.bottom;
}

bool InBandAlong(Point a, Point b, Point at) {
    std::int32_t ox = kBandHalf_px;
    std::int32_t oy = kBandHalf_px;
    if (a.x == b.x) {
        oy = 0;
    } else if (a.y == b.y) {
        ox = 0;
    } else if ((a.x > b.x) == (a.y > b.y)) {
        ox = -ox;
    }
    const auto moved = [](Point p, std::int32_t x, std::int32_t y) { return Point{SaturatedAdd(p.x, x), SaturatedAdd(p.y, y)}; };
    const Point band[] = {moved(a, -ox, -oy), moved(b, -ox, -oy), moved(b, ox, oy), moved(a, ox, oy)};
    return PtInPolygon(band, 4, at);
}

}  // namespace orvane
