#include "store/extent.h"

#include <algorithm>

#include "store/cdigmem.h"

namespace orvane {

std::optional<MapExtent> DataExtent(CDigMem& store) {
    std::optional<MapExtent> all;
    for (const DigIndex& slot : store.Index()) {
        if (slot.block < 0 || slot.layer < 0) continue;
        const DigBlock& block = store.Block(slot.block);
        if (block.datCnt < 1) continue;
        const MapExtent own{block.GX + block.minX, block.GX + block.maxX, block.GY + block.minY, block.GY + block.maxY};
        if (!all) all = own;
        all->left = std::min(all->left, own.left);
        all->right = std::max(all->right, own.right);
        all->low = std::min(all->low, own.low);
        all->high = std::max(all->high, own.high);
    }
    return all;
}

}  // namespace orvane
