#include "hosts/common/raster_library.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

#include "foreign/raster/raster_entry.h"

namespace orvane {

namespace {

/// The folder of the program or module that this code is in, with a slash at its end.
std::string OwnFolder() {
    static const char here = 0;
    Dl_info info{};
    const std::string path = dladdr(&here, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
    // A program that was found by the search path is known by its bare name only.
    if (path.find('/') == std::string::npos) {
        std::unique_ptr<char, decltype(&std::free)> real(realpath("/proc/self/exe", nullptr), &std::free);
        const std::string program = real != nullptr ? real.get() : "./";
        return program.substr(0, program.rfind('/') + 1);
    }
    // The program may go to another folder later.
    std::error_code error;
    const std::string whole = std::filesystem::absolute(path, error).string();
    return whole.substr(0, whole.rfind('/') + 1);
}

/// What was loaded, and gave a server. It stays loaded, because servers live in it.
struct Library {
    RasterEntry entry = nullptr;
    RasterFailure failure = nullptr;
};

Library& Loaded() {
    static Library library;
    return library;
}

/// A server by the first library of these that gives one. What gives none, because it was built for another version or misses the
/// program that it starts, is let go, so that the one in its place is found next time.
RasterServer* MakeServer(const std::vector<std::string>& names) {
    if (Loaded().entry != nullptr) return Loaded().entry(kRasterEntryVersion);
    for (const std::string& name : names) {
        void* const library = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) continue;
        const auto entry = reinterpret_cast<RasterEntry>(dlsym(library, kRasterEntryName));
        RasterServer* const server = entry == nullptr ? nullptr : entry(kRasterEntryVersion);
        if (server == nullptr) {
            dlclose(library);
            continue;
        }
        Loaded() = {entry, reinterpret_cast<RasterFailure>(dlsym(library, kRasterFailureName))};
        return server;
    }
    return nullptr;
}

}  // namespace

std::vector<std::string> RasterLibraryNames() {
    constexpr char kName[] = "liborvane_gdal_raster.so";
    if (const char* const told = std::getenv("ORVANE_RASTER_SERVER")) return {told};
    const std::string own = OwnFolder();
    return {own + kName, own + "../lib/" + kName, own + "../lib/orvane4/" + kName};
}

RasterServerMaker RasterLibraryMaker() {
    return [names = RasterLibraryNames()] { return std::unique_ptr<RasterServer>(MakeServer(names)); };
}

std::string RasterLibraryFailure() {
    const RasterFailure failure = Loaded().failure;
    const std::string told = failure == nullptr ? "" : failure();
    return told.empty() ? "it cannot be read" : told;
}

}  // namespace orvane
