// The display index as a bare array of slots, worked on slot by slot.
//
// A block made with a new code but no layer has an index entry without a layer, and a block that a reader made may have the key
// of another. From then on entries can be lost, stand twice and
// come to life under a later layer, all of which follows from the steps on the slots and from nothing shorter. This class runs
// the steps. Looking up stays fast: a table of first positions is made again when somebody asks after a change.
#pragma once

#include <cstdint>
#include <span>

#include "store/layer_order.h"
#include "store/pos_table.h"
#include "store/records.h"

namespace orvane {

class PlainIndex {
public:
    /// Forgets all slots and gives the memory back.
    void Clear();
    /// Room for that many slots and layers in all, so that nothing else here can fail. False changes nothing.
    [[nodiscard]] bool Reserve(std::size_t slots, std::size_t layers);
    /// Takes the entries over. REQUIRES: room for them.
    void Assign(std::span<const DigIndex> entries);
    /// Slots up to the last one that holds anything, used or not.
    std::size_t SlotCnt() const { return slots_.size(); }
    /// The slots before the first one with a negative field.
    std::span<const DigIndex> Used() const { return {slots_.data(), used_}; }
    /// Position of the first used slot of the layer whose block has the mesh number, or -1.
    std::int32_t Find(std::int32_t layer, std::int32_t meshNo, const GrowArray<DigBlock>& blocks) const;
    /// Fills the first slot with a negative block, or slot 0 when there is none. REQUIRES: room for one more slot.
    void Put(DigIndex entry);
    /// Fills the first slot that is not used. What `blocks` hold counts for Find. REQUIRES: room for one more slot, and one
    /// empty.
    void Append(DigIndex entry, const GrowArray<DigBlock>& blocks);
    /// Takes out a used slot; the later ones move down, up to and into the first unused one. Other positions do nothing.
    void Del(std::int32_t pos);
    /// Gathers the entries of `order`'s layers at the start. Slots behind them keep what they hold.
    void Sort(std::span<const LayerOrder::Ranked> order);
    /// A block's mesh number changed.
    void BlockChanged() { DropLookup(); }

private:
    friend struct StoreTestAccess;

    DigIndex SlotAt(std::size_t pos) const { return pos < slots_.size() ? slots_[pos] : DigIndex{}; }
    void Changed();
    void DropLookup();
    void FillLookup(const GrowArray<DigBlock>& blocks) const;
    void AddToLookup(std::size_t pos, const GrowArray<DigBlock>& blocks) const;

    GrowArray<DigIndex> slots_;  ///< slots behind the last one are empty
    std::size_t used_ = 0;
    GrowArray<DigIndex> list_;         ///< scratch of the sort
    GrowArray<std::int32_t> listPos_;  ///< scratch of the sort, by layer
    mutable PosTable lookup_;          ///< (layer, meshNo) to first position, while `lookupFresh_`
    mutable bool lookupFresh_ = false;
    mutable std::int32_t walks_ = 0;  ///< searches since the last change
};

}  // namespace orvane
