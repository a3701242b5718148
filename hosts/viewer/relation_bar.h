// The tool bar that selects features by their relation to a point, a line or an area that the operator draws.
#pragma once

#include <QAction>
#include <QComboBox>
#include <QToolBar>

#include "hosts/viewer/shape_tool.h"

namespace orvane {

class RelationBar : public QToolBar {
    Q_OBJECT

public:
    /// Both must outlive the bar.
    RelationBar(OrvaneWidget& map, ShapeTool& shapes, QWidget* parent);

    QComboBox& Shape() { return *shape_; }
    QComboBox& Relation() { return *relation_; }
    QAction& StartAction() { return *start_; }
    /// Selects by a shape of map points.
    void Select(int shape, const std::vector<QPointF>& points);

signals:
    void SelectionChanged();
    /// What the operator should know about the last shape.
    void Said(const QString& words);

private:
    OrvaneWidget& map_;
    ShapeTool& shapes_;
    QComboBox* shape_;
    QComboBox* relation_;
    QAction* start_;
};

}  // namespace orvane
