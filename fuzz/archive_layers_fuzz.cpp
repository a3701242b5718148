#include "fuzz/archive_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    ArchiveInput input(data, size);
    static CDigMem store;
    StartStore(store);
    const bool read = input.Is110() ? ArcReadLayers110(store, input.files, "") : ArcReadLayers100(store, input.files, "");
    Require(!read || input.size_bytes >= kHeaderSize);
    Require(static_cast<std::size_t>(store.LayerCnt()) <= 2 + input.size_bytes / LayerRecSize(ArcVersion::V100));
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        Require(!layer.code.Empty() && store.FindLayDef(layer.code.View()) == i);
        Require(layer.dspFlg <= 1 && layer.outLine <= 1 && layer.spareFlg <= 1 && layer.fillMode <= 1 && layer.imgMode <= 1);
    }
    return 0;
}
