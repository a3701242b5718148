// Pictures of the map by the name of their file: decoded once, and again when the file has changed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/bmp_file.h"
#include "platform/files.h"

namespace orvane {

/// What is kept. The picture asked for last is kept in any case, so that drawing it many times over reads it once.
struct BitmapFileLimits {
    std::size_t pixels_bytes = std::size_t{64} << 20;
    std::size_t entries = 512;
};

class BitmapFiles {
public:
    /// `files` must outlive this.
    explicit BitmapFiles(Files& files, BitmapFileLimits limits = {}) : files_(files), limits_(limits) {}
    BitmapFiles(const BitmapFiles&) = delete;
    BitmapFiles& operator=(const BitmapFiles&) = delete;

    /// The picture of a BMP file, or null when it cannot be loaded. Each call asks for the file's size and change time; the file
    /// itself is read only when it is new or one of them has changed, and that goes for files that are no picture too. A file
    /// that is not there is looked for again once its folder has changed: a block asks for its image at every item until it has
    /// one. Of what was loaded, the least recently asked for goes first; the caller's own pointer stays good.
    std::shared_ptr<const FilePixels> Load(std::string_view name);

private:
    struct Entry {
        std::string name;
        FileFacts facts;
        std::shared_ptr<const FilePixels> picture;  ///< null: the file is no picture
        std::size_t pixels_bytes = 0;
    };
    using Entries = std::list<Entry>;

    /// A file that was not there, with the nearest folder above it that was.
    struct Missing {
        std::string folder;
        FileFacts facts;
    };

    std::shared_ptr<const FilePixels> LoadOrThrow(std::string_view name);
    bool IsStillMissing(std::string_view name);
    void NoteMissing(std::string_view name);
    void Forget(Entries::iterator entry);
    void KeepLimits();

    Files& files_;
    BitmapFileLimits limits_;
    Entries entries_;                                       ///< the one asked for last in front
    std::map<std::string_view, Entries::iterator> byName_;  ///< keys look into the entries
    std::size_t pixels_bytes_ = 0;
    std::map<std::string, Missing, std::less<>> missing_;
};

}  // namespace orvane
