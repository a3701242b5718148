#include "hosts/viewer/tool_figure.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include "control/ctrl.h"

namespace orvane {

bool HasFigure(const OrvaneWidget& map) {
    const COrvane4Ctrl& ctrl = map.Control();
    if (ctrl.runMode == kRunAddCollect) return ctrl.edit.EditCnt > 0;
    return ctrl.runMode > kRunAddEdit && ctrl.edit.EditPhase > 0;
}

FirstPress::FirstPress(OrvaneWidget& map, QObject* parent) : QObject(parent), map_(map) { map_.installEventFilter(this); }

bool FirstPress::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::MouseButtonDblClick || map_.Control().runMode < kRunAddEdit || HasFigure(map_)) return false;
    const auto& second = static_cast<QMouseEvent&>(*event);
    QMouseEvent first(QEvent::MouseButtonPress, second.position(), second.scenePosition(), second.globalPosition(),
                      second.button(), second.buttons(), second.modifiers());
    QCoreApplication::sendEvent(&map_, &first);
    event->accept();
    return true;
}

}  // namespace orvane
