// The control's place on a form: a window once the container has activated it, and before that a size without one.
#pragma once

#include "hosts/ocx/com_base.h"
// com_base.h brings the system headers, which come first
#include <functional>

#include "platform/win32/win32_window.h"

namespace orvane {

/// How many pixels of the screen a size in hundredths of a millimetre is, and back. At least one pixel.
SIZE PixelsOf(SIZEL himetric);
SIZEL HimetricOf(SIZE pixels);

class FormWindow final : public Win32Window {
public:
    using Win32Window::Win32Window;

    /// Called for each request of a paint while there is no window; the container draws then.
    std::function<void()> onInvalidate;

    void Invalidate() override;
};

}  // namespace orvane
