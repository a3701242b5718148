// File access on the C++ standard library alone. No call throws: a bad name, a folder in place of a file and a file without
// permission all answer as the call's failure.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace orvane {

class StdFiles : public Files {
public:
    /// Turns a name into other bytes; nothing when it does not convert.
    using NameConverter = std::function<std::optional<std::string>(std::string_view)>;

    /// From code page 932 to the system's bytes. A name is tried converted first, then as its bytes stand.
    NameConverter toSystem;
    /// From the system's bytes to code page 932, for the names that List gives; one that does not convert is given as it stands.
    /// What it makes the same is one name, where there is none that is meant exactly or in another case.
    NameConverter toHost;

    std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause = nullptr) override;
    std::unique_ptr<InputFile> OpenSibling(std::string_view base, std::string_view own, std::string_view extension,
                                           OpenError* cause = nullptr) override;
    std::unique_ptr<OutputFile> Create(std::string_view name) override;
    /// The change time counts from 1970, UTC.
    bool Facts(std::string_view name, FileFacts& out) override;
    std::vector<std::string> List(std::string_view directory, std::string_view pattern) override;

    /// The system's own name of what stands under `name`, for libraries that open files themselves; empty when there is nothing.
    std::string SystemPath(std::string_view name) const;

private:
    std::vector<std::string> SystemNames(std::string_view name) const;
    std::string HostName(const std::string& systemName) const;
    /// The first of the name's forms that something stands under, exactly, in another case, or by a name that is the same to the
    /// host; empty when there is none.
    std::filesystem::path Find(std::string_view name) const;
};

}  // namespace orvane
