// A bitmap like the screen's to draw on.
#pragma once

#include <windows.h>
// windows.h comes first
#include <utility>

namespace orvane {

class MemoryPicture {
public:
    explicit MemoryPicture(SIZE size) {
        const HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        bitmap_ = CreateCompatibleBitmap(screen, size.cx, size.cy);
        ReleaseDC(nullptr, screen);
        if (IsThere()) before_ = SelectObject(dc_, bitmap_);
    }
    ~MemoryPicture() {
        DeleteObject(Take());
        DeleteDC(dc_);
    }
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;

    /// False when the system has no room for it.
    bool IsThere() const { return dc_ != nullptr && bitmap_ != nullptr; }
    HDC Dc() const { return dc_; }
    /// The bitmap, which is the caller's from now on and no longer drawn on.
    HBITMAP Take() {
        if (before_ != nullptr) SelectObject(dc_, std::exchange(before_, nullptr));
        return std::exchange(bitmap_, nullptr);
    }

private:
    HDC dc_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

}  // namespace orvane
