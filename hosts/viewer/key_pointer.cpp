#include "hosts/viewer/key_pointer.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/key_cross.h"
#include "hosts/viewer/tool_figure.h"
#include "select/pick.h"

namespace orvane {

KeyPointer::KeyPointer(OrvaneWidget& map, const ShapeTool& shapes) : QWidget(&map), map_(map), shapes_(shapes) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    resize(2 * kCrossReach + 1, 2 * kCrossReach + 1);
    hide();
    map_.installEventFilter(this);
}

bool KeyPointer::HasTool() const { return map_.RunMode() >= kRunAddEdit || shapes_.IsRunning(); }

bool KeyPointer::HasRectangle() const { return !HasTool() && map_.Control().rectZoomMode != 0; }

bool KeyPointer::IsSelecting() const { return asked_ && !HasTool() && !HasRectangle() && map_.RunMode() == kRunNormal; }

bool KeyPointer::Knows(const QKeyEvent& key) const {
    if (!IsWanted()) return false;
    const bool clicks = key.key() == Qt::Key_Space || IsEnterKey(key.key());
    const Qt::KeyboardModifiers other = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (other == Qt::ControlModifier && clicks) return isVisible() && IsSelecting();
    if (other != 0) return false;
    if (!StepOfArrow(key.key()).isNull()) return true;
    if (!isVisible()) return false;
    if (key.key() == Qt::Key_Escape) return isHeld_ || IsSelecting();
    if (key.key() == Qt::Key_H) return IsSelecting();
    // The shape has an Enter of its own.
    return key.key() == Qt::Key_Space || (clicks && !shapes_.IsRunning());
}

bool KeyPointer::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:  // the arrows scroll the map otherwise
            if (!Knows(static_cast<QKeyEvent&>(*event))) return false;
            event->accept();
            return true;
        case QEvent::KeyPress:
            if (!IsWanted()) PutAway();
            if (!Knows(static_cast<QKeyEvent&>(*event))) return false;
            Take(static_cast<QKeyEvent&>(*event));
            return true;
        case QEvent::MouseMove:
            if (event->spontaneous()) PutAway();  // the mouse itself points
            return false;
        case QEvent::FocusOut:
            GiveUpHold();
            hide();
            return false;
        default:
            return false;
    }
}

void KeyPointer::Start() {
    asked_ = true;
    map_.setFocus();
    if (!isVisible()) MoveBy({});
}

void KeyPointer::PutAway() {
    GiveUpHold();
    asked_ = false;
    hide();
}

void KeyPointer::Take(const QKeyEvent& key) {
    const QPoint step = StepOfArrow(key.key());
    if (!step.isNull()) return MoveBy(key.modifiers().testFlag(Qt::ShiftModifier) ? step * kLargeStep : step);
    if (key.key() == Qt::Key_Escape) return isHeld_ ? GiveUpHold() : PutAway();
    if (key.key() == Qt::Key_H) return AskHint();
    // A tool asks for no keys with its clicks.
    const Qt::KeyboardModifiers modifiers =
        IsSelecting() ? key.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier) : Qt::KeyboardModifiers();
    if (!HasTool() && (isHeld_ || HasRectangle() || IsEnterKey(key.key()))) {
        HoldOrLetGo(modifiers);
    } else if (key.key() == Qt::Key_Space) {
        Click(modifiers);
    } else if (HasFigure(map_)) {
        // Where the last point was put: the end of a figure is no other point.
        Send(QEvent::MouseButtonDblClick, clicked_);
        Send(QEvent::MouseButtonRelease, clicked_);
    }
    if (!IsWanted()) PutAway();
}

void KeyPointer::Click(Qt::KeyboardModifiers modifiers) {
    clicked_ = at_;
    Send(QEvent::MouseButtonPress, at_, modifiers);
    Send(QEvent::MouseButtonRelease, at_, modifiers);
}

void KeyPointer::HoldOrLetGo(Qt::KeyboardModifiers modifiers) {
    if (std::exchange(isHeld_, !isHeld_)) {
        Send(QEvent::MouseButtonRelease, at_, modifiers);
    } else {
        clicked_ = at_;
        Send(QEvent::MouseButtonPress, at_);
    }
}

// A button that comes up right beside where it went down drags nothing; at that very place it would click.
void KeyPointer::GiveUpHold() {
    if (!isHeld_) return;
    const QPoint beside = clicked_ + QPoint(1, 0);
    Send(QEvent::MouseMove, beside);
    isHeld_ = false;
    Send(QEvent::MouseButtonRelease, beside);
}

void KeyPointer::AskHint() {
    const COrvane4Ctrl& ctrl = map_.Control();
    const double ratio = map_.devicePixelRatioF();
    const Point at{qFloor(at_.x() * ratio), qFloor(at_.y() * ratio)};
    const PickPlace place{map_.Control().window().ClientRect(), ctrl.viewX, ctrl.viewY, ctrl.devOffX, ctrl.devOffY};
    const FoundItem item = PickForHint(map_.Control().store, at, place);
    if (!item.Found()) return;
    const Point screen = map_.Control().window().ClientToScreen(at);
    emit HintAsked(item.datID, ToQString(item.code.View()), item.meshNo, screen.x, screen.y);
}

void KeyPointer::MoveBy(QPoint step) {
    if (!isVisible()) at_ = clicked_ = map_.rect().center();
    at_ += step;
    at_.setX(std::clamp(at_.x(), 0, (std::max)(map_.width() - 1, 0)));
    at_.setY(std::clamp(at_.y(), 0, (std::max)(map_.height() - 1, 0)));
    move(at_ - QPoint(kCrossReach, kCrossReach));
    show();
    raise();
    Send(QEvent::MouseMove, at_);
}

void KeyPointer::Send(QEvent::Type type, QPoint at, Qt::KeyboardModifiers modifiers) {
    const bool isMove = type == QEvent::MouseMove;
    const bool isDown = isMove ? isHeld_ : type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, map_.mapToGlobal(QPointF(at)), isMove ? Qt::NoButton : Qt::LeftButton,
                      isDown ? Qt::LeftButton : Qt::NoButton, modifiers);
    QCoreApplication::sendEvent(&map_, &event);
}

void KeyPointer::paintEvent(QPaintEvent*) {
    if (!IsWanted()) return;
    QPainter painter(this);
    DrawCross(painter, {kCrossReach, kCrossReach});
}

}  // namespace orvane
