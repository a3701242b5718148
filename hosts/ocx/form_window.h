// The control's place on a form: a window once the container has activated it, and before that a picture nobody sees.
#pragma once

#include "hosts/ocx/com_base.h"
// com_base.h brings the system headers, which come first
#include <functional>
#include <memory>

#include "platform/files_std.h"
#include "platform/offscreen_window.h"
#include "platform/record/record_context.h"

namespace orvane {

/// How many pixels of the screen a size in hundredths of a millimetre is, and back. At least one.
SIZE PixelsOf(SIZEL himetric);
SIZEL HimetricOf(SIZE pixels);

using FormFiles = StdFiles;

struct DeviceHolder {
    RecordContext holder{nullptr};
};
class FormWindow final : DeviceHolder, public OffscreenWindow {
public:
    explicit FormWindow(Files&) : OffscreenWindow(holder, 1, 1) {}
    HWND Handle() const { return window_; }
    void Attach(HWND window) { window_ = window; }
    void Detach() { window_ = nullptr; }
    void SetSizeWithout(SIZE pixels) { Resize(pixels.cx, pixels.cy); }
    std::unique_ptr<DeviceContext> ContextOn(HDC) { return std::make_unique<RecordContext>(nullptr); }

private:
    HWND window_ = nullptr;
};

std::int32_t HandleOf(DeviceContext& dc);

}  // namespace orvane
