// Overlay of polygons beside GEOS and, where its headers are there, Boost.Geometry. All polygons are made before the clock runs.
//
// Each round runs all of them one after the other on the same pairs; what is reported are the medians over the rounds and their
// ratios.
#include <benchmark/benchmark.h>
#include <geos_c.h>

#ifdef ORVANE_BENCH_BOOST
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#endif

#include <cmath>
#include <utility>
#include <vector>

#include "analysis/overlay.h"
#include "bench/frame_measure.h"

namespace orvane::bench {
namespace {

#ifdef ORVANE_BENCH_BOOST
namespace bg = boost::geometry;
#endif

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

/// Several parts stand one behind the other; each is a ring that closes.
std::vector<Points> PartsOf(const Points& pts) {
    std::vector<Points> parts(1);
    for (const DigPnt& p : pts) {
        Points& part = parts.back();
        part.push_back(p);
        if (part.size() > 2 && p.x == part.front().x && p.y == part.front().y) parts.emplace_back();
    }
    parts.pop_back();
    return parts;
}

class Geos {
public:
    Geos() : handle_(GEOS_init_r()) {}
    ~Geos() {
        for (GEOSGeometry* g : made_) GEOSGeom_destroy_r(handle_, g);
        GEOS_finish_r(handle_);
    }
    Geos(const Geos&) = delete;
    Geos& operator=(const Geos&) = delete;

    using Shape = const GEOSGeometry*;
    Shape Make(const Points& pts) {
        std::vector<GEOSGeometry*> parts;
        for (const Points& part : PartsOf(pts)) parts.push_back(Polygon(part));
        made_.push_back(parts.size() == 1 ? parts.front()
                                          : GEOSGeom_createCollection_r(handle_, GEOS_MULTIPOLYGON, parts.data(),
                                                                        static_cast<unsigned>(parts.size())));
        return made_.back();
    }
    void Overlay(Shape a, Shape b, OverlayMode mode) {
        GEOSGeometry* const result = mode == OverlayMode::Union ? GEOSUnion_r(handle_, a, b) : GEOSIntersection_r(handle_, a, b);
        benchmark::DoNotOptimize(result);
        if (result != nullptr) GEOSGeom_destroy_r(handle_, result);
    }

private:
    GEOSGeometry* Polygon(const Points& pts) {
        GEOSCoordSequence* const places = GEOSCoordSeq_create_r(handle_, static_cast<unsigned>(pts.size()), 2);
        for (unsigned i = 0; i < pts.size(); ++i) GEOSCoordSeq_setXY_r(handle_, places, i, pts[i].x, pts[i].y);
        return GEOSGeom_createPolygon_r(handle_, GEOSGeom_createLinearRing_r(handle_, places), nullptr, 0);
    }

    GEOSContextHandle_t handle_;
    std::vector<GEOSGeometry*> made_;
};

#ifdef ORVANE_BENCH_BOOST
class Boost {
public:
    using Shape = bg::model::multi_polygon<bg::model::polygon<bg::model::d2::point_xy<double>>>;
    static Shape Make(const Points& pts) {
        Shape shape;
        for (const Points& part : PartsOf(pts)) {
            shape.emplace_back();
            for (const DigPnt& p : part) shape.back().outer().push_back({p.x, p.y});
        }
        bg::correct(shape);
        return shape;
    }
    static void Overlay(const Shape& a, const Shape& b, OverlayMode mode) {
        Shape result;
        if (mode == OverlayMode::Union) {
            bg::union_(a, b, result);
        } else {
            bg::intersection(a, b, result);
        }
        benchmark::DoNotOptimize(result.size());
    }
};
#endif

/// The shapes of a peer are made before the clock runs.
template <class Peer>
class Rival {
public:
    explicit Rival(const std::vector<std::pair<Points, Points>>& pairs) {
        for (const auto& [a, b] : pairs) pairs_.emplace_back(peer_.Make(a), peer_.Make(b));
    }
    void Run(OverlayMode mode) {
        times_.push_back(Milliseconds([&] {
            for (const auto& [a, b] : pairs_) peer_.Overlay(a, b, mode);
        }));
    }
    double Time() const { return Median(times_); }

private:
    Peer peer_;
    std::vector<std::pair<typename Peer::Shape, typename Peer::Shape>> pairs_;
    std::vector<double> times_;
};

void Measure(benchmark::State& state, const std::vector<std::pair<Points, Points>>& pairs, OverlayMode mode,
             [[maybe_unused]] bool besideBoost) {
    Rival<Geos> geos(pairs);
#ifdef ORVANE_BENCH_BOOST
    Rival<Boost> boost(pairs);
#endif
    std::vector<double> own;
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
        geos.Run(mode);
#ifdef ORVANE_BENCH_BOOST
        if (besideBoost) boost.Run(mode);
#endif
        state.SetIterationTime(own.back() / 1000.0);
    }
    state.counters["overlay_ms"] = Median(own);
    state.counters["geos_ms"] = geos.Time();
    state.counters["overlay_to_geos"] = Median(own) / geos.Time();
#ifdef ORVANE_BENCH_BOOST
    if (besideBoost) {
        state.counters["boost_ms"] = boost.Time();
        state.counters["overlay_to_boost"] = Median(own) / boost.Time();
    }
#endif
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

/// A back with teeth that point upward, `slant` to the right for each unit up, each tip at a height of its own when `ragged`.
Points Comb(double x, double y, int teeth, double slant, bool ragged) {
    Random random(23);
    Points pts{{x, y, 0}, {x + 2 * teeth, y, 0}};
    for (int i = teeth; i-- > 0;) {
        const double up = 100 + (ragged ? 50 * random.Unit() : 0);
        pts.push_back({x + 2 * i + 1 + slant * up, y + up, 0});
        pts.push_back({x + 2 * i + slant * up, y + up, 0});
        pts.push_back({x + 2 * i, y + 5, 0});
        if (i > 0) pts.push_back({x + 2 * i - 1, y + 5, 0});
    }
    pts.push_back(pts.front());
    return pts;
}

std::vector<std::pair<Points, Points>> TwoCombs(double slant, bool ragged) {
    return {{Comb(0, 0, 5000, slant, ragged), Comb(0.5, 7, 5000, slant, ragged)}};
}

Points Grid(double x, double y) {
    Points pts;
    for (int row = 0; row < 100; ++row) {
        for (int column = 0; column < 100; ++column) {
            const double left = x + 10 * column, bottom = y + 10 * row;
            for (const auto& [dx, dy] : {std::pair(0, 0), {8, 0}, {8, 8}, {0, 8}, {0, 0}})
                pts.push_back({left + dx, bottom + dy, 0});
        }
    }
    return pts;
}

std::vector<std::pair<Points, Points>> TwoGrids() { return {{Grid(0, 0), Grid(5, 4)}}; }

void Overlays(benchmark::State& state, std::vector<std::pair<Points, Points>> (*make)(), OverlayMode mode) {
    Measure(state, make(), mode, true);
}

/// For shapes whose overlay does not end in Boost.Geometry.
void OverlaysBesideGeos(benchmark::State& state, std::vector<std::pair<Points, Points>> (*make)(), OverlayMode mode) {
    Measure(state, make(), mode, false);
}

std::vector<std::pair<Points, Points>> UprightCombs() { return TwoCombs(0, false); }
std::vector<std::pair<Points, Points>> SlantedCombs() { return TwoCombs(0.7, true); }

void InRounds(benchmark::internal::Benchmark* bench) {
    bench->Iterations(kOverlayRounds)->UseManualTime()->Unit(benchmark::kMillisecond);
}

constexpr OverlayMode kIntersection = OverlayMode::Intersection;
constexpr OverlayMode kUnion = OverlayMode::Union;
BENCHMARK_CAPTURE(Overlays, intersection_of_pairs, ManyPairs, kIntersection)->Apply(InRounds);
BENCHMARK_CAPTURE(Overlays, union_of_pairs, ManyPairs, kUnion)->Apply(InRounds);
BENCHMARK_CAPTURE(Overlays, intersection_of_large_pair, OneLargePair, kIntersection)->Apply(InRounds);
BENCHMARK_CAPTURE(Overlays, union_of_large_pair, OneLargePair, kUnion)->Apply(InRounds);
BENCHMARK_CAPTURE(Overlays, intersection_of_combs, UprightCombs, kIntersection)->Apply(InRounds);
BENCHMARK_CAPTURE(Overlays, union_of_combs, UprightCombs, kUnion)->Apply(InRounds);
BENCHMARK_CAPTURE(Overlays, intersection_of_slanted_combs, SlantedCombs, kIntersection)->Apply(InRounds);
BENCHMARK_CAPTURE(Overlays, union_of_slanted_combs, SlantedCombs, kUnion)->Apply(InRounds);
BENCHMARK_CAPTURE(OverlaysBesideGeos, intersection_of_grids, TwoGrids, kIntersection)->Apply(InRounds);
BENCHMARK_CAPTURE(OverlaysBesideGeos, union_of_grids, TwoGrids, kUnion)->Apply(InRounds);

}  // namespace
}  // namespace orvane::bench
