// What the bands of an image mean, and the colours that come out of their values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foreign/raster/readable_image.h"

class GDALDataset;

namespace orvane {

enum class ColorModel : std::uint8_t {
    Grey,
    RedGreenBlue,
    Cmyk,
    Table,  ///< values are places in a table of colours; so are grey values of fewer than eight bits
};

/// What tells the transparent pixels.
enum class MaskKind : std::uint8_t {
    None,
    Shared,  ///< one mask for all bands: a band of opacity, or a mask beside them
    Each,    ///< a mask of each band; a pixel that none of them lets through is transparent
    NoData,  ///< a value of each band that stands for no data; a pixel without any data is transparent
};

/// A byte of which only some bits are used, as one of eight bits.
inline std::uint8_t Spread(std::uint8_t value, int full) {
    if (full == 255) return value;
    return value >= full ? std::uint8_t{255} : static_cast<std::uint8_t>(value * 255 / full);
}

/// Whether a band's mask, which has these flags of GDAL, is neither made of its values nor a band of opacity, but stands beside
/// the bands for all of them.
bool IsMaskApart(int flags);

class BandPlan {
public:
    /// False when the image has no band to show.
    bool Make(GDALDataset& dataset);

    ColorModel Model() const { return model_; }
    MaskKind Mask() const { return mask_; }
    bool IsOpaque() const { return mask_ == MaskKind::None && !tableIsTransparent_; }
    /// Numbers of the bands that make the colour, from 1, in the order of the model.
    const std::vector<int>& Bands() const { return bands_; }
    /// All of them hold bytes from 0 on.
    bool HoldsBytes() const { return holdsBytes_; }
    /// The bytes of this one of Bands() are numbers from -128 to 127.
    bool IsSigned(std::size_t at) const { return isSigned_[at]; }
    /// The only band of a table holds places in it as they stand: no negative ones, no fractions.
    bool HoldsPlaces() const { return holdsPlaces_; }
    /// The greatest byte of this one of Bands(), where fewer bits than eight are used.
    int FullByte(std::size_t at) const { return fullBytes_[at]; }

    /// The number of the band of opacity, from 1, when it is the mask; else 0.
    int OpacityBand() const { return opacityBand_; }
    /// How opaque a value of the mask is: by the greatest value of its type where that is known, else wholly above 0.
    std::uint8_t Opacity(double value) const;
    /// Whether a byte of the mask says it as it stands.
    bool MaskIsOpacity() const { return fullMask_ == 255; }
    /// Whether a value of this one of Bands() stands for no data. REQUIRES: Mask() is NoData.
    bool IsNoData(std::size_t at, double value) const;

    /// The range of values of other types than bytes that goes from none of a colour to all of it.
    void SetRange(double low, double high);
    std::uint8_t Scaled(double value) const;

    /// A value outside the table has no colour and is transparent.
    Rgba TableColor(std::uint16_t index) const { return index < table_.size() ? table_[index] : Rgba{0, 0, 0, 0}; }
    /// Makes colours out of what was read: of one grey value in `red`, or of a CMYK value with black in `alpha`.
    void Finish(Rgba& pixel) const;

private:
    void ChooseBands(GDALDataset& dataset);
    void ChooseMask(GDALDataset& dataset);
    bool TakeNoData(GDALDataset& dataset);
    bool TakeTable(GDALDataset& dataset);

    ColorModel model_ = ColorModel::Grey;
    MaskKind mask_ = MaskKind::None;
    std::vector<int> bands_;
    bool holdsBytes_ = true;
    bool holdsPlaces_ = true;
    std::vector<bool> isSigned_;
    std::vector<double> nearness_;
    std::vector<int> fullBytes_;
    int opacityBand_ = 0;
    double fullMask_ = 255;  ///< 0: not known
    std::vector<double> noData_;
    std::vector<Rgba> table_;
    bool tableIsTransparent_ = false;
    double low_ = 0;
    double scale_ = 1;
};

}  // namespace orvane
