// Columns of text for a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// Columns that a text of UTF-8 takes: wide characters take two.
std::size_t Columns(std::string_view utf8);
/// The text with blanks behind it, or before it, up to so many columns.
std::string PadRight(const std::string& text, std::size_t columns);
std::string PadLeft(const std::string& text, std::size_t columns);

}  // namespace orvane
