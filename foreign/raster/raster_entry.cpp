#include "foreign/raster/raster_entry.h"

#include <limits.h>

#include <algorithm>
#include <new>
#include <string>
#include <type_traits>

#include "foreign/raster/gdal_raster_server.h"

extern "C" __attribute__((visibility("default"))) orvane::RasterServer* orvane_make_raster_server(std::uint32_t version) {
    if (version != orvane::kRasterEntryVersion || !orvane::HasRasterReader()) return nullptr;
    return new (std::nothrow) orvane::GdalRasterServer;
}

extern "C" __attribute__((visibility("default"))) const char* orvane_raster_failure() {
    return orvane::LastRasterFailure().c_str();
}

extern "C" __attribute__((visibility("default"))) const char* orvane_missing_raster_reader() {
    // Nothing that has to be destroyed: that would hold the library until the thread ends.
    thread_local char program[PATH_MAX];
    program[0] = 0;
    try {
        if (orvane::HasRasterReader()) return program;
        const std::string name = orvane::RasterReaderProgram();
        if (name.size() < sizeof program) std::copy_n(name.c_str(), name.size() + 1, program);
    } catch (...) {
    }
    return program;
}

static_assert(std::is_same_v<decltype(&orvane_missing_raster_reader), orvane::MissingRasterReader>);
static_assert(std::is_same_v<decltype(&orvane_raster_failure), orvane::RasterFailure>);
static_assert(std::is_same_v<decltype(&orvane_make_raster_server), orvane::RasterEntry>);
