#include "render/masked_image.h"

#include <utility>

namespace orvane {

MaskedImage MakeMaskPair(DeviceContext& loaderDc, Bitmap& bitmap, std::int32_t width, std::int32_t height, Rgb bgColor) {
    using Layer = MaskedImage::Layer;
    const auto copy = [width, height](Layer& to, DeviceContext& from, Rop3 rop) {
        to.dc->BitBlt(0, 0, width, height, from, 0, 0, rop);
    };
    const auto select = [](Layer& layer, std::unique_ptr<Bitmap> made) {
        layer.bitmap = std::move(made);
        if (layer.bitmap != nullptr) layer.dc->SelectBitmap(layer.bitmap.get());
        return layer.bitmap != nullptr;
    };
    MaskedImage image;
    image.width_px_ = width;
    image.height_px_ = height;
    loaderDc.SelectBitmap(&bitmap);
    const Rgb oldColor = loaderDc.SetBkColor(bgColor);  // a blit into one bit a pixel parts this colour from all others
    Layer mono;
    mono.dc = loaderDc.CreateCompatibleDC();
    if (select(mono, loaderDc.CreateMonochromeBitmap(width, height))) {
        copy(mono, loaderDc, Rop3::SrcCopy);
        image.color_.dc = loaderDc.CreateCompatibleDC();
        if (select(image.color_, loaderDc.CreateCompatibleBitmap(width, height))) {
            copy(image.color_, *mono.dc, Rop3::NotSrcCopy);
            copy(image.color_, loaderDc, Rop3::SrcAnd);
            image.mask_.dc = loaderDc.CreateCompatibleDC();
            if (select(image.mask_, loaderDc.CreateCompatibleBitmap(width, height))) copy(image.mask_, *mono.dc, Rop3::SrcCopy);
        }
    }
    loaderDc.SetBkColor(oldColor);
    return image;
}

void BlitMasked(DeviceContext& dc, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                const MaskedImage& image) {
    const auto stretch = [&](const MaskedImage::Layer& layer, Rop3 rop) {
        layer.dc->SelectBitmap(layer.bitmap.get());
        dc.StretchBlt(x, y, width, height, *layer.dc, 0, 0, image.width_px_, image.height_px_, rop);
    };
    stretch(image.mask_, Rop3::SrcAnd);
    stretch(image.color_, Rop3::SrcPaint);
}

}  // namespace orvane
