// A lock between programs, which the system gives back when its holder ends, however it ends.
#pragma once

#include <string>
#include <system_error>

namespace orvane {

/// Of the locks on one path at most one is held, within a program too. Nothing that does not ask for the lock is held up by it.
class FileLock {
public:
    enum class Outcome { Taken, Busy, Failed };

    FileLock() = default;
    ~FileLock() { Release(); }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Locks a file made for nothing else: it is created where it is not there, and taken away by Release. A holder that was
    /// killed leaves it, unlocked; the next one takes it over. Never waits. Path in the system's own bytes.
    Outcome TakeFile(const std::string& path);
    /// Locks a folder that is there.
    Outcome TakeFolder(const std::string& path);
    void Release();
    /// Why the last take failed.
    const std::error_code& Cause() const { return cause_; }

private:
    Outcome Failed(int error);

    int file_ = -1;
    std::string path_;  ///< of the file that Release takes away, or empty
    std::error_code cause_;
};

}  // namespace orvane
