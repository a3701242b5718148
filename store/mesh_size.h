// How many grid points the arrays of a mesh item hold.
#pragma once

#include <cstddef>
#include <cstdint>

#include "store/records.h"

namespace orvane {

/// hcnt * vcnt, and 0 for counts that make no grid.
inline std::size_t MeshSize(const DigMeshAttr& attr) {
    const std::int64_t product = static_cast<std::int64_t>(attr.hcnt) * attr.vcnt;
    return product > 0 ? static_cast<std::size_t>(product) : 0;
}

}  // namespace orvane
