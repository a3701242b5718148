// Two areas are the same when the even-odd area of all their edges together is nothing. Along a horizontal line, crossings must
// then stand in pairs at one place, at almost every height; two straight edges keep together over a stretch of heights only on
// the same carrier line. So on each carrier line that is not horizontal every height must be covered by an even number of edges:
// every height where edges end there has an even number of ends. That is exact, and no crossing has to be computed.
#include "platform/filled_area.h"

#include <algorithm>
#include <compare>
#include <numeric>
#include <utility>
#include <vector>

namespace orvane {

namespace {

/// The end of an edge on its carrier line. The line is told by its direction, upward and in lowest terms, and by its lattice
/// point at the lowest height that is not negative.
struct LineEnd {
    std::int64_t dx, dy;
    std::int64_t x0, y0;
    std::int64_t y;

    auto operator<=>(const LineEnd&) const = default;
};

void AddEdge(Point from, Point to, std::vector<LineEnd>& ends) {
    if (from.y == to.y) return;
    if (from.y > to.y) std::swap(from, to);
    std::int64_t dx = std::int64_t{to.x} - from.x;
    std::int64_t dy = std::int64_t{to.y} - from.y;
    const std::int64_t common = std::gcd(dx, dy);
    dx /= common;
    dy /= common;
    // Within 64 bits: |dx| is below 2^32 and |steps| at most 2^31.
    const std::int64_t y0 = ((from.y % dy) + dy) % dy;
    const std::int64_t steps = (from.y - y0) / dy;
    const std::int64_t x0 = from.x - dx * steps;
    ends.push_back({dx, dy, x0, y0, from.y});
    ends.push_back({dx, dy, x0, y0, to.y});
}

void AddEnds(const FilledRings& rings, std::vector<LineEnd>& ends) {
    std::size_t at = 0;
    for (const std::int32_t count : rings.counts) {
        if (count <= 0) continue;
        const auto length = (std::min)(static_cast<std::size_t>(count), rings.pnts.size() - at);
        const std::span<const Point> ring = rings.pnts.subspan(at, length);
        for (std::size_t i = 0; i < ring.size(); ++i) AddEdge(ring[i], ring[i + 1 == ring.size() ? 0 : i + 1], ends);
        at += length;
    }
}

/// Whether the edges with these ends have no area.
bool IsNothing(std::vector<LineEnd>& ends) {
    std::sort(ends.begin(), ends.end());
    for (std::size_t i = 0; i < ends.size();) {
        std::size_t same = i;
        while (same < ends.size() && ends[same] == ends[i]) ++same;
        if ((same - i) % 2 != 0) return false;
        i = same;
    }
    return true;
}

}  // namespace

bool SameFilledArea(const FilledRings& a, const FilledRings& b) {
    std::vector<LineEnd> ends;
    AddEnds(a, ends);
    if (IsNothing(ends)) return false;
    AddEnds(b, ends);
    return IsNothing(ends);
}

}  // namespace orvane
