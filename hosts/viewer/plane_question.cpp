#include "hosts/viewer/plane_question.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

namespace orvane {

namespace {

QString Say(const char* words) { return QCoreApplication::translate("PlaneQuestion", words); }

/// A form under some words, with the buttons to go on and to go back.
class Question : public QDialog {
public:
    Question(QWidget& parent, const QString& what) : QDialog(&parent), form_(new QFormLayout(this)) {
        setObjectName("plane question");
        setWindowTitle(QStringLiteral("ORVANE4"));
        auto* words = new QLabel(what);
        words->setTextFormat(Qt::PlainText);
        words->setWordWrap(true);
        words->setMinimumWidth(360);
        form_->addRow(words);
    }
    /// The list of zones; its data is the number, 0 for the first line.
    QComboBox& AddZones(const QString& none) {
        auto* zones = new QComboBox;
        zones->setObjectName("zone");
        zones->addItem(none, 0);
        for (int zone = 1; zone <= kZoneCnt; ++zone) zones->addItem(QString::number(zone), zone);
        form_->addRow(Say(QT_TRANSLATE_NOOP("PlaneQuestion", "&Zone")), zones);
        return *zones;
    }
    QFormLayout& Form() { return *form_; }
    bool Ask() {
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        form_->addRow(buttons);
        return exec() == QDialog::Accepted;
    }

private:
    QFormLayout* form_;
};

}  // namespace

PlaneAnswer AskPlaneSystem(QWidget& parent, const QString& what, const QString& unknown, int zone, std::optional<Datum> datum) {
    Question question(parent, what);
    QComboBox& zones = question.AddZones(unknown);
    zones.setCurrentIndex(zone);
    auto* datums = new QComboBox;
    datums->setObjectName("datum");
    for (const Datum each : {Datum::Jgd2011, Datum::Jgd2000, Datum::Tokyo}) {
        datums->addItem(QString::fromLatin1(DatumName(each)), static_cast<int>(each));
    }
    datums->setCurrentIndex(datums->findData(static_cast<int>(datum.value_or(Datum::Jgd2011))));
    question.Form().addRow(Say(QT_TRANSLATE_NOOP("PlaneQuestion", "&Datum")), datums);
    const auto follow = [&] { datums->setEnabled(zones.currentIndex() > 0); };
    QObject::connect(&zones, &QComboBox::currentIndexChanged, datums, follow);
    follow();
    if (!question.Ask()) return {};
    if (zones.currentIndex() <= 0) return {true, std::nullopt};
    return {true, PlaneSystem{static_cast<Datum>(datums->currentData().toInt()), zones.currentData().toInt()}};
}

bool AskSourceSystem(QWidget& parent, const QString& what, bool asksZone, ImportOptions& options) {
    constexpr int kMostEpsg = 999999;
    Question question(parent, what);
    auto* code = new QSpinBox;
    code->setObjectName("code");
    code->setRange(0, kMostEpsg);
    code->setSpecialValueText(Say(QT_TRANSLATE_NOOP("PlaneQuestion", "as the file says")));
    code->setToolTip(Say(QT_TRANSLATE_NOOP("PlaneQuestion",
                                           "4326: longitude and latitude; 6669 to 6687: plane zones 1 to 19 on JGD2011, 2443 to "
                                           "2461 on JGD2000, 30161 to 30179 on Tokyo")));
    code->setValue(options.assumeEpsg.value_or(0));
    code->selectAll();  // so that a code is typed over the words
    question.Form().addRow(Say(QT_TRANSLATE_NOOP("PlaneQuestion", "&EPSG code")), code);
    auto* hint = new QLabel(code->toolTip());
    hint->setWordWrap(true);
    question.Form().addRow(hint);
    QComboBox* zones = nullptr;
    if (asksZone) {
        zones = &question.AddZones(Say(QT_TRANSLATE_NOOP("PlaneQuestion", "the nearest to the data")));
        zones->setCurrentIndex(options.zone.value_or(0));
    }
    if (!question.Ask()) return false;
    options.assumeEpsg = code->value() == 0 ? std::nullopt : std::optional(code->value());
    if (zones != nullptr) options.zone = zones->currentIndex() <= 0 ? std::nullopt : std::optional(zones->currentData().toInt());
    return true;
}

}  // namespace orvane
