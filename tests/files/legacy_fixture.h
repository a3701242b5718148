// A store, a folder of legacy files in memory and the messages that their readers show.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "files/legacy_file.h"
#include "platform/file_names.h"
#include "tests/support/memory_files.h"
#include "tests/support/store_dump.h"

namespace orvane {

/// Lists what lies in a folder. Folders are what stands before a name, separator included.
class FolderFiles : public MemoryFiles {
public:
    std::vector<std::string> List(std::string_view directory, std::string_view pattern) override {
        listed.push_back(std::string(directory) + std::string(pattern));
        std::vector<std::string> names;
        for (const auto& [path, file] : files) {
            if (!path.starts_with(directory) || file.directory) continue;
            const std::string name = path.substr(directory.size());
            if (name.find(kPathSeparator) == std::string::npos && MatchAnyCase(pattern, name)) names.push_back(name);
        }
        return names;
    }
    std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause = nullptr) override {
        opened.emplace_back(name);
        return MemoryFiles::OpenRead(name, cause);
    }

    std::vector<std::string> listed;
    std::vector<std::string> opened;
};

inline constexpr std::int32_t kSheet = 533945;

/// The first line of a file of that sheet: `records` counts it, the items and the point lines.
inline std::string Header(std::int32_t records, std::int32_t items, std::int32_t meshNo = kSheet) {
    return "FH1," + std::to_string(meshNo) + ",name," + std::to_string(records) + "," + std::to_string(items) +
           ",1,1,10,20,9990,9980\r\n";
}

class LegacyTest : public ::testing::Test {
protected:
    LegacyTest() { store.Init(); }
    ~LegacyTest() override { ArrayFaults::Clear(); }

    bool Read(const std::string& name, std::string content, std::string_view arcCode = {}) {
        files.Put(name, std::move(content));
        return LegacyFileRead(store, files, name, arcCode, Message());
    }
    bool ReadFolder(std::string_view path, std::int32_t type = 0) { return LegacyDirRead(store, files, path, type, Message()); }
    LegacyMessage Message() {
        return [this](std::string_view text, std::string_view title, MessageIcon icon) {
            messages.push_back(std::string(text) + "|" + std::string(title) + "|" +
                               std::to_string(static_cast<std::uint32_t>(icon)));
            if (onMessage) onMessage();
        };
    }
    /// What the operator reads when points and header disagree.
    static std::string Contradiction(const std::string& path) {
        return path +
               "\x82\xCC\x83\x66\x81\x5B\x83\x5E\x82\xC9\x96\xB5\x8F\x82\x82\xAA\x97\x4C\x82\xE8\x82\xDC\x82\xB7\x81\x42"
               "|DATA FORMAT ERROR|48";
    }
    static std::string OutOfMemory() { return "new memory allocateion error!|ORVANE4|48"; }

    /// The points of an item of the last block, "x y z;" each.
    std::string Points(std::size_t item) const {
        std::ostringstream out;
        const DigDat& dat = LastBlock().dats[item];
        for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
            const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
            out << pnt.x << ' ' << pnt.y << ' ' << pnt.z << ';';
        }
        return out.str();
    }
    const DigBlock& LastBlock() const { return store.Block(store.BlockCnt() - 1); }
    static std::vector<std::int32_t> Rectangle(const DigDat& dat) {
        return {dat.rect.left, dat.rect.top, dat.rect.right, dat.rect.bottom};
    }

    CDigMem store;
    FolderFiles files;
    std::vector<std::string> messages;
    std::function<void()> onMessage;
};

}  // namespace orvane
