// File access on the system's wide-character calls.
//
// A name is taken as code page 932 by the project's own table, whatever the code page of the process; one that does not decode is
// taken as UTF-8, which is how List gives the names that code page 932 cannot hold.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace orvane {

class Win32Files final : public Files {
public:
    /// While the file is open, others may read it, but neither write nor delete it. A file that another one has open to write
    /// answers OpenError::Other, and so does a folder.
    std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause = nullptr) override;
    /// While the file is open, others may read it. A folder, and a device like "CON", cannot be created.
    std::unique_ptr<OutputFile> Create(std::string_view name) override;
    /// The change time counts from 1970, UTC.
    bool Facts(std::string_view name, FileFacts& out) override;
    std::vector<std::string> List(std::string_view directory, std::string_view pattern) override;
};

}  // namespace orvane
