#include "platform/qt/thin_line.h"

#include <algorithm>

namespace orvane {

namespace {

// Where a far line enters the clip is found with products of 2^66.
__extension__ using Wide = __int128;

Wide FloorDiv(Wide a, Wide b) {
    const Wide q = a / b;
    return q * b > a ? q - 1 : q;
}

Wide CeilDiv(Wide a, Wide b) { return -FloorDiv(-a, b); }

/// The pixels `first` to `end` of a line, counted from its first point.
struct Part {
    std::int64_t first = 0;
    std::int64_t end = 0;
};

/// Goes from pixel to pixel of a line inside the surface.
class Stepper {
public:
    Stepper(Pixel* pixels, std::ptrdiff_t at, std::ptrdiff_t major, std::ptrdiff_t minor, std::int64_t rest,
            std::int64_t restStep, std::int64_t restEnd)
        : pixels_(pixels), at_(at), major_(major), minor_(minor), rest_(rest), restStep_(restStep), restEnd_(restEnd) {}

    template <bool kCopy>
    void Draw(std::int64_t count, Mix mix) {
        for (; count > 0; --count) {
            Pixel& pixel = pixels_[at_];
            pixel = kCopy ? mix.flip : mix.Of(pixel);
            // Lines of a map are short and turn often: a mask costs less than a branch that is guessed wrong.
            rest_ += restStep_;
            const std::int64_t over = -static_cast<std::int64_t>(rest_ >= restEnd_);
            rest_ -= restEnd_ & over;
            at_ += major_ + (minor_ & static_cast<std::ptrdiff_t>(over));
        }
    }

private:
    Pixel* pixels_;
    std::ptrdiff_t at_;
    std::ptrdiff_t major_;
    std::ptrdiff_t minor_;
    std::int64_t rest_;
    std::int64_t restStep_;
    std::int64_t restEnd_;
};

bool Inside(const Rect& r, Point p) {
    return static_cast<std::uint32_t>(p.x) - static_cast<std::uint32_t>(r.left) <
               static_cast<std::uint32_t>(r.right) - static_cast<std::uint32_t>(r.left) &&
           static_cast<std::uint32_t>(p.y) - static_cast<std::uint32_t>(r.top) <
               static_cast<std::uint32_t>(r.bottom) - static_cast<std::uint32_t>(r.top);
}

}  // namespace

/// Pixel k lies k steps along the major axis and (2 * shorter * k + bias) / (2 * length), rounded down, along the minor one.
struct ThinLinePainter::Walk {
    Point from;
    Point to;
    bool flat = true;
    std::int64_t length = 0;   ///< steps along the major axis; the end point is not drawn
    std::int64_t shorter = 0;  ///< steps along the minor axis
    std::int64_t bias = 0;     ///< of a half, taken off where the tie goes back to the start's side

    Walk(Point a, Point b) : from(a), to(b) {
        const std::int64_t dx = std::int64_t{b.x} - a.x;
        const std::int64_t dy = std::int64_t{b.y} - a.y;
        const std::int64_t across = dx < 0 ? -dx : dx;
        const std::int64_t down = dy < 0 ? -dy : dy;
        flat = across >= down;
        length = flat ? across : down;
        shorter = flat ? down : across;
        bias = length - ((flat ? dy : dx) > 0 ? 1 : 0);
    }

    std::int64_t MinorAt(std::int64_t k) const {
        return static_cast<std::int64_t>((static_cast<Wide>(2) * shorter * k + bias) / (2 * length));
    }

    /// The part inside `clip`; empty when first is not below end.
    Part In(const Rect& clip) const {
        const Rect turned = flat ? clip : Rect{clip.top, clip.left, clip.bottom, clip.right};
        const Point a = flat ? from : Point{from.y, from.x};
        const Point b = flat ? to : Point{to.y, to.x};
        Part part{0, length};
        Narrow(part, a.x, b.x >= a.x, turned.left, turned.right);
        Part minor{0, shorter + 1};
        Narrow(minor, a.y, b.y >= a.y, turned.top, turned.bottom);
        if (minor.first >= minor.end) return {0, 0};
        if (shorter == 0) return part;
        const Wide twice = static_cast<Wide>(2) * length;
        const Wide first = CeilDiv(twice * minor.first - bias, static_cast<Wide>(2) * shorter);
        const Wide end = CeilDiv(twice * minor.end - bias, static_cast<Wide>(2) * shorter);
        part.first = static_cast<std::int64_t>(std::max<Wide>(part.first, first));
        part.end = static_cast<std::int64_t>(std::min<Wide>(part.end, end));
        return part;
    }

    Stepper At(std::int64_t k, const PixelSurface& surface) const {
        const std::int64_t right = to.x >= from.x ? 1 : -1;
        const std::int64_t down = to.y >= from.y ? 1 : -1;
        const std::int64_t minor = k == 0 ? 0 : MinorAt(k);
        const std::int64_t rest =
            k == 0 ? bias
                   : static_cast<std::int64_t>(static_cast<Wide>(2) * shorter * k + bias - static_cast<Wide>(2) * length * minor);
        const std::int64_t x = from.x + right * (flat ? k : minor);
        const std::int64_t y = from.y + down * (flat ? minor : k);
        const std::ptrdiff_t across = static_cast<std::ptrdiff_t>(right);
        const std::ptrdiff_t along = static_cast<std::ptrdiff_t>(down) * surface.stride_px;
        return {surface.pixels,
                static_cast<std::ptrdiff_t>(y) * surface.stride_px + static_cast<std::ptrdiff_t>(x),
                flat ? across : along,
                flat ? along : across,
                rest,
                2 * shorter,
                2 * length};
    }

private:
    /// Leaves of `steps` those that lead from `from` into [low, high), forward or back.
    static void Narrow(Part& steps, std::int64_t from, bool forward, std::int64_t low, std::int64_t high) {
        steps.first = std::max(steps.first, forward ? low - from : from - high + 1);
        steps.end = std::min(steps.end, forward ? high - from : from - low + 1);
    }
};

DashList DashList::Of(const std::int32_t* dashes, std::size_t dashCnt, std::int32_t unit_px) {
    DashList list;
    dashCnt = std::min(dashCnt, static_cast<std::size_t>(Pen::kMaxDashes));
    list.count = dashCnt % 2 == 0 ? dashCnt : 2 * dashCnt;
    for (std::size_t i = 0; i < list.count; ++i) {
        list.lengths_px[i] = std::int64_t{std::max(dashes[i % dashCnt], 0)} * unit_px;
        list.sum_px += list.lengths_px[i];
    }
    return list;
}

DashList::Place DashList::Find(std::int64_t at_px) const {
    std::size_t index = 0;
    for (; at_px >= lengths_px[index]; ++index) at_px -= lengths_px[index];
    return {index, lengths_px[index] - at_px};
}

/// Calls draw(part) for each part of the line that the clip leaves.
template <class Draw>
void ThinLinePainter::VisibleParts(const Walk& walk, Draw draw) const {
    if (clip_.IsOneRect() && Inside(clip_.bounds, walk.from) && Inside(clip_.bounds, walk.to)) {
        draw(Part{0, walk.length});
        return;
    }
    const std::int32_t top = std::min(walk.from.y, walk.to.y);
    const std::int32_t bottom = std::max(walk.from.y, walk.to.y);
    for (auto r = clip_.FirstEndingBelow(top); r != clip_.rects.end() && r->top <= bottom; ++r) {
        const Part part = walk.In(*r);
        if (part.first < part.end) draw(part);
    }
}

template <bool kCopy>
void ThinLinePainter::SolidFigure(const Point* pts, std::size_t count, bool closed) {
    const auto line = [&](Point a, Point b) {
        const Walk walk(a, b);
        VisibleParts(walk,
                     [&](Part part) { walk.At(part.first, surface_).template Draw<kCopy>(part.end - part.first, pen_.line); });
    };
    for (std::size_t i = 1; i < count; ++i) line(pts[i - 1], pts[i]);
    if (closed) line(pts[count - 1], pts[0]);
}

void ThinLinePainter::DashedFigure(const Point* pts, std::size_t count, bool closed) {
    const DashList& dashes = pen_.dashes;
    std::int64_t phase = 0;
    const auto line = [&](Point a, Point b) {
        const Walk walk(a, b);
        VisibleParts(walk, [&](Part part) {
            DashList::Place place = dashes.Find((phase + part.first) % dashes.sum_px);
            Stepper stepper = walk.At(part.first, surface_);
            for (std::int64_t left = part.end - part.first; left > 0; place = dashes.Next(place)) {
                const std::int64_t run = std::min(left, place.left_px);
                stepper.Draw<false>(run, place.OnLine() ? pen_.line : pen_.gap);
                left -= run;
            }
        });
        phase = (phase + walk.length) % dashes.sum_px;
    };
    for (std::size_t i = 1; i < count; ++i) line(pts[i - 1], pts[i]);
    if (closed) line(pts[count - 1], pts[0]);
}

void ThinLinePainter::Figure(const Point* pts, std::size_t count, bool closed) {
    if (count < 2 || clip_.rects.empty()) return;
    if (!pen_.dashes.IsSolid()) {
        DashedFigure(pts, count, closed);
    } else if (pen_.line.IsCopy()) {
        SolidFigure<true>(pts, count, closed);
    } else {
        SolidFigure<false>(pts, count, closed);
    }
}

}  // namespace orvane
