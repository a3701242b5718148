#include "hosts/viewer/main_window.h"

#include <QCloseEvent>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLocale>
#include <QMessageBox>
#include <QSaveFile>
#include <QStatusBar>
#include <QTimer>
#include <QToolTip>
#include <algorithm>

#include "hosts/common/raster_library.h"
#include "hosts/viewer/host_words.h"
#include "hosts/viewer/new_text.h"
#include "hosts/viewer/print_dialog.h"
#include "hosts/viewer/save_name.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

namespace {

constexpr int kScrollByRightButton = 10;

QString Joined(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts) list << Words(text);
    return list.join("  ");
}

}  // namespace

MainWindow::MainWindow()
    : map_(new OrvaneWidget(this)),
      view_(map_->Control()),
      history_(new EditHistory(*map_, this)),
      shapes_(new ShapeTool(*map_)),
      pointer_(new KeyPointer(*map_, *shapes_)),
      modes_(new ModeBar(*map_, *history_, this)),
      log_(new EventLog(*map_, this)),
      place_(new PlaceLabel(*map_)),
      files_(new MapFiles(*map_, *history_, *place_, *this)),
      layers_(new LayersPanel(*map_, *history_, this)),
      selection_(new SelectionPanel(*map_, this)),
      feature_(new FeaturePanel(*map_, *history_, this)),
      images_(new ImagePanel(*map_, *history_, *shapes_, this)),
      relations_(new RelationBar(*map_, *shapes_, this)),
      find_(new FindDialog(*map_, this)),
      selectedLabel_(new QLabel),
      zoomLabel_(new QLabel),
      creditLabel_(new QLabel) {
    setCentralWidget(map_);
    images_->ReadWith(RasterLibraryMaker());
    map_->Call("OrvInit");
    map_->SetLineTagMode(false);  // a tag is the operator's own number and hides nothing
    images_->Forget();
    map_->SetScrollMode(kScrollByRightButton);
    map_->installEventFilter(this);
    selection_->List().installEventFilter(this);
    map_->installEventFilter(pointer_);  // which is asked before the window
    creditLabel_->setTextFormat(Qt::PlainText);
    statusBar()->addPermanentWidget(place_);  // messages come and go beside it
    statusBar()->addPermanentWidget(creditLabel_);
    statusBar()->addPermanentWidget(selectedLabel_);
    statusBar()->addPermanentWidget(zoomLabel_);
    MakeMenus();
    addToolBar(Qt::LeftToolBarArea, modes_);
    addDockWidget(Qt::BottomDockWidgetArea, log_);
    addDockWidget(Qt::RightDockWidgetArea, layers_);
    addDockWidget(Qt::RightDockWidgetArea, selection_);
    addDockWidget(Qt::RightDockWidgetArea, feature_);
    addDockWidget(Qt::RightDockWidgetArea, images_);
    tabifyDockWidget(layers_, images_);
    tabifyDockWidget(selection_, feature_);
    layers_->raise();
    selection_->raise();
    log_->hide();
    Connect();
    ShowZoom(view_.Zoom());
    ShowTitle();
    resize(1280, 880);
    RestoreLayout();
    RefreshNow();
    const QStringList missing = files_->ReadTables();
    statusBar()->showMessage(missing.isEmpty() ? tr("Ctrl+O opens a map or other data; Ctrl+L makes a layer to draw in.")
                                               : missing.join("  "));
    map_->setFocus();
}

// The parts go one by one after this, and some speak while they go.
MainWindow::~MainWindow() {
    map_->disconnect();
    history_->Stack().disconnect();
    for (QObject* part : QList<QObject*>{history_, shapes_, selection_, layers_, files_}) part->disconnect(this);
}

void MainWindow::Connect() {
    using Map = OrvaneWidget;
    connect(map_, &Map::OnZoomChange, this, &MainWindow::ShowZoom);
    connect(map_, &Map::OnHintStart, this, &MainWindow::ShowHint);
    connect(pointer_, &KeyPointer::HintAsked, this, &MainWindow::ShowHint);
    connect(map_, &Map::MouseUp, this, &MainWindow::RefreshLater);
    connect(map_, &Map::OnEditorEnd, this, &MainWindow::RefreshLater);
    connect(map_, &Map::OnDataDblClick, this, [this] {
        feature_->show();
        feature_->raise();
    });
    connect(history_, &EditHistory::Changed, this, &MainWindow::RefreshLater);
    connect(history_, &EditHistory::Said, this, [this](const QString& words) { statusBar()->showMessage(words, 10000); });
    connect(selection_, &SelectionPanel::SelectionChanged, this, &MainWindow::RefreshLater);
    connect(selection_, &SelectionPanel::CurrentChanged, this, [this] { feature_->Show(selection_->Current()); });
    connect(relations_, &RelationBar::SelectionChanged, this, &MainWindow::RefreshLater);
    connect(relations_, &RelationBar::Said, this, [this](const QString& words) { statusBar()->showMessage(words, 10000); });
    connect(images_, &ImagePanel::Said, this, [this](const QString& words) { statusBar()->showMessage(words, 15000); });
    connect(modes_, &ModeBar::Said, this, [this](const QString& words) { statusBar()->showMessage(words, 10000); });
    connect(modes_, &ModeBar::TextAskedFor, this,
            [this](const ItemKey& block) { AskNewText(*map_, *shapes_, *history_, block, [this] { modes_->DrawNext(); }); });
    connect(find_, &FindDialog::SelectionChanged, this, &MainWindow::RefreshLater);
    // One thing at a time has the mouse, and none takes points of one frame into another.
    connect(shapes_, &ShapeTool::Starting, history_, &EditHistory::CancelTool);
    connect(history_, &EditHistory::ToolEnding, this, [this] {
        shapes_->Cancel();
        DropRectangle();
    });
    history_->SetBegun([this] { return shapes_->IsRunning(); });
    connect(shapes_, &ShapeTool::Changed, this, &MainWindow::RefreshLater);
    connect(place_, &PlaceLabel::FrameChanging, this, [this] {
        history_->CancelTool();
        for (QDialog* placing : findChildren<QDialog*>("placing")) placing->close();
    });
    connect(place_, &PlaceLabel::FrameChanged, this, [this] {
        history_->LetEdit(!place_->IsAway());
        place_->IsAway() ? TellAway() : statusBar()->clearMessage();
        RefreshLater();
    });
    connect(files_, &MapFiles::Opened, this, &MainWindow::OnOpened);
    connect(files_, &MapFiles::Added, this, &MainWindow::RefreshLater);
    connect(files_, &MapFiles::Renamed, this, &MainWindow::ShowTitle);
    connect(&history_->Stack(), &QUndoStack::undoTextChanged, this, [this] { RefreshLater(); });
}

void MainWindow::OnOpened(const ImportSummary& summary) {
    history_->LetEdit(!place_->IsAway());
    images_->Forget();
    find_->Forget();
    modes_->Sync();
    creditLabel_->setText(Joined(summary.descriptions));
    statusBar()->showMessage(Joined(summary.notes), 15000);
    statusBar()->setToolTip(Joined(summary.notes));  // which may be longer than the bar
    RefreshNow();
}

// Many things may change at one click; the lists follow once.
void MainWindow::RefreshLater() {
    if (std::exchange(refreshAsked_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (refreshAsked_) RefreshNow();
        },
        Qt::QueuedConnection);
}

void MainWindow::RefreshNow() {
    refreshAsked_ = false;
    if (WorkProgress::IsRunning()) {
        // Not at once: the work runs the event loop until nothing waits.
        constexpr int kLater_ms = 200;
        QTimer::singleShot(kLater_ms, this, &MainWindow::RefreshLater);
        return;
    }
    layers_->ShowLayers();
    modes_->ShowLayers();
    if (find_->isVisible()) find_->ShowLayers();
    selection_->ShowSelection();
    ShowRectangle();
    feature_->Show(selection_->Current());
    const auto count = static_cast<int>(SelectedCount(map_->Control().store));
    selectedLabel_->setText(tr("%n selected", nullptr, count));
    const bool mayEdit = !place_->IsAway();
    modes_->LetEdit(mayEdit);
    feature_->setEnabled(mayEdit);
    for (QAction* action : editActions_) action->setEnabled(mayEdit);
    QUndoStack& stack = history_->Stack();
    undo_->setEnabled(history_->CanUndo() || history_->HasBegun());
    redo_->setEnabled(history_->CanRedo());
    undo_->setText(tr("&Undo") + (stack.canUndo() ? ": " + stack.undoText() : QString()));
    redo_->setText(tr("&Redo") + (stack.canRedo() ? ": " + stack.redoText() : QString()));
    ShowTitle();
}

void MainWindow::ShowTitle() {
    setWindowTitle((files_->Name().isEmpty() ? QString() : files_->Name() + "[*] — ") + "ORVANE4" +
                   (files_->Name().isEmpty() ? "[*]" : ""));
    setWindowModified(history_->IsModified());
}

// Work runs inside this window's calls: it is cancelled in its own dialog, and the window closes after it.
void MainWindow::closeEvent(QCloseEvent* event) {
    if (WorkProgress::IsRunning() || !files_->MayLeaveMap()) {
        event->ignore();
        return;
    }
    QSettings settings = Settings();
    settings.setValue("geometry", saveGeometry());
    settings.setValue("layout", saveState());
    event->accept();
}

void MainWindow::RestoreLayout() {
    const QSettings settings = Settings();
    restoreGeometry(settings.value("geometry").toByteArray());
    isLaidOut_ = restoreState(settings.value("layout").toByteArray());
    map_->SetScaleBarMode(settings.value("scaleBar", 0).toInt());
}

// Docks take their widths from a layout that is only worked out for a window that shows.
void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (std::exchange(isLaidOut_, true)) return;
    constexpr int kPanelWidth = 320;  // the map is what the window is for
    resizeDocks({layers_, selection_}, {kPanelWidth, kPanelWidth}, Qt::Horizontal);
    resizeDocks({layers_, selection_}, {3 * height() / 5, 2 * height() / 5}, Qt::Vertical);  // the looks are a long form
}

void MainWindow::TellAway() {
    statusBar()->showMessage(tr("In a plane zone nothing is edited. View, Frame, Mesh frame goes back."), 15000);
}

// A key comes to the map or to a list only where no action takes it.
bool MainWindow::IsKeyOfZone(const QObject& watched, const QKeyEvent& key) const {
    if (!place_->IsAway()) return false;
    const QKeySequence pressed(key.keyCombination());
    // The letters of the map are what a list is searched by.
    const auto isHeard = [&](const QAction* action) {
        const bool isOfWindow = action->shortcutContext() == Qt::WindowShortcut;
        const QList<QObject*> heardBy = action->associatedObjects();
        return &watched == map_ || isOfWindow || heardBy.contains(selection_) || heardBy.contains(&selection_->List());
    };
    const auto isAsked = [&](const QAction* action) {
        return !action->isEnabled() && action->shortcuts().contains(pressed) && isHeard(action);
    };
    if (isAsked(undo_)) return history_->Stack().canUndo();
    if (isAsked(redo_)) return history_->Stack().canRedo();
    const QList<QAction*> actions = findChildren<QAction*>();
    return std::any_of(actions.begin(), actions.end(), isAsked);
}

// The Delete key belongs to the tools while one runs, and to the selection otherwise.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && IsKeyOfZone(*watched, static_cast<QKeyEvent&>(*event))) {
        TellAway();
        return true;
    }
    if (watched == map_ && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
        map_->Control().rectZoomMode != 0) {
        DropRectangle();
        return true;
    }
    if (watched == map_ && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete &&
        map_->RunMode() < kRunAddEdit) {
        DeleteSelection();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

std::pair<std::vector<ItemPlace>, int> MainWindow::EditableSelection() const {
    CDigMem& store = map_->Control().store;
    std::vector<ItemPlace> places;
    int kept = 0;
    for (ItemPlace& place : SelectedPlaces(store)) {
        const bool editable = store.Layer(store.FindLayDef(place.key.code)).editFlg != 0;
        if (editable) places.push_back(std::move(place));
        kept += !editable;
    }
    return {std::move(places), kept};
}

void MainWindow::TellKept(int kept) {
    if (kept > 0) statusBar()->showMessage(tr("%n feature(s) stay: their layers are not for editing", nullptr, kept), 10000);
}

void MainWindow::DeleteSelection() {
    if (place_->IsAway()) return;
    history_->CancelTool();
    const auto [places, kept] = EditableSelection();
    std::vector<ItemChange> deletions;
    {
        WorkProgress progress(*this, tr("Deleting…"));
        deletions = Deletions(map_->Control().store, places, progress.Teller());
    }
    if (history_->Change(tr("deleting"), std::move(deletions))) TellKept(kept);
}

void MainWindow::GiveOwnNumbers() {
    if (place_->IsAway()) return;
    history_->CancelTool();
    const auto [places, kept] = EditableSelection();
    if (places.empty() && kept == 0) {
        statusBar()->showMessage(tr("Select the features first that are to have a number of their own."), 10000);
        return;
    }
    std::vector<ItemChange> changes = OwnNumbers(map_->Control().store, places);
    const auto count = static_cast<int>(changes.size());
    if (!history_->Change(tr("numbers of their own"), std::move(changes))) return;
    if (count > 0) {
        statusBar()->showMessage(tr("%n feature(s) have another number now", nullptr, count), 10000);
    } else if (kept > 0) {
        TellKept(kept);
    } else {
        statusBar()->showMessage(tr("No selected feature shares its number with another one of its layer and group."), 10000);
    }
}

void MainWindow::ShowHint(int datNo, const QString& code, int meshNo, int screenX_px, int screenY_px) {
    const double ratio = map_->devicePixelRatioF();
    QToolTip::showText(QPoint(qRound(screenX_px / ratio), qRound(screenY_px / ratio)),
                       QStringLiteral("<span>%1 / %2: %3</span>").arg(code.toHtmlEscaped()).arg(meshNo).arg(datNo), map_);
}

void MainWindow::PointWithKeys() {
    if (map_->RunMode() == kRunPan) map_->SetRunMode(kRunNormal);  // the arrows pan by themselves
    modes_->Sync();
    pointer_->Start();
    statusBar()->showMessage(
        tr("Arrows move the cross, Space clicks, with Ctrl adds or takes away; Enter drags, H tells what is there, Escape ends."),
        10000);
}

void MainWindow::ZoomByRectangle(int mode) {
    const bool again = map_->Control().rectZoomMode == mode;
    history_->CancelTool();
    if (!again) {
        map_->Call("OrvRectZoom", {mode});
        if (map_->RunMode() != kRunNormal) map_->SetRunMode(kRunNormal);  // another mode takes the drag for itself
    }
    modes_->Sync();
    ShowRectangle();
}

void MainWindow::DropRectangle() {
    if (map_->Control().rectZoomMode != 0) map_->Call("OrvRectZoom", {0});
    ShowRectangle();
}

void MainWindow::ShowRectangle() {
    for (QAction* action : rectangleActions_) action->setChecked(action->data().toInt() == map_->Control().rectZoomMode);
}

void MainWindow::ShowZoom(std::int32_t zoom) { zoomLabel_->setText("1:" + QLocale(QLocale::English).toString(zoom)); }

void MainWindow::AskScale() {
    bool good = false;
    const int zoom = QInputDialog::getInt(this, "ORVANE4", tr("Scale, 1 to"), view_.Zoom(), 1, 50000000, 1, &good);
    if (!good) return;
    map_->SetZoom(zoom);
    map_->Call("OrvReDraw");
}

void MainWindow::AskOverlay(Overlay what) { OverlayDialog(*map_, *history_, what, this).exec(); }

void MainWindow::AskPrint() {
    history_->CancelTool();
    PrintDialog dialog(*map_, files_->Name(), creditLabel_->text(), this);
    dialog.SetLeftOut([this] { return images_->LeftOut(); });
    dialog.SetTrueToScale(!place_->IsMeshMap() || place_->IsAway());
    dialog.exec();
}

void MainWindow::AskPicture() {
    const std::optional<QString> path =
        AskOneSaveName(*this, tr("Save the view as a picture"), LastFolder() + "/view.png", {"PNG (*.png)", ".png"});
    if (!path) return;
    NoteFolderOf(*path);
    QSaveFile file(*path);  // what stood there stays until the new one is whole
    if (file.open(QIODevice::WriteOnly) && map_->Picture().save(&file, "PNG") && file.commit()) return;
    files_->Tell(true, {tr("%1 could not be written. Choose another folder, or make room there.").arg(*path)});
}

void MainWindow::ShowFind() {
    find_->ShowLayers();
    find_->show();
    find_->raise();
    find_->NumberField().setFocus();
}

void MainWindow::ShowAbout() {
    QMessageBox::about(
        this, "ORVANE4",
        tr("ORVANE4, a map control, and this viewer of its maps.\n\nReads archives, older map files, exchange texts "
           "and any vector data that GDAL reads."));
}

}  // namespace orvane
