// The menus and their keys: everything that the mouse reaches is here too.
#include <QActionGroup>
#include <QMenuBar>
#include <QStyle>
#include <QTabBar>

#include "hosts/viewer/language.h"
#include "hosts/viewer/main_window.h"
#include "hosts/viewer/map_keys.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/work_progress.h"

namespace orvane {

namespace {

constexpr std::int16_t kMargin_percent = 3;
constexpr double kZoomStep = 1.5;
constexpr double kScrollStep = 0.1;  // of the window
constexpr double kPageStep = 0.9;
constexpr int kZoomIntoRectangle = 10;
constexpr int kZoomOutOfRectangle = 20;

/// The first field of a panel that can have the keyboard and shows that it has it, or null. Tabs are no fields.
QWidget* FirstField(QWidget& page) {
    for (QWidget* field = page.nextInFocusChain(); field != &page; field = field->nextInFocusChain()) {
        const bool isField = page.isAncestorOf(field) && field->isVisible() && field->isEnabled() &&
                             (field->focusPolicy() & Qt::TabFocus) != 0 && field->focusProxy() == nullptr;
        if (isField && qobject_cast<QTabBar*>(field) == nullptr) return field;
    }
    return nullptr;
}

QString WithoutMarks(QString name) { return name.remove('&').remove(QStringLiteral("…")); }

}  // namespace

void MainWindow::MakeMenus() {
    QToolBar& bar = *addToolBar(tr("View"));
    bar.setObjectName("view");
    bar.setMovable(false);
    FillFileMenu(*menuBar()->addMenu(tr("&File")), bar);
    FillEditMenu(*menuBar()->addMenu(tr("&Edit")), bar);
    FillViewMenu(*menuBar()->addMenu(tr("&View")), bar);
    QMenu& tools = *menuBar()->addMenu(tr("&Tools"));
    modes_->FillMenu(tools);
    tools.addSeparator();
    AddAction(tools, QT_TR_NOOP("Point with the &keys"), {Qt::Key_Space}, [this] { PointWithKeys(); });
    FillPanelMenu(*menuBar()->addMenu(tr("&Panels")));
    QMenu& help = *menuBar()->addMenu(tr("&Help"));
    AddAction(help, QT_TR_NOOP("&About"), {}, [this] { ShowAbout(); });
    FillLanguageMenu(*menuBar()->addMenu(QStringLiteral("&Language / 言語")), [this] {
        const bool closed = files_->MayReopen() && close();  // the new window reads the map again
        if (closed) emit LanguageChanged();
        return closed;
    });
    addToolBar(relations_);
}

QAction* MainWindow::AddAction(QMenu& menu, const char* name, const QList<QKeySequence>& keys, std::function<void()> work) {
    QAction* action = menu.addAction(tr(name));
    action->setObjectName(WithoutMarks(QString::fromUtf8(name)));
    action->setShortcuts(keys);
    LetMapHaveKeys(*map_, *action);
    // A tool or a long work that runs keeps its state to itself.
    connect(action, &QAction::triggered, this, [work = std::move(work)] {
        if (!WorkProgress::IsRunning()) work();
    });
    return action;
}

QAction* MainWindow::FindAction(const QString& name) const { return findChild<QAction*>(name); }

void MainWindow::FillFileMenu(QMenu& menu, QToolBar& bar) {
    AddAction(menu, QT_TR_NOOP("&New"), {QKeySequence::New}, [this] { files_->AskNew(); });
    QAction* open = AddAction(menu, QT_TR_NOOP("&Open…"), {QKeySequence::Open}, [this] { files_->AskOpen(); });
    open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    AddAction(menu, QT_TR_NOOP("Open &folder…"), {Qt::CTRL | Qt::SHIFT | Qt::Key_O}, [this] { files_->AskOpenFolder(); });
    recent_ = menu.addMenu(tr("Open &recent"));
    recent_->setObjectName("recent files");
    connect(recent_, &QMenu::aboutToShow, this, &MainWindow::FillRecent);
    menu.addSeparator();
    QAction* save = AddAction(menu, QT_TR_NOOP("&Save"), {QKeySequence::Save}, [this] { files_->AskSave(); });
    save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
    AddAction(menu, QT_TR_NOOP("Save &as…"), {Qt::CTRL | Qt::SHIFT | Qt::Key_S}, [this] { files_->AskSaveAs(); });
    menu.addSeparator();
    editActions_ << AddAction(menu, QT_TR_NOOP("&Import…"), {Qt::CTRL | Qt::Key_I}, [this] { files_->AskImport(); });
    AddAction(menu, QT_TR_NOOP("&Export…"), {Qt::CTRL | Qt::Key_E}, [this] { files_->AskExport(); });
    AddAction(menu, QT_TR_NOOP("&Write exchange text…"), {Qt::CTRL | Qt::Key_T}, [this] { files_->AskWriteExchange(); });
    menu.addSeparator();
    AddAction(menu, QT_TR_NOOP("&Print…"), {QKeySequence::Print}, [this] { AskPrint(); });
    AddAction(menu, QT_TR_NOOP("Save the &view as a picture…"), {Qt::CTRL | Qt::SHIFT | Qt::Key_P}, [this] { AskPicture(); });
    menu.addSeparator();
    AddAction(menu, QT_TR_NOOP("Read s&ymbols…"), {}, [this] { files_->AskSymbols(); });
    AddAction(menu, QT_TR_NOOP("Read &line types…"), {}, [this] { files_->AskLineTypes(); });
    AddAction(menu, QT_TR_NOOP("Standard symbols an&d line types"), {}, [this] { files_->DropTables(); });
    menu.addSeparator();
    AddAction(menu, QT_TR_NOOP("&Quit"), {QKeySequence::Quit}, [this] { close(); });
    bar.addAction(open);
    bar.addAction(save);
    bar.addSeparator();
}

void MainWindow::FillRecent() {
    recent_->clear();
    for (const QString& file : RecentFiles()) {
        recent_->addAction(QString(file).replace('&', "&&"), this, [this, file] {
            if (!WorkProgress::IsRunning()) files_->Open({file}, {});
        });
    }
    if (recent_->isEmpty()) recent_->addAction(tr("none yet"))->setEnabled(false);
}

void MainWindow::FillEditMenu(QMenu& menu, QToolBar& bar) {
    undo_ = AddAction(menu, QT_TR_NOOP("&Undo"), {QKeySequence::Undo}, [this] { history_->Undo(); });
    redo_ =
        AddAction(menu, QT_TR_NOOP("&Redo"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)},
                  [this] { history_->Redo(); });
    undo_->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    redo_->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
    bar.addAction(undo_);
    bar.addAction(redo_);
    bar.addSeparator();
    menu.addSeparator();
    AddAction(menu, QT_TR_NOOP("&Find…"), {QKeySequence::Find}, [this] { ShowFind(); });
    QAction* go = AddAction(menu, QT_TR_NOOP("&Go to the feature"), {Qt::Key_G}, [this] { selection_->JumpToCurrent(); });
    selection_->addAction(go);  // the list hears the key too
    AddAction(menu, QT_TR_NOOP("Select &none"), {Qt::CTRL | Qt::SHIFT | Qt::Key_A}, [this] {
        map_->Call("OrvResetActiveAll");
        map_->Call("OrvReDraw");
        RefreshLater();
    });
    // The map hears the key itself, as a tool that runs needs it.
    QAction* drop = AddAction(menu, QT_TR_NOOP("&Delete the selection"), {}, [this] { DeleteSelection(); });
    drop->setShortcut(Qt::Key_Delete);
    drop->setShortcutContext(Qt::WidgetShortcut);
    selection_->List().addAction(drop);
    editActions_ << drop;
    editActions_ << AddAction(menu, QT_TR_NOOP("Edit the te&xt"), {Qt::Key_T}, [this] { feature_->EditText(); });
    editActions_ << AddAction(menu, QT_TR_NOOP("Gi&ve numbers of their own"), {Qt::Key_N}, [this] { GiveOwnNumbers(); });
    menu.addSeparator();
    editActions_ << AddAction(menu, QT_TR_NOOP("&Intersect the selection…"), {Qt::CTRL | Qt::Key_1},
                              [this] { AskOverlay(Overlay::Intersect); });
    editActions_ << AddAction(menu, QT_TR_NOOP("&Merge the selection…"), {Qt::CTRL | Qt::Key_2},
                              [this] { AskOverlay(Overlay::Merge); });
    menu.addSeparator();
    AddAction(menu, QT_TR_NOOP("Select &by a shape"), {Qt::Key_B}, [this] { relations_->StartAction().trigger(); });
    AddAction(menu, QT_TR_NOOP("Choose the sha&pe"), {Qt::SHIFT | Qt::Key_B}, [this] { relations_->Shape().showPopup(); });
    AddAction(menu, QT_TR_NOOP("Choose the re&lation"), {Qt::CTRL | Qt::Key_B}, [this] { relations_->Relation().showPopup(); });
    AddAction(menu, QT_TR_NOOP("Choose the la&yer to draw in"), {Qt::Key_L}, [this] { modes_->OpenLayerList(); });
    menu.addSeparator();
    editActions_ << AddAction(menu, QT_TR_NOOP("New lay&er…"), {Qt::CTRL | Qt::Key_L}, [this] { layers_->AskNewLayer(); });
    editActions_ << AddAction(menu, QT_TR_NOOP("New &sub layer…"), {Qt::CTRL | Qt::SHIFT | Qt::Key_L},
                              [this] { layers_->AskNewSubLayer(); });
    editActions_ << AddAction(menu, QT_TR_NOOP("Rename t&he layer…"), {Qt::SHIFT | Qt::Key_F2}, [this] { layers_->AskName(); });
    editActions_ << AddAction(menu, QT_TR_NOOP("Remove &the layer"), {}, [this] { layers_->RemoveLayer(); });
    AddAction(menu, QT_TR_NOOP("L&ayer up"), {Qt::CTRL | Qt::Key_PageUp}, [this] { layers_->Move(true); });
    AddAction(menu, QT_TR_NOOP("Layer d&own"), {Qt::CTRL | Qt::Key_PageDown}, [this] { layers_->Move(false); });
    FillSwitchMenu(*menu.addMenu(tr("S&witches of the layer")));
    layers_->FillPresetMenu(*menu.addMenu(tr("Loo&ks of all layers")));
}

void MainWindow::FillSwitchMenu(QMenu& menu) {
    struct Switch {
        const char* name;
        Qt::Key key;
        LayersPanel::Switch what;
    };
    for (const Switch& s : {Switch{QT_TR_NOOP("&Show it"), Qt::Key_F7, LayersPanel::Switch::Shown},
                            Switch{QT_TR_NOOP("Let it be sele&cted"), Qt::Key_F8, LayersPanel::Switch::Selectable},
                            Switch{QT_TR_NOOP("Let it be &edited"), Qt::Key_F9, LayersPanel::Switch::Editable}}) {
        QAction* action = AddAction(menu, s.name, {s.key}, [this, what = s.what] { layers_->Turn(what); });
        action->setCheckable(true);
        connect(&menu, &QMenu::aboutToShow, action, [this, action, what = s.what] { action->setChecked(layers_->IsOn(what)); });
    }
}

void MainWindow::FillViewMenu(QMenu& menu, QToolBar& bar) {
    bar.addAction(AddAction(menu, QT_TR_NOOP("&Fit"), {Qt::Key_Home, Qt::Key_F}, [this] { view_.FitAll(kMargin_percent); }));
    bar.addAction(
        AddAction(menu, QT_TR_NOOP("Zoom &in"), {Qt::Key_Plus, Qt::Key_Equal}, [this] { view_.ZoomBy(1 / kZoomStep); }));
    bar.addAction(AddAction(menu, QT_TR_NOOP("Zoom &out"), {Qt::Key_Minus}, [this] { view_.ZoomBy(kZoomStep); }));
    const auto addRectangle = [&](const char* name, const QKeySequence& key, int mode) {
        QAction* action = AddAction(menu, name, {key}, [this, mode] { ZoomByRectangle(mode); });
        action->setCheckable(true);
        action->setData(mode);
        action->setStatusTip(tr("Drag a rectangle on the map; Escape gives it up."));
        rectangleActions_ << action;
    };
    addRectangle(QT_TR_NOOP("Zoom to &rectangle"), Qt::Key_R, kZoomIntoRectangle);
    addRectangle(QT_TR_NOOP("Zoom out &by rectangle"), Qt::SHIFT | Qt::Key_R, kZoomOutOfRectangle);
    bar.addAction(rectangleActions_.front());
    AddAction(menu, QT_TR_NOOP("S&cale…"), {Qt::Key_Z}, [this] { AskScale(); });
    bar.addSeparator();
    place_->FillMenu(menu);
    AddAction(menu, QT_TR_NOOP("Plane s&ystem of the map…"), {}, [this] { files_->AskSystemOfMap(); });
    FillScaleBarMenu(*menu.addMenu(tr("Scale b&ar")));
    menu.addSeparator();
    FillScrollActions(menu);
}

void MainWindow::FillScrollActions(QMenu& menu) {
    struct Scroll {
        const char* text;
        Qt::Key key;
        double widths;
        double heights;
    };
    for (const Scroll& s :
         {Scroll{QT_TR_NOOP("Scroll &left"), Qt::Key_Left, -1, 0}, Scroll{QT_TR_NOOP("Scroll ri&ght"), Qt::Key_Right, 1, 0},
          Scroll{QT_TR_NOOP("Scroll &up"), Qt::Key_Up, 0, 1}, Scroll{QT_TR_NOOP("Scroll &down"), Qt::Key_Down, 0, -1}}) {
        AddAction(menu, s.text, {s.key}, [this, s] { view_.ScrollBy(s.widths * kScrollStep, s.heights * kScrollStep); });
        // The same by nearly a window; it needs no line in the menu.
        auto* page = new QAction(this);
        page->setShortcut(QKeySequence(Qt::SHIFT | s.key));
        connect(page, &QAction::triggered, this, [this, s] { view_.ScrollBy(s.widths * kPageStep, s.heights * kPageStep); });
        LetMapHaveKeys(*map_, *page);
    }
}

void MainWindow::FillScaleBarMenu(QMenu& menu) {
    auto* group = new QActionGroup(this);
    const char* const names[] = {QT_TR_NOOP("&None"), QT_TR_NOOP("&Metres"), QT_TR_NOOP("&Degrees"), QT_TR_NOOP("&Ticks only")};
    for (int mode = 0; mode < 4; ++mode) {
        QAction* action = AddAction(menu, names[mode], {}, [this, mode] {
            map_->SetScaleBarMode(mode);
            map_->Call("OrvReDraw");
            Settings().setValue("scaleBar", mode);
        });
        action->setCheckable(true);
        group->addAction(action);
        connect(&menu, &QMenu::aboutToShow, action, [this, action, mode] { action->setChecked(map_->ScaleBarMode() == mode); });
    }
}

void MainWindow::FillPanelMenu(QMenu& menu) {
    struct Panel {
        QDockWidget* dock;
        QKeySequence key;
    };
    for (const Panel& panel : {Panel{layers_, Qt::Key_F2}, Panel{selection_, Qt::Key_F3}, Panel{feature_, Qt::Key_F4},
                               Panel{images_, Qt::Key_F6}, Panel{log_, Qt::Key_F12}}) {
        // The key goes to the panel, whether it was shown or not; the menu hides it again.
        QAction* go = menu.addAction(tr("Go to: %1").arg(panel.dock->windowTitle()), this, [dock = panel.dock] {
            dock->show();
            dock->raise();
            if (QWidget* first = FirstField(*dock->widget())) first->setFocus(Qt::ShortcutFocusReason);
        });
        go->setShortcut(panel.key);
        go->setObjectName("panel " + panel.dock->objectName());
        QAction* toggle = panel.dock->toggleViewAction();
        menu.addAction(toggle);
    }
    QAction* events = log_->toggleViewAction();
    events->setShortcut(Qt::Key_E);
    LetMapHaveKeys(*map_, *events);
    menu.addSeparator();
    QAction* back = menu.addAction(tr("Go to the &map"), this, [this] { map_->setFocus(); });
    back->setShortcut(Qt::Key_F5);
    QAction* image = AddAction(menu, QT_TR_NOOP("&Add an image…"), {Qt::CTRL | Qt::Key_M}, [this] { images_->AskAdd(); });
    image->setStatusTip(tr("Show an image with the map"));
    AddAction(menu, QT_TR_NOOP("&Place the image…"), {Qt::CTRL | Qt::SHIFT | Qt::Key_M}, [this] { images_->AskPlace(); });
}

}  // namespace orvane
