// How large point symbols are. Drawing and picking share the rule, so that what is hit is what is seen.
#pragma once

#include <cstdint>

#include "platform/to_int.h"

namespace orvane {

/// A layer's or sub layer's `lineSize` that keeps its symbols at one size at every scale.
inline constexpr std::int32_t kFixedSymbolSize = 9999;

/// Half the side of a symbol's square on the screen, in pixels: it grows in steps as the map is zoomed in. `zoom` is the scale
/// denominator.
inline std::int32_t SymbolSizeByZoom(std::int32_t zoom) {
    struct Step {
        std::int32_t aboveZoom, size_px;
    };
    constexpr Step kSteps[] = {{50000, 2}, {30000, 3}, {20000, 4}, {10000, 5}, {7000, 6}, {5000, 7}, {3000, 9}};
    for (const Step& step : kSteps) {
        if (zoom > step.aboveZoom) return step.size_px;
    }
    return 10;
}

/// The same on a device that is finer than the screen by `penFactor`, for symbols of the given `lineSize`, which matters only
/// where it fixes the size. Saturates.
inline std::int32_t SymbolHalfSide(std::int32_t lineSize, std::int32_t zoom, std::int32_t penFactor) {
    const std::int32_t size_px = lineSize == kFixedSymbolSize ? 6 : SymbolSizeByZoom(zoom);
    return TruncToInt32(static_cast<double>(size_px) * static_cast<double>(penFactor));
}

}  // namespace orvane
