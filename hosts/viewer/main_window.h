// The viewer: a window with the map and the panels around it. It puts the parts together; what they do is in their own files.
#pragma once

#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QStringList>
#include <functional>

#include "hosts/common/map_view.h"
#include "hosts/viewer/event_log.h"
#include "hosts/viewer/feature_panel.h"
#include "hosts/viewer/find_dialog.h"
#include "hosts/viewer/image_panel.h"
#include "hosts/viewer/key_pointer.h"
#include "hosts/viewer/layers_panel.h"
#include "hosts/viewer/map_files.h"
#include "hosts/viewer/mode_bar.h"
#include "hosts/viewer/overlay_dialog.h"
#include "hosts/viewer/place_label.h"
#include "hosts/viewer/relation_bar.h"
#include "hosts/viewer/selection_panel.h"

namespace orvane {

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// Shows the sources in place of the map that is there, asking for unsaved changes first; what cannot be read, or not all of
    /// it, is told the operator.
    void Open(const QStringList& sources, const ImportOptions& options) { files_->Open(sources, options); }
    /// The same without a word; the result tells.
    ImportResult Load(const QStringList& sources, ImportOptions options) { return files_->Load(sources, std::move(options)); }

    /// Shows whose data it is, for maps that do not say so themselves.
    void SetCredit(const QString& credit) { creditLabel_->setText(credit); }

    OrvaneWidget& Map() { return *map_; }
    PlaceLabel& Place() { return *place_; }
    /// The events so far, a line each.
    QString Events() const { return log_->Text(); }
    MapFiles& Files() { return *files_; }
    EditHistory& History() { return *history_; }
    LayersPanel& Layers() { return *layers_; }
    SelectionPanel& Selection() { return *selection_; }
    FeaturePanel& Feature() { return *feature_; }
    ImagePanel& Images() { return *images_; }
    RelationBar& Relations() { return *relations_; }
    FindDialog& Finder() { return *find_; }
    /// An action by the name that it has in the program's own language, without what its parts add ("&", "…"); null when missing.
    QAction* FindAction(const QString& name) const;

    void DeleteSelection();
    /// Gives selected features that share their number one of their own.
    void GiveOwnNumbers();
    /// Makes the next rectangle that is dragged a zoom, a value of T_OrvRectZoomMode; the same again, as Escape, gives it up.
    void ZoomByRectangle(int mode);
    /// Brings lists and labels in line with the map now, not when the event loop is back.
    void RefreshNow();

signals:
    /// The operator chose another language, and the window has closed for it.
    void LanguageChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // main_menus.cpp
    void MakeMenus();
    void FillFileMenu(QMenu& menu, QToolBar& bar);
    void FillEditMenu(QMenu& menu, QToolBar& bar);
    void FillViewMenu(QMenu& menu, QToolBar& bar);
    void FillScrollActions(QMenu& menu);
    void FillScaleBarMenu(QMenu& menu);
    void FillSwitchMenu(QMenu& menu);
    void FillPanelMenu(QMenu& menu);
    void FillRecent();
    QAction* AddAction(QMenu& menu, const char* name, const QList<QKeySequence>& keys, std::function<void()> work);

    void Connect();
    void RefreshLater();
    void OnOpened(const ImportSummary& summary);
    void ShowTitle();
    void ShowHint(int datNo, const QString& code, int meshNo, int screenX_px, int screenY_px);
    /// What is selected in layers for editing, and how many features more are.
    std::pair<std::vector<ItemPlace>, int> EditableSelection() const;
    void TellKept(int kept);
    void TellAway();
    /// Whether a key is that of an action that waits for the map's own frame.
    bool IsKeyOfZone(const QObject& watched, const QKeyEvent& key) const;
    void PointWithKeys();
    void DropRectangle();
    void ShowRectangle();
    void ShowZoom(std::int32_t zoom);
    void AskScale();
    void AskOverlay(Overlay what);
    void AskPrint();
    void AskPicture();
    void ShowFind();
    void ShowAbout();
    void RestoreLayout();

    OrvaneWidget* map_;
    MapView view_;
    EditHistory* history_;
    ShapeTool* shapes_;
    KeyPointer* pointer_;
    ModeBar* modes_;
    EventLog* log_;
    PlaceLabel* place_;
    MapFiles* files_;
    LayersPanel* layers_;
    SelectionPanel* selection_;
    FeaturePanel* feature_;
    ImagePanel* images_;
    RelationBar* relations_;
    FindDialog* find_;
    QLabel* selectedLabel_;
    QLabel* zoomLabel_;
    QLabel* creditLabel_;
    QMenu* recent_ = nullptr;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QList<QAction*> editActions_;
    QList<QAction*> rectangleActions_;  ///< with their mode as data
    bool refreshAsked_ = false;
    bool isLaidOut_ = false;  ///< the panels have the widths of the last time, or those of a first one
};

}  // namespace orvane
