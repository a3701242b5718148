#include "fuzz/archive_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    ArchiveInput input(data, size);
    static CDigMem store;
    StartStore(store);
    Require(store.DigMemAlloc2("A", 1, kLayLine, "", 0, 0, 0));
    const bool read = ArcReadManage(store, input.files, "");
    Require(!read || input.size_bytes >= kHeaderSize);
    Require(store.BlockCnt() == 1 && store.Block(0).path.size() < kPathField);
    return 0;
}
