#include "foreign/raster_reader/band_plan.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <limits>

namespace orvane {

namespace {

constexpr int kMaxTable = 65536;

/// The first band that means each of these; none when one is missing.
std::vector<int> BandsOf(GDALDataset& dataset, std::initializer_list<GDALColorInterp> meanings) {
    std::vector<int> bands;
    for (const GDALColorInterp meaning : meanings) {
        int band = 1;
        while (band <= dataset.GetRasterCount() && dataset.GetRasterBand(band)->GetColorInterpretation() != meaning) ++band;
        if (band > dataset.GetRasterCount()) return {};
        bands.push_back(band);
    }
    return bands;
}

std::uint8_t Byte(short value) { return static_cast<std::uint8_t>(std::clamp<int>(value, 0, 255)); }

/// What is left of white under two inks.
std::uint8_t Inked(int ink, int black) { return static_cast<std::uint8_t>(((255 - ink) * (255 - black) + 127) / 255); }

Rgba ColorOf(const GDALColorEntry& entry, GDALPaletteInterp meaning) {
    switch (meaning) {
        case GPI_Gray:
            return {Byte(entry.c1), Byte(entry.c1), Byte(entry.c1), 255};
        case GPI_CMYK:
            return {Inked(Byte(entry.c1), Byte(entry.c4)), Inked(Byte(entry.c2), Byte(entry.c4)),
                    Inked(Byte(entry.c3), Byte(entry.c4)), 255};
        case GPI_RGB:
        case GPI_HLS:  // no format gives it
            break;
    }
    return {Byte(entry.c1), Byte(entry.c2), Byte(entry.c3), Byte(entry.c4)};
}

/// How many bits of a byte are used.
int UsedBits(GDALRasterBand& band) {
    const char* const bits = band.GetMetadataItem("NBITS", "IMAGE_STRUCTURE");
    const int count = bits == nullptr ? 8 : std::atoi(bits);
    return count >= 1 && count <= 8 ? count : 8;
}

int FullByteOf(GDALRasterBand& band) { return (1 << UsedBits(band)) - 1; }

bool IsOpacity(GDALRasterBand& band) { return band.GetColorInterpretation() == GCI_AlphaBand; }

/// The value of a band of opacity that lets nothing through; 0 for types of which programs write what they like.
double FullOpacityOf(GDALRasterBand& band) {
    const char* const bits = band.GetMetadataItem("NBITS", "IMAGE_STRUCTURE");
    const int count = bits == nullptr ? 0 : std::atoi(bits);
    if (band.GetRasterDataType() == GDT_Byte) return FullByteOf(band);
    if (band.GetRasterDataType() != GDT_UInt16) return 0;
    return count >= 1 && count <= 16 ? (1 << count) - 1 : 65535;
}

/// The values that a data set tells for all its bands at once; nothing when it does not.
std::vector<double> ToldNoData(GDALDataset& dataset) {
    const char* const told = dataset.GetMetadataItem("NODATA_VALUES");
    const CPLStringList words(told == nullptr ? nullptr : CSLTokenizeString(told));
    if (told == nullptr || words.size() != dataset.GetRasterCount()) return {};
    std::vector<double> values;
    for (int i = 0; i < words.size(); ++i) values.push_back(CPLAtof(words[i]));
    return values;
}

/// How near to each other two numbers are one, as a part of them: descriptions write floating point numbers with fewer digits
/// than these have.
double NearnessOf(GDALDataType type) {
    if (type == GDT_Float32) return 1.0 / (1 << 22);
    return type == GDT_Float64 ? 4 * std::numeric_limits<double>::epsilon() : 0;
}

bool CanHold(GDALRasterBand& band, bool isSigned, double value) {
    const GDALDataType type = band.GetRasterDataType();
    if (GDALDataTypeIsInteger(type) == FALSE) return true;
    if (isSigned) return value == std::floor(value) && value >= -128 && value <= 127;
    int clamped = FALSE;
    int rounded = FALSE;
    GDALAdjustValueToDataType(type, value, &clamped, &rounded);
    return !std::isnan(value) && clamped == FALSE && rounded == FALSE;
}

bool HoldsSignedBytes(GDALRasterBand& band) {
    const char* const type = band.GetMetadataItem("PIXELTYPE", "IMAGE_STRUCTURE");
    return band.GetRasterDataType() == GDT_Byte && type != nullptr && EQUAL(type, "SIGNEDBYTE");
}

}  // namespace

bool IsMaskApart(int flags) { return (flags & GMF_PER_DATASET) != 0 && (flags & (GMF_ALPHA | GMF_NODATA | GMF_ALL_VALID)) == 0; }

bool BandPlan::Make(GDALDataset& dataset) {
    if (dataset.GetRasterCount() < 1) return false;
    if (!TakeTable(dataset)) ChooseBands(dataset);
    for (const int number : bands_) {
        GDALRasterBand& band = *dataset.GetRasterBand(number);
        isSigned_.push_back(HoldsSignedBytes(band));
        nearness_.push_back(NearnessOf(band.GetRasterDataType()));
        fullBytes_.push_back(FullByteOf(band));
        holdsBytes_ = holdsBytes_ && band.GetRasterDataType() == GDT_Byte && !isSigned_.back();
        holdsPlaces_ = holdsBytes_ || band.GetRasterDataType() == GDT_UInt16;
    }
    ChooseMask(dataset);
    return true;
}

bool BandPlan::TakeTable(GDALDataset& dataset) {
    GDALRasterBand& band = *dataset.GetRasterBand(1);
    const GDALColorTable* const colors = band.GetColorTable();
    if (colors != nullptr && colors->GetColorEntryCount() > 0 && dataset.GetRasterCount() <= 2) {
        for (int i = 0; i < (std::min)(colors->GetColorEntryCount(), kMaxTable); ++i) {
            const Rgba color = ColorOf(*colors->GetColorEntry(i), colors->GetPaletteInterpretation());
            tableIsTransparent_ = tableIsTransparent_ || color.alpha < 255;
            table_.push_back(color);
        }
        // What stands outside the table is transparent; a byte cannot where the table is full.
        if (table_.size() < 256 || band.GetRasterDataType() != GDT_Byte || HoldsSignedBytes(band)) tableIsTransparent_ = true;
    } else if (dataset.GetRasterCount() == 1 && band.GetRasterDataType() == GDT_Byte && UsedBits(band) < 8 &&
               !HoldsSignedBytes(band)) {
        const int last = (1 << UsedBits(band)) - 1;
        for (int i = 0; i <= last; ++i) {
            const auto grey = static_cast<std::uint8_t>(i * 255 / last);
            table_.push_back({grey, grey, grey, 255});
        }
    } else {
        return false;
    }
    model_ = ColorModel::Table;
    bands_ = {1};
    return true;
}

void BandPlan::ChooseBands(GDALDataset& dataset) {
    bands_ = BandsOf(dataset, {GCI_CyanBand, GCI_MagentaBand, GCI_YellowBand, GCI_BlackBand});
    model_ = ColorModel::Cmyk;
    if (!bands_.empty()) return;
    model_ = ColorModel::RedGreenBlue;
    bands_ = BandsOf(dataset, {GCI_RedBand, GCI_GreenBand, GCI_BlueBand});
    if (!bands_.empty()) return;
    // Bands that do not say what they mean: three or more are shown as red, green and blue, as they stand.
    for (int band = 1; band <= dataset.GetRasterCount() && bands_.size() < 3; ++band) {
        if (!IsOpacity(*dataset.GetRasterBand(band))) bands_.push_back(band);
    }
    if (bands_.size() == 3) return;
    model_ = ColorModel::Grey;
    bands_.resize(1, 1);
}

void BandPlan::ChooseMask(GDALDataset& dataset) {
    mask_ = MaskKind::Shared;
    GDALRasterBand& first = *dataset.GetRasterBand(bands_.front());
    GDALRasterBand* const mask = first.GetMaskBand();
    fullMask_ = mask == nullptr ? 255 : FullOpacityOf(*mask);
    if (IsMaskApart(first.GetMaskFlags())) return;
    if (TakeNoData(dataset)) {
        mask_ = MaskKind::NoData;
        return;
    }
    // The library takes it for a mask in some layouts only.
    for (int band = 1; band <= dataset.GetRasterCount(); ++band) {
        if (!IsOpacity(*dataset.GetRasterBand(band)) || std::find(bands_.begin(), bands_.end(), band) != bands_.end()) continue;
        opacityBand_ = band;
        fullMask_ = FullOpacityOf(*dataset.GetRasterBand(band));
        return;
    }
    const bool areMasked = std::all_of(bands_.begin(), bands_.end(), [&dataset](int band) {
        return (dataset.GetRasterBand(band)->GetMaskFlags() & (GMF_ALL_VALID | GMF_NODATA)) == 0;
    });
    mask_ = areMasked ? MaskKind::Each : MaskKind::None;
}

/// The values are compared here rather than by the library's masks: overviews often do not tell them, and it holds a negative one
/// of signed bytes for none.
bool BandPlan::TakeNoData(GDALDataset& dataset) {
    const std::vector<double> told = ToldNoData(dataset);
    for (std::size_t i = 0; i < bands_.size(); ++i) {
        GDALRasterBand& band = *dataset.GetRasterBand(bands_[i]);
        int hasOne = told.empty() ? FALSE : TRUE;
        const double value = told.empty() ? band.GetNoDataValue(&hasOne) : told[static_cast<std::size_t>(bands_[i] - 1)];
        if (hasOne == FALSE || !CanHold(band, isSigned_[i], value)) return false;
        noData_.push_back(value);
    }
    return true;
}

bool BandPlan::IsNoData(std::size_t at, double value) const {
    const double noData = noData_[at];
    if (std::isnan(noData)) return std::isnan(value);
    if (value == noData) return true;
    return std::isfinite(noData) && std::abs(value - noData) <= std::abs(noData) * nearness_[at];
}

std::uint8_t BandPlan::Opacity(double value) const {
    if (!(value > 0)) return 0;  // also what is no number
    if (fullMask_ == 0 || value >= fullMask_) return 255;
    return static_cast<std::uint8_t>(value * 255 / fullMask_ + 0.5);
}

void BandPlan::SetRange(double low, double high) {
    low_ = low;
    scale_ = high > low ? 255 / (high - low) : 0;
}

std::uint8_t BandPlan::Scaled(double value) const {
    const double scaled = (value - low_) * scale_ + 0.5;
    if (!(scaled >= 1)) return 0;  // also what is no number
    return scaled >= 255 ? std::uint8_t{255} : static_cast<std::uint8_t>(scaled);
}

void BandPlan::Finish(Rgba& pixel) const {
    if (model_ == ColorModel::Grey) {
        pixel.green = pixel.blue = pixel.red;
    } else if (model_ == ColorModel::Cmyk) {
        const int black = pixel.alpha;
        pixel = {Inked(pixel.red, black), Inked(pixel.green, black), Inked(pixel.blue, black), 255};
    }
}

}  // namespace orvane
