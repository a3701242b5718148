// The sizes in which an image stands in its file: itself and its overviews.
#pragma once

#include <cstdint>
#include <vector>

#include "foreign/raster_reader/band_plan.h"

class GDALDataset;
class GDALRasterBand;

namespace orvane {

/// Whole pixels of a level, each `stepX`-th and `stepY`-th of them.
struct LevelWindow {
    std::int32_t left = 0;  ///< in steps, as are all four
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t stepX = 1;
    std::int32_t stepY = 1;
};

/// The image or one of its overviews.
struct ImageLevel {
    std::vector<GDALRasterBand*> bands;  ///< as the plan wants them
    std::vector<GDALRasterBand*> masks;  ///< none, one for all, or one for each; they may be of another size
    GDALDataset* together = nullptr;     ///< the data set that gives all bands in one go, where there is one
    std::vector<int> numbers;            ///< of the bands in it
    std::int32_t width = 0;
    std::int32_t height = 0;
    double reductionX = 1;  ///< pixels of the image to one of this level
    double reductionY = 1;

    /// The bytes that are decoded for a window: whole blocks of the bands and masks, and of all other bands that stand in the
    /// same blocks.
    double Cost_bytes(const LevelWindow& window) const;
};

class ImageLevels {
public:
    /// The levels of the bands that a plan shows, as they are now. An overview that not all of them have in one size is none.
    /// False when the image itself is not there.
    bool Take(GDALDataset& dataset, const BandPlan& plan);

    /// The smallest level in which no pixel stands for more than the pitches, which are pixels of the image, or little more. It
    /// hangs on nothing else, so that a thin strip comes out of the level that the whole picture comes out of.
    const ImageLevel& For(double pitchX, double pitchY) const;
    const ImageLevel& Whole() const { return levels_.front(); }

private:
    std::vector<ImageLevel> levels_;
};

}  // namespace orvane
