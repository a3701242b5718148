// Records as file readers make them: blocks without the sort that comes with every other make, whole items, whole layers.
#include <utility>

#include "store/cdigmem.h"
#include "store/dat_lookup.h"
#include "store/guarded_alloc.h"

namespace orvane {

std::int32_t CDigMem::MakeBareBlock(BlockPlace place) {
    if (!initDone_ || !keys_.ReserveBlock()) return -1;
    const std::int32_t freeSlot = place == BlockPlace::End ? -1 : keys_.FreeSlot();
    if (freeSlot < 0 && !blocks_.Resize(blocks_.size() + 1)) return -1;
    const std::int32_t pos = freeSlot < 0 ? BlockCnt() - 1 : freeSlot;
    if (freeSlot >= 0) keys_.TakeFreeSlot();
    DigBlock& block = MutableBlock(pos);
    block = DigBlock{};
    block.blkState = 1;
    return pos;
}

bool CDigMem::IndexBareBlock(std::int32_t pos) {
    if (!keys_.ReserveBlock()) return false;
    const DigBlock& block = Block(pos);
    const std::int32_t found = FindLayDef(block.code.View());
    const std::int32_t layer = found < 0 ? LayerCnt() : found;
    const bool isOdd = found < 0 || keys_.FindBlock(layer, block.meshNo) >= 0;
    if (isOdd && !keys_.ReserveOrphan()) return false;
    return keys_.Append(pos, layer);
}

void CDigMem::DropBareBlock(std::int32_t pos) {
    if (pos == BlockCnt() - 1) {
        blocks_.Truncate(static_cast<std::size_t>(pos));
    } else {
        FreeBareBlock(pos);
    }
}

void CDigMem::FreeBareBlock(std::int32_t pos) {
    DigBlock& block = MutableBlock(pos);
    block = DigBlock{};
    block.blkState = kFreeBlock;
    keys_.BlockFreed(pos);
}

bool CDigMem::AppendReadLayer(LayerDef&& layer) {
    if (!initDone_ || LayerCnt() == kMaxLayers || FindLayDef(layer.code.View()) >= 0) return false;
    // A record with an empty code would read as unused, so there is nothing to keep.
    if (layer.code.Empty()) return true;
    if (!keys_.ReserveLayer() || !EnsureRoom(layers_, layers_.size() + 1) || !layers_.PushBack(std::move(layer))) return false;
    keys_.LayerAdded();
    return true;
}

}  // namespace orvane
