// Polygon overlay: the intersection of two polygons, or the union of several.
//
// All edges of both polygons are cut where they cross, each piece is kept or dropped by where its middle lies, and what is kept
// is chained into rings. Comparisons are exact on coordinates of six decimals. The answers are those of plain walks over all
// pairs of edges; indexes in list order find the crossings in time that grows with the edges and the pairs whose boxes meet.
// Whether a piece lies inside is asked of a ray to the right, which walks the edges that it meets, or where they are many, of an
// index of the crossings by height.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "analysis/geometry/dig_pnt.h"
#include "store/cdigmem.h"

namespace orvane {

enum class OverlayMode : std::int32_t { Intersection = 0, Union = 1 };

/// Told from time to time how much of the work is done, from 0 to 1 and never less than before, also inside of one large polygon;
/// false cancels. It may call anything.
using OverlayProgress = std::function<bool(double done)>;

/// Overlays two polygons, rings one behind the other, each closed by its opening point, even-odd. `result` receives rings that
/// begin at their lowest x when they are several, z 0: anticlockwise, with y upward, where the opening point counts as outside of
/// the whole, clockwise where it counts as inside, which for a point on its own ring is not always what one would say of the
/// ring. Single points of chains that went nowhere may stand between them. It is empty when nothing is common, when a polygon has
/// fewer than 3 points, without memory, or when cancelled, and then the answer is false. So that no input keeps the cutting going
/// for ever, it is empty too when two edges have cut each other more than 65,536 times, or when the pieces of one polygon are
/// more than the square of both polygons' edges together, or more than 16,777,216.
bool OverlayPolygons(std::span<const DigPnt> a, std::span<const DigPnt> b, OverlayMode mode, std::vector<DigPnt>& result,
                     const OverlayProgress& progress = {});

/// A block by its key.
struct OverlayBlock {
    std::string_view code;
    std::int32_t meshNo = 0;
};

/// The IDs of the items that overlapped and of the polygons that were stored for them, one entry a result.
struct OverlayIds {
    std::vector<std::int32_t> datIDA;
    std::vector<std::int32_t> datIDB;
    std::vector<std::int32_t> datIDC;
};

/// Stores the intersection of each item of A with each of B whose integer bounds meet as a new item of C. Points are taken as
/// they are, local to their blocks, so the blocks have to share an origin. Results are stored when all of them are there, so they
/// do not take part themselves. Gives the number of results in `ids`; 0, with nothing stored, unless all three blocks exist as
/// polygon layers, and when `progress` cancels or the store is emptied meanwhile.
std::int32_t PolygonBuffering(CDigMem& store, const OverlayBlock& a, const OverlayBlock& b, const OverlayBlock& c,
                              OverlayIds& ids, const OverlayProgress& progress = {});

/// Overlays the active polygons of what is displayed, each with the result of those before it and snapped to it, and stores the
/// last result as one new item of C. 1 with its ID in `datIDC`, else 0 with nothing stored.
std::int32_t ActPolygonBuffering(CDigMem& store, OverlayMode mode, const OverlayBlock& c, std::int32_t& datIDC,
                                 const OverlayProgress& progress = {});

}  // namespace orvane
