// What becomes of an image that the control draws: the control passes over a draw that failed, as one bad image must not stop a
// map, so a host that wants to tell of it listens to the server.
#pragma once

#include <functional>
#include <memory>

#include "raster/raster_server.h"

namespace orvane {

/// They are called from within a draw or a load and must not throw or call the control; either may be empty.
struct RasterWatch {
    std::function<void(bool drawn)> drawn;    ///< after each draw
    std::function<void(bool placed)> placed;  ///< after each load that succeeded and each placement: whether it lies somewhere
};

/// A server that passes everything on to `server`, which must not be null, and tells of it.
std::unique_ptr<RasterServer> WatchRaster(std::unique_ptr<RasterServer> server, RasterWatch watch);

}  // namespace orvane
