// What the conversion of coordinates costs: the plane zones beside the library PROJ with its default transverse Mercator, and
// the frame change of 1,000,000 points beside one that works out its sheet's corners for every point.
//
// Both sides of a ratio run in turn in each round; medians are reported, in nanoseconds a point.
#include <benchmark/benchmark.h>
#include <proj.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "control/frame_data.h"
#include "geo/geo_conv.h"

namespace orvane::bench {
namespace {

constexpr int kZone = 9;
constexpr std::size_t kPoints = 100000;

template <class Work>
double Nanoseconds(std::size_t count, Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
    return took.count() / static_cast<double>(count);
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// Places over the zone, 300 kilometres to each side of the origin in north and 150 in east.
std::vector<PlaneXY> Places() {
    std::vector<PlaneXY> places;
    for (std::size_t i = 0; i < kPoints; ++i) {
        places.push_back({static_cast<double>(i % 601) * 1000 - 300000, static_cast<double>(i / 601 % 301) * 1000 - 150000});
    }
    return places;
}

void Report(benchmark::State& state, const std::vector<double>& own, const std::vector<double>& peer) {
    state.counters["own_ns"] = Median(own);
    state.counters["peer_ns"] = Median(peer);
    state.counters["ratio"] = Median(own) / Median(peer);
}

void Zone(benchmark::State& state, bool forward) {
    const GeoConv conv;
    PJ* const way = proj_create(nullptr, "+proj=tmerc +k=0.9999 +ellps=bessel +lat_0=36 +lon_0=139d50m");
    const std::vector<PlaneXY> places = Places();
    std::vector<GeoRad> angles;
    for (const PlaneXY& place : places) angles.push_back(*conv.PlaneToGeoRad(place, kZone));
    std::vector<double> own, peer;
    double sum = 0;
    for (auto _ : state) {
        own.push_back(Nanoseconds(kPoints, [&] {
            for (std::size_t i = 0; i < kPoints; ++i) {
                sum += forward ? conv.GeoToPlane(angles[i], kZone)->x : conv.PlaneToGeoRad(places[i], kZone)->latitude;
            }
        }));
        peer.push_back(Nanoseconds(kPoints, [&] {
            for (std::size_t i = 0; i < kPoints; ++i) {
                const PJ_COORD in = forward ? proj_coord(angles[i].longitude, angles[i].latitude, 0, 0)
                                            : proj_coord(places[i].y, places[i].x, 0, 0);
                sum += proj_trans(way, forward ? PJ_FWD : PJ_INV, in).v[1];
            }
        }));
    }
    benchmark::DoNotOptimize(sum);
    proj_destroy(way);
    Report(state, own, peer);
}

/// 100 sheets of 1000 items of ten points.
void FillSheets(CDigMem& store) {
    const GeoConv conv;
    for (std::int32_t sheet = 0; sheet < 100; ++sheet) {
        const double x = 3100000 + sheet % 10 * kMeshSheet;
        const double y = 4200000 + sheet / 10 * kMeshSheet;
        const std::int32_t mesh = conv.MeshSplit({x, y}).mesh;
        store.DigMemAlloc2("LINES", mesh, kLayLine, "", 1, 0, 0);
        for (std::int32_t item = 1; item <= 1000; ++item) {
            DigPnt points[10];
            for (int i = 0; i < 10; ++i) points[i] = {x + item * 9 + i * 50, y + item * 7 % 9000 + i * 40, 0};
            store.AddDigDat("LINES", mesh, item, 0);
            store.SetDigDatPnts("LINES", mesh, item, points);
        }
    }
}

/// One point, with the corners of its sheet worked out for it alone.
PlaneXY Alone(const GeoConv& conv, const DigPnt& pnt) {
    const MeshPlace place = conv.MeshSplit({pnt.x, pnt.y});
    const GeoDms corner = conv.MeshToDms(place.mesh);
    Dms north = corner.latitude;
    north.minutes += 5;
    Dms east = corner.longitude;
    east.minutes += 7;
    east.seconds += 30;
    const double lat0 = conv.DmsToRad(corner.latitude), lat1 = conv.DmsToRad(north);
    const double lon0 = conv.DmsToRad(corner.longitude), lon1 = conv.DmsToRad(east);
    return GeoConv::PlaneInSheet({*conv.GeoToPlane({lat0, lon0}, kZone), *conv.GeoToPlane({lat1, lon0}, kZone),
                                  *conv.GeoToPlane({lat1, lon1}, kZone), *conv.GeoToPlane({lat0, lon1}, kZone)},
                                 place.localX, place.localY);
}

void FrameChange(benchmark::State& state) {
    constexpr std::size_t kCount = 1000000;
    const GeoConv conv;
    CDigMem store;
    store.Init();
    FillSheets(store);
    std::vector<double> change, back, alone;
    double sum = 0;
    for (auto _ : state) {
        alone.push_back(Nanoseconds(kCount, [&] {
            for (std::int32_t b = 0; b < store.BlockCnt(); ++b) {
                for (const DigDat& dat : store.Block(b).dats) {
                    for (std::int32_t i = 0; i < dat.pntCnt; ++i) sum += Alone(conv, dat.pnts[static_cast<std::size_t>(i)]).x;
                }
            }
        }));
        change.push_back(Nanoseconds(kCount, [&] { DataToPlane(store, kZone); }));
        back.push_back(Nanoseconds(kCount, [&] { DataToMesh(store); }));
    }
    benchmark::DoNotOptimize(sum);
    Report(state, change, alone);
    state.counters["back_ns"] = Median(back);
    state.counters["times_as_fast"] = Median(alone) / Median(change);
}

BENCHMARK_CAPTURE(Zone, forward, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Zone, inverse, false)->Unit(benchmark::kMillisecond);
BENCHMARK(FrameChange)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace orvane::bench
