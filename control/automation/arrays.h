// Arrays in, as the members that take `VARIANT*` read them.
//
// All arrays of one call must have one dimension. The first of them tells the rest: its bounds count for all, and its element
// type says how all are read. An array of variants is fetched by index and converted element by element; an array of the member's
// own plain type is walked from its first element, whatever its lower bound. Nothing else is taken, numbers of another type
// included.
//
// Every function gives false, with the outputs empty, when the arrays do not keep to that: no element, another type, an array
// that is shorter than the first or of another type than it, an element that does not convert, no memory.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "analysis/geometry/dig_pnt.h"
#include "platform/grow_array.h"
#include "platform/variant.h"

namespace orvane {

/// Coordinates, plain type R8.
bool ReadPoints(const Variant& x, const Variant& y, const Variant& z, GrowArray<DigPnt>& points) noexcept;

/// Two arrays of whole numbers, plain type I4.
bool ReadLongs(const Variant& first, const Variant& second, GrowArray<std::int32_t>& a, GrowArray<std::int32_t>& b) noexcept;

/// Use flags, plain type BOOL: 1 for true.
bool ReadFlags(const Variant& array, GrowArray<std::uint8_t>& flags) noexcept;

/// Colours, plain type R4: the four bytes of an element are the colour as they stand. Variants convert to whole numbers.
bool ReadColors(const Variant& array, GrowArray<std::uint32_t>& colors) noexcept;

/// All 32 bits of a colour or a handle: a number from -2^31 to 2^32 - 1, rounded as ToI4 rounds. False for any other.
bool ToBits(const Variant& value, std::uint32_t& bits);

/// Texts, plain type BSTR, each up to its first 0 byte. Unlike the others it takes an array without elements as well.
bool ReadTexts(const Variant& array, std::vector<std::string>& texts) noexcept;

}  // namespace orvane
