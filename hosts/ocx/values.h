// Automation values of COM to the control's and back.
#pragma once

#include "hosts/ocx/com_base.h"
// com_base.h brings the system headers, which come first
#include "control/automation/call.h"

namespace orvane {

enum class Conversion {
    Done,
    NoValue,  ///< there is no such value in the control
    NoBytes,  ///< a text with a character that code page 932 does not have
    Missing,  ///< an optional argument that was left out
};

/// A value as the control knows it: references are followed, arrays are read with their bounds. An array of a type that no member
/// takes becomes one of shorts, which none takes either.
Conversion FromVariant(const VARIANT& value, Variant& out);
/// The same for an element of an array. No member takes arrays in arrays, so that one is no value: it might hold itself.
Conversion FromElement(const VARIANT& value, Variant& out);

/// A new value for a host; VT_EMPTY for the empty one. `scriptArrays` makes arrays of variants, the only ones whose elements
/// scripts read. False without memory. What `out` held before is not looked at.
bool ToVariant(const Variant& value, VARIANT& out, bool scriptArrays = false);

/// One argument behind all references of variants to variants; null where a reference is null or the chain is too long.
const VARIANT* Follow(const VARIANT& value);

/// Reads `count` values of a buffer in: behind a bare pointer, which is trusted, or out of an array, which may hold fewer.
Conversion ReadBuffer(const Arg& arg, const VARIANT& source, std::size_t count, Buffer& out);
/// Whether `count` values can be written where an argument points: DISP_E_TYPEMISMATCH for a place of a type that takes none of
/// them. S_OK too where nothing will be written, by value. An array of the member's own making replaces only an array of longs or
/// of variants that is neither locked nor fixed.
HRESULT CheckTarget(const Arg& arg, const VARIANT& target, std::size_t count);
/// Writes an output where the argument points: a typed place receives the value converted to its type, a variant a new value.
/// Values behind a bare pointer come to a variant as an array of variants, an array of the member's own making as it is; one
/// that takes the place of an array of variants is one too. An argument by value, and an output that was left untouched, change
/// nothing. DISP_E_OVERFLOW or DISP_E_TYPEMISMATCH, and the place is as it was, where the value is none of the place's type.
HRESULT WriteOutput(const Arg& arg, const Argument& output, const VARIANT& target);

}  // namespace orvane
