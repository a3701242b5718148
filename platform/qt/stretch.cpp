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

/// For each target pixel from `low` to `high`: with as many or fewer source pixels than target ones each has the one that its
/// centre falls on, with more each has all whose centres fall on it. Both runs are followed from where they begin, and a centre
/// on a border belongs to what comes before it.
void Stretcher::Map(std::int64_t low, std::int64_t high, AxisRun target, AxisRun source, std::int32_t sourceSize,
                    std::vector<Span>& out) {
    out.clear();
    // Twice a length times a length needs the 64th bit.
    const auto length = static_cast<std::uint64_t>(std::abs(target.length));
    const auto sourceLength = static_cast<std::uint64_t>(std::abs(source.length));
    const auto firstOf = [&](std::uint64_t k) {
        if (sourceLength <= length) return ((2 * k + 1) * sourceLength - 1) / (2 * length);
        return ((2 * k * sourceLength) / length + 1) / 2;
    };
    for (std::int64_t at = low; at < high; ++at) {
        const auto k = static_cast<std::uint64_t>(target.length < 0 ? target.from - 1 - at : at - target.from);
        const auto first = static_cast<std::int64_t>(firstOf(k));
        const std::int64_t end = sourceLength <= length ? first + 1 : static_cast<std::int64_t>(firstOf(k + 1));
        const std::int64_t left = source.length < 0 ? source.from - end : source.from + first;
        const std::int64_t inside = (std::max)(left, std::int64_t{0});
        const std::int64_t insideEnd = (std::min)(left + end - first, std::int64_t{sourceSize});
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
