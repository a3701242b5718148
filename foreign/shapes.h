// Geometries taken apart into what the store holds as items.
#pragma once

#include <functional>
#include <vector>

#include "analysis/geometry/dig_pnt.h"
#include "foreign/import.h"
#include "foreign/plane_system.h"

class OGRGeometry;
class OGRLineString;
class OGRPolygon;

namespace orvane {

/// Points of one item in the plane of the zone, laid out as the layer type has them.
struct Shape {
    std::int32_t layType = 0;
    std::vector<DigPnt> pnts;
};

class ShapeReader {
public:
    ShapeReader(const Projector& projector, LeftOut& leftOut, std::function<void(Shape&&)> take)
        : projector_(projector), leftOut_(leftOut), take_(std::move(take)) {}

    /// Hands out the shapes of a geometry in order; what cannot be stored is counted. Null counts as no geometry.
    void Read(const OGRGeometry* geometry);

private:
    void ReadPart(const OGRGeometry& geometry, int depth);
    void ReadPoint(const OGRGeometry& geometry);
    void ReadLine(const OGRLineString& line);
    void ReadPolygons(const std::vector<const OGRPolygon*>& parts);

    const Projector& projector_;
    LeftOut& leftOut_;
    std::function<void(Shape&&)> take_;
};

}  // namespace orvane
