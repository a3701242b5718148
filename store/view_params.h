// The numbers that say which part of the world is on the screen and at what scale, and the one mapping to device pixels.
//
// Map y grows to the north; the view keeps y in the flipped sense, downward as on the screen. Angles are degrees.
#pragma once

#include <cstdint>

#include "analysis/geometry/dig_pnt.h"
#include "platform/to_int.h"
#include "platform/values.h"

namespace orvane {

struct ViewParams {
    double AreaLeft = 0;
    double AreaRight = 0;
    double AreaTop = 0;  ///< limits on the view's flipped y: the smaller
    double AreaBottom = 0;
    double OffX = 0;  ///< map units
    double OffY = 0;
    double Rotate = 0;
    double ScaleX = 0;
    double ScaleY = 0;
    std::int32_t Zoom = 10000;  ///< scale denominator
    std::int32_t zoomStep = 0;
    std::int32_t DotPerM = 0;  ///< device pixels in a metre
    std::int32_t ScreenDpi = 0;
    std::int32_t DeviceDpi = 0;
    double DpiRatio = 0;

    /// Device pixels to map units, multiplication first. 0 before the first paint has told how fine the device is, so that a call
    /// made too early leaves no NaN in the view.
    double PixToWorldF(double pixels) const {
        return DotPerM == 0 ? 0.0 : static_cast<double>(Zoom) * pixels / static_cast<double>(DotPerM);
    }
    /// Map units to device pixels, unrounded; 0 for a zoom of 0.
    double WorldToPixF(double units) const {
        return Zoom == 0 ? 0.0 : static_cast<double>(DotPerM) * units / static_cast<double>(Zoom);
    }
    /// Whole device pixels to whole map units; 0 before the first paint.
    std::int32_t PixToWorld(std::int32_t pixels) const {
        return DotPerM == 0 ? 0 : ToInt(static_cast<double>(pixels) * (static_cast<double>(Zoom) / static_cast<double>(DotPerM)));
    }
    /// Pixels of one map unit; routines take it once.
    double PixPerUnit() const { return static_cast<double>(DotPerM) / static_cast<double>(Zoom); }
    /// The whole factor by which pens and symbols grow on a finer device; 1 on the screen.
    std::int32_t PenFactor() const { return TruncToInt32(DpiRatio); }
};

/// A turn about the world origin by -angle_deg, by the coarse degree factor that all drawn data relies on. An angle of 0 leaves
/// the bits alone.
class ViewRotation {
public:
    explicit ViewRotation(double angle_deg);

    bool Turns() const { return turns_; }
    void Apply(double& x, double& y) const {
        if (!turns_) return;
        const double turnedX = cos_ * x - sin_ * y;
        y = sin_ * x + cos_ * y;
        x = turnedX;
    }

private:
    bool turns_;
    double cos_, sin_;
};

/// Turns (x, y) once; a routine with many points keeps a ViewRotation.
void RotateView(double& x, double& y, double angle_deg);

/// Everything a drawing routine needs to place a point, taken once for a block.
///
/// `origin` is the world position of the target's left top pixel in the flipped sense, `pend` an offset in pixels.
class DeviceTransform {
public:
    DeviceTransform(const ViewParams& view, double originX, double originY, double pendX_px, double pendY_px, double GX,
                    double GY);

    /// A point local to the block, in map sense, in device pixels with their fractions; z is 0.
    DigPnt ToDeviceF(double localX, double localY) const {
        double x = localX + gx_;
        double y = -(localY + gy_);
        rotation_.Apply(x, y);
        return {(x * scaleX_ - originX_ - offX_) * pixPerUnit_ + pendX_, (y * scaleY_ - originY_ - offY_) * pixPerUnit_ + pendY_,
                0};
    }
    /// The same, to its device pixel.
    Point ToDevice(double localX, double localY) const {
        const DigPnt at = ToDeviceF(localX, localY);
        return {ToInt(at.x), ToInt(at.y)};
    }
    /// Whether the view is turned: without a turn device x follows from map x alone, and y from y.
    bool Turns() const { return rotation_.Turns(); }
    /// The same for `count` points in a row; `out` has room for as many.
    void ToDevice(const DigPnt* pnts, std::int32_t count, Point* out) const;

private:
    double gx_, gy_;
    ViewRotation rotation_;
    double scaleX_, scaleY_;
    double originX_, originY_, offX_, offY_;
    double pixPerUnit_;
    double pendX_, pendY_;
};

}  // namespace orvane
