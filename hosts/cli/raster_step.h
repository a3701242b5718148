// Raster images under or over the map that a command draws.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/ctrl.h"
#include "hosts/cli/command.h"

namespace orvane {

struct RasterArgs {
    std::vector<std::string> files;
    // Of the first, second, ... image: as many of the one kind as of the other.
    std::vector<std::string> cp1;
    std::vector<std::string> cp2;
    bool over = false;
};

void AddRasterOptions(CLI::App& command, RasterArgs& args);

/// Of each image that was loaded, why it could not be drawn the last time; empty when it could.
using RasterFailures = std::vector<std::shared_ptr<std::string>>;

/// Loads the images into slots of the control, in order, the later over the earlier. Each has to lie somewhere, by its two
/// control points or by its own georeference; what is wrong is told.
Status LoadRasters(COrvane4Ctrl& ctrl, const RasterArgs& args, RasterFailures& failures);

/// Draws the map anew, where images were loaded, and tells of those that could not be drawn.
Status DrawWithRasters(COrvane4Ctrl& ctrl, const RasterArgs& args, const RasterFailures& failures);

}  // namespace orvane
