#include "render/pitch_walk.h"

#include <algorithm>

#include "platform/rect.h"

namespace orvane {

namespace {

std::int64_t WidenedLow(std::int32_t v) { return v < 0 ? std::int64_t{v} - 1 : v; }
std::int64_t WidenedHigh(std::int32_t v) { return v > 0 ? std::int64_t{v} + 1 : v; }

/// The first number from `first` to `last` for which `holds` is true, when it is false before that and true behind; last + 1 when
/// it is never true.
template <class Holds>
std::int64_t FirstThat(std::int64_t first, std::int64_t last, Holds holds) {
    if (first > last || holds(first)) return first;
    if (!holds(last)) return last + 1;  // most segments lie inside as a whole
    while (first < last) {
        const std::int64_t mid = first + (last - first + 1) / 2;
        if (holds(mid)) {
            last = mid - 1;
        } else {
            first = mid;
        }
    }
    return first + 1;
}

}  // namespace

// Both coordinates go one way along a segment, so a pitch lies before the clip, then in its band, then behind it.
template <class ReachesIn, class StartsIn>
void PitchWalk::Narrow(PitchRun& run, bool grows, ReachesIn reachesIn, StartsIn startsIn) const {
    const std::int64_t first = FirstThat(run.first, run.last, [&](std::int64_t j) { return grows ? reachesIn(j) : startsIn(j); });
    const std::int64_t last =
        FirstThat(first, run.last, [&](std::int64_t j) { return !(grows ? startsIn(j) : reachesIn(j)); }) - 1;
    run = {first, last};
}

PitchRun PitchWalk::Meeting(const Rect& clip) const {
    PitchRun run{1, Count()};
    Narrow(
        run, right_, [&](std::int64_t j) { return WidenedHigh(End(right_ ? j : j - 1).x) > clip.left; },
        [&](std::int64_t j) { return WidenedLow(End(right_ ? j - 1 : j).x) < clip.right; });
    Narrow(
        run, down_, [&](std::int64_t j) { return WidenedHigh(End(down_ ? j : j - 1).y) > clip.top; },
        [&](std::int64_t j) { return WidenedLow(End(down_ ? j - 1 : j).y) < clip.bottom; });
    return run;
}

bool PitchMeets(const Pitch& pitch, const Rect& clip) {
    const auto [left, right] = std::minmax(pitch.from.x, pitch.to.x);
    const auto [top, bottom] = std::minmax(pitch.from.y, pitch.to.y);
    Box common;
    return IntersectBox({WidenedLow(left), WidenedLow(top), WidenedHigh(right), WidenedHigh(bottom)}, ToBox(clip), common);
}

}  // namespace orvane
