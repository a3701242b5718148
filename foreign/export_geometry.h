// Items of the store as geometries in map coordinates.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "foreign/export.h"
#include "store/records.h"

class OGRGeometry;

namespace orvane {

/// What the geometries of one block have in common.
struct GeometryFrame {
    double GX = 0;
    double GY = 0;
    bool heights = false;      ///< points have their z as height
    bool alwaysMulti = false;  ///< polygons of one part stand as several, so that a layer is of one type
};

/// Null, with the reason counted, for an item that has no such geometry, or that has none on the map because its block's origin
/// is no place, or so far out that its points fall together. A polygon that crosses itself is one as it stands. REQUIRES: a layer
/// type of one geometry an item: point, line, polygon, circle, ellipse or text.
std::unique_ptr<OGRGeometry> GeometryOf(const DigDat& dat, std::int32_t layType, const GeometryFrame& frame,
                                        ExportLeftOut& leftOut);

/// A closed flat figure of these corners, whatever their z; null when they lie on one line or a corner is no place on the map.
std::unique_ptr<OGRGeometry> CellGeometry(std::span<const DigPnt> corners, const GeometryFrame& frame);

/// Whether an item of the type has a height that is not 0.
bool HasHeight(const DigDat& dat, std::int32_t layType);

}  // namespace orvane
