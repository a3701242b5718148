// What the text form of an archive has no way to hold.
#pragma once

#include <string>

#include "store/cdigmem.h"

namespace orvane {

/// The first thing in the store that would not come back from text data as it is, or would shift what stands behind it, as a line
/// of UTF-8 that names its item; empty when there is none. It is no matter of precision: that is told by ArchiveLosses.
std::string WhatTextCannotHold(const CDigMem& store);

/// What of an item no text form of a map holds: numbers that are none, and line breaks and bytes 0 in its text and font, as words
/// to stand behind "has". Empty when there is none.
std::string WhatNoTextHolds(const DigDat& dat);

}  // namespace orvane
