#include "foreign/raster_reader/band_plan.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>

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

bool HoldsSignedBytes(GDALRasterBand& band) {
    const char* const type = band.GetMetadataItem("PIXELTYPE", "IMAGE_STRUCTURE");
    return band.GetRasterDataType() == GDT_Byte && type != nullptr && EQUAL(type, "SIGNEDBYTE");
}

}  // namespace

bool BandPlan::Make(GDALDataset& dataset) {
    if (dataset.GetRasterCount() < 1) return false;
    if (!TakeTable(dataset)) ChooseBands(dataset);
    for (const int number : bands_) {
        GDALRasterBand& band = *dataset.GetRasterBand(number);
        isSigned_.push_back(HoldsSignedBytes(band));
        fullBytes_.push_back(FullByteOf(band));
        holdsBytes_ = holdsBytes_ && band.GetRasterDataType() == GDT_Byte && !isSigned_.back();
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
        if (table_.size() < 256 || band.GetRasterDataType() != GDT_Byte) tableIsTransparent_ = true;
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
    const bool thirdIsOpacity =
        dataset.GetRasterCount() >= 3 && dataset.GetRasterBand(3)->GetColorInterpretation() == GCI_AlphaBand;
    if (dataset.GetRasterCount() >= 3 && !thirdIsOpacity) {
        bands_ = {1, 2, 3};
        return;
    }
    model_ = ColorModel::Grey;
    bands_ = {1};
}

void BandPlan::ChooseMask(GDALDataset& dataset) {
    mask_ = MaskKind::Each;
    fullMask_ = 255;
    for (const int band : bands_) {
        const int flags = dataset.GetRasterBand(band)->GetMaskFlags();
        if ((flags & GMF_ALL_VALID) != 0) {
            mask_ = MaskKind::None;
            return;
        }
        if ((flags & GMF_PER_DATASET) != 0) mask_ = MaskKind::Shared;
    }
    GDALRasterBand* const mask = dataset.GetRasterBand(bands_.front())->GetMaskBand();
    if (mask_ == MaskKind::Shared && mask != nullptr && mask->GetRasterDataType() == GDT_Byte) fullMask_ = FullByteOf(*mask);
}

void BandPlan::SetRange(double low, double high) {
    low_ = low;
    scale_ = high > low ? 255 / (high - low) : 0;
}

std::uint8_t BandPlan::Scaled(float value) const {
    const double scaled = (static_cast<double>(value) - low_) * scale_ + 0.5;
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
