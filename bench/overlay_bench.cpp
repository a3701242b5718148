// Overlay of polygons beside GEOS, whose own polygons are made before the clock runs, as are ours.
//
// Each round runs both one after the other on the same pairs; what is reported are the medians over the rounds and their ratio.
#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <cmath>
#include <utility>
#include <vector>

#include "analysis/overlay.h"
#include "bench/frame_measure.h"

namespace orvane::bench {
namespace {

using Points = std::vector<DigPnt>;
constexpr int kOverlayRounds = 5;

/// A polygon that does not cross itself: corners at ascending angles, each at its own distance of `inner` to 1 times `reach`.
Points StarShaped(Random& random, double x, double y, double reach, double inner, int corners) {
    Points pts;
    for (int i = 0; i < corners; ++i) {
        const double angle = 6.283185307179586 * (i + random.Between(0, 0.8)) / corners;
        const double r = reach * random.Between(inner, 1);
        pts.push_back({x + r * std::cos(angle), y + r * std::sin(angle), 0});
    }
    pts.push_back(pts.front());
    return pts;
}

class Peer {
public:
    Peer() : handle_(GEOS_init_r()) {}
    ~Peer() {
        for (GEOSGeometry* g : made_) GEOSGeom_destroy_r(handle_, g);
        GEOS_finish_r(handle_);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    const GEOSGeometry* Polygon(const Points& pts) {
        GEOSCoordSequence* const places = GEOSCoordSeq_create_r(handle_, static_cast<unsigned>(pts.size()), 2);
        for (unsigned i = 0; i < pts.size(); ++i) GEOSCoordSeq_setXY_r(handle_, places, i, pts[i].x, pts[i].y);
        made_.push_back(GEOSGeom_createPolygon_r(handle_, GEOSGeom_createLinearRing_r(handle_, places), nullptr, 0));
        return made_.back();
    }
    void Overlay(const GEOSGeometry* a, const GEOSGeometry* b, OverlayMode mode) {
        GEOSGeometry* const result = mode == OverlayMode::Union ? GEOSUnion_r(handle_, a, b) : GEOSIntersection_r(handle_, a, b);
        benchmark::DoNotOptimize(result);
        if (result != nullptr) GEOSGeom_destroy_r(handle_, result);
    }

private:
    GEOSContextHandle_t handle_;
    std::vector<GEOSGeometry*> made_;
};

void Measure(benchmark::State& state, const std::vector<std::pair<Points, Points>>& pairs, OverlayMode mode) {
    Peer peer;
    std::vector<std::pair<const GEOSGeometry*, const GEOSGeometry*>> theirs;
    for (const auto& [a, b] : pairs) theirs.push_back({peer.Polygon(a), peer.Polygon(b)});
    std::vector<double> own, other;
    std::size_t results = 0;
    std::size_t points = 0;
    for (auto _ : state) {
        results = points = 0;
        own.push_back(Milliseconds([&] {
            Points result;
            for (const auto& [a, b] : pairs) {
                if (OverlayPolygons(a, b, mode, result)) ++results;
                points += result.size();
            }
        }));
        other.push_back(Milliseconds([&] {
            for (const auto& [a, b] : theirs) peer.Overlay(a, b, mode);
        }));
        state.SetIterationTime(own.back() / 1000.0);
    }
    state.counters["overlay_ms"] = Median(own);
    state.counters["geos_ms"] = Median(other);
    state.counters["overlay_to_geos"] = Median(own) / Median(other);
    state.counters["results"] = static_cast<double>(results);
    state.counters["points"] = static_cast<double>(points);
}

std::vector<std::pair<Points, Points>> ManyPairs() {
    Random random(21);
    const auto one = [&] {
        const double x = random.Between(-30, 30);
        const double y = random.Between(-30, 30);
        return StarShaped(random, x, y, 80, 0.5, static_cast<int>(random.Between(10, 200)));
    };
    std::vector<std::pair<Points, Points>> pairs;
    for (int i = 0; i < 10000; ++i) {
        Points a = one();
        pairs.push_back({std::move(a), one()});
    }
    return pairs;
}

std::vector<std::pair<Points, Points>> OneLargePair() {
    Random random(22);
    Points a = StarShaped(random, 0, 0, 100000, 0.999, 100000);
    return {{std::move(a), StarShaped(random, 60000, 0, 100000, 0.999, 100000)}};
}

void IntersectionOfPairs(benchmark::State& state) { Measure(state, ManyPairs(), OverlayMode::Intersection); }
BENCHMARK(IntersectionOfPairs)->Iterations(kOverlayRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void UnionOfPairs(benchmark::State& state) { Measure(state, ManyPairs(), OverlayMode::Union); }
BENCHMARK(UnionOfPairs)->Iterations(kOverlayRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void IntersectionOfLargePair(benchmark::State& state) { Measure(state, OneLargePair(), OverlayMode::Intersection); }
BENCHMARK(IntersectionOfLargePair)->Iterations(kOverlayRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void UnionOfLargePair(benchmark::State& state) { Measure(state, OneLargePair(), OverlayMode::Union); }
BENCHMARK(UnionOfLargePair)->Iterations(kOverlayRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
