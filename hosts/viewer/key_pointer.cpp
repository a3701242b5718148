#include "hosts/viewer/key_pointer.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/tool_figure.h"

namespace orvane {

namespace {

constexpr int kReach = 12;  // pixels from the middle of the cross to its end

QPoint StepOf(int key) {
    switch (key) {
        case Qt::Key_Left:
            return {-1, 0};
        case Qt::Key_Right:
            return {1, 0};
        case Qt::Key_Up:
            return {0, -1};
        case Qt::Key_Down:
            return {0, 1};
        default:
            return {};
    }
}

bool IsEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

}  // namespace

KeyPointer::KeyPointer(OrvaneWidget& map, const ShapeTool& shapes) : QWidget(&map), map_(map), shapes_(shapes) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    resize(2 * kReach + 1, 2 * kReach + 1);
    hide();
    map_.installEventFilter(this);
}

bool KeyPointer::IsWanted() const { return map_.RunMode() >= kRunAddEdit || shapes_.IsRunning(); }

bool KeyPointer::Knows(const QKeyEvent& key) const {
    if (!IsWanted() || (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return false;
    if (!StepOf(key.key()).isNull()) return true;
    // The shape has an Enter of its own.
    return isVisible() && (key.key() == Qt::Key_Space || (IsEnter(key.key()) && !shapes_.IsRunning()));
}

bool KeyPointer::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:  // the arrows scroll the map otherwise
            if (!Knows(static_cast<QKeyEvent&>(*event))) return false;
            event->accept();
            return true;
        case QEvent::KeyPress:
            if (!IsWanted()) hide();
            if (!Knows(static_cast<QKeyEvent&>(*event))) return false;
            Take(static_cast<QKeyEvent&>(*event));
            return true;
        case QEvent::MouseMove:
            if (event->spontaneous()) hide();  // the mouse itself points
            return false;
        case QEvent::FocusOut:
            hide();
            return false;
        default:
            return false;
    }
}

void KeyPointer::Take(const QKeyEvent& key) {
    const QPoint step = StepOf(key.key());
    if (!step.isNull()) return MoveBy(key.modifiers().testFlag(Qt::ShiftModifier) ? step * kLargeStep : step);
    if (key.key() == Qt::Key_Space) {
        clicked_ = at_;
        Send(QEvent::MouseButtonPress, at_);
        Send(QEvent::MouseButtonRelease, at_);
    } else if (HasFigure(map_)) {
        // Where the last point was put: the end of a figure is no other point.
        Send(QEvent::MouseButtonDblClick, clicked_);
        Send(QEvent::MouseButtonRelease, clicked_);
    }
    if (!IsWanted()) hide();
}

void KeyPointer::MoveBy(QPoint step) {
    if (!isVisible()) at_ = clicked_ = map_.rect().center();
    at_ += step;
    at_.setX(std::clamp(at_.x(), 0, (std::max)(map_.width() - 1, 0)));
    at_.setY(std::clamp(at_.y(), 0, (std::max)(map_.height() - 1, 0)));
    move(at_ - QPoint(kReach, kReach));
    show();
    raise();
    Send(QEvent::MouseMove, at_);
}

void KeyPointer::Send(QEvent::Type type, QPoint at) {
    const bool isDown = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, map_.mapToGlobal(QPointF(at)), button, isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&map_, &event);
}

void KeyPointer::paintEvent(QPaintEvent*) {
    if (!IsWanted()) return;
    QPainter painter(this);
    for (const auto& [color, width] : {std::pair(Qt::white, 3), std::pair(Qt::black, 1)}) {
        painter.setPen(QPen(color, width));
        painter.drawLine(0, kReach, 2 * kReach, kReach);
        painter.drawLine(kReach, 0, kReach, 2 * kReach);
    }
}

}  // namespace orvane
