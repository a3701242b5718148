// What a safe save asks of the system's folders beside reading and writing files. Paths are the system's own bytes.
#pragma once

#include <string>
#include <system_error>
#include <vector>

namespace orvane {

/// On the system itself; tests derive from it to let steps fail.
class FolderMoves {
public:
    FolderMoves() = default;
    FolderMoves(const FolderMoves&) = delete;
    FolderMoves& operator=(const FolderMoves&) = delete;
    virtual ~FolderMoves() = default;

    /// Whether a folder stands there.
    virtual bool HasFolder(const std::string& folder);
    /// Names of the files in a folder and of links to files, which may not be there, sorted; none when it cannot be read.
    virtual std::vector<std::string> Names(const std::string& folder);
    /// Names of the folders, devices and pipes in a folder and of links to such, likewise.
    virtual std::vector<std::string> NoFiles(const std::string& folder);

    /// Lets a moment pass, for another program to get on.
    virtual void Pause();
    /// The system's words for the last of the steps below that failed; empty when none did.
    const std::string& Cause() const { return cause_; }

    // Each answers whether it did what it says; a failed one has changed nothing.
    virtual bool MakeFolder(const std::string& folder);
    /// Takes an empty folder away.
    virtual bool RemoveFolder(const std::string& folder);
    virtual bool RemoveFile(const std::string& file);
    /// Files and folders. A file that stands at `to` is replaced.
    virtual bool Rename(const std::string& from, const std::string& to);
    /// Gives a file the rights that another one has. Who may read a map must not change by its being saved.
    virtual bool CopyRights(const std::string& from, const std::string& to);
    /// Returns when a file's bytes, or a folder's entries, are on the disk.
    virtual bool Sync(const std::string& path);

private:
    bool Told(bool done, const std::error_code& error);

    std::string cause_;
};

}  // namespace orvane
