// A line sweeps over all rings from low y to high. It knows the sides that it cuts, in order of x. At the lowest point of a ring
// the side just left of it tells everything: either the ring of that side has its inside there and is the one around, or both
// rings lie in the same one.
#include "foreign/ring_nesting.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <set>

namespace orvane {

namespace {

struct Side {
    DigPnt low;
    DigPnt high;
    double slope = 0;  // x gained for each y
    std::int32_t ring = 0;
    bool insideRight = false;  // the ring's inside lies at greater x

    double XAt(double y) const {
        if (y <= low.y) return low.x;
        if (y >= high.y) return high.x;
        return low.x + (y - low.y) / (high.y - low.y) * (high.x - low.x);
    }
};

// In order of x on a line that cuts both sides; sides that lie on each other keep the order in which the sweep met them.
struct LeftOf {
    const std::vector<Side>* sides;
    bool operator()(std::size_t i, std::size_t j) const {
        const Side& a = (*sides)[i];
        const Side& b = (*sides)[j];
        for (const double y : {(std::max)(a.low.y, b.low.y), (std::min)(a.high.y, b.high.y)}) {
            const double xa = a.XAt(y);
            const double xb = b.XAt(y);
            if (xa != xb) return xa < xb;
        }
        return i < j;
    }
};

// All sides that are not level, in the order in which the sweep meets them. Of rings that open on the same side the larger comes
// first, so that the other one finds it on its left.
std::vector<Side> SidesOf(std::span<const std::span<const DigPnt>> rings) {
    std::vector<Side> sides;
    std::vector<double> areas(rings.size());
    for (std::size_t r = 0; r < rings.size(); ++r) {
        const double area = DoubleArea(rings[r]);
        areas[r] = std::fabs(area);
        for (std::size_t i = 1; i < rings[r].size(); ++i) {
            const DigPnt& from = rings[r][i - 1];
            const DigPnt& to = rings[r][i];
            if (from.y == to.y) continue;
            const bool up = to.y > from.y;
            Side side{up ? from : to, up ? to : from, 0, static_cast<std::int32_t>(r), up != (area > 0)};
            side.slope = (side.high.x - side.low.x) / (side.high.y - side.low.y);
            sides.push_back(side);
        }
    }
    std::sort(sides.begin(), sides.end(), [&areas](const Side& a, const Side& b) {
        if (a.low.y != b.low.y) return a.low.y < b.low.y;
        if (a.low.x != b.low.x) return a.low.x < b.low.x;
        if (a.slope != b.slope) return a.slope < b.slope;
        return areas[static_cast<std::size_t>(a.ring)] > areas[static_cast<std::size_t>(b.ring)];
    });
    return sides;
}

}  // namespace

double DoubleArea(std::span<const DigPnt> ring) {
    double area = 0;
    for (std::size_t i = 1; i < ring.size(); ++i) {
        // Against the first point: far from the origin the products of the coordinates themselves would eat up the digits.
        area += (ring[i - 1].x - ring[0].x) * (ring[i].y - ring[0].y) - (ring[i].x - ring[0].x) * (ring[i - 1].y - ring[0].y);
    }
    return area;
}

std::vector<std::int32_t> RingParents(std::span<const std::span<const DigPnt>> rings) {
    std::vector<std::int32_t> parents(rings.size(), -1);
    if (rings.size() < 2) return parents;
    const std::vector<Side> sides = SidesOf(rings);
    std::vector<std::size_t> byEnd(sides.size());
    for (std::size_t i = 0; i < byEnd.size(); ++i) byEnd[i] = i;
    std::sort(byEnd.begin(), byEnd.end(), [&sides](std::size_t a, std::size_t b) { return sides[a].high.y < sides[b].high.y; });

    using Cut = std::set<std::size_t, LeftOf>;
    Cut cut(LeftOf{&sides});
    std::vector<Cut::iterator> at(sides.size());
    std::vector<bool> met(rings.size());
    std::size_t ended = 0;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        // Sides that end here are gone before those that begin here come: rings that touch in this point are not mixed up.
        while (sides[byEnd[ended]].high.y <= sides[i].low.y) cut.erase(at[byEnd[ended++]]);
        at[i] = cut.insert(i).first;
        const auto ring = static_cast<std::size_t>(sides[i].ring);
        if (met[ring]) continue;
        met[ring] = true;
        if (at[i] == cut.begin()) continue;
        const Side& left = sides[*std::prev(at[i])];
        parents[ring] = left.insideRight ? left.ring : parents[static_cast<std::size_t>(left.ring)];
    }
    return parents;
}

}  // namespace orvane
