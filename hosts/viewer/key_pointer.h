// A pointer that the keys move over the map, for who works without a mouse.
#pragma once

#include <QWidget>

#include "hosts/viewer/shape_tool.h"

namespace orvane {

/// A cross over the map while a drawing or editing tool or a shape runs. The arrows move it by a pixel, with Shift by kLargeStep;
/// Space clicks there, and Enter ends the figure of a tool as a double click does. The map hears what a mouse would tell it.
class KeyPointer : public QWidget {
public:
    /// It lies on `map`, which must outlive it, as must `shapes`.
    KeyPointer(OrvaneWidget& map, const ShapeTool& shapes);

    static constexpr int kLargeStep = 25;  ///< pixels of the form

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool IsWanted() const;
    /// Whether the key is one of this pointer now.
    bool Knows(const QKeyEvent& key) const;
    void Take(const QKeyEvent& key);
    void MoveBy(QPoint step);
    void Send(QEvent::Type type, QPoint at);

    OrvaneWidget& map_;
    const ShapeTool& shapes_;
    QPoint at_;       ///< in the map's widget
    QPoint clicked_;  ///< where the last click was
};

}  // namespace orvane
