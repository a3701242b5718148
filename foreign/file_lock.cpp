#include "foreign/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace orvane {
namespace {

// Some network file systems lock only what is open for writing; somebody else's file may be open to read only. To open a pipe
// would otherwise wait for its writer.
int OpenLockFile(const char* path) {
    constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    int file = ::open(path, O_RDWR | kFlags);
    if (file < 0 && errno == ENOENT) return ::open(path, O_RDWR | O_CREAT | kFlags, 0666);
    if (file < 0 && errno == EACCES) file = ::open(path, O_RDONLY | kFlags);
    return file;
}

bool IsPlainFile(int file) {
    struct stat facts = {};
    return ::fstat(file, &facts) == 0 && S_ISREG(facts.st_mode);
}

int LockNow(int file) {
    int result = 0;
    do {
        result = ::flock(file, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    return result;
}

bool StandsUnder(int file, const char* path) {
    struct stat open = {};
    struct stat there = {};
    return ::fstat(file, &open) == 0 && ::lstat(path, &there) == 0 && open.st_dev == there.st_dev && open.st_ino == there.st_ino;
}

}  // namespace

FileLock::Outcome FileLock::Failed(int error) {
    cause_ = std::error_code(error, std::generic_category());
    if (file_ >= 0) ::close(file_);
    file_ = -1;
    return error == EWOULDBLOCK ? Outcome::Busy : Outcome::Failed;
}

FileLock::Outcome FileLock::TakeFile(const std::string& path) {
    Release();
    constexpr int kMostTries = 100;
    for (int tries = 0; tries < kMostTries; ++tries) {
        file_ = OpenLockFile(path.c_str());
        if (file_ < 0) return Failed(errno);
        if (!IsPlainFile(file_)) return Failed(EEXIST);
        if (LockNow(file_) != 0) return Failed(errno);
        if (StandsUnder(file_, path.c_str())) {
            path_ = path;
            return Outcome::Taken;
        }
        // The holder before took the file away between the two steps: this lock is on nothing that others would find.
        ::close(file_);
        file_ = -1;
    }
    return Failed(EWOULDBLOCK);
}

FileLock::Outcome FileLock::TakeFolder(const std::string& path) {
    Release();
    file_ = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (file_ < 0 || LockNow(file_) != 0) return Failed(errno);
    return Outcome::Taken;
}

void FileLock::Release() {
    if (file_ < 0) return;
    // Taken away while it is still locked, so that it is never another holder's.
    if (!path_.empty()) ::unlink(path_.c_str());
    ::close(file_);
    file_ = -1;
    path_.clear();
}

}  // namespace orvane
