// What frames of symbols, texts, meshes and pattern lines cost on the qt back end at 1920 x 1080 pixels.
//
// Each round runs the frame and the replay of the frame's own recorded verbs on the same contexts. What is reported are the
// medians over all rounds and their ratio: how much the control itself adds to what its verbs cost.
#include <benchmark/benchmark.h>

#include <cmath>
#include <new>
#include <string>
#include <vector>

#include "bench/frame_measure.h"

namespace orvane::bench {
namespace {

constexpr std::int32_t kMesh = 1;

void Measure(benchmark::State& state, const Fill& fill) {
    FrameMeasure measure(fill);
    measure.Frame();
    measure.ReplayFrame();
    std::vector<double> frame, replay;
    for (auto _ : state) {
        frame.push_back(Milliseconds([&] { measure.Frame(); }));
        replay.push_back(Milliseconds([&] { measure.ReplayFrame(); }));
        state.SetIterationTime(frame.back() / 1000.0);
    }
    state.counters["frame_ms"] = Median(frame);
    state.counters["replay_ms"] = Median(replay);
    state.counters["frame_to_replay"] = Median(frame) / Median(replay);
    state.counters["verbs"] = static_cast<double>(measure.VerbCnt());
}

DigPnt Anywhere(Random& random) {
    return {random.Between(-kHalfWidth, kHalfWidth), random.Between(-kHalfHeight, kHalfHeight), 0};
}

/// 1,000,000 points in ten layers, a symbol each.
void FillSymbols(COrvane4Ctrl& ctrl) {
    constexpr std::int32_t kFigures[] = {0, 1, 2, 3, 4, 5, 10, 11, 1, 0};
    CDigMem& store = ctrl.store;
    Random random(3);
    for (std::int32_t layer = 0; layer < 10; ++layer) {
        const std::string code = "POINTS" + std::to_string(layer);
        store.DigMemAlloc2(code, kMesh, kLayPoint, "", layer, 0, 0);
        store.SetLayLineType(code, kFigures[layer]);
        store.SetLayColor(code, 0x40C0FFu >> layer);
        for (std::int32_t id = 1; id <= 100000; ++id) {
            const DigPnt at = Anywhere(random);
            store.AddDigDat(code, kMesh, id, 0);
            store.SetDigDatPnts(code, kMesh, id, {&at, 1});
        }
    }
}

/// 100,000 texts of eight bytes on average, in turn of twelve looks, some turned.
void FillTexts(COrvane4Ctrl& ctrl) {
    CDigMem& store = ctrl.store;
    Random random(4);
    store.DigMemAlloc2("TEXTS", kMesh, kLayText, "", 1, 0, 0);
    for (std::int32_t id = 1; id <= 100000; ++id) {
        const DigPnt at = Anywhere(random);
        store.AddDigDat("TEXTS", kMesh, id, 0);
        store.SetDigDatPnts("TEXTS", kMesh, id, {&at, 1});
        // Two characters of the code page, then a number.
        const std::string words = "\x93\x8C\x8B\x9E " + std::to_string(id);
        store.SetDigDatString("TEXTS", kMesh, id, at.x, at.y, words);
        TextLook look;
        const std::int32_t kind = id / 100 % 12;
        look.size = 7 + kind % 4;
        look.style = kind % 3 == 1 ? 1 : 0;
        look.angle = kind == 5 ? 30 : 0;
        look.pos = kind % 9;
        store.SetDigDatStrStyle("TEXTS", kMesh, id, look);
    }
}

/// One grid of 1000 x 1000 cells in as many colours as a byte has.
void FillMesh(COrvane4Ctrl& ctrl) {
    constexpr std::int32_t kSide = 1000;
    CDigMem& store = ctrl.store;
    std::vector<DigPnt> pnts;
    std::vector<std::uint32_t> colors;
    for (std::int32_t row = 0; row < kSide; ++row) {
        for (std::int32_t column = 0; column < kSide; ++column) {
            pnts.push_back(
                {(column + 0.5) / kSide * 2 * kHalfWidth - kHalfWidth, (row + 0.5) / kSide * 2 * kHalfHeight - kHalfHeight, 0});
            colors.push_back(static_cast<std::uint32_t>((row ^ column) & 255) * 0x010101u);
        }
    }
    store.DigMemAlloc2("MESH", kMesh, kLayMesh, "", 1, 0, 0);
    store.AddDigDat("MESH", kMesh, 1, 0);
    store.SetMeshDat("MESH", kMesh, 1, kSide, kSide, pnts);
    store.SetMeshColor("MESH", kMesh, 1, colors);
}

void AddLineType(CDigMem& store, std::int32_t id, std::int32_t kind, std::initializer_list<std::int32_t> list,
                 std::initializer_list<std::int32_t> list2, std::int32_t length, double angle, std::int32_t side) {
    LineTypeDef def;
    def.ltId = id;
    def.ltKind = kind;
    bool all = true;
    for (const std::int32_t value : list) all = def.ltList.PushBack(value) && all;
    for (const std::int32_t value : list2) all = def.ltList2.PushBack(value) && all;
    def.ltCnt = static_cast<std::int32_t>(list.size());
    def.ltLen = length;
    def.ltAngle = angle;
    def.ltDir = side;
    def.ltBase = 1;
    if (!store.lineTypes.PushBack(std::move(def)) || !all) throw std::bad_alloc();
}

/// 10,000 lines of 10 points, 600 units from point to point, in turn of five pattern kinds.
void FillPatterns(COrvane4Ctrl& ctrl) {
    CDigMem& store = ctrl.store;
    AddLineType(store, 0, 3, {12}, {}, 6, 90, 1);
    AddLineType(store, 1, 4, {12, 6}, {}, 6, 90, 0);
    AddLineType(store, 2, 5, {12, 6, 3, 6}, {}, 5, 60, 3);
    AddLineType(store, 3, 7, {12}, {7}, 0, 0, 3);
    AddLineType(store, 4, 8, {10, 10}, {0, 3}, 0, 0, 0);
    Random random(5);
    for (std::int32_t layer = 0; layer < 5; ++layer) {
        const std::string code = "LINES" + std::to_string(layer);
        store.DigMemAlloc2(code, kMesh, kLayLine, "", layer, 0, 0);
        store.SetLayLineType(code, layer);
        for (std::int32_t id = 1; id <= 2000; ++id) {
            std::vector<DigPnt> pnts{Anywhere(random)};
            double heading = random.Between(0, 6.283185307179586);
            while (pnts.size() < 10) {
                heading += random.Between(-0.6, 0.6);
                pnts.push_back({pnts.back().x + 600 * std::cos(heading), pnts.back().y + 600 * std::sin(heading), 0});
            }
            store.AddDigDat(code, kMesh, id, 0);
            store.SetDigDatPnts(code, kMesh, id, pnts);
        }
    }
}

void FrameOfSymbols(benchmark::State& state) { Measure(state, FillSymbols); }
BENCHMARK(FrameOfSymbols)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void FrameOfTexts(benchmark::State& state) { Measure(state, FillTexts); }
BENCHMARK(FrameOfTexts)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void FrameOfMesh(benchmark::State& state) { Measure(state, FillMesh); }
BENCHMARK(FrameOfMesh)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void FrameOfPatternLines(benchmark::State& state) { Measure(state, FillPatterns); }
BENCHMARK(FrameOfPatternLines)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
