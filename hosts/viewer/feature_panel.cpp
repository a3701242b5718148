#include "hosts/viewer/feature_panel.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHeaderView>
#include <QMessageBox>
#include <QScrollArea>
#include <QStyledItemDelegate>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/field_undo.h"
#include "hosts/viewer/look_editor.h"
#include "hosts/viewer/new_text.h"
#include "hosts/viewer/quiet_wheel.h"
#include "hosts/viewer/selecting.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

constexpr std::size_t kMostPointRows = 5000;
constexpr double kFarthest = 99999999;  // map units that bounds of features hold
constexpr std::int32_t kBoldStyle = 1;
constexpr std::int32_t kItalicStyle = 2;
constexpr std::int32_t kHaloStyle = 4;

QDoubleSpinBox* Number(int decimals) {
    auto* box = new QDoubleSpinBox;
    box->setRange(-kFarthest, kFarthest);
    box->setDecimals(decimals);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    return box;
}

QString Shortest(double v) { return QString::number(v, 'g', QLocale::FloatingPointShortest); }

constexpr int kShown = Qt::UserRole;  // of a cell: the text that it was filled with

/// Shows coordinates to the millimetre. The cell itself, its editor and its hint have them whole.
class PlaceDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant& value, const QLocale&) const override {
        bool good = false;
        const double v = value.toDouble(&good);
        return good ? QString::number(v, 'f', 3) : value.toString();
    }
};

FormField OfCheck(QCheckBox* box) {
    return {[box] { return box->isChecked(); }, [box](const QVariant& on) { box->setChecked(on.toBool()); }, {}};
}

template <class Number>
FormField OfNumber(Number* box) {
    using Value = decltype(box->value());
    return {[box] { return box->value(); },
            [box](const QVariant& v) {
                // The same number again would end what is half typed.
                if (box->value() != v.value<Value>()) box->setValue(v.value<Value>());
            },
            {}};
}

FormField OfColor(ColorButton* button) {
    return {[button] { return button->Color(); }, [button](const QVariant& color) { button->Show(color.toUInt()); }, {}};
}

}  // namespace

FeaturePanel::FeaturePanel(OrvaneWidget& map, EditHistory& history, QWidget* parent)
    : QDockWidget(tr("Feature"), parent),
      map_(map),
      history_(history),
      form_(new QWidget),
      title_(new QLabel),
      locked_(new QLabel(tr("Its layer is not for editing. The layer's box \"Edit\" in the list of layers lets you."))),
      tag_(new QSpinBox),
      subLayer_(new QComboBox),
      pointsNote_(new QLabel),
      points_(new QTableWidget(0, 3)),
      apply_(new QPushButton(tr("&Apply"))) {
    setObjectName("feature");
    title_->setTextFormat(Qt::PlainText);
    title_->setWordWrap(true);
    locked_->setWordWrap(true);
    locked_->hide();
    subLayer_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // long names make no panel wider
    points_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    tag_->setRange(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());
    tag_->setToolTip(tr("A number of your own; -1 hides the feature"));
    points_->setHorizontalHeaderLabels({tr("X (east)"), tr("Y (north)"), "Z"});
    points_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    points_->horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);  // heights are short, places long
    points_->setItemDelegate(new PlaceDelegate(points_));
    points_->setTabKeyNavigation(false);  // Tab leaves the table as it leaves any field; the arrows go through its cells
    points_->setAccessibleName(tr("Points, in map coordinates"));
    auto* facts = new QWidget;
    auto* rows = new QFormLayout(facts);
    rows->addRow(tr("Tag"), tag_);
    rows->addRow(tr("Su&b layer"), subLayer_);
    pointsNote_->setWordWrap(true);
    pointsNote_->hide();
    rows->addRow(pointsNote_);
    rows->addRow(points_);
    auto* tabs = new QTabWidget;
    tabs->addTab(facts, tr("&Shape"));
    tabs->addTab(MakeTextPage(), tr("Te&xt"));
    tabs->setObjectName("tabs");
    auto* column = new QVBoxLayout(form_);
    column->addWidget(title_);
    column->addWidget(locked_);
    column->addWidget(tabs);
    auto* scroll = new QScrollArea;  // a low window must not be made higher by the form
    scroll->setWidget(form_);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);  // the keyboard is for the fields in it
    auto* page = new QWidget;
    auto* rowsOfPage = new QVBoxLayout(page);
    rowsOfPage->setContentsMargins(0, 0, 0, 0);
    rowsOfPage->addWidget(scroll, 1);
    auto* below = new QHBoxLayout;  // in sight wherever the form stands
    const QMargins margins = column->contentsMargins();
    below->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom() / 2);
    below->addWidget(apply_);
    rowsOfPage->addLayout(below);
    setWidget(page);
    connect(apply_, &QPushButton::clicked, this, &FeaturePanel::Apply);
    KeepWheelFromFields(*form_);
    NameFields();
    LetMapUndo(*form_, [this](const QWidget& field) { return HasEntered(field); });
    Show(std::nullopt);
}

QWidget* FeaturePanel::MakeTextPage() {
    hasText_ = new QCheckBox(tr("Has a text"));
    hasText_->setObjectName("has text");
    text_ = new QLineEdit;
    ownFont_ = new QCheckBox(tr("Fo&nt"));
    font_ = new QFontComboBox;
    font_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    size_ = new QSpinBox;
    size_->setRange(1, 127);
    pos_ = new QComboBox;
    pos_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    pos_->addItems({tr("left top"), tr("left middle"), tr("left bottom"), tr("centre top"), tr("centre"), tr("centre bottom"),
                    tr("right top"), tr("right middle"), tr("right bottom")});
    angle_ = Number(2);
    textX_ = Number(6);
    textY_ = Number(6);
    const auto check = [](const QString& text) { return new QCheckBox(text); };
    bold_ = check(tr("Bold"));
    italic_ = check(tr("&Italic"));
    halo_ = check(tr("Halo"));
    fill_ = check(tr("Bac&kground"));
    uline_ = check(tr("Underlined"));
    strike_ = check(tr("Struck out"));
    fcolor_ = new ColorButton(tr("Text colour"));
    bcolor_ = new ColorButton(tr("Colour of background and halo"));
    auto* page = new QWidget;
    auto* rows = new QFormLayout(page);
    rows->addRow(hasText_);
    rows->addRow(tr("Text"), text_);
    rows->addRow(ownFont_, font_);
    rows->addRow(tr("Si&ze, points"), size_);
    auto* looks = new QGridLayout;
    int n = 0;
    for (QCheckBox* box : {bold_, italic_, halo_, fill_, uline_, strike_}) {
        looks->addWidget(box, n / 2, n % 2);
        ++n;
    }
    rows->addRow(looks);
    rows->addRow(tr("Colour"), fcolor_);
    rows->addRow(tr("Ground"), bcolor_);
    rows->addRow(tr("Anchor"), pos_);
    rows->addRow(tr("Angle, degrees"), angle_);
    rows->addRow(tr("Anchor X (east)"), textX_);
    rows->addRow(tr("Anchor Y (north)"), textY_);
    connect(text_, &QLineEdit::textEdited, this, [this](const QString& text) { hasText_->setChecked(!text.isEmpty()); });
    connect(text_, &QLineEdit::returnPressed, this, &FeaturePanel::Apply);
    return page;
}

void FeaturePanel::NameFields() {
    Field(kTag) = OfNumber(tag_);
    Field(kSubLayer) = {[this] { return subLayer_->currentData(); },
                        [this](const QVariant& no) {  // also a number that the layer has no record of
                            if (subLayer_->findData(no) < 0) subLayer_->addItem(no.toString(), no);
                            subLayer_->setCurrentIndex(subLayer_->findData(no));
                        },
                        {}};
    Field(kText) = {[this] { return text_->text(); }, [this](const QVariant& text) { text_->setText(text.toString()); }, {}};
    Field(kFace) = {[this] { return font_->currentFont().family(); },
                    [this](const QVariant& face) { font_->setCurrentFont(QFont(face.toString())); },
                    {}};
    Field(kSize) = OfNumber(size_);
    Field(kPos) = {
        [this] { return pos_->currentIndex(); }, [this](const QVariant& pos) { pos_->setCurrentIndex(pos.toInt()); }, {}};
    Field(kAngle) = OfNumber(angle_);
    Field(kTextX) = OfNumber(textX_);
    Field(kTextY) = OfNumber(textY_);
    Field(kHasText) = OfCheck(hasText_);
    Field(kOwnFont) = OfCheck(ownFont_);
    Field(kBold) = OfCheck(bold_);
    Field(kItalic) = OfCheck(italic_);
    Field(kHalo) = OfCheck(halo_);
    Field(kFill) = OfCheck(fill_);
    Field(kUline) = OfCheck(uline_);
    Field(kStrike) = OfCheck(strike_);
    Field(kFcolor) = OfColor(fcolor_);
    Field(kBcolor) = OfColor(bcolor_);
}

bool FeaturePanel::HasEntered(const QWidget& field) const {
    const std::pair<const QWidget*, Name> names[] = {{tag_, kTag},     {text_, kText},   {font_, kFace},  {size_, kSize},
                                                     {angle_, kAngle}, {textX_, kTextX}, {textY_, kTextY}};
    return std::any_of(std::begin(names), std::end(names), [&](const auto& one) {
        return (one.first == &field || one.first->isAncestorOf(&field)) && IsChanged(one.second);
    });
}

void FeaturePanel::LetChange(bool on) {
    locked_->setVisible(!on);
    apply_->setEnabled(on);
    for (QLineEdit* field : form_->findChildren<QLineEdit*>()) field->setReadOnly(!on);
    for (QAbstractSpinBox* field : form_->findChildren<QAbstractSpinBox*>()) field->setReadOnly(!on);
    for (QComboBox* field : form_->findChildren<QComboBox*>()) field->setEnabled(on);
    for (QAbstractButton* field : form_->findChildren<QCheckBox*>()) field->setEnabled(on);
    for (QAbstractButton* field : form_->findChildren<QPushButton*>()) field->setEnabled(on);
    if (!on) points_->setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void FeaturePanel::ShowNothing() {
    locked_->hide();
    title_->setText(tr("Select a feature to see what it is."));
    pointsNote_->hide();
    points_->setRowCount(0);
    text_->clear();
    Field(kText).filled = text_->text();
}

void FeaturePanel::Show(const ItemKey& key) { Show(ItemPlace{key, PositionOf(map_.Control().store, key)}); }

void FeaturePanel::Show(const std::optional<ItemPlace>& place) {
    const CDigMem& store = map_.Control().store;
    // A tool hides the feature that it works on by a tag, which is not the feature's own.
    const std::optional<ItemCopy> item = place ? history_.BeforeTool(*place) : std::nullopt;
    const bool isSame = item && place_ && IsSameItem(store, *place, *place_);
    place_ = item ? place : std::nullopt;
    form_->setEnabled(item.has_value());
    apply_->setEnabled(item.has_value());
    if (!item) return ShowNothing();
    const ItemKey* const key = &place->key;
    const DigBlock& block = store.Block(store.FindBlock(key->code, key->meshNo).block);
    originX_ = block.GX;
    originY_ = block.GY;
    const LayerDef& layer = store.Layer(store.FindLayDef(key->code));
    title_->setText(tr("Layer %1, group %2, number %3: %4, %n point(s)", nullptr, static_cast<int>(item->pnts.size()))
                        .arg(ToQString(key->code))
                        .arg(key->meshNo)
                        .arg(key->datID)
                        .arg(LayerTypeName(layer.layType)));
    std::array<std::optional<QVariant>, kFieldCnt> entered;
    for (std::size_t i = 0; isSame && i < entered.size(); ++i) {
        // Words stay in their field untouched, with the cursor and with what an input method has half composed.
        if (i != kText && fields_[i].IsChanged()) entered[i] = fields_[i].read();
    }
    ShowFields(*item, layer);
    ShowText(*item, isSame && IsChanged(kText));
    // A sub layer that has gone since can be chosen no more.
    if (entered[kSubLayer] && subLayer_->findData(*entered[kSubLayer]) < 0) entered[kSubLayer].reset();
    for (std::size_t i = 0; i < entered.size(); ++i) {
        if (entered[i]) fields_[i].write(*entered[i]);
    }
    ShowPoints(*item, isSame);
    LetChange(layer.editFlg != 0);
}

void FeaturePanel::ShowFields(const ItemCopy& item, const LayerDef& layer) {
    Field(kTag).Fill(item.lineTag);
    subLayer_->clear();
    subLayer_->addItem(tr("none"), 0);
    for (const SubLayDef& sub : layer.subLays) {
        subLayer_->addItem(QStringLiteral("%1  %2").arg(sub.subLayNo).arg(ToQString(sub.layerName.View())), sub.subLayNo);
    }
    Field(kSubLayer).Fill(item.subLayNo);
}

void FeaturePanel::ShowPoints(const ItemCopy& item, bool keepEntered) {
    const bool isLong = item.pnts.size() > kMostPointRows;
    const bool editable = !isLong && !item.grid;
    const QString whyLong = tr("The table has the first %1 points, to read: points of features with more are not changed here.");
    pointsNote_->setText(isLong ? whyLong.arg(kMostPointRows) : tr("The points of a mesh can be read here, but not changed."));
    pointsNote_->setVisible(!editable);
    const std::size_t rows = (std::min)(item.pnts.size(), kMostPointRows);
    keepEntered = keepEntered && points_->rowCount() == static_cast<int>(rows);
    points_->setRowCount(static_cast<int>(rows));
    points_->setEditTriggers(editable ? QAbstractItemView::AllEditTriggers : QAbstractItemView::NoEditTriggers);
    for (std::size_t i = 0; i < rows; ++i) {
        const DigPnt& pnt = item.pnts[i];
        int column = 0;
        for (const double v : {pnt.x + originX_, pnt.y + originY_, pnt.z}) {
            const QString text = Shortest(v);
            const QTableWidgetItem* old = points_->item(static_cast<int>(i), column);
            const bool stays = keepEntered && old != nullptr && old->text() != old->data(kShown).toString();
            if (keepEntered && old != nullptr && old->data(kShown).toString() == text) {
                ++column;  // which also leaves an editor in it open
                continue;
            }
            auto* cell = new QTableWidgetItem(stays ? old->text() : text);
            cell->setData(kShown, text);
            cell->setToolTip(text);
            points_->setItem(static_cast<int>(i), column++, cell);
        }
    }
}

void FeaturePanel::ShowText(const ItemCopy& item, bool keepWords) {
    TextCopy text;
    if (!item.pnts.empty()) {
        text.x = item.pnts.front().x;
        text.y = item.pnts.front().y;
    }
    if (item.text) text = *item.text;
    const QString words = ToQString(text.text);
    if (!keepWords && words != text_->text()) text_->setText(words);
    Field(kText).filled = words;
    Field(kHasText).Fill(item.text.has_value());
    Field(kOwnFont).Fill(!text.fntname.empty());
    Field(kFace).Fill(text.fntname.empty() ? font_->currentFont().family() : ToQString(text.fntname));
    Field(kSize).Fill(text.size);
    Field(kPos).Fill(text.pos);
    Field(kAngle).Fill(text.angle);
    Field(kTextX).Fill(text.x + originX_);
    Field(kTextY).Fill(text.y + originY_);
    Field(kBold).Fill((text.style & kBoldStyle) != 0);
    Field(kItalic).Fill((text.style & kItalicStyle) != 0);
    Field(kHalo).Fill((text.style & kHaloStyle) != 0);
    Field(kFill).Fill(text.fill);
    Field(kUline).Fill(text.uline);
    Field(kStrike).Fill(text.strike);
    Field(kFcolor).Fill(text.fcolor);
    Field(kBcolor).Fill(text.bcolor);
}

bool FeaturePanel::ReadWords(TextCopy& text) const {
    if (IsChanged(kText)) {
        const std::optional<std::string> bytes = EncodeCp932(text_->text().toStdString());
        if (!bytes) {
            QMessageBox::warning(window(), "ORVANE4", CannotHoldWords());
            return false;
        }
        text.text = *bytes;
    }
    if (!ownFont_->isChecked()) {
        text.fntname.clear();
    } else if (IsChanged(kFace) || text.fntname.empty()) {
        const std::optional<std::string> face = EncodeCp932(font_->currentFont().family().toStdString());
        if (face) text.fntname = *face;
    }
    return true;
}

bool FeaturePanel::ReadText(ItemCopy& item) const {
    if (!hasText_->isChecked()) {
        if (IsChanged(kHasText)) item.text.reset();
        return true;
    }
    const bool isNew = !item.text;
    if (isNew && !IsChanged(kHasText)) return true;  // it went meanwhile, by another way
    TextCopy text = item.text.value_or(TextCopy{});
    if (isNew && !item.pnts.empty()) {
        text.x = item.pnts.front().x;
        text.y = item.pnts.front().y;
    }
    if (!ReadWords(text)) return false;
    if (IsChanged(kSize)) text.size = size_->value();
    const auto bit = [&](Name name, const QCheckBox& box, std::int32_t style) {
        if (IsChanged(name)) text.style = box.isChecked() ? text.style | style : text.style & ~style;
    };
    bit(kBold, *bold_, kBoldStyle);
    bit(kItalic, *italic_, kItalicStyle);
    bit(kHalo, *halo_, kHaloStyle);
    if (IsChanged(kPos)) text.pos = pos_->currentIndex();
    if (IsChanged(kAngle)) text.angle = angle_->value();
    if (IsChanged(kTextX)) text.x = textX_->value() - originX_;
    if (IsChanged(kTextY)) text.y = textY_->value() - originY_;
    if (IsChanged(kFill)) text.fill = fill_->isChecked();
    if (IsChanged(kUline)) text.uline = uline_->isChecked();
    if (IsChanged(kStrike)) text.strike = strike_->isChecked();
    if (IsChanged(kFcolor)) text.fcolor = fcolor_->Color();
    if (IsChanged(kBcolor)) text.bcolor = bcolor_->Color();
    item.text = text;
    return true;
}

bool FeaturePanel::ReadPoints(ItemCopy& item) const {
    if (static_cast<std::size_t>(points_->rowCount()) != item.pnts.size()) return true;
    for (int i = 0; i < points_->rowCount(); ++i) {
        DigPnt& pnt = item.pnts[static_cast<std::size_t>(i)];
        const std::array<double, 3> origin{originX_, originY_, 0};
        const std::array<double*, 3> fields{&pnt.x, &pnt.y, &pnt.z};
        for (std::size_t k = 0; k < fields.size(); ++k) {
            const QTableWidgetItem& cell = *points_->item(i, static_cast<int>(k));
            const QString text = cell.text();
            if (text == cell.data(kShown).toString()) continue;
            bool good = false;
            const double v = text.toDouble(&good);
            if (!good || !(std::abs(v) <= kFarthest)) {
                QMessageBox::warning(window(), "ORVANE4", tr("\"%1\" is no coordinate of the map.").arg(text));
                return false;
            }
            *fields[k] = v - origin[k];
        }
    }
    return true;
}

// A click elsewhere ends the editor of a cell, but the key of a button leaves it open.
void FeaturePanel::EndTyping() {
    for (QLineEdit* editor : points_->viewport()->findChildren<QLineEdit*>()) {
        emit points_->itemDelegate()->commitData(editor);
        emit points_->itemDelegate()->closeEditor(editor);
    }
}

void FeaturePanel::Apply() {
    if (!place_) return;
    EndTyping();
    history_.CancelTool();
    const CDigMem& store = map_.Control().store;
    const ItemPlace place{place_->key, PositionNow(store, *place_)};
    const std::int32_t layer = store.FindLayDef(place.key.code);
    const std::optional<ItemCopy> before = CopyAt(store, place);
    if (!before || layer < 0 || store.Layer(layer).editFlg == 0) return;
    ItemCopy after = *before;
    if (IsChanged(kTag)) after.lineTag = tag_->value();
    if (IsChanged(kSubLayer)) after.subLayNo = subLayer_->currentData().toInt();
    if (!ReadPoints(after) || !ReadText(after)) return;
    history_.Change(tr("changing a feature"), {{place.key.code, place.key.meshNo, place.position, before, after}});
    // What was entered is applied now, and the map may have taken it in its own way.
    place_.reset();
    Show(place);
}

void FeaturePanel::EditText() {
    show();
    raise();
    findChild<QTabWidget*>("tabs")->setCurrentIndex(1);
    text_->setFocus();
    text_->selectAll();
}

}  // namespace orvane
