// The tool bar that says what a click in the map means: the run modes, and for new data the layer that it goes to.
#pragma once

#include <QActionGroup>
#include <QComboBox>
#include <QToolBar>

#include "hosts/qt/orvane_widget.h"

namespace orvane {

class ModeBar : public QToolBar {
public:
    /// `map` must outlive the bar.
    ModeBar(OrvaneWidget& map, QWidget* parent);

    /// Offers the layers of the map as it is now.
    void ShowLayers();

private:
    void AddMode(const QString& text, const QString& hint, int runMode);
    void Choose(int runMode);
    void Draw();
    /// Shows the mode that the control is in; a tool ends by itself.
    void Sync();

    OrvaneWidget& map_;
    QActionGroup* modes_;
    QComboBox* layers_;
};

}  // namespace orvane
