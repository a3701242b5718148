// The way back from pixels to the map that polygons are tested by.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "analysis/geometry/dig_pnt.h"
#include "platform/values.h"
#include "select/pick.h"
#include "store/view_params.h"

namespace orvane {

/// The exact map point of a pixel as the drawn data knows it, turn and stretch undone; y in the flipped sense, downward.
DigPnt FlippedWorldPoint(const ViewParams& view, const PickPlace& place, Point at);
/// PntInPgn, but nothing without memory for it.
std::optional<bool> InPolygonIfMemory(const DigPnt& p, std::span<const DigPnt> pts) noexcept;

}  // namespace orvane
