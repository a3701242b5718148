#include "foreign/rings.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "analysis/geometry/plane.h"

namespace orvane {
namespace {

using Ring = std::vector<DigPnt>;

bool operator==(const DigPnt& a, const DigPnt& b) { return a.x == b.x && a.y == b.y; }

const Ring kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};
const Ring kHole = {{2, 2}, {4, 2}, {4, 4}, {2, 2}};

std::vector<std::int32_t> Split(const Ring& points) {
    std::vector<std::int32_t> counts(points.size());
    counts.resize(static_cast<std::size_t>(SplitRings(points, counts.data(), false)));
    return counts;
}

// Crossings of a ray from (x, y) with a ring that may or may not repeat its first point.
bool OddCrossings(std::span<const DigPnt> ring, double x, double y) {
    bool odd = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const DigPnt& a = ring[i];
        const DigPnt& b = ring[(i + 1) % ring.size()];
        if ((a.y > y) != (b.y > y) && x < a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x)) odd = !odd;
    }
    return odd;
}

// Which points of a fine grid lie inside the rings by the alternate rule.
std::vector<bool> Covered(const std::vector<Ring>& rings) {
    std::vector<bool> covered;
    for (int row = 0; row < 40; ++row) {
        for (int col = 0; col < 40; ++col) {
            bool inside = false;
            for (const Ring& ring : rings) inside ^= OddCrossings(ring, -4.8731 + col * 0.5, -4.8713 + row * 0.5);
            covered.push_back(inside);
        }
    }
    return covered;
}

std::vector<Ring> RingsOf(const Ring& points) {
    std::vector<Ring> rings;
    auto at = points.begin();
    for (const std::int32_t count : Split(points)) {
        rings.emplace_back(at, at + count);
        at += count;
    }
    EXPECT_EQ(at, points.end()) << "points behind the last ring belong to none";
    return rings;
}

TEST(RingPacker, AClosedAndAnOpenRingComeOutClosedOnce) {
    for (const Ring& ring : {kSquare, Ring(kSquare.begin(), kSquare.end() - 1)}) {
        RingPacker packer;
        EXPECT_TRUE(packer.Add(ring));
        const Ring points = packer.Take();
        ASSERT_EQ(points.size(), 5u);
        EXPECT_TRUE(points.front() == points.back());
        EXPECT_EQ(Split(points), (std::vector<std::int32_t>{5}));
        EXPECT_TRUE(packer.Empty());
    }
}

TEST(RingPacker, RepeatsInARowAreDropped) {
    RingPacker packer;
    EXPECT_TRUE(packer.Add({{0, 0}, {0, 0}, {0, 0}, {10, 0}, {10, 0}, {10, 10}, {0, 0}, {0, 0}}));
    EXPECT_EQ(packer.Take().size(), 4u);
}

TEST(RingPacker, ARingOfFewerThanThreePlacesIsRefused) {
    RingPacker packer;
    EXPECT_FALSE(packer.Add({}));
    EXPECT_FALSE(packer.Add({{1, 1}}));
    EXPECT_FALSE(packer.Add({{1, 1}, {1, 1}, {1, 1}, {1, 1}}));
    EXPECT_FALSE(packer.Add({{1, 1}, {2, 2}, {1, 1}}));
    EXPECT_TRUE(packer.Empty());
}

TEST(RingPacker, APolygonWithAHoleSplitsIntoItsTwoRings) {
    RingPacker packer;
    packer.Add(kSquare);
    packer.Add(kHole);
    EXPECT_EQ(Split(packer.Take()), (std::vector<std::int32_t>{5, 4}));
}

TEST(RingPacker, AHoleThatTouchesTheFirstPointOfTheItemIsOpenedElsewhere) {
    RingPacker packer;
    packer.Add(kSquare);
    packer.Add({{0, 0}, {4, 2}, {2, 4}, {0, 0}});
    const Ring points = packer.Take();
    EXPECT_FALSE(points.front() == points.back());
    EXPECT_EQ(Split(points), (std::vector<std::int32_t>{5, 4}));
}

TEST(RingPacker, ARingThatPassesItsFirstPointInBetweenIsOpenedElsewhere) {
    RingPacker packer;
    packer.Add({{0, 0}, {5, 0}, {5, 5}, {0, 0}, {-5, 0}, {-5, -5}, {0, 0}});
    packer.Add({{20, 20}, {21, 20}, {21, 21}});
    EXPECT_EQ(Split(packer.Take()), (std::vector<std::int32_t>{7, 4}));
}

TEST(RingPacker, ARingThatPassesEveryPointTwiceIsCutIntoSimpleOnesOfTheSameArea) {
    // Three triangles around a triangle: each of its corners is passed twice, and each outer corner too by a spike.
    const Ring ring = {{0, 0}, {4, 0}, {0, 0}, {4, 0}, {2, 3}, {4, 0}, {2, 3}, {0, 0}, {2, 3}};
    RingPacker packer;
    packer.Add(ring);
    packer.Add({{8, 8}, {9, 8}, {9, 9}});
    EXPECT_EQ(Covered(RingsOf(packer.Take())), Covered({{{0, 0}, {4, 0}, {2, 3}}, {{8, 8}, {9, 8}, {9, 9}}}));
}

TEST(RingPacker, ALastRingWhoseOnlySinglePointIsTheItemsFirstIsCut) {
    RingPacker packer;
    packer.Add(kSquare);
    const Ring last = {{0, 0}, {2, 1}, {3, 1}, {3, 3}, {2, 1}, {3, 1}, {3, 3}};  // (0, 0) once, all others twice
    packer.Add(last);
    const Ring points = packer.Take();
    EXPECT_FALSE(points.front() == points.back());
    EXPECT_EQ(Covered(RingsOf(points)), Covered({kSquare, last}));
}

TEST(RingPacker, RandomWalksOnASmallGridSplitCompletelyAndKeepTheirArea) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        RingPacker packer;
        std::vector<Ring> given(1 + random() % 3);
        for (Ring& ring : given) {
            ring.resize(1 + random() % 12);
            for (DigPnt& p : ring) p = {double(random() % 3) * 5, double(random() % 3) * 5, 0};
            packer.Add(ring);
        }
        const Ring points = packer.Take();
        ASSERT_EQ(Covered(RingsOf(points)), Covered(given)) << "round " << round;
        std::vector<std::int32_t> walked(points.size());
        ASSERT_EQ(static_cast<std::size_t>(SplitRings(points, walked.data(), true)), Split(points).size()) << "round " << round;
    }
}

}  // namespace
}  // namespace orvane
