// What the targets of the file readers share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "tests/support/memory_files.h"

namespace orvane {

/// Whatever its name, there is one file, and it holds the input.
class OneFile : public Files {
public:
    OneFile(const std::uint8_t* data, std::size_t size) : content_(reinterpret_cast<const char*>(data), size) {}

    std::unique_ptr<InputFile> OpenRead(std::string_view, OpenError*) override {
        return std::make_unique<MemoryInputFile>(content_);
    }
    std::unique_ptr<OutputFile> Create(std::string_view) override { return nullptr; }
    bool Facts(std::string_view, FileFacts&) override { return false; }
    std::vector<std::string> List(std::string_view, std::string_view) override { return {}; }

private:
    std::string_view content_;
};

/// Ends the run as a crash, so that the fuzzer keeps the input.
inline void Require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace orvane
