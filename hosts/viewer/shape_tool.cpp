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
constexpr int kArea = 3;
constexpr int kFigureColor = 0x0000FF;

}  // namespace

ShapeTool::ShapeTool(OrvaneWidget& map) : QObject(&map), map_(map) { map_.installEventFilter(this); }

bool ShapeTool::IsMapFree() const { return !IsRunning() && map_.RunMode() < kRunAddEdit; }

void ShapeTool::Start(int shape, Done done) {
    Cancel();
    emit Starting();
    shape_ = shape;
    done_ = std::move(done);
    map_.setFocus();
    emit Changed();
}

void ShapeTool::Cancel() {
    if (shape_ == 0) return;
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
    Trail(inWidget);  // a click may come without a move before it
    points_.push_back(place);
    if (shape_ == kPoint) return Finish();
    // A line whose last point trails the mouse; that of an area goes on to the first one, so that it shows closed as it grows.
    const auto put = [&](std::size_t at) { map_.Call("OrvInsOrgPnt", {figure_, static_cast<int>(at), place.x(), place.y()}); };
    if (figure_ <= 0) {
        figure_ = map_.Call("OrvMakeOrgDatEx", {kLine, 2, kFigureColor, 0}).toInt();
        put(0);
        if (shape_ == kArea) put(1);
    }
    put(points_.size());
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

bool ShapeTool::TakeMouse(const QMouseEvent& mouse) {
    if (mouse.type() == QEvent::MouseMove) {
        // A dialog that the shape's end has opened takes the release.
        if (!mouse.buttons().testFlag(Qt::LeftButton)) isHeld_ = false;
        if (IsRunning()) Trail(mouse.position());
        return isHeld_ || (IsRunning() && mouse.buttons().testFlag(Qt::LeftButton));
    }
    if (mouse.button() != Qt::LeftButton) return false;
    // The release of a press that was taken is taken too, also when that press ended the shape: alone it would select.
    if (mouse.type() == QEvent::MouseButtonRelease) return std::exchange(isHeld_, false);
    isHeld_ = IsRunning();
    if (!isHeld_) return false;
    // The first press of a double click has put the last point already.
    mouse.type() == QEvent::MouseButtonPress ? Click(mouse.position()) : Finish();
    return true;
}

bool ShapeTool::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
            return TakeMouse(static_cast<QMouseEvent&>(*event));
        case QEvent::KeyPress: {
            if (!IsRunning()) return false;
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
