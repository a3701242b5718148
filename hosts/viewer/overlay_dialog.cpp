#include "hosts/viewer/overlay_dialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QMessageBox>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/selecting.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

namespace {

QString NotForEditing() {
    return OverlayDialog::tr(
        "There is no layer of areas that may be edited. The box \"Edit\" in the list of layers lets the result into a layer.");
}

/// Why the call would go past the selected areas of a block, or an empty text.
QString WhyLeftOut(const LayerDef& layer, const DigBlock& block) {
    if (block.inView == 1) return {};
    return OverlayDialog::tr(
               "Selected areas of layer %1, group %2, are out of view and would be left out. Show them first (Home shows all "
               "data), or take them out of the selection.")
        .arg(ToQString(layer.code.View()))
        .arg(block.meshNo);
}

/// Why the selection cannot be overlaid into the block, or an empty text.
QString WhatIsInTheWay(CDigMem& store, const DigBlock& target) {
    for (const ItemPlace& place : UnseenSelection(store)) {
        const LayerDef& layer = store.Layer(store.FindLayDef(place.key.code));
        if (layer.layType != kLayPolygon || layer.dspFlg == 0) continue;  // with a hidden layer they are left out
        return OverlayDialog::tr(
                   "A hidden sub layer of layer %1 has selected areas that would be taken too. Show it, and take them out of the "
                   "selection.")
            .arg(ToQString(layer.code.View()));
    }
    int areas = 0;
    for (const ItemKey& key : SelectedItems(store, static_cast<std::size_t>(-1))) {
        const DigIndex found = store.FindBlock(key.code, key.meshNo);
        if (found.block < 0 || store.Layer(found.layer).layType != kLayPolygon) continue;
        ++areas;
        const DigBlock& block = store.Block(found.block);
        const QString why = WhyLeftOut(store.Layer(found.layer), block);
        if (!why.isEmpty()) return why;
        // Coordinates are taken as they stand in the blocks.
        if (block.GX == target.GX && block.GY == target.GY) continue;
        return OverlayDialog::tr(
            "The areas lie in groups with other origins than that of the layer chosen. Choose a layer of their "
            "own group.");
    }
    return areas < 2 ? OverlayDialog::tr("Select two areas or more first.") : QString();
}

}  // namespace

QString RunOverlay(OrvaneWidget& map, EditHistory& history, Overlay what, const std::string& code, std::int32_t meshNo) {
    history.CancelTool();
    CDigMem& store = map.Control().store;
    const DigIndex found = store.FindBlock(code, meshNo);
    if (found.block < 0) return OverlayDialog::tr("Choose a layer that has areas.");
    if (store.Layer(found.layer).editFlg == 0) return NotForEditing();
    if (store.Layer(found.layer).dspFlg == 0) {
        return OverlayDialog::tr(
            "The result would not be seen in this layer: it is hidden. The box before its name in the list of layers shows it.");
    }
    const QString why = WhatIsInTheWay(store, store.Block(found.block));
    if (!why.isEmpty()) return why;
    const BlockKey block{code, meshNo};
    const std::map<BlockKey, BlockBox> bounds = BoundsOf(store, {&block, 1});
    bool cancelled = false;
    QVariantList answer;
    {
        QWidget* asking = QApplication::activeModalWidget();
        const MapWork work(map, asking != nullptr ? *asking : *map.window(), OverlayDialog::tr("Overlaying…"));
        answer = map.Call("OrvActPolygonBuffering", {static_cast<int>(what), QByteArray::fromStdString(code), meshNo}).toList();
        cancelled = work.Cancelled();
    }
    if (cancelled) return OverlayDialog::tr("Cancelled; nothing was made.");
    const QVariantList ids = answer.value(1).toList();
    if (answer.value(0).toInt() == 0 || ids.isEmpty()) {
        return OverlayDialog::tr(
            "The areas have nothing in common that could be stored. Look whether they are in view, shown, and "
            "lie over each other.");
    }
    const ItemKey made{code, meshNo, ids.front().toInt()};
    const bool merge = what == Overlay::Merge;
    const ItemPlace place{made, PositionOf(store, made)};
    history.NoteAdded(merge ? OverlayDialog::tr("merging") : OverlayDialog::tr("intersecting"), {place}, bounds);
    SelectOnly(map, {&place, 1});
    map.Call("OrvReDraw");
    return {};
}

OverlayDialog::OverlayDialog(OrvaneWidget& map, EditHistory& history, Overlay what, QWidget* parent)
    : QDialog(parent), map_(map), history_(history), what_(what), target_(new QComboBox) {
    setWindowTitle(what == Overlay::Merge ? tr("Merge the selected areas") : tr("Intersect the selected areas"));
    CDigMem& store = map_.Control().store;
    for (const DigIndex& entry : store.Index()) {
        if (store.Layer(entry.layer).layType != kLayPolygon || store.Layer(entry.layer).editFlg == 0) continue;
        const DigBlock& block = store.Block(entry.block);
        target_->addItem(QStringLiteral("%1 / %2").arg(ToQString(block.code.View())).arg(block.meshNo),
                         QVariantList{QByteArray(block.code.CStr()), block.meshNo});
    }
    auto* form = new QFormLayout(this);
    form->addRow(new QLabel(tr("The result becomes a new feature; the areas stay as they are.")));
    form->addRow(tr("Into the &layer"), target_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &OverlayDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

void OverlayDialog::accept() {
    if (WorkProgress::IsRunning()) return;
    const QVariantList key = target_->currentData().toList();
    const QString why =
        key.size() == 2 ? RunOverlay(map_, history_, what_, key[0].toByteArray().toStdString(), key[1].toInt()) : NotForEditing();
    if (why.isEmpty()) return QDialog::accept();
    QMessageBox::information(this, "ORVANE4", why);
}

}  // namespace orvane
