#include "foreign/raster/plain_files.h"

#include <cpl_vsi_virtual.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>

namespace orvane {

namespace {

constexpr std::string_view kPrefix = "/vsiorvane_plain/";

/// GDAL asks for the folder of names also without the slash at its end.
const char* SystemName(const char* name) { return std::strlen(name) > kPrefix.size() ? name + kPrefix.size() : "/"; }

bool EndsWith(std::string_view name, std::string_view ending) {
    return name.size() >= ending.size() &&
           std::equal(ending.begin(), ending.end(), name.end() - static_cast<std::ptrdiff_t>(ending.size()),
                      [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

/// GDAL opens overviews and masks by whatever driver knows them. Behind these four bytes none but that of TIFF looks further.
bool IsTiff(VSIVirtualHandle& file) {
    char first[4] = {};
    const bool read = file.Read(first, 1, sizeof first) == sizeof first;
    file.Seek(0, SEEK_SET);
    return read && (std::memcmp(first, "II*", 4) == 0 || std::memcmp(first, "MM\0*", 4) == 0 ||
                    std::memcmp(first, "II+", 4) == 0 || std::memcmp(first, "MM\0+", 4) == 0);
}

/// The description of an overview or mask, which could send GDAL on to further overviews before anyone has looked at it.
bool DescribesHelper(std::string_view name) { return EndsWith(name, ".ovr.aux.xml") || EndsWith(name, ".msk.aux.xml"); }

class PlainFiles final : public VSIFilesystemHandler {
public:
    using VSIFilesystemHandler::Open;

    VSIVirtualHandle* Open(const char* name, const char* access, bool setError, CSLConstList options) override {
        VSIStatBufL stat{};
        const bool reads = std::strpbrk(access, "wa+") == nullptr;
        if (!reads || Stat(name, &stat, 0) != 0 || !VSI_ISREG(stat.st_mode)) {
            errno = reads ? ENOENT : EACCES;
            return nullptr;
        }
        const char* const system = SystemName(name);
        if (EndsWith(system, ".xml") && static_cast<long long>(stat.st_size) > kMaxDescription_bytes) return nullptr;
        std::unique_ptr<VSIVirtualHandle> file(VSIFileManager::GetHandler(".")->Open(system, access, setError, options));
        const bool isHelper = EndsWith(system, ".ovr") || EndsWith(system, ".msk");
        if (file != nullptr && isHelper && !IsTiff(*file)) {
            file->Close();
            return nullptr;
        }
        return file.release();
    }

    int Stat(const char* name, VSIStatBufL* stat, int) override {
        if (DescribesHelper(SystemName(name))) return -1;
        if (VSIFileManager::GetHandler(".")->Stat(SystemName(name), stat, 0) != 0) return -1;
        return VSI_ISREG(stat->st_mode) || VSI_ISDIR(stat->st_mode) ? 0 : -1;
    }

    char** ReadDirEx(const char* name, int most) override {
        return VSIFileManager::GetHandler(".")->ReadDirEx(SystemName(name), most);
    }
};

}  // namespace

std::string PlainName(const std::string& systemName) { return std::string(kPrefix) + systemName; }

void InstallPlainFiles() {
    // GDAL keeps it to its end.
    static const bool installed = [] {
        VSIFileManager::InstallHandler(std::string(kPrefix), new PlainFiles);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace orvane
