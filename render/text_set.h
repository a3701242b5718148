// Which texts were met so far.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/grow_array.h"

namespace orvane {

/// A set of texts that it does not own: they must stay in place until the next Forget. Its room is kept from use to use.
class TextSet {
public:
    void Forget() {
        ++use_;
        count_ = 0;
    }
    /// Equality is that of the bytes.
    bool Has(std::string_view text) const;
    /// False, with the set as it was, when there is no room to be had.
    [[nodiscard]] bool Add(std::string_view text);

private:
    /// Open addressing; a slot of an earlier use counts as free.
    struct Slot {
        std::uint64_t use = 0;
        std::size_t hash = 0;
        std::string_view text;
    };

    /// Where the text stands or would stand. REQUIRES: a free slot.
    std::size_t Place(const GrowArray<Slot>& slots, std::string_view text, std::size_t hash) const;
    bool Grow();

    GrowArray<Slot> slots_;  ///< a power of two, at most half full
    std::size_t count_ = 0;
    std::uint64_t use_ = 1;
};

}  // namespace orvane
