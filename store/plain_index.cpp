#include "store/plain_index.h"

#include <utility>

#include "store/guarded_alloc.h"

namespace orvane {

void PlainIndex::Clear() {
    slots_.Clear();
    list_.Clear();
    listPos_.Clear();
    lookup_.Clear();
    Changed();
}

bool PlainIndex::Reserve(std::size_t slots, std::size_t layers) {
    return EnsureRoom(slots_, slots) && EnsureRoom(list_, slots) && EnsureRoom(listPos_, layers) && lookup_.Reserve(slots);
}

void PlainIndex::Assign(std::span<const DigIndex> entries) {
    slots_.Truncate(0);
    for (const DigIndex& entry : entries) {
        if (!slots_.PushBack(entry)) break;
    }
    Changed();
}

std::int32_t PlainIndex::Find(std::int32_t layer, std::int32_t meshNo, const GrowArray<DigBlock>& blocks) const {
    if (!lookupFresh_) {
        // Makes come with one search each, for which a table would not pay.
        constexpr std::int32_t kWalksBeforeTable = 8;
        if (++walks_ < kWalksBeforeTable) {
            for (std::size_t pos = 0; pos < used_; ++pos) {
                const DigIndex& entry = slots_[pos];
                if (entry.layer != layer || blocks[static_cast<std::size_t>(entry.block)].meshNo != meshNo) continue;
                return static_cast<std::int32_t>(pos);
            }
            return -1;
        }
        FillLookup(blocks);
    }
    const PosTable::Slot* slot = lookup_.Find(MixKey(PairKey(layer, meshNo)));
    return slot == nullptr ? -1 : slot->first;
}

void PlainIndex::FillLookup(const GrowArray<DigBlock>& blocks) const {
    lookup_.Empty();
    for (std::size_t pos = 0; pos < used_; ++pos) AddToLookup(pos, blocks);
    lookupFresh_ = true;
}

void PlainIndex::AddToLookup(std::size_t pos, const GrowArray<DigBlock>& blocks) const {
    const DigIndex& entry = slots_[pos];
    const std::uint64_t hash = MixKey(PairKey(entry.layer, blocks[static_cast<std::size_t>(entry.block)].meshNo));
    if (lookup_.Find(hash) == nullptr) lookup_.Insert(hash, static_cast<std::int32_t>(pos));
}

void PlainIndex::Put(DigIndex entry) {
    std::size_t pos = used_;
    while (pos < slots_.size() && slots_[pos].block >= 0) ++pos;
    if (pos == static_cast<std::size_t>(kMaxDigIndex)) pos = 0;
    if (pos < slots_.size()) {
        slots_[pos] = entry;
    } else if (!slots_.PushBack(entry)) {
        return;
    }
    Changed();
}

void PlainIndex::Append(DigIndex entry, const GrowArray<DigBlock>& blocks) {
    if (used_ < slots_.size()) {
        slots_[used_] = entry;
        Changed();
        return;
    }
    if (!slots_.PushBack(entry)) return;
    ++used_;
    // The lookup stays, so that readers may append and search by turns at a cost that does not grow.
    if (lookupFresh_) AddToLookup(used_ - 1, blocks);
}

void PlainIndex::Del(std::int32_t pos) {
    if (pos < 0 || static_cast<std::size_t>(pos) >= used_) return;
    for (auto i = static_cast<std::size_t>(pos); i < slots_.size(); ++i) {
        const bool wasEmpty = slots_[i].block < 0 || slots_[i].layer < 0;
        slots_[i] = SlotAt(i + 1);
        if (wasEmpty) break;
    }
    while (!slots_.empty() && slots_[slots_.size() - 1] == DigIndex{}) slots_.Truncate(slots_.size() - 1);
    Changed();
}

void PlainIndex::Sort(std::span<const LayerOrder::Ranked> order) {
    listPos_.Truncate(0);
    if (!listPos_.Resize(order.size())) return;
    const auto inOrder = [&order](const DigIndex& entry) { return static_cast<std::size_t>(entry.layer) < order.size(); };
    for (const DigIndex& entry : Used()) {
        if (inOrder(entry)) ++listPos_[static_cast<std::size_t>(entry.layer)];
    }
    std::int32_t listCnt = 0;
    for (const LayerOrder::Ranked& ranked : order) {
        std::int32_t& first = listPos_[static_cast<std::size_t>(ranked.layer)];
        listCnt += std::exchange(first, listCnt);
    }
    list_.Truncate(0);
    if (!list_.Resize(static_cast<std::size_t>(listCnt))) return;
    for (const DigIndex& entry : Used()) {
        if (inOrder(entry)) list_[static_cast<std::size_t>(listPos_[static_cast<std::size_t>(entry.layer)]++)] = entry;
    }
    for (std::size_t i = 0; i < list_.size(); ++i) slots_[i] = list_[i];
    Changed();
}

void PlainIndex::Changed() {
    used_ = 0;
    while (used_ < slots_.size() && slots_[used_].block >= 0 && slots_[used_].layer >= 0) ++used_;
    DropLookup();
}

void PlainIndex::DropLookup() {
    lookupFresh_ = false;
    walks_ = 0;
}

}  // namespace orvane
