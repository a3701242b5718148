// How many grid points a mesh item has attributes of.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "store/records.h"

namespace orvane {

/// hcnt * vcnt as far as the arrays go, and 0 for counts that make no grid.
inline std::size_t MeshSize(const DigMeshAttr& attr) {
    const std::int64_t product = static_cast<std::int64_t>(attr.hcnt) * attr.vcnt;
    const std::int64_t held = (std::min)(product, std::int64_t{attr.arrayCnt});
    return held > 0 ? static_cast<std::size_t>(held) : 0;
}

}  // namespace orvane
