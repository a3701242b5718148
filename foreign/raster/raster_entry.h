// The functions of the library that hosts load for raster images. All else of it stays inside.
#pragma once

#include <cstdint>

#include "raster/raster_server.h"

namespace orvane {

/// Told by the host, and refused where the library was built from other interfaces: it is raised with each change of RasterServer
/// or DeviceContext.
inline constexpr std::uint32_t kRasterEntryVersion = 2;
inline constexpr char kRasterEntryName[] = "orvane_make_raster_server";
inline constexpr char kRasterFailureName[] = "orvane_raster_failure";
inline constexpr char kMissingReaderName[] = "orvane_missing_raster_reader";

/// Why the last load or draw of this thread that failed did so, until the next one does; never null.
using RasterFailure = const char* (*)();

/// The program that reads images, named by the place where it is missing or cannot be run; nothing when it is there. Until this
/// thread's next call, never null.
using MissingRasterReader = const char* (*)();

/// A server that belongs to the caller, who deletes it; null for another version, without the program that reads images, or
/// without memory.
using RasterEntry = RasterServer* (*)(std::uint32_t version);

}  // namespace orvane
