// Lays ink over runs of pixels of a surface, within a clip.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/qt/ink.h"
#include "platform/values.h"

namespace orvane {

/// Pixels in memory, rows from the top; somebody else's. A surface of no size has none.
struct PixelSurface {
    Pixel* pixels = nullptr;
    std::ptrdiff_t stride_px = 0;
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;

    friend bool operator==(const PixelSurface&, const PixelSurface&) = default;
    Pixel* Row(std::int32_t y) const { return pixels + stride_px * y; }
    Rect Bounds() const { return {0, 0, width_px, height_px}; }
};

/// Sets `count` pixels. Spans of a map are short: the last four are written over again rather than one by one.
inline void SetPixels(Pixel* to, std::size_t count, Pixel pixel) {
    if (count < 4) {
        for (std::size_t i = 0; i < count; ++i) to[i] = pixel;
        return;
    }
    const Pixel four[4] = {pixel, pixel, pixel, pixel};
    Pixel* const last = to + count - 4;
    for (; to < last; to += 4) std::memcpy(to, four, sizeof four);
    std::memcpy(last, four, sizeof four);
}

/// What may be drawn on: rectangles inside the surface that do not meet, those further up first, those of one band side by side
/// from the left and of one height.
struct ClipArea {
    std::vector<Rect> rects;
    Rect bounds;  ///< the smallest rectangle round all of them; all zeros when there are none

    bool IsOneRect() const { return rects.size() == 1; }
    /// The first rectangle that ends below row `y`.
    std::vector<Rect>::const_iterator FirstEndingBelow(std::int64_t y) const {
        return std::partition_point(rects.begin(), rects.end(), [y](const Rect& r) { return r.bottom <= y; });
    }
};

/// Remembers which pixels of a rectangle were taken, so that each is taken once, at a cost that hardly grows with repetition.
class TakenPixels {
public:
    /// Starts afresh; every pixel of `area` is free.
    void Reset(const Rect& area);

    /// Calls `visit(left, right)` for each run of free pixels of row `y` between `left` and `right`, and takes them. The run
    /// lies inside the area.
    template <class Visit>
    void Take(std::int32_t y, std::int32_t left, std::int32_t right, Visit visit) {
        std::int32_t* const next = next_.data() + static_cast<std::size_t>(y - area_.top) * rowSize_;
        const std::int32_t end = right - area_.left;
        std::int32_t at = FirstFree(next, left - area_.left);
        while (at < end) {
            const std::int32_t start = at;
            for (; at < end && next[at] == at; ++at) next[at] = end;
            visit(start + area_.left, at + area_.left);
            at = FirstFree(next, at);
        }
    }

private:
    /// The chain of links from `at` ends at a free pixel or behind the row; it is halved on the way.
    static std::int32_t FirstFree(std::int32_t* next, std::int32_t at) {
        while (next[at] != at) {
            next[at] = next[next[at]];
            at = next[at];
        }
        return at;
    }

    Rect area_;
    std::size_t rowSize_ = 0;
    std::vector<std::int32_t> next_;  ///< a free pixel is linked to itself, a taken one to one further right
};

class SpanPainter {
public:
    /// The three must outlive the painter. With `taken`, which covers the clip's bounds, a pixel is painted only once.
    SpanPainter(const PixelSurface& surface, const ClipArea& clip, const Ink& ink, TakenPixels* taken = nullptr)
        : surface_(surface), clip_(clip), ink_(ink), taken_(taken) {}

    const Rect& Bounds() const { return clip_.bounds; }

    /// Paints row `y` from `left` up to and without `right`. REQUIRES: all of it lies inside Bounds().
    void Span(std::int32_t y, std::int32_t left, std::int32_t right) {
        if (clip_.IsOneRect()) {
            Visible(y, left, right);
        } else {
            SpanInBand(y, left, right);
        }
    }
    /// Paints a rectangle that may lie anywhere.
    void FillRect(const Rect& rect);

private:
    void Visible(std::int32_t y, std::int32_t left, std::int32_t right) {
        if (taken_ == nullptr) {
            Put(y, left, right);
        } else {
            taken_->Take(y, left, right, [this, y](std::int32_t l, std::int32_t r) { Put(y, l, r); });
        }
    }
    void Put(std::int32_t y, std::int32_t left, std::int32_t right) {
        Pixel* const row = surface_.Row(y);
        if (ink_.kind == Ink::Kind::Copy) {
            SetPixels(row + left, static_cast<std::size_t>(right - left), ink_.mix.flip);
        } else {
            PutMixed(row, y, left, right);
        }
    }
    void SpanInBand(std::int32_t y, std::int32_t left, std::int32_t right);
    void PutMixed(Pixel* row, std::int32_t y, std::int32_t left, std::int32_t right) const;

    const PixelSurface& surface_;
    const ClipArea& clip_;
    const Ink& ink_;
    TakenPixels* taken_;
};

}  // namespace orvane
