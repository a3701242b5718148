// A picture in memory to draw on and to look at.
#pragma once

#include <windows.h>
// windows.h comes first
#include <algorithm>
#include <cstdint>

namespace orvane::test {

inline constexpr std::uint32_t kBackground = 0x808080;
inline constexpr std::uint32_t kWhite = 0xFFFFFF;
inline constexpr std::uint32_t kRed = 0xFF0000;

/// A picture of 32 bits a pixel to draw on.
class Canvas {
public:
    Canvas(int width_px, int height_px, std::uint32_t color = kBackground) : width(width_px), height(height_px) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width_px, -height_px, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        dc = CreateCompatibleDC(nullptr);
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels), nullptr, 0);
        before_ = SelectObject(dc, bitmap_);
        std::fill_n(pixels, width_px * height_px, color);
    }
    ~Canvas() {
        SelectObject(dc, before_);
        DeleteObject(bitmap_);
        DeleteDC(dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    std::uint32_t At(int x, int y) const {
        GdiFlush();
        return pixels[y * width + x] & 0xFFFFFF;
    }
    int CountOf(std::uint32_t color) const {
        GdiFlush();
        return static_cast<int>(
            std::count_if(pixels, pixels + width * height, [&](std::uint32_t p) { return (p & 0xFFFFFF) == color; }));
    }

    int width;
    int height;
    HDC dc = nullptr;
    std::uint32_t* pixels = nullptr;

private:
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

}  // namespace orvane::test
