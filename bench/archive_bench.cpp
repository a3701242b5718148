// What an archive costs: a million lines of ten points saved and read whole, beside the plainest way to move as many bytes, and a
// small window read out of it.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "files/archive.h"
#include "platform/files_std.h"

namespace orvane::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::int32_t kItems = 1000000;
constexpr std::int32_t kBlocks = 1000;
constexpr std::int32_t kPoints = 10;
constexpr std::size_t kPiece = 256 * 1024;

/// Blocks are squares of 1000 map units in a row of a hundred, each with a thousand short lines.
void MakeMap(CDigMem& store) {
    store.Init();
    std::vector<DigPnt> pnts(kPoints);
    for (std::int32_t b = 0; b < kBlocks; ++b) {
        store.DigMemAlloc2("LINE", b, kLayLine, "path", 1, 0, 0);
        for (std::int32_t i = 0; i < kItems / kBlocks; ++i) {
            for (std::size_t k = 0; k < pnts.size(); ++k) {
                pnts[k] = {b % 100 * 1000.0 + i + 0.25 * static_cast<double>(k), b / 100 * 1000.0 + i, 0};
            }
            store.AddDigDat("LINE", b, i + 1, 0);
            store.SetDigDatPnts("LINE", b, i + 1, pnts);
        }
    }
}

/// The archive on disk, made once; it goes with the program.
struct SavedMap {
    SavedMap() {
        fs::create_directories(folder);
        CDigMem store;
        MakeMap(store);
        saved = ArcWrite(store, files, name, "");
    }
    ~SavedMap() {
        std::error_code error;
        fs::remove_all(folder, error);
    }
    static SavedMap& Get() {
        static SavedMap map;
        return map;
    }

    StdFiles files;
    fs::path folder = fs::temp_directory_path() / "orvane_archive_bench";
    std::string name = (folder / "map.Ovb").string();
    bool saved = false;
};

void SaveArchive(benchmark::State& state) {
    SavedMap& map = SavedMap::Get();
    CDigMem store;
    MakeMap(store);
    const std::string name = (map.folder / "other.Ovb").string();
    for (auto _ : state) {
        if (!ArcWrite(store, map.files, name, "")) state.SkipWithError("not saved");
    }
}

/// The lower bound of it: the same bytes in large pieces.
void WritePlain(benchmark::State& state) {
    const SavedMap& map = SavedMap::Get();
    const std::size_t size = fs::file_size(map.name);
    const std::vector<char> piece(kPiece, 'x');
    const std::string name = (map.folder / "plain").string();
    for (auto _ : state) {
        std::FILE* file = std::fopen(name.c_str(), "wb");
        for (std::size_t done = 0; done < size; done += kPiece)
            std::fwrite(piece.data(), 1, (std::min)(kPiece, size - done), file);
        std::fclose(file);
    }
}

void ReadArchive(benchmark::State& state) {
    SavedMap& map = SavedMap::Get();
    for (auto _ : state) {
        CDigMem store;
        store.Init();
        if (!ArcRead(store, map.files, map.name)) state.SkipWithError("not read");
        state.PauseTiming();
        store.FreeAll();
        state.ResumeTiming();
    }
}

/// The lower bound of it: the same bytes in large pieces, and an allocation with a copy for each item.
void ReadPlain(benchmark::State& state) {
    const SavedMap& map = SavedMap::Get();
    constexpr std::size_t kItem = kPoints * 24;
    std::vector<char> piece(kPiece);
    for (auto _ : state) {
        std::vector<char*> items(kItems);
        std::FILE* file = std::fopen(map.name.c_str(), "rb");
        std::size_t held = 0, at = 0;
        for (char*& item : items) {
            if (held - at < kItem) {
                held = std::fread(piece.data(), 1, kPiece, file);
                at = 0;
            }
            item = static_cast<char*>(std::malloc(kItem));
            std::memcpy(item, piece.data() + at, kItem);
            at += kItem + 86;
            if (at > held) at = held;
        }
        std::fclose(file);
        state.PauseTiming();
        for (char* item : items) std::free(item);
        state.ResumeTiming();
    }
}

/// One block of the thousand: what an area in it selects.
void ReadWindow(benchmark::State& state) {
    SavedMap& map = SavedMap::Get();
    const std::string codes[] = {"LINE"};
    for (auto _ : state) {
        CDigMem store;
        store.Init();
        if (!ArcRead(store, map.files, map.name, {50100, 5100, 50200, 5200, codes})) state.SkipWithError("not read");
        benchmark::DoNotOptimize(store.BlockCnt());
    }
}

BENCHMARK(SaveArchive)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(WritePlain)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ReadArchive)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ReadPlain)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ReadWindow)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace orvane::bench
