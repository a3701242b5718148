#include <algorithm>

#include "platform/to_int.h"
#include "render/line_figures.h"
#include "render/line_polygon.h"
#include "render/tick_end.h"

namespace orvane {

namespace {

/// A place on the pitch, by proportion, in whole numbers that are multiplied first. A pitch is no longer than its length in
/// pixels, which is above 0, so the products fit 64 bits.
struct Place {
    std::int64_t x;
    std::int64_t y;

    Point ToPoint() const { return {TruncToInt32(static_cast<double>(x)), TruncToInt32(static_cast<double>(y))}; }
};

class DashedPitch {
public:
    DashedPitch(LineFigures& line, const Pitch& pitch)
        : line_(line),
          def_(line.def),
          from_(pitch.from),
          dx_(std::int64_t{pitch.to.x} - pitch.from.x),
          dy_(std::int64_t{pitch.to.y} - pitch.from.y),
          tick_px_(PenUnitsToPix(def_.ltLen, line.penFactor)) {}

    void Draw() {
        const auto told = static_cast<std::size_t>((std::max)(def_.ltCnt, 0));
        const std::size_t count = (std::min)(told, def_.ltList.size());
        Place at{from_.x, from_.y};
        for (std::size_t i = 0; i < count; ++i) {
            const std::int32_t dash_px = PenUnitsToPix(def_.ltList[i], line_.penFactor);
            // The middle is that of the first dash, and the ticks of all later dashes stand there again.
            if (i == 0) middle_ = Moved(at, dash_px / 2).ToPoint();
            at = Moved(at, dash_px);
            const Point end = at.ToPoint();
            if (i % 2 != 0) {
                line_.dc.MoveToEx(end.x, end.y);
                continue;
            }
            line_.dc.LineTo(end.x, end.y);
            if (def_.ltDir == kSideBoth) {
                DrawPairs(end);
            } else if (def_.ltDir >= kSideLeft && def_.ltDir <= kSideAlternating) {
                DrawSingle(end);
            }
        }
    }

private:
    Place Moved(const Place& at, std::int32_t dash_px) const {
        return {at.x + dash_px * dx_ / line_.pitch_px, at.y + dash_px * dy_ / line_.pitch_px};
    }

    /// Ticks at the start lean the other way round, so that both ends of a dash mirror each other.
    void DrawSingle(Point end) {
        const double angle_deg = def_.ltAngle * TickSign(line_);
        if (AtStart()) Tick(from_, TickEnd(tick_px_, -angle_deg, end, from_));
        if (AtEnd()) Tick(end, TickEnd(tick_px_, angle_deg, from_, end));
        if (!AtStart() && !AtEnd()) Tick(middle_, TickEnd(tick_px_, angle_deg, from_, middle_));
    }

    /// Where the two ticks at an end or middle are joined, they are joined at a point whose y is its x as well.
    void DrawPairs(Point end) {
        if (AtStart()) Pair(end, from_, from_);
        if (AtEnd()) Pair(from_, end, {end.x, end.x});
        if (!AtStart() && !AtEnd()) Pair(from_, middle_, {middle_.x, middle_.x});
    }

    bool AtStart() const { return def_.ltPos == kPlaceStart || def_.ltPos == kPlaceBoth; }
    bool AtEnd() const { return def_.ltPos == kPlaceEnd || def_.ltPos == kPlaceBoth; }

    void Tick(Point at, Point end) {
        const Point tick[] = {at, end};
        line_.dc.Polyline(tick, 2);
    }
    void Pair(Point a, Point b, Point joint) {
        const double angle_deg = def_.ltAngle;
        DrawTickPair(line_, TickEnd(tick_px_, angle_deg, a, b), joint, TickEnd(tick_px_, -angle_deg, a, b));
    }

    LineFigures& line_;
    const LineTypeDef& def_;
    Point from_;
    std::int64_t dx_, dy_;
    std::int32_t tick_px_;
    Point middle_;
};

}  // namespace

void DrawDashes(LineFigures& line, const Pitch& pitch) { DashedPitch(line, pitch).Draw(); }

}  // namespace orvane
