#include "foreign/shapes.h"

#include <ogr_geometry.h>

#include <algorithm>
#include <limits>
#include <memory>

#include "foreign/rings.h"

namespace orvane {

namespace {

constexpr int kMaxDepth = 32;  // collections in collections; GDAL's own readers stop there too

std::vector<DigPnt> PointsOf(const OGRSimpleCurve& curve) {
    std::vector<DigPnt> points(static_cast<std::size_t>(curve.getNumPoints()));
    for (int i = 0; i < curve.getNumPoints(); ++i) {
        points[static_cast<std::size_t>(i)] = {curve.getX(i), curve.getY(i), curve.Is3D() ? curve.getZ(i) : 0};
    }
    return points;
}

bool OnePlace(const std::vector<DigPnt>& points) {
    return std::all_of(points.begin(), points.end(), [&](const DigPnt& p) { return p.x == points[0].x && p.y == points[0].y; });
}

bool TooMany(const std::vector<DigPnt>& points) {
    return points.size() > static_cast<std::size_t>((std::numeric_limits<std::int32_t>::max)());
}

// An empty part of something larger is no loss.
bool IsEmpty(const OGRGeometry* geometry) { return geometry == nullptr || geometry->IsEmpty(); }

}  // namespace

void ShapeReader::Read(const OGRGeometry* geometry) {
    if (IsEmpty(geometry)) {
        ++leftOut_.noGeometry;
        return;
    }
    ReadPart(*geometry, 0);
}

void ShapeReader::ReadPart(const OGRGeometry& geometry, int depth) {
    if (geometry.IsEmpty()) return;
    if (depth > kMaxDepth) {
        ++leftOut_.unknownType;
        return;
    }
    if (geometry.hasCurveGeometry(TRUE)) {
        const std::unique_ptr<OGRGeometry> straight(geometry.getLinearGeometry());
        if (straight == nullptr || straight->hasCurveGeometry(TRUE)) {
            ++leftOut_.unknownType;
        } else {
            ReadPart(*straight, depth + 1);
        }
        return;
    }
    switch (wkbFlatten(geometry.getGeometryType())) {
        case wkbPoint:
            return ReadPoint(geometry);
        case wkbLineString:
        case wkbLinearRing:
            return ReadLine(*geometry.toLineString());
        case wkbPolygon:
        case wkbTriangle:
            return ReadPolygons({geometry.toPolygon()});
        case wkbMultiPolygon: {
            std::vector<const OGRPolygon*> parts;
            for (const OGRPolygon* part : *geometry.toMultiPolygon()) parts.push_back(part);
            return ReadPolygons(parts);
        }
        case wkbMultiPoint:
        case wkbMultiLineString:
        case wkbGeometryCollection:
        case wkbMultiCurve:
        case wkbMultiSurface:
            for (const OGRGeometry* part : *geometry.toGeometryCollection()) {
                if (part != nullptr) ReadPart(*part, depth + 1);
            }
            return;
        case wkbPolyhedralSurface:
        case wkbTIN:
            // Faces of a body may lie over each other on the map, so each is an item of its own.
            for (const OGRPolygon* face : *geometry.toPolyhedralSurface()) {
                if (!IsEmpty(face)) ReadPolygons({face});
            }
            return;
        default:
            ++leftOut_.unknownType;
    }
}

void ShapeReader::ReadPoint(const OGRGeometry& geometry) {
    const OGRPoint& point = *geometry.toPoint();
    Shape shape{kLayPoint, {{point.getX(), point.getY(), point.Is3D() ? point.getZ() : 0}}};
    if (!projector_.Carry(shape.pnts)) {
        ++leftOut_.notFinite;
        return;
    }
    take_(std::move(shape));
}

void ShapeReader::ReadLine(const OGRLineString& line) {
    Shape shape{kLayLine, PointsOf(line)};
    if (!projector_.Carry(shape.pnts)) {
        ++leftOut_.notFinite;
    } else if (shape.pnts.size() < 2 || OnePlace(shape.pnts)) {
        ++leftOut_.tooFewPoints;
    } else if (TooMany(shape.pnts)) {
        ++leftOut_.unknownType;
    } else {
        take_(std::move(shape));
    }
}

void ShapeReader::ReadPolygons(const std::vector<const OGRPolygon*>& parts) {
    RingPacker packer;
    std::int64_t withoutArea = 0;
    for (const OGRPolygon* part : parts) {
        if (IsEmpty(part)) continue;
        bool outer = true;
        for (const OGRLinearRing* ring : *part) {
            if (ring == nullptr) continue;
            std::vector<DigPnt> points = PointsOf(*ring);
            if (!projector_.Carry(points)) {
                ++leftOut_.notFinite;
                return;
            }
            const bool added = packer.Add(std::move(points));
            if (!added) ++withoutArea;
            if (!added && outer) break;  // holes of nothing
            outer = false;
        }
    }
    Shape shape{kLayPolygon, packer.Take()};
    if (shape.pnts.empty()) {
        ++leftOut_.tooFewPoints;
    } else if (TooMany(shape.pnts)) {
        ++leftOut_.unknownType;
    } else {
        leftOut_.rings += withoutArea;
        take_(std::move(shape));
    }
}

}  // namespace orvane
