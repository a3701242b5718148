// Files that are bytes in memory: for tests that make their files, and for fuzzing.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/files.h"

namespace orvane {

/// Reads from bytes that somebody else holds. It may claim to be longer than it is, as a file that shrinks while it is read.
class MemoryInputFile : public InputFile {
public:
    explicit MemoryInputFile(std::string_view content, std::uint64_t claimed_bytes = 0)
        : content_(content), size_bytes_((std::max)(claimed_bytes, std::uint64_t{content.size()})) {}

    std::uint64_t Size_bytes() const override { return size_bytes_; }
    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t size) override {
        if (offset >= content_.size()) return 0;
        const std::size_t got = (std::min)(size, content_.size() - static_cast<std::size_t>(offset));
        std::memcpy(buffer, content_.data() + offset, got);
        return got;
    }

private:
    std::string_view content_;
    std::uint64_t size_bytes_;
};

/// Reading only. Names are exact.
class MemoryFiles : public Files {
public:
    struct File {
        std::string content;
        std::int64_t changeTime_ns = 0;
        bool directory = false;
        bool locked = false;  ///< there, but cannot be opened
    };

    void Put(const std::string& name, std::string content, std::int64_t changeTime_ns = 0) {
        files[name] = {std::move(content), changeTime_ns};
    }

    std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause = nullptr) override {
        ++openCnt;
        const auto found = files.find(name);
        const bool there = found != files.end();
        const bool opens = there && !found->second.directory && !found->second.locked;
        if (cause != nullptr) *cause = opens ? OpenError::None : there ? OpenError::Other : OpenError::Missing;
        return opens ? std::make_unique<MemoryInputFile>(found->second.content) : nullptr;
    }
    std::unique_ptr<OutputFile> Create(std::string_view) override { return nullptr; }
    bool Facts(std::string_view name, FileFacts& out) override {
        ++factsCnt;
        const auto found = files.find(name);
        if (found == files.end()) return false;
        out = {found->second.content.size(), found->second.changeTime_ns, found->second.directory};
        return true;
    }
    std::vector<std::string> List(std::string_view, std::string_view) override { return {}; }

    std::map<std::string, File, std::less<>> files;
    std::int32_t openCnt = 0;   ///< how often OpenRead was asked
    std::int32_t factsCnt = 0;  ///< how often Facts was asked
};

}  // namespace orvane
