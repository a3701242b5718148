// Python values to automation values and back.
#pragma once

#include <pybind11/pybind11.h>

#include "control/automation/call.h"
#include "platform/variant.h"

namespace orvane::python {

namespace py = pybind11;

/// An array whose element type, lower bound or number of dimensions the caller forces. `values` is a sequence; a second dimension
/// takes a sequence of rows of equal length, and more dimensions have a length of 1.
struct ForcedArray {
    Variant array;
};
ForcedArray MakeForcedArray(const py::object& values, const std::string& type, int dims, int lower);

/// A text to the bytes of code page 932; bytes pass as they are. Raises ValueError for a character that has none.
std::string ToBytes(const py::handle& text);
/// The text of some bytes, or the bytes themselves when they do not decode.
py::object FromBytes(const std::string& bytes);

/// Any Python value to the automation value closest to it. Raises TypeError for a value that has none.
Variant ToVariant(const py::handle& value);
py::object FromVariant(const Variant& value);

/// The same for a value of a declared type: colours have 32 bits and no sign.
py::object FromResult(const ValueType& type, const Variant& value);

/// Fills the argument for a member's input. Raises TypeError or ValueError for a value that cannot be passed there.
void SetInput(const Arg& arg, const py::handle& value, Argument& out);
/// What an output holds after a call; None when it was left untouched.
py::object GetOutput(const Arg& arg, const Argument& out);

}  // namespace orvane::python
