// What a frame costs: 100,000 lines of 10 points and 100,000 polygons of 21 points at 1920 x 1080 pixels on the qt back end.
//
// Each round runs, one after the other, the frame, the replay of the frame's own recorded verbs on the same contexts, plain
// QPainter calls for the same device points, and the bare transform loop. What is reported are the medians over all rounds and
// their ratios, so that a busy machine slows all of them alike.
#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygon>
#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

#include "bench/workload.h"
#include "control/ctrl.h"
#include "platform/files_std.h"
#include "platform/offscreen_window.h"
#include "platform/qt/qt_context.h"
#include "platform/record/record_context.h"
#include "platform/record/replay.h"

namespace orvane::bench {
namespace {

constexpr int kWidth_px = 1920;
constexpr int kHeight_px = 1080;
constexpr int kRounds = 15;
constexpr std::int32_t kShapes = 100000;
constexpr Rgb kFill = 0xB4DCC8;
constexpr Rgb kOutline = 0x505050;

using Shapes = std::vector<std::vector<DigPnt>>;

/// A control with the shapes in one layer, the view at 10 units a pixel with (0, 0) in the middle.
struct Map {
    explicit Map(DeviceContext& device, const Shapes& shapes, std::int32_t layType) : window(device, kWidth_px, kHeight_px) {
        ctrl = COrvane4Ctrl::Create(window, files);
        ctrl->RDMInit();
        const std::unique_ptr<DeviceContext> dc = window.AcquireDC();
        ctrl->OnDraw(*dc, window.ClientRect(), window.ClientRect());
        CDigMem& store = ctrl->store;
        store.DigMemAlloc2("SHAPES", 1, layType, "", 1, 0, 0);
        store.SetLayColor("SHAPES", layType == kLayPolygon ? kFill : kOutline);
        store.SetLayColor2("SHAPES", kOutline);
        store.SetLayOutLine("SHAPES", false);
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const auto id = static_cast<std::int32_t>(i + 1);
            store.AddDigDat("SHAPES", 1, id, 0);
            store.SetDigDatPnts("SHAPES", 1, id, shapes[i]);
        }
        store.view.Zoom = ctrl->dotPerM * 10;
        ctrl->viewX = -kHalfWidth;
        ctrl->viewY = -kHalfHeight;
    }

    OffscreenWindow window;
    StdFiles files;
    ControlPtr ctrl;
};

class FrameMeasure {
public:
    FrameMeasure(const Shapes& shapes, std::int32_t layType)
        : layType_(layType),
          verbs_(std::make_shared<VerbList>()),
          map_(device_, shapes, layType),
          windowDC_(map_.window.AcquireDC()) {
        RecordFrame(shapes);
        DeviceTransform transform(map_.ctrl->store.view, map_.ctrl->viewX, map_.ctrl->viewY, 0, 0, 0, 0);
        for (const auto& shape : shapes) {
            QPolygon polygon;
            for (const DigPnt& p : shape) {
                const Point d = transform.ToDevice(p.x, p.y);
                polygon.append(QPoint(d.x, d.y));
                flat_.push_back(p);
            }
            polygons_.push_back(std::move(polygon));
        }
        image_ = QImage(kWidth_px, kHeight_px, QImage::Format_RGB32);
        device_points_.resize(flat_.size());
    }

    void Frame() { map_.ctrl->Redraw(*windowDC_, 0); }
    void ReplayFrame() { Replay(*verbs_, targets_); }

    void PlainQPainter() {
        image_.fill(Qt::white);
        QPainter painter(&image_);
        painter.setPen(QPen(QColor(0x50, 0x50, 0x50), 1));
        painter.setBrush(QColor(0xC8, 0xDC, 0xB4));
        for (const QPolygon& polygon : polygons_) {
            if (layType_ == kLayPolygon) {
                painter.drawPolygon(polygon, Qt::OddEvenFill);
            } else {
                painter.drawPolyline(polygon);
            }
        }
    }

    void BareTransform() {
        const ViewParams& view = map_.ctrl->store.view;
        const double r = view.PixPerUnit();
        const double x0 = map_.ctrl->viewX;
        const double y0 = map_.ctrl->viewY;
        for (std::size_t i = 0; i < flat_.size(); ++i) {
            device_points_[i] = {ToInt((flat_[i].x - x0) * r), ToInt((-flat_[i].y - y0) * r)};
        }
        benchmark::DoNotOptimize(device_points_.data());
        benchmark::ClobberMemory();
    }

private:
    /// A second control draws the same frame on a recording device; its contexts are then stood for by those of the measured one.
    void RecordFrame(const Shapes& shapes) {
        RecordContext desktop(verbs_, "desktop");
        Map recorded(desktop, shapes, layType_);
        const std::unique_ptr<DeviceContext> dc = recorded.window.AcquireDC();
        verbs_->Clear();
        recorded.ctrl->Redraw(*dc, 0);
        const auto number = [](DeviceContext* context) { return static_cast<RecordContext*>(context)->Number(); };
        targets_.SetContext(number(recorded.ctrl->BaseDC()), *map_.ctrl->BaseDC());
        targets_.SetContext(number(recorded.ctrl->TopDC()), *map_.ctrl->TopDC());
        targets_.SetContext(number(dc.get()), *windowDC_);
        verbs_->SetRecording(false);
    }

    std::int32_t layType_;
    std::shared_ptr<VerbList> verbs_;
    QtContext device_;
    Map map_;
    std::unique_ptr<DeviceContext> windowDC_;
    ReplayTargets targets_;
    std::vector<QPolygon> polygons_;
    std::vector<DigPnt> flat_;
    std::vector<Point> device_points_;
    QImage image_;
};

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

template <class Work>
double Milliseconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Measure(benchmark::State& state, const Shapes& shapes, std::int32_t layType) {
    FrameMeasure measure(shapes, layType);
    measure.Frame();
    measure.ReplayFrame();
    std::vector<double> frame, replay, qpainter, transform;
    for (auto _ : state) {
        frame.push_back(Milliseconds([&] { measure.Frame(); }));
        replay.push_back(Milliseconds([&] { measure.ReplayFrame(); }));
        qpainter.push_back(Milliseconds([&] { measure.PlainQPainter(); }));
        transform.push_back(Milliseconds([&] { measure.BareTransform(); }));
        state.SetIterationTime(frame.back() / 1000.0);
    }
    state.counters["frame_ms"] = Median(frame);
    state.counters["replay_ms"] = Median(replay);
    state.counters["qpainter_ms"] = Median(qpainter);
    state.counters["transform_ms"] = Median(transform);
    state.counters["frame_to_replay"] = Median(frame) / Median(replay);
    state.counters["frame_to_qpainter"] = Median(frame) / Median(qpainter);
    state.counters["frame_to_transform"] = Median(frame) / Median(transform);
}

void FrameOfLines(benchmark::State& state) { Measure(state, MakeLines(kShapes, 10), kLayLine); }
BENCHMARK(FrameOfLines)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void FrameOfPolygons(benchmark::State& state) { Measure(state, MakePolygons(kShapes, 21), kLayPolygon); }
BENCHMARK(FrameOfPolygons)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
