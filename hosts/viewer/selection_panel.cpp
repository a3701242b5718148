#include "hosts/viewer/selection_panel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QVBoxLayout>
#include <map>
#include <set>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/look_editor.h"
#include "hosts/viewer/selecting.h"

namespace orvane {

namespace {

enum Column { kLayer, kGroup, kNumber, kType, kPoints, kText };

ItemPlace PlaceOf(const QTreeWidgetItem& item) {
    const QVariantList place = item.data(kLayer, Qt::UserRole).toList();
    return {{place[0].toByteArray().toStdString(), place[1].toInt(), place[2].toInt()}, place[3].toInt()};
}

}  // namespace

SelectionPanel::SelectionPanel(OrvaneWidget& map, QWidget* parent)
    : QDockWidget(tr("Selection"), parent), map_(map), list_(new QTreeWidget), more_(new QLabel) {
    setObjectName("selection");
    list_->setHeaderLabels({tr("Layer"), tr("Group"), tr("Number"), tr("Type"), tr("Points"), tr("Text")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setAccessibleName(tr("Selected features"));
    auto* row = new QHBoxLayout;
    const auto button = [&](const QString& text, const QString& hint, auto work) {
        auto* made = new QPushButton(text);
        made->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        made->setToolTip(hint);
        connect(made, &QPushButton::clicked, this, work);
        row->addWidget(made);
    };
    button(tr("&Go there"), tr("Move the map to the feature"), [this] { JumpToCurrent(); });
    button(tr("&Only these"), tr("Select the marked features alone"), [this] { KeepMarked(); });
    button(tr("&Without these"), tr("Take the marked features out of the selection"), [this] { DropMarked(); });
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addWidget(list_);
    column->addWidget(more_);
    column->addLayout(row);
    setWidget(page);
    connect(list_, &QTreeWidget::itemActivated, this, [this] { JumpToCurrent(); });
    connect(list_, &QTreeWidget::currentItemChanged, this, &SelectionPanel::CurrentChanged);
}

void SelectionPanel::ShowSelection() {
    const std::optional<ItemPlace> current = Current();
    const std::vector<ItemPlace> markedPlaces = Marked();
    const std::set<ItemPlace> marked(markedPlaces.begin(), markedPlaces.end());
    CDigMem& store = map_.Control().store;
    const QSignalBlocker quiet(list_);
    list_->clear();
    QTreeWidgetItem* again = nullptr;
    std::vector<QTreeWidgetItem*> markedAgain;
    const std::vector<ItemPlace> places = SelectedPlaces(store, kMostRows);
    // When others come or go before it, a feature keeps its number, but not its place.
    std::map<ItemKey, int> withNumber;
    std::set<ItemKey> markedKeys;
    if (!marked.empty()) {
        for (const ItemPlace& place : places) ++withNumber[place.key];
        for (const ItemPlace& place : marked) markedKeys.insert(place.key);
    }
    for (const ItemPlace& place : places) {
        const ItemKey& key = place.key;
        const DigIndex found = store.FindBlock(key.code, key.meshNo);
        const std::int32_t layer = store.FindLayDef(key.code);
        if (found.block < 0 || place.position >= store.Block(found.block).datCnt || layer < 0) continue;
        const DigDat* dat = &store.Block(found.block).dats[static_cast<std::size_t>(place.position)];
        auto* item = new QTreeWidgetItem(list_);
        item->setText(kLayer, ToQString(key.code));
        item->setText(kGroup, QString::number(key.meshNo));
        item->setText(kNumber, QString::number(key.datID));
        item->setText(kType, LayerTypeName(store.Layer(layer).layType));
        item->setText(kPoints, QString::number(dat->pntCnt));
        if (dat->str != nullptr) item->setText(kText, ToQString(dat->str->text));
        item->setData(kLayer, Qt::UserRole,
                      QVariantList{QByteArray::fromStdString(key.code), key.meshNo, key.datID, place.position});
        if (current && IsSameItem(store, *current, place)) again = item;
        const bool wasMarked = withNumber[key] == 1 ? markedKeys.contains(key) : marked.contains(place);
        if (wasMarked) markedAgain.push_back(item);
    }
    for (int column = 0; column < list_->columnCount(); ++column) list_->resizeColumnToContents(column);
    // Alone, the row at hand is marked as well.
    list_->setCurrentItem(again != nullptr ? again : list_->topLevelItem(0), 0,
                          markedAgain.empty() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate);
    for (QTreeWidgetItem* item : markedAgain) item->setSelected(true);
    const std::size_t all = SelectedCount(store);
    more_->setText(all > kMostRows ? tr("and %n more", nullptr, static_cast<int>(all - kMostRows)) : QString());
    more_->setVisible(all > kMostRows);
    emit CurrentChanged();
}

std::optional<ItemPlace> SelectionPanel::Current() const {
    const QTreeWidgetItem* item = list_->currentItem();
    if (item == nullptr) item = list_->topLevelItem(0);
    if (item == nullptr) return std::nullopt;
    return PlaceOf(*item);
}

std::vector<ItemPlace> SelectionPanel::Marked() const {
    std::vector<ItemPlace> places;
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = list_->topLevelItem(i);
        if (item->isSelected()) places.push_back(PlaceOf(*item));
    }
    return places;
}

void SelectionPanel::Keep(std::span<const ItemPlace> places) {
    SelectOnly(map_, places);
    map_.Call("OrvReDraw");
    emit SelectionChanged();
}

void SelectionPanel::JumpToCurrent() {
    const std::optional<ItemPlace> place = Current();
    if (!place) return;
    JumpToItem(map_, *place);
    emit SelectionChanged();
}

void SelectionPanel::KeepMarked() { Keep(Marked()); }

// What is selected beyond the rows of the list stays selected.
void SelectionPanel::DropMarked() {
    const std::vector<ItemPlace> places = Marked();
    const std::set<ItemPlace> marked(places.begin(), places.end());
    std::vector<ItemPlace> rest = SelectedPlaces(map_.Control().store);
    std::erase_if(rest, [&](const ItemPlace& place) { return marked.contains(place); });
    Keep(rest);
}

}  // namespace orvane
