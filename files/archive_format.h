// The archive: the whole store as a set of files beside each other, with one base name. This is what stands in them.
//
//   .Ovl  every layer definition                          .Ovi  index of the binary data: a record a block and one an item
//   .Ovb  every item, binary   or   .Ovt  as text         .Ovm  path and origin of the blocks that have a path
//
// Binary files are packed records, integers and doubles little-endian, behind a header of kHeaderSize bytes: title, version in 4
// characters, zeros. A text field is as long as told with at least one 0 byte at its end, in the bytes of code page 932.
//
// .Ovl      records of 1388 (1.00) or 1412 bytes (1.10) to the end of the file:
//           code[51] layerName[256] layIndex layType color, in 1.10 color2, lineType lineSize pgnType pntType (i32 each), dspFlg
//           outLine spareFlg fillMode imgMode (u8 each), in 1.10 imgPos (i32), imgfname[512] imgactfname[512] bmWidth bmHeight
//           (i32) imgMinScl imgMaxScl (double), in 1.10 16 bytes of 0
// .Ovi      nBlocks nItems (i32), nBlocks x { code[51] minX minY maxX maxY (double) count first (i32) },
//           nItems x { left top right bottom, offset of the item's record in the .Ovb (i32) }
// .Ovm      records to the end of the file: code[51] meshNo (i32) path[512] GX GY (double)
// .Ovb      an item after the other to the end of the file, each a head with its optional parts:
//           code[51] meshNo datID left top right bottom pntCnt (i32) lineTag (i8), in 1.10 mesh flag (u8), string flag (u8), in
//           1.10 4 bytes of 0
//           pntCnt x { x y z (double) }
//           in 1.10, where the mesh flag is set: hcnt vcnt (i32), a byte 0, pntCnt x useFlag (u8), pntCnt x meshColor (u32)
//           where the string flag is set: x y z (double) fntname[65] size style (i8) fill (u8) pos (i8) uline strike (u8) angle
//           (double) fcolor bcolor (u32) textLen (i32), textLen bytes of text
// .Ovt      the same in lines that end in CR LF; see archive_text_write.cpp
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/grow_array.h"
#include "platform/values.h"
#include "store/records.h"

namespace orvane {

enum class ArcVersion : std::uint8_t { V100, V110 };

constexpr std::string_view VersionText(ArcVersion version) { return version == ArcVersion::V100 ? "1.00" : "1.10"; }

inline constexpr std::size_t kHeaderSize = 40;
inline constexpr std::size_t kVersionSize = 4;

inline constexpr std::string_view kManageTitle = "Orva Data Manage Version ";
inline constexpr std::string_view kIndexTitle = "Orva Data Index Version ";
inline constexpr std::string_view kLayerTitle = "Orva Layer Data Binary Version ";
inline constexpr std::string_view kBinTitle = "Orva Data Binary Version ";
inline constexpr std::string_view kTextTitle = "Orva Data Text Version ";

// What a file's name adds to the base name.
inline constexpr std::string_view kLayerExt = ".Ovl";
inline constexpr std::string_view kBinExt = ".Ovb";
inline constexpr std::string_view kTextExt = ".Ovt";
inline constexpr std::string_view kIndexExt = ".Ovi";
inline constexpr std::string_view kManageExt = ".Ovm";

// Sizes in bytes of packed records and of text fields in them.
constexpr std::size_t LayerRecSize(ArcVersion version) { return version == ArcVersion::V100 ? 1388 : 1412; }
constexpr std::size_t DatRecSize(ArcVersion version) { return version == ArcVersion::V100 ? 81 : 86; }
inline constexpr std::size_t kIdxBlockRecSize = 91;
inline constexpr std::size_t kIdxItemRecSize = 20;
inline constexpr std::size_t kIdxTablesAt = kHeaderSize + 8;
inline constexpr std::size_t kManageRecSize = 583;
inline constexpr std::size_t kPntSize = 24;
inline constexpr std::size_t kMeshRecSize = 9;
inline constexpr std::size_t kStrRecSize = 115;
inline constexpr std::size_t kCodeField = 51;
inline constexpr std::size_t kFontField = 65;
inline constexpr std::size_t kPathField = 512;
inline constexpr std::size_t kLayerNameField = 256;

/// The head of an item's record.
struct DatRec {
    FixedText<kMaxCode> code;
    std::int32_t meshNo = 0;
    std::int32_t datID = 0;
    Rect rect;
    std::int32_t pntCnt = 0;
    std::int8_t lineTag = 0;  ///< the low byte is all that an archive keeps of it
    bool hasMesh = false;
    bool hasStr = false;
};

struct IdxBlockRec {
    FixedText<kMaxCode> code;
    double minX = 0;
    double minY = 0;
    double maxX = 0;
    double maxY = 0;
    std::int32_t count = 0;  ///< items of the block
    std::int32_t first = 0;  ///< number of the first of them
};

struct IdxItemRec {
    Rect rect;
    std::int32_t offset = 0;  ///< of the item's record in the data file
};

/// The index as a save gathers it.
struct IdxTables {
    std::int32_t nBlocks = 0;
    std::int32_t nItems = 0;
    GrowArray<IdxBlockRec> blocks;
    GrowArray<IdxItemRec> items;
    bool failed = false;  ///< there was no memory for some record: no index is written then
};

}  // namespace orvane
