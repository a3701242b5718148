// Paints the part of an image that some pixels show.
#pragma once

#include <string>

#include "foreign/raster/placement.h"
#include "foreign/raster/readable_image.h"
#include "platform/device_context.h"

namespace orvane {

/// The most pixels that one call paints.
inline constexpr double kMaxPaint_px = 1 << 28;

/// Paints what lies in `pixels`, and can show on the target, by blits of small pictures; a pixel shows the image where its centre
/// lies in it. A pixel smaller than the image's takes the nearest one, a larger one the mean of those that it covers; less than
/// half opaque, it leaves the target as it is. Where an image that is turned against the pixels is also made smaller, a pixel is
/// the mean of four places in it, each a mean along the image's own rows and columns. False when the image cannot be read, or not
/// within kMaxPaint_px and ReadableImage::kMaxCost_bytes; `reason`, where there is one, tells why, and nothing when it was the
/// image that failed.
bool PaintImage(DeviceContext& dc, ReadableImage& image, const Affine& imageOfPixels, const Rect& pixels,
                std::string* reason = nullptr);

}  // namespace orvane
