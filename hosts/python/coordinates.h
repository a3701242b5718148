// The module's functions over arrays of coordinates.
#pragma once

#include <pybind11/pybind11.h>

namespace orvane::python {

/// Adds geo_to_plane and its kin. They take anything that makes an array of numbers, and need NumPy only when they are called.
void BindCoordinates(pybind11::module_& module);

}  // namespace orvane::python
