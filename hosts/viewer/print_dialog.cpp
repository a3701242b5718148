#include "hosts/viewer/print_dialog.h"

#include <QCoreApplication>
#include <QDate>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFile>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIODevice>
#include <QKeyEvent>
#include <QLocale>
#include <QMessageBox>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/save_name.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

namespace {

constexpr int kPrintDpi = 300;
constexpr int kPreviewDpi = 96;
constexpr int kMargin_mm = 10;
constexpr double kMmPerInch = 25.4;
constexpr double kDrawn = 0.3;  // of making a page is behind when the map is drawn

double ToPixels(double mm, int dpi) { return mm / kMmPerInch * dpi; }

/// Passes on what is written and tells of it. What comes after the operator has cancelled is swallowed.
class ToldDevice : public QIODevice {
public:
    ToldDevice(QIODevice& to, double raw_bytes, std::function<bool(double)> told)
        : to_(to), usual_bytes_((std::max)(raw_bytes / kUsualPart, 1.0)), told_(std::move(told)) {}
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size_bytes) override {
        constexpr int kLookEvery = 32;
        // How small a picture becomes is not known before, so that the part only comes nearer to 1. A part that stays the same
        // for long must not keep the operator from cancelling.
        written_bytes_ += static_cast<double>(size_bytes);
        if (++writes_ % kLookEvery == 0) QCoreApplication::processEvents();
        // The writer of pictures loses memory when a write fails, so what comes after a cancel is swallowed.
        return told_(written_bytes_ / (written_bytes_ + usual_bytes_)) ? to_.write(data, size_bytes) : size_bytes;
    }

private:
    static constexpr double kUsualPart = 40;  // of what a picture takes in memory, as a file
    QIODevice& to_;
    double usual_bytes_;
    std::function<bool(double)> told_;
    double written_bytes_ = 0;
    int writes_ = 0;
};

}  // namespace

PrintDialog::PrintDialog(OrvaneWidget& map, const QString& title, const QString& credit, QWidget* parent)
    : QDialog(parent),
      map_(map),
      title_(title),
      credit_(credit),
      paper_(new QComboBox),
      turn_(new QComboBox),
      scale_(new QSpinBox),
      viewScale_(new QPushButton(tr("As the &view"))),
      x_(new QDoubleSpinBox),
      y_(new QDoubleSpinBox),
      preview_(new QLabel),
      words_(new QLabel) {
    setWindowTitle(tr("Print the map"));
    for (const QPageSize::PageSizeId id : {QPageSize::A4, QPageSize::A3, QPageSize::A2, QPageSize::A1, QPageSize::A0,
                                           QPageSize::JisB4, QPageSize::JisB5, QPageSize::Letter}) {
        paper_->addItem(QPageSize::name(id), static_cast<int>(id));
    }
    turn_->addItem(tr("upright"), static_cast<int>(QPageLayout::Portrait));
    turn_->addItem(tr("on its side"), static_cast<int>(QPageLayout::Landscape));
    turn_->setCurrentIndex(Settings().value("printLandscape", true).toBool() ? 1 : 0);
    paper_->setCurrentIndex(
        (std::max)(0, paper_->findData(Settings().value("printPaper", static_cast<int>(QPageSize::A4)).toInt())));
    scale_->setRange(1, 50000000);
    scale_->setPrefix("1:");
    scale_->setGroupSeparatorShown(true);
    scale_->setValue(Settings().value("printScale", map_.Zoom()).toInt());
    viewScale_->setToolTip(tr("Print at the scale of the view, now and the next time"));
    viewScale_->setAutoDefault(false);
    connect(viewScale_, &QPushButton::clicked, this, [this] { scale_->setValue(map_.Zoom()); });
    connect(this, &QDialog::finished, this, &PrintDialog::KeepSettings);
    const COrvane4Ctrl& ctrl = map_.Control();
    for (QDoubleSpinBox* box : {x_, y_}) {
        box->setRange(-99999999, 99999999);
        box->setDecimals(1);
    }
    x_->setValue(ctrl.ScreenToWorldX(map_.Picture().width() / 2.0));
    y_->setValue(ctrl.ScreenToWorldY(map_.Picture().height() / 2.0));
    preview_->setMinimumSize(420, 420);
    preview_->setAlignment(Qt::AlignCenter);
    preview_->setAccessibleName(tr("Preview of the page"));
    preview_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);  // the page follows the window, not the other way
    preview_->installEventFilter(this);
    words_->setWordWrap(true);
    auto* form = new QFormLayout;
    form->addRow(tr("&Paper"), paper_);
    form->addRow(tr("&Turned"), turn_);
    form->addRow(tr("&Scale"), scale_);
    form->addRow(QString(), viewScale_);
    form->addRow(tr("Middle &X (east)"), x_);
    form->addRow(tr("Middle &Y (north)"), y_);
    form->addRow(words_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, Qt::Vertical);
    const auto button = [&](const QString& text, auto work) {
        connect(buttons->addButton(text, QDialogButtonBox::ActionRole), &QPushButton::clicked, this, work);
    };
    button(tr("P&rint…"), [this] { AskPrinter(); });
    button(tr("P&DF…"), [this] { AskPdf(); });
    button(tr("P&NG…"), [this] { AskPng(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
    auto* row = new QHBoxLayout(this);
    row->addWidget(preview_, 1);
    row->addLayout(form);
    // Typing a scale asks for several pages; the last one is drawn.
    later_.setSingleShot(true);
    later_.setInterval(200);
    connect(&later_, &QTimer::timeout, this, &PrintDialog::ShowPreview);
    const auto again = [this] { later_.start(); };
    for (QComboBox* box : {paper_, turn_}) connect(box, &QComboBox::currentIndexChanged, this, again);
    connect(scale_, &QSpinBox::valueChanged, this, again);
    for (QDoubleSpinBox* box : {x_, y_}) connect(box, &QDoubleSpinBox::valueChanged, this, again);
    resize(760, 520);
    // Once the places of the parts are known.
    QMetaObject::invokeMethod(this, &PrintDialog::ShowPreview, Qt::QueuedConnection);
}

void PrintDialog::SetTrueToScale(bool on) {
    trueToScale_ = on;
    later_.start();
}

// Enter ends the typing of a number; no button takes it but one that has the keyboard.
void PrintDialog::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || qobject_cast<QPushButton*>(focusWidget()) != nullptr) return QDialog::keyPressEvent(event);
    later_.stop();
    ShowPreview();
}

QPageLayout PrintDialog::Layout() const {
    const auto id = static_cast<QPageSize::PageSizeId>(paper_->currentData().toInt());
    return QPageLayout(QPageSize(id), static_cast<QPageLayout::Orientation>(turn_->currentData().toInt()),
                       QMarginsF(kMargin_mm, kMargin_mm, kMargin_mm, kMargin_mm), QPageLayout::Millimeter);
}

PageFooter PrintDialog::FooterOn(const QPageLayout& layout) const {
    const QString scale = trueToScale_ ? "   1:" + QLocale(QLocale::English).toString(scale_->value()) : QString();
    QString date = QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
    date.replace(QLatin1Char(' '), QChar::Nbsp);  // it stays in one line
    // The control draws its bar in the window alone.
    const int barZoom = trueToScale_ && map_.ScaleBarMode() != 0 ? scale_->value() : 0;
    const double width_mm = layout.paintRect(QPageLayout::Millimeter).width();
    return PageFooter((title_ + scale).trimmed(), credit_.isEmpty() ? date : credit_ + "   " + date, std::floor(width_mm),
                      barZoom);
}

PageSetup PrintDialog::SetupOn(const QPageLayout& layout, int dpi) const {
    const QRectF inside = layout.paintRect(QPageLayout::Millimeter);
    PageSetup setup;
    const int footer_mm = (std::min)(FooterOn(layout).Height_mm(), static_cast<int>(inside.height() / 3));
    // Whole millimetres: the scale of the page is worked out from them.
    setup.map_mm = QSize(static_cast<int>(inside.width()), static_cast<int>(inside.height()) - footer_mm);
    setup.dpi = dpi;
    setup.zoom = scale_->value();
    setup.centre = {x_->value(), y_->value()};
    return setup;
}

QString PrintDialog::Why(Painted painted) {
    return painted == Painted::NoMemory ? tr("There is no memory for a page of this size. Choose a smaller paper.") : QString();
}

PrintDialog::Painted PrintDialog::PaintSheet(QPainter& painter, const QPageLayout& layout, int dpi, MapAs how,
                                             WorkProgress* progress) {
    // The control draws a map in one go; what can be told and cancelled is how its page is performed.
    const auto told = [progress](double done) { return progress == nullptr || progress->Tell(kDrawn + (1 - kDrawn) * done); };
    missing_.clear();
    if (progress != nullptr && !progress->Tell(0)) return Painted::Cancelled;
    const PageSetup setup = SetupOn(layout, dpi);
    QStringList missing;
    const MapPage page = RecordPage(map_, setup, [&] { missing = leftOut_ ? leftOut_() : QStringList(); });
    if (page.IsEmpty()) return Painted::NoMemory;
    if (!told(0)) return Painted::Cancelled;
    const double margin = ToPixels(kMargin_mm, dpi);
    if (how == MapAs::Picture) {
        painter.translate(std::round(margin), std::round(margin));  // its pixels are those of the sheet
        painter.drawImage(0, 0, page.picture);
    } else {
        painter.translate(margin, margin);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        const bool whole = PaintPage(map_, page, painter, told) >= 0;
        painter.restore();
        if (!whole) return Painted::Cancelled;
        painter.setClipping(false);
    }
    const QSizeF map(page.picture.size());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, ToPixels(0.2, dpi)));
    painter.drawRect(QRectF(QPointF(0, 0), map));
    painter.translate(0, map.height());
    const double inside_mm = layout.paintRect(QPageLayout::Millimeter).height();
    FooterOn(layout).Paint(painter, dpi, inside_mm - setup.map_mm.height());
    missing_ = missing;
    return Painted::Whole;
}

namespace {

QString NotOnPage(const QStringList& images) {
    return PrintDialog::tr("Images that the page does not show:") + '\n' + images.join('\n');
}

}  // namespace

void PrintDialog::ShowPreview() {
    later_.stop();
    if (WorkProgress::IsRunning()) return later_.start();  // it runs the event loop
    const QSizeF paper = Layout().fullRect(QPageLayout::Millimeter).size();
    sheet_ = QImage(static_cast<int>(ToPixels(paper.width(), kPreviewDpi)),
                    static_cast<int>(ToPixels(paper.height(), kPreviewDpi)), QImage::Format_RGB32);
    sheet_.fill(Qt::white);
    QPainter painter(&sheet_);
    const Painted painted = PaintSheet(painter, Layout(), kPreviewDpi, MapAs::Shapes);
    painter.end();
    previewMissing_ = missing_;
    QString words = Why(painted);
    if (words.isEmpty()) words = tr("%1 × %2 mm of map").arg(Setup(1).map_mm.width()).arg(Setup(1).map_mm.height());
    if (!trueToScale_) {
        words += '\n' + tr("A map of sheets is not to scale, so none stands on the page. Choose View, Frame, a plane zone "
                           "to print at a scale.");
    }
    if (!previewMissing_.isEmpty()) words += '\n' + NotOnPage(previewMissing_);
    words_->setText(words);
    ShowSheet();
}

// The page is drawn once and fitted as often as the window changes.
bool PrintDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == preview_ && event->type() == QEvent::Resize) ShowSheet();
    return QDialog::eventFilter(watched, event);
}

void PrintDialog::ShowSheet() {
    if (sheet_.isNull()) return;
    const double ratio = devicePixelRatioF();
    QImage shown = sheet_.scaled((QSizeF(preview_->size()) * ratio).toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter frame(&shown);
    frame.drawRect(shown.rect().adjusted(0, 0, -1, -1));
    frame.end();
    shown.setDevicePixelRatio(ratio);
    preview_->setPixmap(QPixmap::fromImage(shown));
}

QString PrintDialog::WritePdf(const QString& path) {
    QSaveFile file(path);  // what stood there stays until the new one is whole
    const QString failed = tr("%1 could not be written. Choose another folder, or make room there.").arg(path);
    if (!file.open(QIODevice::WriteOnly)) return failed;
    Painted painted = Painted::NoMemory;
    {
        WorkProgress progress(*this, tr("Making the page…"));
        QPdfWriter pdf(&file);
        pdf.setTitle(title_);
        pdf.setResolution(kPrintDpi);
        QPageLayout layout = Layout();
        layout.setMode(QPageLayout::FullPageMode);
        pdf.setPageLayout(layout);
        QPainter painter(&pdf);
        if (painter.isActive()) painted = PaintSheet(painter, Layout(), kPrintDpi, MapAs::Shapes, &progress);
    }
    if (painted != Painted::Whole) {
        file.cancelWriting();
        return Why(painted);
    }
    return file.commit() ? QString() : failed;
}

QString PrintDialog::WritePng(const QString& path) {
    WorkProgress progress(*this, tr("Making the page…"));
    const QSizeF paper = Layout().fullRect(QPageLayout::Millimeter).size();
    QImage picture(qRound(ToPixels(paper.width(), kPrintDpi)), qRound(ToPixels(paper.height(), kPrintDpi)), QImage::Format_RGB32);
    if (picture.isNull()) return Why(Painted::NoMemory);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    const Painted painted = PaintSheet(painter, Layout(), kPrintDpi, MapAs::Picture, &progress);
    painter.end();
    if (painted != Painted::Whole) return Why(painted);
    const int dotsPerM = static_cast<int>(std::lround(kPrintDpi / kMmPerInch * 1000));
    picture.setDotsPerMeterX(dotsPerM);
    picture.setDotsPerMeterY(dotsPerM);
    QSaveFile file(path);
    bool cancelled = false;
    ToldDevice told(file, static_cast<double>(picture.sizeInBytes()), [&](double done) {
        cancelled = cancelled || !progress.Tell(kDrawn + (1 - kDrawn) * done);
        return !cancelled;
    });
    const bool whole = file.open(QIODevice::WriteOnly) && told.open(QIODevice::WriteOnly) && picture.save(&told, "PNG");
    if (!whole || cancelled) file.cancelWriting();
    if (cancelled) missing_.clear();  // there is no page to tell of
    if (cancelled) return Why(Painted::Cancelled);
    const bool written = whole && file.commit();
    return written ? QString() : tr("%1 could not be written. Choose another folder, or make room there.").arg(path);
}

void PrintDialog::KeepSettings() {
    Settings().setValue("printLandscape", turn_->currentIndex() == 1);
    Settings().setValue("printPaper", paper_->currentData());
    // The scale of the view is offered until another one was chosen.
    if (scale_->value() != map_.Zoom()) {
        Settings().setValue("printScale", scale_->value());
    } else {
        Settings().remove("printScale");
    }
}

void PrintDialog::Tell(const QString& error) {
    if (!error.isEmpty()) QMessageBox::warning(this, "ORVANE4", error);
}

void PrintDialog::TellOfPage(const QString& error) {
    Tell(error.isEmpty() && missing_ != previewMissing_ && !missing_.isEmpty() ? NotOnPage(missing_) : error);
}

void PrintDialog::AskPdf() {
    const std::optional<QString> path =
        AskOneSaveName(*this, tr("Save as PDF"), LastFolder() + "/map.pdf", {"PDF (*.pdf)", ".pdf"});
    if (!path) return;
    NoteFolderOf(*path);
    TellOfPage(WritePdf(*path));
}

void PrintDialog::AskPng() {
    const std::optional<QString> path =
        AskOneSaveName(*this, tr("Save as a picture"), LastFolder() + "/map.png", {"PNG (*.png)", ".png"});
    if (!path) return;
    NoteFolderOf(*path);
    TellOfPage(WritePng(*path));
}

void PrintDialog::AskPrinter() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setResolution(kPrintDpi);
    printer.setPageLayout(Layout());
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    TellOfPage(PrintTo(printer));
}

QString PrintDialog::PrintTo(QPrinter& printer) {
    printer.setResolution(kPrintDpi);
    printer.setFullPage(true);
    // Without the printer's own margins, which full pages do not have: the map's are always there.
    const QPageLayout chosen = printer.pageLayout();
    const QMarginsF margins(kMargin_mm, kMargin_mm, kMargin_mm, kMargin_mm);
    const QPageLayout layout(chosen.pageSize(), chosen.orientation(), margins, QPageLayout::Millimeter);
    if (const int at = paper_->findData(static_cast<int>(chosen.pageSize().id())); at >= 0) paper_->setCurrentIndex(at);
    turn_->setCurrentIndex(turn_->findData(static_cast<int>(chosen.orientation())));
    QPainter painter(&printer);
    const double unit = static_cast<double>(printer.resolution()) / kPrintDpi;  // a printer may keep a resolution of its own
    painter.scale(unit, unit);
    WorkProgress progress(*this, tr("Making the page…"));
    const Painted painted =
        painter.isActive() ? PaintSheet(painter, layout, kPrintDpi, MapAs::Shapes, &progress) : Painted::NoMemory;
    if (painted == Painted::Cancelled) printer.abort();
    return painted != Painted::NoMemory
               ? QString()
               : tr("The page could not be printed. Look whether the printer is ready, or save a PDF instead.");
}

}  // namespace orvane
