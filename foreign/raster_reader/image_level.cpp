#include "foreign/raster_reader/image_level.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

// A level whose pixels are a hair larger than the picture's is taken all the same.
constexpr double kHair = 1.01;

/// Whether a block of one band cannot be had without those of all others. A format that does not say so is taken to be one.
bool BandsStandTogether(GDALDataset& dataset) {
    const char* const told = dataset.GetMetadataItem("INTERLEAVE", "IMAGE_STRUCTURE");
    return told == nullptr || (!EQUAL(told, "BAND") && !EQUAL(told, "LINE"));
}

double BlocksAcross(double from, double length, int block) {
    return std::floor((from + length - 1) / block) - std::floor(from / block) + 1;
}

/// Adds up the bytes that are decoded for several bands; what stands in the same blocks counts once.
class Cost {
public:
    Cost(const ImageLevel& level, const LevelWindow& w) : level_(level), window_(w) {}

    void Add(GDALRasterBand& band) {
        GDALDataset* const dataset = band.GetDataset();
        if (dataset == nullptr || !BandsStandTogether(*dataset)) {
            bytes_ += BytesOf(band);
            return;
        }
        if (std::find(together_.begin(), together_.end(), dataset) != together_.end()) return;
        together_.push_back(dataset);
        for (int i = 1; i <= dataset->GetRasterCount(); ++i) bytes_ += BytesOf(*dataset->GetRasterBand(i));
    }
    double Bytes() const { return bytes_; }

private:
    double BytesOf(GDALRasterBand& band) const {
        int width = 1;
        int height = 1;
        band.GetBlockSize(&width, &height);
        width = (std::max)(width, 1);
        height = (std::max)(height, 1);
        const double stepX = window_.stepX * static_cast<double>(band.GetXSize()) / level_.width;
        const double stepY = window_.stepY * static_cast<double>(band.GetYSize()) / level_.height;
        const double touched = BlocksAcross(window_.left * stepX, window_.width * stepX, width) *
                               BlocksAcross(window_.top * stepY, window_.height * stepY, height);
        const double samples = static_cast<double>(window_.width) * window_.height;
        return (std::min)(touched, samples) * width * height * GDALGetDataTypeSizeBytes(band.GetRasterDataType());
    }

    const ImageLevel& level_;
    const LevelWindow& window_;
    double bytes_ = 0;
    std::vector<GDALDataset*> together_;
};

/// The band itself for -1, else one of its overviews; null when it has none that can be read.
GDALRasterBand* LevelOf(GDALRasterBand& band, int overview) {
    GDALRasterBand* const level = overview < 0 ? &band : band.GetOverview(overview);
    return level != nullptr && level->GetXSize() > 0 && level->GetYSize() > 0 ? level : nullptr;
}

/// The mask of a band at one level. Many an overview has none of its own, and says then that all of it is valid: the mask of the
/// image has an overview of the size, or is read at the level's places.
GDALRasterBand* MaskOf(GDALDataset& dataset, const BandPlan& plan, GDALRasterBand& band, GDALRasterBand& level) {
    const auto fits = [&](GDALRasterBand* mask) {
        return mask != nullptr && mask->GetXSize() == level.GetXSize() && mask->GetYSize() == level.GetYSize();
    };
    const bool isBand = plan.OpacityBand() != 0;
    const int flags = level.GetMaskFlags();
    GDALRasterBand* const own = level.GetMaskBand();
    // Overviews in the image's own file have the image's flags, but a mask that was made up for them and stands in no file.
    const bool standsApart = !isBand && IsMaskApart(flags) && own != nullptr && own->GetDataset() != nullptr;
    const bool isOwn = plan.Mask() == MaskKind::Shared ? standsApart : (flags & GMF_ALL_VALID) == 0;
    if (isOwn && fits(own)) return own;
    GDALRasterBand* const whole = isBand ? dataset.GetRasterBand(plan.OpacityBand()) : band.GetMaskBand();
    if (whole == nullptr || fits(whole)) return whole;
    for (int i = 0; i < whole->GetOverviewCount(); ++i) {
        if (fits(whole->GetOverview(i))) return whole->GetOverview(i);
    }
    return whole;
}

/// Notes the data set in which all bands of a level stand, if there is one.
void JoinBands(ImageLevel& level) {
    GDALDataset* const dataset = level.bands.front()->GetDataset();
    if (dataset == nullptr || dataset->GetRasterXSize() != level.width || dataset->GetRasterYSize() != level.height) return;
    for (GDALRasterBand* const band : level.bands) {
        const int number = band->GetBand();
        if (number < 1 || number > dataset->GetRasterCount() || dataset->GetRasterBand(number) != band) return;
        level.numbers.push_back(number);
    }
    level.together = dataset;
}

/// An empty level when not all bands have it.
ImageLevel MakeLevel(GDALDataset& dataset, const BandPlan& plan, int overview) {
    ImageLevel level;
    for (const int number : plan.Bands()) {
        GDALRasterBand& band = *dataset.GetRasterBand(number);
        GDALRasterBand* const own = LevelOf(band, overview);
        if (own == nullptr) return {};
        if (level.bands.empty()) {
            level.width = own->GetXSize();
            level.height = own->GetYSize();
        }
        if (own->GetXSize() != level.width || own->GetYSize() != level.height) return {};
        level.bands.push_back(own);
        const bool hasMask = plan.Mask() == MaskKind::Each || (plan.Mask() == MaskKind::Shared && level.masks.empty());
        if (!hasMask) continue;
        GDALRasterBand* const mask = MaskOf(dataset, plan, band, *own);
        if (mask == nullptr) return {};
        level.masks.push_back(mask);
    }
    level.reductionX = static_cast<double>(dataset.GetRasterXSize()) / level.width;
    level.reductionY = static_cast<double>(dataset.GetRasterYSize()) / level.height;
    JoinBands(level);
    return level;
}

}  // namespace

double ImageLevel::Cost_bytes(const LevelWindow& window) const {
    Cost cost(*this, window);
    for (GDALRasterBand* const band : bands) cost.Add(*band);
    for (GDALRasterBand* const mask : masks) cost.Add(*mask);
    return cost.Bytes();
}

bool ImageLevels::Take(GDALDataset& dataset, const BandPlan& plan) {
    levels_.clear();
    levels_.push_back(MakeLevel(dataset, plan, -1));
    if (levels_.front().bands.empty()) return false;
    const int count = dataset.GetRasterBand(plan.Bands().front())->GetOverviewCount();
    for (int i = 0; i < count; ++i) {
        ImageLevel level = MakeLevel(dataset, plan, i);
        if (!level.bands.empty()) levels_.push_back(std::move(level));
    }
    return true;
}

const ImageLevel& ImageLevels::For(double pitchX, double pitchY) const {
    const double mostX = HeldPitch(pitchX) * kHair;
    const double mostY = HeldPitch(pitchY) * kHair;
    const ImageLevel* best = &levels_.front();
    for (const ImageLevel& level : levels_) {
        if (level.reductionX > mostX || level.reductionY > mostY) continue;
        if (level.reductionX > best->reductionX) best = &level;
    }
    return *best;
}

}  // namespace orvane
