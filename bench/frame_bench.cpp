// What a frame costs: 100,000 lines of 10 points and 100,000 polygons of 21 points at 1920 x 1080 pixels on the qt back end.
//
// Each round runs, one after the other, the frame, the replay of the frame's own recorded verbs on the same contexts, plain
// QPainter calls for the same device points, and the bare transform loop. What is reported are the medians over all rounds and
// their ratios, so that a busy machine slows all of them alike.
#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygon>
#include <vector>

#include "bench/frame_measure.h"

namespace orvane::bench {
namespace {

constexpr std::int32_t kShapes = 100000;
constexpr Rgb kFill = 0xB4DCC8;
constexpr Rgb kOutline = 0x505050;

using Shapes = std::vector<std::vector<DigPnt>>;

/// All shapes in one layer.
Fill FillWith(const Shapes& shapes, std::int32_t layType) {
    return [&shapes, layType](COrvane4Ctrl& ctrl) {
        CDigMem& store = ctrl.store;
        store.DigMemAlloc2("SHAPES", 1, layType, "", 1, 0, 0);
        store.SetLayColor("SHAPES", layType == kLayPolygon ? kFill : kOutline);
        store.SetLayColor2("SHAPES", kOutline);
        store.SetLayOutLine("SHAPES", false);
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const auto id = static_cast<std::int32_t>(i + 1);
            store.AddDigDat("SHAPES", 1, id, 0);
            store.SetDigDatPnts("SHAPES", 1, id, shapes[i]);
        }
    };
}

/// The same shapes without a map: plain QPainter calls, and the bare loop that carries points to the device.
class BareShapes {
public:
    BareShapes(const Shapes& shapes, std::int32_t layType, COrvane4Ctrl& ctrl) : layType_(layType), ctrl_(ctrl) {
        DeviceTransform transform(ctrl.store.view, ctrl.viewX, ctrl.viewY, 0, 0, 0, 0);
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
        const ViewParams& view = ctrl_.store.view;
        const double r = view.PixPerUnit();
        const double x0 = ctrl_.viewX;
        const double y0 = ctrl_.viewY;
        for (std::size_t i = 0; i < flat_.size(); ++i) {
            device_points_[i] = {ToInt((flat_[i].x - x0) * r), ToInt((-flat_[i].y - y0) * r)};
        }
        benchmark::DoNotOptimize(device_points_.data());
        benchmark::ClobberMemory();
    }

private:
    std::int32_t layType_;
    COrvane4Ctrl& ctrl_;
    std::vector<QPolygon> polygons_;
    std::vector<DigPnt> flat_;
    std::vector<Point> device_points_;
    QImage image_;
};

void Measure(benchmark::State& state, const Shapes& shapes, std::int32_t layType) {
    FrameMeasure measure(FillWith(shapes, layType));
    BareShapes bare(shapes, layType, measure.Control());
    measure.Frame();
    measure.ReplayFrame();
    std::vector<double> frame, replay, qpainter, transform;
    for (auto _ : state) {
        frame.push_back(Milliseconds([&] { measure.Frame(); }));
        replay.push_back(Milliseconds([&] { measure.ReplayFrame(); }));
        qpainter.push_back(Milliseconds([&] { bare.PlainQPainter(); }));
        transform.push_back(Milliseconds([&] { bare.BareTransform(); }));
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
