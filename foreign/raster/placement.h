// Where an image lies: its pixels on the map, and on the device pixels that show a part of the map.
#pragma once

#include <optional>

#include "raster/raster_server.h"

namespace orvane {

/// Carries (x, y) to (x0 + xx x + xy y, y0 + yx x + yy y).
struct Affine {
    double x0 = 0;
    double xx = 1;
    double xy = 0;
    double y0 = 0;
    double yx = 0;
    double yy = 1;

    void Apply(double& x, double& y) const {
        const double newX = x0 + xx * x + xy * y;
        y = y0 + yx * x + yy * y;
        x = newX;
    }
    friend bool operator==(const Affine&, const Affine&) = default;
};

/// `first`, and `second` on what it gives.
Affine Then(const Affine& first, const Affine& second);
/// Nothing when it flattens the plane, or is not made of finite numbers.
std::optional<Affine> Inverse(const Affine& a);

/// The left top corner of an image pixel, y downward, and its map position, y to the north.
struct ControlPoint {
    double bmpX = 0;
    double bmpY = 0;
    double GeoX = 0;
    double GeoY = 0;
};

/// The shift, turn and uniform scale that carry image pixels to the map so that both points are met. Nothing when the points are
/// one, on the image or on the map, or not made of finite numbers.
std::optional<Affine> SimilarityOf(const ControlPoint& a, const ControlPoint& b);

/// From device pixels to image pixels, for an image that `placement` carries to the map and a view turned by `rotation_deg`.
/// Nothing when the part, or the placement, has no width or no height.
std::optional<Affine> ImageOfPixels(const Affine& placement, double rotation_deg, const RasterPart& part);

}  // namespace orvane
