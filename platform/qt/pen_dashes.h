// The lengths of dashes and gaps of a pen's style, which all back ends of this folder draw alike.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/pen_brush_font.h"

namespace orvane {

// Dashes of the standard styles in pixels, line and gap in turn, by the style's number less 1.
struct StandardDashes {
    std::int32_t lengths_px[6];
    std::size_t count;
};
inline constexpr StandardDashes kStandardDashes[] = {
    {{18, 6}, 2},
    {{3, 3}, 2},
    {{9, 6, 3, 6}, 4},
    {{9, 3, 3, 3, 3, 3}, 6},
};

inline constexpr std::int32_t kUserStyleUnit_px = 3;

constexpr bool IsStandardDash(PenStyle style) { return style >= PenStyle::Dash && style <= PenStyle::DashDotDot; }

}  // namespace orvane
