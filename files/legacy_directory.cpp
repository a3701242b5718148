// All legacy files of a folder. Lines come before the polygons that are made of them.
#include <iterator>
#include <string>
#include <utility>
#include <vector>

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

/// The names of the files to read, kind after kind.
struct Found {
    std::vector<std::string> names;
    bool whole = true;  ///< false without memory
};

Found FindFiles(Files& files, const std::string& folder, std::string_view prefix) {
    Found found;
    std::string pattern;
    for (const std::string_view ending : {"*.arc", "*.pgn", "*.pnt"}) {
        found.whole = Join(pattern, prefix, ending);
        if (!found.whole) break;
        std::vector<std::string> names = files.List(folder, pattern);
        std::move(names.begin(), names.end(), std::back_inserter(found.names));
    }
    return found;
}

enum class Reading : std::uint8_t { Done, Cancelled, Emptied };

Reading ReadFiles(CDigMem& store, Files& files, std::string_view folder, const std::vector<std::string>& names,
                  const LegacyMessage& message, const LegacyProgress& progress) {
    const std::uint32_t resets = store.ResetCount();
    std::string name;
    double read = 0;
    for (const std::string& found : names) {
        if (Join(name, folder, found)) LegacyFileRead(store, files, name, {}, message);
        if (store.ResetCount() != resets) return Reading::Emptied;
        const bool goesOn = !progress || progress(++read / static_cast<double>(names.size()));
        if (store.ResetCount() != resets) return Reading::Emptied;
        if (!goesOn) return Reading::Cancelled;
    }
    return Reading::Done;
}

}  // namespace

void LegacyPolygonsBelow(CDigMem& store) {
    constexpr std::int32_t kBottomKey = 9999;
    for (std::int32_t pos = 0; pos < store.BlockCnt(); ++pos) {
        const DigBlock& block = store.Block(pos);
        if (block.blkState >= 0 && HasLegacyEnding(block.path, "pgn")) store.SetLayIndex(block.code.View(), kBottomKey);
    }
    store.SortDigIndex();
}

bool LegacyDirRead(CDigMem& store, Files& files, std::string_view path, std::int32_t type, const LegacyMessage& message,
                   const LegacyProgress& progress) {
    constexpr std::string_view kPrefixes[] = {"", "k-", "r-"};
    if (!store.InitDone()) return false;
    const std::string_view prefix = kPrefixes[type < 0 || type > 2 ? 0 : type];
    path = TillZero(path);
    const std::string_view separator(&kPathSeparator, EndsInSeparator(path) ? 0 : 1);
    std::string folder;
    if (!Join(folder, path, separator)) return false;
    const Found found = FindFiles(files, folder, prefix);
    if (!found.whole || found.names.empty()) return false;
    const Reading reading = ReadFiles(store, files, folder, found.names, message, progress);
    if (reading == Reading::Emptied) return false;
    LegacyPolygonsBelow(store);
    return reading == Reading::Done;
}

}  // namespace orvane
