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

bool IsPlace(const DigPnt& p) {
    return std::fabs(p.x) <= kFarthestCoordinate && std::fabs(p.y) <= kFarthestCoordinate && std::isfinite(p.z);
}

bool SamePlace(const DigPnt& a, const DigPnt& b) { return a.x == b.x && a.y == b.y; }

void SetPoints(OGRSimpleCurve& curve, Ring points, bool backwards, const GeometryFrame& frame) {
    const auto count = static_cast<int>(points.size());
    curve.setNumPoints(count, FALSE);
    for (int i = 0; i < count; ++i) {
        const DigPnt& p = points[static_cast<std::size_t>(backwards ? count - 1 - i : i)];
        if (frame.heights) {
            curve.setPoint(i, p.x + frame.GX, p.y + frame.GY, p.z);
        } else {
            curve.setPoint(i, p.x + frame.GX, p.y + frame.GY);
        }
    }
}

std::unique_ptr<OGRPoint> PointAt(const DigPnt& p, const GeometryFrame& frame) {
    if (frame.heights) return std::make_unique<OGRPoint>(p.x + frame.GX, p.y + frame.GY, p.z);
    return std::make_unique<OGRPoint>(p.x + frame.GX, p.y + frame.GY);
}

// Outer rings run against the clock and holes with it, as the formats that care have it.
std::unique_ptr<OGRLinearRing> MakeRing(Ring points, bool hole, const GeometryFrame& frame) {
    auto ring = std::make_unique<OGRLinearRing>();
    SetPoints(*ring, points, (DoubleArea(points) > 0) == hole, frame);
    return ring;
}

// Rings of some area. What else the item holds is counted, but only once it is known that there is such a ring.
std::vector<Ring> RingsWithArea(Ring points, ExportLeftOut& leftOut) {
    std::vector<std::int32_t> counts(points.size());
    const std::int32_t ringCnt = SplitRings(points, counts.data(), false);
    std::vector<Ring> rings;
    std::int64_t flat = 0;
    std::size_t first = 0;
    for (std::int32_t r = 0; r < ringCnt; ++r) {
        const auto length = static_cast<std::size_t>(counts[static_cast<std::size_t>(r)]);
        const Ring ring = points.subspan(first, length);
        first += length;
        if (length >= 4 && DoubleArea(ring) != 0) {
            rings.push_back(ring);
        } else {
            ++flat;
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

std::unique_ptr<OGRGeometry> PolygonOf(Ring points, const GeometryFrame& frame, ExportLeftOut& leftOut) {
    const std::vector<Ring> rings = RingsWithArea(points, leftOut);
    if (rings.empty()) return nullptr;
    const std::vector<std::int32_t> parents = RingParents(rings);
    // The depth of a ring is one more than its parent's; parents need not stand before their children.
    std::vector<std::int32_t> depths(rings.size(), -1);
    std::vector<std::size_t> chain;
    for (std::size_t r = 0; r < rings.size(); ++r) {
        std::size_t at = r;
        for (; depths[at] < 0 && parents[at] >= 0; at = static_cast<std::size_t>(parents[at])) chain.push_back(at);
        if (depths[at] < 0) depths[at] = 0;
        for (; !chain.empty(); chain.pop_back()) {
            depths[chain.back()] = depths[static_cast<std::size_t>(parents[chain.back()])] + 1;
        }
    }
    std::vector<std::unique_ptr<OGRPolygon>> parts(rings.size());
    for (std::size_t r = 0; r < rings.size(); ++r) {
        if (depths[r] % 2 != 0) continue;
        parts[r] = std::make_unique<OGRPolygon>();
        parts[r]->addRingDirectly(MakeRing(rings[r], false, frame).release());
    }
    for (std::size_t r = 0; r < rings.size(); ++r) {
        if (depths[r] % 2 == 0) continue;
        parts[static_cast<std::size_t>(parents[r])]->addRingDirectly(MakeRing(rings[r], true, frame).release());
    }
    std::erase(parts, nullptr);
    if (parts.size() == 1 && !frame.alwaysMulti) return std::move(parts.front());
    auto all = std::make_unique<OGRMultiPolygon>();
    for (auto& part : parts) all->addGeometryDirectly(part.release());
    return all;
}

std::unique_ptr<OGRGeometry> LineOf(Ring points, const GeometryFrame& frame, ExportLeftOut& leftOut) {
    if (std::all_of(points.begin(), points.end(), [&](const DigPnt& p) { return SamePlace(p, points[0]); })) {
        ++leftOut.tooFewPoints;
        return nullptr;
    }
    auto line = std::make_unique<OGRLineString>();
    SetPoints(*line, points, false, frame);
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
    if (figure == nullptr) ++leftOut.tooFewPoints;
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
    if (IsPlace(anchor)) return PointAt(anchor, frame);
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
    if (!std::all_of(points.begin(), points.end(), IsPlace)) {
        ++leftOut.notFinite;
        return nullptr;
    }
    switch (layType) {
        case kLayPoint:
            return PointAt(points[0], frame);
        case kLayLine:
            return LineOf(points, frame, leftOut);
        case kLayPolygon:
            return PolygonOf(points, frame, leftOut);
        case kLayCircle:
            return RoundOf(points[0], points[0].z, points[0].z, frame, leftOut);
        default:
            return EllipseOf(points, frame, leftOut);
    }
}

std::unique_ptr<OGRGeometry> CellGeometry(std::span<const DigPnt> corners, const GeometryFrame& frame) {
    if (!std::all_of(corners.begin(), corners.end(), IsPlace)) return nullptr;
    std::vector<DigPnt> ring(corners.begin(), corners.end());
    ring.push_back(ring.front());
    if (DoubleArea(ring) == 0) return nullptr;
    auto polygon = std::make_unique<OGRPolygon>();
    GeometryFrame flat = frame;
    flat.heights = false;
    polygon->addRingDirectly(MakeRing(ring, false, flat).release());
    return polygon;
}

bool HasHeight(const DigDat& dat, std::int32_t layType) {
    if (layType == kLayText) return dat.str != nullptr && dat.str->z != 0;
    if (layType != kLayPoint && layType != kLayLine && layType != kLayPolygon) return false;
    const Ring points = PointsOf(dat).first(UsedPoints(layType, PointsOf(dat).size()));
    return std::any_of(points.begin(), points.end(), [](const DigPnt& p) { return p.z != 0; });
}

}  // namespace orvane
