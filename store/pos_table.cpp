#include "store/pos_table.h"

#include <bit>

namespace orvane {

std::uint64_t MixKey(std::uint64_t key) {
    // Each step can be undone, which is why no two keys meet.
    key ^= key >> 32;
    key *= 0x9FB21C651E98DF25U;
    key ^= key >> 29;
    key *= 0xD6E8FEB86659FD93U;
    key ^= key >> 32;
    return key;
}

bool PosTable::Reserve(std::size_t n) {
    const std::size_t needed = std::bit_ceil(n + n / 3 + 2);
    if (needed <= slots_.size()) return true;
    GrowArray<Slot> larger;
    if (!larger.Resize(needed)) return false;
    slots_.Swap(larger);
    for (const Slot& slot : larger) {
        if (slot.first >= 0) Place(slot);
    }
    return true;
}

void PosTable::Insert(std::uint64_t hash, std::int32_t pos) {
    Place({hash, pos, pos});
    ++count_;
}

void PosTable::Place(const Slot& slot) {
    std::size_t i = Home(slot.hash);
    while (slots_[i].first >= 0) i = (i + 1) & Mask();
    slots_[i] = slot;
}

void PosTable::Erase(std::uint64_t hash) {
    const Slot* found = Find(hash);
    if (found == nullptr) return;
    // Slots behind the hole move into it unless they would then stand before the place where a search for them begins.
    std::size_t hole = static_cast<std::size_t>(found - slots_.data());
    for (std::size_t i = (hole + 1) & Mask(); slots_[i].first >= 0; i = (i + 1) & Mask()) {
        const std::size_t fromHome = (i - Home(slots_[i].hash)) & Mask();
        if (fromHome < ((i - hole) & Mask())) continue;
        slots_[hole] = slots_[i];
        hole = i;
    }
    slots_[hole] = Slot{};
    --count_;
}

void PosTable::Empty() {
    if (count_ == 0) return;
    for (Slot& slot : slots_) slot = Slot{};
    count_ = 0;
}

void PosTable::Clear() {
    slots_.Clear();
    count_ = 0;
}

}  // namespace orvane
