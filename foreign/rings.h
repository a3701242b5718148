// Rings on their way into one item: the store finds them again by nothing but repeated points, so they must be laid out for that.
//
// A reader of an item's points takes the array as one ring when its first and last points are equal, and else closes a ring at
// the first point (from the third on) that equals the ring's opening one. So a ring is opened at a point that it passes only
// once, and the last ring of several does not end in the array's first point.
#pragma once

#include <vector>

#include "analysis/geometry/dig_pnt.h"

namespace orvane {

/// The rings of one polygon item, one behind the other.
class RingPacker {
public:
    /// Adds a ring, whether or not it repeats its first point at its end. Repeats in a row are dropped; a ring that passes all
    /// its points more than once is cut into simple ones, which cover the same area under the alternate fill rule. False when
    /// fewer than three different points are left: such a ring has no area, and nothing is added.
    bool Add(std::vector<DigPnt> ring);

    bool Empty() const { return rings_.empty(); }
    /// All rings in the order added, each closed by its opening point; a rule of the last one may have moved its opening point.
    /// The packer is empty afterwards.
    std::vector<DigPnt> Take();

private:
    std::vector<std::vector<DigPnt>> rings_;  // open: the opening point stands once, at the front
};

}  // namespace orvane
