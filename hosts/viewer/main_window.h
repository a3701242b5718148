// The viewer: a window with the map, opened from any vector file.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QStringList>

#include "foreign/import.h"
#include "hosts/common/map_view.h"
#include "hosts/viewer/map_widget.h"

namespace orvane {

class MainWindow : public QMainWindow {
public:
    MainWindow();

    /// Shows the sources in place of the map that is there, with their own zone and layers as `options` tells. When they cannot
    /// be read the map stays, and the operator is told.
    void Open(const QStringList& sources, const ImportOptions& options);
    /// The same without a word; the result tells.
    ImportResult Load(const QStringList& sources, ImportOptions options);

    MapWidget& Map() { return *map_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeActions();
    QAction* AddAction(QMenu& menu, const QString& text, const QList<QKeySequence>& keys, std::function<void()> work);
    void AskAndOpen();
    void ShowZoom(std::int32_t zoom);

    MapWidget* map_;
    MapView view_;
    QLabel* zoomLabel_;
    QLabel* creditLabel_;
    bool loading_ = false;
};

}  // namespace orvane
