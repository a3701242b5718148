// Intersecting and merging the selected areas into a layer of choice.
#pragma once

#include <QComboBox>
#include <QDialog>

#include "hosts/viewer/edit_history.h"

namespace orvane {

enum class Overlay { Intersect = 0, Merge = 1 };

/// Stores the intersection, or the union, of the selected areas as one new feature of a block, as one step of the history. Empty,
/// or why there is none and what to do.
QString RunOverlay(OrvaneWidget& map, EditHistory& history, Overlay what, const std::string& code, std::int32_t meshNo);

/// Asks for the layer and does it.
class OverlayDialog : public QDialog {
    Q_OBJECT

public:
    /// Both must outlive the dialog.
    OverlayDialog(OrvaneWidget& map, EditHistory& history, Overlay what, QWidget* parent);
    QComboBox& Target() { return *target_; }
    void accept() override;

private:
    OrvaneWidget& map_;
    EditHistory& history_;
    Overlay what_;
    QComboBox* target_;
};

}  // namespace orvane
