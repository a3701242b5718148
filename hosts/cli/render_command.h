// orvane4 render: draws a map into a picture.
#pragma once

#include "hosts/cli/command.h"

namespace orvane {

void AddRenderCommand(CLI::App& app, Status& status);

}  // namespace orvane
