// What a host does with the view of a map, in automation calls.
#pragma once

#include <cstdint>

#include "control/ctrl.h"
#include "hosts/common/automation.h"
#include "store/extent.h"

namespace orvane {

/// Moves of the view that keep its odd limits out of the way. The control must be painted once before, and outlive it.
class MapView {
public:
    explicit MapView(COrvane4Ctrl& ctrl) : ctrl_(ctrl), automation_(ctrl) {}

    /// Writes the four Area limits as one square about (0, 0): a jump holds x against top and bottom and y against left and
    /// right, and a scroll holds the size of the view against the limits themselves. The square holds the data with room for a
    /// view four times as large on every side.
    void SetSquareArea();
    /// Shows all data with a margin of `margin_percent` on each side, and repaints. Data without width or height, which the
    /// control's own fit leaves alone, is centred at a scale that shows its longer side, a single place at 1:5000.
    void FitAll(std::int16_t margin_percent);
    /// Multiplies the scale denominator: above 1 zooms out. The centre stays. Beyond what the Area limits can scroll, nothing
    /// happens, and the answer is false.
    bool ZoomBy(double factor);
    /// Scrolls by parts of the window's width and height, to the right and upward.
    void ScrollBy(double widths, double heights);
    /// The scale denominator.
    std::int32_t Zoom() const { return automation_.GetI4("Zoom"); }

private:
    void FitThin(const MapExtent& extent);
    double UnitsPerPixel() const;

    COrvane4Ctrl& ctrl_;
    Automation automation_;
};

}  // namespace orvane
