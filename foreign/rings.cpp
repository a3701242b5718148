#include "foreign/rings.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace orvane {

namespace {

using Ring = std::vector<DigPnt>;

bool SamePlace(const DigPnt& a, const DigPnt& b) { return a.x == b.x && a.y == b.y; }

// Drops repeats in a row and the closing point.
void Tighten(Ring& ring) {
    ring.erase(std::unique(ring.begin(), ring.end(), SamePlace), ring.end());
    while (ring.size() > 1 && SamePlace(ring.front(), ring.back())) ring.pop_back();
}

// How often the ring comes to each place, by position in the ring.
std::vector<std::size_t> VisitCounts(const Ring& ring) {
    std::vector<std::size_t> order(ring.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return ring[a].x != ring[b].x ? ring[a].x < ring[b].x : ring[a].y < ring[b].y;
    });
    std::vector<std::size_t> counts(ring.size());
    for (std::size_t first = 0; first < order.size();) {
        std::size_t last = first + 1;
        while (last < order.size() && SamePlace(ring[order[first]], ring[order[last]])) ++last;
        for (std::size_t i = first; i < last; ++i) counts[order[i]] = last - first;
        first = last;
    }
    return counts;
}

// Position of the first point that the ring passes once and that lies elsewhere than `avoid`.
std::optional<std::size_t> FindOpener(const Ring& ring, const DigPnt* avoid) {
    const auto fits = [&](std::size_t i) { return avoid == nullptr || !SamePlace(ring[i], *avoid); };
    const auto again = std::find_if(ring.begin() + 1, ring.end(), [&](const DigPnt& p) { return SamePlace(p, ring.front()); });
    if (again == ring.end() && fits(0)) return 0;
    const std::vector<std::size_t> counts = VisitCounts(ring);
    for (std::size_t i = 0; i < ring.size(); ++i) {
        if (counts[i] == 1 && fits(i)) return i;
    }
    return std::nullopt;
}

void OpenAt(Ring& ring, std::size_t opener) {
    std::rotate(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(opener), ring.end());
}

// Cuts a ring at every place that it comes back to. The pieces pass each of their points once.
std::vector<Ring> CutAtReturns(const Ring& ring) {
    std::vector<Ring> pieces;
    Ring open;
    std::map<std::pair<double, double>, std::size_t> at;  // position in `open` of each place on it
    for (const DigPnt& p : ring) {
        const auto found = at.find({p.x, p.y});
        if (found == at.end()) {
            at[{p.x, p.y}] = open.size();
            open.push_back(p);
            continue;
        }
        const auto cut = open.begin() + static_cast<std::ptrdiff_t>(found->second);
        Ring piece(cut, open.end());
        for (auto it = cut + 1; it != open.end(); ++it) at.erase({it->x, it->y});
        open.erase(cut + 1, open.end());
        if (piece.size() >= 3) pieces.push_back(std::move(piece));
    }
    if (open.size() >= 3) pieces.push_back(std::move(open));
    return pieces;
}

}  // namespace

bool RingPacker::Add(Ring ring) {
    Tighten(ring);
    if (ring.size() < 3) return false;
    if (const auto opener = FindOpener(ring, nullptr)) {
        OpenAt(ring, *opener);
        rings_.push_back(std::move(ring));
        return true;
    }
    std::vector<Ring> pieces = CutAtReturns(ring);
    for (Ring& piece : pieces) rings_.push_back(std::move(piece));
    return !pieces.empty();
}

std::vector<DigPnt> RingPacker::Take() {
    while (rings_.size() > 1 && SamePlace(rings_.front().front(), rings_.back().front())) {
        const DigPnt first = rings_.front().front();
        if (const auto opener = FindOpener(rings_.back(), &first)) {
            OpenAt(rings_.back(), *opener);
            break;
        }
        // It passes no other point only once. Simple pieces do, so the next round finds an opener, if any piece is left.
        std::vector<Ring> pieces = CutAtReturns(rings_.back());
        rings_.pop_back();
        for (Ring& piece : pieces) rings_.push_back(std::move(piece));
    }
    std::vector<DigPnt> points;
    for (const Ring& ring : rings_) {
        points.insert(points.end(), ring.begin(), ring.end());
        points.push_back(ring.front());
    }
    rings_.clear();
    return points;
}

}  // namespace orvane
