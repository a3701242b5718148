#include "hosts/common/folder_moves.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
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

/// What cannot be looked at is taken for a file, as is what a link names in vain.
bool IsFile(const fs::directory_entry& entry) {
    std::error_code unknown;
    const fs::file_type type = entry.status(unknown).type();
    constexpr std::array kFiles = {fs::file_type::regular, fs::file_type::not_found, fs::file_type::none, fs::file_type::unknown};
    return std::find(kFiles.begin(), kFiles.end(), type) != kFiles.end();
}

std::vector<std::string> NamesIn(const std::string& folder, bool files) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (IsFile(*entry) == files) names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

std::vector<std::string> FolderMoves::Names(const std::string& folder) { return NamesIn(folder, true); }

std::vector<std::string> FolderMoves::NoFiles(const std::string& folder) { return NamesIn(folder, false); }

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
