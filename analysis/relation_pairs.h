// The walk over the pairs of segments of two shapes.
#pragma once

#include "analysis/relation_shape.h"

namespace orvane {

/// One segment of each shape.
struct SegPair {
    std::size_t i = 0;  ///< position in the first shape, and in the second
    std::size_t j = 0;
    const DigPnt& a1;
    const DigPnt& a2;
    const DigPnt& b1;
    const DigPnt& b2;

    bool Crosses(DigPnt& c) const { return SegCross(a1, a2, b1, b2, c) == 1; }
    bool Touches() const { return SegTouch(a1, a2, b1, b2) > 0; }
    bool EndsFirst(const DigPnt& c) const { return (c.x == a1.x && c.y == a1.y) || (c.x == a2.x && c.y == a2.y); }
    bool EndsSecond(const DigPnt& c) const { return (c.x == b1.x && c.y == b1.y) || (c.x == b2.x && c.y == b2.y); }
};

inline DigPnt MiddleOf(const DigPnt& p, const DigPnt& q) { return {(p.x + q.x) / 2, (p.y + q.y) / 2, 0}; }

/// Calls `visit(pair)` for each pair of segments that may cross or touch, until it answers false or the work is to end. Pairs of
/// one segment come in the order of the other shape's; in what order the pairs of different segments come is left open. One of
/// the two shapes has to be the query.
template <class Visit>
void ForSegPairs(RelationShape& a, RelationShape& b, Visit visit) {
    RelationShape& query = a.IsQuery() ? a : b;
    RelationShape& item = a.IsQuery() ? b : a;
    if (query.SegCnt() == 0 || item.SegCnt() == 0 || !item.Reaches(query.Reach())) return;
    const BoxTree& tree = query.Tree();
    if (tree.Next(0, item.Reach()) == tree.size()) return;
    const std::span<const DigPnt> own = item.Points();
    const std::span<const DigPnt> others = query.Points();
    const FlatBox all = query.Reach();
    for (std::size_t k = 0; k < item.SegCnt(); ++k) {
        const FlatBox reach = item.SegReach(k);
        if (!reach.Meets(all)) continue;
        for (std::size_t n = tree.Next(0, reach); n < tree.size(); n = tree.Next(n + 1, reach)) {
            const bool goesOn = a.IsQuery() ? visit(SegPair{n, k, others[n], others[n + 1], own[k], own[k + 1]})
                                            : visit(SegPair{k, n, own[k], own[k + 1], others[n], others[n + 1]});
            if (!goesOn || !query.Spend()) return;
        }
        if (!query.Spend()) return;
    }
}

}  // namespace orvane
