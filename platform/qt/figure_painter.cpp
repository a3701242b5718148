#include "platform/qt/figure_painter.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "platform/qt/pen_dashes.h"
#include "platform/rect.h"

namespace orvane {

namespace {

// A line that overlaps itself this often is cheaper when each pixel is asked whether it is taken.
constexpr double kRepetitionWorthTaking = 16;

std::int64_t WidthOf(const Pen& pen) {
    const std::int64_t width_px = pen.width_px;
    return std::max<std::int64_t>(width_px < 0 ? -width_px : width_px, 1);
}

DashList UserDashes(const Pen& pen, std::int32_t unit_px) { return DashList::Of(pen.dashes.data(), pen.dashCnt, unit_px); }

}  // namespace

/// The background mode reaches the gaps of the standard styles only: pens with a dash list of their own leave them as they are.
void FigurePainter::WorkOutThinPen(const PaintState& state, Mix line) {
    thinPen_ = {line, {}, {}};
    if (IsStandardDash(state.pen.style)) {
        const StandardDashes& dashes = kStandardDashes[static_cast<std::size_t>(state.pen.style) - 1];
        thinPen_.dashes = DashList::Of(dashes.lengths_px, dashes.count, 1);
        if (state.bkMode == BkMode::Opaque) thinPen_.gap = MakeMix(ToPixel(state.bkColor), RuleOf(state.rop2));
    } else if (state.pen.style == PenStyle::UserStyle) {
        thinPen_.dashes = UserDashes(state.pen, kUserStyleUnit_px);
    } else if (state.pen.style == PenStyle::GeometricFlatUser) {
        thinPen_.dashes = UserDashes(state.pen, 1);
    }
}

void FigurePainter::WorkOut(const PaintState& state) {
    stale_ = false;
    // Symbols select pen and brush for each point, mostly those that are there.
    if (workedOut_ == state) return;
    workedOut_ = state;
    const BitRule rule = RuleOf(state.rop2);
    brushInk_ = BrushInk(state.brush, rule, state.bkMode, state.bkColor);
    const Mix line = MakeMix(ToPixel(state.pen.color), rule);
    const std::int64_t width_px = WidthOf(state.pen);
    if (state.pen.style == PenStyle::Null || state.rop2 == Rop2::Nop) {
        line_ = Line::None;
    } else if (width_px == 1 || state.pen.style == PenStyle::UserStyle) {
        line_ = Line::Thin;
        WorkOutThinPen(state, line);
    } else {
        const bool isUser = state.pen.style == PenStyle::GeometricFlatUser;
        line_ = Line::Wide;
        widePen_ = {width_px, isUser ? UserDashes(state.pen, 1) : DashList{}, isUser};
        widePenInk_ = SolidInk(line);
    }
    movesWithFigures_ = MovesWithFigures();
    stamps_.Forget();
}

bool FigurePainter::MovesWithFigures() const {
    const bool area = brushInk_.kind == Ink::Kind::Nothing || brushInk_.kind == Ink::Kind::Copy;
    return area && (line_ == Line::None || (line_ == Line::Thin && thinPen_.dashes.IsSolid() && thinPen_.line.IsCopy()));
}

/// Wide lines put pieces over each other, and an area under a wide outline is drawn only where the outline leaves it. Both must
/// not show where a second stroke gives another pixel than the first.
bool FigurePainter::MustTakePixels(const Figures& figures, bool fill, const ClipArea& clip) const {
    if (line_ != Line::Wide) return false;
    if (!widePenInk_.IsRepeatable() || (fill && widePenInk_.kind != Ink::Kind::Copy)) return true;
    const Rect& bounds = clip.bounds;
    const double area = static_cast<double>(bounds.right - bounds.left) * (bounds.bottom - bounds.top);
    double sum = 0;
    figures.ForEach([&](const Point* pts, std::size_t count, bool) {
        sum += WideLinePainter::PixelsWithRepetition(pts, count, widePen_, area);
    });
    return sum > kRepetitionWorthTaking * area;
}

/// The clip where the figures' lines can be at all, so that no more pixels are watched than need be.
const ClipArea& FigurePainter::ClipRound(const Figures& figures, const ClipArea& clip) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    Box round{kMost, kMost, -kMost - 1, -kMost - 1};
    figures.ForEach([&](const Point* pts, std::size_t count, bool) {
        for (std::size_t i = 0; i < count; ++i) {
            round.left = std::min<std::int64_t>(round.left, pts[i].x);
            round.top = std::min<std::int64_t>(round.top, pts[i].y);
            round.right = std::max<std::int64_t>(round.right, pts[i].x);
            round.bottom = std::max<std::int64_t>(round.bottom, pts[i].y);
        }
    });
    round = InflateBox(round, widePen_.width_px / 2 + 2);
    roundFigures_.rects.clear();
    Rect& bounds = roundFigures_.bounds;
    bounds = {};
    for (const Rect& r : clip.rects) {
        Box common;
        if (!IntersectBox(ToBox(r), round, common)) continue;
        const Rect part{static_cast<std::int32_t>(common.left), static_cast<std::int32_t>(common.top),
                        static_cast<std::int32_t>(common.right), static_cast<std::int32_t>(common.bottom)};
        const bool isFirst = roundFigures_.rects.empty();
        roundFigures_.rects.push_back(part);
        bounds = isFirst ? part
                         : Rect{std::min(bounds.left, part.left), std::min(bounds.top, part.top),
                                std::max(bounds.right, part.right), std::max(bounds.bottom, part.bottom)};
    }
    return roundFigures_;
}

void FigurePainter::Fill(const Figures& figures, const PixelSurface& surface, const ClipArea& clip, TakenPixels* taken) {
    if (brushInk_.kind == Ink::Kind::Nothing) return;
    SpanPainter painter(surface, clip, brushInk_, taken);
    scanner_.Fill(figures.pts, figures.counts, figures.count, painter);
}

void FigurePainter::Stroke(const Figures& figures, const PixelSurface& surface, const ClipArea& clip, TakenPixels* taken) {
    if (line_ == Line::Thin) {
        ThinLinePainter painter(surface, clip, thinPen_);
        figures.ForEach([&](const Point* pts, std::size_t count, bool closed) { painter.Figure(pts, count, closed); });
    } else if (line_ == Line::Wide) {
        SpanPainter painter(surface, clip, widePenInk_, taken);
        figures.ForEach([&](const Point* pts, std::size_t count, bool closed) {
            wideLines_.Figure(pts, count, closed, widePen_, scanner_, painter);
        });
    }
}

void FigurePainter::Draw(const Figures& figures, bool fill, bool stroke, const PaintState& state, const PixelSurface& surface,
                         const ClipArea& clip) {
    if (stale_) WorkOut(state);
    const FigureStamps::Found found =
        movesWithFigures_ ? stamps_.Look(figures, fill, stroke, clip) : FigureStamps::Found::Nothing;
    if (found == FigureStamps::Found::Nothing) return DrawAnew(figures, fill, stroke, surface, clip);
    if (found == FigureStamps::Found::Repeat) {
        const Figures moved = stamps_.Moved();
        DrawAnew(moved, fill, stroke, stamps_.Canvas(), stamps_.CanvasClip());
        stamps_.Keep();
    }
    stamps_.Put(surface);
}

void FigurePainter::DrawAnew(const Figures& figures, bool fill, bool stroke, const PixelSurface& surface, const ClipArea& clip) {
    if (stroke && MustTakePixels(figures, fill, clip)) {
        const ClipArea& part = ClipRound(figures, clip);
        if (part.rects.empty()) return;
        taken_.Reset(part.bounds);
        Stroke(figures, surface, part, &taken_);
        if (fill) Fill(figures, surface, part, &taken_);
        return;
    }
    if (fill) Fill(figures, surface, clip, nullptr);
    if (stroke) Stroke(figures, surface, clip, nullptr);
}

}  // namespace orvane
