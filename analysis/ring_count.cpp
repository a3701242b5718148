#include "analysis/ring_count.h"

#include <cmath>
#include <cstddef>
#include <utility>

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
    met_ = 0;
    hasTriedIndex_ = hasIndex_ = false;
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

void RingCount::MakeIndex() {
    hasTriedIndex_ = true;
    std::vector<RayIndex::Side> sides;
    std::vector<std::size_t> starts{0};
    sides.reserve(sides_.size());
    for (const Side& side : sides_) sides.push_back({side.x1, side.y1, side.x2, side.y2});
    for (const Ring& ring : rings_) starts.push_back(ring.last + 1);
    hasIndex_ = index_.Build(std::move(sides), std::move(starts), RayIndex::Use::Still);
}

bool RingCount::Inside(const DigPnt& p, std::size_t& met) {
    // The ray's range as SegCross tells it, also from a point that lies to the right of the ray's end.
    const FlatBox ray{(std::min)(p.x, rayEnd_), p.y, (std::max)(p.x, rayEnd_), p.y};
    if (!ray.Meets(slants_)) {
        met = 1;
        return false;
    }
    if (tree_.size() == 0) {
        met = sides_.size();
        return Crossings(p, [](std::size_t k) { return k; }) % 2 == 1;
    }
    if (!hasTriedIndex_ && IsIndexCheaper(met_, sides_.size())) MakeIndex();
    if (hasIndex_ && std::isfinite(p.x) && std::isfinite(p.y) && p.x < rayEnd_) {
        met = 1;
        return index_.Inside(p);
    }
    met = 0;
    const std::size_t count = Crossings(p, [&](std::size_t k) {
        ++met;
        return tree_.Next(k, ray);
    });
    met_ += met;
    return count % 2 == 1;
}

}  // namespace orvane
