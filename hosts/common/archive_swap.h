// Putting one archive in place of another so that at every moment one of them is there whole, or can be made so.
//
// The new set waits in a folder of its own beside the place where it belongs. The old one goes into a second folder, file by
// file; that folder's name then says that all of it is there. The new files come in. Renaming the second folder once more says
// that they all came, and only then the old set is dropped. A program that finds such a folder knows by its name how far the
// other one got.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foreign/file_lock.h"
#include "hosts/common/folder_moves.h"

namespace orvane {

/// How a program that wants to read finds a place.
enum class PlaceState {
    Whole,       ///< nothing of a save is left there
    BeingSaved,  ///< another program is at it, and the former set still stands
    Moving,      ///< another program is just putting its set there
    Broken,      ///< what a save left behind cannot be cleared away
};

/// Base name of the set that the files under `base` lead to where they are links, else `base`. Nothing when they lead to
/// different sets, or some of them nowhere else. A link whose file is not there leads to where it would be.
std::optional<std::string> ArchiveBehindLinks(const std::string& base);

/// The place of one archive. Paths are the system's own bytes.
class ArchivePlace {
public:
    /// `base`: the data file's path without its extension.
    ArchivePlace(FolderMoves& moves, const std::string& base);

    /// Keeps other programs from changing the place as long as this lives. Waits a little for one that is at it.
    FileLock::Outcome Claim();
    /// Restores if there is something to restore and no other program is at it; waits a little for one that is about to end.
    PlaceState MakeReady();
    /// Why the last step of the system failed, in its own words; empty when it told nothing.
    std::string Cause() const { return lock_.Cause() ? lock_.Cause().message() : moves_.Cause(); }
    /// Where the archive stands.
    const std::string& Folder() const { return folder_; }
    /// The folder or the lock of a save that is still there, or where the archive stands when there is none.
    const std::string& LeftBehind();

    // The steps of a save. REQUIRES: claimed.
    /// Makes the empty folder for the new set. False when it cannot.
    bool MakeWaiting();
    /// Base name of the new set in that folder.
    std::string WaitingBase() const { return waiting_ + "/" + stem_; }
    /// Flushes the new set and puts it in the place of what is there, siblings included that it does not have. False leaves what
    /// was there as it was, or leaves it to Restore.
    bool Swap();
    /// Brings back a set that was moved aside when a program ended midway, and takes away what it left behind. True when nothing
    /// is left to do. Until the last step nothing is deleted.
    bool Restore();
    /// Extensions, as they stand, of the files in the place.
    std::vector<std::string> Extensions() { return ExtensionsIn(folder_); }
    /// A folder, a device or a pipe that stands where a file of the set would be looked for, or an empty text.
    std::string NoFileInTheWay();

private:
    std::vector<std::string> ExtensionsAmong(const std::vector<std::string>& names) const;
    std::vector<std::string> ExtensionsIn(const std::string& folder);
    std::string FileIn(const std::string& folder, const std::string& extension) const { return folder + "/" + stem_ + extension; }
    bool MoveAll(const std::string& from, const std::string& to);
    bool Drop(const std::string& folder);
    bool IsMoving() { return moves_.HasFolder(leaving_) || moves_.HasFolder(old_); }
    bool IsLeftBehind();
    bool IsLocked() const;

    FolderMoves& moves_;
    FileLock lock_;
    std::string folder_;
    std::string stem_;
    std::string waiting_;  ///< folder of the new set
    std::string leaving_;  ///< of the old set, while its files go there or come back
    std::string old_;      ///< of the old set, once all of it is there
    std::string done_;     ///< of the old set, once the new one is in its place
    std::string locked_;   ///< the file that is locked
};

}  // namespace orvane
