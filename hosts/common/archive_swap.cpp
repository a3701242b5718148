#include "hosts/common/archive_swap.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "files/archive_format.h"
#include "hosts/common/follow_links.h"
#include "platform/file_names.h"

namespace orvane {
namespace {

constexpr int kMostWaits = 40;  // of a twentieth of a second each

/// Where a file is that a link may lead to, without the ending that it shares with the link; nothing when it has another one.
std::optional<std::string> BaseBehind(const std::string& file, const std::string& extension) {
    const std::optional<std::string> place = FollowLinks(file);
    if (!place || std::filesystem::path(*place).filename().string().size() <= extension.size()) return std::nullopt;
    const std::size_t end = place->size() - extension.size();
    if (!EqualAnyCase(place->substr(end), extension)) return std::nullopt;
    return place->substr(0, end);
}

}  // namespace

std::optional<std::string> ArchiveBehindLinks(const std::string& base) {
    std::optional<std::string> found;
    FolderMoves moves;  // links are the system's own
    bool anyLink = false;
    for (const std::string& extension : ArchivePlace(moves, base).Extensions()) {
        const std::string file = base + extension;
        std::error_code error;
        anyLink = anyLink || std::filesystem::is_symlink(std::filesystem::symlink_status(file, error));
        const std::optional<std::string> one = BaseBehind(file, extension);
        if (!one || (found && *found != *one)) return std::nullopt;
        found = one;
    }
    return anyLink ? found : base;
}

ArchivePlace::ArchivePlace(FolderMoves& moves, const std::string& base) : moves_(moves) {
    const std::filesystem::path path(base);
    folder_ = path.has_parent_path() ? path.parent_path().string() : ".";
    stem_ = path.filename().string();
    const std::string hidden = folder_ + "/." + stem_;
    // None is longer than that of the lock, which comes first: a name too long for the system shows before anything is done.
    waiting_ = hidden + ".ov-new";
    leaving_ = hidden + ".ov-away";
    old_ = hidden + ".ov-old";
    done_ = hidden + ".ov-gone";
    locked_ = hidden + ".ov-lock";
}

FileLock::Outcome ArchivePlace::Claim() {
    for (int waits = 0;; ++waits) {
        const FileLock::Outcome outcome = lock_.TakeFile(locked_);
        if (outcome != FileLock::Outcome::Busy || waits == kMostWaits) return outcome;
        moves_.Pause();
    }
}

bool ArchivePlace::IsLeftBehind() { return IsMoving() || moves_.HasFolder(waiting_) || moves_.HasFolder(done_) || IsLocked(); }

const std::string& ArchivePlace::LeftBehind() {
    for (const std::string* one : {&old_, &leaving_, &waiting_, &done_}) {
        if (moves_.HasFolder(*one)) return *one;
    }
    return IsLocked() ? locked_ : folder_;
}

PlaceState ArchivePlace::MakeReady() {
    for (int waits = 0;; ++waits) {
        // Most places are so, and may stand where nothing can be written.
        if (!IsLeftBehind()) return PlaceState::Whole;
        switch (lock_.TakeFile(locked_)) {
            case FileLock::Outcome::Taken: {
                const bool restored = Restore();
                lock_.Release();
                return restored ? PlaceState::Whole : PlaceState::Broken;
            }
            case FileLock::Outcome::Failed:
                return PlaceState::Broken;
            case FileLock::Outcome::Busy:
                break;
        }
        // Writing the new set takes long, and leaves the place alone; the moves behind it take a moment.
        if (!IsMoving()) return PlaceState::BeingSaved;
        if (waits == kMostWaits) return PlaceState::Moving;
        moves_.Pause();
    }
}

std::vector<std::string> ArchivePlace::ExtensionsAmong(const std::vector<std::string>& names) const {
    constexpr std::array<std::string_view, 5> kExtensions = {kLayerExt, kBinExt, kTextExt, kIndexExt, kManageExt};
    std::vector<std::string> found;
    for (const std::string& name : names) {
        if (!name.starts_with(stem_)) continue;
        const std::string extension = name.substr(stem_.size());
        const auto same = [&](std::string_view one) { return EqualAnyCase(one, extension); };
        if (std::any_of(kExtensions.begin(), kExtensions.end(), same)) found.push_back(extension);
    }
    return found;
}

std::vector<std::string> ArchivePlace::ExtensionsIn(const std::string& folder) { return ExtensionsAmong(moves_.Names(folder)); }

std::string ArchivePlace::NoFileInTheWay() {
    const std::vector<std::string> found = ExtensionsAmong(moves_.NoFiles(folder_));
    return found.empty() ? std::string() : FileIn(folder_, found.front());
}

bool ArchivePlace::IsLocked() const {
    std::error_code unknown;
    return std::filesystem::exists(std::filesystem::symlink_status(locked_, unknown));
}

bool ArchivePlace::MakeWaiting() { return moves_.MakeFolder(waiting_); }

bool ArchivePlace::MoveAll(const std::string& from, const std::string& to) {
    for (const std::string& extension : ExtensionsIn(from)) {
        if (!moves_.Rename(FileIn(from, extension), FileIn(to, extension))) return false;
    }
    return true;
}

bool ArchivePlace::Drop(const std::string& folder) {
    if (!moves_.HasFolder(folder)) return true;
    for (const std::string& extension : ExtensionsIn(folder)) {
        if (!moves_.RemoveFile(FileIn(folder, extension))) return false;
    }
    return moves_.RemoveFolder(folder);
}

bool ArchivePlace::Swap() {
    const std::vector<std::string> before = Extensions();
    for (const std::string& extension : ExtensionsIn(waiting_)) {
        // A file that the former set lacked is as open as its data.
        const bool hasOld = std::find(before.begin(), before.end(), extension) != before.end();
        const std::string& like = hasOld || before.empty() ? extension : before.front();
        if (!moves_.Sync(FileIn(waiting_, extension))) return false;
        if (!before.empty()) moves_.CopyRights(FileIn(folder_, like), FileIn(waiting_, extension));
    }
    if (!moves_.Sync(waiting_)) return false;
    // Each step is on the disk before the next one: a system may write two renames down in any order.
    if (!moves_.MakeFolder(leaving_) || !moves_.Sync(folder_)) return false;
    if (!MoveAll(folder_, leaving_) || !moves_.Sync(leaving_) || !moves_.Sync(folder_)) return false;
    if (!moves_.Rename(leaving_, old_) || !moves_.Sync(folder_)) return false;
    if (!MoveAll(waiting_, folder_) || !moves_.Sync(folder_)) return false;
    if (!moves_.Rename(old_, done_)) return false;
    // The new set stands; what is left behind now is taken away by the next start at the latest.
    moves_.Sync(folder_);
    Drop(done_);
    Drop(waiting_);
    return true;
}

bool ArchivePlace::Restore() {
    if (moves_.HasFolder(old_)) {
        // All that was there is in the folder, so what stands in the place is of the new set. It goes back to where it came from.
        if (!moves_.HasFolder(waiting_) && !moves_.MakeFolder(waiting_)) return false;
        if (!MoveAll(folder_, waiting_) || !moves_.Sync(folder_)) return false;
        if (!moves_.Rename(old_, leaving_) || !moves_.Sync(folder_)) return false;
    }
    if (moves_.HasFolder(leaving_)) {
        if (!MoveAll(leaving_, folder_) || !moves_.Sync(folder_) || !moves_.RemoveFolder(leaving_)) return false;
    }
    const bool dropped = Drop(waiting_);
    return Drop(done_) && dropped;
}

}  // namespace orvane
