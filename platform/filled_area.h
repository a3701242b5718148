// Equality of filled areas, the platform's region comparison in plain code.
#pragma once

#include <cstdint>
#include <span>

#include "platform/values.h"

namespace orvane {

/// Closed rings, one behind the other; each may repeat its opening point or leave that out.
struct FilledRings {
    std::span<const Point> pnts;
    std::span<const std::int32_t> counts;  ///< points of each ring
};

/// Whether two sets of rings, each filled by the even-odd rule, cover the same area. An area of nothing equals nothing, as a
/// region that could not be made equals none. It may throw std::bad_alloc.
bool SameFilledArea(const FilledRings& a, const FilledRings& b);

}  // namespace orvane
