#include "foreign/raster/raster_entry.h"

#include <new>
#include <type_traits>

#include "foreign/raster/gdal_raster_server.h"

extern "C" __attribute__((visibility("default"))) orvane::RasterServer* orvane_make_raster_server(std::uint32_t version) {
    if (version != orvane::kRasterEntryVersion || !orvane::HasRasterReader()) return nullptr;
    return new (std::nothrow) orvane::GdalRasterServer;
}

extern "C" __attribute__((visibility("default"))) const char* orvane_raster_failure() {
    return orvane::LastRasterFailure().c_str();
}

static_assert(std::is_same_v<decltype(&orvane_raster_failure), orvane::RasterFailure>);
static_assert(std::is_same_v<decltype(&orvane_make_raster_server), orvane::RasterEntry>);
