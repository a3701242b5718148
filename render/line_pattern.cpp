#include "render/line_pattern.h"

#include <algorithm>
#include <cmath>

#include "platform/rect.h"
#include "platform/to_int.h"
#include "render/line_figures.h"
#include "render/line_polygon.h"
#include "render/pitch_walk.h"

namespace orvane {

namespace {

/// Figures further out are left out, so that a clip as large as the numbers go keeps a bounded cost. The largest plotters have
/// pixels up to here.
constexpr std::int32_t kReach_px = 1 << 16;
constexpr Rect kReach{-kReach_px, -kReach_px, kReach_px, kReach_px};

using DrawFigure = void (*)(LineFigures&, const Pitch&);

/// Null for kinds that are no pattern, and for the one that stays invisible.
DrawFigure FigureOf(std::int32_t kind) {
    switch (kind) {
        case kLineTicks:
            return DrawTicks;
        case kLineMidTicks:
        case kLineDashTicks:
            return DrawDashes;
        case kLineWaves:
            return DrawWave;
        case kLineShapes:
            return DrawShape;
        default:
            return nullptr;
    }
}

std::int32_t PitchOf(const LineTypeDef& def, std::int32_t penFactor) {
    if (def.ltKind != kLineMidTicks && def.ltKind != kLineDashTicks) return PenUnitsToPix(ListValue(def.ltList, 0), penFactor);
    const auto told = static_cast<std::size_t>((std::max)(def.ltCnt, 0));
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < (std::min)(told, def.ltList.size()); ++i) sum += def.ltList[i];
    return TruncToInt32(static_cast<double>(sum) * static_cast<double>(penFactor));
}

/// How many points LineDDA visits for one pitch; a segment on one point has 0. The product of two 32-bit lengths fits 64 bits.
std::int32_t StepOf(std::int64_t dx, std::int64_t dy, std::int32_t pitch_px) {
    const double fx = static_cast<double>(dx), fy = static_cast<double>(dy);
    const std::int64_t longer = (std::max)(dx < 0 ? -dx : dx, dy < 0 ? -dy : dy);
    return TruncToInt32(static_cast<double>(longer * pitch_px) / std::sqrt(fx * fx + fy * fy));
}

class LinePattern {
public:
    LinePattern(const LineFigures& figures, const Rect& clip, DrawFigure draw)
        : figures_(figures), clip_(clip), draw_(draw), ticks_(figures.def.ltKind == kLineTicks) {}

    void DrawSegment(Point from, Point to) {
        const std::int64_t dx = std::int64_t{to.x} - from.x;
        const std::int64_t dy = std::int64_t{to.y} - from.y;
        const std::int32_t step = StepOf(dx, dy, figures_.pitch_px);
        if (step <= 0) return;
        figures_.segmentAngle_rad = std::atan2(static_cast<double>(-dy), static_cast<double>(dx));
        DrawPitches(PitchWalk(from, to, step));
        if (ticks_ && figures_.def.ltBase != 1) {
            figures_.dc.MoveToEx(to.x, to.y);
        } else {
            figures_.dc.LineTo(to.x, to.y);
        }
    }

private:
    /// The current position follows the pitches that are left out, but for ticks. Only the last of them in a row matters, so a
    /// row makes one move, just before something is drawn from there.
    void DrawPitches(const PitchWalk& walk) {
        const PitchRun run = walk.Meeting(clip_);
        bool lags = run.first > 1;
        Point at = walk.End(run.first - 1);
        for (std::int64_t j = run.first; j <= run.last; ++j) {
            const Pitch pitch{at, walk.End(j)};
            const bool shows = PitchMeets(pitch, clip_);
            if (shows) {
                if (lags) FollowTo(at);
                draw_(figures_, pitch);
            }
            lags = !shows;
            at = pitch.to;
        }
        if (run.last < walk.Count()) {
            lags = true;
            at = walk.End(walk.Count());
        }
        if (lags) FollowTo(at);
    }

    void FollowTo(Point at) {
        if (!ticks_) figures_.dc.MoveToEx(at.x, at.y);
    }

    LineFigures figures_;
    Rect clip_;
    DrawFigure draw_;
    bool ticks_;
};

}  // namespace

void DrawLinePattern(const CDigMem& store, DeviceContext& dc, const Rect& clip, const Point* pts, std::int32_t count,
                     std::int32_t index) {
    if (count < 1 || index < 0 || static_cast<std::size_t>(index) >= store.lineTypes.size()) return;
    const LineTypeDef& def = store.lineTypes[static_cast<std::size_t>(index)];
    dc.MoveToEx(pts[0].x, pts[0].y);
    const DrawFigure draw = FigureOf(def.ltKind);
    if (draw == nullptr) return;

    const std::int32_t penFactor = store.view.PenFactor();
    Rect shown;
    IntersectRect(clip, kReach, shown);
    LinePattern pattern({dc, def, penFactor, PitchOf(def, penFactor)}, shown, draw);
    for (std::int32_t i = 1; i < count; ++i) pattern.DrawSegment(pts[i - 1], pts[i]);
}

}  // namespace orvane
