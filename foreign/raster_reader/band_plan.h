// What the bands of an image mean, and the colours that come out of their values.
#pragma once

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
    Each,    ///< a value of each band that stands for no data; a pixel without any data is transparent
};

class BandPlan {
public:
    /// False when the image has no band to show.
    bool Make(GDALDataset& dataset);

    ColorModel Model() const { return model_; }
    MaskKind Mask() const { return mask_; }
    bool IsOpaque() const { return mask_ == MaskKind::None && !tableIsTransparent_; }
    /// Numbers of the bands that make the colour, from 1, in the order of the model.
    const std::vector<int>& Bands() const { return bands_; }
    /// All of them hold bytes.
    bool HoldsBytes() const { return holdsBytes_; }

    /// The range of values of other types than bytes that goes from none of a colour to all of it.
    void SetRange(double low, double high);
    std::uint8_t Scaled(float value) const;

    /// A value outside the table has no colour and is transparent.
    Rgba TableColor(std::uint16_t index) const { return index < table_.size() ? table_[index] : Rgba{0, 0, 0, 0}; }
    /// Makes colours out of what was read: of one grey value in `red`, or of a CMYK value with black in `alpha`.
    void Finish(Rgba& pixel) const;

private:
    void ChooseBands(GDALDataset& dataset);
    void ChooseMask(GDALDataset& dataset);
    bool TakeTable(GDALDataset& dataset);

    ColorModel model_ = ColorModel::Grey;
    MaskKind mask_ = MaskKind::None;
    std::vector<int> bands_;
    bool holdsBytes_ = true;
    std::vector<Rgba> table_;
    bool tableIsTransparent_ = false;
    double low_ = 0;
    double scale_ = 1;
};

}  // namespace orvane
