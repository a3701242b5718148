#include "hosts/viewer/mode_bar.h"

#include <QAction>
#include <QLabel>
#include <algorithm>
#include <span>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/map_keys.h"
#include "hosts/viewer/quiet_wheel.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/tool_figure.h"
#include "select/active_items.h"
#include "select/pick.h"

namespace orvane {

namespace {

constexpr short kLeftButton = 1;

/// Whether texts of a text layer may be in sight.
bool ShowsTexts(CDigMem& store) {
    const std::span<const DigIndex> drawn = store.Index();
    return std::any_of(drawn.begin(), drawn.end(), [&](const DigIndex& entry) {
        const LayerDef& layer = store.Layer(entry.layer);
        return layer.layType == kLayText && layer.dspFlg != 0 && store.Block(entry.block).datCnt > 0;
    });
}

}  // namespace

ModeBar::ModeBar(OrvaneWidget& map, EditHistory& history, QWidget* parent)
    : QToolBar(tr("Mode"), parent),
      map_(map),
      history_(history),
      modes_(new QActionGroup(this)),
      layers_(new QComboBox(this)),
      keepDrawing_(new QAction(tr("Keep dra&wing"), this)) {
    setObjectName("mode");
    setMovable(false);
    AddMode(tr("Select"),
            tr("Click selects, Shift steps through a stack, Ctrl toggles; drag selects what lies in the rectangle."), Qt::Key_S,
            kRunNormal);
    AddMode(tr("Pan"), tr("Hold the left button and move."), Qt::Key_P, kRunPan);
    addSeparator();
    AddMode(tr("Draw"), tr("Click the points of a new feature of the layer beside; a double click ends a line or an area."),
            Qt::Key_D, kRunAddEdit);
    layers_->setToolTip(tr("The layer that new features go to"));
    layers_->setAccessibleName(layers_->toolTip());
    // Long names do not make the bar wider; the open list shows them whole.
    layers_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    layers_->setMinimumContentsLength(8);
    layers_->setFocusPolicy(Qt::TabFocus);
    // The bar is narrower than many a name.
    connect(layers_, &QComboBox::currentTextChanged, this, [this](const QString& layer) {
        layers_->setToolTip(layers_->accessibleName() + (layer.isEmpty() ? QString() : ": " + layer));
    });
    addWidget(layers_);
    KeepWheelFromFields(*this);
    AddMode(tr("Move points"), tr("Click a feature, then a vertex, then its new place; a click beside the feature ends."),
            Qt::Key_V, kRunEditPntMove);
    AddMode(tr("Add points"), tr("Click a feature, then where new vertices go; a double click ends."), Qt::Key_A, kRunEditPntAdd);
    AddMode(tr("Delete points"), tr("Click a feature, then its vertices; a click beside the feature ends."), Qt::Key_X,
            kRunEditPntDel);
    AddMode(tr("Move"), tr("Click a feature, then its new place."), Qt::Key_M, kRunMoveDat);
    AddMode(tr("Copy"), tr("Click a feature, then the place of its copy."), Qt::Key_C, kRunCopyDat);
    AddMode(tr("Delete"), tr("Click the feature to delete."), Qt::Key_K, kRunDeleteDat);
    modes_->actions().constFirst()->setChecked(true);
    AddKeepDrawing();

    const auto syncLater = [this] {
        QMetaObject::invokeMethod(
            this, [this] { Sync(); }, Qt::QueuedConnection);
    };
    const auto noteWork = [this] { toolWorked_ = true; };
    connect(&map_, &OrvaneWidget::OnEditorStart, this, noteWork);
    connect(&map_, &OrvaneWidget::OnEditorEnd, this, noteWork);
    connect(&map_, &OrvaneWidget::OnEditorEnd, this, syncLater);
    connect(&map_, &OrvaneWidget::MouseUp, this, syncLater);
    connect(&map_, &OrvaneWidget::MouseDown, this, [this](short button, short, int x, int y) {
        if (button == kLeftButton) TellRefusal({x, y});
        toolWorked_ = false;
    });
}

void ModeBar::AddMode(const QString& text, const QString& hint, const QKeySequence& key, int runMode) {
    QAction* action = addAction(text);
    action->setCheckable(true);
    action->setShortcut(key);
    LetMapHaveKeys(map_, *action);
    action->setToolTip(hint + "  [" + key.toString(QKeySequence::NativeText) + ']');
    action->setStatusTip(hint);
    action->setData(runMode);
    modes_->addAction(action);
    connect(action, &QAction::triggered, this, [this, runMode] { Choose(runMode); });
}

void ModeBar::AddKeepDrawing() {
    keepDrawing_->setObjectName("Keep drawing");
    keepDrawing_->setCheckable(true);
    keepDrawing_->setChecked(Settings().value("keepDrawing", false).toBool());
    keepDrawing_->setShortcut(Qt::SHIFT | Qt::Key_D);
    keepDrawing_->setStatusTip(tr("After a figure or text the next one of the same layer is begun; Escape ends."));
    LetMapHaveKeys(map_, *keepDrawing_);
    connect(keepDrawing_, &QAction::toggled, this, [](bool on) { Settings().setValue("keepDrawing", on); });
    connect(&map_, &OrvaneWidget::OnEditorEnd, this, [this](const QString&, int, int, int, int editType) {
        if (editType == kRunAddEdit) QMetaObject::invokeMethod(this, &ModeBar::DrawNext, Qt::QueuedConnection);
    });
}

void ModeBar::DrawNext() {
    if (!keepDrawing_->isChecked() || !mayEdit_ || map_.RunMode() >= kRunAddEdit) return;
    Draw();
    Sync();
}

void ModeBar::ShowLayers() {
    const QVariant chosen = layers_->currentData();
    layers_->clear();
    CDigMem& store = map_.Control().store;
    for (const DigIndex& entry : store.Index()) {
        const LayerDef& layer = store.Layer(entry.layer);
        if (layer.code.Empty() || layer.layType == kLayMesh) continue;
        const DigBlock& block = store.Block(entry.block);
        const QString code = ToQString(layer.code.View());
        const QString name = ToQString(layer.layerName.View());
        layers_->addItem((name.isEmpty() ? code : name) + QStringLiteral(" / %1").arg(block.meshNo),
                         QVariantList{QByteArray(layer.code.CStr()), block.meshNo});
        if (layers_->itemData(layers_->count() - 1) == chosen) layers_->setCurrentIndex(layers_->count() - 1);
    }
}

void ModeBar::ChooseLayer(const std::string& code, std::int32_t meshNo) {
    for (int i = 0; i < layers_->count(); ++i) {
        if (layers_->itemData(i).toList() == QVariantList{QByteArray::fromStdString(code), meshNo}) layers_->setCurrentIndex(i);
    }
}

void ModeBar::LetEdit(bool on) {
    mayEdit_ = on;
    for (QAction* action : modes_->actions()) action->setEnabled(on || action->data().toInt() < kRunAddEdit);
    layers_->setEnabled(on);
}

void ModeBar::FillMenu(QMenu& menu) {
    for (QAction* action : modes_->actions()) menu.addAction(action);
    menu.addAction(keepDrawing_);
}

void ModeBar::OpenLayerList() {
    layers_->setFocus();
    layers_->showPopup();
}

void ModeBar::Choose(int runMode) {
    if (runMode == kRunAddEdit) {
        Draw();
    } else if (runMode > kRunAddEdit) {
        history_.StartTool(runMode);
    } else {
        history_.CancelTool();
        map_.SetRunMode(runMode);
    }
    toolWorked_ = false;  // the end of the tool before was told, too
    map_.setFocus();
    Sync();
}

void ModeBar::Draw() {
    const QVariantList key = layers_->currentData().toList();
    if (key.size() != 2) {
        emit Said(tr("There is no layer to draw in. Make one first: Edit, New layer."));
        return;
    }
    const ItemKey block{key[0].toByteArray().toStdString(), key[1].toInt(), 0};
    const QString why = WhatIsInTheWay(block);
    if (!why.isEmpty()) {
        emit Said(why);
        return;
    }
    const CDigMem& store = map_.Control().store;
    if (store.Layer(store.FindLayDef(block.code)).layType == kLayText) {
        history_.CancelTool();
        emit TextAskedFor(block);
    } else if (!history_.StartTool(kRunAddEdit, block)) {
        emit Said(tr("Nothing can be drawn now: there is no room for another figure."));
    }
}

// The control's tool draws in any layer; the boxes in the list of layers are the operator's word.
QString ModeBar::WhatIsInTheWay(const ItemKey& block) const {
    const CDigMem& store = map_.Control().store;
    const std::int32_t layer = store.FindLayDef(block.code);
    if (layer < 0 || store.Layer(layer).editFlg == 0) {
        return tr("Nothing can be drawn in this layer: it is not for editing. Its box \"Edit\" in the list of layers lets you.");
    }
    if (store.Layer(layer).dspFlg == 0) {
        return tr("Nothing can be drawn in this layer: it is hidden. The box before its name in the list of layers shows it.");
    }
    if (block.meshNo < 0 && store.Layer(layer).layType != kLayText) {
        return tr("Nothing can be drawn in group %1: tools take no group below 0. Choose another group or layer.")
            .arg(block.meshNo);
    }
    return {};
}

void ModeBar::TellRefusal(Point at) {
    COrvane4Ctrl& ctrl = map_.Control();
    if (ctrl.runMode <= kRunAddCollect || HasFigure(map_)) return;
    // A pick makes what it met the only selected feature.
    const FoundItem met = FirstActive(ctrl.store);
    DatInfo info;
    if (!met.Found()) return TellMiss(at);
    if (!ctrl.store.GetDigDatInfoEx(met.code.View(), met.meshNo, met.datID, info)) return;
    if (info.cnt > kMaxEditPnt) {
        emit Said(tr("This feature has %1 points, and tools take up no more than %2. The Delete key works on it.")
                      .arg(info.cnt)
                      .arg(kMaxEditPnt));
    } else if (ctrl.runMode == kRunEditPntAdd || ctrl.runMode == kRunEditPntDel) {
        emit Said(tr("Points are added to and taken from lines and areas alone."));
    }
}

// Tools pick by the boxes of layers; the pick of the hint meets what the map shows whatever they say.
void ModeBar::TellMiss(Point at) {
    if (toolWorked_) return;
    const COrvane4Ctrl& ctrl = map_.Control();
    CDigMem& store = map_.Control().store;
    const PickPlace place{map_.Control().window().ClientRect(), ctrl.viewX, ctrl.viewY, ctrl.devOffX, ctrl.devOffY};
    const FoundItem there = PickForHint(store, at, place);
    const std::int32_t pos = there.Found() ? store.FindLayDef(there.code.View()) : -1;
    const bool isOff = pos >= 0 && (store.Layer(pos).editFlg == 0 || store.Layer(pos).actFlg == 0);
    if (!isOff) {
        const QString texts = ShowsTexts(store) ? ' ' + tr("Clicks do not meet the texts of text layers: Ctrl+F finds them, and "
                                                           "the form (F4) changes them.")
                                                : QString();
        emit Said(tr("Nothing lies here that tools take up. They take features of layers that are shown and have their boxes "
                     "\"Select\" and \"Edit\" on in the list of layers.") +
                  texts);
    } else if (store.Layer(pos).editFlg == 0) {
        emit Said(tr("What lies here is of layer %1, which is not for editing. Its box \"Edit\" in the list of layers lets you.")
                      .arg(ToQString(there.code.View())));
    } else {
        emit Said(tr("What lies here is of layer %1, which tools do not pick from. Its box \"Select\" in the list of layers lets "
                     "you.")
                      .arg(ToQString(there.code.View())));
    }
}

void ModeBar::Sync() {
    int runMode = map_.RunMode();
    if (runMode == kRunAddCollect) runMode = kRunAddEdit;
    for (QAction* action : modes_->actions()) action->setChecked(action->data().toInt() == runMode);
}

}  // namespace orvane
