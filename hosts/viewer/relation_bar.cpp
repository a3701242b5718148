#include "hosts/viewer/relation_bar.h"

#include "control/ctrl.h"
#include "hosts/viewer/quiet_wheel.h"
#include "hosts/viewer/selecting.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

RelationBar::RelationBar(OrvaneWidget& map, ShapeTool& shapes, QWidget* parent)
    : QToolBar(tr("Select by a shape"), parent), map_(map), shapes_(shapes), shape_(new QComboBox), relation_(new QComboBox) {
    setObjectName("relation");
    shape_->addItem(tr("point"), 1);
    shape_->addItem(tr("line"), 2);
    shape_->addItem(tr("area"), 3);
    shape_->setCurrentIndex(2);
    shape_->setAccessibleName(tr("Shape to select by"));
    // The numbers are those of the relations of the control, which has the drawn shape on the left.
    relation_->addItems({tr("equals"), tr("is apart from"), tr("meets"), tr("touches"), tr("crosses"), tr("lies within"),
                         tr("contains"), tr("overlaps")});
    relation_->setCurrentIndex(2);
    relation_->setAccessibleName(tr("Relation of the shape to the features"));
    // A number out of the settings that stands for nothing leaves what is there.
    const auto keep = [this](QComboBox* box, const QString& name) {
        const int kept = Settings().value(name, box->currentIndex()).toInt();
        if (kept >= 0 && kept < box->count()) box->setCurrentIndex(kept);
        connect(box, &QComboBox::currentIndexChanged, this, [name](int index) { Settings().setValue(name, index); });
    };
    keep(shape_, "selectShape");
    keep(relation_, "selectRelation");
    start_ = addAction(tr("Select by"));
    start_->setToolTip(tr("Draw the shape: click its points, a double click or Enter ends a line or an area, Escape gives up."));
    start_->setCheckable(true);
    addWidget(shape_);
    addWidget(relation_);
    KeepWheelFromFields(*this);
    connect(start_, &QAction::triggered, this, [this](bool on) {
        if (!on) return shapes_.Cancel();
        const int shape = shape_->currentData().toInt();
        shapes_.Start(shape, [this, shape](const std::vector<QPointF>& points) { Select(shape, points); });
    });
    connect(&shapes_, &ShapeTool::Changed, this, [this] { start_->setChecked(shapes_.IsRunning()); });
}

void RelationBar::Select(int shape, const std::vector<QPointF>& points) {
    QVariantList x, y;
    for (const QPointF& point : points) {
        x << point.x();
        y << point.y();
    }
    // An area is tested as a ring, which a map's own areas are too.
    if (shape == 3 && points.size() > 2 && points.front() != points.back()) {
        x << points.front().x();
        y << points.front().y();
    }
    const int count = static_cast<int>(x.size());
    const int relation = relation_->currentIndex();
    if (WorkProgress::IsRunning()) return;
    const UnseenKeeper unseen(map_);
    const MapWork work(map_, *map_.window(), tr("Selecting…"));
    if (shape == 1 && count == 1) {
        map_.Call("OrvTestPoint", {x[0], y[0], relation});
    } else if (shape == 2 && count >= 2) {
        map_.Call("OrvTestLine", {x, y, count, relation});
    } else if (shape == 3 && count >= 3) {
        map_.Call("OrvTestArea", {x, y, count, relation});
    } else {
        emit Said(tr("A line needs two points and an area three. Draw it again."));
        return;
    }
    map_.Call("OrvReDraw");
    if (work.Cancelled()) emit Said(tr("Cancelled: not every feature was looked at."));
    emit SelectionChanged();
}

}  // namespace orvane
