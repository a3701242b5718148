#include "foreign/raster/raster_sources.h"

#include <charconv>
#include <cstdlib>
#include <cstring>

namespace orvane {

namespace {

constexpr int kLimit_s = 60;
constexpr int kMaxLimit_s = 24 * 60 * 60;

}  // namespace

RasterSources AllowedSources() {
    const char* const told = std::getenv("ORVANE_RASTER_SOURCES");
    return told != nullptr && std::strcmp(told, "any") == 0 ? RasterSources::Any : RasterSources::LocalFiles;
}

int RasterLimit_s() {
    const char* const told = std::getenv("ORVANE_RASTER_SECONDS");
    if (told == nullptr) return kLimit_s;
    const char* const end = told + std::strlen(told);
    int seconds = 0;
    const auto [next, error] = std::from_chars(told, end, seconds);
    return error == std::errc() && next == end && seconds >= 1 && seconds <= kMaxLimit_s ? seconds : kLimit_s;
}

}  // namespace orvane
