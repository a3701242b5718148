// Sheet numbers of the standard regional mesh and where their sheets lie in the mesh frame.
#pragma once

#include <cstdint>

namespace orvane {

struct MeshXY {
    std::int32_t x = 0;  ///< mesh units, east
    std::int32_t y = 0;  ///< mesh units, north
};

/// Origin of sheet `mesh` relative to the sheet `base`. A sheet is 10000 units wide and high. Any number has an answer: the six
/// leading characters of its decimal form are read, so longer numbers are cut and shorter ones padded with zeros.
MeshXY MeshOrigin(std::int32_t base, std::int32_t mesh);

}  // namespace orvane
