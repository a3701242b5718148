// What an exchange text does not keep of a map, and what it has no way to hold.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/cdigmem.h"

namespace orvane {

/// One line of UTF-8 for each kind of thing in the store that does not come back from an exchange text of that version ("1.00" or
/// "1.01") as it is. Empty when all of it does.
std::vector<std::string> ExchangeLosses(CDigMem& store, std::string_view version);

/// The first thing in the store that would shift the fields of an exchange text of that version or end its read, so that what
/// stands behind it would not come back: a line of UTF-8 that names its layer, and the feature where it is one. Empty when there
/// is none.
std::string WhatExchangeCannotHold(CDigMem& store, std::string_view version);

}  // namespace orvane
