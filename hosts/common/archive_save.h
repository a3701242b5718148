// Saving a map as an archive without ever losing the one that is there, and opening archives, as every host does it.
//
// Paths are the system's own bytes, never code page 932: no name can be taken for another one.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "files/archive_check.h"
#include "hosts/common/archive_swap.h"
#include "hosts/common/folder_moves.h"
#include "platform/files.h"
#include "store/cdigmem.h"

namespace orvane {

/// Whether a path names an archive: it ends in .Ovb or .Ovt, in any case.
bool IsArchiveName(std::string_view path);

/// Told how much is done, 0 to 1; false cancels.
using HostProgress = std::function<bool(double fraction)>;

/// What tells one set of files from another that was put in its place: the names, sizes and times of change.
using SetLooks = std::vector<std::pair<std::string, FileFacts>>;
/// Those of the archive under `path`; none where nothing stands.
SetLooks LooksOfSet(const std::string& path);

struct SavedArchive {
    bool saved = false;
    bool others = false;             ///< other files stood there than those that might be replaced
    std::string error;               ///< one line, empty when saved
    std::vector<std::string> notes;  ///< what the archive does not keep, and what was taken away, a line each
    ArcCounts counts;
    SetLooks looks;  ///< of the set as it was saved
};

/// Saves the store under `path`, whose extension tells the form, in `version` ("1.00", "1.10", or empty for the latter).
///
/// The set is written beside its place, looked through and counted, and put into the place only when everything is in it; until
/// then, and after any failure, what stood there stands there. Of two programs that save to one place the second is refused after
/// a moment. Siblings that the new set does not have are taken away with the old one. A text archive gets the index file that it
/// is read by; where its place holds binary data too, that is written anew. Layers of the codes in `leaveOut`, which must have no
/// data, are not written: a map keeps the record of a layer that its operator has removed. Where the files are links, those that
/// they lead to are replaced and the links stay; links that do not lead to one set are refused. With `mayReplace`, nothing is
/// saved over any other set than that one.
SavedArchive SaveArchive(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress = {},
                         const std::vector<std::string>& leaveOut = {}, const SetLooks* mayReplace = nullptr);
/// The same on other files and folders.
SavedArchive SaveArchive(CDigMem& store, const std::string& path, const std::string& version, const HostProgress& progress,
                         Files& files, FolderMoves& moves, const std::vector<std::string>& leaveOut = {},
                         const SetLooks* mayReplace = nullptr);

/// Whether any file of an archive stands where `path` is to go.
bool ArchiveStands(const std::string& path);

/// The files of an archive that stand in its place.
std::vector<std::string> ArchiveFiles(const std::string& path);

struct ReadyArchive {
    PlaceState state = PlaceState::Whole;
    std::string words;  ///< what stands in the way, without an end: empty where the archive can be looked at as it is
};
/// To be called before an archive is looked at: brings back what a save that was broken off moved aside, unless another program
/// is at it. `path` is the archive's.
ReadyArchive ReadyToRead(const std::string& path, FolderMoves& moves);

struct CheckedArchive {
    bool moving = false;  ///< another program puts its files there, so that there is nothing to tell about them
    std::string words;    ///< as in ReadyArchive, or why nothing can be told
    ArcReport report;
};
/// Looks through all files of an archive as ArcCheck does, but never at those of two saves together: when another program saved
/// it meanwhile, once more, three times at most. A set that was moved aside comes back first.
CheckedArchive CheckArchive(const std::string& path, const HostProgress& progress, FolderMoves& moves);

struct OpenedArchive {
    bool opened = false;
    bool begun = false;  ///< the store was changed
    bool cancelled = false;
    PlaceState place = PlaceState::Whole;  ///< as it was found
    std::string error;                     ///< one line, empty when opened
    /// What is wrong with the files, a line each that begins with "error: " or "warning: "; with any of them not all may be
    /// there.
    std::vector<std::string> warnings;
    ArcReport report;
    SetLooks looks;  ///< of the set as it was read
};

/// Reads an archive into the store, beside what is there, after a look through all its files; a set that was moved aside comes
/// back first. While another program saves it, it is read as it was before, but not while the files are put in their place; when
/// that happens between the look and the end of the read, the archive is not opened, though the store has what was read.
/// `beforeReading` is called when the look found something to read.
OpenedArchive OpenArchive(CDigMem& store, const std::string& path, const HostProgress& progress = {},
                          const std::function<void()>& beforeReading = {});
/// The same on other folders.
OpenedArchive OpenArchive(CDigMem& store, const std::string& path, const HostProgress& progress,
                          const std::function<void()>& beforeReading, FolderMoves& moves);

/// The findings as lines of UTF-8 that begin with "error: " or "warning: ".
std::vector<std::string> FindingLines(const ArcReport& report);

}  // namespace orvane
