// Values as words of a line: how the bridge and the Python that drives it write them.
//
//     n            nothing                    b0 b1        a truth
//     i-12         a whole number             d<16 hex>    a double by its bits
//     s<4 hex...>  a text in UTF-16 units     a TYPE LOWER COUNT value...   an array of one dimension; TYPE is a VARTYPE
#pragma once

#include <sstream>
#include <string>

#include "tests/ocx/client.h"

namespace orvane::test {

/// The next value of a line; the empty one where the line is at its end or makes no sense.
Value ReadValue(std::istringstream& words);
/// Appends a value behind a space.
void WriteValue(const VARIANT& value, std::string& line);
std::wstring ReadText(const std::string& hex);
void WriteText(std::wstring_view text, std::string& line);

}  // namespace orvane::test
