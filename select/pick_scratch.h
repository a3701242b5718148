// What one search writes beside its answer: the device points and ring lengths of the polygon or figure at hand.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/grow_array.h"
#include "platform/values.h"

namespace orvane {

/// Buffers that a search reuses from item to item; they only grow.
class PickScratch {
public:
    /// Room for `count` elements with whatever was there before, or null when it cannot be had.
    Point* Points(std::int32_t count) { return Room(points_, count); }
    std::int32_t* RingCounts(std::int32_t count) { return Room(ringCounts_, count); }

private:
    template <class T>
    static T* Room(GrowArray<T>& buffer, std::int32_t count) {
        const auto needed = static_cast<std::size_t>(count);
        if (buffer.size() < needed && !buffer.Resize(needed)) return nullptr;
        return buffer.data();
    }

    GrowArray<Point> points_;
    GrowArray<std::int32_t> ringCounts_;
};

}  // namespace orvane
