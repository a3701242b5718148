// What a pen, a brush or a pattern blit does to one pixel.
//
// For a fixed colour each combining mode of the platform keeps some bits of the destination and then flips some. So all sixteen
// binary modes, and the ternary ones that read no source, run through the same two operations per pixel.
#pragma once

#include <array>
#include <cstdint>

#include "platform/pen_brush_font.h"

namespace orvane {

/// A pixel as it lies in memory on a little-endian machine: blue, green, red, and a fourth byte that is always 0xFF.
using Pixel = std::uint32_t;

/// Which destination bits a mode sets: bit 2 * s + d tells the result for colour bit s and destination bit d.
using BitRule = unsigned;

/// The pixel of a colour; what stands above its three bytes is left out.
constexpr Pixel ToPixel(Rgb color) { return 0xFF000000u | (color & 0xFFu) << 16 | (color & 0xFF00u) | (color >> 16 & 0xFFu); }

struct Mix {
    Pixel keep = 0xFFFFFFFFu;
    Pixel flip = 0;

    constexpr Pixel Of(Pixel destination) const { return (destination & keep) ^ flip; }
    /// The destination has no part in the result.
    constexpr bool IsCopy() const { return keep == 0; }
    constexpr bool IsNothing() const { return keep == 0xFFFFFFFFu && flip == 0; }
    /// Doing it twice gives what doing it once gives.
    constexpr bool IsRepeatable() const { return (keep & flip) == 0; }
};

/// The mix of `pixel` under `rule`.
constexpr Mix MakeMix(Pixel pixel, BitRule rule) {
    const Pixel onZero = ((rule & 4) != 0 ? pixel : 0u) | ((rule & 1) != 0 ? ~pixel : 0u);
    const Pixel onOne = ((rule & 8) != 0 ? pixel : 0u) | ((rule & 2) != 0 ? ~pixel : 0u);
    const Pixel keep = (onZero ^ onOne) & 0xFFFFFFu;
    const Pixel flip = onZero & 0xFFFFFFu;
    if (keep == 0xFFFFFFu && flip == 0) return {};
    return {keep, flip | 0xFF000000u};
}

/// The codes of the binary modes count the rules from 1.
constexpr BitRule RuleOf(Rop2 mode) { return static_cast<BitRule>(mode) - 1u; }
/// The rule between pattern and destination of a ternary mode that reads no source.
BitRule PatternRuleOf(Rop3 mode);
/// The rule between source and destination of a ternary mode that reads no pattern.
BitRule SourceRuleOf(Rop3 mode);
bool ReadsPattern(Rop3 mode);
bool ReadsSource(Rop3 mode);

/// Ready to lay over an area: nothing, one mix, or a tile of 8 x 8 mixes that starts at the surface's left top.
struct Ink {
    enum class Kind : std::uint8_t { Nothing, Copy, Mixed, Tiled };

    Kind kind = Kind::Nothing;
    Mix mix;                     ///< Copy, Mixed
    std::array<Mix, 64> tile{};  ///< Tiled; row by row

    /// No pixel comes out otherwise when it is laid over twice.
    bool IsRepeatable() const;
};

Ink SolidInk(Mix mix);
/// A hatch's gaps take `background` under the same rule when `mode` is opaque, and stay when it is transparent. The null brush
/// and a hatch that the platform does not have give no ink.
Ink BrushInk(const Brush& brush, BitRule rule, BkMode mode, Rgb background);

}  // namespace orvane
