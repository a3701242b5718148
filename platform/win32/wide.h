// Texts between code page 932 bytes, or UTF-8, and the system's UTF-16, by the project's own table.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// For showing: what does not decode becomes U+FFFD.
std::wstring WideShown(std::string_view cp932);
/// Nothing when it is not UTF-8.
std::optional<std::wstring> WideFromUtf8(std::string_view utf8);
/// Nothing when half of a surrogate pair stands alone.
std::optional<std::string> Utf8FromWide(std::wstring_view wide);

}  // namespace orvane
