// orvane4 export: writes an archive's map to a vector format of other systems.
#pragma once

#include "hosts/cli/command.h"

namespace orvane {

void AddExportCommand(CLI::App& app, Status& status);

}  // namespace orvane
