// Writing through other file access, with a memory of what went wrong and a word to who waits for it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/files.h"

namespace orvane {

/// Answers as the files behind it do. They must outlive it.
class WriteWatch : public Files {
public:
    /// Hears what is about to be written, and answers whether it may be: false makes the write fail.
    using Listener = std::function<bool(std::string_view bytes)>;

    explicit WriteWatch(Files& files, Listener listener = {}) : files_(files), listener_(std::move(listener)) {}

    std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause = nullptr) override {
        return files_.OpenRead(name, cause);
    }
    std::unique_ptr<InputFile> OpenSibling(std::string_view base, std::string_view own, std::string_view extension,
                                           OpenError* cause = nullptr) override {
        return files_.OpenSibling(base, own, extension, cause);
    }
    std::unique_ptr<OutputFile> Create(std::string_view name) override;
    bool Facts(std::string_view name, FileFacts& out) override { return files_.Facts(name, out); }
    std::vector<std::string> List(std::string_view directory, std::string_view pattern) override {
        return files_.List(directory, pattern);
    }

    /// The first write that failed: "cannot write m.Ovb: No space left on device", or empty.
    const std::string& Failure() const { return failure_; }

private:
    class Output;
    void Note(const std::string& name, int error);

    Files& files_;
    Listener listener_;
    std::string failure_;
};

}  // namespace orvane
