// One image that GDAL has opened.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "foreign/raster/readable_image.h"
#include "foreign/raster_reader/band_plan.h"
#include "foreign/raster_reader/box_mean.h"
#include "foreign/raster_reader/image_level.h"

class GDALDataset;
class GDALRasterBand;

namespace orvane {

class RasterImage final : public ReadableImage {
public:
    /// One block of a file must fit in the cache beside others, all bands of it; an image that is stored in larger ones, or whose
    /// overviews or masks are, is refused.
    static constexpr double kMaxBlock_bytes = 64 * 1024 * 1024;

    /// Null for what is no image, has no band of numbers, or comes in blocks that are too large. The name is GDAL's.
    static std::unique_ptr<RasterImage> Open(const std::string& name);
    ~RasterImage() override;

    std::int32_t Width_px() const override;
    std::int32_t Height_px() const override;
    std::optional<Affine> OwnPlacement() const override;
    double Cost_bytes(const ImageWindow& window) override;
    bool Read(const ImageWindow& window, std::span<Rgba> out) override;

    /// What GDAL has open, to be measured beside.
    GDALDataset& Dataset() const { return *dataset_; }

private:
    struct Close {
        void operator()(GDALDataset* dataset) const;
    };
    explicit RasterImage(std::unique_ptr<GDALDataset, Close> dataset);

    /// What is read for a window: steps of a level, and how many pixels of the image are one of them.
    struct Source {
        const ImageLevel* level = nullptr;
        std::int32_t stepX = 1;
        std::int32_t stepY = 1;
        std::int32_t width = 0;  ///< of the level, in steps
        std::int32_t height = 0;
        double unitX = 1;
        double unitY = 1;
    };
    Source SourceFor(double pitchX, double pitchY) const;

    bool ReadMeans(const Source& source, const ImageWindow& window, std::span<Rgba> out);
    bool ReadColumns(const Source& source, std::span<const PixelRun> columns, Rgba* out, std::size_t stride);
    bool ReadRows(const Source& source, const LevelWindow& window);
    /// The colours of a window of a level, one for each of its steps.
    bool ReadLevel(const ImageLevel& level, const LevelWindow& window, std::span<Rgba> out);
    bool ReadBytes(const ImageLevel& level, const LevelWindow& window, std::span<Rgba> out);
    bool ReadIndices(const ImageLevel& level, const LevelWindow& window, std::span<Rgba> out);
    bool ReadNumbers(const ImageLevel& level, const LevelWindow& window, std::span<Rgba> out);
    bool ReadNumbersOf(std::size_t band, const ImageLevel& level, const LevelWindow& window);
    /// Raises `mask_` by the masks that stand apart from the bands.
    bool ReadMasks(const ImageLevel& level, const LevelWindow& window);
    bool RaiseMask(GDALRasterBand& mask, const ImageLevel& level, const LevelWindow& window);
    bool TakeRange();
    bool WidenRange(const ImageLevel& level, const LevelWindow& window, double& low, double& high);

    std::unique_ptr<GDALDataset, Close> dataset_;
    BandPlan plan_;
    ImageLevels levels_;
    // Kept from one read to the next.
    std::vector<PixelRun> columns_;
    std::vector<PixelRun> rows_;
    std::vector<Rgba> source_;
    std::vector<std::uint16_t> indices_;
    std::vector<double> numbers_;
    std::vector<std::uint8_t> mask_;  ///< of what is read, while there is one
    std::vector<std::uint8_t> oneMask_;
};

}  // namespace orvane
