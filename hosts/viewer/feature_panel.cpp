#include "hosts/viewer/feature_panel.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHeaderView>
#include <QMessageBox>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>
#include <cmath>
#include <limits>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/look_editor.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

constexpr std::size_t kMostPointRows = 5000;
constexpr double kFarthest = 99999999;  // map units that bounds of features hold
constexpr std::int32_t kBold = 1;
constexpr std::int32_t kItalic = 2;
constexpr std::int32_t kHalo = 4;

QDoubleSpinBox* Number(int decimals) {
    auto* box = new QDoubleSpinBox;
    box->setRange(-kFarthest, kFarthest);
    box->setDecimals(decimals);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    return box;
}

QString Shortest(double v) { return QString::number(v, 'g', QLocale::FloatingPointShortest); }

}  // namespace

FeaturePanel::FeaturePanel(OrvaneWidget& map, EditHistory& history, QWidget* parent)
    : QDockWidget(tr("Feature"), parent),
      map_(map),
      history_(history),
      form_(new QWidget),
      title_(new QLabel),
      tag_(new QSpinBox),
      subLayer_(new QComboBox),
      points_(new QTableWidget(0, 3)),
      apply_(new QPushButton(tr("&Apply"))) {
    setObjectName("feature");
    title_->setTextFormat(Qt::PlainText);
    tag_->setRange(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());
    tag_->setToolTip(tr("A number of your own; -1 hides the feature"));
    points_->setHorizontalHeaderLabels({"X", "Y", "Z"});
    points_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    points_->setAccessibleName(tr("Points, in map coordinates"));
    auto* facts = new QWidget;
    auto* rows = new QFormLayout(facts);
    rows->addRow(tr("Ta&g"), tag_);
    rows->addRow(tr("Sub &layer"), subLayer_);
    rows->addRow(points_);
    auto* tabs = new QTabWidget;
    tabs->addTab(facts, tr("&Shape"));
    tabs->addTab(MakeTextPage(), tr("Te&xt"));
    tabs->setObjectName("tabs");
    auto* column = new QVBoxLayout(form_);
    column->addWidget(title_);
    column->addWidget(tabs);
    column->addWidget(apply_);
    auto* scroll = new QScrollArea;  // a low window must not be made higher by the form
    scroll->setWidget(form_);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    setWidget(scroll);
    connect(apply_, &QPushButton::clicked, this, &FeaturePanel::Apply);
    Show(std::nullopt);
}

QWidget* FeaturePanel::MakeTextPage() {
    hasText_ = new QCheckBox(tr("&Has a text"));
    hasText_->setObjectName("has text");
    text_ = new QLineEdit;
    ownFont_ = new QCheckBox(tr("&Font"));
    font_ = new QFontComboBox;
    font_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    size_ = new QSpinBox;
    size_->setRange(1, 127);
    pos_ = new QComboBox;
    pos_->addItems({tr("left top"), tr("left middle"), tr("left bottom"), tr("centre top"), tr("centre"), tr("centre bottom"),
                    tr("right top"), tr("right middle"), tr("right bottom")});
    angle_ = Number(2);
    textX_ = Number(6);
    textY_ = Number(6);
    const auto check = [](const QString& text) { return new QCheckBox(text); };
    bold_ = check(tr("&Bold"));
    italic_ = check(tr("&Italic"));
    halo_ = check(tr("Hal&o"));
    fill_ = check(tr("Bac&kground"));
    uline_ = check(tr("&Underlined"));
    strike_ = check(tr("Struc&k out"));
    fcolor_ = new ColorButton(tr("Text colour"));
    bcolor_ = new ColorButton(tr("Colour of background and halo"));
    auto* page = new QWidget;
    auto* rows = new QFormLayout(page);
    rows->addRow(hasText_);
    rows->addRow(tr("&Text"), text_);
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
    rows->addRow(tr("A&nchor"), pos_);
    rows->addRow(tr("Angl&e, degrees"), angle_);
    rows->addRow(tr("Anchor X"), textX_);
    rows->addRow(tr("Anchor Y"), textY_);
    connect(text_, &QLineEdit::textEdited, this, [this](const QString& text) { hasText_->setChecked(!text.isEmpty()); });
    connect(text_, &QLineEdit::returnPressed, this, &FeaturePanel::Apply);
    return page;
}

void FeaturePanel::Show(const std::optional<ItemKey>& key) {
    const CDigMem& store = map_.Control().store;
    const std::optional<ItemCopy> item = key ? CopyOf(store, *key) : std::nullopt;
    key_ = item ? key : std::nullopt;
    form_->setEnabled(item.has_value());
    if (!item) {
        title_->setText(tr("Select a feature to see what it is."));
        points_->setRowCount(0);
        text_->clear();
        return;
    }
    const DigBlock& block = store.Block(store.FindBlock(key->code, key->meshNo).block);
    originX_ = block.GX;
    originY_ = block.GY;
    const LayerDef& layer = store.Layer(store.FindLayDef(key->code));
    title_->setText(tr("Layer %1, group %2, number %3: %4, %n point(s)", nullptr, static_cast<int>(item->pnts.size()))
                        .arg(ToQString(key->code))
                        .arg(key->meshNo)
                        .arg(key->datID)
                        .arg(LayerTypeName(layer.layType)));
    tag_->setValue(item->lineTag);
    subLayer_->clear();
    subLayer_->addItem(tr("none"), 0);
    for (const SubLayDef& sub : layer.subLays) {
        subLayer_->addItem(QStringLiteral("%1  %2").arg(sub.subLayNo).arg(ToQString(sub.layerName.View())), sub.subLayNo);
    }
    if (subLayer_->findData(item->subLayNo) < 0) subLayer_->addItem(QString::number(item->subLayNo), item->subLayNo);
    subLayer_->setCurrentIndex(subLayer_->findData(item->subLayNo));
    ShowPoints(*item);
    ShowText(*item);
}

void FeaturePanel::ShowPoints(const ItemCopy& item) {
    const bool editable = item.pnts.size() <= kMostPointRows && !item.grid;
    const std::size_t rows = (std::min)(item.pnts.size(), kMostPointRows);
    points_->setRowCount(static_cast<int>(rows));
    points_->setEditTriggers(editable ? QAbstractItemView::AllEditTriggers : QAbstractItemView::NoEditTriggers);
    for (std::size_t i = 0; i < rows; ++i) {
        const DigPnt& pnt = item.pnts[i];
        int column = 0;
        for (const double v : {pnt.x + originX_, pnt.y + originY_, pnt.z}) {
            points_->setItem(static_cast<int>(i), column++, new QTableWidgetItem(Shortest(v)));
        }
    }
}

void FeaturePanel::ShowText(const ItemCopy& item) {
    TextCopy text;
    if (!item.pnts.empty()) {
        text.x = item.pnts.front().x;
        text.y = item.pnts.front().y;
    }
    if (item.text) text = *item.text;
    hasText_->setChecked(item.text.has_value());
    text_->setText(ToQString(text.text));
    ownFont_->setChecked(!text.fntname.empty());
    if (!text.fntname.empty()) font_->setCurrentFont(QFont(ToQString(text.fntname)));
    size_->setValue(text.size);
    pos_->setCurrentIndex(text.pos);
    angle_->setValue(text.angle);
    textX_->setValue(text.x + originX_);
    textY_->setValue(text.y + originY_);
    bold_->setChecked((text.style & kBold) != 0);
    italic_->setChecked((text.style & kItalic) != 0);
    halo_->setChecked((text.style & kHalo) != 0);
    fill_->setChecked(text.fill);
    uline_->setChecked(text.uline);
    strike_->setChecked(text.strike);
    fcolor_->Show(text.fcolor);
    bcolor_->Show(text.bcolor);
}

bool FeaturePanel::ReadText(ItemCopy& item) const {
    if (!hasText_->isChecked()) {
        item.text.reset();
        return true;
    }
    const std::optional<std::string> bytes = EncodeCp932(text_->text().toStdString());
    const std::optional<std::string> face = EncodeCp932(font_->currentFont().family().toStdString());
    if (!bytes) {
        QMessageBox::warning(window(), "ORVANE4",
                             tr("The text has a character that maps cannot hold (code page 932). Write it in another way."));
        return false;
    }
    TextCopy text = item.text.value_or(TextCopy{});
    text.text = *bytes;
    if (!ownFont_->isChecked()) text.fntname.clear();
    // The list of fonts shows what is installed here; a face from elsewhere stays unless another one is chosen.
    const QString before = ToQString(text.fntname);
    if (ownFont_->isChecked() && face && (text.fntname.empty() || QFont(before).family() != font_->currentFont().family())) {
        text.fntname = *face;
    }
    text.size = size_->value() == (std::min)(text.size, 127) ? text.size : size_->value();
    text.style = text.style & ~(kBold | kItalic | kHalo);
    text.style |= (bold_->isChecked() ? kBold : 0) | (italic_->isChecked() ? kItalic : 0) | (halo_->isChecked() ? kHalo : 0);
    if (pos_->currentIndex() >= 0) text.pos = pos_->currentIndex();
    text.angle = angle_->value();
    // What the fields show is rounded; a place that was not changed stays as exact as it was.
    const auto place = [](double& local, double origin, double shown) {
        if (std::abs(local + origin - shown) > 1e-6) local = shown - origin;
    };
    if (!item.text && !item.pnts.empty()) {
        text.x = item.pnts.front().x;
        text.y = item.pnts.front().y;
    }
    place(text.x, originX_, textX_->value());
    place(text.y, originY_, textY_->value());
    text.fill = fill_->isChecked();
    text.uline = uline_->isChecked();
    text.strike = strike_->isChecked();
    text.fcolor = fcolor_->Color();
    text.bcolor = bcolor_->Color();
    item.text = text;
    return true;
}

bool FeaturePanel::ReadPoints(ItemCopy& item) const {
    if (static_cast<std::size_t>(points_->rowCount()) != item.pnts.size()) return true;
    for (int i = 0; i < points_->rowCount(); ++i) {
        DigPnt& pnt = item.pnts[static_cast<std::size_t>(i)];
        const std::array<double, 3> shown{pnt.x + originX_, pnt.y + originY_, pnt.z};
        const std::array<double, 3> origin{originX_, originY_, 0};
        const std::array<double*, 3> fields{&pnt.x, &pnt.y, &pnt.z};
        for (std::size_t k = 0; k < fields.size(); ++k) {
            const QString text = points_->item(i, static_cast<int>(k))->text();
            if (text == Shortest(shown[k])) continue;
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

void FeaturePanel::Apply() {
    if (!key_) return;
    history_.CancelTool();
    const CDigMem& store = map_.Control().store;
    const std::optional<ItemCopy> before = CopyOf(store, *key_);
    if (!before) return;
    ItemCopy after = *before;
    after.lineTag = tag_->value();
    after.subLayNo = subLayer_->currentData().toInt();
    if (!ReadPoints(after) || !ReadText(after)) return;
    const ItemKey key = *key_;
    history_.Change(tr("changing a feature"), {{key.code, key.meshNo, PositionOf(store, key), before, after}});
}

void FeaturePanel::EditText() {
    show();
    raise();
    findChild<QTabWidget*>("tabs")->setCurrentIndex(1);
    text_->setFocus();
    text_->selectAll();
}

}  // namespace orvane
