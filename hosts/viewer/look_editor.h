// The form for what a layer, or a sub layer, looks like.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QWidget>

#include "hosts/viewer/color_button.h"
#include "hosts/viewer/layer_state.h"

namespace orvane {

/// What people call a layer's type.
QString LayerTypeName(std::int32_t layType);

class LookEditor : public QWidget {
    Q_OBJECT

public:
    explicit LookEditor(QWidget* parent = nullptr);

    /// Offers the line types of the store; what a type of layer does not have is hidden.
    void Show(const CDigMem& store, std::int32_t layType, const LayerState& state);
    void ShowNothing() { setEnabled(false); }

signals:
    /// The operator changed something.
    void Edited(const orvane::LayerState& state);

private:
    void FillLineTypes(const CDigMem& store);
    void Tell();
    void ShowRow(QWidget* field, bool on);
    void Row(const QString& text, QWidget* field);

    LayerState state_;
    std::int32_t layType_ = 0;
    bool showing_ = false;
    ColorButton* color_;
    ColorButton* color2_;
    QComboBox* lineType_;
    QSpinBox* lineSize_;
    QComboBox* hatch_;
    QComboBox* symbol_;
    QCheckBox* outline_;
    QCheckBox* covers_;
    QFormLayout* form_;
};

}  // namespace orvane
