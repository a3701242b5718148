// Saving the store as an archive, and reading archives into it.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "store/cdigmem.h"

namespace orvane {

/// Told between records how much of the data file is done, from 0 to 1, once in a thousand of them; false cancels. It may call
/// anything: a save ends with false when the blocks are no longer those it began with, a read when the store was emptied.
using ArcProgress = std::function<bool(double done)>;

/// What of an archive is read. An area (X1, Y1) to (X2, Y2) is in map units local to each block, corners in any order; equal
/// corners are no area. Without area and codes everything is read; else only blocks with one of the codes, byte for byte, so that
/// an area without codes selects nothing.
struct ArcFilter {
    double X1 = 0;
    double Y1 = 0;
    double X2 = 0;
    double Y2 = 0;
    std::span<const std::string> codes;

    bool HasArea() const { return !(X1 == X2 && Y1 == Y2); }
};

/// Reads the archive of a data file, named with ".Ovb" or ".Ovt" in any case, into the store, beside what is there: layers that
/// exist stay as they are, items go behind those of their block.
///
/// A text archive is read whole whatever the filter, and only beside an index file of its version. In an area read an item
/// counts by its own extent where that is a point, by its block's otherwise. Where layers or index cannot be read for a
/// filtered read, all data is read. Nothing is sorted.
///
/// True when at least one item was read, and also when the index lists no item. False for another name, for siblings that do not
/// agree on a version, for a full index or layer table, when cancelled, and before Init; what was read until then stays.
bool ArcRead(CDigMem& store, Files& files, std::string_view filename, const ArcFilter& filter = {},
             const ArcProgress& progress = {});

/// Saves the store as an archive: as text for a name that ends in ".Ovt", in any case, else binary; the name is the siblings'
/// base once a ".Ovb" or ".Ovt" is taken off. `version` is "1.00", "1.10" or empty for the latter. A failure midway leaves the
/// siblings written until then.
///
/// False when something could not be written, for an empty store, another version, or more binary data than 2^31 - 1 bytes; the
/// last two write nothing. False also, with everything written, when no block has a path.
bool ArcWrite(CDigMem& store, Files& files, std::string_view filename, std::string_view version,
              const ArcProgress& progress = {});

/// The version of the archive with that base name, "1.00" or "1.10", or an empty text where data file, index, layer file and, if
/// there is one, manage file do not agree on it.
std::string_view ArcGetVersion(Files& files, std::string_view base, bool text);
/// The version that the data file alone tells, or an empty text.
std::string_view ArcGetDataVersion(Files& files, std::string_view base, bool text);

/// The name of an archive, taken apart.
struct ArcName {
    std::string_view base;  ///< the name without its data file's extension
    bool text = false;
    bool hasExtension = false;
};
/// Takes the extension of a data file off, whatever its case.
ArcName ResolveArcName(std::string_view filename);

}  // namespace orvane
