// Means of colours over boxes whose edges have fractions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "foreign/raster/readable_image.h"

namespace orvane {

/// A run along one axis in 256ths of a source pixel. Edges that are sums of fractions come out a hair apart in one strip and in
/// another; held to these places they are the same, and all that follows is computed in integers.
struct PixelRun {
    static constexpr std::int64_t kPixel = 256;
    std::int64_t from = 0;
    std::int64_t to = 0;

    std::int64_t FirstPixel() const { return from / kPixel; }
    std::int64_t PixelEnd() const { return (to + kPixel - 1) / kPixel; }
};

/// The boxes of steps of `step` source pixels from `start` on, held to a run of `size` pixels; none is empty.
void TakeRuns(double start, double step, std::int32_t count, std::int32_t size, std::vector<PixelRun>& out);

/// Means of one row of boxes, to which rows of source pixels are added. A colour counts by what it covers.
class BoxMeans {
public:
    BoxMeans(std::span<const PixelRun> columns, bool isOpaque);

    /// Adds up a source row along the boxes; `row` begins at the first pixel of the first box.
    void TakeRow(const Rgba* row);
    /// Begins a row of means.
    void Start();
    /// Adds the row that was taken last by its weight, in 256ths.
    void Add(std::int64_t weight);
    void Finish(Rgba* out) const;

private:
    struct Sum {
        std::uint64_t red = 0;
        std::uint64_t green = 0;
        std::uint64_t blue = 0;
        std::uint64_t alpha = 0;  ///< of pixels that are all opaque, their weight
    };
    template <bool IsOpaque>
    void Take(const Rgba* row);

    std::span<const PixelRun> columns_;
    bool isOpaque_;
    std::int64_t rows_ = 0;
    std::vector<Sum> row_;
    std::vector<Sum> sums_;
};

}  // namespace orvane
