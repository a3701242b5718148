// Sheet numbers of the standard regional mesh and where their sheets lie in the mesh frame.
#pragma once

#include <cstdint>

namespace orvane {

struct MeshXY {
    std::int32_t x = 0;  ///< mesh units, east
    std::int32_t y = 0;  ///< mesh units, north
};

/// A sheet number taken apart: where its sheet stands among the primary meshes, and inside its own.
struct SheetPlace {
    std::int32_t row = 0;
    std::int32_t column = 0;
    std::int32_t rowInside = 0;
    std::int32_t columnInside = 0;
};

/// The number is read as printed and not as a value: sheets beyond six digits and signed numbers get the place that their
/// leading characters spell, which a division would not give.
SheetPlace ReadSheet(std::int32_t mesh);

/// Origin of sheet `mesh` relative to the sheet `base`. A sheet is 10000 units wide and high. Any number has an answer: the six
/// leading characters of its decimal form are read, so longer numbers are cut and shorter ones padded with zeros.
MeshXY MeshOrigin(std::int32_t base, std::int32_t mesh);

}  // namespace orvane
