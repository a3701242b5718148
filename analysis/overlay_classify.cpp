// Which pieces bound the result: those that both polygons have, and those whose middle lies on the right side of the other
// polygon.
#include <cmath>
#include <utility>

#include "analysis/geometry/ray_count.h"
#include "analysis/overlay_parts.h"
#include "analysis/ray_index.h"

namespace orvane {

namespace {

/// Tells which points lie inside of a list's rings by the crossing count over its edges as they stand. Rays are walked until they
/// have met so many edges that an index of the crossings is cheaper.
class InsideTest {
public:
    explicit InsideTest(const EdgeList& list) : list_(list) {
        tree_.Build(list.edges.size(), [&](std::size_t i) { return BoxOfEdge(list.edges[i]); });
        if (list.edges.empty()) return;
        rayEnd_ = list.edges.front().x1 + 1.0;
        for (const PolyEdge& edge : list.edges) {
            if (edge.x1 > rayEnd_) rayEnd_ = edge.x1 + 1.0;
            if (edge.x2 > rayEnd_) rayEnd_ = edge.x2 + 1.0;
        }
    }

    bool Inside(const DigPnt& p) {
        if (!hasTriedIndex_ && IsIndexCheaper(met_, list_.edges.size())) MakeIndex();
        if (hasIndex_ && std::isfinite(p.x) && std::isfinite(p.y) && p.x < rayEnd_) return index_.Inside(p);
        // Right of the ray's end the ray runs to the left, and may meet what ends there.
        const FlatBox ray{(std::min)(p.x, rayEnd_), p.y, (std::max)(p.x, rayEnd_), p.y};
        const auto next = [&](std::size_t k) {
            ++met_;
            return tree_.Next(k, ray);
        };
        std::size_t count = 0;
        for (std::size_t k = next(0); k < list_.edges.size();) {
            const std::size_t ring = static_cast<std::size_t>(list_.edges[k].ring);
            const std::size_t end = list_.ringStarts[ring + 1];
            count += RayCrossings(list_.edges, list_.ringStarts[ring], end - 1, k, p, {rayEnd_, p.y, 0}, next);
            k = next(end);
        }
        return count % 2 == 1;
    }

private:
    void MakeIndex() {
        hasTriedIndex_ = true;
        std::vector<RayIndex::Side> sides;
        sides.reserve(list_.edges.size());
        for (const PolyEdge& edge : list_.edges) sides.push_back({edge.x1, edge.y1, edge.x2, edge.y2});
        hasIndex_ = index_.Build(std::move(sides), list_.ringStarts, RayIndex::Use::Still);
    }

    const EdgeList& list_;
    BoxTree tree_;
    double rayEnd_ = 0;
    std::size_t met_ = 0;
    RayIndex index_;
    bool hasTriedIndex_ = false;
    bool hasIndex_ = false;
};

DigPnt MiddleOf(const PolyEdge& edge) { return {(edge.x1 + edge.x2) / 2, (edge.y1 + edge.y2) / 2, 0}; }

/// Finds edges of B by their two vertices, in either direction, each once. Only edges between vertices of both lists are in it.
class SharedEdges {
public:
    SharedEdges(const EdgeList& b, const VertexTable& vertices) : b_(b), vertices_(vertices) {
        std::vector<std::int32_t> candidates;
        for (std::size_t j = 0; j < b.edges.size(); ++j) {
            if (MayBeShared(b.edges[j])) candidates.push_back(static_cast<std::int32_t>(j));
        }
        if (candidates.empty()) return;
        heads_.assign(std::bit_ceil(2 * candidates.size()), -1);
        next_.assign(b.edges.size(), -1);
        // Backwards, so that each chain has the first edge at its head.
        for (std::size_t n = candidates.size(); n-- > 0;) {
            std::int32_t& head = heads_[SlotOf(b.edges[static_cast<std::size_t>(candidates[n])])];
            next_[static_cast<std::size_t>(candidates[n])] = head;
            head = candidates[n];
        }
    }

    /// The first edge of B between the same vertices that was not taken yet, or -1.
    std::int32_t Take(const PolyEdge& edge) {
        if (heads_.empty() || !MayBeShared(edge)) return -1;
        std::int32_t* link = &heads_[SlotOf(edge)];
        while (*link >= 0) {
            const std::int32_t j = *link;
            const PolyEdge& other = b_.edges[static_cast<std::size_t>(j)];
            const bool same =
                (other.from == edge.from && other.to == edge.to) || (other.from == edge.to && other.to == edge.from);
            if (same) {
                *link = next_[static_cast<std::size_t>(j)];
                return j;
            }
            link = &next_[static_cast<std::size_t>(j)];
        }
        return -1;
    }

private:
    bool MayBeShared(const PolyEdge& edge) const {
        return (vertices_.Marks(edge.from) & vertices_.Marks(edge.to)) == (kSideA | kSideB);
    }
    std::size_t SlotOf(const PolyEdge& edge) const {
        const auto low = static_cast<std::uint64_t>((std::min)(edge.from, edge.to));
        const auto high = static_cast<std::uint64_t>((std::max)(edge.from, edge.to));
        const std::uint64_t h = (low << 32 | high) * 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(h ^ (h >> 32)) & (heads_.size() - 1);
    }

    const EdgeList& b_;
    const VertexTable& vertices_;
    std::vector<std::int32_t> heads_;
    std::vector<std::int32_t> next_;
};

bool KeepBySide(const EdgeList& own, const std::vector<bool>& used, const EdgeList& other, OverlayMode mode, OverlayWatch& watch,
                double from, double to, std::vector<PolyEdge>& kept) {
    InsideTest test(other);
    const double count = static_cast<double>(own.edges.size());
    for (std::size_t i = 0; i < own.edges.size(); ++i) {
        if (used[i]) continue;
        watch.SetDone(from + (to - from) * static_cast<double>(i) / count);
        if (test.Inside(MiddleOf(own.edges[i])) == (mode == OverlayMode::Intersection)) kept.push_back(own.edges[i]);
        if (!watch.GoesOn()) return false;
    }
    return true;
}

}  // namespace

bool Classify(const EdgeList& a, const EdgeList& b, OverlayMode mode, const VertexTable& vertices, OverlayWatch& watch,
              std::vector<PolyEdge>& kept) {
    std::vector<bool> usedA(a.edges.size());
    std::vector<bool> usedB(b.edges.size());
    SharedEdges shared(b, vertices);
    for (std::size_t i = 0; i < a.edges.size(); ++i) {
        const std::int32_t j = shared.Take(a.edges[i]);
        if (j < 0) continue;
        kept.push_back(a.edges[i]);
        if (mode == OverlayMode::Union) kept.push_back(b.edges[static_cast<std::size_t>(j)]);
        usedA[i] = true;
        usedB[static_cast<std::size_t>(j)] = true;
    }
    constexpr double kHalf = (kCutDone + kClassifyDone) / 2;
    return KeepBySide(a, usedA, b, mode, watch, kCutDone, kHalf, kept) &&
           KeepBySide(b, usedB, a, mode, watch, kHalf, kClassifyDone, kept);
}

}  // namespace orvane
