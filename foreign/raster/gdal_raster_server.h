// The raster server on GDAL: shows what GDAL reads. GDAL itself is in a process of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "foreign/raster/placement.h"
#include "foreign/raster/remote_image.h"
#include "raster/raster_server.h"

namespace orvane {

/// An image lies where its own georeference says, until SrvCalcCorrect2 places it by its control points; an image with neither is
/// not painted. The rotation stays from image to image, for it is the view's; control points go with their image.
class GdalRasterServer final : public RasterServer {
public:
    bool SrvIsReady() override { return ready_; }
    /// False without the program that reads images.
    bool SrvInit() override;
    /// What is found under the name is a plain file or a folder; the setting ORVANE_RASTER_SOURCES=any lets in whatever GDAL
    /// knows, by whatever name. After a load that failed there is no image.
    bool SrvLoad(std::string_view filename) override;
    /// False without an image.
    bool SrvClose() override;
    bool SrvDraw(DeviceContext& dc, const RasterPart& part, std::int16_t mode) override;
    /// False for what is no finite number.
    bool SrvRotate(double angle_deg) override;
    bool SrvSetCP1(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override;
    bool SrvSetCP2(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override;
    /// With no control point the image's own georeference holds. False, and the placement before stays, with one point alone,
    /// with equal points, and where there is no georeference.
    bool SrvCalcCorrect2() override;
    std::int32_t SrvImgWidth() override { return image_ == nullptr ? 0 : image_->Width_px(); }
    std::int32_t SrvImgHeight() override { return image_ == nullptr ? 0 : image_->Height_px(); }

private:
    bool ready_ = false;
    std::unique_ptr<RemoteImage> image_;
    std::optional<ControlPoint> cp1_;
    std::optional<ControlPoint> cp2_;
    std::optional<Affine> placement_;
    double rotation_deg_ = 0;
};

/// Why the last load or draw of this thread that failed did so, in some words; empty before one did.
const std::string& LastRasterFailure();

}  // namespace orvane
