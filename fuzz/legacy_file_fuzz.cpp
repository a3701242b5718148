#include <algorithm>

#include "files/legacy_file.h"
#include "fuzz/one_file.h"

// The first byte chooses the kind of file. Polygons find some lines in the store, of the sheets 0 and 533945.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    if (size == 0) return 0;
    const std::size_t kind = data[0] % 4;
    constexpr std::string_view kNames[] = {"a.pnt", "a.arc", "a.pgn", "b.pgn"};

    CDigMem store;
    store.Init();
    for (const std::int32_t meshNo : {0, 533945}) {
        if (kind < 2) break;
        store.DigMemAlloc("L", meshNo, kLayLine, "", 0);
        for (std::int32_t id = 0; id < 4; ++id) {
            store.AddDigDat("L", meshNo, id, 0);
            for (std::int32_t i = 0; i < id * 5; ++i) store.AddDigDatPnt("L", meshNo, id, {i * 1.0, id * 1.0, 0});
        }
    }
    const std::int32_t blockCnt = store.BlockCnt();
    std::int32_t messageCnt = 0;
    const LegacyMessage message = [&](std::string_view text, std::string_view title, MessageIcon) {
        Require(!text.empty() && !title.empty());
        ++messageCnt;
        if (data[0] & 0x80U) store.Init();
    };
    OneFile files(data + 1, size - 1);
    const bool read = LegacyFileRead(store, files, kNames[kind], kind == 3 ? "L" : "", message);

    Require(messageCnt == 0 || (messageCnt == 1 && !read));
    if (!read) {
        Require(store.BlockCnt() == (messageCnt > 0 && (data[0] & 0x80U) ? 0 : blockCnt));
        return 0;
    }
    Require(store.BlockCnt() == blockCnt + 1 && store.GetDigIndexCnt() == blockCnt + 1);
    const DigBlock& block = store.Block(blockCnt);
    Require(block.datCnt >= 0 && block.dats.size() == static_cast<std::size_t>(block.datCnt) && block.datMax == block.datCnt);
    // An item takes five bytes: three commas and the end of its line.
    Require(block.dats.size() <= size / 5);
    std::size_t pntCnt = 0;
    double sum = 0;
    for (const DigDat& dat : block.dats) {
        Require(dat.pntCnt >= 0);
        pntCnt += static_cast<std::size_t>(dat.pntCnt);
        // Every value is touched, so that a list shorter than its count is found.
        for (std::size_t i = 0; i < static_cast<std::size_t>(dat.pntCnt); ++i)
            sum += dat.pnts[i].x + dat.pnts[i].y + dat.pnts[i].z;
    }
    // A point takes a comma and the end of its line; a ring at most fifteen points a line of three bytes.
    Require(pntCnt <= (kind < 2 ? size / 3 : size * 5));
    volatile double used = sum;
    static_cast<void>(used);
    return 0;
}
