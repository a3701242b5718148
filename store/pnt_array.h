// The points of an item. Who changes them says so, because the searches rely on what is known of them.
#pragma once

#include <cstddef>
#include <span>
#include <utility>

#include "analysis/geometry/dig_pnt.h"
#include "platform/grow_array.h"
#include "store/guarded_alloc.h"

namespace orvane {

/// An OwnedArray of points that remembers whether the item's `rect` was found to hold all of them. Files bring rectangles that do
/// not, and some operations leave one behind; without the mark a search must look at the points themselves. Every way to
/// change a point forgets it, so whoever changes points need not know of it. Who narrows or replaces the `rect` of an item that
/// has its points calls Change().
class PntArray {
public:
    const DigPnt* Get() const noexcept { return pnts_.Get(); }
    const DigPnt& operator[](std::size_t i) const noexcept { return pnts_[i]; }
    explicit operator bool() const noexcept { return static_cast<bool>(pnts_); }

    /// The points to write to.
    DigPnt* Change() noexcept {
        inRect_ = false;
        return pnts_.Get();
    }
    PntArray& operator=(OwnedArray<DigPnt>&& pnts) noexcept {
        inRect_ = false;
        pnts_ = std::move(pnts);
        return *this;
    }
    [[nodiscard]] bool Resize(std::size_t oldCount, std::size_t newCount, bool clearTail = true) noexcept {
        inRect_ = false;
        return pnts_.Resize(oldCount, newCount, clearTail);
    }
    void Free() noexcept { pnts_.Free(); }

    /// True when no point lies further than one unit outside of the item's `rect`; false also when nobody has looked.
    bool InRect() const noexcept { return inRect_; }
    /// Set by store/item_bounds only, which looks.
    void MarkInRect(bool inRect) noexcept { inRect_ = inRect; }

private:
    OwnedArray<DigPnt> pnts_;
    bool inRect_ = false;
};

/// Gives `to` a copy of the points. False leaves it as it was.
[[nodiscard]] inline bool CopyArray(PntArray& to, std::span<const DigPnt> from) noexcept {
    OwnedArray<DigPnt> copy;
    if (!CopyArray(copy, from)) return false;
    to = std::move(copy);
    return true;
}

}  // namespace orvane
