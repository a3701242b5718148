#include "select/active_items.h"

#include "select/top_down.h"

namespace orvane {

FoundItem FirstActive(CDigMem& store) {
    if (!store.InitDone()) return {};
    for (const DigIndex& slot : TopDown(store.Index())) {
        if (store.Layer(slot.layer).actFlg == 0) continue;
        const DigBlock& block = store.Block(slot.block);
        for (const DigDat& dat : block.dats) {
            if (dat.active == 1) return {dat.datID, block.code, block.meshNo};
        }
    }
    return {};
}

std::int32_t GetActDatCnt(CDigMem& store) {
    std::int32_t count = 0;
    ForEachActDat(store, [&count](std::string_view, std::int32_t, std::int32_t) { ++count; });
    return count;
}

bool SetActDat(CDigMem& store, std::string_view code, std::int32_t meshNo, std::int32_t datID) {
    const std::int32_t layer = store.FindLayDef(code);
    if (layer < 0 || store.Layer(layer).actFlg == 0) return false;
    const DigDat* dat = store.FindDat(code, meshNo, datID);
    return dat != nullptr && store.SetDigDatInfoEx(code, meshNo, datID, dat->lineTag, true);
}

}  // namespace orvane
