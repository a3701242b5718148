#include "platform/qt/figure_stamps.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace orvane {

namespace {

constexpr std::int64_t kMostSide_px = 32;
constexpr std::size_t kMostPoints = 64;
// After so many figures of which none came twice, the next ones are not looked at.
constexpr std::size_t kMostMisses = 64;
constexpr Pixel kUntouched = 0;  // every pixel of a colour has its fourth byte set

bool LiesIn(const Rect& box, Point at, const Rect& bounds) {
    return std::int64_t{at.x} + box.left >= bounds.left && std::int64_t{at.x} + box.right <= bounds.right &&
           std::int64_t{at.y} + box.top >= bounds.top && std::int64_t{at.y} + box.bottom <= bounds.bottom;
}

}  // namespace

void FigureStamps::Forget() {
    for (Stamp& stamp : stamps_) stamp.shape.offsets.clear();
    for (Shape& shape : seen_) shape.offsets.clear();
    misses_ = 0;
}

/// Whether the single figure is one of this shape, wherever it stands.
bool FigureStamps::IsShape(const Shape& shape, const Figures& figures, bool fill, bool stroke) {
    const std::size_t count = shape.offsets.size();
    if (count == 0 || static_cast<std::size_t>(figures.counts[0]) != count) return false;
    const Point at = figures.pts[0];
    for (std::size_t i = 1; i < count; ++i) {
        if (std::int64_t{at.x} + shape.offsets[i].x != figures.pts[i].x) return false;
        if (std::int64_t{at.y} + shape.offsets[i].y != figures.pts[i].y) return false;
    }
    return shape.fill == fill && shape.stroke == stroke && shape.closed == figures.IsClosed(0);
}

bool FigureStamps::TakeShape(const Figures& figures, bool fill, bool stroke, const ClipArea& clip) {
    const auto count = static_cast<std::size_t>(figures.counts[0]);
    if (count < 2 || count > kMostPoints) return false;
    at_ = figures.pts[0];
    shape_.offsets.resize(count);
    box_ = {};
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t dx = std::int64_t{figures.pts[i].x} - at_.x;
        const std::int64_t dy = std::int64_t{figures.pts[i].y} - at_.y;
        if (dx <= -kMostSide_px || dx >= kMostSide_px || dy <= -kMostSide_px || dy >= kMostSide_px) return false;
        const Point offset{static_cast<std::int32_t>(dx), static_cast<std::int32_t>(dy)};
        shape_.offsets[i] = offset;
        box_ = {std::min(box_.left, offset.x), std::min(box_.top, offset.y), std::max(box_.right, offset.x),
                std::max(box_.bottom, offset.y)};
    }
    ++box_.right;
    ++box_.bottom;
    if (!LiesIn(box_, at_, clip.bounds)) return false;
    shape_.fill = fill;
    shape_.stroke = stroke;
    shape_.closed = figures.IsClosed(0);
    return true;
}

FigureStamps::Found FigureStamps::Look(const Figures& figures, bool fill, bool stroke, const ClipArea& clip) {
    if (misses_ >= kMostMisses || figures.count != 1 || !clip.IsOneRect()) return Found::Nothing;
    for (const Stamp& stamp : stamps_) {
        if (!IsShape(stamp.shape, figures, fill, stroke)) continue;
        stamp_ = &stamp;
        at_ = figures.pts[0];
        misses_ = 0;
        return LiesIn(stamp.box, at_, clip.bounds) ? Found::Stamp : Found::Nothing;
    }
    if (!TakeShape(figures, fill, stroke, clip)) return Found::Nothing;
    if (std::find(std::begin(seen_), std::end(seen_), shape_) != std::end(seen_)) return Found::Repeat;
    ++misses_;
    std::swap(seen_[nextSeen_], shape_);
    nextSeen_ = (nextSeen_ + 1) % kStampCnt;
    return Found::Nothing;
}

Figures FigureStamps::Moved() {
    moved_.clear();
    for (const Point& offset : shape_.offsets) moved_.push_back({offset.x - box_.left, offset.y - box_.top});
    movedCnt_ = static_cast<std::int32_t>(moved_.size());
    movedClosed_ = shape_.closed ? 1 : 0;
    const std::int32_t width_px = box_.right - box_.left;
    const std::int32_t height_px = box_.bottom - box_.top;
    pixels_.assign(static_cast<std::size_t>(width_px) * static_cast<std::size_t>(height_px), kUntouched);
    canvas_ = {pixels_.data(), width_px, width_px, height_px};
    canvasClip_.rects.assign(1, canvas_.Bounds());
    canvasClip_.bounds = canvas_.Bounds();
    return {moved_.data(), &movedCnt_, 1, &movedClosed_};
}

void FigureStamps::Keep() {
    Stamp& stamp = stamps_[nextStamp_];
    nextStamp_ = (nextStamp_ + 1) % kStampCnt;
    stamp.shape = shape_;
    stamp.box = box_;
    stamp.runs.clear();
    stamp.pixels.clear();
    for (std::int32_t y = 0; y < canvas_.height_px; ++y) {
        const Pixel* const row = canvas_.Row(y);
        for (std::int32_t x = 0; x < canvas_.width_px; ++x) {
            if (row[x] == kUntouched) continue;
            if (x == 0 || row[x - 1] == kUntouched) stamp.runs.push_back({x + box_.left, y + box_.top, stamp.pixels.size(), 0});
            stamp.pixels.push_back(row[x]);
            ++stamp.runs.back().count;
        }
    }
    stamp_ = &stamp;
}

void FigureStamps::Put(const PixelSurface& surface) const {
    for (const Run& run : stamp_->runs) {
        std::memcpy(surface.Row(at_.y + run.dy) + at_.x + run.dx, stamp_->pixels.data() + run.from, run.count * sizeof(Pixel));
    }
}

}  // namespace orvane
