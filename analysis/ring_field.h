// What lies inside of a polygon's whole array, asked many times while single rings of it are turned round.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/box_tree.h"
#include "analysis/geometry/dig_pnt.h"
#include "analysis/ray_index.h"

namespace orvane {

/// Answers what PntInPgn answers for the array as it stands.
///
/// The array is rounded to six decimals and falls into rings anew: where points fall together a ring may close early, and what
/// follows falls into other rings, or into none, up to the end. So edges are kept at the position of the point that ends them,
/// and a change is followed from the first point changed to where the rings are the same again.
class RingField {
public:
    /// Keeps `pts`, which the caller changes through Reversed only. May throw std::bad_alloc.
    explicit RingField(std::span<const DigPnt> pts);

    /// Like PntInPgn(p, pts).
    bool Inside(const DigPnt& p);
    /// The points from `first` up to but without `end` have been put into another order.
    void Reversed(std::size_t first, std::size_t end);

private:
    static constexpr std::int32_t kNone = -1;

    /// No edge ends at a point whose slot is level and without length: the crossing count passes it over.
    struct Slot {
        double x1 = 0, y1 = 0;
        double x2 = 0, y2 = 0;
    };
    struct Place {
        double x = 0, y = 0;
        friend bool operator==(const Place&, const Place&) = default;
    };
    struct Former {
        bool isOpen = false;
        bool closes = false;
        Place opener;
    };

    void Round(std::size_t first, std::size_t end);
    void Scan(std::size_t first, std::size_t end, const Former* former);
    void Clear(std::size_t slot);
    void FillRing(std::size_t opener, std::size_t closer);
    double RayEnd() const;
    void MakeIndex();
    bool MayTurnAlone(std::size_t opener, std::size_t closer) const;
    FlatBox BoxAt(std::size_t slot) const;

    std::span<const DigPnt> pts_;
    std::vector<Place> rounded_;
    std::vector<Slot> slots_;
    std::vector<std::int32_t> openAfter_;   ///< opener of the ring that is open behind a point, or kNone
    std::vector<std::int32_t> closerOf_;    ///< of an opener: where its ring closes, or kNone
    std::vector<std::int32_t> slotOpener_;  ///< of a slot with an edge: the opener of its ring, else kNone
    std::size_t changedFrom_ = 0, changedTo_ = 0;
    BoxTree tree_;

    std::size_t met_ = 0;  ///< sides that rays have met
    RayIndex index_;
    bool hasTriedIndex_ = false;
    bool hasIndex_ = false;
    std::vector<std::size_t> indexOpeners_;  ///< of the index's rings, ascending
};

}  // namespace orvane
