// The inside of a polygon, made ready for many questions.
#pragma once

#include <span>
#include <vector>

#include "analysis/box_tree.h"
#include "analysis/geometry/plane.h"
#include "analysis/ray_index.h"

namespace orvane {

/// Answers what PntInPgn answers, with the rounding and the falling into rings done once.
class RingCount {
public:
    /// Takes the array anew; the room of the one before is used again. May throw std::bad_alloc.
    void Build(std::span<const DigPnt> pts);
    /// Like PntInPgn(p, pts). `met` receives how many sides were looked at.
    bool Inside(const DigPnt& p, std::size_t& met);

private:
    struct Side {
        double x1 = 0, y1 = 0;
        double x2 = 0, y2 = 0;
    };
    struct Ring {
        std::size_t first = 0;
        std::size_t last = 0;
    };

    template <class Next>
    std::size_t Crossings(const DigPnt& p, Next next) const;
    void MakeIndex();

    std::vector<Side> sides_;  ///< of the rings alone, one ring behind the other
    std::vector<Ring> rings_;
    double rayEnd_ = 0;
    FlatBox slants_;  ///< box of the sides that are not level, which alone count
    BoxTree tree_;    ///< empty while the sides are few
    std::size_t met_ = 0;
    RayIndex index_;  ///< made once rays have met so many sides that it is cheaper
    bool hasTriedIndex_ = false;
    bool hasIndex_ = false;
};

}  // namespace orvane
