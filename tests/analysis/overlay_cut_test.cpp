// Where the cutting of two edges would never end: rounding lets the pieces of some pairs cross anew at the next number, and so
// on.
#include <gtest/gtest.h>

#include <vector>

#include "analysis/overlay_parts.h"

namespace orvane {
namespace {

using Points = std::vector<DigPnt>;

/// Two triangles with long sides of almost the same slope.
const Points kSteep{{0.208365, 0.021488, 0}, {0.217592, 0.560896, 0}, {0.217592, -0.978512, 0}, {0.208365, 0.021488, 0}};
const Points kSteeper{{0.212111, 0.018654, 0}, {0.219316, 0.556483, 0}, {-0.791635, 1.560896, 0}, {0.212111, 0.018654, 0}};

/// A side that is all but upright, with a sloped one across: their crossing creeps along it from one number to the next. The
/// corners that follow lie beside everything else.
Points Upright(int corners) {
    Points pts{{0.486557, 0.2123, 0}, {0.486558, 1.036417, 0}};
    for (int i = 0; i < corners; ++i) pts.push_back({10.0 + i, i % 2 == 0 ? 50.0 : 60.0, 0});
    pts.push_back(pts.front());
    return pts;
}
const Points kSloped{{1.135084, 0.563442, 0}, {-0.474784, 0.294437, 0}, {-3, -5, 0}, {1.135084, 0.563442, 0}};

/// How many places of vertices there are when the cutting has been given up; 0 when it has come to an end.
std::size_t PlacesWhenGivenUp(const Points& a, const Points& b) {
    const OverlayProgress nobody;
    OverlayWatch watch(nobody);
    VertexTable vertices;
    EdgeList edgesA = MakeEdgeList(a, kSideA, vertices);
    EdgeList edgesB = MakeEdgeList(b, kSideB, vertices);
    return CutEdges(edgesA, edgesB, vertices, watch) ? 0 : vertices.size();
}

TEST(OverlayCutTest, PiecesBeyondTheSquareOfTheEdgesTogetherEndThePair) {
    // Three edges each: the square is 36, and the six corners are places too.
    const std::size_t places = PlacesWhenGivenUp(kSteep, kSteeper);
    EXPECT_GT(places, 36u);
    EXPECT_LE(places, 2u * 36u + 6u);
    for (const OverlayMode mode : {OverlayMode::Intersection, OverlayMode::Union}) {
        Points result(3);
        EXPECT_FALSE(OverlayPolygons(kSteep, kSteeper, mode, result));
        EXPECT_TRUE(result.empty());
    }
}

TEST(OverlayCutTest, MoreThan65536CutsOfOnePairOfEdgesEndThePolygonsWork) {
    // The square of the edges is above 160,000, so the pair's own limit comes first.
    const Points upright = Upright(400);
    const std::size_t corners = upright.size() + kSloped.size() - 2;
    ASSERT_GT((corners - 1) * (corners - 1), 160000u);
    const std::size_t places = PlacesWhenGivenUp(upright, kSloped);
    EXPECT_GT(places, 65536u);
    EXPECT_LE(places, 65537u + corners + 3);
    Points result(3);
    EXPECT_FALSE(OverlayPolygons(upright, kSloped, OverlayMode::Intersection, result));
    EXPECT_TRUE(result.empty());
}

TEST(OverlayCutTest, APairThatIsGivenUpLeavesTheOthersAlone) {
    CDigMem store;
    store.Init();
    for (const char* code : {"A", "B", "C"}) ASSERT_TRUE(store.DigMemAlloc2(code, 1, kLayPolygon, "", 1, 0, 0));
    const Points square{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}};
    const auto add = [&](const char* code, std::int32_t id, const Points& pts) {
        ASSERT_TRUE(store.AddDigDat(code, 1, id, 0));
        ASSERT_TRUE(store.SetDigDatPnts(code, 1, id, pts));
    };
    add("A", 1, kSteep);
    add("A", 2, square);
    add("B", 3, kSteeper);
    OverlayIds ids;
    EXPECT_EQ(PolygonBuffering(store, {"A", 1}, {"B", 1}, {"C", 1}, ids), 1);
    EXPECT_EQ(ids.datIDA, std::vector<std::int32_t>({2}));
}

}  // namespace
}  // namespace orvane
