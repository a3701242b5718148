#include "platform/device_context.h"

namespace orvane {

std::unique_ptr<Bitmap> DeviceContext::CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels) {
    std::unique_ptr<Bitmap> made = pixels != nullptr ? CreateCompatibleBitmap(width_px, height_px) : nullptr;
    if (made == nullptr) return nullptr;
    const std::unique_ptr<DeviceContext> memory = CreateCompatibleDC();
    memory->SelectBitmap(made.get());
    for (std::int32_t y = 0; y < height_px; ++y, pixels += width_px) {
        for (std::int32_t x = 0, end = 0; x < width_px; x = end) {
            while (end < width_px && pixels[end] == pixels[x]) ++end;
            memory->FillRect({x, y, end, y + 1}, CreateSolidBrush(pixels[x]));
        }
    }
    memory->SelectBitmap(nullptr);
    return made;
}

}  // namespace orvane
