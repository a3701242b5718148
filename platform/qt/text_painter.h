// Draws and measures texts in the fonts that are installed.
//
// Ink is blended by its coverage, in 256 steps. Texts along rows and columns are set on whole pixels and lightly hinted: strokes
// move to pixel rows and keep their widths. Compared at 12 to 16 pixels, fonts' own hints fill dense characters to black blots,
// and no hints at all leave grey bars. Turned texts are not hinted, since their strokes lie along no rows, and are set on
// quarters of a pixel.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/gdi_constants.h"
#include "platform/pen_brush_font.h"
#include "platform/qt/area_scan.h"
#include "platform/qt/glyph_painter.h"
#include "platform/qt/span_painter.h"
#include "platform/qt/text_fonts.h"
#include "platform/qt/text_frame.h"
#include "platform/values.h"

namespace orvane {

/// The state of a context that decides how a text looks.
struct TextState {
    Font font;
    Rgb textColor = 0;
    Rgb bkColor = 0xFFFFFF;
    BkMode bkMode = BkMode::Opaque;
    std::uint32_t align = 0;  ///< the platform's flags; others than those of TextAlign have no effect
};

class TextPainter {
public:
    /// That of all contexts of the calling thread, so that they share what it keeps.
    static TextPainter& OfThread();

    explicit TextPainter(FontMatcher matcher = {}) : fonts_(std::move(matcher)), glyphs_(fonts_.FaceLibrary()) {}
    TextPainter(const TextPainter&) = delete;
    TextPainter& operator=(const TextPainter&) = delete;

    /// The sum of the characters' advances and the height of a cell, as drawn without escapement; saturates. With no font at all
    /// each byte is half an em wide. All zeros when there is no memory.
    TextSize Measure(const Font& font, std::string_view text);
    /// Draws code page 932 bytes with the point that the alignment tells at (x, y). The font's escapement turns everything round
    /// this point; its orientation has no part in it. An opaque background fills the text's cell. Nothing is drawn when there is
    /// no font, or no memory.
    void Draw(const PixelSurface& surface, const ClipArea& clip, const TextState& look, std::int32_t x, std::int32_t y,
              std::string_view text);
    const GlyphCache& Cache() const { return glyphs_.Cache(); }

private:
    struct Target {
        const PixelSurface& surface;
        const ClipArea& clip;
    };
    /// A text that is about to be drawn.
    struct Line {
        const SizedFont& font;
        const TextFrame& frame;
        std::string_view text;
        double start_px;     ///< along the text, from the anchor
        double baseline_px;  ///< down the lines, from the anchor
        TextRun visible;     ///< along the text
    };

    std::int64_t WidthUpTo(const SizedFont& font, std::string_view text, double limit_px);
    void DrawWith(const SizedFont& font, const Target& target, const TextState& look, const TextFrame& frame,
                  std::string_view text);
    void FillAlong(const Target& target, const TextFrame& frame, const TextRun& along, const TextRun& down, Rgb color);
    void DrawGlyphs(const Target& target, const Line& line, Rgb color);

    TextFonts fonts_;
    GlyphPainter glyphs_;
    AreaScanner scanner_;
};

}  // namespace orvane
