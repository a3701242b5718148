// A surface to draw texts on, and where ink is on it. No expectation rests on which fonts are installed, only that one of them is
// Japanese.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/cp932.h"
#include "platform/qt/text_painter.h"

namespace orvane {

constexpr Rgb kInk = 0x000000;
constexpr Rgb kPaper = 0xFFFFFF;
constexpr Rgb kCellColor = 0x00FFFF;

/// Wide spaces: their cell can be filled and underlined, and they have no ink.
inline const std::string kBlanks = *EncodeCp932("　　　");
inline const std::string kJapanese = *EncodeCp932("札幌市国道");

inline Font MakeFont(std::int32_t height_px, std::string_view faceUtf8 = "標準明朝") {
    Font font;
    font.height_px = height_px;
    const std::string bytes = *EncodeCp932(faceUtf8);
    std::copy_n(bytes.begin(), (std::min)(bytes.size(), font.faceName.size()), font.faceName.begin());
    return font;
}

inline TextLook MakeLook(const Font& font, BkMode mode = BkMode::Transparent, std::uint32_t align = 0) {
    return {font, kInk, kCellColor, mode, align};
}

class TextSheet {
public:
    TextSheet(std::int32_t width_px, std::int32_t height_px)
        : pixels_(static_cast<std::size_t>(width_px) * static_cast<std::size_t>(height_px), ToPixel(kPaper)),
          surface_{pixels_.data(), width_px, width_px, height_px} {
        Clip({surface_.Bounds()});
    }
    TextSheet(const TextSheet&) = delete;
    TextSheet& operator=(const TextSheet&) = delete;

    /// Rectangles as ClipArea has them.
    void Clip(const std::vector<Rect>& rects) {
        clip_ = {rects, {}};
        if (!rects.empty()) clip_.bounds = rects.front();
        for (const Rect& r : rects) {
            Rect& b = clip_.bounds;
            b = {(std::min)(b.left, r.left), (std::min)(b.top, r.top), (std::max)(b.right, r.right),
                 (std::max)(b.bottom, r.bottom)};
        }
    }
    void Draw(const TextLook& look, std::int32_t x, std::int32_t y, std::string_view text) {
        TextPainter::OfThread().Draw(surface_, clip_, look, x, y, text);
    }

    Pixel At(std::int32_t x, std::int32_t y) const { return surface_.Row(y)[x]; }
    const std::vector<Pixel>& Pixels() const { return pixels_; }
    const PixelSurface& Surface() const { return surface_; }
    const ClipArea& Area() const { return clip_; }

    /// The smallest rectangle round all pixels that are no longer paper; all zeros when there are none.
    Rect Box() const {
        Rect box{surface_.width_px, surface_.height_px, 0, 0};
        ForEachInk([&](std::int32_t x, std::int32_t y) {
            box = {(std::min)(box.left, x), (std::min)(box.top, y), (std::max)(box.right, x + 1), (std::max)(box.bottom, y + 1)};
        });
        return box.left < box.right ? box : Rect{};
    }
    int Count() const {
        int count = 0;
        ForEachInk([&](std::int32_t, std::int32_t) { ++count; });
        return count;
    }
    /// The sum of how dark the pixels are, in whole black pixels.
    double Darkness() const {
        double sum = 0;
        for (const Pixel p : pixels_) sum += (255 - (p & 0xFF)) / 255.0;
        return sum;
    }
    template <class Visit>
    void ForEachInk(Visit visit) const {
        for (std::int32_t y = 0; y < surface_.height_px; ++y) {
            for (std::int32_t x = 0; x < surface_.width_px; ++x) {
                if (At(x, y) != ToPixel(kPaper)) visit(x, y);
            }
        }
    }

private:
    std::vector<Pixel> pixels_;
    PixelSurface surface_;
    ClipArea clip_;
};

/// The heights over and under the baseline that a font file tells for the platform, read from its tables here.
struct FileHeights {
    double ascent_em = 0;
    double descent_em = 0;
};

inline std::optional<FileHeights> ReadHeights(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string file((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const auto u16 = [&](std::size_t at) {
        if (at + 2 > file.size()) return 0u;
        return static_cast<unsigned char>(file[at]) * 256u + static_cast<unsigned char>(file[at + 1]);
    };
    std::size_t head = 0;
    std::size_t os2 = 0;
    if (file.compare(0, 4, "ttcf") == 0) return std::nullopt;
    for (std::size_t i = 0; i < u16(4); ++i) {
        const std::size_t entry = 12 + i * 16;
        const std::size_t at = u16(entry + 8) * std::size_t{65536} + u16(entry + 10);
        if (file.compare(entry, 4, "head") == 0) head = at;
        if (file.compare(entry, 4, "OS/2") == 0) os2 = at;
    }
    if (head == 0 || os2 == 0) return std::nullopt;
    const double em = u16(head + 18);
    return FileHeights{u16(os2 + 74) / em, u16(os2 + 76) / em};
}

}  // namespace orvane
