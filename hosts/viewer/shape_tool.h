// Points that the operator clicks on the map for the host's own use: a shape to select by, a place for an image.
//
// While it runs, left clicks do not reach the control, so that nothing is selected or edited by them; wheel and right button work
// as ever. What was clicked shows as an overlay figure.
#pragma once

#include <QMouseEvent>
#include <QObject>
#include <QPointF>
#include <functional>
#include <vector>

#include "hosts/qt/orvane_widget.h"

namespace orvane {

class ShapeTool : public QObject {
    Q_OBJECT

public:
    /// Map coordinates, y to the north.
    using Done = std::function<void(const std::vector<QPointF>& points)>;

    /// `map` must outlive the tool.
    explicit ShapeTool(OrvaneWidget& map);

    /// Starts with a shape: 1 point, 2 line, 3 area. A point ends with its click, the others with a double click or Enter; Escape
    /// ends with nothing. A shape that runs is given up.
    void Start(int shape, Done done);
    void Cancel();
    bool IsRunning() const { return shape_ != 0; }
    /// Whether neither a shape nor a tool of the control waits for clicks.
    bool IsMapFree() const;

signals:
    /// Before it starts: another tool must let go of the mouse.
    void Starting();
    /// It started or ended.
    void Changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Whether the event is not to reach the map.
    bool TakeMouse(const QMouseEvent& mouse);
    void Click(QPointF inWidget);
    void Trail(QPointF inWidget);
    void Finish();
    void DropFigure();
    QPointF MapPlace(QPointF inWidget) const;

    OrvaneWidget& map_;
    int shape_ = 0;
    bool isHeld_ = false;  ///< a press was taken whose release is still to come
    int figure_ = 0;
    std::vector<QPointF> points_;
    Done done_;
};

}  // namespace orvane
