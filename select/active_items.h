// Reads of the active set, which is the selection.
#pragma once

#include <cstdint>
#include <string_view>

#include "select/found_item.h"
#include "store/cdigmem.h"

namespace orvane {

/// The first active item in an active layer, shown or not, from the top of the drawing down.
FoundItem FirstActive(CDigMem& store);
/// Number of active items in layers that are shown and active, in blocks in view.
std::int32_t GetActDatCnt(CDigMem& store);
/// Calls `tell(code, meshNo, datID)` for each of them, those drawn first first. It must not change the store.
template <class Tell>
void ForEachActDat(CDigMem& store, Tell tell) {
    if (!store.InitDone()) return;
    for (const DigIndex& slot : store.Index()) {
        const LayerDef& layer = store.Layer(slot.layer);
        const DigBlock& block = store.Block(slot.block);
        if (layer.dspFlg == 0 || layer.actFlg == 0 || block.inView != 1) continue;
        for (const DigDat& dat : block.dats) {
            if (dat.active == 1) tell(block.code.View(), block.meshNo, dat.datID);
        }
    }
}
/// Puts one item of an active layer into the active set. False, with nothing changed, when there is none.
bool SetActDat(CDigMem& store, std::string_view code, std::int32_t meshNo, std::int32_t datID);

}  // namespace orvane
