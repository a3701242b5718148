#include "foreign/export_geometry.h"

#include <ogr_geometry.h>

#include <algorithm>
#include <cmath>

#include "analysis/geometry/plane.h"
#include "foreign/ring_nesting.h"

namespace orvane {

namespace {

constexpr int kRoundPoints = 72;  // 5 degrees each: within a thousandth of the radius

using Ring = std::span<const DigPnt>;

Ring PointsOf(const DigDat& dat) { return {dat.pnts.Get(), static_cast<std::size_t>((std::max)(dat.pntCnt, 0))}; }

bool IsPlace(double x, double y) { return std::fabs(x) <= kFarthestCoordinate && std::fabs(y) <= kFarthestCoordinate; }

bool IsPlace(const DigPnt& p) { return IsPlace(p.x, p.y) && std::isfinite(p.z); }

bool SamePlace(const DigPnt& a, const DigPnt& b) { return a.x == b.x && a.y == b.y; }

bool IsOnePlace(Ring points) {
    return std::all_of(points.begin(), points.end(), [&](const DigPnt& p) { return SamePlace(p, points[0]); });
}

// Whether the points lie neither in one place nor on one line. The net area does not tell: that of a bow tie is 0.
bool HasExtent(Ring points) {
    if (points.empty()) return false;
    const DigPnt& a = points[0];
    const auto distance = [&a](const DigPnt& p) { return (std::max)(std::fabs(p.x - a.x), std::fabs(p.y - a.y)); };
    const DigPnt& b = *std::max_element(points.begin(), points.end(),
                                        [&](const DigPnt& p, const DigPnt& q) { return distance(p) < distance(q); });
    return std::any_of(points.begin(), points.end(),
                       [&](const DigPnt& p) { return (b.x - a.x) * (p.y - a.y) != (b.y - a.y) * (p.x - a.x); });
}

// In map coordinates. A block's origin may be any number, or none: what it makes of the points has to be looked at again.
std::vector<DigPnt> Placed(Ring points, const GeometryFrame& frame) {
    std::vector<DigPnt> placed(points.begin(), points.end());
    for (DigPnt& p : placed) {
        p.x += frame.GX;
        p.y += frame.GY;
    }
    return placed;
}

bool ArePlaces(Ring points) {
    return std::all_of(points.begin(), points.end(), [](const DigPnt& p) { return IsPlace(p.x, p.y); });
}

void SetPoints(OGRSimpleCurve& curve, Ring points, bool backwards, bool heights) {
    const auto count = static_cast<int>(points.size());
    curve.setNumPoints(count, FALSE);
    for (int i = 0; i < count; ++i) {
        const DigPnt& p = points[static_cast<std::size_t>(backwards ? count - 1 - i : i)];
        if (heights) {
            curve.setPoint(i, p.x, p.y, p.z);
        } else {
            curve.setPoint(i, p.x, p.y);
        }
    }
}

std::unique_ptr<OGRGeometry> PointAt(const DigPnt& p, bool heights) {
    return heights ? std::make_unique<OGRPoint>(p.x, p.y, p.z) : std::make_unique<OGRPoint>(p.x, p.y);
}

// One ring, local to its block and on the map.
struct TwoRings {
    Ring local;
    Ring placed;
};

// Outer rings run against the clock and holes with it, as the formats that care have it.
std::unique_ptr<OGRLinearRing> MakeRing(const TwoRings& rings, bool hole, bool heights) {
    auto ring = std::make_unique<OGRLinearRing>();
    SetPoints(*ring, rings.placed, (DoubleArea(rings.local) > 0) == hole, heights);
    return ring;
}

// Rings of some extent; none where there is none of that, or where the map is too coarse for one of them so far out. What else
// the item holds is counted, but only once it is known that there is such a ring.
std::vector<TwoRings> RingsWithExtent(Ring points, Ring placed, ExportLeftOut& leftOut) {
    std::vector<std::int32_t> counts(points.size());
    const std::int32_t ringCnt = SplitRings(points, counts.data(), false);
    std::vector<TwoRings> rings;
    std::int64_t flat = 0;
    std::size_t first = 0;
    for (std::int32_t r = 0; r < ringCnt; ++r) {
        const auto length = static_cast<std::size_t>(counts[static_cast<std::size_t>(r)]);
        const TwoRings ring{points.subspan(first, length), placed.subspan(first, length)};
        first += length;
        if (length < 4 || !HasExtent(ring.local)) {
            ++flat;
        } else if (HasExtent(ring.placed)) {
            rings.push_back(ring);
        } else {
            ++leftOut.notFinite;
            return {};
        }
    }
    if (rings.empty()) {
        ++leftOut.openPolygons;
    } else {
        leftOut.rings += flat;
        if (first < points.size()) ++leftOut.tails;
    }
    return rings;
}

// How deep each ring lies in others. Parents need not stand before their children.
std::vector<std::int32_t> RingDepths(const std::vector<std::int32_t>& parents) {
    std::vector<std::int32_t> depths(parents.size(), -1);
    std::vector<std::size_t> chain;
    for (std::size_t r = 0; r < parents.size(); ++r) {
        std::size_t at = r;
        for (; depths[at] < 0 && parents[at] >= 0; at = static_cast<std::size_t>(parents[at])) chain.push_back(at);
        if (depths[at] < 0) depths[at] = 0;
        for (; !chain.empty(); chain.pop_back()) {
            depths[chain.back()] = depths[static_cast<std::size_t>(parents[chain.back()])] + 1;
        }
    }
    return depths;
}

std::unique_ptr<OGRGeometry> PolygonOf(Ring points, Ring placed, const GeometryFrame& frame, ExportLeftOut& leftOut) {
    const std::vector<TwoRings> rings = RingsWithExtent(points, placed, leftOut);
    if (rings.empty()) return nullptr;
    std::vector<Ring> local;
    for (const TwoRings& ring : rings) local.push_back(ring.local);
    const std::vector<std::int32_t> parents = RingParents(local);
    const std::vector<std::int32_t> depths = RingDepths(parents);
    std::vector<std::unique_ptr<OGRPolygon>> parts(rings.size());
    for (std::size_t r = 0; r < rings.size(); ++r) {
        if (depths[r] % 2 != 0) continue;
        parts[r] = std::make_unique<OGRPolygon>();
        parts[r]->addRingDirectly(MakeRing(rings[r], false, frame.heights).release());
    }
    for (std::size_t r = 0; r < rings.size(); ++r) {
        if (depths[r] % 2 == 0) continue;
        parts[static_cast<std::size_t>(parents[r])]->addRingDirectly(MakeRing(rings[r], true, frame.heights).release());
    }
    std::erase(parts, nullptr);
    if (parts.size() == 1 && !frame.alwaysMulti) return std::move(parts.front());
    auto all = std::make_unique<OGRMultiPolygon>();
    for (auto& part : parts) all->addGeometryDirectly(part.release());
    return all;
}

std::unique_ptr<OGRGeometry> LineOf(Ring points, Ring placed, const GeometryFrame& frame, ExportLeftOut& leftOut) {
    if (IsOnePlace(placed)) {
        ++(IsOnePlace(points) ? leftOut.tooFewPoints : leftOut.notFinite);
        return nullptr;
    }
    auto line = std::make_unique<OGRLineString>();
    SetPoints(*line, placed, false, frame.heights);
    return line;
}

std::unique_ptr<OGRGeometry> RoundOf(const DigPnt& middle, double radiusX, double radiusY, const GeometryFrame& frame,
                                     ExportLeftOut& leftOut) {
    std::vector<DigPnt> points(kRoundPoints);
    for (int i = 0; i < kRoundPoints; ++i) {
        const double angle = 2 * std::acos(-1.0) * i / kRoundPoints;
        points[static_cast<std::size_t>(i)] = {middle.x + radiusX * std::cos(angle), middle.y + radiusY * std::sin(angle), 0};
    }
    auto figure = CellGeometry(points, frame);
    if (figure == nullptr) ++(HasExtent(points) ? leftOut.notFinite : leftOut.tooFewPoints);
    return figure;
}

std::unique_ptr<OGRGeometry> EllipseOf(Ring points, const GeometryFrame& frame, ExportLeftOut& leftOut) {
    const DigPnt middle{points[0].x / 2 + points[1].x / 2, points[0].y / 2 + points[1].y / 2, 0};
    return RoundOf(middle, points[1].x / 2 - points[0].x / 2, points[1].y / 2 - points[0].y / 2, frame, leftOut);
}

// The points that the shape is made of: a round one's further points mean nothing, and a text stands at its anchor.
std::size_t UsedPoints(std::int32_t layType, std::size_t pntCnt) {
    const std::size_t most = layType == kLayPoint || layType == kLayCircle ? 1 : layType == kLayEllipse ? 2 : pntCnt;
    return (std::min)(most, pntCnt);
}

std::unique_ptr<OGRGeometry> TextPoint(const DigDat& dat, const GeometryFrame& frame, ExportLeftOut& leftOut) {
    if (dat.str == nullptr) {
        ++leftOut.noText;
        return nullptr;
    }
    const DigPnt anchor{dat.str->x, dat.str->y, dat.str->z};
    const DigPnt placed = Placed({&anchor, 1}, frame).front();
    if (IsPlace(anchor) && IsPlace(placed)) return PointAt(placed, frame.heights);
    ++leftOut.notFinite;
    return nullptr;
}

}  // namespace

std::unique_ptr<OGRGeometry> GeometryOf(const DigDat& dat, std::int32_t layType, const GeometryFrame& frame,
                                        ExportLeftOut& leftOut) {
    if (layType == kLayText) return TextPoint(dat, frame, leftOut);
    const Ring points = PointsOf(dat).first(UsedPoints(layType, PointsOf(dat).size()));
    const std::size_t fewest = layType == kLayLine || layType == kLayEllipse ? 2 : 1;
    if (points.size() < fewest) {
        ++leftOut.tooFewPoints;
        return nullptr;
    }
    const std::vector<DigPnt> placed = Placed(points, frame);
    const auto isPlace = [](const DigPnt& p) { return IsPlace(p); };
    if (!std::all_of(points.begin(), points.end(), isPlace) || !ArePlaces(placed)) {
        ++leftOut.notFinite;
        return nullptr;
    }
    switch (layType) {
        case kLayPoint:
            return PointAt(placed[0], frame.heights);
        case kLayLine:
            return LineOf(points, placed, frame, leftOut);
        case kLayPolygon:
            return PolygonOf(points, placed, frame, leftOut);
        case kLayCircle:
            return RoundOf(points[0], points[0].z, points[0].z, frame, leftOut);
        default:
            return EllipseOf(points, frame, leftOut);
    }
}

std::unique_ptr<OGRGeometry> CellGeometry(std::span<const DigPnt> corners, const GeometryFrame& frame) {
    if (corners.empty() || !ArePlaces(corners)) return nullptr;
    std::vector<DigPnt> ring(corners.begin(), corners.end());
    ring.push_back(ring.front());
    const std::vector<DigPnt> placed = Placed(ring, frame);
    if (!HasExtent(ring) || !ArePlaces(placed) || !HasExtent(placed)) return nullptr;
    auto polygon = std::make_unique<OGRPolygon>();
    polygon->addRingDirectly(MakeRing({ring, placed}, false, false).release());
    return polygon;
}

bool HasHeight(const DigDat& dat, std::int32_t layType) {
    if (layType == kLayText) return dat.str != nullptr && dat.str->z != 0;
    if (layType != kLayPoint && layType != kLayLine && layType != kLayPolygon) return false;
    const Ring points = PointsOf(dat).first(UsedPoints(layType, PointsOf(dat).size()));
    return std::any_of(points.begin(), points.end(), [](const DigPnt& p) { return p.z != 0; });
}

}  // namespace orvane
