// The figures of one pitch, by the kind of the line type.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/device_context.h"
#include "render/pitch_walk.h"
#include "store/records.h"

namespace orvane {

/// `ltDir`: on which side of the direction of digitising the figures stand.
enum LineSide : std::int32_t { kSideLeft = 0, kSideBoth = 1, kSideRight = 2, kSideAlternating = 3 };

/// `ltPos`: where on a dash, or at which end of a line. Any other value stands for the middle of a dash and for no end.
enum LinePlace : std::int32_t { kPlaceMiddle = 0, kPlaceStart = 1, kPlaceEnd = 2, kPlaceBoth = 3 };

/// A value of a record's list; 0 where the list is shorter.
inline std::int32_t ListValue(const GrowArray<std::int32_t>& list, std::size_t i) { return i < list.size() ? list[i] : 0; }

/// What the figures of one polyline know, and the state that they hand from pitch to pitch: `side` and `leaveOut`, which only a
/// pitch that is drawn changes.
struct LineFigures {
    DeviceContext& dc;
    const LineTypeDef& def;
    std::int32_t penFactor;
    std::int32_t pitch_px;        ///< above 0 while a figure is drawn
    double segmentAngle_rad = 0;  ///< counter-clockwise on the screen from the right
    std::int32_t side = 1;        ///< 1 or -1
    bool leaveOut = false;        ///< the next shape has its turn off
};

void DrawTicks(LineFigures& line, const Pitch& pitch);   // line_ticks.cpp
void DrawDashes(LineFigures& line, const Pitch& pitch);  // line_dashes.cpp
void DrawWave(LineFigures& line, const Pitch& pitch);    // line_waves.cpp
void DrawShape(LineFigures& line, const Pitch& pitch);   // line_waves.cpp

/// The sign of a tick's angle on a line whose ticks stand on one side; an alternating line changes sides first.
std::int32_t TickSign(LineFigures& line);

/// Draws the two ticks at a place of a line with ticks on both sides: `p` and `q` are their ends, joined through `centre` unless
/// they form one straight line anyhow, which only an angle of exactly 90 degrees tells.
void DrawTickPair(LineFigures& line, Point p, Point centre, Point q);

}  // namespace orvane
