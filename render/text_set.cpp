#include "render/text_set.h"

#include <functional>

namespace orvane {

namespace {

std::size_t HashOf(std::string_view text) { return std::hash<std::string_view>{}(text); }

}  // namespace

std::size_t TextSet::Place(const GrowArray<Slot>& slots, std::string_view text, std::size_t hash) const {
    const std::size_t mask = slots.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        const Slot& slot = slots[i];
        if (slot.use != use_ || (slot.hash == hash && slot.text == text)) return i;
    }
}

bool TextSet::Has(std::string_view text) const { return count_ > 0 && slots_[Place(slots_, text, HashOf(text))].use == use_; }

bool TextSet::Add(std::string_view text) {
    if (2 * (count_ + 1) > slots_.size() && !Grow()) return false;
    const std::size_t hash = HashOf(text);
    Slot& slot = slots_[Place(slots_, text, hash)];
    if (slot.use != use_) {
        slot = {use_, hash, text};
        ++count_;
    }
    return true;
}

bool TextSet::Grow() {
    constexpr std::size_t kFirstSlots = 64;
    GrowArray<Slot> grown;
    if (!grown.Resize(slots_.empty() ? kFirstSlots : 2 * slots_.size())) return false;
    for (const Slot& slot : slots_) {
        if (slot.use == use_) grown[Place(grown, slot.text, slot.hash)] = slot;
    }
    slots_.Swap(grown);
    return true;
}

}  // namespace orvane
