// The map written to a vector format of another system, through GDAL.
//
// Coordinates are map coordinates: x to the east, y to the north. Texts of this interface are UTF-8; what comes out of the store
// goes through ExportOptions::decode.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foreign/export_format.h"
#include "foreign/plane_system.h"
#include "store/cdigmem.h"

namespace orvane {

struct ExportOptions {
    /// A file, or a folder that takes one file for each layer. GeoPackage is always a file; for the other formats, which hold one
    /// layer in a file, a name with their extension is a file and any other name a folder.
    std::string path;
    /// None: by the extension of `path`.
    std::optional<ExportFormat> format;
    /// The plane rectangular system that the coordinates are in: both or neither. Without it the output names none.
    std::optional<Datum> datum;
    std::optional<int> zone;
    /// Codes of the layers to write, code page 932. Empty: all that hold items.
    std::vector<std::string> layers;
    /// Codes of layers that all the others are written without, and that are not told of: a map keeps records of layers that its
    /// operator has removed.
    std::vector<std::string> leaveOut;
    /// Takes the place of what stands under `path`; of a folder only when nothing but files of the format is in it.
    bool overwrite = false;
    /// Files whose place, or whose folder's, the output must not take, whatever else is allowed: those that the map was read
    /// from.
    std::vector<std::string> inputs;
    /// The text of code page 932 bytes. Empty: only ASCII is text.
    std::function<std::string(std::string_view bytes)> decode;
    /// Told how much is done, from 0 to 1, once in a while; false ends the export. It runs host code.
    std::function<bool(double fraction)> progress;
};

enum class ExportFault {
    None,
    BadOption,   ///< no format, half a coordinate system, no such zone or layer, several layers for one file, an archive's name
    Exists,      ///< something stands under the name, and may not be replaced
    Nothing,     ///< no layer with items
    NotWritten,  ///< GDAL or the system could not write
    Changed,     ///< the progress function changed the map
    NoRoom,      ///< memory
    Cancelled,
};

/// One layer as it was written.
struct ExportedLayer {
    std::string code;  ///< code page 932
    std::string name;  ///< in the output
    std::string file;
    std::int32_t layType = 0;
    std::int64_t featureCnt = 0;
};

/// What did not make it into the output.
struct ExportLeftOut {
    std::int64_t emptyLayers = 0;   ///< without an item, so not written; nothing is lost by them but their look
    std::int64_t tooFewPoints = 0;  ///< lines of one place, circles and ellipses without extent, items without points
    std::int64_t openPolygons = 0;  ///< polygons without a closed ring; the map does not show them either
    std::int64_t noText = 0;        ///< items of text layers without a text
    std::int64_t noGrid = 0;        ///< mesh items without a grid of two rows and columns
    std::int64_t notFinite = 0;     ///< items with a coordinate that is no place, on the map or in their block
    std::int64_t unknownType = 0;   ///< items of layers of no type that the map draws
    std::int64_t rings = 0;         ///< rings without area, of polygons that were written
    std::int64_t tails = 0;         ///< polygons written without the points behind their last closed ring
    std::int64_t cells = 0;         ///< mesh cells without area or place, of meshes that were written

    /// Everything that the map holds and the output does not: items, and cells of meshes.
    std::int64_t LostItems() const { return tooFewPoints + openPolygons + noText + noGrid + notFinite + unknownType + cells; }
};

struct ExportSummary {
    ExportFormat format = ExportFormat::GeoPackage;
    int epsg = 0;  ///< 0 without a coordinate system
    std::vector<ExportedLayer> layers;
    ExportLeftOut leftOut;
    std::vector<std::string> notes;  ///< what the operator should know, a sentence each
};

struct ExportResult {
    ExportFault fault = ExportFault::None;
    std::string error;  ///< one line, empty without a fault
    ExportSummary summary;
    bool Ok() const { return fault == ExportFault::None; }
};

/// Writes the map's layers, each as a layer of its own named by the layer's code, items in the order in which they are drawn.
///
/// Points, lines and texts stay what they are. Polygons get their holes by how their rings lie in each other; circles and
/// ellipses become polygons of 72 points that keep their radii as attributes, because only one of the formats knows curves; of a
/// mesh every used cell becomes a polygon as it is drawn, for its colour is that of a cell and not of a point, with the grid
/// point's height. Geometry has heights where an item of the layer has one. Hidden layers and items are written like the others.
///
/// Attributes: `code`, `meshNo`, `datID`, `lineTag`, `subLayNo`; `color` (and `color2`, that of outlines), the layer's or the
/// shown sub layer's, as "#RRGGBB", and a cell's own for meshes; `text`, `fcolor` and `bcolor` where the item has a text; and
/// what else the type has.
///
/// Everything is written under a temporary name in the folder of `path` and renamed at the end: with a fault, what stood under
/// `path` stands there still. What an export that was killed left in that folder is cleared away by the next. Memory does not
/// grow with the map but for one item at a time and what a format keeps as its index. REQUIRES: the store outlives the call.
ExportResult ExportVector(CDigMem& store, const ExportOptions& options);

}  // namespace orvane
