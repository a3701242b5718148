// The turned frame that a text stands in: s counts along the text, t down its lines, both in pixels from the anchor.
#pragma once

#include <cstdint>

#include "platform/values.h"

namespace orvane {

/// A position between the pixels' corners: pixel (x, y) reaches from there to one further.
struct Spot {
    double x = 0;
    double y = 0;
};

/// From begin up to end; empty when they do not stand in this order.
struct TextRun {
    double begin = 0;
    double end = 0;
};

class TextFrame {
public:
    /// Any angle, in tenths of degrees, counter-clockwise.
    TextFrame(std::int32_t x, std::int32_t y, std::int32_t angle_tenths);

    /// From 0 to 3599.
    std::int32_t Angle_tenths() const { return angle_tenths_; }
    /// The text runs along rows or columns, so that whole pixels stay whole pixels.
    bool IsUpright() const { return angle_tenths_ % 900 == 0; }
    Spot At(double s, double t) const { return {x_ + s * cos_ + t * sin_, y_ - s * sin_ + t * cos_}; }
    /// Where `area` lies along the text, and down its lines.
    TextRun Along(const Rect& area) const { return Reach(area, cos_, -sin_); }
    TextRun Down(const Rect& area) const { return Reach(area, sin_, cos_); }

private:
    TextRun Reach(const Rect& area, double perX, double perY) const;

    double x_;
    double y_;
    std::int32_t angle_tenths_;
    double cos_;
    double sin_;
};

}  // namespace orvane
