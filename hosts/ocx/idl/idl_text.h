// The automation surface in the interface language, from which the type library is compiled.
#pragma once

#include <string>

#include "control/automation/table.h"

namespace orvane {

/// The whole description of the library: enumerations, the dispatch interface, the event interface and the control. It says
/// everything with methods: a section of properties could not carry help lines in every compiler of the language.
std::string IdlText(const AutomationTable& surface);

}  // namespace orvane
