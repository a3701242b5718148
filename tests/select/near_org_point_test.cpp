#include "select/near_org_point.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

namespace orvane {
namespace {

class NearOrgPointTest : public testing::Test {
protected:
    NearOrgPointTest() { store.Init(); }

    std::int32_t Add(std::initializer_list<std::pair<double, double>> points, bool active = true) {
        const std::int32_t ID = store.MakeOrgDat(2, 1, 0, 0);
        for (const auto& [x, y] : points) EXPECT_GT(store.AddOrgPnt(ID, x, y), 0);
        store.SetOrgDataActive(ID, active);
        return ID;
    }

    CDigMem store;
};

TEST_F(NearOrgPointTest, MeetsTheNearestVertexWithTheNearerOfItsNeighbours) {
    Add({{0, 0}, {500, 0}});
    const std::int32_t ID = Add({{100, 100}, {200, 100}, {400, 100}});
    const auto met = NearOrgPoint(store, 210, 110, true, std::nullopt);
    ASSERT_TRUE(met);
    EXPECT_EQ(met->vertex.ID, ID);
    EXPECT_EQ(met->vertex.index, 1);
    EXPECT_EQ(met->neighbour, 0);
    EXPECT_EQ(met->x, 200);
    EXPECT_EQ(met->y, 100);
    EXPECT_EQ(NearOrgPoint(store, 290, 100, true, std::nullopt)->neighbour, 2) << "one 190 away loses to one 110 away";
}

TEST_F(NearOrgPointTest, OfEquallyNearVerticesTheFirstIsMetAndOfEquallyNearNeighboursTheLater) {
    Add({{10, 0}, {10, 0}, {10, 0}});
    const auto met = NearOrgPoint(store, 12, 0, true, std::nullopt);
    EXPECT_EQ(met->vertex.index, 0);
    Add({{-50, 0}, {0, 3}, {50, 0}});
    const auto middle = NearOrgPoint(store, 0, 3, true, std::nullopt);
    EXPECT_EQ(middle->vertex.index, 1);
    EXPECT_EQ(middle->neighbour, 2);
}

TEST_F(NearOrgPointTest, NothingFurtherThanTenThousandUnitsIsFound) {
    Add({{10000, 0}});
    EXPECT_FALSE(NearOrgPoint(store, 0, 0, true, std::nullopt));
    EXPECT_TRUE(NearOrgPoint(store, 0.001, 0, true, std::nullopt));
    EXPECT_FALSE(NearOrgPoint(CDigMem(), 0, 0, true, std::nullopt));
}

TEST_F(NearOrgPointTest, FiguresThatAreNotActiveAreMetOnlyWhenAllAreAskedFor) {
    Add({{0, 0}}, false);
    EXPECT_FALSE(NearOrgPoint(store, 1, 0, true, std::nullopt));
    EXPECT_TRUE(NearOrgPoint(store, 1, 0, false, std::nullopt));
}

TEST_F(NearOrgPointTest, AVertexThatIsBeingDraggedIsPassedOver) {
    const std::int32_t ID = Add({{0, 0}, {30, 0}});
    const auto met = NearOrgPoint(store, 1, 0, true, OrgVertex{ID, 0});
    ASSERT_TRUE(met);
    EXPECT_EQ(met->vertex.index, 1);
}

TEST_F(NearOrgPointTest, ANeighbourBehindTheEndsCountsAsOneAtZero) {
    Add({{100, 0}});
    const auto alone = NearOrgPoint(store, 100, 0, true, std::nullopt);
    EXPECT_EQ(alone->neighbour, 1) << "both places are the one behind the last vertex";
    Add({{5, 0}, {900, 0}});
    EXPECT_EQ(NearOrgPoint(store, 5, 0, true, std::nullopt)->neighbour, 2) << "zero is nearer than the vertex that follows";
}

}  // namespace
}  // namespace orvane
