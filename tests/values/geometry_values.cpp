#include <string>
#include <vector>

#include "analysis/geometry/plane.h"
#include "analysis/overlay.h"
#include "analysis/relation.h"
#include "tests/values/value_table.h"

namespace orvane {

namespace {

/// Numbers that look like surveyed ones, the same on every system: whole thousandths from a generator of 32 bits.
class Numbers {
public:
    double Next() {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<double>(state_ >> 8 & 0xFFFFF) / 1000.0 - 500.0;
    }
    DigPnt Point() {
        const double x = Next();
        return {x, Next(), 0};
    }

private:
    std::uint32_t state_ = 20061;
};

/// A ring around a place that crosses others of its kind in many points.
std::vector<DigPnt> Ring(Numbers& numbers, double x, double y) {
    constexpr double kAround[8][2] = {{1, 0},  {0.75, 0.625}, {0, 1},  {-0.625, 0.75},
                                      {-1, 0}, {-0.75, -0.5}, {0, -1}, {0.5, -0.875}};
    std::vector<DigPnt> ring;
    for (const auto& side : kAround) {
        const double far_ = 700 + numbers.Next();
        ring.push_back({x + side[0] * far_, y + side[1] * far_, 0});
    }
    ring.push_back(ring.front());
    return ring;
}

double AreaOf(const std::vector<DigPnt>& ring) {
    double twice = 0;
    for (std::size_t i = 0; i + 1 < ring.size(); ++i) twice += ring[i].x * ring[i + 1].y - ring[i + 1].x * ring[i].y;
    return twice / 2;
}

void TellSegments(ValueTable& table, Numbers& numbers) {
    for (int i = 0; i < 200; ++i) {
        const DigPnt a = numbers.Point(), b = numbers.Point(), c = numbers.Point(), d = numbers.Point();
        const std::string at = "_" + std::to_string(i);
        DigPnt crossing;
        const std::int32_t crosses = SegCross(a, b, c, d, crossing);
        table.Exact("crossing" + at, {static_cast<double>(crosses), crossing.x, crossing.y});
        table.Exact("distance" + at, {SegDist(c, a, b), SlopeOf(a, b), Pythag(a.x, a.y), SixDecimals(a.x / 3)});
    }
}

void TellOverlays(ValueTable& table, Numbers& numbers) {
    for (int i = 0; i < 40; ++i) {
        const std::vector<DigPnt> a = Ring(numbers, 0, 0);
        const std::vector<DigPnt> b = Ring(numbers, numbers.Next(), numbers.Next());
        table.Exact("area_" + std::to_string(i), {AreaOf(a), AreaOf(b)});
        for (const OverlayMode mode : {OverlayMode::Intersection, OverlayMode::Union}) {
            const std::string name = "overlay_" + std::to_string(static_cast<int>(mode)) + "_" + std::to_string(i);
            std::vector<DigPnt> result;
            const bool done = OverlayPolygons(a, b, mode, result);
            table.Exact(name, {done ? 1.0 : 0.0, static_cast<double>(result.size()), AreaOf(result)});
            for (std::size_t k = 0; k < result.size(); ++k) {
                table.Exact(name + "_" + std::to_string(k), {result[k].x, result[k].y});
            }
        }
    }
}

}  // namespace

void TellGeometry(ValueTable& table) {
    Numbers numbers;
    TellSegments(table, numbers);
    TellOverlays(table, numbers);
}

}  // namespace orvane
