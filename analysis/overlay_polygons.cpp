// The overlay of two polygons from its first stage to its last.
#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "analysis/geometry/plane.h"
#include "analysis/overlay_parts.h"
#include "platform/filled_area.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

std::vector<Point> WholePoints(std::span<const DigPnt> pts) {
    std::vector<Point> whole;
    whole.reserve(pts.size());
    for (const DigPnt& p : pts) whole.push_back({ToInt(p.x), ToInt(p.y)});
    return whole;
}

/// Whether two polygons whose edges tell nothing cover the same area at whole coordinates.
bool SameArea(std::span<const DigPnt> a, std::span<const DigPnt> b) {
    const std::vector<std::int32_t> countsA = RingLengths(a);
    const std::vector<std::int32_t> countsB = RingLengths(b);
    const std::vector<Point> wholeA = WholePoints(a);
    const std::vector<Point> wholeB = WholePoints(b);
    return SameFilledArea({wholeA, countsA}, {wholeB, countsB});
}

std::vector<DigPnt> Stages(std::span<const DigPnt> rawA, std::span<const DigPnt> rawB, OverlayMode mode, OverlayWatch& watch) {
    std::vector<DigPnt> a = Clean(rawA);
    const std::vector<DigPnt> b = Clean(rawB);
    if (a.size() < 3 || b.size() < 3) return {};

    VertexTable vertices;
    vertices.Reserve(a.size() + b.size());
    EdgeList edgesA = MakeEdgeList(a, kSideA, vertices);
    EdgeList edgesB = MakeEdgeList(b, kSideB, vertices);
    if (!CutEdges(edgesA, edgesB, vertices, watch)) return {};

    std::vector<PolyEdge> kept;
    if (!Classify(edgesA, edgesB, mode, vertices, watch, kept)) return {};

    std::vector<DigPnt> result;
    if (kept.empty()) {
        if (!SameArea(a, b)) return {};
        result = std::move(a);
    } else {
        result = Link(kept, vertices.size(), mode, watch);
        Normal(result, watch);
        Twins(result, watch);
    }
    Orient(result, watch);
    for (DigPnt& p : result) p.z = 0;
    return result;
}

}  // namespace

bool OverlayWatch::Ask() {
    if (stopped_ || !progress_) return !stopped_;
    ++questions_;
    stopped_ = !progress_(done_);
    return !stopped_;
}

bool OverlayPair(std::span<const DigPnt> a, std::span<const DigPnt> b, OverlayMode mode, std::vector<DigPnt>& result,
                 OverlayWatch& watch) {
    result.clear();
    try {
        if (mode == OverlayMode::Intersection || mode == OverlayMode::Union) result = Stages(a, b, mode, watch);
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    if (watch.Stopped()) result.clear();
    return !result.empty();
}

bool OverlayPolygons(std::span<const DigPnt> a, std::span<const DigPnt> b, OverlayMode mode, std::vector<DigPnt>& result,
                     const OverlayProgress& progress) {
    OverlayWatch watch(progress);
    return OverlayPair(a, b, mode, result, watch);
}

}  // namespace orvane
