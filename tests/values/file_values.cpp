#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "files/archive.h"
#include "files/exchange.h"
#include "store/cdigmem.h"
#include "tests/values/value_table.h"

namespace orvane {

namespace {

constexpr std::int32_t kBlock = 533945;

/// Items of every type with numbers that no few decimals hold, so that each writer has to round.
void MakeStore(CDigMem& store) {
    store.Init();
    for (const std::int32_t type : {1, 2, 3, 4, 5, 8}) {
        const std::string code = "\x90\x7d" + std::to_string(type);
        store.DigMemAlloc2(code, kBlock, type, "C:\\map\\\x95\x5c" + std::to_string(type), type, 10000.0 * type, -2500.0 * type);
        store.SetLayColor(code, 0x123456U * static_cast<std::uint32_t>(type));
        store.SetLayLineSize(code, type);
        for (std::int32_t id = 1; id <= 5; ++id) {
            store.AddDigDat(code, kBlock, id, id % 2);
            std::vector<DigPnt> pnts;
            const std::int32_t count = type == 1 || type == 4 || type == 5 ? 1 : type == 8 ? 2 : 3 + id;
            for (std::int32_t i = 0; i < count; ++i) {
                pnts.push_back({(id * 1000 + i * 77) / 7.0, (i * i * 13 - id * 900) / 3.0, type == 4 ? 20 + id / 9.0 : 0});
            }
            store.SetDigDatPnts(code, kBlock, id, pnts);
            if (type == 5) {
                store.SetDigDatString(code, kBlock, id, id / 7.0, -id / 3.0, "\x93\x8c\x8b\x9e " + std::to_string(id));
            }
        }
    }
}

/// The file's bytes, 32 to a line.
void TellFile(ValueTable& table, Files& files, const std::string& name) {
    constexpr std::size_t kLine_bytes = 32;
    constexpr char kDigits[] = "0123456789abcdef";
    const auto file = files.OpenRead(name);
    if (file == nullptr) return table.Exact(name, "missing");
    table.Exact(name, {static_cast<double>(file->Size_bytes())});
    std::array<unsigned char, kLine_bytes> bytes{};
    std::uint64_t at = 0;
    while (const std::size_t got = file->ReadAt(at, bytes.data(), bytes.size())) {
        std::string text;
        for (std::size_t i = 0; i < got; ++i) {
            text += kDigits[bytes[i] >> 4];
            text += kDigits[bytes[i] & 15];
        }
        table.Exact(name + "_" + std::to_string(at), text);
        at += got;
    }
}

}  // namespace

void TellFiles(ValueTable& table, Files& files) {
    CDigMem store;
    MakeStore(store);
    for (const std::string_view version : {"1.00", "1.01"}) {
        const std::string name = "exchange_" + std::string(version) + ".txt";
        table.Exact("wrote_" + name, {ExchWrite(store, files, name, version) ? 1.0 : 0.0});
        TellFile(table, files, name);
    }
    for (const std::string_view version : {"1.00", "1.10"}) {
        for (const bool text : {false, true}) {
            const std::string base = (text ? "text_" : "binary_") + std::string(version);
            const std::string data = base + (text ? ".Ovt" : ".Ovb");
            table.Exact("wrote_" + data, {ArcWrite(store, files, data, version) ? 1.0 : 0.0});
            for (const char* own : {".Ovl", ".Ovi", ".Ovm"}) TellFile(table, files, base + own);
            TellFile(table, files, data);
        }
    }
}

}  // namespace orvane
