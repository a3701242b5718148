// File access of the control. Names are code page 932 bytes as the host gave them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

enum class OpenError { None, Missing, Other };

class InputFile {
public:
    InputFile() = default;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    virtual ~InputFile() = default;
    virtual std::uint64_t Size_bytes() const = 0;
    /// Reads up to `size` bytes at `offset`; returns how many were read, fewer only at the end or on an error.
    virtual std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t size) = 0;
};

class OutputFile {
public:
    OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    virtual ~OutputFile() = default;
    /// Appends; false when the system could not take all of it.
    virtual bool Write(const void* data, std::size_t size) = 0;
    /// Hands everything to the system and closes; false when some of it was lost.
    virtual bool Close() = 0;
};

struct FileFacts {
    std::uint64_t size_bytes = 0;
    std::int64_t changeTime_ns = 0;
    bool directory = false;

    bool operator==(const FileFacts&) const = default;
};

class Files {
public:
    Files() = default;
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    virtual ~Files() = default;
    /// Opens to read; others may read but not write while it is open, where the system can hold them to it.
    virtual std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause = nullptr) = 0;
    /// Opens the file that stands beside `base` + `own` under `extension` instead of `own`. Once that one is found, in whatever
    /// case its name is written, `base` is taken as it is written there, and the extension in any case.
    virtual std::unique_ptr<InputFile> OpenSibling(std::string_view base, std::string_view own, std::string_view extension,
                                                   OpenError* cause = nullptr);
    /// Creates or truncates; null when it cannot.
    virtual std::unique_ptr<OutputFile> Create(std::string_view name) = 0;
    /// False when there is no such file.
    virtual bool Facts(std::string_view name, FileFacts& out) = 0;
    /// Names in `directory` that match `pattern` ('*' and '?', without regard to case), sorted by name; no folders.
    virtual std::vector<std::string> List(std::string_view directory, std::string_view pattern) = 0;
};

inline std::unique_ptr<InputFile> Files::OpenSibling(std::string_view base, std::string_view, std::string_view extension,
                                                     OpenError* cause) {
    return OpenRead(std::string(base).append(extension), cause);
}

}  // namespace orvane
