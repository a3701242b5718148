// Which items of a block cannot lie under a click, told by their rectangles alone.
#pragma once

#include <cstdint>

#include "select/pick.h"
#include "store/records.h"
#include "store/view_params.h"

namespace orvane {

/// The box, local to a block, outside of which no point comes to lie within `margin_px` of a click. A search over all items of
/// the screen would wait for the points of each; with it the points of most are never asked for.
///
/// It errs on one side only: what it calls a miss is one to the last bit. In a view that is not turned each axis stands for
/// itself and the device transform is monotonic, so the box is made by a guess and proved by the transform itself. In a turned
/// view the box has slack for rounding, and answers only for coordinates so far from the limits of pixels that the slack is
/// enough.
class PickWindow {
public:
    PickWindow(const ViewParams& view, const PickPlace& place, double GX, double GY, Point at, std::int64_t margin_px);

    /// True when no straight line between points of an item meets the click, for an item whose points lie within one unit of
    /// `rect`.
    bool Misses(const Rect& rect) const {
        const bool outside = (rect.right < left_) | (rect.left > right_) | (rect.bottom < top_) | (rect.top > bottom_);
        if (!turned_) return outside;
        return outside && rect.left >= -limit_ && rect.top >= -limit_ && rect.right <= limit_ && rect.bottom <= limit_;
    }
    /// In a turned view a shape that stands along the axes of the screen may reach beyond the lines between its points.
    bool Turned() const { return turned_; }

private:
    void FindStraight(const ViewParams& view, const PickPlace& place, double GX, double GY, Point at, std::int64_t margin_px);
    void FindTurned(const ViewParams& view, const PickPlace& place, double GX, double GY, Point at, std::int64_t margin_px);

    // Without a box nothing is a miss.
    std::int32_t left_ = INT32_MIN, right_ = INT32_MAX, top_ = INT32_MIN, bottom_ = INT32_MAX;
    bool turned_;
    std::int32_t limit_ = -1;
};

}  // namespace orvane
