#include "analysis/ray_index.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

#include "analysis/geometry/plane.h"

namespace orvane {

namespace {

constexpr double kInfinity = (std::numeric_limits<double>::infinity)();
/// Extents and coordinates in this range can be multiplied and divided with each other without leaving the normal numbers.
constexpr double kTiny = 0x1p-300;
constexpr double kHuge = 0x1p300;
/// A crossing is computed in six roundings, each by 2^-53 of no more than twice the greatest coordinate.
constexpr double kSlack = 0x1p-48;

bool IsLevel(const RayIndex::Side& side) { return side.y1 == side.y2; }

}  // namespace

bool RayIndex::Build(std::vector<Side> sides, std::vector<std::size_t> ringStarts, Use use) {
    sides_ = std::move(sides);
    ringStarts_ = std::move(ringStarts);
    if (sides_.size() > std::size_t{1} << 28 || !IsTame()) return false;
    const std::size_t rings = ringStarts_.size() - 1;
    turned_.assign(rings, 0);
    ringOf_.resize(sides_.size());
    steps_.clear();
    for (std::size_t r = 0; r < rings; ++r) {
        std::fill(ringOf_.begin() + static_cast<std::ptrdiff_t>(ringStarts_[r]),
                  ringOf_.begin() + static_cast<std::ptrdiff_t>(ringStarts_[r + 1]), static_cast<std::int32_t>(r));
        AddSteps(r, false);
        if (use == Use::Turning) AddSteps(r, true);
    }
    SortSteps();
    FillNodes();
    FillDoubts(use);
    return true;
}

bool RayIndex::IsTame() const {
    const auto fits = [](double v) { return std::fabs(v) <= kHuge; };
    const auto spans = [](double d) { return d == 0 || std::fabs(d) >= kTiny; };
    for (const Side& s : sides_) {
        if (!fits(s.x1) || !fits(s.y1) || !fits(s.x2) || !fits(s.y2)) return false;
        if (!spans(s.x2 - s.x1) || !spans(s.y2 - s.y1)) return false;
    }
    return true;
}

RayIndex::Side RayIndex::At(std::size_t side) const {
    const Side& s = sides_[side];
    return turned_[static_cast<std::size_t>(ringOf_[side])] == 0 ? s : Side{s.x2, s.y2, s.x1, s.y1};
}

/// Where a ray that comes from far left meets the side's line, and whether that is within the side.
RayIndex::Crossing RayIndex::CrossingOf(const Side& side, double y) {
    DigPnt at;
    const bool isWithin = SegCross({-kInfinity, y, 0}, {kInfinity, y, 0}, {side.x1, side.y1, 0}, {side.x2, side.y2, 0}, at) == 1;
    return {at.x, isWithin};
}

// --- Vertices -------------------------------------------------------------------------------------------------------------

void RayIndex::AddSteps(std::size_t ring, bool turned) {
    const std::size_t first = ringStarts_[ring];
    const std::size_t count = ringStarts_[ring + 1] - first;
    const auto side = [&](std::size_t n) {
        const Side& s = sides_[turned ? first + count - 1 - n : first + n];
        return turned ? Side{s.x2, s.y2, s.x1, s.y1} : s;
    };
    std::size_t opener = 0;
    while (opener < count && IsLevel(side(opener))) ++opener;
    if (opener == count) return;
    const auto number = static_cast<std::int32_t>(ring);
    std::size_t come = opener;
    for (std::size_t n = opener + 1; n < count; ++n) {
        if (IsLevel(side(n))) continue;
        AddChain(side(come), side(n), false, number, turned);
        come = n;
    }
    AddChain(side(come), side(opener), true, number, turned);
}

/// What a side that ends on its end's height and the next one that is not level add there, by the rule of RayCrossings: where the
/// crossing falls exactly on the end, both sides count once together, and once more where the ring turns back; else each counts
/// for itself. Of the ring's opening vertex the first side has counted before.
void RayIndex::AddChain(const Side& come, const Side& go, bool wraps, std::int32_t ring, bool turned) {
    const double y = come.y2;
    const Crossing end = CrossingOf(come, y);
    const auto add = [&](double x) { steps_.push_back({y, x, ring, turned}); };
    const bool isVertex = end.isWithin && end.x == come.x2;
    const bool turnsBack = (come.y1 - y <= 0) != (y - go.y2 <= 0);
    if (wraps) {
        add(go.x1);
        if (end.isWithin && (!isVertex || turnsBack)) add(end.x);
    } else if (isVertex) {
        const bool alone = go.x1 > end.x;  // from between the two, the ray meets the second side only
        if (alone) add(go.x1);
        if (turnsBack == alone) add(end.x);
    } else {
        add(go.x1);
        if (end.isWithin) add(end.x);
    }
}

void RayIndex::SortSteps() {
    std::sort(steps_.begin(), steps_.end(), [](const Step& a, const Step& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
    oddSteps_.assign(steps_.size() + 1, 0);
    stepStarts_.assign(ringStarts_.size() + 1, 0);
    for (const Step& step : steps_) ++stepStarts_[static_cast<std::size_t>(step.ring) + 2];
    for (std::size_t r = 2; r < stepStarts_.size(); ++r) stepStarts_[r] += stepStarts_[r - 1];
    stepsOfRing_.resize(steps_.size());
    for (std::size_t n = 0; n < steps_.size(); ++n) {
        stepsOfRing_[stepStarts_[static_cast<std::size_t>(steps_[n].ring) + 1]++] = static_cast<std::int32_t>(n);
        if (!steps_[n].turned) Flip(n);
    }
}

void RayIndex::Flip(std::size_t step) {
    for (std::size_t n = step + 1; n < oddSteps_.size(); n += n & (~n + 1)) oddSteps_[n] ^= 1;
}

bool RayIndex::IsOddBefore(std::size_t step) const {
    std::uint8_t odd = 0;
    for (std::size_t n = step; n > 0; n -= n & (~n + 1)) odd ^= oddSteps_[n];
    return odd != 0;
}

void RayIndex::Reverse(std::size_t ring) {
    turned_[ring] ^= 1;
    for (std::size_t n = stepStarts_[ring]; n < stepStarts_[ring + 1]; ++n) Flip(static_cast<std::size_t>(stepsOfRing_[n]));
}

// --- Sides that pass a height ---------------------------------------------------------------------------------------------

void RayIndex::FillNodes() {
    levels_.clear();
    double greatest = 0;
    for (const Side& s : sides_) {
        greatest = (std::max)({greatest, std::fabs(s.x1), std::fabs(s.x2)});
        if (!IsLevel(s)) levels_.push_back(s.y1);  // a ring that is not level all round comes back to each height
        if (!IsLevel(s)) levels_.push_back(s.y2);
    }
    slack_ = greatest * kSlack;
    std::sort(levels_.begin(), levels_.end());
    levels_.erase(std::unique(levels_.begin(), levels_.end()), levels_.end());
    leafCnt_ = std::bit_ceil(2 * levels_.size() + 1);

    const auto leafAt = [this](double y) {
        return 2 * static_cast<std::size_t>(std::lower_bound(levels_.begin(), levels_.end(), y) - levels_.begin());
    };
    // Leaf 2n is height n itself, the odd ones are the spaces between; a side passes what lies strictly between its ends.
    const auto eachNode = [&](const Side& s, auto visit) {
        if (IsLevel(s)) return;
        std::size_t low = leafCnt_ + leafAt((std::min)(s.y1, s.y2)) + 1;
        std::size_t high = leafCnt_ + leafAt((std::max)(s.y1, s.y2));
        for (; low < high; low /= 2, high /= 2) {
            if (low % 2 == 1) visit(low++);
            if (high % 2 == 1) visit(--high);
        }
    };
    nodeStarts_.assign(2 * leafCnt_ + 2, 0);
    for (const Side& s : sides_) eachNode(s, [&](std::size_t node) { ++nodeStarts_[node + 2]; });
    for (std::size_t n = 2; n < nodeStarts_.size(); ++n) nodeStarts_[n] += nodeStarts_[n - 1];
    members_.resize(nodeStarts_.back());
    for (std::size_t i = 0; i < sides_.size(); ++i) {
        eachNode(sides_[i], [&](std::size_t node) { members_[nodeStarts_[node + 1]++] = static_cast<std::int32_t>(i); });
    }
    groupStarts_.resize(members_.size());
    isOrdered_.assign(2 * leafCnt_, 0);
}

/// Holds the true crossing of the side at a height; one number at the side's own ends.
RayIndex::Range RayIndex::RangeAt(std::size_t side, double y) const {
    const Side& s = sides_[side];
    if (y == s.y1) return {s.x1, s.x1};
    if (y == s.y2) return {s.x2, s.x2};
    const double x = CrossingOf(s, y).x;
    return {x - slack_, x + slack_};
}

/// Puts the sides of a node into their order from left to right. Sides that may cross within the node's heights, as far as
/// rounding lets one tell, stay in one group, and so does what lies between them.
void RayIndex::Order(std::size_t node) {
    isOrdered_[node] = 1;
    const std::size_t first = nodeStarts_[node];
    const std::size_t count = nodeStarts_[node + 1] - first;
    const int height = std::countl_zero(node) - std::countl_zero(leafCnt_);
    const std::size_t leaf = (node << height) - leafCnt_;
    const std::size_t lastLeaf = leaf + (std::size_t{1} << height) - 1;
    const double low = levels_[leaf / 2];
    const double high = levels_[(lastLeaf + 1) / 2];

    struct Placed {
        Range atLow, atHigh;
        std::int32_t side = 0;
    };
    std::vector<Placed> placed(count);
    for (std::size_t n = 0; n < count; ++n) {
        const std::int32_t side = members_[first + n];
        const auto i = static_cast<std::size_t>(side);
        placed[n] = {RangeAt(i, low), RangeAt(i, high), side};
    }
    std::sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return a.atLow.low != b.atLow.low ? a.atLow.low < b.atLow.low : a.atHigh.low < b.atHigh.low;
    });
    std::vector<Range> behind(count + 1, {kInfinity, kInfinity});  // least x from here on, at the low and the high end
    for (std::size_t n = count; n-- > 0;) {
        behind[n] = {(std::min)(behind[n + 1].low, placed[n].atLow.low), (std::min)(behind[n + 1].high, placed[n].atHigh.low)};
    }
    double lowSoFar = -kInfinity;
    double highSoFar = -kInfinity;
    std::size_t group = 0;
    for (std::size_t n = 0; n < count; ++n) {
        if (lowSoFar <= behind[n].low && highSoFar <= behind[n].high) group = n;
        members_[first + n] = placed[n].side;
        groupStarts_[first + n] = static_cast<std::int32_t>(group);
        lowSoFar = (std::max)(lowSoFar, placed[n].atLow.high);
        highSoFar = (std::max)(highSoFar, placed[n].atHigh.high);
    }
}

/// Whether an odd number of the node's sides cross height `y` at or right of `x`.
bool RayIndex::IsOddInNode(std::size_t node, double y, double x) {
    const std::size_t first = nodeStarts_[node];
    const std::size_t count = nodeStarts_[node + 1] - first;
    if (count == 0) return false;
    if (isOrdered_[node] == 0) Order(node);
    const double clear = 4 * slack_;
    const auto groupOf = [&](std::size_t n) { return static_cast<std::size_t>(groupStarts_[first + n]); };
    const auto crossing = [&](std::size_t n) { return CrossingOf(At(static_cast<std::size_t>(members_[first + n])), y).x; };

    // The last group that begins clearly left of x: what stands before it lies left of x too.
    std::size_t from = 0;
    std::size_t end = count;
    while (end - from > 1) {
        const std::size_t middle = from + (end - from) / 2;
        std::size_t group = groupOf(middle);
        if (group <= from) {
            const auto begin = groupStarts_.begin() + static_cast<std::ptrdiff_t>(first);
            group =
                static_cast<std::size_t>(std::upper_bound(begin + static_cast<std::ptrdiff_t>(middle),
                                                          begin + static_cast<std::ptrdiff_t>(end), groupStarts_[first + from]) -
                                         begin);
            if (group >= end) break;
        }
        (crossing(group) < x - clear ? from : end) = group;
    }
    std::size_t odd = 0;
    bool isRight = false;
    for (std::size_t n = from; n < count; ++n) {
        const bool begins = groupOf(n) == n;
        if (begins && isRight) return ((odd + count - n) & 1) != 0;
        const double at = crossing(n);
        if (at >= x) ++odd;
        if (begins) isRight = at >= x + clear;
    }
    return (odd & 1) != 0;
}

/// Only near the end that a side runs to can rounding carry a crossing past it.
void RayIndex::FillDoubts(Use use) {
    doubts_.clear();
    for (std::size_t i = 0; i < sides_.size(); ++i) {
        for (const bool turned : {false, true}) {
            const Side& own = sides_[i];
            const Side s = turned ? Side{own.x2, own.y2, own.x1, own.y1} : own;
            if (IsLevel(s) || s.x1 == s.x2 || (turned && use == Use::Still)) continue;
            const double reach = 8 * slack_ * std::fabs((s.y2 - s.y1) / (s.x2 - s.x1)) + std::fabs(s.y2) * kSlack;
            const double first = std::nextafter(s.y1, s.y2);
            const double last = std::nextafter(s.y2, s.y1);
            const auto side = static_cast<std::int32_t>(i);
            if (s.y1 < s.y2) {
                doubts_.push_back({(std::max)(first, s.y2 - reach), last, side, turned});
            } else {
                doubts_.push_back({last, (std::min)(first, s.y2 + reach), side, turned});
            }
        }
    }
    std::sort(doubts_.begin(), doubts_.end(), [](const Doubt& a, const Doubt& b) { return a.low < b.low; });
    doubtTree_.Build(doubts_.size(), [this](std::size_t i) { return FlatBox{0, doubts_[i].low, 0, doubts_[i].high}; });
}

bool RayIndex::Inside(const DigPnt& p) {
    const auto level = std::lower_bound(levels_.begin(), levels_.end(), p.y);
    if (level == levels_.end() || p.y < levels_.front()) return false;
    bool odd = false;
    std::size_t leaf = 2 * static_cast<std::size_t>(level - levels_.begin());
    if (*level == p.y) {
        const auto isBefore = [](const Step& step, const DigPnt& at) { return step.y != at.y ? step.y < at.y : step.x < at.x; };
        const auto isBehind = [](double y, const Step& step) { return y < step.y; };
        const auto begin = std::lower_bound(steps_.begin(), steps_.end(), p, isBefore);
        const auto end = std::upper_bound(begin, steps_.end(), p.y, isBehind);
        odd = IsOddBefore(static_cast<std::size_t>(end - steps_.begin())) !=
              IsOddBefore(static_cast<std::size_t>(begin - steps_.begin()));
    } else {
        --leaf;
    }
    for (std::size_t node = leafCnt_ + leaf; node > 0; node /= 2) odd = odd != IsOddInNode(node, p.y, p.x);

    const FlatBox at{0, p.y, 0, p.y};
    for (std::size_t i = doubtTree_.Next(0, at); i < doubts_.size(); i = doubtTree_.Next(i + 1, at)) {
        const auto side = static_cast<std::size_t>(doubts_[i].side);
        if (doubts_[i].turned != (turned_[static_cast<std::size_t>(ringOf_[side])] != 0)) continue;
        const Crossing crossing = CrossingOf(At(side), p.y);
        if (!crossing.isWithin && crossing.x >= p.x) odd = !odd;
    }
    return odd;
}

}  // namespace orvane
