// The dotted line that follows the cursor on the window alone.
#pragma once

#include <span>

#include "control/ctrl.h"

namespace orvane {

/// Restores the picture on the window, which wipes the line before, and draws a dotted one through client pixels. Nothing happens
/// before the first paint.
void DrawRubberLine(COrvane4Ctrl& ctrl, std::span<const Point> pixels);

}  // namespace orvane
