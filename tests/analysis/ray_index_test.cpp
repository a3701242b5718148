// The index of ray crossings against the plain walk over all edges, on rings that stand where it hurts: vertices on the ray's
// height, level sides, sides that cross and cover each other, slanted teeth, places between two floating-point numbers.
#include "analysis/ray_index.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/analysis/plain_overlay.h"

namespace orvane {
namespace {

using Points = plain::Points;
using Use = RayIndex::Use;

class IndexedRings {
public:
    /// Each ring closed.
    explicit IndexedRings(const std::vector<Points>& rings) : rings_(rings) {}

    bool Build(Use use) {
        std::vector<RayIndex::Side> sides;
        std::vector<std::size_t> starts{0};
        for (const Points& ring : rings_) {
            for (std::size_t i = 1; i < ring.size(); ++i) sides.push_back({ring[i - 1].x, ring[i - 1].y, ring[i].x, ring[i].y});
            starts.push_back(sides.size());
        }
        return index_.Build(std::move(sides), std::move(starts), use);
    }
    void Reverse(std::size_t ring) {
        index_.Reverse(ring);
        std::reverse(rings_[ring].begin(), rings_[ring].end());
    }
    bool Inside(const DigPnt& p) { return index_.Inside(p); }
    bool PlainInside(const DigPnt& p) const {
        // A far part to the right makes the plain ray end beyond everything, and adds nothing on any height asked for.
        plain::EdgeList edges;
        for (const Points& ring : rings_) {
            for (std::size_t i = 1; i < ring.size(); ++i) {
                edges.push_back({ring[i - 1].x, ring[i - 1].y, ring[i].x, ring[i].y, 0, 0, false});
            }
        }
        edges.push_back({1e15, 1e15, 1e15 + 1, 1e15 + 1, 0, 0, false});
        edges.push_back({1e15 + 1, 1e15 + 1, 1e15, 1e15, 0, 0, false});
        return plain::Inside(p.x, p.y, edges);
    }

private:
    std::vector<Points> rings_;
    RayIndex index_;
};

class Maker {
public:
    explicit Maker(std::uint64_t seed) : random_(seed) {}
    int Below(int n) { return static_cast<int>(random_() % static_cast<std::uint64_t>(n)); }
    double Unit() { return static_cast<double>(random_() >> 11) * 0x1p-53; }

    Points Ring(int kind) {
        Points ring;
        const int corners = 2 + Below(7);
        const double x = Below(30), y = Below(30);
        for (int i = 0; i < corners; ++i) {
            switch (kind) {
                case 0:
                    ring.push_back({x + Below(5), y + Below(4), 0});
                    break;
                case 1:
                    ring.push_back({x + 3 * Unit(), y + 3 * Unit(), 0});
                    break;
                case 2:  // a slanted tooth, many of which run side by side
                    ring.push_back({x + (i % 2) * 1e-3 + i / 2 * 12.3, y + i / 2 * 7.1, 0});
                    break;
                default:  // corners a few numbers apart
                    ring.push_back({Neighbour(1000 + Below(3), Below(4)), Neighbour(500 + Below(3), Below(4)), 0});
                    break;
            }
        }
        for (std::size_t i = ring.size() - 1; i > 0; --i) {  // as a polygon's array leaves them: no side without length
            if (Same(ring[i], ring[i - 1])) ring.erase(ring.begin() + static_cast<std::ptrdiff_t>(i));
        }
        while (ring.size() > 1 && Same(ring.front(), ring.back())) ring.pop_back();
        // A ring ends where its opening place comes first.
        for (std::size_t i = 1; i < ring.size(); ++i) {
            if (Same(ring[i], ring.front())) ring.resize(i);
        }
        if (ring.size() < 2) return {{x, y, 0}, {x + 1, y + 2, 0}, {x, y, 0}};
        ring.push_back(ring.front());
        return ring;
    }
    double Neighbour(double v, int steps) {
        for (int i = 0; i < steps; ++i) v = std::nextafter(v, 1e9);
        return v;
    }

private:
    static bool Same(const DigPnt& a, const DigPnt& b) { return a.x == b.x && a.y == b.y; }
    std::mt19937_64 random_;
};

TEST(RayIndexTest, RandomRingsCountAsThePlainWalkAlsoAfterSomeHaveBeenTurned) {
    int inside = 0;
    int asked = 0;
    for (int n = 0; n < 1500; ++n) {
        Maker maker(static_cast<std::uint64_t>(n) * 7919 + 3);
        const int kind = maker.Below(5);
        std::vector<Points> rings;
        for (int i = 0, count = 1 + maker.Below(20); i < count; ++i) rings.push_back(maker.Ring(kind == 4 ? i % 4 : kind));
        IndexedRings indexed(rings);
        ASSERT_TRUE(indexed.Build(Use::Turning));
        for (int round = 0; round < 3; ++round) {
            for (int i = 0; i < 30; ++i) {
                // A corner, or a place on the height of one, or between two numbers beside it, or anywhere.
                const Points& ring = rings[static_cast<std::size_t>(maker.Below(static_cast<int>(rings.size())))];
                DigPnt p = ring[static_cast<std::size_t>(maker.Below(static_cast<int>(ring.size())))];
                const DigPnt& q = ring[static_cast<std::size_t>(maker.Below(static_cast<int>(ring.size())))];
                const int way = maker.Below(6);
                if (way == 1) p.x = q.x;
                if (way == 2) p = {(p.x + q.x) / 2, (p.y + q.y) / 2, 0};
                if (way == 3) p.y = maker.Neighbour(p.y, 1 + maker.Below(2));
                if (way == 4) p = {40 * maker.Unit(), 40 * maker.Unit(), 0};
                if (way == 5) p.x = maker.Neighbour((p.x + q.x) / 2, maker.Below(3));
                const bool expected = indexed.PlainInside(p);
                ASSERT_EQ(indexed.Inside(p), expected) << "case " << n << " round " << round << " at " << p.x << " " << p.y;
                inside += expected ? 1 : 0;
                ++asked;
            }
            indexed.Reverse(static_cast<std::size_t>(maker.Below(static_cast<int>(rings.size()))));
        }
    }
    EXPECT_GT(inside, asked / 8);
    EXPECT_LT(inside, asked / 8 * 7);
}

TEST(RayIndexTest, CoordinatesThatLeaveTheUsualRangeAreRefused) {
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, 1e-300}) {
        IndexedRings indexed({{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {bad, bad, 0}, {0, 0, 0}}});
        EXPECT_FALSE(indexed.Build(Use::Still)) << bad;
    }
}

TEST(RayIndexTest, WithoutRingsOrWithLevelOnesNothingIsInside) {
    IndexedRings none({});
    ASSERT_TRUE(none.Build(Use::Turning));
    EXPECT_FALSE(none.Inside({0, 0, 0}));
    IndexedRings level({{{0, 0, 0}, {4, 0, 0}, {0, 0, 0}}});
    ASSERT_TRUE(level.Build(Use::Turning));
    EXPECT_FALSE(level.Inside({-1, 0, 0}));
    level.Reverse(0);
    EXPECT_FALSE(level.Inside({-1, 0, 0}));
}

}  // namespace
}  // namespace orvane
