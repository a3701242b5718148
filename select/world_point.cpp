#include "select/world_point.h"

#include "analysis/geometry/plane.h"

namespace orvane {

DigPnt FlippedWorldPoint(const ViewParams& view, const PickPlace& place, Point at) {
    const double r = view.PixPerUnit();
    // The pixel origin goes after the division, although drawing adds it after its multiplication.
    double x = (at.x / r - place.devOffX) / view.ScaleX + place.viewX + view.OffX;
    double y = (at.y / r - place.devOffY) / view.ScaleY + place.viewY + view.OffY;
    RotateView(x, y, -view.Rotate);
    return {x, y, 0};
}

std::optional<bool> InPolygonIfMemory(const DigPnt& p, std::span<const DigPnt> pts) noexcept {
    try {
        return PntInPgn(p, pts) != 0;
    } catch (...) {
        return std::nullopt;
    }
}

}  // namespace orvane
