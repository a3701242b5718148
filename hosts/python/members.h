// The Python class's members, made from the automation table.
#pragma once

#include <pybind11/pybind11.h>

#include "hosts/python/rig.h"

namespace orvane::python {

/// Gives the class a method for each method of the table and an attribute for each property.
void BindMembers(py::class_<Rig>& cls);
/// Makes the enumerations as IntEnum classes of the module.
void BindEnums(py::module_& module);
/// The table as a list of dicts.
py::list MemberList();

}  // namespace orvane::python
