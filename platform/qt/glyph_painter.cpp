#include "platform/qt/glyph_painter.h"

#include <ft2build.h>
#include FT_OUTLINE_H

#include <algorithm>

#include "platform/qt/coverage.h"

namespace orvane {

namespace {

GlyphKey KeyOf(const FontFace& face, std::uint32_t glyph, const GlyphShape& shape) {
    const auto bits = [](auto value, unsigned at) { return static_cast<std::uint64_t>(value) << at; };
    return {bits(face.Id(), 32) | bits(glyph, 0), bits(shape.widthScale, 32) | bits(shape.em_px, 20) |
                                                      bits(shape.angle_tenths, 7) | bits(shape.isBold ? 1 : 0, 6) |
                                                      bits(shape.isItalic ? 1 : 0, 5) | bits(shape.isHinted ? 1 : 0, 4) |
                                                      bits(shape.quarterX, 2) | bits(shape.quarterY, 0)};
}

/// The pixels that an outline touches.
GlyphImage ExtentOf(const FT_Outline& outline) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    const auto down = [](FT_Pos v) { return static_cast<std::int32_t>(v >> 6); };
    const auto up = [](FT_Pos v) { return static_cast<std::int32_t>((v + 63) >> 6); };
    return {nullptr, down(box.xMin), -up(box.yMax), up(box.xMax) - down(box.xMin), up(box.yMax) - down(box.yMin)};
}

/// Sweeps an outline into a context's pixels.
struct Sweep {
    const PixelSurface& surface;
    const ClipArea& clip;
    Pixel color;
    std::int64_t x;
    std::int64_t y;
};

void PutSpans(int row, int count, const FT_Span* spans, void* user) {
    const Sweep& sweep = *static_cast<const Sweep*>(user);
    for (int i = 0; i < count; ++i) {
        BlendRun(sweep.surface, sweep.clip, sweep.color, sweep.y - 1 - row, sweep.x + spans[i].x, spans[i].len,
                 spans[i].coverage);
    }
}

void SweepOutline(FT_Library library, FT_Outline& outline, Sweep& sweep) {
    // FreeType's rows count up from the glyph's origin, and its own pixels are within 15 bits.
    const auto held = [](std::int64_t v) { return static_cast<FT_Pos>(std::clamp<std::int64_t>(v, -32000, 32000)); };
    const Rect& bounds = sweep.clip.bounds;
    FT_Raster_Params params{};
    params.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT | FT_RASTER_FLAG_CLIP;
    params.gray_spans = PutSpans;
    params.user = &sweep;
    params.clip_box = {held(bounds.left - sweep.x), held(sweep.y - bounds.bottom), held(bounds.right - sweep.x),
                       held(sweep.y - bounds.top)};
    FT_Outline_Render(library, &outline, &params);
}

}  // namespace

void GlyphPainter::Draw(const PixelSurface& surface, const ClipArea& clip, Pixel color, FontFace& face, std::uint32_t glyph,
                        const GlyphShape& shape, std::int64_t x, std::int64_t y) {
    const GlyphKey key = KeyOf(face, glyph, shape);
    if (const auto image = cache_.Find(key)) {
        BlendImage(surface, clip, color, *image, x + image->left, y + image->top);
        return;
    }
    FT_Outline* const outline = face.Outline(glyph, shape);
    GlyphImage image;
    if (outline != nullptr) image = ExtentOf(*outline);
    const std::int64_t pixels = std::int64_t{image.width_px} * image.height_px;
    if (pixels > static_cast<std::int64_t>(GlyphCache::kMaxImageBytes)) {
        Sweep sweep{surface, clip, color, x, y};
        SweepOutline(library_.Get(), *outline, sweep);
        return;
    }
    std::uint8_t* const coverage = cache_.Add(key, image);
    if (pixels == 0) return;
    FT_Outline_Translate(outline, FT_Pos{-image.left} * 64, FT_Pos{image.top + image.height_px} * 64);
    FT_Bitmap bitmap{};
    bitmap.rows = static_cast<unsigned>(image.height_px);
    bitmap.width = static_cast<unsigned>(image.width_px);
    bitmap.pitch = image.width_px;
    bitmap.buffer = coverage;
    bitmap.num_grays = 256;
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    FT_Outline_Get_Bitmap(library_.Get(), outline, &bitmap);
    image.coverage = coverage;
    BlendImage(surface, clip, color, image, x + image.left, y + image.top);
}

}  // namespace orvane
