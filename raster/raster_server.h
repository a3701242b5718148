// What the control needs of whoever reads, places and paints raster images. One server holds one image.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "platform/device_context.h"
#include "platform/values.h"

namespace orvane {

/// The part of the map that is asked for, y to the north, and the pixels that it covers.
struct RasterPart {
    double X1 = 0;  ///< map units: the left edge of the pixel rectangle
    double Y1 = 0;  ///< its top edge
    double X2 = 0;  ///< its right edge
    double Y2 = 0;  ///< its bottom edge
    Rect pixels;
    double PendX = 0;  ///< pixels
    double PendY = 0;
};

/// The result of each call is whether it was done. A server must not throw; it may run host code, which may call the control.
class RasterServer {
public:
    RasterServer() = default;
    RasterServer(const RasterServer&) = delete;
    RasterServer& operator=(const RasterServer&) = delete;
    virtual ~RasterServer() = default;

    /// True once SrvInit has succeeded.
    virtual bool SrvIsReady() = 0;
    virtual bool SrvInit() = 0;
    /// Opens an image in place of the one that is open; the name is code page 932 bytes.
    virtual bool SrvLoad(std::string_view filename) = 0;
    /// Closes the image and releases what it holds.
    virtual bool SrvClose() = 0;
    /// Paints the part of the image that covers the map rectangle into the pixel rectangle of `dc`. `mode` is always 1.
    virtual bool SrvDraw(DeviceContext& dc, const RasterPart& part, std::int16_t mode) = 0;
    /// Sets the rotation of the image, in degrees as the view's.
    virtual bool SrvRotate(double angle_deg) = 0;
    /// First and second control point: an image pixel, y downward, and its map position, y to the north.
    virtual bool SrvSetCP1(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) = 0;
    virtual bool SrvSetCP2(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) = 0;
    /// Places the image by its two control points. Without points its own place holds, and the answer is whether it has one.
    virtual bool SrvCalcCorrect2() = 0;
    /// Size of the image in pixels; 0 without one.
    virtual std::int32_t SrvImgWidth() = 0;
    virtual std::int32_t SrvImgHeight() = 0;
};

/// Makes a server; null when none can be made on this system.
using RasterServerMaker = std::function<std::unique_ptr<RasterServer>()>;

}  // namespace orvane
