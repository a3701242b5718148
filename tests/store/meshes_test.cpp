#include <limits>
#include <numeric>

#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

class MeshesTest : public StoreTest {
protected:
    MeshesTest() {
        MakeBlock("M", 1, kLayMesh);
        AddItem("M", 1, 1);
    }
    static std::vector<DigPnt> Grid(int n) {
        std::vector<DigPnt> pnts;
        for (int i = 0; i < n; ++i) pnts.push_back({i + 0.75, -i - 0.75, 100.0 + i});
        return pnts;
    }
    bool SetGrid(std::int32_t hcnt, std::int32_t vcnt, int n) { return store.SetMeshDat("M", 1, 1, hcnt, vcnt, Grid(n)); }
    std::vector<std::uint32_t> Colors() {
        const DigMeshAttr& mesh = *Item("M", 1, 1).meshAttr;
        return {mesh.meshColor.Get(), mesh.meshColor.Get() + mesh.hcnt * mesh.vcnt};
    }
    std::vector<int> UseFlags() {
        const DigMeshAttr& mesh = *Item("M", 1, 1).meshAttr;
        return {mesh.useFlag.Get(), mesh.useFlag.Get() + mesh.hcnt * mesh.vcnt};
    }
};

TEST_F(MeshesTest, GridStartsWithAllFlagsSetAndNoColors) {
    ASSERT_TRUE(SetGrid(3, 2, 6));
    const DigDat& dat = Item("M", 1, 1);
    EXPECT_EQ(dat.pntCnt, 6);
    ASSERT_NE(dat.meshAttr, nullptr);
    EXPECT_EQ(dat.meshAttr->hcnt, 3);
    EXPECT_EQ(dat.meshAttr->vcnt, 2);
    EXPECT_EQ(UseFlags(), std::vector<int>(6, 0xFF));
    EXPECT_EQ(Colors(), std::vector<std::uint32_t>(6, 0));
    EXPECT_EQ(dat.pnts[4].x, 4.75);
    EXPECT_EQ(dat.pnts[4].z, 104);
    // x from 0.75 to 5.75, y from -0.75 to -5.75; the z of mesh points is no radius.
    EXPECT_EQ(dat.rect, (Rect{0, -5, 6, 0}));
    EXPECT_EQ(BlockOf("M", 1).minX, 0.75);
    EXPECT_EQ(BlockOf("M", 1).maxX, 5.75);
    EXPECT_EQ(BlockOf("M", 1).minY, -5.75);
    EXPECT_EQ(BlockOf("M", 1).maxY, -0.75);
}

TEST_F(MeshesTest, NewGridReplacesTheOldOne) {
    ASSERT_TRUE(SetGrid(3, 2, 6));
    ASSERT_TRUE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>(6, 9)));
    ASSERT_TRUE(SetGrid(1, 2, 2));
    EXPECT_EQ(Item("M", 1, 1).pntCnt, 2);
    EXPECT_EQ(Colors(), std::vector<std::uint32_t>(2, 0));
    EXPECT_EQ(UseFlags(), std::vector<int>(2, 0xFF));
}

TEST_F(MeshesTest, GridIsRefusedForBadCountsMissingThingsAndOtherTypes) {
    EXPECT_FALSE(SetGrid(0, 5, 6));
    EXPECT_FALSE(SetGrid(-1, 5, 6));
    EXPECT_FALSE(SetGrid(4, 2, 7)) << "fewer points than the grid has";
    EXPECT_FALSE(SetGrid(65536, 65536, 6)) << "a product beyond 32 bits";
    EXPECT_FALSE(SetGrid((std::numeric_limits<std::int32_t>::min)(), (std::numeric_limits<std::int32_t>::min)(), 6));
    EXPECT_FALSE(store.SetMeshDat("M", 1, 2, 1, 1, Grid(1)));
    EXPECT_FALSE(store.SetMeshDat("M", 2, 1, 1, 1, Grid(1)));
    MakeBlock("L", 1, kLayLine);
    AddItem("L", 1, 1);
    EXPECT_FALSE(store.SetMeshDat("L", 1, 1, 1, 1, Grid(1)));
    EXPECT_EQ(Item("M", 1, 1).meshAttr, nullptr);
    EXPECT_EQ(Item("M", 1, 1).pntCnt, 0);
}

TEST_F(MeshesTest, PointsBeyondTheGridAreLeftOut) {
    ASSERT_TRUE(SetGrid(2, 2, 7));
    EXPECT_EQ(Item("M", 1, 1).pntCnt, 4);
}

TEST_F(MeshesTest, UseFlagsBecomeZeroOrOne) {
    ASSERT_TRUE(SetGrid(2, 2, 4));
    const std::vector<std::uint8_t> flags{0, 1, 2, 255};
    ASSERT_TRUE(store.SetMeshUseFlag("M", 1, 1, flags));
    EXPECT_EQ(UseFlags(), (std::vector<int>{0, 1, 1, 1}));
}

TEST_F(MeshesTest, WrongLengthIsRefusedAndTheMeshKeepsWhatItHas) {
    ASSERT_TRUE(SetGrid(2, 2, 4));
    const std::vector<std::uint32_t> colors{1, 2, 3, 0xFFFFFFFF};
    ASSERT_TRUE(store.SetMeshColor("M", 1, 1, colors));
    for (const std::size_t length : {0U, 3U, 5U}) {
        EXPECT_FALSE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>(length, 7))) << length;
        EXPECT_FALSE(store.SetMeshUseFlag("M", 1, 1, std::vector<std::uint8_t>(length, 0))) << length;
    }
    EXPECT_EQ(Colors(), colors);
    EXPECT_EQ(UseFlags(), std::vector<int>(4, 0xFF));
}

TEST_F(MeshesTest, FlagsAndColorsNeedAGridAMeshLayerAndAnItem) {
    const std::vector<std::uint32_t> colors{1};
    const std::vector<std::uint8_t> flags{1};
    ASSERT_TRUE(store.AddDigDatPnt("M", 1, 1, {}));
    EXPECT_FALSE(store.SetMeshColor("M", 1, 1, colors)) << "no grid yet";
    EXPECT_FALSE(store.SetMeshUseFlag("M", 1, 1, flags));
    ASSERT_TRUE(SetGrid(1, 1, 1));
    EXPECT_FALSE(store.SetMeshColor("M", 1, 2, colors));
    EXPECT_FALSE(store.SetMeshColor("M", 2, 1, colors));
    EXPECT_FALSE(store.SetMeshUseFlag("M", 1, 2, flags));
    EXPECT_TRUE(store.SetMeshColor("M", 1, 1, colors));
    MakeBlock("L", 1, kLayLine);
    AddItem("L", 1, 1, {{1, 1, 1}});
    EXPECT_FALSE(store.SetMeshColor("L", 1, 1, colors));
    EXPECT_FALSE(store.SetMeshUseFlag("L", 1, 1, flags));
}

TEST_F(MeshesTest, PointAddedToAGridDoesNotMakeRoomForItsColor) {
    ASSERT_TRUE(SetGrid(2, 2, 4));
    ASSERT_TRUE(store.AddDigDatPnt("M", 1, 1, {}));
    EXPECT_FALSE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>(5, 7)));
    EXPECT_FALSE(store.SetMeshUseFlag("M", 1, 1, std::vector<std::uint8_t>(5, 0)));
    EXPECT_FALSE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>(4, 7))) << "not the number of points";
    EXPECT_EQ(Colors(), std::vector<std::uint32_t>(4, 0));
}

TEST_F(MeshesTest, AfterAPointsDeletionTheColorsOfTheOthersAreSet) {
    ASSERT_TRUE(SetGrid(2, 2, 4));
    ASSERT_TRUE(store.DelDigDatPnt("M", 1, 1, 3));
    ASSERT_TRUE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>(3, 7)));
    EXPECT_EQ(Colors(), (std::vector<std::uint32_t>{7, 7, 7, 0}));
}

TEST_F(MeshesTest, OfRepeatedIDsTheLastGetsTheGrid) {
    AddItem("M", 1, 1);
    ASSERT_TRUE(SetGrid(1, 1, 1));
    EXPECT_EQ(ItemAt("M", 1, 0).meshAttr, nullptr);
    ASSERT_NE(ItemAt("M", 1, 1).meshAttr, nullptr);
    ASSERT_TRUE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>{5}));
    EXPECT_EQ(ItemAt("M", 1, 1).meshAttr->meshColor[0], 5U);
}

TEST_F(MeshesTest, TwoNegativeCountsHaveAPositiveProduct) {
    ASSERT_TRUE(SetGrid(-2, -2, 4));
    EXPECT_EQ(Item("M", 1, 1).pntCnt, 4);
    EXPECT_TRUE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>(4, 7)));
}

}  // namespace
}  // namespace orvane
