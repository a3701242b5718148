// The file of the user's point symbols.
#pragma once

#include <string_view>

#include "platform/files.h"
#include "store/cdigmem.h"

namespace orvane {

/// Replaces the store's symbol table by the content of a file: one stroke a line, as "number,x1,y1,x2,y2" in whole numbers of the
/// symbol's design square; strokes of one symbol stand on consecutive lines. The data ends at a byte 0x1A or 0x00 or with the
/// file.
///
/// A symbol is closed by a following line of another number, so that the last one of the file is never taken. Empty fields do not
/// count; a line of fewer than five is passed over and closes nothing; what stands behind the fifth field is ignored. A symbol
/// keeps its first kMaxStrokes strokes, the table the first kMaxSymbols symbols. Without memory the table keeps what it holds by
/// then. A file that cannot be opened leaves the table empty. Nothing happens while the store is not initialised.
void ReadSymbolData(CDigMem& store, Files& files, std::string_view fileName);

}  // namespace orvane
