#include "store/store_keys.h"

#include <algorithm>
#include <functional>

#include "store/guarded_alloc.h"

namespace orvane {
namespace {

std::uint64_t HashCode(std::string_view code) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : code) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return MixKey(hash);
}

}  // namespace

void StoreKeys::Clear() {
    layerTable_.Clear();
    order_.Clear();
    freeSlots_.Clear();
    blockTable_.Clear();
    lists_.Clear();
    nodes_.Clear();
    appended_ = {};
    entryCnt_ = 0;
    entries_.Clear();
    entriesFresh_ = false;
    plainMode_ = false;
    plain_.Clear();
}

bool StoreKeys::ReserveLayer() {
    const std::size_t n = lists_.size() + 1;
    return layerTable_.Reserve(n) && order_.Reserve(n) && EnsureRoom(lists_, n) && (!plainMode_ || plain_.Reserve(0, n));
}

bool StoreKeys::ReserveBlock() {
    // Blocks that readers have not put into the index have no node yet.
    const std::size_t n = (std::max)(nodes_.size(), blocks_.size()) + 1;
    if (!EnsureRoom(freeSlots_, n) || !EnsureRoom(nodes_, n)) return false;
    if (plainMode_) return plain_.Reserve(plain_.SlotCnt() + 1, lists_.size());
    return EnsureRoom(entries_, n) && blockTable_.Reserve(n);
}

bool StoreKeys::ReserveOrphan() {
    if (plainMode_) return true;
    return plain_.Reserve(static_cast<std::size_t>(entryCnt_) + 1, lists_.size());
}

std::int32_t StoreKeys::FindLayer(std::string_view code) const {
    if (code.empty()) return -1;
    const auto same = [this, code](std::int32_t pos) { return layers_[static_cast<std::size_t>(pos)].code == code; };
    const PosTable::Slot* slot = layerTable_.Find(HashCode(code), same);
    return slot == nullptr ? -1 : slot->first;
}

void StoreKeys::LayerAdded() {
    const std::size_t pos = lists_.size();
    if (!lists_.PushBack(LayerList{})) return;
    layerTable_.Insert(HashCode(layers_[pos].code.View()), static_cast<std::int32_t>(pos));
    order_.Add();
}

bool StoreKeys::LayerHasEntry(std::int32_t layer) const {
    if (!plainMode_) return lists_[static_cast<std::size_t>(layer)].head >= 0;
    const std::span<const DigIndex> used = plain_.Used();
    return std::any_of(used.begin(), used.end(), [layer](const DigIndex& entry) { return entry.layer == layer; });
}

void StoreKeys::TakeFreeSlot() {
    std::pop_heap(freeSlots_.begin(), freeSlots_.end(), std::greater<>());
    freeSlots_.Truncate(freeSlots_.size() - 1);
}

void StoreKeys::BlockFreed(std::int32_t block) {
    if (freeSlots_.PushBack(block)) std::push_heap(freeSlots_.begin(), freeSlots_.end(), std::greater<>());
    plain_.BlockChanged();
}

std::int32_t StoreKeys::FindBlock(std::int32_t layer, std::int32_t meshNo) const {
    if (plainMode_) {
        const std::int32_t pos = plain_.Find(layer, meshNo, blocks_);
        return pos < 0 ? -1 : plain_.Used()[static_cast<std::size_t>(pos)].block;
    }
    const PosTable::Slot* slot = blockTable_.Find(MixKey(PairKey(layer, meshNo)));
    return slot == nullptr ? -1 : slot->first;
}

std::int32_t StoreKeys::FindPosition(std::int32_t layer, std::int32_t meshNo) {
    if (plainMode_) return plain_.Find(layer, meshNo, blocks_);
    const std::int32_t block = FindBlock(layer, meshNo);
    if (block < 0) return -1;
    WriteOutEntries();
    return nodes_[static_cast<std::size_t>(block)].pos;
}

std::int32_t StoreKeys::EntryCnt() const { return plainMode_ ? static_cast<std::int32_t>(plain_.Used().size()) : entryCnt_; }

std::span<const DigIndex> StoreKeys::Entries() {
    if (plainMode_) return plain_.Used();
    WriteOutEntries();
    return {entries_.data(), entries_.size()};
}

void StoreKeys::Add(std::int32_t block, std::int32_t layer) {
    ExtendNodes(block);
    if (static_cast<std::size_t>(layer) == lists_.size()) GoPlain();
    if (plainMode_) {
        plain_.Put({block, layer});
    } else {
        const bool full = entryCnt_ == kMaxDigIndex;
        if (full) Unlink(FirstBlock());
        // What takes slot 0 stands before all others of its layer when the sort comes.
        Link(block, layer, full);
    }
    Sort();
}

bool StoreKeys::Append(std::int32_t block, std::int32_t layer) {
    if (EntryCnt() >= kMaxDigIndex) return false;
    ExtendNodes(block);
    const bool hasLayer = static_cast<std::size_t>(layer) < lists_.size();
    if (!hasLayer || FindBlock(layer, blocks_[static_cast<std::size_t>(block)].meshNo) >= 0) GoPlain();
    if (plainMode_) {
        plain_.Append({block, layer}, blocks_);
    } else {
        Link(block, layer, false);
        LinkAppended(block);
    }
    return true;
}

void StoreKeys::RemoveAt(std::int32_t pos) {
    if (plainMode_) {
        plain_.Del(pos);
        return;
    }
    if (pos < 0 || pos >= entryCnt_) return;
    WriteOutEntries();
    Unlink(entries_[static_cast<std::size_t>(pos)].block);
}

void StoreKeys::RemoveKey(std::int32_t layer, std::int32_t meshNo) {
    if (plainMode_) {
        plain_.Del(plain_.Find(layer, meshNo, blocks_));
        return;
    }
    const std::int32_t block = FindBlock(layer, meshNo);
    if (block >= 0) Unlink(block);
}

void StoreKeys::Sort() {
    order_.Sort(layers_);
    entriesFresh_ = false;
    for (std::int32_t block = appended_.head; block >= 0;) {
        BlockNode& node = nodes_[static_cast<std::size_t>(block)];
        node.appended = false;
        block = node.nextAppended;
    }
    appended_ = {};
    if (plainMode_) plain_.Sort(order_.Layers());
}

std::uint64_t StoreKeys::KeyHash(std::int32_t block) const {
    const auto i = static_cast<std::size_t>(block);
    return MixKey(PairKey(nodes_[i].layer, blocks_[i].meshNo));
}

/// The block in slot 0. REQUIRES: there is an entry.
std::int32_t StoreKeys::FirstBlock() {
    for (const LayerOrder::Ranked& ranked : order_.Layers()) {
        const std::int32_t head = lists_[static_cast<std::size_t>(ranked.layer)].head;
        if (head >= 0 && !nodes_[static_cast<std::size_t>(head)].appended) return head;
    }
    return appended_.head;
}

/// Gives every block up to this one a node. REQUIRES: ReserveBlock.
void StoreKeys::ExtendNodes(std::int32_t block) {
    while (nodes_.size() <= static_cast<std::size_t>(block)) {
        if (!nodes_.PushBack(BlockNode{})) return;
    }
}

void StoreKeys::Link(std::int32_t block, std::int32_t layer, bool atFront) {
    LayerList& list = lists_[static_cast<std::size_t>(layer)];
    BlockNode& node = nodes_[static_cast<std::size_t>(block)];
    node = BlockNode{};
    node.layer = layer;
    (atFront ? node.next : node.prev) = atFront ? list.head : list.tail;
    (node.prev < 0 ? list.head : nodes_[static_cast<std::size_t>(node.prev)].next) = block;
    (node.next < 0 ? list.tail : nodes_[static_cast<std::size_t>(node.next)].prev) = block;
    blockTable_.Insert(KeyHash(block), block);
    ++entryCnt_;
    entriesFresh_ = false;
}

void StoreKeys::LinkAppended(std::int32_t block) {
    BlockNode& node = nodes_[static_cast<std::size_t>(block)];
    node.appended = true;
    node.prevAppended = appended_.tail;
    (appended_.tail < 0 ? appended_.head : nodes_[static_cast<std::size_t>(appended_.tail)].nextAppended) = block;
    appended_.tail = block;
}

void StoreKeys::Unlink(std::int32_t block) {
    blockTable_.Erase(KeyHash(block));
    BlockNode& node = nodes_[static_cast<std::size_t>(block)];
    LayerList& list = lists_[static_cast<std::size_t>(node.layer)];
    (node.prev < 0 ? list.head : nodes_[static_cast<std::size_t>(node.prev)].next) = node.next;
    (node.next < 0 ? list.tail : nodes_[static_cast<std::size_t>(node.next)].prev) = node.prev;
    if (node.appended) {
        const std::int32_t prev = node.prevAppended;
        const std::int32_t next = node.nextAppended;
        (prev < 0 ? appended_.head : nodes_[static_cast<std::size_t>(prev)].nextAppended) = next;
        (next < 0 ? appended_.tail : nodes_[static_cast<std::size_t>(next)].prevAppended) = prev;
    }
    node = BlockNode{};
    --entryCnt_;
    entriesFresh_ = false;
}

void StoreKeys::WriteOutEntries() {
    if (entriesFresh_) return;
    entries_.Truncate(0);
    for (const LayerOrder::Ranked& ranked : order_.Layers()) {
        std::int32_t block = lists_[static_cast<std::size_t>(ranked.layer)].head;
        while (block >= 0 && !nodes_[static_cast<std::size_t>(block)].appended) {
            WriteOut(block, ranked.layer);
            block = nodes_[static_cast<std::size_t>(block)].next;
        }
    }
    for (std::int32_t block = appended_.head; block >= 0; block = nodes_[static_cast<std::size_t>(block)].nextAppended) {
        WriteOut(block, nodes_[static_cast<std::size_t>(block)].layer);
    }
    entriesFresh_ = true;
}

/// REQUIRES: room for one more entry.
void StoreKeys::WriteOut(std::int32_t block, std::int32_t layer) {
    nodes_[static_cast<std::size_t>(block)].pos = static_cast<std::int32_t>(entries_.size());
    [[maybe_unused]] const bool written = entries_.PushBack(DigIndex{block, layer});
}

void StoreKeys::GoPlain() {
    if (plainMode_) return;
    plain_.Assign(Entries());
    plainMode_ = true;
    appended_ = {};
    blockTable_.Clear();
    entries_.Clear();
}

}  // namespace orvane
