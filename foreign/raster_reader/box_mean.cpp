#include "foreign/raster_reader/box_mean.h"

#include <algorithm>
#include <cmath>

#include "platform/to_int.h"

namespace orvane {

namespace {

// An edge in the middle between two places is taken to the right one, whichever way its sum was rounded.
constexpr double kTie = 1e-3;

std::int64_t PlaceOf(double edge) { return TruncToInt64(std::floor(edge * PixelRun::kPixel + 0.5 + kTie)); }

}  // namespace

void TakeRuns(double start, double step, std::int32_t count, std::int32_t size, std::vector<PixelRun>& out) {
    out.clear();
    const std::int64_t end = std::int64_t{size} * PixelRun::kPixel;
    for (std::int32_t i = 0; i < count; ++i) {
        const std::int64_t from = std::clamp<std::int64_t>(PlaceOf(start + i * step), 0, end - 1);
        out.push_back({from, std::clamp<std::int64_t>(PlaceOf(start + (i + 1) * step), from + 1, end)});
    }
}

BoxMeans::BoxMeans(std::span<const PixelRun> columns, bool isOpaque)
    : columns_(columns), isOpaque_(isOpaque), row_(columns.size()), sums_(columns.size()) {}

void BoxMeans::TakeRow(const Rgba* row) {
    if (isOpaque_) {
        Take<true>(row);
    } else {
        Take<false>(row);
    }
}

template <bool IsOpaque>
void BoxMeans::Take(const Rgba* row) {
    const std::int64_t origin = columns_.front().FirstPixel();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const PixelRun& run = columns_[i];
        Sum sum;
        const auto add = [&](const Rgba& pixel, std::uint64_t weight) {
            if (!IsOpaque) weight *= pixel.alpha;
            sum.red += weight * pixel.red;
            sum.green += weight * pixel.green;
            sum.blue += weight * pixel.blue;
            sum.alpha += weight;
        };
        const std::int64_t first = run.FirstPixel();
        const std::int64_t last = run.PixelEnd() - 1;
        const Rgba* pixel = row + (first - origin);
        if (first == last) {
            add(*pixel, static_cast<std::uint64_t>(run.to - run.from));
        } else {
            add(*pixel++, static_cast<std::uint64_t>((first + 1) * PixelRun::kPixel - run.from));
            for (std::int64_t at = first + 1; at < last; ++at) add(*pixel++, PixelRun::kPixel);
            add(*pixel, static_cast<std::uint64_t>(run.to - last * PixelRun::kPixel));
        }
        row_[i] = sum;
    }
}

void BoxMeans::Start() {
    rows_ = 0;
    std::fill(sums_.begin(), sums_.end(), Sum{});
}

void BoxMeans::Add(std::int64_t weight) {
    rows_ += weight;
    const auto w = static_cast<std::uint64_t>(weight);
    for (std::size_t i = 0; i < sums_.size(); ++i) {
        sums_[i].red += row_[i].red * w;
        sums_[i].green += row_[i].green * w;
        sums_[i].blue += row_[i].blue * w;
        sums_[i].alpha += row_[i].alpha * w;
    }
}

void BoxMeans::Finish(Rgba* out) const {
    for (std::size_t i = 0; i < sums_.size(); ++i) {
        const Sum& sum = sums_[i];
        if (sum.alpha == 0) {
            out[i] = {0, 0, 0, 0};
            continue;
        }
        const auto mean = [&](std::uint64_t part) { return static_cast<std::uint8_t>((part + sum.alpha / 2) / sum.alpha); };
        const auto area = static_cast<std::uint64_t>((columns_[i].to - columns_[i].from) * rows_);
        const auto alpha = isOpaque_ ? std::uint8_t{255} : static_cast<std::uint8_t>((sum.alpha + area / 2) / area);
        out[i] = {mean(sum.red), mean(sum.green), mean(sum.blue), alpha};
    }
}

}  // namespace orvane
