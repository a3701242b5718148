// What a click costs over 1,000,000 items on the screen: 500,000 lines of 10 points and 500,000 polygons of 11, in ten layers.
//
// Each round makes one plain pass over the records, which reads of each item whether the last frame drew it and whether it has
// points, and then one click. The medians over all rounds stand beside their ratio.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bench/frame_measure.h"
#include "bench/workload.h"
#include "select/pick.h"
#include "store/cdigmem.h"
#include "store/dat_lookup.h"

namespace orvane::bench {
namespace {

constexpr std::int32_t kMesh = 1;
constexpr std::int32_t kLayers = 10;
constexpr int kItemsOfLayer = 100000;

/// The view of the workload, with everything marked as the last frame marks what it drew.
class ClickedMap {
public:
    ClickedMap() {
        store.Init();
        store.view.DotPerM = 1000;
        store.view.Zoom = 10000;
        store.view.ScaleX = store.view.ScaleY = 1;
        store.view.DpiRatio = 1;
        place.client = {0, 0, 1920, 1080};
        place.viewX = -kHalfWidth;
        place.viewY = -kHalfHeight;
        const auto lines = MakeLines(kItemsOfLayer * kLayers / 2, 10);
        const auto polygons = MakePolygons(kItemsOfLayer * kLayers / 2, 11);
        for (std::int32_t layer = 0; layer < kLayers; ++layer) {
            const bool isLine = layer % 2 == 0;
            const auto first = (isLine ? lines : polygons).begin() + layer / 2 * kItemsOfLayer;
            AddLayer("LAYER" + std::to_string(layer), isLine ? kLayLine : kLayPolygon, layer, first);
        }
    }

    CDigMem store;
    PickPlace place;

private:
    void AddLayer(const std::string& code, std::int32_t layType, std::int32_t index,
                  std::vector<std::vector<DigPnt>>::const_iterator pnts) {
        store.DigMemAlloc2(code, kMesh, layType, "", index, 0, 0);
        store.SetLayActive(code, true);
        store.SetLayDspFlg(code, true);
        for (std::int32_t ID = 1; ID <= kItemsOfLayer; ++ID) {
            store.AddDigDat(code, kMesh, ID, 0);
            store.SetDigDatPnts(code, kMesh, ID, *pnts++);
        }
        DigBlock& block = store.MutableBlock(store.FindBlock(code, kMesh).block);
        block.inView = 1;
        for (DigDat& dat : block.dats) dat.drawnFlg = dat.clipFlg = 1;
    }
};

std::int64_t PlainPass(const CDigMem& store) {
    std::int64_t shown = 0;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        for (const DigDat& dat : store.Block(i).dats) {
            if (dat.drawnFlg == 1 && dat.clipFlg == 1 && dat.pntCnt >= 1) ++shown;
        }
    }
    return shown;
}

/// `click` looks at a pixel of the map and tells how many items it met.
template <class Click>
void Measure(benchmark::State& state, double rotate_deg, Click click) {
    ClickedMap map;
    map.store.view.Rotate = rotate_deg;
    Random random(9);
    std::vector<double> passes, clicks;
    std::int64_t met = 0;
    for (auto _ : state) {
        passes.push_back(Milliseconds([&] { benchmark::DoNotOptimize(PlainPass(map.store)); }));
        const Point at{static_cast<std::int32_t>(random.Between(0, 1920)), static_cast<std::int32_t>(random.Between(0, 1080))};
        clicks.push_back(Milliseconds([&] { met += click(map, at); }));
        state.SetIterationTime(clicks.back() / 1000.0);
    }
    state.counters["click_ms"] = Median(clicks);
    state.counters["pass_ms"] = Median(passes);
    state.counters["click_to_pass"] = Median(clicks) / Median(passes);
    state.counters["met_per_click"] = static_cast<double>(met) / static_cast<double>(clicks.size());
}

std::int32_t PlainClick(ClickedMap& map, Point at) { return SelectAtPoint(map.store, at, map.place, 0, false); }
std::int32_t ShiftClick(ClickedMap& map, Point at) { return SelectAtPoint(map.store, at, map.place, 1, false); }
std::int32_t HintPick(ClickedMap& map, Point at) { return PickForHint(map.store, at, map.place).Found() ? 1 : 0; }

BENCHMARK_CAPTURE(Measure, Click, 0.0, PlainClick)->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, ShiftClick, 0.0, ShiftClick)->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, ShiftClickTurned, 30.0, ShiftClick)->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, Hint, 0.0, HintPick)->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
