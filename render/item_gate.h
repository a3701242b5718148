// What every block routine asks of an item before it looks at its points.
#pragma once

#include "platform/values.h"
#include "store/frame_target.h"
#include "store/records.h"
#include "store/view_params.h"

namespace orvane {

/// False for items that stay out of the frame by their line tag, or (with `honourClip`) because the area search found them
/// outside. Such an item keeps its `drawnFlg`.
inline bool PassesGate(const DigDat& dat, std::int32_t lineTagMode, bool honourClip) {
    if (honourClip && dat.clipFlg == 0) return false;
    if (lineTagMode == 1 && dat.lineTag > 0) return false;
    return dat.lineTag != -1;
}

/// Notes that an item was drawn. Most stand so already, and an unwritten item need not go back to memory.
inline void MarkDrawn(DigDat& dat) {
    if (dat.drawnFlg != 1) dat.drawnFlg = 1;
}

/// Tells by an item's integer bounds whether any of it can show in the strips of a frame. Made once for a block.
class StripBox {
public:
    StripBox(const ViewParams& view, const FrameTarget& frame, double GX, double GY);

    /// `rect` is local to the block; a unit is added on every side, for what its whole numbers cut off. What is drawn beyond the
    /// bounds widens them by `hx` and `hy` map units to each side.
    bool InStrips(const Rect& rect, double hx = 0, double hy = 0) const;
    /// The box in device pixels; right and bottom lie outside.
    Rect ToDevice(const Rect& rect, double hx = 0, double hy = 0) const;

private:
    double gx_, gy_;
    ViewRotation rotation_;
    double scaleX_, scaleY_;
    double originX_, originY_, offX_, offY_;
    double pixPerUnit_;
    double pendX_, pendY_;
    Rect stripA_, stripB_;
};

}  // namespace orvane
