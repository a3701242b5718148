#include "hosts/viewer/look_editor.h"

#include "hosts/qt/qt_values.h"
#include "hosts/viewer/quiet_wheel.h"

namespace orvane {

namespace {

constexpr int kUserSymbol = 9999;

/// Chooses the entry with a number; a number that is not offered gets an entry of its own.
void Choose(QComboBox& box, std::int32_t number) {
    int at = box.findData(number);
    if (at < 0) {
        box.addItem(QString::number(number), number);
        at = box.count() - 1;
    }
    box.setCurrentIndex(at);
}

QComboBox* Choices(const QStringList& names) {
    auto* box = new QComboBox;
    for (const QString& name : names) box->addItem(name, box->count());
    return box;
}

}  // namespace

QString LayerTypeName(std::int32_t layType) {
    switch (layType) {
        case kLayPoint:
            return LookEditor::tr("points");
        case kLayLine:
            return LookEditor::tr("lines");
        case kLayPolygon:
            return LookEditor::tr("areas");
        case kLayCircle:
            return LookEditor::tr("circles");
        case kLayText:
            return LookEditor::tr("texts");
        case kLayEllipse:
            return LookEditor::tr("ellipses");
        case kLayMesh:
            return LookEditor::tr("meshes");
        default:
            return QString::number(layType);
    }
}

LookEditor::LookEditor(QWidget* parent)
    : QWidget(parent),
      color_(new ColorButton(tr("Colour"))),
      color2_(new ColorButton(tr("Outline colour"))),
      lineType_(new QComboBox),
      lineSize_(new QSpinBox),
      hatch_(Choices({tr("solid", "hatch"), tr("rising lines"), tr("grid"), tr("diagonal grid"), tr("falling lines"),
                      tr("level lines"), tr("upright lines"), tr("none", "hatch")})),
      symbol_(Choices({tr("triangle"), tr("square"), tr("circle"), tr("diamond"), tr("star"), tr("triangle, tip down")})),
      outline_(new QCheckBox(tr("Outline"))),
      covers_(new QCheckBox(tr("Covers what lies beneath"))),
      form_(new QFormLayout(this)) {
    symbol_->addItem(tr("crossed square"), 10);
    symbol_->addItem(tr("small dot with its height"), 11);
    symbol_->addItem(tr("large dot with its height"), 12);
    symbol_->addItem(tr("from the symbol file, by the width's number"), kUserSymbol);
    lineSize_->setRange(0, kUserSymbol);
    lineSize_->setKeyboardTracking(false);  // a width of two digits is one step
    lineSize_->setToolTip(tr("Pixels on the screen; for points 9999 is a size that does not grow with the scale"));
    Row(tr("&Colour"), color_);
    Row(tr("O&utline colour"), color2_);
    Row(tr("Line t&ype"), lineType_);
    Row(tr("Wi&dth"), lineSize_);
    Row(tr("Hatch"), hatch_);
    Row(tr("Sy&mbol"), symbol_);
    form_->addRow(outline_);
    form_->addRow(covers_);
    form_->setContentsMargins(0, 0, 0, 0);
    connect(color_, &ColorButton::Chosen, this, &LookEditor::Tell);
    connect(color2_, &ColorButton::Chosen, this, &LookEditor::Tell);
    for (QComboBox* box : {lineType_, hatch_, symbol_}) connect(box, &QComboBox::activated, this, &LookEditor::Tell);
    connect(lineSize_, &QSpinBox::valueChanged, this, &LookEditor::Tell);
    connect(outline_, &QCheckBox::clicked, this, &LookEditor::Tell);
    connect(covers_, &QCheckBox::clicked, this, &LookEditor::Tell);
    KeepWheelFromFields(*this);
    for (QComboBox* box : {lineType_, hatch_, symbol_}) {
        box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // long names make no panel wider
    }
    ShowRow(symbol_, false);  // it stands where the hatch does, so that the form is as high as it ever gets
    ShowNothing();
}

void LookEditor::ShowRow(QWidget* field, bool on) {
    field->setVisible(on);
    if (QWidget* label = form_->labelForField(field)) label->setVisible(on);
}

void LookEditor::Row(const QString& text, QWidget* field) { form_->addRow(text, field); }

void LookEditor::FillLineTypes(const CDigMem& store) {
    lineType_->clear();
    if (store.lineTypes.empty()) {
        for (const QString& name :
             {tr("solid", "line"), tr("dashed"), tr("dotted"), tr("dash and dot"), tr("dash and two dots")}) {
            lineType_->addItem(name, lineType_->count());
        }
    }
    for (const LineTypeDef& type : store.lineTypes) {
        lineType_->addItem(QStringLiteral("%1  %2").arg(type.ltId).arg(ToQString(type.ltName.View())), type.ltId);
    }
}

void LookEditor::Show(const CDigMem& store, std::int32_t layType, const LayerState& state) {
    showing_ = true;
    setEnabled(true);
    state_ = state;
    layType_ = layType;
    FillLineTypes(store);
    color_->Show(state.color);
    color2_->Show(state.color2);
    Choose(*lineType_, state.lineType);
    // The same number again would end what is half typed.
    const int size = qBound(0, state.lineSize, kUserSymbol);
    if (lineSize_->value() != size) lineSize_->setValue(size);
    Choose(*hatch_, state.pgnType);
    Choose(*symbol_, state.pntType);
    outline_->setChecked(!state.noOutline);
    covers_->setChecked(state.covers);
    const bool closed = layType == kLayPolygon || layType == kLayCircle || layType == kLayEllipse;
    const bool point = layType == kLayPoint;
    ShowRow(color2_, closed);
    ShowRow(lineType_, closed || layType == kLayLine);
    ShowRow(lineSize_, closed || point || layType == kLayLine);
    ShowRow(hatch_, layType == kLayPolygon);
    ShowRow(symbol_, point);
    ShowRow(outline_, closed);
    ShowRow(covers_, layType == kLayPolygon);
    showing_ = false;
}

void LookEditor::Tell() {
    if (showing_) return;
    state_.color = color_->Color();
    state_.color2 = color2_->Color();
    state_.lineType = lineType_->currentData().toInt();
    if (state_.lineSize <= kUserSymbol) state_.lineSize = lineSize_->value();
    state_.pgnType = hatch_->currentData().toInt();
    state_.pntType = symbol_->currentData().toInt();
    state_.noOutline = !outline_->isChecked();
    state_.covers = covers_->isChecked();
    emit Edited(state_);
}

}  // namespace orvane
