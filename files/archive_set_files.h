// The files of one archive, found from its data file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "files/archive_format.h"
#include "platform/files.h"

namespace orvane {

/// Opens the siblings of a data file as those of the file that stands there, so that of two archives whose names differ in case
/// only none gets a file of the other. All else is as with the files behind it, which must outlive this, as must `base`.
class ArcSetFiles : public Files {
public:
    ArcSetFiles(Files& files, std::string_view base, bool text) : files_(files), base_(base), data_(text ? kTextExt : kBinExt) {}

    std::unique_ptr<InputFile> OpenRead(std::string_view name, OpenError* cause = nullptr) override {
        const bool isSibling = name.starts_with(base_) && name.substr(base_.size()) != data_;
        return isSibling ? files_.OpenSibling(base_, data_, name.substr(base_.size()), cause) : files_.OpenRead(name, cause);
    }
    std::unique_ptr<OutputFile> Create(std::string_view name) override { return files_.Create(name); }
    bool Facts(std::string_view name, FileFacts& out) override { return files_.Facts(name, out); }
    std::vector<std::string> List(std::string_view directory, std::string_view pattern) override {
        return files_.List(directory, pattern);
    }

private:
    Files& files_;
    std::string_view base_;
    std::string_view data_;
};

}  // namespace orvane
