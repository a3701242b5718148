// Scaling of whole numbers as the platform does it, in plain code so that every system answers alike.
#pragma once

#include <cstdint>
#include <limits>

namespace orvane {

/// `number` * `numerator` / `denominator`, with the product in 64 bits and halves rounded away from zero. -1 when the denominator
/// is 0 or the result does not fit into 32 bits.
inline std::int32_t MulDiv(std::int32_t number, std::int32_t numerator, std::int32_t denominator) {
    if (denominator == 0) return -1;
    const std::int64_t product = std::int64_t{number} * numerator;
    const bool negative = (product < 0) != (denominator < 0);
    const std::int64_t size = product < 0 ? -product : product;
    const std::int64_t divisor = denominator < 0 ? -std::int64_t{denominator} : std::int64_t{denominator};
    const std::int64_t quotient = (size + divisor / 2) / divisor;
    const std::int64_t result = negative ? -quotient : quotient;
    using Limits = std::numeric_limits<std::int32_t>;
    if (result < (Limits::min)() || result > (Limits::max)()) return -1;
    return static_cast<std::int32_t>(result);
}

}  // namespace orvane
