// Where a text stands at its point, by the platform's flags of alignment.
#pragma once

#include <cstdint>

#include "platform/qt/text_fonts.h"

namespace orvane {

inline constexpr std::uint32_t kAcross = 6;
inline constexpr std::uint32_t kAcrossRight = 2;
inline constexpr std::uint32_t kAcrossCenter = 6;
inline constexpr std::uint32_t kDown = 24;
inline constexpr std::uint32_t kDownBottom = 8;
inline constexpr std::uint32_t kDownBaseline = 24;

/// The start of a text of a width, along it from the point.
inline double StartOf(std::uint32_t align, std::int64_t width_px) {
    const std::uint32_t across = align & kAcross;
    if (across == kAcrossRight) return -static_cast<double>(width_px);
    return across == kAcrossCenter ? -static_cast<double>(width_px / 2) : 0;
}

/// The baseline, down from the point.
inline double BaselineOf(std::uint32_t align, const SizedFont& font) {
    const std::uint32_t down = align & kDown;
    if (down == kDownBaseline) return 0;
    return down == kDownBottom ? -font.descent_px : font.ascent_px;
}

}  // namespace orvane
