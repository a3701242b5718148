#include "store/view_params.h"

#include <cmath>

namespace orvane {

namespace {

/// Degrees to radians. Truncated on purpose: pictures and hit tests are compared to the pixel with data placed by this value.
constexpr double kDegree_rad = 0.01745328;

}  // namespace

ViewRotation::ViewRotation(double angle_deg)
    : turns_(angle_deg != 0),
      cos_(turns_ ? std::cos(-angle_deg * kDegree_rad) : 1.0),
      sin_(turns_ ? std::sin(-angle_deg * kDegree_rad) : 0.0) {}

void RotateView(double& x, double& y, double angle_deg) { ViewRotation(angle_deg).Apply(x, y); }

DeviceTransform::DeviceTransform(const ViewParams& view, double originX, double originY, double pendX_px, double pendY_px,
                                 double GX, double GY)
    : gx_(GX),
      gy_(GY),
      rotation_(view.Rotate),
      scaleX_(view.ScaleX),
      scaleY_(view.ScaleY),
      originX_(originX),
      originY_(originY),
      offX_(view.OffX),
      offY_(view.OffY),
      pixPerUnit_(view.PixPerUnit()),
      pendX_(pendX_px),
      pendY_(pendY_px) {}

void DeviceTransform::ToDevice(const DigPnt* pnts, std::int32_t count, Point* out) const {
    const DeviceTransform t = *this;  // a copy that nothing can alias, so that all of it stays in registers
    for (std::int32_t i = 0; i < count; ++i) out[i] = t.ToDevice(pnts[i].x, pnts[i].y);
}

}  // namespace orvane
