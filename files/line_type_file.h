// The file of the user's line types.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/files.h"
#include "store/cdigmem.h"

namespace orvane {

/// Replaces the store's line type table by the records of a file, in its order, and gives their number. 0 when the file cannot be
/// opened, which leaves the table empty, when memory ran out, which leaves the records read by then, and, with nothing changed,
/// while the store is not initialised.
///
/// A line is a record, "KEY,id,name,...", unless it is empty or begins with "'". Lines end with LF or CR LF and at a 0 byte; of a
/// line longer than 2047 bytes every 2047 bytes are a line. Fields are separated by runs of commas, so that an empty field does
/// not exist. Numbers end where they end, whatever follows. A record with an unknown key, with another number of fields than its
/// key and its count ask for or with a negative count is left out.
std::int32_t ReadLineTypeData(CDigMem& store, Files& files, std::string_view fileName);

}  // namespace orvane
