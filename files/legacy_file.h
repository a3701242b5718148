// Map data of the time before the archive: a text file for each layer and sheet, its ending telling what it holds.
#pragma once

#include <functional>
#include <string_view>

#include "platform/files.h"
#include "platform/window.h"
#include "store/cdigmem.h"

namespace orvane {

/// Shows a message and waits, as Window::ShowMessage. It runs host code, which may change the store in any way, but must let it
/// stand. An empty one shows nothing.
using LegacyMessage = std::function<void(std::string_view text, std::string_view title, MessageIcon icon)>;

/// Title of the message about points that disagree with the header; any other one is about memory.
inline constexpr std::string_view kLegacyContradiction = "DATA FORMAT ERROR";

/// Hears how far a read of many files is and answers whether to go on; it may run host code, as a message.
using LegacyProgress = std::function<bool(double done)>;

/// Reads one file of points (a name that ends in "pnt", in any case), lines ("arc") or polygons ("pgn") into a new block at the
/// end of the blocks, and makes its layer where the code is new. The block gets its index entry without a sort; a block with the
/// same code and sheet stays beside it, and lookups meet the older one.
///
/// The file is bytes in lines that end in CR LF, with commas between fields; a byte 0x1A or 0x00 ends the data, and a line that
/// this cuts off is not there. Coordinates are local to the sheet, y to the north: a whole part, and a fraction of which seven
/// digits are read and which is added whatever the sign, so that "-1.5" is -0.5. A code keeps 50 bytes, the path 511.
///
/// Polygons are rings of lines that are in the store by then: those of the layer `arcCode` in the same sheet or, with an empty
/// code, those of all line layers that have the sheet. A line that is missing adds nothing to its ring. The polygons of one file
/// together hold at most 16 times the points of the lines that were looked at, or a million if that is more: what neighbours
/// share is there twice, and no map comes near this, while a short file could fill the memory by naming one long line again and
/// again.
///
/// An item of a line layer is a line of nine bytes or more and a record of about a hundred: without points a file takes up to
/// twelve times its size in memory, and twice that while the array grows.
///
/// False, with the store's blocks as they were, when the file does not open, is of no known kind, has no header or nothing behind
/// it, ends too early, asks for a negative count, for too many points or for a layer that is not there, before Init, with a full
/// index or layer table, and without memory. Points that disagree with the header, and points without memory, are told by a
/// message. It comes last, so that its host code finds nothing half done; without one the store is not changed from outside.
bool LegacyFileRead(CDigMem& store, Files& files, std::string_view filename, std::string_view arcCode,
                    const LegacyMessage& message);

/// Reads all files of a folder: lines, then polygons, then points, each by name; of `type` 1 only those whose names begin with
/// "k-", of 2 with "r-", of any other all. A file that fails is passed over. Then every layer that has a block of polygons from a
/// file, now or from before, goes to the bottom of the map (display key 9999), and the index is sorted. Names are joined by the
/// system's separator, which an empty path gets as well: it is the root.
///
/// `progress` is told after each file how many of all are read, 0 to 1; once it has answered false no further file is read, and
/// the answer is false. What was read by then stays, its polygons below and the index sorted.
///
/// False without a file of the three kinds, which sorts nothing, and as soon as the host has emptied the store from inside a
/// message or the progress.
bool LegacyDirRead(CDigMem& store, Files& files, std::string_view path, std::int32_t type, const LegacyMessage& message,
                   const LegacyProgress& progress = {});

/// Puts every layer that has a block of polygons from a file to the bottom of the map and sorts the index, as LegacyDirRead does
/// at its end.
void LegacyPolygonsBelow(CDigMem& store);

}  // namespace orvane
