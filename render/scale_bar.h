// The frame around the client area and the two rulers along its bottom and right side.
#pragma once

#include <cstdint>

#include "store/frame_target.h"
#include "store/view_params.h"

namespace orvane {

/// Values of the scale bar's mode. All others that are not 0 show rulers with ticks and empty labels.
enum ScaleBarMode : std::int16_t {
    kScaleBarOff = 0,        ///< the frame alone
    kScaleBarMetres = 1,     ///< map coordinates
    kScaleBarGraticule = 2,  ///< minutes and seconds of one fixed sheet
};

/// Draws onto `frame.dc`, which is the screen's: nothing of it enters the buffers. Of the client rectangle only right and bottom
/// are read; `x` and `y` are the view's corner, y downward. A tick falls on every fiftieth of a metre of the device.
/// `logPixelsY` are the dots in an inch that the labels' font is made for. No ticks are drawn for a scale or device of 0.
void DrawScaleBar(const FrameTarget& frame, const ViewParams& view, std::int16_t mode, std::int32_t logPixelsY);

}  // namespace orvane
