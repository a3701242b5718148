// Remembers what a lookup by number answered.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

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

/// The same, taking its room only once a table is too long to be walked for each item.
template <class T>
class LookupInTable {
public:
    template <class Find>
    T Get(std::int32_t number, std::size_t tableSize, Find find) {
        constexpr std::size_t kWalked = 8;
        if (tableSize <= kWalked) return find(number);
        if (memo_ == nullptr) memo_.reset(new (std::nothrow) LookupMemo<T>);
        return memo_ == nullptr ? find(number) : memo_->Get(number, find);
    }

private:
    std::unique_ptr<LookupMemo<T>> memo_;
};

}  // namespace orvane
