#include "platform/bitmap_files.h"

#include <iterator>
#include <utility>

#include "platform/file_names.h"

namespace orvane {

namespace {

bool SameFacts(const FileFacts& a, const FileFacts& b) {
    return a.size_bytes == b.size_bytes && a.changeTime_ns == b.changeTime_ns && a.directory == b.directory;
}

#ifdef _WIN32
constexpr bool kBackslashParts = true;
#else
constexpr bool kBackslashParts = false;
#endif

/// The folder that a name lies in; "." for a bare name. The second byte of a character may look like a backslash.
std::string FolderOf(std::string_view name) {
    const bool utf8 = IsUtf8(name);
    std::size_t end = std::string_view::npos;
    for (std::size_t at = 0; at < name.size(); at += CharacterLength(name.substr(at), utf8)) {
        if (name[at] == '/' || (kBackslashParts && name[at] == '\\')) end = at;
    }
    if (end == std::string_view::npos) return ".";
    return std::string(name.substr(0, end == 0 ? 1 : end));
}

}  // namespace

std::shared_ptr<const FilePixels> BitmapFiles::Load(std::string_view name) {
    try {
        return LoadOrThrow(name);
    } catch (...) {
        // No memory for the bookkeeping: as good as a picture that cannot be loaded, and asked for again the next time.
        return nullptr;
    }
}

bool BitmapFiles::IsStillMissing(std::string_view name) {
    const auto found = missing_.find(name);
    if (found == missing_.end()) return false;
    FileFacts facts;
    if (files_.Facts(found->second.folder, facts) && SameFacts(facts, found->second.facts)) return true;
    missing_.erase(found);
    return false;
}

/// Only a change in the nearest folder that is there can bring the file, or the folders between, into being.
void BitmapFiles::NoteMissing(std::string_view name) {
    if (missing_.size() >= limits_.entries) missing_.clear();
    std::string folder = FolderOf(name);
    FileFacts facts;
    while (!files_.Facts(folder, facts)) {
        std::string above = FolderOf(folder);
        if (above == folder) return;
        folder = std::move(above);
    }
    missing_.emplace(std::string(name), Missing{std::move(folder), facts});
}

std::shared_ptr<const FilePixels> BitmapFiles::LoadOrThrow(std::string_view name) {
    if (IsStillMissing(name)) return nullptr;
    FileFacts facts;
    const bool there = files_.Facts(name, facts) && !facts.directory;
    if (const auto found = byName_.find(name); found != byName_.end()) {
        const Entries::iterator entry = found->second;
        if (there && SameFacts(entry->facts, facts)) {
            entries_.splice(entries_.begin(), entries_, entry);
            return entry->picture;
        }
        Forget(entry);
    }
    if (!there) {
        NoteMissing(name);
        return nullptr;
    }

    // That a file does not open, or no memory was left for it, says nothing of what it holds, and may be over in a moment without
    // any change of the file.
    const std::unique_ptr<InputFile> file = files_.OpenRead(name);
    if (file == nullptr) return nullptr;
    auto read = std::make_shared<FilePixels>();
    bool passing = false;
    std::shared_ptr<const FilePixels> picture;
    if (ReadBmp(*file, *read, &passing)) picture = std::move(read);
    if (passing) return nullptr;
    const std::size_t pixels_bytes = picture == nullptr ? 0 : picture->pixels.size() * sizeof(Rgb);
    Entries added;
    added.push_front({std::string(name), facts, picture, pixels_bytes});
    byName_.emplace(added.front().name, added.begin());
    entries_.splice(entries_.begin(), added);
    pixels_bytes_ += pixels_bytes;
    KeepLimits();
    return picture;
}

void BitmapFiles::Forget(Entries::iterator entry) {
    pixels_bytes_ -= entry->pixels_bytes;
    byName_.erase(entry->name);
    entries_.erase(entry);
}

void BitmapFiles::KeepLimits() {
    while (entries_.size() > 1 && (pixels_bytes_ > limits_.pixels_bytes || entries_.size() > limits_.entries)) {
        Forget(std::prev(entries_.end()));
    }
}

}  // namespace orvane
