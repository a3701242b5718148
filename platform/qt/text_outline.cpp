#include "platform/qt/text_outline.h"

#include <ft2build.h>
#include FT_OUTLINE_H

#include <new>

#include "platform/cp932.h"
#include "platform/qt/text_fonts.h"
#include "platform/qt/text_place.h"

namespace orvane {

namespace {

/// Takes a glyph's curves in, in 1/64 of a pixel with y upward.
struct PathSink {
    QPainterPath& path;
    QPointF origin;

    QPointF At(const FT_Vector& v) const {
        return origin + QPointF(static_cast<double>(v.x) / 64, -static_cast<double>(v.y) / 64);
    }
};

int MoveTo(const FT_Vector* to, void* user) {
    const auto& sink = *static_cast<PathSink*>(user);
    sink.path.closeSubpath();
    sink.path.moveTo(sink.At(*to));
    return 0;
}

int LineTo(const FT_Vector* to, void* user) {
    const auto& sink = *static_cast<PathSink*>(user);
    sink.path.lineTo(sink.At(*to));
    return 0;
}

int ConicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
    const auto& sink = *static_cast<PathSink*>(user);
    sink.path.quadTo(sink.At(*control), sink.At(*to));
    return 0;
}

int CubicTo(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* user) {
    const auto& sink = *static_cast<PathSink*>(user);
    sink.path.cubicTo(sink.At(*first), sink.At(*second), sink.At(*to));
    return 0;
}

void AddGlyph(FontFace& face, std::uint32_t glyph, const GlyphShape& shape, QPointF origin, QPainterPath& path) {
    FT_Outline* outline = face.Outline(glyph, shape);
    if (outline == nullptr) return;
    const FT_Outline_Funcs funcs{MoveTo, LineTo, ConicTo, CubicTo, 0, 0};
    PathSink sink{path, origin};
    FT_Outline_Decompose(outline, &funcs, &sink);
    path.closeSubpath();
}

QPolygonF Quad(const TextFrame& frame, const TextRun& along, const TextRun& down) {
    QPolygonF quad;
    for (const Spot& spot : {frame.At(along.begin, down.begin), frame.At(along.end, down.begin), frame.At(along.end, down.end),
                             frame.At(along.begin, down.end)}) {
        quad << QPointF(spot.x, spot.y);
    }
    quad << quad.front();
    return quad;
}

/// As TextPainter has its own fonts a thread, so has this: outlines of pages are asked for by the thousand.
TextFonts& FontsOfThread() {
    thread_local TextFonts fonts{FontMatcher{}};
    return fonts;
}

TextShapes Outlines(TextFonts& fonts, const TextState& look, const TextFrame& frame, std::string_view text) {
    TextShapes shapes;
    const SizedFont& font = fonts.Find(look.font);
    if (font.face == nullptr) return shapes;
    std::int64_t width = 0;
    for (std::string_view rest = text; !rest.empty();) width += font.Advance_px(fonts.GlyphOf(font, TakeCp932(rest)));
    const double start = StartOf(look.align, width);
    const double baseline = BaselineOf(look.align, font);
    const TextRun along{start, start + static_cast<double>(width)};
    shapes.cell = Quad(frame, along, {baseline - font.ascent_px, baseline + font.descent_px});
    shapes.glyphs.setFillRule(Qt::WindingFill);
    GlyphShape shape;
    shape.em_px = font.em_px;
    shape.widthScale = font.widthScale;
    shape.angle_tenths = frame.Angle_tenths();
    double at = start;
    for (std::string_view rest = text; !rest.empty();) {
        const CharGlyph& glyph = fonts.GlyphOf(font, TakeCp932(rest));
        shape.isBold = font.isBold && !glyph.face->IsBold();
        shape.isItalic = font.isItalic && !glyph.face->IsItalic();
        const Spot spot = frame.At(at, baseline);
        AddGlyph(*glyph.face, glyph.glyph, shape, {spot.x, spot.y}, shapes.glyphs);
        at += font.Advance_px(glyph);
    }
    const auto bar = [&](const TextBar& b) {
        shapes.glyphs.addPolygon(Quad(frame, along, {baseline + b.top_px, baseline + b.top_px + b.thickness_px}));
    };
    if (look.font.underline) bar(font.underline);
    if (look.font.strikeOut) bar(font.strikeOut);
    return shapes;
}

}  // namespace

TextShapes OutlineText(const TextState& look, std::int32_t x, std::int32_t y, std::string_view text) try {
    return Outlines(FontsOfThread(), look, TextFrame(x, y, look.font.escapement_tenths), text);
} catch (const std::bad_alloc&) {
    FontsOfThread().Clear();
    return {};
}

}  // namespace orvane
