#include "foreign/raster_reader/raster_image.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>

#include "foreign/raster_reader/image_blocks.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

// Of a table of colours, in which no format makes overviews of means, so many places along each side of a pixel are looked at,
// at the least; where there are twice as many, each second, and so on.
constexpr std::int32_t kTableSamples = 4;
// As many values along each side are looked at, at the most and at the least, for the range of an image whose values are no
// bytes.
constexpr std::int32_t kMostRangeSamples = 64;
constexpr std::int32_t kLeastRangeSamples = 8;
// So many pixels of a level are held at a time.
constexpr std::int64_t kChunk_px = 1 << 20;
// Where the bands of a model go, in its order.
constexpr std::uint8_t Rgba::*kParts[] = {&Rgba::red, &Rgba::green, &Rgba::blue, &Rgba::alpha};

std::size_t PixelsOf(const LevelWindow& w) { return static_cast<std::size_t>(w.width) * static_cast<std::size_t>(w.height); }

bool IsSound(const ImageWindow& w) {
    return PixelsOf(w) > 0 && PixelsOf(w) <= ReadableImage::kMaxRead_px && std::isfinite(w.left) && std::isfinite(w.top) &&
           w.pitchX >= 1 && w.pitchY >= 1 && std::isfinite(w.pitchX) && std::isfinite(w.pitchY);
}

/// A window of a level, out of one band of it. A mask may be of another size than its level.
bool ReadBand(GDALRasterBand& band, const ImageLevel& level, const LevelWindow& w, void* out, GDALDataType type) {
    GDALRasterIOExtraArg extra;
    INIT_RASTERIO_EXTRA_ARG(extra);
    int x = w.left * w.stepX;
    int y = w.top * w.stepY;
    int width = w.width * w.stepX;
    int height = w.height * w.stepY;
    if (band.GetXSize() != level.width || band.GetYSize() != level.height) {
        const double scaleX = static_cast<double>(band.GetXSize()) / level.width;
        const double scaleY = static_cast<double>(band.GetYSize()) / level.height;
        extra.bFloatingPointWindowValidity = TRUE;
        // Of places that lie between two pixels of the mask every window takes the same.
        constexpr double kTie = 1e-6;
        extra.dfXOff = x * scaleX + kTie;
        extra.dfYOff = y * scaleY + kTie;
        extra.dfXSize = width * scaleX;
        extra.dfYSize = height * scaleY;
        x = std::clamp(TruncToInt32(extra.dfXOff), 0, band.GetXSize() - 1);
        y = std::clamp(TruncToInt32(extra.dfYOff), 0, band.GetYSize() - 1);
        width = std::clamp(TruncToInt32(std::ceil(extra.dfXOff + extra.dfXSize)), x + 1, band.GetXSize()) - x;
        height = std::clamp(TruncToInt32(std::ceil(extra.dfYOff + extra.dfYSize)), y + 1, band.GetYSize()) - y;
    }
    return band.RasterIO(GF_Read, x, y, width, height, out, w.width, w.height, type, 0, 0, &extra) == CE_None;
}

/// The steps that some boxes along an axis stand in.
std::int32_t FirstOf(std::span<const PixelRun> boxes) { return static_cast<std::int32_t>(boxes.front().FirstPixel()); }
std::int32_t LengthOf(std::span<const PixelRun> boxes) {
    return static_cast<std::int32_t>(boxes.back().PixelEnd() - boxes.front().FirstPixel());
}

}  // namespace

void RasterImage::Close::operator()(GDALDataset* dataset) const { GDALClose(GDALDataset::ToHandle(dataset)); }

RasterImage::RasterImage(std::unique_ptr<GDALDataset, Close> dataset) : dataset_(std::move(dataset)) {}

RasterImage::~RasterImage() = default;

std::unique_ptr<RasterImage> RasterImage::Open(const std::string& name) {
    std::unique_ptr<GDALDataset, Close> dataset(GDALDataset::Open(name.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY));
    if (dataset == nullptr || !HasBlocksUpTo(*dataset, kMaxBlock_bytes)) return nullptr;
    std::unique_ptr<RasterImage> image(new RasterImage(std::move(dataset)));
    if (image->Width_px() < 1 || image->Height_px() < 1 || !image->plan_.Make(*image->dataset_)) return nullptr;
    if (!image->levels_.Take(*image->dataset_, image->plan_)) return nullptr;
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

RasterImage::Source RasterImage::SourceFor(double pitchX, double pitchY) const {
    const ImageLevel& level = levels_.For(pitchX, pitchY);
    Source source;
    source.level = &level;
    if (plan_.Model() == ColorModel::Table) {
        source.stepX = std::clamp(TruncToInt32(HeldPitch(pitchX) / level.reductionX / kTableSamples), 1, level.width);
        source.stepY = std::clamp(TruncToInt32(HeldPitch(pitchY) / level.reductionY / kTableSamples), 1, level.height);
    }
    source.width = level.width / source.stepX;
    source.height = level.height / source.stepY;
    source.unitX = level.reductionX * source.stepX;
    source.unitY = level.reductionY * source.stepY;
    return source;
}

double RasterImage::Cost_bytes(const ImageWindow& window) {
    if (!std::isfinite(window.left) || !std::isfinite(window.top) || window.width_px < 1 || window.height_px < 1) return HUGE_VAL;
    const Source source = SourceFor(window.pitchX, window.pitchY);
    const auto run = [](double start, double pitch, std::int32_t count, double unit, std::int32_t size) {
        const std::int32_t first = std::clamp(TruncToInt32(start / unit), 0, size - 1);
        const std::int32_t last = std::clamp(TruncToInt32(std::ceil((start + pitch * count) / unit)), first + 1, size);
        return std::pair(first, last - first);
    };
    const auto [left, width] = run(window.left, window.pitchX, window.width_px, source.unitX, source.width);
    const auto [top, height] = run(window.top, window.pitchY, window.height_px, source.unitY, source.height);
    return source.level->Cost_bytes({left, top, width, height, source.stepX, source.stepY});
}

bool RasterImage::Read(const ImageWindow& window, std::span<Rgba> out) {
    if (!IsSound(window) || out.size() != orvane::PixelsOf(window)) return false;
    const Source source = SourceFor(window.pitchX, window.pitchY);
    if (window.pitchX > 1 || window.pitchY > 1) return ReadMeans(source, window, out);
    const LevelWindow plain{TruncToInt32(window.left), TruncToInt32(window.top), window.width_px, window.height_px};
    if (plain.left != window.left || plain.top != window.top || plain.left < 0 || plain.top < 0 ||
        plain.width > source.width - plain.left || plain.height > source.height - plain.top) {
        return false;
    }
    return ReadLevel(*source.level, plain, out);
}

bool RasterImage::ReadMeans(const Source& source, const ImageWindow& window, std::span<Rgba> out) {
    const double stepX = window.pitchX / source.unitX;
    TakeRuns(window.left / source.unitX, stepX, window.width_px, source.width, columns_);
    TakeRuns(window.top / source.unitY, window.pitchY / source.unitY, window.height_px, source.height, rows_);
    // No more columns at a time than one row of which can be held.
    const auto most = static_cast<std::size_t>(std::clamp(kChunk_px / 2 / (stepX + 1), 1.0, 1e9));
    const std::span<const PixelRun> columns(columns_);
    for (std::size_t at = 0; at < columns.size(); at += most) {
        const std::span<const PixelRun> some = columns.subspan(at, (std::min)(most, columns.size() - at));
        if (!ReadColumns(source, some, out.data() + at, columns.size())) return false;
    }
    return true;
}

bool RasterImage::ReadColumns(const Source& source, std::span<const PixelRun> columns, Rgba* out, std::size_t stride) {
    LevelWindow held{FirstOf(columns), FirstOf(rows_), LengthOf(columns), 0, source.stepX, source.stepY};
    if (held.width > 4 * kChunk_px) return false;
    const auto most = static_cast<std::int32_t>((std::max)(kChunk_px / held.width, std::int64_t{1}));
    const std::int32_t end = FirstOf(rows_) + LengthOf(rows_);
    BoxMeans means(columns, plan_.IsOpaque());
    std::int64_t taken = -1;
    for (const PixelRun& run : rows_) {
        means.Start();
        for (std::int64_t y = run.FirstPixel(); y < run.PixelEnd(); ++y) {
            if (y >= std::int64_t{held.top} + held.height) {
                held.top = static_cast<std::int32_t>(y);
                held.height = (std::min)(most, end - held.top);
                if (!ReadRows(source, held)) return false;
            }
            if (y != taken) means.TakeRow(source_.data() + (y - held.top) * held.width);
            taken = y;
            means.Add((std::min)(run.to, (y + 1) * PixelRun::kPixel) - (std::max)(run.from, y * PixelRun::kPixel));
        }
        means.Finish(out);
        out += stride;
    }
    return true;
}

bool RasterImage::ReadRows(const Source& source, const LevelWindow& window) {
    source_.resize(PixelsOf(window));
    return ReadLevel(*source.level, window, source_);
}

bool RasterImage::ReadLevel(const ImageLevel& level, const LevelWindow& window, std::span<Rgba> out) {
    std::fill(out.begin(), out.end(), Rgba{});
    const bool isMasked = plan_.Mask() != MaskKind::None;
    if (isMasked) mask_.assign(out.size(), 0);
    const bool read = plan_.Model() == ColorModel::Table ? ReadIndices(level, window, out)
                      : plan_.HoldsBytes()               ? ReadBytes(level, window, out)
                                                         : ReadNumbers(level, window, out);
    if (!read || !ReadMasks(level, window)) return false;
    for (std::size_t at = 0; isMasked && at < out.size(); ++at) out[at].alpha = (std::min)(out[at].alpha, mask_[at]);
    return true;
}

bool RasterImage::ReadBytes(const ImageLevel& level, const LevelWindow& w, std::span<Rgba> out) {
    std::uint8_t* to = &out.front().red;
    const GSpacing row = GSpacing{sizeof(Rgba)} * w.width;
    if (level.together != nullptr) {
        std::vector<int> bands = level.numbers;
        if (level.together->RasterIO(GF_Read, w.left, w.top, w.width, w.height, to, w.width, w.height, GDT_Byte,
                                     static_cast<int>(bands.size()), bands.data(), sizeof(Rgba), row, 1, nullptr) != CE_None) {
            return false;
        }
    } else {
        for (GDALRasterBand* const band : level.bands) {
            if (band->RasterIO(GF_Read, w.left, w.top, w.width, w.height, to++, w.width, w.height, GDT_Byte, sizeof(Rgba), row,
                               nullptr) != CE_None) {
                return false;
            }
        }
    }
    for (std::size_t i = 0; i < level.bands.size(); ++i) {
        for (std::size_t at = 0; plan_.Mask() == MaskKind::NoData && at < out.size(); ++at) {
            if (!plan_.IsNoData(i, out[at].*kParts[i])) mask_[at] = 255;
        }
        const int full = plan_.FullByte(i);
        if (full == 255) continue;
        for (Rgba& pixel : out) pixel.*kParts[i] = Spread(pixel.*kParts[i], full);
    }
    if (plan_.Model() != ColorModel::RedGreenBlue) {
        for (Rgba& pixel : out) plan_.Finish(pixel);
    }
    return true;
}

bool RasterImage::ReadNumbersOf(std::size_t band, const ImageLevel& level, const LevelWindow& window) {
    if (!ReadBand(*level.bands[band], level, window, numbers_.data(), GDT_Float64)) return false;
    if (!plan_.IsSigned(band)) return true;
    for (double& number : numbers_) {
        if (number > 127) number -= 256;
    }
    return true;
}

bool RasterImage::ReadNumbers(const ImageLevel& level, const LevelWindow& window, std::span<Rgba> out) {
    numbers_.resize(out.size());
    for (std::size_t i = 0; i < level.bands.size(); ++i) {
        if (!ReadNumbersOf(i, level, window)) return false;
        for (std::size_t at = 0; at < out.size(); ++at) {
            out[at].*kParts[i] = plan_.Scaled(numbers_[at]);
            if (plan_.Mask() == MaskKind::NoData && !plan_.IsNoData(i, numbers_[at])) mask_[at] = 255;
        }
    }
    for (Rgba& pixel : out) plan_.Finish(pixel);
    return true;
}

bool RasterImage::ReadIndices(const ImageLevel& level, const LevelWindow& window, std::span<Rgba> out) {
    const bool hasNoData = plan_.Mask() == MaskKind::NoData;
    if (!plan_.HoldsPlaces()) {
        numbers_.resize(out.size());
        if (!ReadNumbersOf(0, level, window)) return false;
        for (std::size_t at = 0; at < out.size(); ++at) {
            const double place = numbers_[at];
            out[at] = place >= 0 && place < 65536 ? plan_.TableColor(static_cast<std::uint16_t>(place)) : Rgba{0, 0, 0, 0};
            if (hasNoData && !plan_.IsNoData(0, place)) mask_[at] = 255;
        }
        return true;
    }
    indices_.resize(out.size());
    if (!ReadBand(*level.bands.front(), level, window, indices_.data(), GDT_UInt16)) return false;
    for (std::size_t at = 0; at < out.size(); ++at) {
        out[at] = plan_.TableColor(indices_[at]);
        if (hasNoData && !plan_.IsNoData(0, indices_[at])) mask_[at] = 255;
    }
    return true;
}

bool RasterImage::ReadMasks(const ImageLevel& level, const LevelWindow& window) {
    return std::all_of(level.masks.begin(), level.masks.end(),
                       [&](GDALRasterBand* mask) { return RaiseMask(*mask, level, window); });
}

bool RasterImage::RaiseMask(GDALRasterBand& mask, const ImageLevel& level, const LevelWindow& window) {
    if (mask.GetRasterDataType() != GDT_Byte) {
        numbers_.resize(mask_.size());
        if (!ReadBand(mask, level, window, numbers_.data(), GDT_Float64)) return false;
        for (std::size_t at = 0; at < mask_.size(); ++at) mask_[at] = (std::max)(mask_[at], plan_.Opacity(numbers_[at]));
        return true;
    }
    oneMask_.resize(mask_.size());
    if (!ReadBand(mask, level, window, oneMask_.data(), GDT_Byte)) return false;
    for (std::size_t at = 0; at < mask_.size(); ++at) {
        mask_[at] = (std::max)(mask_[at], plan_.MaskIsOpacity() ? oneMask_[at] : plan_.Opacity(oneMask_[at]));
    }
    return true;
}

/// Shown from the least to the greatest of the values that stand on a coarse grid over the image, one range for all bands so that
/// no hue is changed. The grid is coarser where its values stand in too many blocks, to a limit.
bool RasterImage::TakeRange() {
    const ImageLevel* level = nullptr;
    LevelWindow grid;
    for (std::int32_t side = kMostRangeSamples; side >= kLeastRangeSamples; side /= 2) {
        level = &levels_.For(static_cast<double>(Width_px()) / side, static_cast<double>(Height_px()) / side);
        grid.stepX = 1 + (level->width - 1) / side;
        grid.stepY = 1 + (level->height - 1) / side;
        grid.width = level->width / grid.stepX;
        grid.height = level->height / grid.stepY;
        if (level->Cost_bytes(grid) <= kMaxCost_bytes) break;
    }
    if (level->Cost_bytes(grid) > kMaxCost_bytes) return false;
    double low = HUGE_VAL;
    double high = -HUGE_VAL;
    // Row by row, so that blocks that hold several bands are still in the cache for the next of them.
    LevelWindow row = grid;
    row.height = 1;
    for (row.top = 0; row.top < grid.height; ++row.top) {
        if (!WidenRange(*level, row, low, high)) return false;
    }
    plan_.SetRange(low, high);
    return true;
}

bool RasterImage::WidenRange(const ImageLevel& level, const LevelWindow& window, double& low, double& high) {
    for (std::size_t band = 0; band < level.bands.size(); ++band) {
        GDALRasterBand* const mask = level.masks.empty() ? nullptr : level.masks[(std::min)(band, level.masks.size() - 1)];
        mask_.assign(PixelsOf(window), mask == nullptr ? 255 : 0);
        if (mask != nullptr && !RaiseMask(*mask, level, window)) return false;
        numbers_.resize(mask_.size());
        if (!ReadNumbersOf(band, level, window)) return false;
        for (std::size_t i = 0; i < numbers_.size(); ++i) {
            if (mask_[i] == 0 || !std::isfinite(numbers_[i])) continue;
            if (plan_.Mask() == MaskKind::NoData && plan_.IsNoData(band, numbers_[i])) continue;
            low = (std::min)(low, numbers_[i]);
            high = (std::max)(high, numbers_[i]);
        }
    }
    return true;
}

}  // namespace orvane
