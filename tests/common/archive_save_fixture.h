// A folder with an archive, and a map to save there.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/common/archive_save.h"

namespace orvane {

/// Names and contents.
using Folder = std::map<std::string, std::string>;

class ArchiveSaveTest : public ::testing::Test {
protected:
    ArchiveSaveTest() : folder_(std::filesystem::temp_directory_path() / ("orvane_save_" + std::to_string(::getpid()))) {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directory(folder_);
        store.Init();
    }
    ~ArchiveSaveTest() override { std::filesystem::remove_all(folder_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    /// Everything in the folder, folders with a slash.
    Folder All() const {
        Folder all;
        for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(folder_)) {
            const std::string name = entry.path().filename().string();
            if (entry.is_directory()) {
                all[name + "/"] = "";
                continue;
            }
            std::ostringstream content;
            content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            all[name] = content.str();
        }
        return all;
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& [name, content] : All()) names.push_back(name);
        return names;
    }
    void Clear() {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directory(folder_);
    }
    void Put(const Folder& files) {
        Clear();
        for (const auto& [name, content] : files) std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    static void AddItems(CDigMem& to, int count, const char* path) {
        to.DigMemAlloc2("A", 1, kLayLine, path, 0, 0, 0);
        for (int i = 1; i <= count; ++i) {
            to.AddDigDat("A", 1, i, 0);
            const DigPnt pnts[] = {{0.5 * i, 1, 0}, {10, 2, 0}};
            to.SetDigDatPnts("A", 1, i, pnts);
        }
    }
    SavedArchive Save(const std::string& name = "m.Ovb", const std::string& version = "") {
        return SaveArchive(store, Path(name), version);
    }

    CDigMem store;

private:
    std::filesystem::path folder_;
};

}  // namespace orvane
