// What lets a test pass by most segments without changing an answer: boxes that provably hold everything a segment can meet.
//
// SegCross tells a crossing only within the closed ranges of both segments. SegDist is 0 at the segment's ends and where two
// products of differences come out equal. The rounding of those products may let a point pass that stands beside the box of the
// segment, by less than 14 units of the last place of the segment's extent; the boxes here are wider by 256 of them. That holds
// as long as no product leaves the range of normal numbers, so coordinates that could do that ("wild": tiny, huge, or no numbers)
// get a box of the whole plane.
#include "analysis/relation_shape.h"

#include <cmath>
#include <limits>
#include <new>
#include <tuple>

namespace orvane {

namespace {

constexpr double kInfinity = (std::numeric_limits<double>::infinity)();
constexpr FlatBox kWholePlane{-kInfinity, -kInfinity, kInfinity, kInfinity};
constexpr double kTiny = 0x1p-200;
constexpr double kHuge = 0x1p400;
constexpr double kWiden = 0x1p-45;
/// Below it a coordinate and 1 more are not the same number: the ray ends 1 beyond the sides.
constexpr double kWholeUnits = 0x1p50;
/// An item builds its tree when it is asked that often for points on its line, and has that many segments.
constexpr std::uint32_t kQuestionsBeforeTree = 4;
constexpr std::size_t kWalked = 24;

bool IsTame(double v) { return v == 0 || (std::fabs(v) >= kTiny && std::fabs(v) <= kHuge); }
bool IsTame(const DigPnt& p) { return IsTame(p.x) && IsTame(p.y); }
/// Whether every number from `low` to `high` is tame.
bool IsTameRange(double low, double high) {
    return low <= high && low >= -kHuge && high <= kHuge && (low >= kTiny || high <= -kTiny);
}

/// Whether the ray of PntInPgn from `p`, which goes to the right, cannot meet a side within `box`. Rounding to six decimals moves
/// no coordinate by as much as 1. To the left of the box the count of crossings decides, which rounding may leave odd.
bool RayMisses(const DigPnt& p, const FlatBox& box) {
    return p.y < box.minY - 1.0 || p.y > box.maxY + 1.0 || (p.x > box.maxX + 1.0 && std::fabs(box.maxX) < kWholeUnits);
}

FlatBox Widened(const FlatBox& box) {
    const double margin = ((box.maxX - box.minX) + (box.maxY - box.minY)) * kWiden;
    return {box.minX - margin, box.minY - margin, box.maxX + margin, box.maxY + margin};
}

}  // namespace

bool RelationWatch::Ask() {
    spent_ = 0;
    if (stopped_ || !ask_) return !stopped_;
    ++asked_;
    stopped_ = !ask_();
    return !stopped_;
}

void SegMarks::Begin(std::size_t count) {
    if (stamps_.size() < count) stamps_.resize(count, stamp_);
    if (++stamp_ != 0) return;
    std::fill(stamps_.begin(), stamps_.end(), 0u);
    stamp_ = 1;
}

FlatBox RelationShape::TameReach(const DigPnt& a, const DigPnt& b) { return Widened(BoxOf(a, b)); }

FlatBox RelationShape::AnyReach(const DigPnt& a, const DigPnt& b) {
    return IsTame(a) && IsTame(b) ? TameReach(a, b) : kWholePlane;
}

void RelationShape::Begin(ShapeType type, std::span<const DigPnt> pnts) {
    type_ = type;
    source_ = pnts;
    toDevice_ = nullptr;
    outer_ = kWholePlane;
    hasEndPnts_ = hasReach_ = hasPoints_ = isTame_ = hasTree_ = hasRings_ = hasEnds_ = false;
    lineAsked_ = 0;
}

void RelationShape::Load(ShapeType type, std::span<const DigPnt> pnts) {
    Begin(type, pnts);
    pts_ = pnts;
    hasPoints_ = true;
    BoxOfDevice();
}

void RelationShape::Load(ShapeType type, std::span<const DigPnt> pnts, const DeviceTransform& toDevice, const Rect* bounds) {
    Begin(type, pnts);
    toDevice_ = &toDevice;
    if (bounds == nullptr || toDevice.Turns()) return;
    outer_ = ReachOfMap({bounds->left - 1.0, bounds->top - 1.0, bounds->right + 1.0, bounds->bottom + 1.0});
}

void RelationShape::TakeEndPnts() {
    first_ = source_.front();
    last_ = source_.back();
    if (toDevice_ != nullptr) {
        first_ = toDevice_->ToDeviceF(first_.x, first_.y);
        last_ = toDevice_->ToDeviceF(last_.x, last_.y);
    }
    hasEndPnts_ = true;
}

const FlatBox& RelationShape::Reach() {
    if (hasReach_) return reach_;
    if (toDevice_->Turns()) {
        Points();
    } else {
        BoxOfMap();
        hasReach_ = true;
    }
    return reach_;
}

std::span<const DigPnt> RelationShape::Points() {
    if (hasPoints_) return pts_;
    const std::size_t count = source_.size();
    if (device_.size() < count && !device_.Resize(count)) throw std::bad_alloc();
    const DeviceTransform t = *toDevice_;
    DigPnt* const out = device_.data();
    for (std::size_t i = 0; i < count; ++i) out[i] = t.ToDeviceF(source_[i].x, source_[i].y);
    Count(count);
    pts_ = {out, count};
    hasPoints_ = true;
    first_ = pts_.front();
    last_ = pts_.back();
    hasEndPnts_ = true;
    BoxOfDevice();
    return pts_;
}

void RelationShape::BoxOfDevice() {
    FlatBox box;
    isTame_ = true;
    for (const DigPnt& p : pts_) {
        isTame_ = isTame_ && IsTame(p);
        box.Add({p.x, p.y, p.x, p.y});
    }
    reach_ = isTame_ ? Widened(box) : kWholePlane;
    hasReach_ = true;
}

/// Without a turn each device coordinate rises or falls with one map coordinate, steps of rounding included. So the box of the
/// map points goes through the transform in place of all of them. Whether all coordinates are tame can be told from it only where
/// it does not cross an axis.
void RelationShape::BoxOfMap() {
    FlatBox map;
    double check = 0;  // not a number as soon as one coordinate is none, or infinite
    for (const DigPnt& p : source_) {
        map.minX = p.x < map.minX ? p.x : map.minX;
        map.maxX = p.x > map.maxX ? p.x : map.maxX;
        map.minY = p.y < map.minY ? p.y : map.minY;
        map.maxY = p.y > map.maxY ? p.y : map.maxY;
        check += (p.x + p.y) * 0.0;
    }
    reach_ = check != 0 ? kWholePlane : ReachOfMap(map);
}

FlatBox RelationShape::ReachOfMap(const FlatBox& map) const {
    const DigPnt a = toDevice_->ToDeviceF(map.minX, map.minY);
    const DigPnt b = toDevice_->ToDeviceF(map.maxX, map.maxY);
    const FlatBox box = BoxOf(a, b);
    return IsTameRange(box.minX, box.maxX) && IsTameRange(box.minY, box.maxY) ? Widened(box) : kWholePlane;
}

bool RelationShape::Inside(const DigPnt& p) {
    if (RayMisses(p, outer_) || RayMisses(p, Reach())) return false;
    if (!hasRings_) {
        rings_.Build(Points());
        Count(source_.size());
        hasRings_ = true;
    }
    std::size_t met = 0;
    const bool isInside = rings_.Inside(p, met);
    Count(met);
    return isInside;
}

bool RelationShape::OnLine(const DigPnt& p) {
    const FlatBox at = IsTame(p) ? FlatBox{p.x, p.y, p.x, p.y} : kWholePlane;
    if (!Reaches(at)) return false;
    const std::span<const DigPnt> pts = Points();
    if (!hasTree_ && (SegCnt() <= kWalked || (!IsQuery() && ++lineAsked_ < kQuestionsBeforeTree))) {
        Count(pts.size());
        return PntOnLine(p, pts) != 0;
    }
    const BoxTree& tree = Tree();
    std::size_t met = 0;
    bool found = false;
    for (std::size_t i = tree.Next(0, at); i < tree.size() && !found; i = tree.Next(i + 1, at)) {
        found = SegDist(p, pts[i], pts[i + 1]) == 0;
        ++met;
    }
    Count(met);
    return found;
}

const BoxTree& RelationShape::Tree() {
    if (!hasTree_) {
        Points();
        tree_.Build(SegCnt(), [this](std::size_t i) { return SegReach(i); });
        Count(SegCnt());
        hasTree_ = true;
    }
    return tree_;
}

/// Segments side by side in direction are found in a list of all ends, ordered by direction, slope and coordinate. What is not a
/// number is parallel to nothing and between nothing, so it is left out.
void RelationShape::MakeEnds() {
    endsX_.clear();
    endsY_.clear();
    const std::span<const DigPnt> pts = Points();
    Count(SegCnt());
    for (std::size_t i = 0; i < SegCnt(); ++i) {
        const SegDirection direction = DirectionOf(pts[i], pts[i + 1]);
        const double slope = direction == SegDirection::Sloped ? SlopeOf(pts[i], pts[i + 1]) : 0;
        if (std::isnan(slope)) continue;
        for (const DigPnt& end : {pts[i], pts[i + 1]}) {
            if (!std::isnan(end.x)) endsX_.push_back({direction, slope, end.x});
            if (!std::isnan(end.y)) endsY_.push_back({direction, slope, end.y});
        }
    }
    const auto before = [](const DirectedEnd& a, const DirectedEnd& b) {
        return std::tie(a.direction, a.slope, a.at) < std::tie(b.direction, b.slope, b.at);
    };
    std::sort(endsX_.begin(), endsX_.end(), before);
    std::sort(endsY_.begin(), endsY_.end(), before);
    hasEnds_ = true;
}

bool RelationShape::AnyBetween(const std::vector<DirectedEnd>& ends, SegDirection direction, double slope, double v1, double v2) {
    const double low = (std::min)(v1, v2);
    const double high = (std::max)(v1, v2);
    if (!(low < high)) return false;
    const auto behindLow = [](const DirectedEnd& a, const DirectedEnd& b) {
        return std::tie(a.direction, a.slope, a.at) < std::tie(b.direction, b.slope, b.at);
    };
    const auto next = std::upper_bound(ends.begin(), ends.end(), DirectedEnd{direction, slope, low}, behindLow);
    return next != ends.end() && next->direction == direction && next->slope == slope && next->at < high;
}

bool RelationShape::AnySegInside(const DigPnt& b1, const DigPnt& b2) {
    if (!hasEnds_) MakeEnds();
    const SegDirection direction = DirectionOf(b1, b2);
    const double slope = direction == SegDirection::Sloped ? SlopeOf(b1, b2) : 0;
    if (std::isnan(slope)) return false;
    return AnyBetween(endsX_, direction, slope, b1.x, b2.x) || AnyBetween(endsY_, direction, slope, b1.y, b2.y);
}

}  // namespace orvane
