#include "foreign/export_format.h"

#include <algorithm>
#include <array>

#include "platform/file_names.h"

namespace orvane {

namespace {

using std::string_view_literals::operator""sv;

constexpr std::array kGeoPackageExtensions = {".gpkg"sv};
constexpr std::array kGeoJsonExtensions = {".geojson"sv, ".json"sv};
constexpr std::array kShapefileExtensions = {".shp"sv};
constexpr std::array kShapefileSiblings = {".shx"sv, ".dbf"sv, ".prj"sv, ".cpg"sv, ".sbn"sv, ".sbx"sv, ".qix"sv, ".shp.xml"sv};
constexpr std::array kFlatGeobufExtensions = {".fgb"sv};

constexpr std::array<ExportFormatFacts, 4> kFormats = {{
    {ExportFormat::GeoPackage, "GeoPackage", "GPKG", kGeoPackageExtensions, {}, true, 0, false},
    {ExportFormat::GeoJson, "GeoJSON", "GeoJSON", kGeoJsonExtensions, {}, false, 0, true},
    {ExportFormat::Shapefile, "Shapefile", "ESRI Shapefile", kShapefileExtensions, kShapefileSiblings, false, 254, true},
    {ExportFormat::FlatGeobuf, "FlatGeobuf", "FlatGeobuf", kFlatGeobufExtensions, {}, false, 0, false},
}};

bool EndsWith(std::string_view name, std::string_view extension) {
    return name.size() > extension.size() && EqualAnyCase(name.substr(name.size() - extension.size()), extension);
}

}  // namespace

std::span<const ExportFormatFacts> ExportFormats() { return kFormats; }

const ExportFormatFacts& FactsOf(ExportFormat format) {
    return *std::find_if(kFormats.begin(), kFormats.end(), [format](const auto& facts) { return facts.format == format; });
}

std::optional<ExportFormat> ExportFormatByName(std::string_view name) {
    for (const ExportFormatFacts& facts : kFormats) {
        if (EqualAnyCase(name, facts.name) || EqualAnyCase(name, facts.driver)) return facts.format;
    }
    return std::nullopt;
}

std::optional<ExportFormat> ExportFormatByExtension(std::string_view fileName) {
    for (const ExportFormatFacts& facts : kFormats) {
        if (HasExtensionOf(facts.format, fileName)) return facts.format;
    }
    return std::nullopt;
}

bool HasExtensionOf(ExportFormat format, std::string_view fileName) {
    const auto extensions = FactsOf(format).extensions;
    return std::any_of(extensions.begin(), extensions.end(), [&](std::string_view ext) { return EndsWith(fileName, ext); });
}

}  // namespace orvane
