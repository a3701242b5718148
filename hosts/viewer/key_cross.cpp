#include "hosts/viewer/key_cross.h"

#include <utility>

namespace orvane {

QPoint StepOfArrow(int key) {
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

bool IsEnterKey(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

void DrawCross(QPainter& painter, QPointF middle) {
    for (const auto& [color, width] : {std::pair(Qt::white, 3), std::pair(Qt::black, 1)}) {
        painter.setPen(QPen(color, width));
        painter.drawLine(middle - QPointF(kCrossReach, 0), middle + QPointF(kCrossReach, 0));
        painter.drawLine(middle - QPointF(0, kCrossReach), middle + QPointF(0, kCrossReach));
    }
}

}  // namespace orvane
