// What the conversion of coordinates costs: the plane zones beside the library PROJ with its default transverse Mercator, the
// form that the hosts print from beside PROJ's approximate one, and the frame change of 1,000,000 points beside one that works
// out its sheet's corners for every point. Printed counts how many of 10 million points the hosts' form prints otherwise than the
// exact.
//
// Both sides of a ratio run in turn in each round; medians are reported, in nanoseconds of processor time a point, which other
// programs on the machine disturb less than time by the clock.
#include <benchmark/benchmark.h>
#include <proj.h>

#include <algorithm>
#include <charconv>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "control/frame_data.h"
#include "geo/ellipsoid.h"
#include "geo/geo_conv.h"
#include "hosts/common/coordinate_forms.h"

namespace orvane::bench {
namespace {

constexpr int kZone = 9;
constexpr std::size_t kPoints = 100000;

template <class Work>
double Nanoseconds(std::size_t count, Work work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) * (1e9 / CLOCKS_PER_SEC) / static_cast<double>(count);
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

enum class Form { Exact, Hosts };

double Own(const GeoConv& conv, Form form, const GeoRad& geo, const GeoDeg& deg) {
    return form == Form::Exact ? conv.GeoToPlane(geo, kZone)->x : DegToPlane(deg, kZone)->x;
}

double Own(const GeoConv& conv, Form form, const PlaneXY& plane) {
    return form == Form::Exact ? conv.PlaneToGeoRad(plane, kZone)->latitude : PlaneToDeg(plane, kZone)->latitude;
}

/// The exact form beside PROJ's default, or the hosts' form, its way from and to degrees included, beside PROJ's approximate one.
void Zone(benchmark::State& state, Form form, bool forward) {
    const GeoConv conv;
    const std::string approx = form == Form::Exact ? "" : "+approx ";
    PJ* const way = proj_create(nullptr, ("+proj=tmerc " + approx + "+k=0.9999 +ellps=bessel +lat_0=36 +lon_0=139d50m").c_str());
    const std::vector<PlaneXY> places = Places();
    std::vector<GeoRad> angles;
    std::vector<GeoDeg> degrees;
    for (const PlaneXY& place : places) {
        angles.push_back(*conv.PlaneToGeoRad(place, kZone));
        degrees.push_back(*PlaneToDeg(place, kZone));
    }
    std::vector<double> own, peer;
    double sum = 0;
    for (auto _ : state) {
        own.push_back(Nanoseconds(kPoints, [&] {
            for (std::size_t i = 0; i < kPoints; ++i) {
                sum += forward ? Own(conv, form, angles[i], degrees[i]) : Own(conv, form, places[i]);
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

bool SameText(double a, double b, int decimals) {
    char textA[64], textB[64];
    const auto endA = std::to_chars(textA, textA + sizeof textA, a, std::chars_format::fixed, decimals).ptr;
    const auto endB = std::to_chars(textB, textB + sizeof textB, b, std::chars_format::fixed, decimals).ptr;
    return std::equal(textA, endA, textB, endB);
}

bool SameAngle(const GeoConv& conv, double a, double b) {
    return SameText(a, b, 10) && conv.RadToDms(a / 180.0 * kPi) == conv.RadToDms(b / 180.0 * kPi);
}

/// 10 million places at random over all zones, as far as they are good, there and back: as degrees with ten decimals, as angles
/// to the ten-thousandth of a second, and as metres with four decimals.
void Printed(benchmark::State& state) {
    constexpr int kCount = 10000000;
    const GeoConv conv;
    std::int64_t geoOthers = 0;
    std::int64_t planeOthers = 0;
    for (auto _ : state) {
        std::mt19937_64 random(1);
        std::uniform_real_distribution<double> north(-700000, 700000), east(-160000, 160000);
        for (int i = 0; i < kCount; ++i) {
            const int zone = kFirstZone + i % kLastZone;
            const PlaneXY place{north(random), east(random)};
            const GeoRad rad = *conv.PlaneToGeoRad(place, zone);
            const GeoDeg exact{rad.latitude / kPi * 180.0, rad.longitude / kPi * 180.0};
            const GeoDeg deg = *PlaneToDeg(place, zone);
            geoOthers += !SameAngle(conv, deg.latitude, exact.latitude) || !SameAngle(conv, deg.longitude, exact.longitude);
            const PlaneXY back = *conv.GeoToPlane({deg.latitude / 180.0 * kPi, deg.longitude / 180.0 * kPi}, zone);
            const PlaneXY plane = *DegToPlane(deg, zone);
            planeOthers += !SameText(plane.x, back.x, 4) || !SameText(plane.y, back.y, 4);
        }
    }
    state.counters["points"] = kCount;
    state.counters["geo_others"] = static_cast<double>(geoOthers);
    state.counters["plane_others"] = static_cast<double>(planeOthers);
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

BENCHMARK_CAPTURE(Zone, forward, Form::Exact, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Zone, inverse, Form::Exact, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Zone, hosts_forward, Form::Hosts, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Zone, hosts_inverse, Form::Hosts, false)->Unit(benchmark::kMillisecond);
BENCHMARK(Printed)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(FrameChange)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace orvane::bench
