// The two questions of the layers panel.
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QSpinBox>

#include "control/ctrl.h"
#include "hosts/viewer/layers_panel.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

QDialogButtonBox* Buttons(QDialog& dialog) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

}  // namespace

void LayersPanel::AskNewLayer() {
    QDialog dialog(window());
    dialog.setWindowTitle(tr("New layer"));
    auto* form = new QFormLayout(&dialog);
    auto* code = new QLineEdit;
    code->setObjectName("code");
    auto* type = new QComboBox;
    for (const std::int32_t layType : {kLayPoint, kLayLine, kLayPolygon, kLayCircle, kLayText, kLayEllipse, kLayMesh}) {
        type->addItem(LayerTypeName(layType), layType);
    }
    auto* group = new QSpinBox;
    group->setRange(0, 99999999);
    group->setValue(1);
    form->addRow(tr("&Code"), code);
    form->addRow(tr("&Type"), type);
    form->addRow(tr("&Group"), group);
    form->addRow(Buttons(dialog));
    if (dialog.exec() != QDialog::Accepted) return;
    const std::optional<std::string> bytes = EncodeCp932(code->text().toStdString());
    QString why;
    if (code->text().isEmpty()) why = tr("A layer needs a code.");
    if (!bytes) why = tr("The code has a character that maps cannot hold (code page 932). Choose another one.");
    if (bytes && bytes->size() > kMaxCode) why = tr("The code is too long: 50 bytes fit, a Japanese character takes two.");
    const CDigMem& store = map_.Control().store;
    const std::int32_t known = bytes ? store.FindLayDef(*bytes) : -1;
    // One whose making was taken back may be made again, as what it was.
    bool isFree = known >= 0 && store.Layer(known).layType == type->currentData().toInt();
    for (std::int32_t i = 0; isFree && i < store.BlockCnt(); ++i) {
        isFree = store.Block(i).blkState == kFreeBlock || store.Block(i).code.View() != *bytes;
    }
    if (known >= 0 && !isFree) why = tr("There is a layer of that code. Choose another one.");
    if (!why.isEmpty()) {
        QMessageBox::warning(window(), "ORVANE4", why);
        return;
    }
    MakeLayer(code->text(), type->currentData().toInt(), group->value());
}

void LayersPanel::AskNewSubLayer() {
    const LayerDef* layer = ChosenLayer();
    if (layer == nullptr) return;
    std::int32_t next = 1;
    while (CDigMem::FindSubLay(*layer, next) != nullptr) ++next;
    QDialog dialog(window());
    dialog.setWindowTitle(tr("New sub layer"));
    auto* form = new QFormLayout(&dialog);
    auto* number = new QSpinBox;
    number->setRange(1, 99999999);
    number->setValue(next);
    auto* name = new QLineEdit;
    name->setObjectName("name");
    form->addRow(tr("&Number"), number);
    form->addRow(tr("N&ame"), name);
    form->addRow(Buttons(dialog));
    if (dialog.exec() == QDialog::Accepted) MakeSubLayer(number->value(), name->text());
}

}  // namespace orvane
