#include "analysis/ring_field.h"

#include <cmath>

#include "analysis/geometry/ray_count.h"

namespace orvane {

RingField::RingField(std::span<const DigPnt> pts)
    : pts_(pts),
      rounded_(pts.size()),
      slots_(pts.size()),
      openAfter_(pts.size(), kNone),
      closerOf_(pts.size(), kNone),
      slotOpener_(pts.size(), kNone) {
    Round(0, pts.size());
    Scan(0, pts.size(), nullptr);
    tree_.Build(pts.size(), [this](std::size_t k) { return BoxAt(k); });
}

void RingField::Reversed(std::size_t first, std::size_t end) {
    if (first >= end) return;
    Former former;
    const std::int32_t opener = openAfter_[end - 1];
    if (opener != kNone) {
        former.isOpen = true;
        former.closes = closerOf_[static_cast<std::size_t>(opener)] != kNone;
        former.opener = rounded_[static_cast<std::size_t>(opener)];
    }
    Round(first, end);
    changedFrom_ = first;
    changedTo_ = end;
    Scan(first, end, &former);
    tree_.Update(changedFrom_, changedTo_ - 1, [this](std::size_t k) { return BoxAt(k); });
    if (!hasIndex_) return;
    const auto ring = std::lower_bound(indexOpeners_.begin(), indexOpeners_.end(), first);
    hasIndex_ = ring != indexOpeners_.end() && *ring == first && closerOf_[first] == static_cast<std::int32_t>(end) - 1;
    if (hasIndex_) index_.Reverse(static_cast<std::size_t>(ring - indexOpeners_.begin()));
}

/// Rays are walked until they have met so many sides that an index of the crossings is cheaper. It holds as long as only whole
/// rings are turned, none of which passes its opening point on the way.
void RingField::MakeIndex() {
    hasTriedIndex_ = true;
    std::vector<RayIndex::Side> sides;
    std::vector<std::size_t> starts{0};
    for (std::size_t k = 0; k < slots_.size(); ++k) {
        if (slotOpener_[k] == kNone) continue;
        const auto opener = static_cast<std::size_t>(slotOpener_[k]);
        const auto closer = static_cast<std::size_t>(closerOf_[opener]);
        if (!MayTurnAlone(opener, closer)) return;
        for (; k <= closer; ++k) {
            const Slot& s = slots_[k];
            if (s.x1 != s.x2 || s.y1 != s.y2) sides.push_back({s.x1, s.y1, s.x2, s.y2});
        }
        --k;
        indexOpeners_.push_back(opener);
        starts.push_back(sides.size());
    }
    hasIndex_ = index_.Build(std::move(sides), std::move(starts), RayIndex::Use::Turning);
}

bool RingField::MayTurnAlone(std::size_t opener, std::size_t closer) const {
    for (std::size_t k = opener + 1; k < closer; ++k) {
        if (rounded_[k] == rounded_[opener]) return false;
    }
    return true;
}

void RingField::Round(std::size_t first, std::size_t end) {
    for (std::size_t i = first; i < end; ++i) rounded_[i] = {SixDecimals(pts_[i].x), SixDecimals(pts_[i].y)};
}

/// Lets the array fall into rings from point `first` on, up to `end` and from there until the rings are as they were. `former`
/// tells what was open at `end` before: when the same is still open that never closed, nothing behind changes.
void RingField::Scan(std::size_t first, std::size_t end, const Former* former) {
    std::int32_t opener = first == 0 ? kNone : openAfter_[first - 1];
    Place last;  // the last point that counts
    if (opener != kNone) {
        const auto o = static_cast<std::size_t>(opener);
        last = rounded_[first - 1];
        if (closerOf_[o] != kNone) {
            for (std::size_t k = o + 1; k < first; ++k) Clear(k);
            changedFrom_ = (std::min)(changedFrom_, o);
        }
        closerOf_[o] = kNone;
    }
    for (std::size_t i = first; i < pts_.size(); ++i) {
        const bool wasClosed = openAfter_[i] == kNone;
        Clear(i);
        if (opener == kNone) {
            opener = static_cast<std::int32_t>(i);
            closerOf_[i] = kNone;
            last = rounded_[i];
        } else if (rounded_[i] != last) {
            last = rounded_[i];
            if (last == rounded_[static_cast<std::size_t>(opener)]) {
                closerOf_[static_cast<std::size_t>(opener)] = static_cast<std::int32_t>(i);
                FillRing(static_cast<std::size_t>(opener), i);
                opener = kNone;
            }
        }
        openAfter_[i] = opener;
        changedTo_ = (std::max)(changedTo_, i + 1);
        if (former == nullptr || i + 1 < end) continue;
        if (opener == kNone ? wasClosed
                            : i + 1 == end && former->isOpen && !former->closes &&
                                  rounded_[static_cast<std::size_t>(opener)] == former->opener)
            return;
    }
}

void RingField::Clear(std::size_t slot) {
    slots_[slot] = {};
    slotOpener_[slot] = kNone;
}

void RingField::FillRing(std::size_t opener, std::size_t closer) {
    Place from = rounded_[opener];
    for (std::size_t k = opener + 1; k <= closer; ++k) {
        slotOpener_[k] = static_cast<std::int32_t>(opener);
        if (rounded_[k] == from) continue;
        slots_[k] = {from.x, from.y, rounded_[k].x, rounded_[k].y};
        from = rounded_[k];
    }
    changedFrom_ = (std::min)(changedFrom_, opener);
}

FlatBox RingField::BoxAt(std::size_t slot) const {
    const Slot& s = slots_[slot];
    // What is level counts nothing, and neither does a slot without an edge.
    return s.y1 == s.y2 ? FlatBox() : BoxOfEdge(s);
}

double RingField::RayEnd() const {
    bool begun = false;
    double end = 0;
    for (std::size_t k = 0; k < slots_.size(); ++k) {
        const Slot& s = slots_[k];
        if (slotOpener_[k] == kNone || (s.x1 == s.x2 && s.y1 == s.y2)) continue;
        if (!begun) end = s.x1 + 1.0;
        begun = true;
        if (s.x1 > end) end = s.x1 + 1.0;
        if (s.x2 > end) end = s.x2 + 1.0;
    }
    return end;
}

bool RingField::Inside(const DigPnt& p) {
    // The ray ends behind everything, unless the point itself lies that far to the right: then its exact end decides. The box
    // tree knows the greatest x of what the ray can meet.
    constexpr double kFar = (std::numeric_limits<double>::infinity)();
    const bool nothingRight = tree_.Next(0, {std::nextafter(p.x, kFar), -kFar, kFar, kFar}) == tree_.size();
    // Rings that stand in order of x have what one ray meets far apart in the list, where each step of the tree costs more.
    if (!hasTriedIndex_ && IsIndexCheaper(8 * met_, slots_.size())) MakeIndex();
    if (hasIndex_ && !nothingRight && std::isfinite(p.x) && std::isfinite(p.y)) return index_.Inside(p);
    const double rayEnd = nothingRight ? RayEnd() : kFar;
    const FlatBox ray{(std::min)(p.x, rayEnd), p.y, (std::max)(p.x, rayEnd), p.y};
    const auto next = [&](std::size_t k) {
        ++met_;
        return tree_.Next(k, ray);
    };
    std::size_t count = 0;
    for (std::size_t k = next(0); k < slots_.size();) {
        const auto opener = static_cast<std::size_t>(slotOpener_[k]);
        const auto closer = static_cast<std::size_t>(closerOf_[opener]);
        count += RayCrossings(slots_, opener + 1, closer, k, p, {rayEnd, p.y, 0}, next);
        k = next(closer + 1);
    }
    return count % 2 == 1;
}

}  // namespace orvane
