#include <cmath>

#include "platform/to_int.h"
#include "render/line_figures.h"
#include "render/tick_end.h"

namespace orvane {

namespace {

enum WaveShape : std::int32_t { kWaveArc = 7, kWaveTriangle = 8, kWaveSquare = 9 };
enum ShapeFigure : std::int32_t { kShapeBox = 2, kShapeTriangle = 3, kShapeHalfDisc = 6 };

/// Settles the side of the figure at hand and sets the arc direction for it. Both sides keep the one that they start with;
/// numbers that are no side do the same.
void TakeSide(LineFigures& line) {
    if (line.def.ltDir == kSideLeft) line.side = 1;
    if (line.def.ltDir == kSideRight) line.side = -1;
    line.dc.SetArcDirection(line.side == 1 ? ArcDirection::Clockwise : ArcDirection::CounterClockwise);
}

void LeaveSide(LineFigures& line) {
    if (line.def.ltDir == kSideAlternating) line.side = -line.side;
}

/// The box of the circle whose flat arc bulges over a pitch to the line's side.
Rect ArcBox(const LineFigures& line, const Pitch& pitch) {
    const double radius = line.pitch_px * 1.25 / 2.0;
    const double distance = line.pitch_px * 3.0 / 8.0;
    const double angle_rad = (line.side == 1 ? -90.0 : 90.0) * kTickDegree_rad + line.segmentAngle_rad;
    const double dx = static_cast<double>(std::int64_t{pitch.to.x} - pitch.from.x);
    const double dy = static_cast<double>(std::int64_t{pitch.to.y} - pitch.from.y);
    const double x = pitch.from.x + dx / 2.0 + std::cos(angle_rad) * distance;
    const double y = pitch.from.y + dy / 2.0 - std::sin(angle_rad) * distance;
    return {TruncToInt32(x - radius), TruncToInt32(y - radius), TruncToInt32(x + radius + 0.5), TruncToInt32(y + radius + 0.5)};
}

Point TriangleTip(const LineFigures& line, const Pitch& pitch) {
    const double dx = static_cast<double>(std::int64_t{pitch.to.x} - pitch.from.x);
    const double dy = static_cast<double>(std::int64_t{pitch.to.y} - pitch.from.y);
    const Point middle{TruncToInt32(pitch.from.x + dx / 2.0), TruncToInt32(pitch.from.y + dy / 2.0)};
    const std::int32_t height = TruncToInt32(std::sqrt(3.0) * line.pitch_px / 2.0 / 2.0);
    return TickEnd(height, line.side == 1 ? 90.0 : -90.0, pitch.from, middle);
}

struct SquareTop {
    Point a;  ///< over the start of the pitch
    Point b;  ///< over its end
};

SquareTop TopOfSquare(const LineFigures& line, const Pitch& pitch) {
    const double angle_deg = line.side == 1 ? 90.0 : -90.0;
    const std::int32_t height = line.pitch_px / 2;
    return {TickEnd(height, -angle_deg, pitch.to, pitch.from), TickEnd(height, angle_deg, pitch.from, pitch.to)};
}

}  // namespace

void DrawWave(LineFigures& line, const Pitch& pitch) {
    TakeSide(line);
    const auto lineTo = [&](Point p) { line.dc.LineTo(p.x, p.y); };
    switch (ListValue(line.def.ltList2, 0)) {
        case kWaveArc:
            line.dc.ArcTo(ArcBox(line, pitch), pitch.from, pitch.to);
            break;
        case kWaveTriangle:
            lineTo(pitch.from);
            lineTo(TriangleTip(line, pitch));
            lineTo(pitch.to);
            break;
        case kWaveSquare: {
            const SquareTop top = TopOfSquare(line, pitch);
            lineTo(pitch.from);
            lineTo(top.a);
            lineTo(top.b);
            lineTo(pitch.to);
            break;
        }
        default:
            break;
    }
    LeaveSide(line);
}

void DrawShape(LineFigures& line, const Pitch& pitch) {
    line.leaveOut = !line.leaveOut;
    if (!line.leaveOut) return;
    TakeSide(line);
    switch (ListValue(line.def.ltList2, 1)) {
        case kShapeBox: {
            const SquareTop top = TopOfSquare(line, pitch);
            const Point corners[] = {pitch.from, top.a, top.b, pitch.to};
            line.dc.Polygon(corners, 4);
            break;
        }
        case kShapeTriangle: {
            const Point corners[] = {pitch.from, TriangleTip(line, pitch), pitch.to};
            line.dc.Polygon(corners, 3);
            break;
        }
        case kShapeHalfDisc:
            line.dc.Chord(ArcBox(line, pitch), pitch.from, pitch.to);
            break;
        default:
            break;
    }
    LeaveSide(line);
}

}  // namespace orvane
