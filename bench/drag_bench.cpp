// What it costs to drag a vertex of a figure of 5,000 points over a map of 100,000 items, on the qt back end at 1920 x 1080
// pixels.
//
// Each round drags over the full map, over an empty one, and draws what no drag can do without: two blits of the client area and
// the figure's polyline without its vertex marks, on the same contexts. The medians over all rounds, and how full and empty
// compare: the cost of a drag has nothing to do with the size of the store.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string_view>
#include <vector>

#include "bench/frame_measure.h"

namespace orvane::bench {
namespace {

constexpr std::int32_t kMesh = 1;
constexpr std::int32_t kFigurePnts = 5000;
constexpr int kMoves = 20;  ///< in one measured step
constexpr Point kMiddle{kWidth_px / 2, kHeight_px / 2};
constexpr std::string_view kEdited = "EDITED";

/// A spiral that begins in the middle of the view, at (0, 0).
std::vector<DigPnt> Spiral() {
    std::vector<DigPnt> pnts;
    for (std::int32_t i = 0; i < kFigurePnts; ++i) {
        const double angle = 0.05 * i;
        pnts.push_back({i * std::cos(angle), i * std::sin(angle), 0});
    }
    return pnts;
}

void FillEdited(COrvane4Ctrl& ctrl) {
    ctrl.store.DigMemAlloc2(kEdited, kMesh, kLayLine, "", 1, 0, 0);
    ctrl.store.AddDigDat(kEdited, kMesh, 1, 0);
    ctrl.store.SetDigDatPnts(kEdited, kMesh, 1, Spiral());
}

void FillMap(COrvane4Ctrl& ctrl) {
    ctrl.store.DigMemAlloc2("LINES", kMesh, kLayLine, "", 2, 0, 0);
    std::int32_t id = 0;
    for (const std::vector<DigPnt>& line : MakeLines(100000, 10)) {
        ctrl.store.AddDigDat("LINES", kMesh, ++id, 0);
        ctrl.store.SetDigDatPnts("LINES", kMesh, id, line);
    }
    FillEdited(ctrl);
}

/// A control whose cursor holds the first vertex of the figure.
class Drag {
public:
    explicit Drag(const Fill& fill) : map_(device_, fill), windowDC_(map_.window.AcquireDC()) {
        map_.ctrl->DigDatEditor(kEdited, kMesh, 1, kRunEditPntMove);
        map_.ctrl->ToolClick(*windowDC_, kMkLButton, kMiddle);
        // The context at hand goes before the moves acquire their own, as between two messages.
        windowDC_.reset();
    }
    bool Holds() const { return map_.ctrl->edit.EditPhase == 2 && map_.ctrl->edit.EditPntIdx == 0; }
    void Moves() {
        for (int i = 0; i < kMoves; ++i) map_.ctrl->ToolMove(0, {kMiddle.x + i % 2 * 40, kMiddle.y - 100});
    }
    COrvane4Ctrl& Control() { return *map_.ctrl; }
    Window& Form() { return map_.window; }

private:
    QtContext device_;
    Map map_;
    std::unique_ptr<DeviceContext> windowDC_;
};

/// The same number of times, what every drag has to draw.
void LeastWork(Drag& drag, const std::vector<Point>& figure) {
    COrvane4Ctrl& ctrl = drag.Control();
    for (int i = 0; i < kMoves; ++i) {
        const std::unique_ptr<DeviceContext> window = drag.Form().AcquireDC();
        ctrl.TopDC()->BitBlt(0, 0, kWidth_px, kHeight_px, *ctrl.BaseDC(), 0, 0, Rop3::SrcCopy);
        const Pen before = ctrl.TopDC()->SelectPen(CreatePen(PenStyle::Solid, 3, ctrl.store.ActiveColor));
        ctrl.TopDC()->Polyline(figure.data(), static_cast<std::int32_t>(figure.size()));
        ctrl.TopDC()->SelectPen(before);
        window->BitBlt(1, 1, kWidth_px - 1, kHeight_px - 1, *ctrl.TopDC(), 1, 1, Rop3::SrcCopy);
    }
}

void DragOfAVertex(benchmark::State& state) {
    Drag full(FillMap);
    Drag empty(FillEdited);
    if (!full.Holds() || !empty.Holds()) {
        state.SkipWithError("the click took no vertex up");
        return;
    }
    const DeviceTransform transform(empty.Control().store.view, empty.Control().viewX, empty.Control().viewY, 0, 0, 0, 0);
    std::vector<Point> figure;
    for (const DigPnt& pnt : Spiral()) figure.push_back(transform.ToDevice(pnt.x, pnt.y));

    std::vector<double> fullTimes, emptyTimes, leastTimes;
    for (auto _ : state) {
        fullTimes.push_back(Milliseconds([&] { full.Moves(); }) / kMoves);
        emptyTimes.push_back(Milliseconds([&] { empty.Moves(); }) / kMoves);
        leastTimes.push_back(Milliseconds([&] { LeastWork(empty, figure); }) / kMoves);
        state.SetIterationTime(fullTimes.back() / 1000.0);
    }
    state.counters["full_ms"] = Median(fullTimes);
    state.counters["empty_ms"] = Median(emptyTimes);
    state.counters["least_ms"] = Median(leastTimes);
    state.counters["full_to_empty"] = Median(fullTimes) / Median(emptyTimes);
    state.counters["full_to_least"] = Median(fullTimes) / Median(leastTimes);
}
BENCHMARK(DragOfAVertex)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
