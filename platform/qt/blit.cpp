#include "platform/qt/blit.h"

#include <cstddef>
#include <cstring>

#include "platform/rect.h"

namespace orvane {

namespace {

constexpr BitRule kSourceAndTarget = 8;
constexpr BitRule kSourceXorTarget = 6;
constexpr BitRule kSource = 12;
constexpr BitRule kSourceOrTarget = 14;

template <class Combine>
void CombineRow(const Pixel* from, Pixel* to, std::int32_t count, Combine combine) {
    for (std::int32_t i = 0; i < count; ++i) to[i] = combine(from[i], to[i]) | 0xFF000000u;
}

Box Shifted(const Box& b, std::int64_t dx, std::int64_t dy) { return {b.left + dx, b.top + dy, b.right + dx, b.bottom + dy}; }

/// Copies of overlapping areas within one surface may go row by row, as long as no row is read after it was written.
void BlitRect(const PixelSurface& from, const PixelSurface& to, const Box& part, std::int64_t shiftX, std::int64_t shiftY,
              BitRule rule) {
    const auto left = static_cast<std::int32_t>(part.left);
    const auto count = static_cast<std::int32_t>(part.right - part.left);
    const auto sourceLeft = static_cast<std::int32_t>(part.left + shiftX);
    const std::int64_t rowCnt = part.bottom - part.top;
    for (std::int64_t i = 0; i < rowCnt; ++i) {
        const std::int64_t y = shiftY >= 0 ? part.top + i : part.bottom - 1 - i;
        BlitRow(from.Row(static_cast<std::int32_t>(y + shiftY)) + sourceLeft, to.Row(static_cast<std::int32_t>(y)) + left, count,
                rule);
    }
}

/// A surface over `scratch` that holds a copy of `area` at its left top.
PixelSurface Snapshot(const PixelSurface& from, const Box& area, std::vector<Pixel>& scratch) {
    const auto width_px = static_cast<std::int32_t>(area.right - area.left);
    const auto height_px = static_cast<std::int32_t>(area.bottom - area.top);
    scratch.resize(static_cast<std::size_t>(width_px) * static_cast<std::size_t>(height_px));
    const PixelSurface copy{scratch.data(), width_px, width_px, height_px};
    BlitRect(from, copy, {0, 0, width_px, height_px}, area.left, area.top, kSource);
    return copy;
}

}  // namespace

void BlitRow(const Pixel* from, Pixel* to, std::int32_t count, BitRule rule) {
    switch (rule) {
        case kSource:
            std::memmove(to, from, static_cast<std::size_t>(count) * sizeof(Pixel));
            break;
        case kSourceAndTarget:
            CombineRow(from, to, count, [](Pixel s, Pixel d) { return s & d; });
            break;
        case kSourceOrTarget:
            CombineRow(from, to, count, [](Pixel s, Pixel d) { return s | d; });
            break;
        case kSourceXorTarget:
            CombineRow(from, to, count, [](Pixel s, Pixel d) { return s ^ d; });
            break;
        default:
            CombineRow(from, to, count, [rule](Pixel s, Pixel d) { return MakeMix(s, rule).Of(d); });
    }
}

void BlitPixels(const PixelSurface& from, const PixelSurface& to, const ClipArea& clip, const Box& target, std::int64_t shiftX,
                std::int64_t shiftY, BitRule rule, std::vector<Pixel>& scratch) {
    Box source;
    if (!IntersectBox(Shifted(target, shiftX, shiftY), ToBox(from.Bounds()), source)) return;
    Box reached;
    if (!IntersectBox(Shifted(source, -shiftX, -shiftY), ToBox(clip.bounds), reached)) return;
    source = Shifted(reached, shiftX, shiftY);
    PixelSurface read = from;
    Box common;
    const bool overlaps = from.pixels == to.pixels && IntersectBox(source, reached, common);
    if (overlaps && (rule != kSource || !clip.IsOneRect())) {
        read = Snapshot(from, source, scratch);
        shiftX -= source.left;
        shiftY -= source.top;
    }
    for (const Rect& r : clip.rects) {
        Box part;
        if (IntersectBox(reached, ToBox(r), part)) BlitRect(read, to, part, shiftX, shiftY, rule);
    }
}

}  // namespace orvane
