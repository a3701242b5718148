// The library that makes raster servers, loaded when the first image is asked for.
#pragma once

#include <string>
#include <vector>

#include "raster/raster_server.h"

namespace orvane {

/// Where the library is looked for, first to last: the file that the environment names in ORVANE_RASTER_SERVER, and no other
/// then; else beside this program or module, and in the folders "../lib" and "../lib/orvane4" from there.
std::vector<std::string> RasterLibraryNames();

/// Makes servers by that library; none where it is missing or does not fit. It is looked for anew until it was found, so that a
/// program goes on without it, and needs no start once it is there. What has made a server stays loaded.
RasterServerMaker RasterLibraryMaker();

/// Why the last try of this thread to make a server gave none: what is missing or does not fit, with the places that were tried.
const std::string& RasterLibraryLack();

/// Why the last load or draw of this thread that failed did so, in some words.
std::string RasterLibraryFailure();

}  // namespace orvane
