// The whole store and view as plain Python values, under the field names of the records.
#pragma once

#include <pybind11/pybind11.h>

#include "control/ctrl.h"

namespace orvane::python {

pybind11::dict Dump(COrvane4Ctrl& ctrl);

}  // namespace orvane::python
