#include "platform/filled_area.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace orvane {
namespace {

using Rings = std::vector<std::vector<Point>>;

bool Same(const Rings& a, const Rings& b) {
    std::vector<Point> pnts[2];
    std::vector<std::int32_t> counts[2];
    for (int side = 0; side < 2; ++side) {
        for (const std::vector<Point>& ring : side == 0 ? a : b) {
            pnts[side].insert(pnts[side].end(), ring.begin(), ring.end());
            counts[side].push_back(static_cast<std::int32_t>(ring.size()));
        }
    }
    return SameFilledArea({pnts[0], counts[0]}, {pnts[1], counts[1]});
}

const std::vector<Point> kSquare{{0, 0}, {6, 0}, {6, 6}, {0, 6}};

TEST(FilledAreaTest, StartDirectionExtraPointsAndAClosingPointMakeNoDifference) {
    EXPECT_TRUE(Same({kSquare}, {{{6, 6}, {6, 3}, {6, 0}, {0, 0}, {0, 6}, {6, 6}}}));
}

TEST(FilledAreaTest, ACornerMovedByOneMakesAnotherArea) { EXPECT_FALSE(Same({kSquare}, {{{0, 0}, {6, 0}, {6, 7}, {0, 6}}})); }

TEST(FilledAreaTest, NothingEqualsNothing) {
    EXPECT_FALSE(Same({}, {}));
    EXPECT_FALSE(Same({{{0, 0}, {6, 3}, {0, 0}}}, {{{0, 0}, {6, 3}, {0, 0}}}));
    EXPECT_FALSE(Same({kSquare}, {}));
    EXPECT_FALSE(Same({}, {kSquare}));
}

TEST(FilledAreaTest, AreasCoveredTwiceAreEmpty) {
    EXPECT_FALSE(Same({kSquare, kSquare}, {kSquare, kSquare}));
    EXPECT_TRUE(Same({kSquare, kSquare, kSquare}, {kSquare}));
}

TEST(FilledAreaTest, PartsMakeTheWholeAndHolesCount) {
    EXPECT_TRUE(Same({{{0, 0}, {3, 0}, {3, 6}, {0, 6}}, {{3, 0}, {6, 0}, {6, 6}, {3, 6}}}, {kSquare}));
    EXPECT_FALSE(Same({kSquare, {{1, 1}, {2, 1}, {2, 2}, {1, 2}}}, {kSquare}));
}

TEST(FilledAreaTest, EdgesThatCrossBetweenTheirEndsAreKeptApart) {
    // A bow tie against its two triangles.
    EXPECT_TRUE(Same({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}}, {{{0, 0}, {2, 2}, {0, 4}}, {{2, 2}, {4, 4}, {4, 0}}}));
    EXPECT_FALSE(Same({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}}, {{{0, 0}, {4, 0}, {4, 4}, {0, 4}}}));
}

TEST(FilledAreaTest, TheGreatestCoordinatesDoNotOverflow) {
    constexpr std::int32_t kLow = (std::numeric_limits<std::int32_t>::min)();
    constexpr std::int32_t kHigh = (std::numeric_limits<std::int32_t>::max)();
    const std::vector<Point> most{{kLow, kLow}, {kHigh, kLow + 1}, {kHigh, kHigh}, {kLow, kHigh - 1}};
    EXPECT_TRUE(Same({most}, {{most[2], most[1], most[0], most[3]}}));
    EXPECT_FALSE(Same({most}, {{most[0], most[1], most[2]}}));
}

}  // namespace
}  // namespace orvane
