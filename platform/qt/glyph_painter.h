// Draws single glyphs, out of a cache where they are not too large for it.
#pragma once

#include <cstdint>

#include "platform/qt/font_face.h"
#include "platform/qt/glyph_cache.h"
#include "platform/qt/span_painter.h"

namespace orvane {

class GlyphPainter {
public:
    explicit GlyphPainter(const FontLibrary& library) : library_(library) {}

    /// Draws with the glyph's origin at the left top corner of pixel (x, y), and further by the shape's quarters.
    void Draw(const PixelSurface& surface, const ClipArea& clip, Pixel color, FontFace& face, std::uint32_t glyph,
              const GlyphShape& shape, std::int64_t x, std::int64_t y);
    const GlyphCache& Cache() const { return cache_; }

private:
    const FontLibrary& library_;
    GlyphCache cache_;
};

}  // namespace orvane
