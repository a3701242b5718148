#include "hosts/viewer/selection_panel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QVBoxLayout>
#include <set>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/look_editor.h"

namespace orvane {

namespace {

constexpr auto kAll = static_cast<std::size_t>(-1);

enum Column { kLayer, kGroup, kNumber, kType, kPoints, kText };

ItemKey KeyOf(const QTreeWidgetItem& item) {
    const QVariantList key = item.data(kLayer, Qt::UserRole).toList();
    return {key[0].toByteArray().toStdString(), key[1].toInt(), key[2].toInt()};
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
    const std::optional<ItemKey> current = Current();
    const std::vector<ItemKey> markedKeys = Marked();
    const std::set<ItemKey> marked(markedKeys.begin(), markedKeys.end());
    CDigMem& store = map_.Control().store;
    const QSignalBlocker quiet(list_);
    list_->clear();
    QTreeWidgetItem* again = nullptr;
    std::vector<QTreeWidgetItem*> markedAgain;
    for (const ItemKey& key : SelectedItems(store, kMostRows)) {
        const DigDat* dat = store.FindDat(key.code, key.meshNo, key.datID);
        const std::int32_t layer = store.FindLayDef(key.code);
        if (dat == nullptr || layer < 0) continue;
        auto* item = new QTreeWidgetItem(list_);
        item->setText(kLayer, ToQString(key.code));
        item->setText(kGroup, QString::number(key.meshNo));
        item->setText(kNumber, QString::number(key.datID));
        item->setText(kType, LayerTypeName(store.Layer(layer).layType));
        item->setText(kPoints, QString::number(dat->pntCnt));
        if (dat->str != nullptr) item->setText(kText, ToQString(dat->str->text));
        item->setData(kLayer, Qt::UserRole, QVariantList{QByteArray::fromStdString(key.code), key.meshNo, key.datID});
        if (current && key == *current) again = item;
        if (marked.contains(key)) markedAgain.push_back(item);
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

std::optional<ItemKey> SelectionPanel::Current() const {
    const QTreeWidgetItem* item = list_->currentItem();
    if (item == nullptr) item = list_->topLevelItem(0);
    if (item == nullptr) return std::nullopt;
    return KeyOf(*item);
}

std::vector<ItemKey> SelectionPanel::Marked() const {
    std::vector<ItemKey> keys;
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = list_->topLevelItem(i);
        if (item->isSelected()) keys.push_back(KeyOf(*item));
    }
    return keys;
}

// What hidden layers have selected is not in the list, and stays.
void SelectionPanel::SelectOnly(std::vector<ItemKey> keys) {
    const std::vector<ItemKey> unseen = UnseenSelection(map_.Control().store);
    keys.insert(keys.end(), unseen.begin(), unseen.end());
    map_.Call("OrvResetActiveAll");
    for (const ItemKey& key : keys) {
        map_.Call("OrvSetActDat", {QByteArray::fromStdString(key.code), key.meshNo, key.datID});
    }
    map_.Call("OrvReDraw");
    emit SelectionChanged();
}

// A jump to a feature makes it the only one that is active, so the others are made active again.
void SelectionPanel::JumpToCurrent() {
    const std::optional<ItemKey> key = Current();
    if (!key) return;
    CDigMem& store = map_.Control().store;
    std::vector<ItemKey> all = SelectedItems(store, kAll);
    const std::vector<ItemKey> unseen = UnseenSelection(store);
    all.insert(all.end(), unseen.begin(), unseen.end());
    map_.Call("OrvMapJumpToData", {QByteArray::fromStdString(key->code), key->meshNo, key->datID, true});
    SelectOnly(std::move(all));
}

void SelectionPanel::KeepMarked() { SelectOnly(Marked()); }

// What is selected beyond the rows of the list stays selected.
void SelectionPanel::DropMarked() {
    const std::vector<ItemKey> keys = Marked();
    const std::set<ItemKey> marked(keys.begin(), keys.end());
    std::vector<ItemKey> rest = SelectedItems(map_.Control().store, kAll);
    std::erase_if(rest, [&](const ItemKey& key) { return marked.contains(key); });
    SelectOnly(rest);
}

}  // namespace orvane
