// Lays a colour over pixels in the strength that their coverage tells.
#pragma once

#include <cstdint>

#include "platform/qt/glyph_cache.h"
#include "platform/qt/span_painter.h"

namespace orvane {

/// `coverage` of 255 gives the colour itself, 0 leaves what is there.
inline Pixel Blended(Pixel there, Pixel color, std::uint32_t coverage) {
    const std::uint32_t a = coverage + (coverage >> 7);  // 0 to 256, so that a shift divides
    const std::uint32_t b = 256 - a;
    const std::uint32_t redBlue = ((there & 0xFF00FFu) * b + (color & 0xFF00FFu) * a) >> 8 & 0xFF00FFu;
    const std::uint32_t green = ((there & 0xFF00u) * b + (color & 0xFF00u) * a) >> 8 & 0xFF00u;
    return 0xFF000000u | redBlue | green;
}

/// Blends an image whose left top pixel lies at (left, top).
void BlendImage(const PixelSurface& surface, const ClipArea& clip, Pixel color, const GlyphImage& image, std::int64_t left,
                std::int64_t top);
/// Blends `count` pixels of row `y` from `left` on in one strength.
void BlendRun(const PixelSurface& surface, const ClipArea& clip, Pixel color, std::int64_t y, std::int64_t left,
              std::int64_t count, std::uint8_t coverage);

}  // namespace orvane
