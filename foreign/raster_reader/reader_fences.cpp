#include "foreign/raster_reader/reader_fences.h"

#include <cpl_conv.h>
#include <fcntl.h>
#include <gdal_priv.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <vector>

#include "foreign/raster_reader/plain_files.h"

namespace orvane {

namespace {

// Those that get their pixels out of a network or a database by themselves. A local file that describes such a source is opened
// by them too. What other drivers want of the network, by a name inside an image, fails at the socket.
constexpr const char* kClients[] = {"WCS",   "WMS",  "WMTS", "HTTP",   "PLMOSAIC", "PLSCENES",
                                    "EEDAI", "DAAS", "NGW",  "OGCAPI", "STACIT",   "PostGISRaster"};

/// The system answers every call for a socket with "no permission", and so every call by the numbers of another machine, as this
/// one may know them too. What cannot be had on this system is done without: the drivers are gone all the same.
void RefuseSockets() {
#if defined(__NR_socket) && (defined(__x86_64__) || defined(__aarch64__))
#ifdef __x86_64__
    constexpr unsigned kMachine = AUDIT_ARCH_X86_64;
#else
    constexpr unsigned kMachine = AUDIT_ARCH_AARCH64;
#endif
    // From here on stand the calls of a second numbering of x86-64, which nobody here makes.
    constexpr unsigned kOtherNumbers = 0x40000000;
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kMachine, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, kOtherNumbers, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_socket, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES),
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
    const bool isTold = CPLGetConfigOption("GDAL_CACHEMAX", nullptr) != nullptr;
    GDALSetCacheMax64(isTold ? (std::min)(GDALGetCacheMax64(), GIntBig{kMostReaderCache_bytes}) : GIntBig{kReaderCache_bytes});
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
    // By name it would open whatever address of the memory an image tells; other drivers make their pictures with it all the
    // same.
    if (GDALDriver* const memory = drivers.GetDriverByName("MEM")) memory->pfnOpen = nullptr;
    InstallPlainFiles();
    // Databases are read through GDAL's files, and so by the rules of these; and nothing in an image is run.
    CPLSetConfigOption("SQLITE_USE_OGR_VFS", "YES");
    CPLSetConfigOption("GDAL_VRT_ENABLE_PYTHON", "NO");
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_FSIZE, &none);
    RefuseSockets();
}

void RaiseDescriptors() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

bool HasDescriptors(int count) {
    std::vector<int> taken;
    while (static_cast<int>(taken.size()) < count) {
        const int fd = fcntl(0, F_DUPFD_CLOEXEC, 0);
        if (fd < 0) break;
        taken.push_back(fd);
    }
    for (const int fd : taken) close(fd);
    return static_cast<int>(taken.size()) == count;
}

void LeaveHostsFolder() {
    // Where there is no root there are no files.
    static_cast<void>(!chdir("/"));
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
