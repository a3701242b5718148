// Comparing, matching and joining file names as bytes, without regard to the case of the letters A to Z.
#pragma once

#include <filesystem>
#include <string_view>

namespace orvane {

/// What the system puts between a folder and a name in it.
inline constexpr char kPathSeparator = static_cast<char>(std::filesystem::path::preferred_separator);

/// Bytes of the character at the head of `name`: 1 to 4. A name that is UTF-8 as a whole is read so (`utf8`), any other as code
/// page 932, where the second byte of a character may look like a letter or like a sign of a pattern. 0 for an empty name.
std::size_t CharacterLength(std::string_view name, bool utf8);
bool IsUtf8(std::string_view name);

/// Two names that differ in nothing but the case of ASCII letters.
bool EqualAnyCase(std::string_view a, std::string_view b);
/// Whether `name` matches `pattern` as a whole: '*' stands for any characters, '?' for exactly one.
bool MatchAnyCase(std::string_view pattern, std::string_view name);
/// Whether the last character of `path` is kPathSeparator. A two-byte character whose second byte looks like one is none.
bool EndsInSeparator(std::string_view path);

}  // namespace orvane
