// The points that the platform's LineDDA visits, in plain code so that every system places patterns alike.
#pragma once

#include <cstdint>

#include "platform/values.h"

namespace orvane {

/// The pixels of a line from one point to another, the end left out: one for each step along the longer axis. Each is computed
/// by its number, so that a caller who needs few of them pays for few. Any two points will do.
///
/// A pixel half way between two rows (columns of a steep line) takes the one nearer to the start: Bresenham's error term begins
/// even there, and a step aside is made only when it is above zero. The line mirrored about its start is so the mirror image of
/// the line; the line walked from its end need not visit the same pixels.
class LineDda {
public:
    LineDda(Point from, Point to);

    /// How many points there are; 0 when both ends are one point.
    std::int64_t Count() const { return static_cast<std::int64_t>(major_); }
    /// Point number `k`. REQUIRES: k of at least 0 and below Count().
    Point At(std::int64_t k) const;

private:
    Point from_;
    bool steep_;                   ///< y is the longer axis
    bool right_, down_;            ///< the way the axes go
    std::uint64_t major_, minor_;  ///< pixels along the longer and the shorter axis
};

}  // namespace orvane
