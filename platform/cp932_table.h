// The two-byte characters of code page 932 as they were published, a row for each lead byte that has any.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orvane {

/// Trail bytes of a row in order: 0x40 to 0x7E, 0x80 to 0xFC.
inline constexpr std::size_t kCp932RowLength = 188;
/// Stands in a row where the code page has no character.
inline constexpr char16_t kCp932Missing = 0xFFFD;

struct Cp932Row {
    std::uint8_t lead;
    char16_t chars[kCp932RowLength + 1];
};

extern const Cp932Row kCp932Rows[];
extern const std::size_t kCp932RowCnt;

}  // namespace orvane
