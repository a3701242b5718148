#include "hosts/ocx/form_window.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr int kHimetricPerInch = 2540;

SIZE ScreenDpi() {
    const HDC screen = GetDC(nullptr);
    const SIZE dpi{(std::max)(1, GetDeviceCaps(screen, LOGPIXELSX)), (std::max)(1, GetDeviceCaps(screen, LOGPIXELSY))};
    ReleaseDC(nullptr, screen);
    return dpi;
}

/// MulDiv answers -1 where the result does not fit.
LONG Scaled(LONG value, int to, int from) {
    const int scaled = MulDiv(value, to, from);
    return scaled == -1 && value > 0 ? 0x7FFF : scaled;
}

}  // namespace

SIZE PixelsOf(SIZEL himetric) {
    const SIZE dpi = ScreenDpi();
    return {(std::max)(LONG{1}, Scaled(himetric.cx, dpi.cx, kHimetricPerInch)),
            (std::max)(LONG{1}, Scaled(himetric.cy, dpi.cy, kHimetricPerInch))};
}

SIZEL HimetricOf(SIZE pixels) {
    const SIZE dpi = ScreenDpi();
    return {Scaled(pixels.cx, kHimetricPerInch, dpi.cx), Scaled(pixels.cy, kHimetricPerInch, dpi.cy)};
}

void FormWindow::Invalidate() {
    if (Handle() != nullptr) return Win32Window::Invalidate();
    if (onInvalidate) onInvalidate();
}

}  // namespace orvane
