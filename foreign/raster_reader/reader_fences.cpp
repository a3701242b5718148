#include "foreign/raster_reader/reader_fences.h"

#include <cpl_conv.h>
#include <gdal_priv.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>

#include "foreign/raster_reader/plain_files.h"

namespace orvane {

namespace {

// Those that get their pixels out of a network or a database by themselves. A local file that describes such a source is opened
// by them too. What other drivers want of the network, by a name inside an image, fails at the socket.
constexpr const char* kClients[] = {"WCS",   "WMS",  "WMTS", "HTTP",   "PLMOSAIC", "PLSCENES",
                                    "EEDAI", "DAAS", "NGW",  "OGCAPI", "STACIT",   "PostGISRaster"};

/// The system answers every call for a socket with "no permission". What cannot be had on this system is done without: the
/// drivers are gone all the same.
void RefuseSockets() {
#ifdef __NR_socket
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_socket, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | 13),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{sizeof steps / sizeof steps[0], steps};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0) prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
#endif
}

void* WaitForHostsEnd(void* socket) {
    // Asked for nothing, poll still tells when the other end is closed.
    pollfd look{static_cast<int>(reinterpret_cast<std::intptr_t>(socket)), 0, 0};
    while (poll(&look, 1, -1) <= 0) {
    }
    _exit(0);
}

}  // namespace

void HoldCache() {
    if (CPLGetConfigOption("GDAL_CACHEMAX", nullptr) == nullptr) GDALSetCacheMax64(kReaderCache_bytes);
}

bool EndWithHost(int socket) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 256 * 1024);
    pthread_t thread{};
    const int failed =
        pthread_create(&thread, &attributes, WaitForHostsEnd, reinterpret_cast<void*>(static_cast<std::intptr_t>(socket)));
    pthread_attr_destroy(&attributes);
    return failed == 0 && pthread_detach(thread) == 0;
}

void KeepToLocalFiles() {
    GDALDriverManager& drivers = *GetGDALDriverManager();
    for (const char* const name : kClients) {
        GDALDriver* const driver = drivers.GetDriverByName(name);
        if (driver != nullptr) drivers.DeregisterDriver(driver);
    }
    InstallPlainFiles();
    // Databases are read through GDAL's files, and so by the rules of these; and nothing in an image is run.
    CPLSetConfigOption("SQLITE_USE_OGR_VFS", "YES");
    CPLSetConfigOption("GDAL_VRT_ENABLE_PYTHON", "NO");
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_FSIZE, &none);
    RefuseSockets();
}

void LimitMemory() {
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
#ifndef ORVANE_SANITIZED
    unsigned long long pages = 0;
    if (!(std::ifstream("/proc/self/statm") >> pages)) return;
    const rlim_t most = pages * static_cast<unsigned long long>(sysconf(_SC_PAGESIZE)) + kReaderMemory_bytes;
    const rlimit limit{most, most};
    setrlimit(RLIMIT_AS, &limit);
#endif
}

}  // namespace orvane
