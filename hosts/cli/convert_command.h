// orvane4 convert: writes an archive in another form or version.
#pragma once

#include "hosts/cli/command.h"

namespace orvane {

void AddConvertCommand(CLI::App& app, Status& status);

}  // namespace orvane
