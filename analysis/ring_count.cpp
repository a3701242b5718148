#include "analysis/ring_count.h"

#include <cstddef>

#include "analysis/geometry/ray_count.h"

namespace orvane {

namespace {

/// So few sides are walked faster than looked up.
constexpr std::size_t kWalked = 24;

}  // namespace

void RingCount::Build(std::span<const DigPnt> pts) {
    sides_.clear();
    rings_.clear();
    tree_.Build(0, [](std::size_t) { return FlatBox(); });
    slants_ = {};
    const std::vector<Edge> edges = Edges(Clean(pts));
    if (edges.empty()) return;

    rayEnd_ = edges.front().x1 + 1.0;
    sides_.reserve(edges.size());
    for (const Edge& edge : edges) {
        if (edge.x1 > rayEnd_) rayEnd_ = edge.x1 + 1.0;
        if (edge.x2 > rayEnd_) rayEnd_ = edge.x2 + 1.0;
        sides_.push_back({edge.x1, edge.y1, edge.x2, edge.y2});
    }
    std::size_t first = 0;
    for (std::size_t i = 1; i < sides_.size(); ++i) {
        if (i == first || sides_[i].x2 != sides_[first].x1 || sides_[i].y2 != sides_[first].y1) continue;
        rings_.push_back({first, i});
        first = i + 1;
    }
    sides_.resize(first);  // a ring that does not come back ends the count

    const auto boxAt = [this](std::size_t k) { return sides_[k].y1 == sides_[k].y2 ? FlatBox() : BoxOfEdge(sides_[k]); };
    for (std::size_t k = 0; k < sides_.size(); ++k) slants_.Add(boxAt(k));
    if (sides_.size() > kWalked) tree_.Build(sides_.size(), boxAt);
}

template <class Next>
std::size_t RingCount::Crossings(const DigPnt& p, Next next) const {
    std::size_t count = 0;
    auto ring = rings_.begin();
    for (std::size_t k = next(0); k < sides_.size(); k = next(ring->last + 1)) {
        while (ring->last < k) ++ring;
        count += RayCrossings(sides_, ring->first, ring->last, k, p, {rayEnd_, p.y, 0}, next);
    }
    return count;
}

bool RingCount::Inside(const DigPnt& p) const {
    // The ray's range as SegCross tells it, also from a point that lies to the right of the ray's end.
    const FlatBox ray{(std::min)(p.x, rayEnd_), p.y, (std::max)(p.x, rayEnd_), p.y};
    if (!ray.Meets(slants_)) return false;
    const std::size_t count = tree_.size() > 0 ? Crossings(p, [&](std::size_t k) { return tree_.Next(k, ray); })
                                               : Crossings(p, [](std::size_t k) { return k; });
    return count % 2 == 1;
}

}  // namespace orvane
