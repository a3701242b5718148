// Images with a transparent colour, as a pair of bitmaps that two blits put together.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/device_context.h"
#include "platform/values.h"

namespace orvane {

/// One image: white in the mask and black in the colours where it is transparent.
class MaskedImage {
public:
    MaskedImage() = default;

    /// False for an image that was never made, or for which there was no memory.
    bool Ready() const { return mask_.bitmap != nullptr && color_.bitmap != nullptr; }

private:
    friend MaskedImage MakeMaskPair(DeviceContext& loaderDc, Bitmap& bitmap, std::int32_t width, std::int32_t height,
                                    Rgb bgColor);
    friend void BlitMasked(DeviceContext& dc, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                           const MaskedImage& image);

    /// The context stands behind the bitmap that it has selected, so it goes first.
    struct Layer {
        std::unique_ptr<Bitmap> bitmap;
        std::unique_ptr<DeviceContext> dc;
    };

    Layer mask_, color_;
    std::int32_t width_px_ = 0;
    std::int32_t height_px_ = 0;
};

/// Makes the pair from `bitmap`, whose pixels of `bgColor` are transparent. `bitmap` stays selected in `loaderDc` and must
/// outlive it or its next selection. The image is not ready when there is no memory.
MaskedImage MakeMaskPair(DeviceContext& loaderDc, Bitmap& bitmap, std::int32_t width, std::int32_t height, Rgb bgColor);

/// Stretches the whole image over the box from (x, y), in pixels. REQUIRES: image.Ready().
void BlitMasked(DeviceContext& dc, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                const MaskedImage& image);

}  // namespace orvane
