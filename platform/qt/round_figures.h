// The points of ellipses, arcs and chords.
//
// Small figures come as a chain of neighbouring pixels, the nearest to the curve and the same in all four quarters, so that a
// line of one pixel through them is the curve's own picture. Large ones come as chords that stay close to the curve, and their
// number is bounded, because a host may ask for a circle of any size.
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

    /// Once round. The points end before they come back to the first one.
    void Outline(std::vector<Point>& out) const;
    /// Appends the arc from the ray through `start` to the ray through `end`, both ends included, clockwise as it is seen or the
    /// other way. Equal rays give the whole outline; a ray through the centre itself points to the right.
    void Arc(Point start, Point end, bool clockwise, std::vector<Point>& out) const;

private:
    double AngleTo(Point ray) const;
    /// The nearest pixel to the curve at a parameter, counted clockwise from the right.
    Point At(double t) const;
    /// So many chords go once round.
    double StepsRound() const;
    void DenseQuarter(std::vector<Point>& out) const;
    void DenseOutline(std::vector<Point>& out) const;

    double cx_ = 0;
    double cy_ = 0;
    double a_ = -1;  ///< half axes
    double b_ = -1;
};

}  // namespace orvane
