// How far the data of a store reaches.
#pragma once

#include <optional>

namespace orvane {

class CDigMem;

/// Map units, y upward.
struct MapExtent {
    double left = 0, right = 0, low = 0, high = 0;
};

/// Extent of all blocks of the index that have an item and a layer, shown or not; nothing when there is none.
std::optional<MapExtent> DataExtent(CDigMem& store);

}  // namespace orvane
