// The crossing count of one ring, for every list of edges that a polygon is kept in.
#pragma once

#include <algorithm>
#include <cstddef>

#include "analysis/geometry/plane.h"

namespace orvane {

/// How often the ray from `p` to `rayEnd`, at the same height, crosses the ring of the edges `first` to `last`. A vertex on the
/// ray counts once where the ring passes through and twice where it turns back; the edge behind such a vertex is counted with it.
///
/// `edges[k]` has x1, y1, x2, y2. The walk begins at edge `from`, and `next(k)` tells the first edge at or behind k that it has
/// to look at: edges whose box the ray does not meet may be left out, for they count nothing.
template <class EdgeArray, class Next>
std::size_t RayCrossings(const EdgeArray& edges, std::size_t first, std::size_t last, std::size_t from, const DigPnt& p,
                         const DigPnt& rayEnd, Next next) {
    const auto slantFrom = [&](std::size_t k, std::size_t end) {
        while (k <= end && edges[k].y1 == edges[k].y2) ++k;
        return k;
    };
    std::size_t count = 0;
    for (std::size_t k = from; k <= last; k = next(k + 1)) {
        const auto& edge = edges[k];
        if (edge.y1 == edge.y2) continue;
        if (!(p.y >= (std::min)(edge.y1, edge.y2) && p.y <= (std::max)(edge.y1, edge.y2))) continue;
        DigPnt crossing;
        if (SegCross(p, rayEnd, {edge.x1, edge.y1, 0}, {edge.x2, edge.y2, 0}, crossing) != 1) continue;

        bool turnsBack = false;
        bool wrapped = false;
        if (crossing.x == edge.x2 && crossing.y == edge.y2) {
            std::size_t m = slantFrom(k + 1, last);
            wrapped = m > last;
            if (wrapped) m = slantFrom(first, k);
            const bool comesUp = edge.y1 - crossing.y <= 0;
            const bool goesUp = crossing.y - edges[m].y2 <= 0;
            turnsBack = comesUp != goesUp;
            if (!wrapped) k = m;
        }
        if (!wrapped) ++count;
        if (turnsBack) ++count;
        if (wrapped) break;  // the ring's opening vertex was counted with its first edge
    }
    return count;
}

}  // namespace orvane
