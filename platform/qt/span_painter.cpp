#include "platform/qt/span_painter.h"

#include <numeric>

#include "platform/rect.h"

namespace orvane {

void TakenPixels::Reset(const Rect& area) {
    area_ = area;
    rowSize_ = static_cast<std::size_t>(area.right - area.left) + 1;  // one more, for links to behind the last pixel
    next_.resize(rowSize_ * static_cast<std::size_t>(area.bottom - area.top));
    for (auto row = next_.begin(); row != next_.end(); row += static_cast<std::ptrdiff_t>(rowSize_)) {
        std::iota(row, row + static_cast<std::ptrdiff_t>(rowSize_), 0);
    }
}

void SpanPainter::SpanInBand(std::int32_t y, std::int32_t left, std::int32_t right) {
    for (auto r = clip_.FirstEndingBelow(y); r != clip_.rects.end() && r->top <= y; ++r) {
        const std::int32_t from = std::max(left, r->left);
        const std::int32_t to = std::min(right, r->right);
        if (from < to) Visible(y, from, to);
    }
}

void SpanPainter::FillRect(const Rect& rect) {
    if (ink_.kind == Ink::Kind::Nothing) return;
    for (const Rect& r : clip_.rects) {
        Rect part;
        if (!IntersectRect(r, rect, part)) continue;
        for (std::int32_t y = part.top; y < part.bottom; ++y) Visible(y, part.left, part.right);
    }
}

void SpanPainter::PutMixed(Pixel* row, std::int32_t y, std::int32_t left, std::int32_t right) const {
    if (ink_.kind == Ink::Kind::Mixed) {
        const Mix mix = ink_.mix;
        for (std::int32_t x = left; x < right; ++x) row[x] = mix.Of(row[x]);
    } else if (ink_.kind == Ink::Kind::Tiled) {
        const Mix* const tileRow = ink_.tile.data() + 8 * (y & 7);
        for (std::int32_t x = left; x < right; ++x) row[x] = tileRow[x & 7].Of(row[x]);
    }
}

}  // namespace orvane
