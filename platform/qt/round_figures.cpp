#include "platform/qt/round_figures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "platform/rect.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

constexpr double kPi = std::numbers::pi;

// Figures of this size and below become chains of pixels.
constexpr double kDenseReach_px = 1024;
// A chord leaves the curve by no more than this.
constexpr double kChordError_px = 0.125;
// Halves of a quarter, again and again: the chords of the largest figure are short enough long before.
constexpr int kMostHalves = 24;

bool AreNeighbours(Point p, Point q) { return std::abs(p.x - q.x) <= 1 && std::abs(p.y - q.y) <= 1; }

/// Appends a point of a chain. A pixel that only rounds a corner goes out again, so that the chain is one pixel thin everywhere.
void AppendThin(std::vector<Point>& chain, std::size_t first, Point pt) {
    if (chain.size() > first && chain.back() == pt) return;
    if (chain.size() > first + 1 && AreNeighbours(chain[chain.size() - 2], pt)) chain.pop_back();
    chain.push_back(pt);
}

}  // namespace

RoundFigure::RoundFigure(const Rect& box) {
    const double left = (std::min)(box.left, box.right);
    const double right = (std::max)(box.left, box.right);
    const double top = (std::min)(box.top, box.bottom);
    const double bottom = (std::max)(box.top, box.bottom);
    if (left >= right || top >= bottom) return;
    a_ = (right - 1 - left) / 2;
    b_ = (bottom - 1 - top) / 2;
    cx_ = left + a_;
    cy_ = top + b_;
}

Point RoundFigure::At(double t) const {
    const auto nearest = [](double v) { return TruncToInt32(std::floor(v + 0.5)); };
    return {nearest(cx_ + a_ * std::cos(t)), nearest(cy_ + b_ * std::sin(t))};
}

bool RoundFigure::IsDense() const { return (std::max)(a_, b_) <= kDenseReach_px; }

/// An arc within a quarter lies in the box of its two ends. Where that box is out of sight, so is the chord, and nothing between
/// the two can be seen either: it needs no further points.
void RoundFigure::AppendChords(double from, double to, const Box& seen, int depth, std::vector<Point>& out) const {
    const Point a = At(from);
    const Point b = At(to);
    const double half = (to - from) / 2;
    const bool isClose = (std::max)(a_, b_) * (1 - std::cos(half)) <= kChordError_px;
    Box common;
    const Box between = InflateBox(NormalizeBox({a.x, a.y, b.x, b.y}), 1);
    if (isClose || depth == kMostHalves || !IntersectBox(between, seen, common)) {
        out.push_back(b);
        return;
    }
    AppendChords(from, from + half, seen, depth + 1, out);
    AppendChords(from + half, to, seen, depth + 1, out);
}

/// Cut where a quarter ends.
void RoundFigure::AppendArc(double from, double sweep, const Box& seen, std::vector<Point>& out) const {
    constexpr double kQuarter = kPi / 2;
    const double to = from + sweep;
    out.push_back(At(from));
    for (double at = from; at != to;) {
        double next =
            sweep > 0 ? (std::floor(at / kQuarter + 1e-9) + 1) * kQuarter : (std::ceil(at / kQuarter - 1e-9) - 1) * kQuarter;
        next = sweep > 0 ? (std::min)(next, to) : (std::max)(next, to);
        AppendChords(at, next, seen, 0, out);
        at = next;
    }
}

/// The quarter from the right down to the bottom: one pixel in each row where the curve is steep, one in each column where it is
/// flat, the nearest each; the rows and columns at the axes in any case. A circle comes out the same with its axes exchanged.
void RoundFigure::DenseQuarter(std::vector<Point>& out) const {
    const double steepness = b_ * b_ / ((std::max)(a_, 0.25) * (std::max)(a_, 0.25));
    const double offX = cx_ - std::floor(cx_);  // whole pixels lie this far beside the centre: 0 or a half
    const double offY = cy_ - std::floor(cy_);
    const auto put = [&](double u, double v) { AppendThin(out, 0, {TruncToInt32(cx_ + u), TruncToInt32(cy_ + v)}); };
    const auto onGrid = [](double v, double off) { return std::floor(v - off + 0.5) + off; };
    const auto across = [](double reach, double other, double otherReach) {
        const double part = otherReach > 0 ? other / otherReach : 0;
        return reach * std::sqrt((std::max)(0.0, 1 - part * part));
    };
    for (double v = offY; v <= b_; ++v) {
        const double u = across(a_, v, b_);
        if (v > offY && u * steepness < v) break;
        put(onGrid(u, offX), v);
    }
    for (double u = onGrid(a_, offX); u >= 0; --u) {
        const double v = across(b_, u, a_);
        if (u <= offX || (u <= a_ && u * steepness <= v)) put(u, onGrid(v, offY));
    }
}

/// One quarter, mirrored into the others: rounding would else favour one side. The chain goes clockwise from the right. Where two
/// quarters meet nothing is thinned out, or flat figures would lose their ends.
void RoundFigure::DenseOutline(std::vector<Point>& out) const {
    if (a_ < 1 || b_ < 1) {  // one or two pixels across: there is no room for a curve
        const Point first{TruncToInt32(cx_ - a_), TruncToInt32(cy_ - b_)};
        const Point last{TruncToInt32(cx_ + a_), TruncToInt32(cy_ + b_)};
        for (const Point pt : {first, Point{last.x, first.y}, last, Point{first.x, last.y}}) out.push_back(pt);
        return;
    }
    thread_local std::vector<Point> quarter;  // kept, because a map has many small circles
    quarter.clear();
    DenseQuarter(quarter);
    const auto sumX = TruncToInt32(2 * cx_);
    const auto sumY = TruncToInt32(2 * cy_);
    const std::size_t first = out.size();
    const std::size_t count = quarter.size();
    const auto put = [&](Point pt) {
        if (out.size() == first || out.back() != pt) out.push_back(pt);
    };
    for (std::size_t i = 0; i < count; ++i) put(quarter[i]);
    for (std::size_t i = count; i-- > 0;) put({sumX - quarter[i].x, quarter[i].y});
    for (std::size_t i = 0; i < count; ++i) put({sumX - quarter[i].x, sumY - quarter[i].y});
    for (std::size_t i = count; i-- > 0;) put({quarter[i].x, sumY - quarter[i].y});
    while (out.size() > first + 1 && out.back() == out[first]) out.pop_back();
}

void RoundFigure::Outline(const Box& seen, std::vector<Point>& out) const {
    if (IsEmpty()) return;
    if (IsDense()) {
        DenseOutline(out);
        return;
    }
    AppendArc(0, 2 * kPi, seen, out);
    out.pop_back();
}

/// The parameter at which the ray meets the curve, not the ray's own angle.
double RoundFigure::AngleTo(Point ray) const {
    const double dx = (ray.x - cx_) / (std::max)(a_, 0.5);
    const double dy = (ray.y - cy_) / (std::max)(b_, 0.5);
    return dx == 0 && dy == 0 ? 0 : std::atan2(dy, dx);
}

void RoundFigure::Arc(Point start, Point end, bool clockwise, const Box& seen, std::vector<Point>& out) const {
    if (IsEmpty()) return;
    const double from = AngleTo(start);
    double sweep = clockwise ? AngleTo(end) - from : from - AngleTo(end);
    if (sweep <= 0) sweep += 2 * kPi;
    if (!clockwise) sweep = -sweep;
    if (!IsDense()) {
        AppendArc(from, sweep, seen, out);
        return;
    }
    const double reach = (std::max)(a_, b_);
    const double steps = (std::max)(1.0, std::ceil((reach * 1.5 + 1) * std::abs(sweep)));
    const std::size_t first = out.size();
    for (double i = 0; i <= steps; ++i) AppendThin(out, first, At(from + sweep * i / steps));
}

}  // namespace orvane
