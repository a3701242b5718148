// The finished rings: their order, rings that stand twice, their direction.
#include <algorithm>
#include <bit>
#include <limits>
#include <unordered_map>
#include <utility>

#include "analysis/geometry/plane.h"
#include "analysis/overlay_parts.h"
#include "analysis/ring_field.h"

namespace orvane {

namespace {

struct Ring {
    std::size_t first = 0;   ///< position of its opening point
    std::size_t length = 0;  ///< closing point included
};

std::vector<Ring> RingsOf(std::span<const DigPnt> pts) {
    std::vector<Ring> rings;
    std::size_t at = 0;
    for (const std::int32_t length : RingLengths(pts)) {
        rings.push_back({at, static_cast<std::size_t>(length)});
        at += rings.back().length;
    }
    return rings;
}

struct PlacedRing {
    Ring ring;
    std::size_t lowest = 0;  ///< position within the ring
    double x = 0;
};

/// Numbers in a row, asked for the next one below another.
class LeastTree {
public:
    explicit LeastTree(std::size_t count) : leafCnt_(std::bit_ceil(count)), least_(2 * leafCnt_, kNever) {}
    void Set(std::size_t i, double value) {
        std::size_t node = leafCnt_ + i;
        least_[node] = value == value ? value : kNever;
        for (node /= 2; node > 0; node /= 2) least_[node] = (std::min)(least_[2 * node], least_[2 * node + 1]);
    }
    /// The first position at or behind `from` whose number is below `value`; the number of leaves when there is none.
    std::size_t Next(std::size_t from, double value) const {
        std::size_t node = leafCnt_ + from;
        while (!(least_[node] < value)) {
            while (node % 2 == 1) node /= 2;
            if (node == 0) return leafCnt_;
            ++node;
        }
        while (node < leafCnt_) node = least_[2 * node] < value ? 2 * node : 2 * node + 1;
        return node - leafCnt_;
    }

private:
    static constexpr double kNever = (std::numeric_limits<double>::infinity)();
    std::size_t leafCnt_;
    std::vector<double> least_;
};

/// The exchange sort of the rings by their x, with its own order of equal ones, without its cost where that makes no difference.
void SortByX(std::vector<PlacedRing>& rings, OverlayWatch& watch) {
    const auto before = [](const PlacedRing& a, const PlacedRing& b) { return a.x < b.x; };
    if (std::is_sorted(rings.begin(), rings.end(), before)) return;
    std::vector<PlacedRing> sorted = rings;
    std::sort(sorted.begin(), sorted.end(), before);
    const auto same = [](const PlacedRing& a, const PlacedRing& b) { return a.x == b.x; };
    if (std::adjacent_find(sorted.begin(), sorted.end(), same) == sorted.end()) {
        rings = std::move(sorted);
        return;
    }
    LeastTree xs(rings.size());
    for (std::size_t i = 0; i < rings.size(); ++i) xs.Set(i, rings[i].x);
    for (std::size_t i = 0; i + 1 < rings.size(); ++i) {
        for (std::size_t j = i + 1; (j = xs.Next(j, rings[i].x)) < rings.size(); ++j) {
            std::swap(rings[i], rings[j]);
            xs.Set(j, rings[j].x);
            if (!watch.GoesOn() || j + 1 == rings.size()) break;
        }
        if (!watch.GoesOn()) return;
    }
}

/// Finds the rings that have all points of another one. Rings of a length that no other has take no part.
class TwinSearch {
public:
    TwinSearch(std::span<const DigPnt> pts, std::span<const Ring> rings, std::span<const std::int8_t> marks)
        : pts_(pts), rings_(rings) {
        for (std::size_t r = 0; r < rings.size(); ++r) {
            begins_.push_back(vertexOf_.size());
            if (marks[r] != 0) continue;
            for (std::size_t n = 0; n + 1 < rings[r].length; ++n) {
                const DigPnt& p = pts[rings[r].first + n];
                const std::int32_t vertex = vertices_.Put(p.x, p.y, 0);
                vertexOf_.push_back(vertex);
                if (ringsAt_.size() < vertices_.size()) ringsAt_.resize(vertices_.size());
                std::vector<std::size_t>& there = ringsAt_[static_cast<std::size_t>(vertex)];
                if (there.empty() || there.back() != r) there.push_back(r);
            }
        }
        counts_.assign(vertices_.size(), 0);
    }

    /// The first ring behind `r`, without a mark, that has each point of it once more than those before have taken. The number
    /// of rings when there is none.
    std::size_t TwinOf(std::size_t r, std::span<const std::int8_t> marks) {
        const std::vector<std::size_t>* fewest = nullptr;
        for (const std::int32_t vertex : VerticesOf(r)) {
            const std::vector<std::size_t>& there = ringsAt_[static_cast<std::size_t>(vertex)];
            if (fewest == nullptr || there.size() < fewest->size()) fewest = &there;
        }
        for (auto at = std::upper_bound(fewest->begin(), fewest->end(), r); at != fewest->end(); ++at) {
            if (marks[*at] == 0 && Holds(*at, r)) return *at;
        }
        return rings_.size();
    }

private:
    std::span<const std::int32_t> VerticesOf(std::size_t r) const {
        return std::span(vertexOf_).subspan(begins_[r], rings_[r].length - 1);
    }
    bool Holds(std::size_t whole, std::size_t part) {
        if (rings_[part].length > rings_[whole].length) return false;
        for (const std::int32_t vertex : VerticesOf(whole)) ++counts_[static_cast<std::size_t>(vertex)];
        bool all = true;
        for (const std::int32_t vertex : VerticesOf(part)) all = --counts_[static_cast<std::size_t>(vertex)] >= 0 && all;
        for (const std::int32_t vertex : VerticesOf(part)) counts_[static_cast<std::size_t>(vertex)] = 0;
        for (const std::int32_t vertex : VerticesOf(whole)) counts_[static_cast<std::size_t>(vertex)] = 0;
        return all;
    }

    std::span<const DigPnt> pts_;
    std::span<const Ring> rings_;
    VertexTable vertices_;
    std::vector<std::size_t> begins_;  ///< of each ring's vertices in `vertexOf_`
    std::vector<std::int32_t> vertexOf_;
    std::vector<std::vector<std::size_t>> ringsAt_;  ///< of each vertex
    std::vector<std::int32_t> counts_;               ///< 0 between two questions
};

/// 0 for a ring whose length another one has, 1 for the others.
std::vector<std::int8_t> LengthMarks(std::span<const Ring> rings) {
    std::unordered_map<std::size_t, int> seen;
    for (const Ring& ring : rings) ++seen[ring.length];
    std::vector<std::int8_t> marks;
    for (const Ring& ring : rings) marks.push_back(seen[ring.length] == 1 ? 1 : 0);
    return marks;
}

/// The area, positive for anticlockwise with y upward, summed as the closing point's neighbours give it.
double SignedArea(std::span<const DigPnt> ring) {
    const std::size_t n = ring.size();
    double sum = 0;
    for (std::size_t i = 0; i < n; ++i) sum += (ring[i == 0 ? n - 1 : i - 1].x - ring[i + 1 == n ? 0 : i + 1].x) * ring[i].y;
    return sum / 2;
}

}  // namespace

std::vector<std::int32_t> RingLengths(std::span<const DigPnt> pts) {
    std::vector<std::int32_t> lengths(pts.size());
    lengths.resize(static_cast<std::size_t>(SplitRings(pts, lengths.data(), true)));
    return lengths;
}

void Normal(std::vector<DigPnt>& pts, OverlayWatch& watch) {
    const std::vector<Ring> rings = RingsOf(pts);
    if (rings.size() < 2) return;
    std::vector<PlacedRing> placed;
    for (const Ring& ring : rings) {
        std::size_t low = 0;
        for (std::size_t n = 1; n < ring.length; ++n) {
            const DigPnt& p = pts[ring.first + n];
            const DigPnt& lowest = pts[ring.first + low];
            if (p.x < lowest.x || (p.x == lowest.x && p.y < lowest.y)) low = n;
        }
        placed.push_back({ring, low, pts[ring.first + low].x});
    }
    SortByX(placed, watch);
    std::vector<DigPnt> sorted;
    sorted.reserve(pts.size());
    for (const PlacedRing& ring : placed) {
        const DigPnt* own = &pts[ring.ring.first];
        sorted.insert(sorted.end(), own + ring.lowest, own + ring.ring.length);
        if (ring.lowest > 0) sorted.insert(sorted.end(), own + 1, own + ring.lowest + 1);
    }
    // Points behind the last ring stay where they are.
    std::copy(sorted.begin(), sorted.end(), pts.begin());
}

void Twins(std::vector<DigPnt>& pts, OverlayWatch& watch) {
    const std::vector<Ring> rings = RingsOf(pts);
    std::vector<std::int8_t> marks = LengthMarks(rings);
    if (std::count(marks.begin(), marks.end(), std::int8_t{0}) == 0) return;
    TwinSearch search(pts, rings, marks);
    std::vector<RingField> field;  // one, once it is needed
    for (std::size_t i = 0; i < rings.size(); ++i) {
        if (marks[i] != 0) continue;
        const std::size_t j = search.TwinOf(i, marks);
        if (!watch.GoesOn()) return;
        if (j == rings.size()) continue;
        if (field.empty()) field.emplace_back(pts);
        marks[i] = field.front().Inside(pts[rings[i].first]) ? -1 : -2;
        marks[j] = -1;
    }
    if (field.empty()) return;
    std::size_t to = 0;
    std::size_t from = 0;
    for (std::size_t r = 0; r < rings.size(); ++r) {
        for (std::size_t n = 0; n < rings[r].length; ++n, ++from) {
            if (marks[r] != -1) pts[to++] = pts[from];
        }
    }
    while (from < pts.size()) pts[to++] = pts[from++];
    pts.resize(to);
}

void Orient(std::vector<DigPnt>& pts, OverlayWatch& watch) {
    const std::vector<Ring> rings = RingsOf(pts);
    if (rings.empty()) return;
    RingField field(pts);
    for (const Ring& ring : rings) {
        const std::span<DigPnt> own = std::span(pts).subspan(ring.first, ring.length);
        const double area = SignedArea(own);
        const bool inside = field.Inside(own.front());
        if (!watch.GoesOn()) return;
        if (!(inside ? area > 0 : area < 0)) continue;
        std::reverse(own.begin() + 1, own.end() - 1);
        field.Reversed(ring.first, ring.first + ring.length);
    }
}

}  // namespace orvane
