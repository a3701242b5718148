#include "foreign/raster/placement.h"

#include <cmath>

#include "store/view_params.h"

namespace orvane {

namespace {

bool IsFinite(const Affine& a) {
    return std::isfinite(a.x0) && std::isfinite(a.xx) && std::isfinite(a.xy) && std::isfinite(a.y0) && std::isfinite(a.yx) &&
           std::isfinite(a.yy);
}

/// The turn of the view in map sense: the view turns with y downward.
Affine TurnOf(double rotation_deg) {
    const ViewRotation rotation(rotation_deg);
    double eastX = 1, eastY = 0;
    double northX = 0, northY = -1;
    rotation.Apply(eastX, eastY);
    rotation.Apply(northX, northY);
    return {0, eastX, northX, 0, -eastY, -northY};
}

}  // namespace

Affine Then(const Affine& first, const Affine& second) {
    Affine both{first.x0, second.xx * first.xx + second.xy * first.yx, second.xx * first.xy + second.xy * first.yy,
                first.y0, second.yx * first.xx + second.yy * first.yx, second.yx * first.xy + second.yy * first.yy};
    second.Apply(both.x0, both.y0);
    return both;
}

std::optional<Affine> Inverse(const Affine& a) {
    const double area = a.xx * a.yy - a.xy * a.yx;
    if (area == 0 || !std::isfinite(area) || !IsFinite(a)) return std::nullopt;
    Affine back{0, a.yy / area, -a.xy / area, 0, -a.yx / area, a.xx / area};
    back.x0 = -(back.xx * a.x0 + back.xy * a.y0);
    back.y0 = -(back.yx * a.x0 + back.yy * a.y0);
    if (!IsFinite(back)) return std::nullopt;
    return back;
}

std::optional<Affine> SimilarityOf(const ControlPoint& a, const ControlPoint& b) {
    // As complex numbers with y upward on both sides, turn and scale are the quotient of the two ways between the points.
    const double du = b.bmpX - a.bmpX;
    const double dv = -(b.bmpY - a.bmpY);
    const double dx = b.GeoX - a.GeoX;
    const double dy = b.GeoY - a.GeoY;
    const double length2 = du * du + dv * dv;
    if (length2 == 0 || (dx == 0 && dy == 0)) return std::nullopt;
    const double re = (dx * du + dy * dv) / length2;
    const double im = (dy * du - dx * dv) / length2;
    Affine placement{0, re, im, 0, im, -re};
    placement.x0 = a.GeoX - placement.xx * a.bmpX - placement.xy * a.bmpY;
    placement.y0 = a.GeoY - placement.yx * a.bmpX - placement.yy * a.bmpY;
    // What cannot be turned round would never be seen.
    if (!Inverse(placement)) return std::nullopt;
    return placement;
}

std::optional<Affine> ImageOfPixels(const Affine& placement, double rotation_deg, const RasterPart& part) {
    const double width_px = static_cast<double>(part.pixels.right) - part.pixels.left;
    const double height_px = static_cast<double>(part.pixels.bottom) - part.pixels.top;
    Affine pixels;
    pixels.xx = width_px / (part.X2 - part.X1);
    pixels.yy = height_px / (part.Y2 - part.Y1);
    pixels.x0 = part.pixels.left + part.PendX - part.X1 * pixels.xx;
    pixels.y0 = part.pixels.top + part.PendY - part.Y1 * pixels.yy;
    return Inverse(Then(Then(placement, TurnOf(rotation_deg)), pixels));
}

}  // namespace orvane
