#include "foreign/raster/raster_image.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>

#include "platform/to_int.h"

namespace orvane {

namespace {

// How many samples along each side of a pixel make the mean of places in a table, which GDAL cannot average.
constexpr std::int32_t kMaxTableSamples = 4;
// As many values along each side are looked at, at the most and at the least, for the range of an image whose values are no
// bytes.
constexpr std::int32_t kMostRangeSamples = 64;
constexpr std::int32_t kLeastRangeSamples = 8;

bool IsSmaller(const ImageWindow& w) { return w.width_px < w.width || w.height_px < w.height; }

/// The whole pixels that a window touches, and the window itself, as GDAL takes them.
struct ReadWindow {
    int x, y, width, height;
    GDALRasterIOExtraArg extra;

    ReadWindow(const ImageWindow& w, int imageWidth, int imageHeight, bool average) {
        x = std::clamp(TruncToInt32(std::floor(w.left)), 0, imageWidth - 1);
        y = std::clamp(TruncToInt32(std::floor(w.top)), 0, imageHeight - 1);
        width = std::clamp(TruncToInt32(std::ceil(w.left + w.width)), x + 1, imageWidth) - x;
        height = std::clamp(TruncToInt32(std::ceil(w.top + w.height)), y + 1, imageHeight) - y;
        INIT_RASTERIO_EXTRA_ARG(extra);
        extra.eResampleAlg = average ? GRIORA_Average : GRIORA_NearestNeighbour;
        extra.bFloatingPointWindowValidity = TRUE;
        extra.dfXOff = w.left;
        extra.dfYOff = w.top;
        extra.dfXSize = w.width;
        extra.dfYSize = w.height;
    }
};

std::size_t PixelsOf(const ImageWindow& w) {
    return static_cast<std::size_t>(w.width_px) * static_cast<std::size_t>(w.height_px);
}

bool ReadBand(GDALRasterBand& band, const ImageWindow& w, bool average, void* out, GDALDataType type) {
    ReadWindow read(w, band.GetXSize(), band.GetYSize(), average);
    return band.RasterIO(GF_Read, read.x, read.y, read.width, read.height, out, w.width_px, w.height_px, type, 0, 0,
                         &read.extra) == CE_None;
}

/// The band or overview that GDAL takes the values of a window from, and how many blocks of it `samples` of them stand in.
struct Source {
    GDALRasterBand* level = nullptr;
    double blocks = 0;
    int blockWidth = 1;
    int blockHeight = 1;

    Source(GDALRasterBand& band, const ImageWindow& w, double samples) : level(&band) {
        const double wantedX = w.width / w.width_px;
        const double wantedY = w.height / w.height_px;
        double reductionX = 1;
        double reductionY = 1;
        for (int i = 0; i < band.GetOverviewCount(); ++i) {
            GDALRasterBand* const overview = band.GetOverview(i);
            if (overview == nullptr || overview->GetXSize() < 1 || overview->GetYSize() < 1) continue;
            const double x = static_cast<double>(band.GetXSize()) / overview->GetXSize();
            const double y = static_cast<double>(band.GetYSize()) / overview->GetYSize();
            if (x > wantedX * 1.01 || y > wantedY * 1.01 || x < reductionX) continue;
            reductionX = x;
            reductionY = y;
            level = overview;
        }
        level->GetBlockSize(&blockWidth, &blockHeight);
        blocks = std::ceil(w.width / reductionX / blockWidth) * std::ceil(w.height / reductionY / blockHeight);
        blocks = (std::min)(blocks, samples);
    }

    double Bytes(GDALRasterBand& band) const {
        return blocks * blockWidth * blockHeight * GDALGetDataTypeSizeBytes(band.GetRasterDataType());
    }
};

/// Whether a block of one band cannot be had without those of all others. A format that does not say so is taken to be one.
bool BandsStandTogether(GDALDataset& dataset) {
    const char* const told = dataset.GetMetadataItem("INTERLEAVE", "IMAGE_STRUCTURE");
    return told == nullptr || (!EQUAL(told, "BAND") && !EQUAL(told, "LINE"));
}

/// Adds up the bytes that are decoded for several bands; what stands in the same blocks counts once.
class Cost {
public:
    void Add(GDALRasterBand& band, const ImageWindow& w, double samples) {
        const Source source(band, w, samples);
        GDALDataset* const dataset = source.level->GetDataset();
        if (dataset == nullptr || !BandsStandTogether(*dataset)) {
            bytes_ += source.Bytes(*source.level);
            return;
        }
        if (std::find(together_.begin(), together_.end(), dataset) != together_.end()) return;
        together_.push_back(dataset);
        for (int i = 1; i <= dataset->GetRasterCount(); ++i) bytes_ += source.Bytes(*dataset->GetRasterBand(i));
    }
    double Bytes() const { return bytes_; }

private:
    double bytes_ = 0;
    std::vector<GDALDataset*> together_;
};

/// The mean of `side` by `side` colours from `first` on, in rows of `stride`; what is transparent has no part in the colour.
Rgba MeanOf(const BandPlan& plan, const std::uint16_t* first, std::size_t stride, std::size_t side) {
    std::uint32_t red = 0, green = 0, blue = 0, alpha = 0;
    for (std::size_t y = 0; y < side; ++y) {
        for (std::size_t x = 0; x < side; ++x) {
            const Rgba one = plan.TableColor(first[y * stride + x]);
            red += std::uint32_t{one.red} * one.alpha;
            green += std::uint32_t{one.green} * one.alpha;
            blue += std::uint32_t{one.blue} * one.alpha;
            alpha += one.alpha;
        }
    }
    if (alpha == 0) return {0, 0, 0, 0};
    const auto mean = [alpha](std::uint32_t sum) { return static_cast<std::uint8_t>((sum + alpha / 2) / alpha); };
    return {mean(red), mean(green), mean(blue), static_cast<std::uint8_t>(alpha / (side * side))};
}

}  // namespace

void RasterImage::Close::operator()(GDALDataset* dataset) const { GDALClose(GDALDataset::ToHandle(dataset)); }

RasterImage::RasterImage(std::unique_ptr<GDALDataset, Close> dataset) : dataset_(std::move(dataset)) {}

RasterImage::~RasterImage() = default;

std::unique_ptr<RasterImage> RasterImage::Open(const std::string& name, RasterSources sources) {
    std::unique_ptr<GDALDataset, Close> dataset(OpenRaster(name, sources));
    if (dataset == nullptr || !ComesFromAllowedSources(*dataset, sources, kMaxBlock_bytes)) return nullptr;
    std::unique_ptr<RasterImage> image(new RasterImage(std::move(dataset)));
    if (image->Width_px() < 1 || image->Height_px() < 1 || !image->plan_.Make(*image->dataset_)) return nullptr;
    if (image->plan_.Model() != ColorModel::Table && !image->plan_.HoldsBytes() && !image->TakeRange()) return nullptr;
    return image;
}

std::int32_t RasterImage::Width_px() const { return dataset_->GetRasterXSize(); }

std::int32_t RasterImage::Height_px() const { return dataset_->GetRasterYSize(); }

std::optional<Affine> RasterImage::OwnPlacement() const {
    double g[6];
    if (dataset_->GetGeoTransform(g) != CE_None) return std::nullopt;
    const Affine placement{g[0], g[1], g[2], g[3], g[4], g[5]};
    if (!Inverse(placement)) return std::nullopt;
    return placement;
}

double RasterImage::CostOf(const ImageWindow& window, double samples) const {
    Cost cost;
    for (const int number : plan_.Bands()) cost.Add(*dataset_->GetRasterBand(number), window, samples);
    // Values that stand for no data are found in the bands themselves.
    if (plan_.Mask() == MaskKind::Shared) {
        GDALRasterBand* const mask = dataset_->GetRasterBand(plan_.Bands().front())->GetMaskBand();
        if (mask != nullptr) cost.Add(*mask, window, samples);
    }
    return cost.Bytes();
}

double RasterImage::Cost_bytes(const ImageWindow& window) const {
    const double pixels = static_cast<double>(window.width_px) * window.height_px;
    // A mean reads all there is, single values only the blocks that they stand in.
    const bool mean = IsSmaller(window) && plan_.Model() != ColorModel::Table;
    return CostOf(window, mean ? HUGE_VAL : pixels * kMaxTableSamples * kMaxTableSamples);
}

bool RasterImage::Read(const ImageWindow& window, std::vector<Rgba>& out) {
    out.assign(PixelsOf(window), Rgba{});
    const bool read = plan_.Model() == ColorModel::Table ? ReadIndices(window, out)
                      : plan_.HoldsBytes()               ? ReadBytes(window, out)
                                                         : ReadNumbers(window, out);
    return read && (plan_.Mask() == MaskKind::None || ReadMask(window, out));
}

bool RasterImage::ReadBytes(const ImageWindow& window, std::vector<Rgba>& out) {
    ReadWindow read(window, Width_px(), Height_px(), IsSmaller(window));
    std::vector<int> bands = plan_.Bands();
    const auto count = static_cast<int>(bands.size());
    if (dataset_->RasterIO(GF_Read, read.x, read.y, read.width, read.height, out.data(), window.width_px, window.height_px,
                           GDT_Byte, count, bands.data(), sizeof(Rgba), GSpacing{sizeof(Rgba)} * window.width_px, 1,
                           &read.extra) != CE_None) {
        return false;
    }
    if (plan_.Model() != ColorModel::RedGreenBlue) {
        for (Rgba& pixel : out) plan_.Finish(pixel);
    }
    return true;
}

bool RasterImage::ReadNumbers(const ImageWindow& window, std::vector<Rgba>& out) {
    numbers_.resize(out.size());
    std::uint8_t Rgba::*const parts[] = {&Rgba::red, &Rgba::green, &Rgba::blue, &Rgba::alpha};
    for (std::size_t i = 0; i < plan_.Bands().size(); ++i) {
        GDALRasterBand& band = *dataset_->GetRasterBand(plan_.Bands()[i]);
        if (!ReadBand(band, window, IsSmaller(window), numbers_.data(), GDT_Float32)) return false;
        for (std::size_t at = 0; at < out.size(); ++at) out[at].*parts[i] = plan_.Scaled(numbers_[at]);
    }
    for (Rgba& pixel : out) plan_.Finish(pixel);
    return true;
}

bool RasterImage::ReadIndices(const ImageWindow& window, std::vector<Rgba>& out) {
    const double reduction = (std::max)(window.width / window.width_px, window.height / window.height_px);
    const std::int32_t side = std::clamp(TruncToInt32(std::ceil(reduction - 0.01)), 1, kMaxTableSamples);
    ImageWindow samples = window;
    samples.width_px *= side;
    samples.height_px *= side;
    indices_.resize(PixelsOf(samples));
    if (!ReadBand(*dataset_->GetRasterBand(1), samples, false, indices_.data(), GDT_UInt16)) return false;
    const auto step = static_cast<std::size_t>(side);
    const auto stride = static_cast<std::size_t>(samples.width_px);
    const auto width = static_cast<std::size_t>(window.width_px);
    for (std::size_t at = 0; at < out.size(); ++at) {
        const std::uint16_t* const first = indices_.data() + at / width * step * stride + at % width * step;
        out[at] = step == 1 ? plan_.TableColor(*first) : MeanOf(plan_, first, stride, step);
    }
    return true;
}

bool RasterImage::ReadMask(const ImageWindow& window, std::vector<Rgba>& out) {
    mask_.assign(out.size(), 0);
    std::vector<std::uint8_t> one(out.size());
    const std::size_t count = plan_.Mask() == MaskKind::Shared ? 1 : plan_.Bands().size();
    for (std::size_t i = 0; i < count; ++i) {
        GDALRasterBand* const mask = dataset_->GetRasterBand(plan_.Bands()[i])->GetMaskBand();
        if (mask == nullptr || !ReadBand(*mask, window, IsSmaller(window), one.data(), GDT_Byte)) return false;
        for (std::size_t at = 0; at < one.size(); ++at) mask_[at] = (std::max)(mask_[at], one[at]);
    }
    for (std::size_t at = 0; at < out.size(); ++at) out[at].alpha = (std::min)(out[at].alpha, mask_[at]);
    return true;
}

/// Shown from the least to the greatest of the values that stand on a coarse grid over the image, one range for all bands so that
/// no hue is changed. The grid is coarser where its values stand in too many blocks, to a limit.
bool RasterImage::TakeRange() {
    ImageWindow whole{0, 0, static_cast<double>(Width_px()), static_cast<double>(Height_px()), 0, 0};
    std::int32_t side = kMostRangeSamples;
    do {
        whole.width_px = (std::min)(Width_px(), side);
        whole.height_px = (std::min)(Height_px(), side);
        side /= 2;
    } while (CostOf(whole, static_cast<double>(PixelsOf(whole))) > kMaxCost_bytes && side >= kLeastRangeSamples);
    if (CostOf(whole, static_cast<double>(PixelsOf(whole))) > kMaxCost_bytes) return false;
    double low = HUGE_VAL;
    double high = -HUGE_VAL;
    // Row by row, so that blocks that hold several bands are still in the cache for the next of them.
    ImageWindow row = whole;
    row.height = whole.height / whole.height_px;
    row.height_px = 1;
    for (std::int32_t i = 0; i < whole.height_px; ++i) {
        row.top = i * row.height;
        if (!WidenRange(row, low, high)) return false;
    }
    plan_.SetRange(low, high);
    return true;
}

bool RasterImage::WidenRange(const ImageWindow& window, double& low, double& high) {
    numbers_.resize(PixelsOf(window));
    mask_.resize(numbers_.size());
    for (const int number : plan_.Bands()) {
        GDALRasterBand& band = *dataset_->GetRasterBand(number);
        if (!ReadBand(band, window, false, numbers_.data(), GDT_Float32)) return false;
        if (!ReadBand(*band.GetMaskBand(), window, false, mask_.data(), GDT_Byte)) return false;
        for (std::size_t i = 0; i < numbers_.size(); ++i) {
            if (mask_[i] == 0 || !std::isfinite(numbers_[i])) continue;
            low = (std::min)(low, static_cast<double>(numbers_[i]));
            high = (std::max)(high, static_cast<double>(numbers_[i]));
        }
    }
    return true;
}

}  // namespace orvane
