// All ways to change the scale: the property, the wheel, the rectangle.
#include <algorithm>
#include <cmath>

#include "control/ctrl.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

constexpr std::int32_t kMaxZoom = 50000000;
constexpr std::int32_t kSmallestDrag_px = 5;

std::int32_t ClampZoom(std::int32_t zoom) { return std::clamp(zoom, 1, kMaxZoom); }

/// The zoom after one wheel step. Where the rate moves nothing in whole numbers, `least` does.
std::int32_t WheelStep(std::int32_t now, double rate, std::int32_t least) {
    const std::int32_t z = TruncToInt32(now * rate);
    return z == now ? TruncToInt32(static_cast<double>(z) + least) : z;
}

std::int32_t Difference(std::int32_t a, std::int32_t b) { return TruncToInt32(static_cast<double>(a) - static_cast<double>(b)); }

bool ZoomInRange(double z) { return z >= 1.0 && z < static_cast<double>(kMaxZoom); }

}  // namespace

void COrvane4Ctrl::Fire(std::int32_t eventDispid, std::initializer_list<Variant> args) {
    if (events_ != nullptr) events_->Fire(eventDispid, {args.begin(), args.size()});
}

void COrvane4Ctrl::SetZoom(std::int32_t zoom) {
    const Scope scope(*this);
    const std::int32_t z = ClampZoom(zoom);
    const Rect client = window_.ClientRect();
    const std::int32_t old = store.view.Zoom;
    const double w = store.view.PixToWorldF(client.right - client.left);
    const double h = store.view.PixToWorldF(client.bottom - client.top);
    // A zoom of 0 can only come from a persisted state; it shows nothing whose centre could be kept.
    if (old != 0) {
        viewX = viewX - (z * w / 2.0 / old - w / 2.0);
        viewY = viewY - (z * h / 2.0 / old - h / 2.0);
    }
    store.view.Zoom = z;
    FireZoomChange();
    modified_ = true;
}

void COrvane4Ctrl::ZoomAtPixel(std::int32_t zoom, std::int32_t px, std::int32_t py) {
    const Scope scope(*this);
    const std::int32_t z = ClampZoom(zoom);
    ViewParams after = store.view;
    after.Zoom = z;
    viewX -= after.PixToWorldF(px) - store.view.PixToWorldF(px);
    viewY -= after.PixToWorldF(py) - store.view.PixToWorldF(py);
    store.view.Zoom = z;
    FireZoomChange();
    modified_ = true;
}

void COrvane4Ctrl::SetWheelZoom(std::int32_t mode, double rate) {
    if (mode < 0 || mode > 2) return;
    wheelZoomMode = mode;
    if (rate <= 0.5 && rate >= 0.01) {
        wheelRateUp = 1.0 + rate;
        wheelRateDown = 1.0 - rate;
    }
}

bool COrvane4Ctrl::WheelZoom(std::int32_t delta, Point screen) {
    const Scope scope(*this);
    if (drawState_ < 1 || !mapDraw || wheelZoomMode == 0) return false;
    const std::int32_t z = WheelStep(store.view.Zoom, delta > 0 ? wheelRateDown : wheelRateUp, delta > 0 ? -1 : 1);
    window_.StopTimer(kHintTimer);
    if (wheelZoomMode == static_cast<std::int32_t>(WheelZoomMode::Center)) {
        SetZoom(z);
    } else {
        const Rect window = window_.WindowRect();
        ZoomAtPixel(z, Difference(screen.x, window.left), Difference(screen.y, window.top));
    }
    RDMReDraw();
    return true;
}

bool COrvane4Ctrl::EndSmallDrag(Point start, Point end) {
    if (start == end) return true;
    const auto isSmall = [](std::int32_t a, std::int32_t b) {
        return std::fabs(static_cast<double>(a) - static_cast<double>(b)) < kSmallestDrag_px;
    };
    if (!isSmall(start.x, end.x) || !isSmall(start.y, end.y)) return false;
    if (topDC_ == nullptr) return true;
    const Rect client = window_.ClientRect();
    const std::unique_ptr<DeviceContext> dc = window_.AcquireDC();
    dc->BitBlt(0, 0, client.right, client.bottom, *topDC_, 0, 0, Rop3::SrcCopy);
    return true;
}

void COrvane4Ctrl::RectZoomTo(Point start, Point end) {
    const Scope scope(*this);
    if (EndSmallDrag(start, end)) return;
    const Rect box{std::min(start.x, end.x), std::min(start.y, end.y), std::max(start.x, end.x), std::max(start.y, end.y)};
    const Rect client = window_.ClientRect();
    const ViewParams& view = store.view;
    const double x0 = view.PixToWorldF(box.left);
    const double y0 = view.PixToWorldF(box.top);
    const double x1 = view.PixToWorldF(box.right);
    const double y1 = view.PixToWorldF(box.bottom);
    const double W = view.PixToWorldF(client.right);
    const double H = view.PixToWorldF(client.bottom);
    if (rectZoomMode == static_cast<std::int32_t>(RectZoomMode::ZoomUp)) {
        const double zx = x1 == x0 ? 0 : (x1 - x0) / W * view.Zoom;
        const double zy = y1 == y0 ? 0 : (y1 - y0) / H * view.Zoom;
        const double z = std::max(zx, zy);
        if (ZoomInRange(z)) {
            store.view.Zoom = std::max(ToInt(z), 1);
            viewX += x0;
            viewY += y0;
            FireZoomChange();
        }
    } else if (rectZoomMode == static_cast<std::int32_t>(RectZoomMode::ZoomDown)) {
        const double zx = x1 == x0 ? 0 : W / (x1 - x0) * view.Zoom;
        const double zy = y1 == y0 ? 0 : H / (y1 - y0) * view.Zoom;
        const double z = std::max(zx, zy);
        if (ZoomInRange(z)) {
            const auto middle = [](std::int32_t a, std::int32_t b) {
                return static_cast<double>((std::int64_t{a} + b) / 2);  // whole pixels
            };
            // The jump only moves the view: with drawing off its repaint returns at once.
            mapDraw = false;
            modified_ = true;
            JumpTo(ScreenToWorldX(middle(box.left, box.right)), ScreenToWorldY(middle(box.top, box.bottom)));
            mapDraw = true;
            SetZoom(ToInt(z));
            FireZoomChange();  // hosts hear of this rectangle twice
        }
    }
    RedrawWindow(0);
    rectZoomMode = static_cast<std::int32_t>(RectZoomMode::Off);
}

}  // namespace orvane
