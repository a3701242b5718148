#include "hosts/viewer/shape_tool.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <cmath>
#include <utility>

#include "control/ctrl.h"

namespace orvane {

namespace {

constexpr int kPoint = 1;
constexpr int kLine = 2;
constexpr int kFigureColor = 0x0000FF;

}  // namespace

ShapeTool::ShapeTool(OrvaneWidget& map) : QObject(&map), map_(map) {}

void ShapeTool::Start(int shape, Done done) {
    Cancel();
    shape_ = shape;
    done_ = std::move(done);
    map_.installEventFilter(this);
    map_.setFocus();
    emit Changed();
}

void ShapeTool::Cancel() {
    if (shape_ == 0) return;
    map_.removeEventFilter(this);
    DropFigure();
    shape_ = 0;
    points_.clear();
    done_ = nullptr;
    emit Changed();
}

void ShapeTool::DropFigure() {
    if (figure_ > 0) map_.Call("OrvDelOrgDataEx", {figure_});
    figure_ = 0;
    map_.Control().RedrawWindow(2);
}

QPointF ShapeTool::MapPlace(QPointF inWidget) const {
    const double ratio = map_.devicePixelRatioF();
    const COrvane4Ctrl& ctrl = map_.Control();
    return {ctrl.ScreenToWorldX(std::floor(inWidget.x() * ratio)), ctrl.ScreenToWorldY(std::floor(inWidget.y() * ratio))};
}

void ShapeTool::Click(QPointF inWidget) {
    const QPointF place = MapPlace(inWidget);
    points_.push_back(place);
    if (shape_ == kPoint) return Finish();
    if (figure_ <= 0) {
        // An open line shows an area well enough while it grows, and its last point trails the mouse.
        figure_ = map_.Call("OrvMakeOrgDatEx", {kLine, 2, kFigureColor, 0}).toInt();
        map_.Call("OrvAddOrgPnt", {figure_, place.x(), place.y()});
    }
    map_.Call("OrvAddOrgPnt", {figure_, place.x(), place.y()});
    map_.Control().RedrawWindow(2);
}

void ShapeTool::Trail(QPointF inWidget) {
    if (figure_ <= 0) return;
    const QPointF place = MapPlace(inWidget);
    map_.Call("OrvEditOrgPnt", {figure_, static_cast<int>(points_.size()), place.x(), place.y()});
    map_.Control().RedrawWindow(2);
}

void ShapeTool::Finish() {
    const std::vector<QPointF> points = std::exchange(points_, {});
    const Done done = std::exchange(done_, nullptr);
    Cancel();
    if (done) done(points);
}

bool ShapeTool::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick: {
            const auto& mouse = static_cast<QMouseEvent&>(*event);
            if (mouse.button() != Qt::LeftButton) return false;
            if (event->type() == QEvent::MouseButtonPress) Click(mouse.position());
            // The first press of the double click has put the last point already.
            if (event->type() == QEvent::MouseButtonDblClick) Finish();
            return true;
        }
        case QEvent::MouseMove: {
            const auto& mouse = static_cast<QMouseEvent&>(*event);
            Trail(mouse.position());
            return mouse.buttons().testFlag(Qt::LeftButton);
        }
        case QEvent::KeyPress: {
            const int key = static_cast<QKeyEvent&>(*event).key();
            if (key == Qt::Key_Escape) Cancel();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) Finish();
            return key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter;
        }
        default:
            return false;
    }
}

}  // namespace orvane
