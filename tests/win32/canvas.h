// A memory context of the system to draw on and to look at.
#pragma once

#include <windows.h>
// windows.h comes first
#include <memory>
#include <string>

#include "platform/win32/win32_context.h"

namespace orvane {

class Canvas {
public:
    explicit Canvas(std::int32_t width_px = 40, std::int32_t height_px = 40, std::shared_ptr<Win32Shared> shared = nullptr)
        : bitmap(Win32Bitmap::Colours(width_px, height_px)), dc(Win32Context::InMemory(std::move(shared))) {
        dc->SelectBitmap(bitmap.get());
        dc->PatBlt(0, 0, width_px, height_px, Rop3::Whiteness);
    }

    /// 0xRRGGBB.
    std::uint32_t At(std::int32_t x, std::int32_t y) {
        GdiFlush();
        return bitmap->Pixels()[y * bitmap->Width_px() + x] & 0xFFFFFF;
    }
    /// A row of the picture: '.' for white, '#' for black, '?' for others.
    std::string Row(std::int32_t y) {
        std::string row;
        for (std::int32_t x = 0; x < bitmap->Width_px(); ++x) {
            const std::uint32_t c = At(x, y);
            row += c == 0xFFFFFF ? '.' : c == 0 ? '#' : '?';
        }
        return row;
    }
    std::int32_t CountOf(std::uint32_t color) {
        std::int32_t found = 0;
        for (std::int32_t y = 0; y < bitmap->Height_px(); ++y) {
            for (std::int32_t x = 0; x < bitmap->Width_px(); ++x) found += At(x, y) == color ? 1 : 0;
        }
        return found;
    }

    std::unique_ptr<Win32Bitmap> bitmap;  // first: it outlives its selection
    std::unique_ptr<Win32Context> dc;
};

}  // namespace orvane
