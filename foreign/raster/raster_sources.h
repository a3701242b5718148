// Where the pixels of an image may come from.
#pragma once

#include <cstdint>

namespace orvane {

enum class RasterSources : std::uint8_t {
    LocalFiles,  ///< plain files and folders of the disk, and what these are composed of
    Any,         ///< whatever GDAL knows, also in the network
};

/// As the environment tells it at this moment: ORVANE_RASTER_SOURCES=any, else local files.
RasterSources AllowedSources();

/// The most seconds that a load or a draw may take: ORVANE_RASTER_SECONDS, from 1 to a day; 60 without it, or where it is no such
/// number.
int RasterLimit_s();

}  // namespace orvane
