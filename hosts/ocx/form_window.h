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
/// The frame, in hundredths of a millimetre, of an enhanced metafile that holds so many pixels of its reference device. A
/// metafile is measured by the device's true size, which need not agree with its dots an inch.
SIZEL FrameOf(SIZE pixels, SIZE device_px, SIZE device_mm);

class FormWindow final : public Win32Window {
public:
    using Win32Window::Win32Window;

    /// Called when the control asks for a paint or for a context to draw on: what it shows is about to be another picture.
    /// Without a window too, where the container draws.
    std::function<void()> onPicture;

    void Invalidate() override;
    std::unique_ptr<DeviceContext> AcquireDC() override;
};

}  // namespace orvane
