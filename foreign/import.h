// Vector data of any format that GDAL reads, taken into layers of the store in metres of one plane rectangular zone.
//
// Map x is the easting and map y the northing, so that north is up on the screen. Texts of this interface are UTF-8; what enters
// the store goes through ImportOptions::encode.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "foreign/plane_system.h"
#include "store/cdigmem.h"

namespace orvane {

enum class ImportFrame {
    Plane,  ///< metres of a plane rectangular zone
    Mesh,   ///< the mesh frame: 10000 units across a sheet, one block for each sheet with the sheet's number as grpNo
};

struct ImportOptions {
    ImportFrame frame = ImportFrame::Plane;
    /// For the mesh frame, whose sheets belong to the datum Tokyo: shift onto it. False takes latitudes and longitudes as they
    /// are.
    bool shiftToTokyo = true;
    /// The plane rectangular zone, 1 to 19. None: the zone of a source that is in one, else the one whose origin is nearest to
    /// the middle of all data, where that lies in Japan.
    std::optional<int> zone;
    /// The datum of the plane system. None: as ImportVector tells.
    std::optional<Datum> datum;
    /// EPSG code of the coordinate system of sources that name none.
    std::optional<int> assumeEpsg;
    /// An attribute: one layer for each of its values. Empty: one for each source layer. In both cases one for each type of
    /// geometry.
    std::string byField;
    std::int32_t grpNo = 1;  ///< of plane data
    /// Codes whose layers have no data and may be used anew, with the look of an imported layer: a map keeps the records of
    /// layers that its operator has removed.
    std::vector<std::string> freeCodes;
    /// The bytes of one UTF-8 character in code page 932, or nothing. Empty: only ASCII has bytes.
    std::function<std::optional<std::string>(std::string_view utf8)> encode;
    /// Called once, when everything is read and before the first layer is made: a host that shows one map at a time empties it
    /// here.
    std::function<void()> beforeStoring;
    /// Told how much is done, from 0 to 1, after each feature and each stored item; false ends the import. It runs host code.
    std::function<bool(double fraction)> progress;
};

enum class ImportFault {
    None,
    BadOption,           ///< no such zone, no such EPSG code
    Missing,             ///< no such file
    Unreadable,          ///< not a vector source, or an error while reading
    NoCoordinateSystem,  ///< or one that is not tied to the earth, or no zone can be chosen
    NoSuchField,
    Nothing,  ///< no geometry that could be stored
    NoRoom,   ///< the layer table, the block index or the memory is full
    Cancelled,
    Shared,  ///< told by hosts whose readers do not mix data: the map has a block of the same layer and number
};

/// One layer as it was stored.
struct ImportedLayer {
    std::string code;  ///< code page 932
    std::string name;  ///< where the code came from, whole
    std::int32_t layType = 0;
    std::int64_t itemCnt = 0;
    std::int64_t pntCnt = 0;
};

/// What did not make it into the store.
struct LeftOut {
    std::int64_t noGeometry = 0;    ///< features without any; nothing is lost by them
    std::int64_t tooFewPoints = 0;  ///< lines of one place, polygons without area
    std::int64_t notFinite = 0;     ///< shapes with a coordinate that does not lie in the plane of the zone
    std::int64_t unknownType = 0;   ///< geometries of no kind that the store has, or broken ones
    std::int64_t rings = 0;         ///< holes and parts without area of polygons that were stored

    std::int64_t LostShapes() const { return tooFewPoints + notFinite + unknownType; }
};

struct ImportSummary {
    int zone = 0;
    int epsg = 0;
    std::string system;         ///< its name
    std::int64_t sheetCnt = 0;  ///< in the mesh frame; 0 in a plane zone
    std::vector<ImportedLayer> layers;
    LeftOut leftOut;
    std::int64_t featureCnt = 0;
    std::vector<std::string> descriptions;  ///< what the sources say of themselves; credits stand there
    std::vector<std::string> notes;         ///< what the operator should know, a sentence each
};

struct ImportResult {
    ImportFault fault = ImportFault::None;
    std::string error;  ///< one line, empty without a fault
    ImportSummary summary;
    bool Ok() const { return fault == ImportFault::None; }
};

/// Reads the sources (file names, or anything else that GDAL opens) into new blocks of `store`, with origin (0, 0) and IDs
/// from 1.
///
/// Each part of a line and each point is an item; a polygon with its holes and further parts is one item. Collections are taken
/// apart, curves become lines. In the mesh frame an item stands whole in the block of the sheet that the middle of its bounds
/// lies in. In the plane all sources go into one system: that of the first source's own datum (JGD2011, JGD2000 or
/// Tokyo), JGD2011 where it has another, unless the options name one. Everything is read before anything is stored: an import
/// with a fault leaves no data behind. REQUIRES: an initialised store, which stays the progress function's to use but must
/// outlive the call.
ImportResult ImportVector(CDigMem& store, std::span<const std::string> sources, const ImportOptions& options);

}  // namespace orvane
