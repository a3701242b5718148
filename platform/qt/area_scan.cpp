#include "platform/qt/area_scan.h"

#include <algorithm>
#include <cstdlib>
#include <type_traits>

namespace orvane {

namespace {

// Long edges of far points need products of 2^83.
__extension__ using Wide = __int128;

// Up to this size of the coordinates the products stay below 2^62.
constexpr std::int64_t kNarrowReach = std::int64_t{1} << 29;
// Crossings kept at a time, but for a single row that has more. Bounds the memory of fills with many tall edges.
constexpr std::size_t kBandCrossings = std::size_t{1} << 18;
// Rows with more crossings are worth a call of the general sort.
constexpr std::size_t kInsertionSortMax = 24;

template <class Int>
Int FloorDiv(Int a, Int b) {
    const Int q = a / b;
    return q * b > a ? q - 1 : q;
}

template <int kUnits>
std::int64_t FirstRowFrom(std::int64_t y) {
    return kUnits == 1 ? y : -FloorDiv<std::int64_t>(-y, kUnits);
}

void SortFew(std::int32_t* begin, const std::int32_t* end) {
    for (std::int32_t* p = begin + 1; p < end; ++p) {
        const std::int32_t x = *p;
        std::int32_t* hole = p;
        for (; hole > begin && hole[-1] > x; --hole) *hole = hole[-1];
        *hole = x;
    }
}

}  // namespace

template <int kUnits>
void AreaScanner::AddRing(const auto* pts, std::size_t count, const Rect& bounds) {
    if (count == 0) return;
    std::int64_t x0 = pts[count - 1].x;
    std::int64_t y0 = pts[count - 1].y;
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t x1 = pts[i].x;
        const std::int64_t y1 = pts[i].y;
        const bool down = y0 < y1;
        const std::int64_t top = down ? y0 : y1;
        const std::int64_t bottom = down ? y1 : y0;
        const std::int64_t firstRow = std::max<std::int64_t>(FirstRowFrom<kUnits>(top), bounds.top);
        const std::int64_t endRow = std::min<std::int64_t>(FirstRowFrom<kUnits>(bottom), bounds.bottom);
        if (firstRow < endRow) {
            Edge edge{down ? x0 : x1,
                      top,
                      down ? x1 - x0 : x0 - x1,
                      bottom - top,
                      static_cast<std::int32_t>(firstRow),
                      static_cast<std::int32_t>(endRow)};
            edges_.push_back(edge);
            ++rowChange_[static_cast<std::size_t>(edge.firstRow - bounds.top)];
            --rowChange_[static_cast<std::size_t>(edge.endRow - bounds.top)];
            topRow_ = std::min(topRow_, edge.firstRow);
            endRow_ = std::max(endRow_, edge.endRow);
            reach_ = std::max({reach_, std::abs(x0), std::abs(y0), std::abs(x1), std::abs(y1)});
        }
        x0 = x1;
        y0 = y1;
    }
}

/// Lays out the rows from `firstRow` on, as many as their crossings find room for, and tells the row behind them.
std::int32_t AreaScanner::EndOfBand(std::int32_t firstRow, const Rect& bounds) {
    rowAt_.clear();
    std::size_t crossingCnt = 0;
    std::int32_t open = 0;
    std::int32_t row = firstRow;
    for (; row < endRow_; ++row) {
        std::int32_t& change = rowChange_[static_cast<std::size_t>(row - bounds.top)];
        open += change;
        change = 0;
        if (row > firstRow && crossingCnt + static_cast<std::size_t>(open) > kBandCrossings) {
            change = open;  // all edges that are open here, for the band that follows
            break;
        }
        rowAt_.push_back(crossingCnt);
        crossingCnt += static_cast<std::size_t>(open);
    }
    if (row == endRow_) rowChange_[static_cast<std::size_t>(row - bounds.top)] = 0;
    if (crossings_.size() < crossingCnt) crossings_.resize(crossingCnt);
    return row;
}

template <int kUnits, class Product>
void AreaScanner::FindCrossings(const Edge& edge, std::int32_t bandTop, std::int32_t bandEnd, const Rect& bounds) {
    using Step = std::conditional_t<std::is_same_v<Product, std::int64_t> && kUnits == 1, std::int32_t, std::int64_t>;
    const std::int32_t first = std::max(edge.firstRow, bandTop);
    const std::int32_t end = std::min(edge.endRow, bandEnd);
    if (first >= end) return;
    // The crossing of a row is whole + rest / part; its pixel is the first one not left of it.
    const Product part = static_cast<Product>(edge.dy) * kUnits;
    const Product below = static_cast<Product>(first) * kUnits - edge.y;
    Product whole = edge.x;
    Product rest = 0;
    if (kUnits != 1 || below != 0) {
        const Product sum = static_cast<Product>(edge.x) * edge.dy + static_cast<Product>(edge.dx) * below;
        whole = FloorDiv<Product>(sum, part);
        rest = sum - whole * part;
    }
    auto at = rowAt_.begin() + (first - bandTop);
    const auto put = [&] {
        const Product x = whole + (rest > 0 ? 1 : 0);
        crossings_[(*at)++] = static_cast<std::int32_t>(std::clamp<Product>(x, bounds.left, bounds.right));
    };
    put();
    if (first + 1 == end) return;
    const auto step = FloorDiv<Step>(static_cast<Step>(edge.dx), static_cast<Step>(edge.dy));
    const Product restStep = (edge.dx - static_cast<Product>(step) * edge.dy) * kUnits;
    for (std::int32_t row = first + 1; row < end; ++row) {
        whole += step;
        rest += restStep;
        if (rest >= part) {
            rest -= part;
            ++whole;
        }
        ++at;
        put();
    }
}

void AreaScanner::PaintRow(std::int32_t y, std::size_t begin, std::size_t end, SpanPainter& painter) {
    std::int32_t* const first = crossings_.data() + begin;
    std::int32_t* const last = crossings_.data() + end;
    if (end - begin == 2) {
        const auto [left, right] = std::minmax(first[0], first[1]);
        if (left < right) painter.Span(y, left, right);
        return;
    }
    if (end - begin > kInsertionSortMax) {
        std::sort(first, last);
    } else {
        SortFew(first, last);
    }
    for (const std::int32_t* x = first; x < last; x += 2) {
        if (x[0] < x[1]) painter.Span(y, x[0], x[1]);
    }
}

template <int kUnits>
void AreaScanner::PaintBands(SpanPainter& painter) {
    const Rect& bounds = painter.Bounds();
    for (std::int32_t top = topRow_; top < endRow_;) {
        const std::int32_t end = EndOfBand(top, bounds);
        if (reach_ <= kNarrowReach) {
            for (const Edge& edge : edges_) FindCrossings<kUnits, std::int64_t>(edge, top, end, bounds);
        } else {
            for (const Edge& edge : edges_) FindCrossings<kUnits, Wide>(edge, top, end, bounds);
        }
        // Each row's mark has come to the start of the row that follows.
        std::size_t begin = 0;
        for (std::int32_t y = top; y < end; ++y) {
            const std::size_t rowEnd = rowAt_[static_cast<std::size_t>(y - top)];
            PaintRow(y, begin, rowEnd, painter);
            begin = rowEnd;
        }
        top = end;
    }
    busy_ = false;
}

void AreaScanner::Fill(const Point* pts, const std::int32_t* counts, std::size_t ringCnt, SpanPainter& painter) {
    Begin(painter.Bounds());
    for (std::size_t i = 0; i < ringCnt; ++i) {
        const auto count = static_cast<std::size_t>(counts[i]);
        AddRing<1>(pts, count, painter.Bounds());
        pts += count;
    }
    PaintBands<1>(painter);
}

void AreaScanner::FillFine(const FinePoint* pts, std::size_t count, SpanPainter& painter) {
    Begin(painter.Bounds());
    AddRing<kFinePerPixel>(pts, count, painter.Bounds());
    PaintBands<kFinePerPixel>(painter);
}

void AreaScanner::Begin(const Rect& bounds) {
    if (busy_) std::fill(rowChange_.begin(), rowChange_.end(), 0);  // the fill before ran out of memory half way
    busy_ = true;
    edges_.clear();
    reach_ = 0;
    topRow_ = bounds.bottom;
    endRow_ = bounds.top;
    const auto rowCnt = static_cast<std::size_t>(bounds.bottom - bounds.top) + 1;
    if (rowChange_.size() < rowCnt) rowChange_.resize(rowCnt, 0);
}

}  // namespace orvane
