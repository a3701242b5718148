// The cross that stands for the mouse where keys point.
#pragma once

#include <QPainter>
#include <QPoint>

namespace orvane {

constexpr int kCrossReach = 12;  ///< pixels of the form from its middle to its end

/// A step of one to where an arrow key shows, y downward; null for other keys.
QPoint StepOfArrow(int key);
bool IsEnterKey(int key);
void DrawCross(QPainter& painter, QPointF middle);

}  // namespace orvane
