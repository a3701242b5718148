// Texts between COM, which speaks UTF-16, and the control, whose texts are bytes in code page 932. The tables are the project's
// own, so that the code page of the process plays no part.
#pragma once

#include <windows.h>
// windows.h comes first
#include <oleauto.h>

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The bytes of a text; nothing when a character has none, or half of a surrogate pair stands alone.
std::optional<std::string> FromWide(std::wstring_view text);
/// The text of some bytes; what does not decode becomes U+FFFD.
std::wstring ToWide(std::string_view bytes);
/// The same as a new BSTR, which is the caller's; null without memory.
BSTR ToBstr(std::string_view bytes);
BSTR NewBstr(std::wstring_view text);
/// The characters of a BSTR; a null one is the empty text.
std::wstring_view View(BSTR text);
/// ASCII only: names and identities.
std::wstring WideAscii(std::string_view text);

}  // namespace orvane
