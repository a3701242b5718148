#include "hosts/common/follow_links.h"

#include <filesystem>

namespace orvane {

std::optional<std::string> FollowLinks(const std::string& file) {
    namespace fs = std::filesystem;
    constexpr int kMostLinks = 40;
    std::error_code error;
    fs::path path(file);
    for (int i = 0; fs::is_symlink(fs::symlink_status(path, error)); ++i) {
        if (i == kMostLinks) return std::nullopt;
        path = path.parent_path() / fs::read_symlink(path, error);  // an absolute one stands alone
        if (error) return std::nullopt;
    }
    const fs::path folder = fs::weakly_canonical(path.has_parent_path() ? path.parent_path() : fs::path("."), error);
    if (error) return std::nullopt;
    return (folder / path.filename()).string();
}

}  // namespace orvane
