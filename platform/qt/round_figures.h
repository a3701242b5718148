// The points of ellipses, arcs and chords.
//
// Small figures come as a chain of neighbouring pixels, the nearest to the curve and the same in all four quarters, so that a
// line of one pixel through them is the curve's own picture. Large ones come as chords that stay close to the curve where it can
// be seen, and as few as may be elsewhere, because a host may ask for a circle of any size.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/values.h"

namespace orvane {

/// The ellipse of a box whose right and bottom edges lie outside, as the platform reads it; corners in any order.
class RoundFigure {
public:
    explicit RoundFigure(const Rect& box);

    /// A box without width or height has nothing to draw.
    bool IsEmpty() const { return a_ < 0 || b_ < 0; }

    /// Appends the points once round; they end before they come back to the first one. `seen` is where pixels count, in pixels.
    void Outline(const Box& seen, std::vector<Point>& out) const;
    /// Appends the arc from the ray through `start` to the ray through `end`, both ends included, clockwise as it is seen or the
    /// other way. Equal rays give the whole outline; a ray through the centre itself points to the right.
    void Arc(Point start, Point end, bool clockwise, const Box& seen, std::vector<Point>& out) const;

private:
    bool IsDense() const;
    double AngleTo(Point ray) const;
    /// The nearest pixel to the curve at a parameter, counted clockwise from the right.
    Point At(double t) const;
    /// Appends the points of an arc but the first; it lies within a quarter.
    void AppendChords(double from, double to, const Box& seen, int depth, std::vector<Point>& out) const;
    void AppendArc(double from, double sweep, const Box& seen, std::vector<Point>& out) const;
    void DenseQuarter(std::vector<Point>& out) const;
    void DenseOutline(std::vector<Point>& out) const;

    double cx_ = 0;
    double cy_ = 0;
    double a_ = -1;  ///< half axes
    double b_ = -1;
};

}  // namespace orvane
