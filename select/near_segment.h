// The segment of an overlay figure nearest to the cursor: where an inserted point belongs.
#pragma once

#include <cstdint>

#include "store/cdigmem.h"

namespace orvane {

struct NearSegmentAnswer {
    std::int32_t index = -1;  ///< position at which an inserted point belongs; -1: no such figure, or fewer than 2 points
    std::int32_t other = -1;  ///< the position of the segment's other end
    double firstX = 0;        ///< ends of the segment, map units, y to the north
    double firstY = 0;
    double secondX = 0;
    double secondY = 0;
};

/// Looks for the segment nearest to the map point (x, y). With `keep` it answers what the last search of this thread answered.
NearSegmentAnswer NearSegment(const CDigMem& store, std::int32_t figure, double x, double y, bool keep);

}  // namespace orvane
