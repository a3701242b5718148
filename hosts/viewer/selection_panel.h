// The selected features in a list.
#pragma once

#include <QDockWidget>
#include <QLabel>
#include <QTreeWidget>

#include "hosts/qt/orvane_widget.h"
#include "hosts/viewer/item_copy.h"

namespace orvane {

class SelectionPanel : public QDockWidget {
    Q_OBJECT

public:
    /// `map` must outlive the panel.
    SelectionPanel(OrvaneWidget& map, QWidget* parent);

    /// Shows the features that are selected now, at most kMostRows of them.
    void ShowSelection();
    /// The features marked in the list, or, with none marked, the first.
    std::optional<ItemPlace> Current() const;
    /// Moves the map to the feature at hand; the others stay selected.
    void JumpToCurrent();
    /// Selects the marked features alone.
    void KeepMarked();
    /// Takes the marked features out of the selection.
    void DropMarked();
    QTreeWidget& List() { return *list_; }

    static constexpr std::size_t kMostRows = 5000;

signals:
    /// The feature at hand is another one.
    void CurrentChanged();
    /// The panel changed what is selected.
    void SelectionChanged();

private:
    std::vector<ItemPlace> Marked() const;
    void Keep(std::span<const ItemPlace> places);

    OrvaneWidget& map_;
    QTreeWidget* list_;
    QLabel* more_;
};

}  // namespace orvane
