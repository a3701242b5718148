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

SIZEL FrameOf(SIZE pixels, SIZE device_px, SIZE device_mm) {
    const auto scaled = [](LONG px, LONG all_px, LONG all_mm) {
        return Scaled(px, (std::max)(LONG{1}, all_mm) * 100, (std::max)(LONG{1}, all_px));
    };
    return {scaled(pixels.cx, device_px.cx, device_mm.cx), scaled(pixels.cy, device_px.cy, device_mm.cy)};
}

void FormWindow::Invalidate() {
    if (onPicture) onPicture();
    Win32Window::Invalidate();
}

std::unique_ptr<DeviceContext> FormWindow::AcquireDC() {
    if (onPicture) onPicture();
    return Win32Window::AcquireDC();
}

}  // namespace orvane
