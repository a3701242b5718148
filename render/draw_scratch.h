// What a frame writes beside the picture: the device points of the item at hand, the texts met in the block at hand.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/grow_array.h"
#include "platform/values.h"
#include "render/text_set.h"

namespace orvane {

/// Buffers that a frame reuses from item to item; they only grow. A frame makes one and hands it down: host code that a frame
/// calls may ask for another frame, and that one must not write over these points.
class DrawScratch {
public:
    /// Room for `count` points with whatever was there before, or null when it cannot be had. The next call takes it back.
    Point* Points(std::int32_t count) { return Room(points_, count); }
    /// The same for the lengths of `count` rings.
    std::int32_t* RingCounts(std::int32_t count) { return Room(ringCounts_, count); }
    /// The texts of the block at hand; who begins a block forgets those before.
    TextSet& Texts() { return texts_; }

private:
    template <class T>
    static T* Room(GrowArray<T>& buffer, std::int32_t count) {
        const auto needed = static_cast<std::size_t>(count);
        if (buffer.size() < needed && !buffer.Resize(needed)) return nullptr;
        return buffer.data();
    }

    GrowArray<Point> points_;
    GrowArray<std::int32_t> ringCounts_;
    TextSet texts_;
};

}  // namespace orvane
