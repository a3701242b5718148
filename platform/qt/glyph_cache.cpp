#include "platform/qt/glyph_cache.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

std::size_t PixelsOf(const GlyphImage& image) {
    return static_cast<std::size_t>(image.width_px) * static_cast<std::size_t>(image.height_px);
}

}  // namespace

std::optional<GlyphImage> GlyphCache::Find(const GlyphKey& key) {
    const auto young = young_.entries.find(key);
    if (young != young_.entries.end()) {
        GlyphImage image = young->second.image;
        image.coverage = young_.bytes.data() + young->second.at;
        return image;
    }
    const auto old = old_.entries.find(key);
    if (old == old_.entries.end()) return std::nullopt;
    GlyphImage image = old->second.image;
    image.coverage = old_.bytes.data() + old->second.at;
    if (HasRoom(young_, PixelsOf(image))) {
        std::uint8_t* const copy = Append(key, image);
        std::copy_n(image.coverage, PixelsOf(image), copy);
        image.coverage = copy;
    }
    return image;
}

std::uint8_t* GlyphCache::Add(const GlyphKey& key, const GlyphImage& size) {
    if (!HasRoom(young_, PixelsOf(size))) {
        std::swap(young_, old_);
        young_.entries.clear();
        young_.bytes.clear();
    }
    return Append(key, size);
}

std::uint8_t* GlyphCache::Append(const GlyphKey& key, const GlyphImage& size) {
    const std::size_t at = young_.bytes.size();
    young_.bytes.resize(at + PixelsOf(size));
    young_.entries.insert_or_assign(key, Entry{at, size});
    return young_.bytes.data() + at;
}

}  // namespace orvane
