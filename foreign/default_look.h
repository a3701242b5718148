// How imported layers look until the host says otherwise: calm colours, one after the other.
#pragma once

#include <string_view>

#include "store/cdigmem.h"

namespace orvane {

/// Display order key of an imported layer: points are drawn over lines and lines over polygons, later layers over earlier ones.
/// `pos` is the layer's position in the layer table.
std::int32_t DefaultLayIndex(std::int32_t layType, std::int32_t pos);

/// Gives a layer its colours; `nth` counts the imported layers from 0.
void SetDefaultLook(CDigMem& store, std::string_view code, std::int32_t layType, std::size_t nth);

}  // namespace orvane
