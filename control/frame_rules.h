// Small rules that the frame paths share.
#pragma once

#include <cstdint>

#include "platform/to_int.h"
#include "platform/values.h"
#include "store/view_params.h"

namespace orvane {

/// How far the area search reaches beyond the view on one side, for a view of that many map units: extents between 3000 and 8000
/// are halved, greater ones give 5000, and exactly 3000 and 8000 stay.
std::int32_t SearchMargin(std::int32_t extent);

/// The view in whole map units, y downward: left and top truncated, the size by the client area's pixels.
Rect ViewBox(const ViewParams& view, double viewX, double viewY, const Rect& client);

/// Pixels in a metre of a device `horzSize_mm` wide, in whole numbers; REQUIRES: horzSize_mm != 0.
inline std::int32_t PixelsPerMetre(std::int32_t horzRes_px, std::int32_t horzSize_mm) {
    return TruncToInt32(static_cast<double>(std::int64_t{horzRes_px} * 1000 / horzSize_mm));
}

}  // namespace orvane
