#include "platform/win32/reach.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane {

namespace {

// Differences of 32-bit coordinates need 33 bits, their products 65; a double's 53 place a crossing to far less than a pixel.
struct Spot {
    double x = 0;
    double y = 0;
};

constexpr double kReach = kReach_px;

/// One side of the square in reach: `sign` * coordinate <= kReach.
struct Side {
    double Spot::*coordinate;
    double sign;

    double Beyond(const Spot& p) const { return sign * p.*coordinate - kReach; }
};

constexpr Side kSides[] = {{&Spot::x, 1}, {&Spot::x, -1}, {&Spot::y, 1}, {&Spot::y, -1}};

Spot SpotOf(Point p) { return {static_cast<double>(p.x), static_cast<double>(p.y)}; }

POINT PixelOf(const Spot& p) {
    const auto whole = [](double v) { return static_cast<LONG>(std::lround((std::clamp)(v, -kReach, kReach))); };
    return {whole(p.x), whole(p.y)};
}

Spot Between(const Spot& a, const Spot& b, double share) { return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share}; }

/// Cuts the segment; false when nothing is left.
bool CutSegment(Spot& a, Spot& b) {
    for (const Side& side : kSides) {
        const double fromA = side.Beyond(a);
        const double fromB = side.Beyond(b);
        if (fromA > 0 && fromB > 0) return false;
        if (fromA > 0) a = Between(a, b, fromA / (fromA - fromB));
        if (fromB > 0) b = Between(b, a, fromB / (fromB - side.Beyond(a)));
    }
    return true;
}

void CutBySide(const std::vector<Spot>& ring, const Side& side, std::vector<Spot>& out) {
    out.clear();
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Spot& from = ring[i];
        const Spot& to = ring[(i + 1) % ring.size()];
        const double before = side.Beyond(from);
        const double after = side.Beyond(to);
        if (before <= 0) out.push_back(from);
        if ((before <= 0) != (after <= 0)) out.push_back(Between(from, to, before / (before - after)));
    }
}

}  // namespace

bool IsInReach(const Point* pts, std::int64_t count) {
    return std::all_of(pts, pts + count,
                       [](Point p) { return p.x >= -kReach_px && p.x <= kReach_px && p.y >= -kReach_px && p.y <= kReach_px; });
}

void CutLine(const Point* pts, std::int32_t count, std::vector<POINT>& out, std::vector<DWORD>& counts) {
    bool goesOn = false;
    for (std::int32_t i = 0; i + 1 < count; ++i) {
        Spot a = SpotOf(pts[i]);
        Spot b = SpotOf(pts[i + 1]);
        if (!CutSegment(a, b)) {
            goesOn = false;
            continue;
        }
        if (!goesOn) {
            out.push_back(PixelOf(a));
            counts.push_back(1);
        }
        out.push_back(PixelOf(b));
        ++counts.back();
        goesOn = IsInReach(pts + i + 1, 1);
    }
}

int CutRing(const Point* pts, std::int32_t count, std::vector<POINT>& out) {
    std::vector<Spot> ring(static_cast<std::size_t>(count));
    std::transform(pts, pts + count, ring.begin(), SpotOf);
    std::vector<Spot> cut;
    for (const Side& side : kSides) {
        CutBySide(ring, side, cut);
        ring.swap(cut);
    }
    std::transform(ring.begin(), ring.end(), std::back_inserter(out), PixelOf);
    return static_cast<int>(ring.size());
}

}  // namespace orvane
