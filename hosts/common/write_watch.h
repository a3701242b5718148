// Writing through other file access, with a memory of what went wrong.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace orvane {

/// Answers as the files behind it do. They must outlive it.
class WriteWatch : public Files {
public:
    explicit WriteWatch(Files& files) : files_(files) {}

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
    std::string failure_;
};

}  // namespace orvane
