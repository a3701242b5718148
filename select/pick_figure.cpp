#include "select/pick_figure.h"

#include "analysis/geometry/plane.h"
#include "platform/point_in_region.h"
#include "platform/to_int.h"
#include "select/hit_shapes.h"
#include "select/pick_scratch.h"
#include "select/world_point.h"

namespace orvane {

namespace {

constexpr std::int32_t kNoMemory = -2;

/// Half the side of the square that picks a point figure. Close to the steps of symbols, but with two more at the far end and no
/// regard to the device.
std::int32_t PointFigureHalf_px(std::int32_t zoom) {
    struct Step {
        std::int32_t aboveZoom, size_px;
    };
    constexpr Step kSteps[] = {{100000, 1}, {50000, 2}, {30000, 3}, {20000, 4}, {10000, 5}, {7000, 6}, {5000, 7}, {3000, 9}};
    for (const Step& step : kSteps) {
        if (zoom > step.aboveZoom) return step.size_px;
    }
    return 10;
}

DeviceTransform MapTransform(const ViewParams& view, const PickPlace& place) {
    return {view, place.viewX, place.viewY, place.devOffX, place.devOffY, 0, 0};
}

bool MeetsLineFigure(const Point* pts, std::int32_t count, Point at) {
    for (std::int32_t i = 1; i < count; ++i) {
        if (InBandAlong(pts[i - 1], pts[i], at)) return true;
    }
    return false;
}

/// The ellipse in the box around (`x`, `y`).
bool InEllipseAround(std::int32_t x, std::int32_t y, std::int32_t half_px, Point at) {
    const std::int32_t negative = SaturatedNegative(half_px);
    return PtInEllipse({SaturatedAdd(x, negative), SaturatedAdd(y, negative), SaturatedAdd(x, half_px), SaturatedAdd(y, half_px)},
                       at);
}

/// The circle goes through the second point but stands at its height, not at that of the first.
bool MeetsCircleFigure(Point centre, Point through, Point at) {
    const double radius_px = Pythag(static_cast<double>(centre.x) - through.x, static_cast<double>(centre.y) - through.y);
    return InEllipseAround(centre.x, through.y, TruncToInt32(radius_px), at);
}

bool IsOutside(const Rect& client, Point p) {
    return p.x < client.left || p.x > client.right || p.y < client.top || p.y > client.bottom;
}

}  // namespace

std::int32_t PickOrgFigure(const CDigMem& store, Point at, const PickPlace& place) {
    if (!store.InitDone()) return -1;
    const DeviceTransform transform = MapTransform(store.view, place);
    const std::int32_t half_px = PointFigureHalf_px(store.view.Zoom);
    DigPnt mapAt = FlippedWorldPoint(store.view, place, at);
    mapAt.y = -mapAt.y;
    PickScratch scratch;
    for (const OrgDat& figure : store.OrgDats()) {
        if (figure.ID == 0 || figure.pntCnt < 2) continue;
        Point* const pts = scratch.Points(figure.pntCnt);
        if (pts == nullptr) return kNoMemory;
        transform.ToDevice(figure.pnts.data(), figure.pntCnt, pts);
        bool met = false;
        if (figure.type == kLayPoint) {
            met = InBoxAround(pts[0], half_px, half_px, at);
        } else if (figure.type == kLayLine) {
            met = MeetsLineFigure(pts, figure.pntCnt, at);
        } else if (figure.type == kLayPolygon) {
            const auto inside = InPolygonIfMemory(mapAt, {figure.pnts.data(), static_cast<std::size_t>(figure.pntCnt)});
            if (!inside) return kNoMemory;
            met = *inside;
        } else if (figure.type == kLayCircle) {
            met = MeetsCircleFigure(pts[0], pts[1], at);
        } else if (figure.type == kLayEllipse) {
            met = PtInEllipse({pts[0].x, pts[0].y, pts[1].x, pts[1].y}, at);
        }
        if (met) return figure.ID;
    }
    return -1;
}

std::optional<OrgVertex> PickOrgPoint(const CDigMem& store, Point at, const PickPlace& place) {
    constexpr std::int32_t kFirstHalf_px = 5;
    constexpr std::int32_t kOtherHalf_px = 3;
    if (!store.InitDone()) return std::nullopt;
    const DeviceTransform transform = MapTransform(store.view, place);
    for (const OrgDat& figure : store.OrgDats()) {
        if (figure.ID == 0 || figure.active == 0) continue;
        for (std::int32_t i = 0; i < figure.pntCnt; ++i) {
            const DigPnt& pnt = figure.pnts[static_cast<std::size_t>(i)];
            const Point p = transform.ToDevice(pnt.x, pnt.y);
            if (IsOutside(place.client, p)) continue;
            if (InEllipseAround(p.x, p.y, i == 0 ? kFirstHalf_px : kOtherHalf_px, at)) return OrgVertex{figure.ID, i};
        }
    }
    return std::nullopt;
}

}  // namespace orvane
