// The viewer: a window with the map, opened from any vector file or from an archive.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "foreign/import.h"
#include "hosts/common/map_view.h"
#include "hosts/qt/orvane_widget.h"
#include "hosts/viewer/event_log.h"
#include "hosts/viewer/mode_bar.h"
#include "hosts/viewer/place_label.h"

namespace orvane {

class MainWindow : public QMainWindow {
public:
    MainWindow();

    /// Shows the sources in place of the map that is there: vector files, with their own zone and layers as `options` tells, or
    /// one archive. When they cannot be read the map stays, and the operator is told. An archive that is broken off while it is
    /// read leaves an empty map.
    void Open(const QStringList& sources, const ImportOptions& options);
    /// The same without a word; the result tells.
    ImportResult Load(const QStringList& sources, ImportOptions options);

    /// Shows whose data it is, for maps that do not say so themselves.
    void SetCredit(const QString& credit) { creditLabel_->setText(credit); }

    OrvaneWidget& Map() { return *map_; }
    PlaceLabel& Place() { return *place_; }
    /// The events so far, a line each.
    QString Events() const { return log_->Text(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeActions();
    QAction* AddAction(QMenu& menu, const QString& text, const QList<QKeySequence>& keys, std::function<void()> work);
    void AskAndOpen();
    void ShowHint(int datNo, const QString& code, int meshNo, int screenX_px, int screenY_px);
    void LetEdit();
    ImportResult LoadArchive(const std::vector<std::string>& names, const std::function<bool(double)>& progress);
    void ShowZoom(std::int32_t zoom);

    OrvaneWidget* map_;
    MapView view_;
    ModeBar* modes_;
    EventLog* log_;
    PlaceLabel* place_;
    QLabel* zoomLabel_;
    QLabel* creditLabel_;
    bool loading_ = false;
};

}  // namespace orvane
