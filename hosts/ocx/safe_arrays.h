// Safe arrays of COM to the control's and back.
#pragma once

#include "hosts/ocx/values.h"
#include "platform/variant_array.h"

namespace orvane {

/// Reads the array of a variant whose type has VT_ARRAY, by value or by reference.
Conversion ReadArray(const VARIANT& value, Variant& out);
/// A new array of the same bounds; of variants when `asVariants`. False, with `out` empty, without memory.
bool MakeSafeArray(const SafeArray& array, bool asVariants, VARIANT& out);
/// Whether a host's array behind a reference takes `count` values of a kind: DISP_E_BADINDEX when it is too short.
HRESULT CheckArrayTarget(ValueKind kind, const VARIANT& target, std::size_t count);
/// Whether another array may take the place of the one that a variant holds or refers to: DISP_E_ARRAYISLOCKED while somebody
/// looks at its elements, or where its memory is fixed. S_OK for a value that is no array.
HRESULT CheckReplaceable(const VARIANT& held);
/// Writes the first `count` values into the host's array, never beyond its bounds.
void WriteArrayElements(const Buffer& buffer, std::size_t count, const VARIANT& target);
/// The first `count` values of a buffer as an array from 0.
Variant ArrayOf(const Buffer& buffer, std::size_t count);

}  // namespace orvane
