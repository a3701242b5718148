// Lines of one pixel by the platform's rules: one pixel in each column of a flat line and in each row of a steep one, the nearest
// to the true line; half way between two it is the upper one of a flat line and the left one of a steep one. The last point of a
// line is not drawn, so that no pixel of a polyline is drawn twice where two of its segments meet.
//
// The pixels are those of the whole line for every 32-bit coordinate, whatever part of it the clip leaves; the time of a line
// follows the pixels inside the clip.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/pen_brush_font.h"
#include "platform/qt/ink.h"
#include "platform/qt/span_painter.h"
#include "platform/values.h"

namespace orvane {

/// Lengths in pixels, line and gap in turn, an even number of them. Without any, or with a sum of 0, there are no gaps.
struct DashList {
    std::array<std::int64_t, 2 * static_cast<std::size_t>(Pen::kMaxDashes)> lengths_px{};
    std::size_t count = 0;
    std::int64_t sum_px = 0;

    bool IsSolid() const { return sum_px <= 0; }
    /// Appends `dashes` `unit_px` long each; an odd number of them comes twice, so that line and gap change places. Negative
    /// lengths count as 0.
    static DashList Of(const std::int32_t* dashes, std::size_t dashCnt, std::int32_t unit_px);

    /// A place in the list: which entry, and how much of it is left.
    struct Place {
        std::size_t index = 0;
        std::int64_t left_px = 0;
        bool OnLine() const { return index % 2 == 0; }
    };
    /// The place `at_px` from the start of the list. REQUIRES: not IsSolid(), 0 <= at_px < sum_px.
    Place Find(std::int64_t at_px) const;
    /// The entry behind a place.
    Place Next(Place place) const {
        const std::size_t index = place.index + 1 == count ? 0 : place.index + 1;
        return {index, lengths_px[index]};
    }
};

struct ThinPen {
    Mix line;
    Mix gap;
    DashList dashes;
};

class ThinLinePainter {
public:
    /// The three must outlive the painter.
    ThinLinePainter(const PixelSurface& surface, const ClipArea& clip, const ThinPen& pen)
        : surface_(surface), clip_(clip), pen_(pen) {}

    /// Draws from point to point, and back to the first one when `closed`. The dashes start anew with each figure; in a line
    /// they are counted by its pixels.
    void Figure(const Point* pts, std::size_t count, bool closed);

private:
    /// A line as walked: `length` pixels along the major axis from its first point.
    struct Walk;

    template <bool kCopy>
    void SolidFigure(const Point* pts, std::size_t count, bool closed);
    void DashedFigure(const Point* pts, std::size_t count, bool closed);
    template <class Draw>
    void VisibleParts(const Walk& walk, Draw draw) const;

    const PixelSurface& surface_;
    const ClipArea& clip_;
    const ThinPen& pen_;
};

}  // namespace orvane
