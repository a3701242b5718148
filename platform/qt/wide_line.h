// Lines of two pixels and more: all pixels whose point lies no further than half the width from the line. Corners and, but for
// the flat style, ends are round.
//
// A line is put together from one bar for each segment and one disc for each point. Where they overlap a pixel must still be
// drawn once under modes that do not bear repetition; TakenPixels sees to that, and keeps lines with much overlap cheap.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/qt/area_scan.h"
#include "platform/qt/span_painter.h"
#include "platform/qt/thin_line.h"
#include "platform/values.h"

namespace orvane {

struct WidePen {
    std::int64_t width_px = 2;
    DashList dashes;        ///< counted along the line's length
    bool flatEnds = false;  ///< of the line and of each dash
};

class WideLinePainter {
public:
    /// Draws a figure, closed or open, with the painter's ink.
    void Figure(const Point* pts, std::size_t count, bool closed, const WidePen& pen, AreaScanner& scanner, SpanPainter& painter);

    /// An upper bound of the pixels that the bars and discs of a figure hold together, each as if it were alone. None counts for
    /// more than `most`.
    static double PixelsWithRepetition(const Point* pts, std::size_t count, const WidePen& pen, double most);

private:
    struct Bar;
    struct Tools;

    void Solid(const Point* pts, std::size_t count, bool closed, const Tools& tools);
    void Dashed(const Point* pts, std::size_t count, bool closed, const Tools& tools);
    void Disc(Point center, const Tools& tools);
    void FillDiscTable(std::int64_t width_px);

    struct HalfChord {
        std::int64_t left_px = 0;   ///< pixels left of the centre
        std::int64_t right_px = 0;  ///< pixels from the centre on
    };
    static HalfChord ChordOf(std::int64_t width_px, std::int64_t rowFromCenter);

    std::vector<HalfChord> table_;  ///< by distance from the centre's row; for the width below
    std::int64_t tableWidth_px_ = 0;
};

}  // namespace orvane
