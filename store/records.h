// The records of the map store. Fields and nothing else: what may be done with them stands in cdigmem.h.
//
// Three keys address everything: a layer by its `code`, a block by (`code`, `meshNo`), an item by (`code`, `meshNo`, `datID`).
// Records refer to each other by position or key, never by pointer, because every array here may move when it grows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "analysis/geometry/dig_pnt.h"
#include "platform/grow_array.h"
#include "platform/values.h"
#include "store/fixed_text.h"
#include "store/pnt_array.h"

namespace orvane {

inline constexpr std::int32_t kMaxLayers = 10000;
inline constexpr std::int32_t kMaxDigIndex = 100000;
inline constexpr std::int32_t kMaxCode = 50;
inline constexpr std::int32_t kFreeBlock = -2;
inline constexpr std::size_t kMaxSymbols = 1000;
inline constexpr std::size_t kMaxStrokes = 20000;  ///< of one symbol

enum LayerType : std::int32_t {
    kLayPoint = 1,
    kLayLine = 2,
    kLayPolygon = 3,
    kLayCircle = 4,
    kLayText = 5,
    kLayEllipse = 8,
    kLayMesh = 10,
};

/// The image settings that a layer and a sub layer have in common.
struct ImageLook {
    FixedText<511> imgfname;
    FixedText<511> imgactfname;
    std::int32_t bmWidth = 0;   ///< pixels
    std::int32_t bmHeight = 0;  ///< pixels
    double imgMinScl = 0;
    double imgMaxScl = 0;
};

/// A variant of a layer's look, chosen by DigDat::subLayNo.
struct SubLayDef : ImageLook {
    std::int32_t subLayNo = 0;
    FixedText<255> layerName;
    std::int32_t layType = 0;
    Rgb color = 0;
    Rgb color2 = 0;
    std::int32_t lineType = 0;
    std::int32_t lineSize = 0;
    std::int32_t pgnType = 0;
    std::int32_t pntType = 0;
    std::uint8_t dspFlg = 0;
    std::uint8_t outLine = 0;
    std::uint8_t fillMode = 0;
    std::uint8_t imgMode = 0;
    std::int32_t imgPos = 0;
};

class DatLookup;

/// What a layer's data looks like. An empty `code` marks an unused record; used records stand before the first unused one.
struct LayerDef : ImageLook {
    FixedText<kMaxCode> code;
    FixedText<256> layerName;
    std::int32_t layIndex = 0;  ///< display order key: the greatest is drawn first
    std::int32_t layType = 0;
    Rgb color = 0xFFFFFF;  ///< the value of unused records
    Rgb color2 = 0;
    std::int32_t lineType = 0;
    std::int32_t lineSize = 0;
    std::int32_t pgnType = 0;
    std::int32_t pntType = 0;
    std::uint8_t dspFlg = 0;
    std::uint8_t outLine = 0;  ///< 0 draws an outline, 1 does not
    std::uint8_t actFlg = 0;
    std::uint8_t spareFlg = 0;
    std::uint8_t editFlg = 0;
    std::uint8_t fillMode = 0;
    std::uint8_t imgMode = 0;
    std::int32_t imgPos = 0;
    std::int32_t subLayCnt = 0;
    std::int32_t subLayMax = 0;  ///< the capacity that is told; memory follows use
    GrowArray<SubLayDef> subLays;
    mutable std::unique_ptr<DatLookup> subLookup;  ///< a cache: finds sub layers once they are many; null until needed
};

/// One block's place in the drawing order.
struct DigIndex {
    std::int32_t block = -1;
    std::int32_t layer = -1;
    friend bool operator==(const DigIndex&, const DigIndex&) = default;
};

/// The text of an item.
struct DigStr {
    double x = 0;
    double y = 0;
    double z = 0;
    double orgX = 0;
    double orgY = 0;
    double orgZ = 0;
    std::string text;
    std::string fntname;
    std::int32_t size = 10;  ///< points
    std::int32_t style = 0;  ///< bit 0 bold, bit 1 italic, bit 2 halo
    std::uint8_t fill = 0;
    std::int32_t pos = 0;
    double angle = 0;  ///< degrees
    std::uint8_t uline = 0;
    std::uint8_t strike = 0;
    bool orgKept = false;  ///< the three org values are a copy that a frame change made
    Rgb fcolor = 0;
    Rgb bcolor = 0xFFFFFF;
};

/// Grid attributes of a mesh item, whose points stand row after row.
struct DigMeshAttr {
    std::int32_t hcnt = 0;
    std::int32_t vcnt = 0;
    std::int32_t arrayCnt = 0;            ///< entries of the two arrays; files may bring fewer or more than hcnt * vcnt
    OwnedArray<std::uint8_t> useFlag;     ///< arrayCnt
    OwnedArray<std::uint32_t> meshColor;  ///< arrayCnt
};

/// An item's integer bounds, local to its block; `top` is the smaller y. The starting value is turned inside out.
inline constexpr Rect kEmptyItemRect{99999999, 99999999, -99999999, -99999999};

/// One feature. `pnts` always holds at least `pntCnt` records.
///
/// What a walk over many items reads stands together in front.
struct DigDat {
    [[no_unique_address]] PntArray pnts;  ///< lends the room behind its mark to the flags below
    std::uint8_t clipFlg = 0;
    std::uint8_t drawnFlg = 0;
    std::uint8_t active = 0;
    std::int32_t datID = 0;
    std::int32_t lineTag = 0;
    std::int32_t subLayNo = 0;
    std::int32_t pntCnt = 0;
    Rect rect;  ///< not to be relied on, unless `pnts` says so
    Rect orgRect;
    bool orgKept = false;        ///< `orgRect` is a copy that a frame change made
    std::int32_t orgPntCnt = 0;  ///< records in `orgPnts`, which points added later do not raise
    OwnedArray<DigPnt> orgPnts;
    std::unique_ptr<DigMeshAttr> meshAttr;
    std::unique_ptr<DigStr> str;
};

/// The data of one layer in one mesh number. Coordinates and bounds are local: map = local + (GX, GY).
struct DigBlock {
    std::int32_t blkState = 0;  ///< kFreeBlock: a free slot
    std::string path;
    FixedText<kMaxCode> code;
    std::int32_t meshNo = 0;
    std::uint8_t blkFlg = 0;
    std::uint8_t inView = 0;
    bool orgKept = false;  ///< the six org values are a copy that a frame change made
    double GX = 0;
    double GY = 0;
    double minX = 0;
    double minY = 0;
    double maxX = 0;
    double maxY = 0;
    double orgGX = 0;
    double orgGY = 0;
    double orgMinX = 0;
    double orgMinY = 0;
    double orgMaxX = 0;
    double orgMaxY = 0;
    std::int32_t datCnt = 0;
    std::int32_t recCnt = 0;
    std::int32_t datMax = 0;  ///< the capacity that is told, in steps of 1000; 0 stands for no array. Memory follows use
    GrowArray<DigDat> dats;   ///< datCnt records
    mutable std::unique_ptr<DatLookup> datLookup;  ///< a cache: finds items by datID once a block is large; null until needed
};

/// A user point symbol, strokeCnt lines in the units of its design square; it comes from the symbol file.
struct SymbolDef {
    std::int32_t symNo = 0;
    std::int32_t strokeCnt = 0;
    OwnedArray<Point> strokeFrom;  ///< strokeCnt
    OwnedArray<Point> strokeTo;    ///< strokeCnt
};

/// An overlay figure: a shape of the host's that stands above the map and belongs to no layer. Coordinates are map coordinates,
/// y to the north.
struct OrgDat {
    std::int32_t ID = 0;  ///< may stand in several records: searches meet the first
    std::int32_t type = 0;
    std::uint8_t fill = 0;
    Rgb color = 0;
    std::int16_t line = 0;
    std::int32_t pntCnt = 0;
    std::uint8_t active = 0;
    GrowArray<DigPnt> pnts;  ///< pntCnt records, z 0
    double strX = 0;
    double strY = 0;
    double strZ = 0;
    std::string strText;  ///< empty: no string was set, for an empty one is never taken
    std::int32_t strSize = 0;
    std::int32_t strFill = 0;
    double strAngle = 0;
    Rgb strColor = 0;
};

/// A user line type; it comes from the line type file.
struct LineTypeDef {
    std::int32_t ltKind = 0;  ///< how the line is drawn: a pen, marks at its ends, or a pattern
    std::int32_t ltId = 0;    ///< what `lineType` refers to
    FixedText<51> ltName;
    std::int32_t ltCnt = 0;           ///< values in ltList; for waves the shape's number instead
    GrowArray<std::int32_t> ltList;   ///< lengths in pen units: dashes and gaps in turn, or a pitch, or a mark's size
    GrowArray<std::int32_t> ltList2;  ///< shape numbers
    std::int32_t ltLen = 0;           ///< of a tick, in pen units
    double ltAngle = 0;               ///< of a tick against the line's direction, in degrees
    std::int32_t ltDir = 0;           ///< 0 left of the direction of digitising, 1 both sides, 2 right, 3 in turn
    std::int32_t ltPos = 0;           ///< of a tick on its dash: 0 middle, 1 start, 2 end, 3 both; of end marks the same
    std::int32_t ltBase = 0;          ///< 1 draws the line itself under its ticks
};

}  // namespace orvane
