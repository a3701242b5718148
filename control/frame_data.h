// All data of a store, carried from the mesh frame into a plane zone and put back.
#pragma once

#include <cstdint>

#include "store/cdigmem.h"

namespace orvane {

/// Carries every block of the index from the mesh frame into a zone: origin, bounds, item rectangles, texts and points, each as
/// if it were a full position, values local to a block included. A copy of each value is kept beside it. What is not finite
/// stays, and so does an item whose copy there is no memory for. REQUIRES: a zone from 1 to 19.
void DataToPlane(CDigMem& store, std::int32_t zone);

/// Puts the copies of the last DataToPlane back, bit for bit. What has no copy, because it was made since, stays as it is.
void DataToMesh(CDigMem& store);

}  // namespace orvane
