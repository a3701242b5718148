// A product of two numbers divided by a third, as the platform computes it for font heights.
#pragma once

#include <cstdint>

namespace orvane {

/// `number` * `numerator` / `denominator`, the product in 64 bits, halves rounded away from zero. -1 when the denominator is 0 or
/// the result does not fit.
inline std::int32_t MulDiv(std::int32_t number, std::int32_t numerator, std::int32_t denominator) {
    if (denominator == 0) return -1;
    const std::int64_t product = std::int64_t{number} * numerator;
    const std::int64_t divisor = denominator;
    const std::int64_t half = (divisor < 0 ? -divisor : divisor) / 2;
    const std::int64_t result = (product < 0 ? product - half : product + half) / divisor;
    if (result < INT32_MIN || result > INT32_MAX) return -1;
    return static_cast<std::int32_t>(result);
}

}  // namespace orvane
