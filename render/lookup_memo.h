// Remembers what a lookup by number answered.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace orvane {

/// Keeps the answers for the numbers met last, so that items that take turns among a few numbers do not walk a table each. The
/// table must not change while it lives.
template <class T>
class LookupMemo {
public:
    /// The answer for `number`: the one kept, or else `find(number)`.
    template <class Find>
    const T& Get(std::int32_t number, Find find) {
        Slot& slot = slots_[Home(number)];
        if (!slot.used || slot.number != number) slot = {find(number), number, true};
        return slot.answer;
    }

private:
    struct Slot {
        T answer{};
        std::int32_t number = 0;
        bool used = false;
    };

    // Multiplied first, because numbers like 100, 200, 300 would meet in few slots.
    static std::size_t Home(std::int32_t number) { return (static_cast<std::uint32_t>(number) * 2654435769u) >> 26; }

    std::array<Slot, 64> slots_;
};

}  // namespace orvane
