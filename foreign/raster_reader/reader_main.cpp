// The program that reads raster images for a host. The host's library starts it, and ends it when it does not answer.
#include <cpl_error.h>
#include <gdal_priv.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "foreign/raster/reader_protocol.h"
#include "foreign/raster_reader/reader_fences.h"
#include "foreign/raster_reader/reader_service.h"

namespace {

bool IsStartedByHost(int count, char** words) {
    if (count != 3 || std::string_view(words[1]) != orvane::kReaderVersion) return false;
    const std::string_view sources = words[2];
    struct stat facts {};
    return (sources == orvane::kReaderOfAny || sources == orvane::kReaderOfLocalFiles) &&
           fstat(orvane::kReaderSocket, &facts) == 0 && S_ISSOCK(facts.st_mode) && fstat(orvane::kReaderPixels, &facts) == 0 &&
           facts.st_size >= static_cast<off_t>(sizeof(orvane::ReaderMemory));
}

}  // namespace

int main(int count, char** words) {
    if (!IsStartedByHost(count, words)) {
        std::fputs("This program is started by the library of raster images.\n", stderr);
        return 2;
    }
    if (!orvane::EndWithHost(orvane::kReaderSocket)) return 1;
    orvane::LeaveHostsFolder();
    orvane::RaiseDescriptors();
    void* const memory =
        mmap(nullptr, sizeof(orvane::ReaderMemory), PROT_READ | PROT_WRITE, MAP_SHARED, orvane::kReaderPixels, 0);
    if (memory == MAP_FAILED) return 1;
    // Complaints that no question caused.
    CPLSetErrorHandler(CPLQuietErrorHandler);
    const bool local = std::string_view(words[2]) == orvane::kReaderOfLocalFiles;
    if (local) setenv("PROJ_NETWORK", "OFF", 1);
    GDALAllRegister();
    orvane::HoldCache();
    if (local) orvane::KeepToLocalFiles();
    orvane::LimitMemory();
    orvane::ServeReader(orvane::kReaderSocket, *static_cast<orvane::ReaderMemory*>(memory));
    // GDAL's own end would close images that may be what is wrong.
    std::_Exit(0);
}
