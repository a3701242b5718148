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
#include <array>

#include "hosts/viewer/color_button.h"
#include "hosts/viewer/edit_history.h"
#include "hosts/viewer/form_field.h"

namespace orvane {

class FeaturePanel : public QDockWidget {
    Q_OBJECT

public:
    /// Both must outlive the panel.
    FeaturePanel(OrvaneWidget& map, EditHistory& history, QWidget* parent);

    /// Shows a feature, or an empty form. What the operator has entered for the same feature and not applied yet stays. A
    /// feature that a tool works on is shown as it was before.
    void Show(const std::optional<ItemPlace>& place);
    /// The first one with the key.
    void Show(const ItemKey& key);
    /// Writes the fields that the operator changed into the feature, as one step of the history. The others stay as exact as they
    /// are, whatever the form can show of them. Nothing, where the feature's layer is not for editing.
    void Apply();
    /// Gives the text field the keyboard.
    void EditText();

    QLineEdit& TextField() { return *text_; }
    QSpinBox& TagField() { return *tag_; }
    QComboBox& SubLayerField() { return *subLayer_; }
    QTableWidget& Points() { return *points_; }
    QSpinBox& SizeField() { return *size_; }
    QPushButton& ApplyButton() { return *apply_; }
    QLabel& Locked() { return *locked_; }
    /// Why the points cannot be changed, hidden where they can.
    QLabel& PointsNote() { return *pointsNote_; }

private:
    enum Name {
        kTag,
        kSubLayer,
        kHasText,
        kText,
        kOwnFont,
        kFace,
        kSize,
        kPos,
        kAngle,
        kTextX,
        kTextY,
        kBold,
        kItalic,
        kHalo,
        kFill,
        kUline,
        kStrike,
        kFcolor,
        kBcolor,
        kFieldCnt
    };

    QWidget* MakeTextPage();
    void NameFields();
    void ShowNothing();
    /// With the fields locked, what they show can be read and copied.
    void LetChange(bool on);
    void ShowFields(const ItemCopy& item, const LayerDef& layer);
    void ShowText(const ItemCopy& item, bool keepWords);
    void ShowPoints(const ItemCopy& item, bool keepEntered);
    /// Whether a field has something that was entered and not applied.
    bool HasEntered(const QWidget& field) const;
    /// Puts what is being typed into the cell of a point.
    void EndTyping();
    /// False, with the operator told, when a field holds what a map cannot.
    bool ReadText(ItemCopy& item) const;
    bool ReadWords(TextCopy& text) const;
    bool ReadPoints(ItemCopy& item) const;
    FormField& Field(Name name) { return fields_[static_cast<std::size_t>(name)]; }
    bool IsChanged(Name name) const { return fields_[static_cast<std::size_t>(name)].IsChanged(); }

    OrvaneWidget& map_;
    EditHistory& history_;
    std::optional<ItemPlace> place_;
    std::array<FormField, kFieldCnt> fields_;
    double originX_ = 0;
    double originY_ = 0;
    QWidget* form_;
    QLabel* title_;
    QLabel* locked_;  ///< why nothing can be changed
    QSpinBox* tag_;
    QComboBox* subLayer_;
    QLabel* pointsNote_;
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
