// An off-screen window all of whose verbs are written down.
#pragma once

#include "platform/offscreen_window.h"
#include "platform/record/record_context.h"

namespace orvane {

/// From now on the control sees `desktop` as the desktop, and each context of the window writes into the list of `desktop`
/// under the label "window". `desktop` must outlive the use of the window. What the window itself draws is not written.
void RecordWindow(OffscreenWindow& window, RecordContext& desktop);

}  // namespace orvane
