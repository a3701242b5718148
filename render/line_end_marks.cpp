// Marks at the ends of a line. Each figure is built upright around the end and turned about it into the line's direction.
#include <array>
#include <cmath>

#include "platform/to_int.h"
#include "render/line_figures.h"
#include "render/line_pattern.h"
#include "render/line_polygon.h"
#include "render/tick_end.h"

namespace orvane {

namespace {

enum EndMark : std::int32_t { kMarkCircle = 1, kMarkSquare = 2, kMarkTriangle = 3, kMarkDiamond = 4, kMarkArrow = 5 };

/// A corner by its way from the end of the line.
struct Corner {
    double x;
    double y;
};

/// Draws the corners turned, the first once more at the end.
template <std::size_t N>
void DrawTurned(DeviceContext& dc, Point at, double angle_rad, const std::array<Corner, N>& corners) {
    const double cosA = std::cos(-angle_rad), sinA = std::sin(-angle_rad);
    std::array<Point, N + 1> pts;
    for (std::size_t i = 0; i < N; ++i) {
        const auto [dx, dy] = corners[i];
        pts[i] = {TruncToInt32(at.x + dx * cosA - dy * sinA), TruncToInt32(at.y + dx * sinA + dy * cosA)};
    }
    pts[N] = pts[0];
    dc.Polygon(pts.data(), static_cast<std::int32_t>(N + 1));
}

void DrawCircle(DeviceContext& dc, Point at, double half) {
    dc.BeginPath();
    dc.Ellipse(TruncToInt32(at.x - half), TruncToInt32(at.y + half), TruncToInt32(at.x + half), TruncToInt32(at.y - half));
    dc.EndPath();
    dc.FillPath();
}

/// The two barbs point back along the line that comes in from `inner`.
void DrawArrow(DeviceContext& dc, Point at, Point inner, std::int32_t size_px) {
    const Point barbs[] = {TickEnd(size_px, 135.0, inner, at), at, TickEnd(size_px, -135.0, inner, at)};
    dc.Polyline(barbs, 3);
}

/// `inner` is the neighbour of the end `at`; `angle_rad` is the direction in which its segment was digitised.
void DrawMark(DeviceContext& dc, std::int32_t shape, std::int32_t size_px, Point at, Point inner, double angle_rad) {
    const double half = size_px / 2;
    const double high = std::trunc(std::sqrt(3.0) * size_px / 2.0 / 2.0);
    switch (shape) {
        case kMarkCircle:
            return DrawCircle(dc, at, half);
        case kMarkSquare:
            return DrawTurned<4>(dc, at, angle_rad, {{{-half, half}, {half, half}, {half, -half}, {-half, -half}}});
        case kMarkTriangle:
            return DrawTurned<3>(dc, at, angle_rad, {{{0, -high}, {half, high}, {-half, high}}});
        case kMarkDiamond:
            return DrawTurned<4>(dc, at, angle_rad, {{{-half, 0}, {0, half}, {half, 0}, {0, -half}}});
        case kMarkArrow:
            return DrawArrow(dc, at, inner, size_px);
        default:
            return;
    }
}

double Direction(Point from, Point to) {
    return std::atan2(static_cast<double>(std::int64_t{from.y} - to.y), static_cast<double>(std::int64_t{to.x} - from.x));
}

}  // namespace

void DrawLineEndMarks(const CDigMem& store, DeviceContext& dc, const Point* pts, std::int32_t count, std::int32_t index) {
    if (count < 2 || index < 0 || static_cast<std::size_t>(index) >= store.lineTypes.size()) return;
    const LineTypeDef& def = store.lineTypes[static_cast<std::size_t>(index)];
    const std::int32_t shape = ListValue(def.ltList2, 0);
    const std::int32_t size_px = PenUnitsToPix(ListValue(def.ltList, 0), store.view.PenFactor());
    if (def.ltPos == kPlaceStart || def.ltPos == kPlaceBoth) {
        DrawMark(dc, shape, size_px, pts[0], pts[1], Direction(pts[0], pts[1]));
    }
    if (def.ltPos == kPlaceEnd || def.ltPos == kPlaceBoth) {
        const Point last = pts[count - 1], inner = pts[count - 2];
        DrawMark(dc, shape, size_px, last, inner, Direction(inner, last));
    }
}

}  // namespace orvane
