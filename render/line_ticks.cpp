#include "render/line_figures.h"
#include "render/line_polygon.h"
#include "render/tick_end.h"

namespace orvane {

std::int32_t TickSign(LineFigures& line) {
    if (line.def.ltDir == kSideLeft) return 1;
    if (line.def.ltDir == kSideRight) return -1;
    line.side = -line.side;
    return line.side;
}

void DrawTickPair(LineFigures& line, Point p, Point centre, Point q) {
    if (line.def.ltAngle == 90.0 || line.def.ltAngle == -90.0) {
        const Point ends[] = {p, q};
        line.dc.Polyline(ends, 2);
    } else {
        const Point ends[] = {p, centre, q};
        line.dc.Polyline(ends, 3);
    }
}

void DrawTicks(LineFigures& line, const Pitch& pitch) {
    const LineTypeDef& def = line.def;
    if (def.ltDir < kSideLeft || def.ltDir > kSideAlternating) return;
    const std::int32_t length = PenUnitsToPix(def.ltLen, line.penFactor);
    const auto end = [&](double angle_deg) { return TickEnd(length, angle_deg, pitch.from, pitch.to); };
    if (def.ltDir == kSideBoth) {
        DrawTickPair(line, end(def.ltAngle), pitch.to, end(-def.ltAngle));
        return;
    }
    const Point tick[] = {pitch.to, end(def.ltAngle * TickSign(line))};
    line.dc.Polyline(tick, 2);
}

}  // namespace orvane
