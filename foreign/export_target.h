// Where an export goes: written aside first, put in its place when it is whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "foreign/export.h"
#include "foreign/file_lock.h"

namespace orvane {

/// Paths of hosts are UTF-8, whatever the system's own.
std::filesystem::path PathOfUtf8(const std::string& text);

/// Whether a file of this name would be one of an archive's, whatever the case of its ending.
bool HasArchiveExtension(std::string_view name);

/// A fault with its sentence.
struct ExportFailure {
    ExportFault kind = ExportFault::None;
    std::string text;
    explicit operator bool() const { return kind != ExportFault::None; }
};

/// One file (with the siblings that the format gives it) or one folder.
class ExportTarget {
public:
    ExportTarget() = default;
    /// Removes what was written aside, unless a publish that failed could not put the old output back.
    ~ExportTarget();
    ExportTarget(const ExportTarget&) = delete;
    ExportTarget& operator=(const ExportTarget&) = delete;

    /// Finds out what stands there and makes the folder to write in.
    ExportFailure Prepare(const ExportOptions& options, ExportFormat format);
    /// Whether the output is one file of one layer.
    bool OneLayerOnly() const { return !folder_ && !FactsOf(format_).manyLayers; }
    /// The file to write for a layer, aside; `name` is used where the output is a folder.
    std::string WritePath(const std::string& name) const;
    /// The same when it is in its place.
    std::string FinalPath(const std::string& name) const;
    /// Puts everything in its place. What stood there goes, or is back there when this fails.
    ExportFailure Publish();

private:
    ExportFailure CheckName() const;
    ExportFailure CheckFile() const;
    ExportFailure CheckFolder() const;
    ExportFailure MakeAside();
    bool TakeAside(const std::filesystem::path& folder, std::error_code& error);
    ExportFailure PublishFile();
    ExportFailure PublishFolder();
    std::string FileName(const std::string& name) const;

    ExportFormat format_ = ExportFormat::GeoPackage;
    bool folder_ = false;
    bool overwrite_ = false;
    std::vector<std::string> inputs_;
    std::string shown_;            // the path as it was given
    std::filesystem::path final_;  // the file or the folder
    std::filesystem::path aside_;  // holds "new" and "old"; empty until it was made
    FileLock lock_;                // on that folder: it is in use
};

}  // namespace orvane
