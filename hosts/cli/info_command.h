// orvane4 info: tells what an archive holds.
#pragma once

#include "hosts/cli/command.h"

namespace orvane {

void AddInfoCommand(CLI::App& app, Status& status);

}  // namespace orvane
