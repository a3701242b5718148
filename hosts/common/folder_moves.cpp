#include "hosts/common/folder_moves.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orvane {

namespace fs = std::filesystem;

bool FolderMoves::HasFolder(const std::string& folder) {
    std::error_code error;
    return fs::is_directory(folder, error);
}

std::vector<std::string> FolderMoves::Names(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (!entry->is_directory(unknown)) names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool FolderMoves::MakeFolder(const std::string& folder) {
    std::error_code error;
    return fs::create_directory(folder, error);
}

bool FolderMoves::RemoveFolder(const std::string& folder) {
    std::error_code error;
    return fs::is_directory(folder, error) && fs::remove(folder, error);
}

bool FolderMoves::RemoveFile(const std::string& file) {
    std::error_code error;
    return fs::remove(file, error);
}

bool FolderMoves::Rename(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(from, to, error);
    return !error;
}

bool FolderMoves::Sync(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool done = ::fsync(file) == 0;
    return ::close(file) == 0 && done;
}

}  // namespace orvane
