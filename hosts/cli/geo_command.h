// orvane4 geo: converts lines of coordinates.
#pragma once

#include "hosts/cli/command.h"

namespace orvane {

void AddGeoCommand(CLI::App& app, Status& status);

}  // namespace orvane
