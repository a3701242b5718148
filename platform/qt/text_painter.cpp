#include "platform/qt/text_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "platform/cp932.h"
#include "platform/qt/text_place.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

// Glyphs of late are found again more often when near angles share them. For a glyph of one em this is the step at which no
// point of it is off by more than an eighth of a pixel, in tenths of degrees for an em of one pixel.
constexpr std::int32_t kAngleStep = 143;

constexpr BitRule kCopyRule = 12;
constexpr double kNoLimit = std::numeric_limits<double>::infinity();

std::int32_t Whole(double value) { return TruncToInt32(std::floor(value)); }

/// No ink of a text of so many bytes reaches the area, whatever its characters are.
bool IsOutOfReach(const Rect& area, std::int32_t x, std::int32_t y, const SizedFont& font, std::size_t bytes) {
    const double reach = static_cast<double>(bytes) * font.maxAdvance_px + font.Height_px() + font.reach_px;
    return x + reach < area.left || x - reach > area.right || y + reach < area.top || y - reach > area.bottom;
}

FinePoint FineAt(const TextFrame& frame, double s, double t) {
    // Areas have their pixels at whole coordinates, and texts have them between.
    const Spot spot = frame.At(s, t);
    const auto fine = [](double v) {
        const double whole = std::floor(v);
        return std::int64_t{TruncToInt32(whole)} * AreaScanner::kFinePerPixel +
               TruncToInt32((v - whole) * AreaScanner::kFinePerPixel + 0.5);
    };
    return {fine(spot.x - 0.5), fine(spot.y - 0.5)};
}

GlyphShape ShapeOf(const SizedFont& font, const TextFrame& frame) {
    GlyphShape shape;
    shape.em_px = font.em_px;
    shape.widthScale = font.widthScale;
    shape.isHinted = frame.IsUpright();
    shape.angle_tenths = frame.Angle_tenths();
    if (!frame.IsUpright()) {
        const std::int32_t step = std::max(kAngleStep / std::max(font.em_px, font.maxAdvance_px / 2), 1);
        shape.angle_tenths = (shape.angle_tenths + step / 2) / step * step;
    }
    return shape;
}

}  // namespace

TextPainter& TextPainter::OfThread() {
    thread_local TextPainter painter;
    return painter;
}

/// Stops once it is beyond the limit.
std::int64_t TextPainter::WidthUpTo(const SizedFont& font, std::string_view text, double limit_px) {
    std::int64_t width = 0;
    while (!text.empty() && static_cast<double>(width) <= limit_px) {
        width += font.Advance_px(fonts_.GlyphOf(font, TakeCp932(text)));
    }
    return width;
}

TextSize TextPainter::Measure(const Font& font, std::string_view text) try {
    const SizedFont& sized = fonts_.Find(font);
    const std::int64_t width = sized.face != nullptr
                                   ? WidthUpTo(sized, text, kNoLimit)
                                   : static_cast<std::int64_t>(std::min<std::size_t>(text.size(), 1u << 31)) * sized.em_px / 2;
    return {static_cast<std::int32_t>(std::min<std::int64_t>(width, std::numeric_limits<std::int32_t>::max())),
            sized.Height_px()};
} catch (const std::bad_alloc&) {
    fonts_.Clear();
    return {};
}

void TextPainter::Draw(const PixelSurface& surface, const ClipArea& clip, const TextState& look, std::int32_t x, std::int32_t y,
                       std::string_view text) try {
    if (clip.rects.empty() || text.empty()) return;
    const SizedFont& font = fonts_.Find(look.font);
    if (font.face == nullptr || IsOutOfReach(clip.bounds, x, y, font, text.size())) return;
    DrawWith(font, {surface, clip}, look, TextFrame(x, y, look.font.escapement_tenths), text);
} catch (const std::bad_alloc&) {
    fonts_.Clear();
}

void TextPainter::DrawWith(const SizedFont& font, const Target& target, const TextState& look, const TextFrame& frame,
                           std::string_view text) {
    const double baseline = BaselineOf(look.align, font);
    const TextRun cell{baseline - font.ascent_px, baseline + font.descent_px};
    const TextRun down = frame.Down(target.clip.bounds);
    if (cell.end + font.reach_px < down.begin || cell.begin - font.reach_px > down.end) return;

    TextRun visible = frame.Along(target.clip.bounds);
    visible = {visible.begin - font.reach_px, visible.end + font.reach_px};
    // What stands right of the clip need not be measured, unless the anchor is told from the text's end.
    const bool startsAtAnchor = (look.align & kAcross) != kAcrossRight && (look.align & kAcross) != kAcrossCenter;
    const std::int64_t width = WidthUpTo(font, text, startsAtAnchor ? visible.end : kNoLimit);
    const double start = StartOf(look.align, width);
    const TextRun along{std::max(start, visible.begin), std::min(start + static_cast<double>(width), visible.end)};
    if (start > visible.end || start + static_cast<double>(width) < visible.begin) return;

    if (look.bkMode == BkMode::Opaque) FillAlong(target, frame, along, cell, look.bkColor);
    DrawGlyphs(target, {font, frame, text, start, baseline, visible}, look.textColor);
    const auto bar = [&](const TextBar& b) {
        const double top = baseline + b.top_px;
        FillAlong(target, frame, along, {top, top + b.thickness_px}, look.textColor);
    };
    if (look.font.underline) bar(font.underline);
    if (look.font.strikeOut) bar(font.strikeOut);
}

void TextPainter::FillAlong(const Target& target, const TextFrame& frame, const TextRun& along, const TextRun& down, Rgb color) {
    if (along.begin >= along.end) return;
    const Ink ink = SolidInk(MakeMix(ToPixel(color), kCopyRule));
    SpanPainter painter(target.surface, target.clip, ink);
    if (frame.IsUpright()) {
        const Spot a = frame.At(along.begin, down.begin);
        const Spot b = frame.At(along.end, down.end);
        painter.FillRect(
            {Whole(std::min(a.x, b.x)), Whole(std::min(a.y, b.y)), Whole(std::max(a.x, b.x)), Whole(std::max(a.y, b.y))});
        return;
    }
    const FinePoint ring[] = {FineAt(frame, along.begin, down.begin), FineAt(frame, along.end, down.begin),
                              FineAt(frame, along.end, down.end), FineAt(frame, along.begin, down.end)};
    scanner_.FillFine(ring, std::size(ring), painter);
}

void TextPainter::DrawGlyphs(const Target& target, const Line& line, Rgb color) {
    const SizedFont& font = line.font;
    const Pixel pixel = ToPixel(color);
    GlyphShape shape = ShapeOf(font, line.frame);
    double at = line.start_px;
    for (std::string_view rest = line.text; !rest.empty() && at <= line.visible.end;) {
        const CharGlyph& glyph = fonts_.GlyphOf(font, TakeCp932(rest));
        const double here = at;
        at += font.Advance_px(glyph);
        if (at < line.visible.begin) continue;
        shape.isBold = font.isBold && !glyph.face->IsBold();
        shape.isItalic = font.isItalic && !glyph.face->IsItalic();
        // In quarters of a pixel; texts along rows and columns come out at none. Only spots near the clip get here.
        const Spot spot = line.frame.At(here, line.baseline_px);
        const double x4 = std::floor(spot.x * 4 + 0.5);
        const double y4 = std::floor(spot.y * 4 + 0.5);
        const std::int32_t x = Whole(x4 / 4);
        const std::int32_t y = Whole(y4 / 4);
        shape.quarterX = TruncToInt32(x4 - 4.0 * x);
        shape.quarterY = TruncToInt32(y4 - 4.0 * y);
        glyphs_.Draw(target.surface, target.clip, pixel, *glyph.face, glyph.glyph, shape, x, y);
    }
}

}  // namespace orvane
