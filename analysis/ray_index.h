// The crossing count of rings for many questions, where rays would meet too many sides one by one.
//
// Seen along one height y, each side that passes it crosses at one x, and each vertex chain that stands on it adds what the rule
// for vertices says from one x, or two, on to the left. So the count of a ray from p is how many of these x lie at or right of p,
// and only whether it is odd matters. Chains are sorted by height and x. Sides stand in a tree over the heights of all vertices,
// each in the few nodes that make up its span; within a node's heights sides that do not cross have one order from left to right,
// in which p is searched for. The crossings that the answer hangs on are computed as a ray would, so that it is the same to the
// bit: rounding can only matter near p, and there every side is asked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "analysis/box_tree.h"
#include "analysis/geometry/dig_pnt.h"

namespace orvane {

/// An index is made once rays have met this many sides for each side that there is: about what making it costs.
inline constexpr std::size_t kMetBeforeIndex = 8;
/// Few sides are walked in any case.
inline constexpr std::size_t kSidesBeforeIndex = 512;
inline bool IsIndexCheaper(std::size_t met, std::size_t sides) { return met > kMetBeforeIndex * (sides + kSidesBeforeIndex); }

class RayIndex {
public:
    struct Side {
        double x1 = 0, y1 = 0;
        double x2 = 0, y2 = 0;
    };
    enum class Use : std::uint8_t { Still, Turning };

    /// Takes the sides of ring r from `ringStarts[r]` up to `ringStarts[r + 1]`, each of which begins where the one before ends,
    /// and the first where the last ends. False, and nothing may be asked, when a coordinate is not finite or an extent so small
    /// or so large that products leave the usual range. May throw std::bad_alloc, as everything here that is not const.
    bool Build(std::vector<Side> sides, std::vector<std::size_t> ringStarts, Use use);

    /// Whether RayCrossings over all rings is odd for a ray from `p` that ends right of all sides. REQUIRES: finite coordinates.
    bool Inside(const DigPnt& p);

    /// Lets the ring run the other way round. REQUIRES: Use::Turning.
    void Reverse(std::size_t ring);

private:
    /// Left of it, and on it, the crossing count is one more.
    struct Step {
        double y = 0, x = 0;
        std::int32_t ring = 0;
        bool turned = false;  ///< holds while the ring runs the other way round
    };
    struct Crossing {
        double x = 0;
        bool isWithin = false;
    };
    struct Range {
        double low = 0, high = 0;
    };

    bool IsTame() const;
    Side At(std::size_t side) const;
    static Crossing CrossingOf(const Side& side, double y);
    void AddSteps(std::size_t ring, bool turned);
    void AddChain(const Side& come, const Side& go, bool wraps, std::int32_t ring, bool turned);
    void SortSteps();
    void FillNodes();
    void Order(std::size_t node);
    Range RangeAt(std::size_t side, double y) const;
    void FillDoubts(Use use);
    bool IsOddInNode(std::size_t node, double y, double x);
    void Flip(std::size_t step);
    bool IsOddBefore(std::size_t step) const;

    std::vector<Side> sides_;
    std::vector<std::size_t> ringStarts_;
    std::vector<std::int32_t> ringOf_;
    std::vector<std::uint8_t> turned_;  ///< of each ring
    double slack_ = 0;                  ///< above the distance of a computed crossing from the true one

    std::vector<Step> steps_;              ///< by y, then x
    std::vector<std::uint8_t> oddSteps_;   ///< a sum tree of the steps that hold
    std::vector<std::size_t> stepStarts_;  ///< of each ring in `stepsOfRing_`
    std::vector<std::int32_t> stepsOfRing_;

    std::vector<double> levels_;             ///< heights of vertices
    std::size_t leafCnt_ = 0;                ///< a leaf for each height and one for the space to the next
    std::vector<std::size_t> nodeStarts_;    ///< of each node in `members_`
    std::vector<std::int32_t> members_;      ///< sides
    std::vector<std::int32_t> groupStarts_;  ///< of each member: the first one that its order among is not certain
    std::vector<std::uint8_t> isOrdered_;    ///< nodes
    /// Heights at which rounding may put a side's crossing behind its end, so that it counts as none.
    struct Doubt {
        double low = 0, high = 0;
        std::int32_t side = 0;
        bool turned = false;
    };
    std::vector<Doubt> doubts_;  ///< by height
    BoxTree doubtTree_;
};

}  // namespace orvane
