// The step in which all readers of archive data end: an item goes into the store.
#pragma once

#include <cstdint>
#include <string_view>

#include "files/archive_format.h"
#include "store/cdigmem.h"

namespace orvane {

/// Makes a block for the item, without an index entry: its bounds are the item's rectangle. 0 when a free slot was reused, 1 when
/// the block array grew, -1 without memory.
std::int32_t ArcMakeBlock(CDigMem& store, const DatRec& head, std::int32_t& pos);
/// Puts an item behind those of a block. `dat` has its points, grid and text; the rest comes from the head. False without memory.
bool ArcAddDat(CDigMem& store, std::int32_t pos, const DatRec& head, DigDat&& dat);

enum class StoreOutcome { Stored, NoMemory, IndexFull };

/// Stores items one after the other. It keeps the block that the last one went to, because items of a block stand together.
class ItemStorer {
public:
    explicit ItemStorer(CDigMem& store) : store_(store) {}

    /// Puts the item into the block with its key, or into a new one. On failure the store is as it was.
    StoreOutcome Store(const DatRec& head, DigDat&& dat);
    /// To be called when anything else may have changed the store.
    void Forget() { lastPos_ = -1; }

private:
    std::int32_t FindBlock(const DatRec& head);
    StoreOutcome StoreInNewBlock(const DatRec& head, DigDat&& dat);

    CDigMem& store_;
    std::int32_t lastPos_ = -1;  ///< of a block that lookups meet
};

}  // namespace orvane
