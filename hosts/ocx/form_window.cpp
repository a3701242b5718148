#include "hosts/ocx/form_window.h"
#include <algorithm>
namespace orvane {
namespace {
SIZE Dpi() {
    HDC s = GetDC(nullptr);
    SIZE d{GetDeviceCaps(s, LOGPIXELSX), GetDeviceCaps(s, LOGPIXELSY)};
    ReleaseDC(nullptr, s);
    return d;
}
}  // namespace
std::int32_t HandleOf(DeviceContext&) { return 0; }
SIZE PixelsOf(SIZEL h) {
    SIZE d = Dpi();
    return {(std::max)(1, MulDiv(h.cx, d.cx, 2540)), (std::max)(1, MulDiv(h.cy, d.cy, 2540))};
}
SIZEL HimetricOf(SIZE p) {
    SIZE d = Dpi();
    return {MulDiv(p.cx, 2540, d.cx), MulDiv(p.cy, 2540, d.cy)};
}
}  // namespace orvane
