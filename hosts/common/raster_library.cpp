#include "hosts/common/raster_library.h"

#include <dlfcn.h>
#include <errno.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <mutex>
#include <system_error>

#include "foreign/raster/raster_entry.h"

namespace orvane {

namespace {

/// The folder of the program or module that this code is in, with a slash at its end; empty when the system does not tell.
std::string OwnFolder() {
    static const char here = 0;
    Dl_info info{};
    const std::string path = dladdr(&here, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
    // A program is known by the name that it was called by, which may be any, and no file's. Links lead to where the rest stands.
    const bool isProgram = path.find('/') == std::string::npos || path == program_invocation_name;
    const std::string file = isProgram ? "/proc/self/exe" : path;
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(file.c_str(), nullptr), &std::free);
    const std::string whole = real != nullptr ? real.get() : "";
    return whole.substr(0, whole.rfind('/') + 1);
}

/// What was loaded, and gave a server. It stays loaded, because servers live in it.
struct Library {
    RasterEntry entry = nullptr;
    RasterFailure failure = nullptr;
    void* handle = nullptr;
    std::string name;
};

/// Hosts may load images in several threads: `loaded` is to be touched with it held.
constinit std::mutex mutex;
Library loaded;

thread_local std::string lack;

/// Why a library that is there gives no server.
std::string LackOf(const std::string& name, void* library, RasterEntry entry) {
    const auto missing = reinterpret_cast<MissingRasterReader>(dlsym(library, kMissingReaderName));
    const std::string program = entry == nullptr || missing == nullptr ? "" : missing();
    if (program.empty()) return "the library " + name + " was built for another version";
    return "the library " + name + " needs the program " + program + ", which is not there or cannot be run";
}

/// A server by the first library of these that gives one. What gives none, because it was built for another version or misses the
/// program that it starts, is let go, so that the one in its place is found next time.
RasterServer* MakeServer(const std::vector<std::string>& names) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (loaded.entry != nullptr) {
        RasterServer* const server = loaded.entry(kRasterEntryVersion);
        if (server == nullptr) lack = LackOf(loaded.name, loaded.handle, loaded.entry);
        return server;
    }
    std::string places;
    lack.clear();
    for (const std::string& name : names) {
        places += (places.empty() ? "" : ", ") + name;
        void* const library = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            const char* const why = dlerror();
            if (lack.empty() && access(name.c_str(), F_OK) == 0)
                lack = "the library " + name + " cannot be loaded: " + (why == nullptr ? "" : why);
            continue;
        }
        const auto entry = reinterpret_cast<RasterEntry>(dlsym(library, kRasterEntryName));
        RasterServer* const server = entry == nullptr ? nullptr : entry(kRasterEntryVersion);
        if (server == nullptr) {
            lack = LackOf(name, library, entry);
            dlclose(library);
            continue;
        }
        loaded = {entry, reinterpret_cast<RasterFailure>(dlsym(library, kRasterFailureName)), library, name};
        return server;
    }
    if (lack.empty()) lack = "they need a library that is not there; it was looked for at " + places;
    return nullptr;
}

}  // namespace

std::vector<std::string> RasterLibraryNames() {
    constexpr char kName[] = "liborvane_gdal_raster.so";
    if (const char* const told = std::getenv("ORVANE_RASTER_SERVER")) {
        // The program may go to another folder later. A bare name is looked for by the system.
        const std::string name = told;
        std::error_code error;
        return {name.find('/') == std::string::npos ? name : std::filesystem::absolute(name, error).string()};
    }
    const std::string own = OwnFolder();
    if (own.empty()) return {};
    return {own + kName, own + "../lib/" + kName, own + "../lib/orvane4/" + kName};
}

RasterServerMaker RasterLibraryMaker() {
    return [names = RasterLibraryNames()] { return std::unique_ptr<RasterServer>(MakeServer(names)); };
}

const std::string& RasterLibraryLack() { return lack; }

std::string RasterLibraryFailure() {
    const RasterFailure failure = [] {
        const std::lock_guard<std::mutex> lock(mutex);
        return loaded.failure;
    }();
    const std::string told = failure == nullptr ? "" : failure();
    return told.empty() ? "it cannot be read" : told;
}

}  // namespace orvane
