#include "hosts/viewer/mode_bar.h"

#include <QAction>
#include <QLabel>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"

namespace orvane {

ModeBar::ModeBar(OrvaneWidget& map, QWidget* parent)
    : QToolBar("Mode", parent), map_(map), modes_(new QActionGroup(this)), layers_(new QComboBox(this)) {
    setMovable(false);
    AddMode("Select", "Click selects, Shift steps through a stack, Ctrl toggles; drag selects what lies in the rectangle.",
            kRunNormal);
    AddMode("Pan", "Hold the left button and move.", kRunPan);
    addSeparator();
    AddMode("Draw", "Click the points of a new feature of the layer beside; a double click ends a line or an area.", kRunAddEdit);
    layers_->setToolTip("The layer that new features go to");
    layers_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    layers_->setFocusPolicy(Qt::NoFocus);
    addWidget(layers_);
    AddMode("Move points", "Click a feature, then a vertex, then its new place; a click beside the feature ends.",
            kRunEditPntMove);
    AddMode("Add points", "Click a feature, then where new vertices go; a double click ends.", kRunEditPntAdd);
    AddMode("Delete points", "Click a feature, then its vertices; a click beside the feature ends.", kRunEditPntDel);
    AddMode("Move", "Click a feature, then its new place.", kRunMoveDat);
    AddMode("Copy", "Click a feature, then the place of its copy.", kRunCopyDat);
    AddMode("Delete", "Click the feature to delete.", kRunDeleteDat);
    modes_->actions().constFirst()->setChecked(true);

    const auto syncLater = [this] {
        QMetaObject::invokeMethod(
            this, [this] { Sync(); }, Qt::QueuedConnection);
    };
    connect(&map_, &OrvaneWidget::OnEditorEnd, this, syncLater);
    connect(&map_, &OrvaneWidget::MouseUp, this, syncLater);
}

void ModeBar::AddMode(const QString& text, const QString& hint, int runMode) {
    QAction* action = addAction(text);
    action->setCheckable(true);
    action->setToolTip(hint);
    action->setStatusTip(hint);
    action->setData(runMode);
    modes_->addAction(action);
    connect(action, &QAction::triggered, this, [this, runMode] { Choose(runMode); });
}

void ModeBar::ShowLayers() {
    layers_->clear();
    CDigMem& store = map_.Control().store;
    for (const DigIndex& entry : store.Index()) {
        const LayerDef& layer = store.Layer(entry.layer);
        if (layer.code.Empty() || layer.layType == kLayText || layer.layType == kLayMesh) continue;
        const DigBlock& block = store.Block(entry.block);
        const QString code = ToQString(layer.code.View());
        const QString name = ToQString(layer.layerName.View());
        layers_->addItem((name.isEmpty() ? code : name) + QStringLiteral(" / %1").arg(block.meshNo),
                         QVariantList{QByteArray(layer.code.CStr()), block.meshNo});
    }
}

void ModeBar::Choose(int runMode) {
    // A tool that runs shows its feature again first; starting another would leave it hidden.
    if (map_.RunMode() >= kRunAddEdit) map_.Call("OrvCancelOrgEdit");
    if (runMode == kRunAddEdit) {
        Draw();
    } else if (runMode > kRunAddEdit) {
        map_.Call("OrvDatEditor", {QString(), 0, 0, runMode});
    } else {
        map_.SetRunMode(runMode);
    }
    map_.setFocus();
    Sync();
}

void ModeBar::Draw() {
    const QVariantList key = layers_->currentData().toList();
    if (key.size() == 2) map_.Call("OrvDatEditor", {key[0], key[1], 0, kRunAddEdit});
}

void ModeBar::Sync() {
    int runMode = map_.RunMode();
    if (runMode == kRunAddCollect) runMode = kRunAddEdit;
    for (QAction* action : modes_->actions()) action->setChecked(action->data().toInt() == runMode);
}

}  // namespace orvane
