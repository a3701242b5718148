// A hash table from keys to positions. It holds no keys, so its owner compares them where a hash can stand for several.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/grow_array.h"

namespace orvane {

/// Spreads a 64-bit key. Different keys give different hashes.
std::uint64_t MixKey(std::uint64_t key);
/// Two integers as one key.
inline std::uint64_t PairKey(std::int32_t a, std::int32_t b) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) << 32 | static_cast<std::uint32_t>(b);
}

class PosTable {
public:
    /// One key's positions; both are the same where a key stands for one thing only.
    struct Slot {
        std::uint64_t hash = 0;
        std::int32_t first = -1;  ///< negative: nothing here
        std::int32_t last = -1;
    };

    /// Room for `n` keys in all. False changes nothing.
    [[nodiscard]] bool Reserve(std::size_t n);
    /// The slot of the key with this hash, or null. `same(position)` is asked only about equal hashes.
    template <class Same>
    const Slot* Find(std::uint64_t hash, Same same) const {
        if (slots_.empty()) return nullptr;
        for (std::size_t i = Home(hash); slots_[i].first >= 0; i = (i + 1) & Mask()) {
            if (slots_[i].hash == hash && same(slots_[i].first)) return &slots_[i];
        }
        return nullptr;
    }
    /// The same where the hash tells keys apart by itself.
    const Slot* Find(std::uint64_t hash) const {
        return Find(hash, [](std::int32_t) { return true; });
    }
    Slot* Find(std::uint64_t hash) { return const_cast<Slot*>(static_cast<const PosTable*>(this)->Find(hash)); }
    /// REQUIRES: room for one more, and no such key yet.
    void Insert(std::uint64_t hash, std::int32_t pos);
    void Erase(std::uint64_t hash);
    /// No keys; the memory stays.
    void Empty();
    /// No keys and no memory.
    void Clear();

private:
    std::size_t Mask() const { return slots_.size() - 1; }
    /// Where a search for the hash begins.
    std::size_t Home(std::uint64_t hash) const { return static_cast<std::size_t>(hash) & Mask(); }
    void Place(const Slot& slot);

    GrowArray<Slot> slots_;  ///< none, or a power of two with at least a quarter unused
    std::size_t count_ = 0;
};

}  // namespace orvane
