// The vector formats that the map is exported to, and what sets them apart.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orvane {

enum class ExportFormat { GeoPackage, GeoJson, Shapefile, FlatGeobuf };

struct ExportFormatFacts {
    ExportFormat format;
    const char* name;                              ///< as operators write it
    const char* driver;                            ///< GDAL's name of it
    std::span<const std::string_view> extensions;  ///< with the dot; the first is that of new files
    /// Extensions, in place of the file's own, of what may stand beside a file and belong to it.
    std::span<const std::string_view> siblings;
    bool manyLayers;            ///< one file holds them all
    std::size_t maxText_bytes;  ///< of an attribute, in UTF-8; 0 is without limit
    bool mixesParts;            ///< polygons of one part and of several may stand in one layer
};

std::span<const ExportFormatFacts> ExportFormats();
const ExportFormatFacts& FactsOf(ExportFormat format);
/// By name, in any case of its letters.
std::optional<ExportFormat> ExportFormatByName(std::string_view name);
/// By the extension of a file name, in any case.
std::optional<ExportFormat> ExportFormatByExtension(std::string_view fileName);
/// Whether the name ends in an extension of the format.
bool HasExtensionOf(ExportFormat format, std::string_view fileName);

}  // namespace orvane
