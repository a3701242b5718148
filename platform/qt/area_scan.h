// Fills of areas by the platform's rules: a pixel stands at its whole-numbered point; it belongs to the area when that point is
// inside by the alternate rule, and a point on an edge belongs to the side right of it or below it.
//
// Crossings of edges and rows are exact for every 32-bit coordinate, so nothing has to be cut to a box before it is drawn. The
// time of a fill follows its points and the rows of the clip that its edges cross, and the memory its points.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/qt/span_painter.h"
#include "platform/values.h"

namespace orvane {

/// A position in parts of a pixel; see AreaScanner::kFinePerPixel.
struct FinePoint {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

class AreaScanner {
public:
    static constexpr std::int32_t kFinePerPixel = 256;

    /// Fills `ringCnt` rings together; `counts[i]` points of ring i stand one behind the other in `pts`. A ring needs no closing
    /// point. REQUIRES: counts of 0 or more.
    void Fill(const Point* pts, const std::int32_t* counts, std::size_t ringCnt, SpanPainter& painter);
    /// Fills one ring of finer points. REQUIRES: coordinates below 2^42 in size.
    void FillFine(const FinePoint* pts, std::size_t count, SpanPainter& painter);

private:
    struct Edge {  // from its upper end down; in whole or in fine units
        std::int64_t x = 0;
        std::int64_t y = 0;
        std::int64_t dx = 0;
        std::int64_t dy = 0;
        std::int32_t firstRow = 0;
        std::int32_t endRow = 0;
    };

    void Begin(const Rect& bounds);
    template <int kUnits>
    void AddRing(const auto* pts, std::size_t count, const Rect& bounds);
    template <int kUnits>
    void PaintBands(SpanPainter& painter);
    std::int32_t EndOfBand(std::int32_t firstRow, const Rect& bounds);
    template <int kUnits, class Product>
    void FindCrossings(const Edge& edge, std::int32_t bandTop, std::int32_t bandEnd, const Rect& bounds);
    void PaintRow(std::int32_t y, std::size_t begin, std::size_t end, SpanPainter& painter);

    // All kept between fills, so that a fill allocates nothing.
    std::vector<Edge> edges_;
    std::vector<std::int32_t> rowChange_;  ///< by row of the clip: edges that begin there minus those that end; 0 between fills
    std::vector<std::size_t> rowAt_;       ///< by row of the band: where its next crossing goes
    std::vector<std::int32_t> crossings_;
    std::int64_t reach_ = 0;  ///< the largest coordinate, in units
    std::int32_t topRow_ = 0;
    std::int32_t endRow_ = 0;
    bool busy_ = false;
};

}  // namespace orvane
