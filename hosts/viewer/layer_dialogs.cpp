// The two questions of the layers panel.
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QSpinBox>
#include <algorithm>

#include "control/ctrl.h"
#include "hosts/qt/qt_values.h"
#include "hosts/viewer/layers_panel.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

constexpr std::size_t kMostNameBytes = 254;

/// Why a layer or sub layer cannot have a name, or an empty text.
QString WhyNoName(const QString& name) {
    const auto say = [](const char* words) { return QCoreApplication::translate("orvane::LayersPanel", words); };
    const std::optional<std::string> bytes = EncodeCp932(name.toStdString());
    if (!bytes) {
        return say(QT_TRANSLATE_NOOP("orvane::LayersPanel",
                                     "The name has a character that maps cannot hold (code page 932). Choose another one."));
    }
    if (bytes->size() <= kMostNameBytes) return {};
    return say(QT_TRANSLATE_NOOP("orvane::LayersPanel", "The name is too long: 254 bytes fit, a Japanese character takes two."));
}

QDialogButtonBox* Buttons(QDialog& dialog) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

}  // namespace

void LayersPanel::AskNewLayer() {
    if (!history_.MayEdit()) {
        QMessageBox::information(window(), "ORVANE4",
                                 tr("Layers are made in the map's own frame. Go back to it first: View, Frame, Mesh frame."));
        return;
    }
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
    form->addRow(tr("Co&de"), code);
    form->addRow(tr("&Type"), type);
    form->addRow(tr("&Group"), group);
    form->addRow(Buttons(dialog));
    if (dialog.exec() != QDialog::Accepted) return;
    const std::optional<std::string> bytes = EncodeCp932(code->text().toStdString());
    QString why;
    if (code->text().isEmpty()) why = tr("A layer needs a code.");
    if (!bytes) why = tr("The code has a character that maps cannot hold (code page 932). Choose another one.");
    if (bytes && bytes->size() > kMaxCode) why = tr("The code is too long: 50 bytes fit, a Japanese character takes two.");
    const std::vector<std::string> free = history_.EmptyLayers();
    const bool isFree = bytes && std::find(free.begin(), free.end(), *bytes) != free.end();
    if (bytes && !isFree && map_.Control().store.FindLayDef(*bytes) >= 0)
        why = tr("There is a layer of that code. Choose another one.");
    if (!why.isEmpty()) {
        QMessageBox::warning(window(), "ORVANE4", why);
        return;
    }
    if (!MakeLayer(code->text(), type->currentData().toInt(), group->value())) {
        QMessageBox::warning(window(), "ORVANE4", tr("The layer was not made: there is no room in the map for another one."));
    }
}

void LayersPanel::AskName() {
    const LayerDef* layer = ChosenLayer();
    if (layer == nullptr || IsRefused()) return;
    const std::optional<std::int32_t> subLayNo = ChosenSubLayer();
    const SubLayDef* sub = subLayNo ? CDigMem::FindSubLay(*layer, *subLayNo) : nullptr;
    const std::string_view now = sub != nullptr ? sub->layerName.View() : layer->layerName.View();
    bool good = false;
    const QString name =
        QInputDialog::getText(window(), tr("Rename the layer"), tr("Name"), QLineEdit::Normal, ToQString(now), &good);
    if (!good || name == ToQString(now)) return;
    const QString why = WhyNoName(name);
    if (why.isEmpty()) return Rename(name);
    QMessageBox::warning(window(), "ORVANE4", why);
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
    if (dialog.exec() != QDialog::Accepted) return;
    layer = ChosenLayer();
    if (layer == nullptr) return;
    QString why = WhyNoName(name->text());
    if (CDigMem::FindSubLay(*layer, number->value()) != nullptr)
        why = tr("The layer has a sub layer of that number. Choose another one.");
    if (why.isEmpty() && !MakeSubLayer(number->value(), name->text())) why = tr("There is no room for another sub layer.");
    if (!why.isEmpty()) QMessageBox::warning(window(), "ORVANE4", why);
}

}  // namespace orvane
