// The guard of the walks over the index.
#pragma once

#include "store/cdigmem.h"

namespace orvane {

/// False for a slot that names no block or no place of the layer table: the walk ends there.
inline bool IsWholeSlot(const CDigMem& store, const DigIndex& slot) {
    return slot.block >= 0 && slot.block < store.BlockCnt() && slot.layer >= 0 && slot.layer < kMaxLayers;
}

}  // namespace orvane
