// What one frame hands to every drawing routine; it always travels together.
#pragma once

#include "platform/device_context.h"
#include "platform/values.h"

namespace orvane {

struct FrameTarget {
    DeviceContext* dc = nullptr;         ///< draws here
    DeviceContext* reference = nullptr;  ///< compatible bitmaps and font metrics are taken from it
    double x = 0;                        ///< world position of the left top pixel, y downward
    double y = 0;
    Rect client;  ///< pixels
    Rect stripA;  ///< what a scroll uncovered; the client area in a whole frame
    Rect stripB;
    double pendX = 0;  ///< pixels
    double pendY = 0;
};

}  // namespace orvane
