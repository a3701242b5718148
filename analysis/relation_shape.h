// One side of a relation test: a shape in device pixels with what is made ready of it, each part when it is first asked for.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "analysis/box_tree.h"
#include "analysis/geometry/plane.h"
#include "analysis/relation.h"
#include "analysis/ring_count.h"
#include "platform/grow_array.h"
#include "store/view_params.h"

namespace orvane {

/// Counts work and asks the progress callback now and then.
class RelationWatch {
public:
    explicit RelationWatch(std::function<bool()> ask) : ask_(std::move(ask)) {}

    /// Adds to the work done. False once the work is to end. It may run host code, so nothing that still stands in the store may
    /// be needed afterwards: a loop that spends has called Points of both shapes.
    bool Spend(std::size_t work) {
        spent_ += work;
        return spent_ < kWorkPerQuestion ? !stopped_ : Ask();
    }
    /// Adds to the work done; the next Spend asks.
    void Count(std::size_t work) { spent_ += work; }
    bool Stopped() const { return stopped_; }
    /// How often host code may have run.
    std::uint32_t Asked() const { return asked_; }

private:
    static constexpr std::size_t kWorkPerQuestion = std::size_t{1} << 21;
    bool Ask();

    std::function<bool()> ask_;
    std::size_t spent_ = 0;
    std::uint32_t asked_ = 0;
    bool stopped_ = false;
};

/// Marks on the segments of one shape; starting over costs nothing.
class SegMarks {
public:
    /// Takes all marks away and has room for `count` segments. May throw std::bad_alloc.
    void Begin(std::size_t count);
    bool Has(std::size_t i) const { return stamps_[i] == stamp_; }
    void Add(std::size_t i) { stamps_[i] = stamp_; }

private:
    std::vector<std::uint32_t> stamps_;
    std::uint32_t stamp_ = 0;
};

/// The query, which is compared with many items and so pays for its indexes at once, or an item, which pays when it is asked a
/// few times. What it throws is std::bad_alloc, from every function that is not const.
class RelationShape {
public:
    enum class Role : std::uint8_t { Query, Item };

    explicit RelationShape(Role role) : role_(role) {}
    RelationShape(const RelationShape&) = delete;
    RelationShape& operator=(const RelationShape&) = delete;

    /// Takes a shape in device pixels. `pnts` must outlive its use. REQUIRES: at least one point.
    void Load(ShapeType type, std::span<const DigPnt> pnts);
    /// Takes a shape of a block; its points go through `toDevice` when they are first needed. `bounds`, in map units with y
    /// upward, are known to hold all of them but for one unit; null when nobody knows. With them most tests need not look at a
    /// point.
    void Load(ShapeType type, std::span<const DigPnt> pnts, const DeviceTransform& toDevice, const Rect* bounds = nullptr);

    ShapeType Type() const { return type_; }
    bool IsPoint() const { return type_ == ShapeType::Point; }
    bool IsLine() const { return type_ == ShapeType::Line; }
    bool IsPolygon() const { return type_ == ShapeType::Polygon; }
    const DigPnt& First() {
        if (!hasEndPnts_) TakeEndPnts();
        return first_;
    }
    const DigPnt& Last() {
        if (!hasEndPnts_) TakeEndPnts();
        return last_;
    }
    bool IsClosed() { return First().x == Last().x && first_.y == last_.y; }
    std::size_t SegCnt() const { return source_.size() - 1; }
    bool IsQuery() const { return role_ == Role::Query; }

    /// The points in device pixels; good until the next Load.
    std::span<const DigPnt> Points();
    /// Whether PntInPgn, and PntOnLine, of the point and this shape are 1.
    bool Inside(const DigPnt& p);
    bool OnLine(const DigPnt& p);
    /// Whether a point of `other` is certain to be neither inside nor on the line of this shape, told without a look at the
    /// points of this one; false where that is not certain.
    bool SurelyLeavesOut(const RelationShape& other) const;

    /// Holds every place where a segment of this shape crosses, or is at distance 0 from, anything.
    const FlatBox& Reach();
    /// Whether Reach meets a box; without a look at the points where that is certain.
    bool Reaches(const FlatBox& box) { return box.Meets(outer_) && box.Meets(Reach()); }
    /// The same as Reach of one segment. REQUIRES: Points was called.
    FlatBox SegReach(std::size_t i) const { return isTame_ ? TameReach(pts_[i], pts_[i + 1]) : AnyReach(pts_[i], pts_[i + 1]); }
    /// The boxes SegReach of all segments.
    const BoxTree& Tree();

    /// Whether SegInside of any segment of this shape and the segment b1-b2 is 1.
    bool AnySegInside(const DigPnt& b1, const DigPnt& b2);

    SegMarks marks;                  ///< scratch of the tests
    RelationWatch* watch = nullptr;  ///< who is told of the work, the same for both shapes; null for nobody

    /// Tells of one step of a loop over this shape. False once the work is to end.
    bool Spend() { return watch == nullptr || watch->Spend(1); }

private:
    /// An end of a segment by the segment's direction, in the order in which AnySegInside looks.
    struct DirectedEnd {
        SegDirection direction = SegDirection::Sloped;
        double slope = 0;
        double at = 0;
    };

    void Count(std::size_t work) {
        if (watch != nullptr) watch->Count(work);
    }
    void Begin(ShapeType type, std::span<const DigPnt> pnts);
    void BoxOfDevice();
    void BoxOfMap();
    FlatBox ReachOfMap(const FlatBox& map) const;
    void TakeEndPnts();
    void MakeEnds();
    static bool AnyBetween(const std::vector<DirectedEnd>& ends, SegDirection direction, double slope, double v1, double v2);
    static FlatBox TameReach(const DigPnt& a, const DigPnt& b);
    static FlatBox AnyReach(const DigPnt& a, const DigPnt& b);

    const Role role_;
    ShapeType type_ = ShapeType::Point;
    std::span<const DigPnt> source_;
    const DeviceTransform* toDevice_ = nullptr;  ///< null: the source stands in device pixels
    DigPnt first_, last_;
    bool hasEndPnts_ = false;
    FlatBox outer_;   ///< holds reach_
    FlatBox points_;  ///< box of pts_; only where isTame_
    FlatBox reach_;
    bool hasReach_ = false;

    GrowArray<DigPnt> device_;
    std::span<const DigPnt> pts_;
    bool hasPoints_ = false;
    bool isTame_ = false;

    BoxTree tree_;
    bool hasTree_ = false;
    std::uint32_t lineAsked_ = 0;
    RingCount rings_;
    bool hasRings_ = false;
    std::vector<DirectedEnd> endsX_, endsY_;
    bool hasEnds_ = false;
};

}  // namespace orvane
