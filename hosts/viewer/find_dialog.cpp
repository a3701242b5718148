#include "hosts/viewer/find_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/block_copy.h"
#include "hosts/viewer/selecting.h"

namespace orvane {

namespace {

constexpr std::size_t kMostFound = 10000;

/// The number in a field; nothing when it is empty. `good` is false when it holds something else.
std::optional<int> NumberIn(const QLineEdit& field, bool& good) {
    if (field.text().trimmed().isEmpty()) return std::nullopt;
    bool isNumber = false;
    const int number = field.text().trimmed().toInt(&isNumber);
    good = good && isNumber;
    return number;
}

}  // namespace

FindDialog::FindDialog(OrvaneWidget& map, QWidget* parent)
    : QDialog(parent),
      map_(map),
      code_(new QComboBox),
      number_(new QLineEdit),
      group_(new QLineEdit),
      list_(new QTreeWidget),
      count_(new QLabel) {
    setWindowTitle(tr("Find features"));
    list_->setHeaderLabels({tr("Layer"), tr("Group"), tr("Number"), tr("Text")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    auto* form = new QFormLayout;
    form->addRow(tr("&Layer"), code_);
    form->addRow(tr("&Number"), number_);
    form->addRow(tr("&Group"), group_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* find = buttons->addButton(tr("&Find"), QDialogButtonBox::ActionRole);
    QPushButton* go = buttons->addButton(tr("G&o there"), QDialogButtonBox::ActionRole);
    QPushButton* all = buttons->addButton(tr("&Select all"), QDialogButtonBox::ActionRole);
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(list_);
    column->addWidget(count_);
    column->addWidget(buttons);
    find->setDefault(true);  // which asks what window the button is in
    list_->installEventFilter(this);
    connect(find, &QPushButton::clicked, this, &FindDialog::Find);
    connect(go, &QPushButton::clicked, this, &FindDialog::Go);
    connect(all, &QPushButton::clicked, this, &FindDialog::SelectAll);
    connect(list_, &QTreeWidget::itemActivated, this, &FindDialog::Go);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(460, 420);
}

// Enter in the list goes there; left alone it would reach the dialog too, and search anew.
bool FindDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Go();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FindDialog::ShowLayers() {
    CDigMem& store = map_.Control().store;
    QStringList codes{tr("all layers")};
    QList<QByteArray> bytes{QByteArray()};
    for (const std::int32_t i : LayersWithData(store)) {
        codes << ToQString(store.Layer(i).code.View());
        bytes << QByteArray(store.Layer(i).code.CStr());
    }
    bool same = code_->count() == codes.size();
    for (int i = 0; same && i < code_->count(); ++i) same = code_->itemData(i).toByteArray() == bytes[i];
    if (same) return;  // the list may be open
    const QVariant chosen = code_->currentData();
    code_->clear();
    for (int i = 0; i < codes.size(); ++i) code_->addItem(codes[i], bytes[i]);
    code_->setCurrentIndex((std::max)(0, code_->findData(chosen)));
}

void FindDialog::Forget() {
    found_.clear();
    list_->clear();
    count_->clear();
    ShowLayers();
}

void FindDialog::Find() {
    found_.clear();
    list_->clear();
    bool good = true;
    const std::optional<int> number = NumberIn(*number_, good);
    const std::optional<int> group = NumberIn(*group_, good);
    if (!good) {
        count_->setText(tr("Number and group are whole numbers. Leave a field empty to ask nothing of it."));
        return;
    }
    const std::string code = code_->currentData().toByteArray().toStdString();
    CDigMem& store = map_.Control().store;
    bool more = false;
    for (const DigIndex& entry : store.Index()) {
        const DigBlock& block = store.Block(entry.block);
        if ((!code.empty() && block.code.View() != code) || (group && block.meshNo != *group)) continue;
        std::int32_t position = -1;
        for (const DigDat& dat : block.dats) {
            ++position;
            if (number && dat.datID != *number) continue;
            more = found_.size() >= kMostFound;
            if (more) break;
            found_.push_back({{std::string(block.code.View()), block.meshNo, dat.datID}, position});
            auto* item = new QTreeWidgetItem(
                list_, {ToQString(block.code.View()), QString::number(block.meshNo), QString::number(dat.datID)});
            if (dat.str != nullptr) item->setText(3, ToQString(dat.str->text));
        }
    }
    list_->setCurrentItem(list_->topLevelItem(0));
    for (int column = 0; column < list_->columnCount(); ++column) list_->resizeColumnToContents(column);
    const int cnt = static_cast<int>(found_.size());
    foundText_ =
        more ? tr("The first %n feature(s); ask for less to see the others.", nullptr, cnt) : tr("%n feature(s)", nullptr, cnt);
    count_->setText(foundText_);
}

bool FindDialog::Choose(std::span<const ItemPlace> places) {
    const CDigMem& store = map_.Control().store;
    int there = 0;
    int chosen = 0;
    const auto isThere = [&](const ItemPlace& place) { return PositionNow(store, place) >= 0; };
    if (std::none_of(places.begin(), places.end(), isThere)) {
        count_->setText(tr("What was found is not in the map any more. Search again."));
        return false;
    }
    SelectOnly(map_, places);
    for (const ItemPlace& place : places) {
        const std::int32_t at = PositionNow(store, place);
        if (at < 0) continue;
        ++there;
        const DigIndex block = store.FindBlock(place.key.code, place.key.meshNo);
        chosen += store.Layer(block.layer).actFlg != 0 && store.Block(block.block).dats[static_cast<std::size_t>(at)].active == 1;
    }
    const int left = there - chosen;
    count_->setText(left == 0 ? foundText_
                              : tr("%n feature(s) cannot be selected: the box \"Select\" of their layer is off.", nullptr, left));
    return true;
}

void FindDialog::Go() {
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    if (row < 0) return;
    const ItemPlace& place = found_[static_cast<std::size_t>(row)];
    if (!Choose({&place, 1})) return;
    JumpToItem(map_, place);
    map_.Call("OrvReDraw");
    emit SelectionChanged();
}

void FindDialog::SelectAll() {
    if (found_.empty() || !Choose(found_)) return;
    map_.Call("OrvReDraw");
    emit SelectionChanged();
}

}  // namespace orvane
