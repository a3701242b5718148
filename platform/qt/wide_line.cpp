#include "platform/qt/wide_line.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orvane {

namespace {

constexpr std::int64_t kTableWidthMax_px = 1024;
constexpr double kFine = AreaScanner::kFinePerPixel;

/// A range along a line, in pixels from the segment's first point.
struct Range {
    double from = 0;
    double to = 0;
};

std::int64_t ToFine(double px) { return std::llround(px * kFine); }

/// Whether a dash has begun before `phase` and goes on behind it: only then is a corner there rounded off.
bool IsInsideDash(const DashList& dashes, double phase) {
    const double whole = std::floor(phase);
    const DashList::Place place = dashes.Find(static_cast<std::int64_t>(whole));
    return place.OnLine() && (place.left_px < dashes.lengths_px[place.index] || phase > whole);
}

}  // namespace

struct WideLinePainter::Tools {
    const WidePen& pen;
    AreaScanner& scanner;
    SpanPainter& painter;
    double half_px;
};

/// The bar round one segment, with its direction as a unit vector.
struct WideLinePainter::Bar {
    Point from;
    double length_px = 0;
    double ux = 0;
    double uy = 0;

    Bar(Point a, Point b) : from(a) {
        const double dx = static_cast<double>(b.x) - a.x;
        const double dy = static_cast<double>(b.y) - a.y;
        length_px = std::hypot(dx, dy);
        if (length_px > 0) {
            ux = dx / length_px;
            uy = dy / length_px;
        }
    }

    /// How far along and how far beside the line the corners of `clip` reach, one pixel to spare.
    void Reach(const Rect& clip, Range& along, Range& beside) const {
        along = {1e300, -1e300};
        beside = along;
        for (int corner = 0; corner < 4; ++corner) {
            const double x = static_cast<double>((corner & 1) != 0 ? clip.left : clip.right) - from.x;
            const double y = static_cast<double>((corner & 2) != 0 ? clip.top : clip.bottom) - from.y;
            const double a = x * ux + y * uy;
            const double b = y * ux - x * uy;
            along = {std::min(along.from, a - 1), std::max(along.to, a + 1)};
            beside = {std::min(beside.from, b - 1), std::max(beside.to, b + 1)};
        }
    }

    /// Fills what of `part` reaches into the clip. The far ends are cut where they no longer show.
    void Fill(Range part, const Tools& tools) const {
        Range along;
        Range beside;
        Reach(tools.painter.Bounds(), along, beside);
        if (beside.from >= tools.half_px || beside.to <= -tools.half_px) return;
        part = {std::max(part.from, along.from), std::min(part.to, along.to)};
        if (part.from >= part.to) return;
        const double left = std::min(tools.half_px, beside.to);
        const double right = std::max(-tools.half_px, beside.from);
        const FinePoint corners[] = {Fine(part.from, left), Fine(part.to, left), Fine(part.to, right), Fine(part.from, right)};
        tools.scanner.FillFine(corners, 4, tools.painter);
    }

private:
    FinePoint Fine(double along, double beside) const {
        return {ToFine(from.x + along * ux - beside * uy), ToFine(from.y + along * uy + beside * ux)};
    }
};

/// The pixels of a disc's row: those whose point is inside the circle, left ends in, right ends out.
WideLinePainter::HalfChord WideLinePainter::ChordOf(std::int64_t width_px, std::int64_t rowFromCenter) {
    const std::int64_t square = width_px * width_px - 4 * rowFromCenter * rowFromCenter;  // of the whole chord
    if (square <= 0) return {};
    auto half = static_cast<std::int64_t>(std::sqrt(static_cast<double>(square)) / 2);
    while (4 * half * half > square) --half;
    while (4 * (half + 1) * (half + 1) <= square) ++half;
    return {half, 4 * half * half == square ? half : half + 1};
}

void WideLinePainter::FillDiscTable(std::int64_t width_px) {
    if (tableWidth_px_ == width_px) return;
    table_.clear();
    if (width_px <= kTableWidthMax_px) {
        for (std::int64_t row = 0; row <= width_px / 2; ++row) table_.push_back(ChordOf(width_px, row));
    }
    tableWidth_px_ = width_px;
}

void WideLinePainter::Disc(Point center, const Tools& tools) {
    const Rect& bounds = tools.painter.Bounds();
    const std::int64_t reach = tools.pen.width_px / 2;
    if (center.x + reach < bounds.left || center.x - reach >= bounds.right) return;
    const std::int64_t top = std::max<std::int64_t>(center.y - reach, bounds.top);
    const std::int64_t end = std::min<std::int64_t>(center.y + reach + 1, bounds.bottom);
    for (std::int64_t y = top; y < end; ++y) {
        const std::int64_t row = std::abs(y - center.y);
        const HalfChord chord = table_.empty() ? ChordOf(tools.pen.width_px, row) : table_[static_cast<std::size_t>(row)];
        const std::int64_t left = std::max<std::int64_t>(center.x - chord.left_px, bounds.left);
        const std::int64_t right = std::min<std::int64_t>(center.x + chord.right_px, bounds.right);
        if (left < right) {
            tools.painter.Span(static_cast<std::int32_t>(y), static_cast<std::int32_t>(left), static_cast<std::int32_t>(right));
        }
    }
}

void WideLinePainter::Solid(const Point* pts, std::size_t count, bool closed, const Tools& tools) {
    for (std::size_t i = 0; i < count; ++i) {
        const bool isEnd = !closed && (i == 0 || i + 1 == count);
        if (!isEnd || !tools.pen.flatEnds) Disc(pts[i], tools);
        if (!closed && i + 1 == count) break;
        const Bar bar(pts[i], pts[i + 1 == count ? 0 : i + 1]);
        bar.Fill({0, bar.length_px}, tools);
    }
}

void WideLinePainter::Dashed(const Point* pts, std::size_t count, bool closed, const Tools& tools) {
    const DashList& dashes = tools.pen.dashes;
    const auto sum_px = static_cast<double>(dashes.sum_px);
    double phase = 0;  // of the segment's first point, in [0, sum)
    bool joins = false;
    const std::size_t segmentCnt = closed ? count : count - 1;
    for (std::size_t i = 0; i < segmentCnt; ++i) {
        const Bar bar(pts[i], pts[i + 1 == count ? 0 : i + 1]);
        if (bar.length_px <= 0) continue;
        if (joins) Disc(pts[i], tools);
        Range along;
        Range beside;
        bar.Reach(tools.painter.Bounds(), along, beside);
        const double from = std::max(0.0, along.from);
        const double to = std::min(bar.length_px, along.to);
        if (from < to && beside.from < tools.half_px && beside.to > -tools.half_px) {
            const double inList = std::fmod(phase + from, sum_px);
            const auto whole = std::min(static_cast<std::int64_t>(inList), dashes.sum_px - 1);
            DashList::Place place = dashes.Find(whole);
            double at = from - (inList - static_cast<double>(whole));
            for (; at < to; place = dashes.Next(place)) {
                const double end = at + static_cast<double>(place.left_px);
                if (place.OnLine() && place.left_px > 0) bar.Fill({std::max(at, 0.0), std::min(end, bar.length_px)}, tools);
                at = end;
            }
        }
        phase = std::fmod(phase + bar.length_px, sum_px);
        joins = IsInsideDash(dashes, phase);
    }
}

void WideLinePainter::Figure(const Point* pts, std::size_t count, bool closed, const WidePen& pen, AreaScanner& scanner,
                             SpanPainter& painter) {
    if (count < 2 || painter.Bounds() == Rect{}) return;
    FillDiscTable(pen.width_px);
    const Tools tools{pen, scanner, painter, static_cast<double>(pen.width_px) / 2};
    if (pen.dashes.IsSolid()) {
        Solid(pts, count, closed, tools);
    } else {
        Dashed(pts, count, closed, tools);
    }
}

double WideLinePainter::PixelsWithRepetition(const Point* pts, std::size_t count, const WidePen& pen, double most) {
    const auto width_px = static_cast<double>(pen.width_px);
    const double disc = std::min(most, width_px * width_px);
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Point a = pts[i];
        const Point b = pts[i + 1 == count ? 0 : i + 1];
        const double length_px = std::abs(static_cast<double>(b.x) - a.x) + std::abs(static_cast<double>(b.y) - a.y);
        sum += disc + std::min(most, width_px * length_px);
    }
    return sum;
}

}  // namespace orvane
