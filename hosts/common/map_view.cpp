#include "hosts/common/map_view.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/to_int.h"

namespace orvane {

namespace {

constexpr double kRoomForViews = 4;   // how many times the data's longer side lies around it inside the limits
constexpr double kLeastRoom = 10000;  // map units
constexpr double kThinMargin = 1.1;
constexpr double kPlaceZoom = 5000;  // scale denominator for a single place
constexpr std::int32_t kGreatestZoom = 50000000;

}  // namespace

void MapView::SetSquareArea() {
    const MapExtent extent = DataExtent(ctrl_.store).value_or(MapExtent{});
    const double reach =
        std::max({std::fabs(extent.left), std::fabs(extent.right), std::fabs(extent.low), std::fabs(extent.high)});
    const double side = std::max(extent.right - extent.left, extent.high - extent.low);
    const double half = std::ceil(reach + std::max(kRoomForViews * side, kLeastRoom));
    automation_.Put("AreaTop", Variant(-half));
    automation_.Put("AreaBottom", Variant(half));
    automation_.Put("AreaLeft", Variant(-half));
    automation_.Put("AreaRight", Variant(half));
}

void MapView::FitAll(std::int16_t margin_percent) {
    const std::optional<MapExtent> extent = DataExtent(ctrl_.store);
    if (!extent) {
        automation_.Call("OrvReDraw");
    } else if (extent->right > extent->left && extent->high > extent->low) {
        automation_.Call("OrvDspFit2", {Variant(margin_percent)});
    } else {
        FitThin(*extent);
    }
}

void MapView::FitThin(const MapExtent& extent) {
    const Rect client = ctrl_.window().ClientRect();
    const double side = std::max(extent.right - extent.left, extent.high - extent.low);
    const double shown = std::min(client.right, client.bottom) * UnitsPerPixel();
    const double zoom = side > 0 && shown > 0 ? kThinMargin * Zoom() * side / shown : kPlaceZoom;
    automation_.Put("Zoom", Variant(ToInt(zoom)));
    automation_.Call("OrvMapJumpToXY", {Variant((extent.left + extent.right) / 2), Variant((extent.low + extent.high) / 2)});
}

bool MapView::ZoomBy(double factor) {
    const std::int32_t old = Zoom();
    std::int32_t zoom = ToInt(old * factor);
    if (zoom == old) zoom += factor > 1 ? 1 : -1;
    zoom = std::clamp(zoom, 1, kGreatestZoom);
    if (zoom > old) {
        const Rect client = ctrl_.window().ClientRect();
        const double side = std::max(client.right, client.bottom) * UnitsPerPixel() * zoom / old;
        if (side >= std::min(automation_.GetR8("AreaRight"), automation_.GetR8("AreaBottom"))) return false;
    }
    automation_.Put("Zoom", Variant(zoom));
    automation_.Call("OrvReDraw");
    return true;
}

void MapView::ScrollBy(double widths, double heights) {
    const Rect client = ctrl_.window().ClientRect();
    const double dx = widths * client.right * UnitsPerPixel();
    const double dy = heights * client.bottom * UnitsPerPixel();
    automation_.Call("OrvScrl", {Variant(dx), Variant(dy)});
    automation_.Call("OrvReDraw");  // a scroll leaves the base buffer behind
}

double MapView::UnitsPerPixel() const {
    double left = 0;
    double next = 0;
    automation_.Call("OrvGetScreenPosX", {Variant(std::int32_t{0})}).ToR8(left);
    automation_.Call("OrvGetScreenPosX", {Variant(std::int32_t{1})}).ToR8(next);
    return next - left;
}

}  // namespace orvane
