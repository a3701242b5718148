// All legacy files of a folder. Lines come before the polygons that are made of them.
#include <string>

#include "files/legacy_file.h"
#include "files/legacy_parts.h"
#include "platform/file_names.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

/// Two texts behind one another. False without memory.
bool Join(std::string& to, std::string_view a, std::string_view b) {
    to.clear();
    if (!ReserveText(to, a.size() + b.size())) return false;
    to.append(a).append(b);
    return true;
}

/// False when the store was emptied from inside a message.
bool ReadFiles(CDigMem& store, Files& files, std::string_view folder, const std::vector<std::string>& names,
               const LegacyMessage& message) {
    std::string name;
    for (const std::string& found : names) {
        if (!Join(name, folder, found)) continue;
        const std::uint32_t resets = store.ResetCount();
        LegacyFileRead(store, files, name, {}, message);
        if (store.ResetCount() != resets) return false;
    }
    return true;
}

/// Areas lie under lines and points.
void PutPolygonsBelow(CDigMem& store) {
    constexpr std::int32_t kBottomKey = 9999;
    for (std::int32_t pos = 0; pos < store.BlockCnt(); ++pos) {
        const DigBlock& block = store.Block(pos);
        if (block.blkState >= 0 && HasLegacyEnding(block.path, "pgn")) store.SetLayIndex(block.code.View(), kBottomKey);
    }
}

}  // namespace

bool LegacyDirRead(CDigMem& store, Files& files, std::string_view path, std::int32_t type, const LegacyMessage& message) {
    constexpr std::string_view kPrefixes[] = {"", "k-", "r-"};
    if (!store.InitDone()) return false;
    const std::string_view prefix = kPrefixes[type < 0 || type > 2 ? 0 : type];
    path = TillZero(path);
    const std::string_view separator(&kPathSeparator, EndsInSeparator(path) ? 0 : 1);
    std::string folder;
    std::string pattern;
    if (!Join(folder, path, separator)) return false;

    bool found = false;
    for (const std::string_view ending : {"*.arc", "*.pgn", "*.pnt"}) {
        if (!Join(pattern, prefix, ending)) return false;
        const std::vector<std::string> names = files.List(folder, pattern);
        found = found || !names.empty();
        if (!ReadFiles(store, files, folder, names, message)) return false;
    }
    if (!found) return false;
    PutPolygonsBelow(store);
    store.SortDigIndex();
    return true;
}

}  // namespace orvane
