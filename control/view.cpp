// The view's properties, jumps and fits.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "control/ctrl.h"
#include "platform/to_int.h"
#include "select/world_point.h"
#include "store/extent.h"

namespace orvane {

namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

}  // namespace

void COrvane4Ctrl::FullInverse(std::int32_t px, std::int32_t py, double& mapX, double& mapY) const {
    const DigPnt world = FlippedWorldPoint(store.view, PlaceOfPicks(), {px, py});
    mapX = world.x;
    mapY = -world.y;
}

void COrvane4Ctrl::SetScaleX(double v) {
    store.view.ScaleX = v;
    modified_ = true;
}

void COrvane4Ctrl::SetScaleY(double v) {
    store.view.ScaleY = v;
    modified_ = true;
}

void COrvane4Ctrl::SetRotate(double degrees) {
    const Scope scope(*this);
    store.view.Rotate = degrees;
    modified_ = true;
    rasters.RastRotateAll(degrees);
}

void COrvane4Ctrl::SetAreaTop(double v) {
    areaTop = store.view.AreaTop = v;
    modified_ = true;
}

void COrvane4Ctrl::SetAreaBottom(double v) {
    areaBottom = store.view.AreaBottom = v;
    modified_ = true;
}

void COrvane4Ctrl::SetAreaLeft(double v) {
    areaLeft = store.view.AreaLeft = v;
    modified_ = true;
}

void COrvane4Ctrl::SetAreaRight(double v) {
    areaRight = store.view.AreaRight = v;
    modified_ = true;
}

void COrvane4Ctrl::JumpTo(double mapX, double mapY) {
    double x = mapX;
    double y = -mapY;
    if (store.view.Rotate != 0) RotateView(x, y, store.view.Rotate);
    const Rect client = window_.ClientRect();
    const double H = store.view.PixToWorldF(client.bottom - client.top);
    const double W = store.view.PixToWorldF(client.right - client.left);
    // The limits are crossed on purpose: x is held against top and bottom, y against left and right. Hosts have set their limits
    // by it.
    if (x > areaTop && x < areaBottom && y > areaLeft && y < areaRight) {
        viewX = x - W / 2.0;
        viewY = y - H / 2.0;
    }
    if (W + viewX > areaRight) viewX = areaRight - W;
    if (H + viewY > areaBottom) viewY = areaBottom - H;
    if (viewX < areaLeft) viewX = areaLeft;
    if (viewY < areaTop) viewY = areaTop;
    RedrawWindow(0);
}

void COrvane4Ctrl::MapJumpToData(std::string_view code, std::int32_t meshNo, std::int32_t datNo, bool active) {
    if (active) store.ClearActive();
    bool hasPoints = false;
    double x = kNoNumber;
    double y = kNoNumber;
    // An item without points has no mean: the jump then fails its test, clamps and repaints, and no NaN reaches the view.
    if (store.ActivateForJump(code, meshNo, datNo, active, hasPoints, x, y)) JumpTo(x, y);
}

void COrvane4Ctrl::DspFit(std::int32_t rate_percent) {
    const Scope scope(*this);
    const std::optional<MapExtent> data = DataExtent(store);
    if (!data) return;
    MapExtent e = *data;
    if (rate_percent >= 1) {
        const std::int32_t rate = std::min(rate_percent, 50);
        const double mx = std::fabs(e.right - e.left) * rate / 100.0;
        const double my = std::fabs(e.high - e.low) * rate / 100.0;
        e.left -= mx;
        e.right += mx;
        e.low -= my;
        e.high += my;
    }
    const double W = std::fabs(e.right - e.left);
    const double H = std::fabs(e.high - e.low);
    const Rect client = window_.ClientRect();
    const std::int32_t zx = client.right < 1 ? 0 : ToInt(W / client.right * dotPerM);
    const std::int32_t zy = client.bottom < 1 ? 0 : ToInt(H / client.bottom * dotPerM);
    if (zx <= 0 || zy <= 0) return;
    store.view.Zoom = std::max(zx, zy);
    const std::uint32_t resets = store.ResetCount();
    FireZoomChange();
    if (store.ResetCount() != resets) return;  // the host has started over, and the centre belongs to what is gone
    JumpTo(W / 2.0 + e.left, H / 2.0 + e.low);
}

}  // namespace orvane
