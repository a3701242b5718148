// orvane4 check: tells what is wrong with an archive.
#pragma once

#include "hosts/cli/command.h"

namespace orvane {

void AddCheckCommand(CLI::App& app, Status& status);

}  // namespace orvane
