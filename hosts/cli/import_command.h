// orvane4 import: takes vector sources into the map.
#pragma once

#include "hosts/cli/command.h"

namespace orvane {

void AddImportCommand(CLI::App& app, Status& status);

}  // namespace orvane
