// Coverage of glyphs that were drawn, to be used again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace orvane {

/// All that decides a glyph's pixels, packed by its maker.
struct GlyphKey {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    friend bool operator==(const GlyphKey&, const GlyphKey&) = default;
};

/// 0 to 255 for each pixel, row by row from the top, without gaps.
struct GlyphImage {
    const std::uint8_t* coverage = nullptr;
    std::int32_t left = 0;  ///< of its first pixel, from the glyph's origin
    std::int32_t top = 0;   ///< likewise, counted down
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
};

/// Keeps the images of late in two halves: what is asked for gathers in the younger; when that is full the older is dropped and
/// the younger takes its place. So the memory is bounded, and what is in use stays without a list of turns.
class GlyphCache {
public:
    /// Of both halves together, what belongs to an image besides its pixels included.
    static constexpr std::size_t kMaxBytes = std::size_t{16} << 20;
    /// The most pixels of one image. Larger glyphs are better drawn anew than kept.
    static constexpr std::size_t kMaxImageBytes = std::size_t{1} << 16;

    /// Its pixels are good until the next call.
    std::optional<GlyphImage> Find(const GlyphKey& key);
    /// Makes room for an image of zeros and tells where its pixels are. REQUIRES: not in the cache; at most kMaxImageBytes.
    std::uint8_t* Add(const GlyphKey& key, const GlyphImage& size);
    std::size_t UsedBytes() const { return UsedBytes(young_) + UsedBytes(old_); }

private:
    struct Hash {
        std::size_t operator()(const GlyphKey& key) const noexcept {
            const std::uint64_t mixed = (key.first ^ key.second * 0x9E3779B97F4A7C15u) * 0xD6E8FEB86659FD93u;
            return static_cast<std::size_t>(mixed ^ mixed >> 32);
        }
    };
    struct Entry {
        std::size_t at = 0;
        GlyphImage image;
    };
    struct Half {
        std::unordered_map<GlyphKey, Entry, Hash> entries;
        std::vector<std::uint8_t> bytes;
    };
    static constexpr std::size_t kEntryBytes = 96;

    static std::size_t UsedBytes(const Half& half) { return half.bytes.size() + half.entries.size() * kEntryBytes; }
    static bool HasRoom(const Half& half, std::size_t size_bytes) {
        return UsedBytes(half) + size_bytes + kEntryBytes <= kMaxBytes / 2;
    }
    std::uint8_t* Append(const GlyphKey& key, const GlyphImage& size);

    Half young_;
    Half old_;
};

}  // namespace orvane
