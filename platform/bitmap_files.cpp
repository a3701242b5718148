#include "platform/bitmap_files.h"

#include <iterator>

namespace orvane {

namespace {

std::shared_ptr<const FilePixels> Decode(InputFile& file) {
    auto picture = std::make_shared<FilePixels>();
    return ReadBmp(file, *picture) ? picture : nullptr;
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

std::shared_ptr<const FilePixels> BitmapFiles::LoadOrThrow(std::string_view name) {
    FileFacts facts;
    const bool there = files_.Facts(name, facts) && !facts.directory;
    if (const auto found = byName_.find(name); found != byName_.end()) {
        const Entries::iterator entry = found->second;
        if (there && entry->facts.size_bytes == facts.size_bytes && entry->facts.changeTime_ns == facts.changeTime_ns) {
            entries_.splice(entries_.begin(), entries_, entry);
            return entry->picture;
        }
        Forget(entry);
    }
    if (!there) return nullptr;

    // That a file does not open says nothing of what it holds, and may be over in a moment without any change of the file.
    const std::unique_ptr<InputFile> file = files_.OpenRead(name);
    if (file == nullptr) return nullptr;
    std::shared_ptr<const FilePixels> picture = Decode(*file);
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
