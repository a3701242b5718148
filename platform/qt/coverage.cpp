#include "platform/qt/coverage.h"

#include <algorithm>
#include <cstddef>

#include "platform/rect.h"

namespace orvane {

namespace {

void BlendRow(Pixel* to, const std::uint8_t* coverage, std::size_t count, Pixel color) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t c = coverage[i];
        if (c == 0) continue;
        to[i] = c == 255 ? color : Blended(to[i], color, c);
    }
}

}  // namespace

void BlendImage(const PixelSurface& surface, const ClipArea& clip, Pixel color, const GlyphImage& image, std::int64_t left,
                std::int64_t top) {
    const Box box{left, top, left + image.width_px, top + image.height_px};
    for (auto r = clip.FirstEndingBelow(top); r != clip.rects.end() && r->top < box.bottom; ++r) {
        Box part;
        if (!IntersectBox(box, ToBox(*r), part)) continue;
        const auto count = static_cast<std::size_t>(part.right - part.left);
        for (std::int64_t y = part.top; y < part.bottom; ++y) {
            const std::uint8_t* const from = image.coverage + (y - top) * image.width_px + (part.left - left);
            BlendRow(surface.Row(static_cast<std::int32_t>(y)) + part.left, from, count, color);
        }
    }
}

void BlendRun(const PixelSurface& surface, const ClipArea& clip, Pixel color, std::int64_t y, std::int64_t left,
              std::int64_t count, std::uint8_t coverage) {
    for (auto r = clip.FirstEndingBelow(y); r != clip.rects.end() && r->top <= y; ++r) {
        const std::int64_t from = std::max<std::int64_t>(left, r->left);
        const std::int64_t to = std::min<std::int64_t>(left + count, r->right);
        if (from >= to) continue;
        Pixel* const row = surface.Row(static_cast<std::int32_t>(y));
        if (coverage == 255) {
            SetPixels(row + from, static_cast<std::size_t>(to - from), color);
        } else {
            for (std::int64_t x = from; x < to; ++x) row[x] = Blended(row[x], color, coverage);
        }
    }
}

}  // namespace orvane
