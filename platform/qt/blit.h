// Copies of pixels between surfaces.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/qt/span_painter.h"
#include "platform/values.h"

namespace orvane {

/// Combines `count` pixels in a row, one by one from the left, by `rule`.
void BlitRow(const Pixel* from, Pixel* to, std::int32_t count, BitRule rule);

/// Combines each pixel of `target` that lies in `to`'s clip with the pixel `shift` away in `from`, by `rule`. What has its source
/// outside `from` stays. The surfaces may be the same pixels: every source pixel is read before any is written. `scratch` is kept
/// by the caller so that its memory is used again.
void BlitPixels(const PixelSurface& from, const PixelSurface& to, const ClipArea& clip, const Box& target, std::int64_t shiftX,
                std::int64_t shiftY, BitRule rule, std::vector<Pixel>& scratch);

}  // namespace orvane
