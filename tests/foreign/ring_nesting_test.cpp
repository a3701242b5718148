#include "foreign/ring_nesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace orvane {
namespace {

using Ring = std::vector<DigPnt>;

Ring Box(double x, double y, double size) {
    return {{x, y, 0}, {x + size, y, 0}, {x + size, y + size, 0}, {x, y + size, 0}, {x, y, 0}};
}

std::vector<std::int32_t> Parents(const std::vector<Ring>& rings) {
    const std::vector<std::span<const DigPnt>> views(rings.begin(), rings.end());
    return RingParents(views);
}

using Answer = std::vector<std::int32_t>;

TEST(RingNesting, AnIslandInALakeInAnIslandIsAChain) {
    EXPECT_EQ(Parents({Box(0, 0, 10), Box(1, 1, 8), Box(2, 2, 3)}), (Answer{-1, 0, 1}));
    EXPECT_EQ(Parents({Box(2, 2, 3), Box(1, 1, 8), Box(0, 0, 10)}), (Answer{1, 2, -1})) << "in whichever order they stand";
}

TEST(RingNesting, TheWayThatARingTurnsDoesNotMatter) {
    std::vector<Ring> rings = {Box(0, 0, 10), Box(1, 1, 8), Box(2, 2, 3), Box(6, 2, 2)};
    for (unsigned turned = 0; turned < 16; ++turned) {
        std::vector<Ring> some = rings;
        for (unsigned r = 0; r < 4; ++r) {
            if (turned >> r & 1U) std::reverse(some[r].begin(), some[r].end());
        }
        EXPECT_EQ(Parents(some), (Answer{-1, 0, 1, 1})) << turned;
    }
}

TEST(RingNesting, RingsSideBySideLieInTheSameOne) {
    EXPECT_EQ(Parents({Box(0, 0, 10), Box(1, 1, 2), Box(4, 1, 2), Box(7, 4, 2), Box(20, 0, 5)}), (Answer{-1, 0, 0, 0, -1}));
}

TEST(RingNesting, AHoleThatTouchesItsPolygonInAPointIsAHole) {
    const Ring left = {{0, 5, 0}, {3, 6, 0}, {3, 4, 0}, {0, 5, 0}};     // touches the left side
    const Ring corner = {{0, 0, 0}, {2, 1, 0}, {1, 2, 0}, {0, 0, 0}};   // touches a corner
    const Ring top = {{5, 10, 0}, {6, 8, 0}, {4, 8, 0}, {5, 10, 0}};    // hangs from the upper side
    const Ring right = {{10, 5, 0}, {8, 6, 0}, {8, 4, 0}, {10, 5, 0}};  // touches the right side
    EXPECT_EQ(Parents({Box(0, 0, 10), left, corner, top, right}), (Answer{-1, 0, 0, 0, 0}));
}

TEST(RingNesting, NeighboursThatShareASideOrACornerAreNotInEachOther) {
    EXPECT_EQ(Parents({Box(0, 0, 10), Box(10, 0, 10)}), (Answer{-1, -1}));
    EXPECT_EQ(Parents({Box(10, 2, 3), Box(0, 0, 10)}), (Answer{-1, -1}));
    EXPECT_EQ(Parents({Box(0, 0, 10), Box(10, 10, 5), Box(-5, -5, 5), Box(0, 10, 2)}), (Answer{-1, -1, -1, -1}));
}

TEST(RingNesting, AHoleThatSharesASideWithItsPolygonIsAHole) {
    EXPECT_EQ(Parents({Box(0, 0, 10), Box(0, 2, 3)}), (Answer{-1, 0}));
    EXPECT_EQ(Parents({Box(0, 0, 3), Box(0, 0, 10)}), (Answer{1, -1})) << "also from the same corner";
}

TEST(RingNesting, RandomNestsComeOutAsTheyWereMade) {
    std::mt19937 random(7);
    std::vector<Ring> rings;
    Answer expected;
    // Boxes are cut into quarters, and some quarters, a bit smaller and turned about, become boxes within.
    const auto fill = [&](auto& self, double x, double y, double size, std::int32_t parent, int depth) -> void {
        if (depth == 0) return;
        for (int quarter = 0; quarter < 4; ++quarter) {
            if (random() % 4 == 0) continue;
            const double side = size / 2 * 0.9;
            const double left = x + (quarter % 2) * size / 2 + size * 0.02;
            const double low = y + quarter / 2 * size / 2 + size * 0.02;
            const double middle = side / 2;
            Ring ring;
            const double turn = static_cast<double>(random() % 628) / 100;
            const auto corners = 3 + random() % 9;
            for (unsigned i = 0; i < corners; ++i) {
                const double angle = turn + 2 * std::acos(-1.0) * i / static_cast<double>(corners);
                ring.push_back({left + middle + middle * std::cos(angle), low + middle + middle * std::sin(angle), 0});
            }
            ring.push_back(ring.front());
            if (random() % 2 == 0) std::reverse(ring.begin(), ring.end());
            // The largest box in a polygon of three or more corners in this circle.
            const double inner = middle * 0.5 * std::sqrt(2.0);
            rings.push_back(ring);
            expected.push_back(parent);
            self(self, left + middle - inner / 2, low + middle - inner / 2, inner, static_cast<std::int32_t>(rings.size()) - 1,
                 depth - 1);
        }
    };
    fill(fill, 0, 0, 1e6, -1, 6);
    ASSERT_GT(rings.size(), 300u);
    EXPECT_EQ(Parents(rings), expected);
}

TEST(RingNesting, RingsThatCrossEachOtherAndThemselvesGiveSomeAnswer) {
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        std::vector<Ring> rings(8);
        for (Ring& ring : rings) {
            for (int i = 0; i < 9; ++i)
                ring.push_back({static_cast<double>(random() % 12), static_cast<double>(random() % 12), 0});
            ring.push_back(ring.front());
        }
        const Answer parents = Parents(rings);
        for (std::size_t r = 0; r < rings.size(); ++r) {
            std::size_t steps = 0;
            for (std::int32_t at = parents[r]; at >= 0; at = parents[static_cast<std::size_t>(at)])
                ASSERT_LT(++steps, rings.size());
        }
    }
}

TEST(RingNesting, ManyRingsTakeNoQuadraticTime) {
    // 200,000 holes: told by comparing each with each this would take minutes.
    std::vector<Ring> rings = {Box(-1, -1, 1e6)};
    for (int i = 0; i < 200000; ++i) rings.push_back(Box(i % 500 * 3, i / 500 * 3, 1));
    const Answer parents = Parents(rings);
    EXPECT_EQ(std::count(parents.begin(), parents.end(), 0), 200000);
}

TEST(RingNesting, AnAreaFarFromTheOriginKeepsItsDigits) {
    EXPECT_EQ(DoubleArea(Box(1e9, 1e9, 0.5)), 0.5);
    Ring clockwise = Box(1e9, -1e9, 2);
    std::reverse(clockwise.begin(), clockwise.end());
    EXPECT_EQ(DoubleArea(clockwise), -8);
}

}  // namespace
}  // namespace orvane
