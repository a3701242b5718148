// Workloads of the benchmarks, made here so that every run has the same shapes: a generator of its own, no random device.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "analysis/geometry/dig_pnt.h"

namespace orvane::bench {

/// A small generator (xorshift) with the same numbers on every system.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed * 2654435769u + 88172645463325252u) {}
    /// From 0 up to, not including, 1.
    double Unit() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<double>(state_ >> 11) / 9007199254740992.0;
    }
    double Between(double low, double high) { return low + (high - low) * Unit(); }

private:
    std::uint64_t state_;
};

/// Where the shapes lie: map units, the view of 1920 x 1080 pixels at 10 units a pixel, (0, 0) in the middle.
inline constexpr double kHalfWidth = 9600;
inline constexpr double kHalfHeight = 5400;

/// `count` polylines of `points` points each: short walks that start anywhere in the view.
inline std::vector<std::vector<DigPnt>> MakeLines(int count, int points) {
    Random random(1);
    std::vector<std::vector<DigPnt>> lines(static_cast<std::size_t>(count));
    for (auto& line : lines) {
        double x = random.Between(-kHalfWidth, kHalfWidth);
        double y = random.Between(-kHalfHeight, kHalfHeight);
        double heading = random.Between(0, 6.283185307179586);
        for (int i = 0; i < points; ++i) {
            line.push_back({x, y, 0});
            heading += random.Between(-0.6, 0.6);
            x += 60 * std::cos(heading);
            y += 60 * std::sin(heading);
        }
    }
    return lines;
}

/// `count` closed rings of `points` points each (the last repeats the first): star-shaped lots around a centre.
inline std::vector<std::vector<DigPnt>> MakePolygons(int count, int points) {
    Random random(2);
    std::vector<std::vector<DigPnt>> rings(static_cast<std::size_t>(count));
    for (auto& ring : rings) {
        const double cx = random.Between(-kHalfWidth, kHalfWidth);
        const double cy = random.Between(-kHalfHeight, kHalfHeight);
        for (int i = 0; i + 1 < points; ++i) {
            const double angle = 6.283185307179586 * i / (points - 1);
            const double radius = random.Between(60, 160);
            ring.push_back({cx + radius * std::cos(angle), cy + radius * std::sin(angle), 0});
        }
        ring.push_back(ring.front());
    }
    return rings;
}

}  // namespace orvane::bench
