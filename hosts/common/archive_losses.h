// What an archive does not keep of a map.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/cdigmem.h"

namespace orvane {

/// One line of UTF-8 for each kind of thing in the store that does not come back from an archive of that form and version ("1.00"
/// or "1.10") as it is. Empty when all of it does. Layers of the codes in `leaveOut` do not count.
std::vector<std::string> ArchiveLosses(const CDigMem& store, bool text, std::string_view version,
                                       std::span<const std::string> leaveOut = {});

}  // namespace orvane
