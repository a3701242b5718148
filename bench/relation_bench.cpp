// Relation tests of one area of 200 corners against 100,000 polygons of 20 on the screen, for each operator, beside GEOS's
// prepared predicates on the same device coordinates.
//
// GEOS's geometries of the items are made before the clock runs; the area is made ready within it on both sides. Equality has no
// prepared form there. Each round runs both one after the other; what is reported are the medians over the rounds and their
// ratio, and how many items each of the two found: they mean different things by some of the names.
#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <cmath>
#include <vector>

#include "analysis/relation.h"
#include "bench/frame_measure.h"

namespace orvane::bench {
namespace {

constexpr int kItemCnt = 100000;
constexpr int kCornerCnt = 200;
constexpr int kRelationRounds = 7;
constexpr double kReach = 3500;  ///< map units: about a fifth of the screen

/// The area in map coordinates: corners at even angles, each at its own distance.
std::vector<DigPnt> MakeArea() {
    Random random(8);
    std::vector<DigPnt> ring;
    for (int i = 0; i < kCornerCnt; ++i) {
        const double angle = 6.283185307179586 * i / kCornerCnt;
        const double radius = kReach * random.Between(0.7, 1);
        ring.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
    }
    ring.push_back(ring.front());
    return ring;
}

/// The items in a store, all of them drawn, the view as in the benchmarks of frames.
class Items {
public:
    Items() : polygons_(MakePolygons(kItemCnt, 21)) {
        store.Init();
        store.view.ScaleX = store.view.ScaleY = 1;
        store.view.DotPerM = 3779;
        store.view.Zoom = 37790;
        store.DigMemAlloc2("LOTS", 1, kLayPolygon, "", 1, 0, 0);
        for (int i = 0; i < kItemCnt; ++i) {
            store.AddDigDat("LOTS", 1, i + 1, 0);
            store.SetDigDatPnts("LOTS", 1, i + 1, polygons_[static_cast<std::size_t>(i)]);
        }
        store.SetLayDspFlg("LOTS", true);
        store.SetLayActive("LOTS", true);
        DigBlock& block = Block();
        block.inView = 1;
        for (DigDat& dat : block.dats) dat.drawnFlg = dat.clipFlg = 1;
        for (const DigPnt& p : MakeArea()) {
            areaX_.push_back(p.x);
            areaY_.push_back(p.y);
        }
    }
    Items(const Items&) = delete;
    Items& operator=(const Items&) = delete;

    void Test(std::int32_t op) {
        TestRelation(store, {-kHalfWidth, -kHalfHeight, 0, 0}, {ShapeType::Polygon, areaX_, areaY_}, op);
    }
    std::int32_t ActiveCnt() {
        std::int32_t count = 0;
        for (const DigDat& dat : Block().dats) count += dat.active;
        return count;
    }
    std::vector<DigPnt> OnDevice(const std::vector<DigPnt>& pnts) const {
        const DeviceTransform toDevice(store.view, -kHalfWidth, -kHalfHeight, 0, 0, 0, 0);
        std::vector<DigPnt> out;
        for (const DigPnt& p : pnts) out.push_back(toDevice.ToDeviceF(p.x, p.y));
        return out;
    }
    const std::vector<std::vector<DigPnt>>& Polygons() const { return polygons_; }

    CDigMem store;

private:
    DigBlock& Block() { return store.MutableBlock(store.FindBlock("LOTS", 1).block); }

    std::vector<std::vector<DigPnt>> polygons_;
    std::vector<double> areaX_, areaY_;
};

class Peer {
public:
    explicit Peer(const Items& items) : handle_(GEOS_init_r()), area_(Polygon(items.OnDevice(MakeArea()))) {
        for (const std::vector<DigPnt>& polygon : items.Polygons()) items_.push_back(Polygon(items.OnDevice(polygon)));
    }
    ~Peer() {
        for (GEOSGeometry* g : items_) GEOSGeom_destroy_r(handle_, g);
        GEOSGeom_destroy_r(handle_, area_);
        GEOS_finish_r(handle_);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    std::int32_t Test(RelationOp op) {
        // Ready geometries are kept with what they were made of, so each round has an area of its own.
        GEOSGeometry* const area = GEOSGeom_clone_r(handle_, area_);
        const GEOSPreparedGeometry* const ready = GEOSPrepare_r(handle_, area);
        std::int32_t count = 0;
        for (const GEOSGeometry* item : items_) {
            if (op == RelationOp::Equals ? GEOSEquals_r(handle_, area, item) == 1 : PredicateOf(op)(handle_, ready, item) == 1)
                ++count;
        }
        GEOSPreparedGeom_destroy_r(handle_, ready);
        GEOSGeom_destroy_r(handle_, area);
        return count;
    }

private:
    using Predicate = char (*)(GEOSContextHandle_t, const GEOSPreparedGeometry*, const GEOSGeometry*);

    static Predicate PredicateOf(RelationOp op) {
        switch (op) {
            case RelationOp::Disjoint:
                return GEOSPreparedDisjoint_r;
            case RelationOp::Touches:
                return GEOSPreparedTouches_r;
            case RelationOp::Crosses:
                return GEOSPreparedCrosses_r;
            case RelationOp::Within:
                return GEOSPreparedWithin_r;
            case RelationOp::Contains:
                return GEOSPreparedContains_r;
            case RelationOp::Overlaps:
                return GEOSPreparedOverlaps_r;
            default:
                return GEOSPreparedIntersects_r;
        }
    }

    GEOSGeometry* Polygon(const std::vector<DigPnt>& pts) {
        GEOSCoordSequence* const places = GEOSCoordSeq_create_r(handle_, static_cast<unsigned>(pts.size()), 2);
        for (unsigned i = 0; i < pts.size(); ++i) GEOSCoordSeq_setXY_r(handle_, places, i, pts[i].x, pts[i].y);
        return GEOSGeom_createPolygon_r(handle_, GEOSGeom_createLinearRing_r(handle_, places), nullptr, 0);
    }

    GEOSContextHandle_t handle_;
    GEOSGeometry* area_;
    std::vector<GEOSGeometry*> items_;
};

void AreaAgainstPolygons(benchmark::State& state) {
    const auto op = static_cast<std::int32_t>(state.range(0));
    Items items;
    Peer peer(items);
    std::vector<double> own, theirs;
    std::int32_t found = 0;
    items.Test(op);
    peer.Test(static_cast<RelationOp>(op));
    for (auto _ : state) {
        own.push_back(Milliseconds([&] { items.Test(op); }));
        theirs.push_back(Milliseconds([&] { found = peer.Test(static_cast<RelationOp>(op)); }));
        state.SetIterationTime(own.back() / 1000.0);
    }
    state.counters["own_ms"] = Median(own);
    state.counters["geos_ms"] = Median(theirs);
    state.counters["own_to_geos"] = Median(own) / Median(theirs);
    state.counters["own_found"] = items.ActiveCnt();
    state.counters["geos_found"] = found;
}
BENCHMARK(AreaAgainstPolygons)
    ->ArgName("operator")
    ->DenseRange(0, 7)
    ->Iterations(kRelationRounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
