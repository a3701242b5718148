// Between Unicode, which hosts and back ends need, and the bytes of code page 932 that everything below them works on.
//
// Where one character has several byte forms (the code page took over two makers' extensions), the form that Windows gives is
// written: plain JIS first, then row 13, then the IBM extensions; the NEC selection of them is only read. A key that came from a
// Windows host is thus met again by its text. Six characters that the code page holds only in wide form take that form.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// The bytes of a UTF-8 text; nothing when a character has none, or when the text is not UTF-8.
std::optional<std::string> EncodeCp932(std::string_view utf8);
/// The text of some bytes; nothing when they do not decode, as after a cut through a character.
std::optional<std::string> DecodeCp932(std::string_view bytes);
/// The same for showing: what does not decode becomes U+FFFD, byte by byte.
std::string DecodeCp932Shown(std::string_view bytes);
/// The bytes of a UTF-8 text for showing: a character that has none, or is none, becomes the customary stand-in 〓.
std::string EncodeCp932Shown(std::string_view utf8);
/// Takes one character off the front of `bytes`; U+FFFD and one byte where it does not decode. REQUIRES: not empty.
char16_t TakeCp932(std::string_view& bytes);
/// The longest start of `bytes` that fits in `limit_bytes` and ends between two characters.
std::string_view CutCp932(std::string_view bytes, std::size_t limit_bytes);

}  // namespace orvane
