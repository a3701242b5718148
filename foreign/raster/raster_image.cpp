#include "foreign/raster/raster_image.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>

#include "platform/to_int.h"

namespace orvane {

namespace {

// How many samples along each side of a pixel make the mean of places in a table, which GDAL cannot average.
constexpr std::int32_t kMaxTableSamples = 4;
// As many values along each side are looked at for the range of an image whose values are no bytes.
constexpr std::int32_t kRangeSamples = 64;

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

/// The decoded pixels that `samples` values of a window cost: whole blocks of the overview that they are taken from.
double CostOf(GDALRasterBand& band, const ImageWindow& w, double samples) {
    const double wantedX = w.width / w.width_px;
    const double wantedY = w.height / w.height_px;
    double reductionX = 1;
    double reductionY = 1;
    GDALRasterBand* level = &band;
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
    int blockWidth = 1;
    int blockHeight = 1;
    level->GetBlockSize(&blockWidth, &blockHeight);
    const double block_px = static_cast<double>(blockWidth) * blockHeight;
    const double blocks = std::ceil(w.width / reductionX / blockWidth) * std::ceil(w.height / reductionY / blockHeight);
    return (std::min)(blocks, samples) * block_px;
}

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

std::unique_ptr<RasterImage> RasterImage::Open(const std::string& name) {
    std::unique_ptr<GDALDataset, Close> dataset(GDALDataset::Open(name.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY));
    if (dataset == nullptr) return nullptr;
    std::unique_ptr<RasterImage> image(new RasterImage(std::move(dataset)));
    if (image->Width_px() < 1 || image->Height_px() < 1 || !image->plan_.Make(*image->dataset_)) return nullptr;
    double block_bytes = 0;
    for (int i = 1; i <= image->dataset_->GetRasterCount(); ++i) {
        GDALRasterBand& band = *image->dataset_->GetRasterBand(i);
        int width = 0;
        int height = 0;
        band.GetBlockSize(&width, &height);
        block_bytes += static_cast<double>(width) * height * GDALGetDataTypeSizeBytes(band.GetRasterDataType());
    }
    if (block_bytes > kMaxBlock_bytes) return nullptr;
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

double RasterImage::Cost_px(const ImageWindow& window) const {
    GDALRasterBand& band = *dataset_->GetRasterBand(plan_.Bands().front());
    const double pixels = static_cast<double>(window.width_px) * window.height_px;
    // A mean reads all there is, single values only the blocks that they stand in.
    const bool mean = IsSmaller(window) && plan_.Model() != ColorModel::Table;
    return CostOf(band, window, mean ? HUGE_VAL : pixels * kMaxTableSamples * kMaxTableSamples);
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
/// no hue is changed.
bool RasterImage::TakeRange() {
    ImageWindow whole{0, 0, static_cast<double>(Width_px()), static_cast<double>(Height_px()), 0, 0};
    whole.width_px = (std::min)(Width_px(), kRangeSamples);
    whole.height_px = (std::min)(Height_px(), kRangeSamples);
    std::vector<float> values(PixelsOf(whole));
    std::vector<std::uint8_t> valid(values.size());
    double low = HUGE_VAL;
    double high = -HUGE_VAL;
    for (const int number : plan_.Bands()) {
        GDALRasterBand& band = *dataset_->GetRasterBand(number);
        if (CostOf(band, whole, static_cast<double>(values.size())) > kMaxCost_px) return false;
        if (!ReadBand(band, whole, false, values.data(), GDT_Float32)) return false;
        if (!ReadBand(*band.GetMaskBand(), whole, false, valid.data(), GDT_Byte)) return false;
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (valid[i] == 0 || !std::isfinite(values[i])) continue;
            low = (std::min)(low, static_cast<double>(values[i]));
            high = (std::max)(high, static_cast<double>(values[i]));
        }
    }
    plan_.SetRange(low, high);
    return true;
}

}  // namespace orvane
