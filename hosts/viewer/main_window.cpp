#include "hosts/viewer/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressDialog>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QToolTip>
#include <algorithm>

#include "hosts/common/archive_save.h"
#include "hosts/common/import_map.h"
#include "hosts/common/raster_library.h"

namespace orvane {

namespace {

constexpr std::int16_t kMargin_percent = 3;
constexpr double kZoomStep = 1.5;
constexpr double kScrollStep = 0.1;  // of the window
constexpr double kPageStep = 0.9;
constexpr int kScrollByRightButton = 10;
constexpr int kZoomIntoRectangle = 10;

QString Joined(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts) list << QString::fromStdString(text);
    return list.join("  ");
}

}  // namespace

MainWindow::MainWindow()
    : map_(new OrvaneWidget(this)),
      view_(map_->Control()),
      modes_(new ModeBar(*map_, this)),
      log_(new EventLog(*map_, this)),
      place_(new PlaceLabel(*map_)),
      zoomLabel_(new QLabel),
      creditLabel_(new QLabel) {
    setWindowTitle("ORVANE4");
    setCentralWidget(map_);
    map_->Control().rasters.SetMaker(RasterLibraryMaker());
    map_->Call("OrvInit");
    map_->SetScrollMode(kScrollByRightButton);
    creditLabel_->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(place_);
    statusBar()->addPermanentWidget(creditLabel_);
    statusBar()->addPermanentWidget(zoomLabel_);
    connect(map_, &OrvaneWidget::OnZoomChange, this, &MainWindow::ShowZoom);
    connect(map_, &OrvaneWidget::OnHintStart, this, &MainWindow::ShowHint);
    ShowZoom(view_.Zoom());
    MakeActions();
    addToolBar(Qt::LeftToolBarArea, modes_);
    addDockWidget(Qt::BottomDockWidgetArea, log_);
    log_->hide();
    resize(1200, 880);
    map_->setFocus();
}

void MainWindow::MakeActions() {
    QToolBar& bar = *addToolBar("View");
    bar.setMovable(false);
    QMenu& file = *menuBar()->addMenu("&File");
    QMenu& view = *menuBar()->addMenu("&View");

    QAction* open = AddAction(file, "&Open…", {QKeySequence::Open}, [this] { AskAndOpen(); });
    open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    AddAction(file, "&Quit", {QKeySequence::Quit}, [this] { close(); });

    bar.addAction(open);
    bar.addSeparator();
    bar.addAction(AddAction(view, "&Fit", {Qt::Key_Home, Qt::Key_F}, [this] { view_.FitAll(kMargin_percent); }));
    bar.addAction(AddAction(view, "Zoom &in", {Qt::Key_Plus, Qt::Key_Equal}, [this] { view_.ZoomBy(1 / kZoomStep); }));
    bar.addAction(AddAction(view, "Zoom &out", {Qt::Key_Minus}, [this] { view_.ZoomBy(kZoomStep); }));
    bar.addAction(
        AddAction(view, "Zoom to &rectangle", {Qt::Key_R}, [this] { map_->Call("OrvRectZoom", {kZoomIntoRectangle}); }));
    bar.addSeparator();
    QAction* events = log_->toggleViewAction();
    events->setText("&Events");
    events->setShortcut(Qt::Key_E);
    view.addAction(events);
    bar.addAction(events);
    place_->FillMenu(view);
    view.addSeparator();
    struct Scroll {
        const char* text;
        Qt::Key key;
        double widths;
        double heights;
    };
    for (const Scroll& s : {Scroll{"Scroll &left", Qt::Key_Left, -1, 0}, Scroll{"Scroll &right", Qt::Key_Right, 1, 0},
                            Scroll{"Scroll &up", Qt::Key_Up, 0, 1}, Scroll{"Scroll &down", Qt::Key_Down, 0, -1}}) {
        AddAction(view, s.text, {s.key}, [this, s] { view_.ScrollBy(s.widths * kScrollStep, s.heights * kScrollStep); });
        // The same by nearly a window; it needs no line in the menu.
        auto* page = new QAction(this);
        page->setShortcut(QKeySequence(Qt::SHIFT | s.key));
        connect(page, &QAction::triggered, this, [this, s] { view_.ScrollBy(s.widths * kPageStep, s.heights * kPageStep); });
        addAction(page);
    }
}

QAction* MainWindow::AddAction(QMenu& menu, const QString& text, const QList<QKeySequence>& keys, std::function<void()> work) {
    QAction* action = menu.addAction(text);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, std::move(work));
    return action;
}

void MainWindow::AskAndOpen() {
    const QStringList files =
        QFileDialog::getOpenFileNames(this, "Open a map", {},
                                      "Archives and vector data (*.Ovb *.Ovt *.ovb *.ovt *.OVB *.OVT *.geojson *.json *.shp "
                                      "*.gpkg *.gml *.kml *.fgb *.zip);;"
                                      "All files (*)");
    if (!files.isEmpty()) Open(files, {});
}

void MainWindow::Open(const QStringList& sources, const ImportOptions& options) {
    const ImportResult result = Load(sources, options);
    if (result.fault == ImportFault::Cancelled) return;
    QStringList lines;
    if (!result.Ok()) lines << QString::fromStdString(result.error);
    for (const std::string& line : LeftOutLines(result.summary.leftOut)) lines << QString::fromStdString(line);
    // What is wrong with an archive is more than a note on the way.
    if (IsArchiveName(sources.front().toStdString())) {
        for (const std::string& line : result.summary.notes) lines << QString::fromStdString(line);
    }
    if (lines.isEmpty()) return;
    QMessageBox box(result.Ok() ? QMessageBox::Information : QMessageBox::Warning, "ORVANE4", lines.join('\n'), QMessageBox::Ok,
                    this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

ImportResult MainWindow::LoadArchive(const std::vector<std::string>& names, const std::function<bool(double)>& progress) {
    ImportResult result;
    if (names.size() > 1) {
        result.fault = ImportFault::BadOption;
        result.error = "an archive is shown alone";
        return result;
    }
    const auto empty = [this] { StartOver(); };
    const OpenedArchive opened = OpenArchive(map_->Control().store, names.front(), progress, empty);
    if (opened.cancelled && opened.begun) empty();
    if (!opened.opened) {
        result.fault = opened.cancelled && !opened.begun ? ImportFault::Cancelled : ImportFault::Unreadable;
        result.error = opened.error;
    } else {
        result.summary.notes = opened.warnings;
    }
    return result;
}

ImportResult MainWindow::Load(const QStringList& sources, ImportOptions options) {
    std::vector<std::string> names;
    for (const QString& source : sources) names.push_back(source.toStdString());
    if (loading_) return {ImportFault::Cancelled, "another import is running", {}};
    loading_ = true;

    QProgressDialog progress("Reading…", "Cancel", 0, 100, this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(700);
    options.beforeStoring = [this] { StartOver(); };
    options.progress = [&progress](double fraction) {
        const int percent = static_cast<int>(fraction * 100);
        if (percent != progress.value()) progress.setValue(percent);  // which runs the event loop
        return !progress.wasCanceled();
    };
    const bool isArchive = std::any_of(names.begin(), names.end(), IsArchiveName);
    ImportResult result = isArchive ? LoadArchive(names, options.progress) : ImportMap(map_->Control(), names, options);
    progress.reset();
    loading_ = false;
    if (!result.Ok()) return result;

    map_->PaintNow();
    LetEdit();
    modes_->ShowLayers();
    place_->TakeMap(result.summary.zone);
    view_.SetSquareArea();
    view_.FitAll(kMargin_percent);
    setWindowTitle(QFileInfo(sources.front()).fileName() + (sources.size() > 1 ? ", …" : "") + " — ORVANE4");
    creditLabel_->setText(Joined(result.summary.descriptions));
    statusBar()->showMessage(Joined(result.summary.notes), 15000);
    return result;
}

// The import runs inside this window's calls; it is cancelled in its own dialog, and the window closes after it.
void MainWindow::closeEvent(QCloseEvent* event) { event->setAccepted(!loading_); }

void MainWindow::ShowHint(int datNo, const QString& code, int meshNo, int screenX_px, int screenY_px) {
    const double ratio = map_->devicePixelRatioF();
    QToolTip::showText(QPoint(qRound(screenX_px / ratio), qRound(screenY_px / ratio)),
                       QStringLiteral("<span>%1 / %2: %3</span>").arg(code.toHtmlEscaped()).arg(meshNo).arg(datNo), map_);
}

// An init leaves the frame and the run mode as they are, and a tool of the map before would go on.
void MainWindow::StartOver() {
    map_->Call("OrvCancelOrgEdit");
    if (map_->Control().frameMode != 0) map_->Call("OrvChgGeoFrame", {0, 0});
    map_->SetRunMode(kRunNormal);
    map_->Call("OrvInit");
}

// Archives say nothing of what may be picked and edited, and a layer read from one may be neither.
void MainWindow::LetEdit() {
    const CDigMem& store = map_->Control().store;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const QByteArray code(store.Layer(i).code.CStr());
        map_->Call("OrvSetLayActMode", {code, true});
        map_->Call("OrvSetLayEditFlg", {code, true});
    }
}

void MainWindow::ShowZoom(std::int32_t zoom) { zoomLabel_->setText("1:" + QLocale(QLocale::English).toString(zoom)); }

}  // namespace orvane
