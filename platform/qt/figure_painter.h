// Draws figures with a pen and a brush, as a context's state has them at the moment.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/pen_brush_font.h"
#include "platform/qt/area_scan.h"
#include "platform/qt/figure_stamps.h"
#include "platform/qt/ink.h"
#include "platform/qt/path_bracket.h"
#include "platform/qt/span_painter.h"
#include "platform/qt/thin_line.h"
#include "platform/qt/wide_line.h"

namespace orvane {

/// The state of a context that decides how lines and areas look.
struct PaintState {
    Pen pen;
    Brush brush;
    Rop2 rop2 = Rop2::CopyPen;
    BkMode bkMode = BkMode::Opaque;
    Rgb bkColor = 0xFFFFFF;
    friend bool operator==(const PaintState&, const PaintState&) = default;
};

class FigurePainter {
public:
    /// The state may be another one: it is looked at anew by the next Draw.
    void StateChanged() { stale_ = true; }

    /// Fills with the brush, all figures together and open ones closed, and draws lines with the pen.
    void Draw(const Figures& figures, bool fill, bool stroke, const PaintState& state, const PixelSurface& surface,
              const ClipArea& clip);

private:
    enum class Line : std::uint8_t { None, Thin, Wide };

    void WorkOut(const PaintState& state);
    void WorkOutThinPen(const PaintState& state, Mix line);
    /// Whether a figure replaces what is there by pixels that stand fixed to it.
    bool MovesWithFigures() const;
    void DrawAnew(const Figures& figures, bool fill, bool stroke, const PixelSurface& surface, const ClipArea& clip);
    bool MustTakePixels(const Figures& figures, bool fill, const ClipArea& clip) const;
    void Fill(const Figures& figures, const PixelSurface& surface, const ClipArea& clip, TakenPixels* taken);
    void Stroke(const Figures& figures, const PixelSurface& surface, const ClipArea& clip, TakenPixels* taken);
    const ClipArea& ClipRound(const Figures& figures, const ClipArea& clip);

    bool stale_ = true;
    std::optional<PaintState> workedOut_;  ///< the state that what follows comes from
    Ink brushInk_;
    Line line_ = Line::None;
    ThinPen thinPen_;
    WidePen widePen_;
    Ink widePenInk_;
    bool movesWithFigures_ = false;

    FigureStamps stamps_;
    AreaScanner scanner_;
    WideLinePainter wideLines_;
    TakenPixels taken_;
    ClipArea roundFigures_;
};

}  // namespace orvane
