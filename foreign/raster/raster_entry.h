// The one function of the library that hosts load for raster images. All else of it stays inside.
#pragma once

#include <cstdint>

#include "raster/raster_server.h"

namespace orvane {

/// Told by the host, and refused where the library was built from other interfaces: it is raised with each change of RasterServer
/// or DeviceContext.
inline constexpr std::uint32_t kRasterEntryVersion = 2;
inline constexpr char kRasterEntryName[] = "orvane_make_raster_server";

/// A server that belongs to the caller, who deletes it; null for another version, or without memory.
using RasterEntry = RasterServer* (*)(std::uint32_t version);

}  // namespace orvane
