// The properties of one feature: its tag, sub layer and points, and its text with the text's look.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include "hosts/viewer/color_button.h"
#include "hosts/viewer/edit_history.h"

namespace orvane {

class FeaturePanel : public QDockWidget {
    Q_OBJECT

public:
    /// Both must outlive the panel.
    FeaturePanel(OrvaneWidget& map, EditHistory& history, QWidget* parent);

    /// Shows a feature, or an empty form.
    void Show(const std::optional<ItemKey>& key);
    /// Writes what the form says into the feature, as one step of the history.
    void Apply();
    /// Gives the text field the keyboard.
    void EditText();

    QLineEdit& TextField() { return *text_; }
    QSpinBox& TagField() { return *tag_; }
    QComboBox& SubLayerField() { return *subLayer_; }
    QTableWidget& Points() { return *points_; }
    QSpinBox& SizeField() { return *size_; }

private:
    QWidget* MakeTextPage();
    void ShowText(const ItemCopy& item);
    void ShowPoints(const ItemCopy& item);
    /// False, with the operator told, when a field holds what a map cannot.
    bool ReadText(ItemCopy& item) const;
    bool ReadPoints(ItemCopy& item) const;

    OrvaneWidget& map_;
    EditHistory& history_;
    std::optional<ItemKey> key_;
    double originX_ = 0;
    double originY_ = 0;
    QWidget* form_;
    QLabel* title_;
    QSpinBox* tag_;
    QComboBox* subLayer_;
    QTableWidget* points_;
    QLineEdit* text_;
    QFontComboBox* font_;
    QSpinBox* size_;
    QComboBox* pos_;
    QDoubleSpinBox* angle_;
    QDoubleSpinBox* textX_;
    QDoubleSpinBox* textY_;
    QCheckBox* bold_;
    QCheckBox* italic_;
    QCheckBox* halo_;
    QCheckBox* fill_;
    QCheckBox* uline_;
    QCheckBox* strike_;
    ColorButton* fcolor_;
    ColorButton* bcolor_;
    QCheckBox* hasText_;
    QCheckBox* ownFont_;
    QPushButton* apply_;
};

}  // namespace orvane
