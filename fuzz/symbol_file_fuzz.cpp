#include "files/symbol_file.h"
#include "fuzz/one_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    static CDigMem store;
    if (!store.InitDone()) store.Init();
    OneFile files(data, size);
    ReadSymbolData(store, files, "");

    Require(store.symbols.size() <= kMaxSymbols);
    std::int64_t sum = 0;
    std::size_t strokes = 0;
    for (const SymbolDef& symbol : store.symbols) {
        Require(symbol.strokeCnt > 0 && static_cast<std::size_t>(symbol.strokeCnt) <= kMaxStrokes);
        strokes += static_cast<std::size_t>(symbol.strokeCnt);
        // Every value is touched, so that a list shorter than its count is found.
        for (std::size_t i = 0; i < static_cast<std::size_t>(symbol.strokeCnt); ++i) {
            sum += std::int64_t{symbol.strokeFrom[i].x} + symbol.strokeFrom[i].y + symbol.strokeTo[i].x + symbol.strokeTo[i].y;
        }
    }
    // A stroke takes ten bytes: five digits, four commas and the end of its line.
    Require(strokes <= size / 10 + 1);
    volatile std::int64_t used = sum;
    static_cast<void>(used);
    return 0;
}
