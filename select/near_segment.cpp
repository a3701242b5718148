#include "select/near_segment.h"

#include <optional>
#include <span>
#include <utility>

#include "analysis/geometry/plane.h"
#include "platform/grow_array.h"

namespace orvane {

namespace {

/// Positions of the nearest vertex and of the two beside it, which may lie before the first or behind the last.
struct Corner {
    std::int32_t vertex = 0;
    std::int32_t prev = 0;
    std::int32_t next = 0;
};

/// A vertex that is not there is at (0, 0).
DigPnt VertexAt(std::span<const DigPnt> pnts, std::int32_t i) {
    return i >= 0 && static_cast<std::size_t>(i) < pnts.size() ? pnts[static_cast<std::size_t>(i)] : DigPnt{};
}

std::int32_t NearestVertex(std::span<const DigPnt> pnts, double x, double y) {
    double nearest = 999999999.0;
    std::int32_t vertex = -1;
    for (std::size_t i = 0; i < pnts.size(); ++i) {
        const double distance = Pythag(pnts[i].x - x, pnts[i].y - y);
        if (!(distance < nearest)) continue;
        nearest = distance;
        vertex = static_cast<std::int32_t>(i);
    }
    return vertex;
}

/// Lets the ends of the ring at the corner be neighbours; the point that closes a ring is stepped over. False without memory.
bool WrapRings(std::span<const DigPnt> pnts, Corner& corner) {
    GrowArray<std::int32_t> ringCounts;
    if (!ringCounts.Resize(pnts.size())) return false;
    const std::int32_t rings = SplitRings(pnts, ringCounts.data(), false);
    std::int32_t start = 0;
    for (std::int32_t ring = 0; ring < rings; ++ring) {
        const std::int32_t end = start + ringCounts[static_cast<std::size_t>(ring)] - 1;
        if (corner.vertex == start) corner.prev = end - 1;
        if (corner.vertex == end) corner.next = start + 1;
        start = end + 1;
    }
    return true;
}

std::optional<Corner> NearestCorner(const OrgDat& figure, std::span<const DigPnt> pnts, double x, double y) {
    Corner corner;
    corner.vertex = NearestVertex(pnts, x, y);
    if (corner.vertex < 0) return std::nullopt;
    corner.prev = corner.vertex - 1;
    corner.next = corner.vertex + 1;
    if (figure.type == kLayLine) {
        if (corner.prev < 0) corner.prev = 0;
    } else if (!WrapRings(pnts, corner)) {
        return std::nullopt;
    }
    return corner;
}

/// The other end of the segment, and where it counts as standing. At the ends of a line both ends are the same vertex, so that
/// a new point goes before the first or behind the last.
std::pair<std::int32_t, DigPnt> OtherEnd(const OrgDat& figure, std::span<const DigPnt> pnts, const Corner& corner, double x,
                                         double y) {
    const DigPnt here = VertexAt(pnts, corner.vertex);
    const DigPnt before = VertexAt(pnts, corner.prev);
    const DigPnt after = VertexAt(pnts, corner.next);
    if (figure.type == kLayLine) {
        if (corner.next == figure.pntCnt) return {corner.next, here};
        if (corner.vertex == 0) return {corner.prev, here};
    }
    const DigPnt click{x, y, 0};
    if (SegDist(click, here, before) >= SegDist(click, here, after)) return {corner.next, after};
    return {corner.prev, before};
}

NearSegmentAnswer Find(const CDigMem& store, std::int32_t ID, double x, double y) {
    const OrgDat* figure = store.InitDone() ? store.FindOrgDat(ID) : nullptr;
    if (figure == nullptr || figure->pntCnt < 2) return {};
    const std::span<const DigPnt> pnts(figure->pnts.data(), static_cast<std::size_t>(figure->pntCnt));
    const std::optional<Corner> corner = NearestCorner(*figure, pnts, x, y);
    if (!corner) return {};
    const DigPnt first = VertexAt(pnts, corner->vertex);
    auto [k, second] = OtherEnd(*figure, pnts, *corner, x, y);
    std::int32_t i = corner->vertex;
    if (i < k) std::swap(i, k);
    if (i - k > 1) {  // the two ends of a ring: the new point goes before the one that closes it
        k = i;
        i = i + 1;
    }
    return {i, k, first.x, first.y, second.x, second.y};
}

}  // namespace

NearSegmentAnswer NearSegment(const CDigMem& store, std::int32_t figure, double x, double y, bool keep) {
    thread_local NearSegmentAnswer last;
    if (!keep) last = Find(store, figure, x, y);
    return last;
}

}  // namespace orvane
