#include "fuzz/archive_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    ArchiveInput input(data, size);
    static CDigMem store;
    StartStore(store);
    const ArcProgress none;
    ArcWatch watch(store, none);
    const bool read = input.Is110() ? ArcReadBin110(store, input.files, "", watch) : ArcReadBin100(store, input.files, "", watch);
    Require(read == (store.BlockCnt() > 0));
    CheckStore(store, input.size_bytes);
    return 0;
}
