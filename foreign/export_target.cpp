#include "foreign/export_target.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>
#include <vector>

#include "files/archive_format.h"
#include "platform/file_names.h"

namespace orvane {

namespace {

namespace fs = std::filesystem;

std::string ToUtf8(const fs::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

bool IsThere(const fs::path& path) {
    std::error_code ignored;
    return fs::symlink_status(path, ignored).type() != fs::file_type::not_found;
}

// What stands there instead of a file, to be said behind its name, or null.
const char* WhatIsNoFile(const fs::path& path) {
    std::error_code ignored;
    const fs::file_status there = fs::status(path, ignored);
    if (fs::is_directory(there)) return " is a folder";
    return fs::is_other(there) && there.type() != fs::file_type::unknown ? " is a device or a pipe" : nullptr;
}

// What a file of the format may have beside it, of this name.
std::vector<fs::path> SiblingsOf(const fs::path& file, ExportFormat format) {
    std::vector<fs::path> paths;
    for (const std::string_view extension : FactsOf(format).siblings) {
        paths.push_back(fs::path(file).replace_extension(fs::path(extension)));
    }
    return paths;
}

bool BelongsToFormat(const fs::path& file, ExportFormat format) {
    const std::string name = ToUtf8(file.filename());
    if (HasExtensionOf(format, name)) return true;
    const auto siblings = FactsOf(format).siblings;
    return std::any_of(siblings.begin(), siblings.end(),
                       [&name](std::string_view extension) { return name.ends_with(extension); });
}

// What in the folder is no file of the format, or nothing.
fs::path Stranger(const fs::path& folder, ExportFormat format, std::error_code& error) {
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::error_code ignored;
        if (!fs::is_regular_file(it->symlink_status(ignored)) || !BelongsToFormat(it->path(), format)) return it->path();
    }
    return {};
}

// Whether the input is the output's file or lies in the output's folder, by whatever way the two are named.
bool IsIn(const fs::path& output, const fs::path& input) {
    std::error_code error;
    if (fs::equivalent(output, input, error)) return true;
    const fs::path whole = fs::canonical(output, error);
    if (error || !fs::is_directory(whole, error)) return false;
    const fs::path inner = fs::weakly_canonical(input, error);
    if (error) return false;
    return std::mismatch(whole.begin(), whole.end(), inner.begin(), inner.end()).first == whole.end();
}

// A journal beside the file would be taken for the new file's own, and spoil it.
fs::path JournalOf(const fs::path& file) {
    for (const char* tail : {"-journal", "-wal", "-shm"}) {
        fs::path journal = file;
        journal += tail;
        if (IsThere(journal)) return journal;
    }
    return {};
}

constexpr const char* kAsideName = ".orvane-export-";

// What an export that was killed wrote aside: its folder is locked no longer. One that holds what stood in the output's place is
// all that there is of it, and stays.
void ClearLeftovers(const fs::path& parent) {
    std::error_code error;
    std::vector<fs::path> found;
    for (fs::directory_iterator it(parent, error), end; !error && it != end; it.increment(error)) {
        if (ToUtf8(it->path().filename()).starts_with(kAsideName)) found.push_back(it->path());
    }
    for (const fs::path& folder : found) {
        FileLock lock;
        if (lock.TakeFolder(folder.string()) != FileLock::Outcome::Taken) continue;
        std::error_code ignored;
        const bool holdsOutput = fs::exists(folder / "old", ignored) && !fs::is_empty(folder / "old", ignored);
        if (!holdsOutput) fs::remove_all(folder, ignored);
    }
}

ExportFailure NotWritten(const std::string& what, const std::error_code& error) {
    return {ExportFault::NotWritten, "cannot write " + what + ": " + error.message()};
}

// Files on their way from one place to the other; what was moved can go back.
class Moves {
public:
    bool Move(const fs::path& from, const fs::path& to, std::error_code& error) {
        fs::rename(from, to, error);
        if (!error) done_.emplace_back(from, to);
        return !error;
    }
    bool Undo() {
        bool whole = true;
        for (auto it = done_.rbegin(); it != done_.rend(); ++it) {
            std::error_code error;
            fs::rename(it->second, it->first, error);
            whole = whole && !error;
        }
        done_.clear();
        return whole;
    }

private:
    std::vector<std::pair<fs::path, fs::path>> done_;
};

}  // namespace

bool HasArchiveExtension(std::string_view name) {
    constexpr std::array kExtensions = {kLayerExt, kBinExt, kTextExt, kIndexExt, kManageExt};
    return std::any_of(kExtensions.begin(), kExtensions.end(), [name](std::string_view extension) {
        return name.size() >= extension.size() && EqualAnyCase(name.substr(name.size() - extension.size()), extension);
    });
}

fs::path PathOfUtf8(const std::string& text) { return fs::path(std::u8string(text.begin(), text.end())); }

ExportTarget::~ExportTarget() {
    std::error_code ignored;
    if (!aside_.empty()) fs::remove_all(aside_, ignored);
}

ExportFailure ExportTarget::Prepare(const ExportOptions& options, ExportFormat format) {
    format_ = format;
    overwrite_ = options.overwrite;
    inputs_ = options.inputs;
    shown_ = options.path;
    final_ = PathOfUtf8(shown_).lexically_normal();
    if (!final_.has_filename()) final_ = final_.parent_path();  // a separator at its end
    folder_ = !FactsOf(format).manyLayers && !HasExtensionOf(format, ToUtf8(final_));
    if (ExportFailure failure = CheckName()) return failure;
    if (ExportFailure failure = folder_ ? CheckFolder() : CheckFile()) return failure;
    return MakeAside();
}

ExportFailure ExportTarget::CheckName() const {
    if (!final_.has_filename() || final_.filename() == "." || final_.filename() == "..") {
        return {ExportFault::BadOption, "no name to write to: " + shown_};
    }
    if (HasArchiveExtension(ToUtf8(final_.filename()))) {
        return {ExportFault::BadOption, shown_ + " is the name of an archive's file, and no export takes its place"};
    }
    const auto isThere = [this](const std::string& input) { return IsIn(final_, fs::path(input)); };
    if (std::any_of(inputs_.begin(), inputs_.end(), isThere)) {
        return {ExportFault::BadOption,
                shown_ + (folder_ ? " holds a file that the map was read from" : " is a file that the map was read from")};
    }
    return {};
}

ExportFailure ExportTarget::MakeAside() {
    const fs::path parent = final_.has_parent_path() ? final_.parent_path() : fs::path(".");
    std::error_code error;
    if (!fs::is_directory(parent, error)) {
        return {ExportFault::NotWritten, "cannot write " + shown_ + ": there is no folder " + ToUtf8(parent)};
    }
    ClearLeftovers(parent);
    // In the same folder, so that what is written can be renamed into its place.
    constexpr int kTries = 1000;  // those before it are in use
    for (int n = 1; n <= kTries && aside_.empty(); ++n) {
        const fs::path folder = parent / (kAsideName + std::to_string(n));
        if (!fs::create_directory(folder, error)) {
            if (error) break;
            continue;
        }
        if (TakeAside(folder, error)) {
            aside_ = folder;
        } else if (error && error != std::errc::no_such_file_or_directory) {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
            break;
        }
    }
    if (aside_.empty()) return NotWritten(shown_, error);
    return {};
}

/// False, without an error or with that of a missing folder, when another export clears the folder away before it is locked.
/// Where the system cannot lock there is nobody who could.
bool ExportTarget::TakeAside(const fs::path& folder, std::error_code& error) {
    return lock_.TakeFolder(folder.string()) != FileLock::Outcome::Busy && fs::create_directory(folder / "old", error) &&
           fs::create_directory(folder / "new", error);
}

ExportFailure ExportTarget::CheckFile() const {
    std::vector<fs::path> paths = SiblingsOf(final_, format_);
    paths.insert(paths.begin(), final_);
    for (const fs::path& path : paths) {
        // Those beside the file would go with it, whatever they are.
        const char* what = WhatIsNoFile(path);
        if (what != nullptr) return {ExportFault::Exists, (path == final_ ? shown_ : ToUtf8(path)) + what};
    }
    const auto there = std::find_if(paths.begin(), paths.end(), IsThere);
    if (there != paths.end() && !overwrite_) {
        return {ExportFault::Exists, ToUtf8(*there) + " exists; --overwrite replaces it"};
    }
    if (format_ == ExportFormat::GeoPackage) {
        if (const fs::path journal = JournalOf(final_); !journal.empty()) {
            return {ExportFault::Exists,
                    ToUtf8(journal) + " exists: another program has " + shown_ + " open, or left it unfinished"};
        }
    }
    return {};
}

ExportFailure ExportTarget::CheckFolder() const {
    if (!IsThere(final_)) return {};
    std::error_code error;
    if (!fs::is_directory(final_, error)) return {ExportFault::Exists, shown_ + " exists and is no folder"};
    const bool empty = fs::is_empty(final_, error);
    if (!error && !empty && !overwrite_)
        return {ExportFault::Exists, shown_ + " exists and is not empty; --overwrite replaces it"};
    const fs::path stranger = error ? fs::path() : Stranger(final_, format_, error);
    if (error) return NotWritten(shown_, error);
    if (!stranger.empty()) {
        return {ExportFault::Exists, shown_ + " is not replaced, because it holds more than " + FactsOf(format_).name +
                                         " files: " + ToUtf8(stranger.filename())};
    }
    return {};
}

std::string ExportTarget::FileName(const std::string& name) const {
    return folder_ ? name + std::string(FactsOf(format_).extensions.front()) : ToUtf8(final_.filename());
}

std::string ExportTarget::WritePath(const std::string& name) const { return ToUtf8(aside_ / "new" / PathOfUtf8(FileName(name))); }

std::string ExportTarget::FinalPath(const std::string& name) const {
    return ToUtf8(folder_ ? final_ / PathOfUtf8(FileName(name)) : final_);
}

ExportFailure ExportTarget::Publish() {
    // The world may have changed while the export ran.
    if (ExportFailure failure = folder_ ? CheckFolder() : CheckFile()) return failure;
    return folder_ ? PublishFolder() : PublishFile();
}

ExportFailure ExportTarget::PublishFile() {
    Moves moves;
    std::error_code error;
    std::vector<fs::path> old = SiblingsOf(final_, format_);
    // A file without siblings is replaced by the rename itself, so that the name is never without one.
    if (!old.empty()) old.push_back(final_);
    for (const fs::path& path : old) {
        if (!error && IsThere(path)) moves.Move(path, aside_ / "old" / path.filename(), error);
    }
    std::vector<fs::path> made;
    if (!error) {
        for (fs::directory_iterator it(aside_ / "new", error), end; !error && it != end; it.increment(error)) {
            made.push_back(it->path());
        }
    }
    for (const fs::path& path : made) {
        if (!error) moves.Move(path, final_.parent_path() / path.filename(), error);
    }
    if (!error) return {};
    const fs::path aside = aside_;
    if (moves.Undo()) return NotWritten(shown_, error);
    aside_.clear();
    return {ExportFault::NotWritten,
            "cannot write " + shown_ + ": " + error.message() + "; what stood there is in " + ToUtf8(aside)};
}

ExportFailure ExportTarget::PublishFolder() {
    Moves moves;
    std::error_code error;
    if (IsThere(final_)) moves.Move(final_, aside_ / "old" / "folder", error);
    if (!error) moves.Move(aside_ / "new", final_, error);
    if (!error) return {};
    const fs::path aside = aside_;
    if (moves.Undo()) return NotWritten(shown_, error);
    aside_.clear();
    return {ExportFault::NotWritten,
            "cannot write " + shown_ + ": " + error.message() + "; what stood there is in " + ToUtf8(aside)};
}

}  // namespace orvane
