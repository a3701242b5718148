#include "hosts/viewer/layers_panel.h"

#include <QHeaderView>
#include <QMessageBox>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/layer_presets.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

enum Column { kName, kSelect, kEdit };
constexpr int kCode = Qt::UserRole;          // QByteArray
constexpr int kSubLayNo = Qt::UserRole + 1;  // 0 for the layer itself

Qt::CheckState Checked(bool on) { return on ? Qt::Checked : Qt::Unchecked; }

}  // namespace

LayersPanel::LayersPanel(OrvaneWidget& map, EditHistory& history, QWidget* parent)
    : QDockWidget(tr("Layers"), parent), map_(map), history_(history), list_(new QTreeWidget), looks_(new LookEditor) {
    setObjectName("layers");
    list_->setHeaderLabels({tr("Layer"), tr("Select"), tr("Edit")});
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(kName, QHeaderView::Stretch);
    list_->header()->setSectionResizeMode(kSelect, QHeaderView::ResizeToContents);
    list_->header()->setSectionResizeMode(kEdit, QHeaderView::ResizeToContents);
    list_->setAccessibleName(tr("Layers, the topmost first"));
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addWidget(list_, 1);
    auto* row = new QHBoxLayout;
    MakeButtons(*row);
    column->addLayout(row);
    auto* scroll = new QScrollArea;  // a low window must not be made higher by the form
    scroll->setWidget(looks_);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    // All fields show at once where there is room, and the list has the rest.
    list_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    scroll->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    column->addWidget(scroll);
    setWidget(page);
    connect(list_, &QTreeWidget::itemChanged, this, &LayersPanel::OnSwitch);
    connect(list_, &QTreeWidget::currentItemChanged, this, &LayersPanel::OnChoice);
    connect(looks_, &LookEditor::Edited, this, &LayersPanel::OnEdited);
}

void LayersPanel::MakeButtons(QBoxLayout& row) {
    const auto button = [&](const QString& text, const QString& hint, auto work) {
        auto* made = new QToolButton;
        made->setText(text);
        made->setToolTip(hint);
        made->setAccessibleName(hint);
        made->setFocusPolicy(Qt::TabFocus);
        connect(made, &QToolButton::clicked, this, work);
        row.addWidget(made);
        return made;
    };
    button(QStringLiteral("▲"), tr("Draw the layer over the one above it in the list"), [this] { Move(true); });
    button(QStringLiteral("▼"), tr("Draw the layer under the one below it in the list"), [this] { Move(false); });
    button(tr("New…"), tr("Make a new layer"), [this] { AskNewLayer(); });
    button(tr("Sub layer…"), tr("Give features of the layer another look by a number"), [this] { AskNewSubLayer(); });
    auto* presets = button(tr("Looks"), tr("Looks for all layers, to begin with"), [] {});
    auto* menu = new QMenu(presets);
    FillPresetMenu(*menu);
    presets->setMenu(menu);
    presets->setPopupMode(QToolButton::InstantPopup);
    row.addStretch();
}

void LayersPanel::FillPresetMenu(QMenu& menu) {
    for (const LayerPreset& preset : LayerPresets()) {
        menu.addAction(preset.name, this, [this, make = preset.make, name = preset.name] {
            history_.ChangeLayers(tr("look: %1").arg(name), make(map_.Control().store));
        });
    }
}

std::vector<std::int32_t> LayersPanel::Order() const {
    CDigMem& store = map_.Control().store;
    const std::set<std::int32_t> withData = LayersWithData(store);
    std::vector<std::int32_t> order(withData.begin(), withData.end());
    // The greatest key is drawn first, so the smallest stands at the top of the list; of equal ones the later layer is drawn
    // last.
    std::stable_sort(order.begin(), order.end(), [&](std::int32_t a, std::int32_t b) {
        return store.Layer(a).layIndex != store.Layer(b).layIndex ? store.Layer(a).layIndex < store.Layer(b).layIndex : a > b;
    });
    return order;
}

void LayersPanel::ShowLayers() {
    const std::string chosen = ChosenCode();
    const std::int32_t chosenSub = ChosenSubLayer();
    filling_ = true;
    list_->clear();
    QTreeWidgetItem* current = nullptr;
    for (const std::int32_t pos : Order()) {
        const LayerDef& layer = map_.Control().store.Layer(pos);
        if (layer.code.Empty()) continue;
        const QString code = ToQString(layer.code.View());
        const QString layerName = ToQString(layer.layerName.View());
        const QString name = layerName == code ? QString() : layerName;
        auto* item = new QTreeWidgetItem(list_);
        item->setText(
            kName, QStringLiteral("%1  (%2)").arg(name.isEmpty() ? code : code + ' ' + name).arg(LayerTypeName(layer.layType)));
        item->setToolTip(kName, item->text(kName));
        item->setIcon(kName, ColorIcon(layer.color));
        item->setData(kName, kCode, QByteArray(layer.code.CStr()));
        item->setData(kName, kSubLayNo, 0);
        item->setCheckState(kName, Checked(layer.dspFlg != 0));
        item->setCheckState(kSelect, Checked(layer.actFlg != 0));
        item->setCheckState(kEdit, Checked(layer.editFlg != 0));
        AddSubLayers(*item, layer);
        if (layer.code.View() != chosen) continue;
        current = item;
        for (int i = 0; i < item->childCount(); ++i) {
            if (item->child(i)->data(kName, kSubLayNo).toInt() == chosenSub && chosenSub != 0) current = item->child(i);
        }
    }
    list_->expandAll();
    list_->setCurrentItem(current != nullptr ? current : list_->topLevelItem(0));
    filling_ = false;
    OnChoice();
}

void LayersPanel::AddSubLayers(QTreeWidgetItem& item, const LayerDef& layer) {
    for (const SubLayDef& sub : layer.subLays) {
        auto* child = new QTreeWidgetItem(&item);
        child->setText(kName, QStringLiteral("%1  %2").arg(sub.subLayNo).arg(ToQString(sub.layerName.View())));
        child->setIcon(kName, ColorIcon(sub.color));
        child->setData(kName, kCode, QByteArray(layer.code.CStr()));
        child->setData(kName, kSubLayNo, sub.subLayNo);
        child->setCheckState(kName, Checked(sub.dspFlg != 0));
    }
}

std::string LayersPanel::ChosenCode() const {
    const QTreeWidgetItem* item = list_->currentItem();
    return item == nullptr ? std::string() : item->data(kName, kCode).toByteArray().toStdString();
}

std::int32_t LayersPanel::ChosenSubLayer() const {
    const QTreeWidgetItem* item = list_->currentItem();
    return item == nullptr ? 0 : item->data(kName, kSubLayNo).toInt();
}

void LayersPanel::Choose(const std::string& code) {
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = list_->topLevelItem(i);
        if (item->data(kName, kCode).toByteArray().toStdString() == code) list_->setCurrentItem(item);
    }
}

const LayerDef* LayersPanel::ChosenLayer() const {
    const CDigMem& store = map_.Control().store;
    const std::int32_t pos = store.FindLayDef(ChosenCode());
    return pos < 0 ? nullptr : &store.Layer(pos);
}

void LayersPanel::OnChoice() {
    if (filling_) return;
    const LayerDef* layer = ChosenLayer();
    if (layer == nullptr) {
        looks_->ShowNothing();
    } else {
        looks_->Show(map_.Control().store, layer->layType, Unchanged(*layer, ChosenSubLayer()).before);
    }
}

// The list is filled anew by what the change brings about, so its items must not be touched afterwards.
void LayersPanel::OnSwitch(QTreeWidgetItem* item, int column) {
    if (filling_) return;
    const CDigMem& store = map_.Control().store;
    const std::int32_t pos = store.FindLayDef(item->data(kName, kCode).toByteArray().toStdString());
    if (pos < 0) return;
    const Switch what = column == kSelect ? Switch::Selectable : column == kEdit ? Switch::Editable : Switch::Shown;
    Put(store.Layer(pos), item->data(kName, kSubLayNo).toInt(), what, item->checkState(column) == Qt::Checked);
}

void LayersPanel::Put(const LayerDef& layer, std::int32_t subLayNo, Switch what, bool on) {
    LayerChange change = Unchanged(layer, subLayNo);
    QString text = on ? tr("showing a layer") : tr("hiding a layer");
    if (what == Switch::Shown) change.after.shown = on;
    if (what == Switch::Selectable) change.after.active = on;
    if (what == Switch::Editable) change.after.editable = on;
    if (what != Switch::Shown) text = tr("switch of a layer");
    QMetaObject::invokeMethod(
        this, [this, text, change] { history_.ChangeLayers(text, {change}); }, Qt::QueuedConnection);
}

bool LayersPanel::IsOn(Switch what) const {
    const LayerDef* layer = ChosenLayer();
    if (layer == nullptr) return false;
    if (what == Switch::Shown) return Unchanged(*layer, ChosenSubLayer()).before.shown;
    return (what == Switch::Selectable ? layer->actFlg : layer->editFlg) != 0;
}

// The boxes of a row are the mouse's: the keyboard marks whole rows, and opens and closes them with Left and Right.
void LayersPanel::Turn(Switch what) {
    const LayerDef* layer = ChosenLayer();
    if (layer != nullptr) Put(*layer, what == Switch::Shown ? ChosenSubLayer() : 0, what, !IsOn(what));
}

void LayersPanel::OnEdited(const LayerState& state) {
    const LayerDef* layer = ChosenLayer();
    if (layer == nullptr) return;
    LayerChange change = Unchanged(*layer, ChosenSubLayer());
    change.after = state;
    history_.ChangeLayers(tr("look of a layer"), {change});
}

void LayersPanel::Move(bool up) {
    const CDigMem& store = map_.Control().store;
    std::vector<std::int32_t> order = Order();
    const std::int32_t chosen = store.FindLayDef(ChosenCode());
    const auto at = std::find(order.begin(), order.end(), chosen);
    if (at == order.end() || (up ? at == order.begin() : at + 1 == order.end())) return;
    std::iter_swap(at, up ? at - 1 : at + 1);
    // Keys are spread anew, because layers of a file may share theirs.
    std::vector<LayerChange> changes;
    std::int32_t key = 1;
    for (const std::int32_t pos : order) {
        LayerChange change = Unchanged(store.Layer(pos));
        change.after.key = key++;
        changes.push_back(std::move(change));
    }
    history_.ChangeLayers(tr("order of the layers"), std::move(changes));
}

void LayersPanel::Rename(const QString& name) {
    const LayerDef* layer = ChosenLayer();
    const std::optional<std::string> bytes = EncodeCp932(name.toStdString());
    if (layer == nullptr || !bytes) return;
    LayerChange change = Unchanged(*layer, ChosenSubLayer());
    change.after.name = *bytes;
    history_.ChangeLayers(tr("name of a layer"), {change});
}

void LayersPanel::RemoveLayer() {
    if (ChosenLayer() == nullptr || history_.RemoveLayer(tr("removing a layer"), ChosenCode())) return;
    QMessageBox::warning(window(), "ORVANE4",
                         tr("Two parts of this layer have the same group, so it could not be brought back. It stays; delete its "
                            "features instead."));
}

bool LayersPanel::MakeLayer(const QString& code, std::int32_t layType, std::int32_t group) {
    const std::optional<std::string> bytes = EncodeCp932(code.toStdString());
    if (!bytes || !history_.MayEdit()) return false;
    BlockCopy block;
    block.key = {*bytes, group};
    block.layType = layType;
    block.layIndex = 1;
    std::vector<LayerRecord> records = RecordsOf(map_.Control().store, {&*bytes, 1});
    if (!MakeEmptyBlock(map_, block)) return false;
    // The record may be that of a layer that was removed, and nothing of it is meant.
    const CDigMem& store = map_.Control().store;
    LayerChange change = Unchanged(store.Layer(store.FindLayDef(*bytes)));
    change.after = LayerState{};
    change.after.key = block.layIndex;
    change.after.noOutline = true;  // as the control makes a layer
    change.after.color = 0x3060C0;
    WriteLayerStates(map_, {&change, 1}, true);
    history_.NoteBlocks(tr("making a layer"), {block.key}, std::move(records));
    ShowLayers();
    Choose(*bytes);
    return true;
}

bool LayersPanel::MakeSubLayer(std::int32_t subLayNo, const QString& name) {
    const LayerDef* layer = ChosenLayer();
    const std::optional<std::string> bytes = EncodeCp932(name.toStdString());
    if (layer == nullptr || !bytes || subLayNo == 0 || CDigMem::FindSubLay(*layer, subLayNo) != nullptr) return false;
    LayerChange change = Unchanged(*layer);
    change.subLayNo = subLayNo;
    change.after.name = *bytes;
    WriteLayerStates(map_, {&change, 1}, true);
    layer = ChosenLayer();
    if (layer == nullptr || CDigMem::FindSubLay(*layer, subLayNo) == nullptr) return false;
    history_.NoteSubLayers(tr("making a sub layer"), {change});
    ShowLayers();
    return true;
}

}  // namespace orvane
