// Search for features by the code of their layer and by their number.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <span>

#include "hosts/qt/orvane_widget.h"
#include "hosts/viewer/item_copy.h"

namespace orvane {

class FindDialog : public QDialog {
    Q_OBJECT

public:
    /// `map` must outlive the dialog.
    FindDialog(OrvaneWidget& map, QWidget* parent);

    /// Offers the layers of the map as it is now.
    void ShowLayers();
    /// Another map was opened: nothing of what was found is in it.
    void Forget();
    /// Lists what fits; fields left empty ask nothing.
    void Find();
    /// Goes to the marked feature and selects it. One that is gone leaves map and selection as they are.
    void Go();
    /// Selects all that were found.
    void SelectAll();

    QComboBox& CodeField() { return *code_; }
    QLineEdit& NumberField() { return *number_; }
    QLineEdit& GroupField() { return *group_; }
    QTreeWidget& List() { return *list_; }
    QLabel& Count() { return *count_; }

signals:
    void SelectionChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Selects features that were found. Says why where it could not be all of them; false where none is there any more.
    bool Choose(std::span<const ItemPlace> places);

    OrvaneWidget& map_;
    QComboBox* code_;
    QLineEdit* number_;
    QLineEdit* group_;
    QTreeWidget* list_;
    QLabel* count_;
    std::vector<ItemPlace> found_;
    QString foundText_;  ///< how many they are
};

}  // namespace orvane
