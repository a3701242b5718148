// What the store costs: building it, its index when it is full, and the area search. Each figure stands beside the plainest loop
// that could do the same work on bare vectors.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "bench/workload.h"
#include "render/layers.h"
#include "store/cdigmem.h"

namespace orvane::bench {
namespace {

constexpr int kItems = 100000;
constexpr int kPoints = 10;

void StoreItemsWithPoints(benchmark::State& state) {
    const auto lines = MakeLines(kItems, kPoints);
    for (auto _ : state) {
        CDigMem store;
        store.Init();
        store.DigMemAlloc2("LINE", 1, kLayLine, "", 1, 0, 0);
        for (int i = 0; i < kItems; ++i) {
            store.AddDigDat("LINE", 1, i + 1, 0);
            store.SetDigDatPnts("LINE", 1, i + 1, lines[static_cast<std::size_t>(i)]);
        }
        benchmark::DoNotOptimize(store.GetLayDatCnt("LINE", 1));
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(StoreItemsWithPoints)->Unit(benchmark::kMillisecond);

void StoreItemsPointByPoint(benchmark::State& state) {
    const auto lines = MakeLines(kItems, kPoints);
    for (auto _ : state) {
        CDigMem store;
        store.Init();
        store.DigMemAlloc2("LINE", 1, kLayLine, "", 1, 0, 0);
        for (int i = 0; i < kItems; ++i) {
            store.AddDigDat("LINE", 1, i + 1, 0);
            for (const DigPnt& p : lines[static_cast<std::size_t>(i)]) store.AddDigDatPnt("LINE", 1, i + 1, p);
        }
        benchmark::DoNotOptimize(store.GetLayDatCnt("LINE", 1));
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(StoreItemsPointByPoint)->Unit(benchmark::kMillisecond);

/// The lower bound of both: one allocation an item and the bytes copied.
void BareVectors(benchmark::State& state) {
    const auto lines = MakeLines(kItems, kPoints);
    for (auto _ : state) {
        std::vector<std::vector<DigPnt>> items;
        for (int i = 0; i < kItems; ++i) items.emplace_back(lines[static_cast<std::size_t>(i)]);
        benchmark::DoNotOptimize(items.data());
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(BareVectors)->Unit(benchmark::kMillisecond);

/// Blocks in 100 layers, and one read from each. Linear growth shows in the time a block.
void IndexOfBlocks(benchmark::State& state) {
    const auto blocks = static_cast<int>(state.range(0));
    std::vector<std::string> codes;
    for (int i = 0; i < 100; ++i) codes.push_back("LAYER" + std::to_string(i));
    for (auto _ : state) {
        CDigMem store;
        store.Init();
        for (int i = 0; i < blocks; ++i)
            store.DigMemAlloc2(codes[static_cast<std::size_t>(i % 100)], i / 100, kLayLine, "", i % 7, 0, 0);
        std::int64_t found = 0;
        for (int i = 0; i < blocks; ++i) found += store.FindDigIndex(codes[static_cast<std::size_t>(i % 100)], i / 100);
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * blocks);
}
BENCHMARK(IndexOfBlocks)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// A million items in 100 blocks; the area cuts every block, so each item's box is looked at.
class MillionItems : public benchmark::Fixture {
public:
    void SetUp(benchmark::State&) override {
        if (ready_) return;
        ready_ = true;
        store_.Init();
        store_.view.ScaleX = store_.view.ScaleY = 1;
        store_.view.DotPerM = 3779;
        Random random(3);
        for (int block = 0; block < 100; ++block) {
            const std::string code = "B" + std::to_string(block);
            store_.DigMemAlloc2(code, 1, kLayLine, "", 1, 0, 0);
            for (int i = 0; i < 10000; ++i) {
                const DigPnt a{random.Between(-50000, 50000), random.Between(-50000, 50000), 0};
                const DigPnt line[2] = {a, {a.x + 30, a.y + 30, 0}};
                store_.AddDigDat(code, 1, i + 1, 0);
                store_.SetDigDatPnts(code, 1, i + 1, line);
                boxes_.push_back({static_cast<std::int32_t>(a.x), static_cast<std::int32_t>(-a.y - 30),
                                  static_cast<std::int32_t>(a.x + 30), static_cast<std::int32_t>(-a.y)});
            }
        }
    }

protected:
    static inline CDigMem store_;
    static inline std::vector<Rect> boxes_;
    static inline bool ready_ = false;
};

BENCHMARK_F(MillionItems, SetDrawArea)(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(SetDrawArea(store_, {-20000, -20000, 20000, 20000}));
    state.SetItemsProcessed(state.iterations() * 1000000);
}

/// The lower bound: a million boxes in one array, compared with the area.
BENCHMARK_F(MillionItems, BareBoxes)(benchmark::State& state) {
    std::vector<std::uint8_t> flags(boxes_.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < boxes_.size(); ++i) {
            const Rect& r = boxes_[i];
            flags[i] = r.left < 20000 && r.right > -20000 && r.top < 20000 && r.bottom > -20000;
        }
        benchmark::DoNotOptimize(flags.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 1000000);
}

}  // namespace
}  // namespace orvane::bench
