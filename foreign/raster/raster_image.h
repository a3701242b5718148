// One image that GDAL has opened: its size, its own place on the map, and windows of it as colours.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foreign/raster/band_plan.h"
#include "foreign/raster/image_sources.h"
#include "foreign/raster/placement.h"

class GDALDataset;

namespace orvane {

/// A window of the image in pixels, with fractions, and the size of the picture that is made of it.
struct ImageWindow {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
};

class RasterImage {
public:
    /// One block of a file must fit in the cache beside others, all bands of it; an image that is stored in larger ones is
    /// refused.
    static constexpr double kMaxBlock_bytes = 64 * 1024 * 1024;
    /// The most bytes that one call may decode: beyond it an image without overviews would hold up the map for minutes.
    static constexpr double kMaxCost_bytes = 1024.0 * 1024 * 1024;

    /// Null for what is no image, has no band of numbers, comes in blocks that are too large, or takes its pixels from where it
    /// must not. The name is the system's.
    static std::unique_ptr<RasterImage> Open(const std::string& name, RasterSources sources);
    RasterImage(const RasterImage&) = delete;
    RasterImage& operator=(const RasterImage&) = delete;
    ~RasterImage();

    std::int32_t Width_px() const;
    std::int32_t Height_px() const;
    /// Where the image says itself that it lies; nothing when it does not, or in a way that flattens it.
    std::optional<Affine> OwnPlacement() const;
    /// No pixel of it is transparent.
    bool IsOpaque() const { return plan_.IsOpaque(); }

    /// How many bytes a read must decode, at the least and to the order of magnitude: whole blocks of the overviews that it
    /// takes, of all bands that are shown and of their masks, and of all others that are stored in the same blocks.
    double Cost_bytes(const ImageWindow& window) const;
    /// Reads a window that lies in the image into `out`, which is made as large as the picture. A picture of as many pixels as
    /// the window takes them as they are; a smaller one averages those that fall together. False when it cannot be read.
    bool Read(const ImageWindow& window, std::vector<Rgba>& out);

private:
    struct Close {
        void operator()(GDALDataset* dataset) const;
    };
    explicit RasterImage(std::unique_ptr<GDALDataset, Close> dataset);

    bool ReadBytes(const ImageWindow& window, std::vector<Rgba>& out);
    bool ReadIndices(const ImageWindow& window, std::vector<Rgba>& out);
    bool ReadNumbers(const ImageWindow& window, std::vector<Rgba>& out);
    bool ReadMask(const ImageWindow& window, std::vector<Rgba>& out);
    bool TakeRange();
    bool WidenRange(const ImageWindow& window, double& low, double& high);
    /// The cost of `samples` single values of the window.
    double CostOf(const ImageWindow& window, double samples) const;

    std::unique_ptr<GDALDataset, Close> dataset_;
    BandPlan plan_;
    // Kept from one read to the next.
    std::vector<std::uint16_t> indices_;
    std::vector<float> numbers_;
    std::vector<std::uint8_t> mask_;
};

}  // namespace orvane
