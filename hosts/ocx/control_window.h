// The window of an active control: every message of the operator's goes to the map.
#pragma once

#include "hosts/ocx/com_base.h"

namespace orvane {

class ControlObject;

/// Makes the window, a child of the container's, and attaches it to the control's form; null when the system makes none.
HWND MakeControlWindow(ControlObject& object, HWND parent, const RECT& place);
/// Takes the class of the window back, for a module that goes.
void ForgetWindowClass();

}  // namespace orvane
