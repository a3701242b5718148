#include "foreign/raster/gdal_raster_server.h"

#include <cmath>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "foreign/raster/image_painter.h"
#include "platform/cp932.h"
#include "platform/files_std.h"

namespace orvane {

namespace {

thread_local std::string lastFailure;

/// What is thrown, which is want of memory, is a failure.
template <class Work>
bool Guarded(Work work) {
    try {
        return work();
    } catch (...) {
        lastFailure.clear();
        return false;
    }
}

bool Fail(std::string reason) {
    lastFailure = std::move(reason);
    return false;
}

/// The name to open: of the file or folder that is there, else, where any source will do, as GDAL may know it; empty for a pipe
/// and the like, which would have GDAL wait for its writer.
std::string SourceName(std::string_view filename, RasterSources sources) {
    StdFiles files;
    files.toSystem = DecodeCp932;
    files.toHost = EncodeCp932;
    const std::string path = files.SystemPath(filename);
    if (path.empty()) return sources == RasterSources::Any ? DecodeCp932(filename).value_or(std::string(filename)) : path;
    std::error_code error;
    const bool readable = std::filesystem::is_regular_file(path, error) || std::filesystem::is_directory(path, error);
    // The reader stands in a folder of its own, and the host may go to another one before the image is opened again.
    return readable ? std::filesystem::absolute(path, error).string() : std::string();
}

}  // namespace

const std::string& LastRasterFailure() { return lastFailure; }

bool GdalRasterServer::SrvInit() {
    ready_ = Guarded([] { return HasRasterReader(); });
    return ready_;
}

bool GdalRasterServer::SrvLoad(std::string_view filename) {
    SrvClose();
    if (!ready_) return false;
    return Guarded([&] {
        const RasterSources sources = AllowedSources();
        std::string name = SourceName(filename, sources);
        if (name.empty()) return Fail("there is no such file or folder");
        std::string reason;
        image_ = RemoteImage::Open(std::move(name), sources, reason);
        if (image_ == nullptr) return Fail(std::move(reason));
        placement_ = image_->OwnPlacement();
        return true;
    });
}

bool GdalRasterServer::SrvClose() {
    const bool open = image_ != nullptr;
    cp1_.reset();
    cp2_.reset();
    placement_.reset();
    return Guarded([&] {
        image_.reset();
        return open;
    });
}

bool GdalRasterServer::SrvDraw(DeviceContext& dc, const RasterPart& part, std::int16_t) {
    return Guarded([&] {
        if (image_ == nullptr || !placement_) return Fail("it lies nowhere");
        if (part.pixels.left == part.pixels.right || part.pixels.top == part.pixels.bottom) return true;
        const std::optional<Affine> imageOfPixels = ImageOfPixels(*placement_, rotation_deg_, part);
        if (!imageOfPixels) return Fail("the view has no size");
        image_->StartClock();
        std::string reason;
        return PaintImage(dc, *image_, *imageOfPixels, part.pixels, &reason) || Fail(reason.empty() ? image_->Reason() : reason);
    });
}

bool GdalRasterServer::SrvRotate(double angle_deg) {
    if (!std::isfinite(angle_deg)) return false;
    rotation_deg_ = angle_deg;
    return true;
}

bool GdalRasterServer::SrvSetCP1(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) {
    if (image_ == nullptr) return false;
    cp1_ = ControlPoint{static_cast<double>(bmpX), static_cast<double>(bmpY), GeoX, GeoY};
    return true;
}

bool GdalRasterServer::SrvSetCP2(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) {
    if (image_ == nullptr) return false;
    cp2_ = ControlPoint{static_cast<double>(bmpX), static_cast<double>(bmpY), GeoX, GeoY};
    return true;
}

bool GdalRasterServer::SrvCalcCorrect2() {
    if (image_ == nullptr || cp1_.has_value() != cp2_.has_value()) return false;
    const std::optional<Affine> placement = cp1_ ? SimilarityOf(*cp1_, *cp2_) : image_->OwnPlacement();
    if (!placement) return false;
    placement_ = placement;
    return true;
}

}  // namespace orvane
