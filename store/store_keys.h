// From keys to positions, and the display index: which block stands where, in what order it is drawn.
//
// Every make of a block ends with a sort that groups the index by layer and keeps the order within each. So the index is known
// from two things, one list of blocks for each layer and the order of the layers at the last sort; the slots are written out only
// when somebody looks. What readers append without a sort stands behind that, in a list of its own until the next sort. When an
// entry without a layer or a second one with the same key arises this no longer holds, and until the next reset the slots
// themselves are worked on (PlainIndex).
//
// All memory is had by the three Reserve functions; nothing else here can fail.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "store/layer_order.h"
#include "store/plain_index.h"
#include "store/pos_table.h"
#include "store/records.h"

namespace orvane {

class StoreKeys {
public:
    /// The tables are read where they stand; they must outlive this object and hold a record before its position is told here.
    StoreKeys(const GrowArray<LayerDef>& layers, const GrowArray<DigBlock>& blocks) : layers_(layers), blocks_(blocks) {}
    StoreKeys(const StoreKeys&) = delete;
    StoreKeys& operator=(const StoreKeys&) = delete;

    /// Forgets everything and gives the memory back.
    void Clear();

    // --- Room for one more; false changes nothing -----------------------------------------------------------------------
    /// For a layer, for a block with its entry, and for an entry that has no layer record.
    [[nodiscard]] bool ReserveLayer();
    [[nodiscard]] bool ReserveBlock();
    [[nodiscard]] bool ReserveOrphan();

    // --- Layers ---------------------------------------------------------------------------------------------------------
    /// Position of the layer, or -1. An empty code matches nothing.
    std::int32_t FindLayer(std::string_view code) const;
    /// One more record stands at the end of the layer table, its code set. REQUIRES: ReserveLayer.
    void LayerAdded();
    /// The layer's `layIndex` was written; it counts from the next sort on.
    void LayerKeyChanged(std::int32_t layer) { order_.KeyChanged(layer); }
    /// Whether any index entry is of this layer.
    bool LayerHasEntry(std::int32_t layer) const;

    // --- Slots of the block array ---------------------------------------------------------------------------------------
    /// The lowest free one, or -1.
    std::int32_t FreeSlot() const { return freeSlots_.empty() ? -1 : freeSlots_[0]; }
    /// Takes the lowest one. REQUIRES: there is one.
    void TakeFreeSlot();
    /// REQUIRES: the slot was not free.
    void BlockFreed(std::int32_t block);

    // --- Index ----------------------------------------------------------------------------------------------------------
    /// The block that the first entry with this key stands for, or -1.
    std::int32_t FindBlock(std::int32_t layer, std::int32_t meshNo) const;
    /// Position of that entry, or -1.
    std::int32_t FindPosition(std::int32_t layer, std::int32_t meshNo);
    /// Number of used slots of the index, and the slots, drawn first to drawn last. Good until the next call that changes them.
    std::int32_t EntryCnt() const;
    std::span<const DigIndex> Entries();
    /// Puts the block into the first empty slot, or into slot 0 of a full index, and sorts. REQUIRES: ReserveBlock, the block's
    /// record in its place, no entry with this key, and for a layer behind the table's end ReserveOrphan.
    void Add(std::int32_t block, std::int32_t layer);
    /// Puts the block into the first empty slot, where it stays until the next sort; the key may be there already. False, with
    /// nothing changed, when the index is full. REQUIRES: ReserveBlock, the block's record in its place, and ReserveOrphan for a
    /// layer behind the table's end or a key that is there.
    bool Append(std::int32_t block, std::int32_t layer);
    /// Takes out the entry at a position; the later ones move down. Positions without one do nothing.
    void RemoveAt(std::int32_t pos);
    /// Takes out the first entry with this key, if any.
    void RemoveKey(std::int32_t layer, std::int32_t meshNo);
    /// Takes the layers' keys as they are now for the order.
    void Sort();

private:
    friend struct StoreTestAccess;

    /// A layer's blocks, in index order.
    struct LayerList {
        std::int32_t head = -1;
        std::int32_t tail = -1;
    };
    struct BlockNode {
        std::int32_t layer = -1;  ///< -1: the block has no entry
        std::int32_t prev = -1;
        std::int32_t next = -1;
        std::int32_t pos = -1;  ///< position in the index, while `entriesFresh_`
        bool appended = false;  ///< since the last sort; such blocks end their layer's list
        std::int32_t prevAppended = -1;
        std::int32_t nextAppended = -1;
    };

    std::uint64_t KeyHash(std::int32_t block) const;
    std::int32_t FirstBlock();
    void ExtendNodes(std::int32_t block);
    void Link(std::int32_t block, std::int32_t layer, bool atFront);
    void LinkAppended(std::int32_t block);
    void WriteOut(std::int32_t block, std::int32_t layer);
    void Unlink(std::int32_t block);
    void WriteOutEntries();
    void GoPlain();

    const GrowArray<LayerDef>& layers_;
    const GrowArray<DigBlock>& blocks_;

    PosTable layerTable_;  ///< hash of the code to layer position
    LayerOrder order_;
    GrowArray<std::int32_t> freeSlots_;  ///< a heap with the lowest on top

    PosTable blockTable_;  ///< (layer, meshNo) to block position
    GrowArray<LayerList> lists_;
    GrowArray<BlockNode> nodes_;
    LayerList appended_;  ///< blocks of all layers that came since the last sort, in the order in which they came
    std::int32_t entryCnt_ = 0;
    GrowArray<DigIndex> entries_;
    bool entriesFresh_ = false;

    bool plainMode_ = false;
    PlainIndex plain_;
};

}  // namespace orvane
