// Where the pixels of an image may come from.
#pragma once

#include <cstdint>
#include <string>

class GDALDataset;

namespace orvane {

enum class RasterSources : std::uint8_t {
    OwnFiles,  ///< a plain file or a folder whose format keeps the pixels in itself
    Any,       ///< whatever GDAL knows
};

/// As the environment tells it at this moment: ORVANE_RASTER_SOURCES=any, else own files.
RasterSources AllowedSources();

/// An image by the system's name, for Any also by one that GDAL may know. Null when it cannot be opened.
GDALDataset* OpenRaster(const std::string& name, RasterSources sources);

/// Whether all that is drawn of an opened image - its bands, their overviews and masks, and those of these - comes from allowed
/// drivers and is stored in blocks of at most `maxBlock_bytes`, all bands of a block taken together. To be asked before anything
/// is read, because finding overviews opens what the image names.
bool ComesFromAllowedSources(GDALDataset& dataset, RasterSources sources, double maxBlock_bytes);

}  // namespace orvane
