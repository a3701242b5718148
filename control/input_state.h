// What the mouse handlers remember from one message to the next.
#pragma once

#include <cstdint>

#include "platform/values.h"

namespace orvane {

/// The rubber rectangle: a left button that is down may become a drag.
enum class RectState : std::int32_t { None = 0, Down = 1, Dragging = 2 };

struct InputState {
    RectState rectState = RectState::None;
    Point rectStart;  ///< corners of the rubber rectangle, client pixels
    Point rectEnd;
    Point lastMovePos;          ///< client pixels
    double lastMoveTime_s = 0;  ///< whole seconds of the window's clock: when the hint was last armed
    bool dblClkSeen = false;    ///< from a double click to the button up that ends it
};

}  // namespace orvane
