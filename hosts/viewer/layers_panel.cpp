#include "hosts/viewer/layers_panel.h"

#include <QHeaderView>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <algorithm>
#include <set>
#include <utility>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/field_undo.h"
#include "hosts/viewer/layer_presets.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

enum Column { kName, kSelect, kEdit };
constexpr int kCode = Qt::UserRole;          // QByteArray
constexpr int kSubLayNo = Qt::UserRole + 1;  // no value for the layer itself

constexpr int kColor = Qt::UserRole + 2;  // that of the icon

// In changes of looks, as in the calls, this number is that of the layer itself.
constexpr std::int32_t kLayerItself = 0;

QVariant NumberOf(const LayersPanel::Row& row) { return row.subLayNo ? QVariant(*row.subLayNo) : QVariant(); }

std::optional<std::int32_t> SubLayerOf(const QTreeWidgetItem* item) {
    const QVariant number = item == nullptr ? QVariant() : item->data(kName, kSubLayNo);
    return number.isValid() ? std::optional(number.toInt()) : std::nullopt;
}

Qt::CheckState Checked(bool on) { return on ? Qt::Checked : Qt::Unchecked; }

bool HasRows(QTreeWidget& list, const std::vector<LayersPanel::Row>& rows) {
    QTreeWidgetItemIterator item(&list);
    for (const LayersPanel::Row& row : rows) {
        if (*item == nullptr) return false;
        const QTreeWidgetItem& shown = **item;
        if (shown.data(kName, kCode) != row.code || SubLayerOf(&shown) != row.subLayNo) return false;
        ++item;
    }
    return *item == nullptr;
}

void FillRow(QTreeWidgetItem& item, const LayersPanel::Row& row) {
    if (item.text(kName) != row.text) {
        item.setText(kName, row.text);
        item.setToolTip(kName, row.text);
    }
    if (item.data(kName, kColor) != row.color) {
        item.setData(kName, kColor, row.color);
        item.setIcon(kName, ColorIcon(row.color));
    }
    item.setCheckState(kName, Checked(row.shown));
    if (row.subLayNo) return;
    item.setCheckState(kSelect, Checked(row.active));
    item.setCheckState(kEdit, Checked(row.editable));
}

int CountOfSubLayer(CDigMem& store, const LayerDef& layer, std::int32_t subLayNo) {
    int count = 0;
    for (const DigIndex& entry : store.Index()) {
        if (entry.layer >= store.LayerCnt() || &store.Layer(entry.layer) != &layer) continue;
        for (const DigDat& dat : store.Block(entry.block).dats) count += dat.subLayNo == subLayNo;
    }
    return count;
}

/// Layers from the one drawn last to the one drawn first, each before its sub layers.
std::vector<LayersPanel::Row> RowsOf(CDigMem& store) {
    std::vector<LayersPanel::Row> rows;
    for (const std::int32_t pos : DrawnLayers(store)) {
        const LayerDef& layer = store.Layer(pos);
        if (layer.code.Empty()) continue;
        const QByteArray bytes(layer.code.CStr());
        const QString code = ToQString(layer.code.View());
        const QString name = ToQString(layer.layerName.View());
        const QString words = name.isEmpty() || name == code ? code : code + ' ' + name;
        rows.push_back({bytes, std::nullopt, QStringLiteral("%1  (%2)").arg(words, LayerTypeName(layer.layType)), layer.color,
                        layer.dspFlg != 0, layer.actFlg != 0, layer.editFlg != 0});
        for (const SubLayDef& sub : layer.subLays) {
            const QString text = QStringLiteral("%1  %2").arg(sub.subLayNo).arg(ToQString(sub.layerName.View()));
            rows.push_back({bytes, sub.subLayNo, text, sub.color, sub.dspFlg != 0});
        }
    }
    return rows;
}

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
    scroll->setFocusPolicy(Qt::NoFocus);  // the keyboard is for the fields in it
    // All fields show at once where there is room, and the list has the rest.
    list_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    scroll->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    column->addWidget(scroll);
    setWidget(page);
    connect(list_, &QTreeWidget::itemChanged, this, &LayersPanel::OnSwitch);
    connect(list_, &QTreeWidget::currentItemChanged, this, &LayersPanel::OnChoice);
    // A field here changes the map with each entry, and has nothing of its own to take back but what is half typed.
    LetMapUndo(*looks_, [](const QWidget&) { return false; });
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

// A click on the map changes nothing here, and the operator's place in the list is not to be lost by what does.
void LayersPanel::ShowLayers() {
    const std::vector<Row> rows = RowsOf(map_.Control().store);
    filling_ = true;
    if (!HasRows(*list_, rows)) MakeRows(rows);
    QTreeWidgetItemIterator item(list_);
    for (const Row& row : rows) {
        FillRow(**item, row);
        ++item;
    }
    filling_ = false;
    OnChoice();
}

void LayersPanel::MakeRows(const std::vector<Row>& rows) {
    std::set<QByteArray> closed;
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = list_->topLevelItem(i);
        if (item->childCount() > 0 && !item->isExpanded()) closed.insert(item->data(kName, kCode).toByteArray());
    }
    const QByteArray chosen = QByteArray::fromStdString(ChosenCode());
    const std::optional<std::int32_t> chosenSub = ChosenSubLayer();
    const int scrolled = list_->verticalScrollBar()->value();
    const bool wasInSight = list_->viewport()->rect().intersects(list_->visualItemRect(list_->currentItem()));
    list_->clear();
    QTreeWidgetItem* layer = nullptr;
    QTreeWidgetItem* current = nullptr;
    for (const Row& row : rows) {
        auto* item = !row.subLayNo || layer == nullptr ? new QTreeWidgetItem(list_) : new QTreeWidgetItem(layer);
        if (!row.subLayNo) layer = item;
        item->setData(kName, kCode, row.code);
        item->setData(kName, kSubLayNo, NumberOf(row));
        const bool isChosen = row.code == chosen && (!row.subLayNo || row.subLayNo == chosenSub);
        if (isChosen) current = item;
    }
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = list_->topLevelItem(i);
        item->setExpanded(!closed.contains(item->data(kName, kCode).toByteArray()));
    }
    list_->setCurrentItem(current != nullptr ? current : list_->topLevelItem(0));
    list_->doItemsLayout();
    list_->verticalScrollBar()->setValue(scrolled);
    if (wasInSight && list_->currentItem() != nullptr) list_->scrollToItem(list_->currentItem());
}

std::string LayersPanel::ChosenCode() const {
    const QTreeWidgetItem* item = list_->currentItem();
    return item == nullptr ? std::string() : item->data(kName, kCode).toByteArray().toStdString();
}

std::optional<std::int32_t> LayersPanel::ChosenSubLayer() const { return SubLayerOf(list_->currentItem()); }

bool LayersPanel::IsRefused() {
    if (ChosenSubLayer() != kLayerItself) return false;
    TellOfNumber();
    return true;
}

// Other programs give sub layers this number, and a change of it would be one of the whole layer.
void LayersPanel::TellOfNumber() {
    QMessageBox::warning(window(), "ORVANE4",
                         tr("This sub layer stays as it is: its number is 0, which stands for the layer itself, so that a "
                            "change would be one of the whole layer."));
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
    if (layer == nullptr || ChosenSubLayer() == kLayerItself) {
        looks_->ShowNothing();
    } else {
        looks_->Show(map_.Control().store, layer->layType, Unchanged(*layer, ChosenSubLayer().value_or(kLayerItself)).before);
    }
}

// The change may make the list's items anew, so they must not be touched afterwards.
void LayersPanel::OnSwitch(QTreeWidgetItem* item, int column) {
    if (filling_) return;
    const CDigMem& store = map_.Control().store;
    const std::int32_t pos = store.FindLayDef(item->data(kName, kCode).toByteArray().toStdString());
    if (pos < 0) return;
    const Switch what = column == kSelect ? Switch::Selectable : column == kEdit ? Switch::Editable : Switch::Shown;
    Put(store.Layer(pos), SubLayerOf(item), what, item->checkState(column) == Qt::Checked);
}

void LayersPanel::Put(const LayerDef& layer, std::optional<std::int32_t> subLayNo, Switch what, bool on) {
    if (subLayNo == kLayerItself) {
        const auto refuse = [this] {
            ShowLayers();  // its box is as it was
            TellOfNumber();
        };
        QMetaObject::invokeMethod(this, refuse, Qt::QueuedConnection);
        return;
    }
    LayerChange change = Unchanged(layer, subLayNo.value_or(kLayerItself));
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
    const std::optional<std::int32_t> subLayNo = ChosenSubLayer();
    const SubLayDef* sub = subLayNo ? CDigMem::FindSubLay(*layer, *subLayNo) : nullptr;
    if (what == Switch::Shown) return (sub != nullptr ? sub->dspFlg : layer->dspFlg) != 0;
    return (what == Switch::Selectable ? layer->actFlg : layer->editFlg) != 0;
}

// The boxes of a row are the mouse's: the keyboard marks whole rows, and opens and closes them with Left and Right.
void LayersPanel::Turn(Switch what) {
    const LayerDef* layer = ChosenLayer();
    if (layer != nullptr) Put(*layer, what == Switch::Shown ? ChosenSubLayer() : std::nullopt, what, !IsOn(what));
}

void LayersPanel::OnEdited(const LayerState& state) {
    const LayerDef* layer = ChosenLayer();
    if (layer == nullptr || IsRefused()) return;
    LayerChange change = Unchanged(*layer, ChosenSubLayer().value_or(kLayerItself));
    change.after = state;
    history_.ChangeLayers(tr("look of a layer"), {change});
}

void LayersPanel::Move(bool up) {
    CDigMem& store = map_.Control().store;
    const std::vector<std::int32_t> order = DrawnLayers(store);
    const auto at = std::find(order.begin(), order.end(), store.FindLayDef(ChosenCode()));
    if (at == order.end() || (up ? at == order.begin() : at + 1 == order.end())) return;
    GiveOwnKeys(map_);  // layers of a file may share theirs
    LayerChange moved = Unchanged(store.Layer(*at));
    LayerChange other = Unchanged(store.Layer(up ? *(at - 1) : *(at + 1)));
    std::swap(moved.after.key, other.after.key);
    history_.ChangeLayers(tr("order of the layers"), {std::move(moved), std::move(other)});
}

void LayersPanel::Rename(const QString& name) {
    const LayerDef* layer = ChosenLayer();
    const std::optional<std::string> bytes = EncodeCp932(name.toStdString());
    if (layer == nullptr || !bytes || IsRefused()) return;
    LayerChange change = Unchanged(*layer, ChosenSubLayer().value_or(kLayerItself));
    change.after.name = *bytes;
    history_.ChangeLayers(tr("name of a layer"), {change});
}

void LayersPanel::RemoveLayer() {
    const LayerDef* layer = ChosenLayer();
    if (layer == nullptr || IsRefused()) return;
    if (const std::optional<std::int32_t> sub = ChosenSubLayer()) return RemoveSubLayer(*layer, *sub);
    if (history_.RemoveLayer(tr("removing a layer"), ChosenCode())) return;
    QMessageBox::warning(window(), "ORVANE4",
                         tr("Two parts of this layer have the same group, so it could not be brought back. It stays; delete its "
                            "features instead."));
}

void LayersPanel::RemoveSubLayer(const LayerDef& layer, std::int32_t subLayNo) {
    const int users = CountOfSubLayer(map_.Control().store, layer, subLayNo);
    std::set<std::int32_t> numbers;
    for (const SubLayDef& sub : layer.subLays) numbers.insert(sub.subLayNo);
    if (users > 0) {
        QMessageBox::warning(
            window(), "ORVANE4",
            tr("This sub layer stays: %n feature(s) have it. Give them another one in their form first (F4).", nullptr, users));
    } else if (numbers.size() != layer.subLays.size()) {
        QMessageBox::warning(window(), "ORVANE4",
                             tr("Sub layers of this layer share a number, so none could be brought back as it was. They stay; "
                                "hide what is not to be seen by its box."));
    } else {
        history_.RemoveSubLayer(tr("removing a sub layer"), std::string(layer.code.View()), subLayNo);
    }
}

bool LayersPanel::MakeLayer(const QString& code, std::int32_t layType, std::int32_t group) {
    const std::optional<std::string> bytes = EncodeCp932(code.toStdString());
    if (!bytes || !history_.MayEdit()) return false;
    // They are those of the layers without the new one, and it gets one over them all, but what is not made moves no key.
    CDigMem& before = map_.Control().store;
    const std::vector<LayerChange> keys = OwnKeys(before);
    constexpr std::int32_t kOverOwnKeys = 0;  // which begin with 1
    BlockCopy block;
    block.key = {*bytes, group};
    block.layType = layType;
    block.layIndex = keys.empty() ? KeyOverAll(before) : kOverOwnKeys;
    std::vector<LayerRecord> records = RecordsOf(map_.Control().store, {&*bytes, 1});
    if (!MakeEmptyBlock(map_, block)) return false;
    GiveKeys(map_, keys, true);
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
