#include "platform/qt/stretch.h"

#include <algorithm>
#include <cstdlib>

#include "platform/qt/blit.h"
#include "platform/rect.h"

namespace orvane {

namespace {

/// The pixels that a run covers, in order.
Box BoxOfRuns(AxisRun x, AxisRun y) { return NormalizeBox({x.from, y.from, x.from + x.length, y.from + y.length}); }

Pixel Gathered(const PixelSurface& from, std::int32_t left, std::int32_t right, std::int32_t top, std::int32_t bottom) {
    Pixel all = 0xFFFFFFFFu;
    for (std::int32_t y = top; y < bottom; ++y) {
        const Pixel* const row = from.Row(y);
        for (std::int32_t x = left; x < right; ++x) all &= row[x];
    }
    return all;
}

}  // namespace

/// For each target pixel from `low` to `high`: with as many or fewer source pixels than target ones each has one, with more each
/// has all that fall on it.
void Stretcher::Map(std::int64_t low, std::int64_t high, AxisRun target, AxisRun source, std::int32_t sourceSize,
                    std::vector<Span>& out) {
    out.clear();
    const std::int64_t length = std::abs(target.length);
    const std::int64_t sourceLength = std::abs(source.length);
    const std::int64_t start = target.length < 0 ? target.from + target.length : target.from;
    const std::int64_t sourceStart = source.length < 0 ? source.from + source.length : source.from;
    const bool mirrored = (target.length < 0) != (source.length < 0);
    for (std::int64_t at = low; at < high; ++at) {
        const std::int64_t k = mirrored ? length - 1 - (at - start) : at - start;
        const std::int64_t first = k * sourceLength / length;
        const std::int64_t end = (std::max)((k + 1) * sourceLength / length, first + 1);
        const std::int64_t inside = (std::max)(sourceStart + first, std::int64_t{0});
        const std::int64_t insideEnd = (std::min)(sourceStart + end, std::int64_t{sourceSize});
        if (inside < insideEnd) {
            out.push_back({static_cast<std::int32_t>(inside), static_cast<std::int32_t>(insideEnd)});
        } else {
            out.push_back({});
        }
    }
}

void Stretcher::Stretch(const PixelSurface& from, const PixelSurface& to, const ClipArea& clip, const StretchRuns& runs,
                        BitRule rule) {
    const auto& [x, y, sourceX, sourceY] = runs;
    if (x.length == 0 || y.length == 0 || sourceX.length == 0 || sourceY.length == 0) return;
    Box reached;
    if (!IntersectBox(BoxOfRuns(x, y), ToBox(clip.bounds), reached)) return;
    Map(reached.left, reached.right, x, sourceX, from.width_px, columns_);
    Map(reached.top, reached.bottom, y, sourceY, from.height_px, rows_);
    for (const Rect& r : clip.rects) {
        Box part;
        if (!IntersectBox(reached, ToBox(r), part)) continue;
        // Only at its ends can a run leave the source.
        while (part.left < part.right && IsEmpty(columns_[static_cast<std::size_t>(part.left - reached.left)])) ++part.left;
        while (part.left < part.right && IsEmpty(columns_[static_cast<std::size_t>(part.right - 1 - reached.left)])) --part.right;
        for (std::int64_t row = part.top; row < part.bottom; ++row) {
            const Span rows = rows_[static_cast<std::size_t>(row - reached.top)];
            if (IsEmpty(rows)) continue;
            gathered_.clear();
            for (std::int64_t column = part.left; column < part.right; ++column) {
                const Span columns = columns_[static_cast<std::size_t>(column - reached.left)];
                gathered_.push_back(Gathered(from, columns.first, columns.end, rows.first, rows.end));
            }
            BlitRow(gathered_.data(), to.Row(static_cast<std::int32_t>(row)) + part.left,
                    static_cast<std::int32_t>(gathered_.size()), rule);
        }
    }
}

}  // namespace orvane
