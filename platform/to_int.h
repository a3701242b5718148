// The one place where a double becomes an integer, and where sums of integers from outside are held, so that no value is
// undefined.
#pragma once

#include <cstdint>

namespace orvane {

/// Truncates toward zero. NaN gives 0; values beyond 32 bits saturate.
inline std::int32_t TruncToInt32(double value) {
    if (value >= 2147483647.0) return 2147483647;
    if (value <= -2147483648.0) return -2147483647 - 1;
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

/// The same for 64 bits.
inline std::int64_t TruncToInt64(double value) {
    if (value >= 9223372036854775808.0) return INT64_MAX;
    if (value <= -9223372036854775808.0) return INT64_MIN;
    return value == value ? static_cast<std::int64_t>(value) : 0;
}

/// Adds 0.5 and truncates toward zero, so negative values do not round symmetrically; hit tests and drawing rely on it.
/// NaN gives 0; values beyond 32 bits saturate.
inline std::int32_t ToInt(double value) { return TruncToInt32(value + 0.5); }

/// Sum of two coordinates, held to 32 bits.
inline std::int32_t SaturatedAdd(std::int32_t a, std::int32_t b) {
    return TruncToInt32(static_cast<double>(a) + static_cast<double>(b));
}

/// The negative of a number of pixels, held to 32 bits.
inline std::int32_t SaturatedNegative(std::int32_t v) { return TruncToInt32(-static_cast<double>(v)); }

}  // namespace orvane
