// The raster server of Windows: an automation object of the class "OV4Raster.OV4Rast", called by its dispatch identifiers.
#pragma once

#include <memory>

#include "raster/raster_server.h"

namespace orvane {

inline constexpr wchar_t kRasterProgId[] = L"OV4Raster.OV4Rast";

/// A new server object; null where the class is not registered or cannot be made.
std::unique_ptr<RasterServer> MakeRasterObject();

}  // namespace orvane
