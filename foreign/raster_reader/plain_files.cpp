#include "foreign/raster_reader/plain_files.h"

#include <cpl_vsi_virtual.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace orvane {

namespace {

/// What the system tells of itself looks like plain files, and is none: this program's own memory, and settings.
bool IsOfSystem(const char* name) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(name, nullptr), &std::free);
    if (real == nullptr) return false;
    const std::string path = std::string(real.get()) + '/';
    return path.starts_with("/proc/") || path.starts_with("/sys/");
}

class PlainFiles final : public VSIFilesystemHandler {
public:
    using VSIFilesystemHandler::Open;

    explicit PlainFiles(VSIFilesystemHandler& disk) : disk_(disk) {}

    VSIVirtualHandle* Open(const char* name, const char* access, bool setError, CSLConstList options) override {
        VSIStatBufL stat{};
        const bool reads = std::strpbrk(access, "wa+") == nullptr;
        if (!reads || disk_.Stat(name, &stat, 0) != 0 || !VSI_ISREG(stat.st_mode) || IsOfSystem(name)) {
            errno = reads ? ENOENT : EACCES;
            return nullptr;
        }
        return disk_.Open(name, access, setError, options);
    }

    int Stat(const char* name, VSIStatBufL* stat, int flags) override {
        if (disk_.Stat(name, stat, flags) != 0 || IsOfSystem(name)) return -1;
        return VSI_ISREG(stat->st_mode) || VSI_ISDIR(stat->st_mode) ? 0 : -1;
    }

    char** ReadDirEx(const char* name, int most) override { return IsOfSystem(name) ? nullptr : disk_.ReadDirEx(name, most); }

private:
    VSIFilesystemHandler& disk_;
};

}  // namespace

void InstallPlainFiles() {
    // GDAL keeps it to its end.
    static const bool installed = [] {
        VSIFileManager::InstallHandler("", new PlainFiles(*VSIFileManager::GetHandler(".")));
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace orvane
