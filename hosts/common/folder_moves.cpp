#include "hosts/common/folder_moves.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace orvane {

namespace fs = std::filesystem;

bool FolderMoves::HasFolder(const std::string& folder) {
    std::error_code error;
    return fs::is_directory(folder, error);
}

namespace {

std::vector<std::string> NamesIn(const std::string& folder, bool folders) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (entry->is_directory(unknown) == folders) names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

std::vector<std::string> FolderMoves::Names(const std::string& folder) { return NamesIn(folder, false); }

std::vector<std::string> FolderMoves::Folders(const std::string& folder) { return NamesIn(folder, true); }

bool FolderMoves::Told(bool done, const std::error_code& error) {
    if (!done && error) cause_ = error.message();
    return done;
}

void FolderMoves::Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(50)); }

bool FolderMoves::MakeFolder(const std::string& folder) {
    std::error_code error;
    const bool made = fs::create_directory(folder, error);
    return Told(made, error);
}

bool FolderMoves::RemoveFolder(const std::string& folder) {
    std::error_code error;
    const bool removed = fs::is_directory(folder, error) && fs::remove(folder, error);
    return Told(removed, error);
}

bool FolderMoves::RemoveFile(const std::string& file) {
    std::error_code error;
    const bool removed = fs::remove(file, error);
    return Told(removed, error);
}

bool FolderMoves::CopyRights(const std::string& from, const std::string& to) {
    std::error_code error;
    const fs::perms rights = fs::status(from, error).permissions();
    if (!error) fs::permissions(to, rights, error);
    return Told(!error, error);
}

bool FolderMoves::Rename(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(from, to, error);
    return Told(!error, error);
}

bool FolderMoves::Sync(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    bool done = file >= 0 && ::fsync(file) == 0;
    const std::error_code error(errno, std::generic_category());
    if (file >= 0) done = ::close(file) == 0 && done;
    return Told(done, error);
}

}  // namespace orvane
