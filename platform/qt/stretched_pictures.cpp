#include "platform/qt/stretched_pictures.h"

#include <cstdlib>

namespace orvane {

namespace {

constexpr std::int64_t kLargest_pixels = std::int64_t{1} << 18;
constexpr BitRule kCopy = 12;

bool IsInside(const AxisRun& run, std::int64_t size) {
    const std::int64_t other = run.from + run.length;
    return run.from >= 0 && run.from <= size && other >= 0 && other <= size;
}

}  // namespace

const QImage* StretchedPictures::Get(const QImage& image, const PixelSurface& pixels, const StretchRuns& runs,
                                     Stretcher& stretcher) {
    const std::int64_t width = std::abs(runs.x.length);
    const std::int64_t height = std::abs(runs.y.length);
    if (width == 0 || height == 0 || width > kLargest_pixels / height) return nullptr;
    if (!IsInside(runs.sourceX, pixels.width_px) || !IsInside(runs.sourceY, pixels.height_px)) return nullptr;
    const std::array<std::int64_t, 6> sizes{runs.x.length,       runs.y.length,     runs.sourceX.from,
                                            runs.sourceX.length, runs.sourceY.from, runs.sourceY.length};
    for (const Kept& kept : kept_) {
        if (kept.source == image.cacheKey() && kept.sizes == sizes && !kept.picture.isNull()) return &kept.picture;
    }
    Kept& kept = kept_[oldest_];
    oldest_ = (oldest_ + 1) % kept_.size();
    kept = {image.cacheKey(), sizes, QImage(static_cast<int>(width), static_cast<int>(height), QImage::Format_RGB32)};
    if (kept.picture.isNull()) return nullptr;
    const PixelSurface to{reinterpret_cast<Pixel*>(kept.picture.bits()), kept.picture.bytesPerLine() / 4,
                          static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)};
    const AxisRun across{runs.x.length < 0 ? width : 0, runs.x.length};
    const AxisRun down{runs.y.length < 0 ? height : 0, runs.y.length};
    stretcher.Stretch(pixels, to, {{to.Bounds()}, to.Bounds()}, {across, down, runs.sourceX, runs.sourceY}, kCopy);
    return &kept.picture;
}

}  // namespace orvane
