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

RasterEntry Load(const std::vector<std::string>& names) {
    static RasterEntry loaded = nullptr;
    if (loaded != nullptr) return loaded;
    for (const std::string& name : names) {
        void* const library = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) continue;
        loaded = reinterpret_cast<RasterEntry>(dlsym(library, kRasterEntryName));
        if (loaded != nullptr) return loaded;
        dlclose(library);
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
    return [names = RasterLibraryNames()]() -> std::unique_ptr<RasterServer> {
        const RasterEntry entry = Load(names);
        return std::unique_ptr<RasterServer>(entry == nullptr ? nullptr : entry(kRasterEntryVersion));
    };
}

}  // namespace orvane
