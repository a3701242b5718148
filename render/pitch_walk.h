// A segment of a pattern line cut into pitches, and which of them a clip can show.
#pragma once

#include <cstdint>

#include "platform/line_dda.h"
#include "platform/values.h"

namespace orvane {

/// One pitch of the pattern: from the last pattern point to the next.
struct Pitch {
    Point from;
    Point to;
};

/// Pitches by number, both ends of the run included; none when `last` is below `first`.
struct PitchRun {
    std::int64_t first = 1;
    std::int64_t last = 0;
};

/// The pattern points of one segment. A counter goes up with each point that LineDDA visits, and a pitch ends where it comes to a
/// multiple of the step; the first visited point is already call 1, so the first pitch is a pixel shorter than the others.
class PitchWalk {
public:
    /// REQUIRES: `step` above 0.
    PitchWalk(Point from, Point to, std::int64_t step)
        : from_(from), dda_(from, to), step_(step), right_(to.x >= from.x), down_(to.y >= from.y) {}

    /// Whole pitches; what is left over at the end has no figure.
    std::int64_t Count() const { return dda_.Count() / step_; }
    /// Where pitch `j` ends, counted from 1; 0 gives the start of the segment.
    Point End(std::int64_t j) const { return j == 0 ? from_ : dda_.At(j * step_ - 1); }
    /// All pitches whose box can meet `clip`; an empty run stands where they would. Found by bisection, so it costs the same
    /// however far the segment reaches; what IntersectRect says of a single one is left to PitchMeets.
    PitchRun Meeting(const Rect& clip) const;

private:
    template <class ReachesIn, class StartsIn>
    void Narrow(PitchRun& run, bool grows, ReachesIn reachesIn, StartsIn startsIn) const;

    Point from_;
    LineDda dda_;
    std::int64_t step_;
    bool right_, down_;
};

/// True when the pitch's box, normalised and widened, meets `clip`. It is widened by a pixel only away from zero: a level line
/// along y = 0 and an upright one along x = 0 have empty boxes, which meet nothing.
bool PitchMeets(const Pitch& pitch, const Rect& clip);

}  // namespace orvane
