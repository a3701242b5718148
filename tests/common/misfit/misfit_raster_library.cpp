// A library of raster servers that fits no host.
#include "foreign/raster/raster_entry.h"

extern "C" __attribute__((visibility("default"))) orvane::RasterServer* orvane_make_raster_server(std::uint32_t) {
    return nullptr;
}
