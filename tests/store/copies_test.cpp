#include "tests/store/store_fixture.h"
#include "tests/support/store_dump.h"

namespace orvane {
namespace {

class CopiesTest : public StoreTest {
protected:
    CopiesTest() {
        MakeBlock("A", 1, kLayLine);
        MakeBlock("B", 2, kLayLine);
        MakeBlock("C", 1, kLayCircle);
        MakeBlock("D", 1, kLayCircle);
    }
    DigDat& Change(std::string_view code, std::int32_t meshNo, std::size_t pos) {
        return store.MutableBlock(store.FindBlock(code, meshNo).block).dats[pos];
    }
    void GiveText(DigDat& dat) {
        dat.str = std::make_unique<DigStr>();
        *dat.str = {.x = 1,
                    .y = 2,
                    .z = 3,
                    .orgX = 4,
                    .orgY = 5,
                    .orgZ = 6,
                    .text = "a text longer than any short buffer",
                    .fntname = "face",
                    .size = 33,
                    .style = 7,
                    .fill = 1,
                    .pos = 8,
                    .angle = 9,
                    .uline = 1,
                    .strike = 1,
                    .fcolor = 10,
                    .bcolor = 11};
    }
    void ExpectTextCopied(const DigDat& dat) {
        ASSERT_NE(dat.str, nullptr);
        const DigStr& str = *dat.str;
        EXPECT_EQ(str.x, 1);
        EXPECT_EQ(str.y, 2);
        EXPECT_EQ(str.text, "a text longer than any short buffer");
        EXPECT_EQ(str.style, 7);
        EXPECT_EQ(str.fill, 1);
        EXPECT_EQ(str.pos, 8);
        EXPECT_EQ(str.angle, 9);
        EXPECT_EQ(str.uline, 1);
        EXPECT_EQ(str.strike, 1);
        EXPECT_EQ(str.fcolor, 10U);
        EXPECT_EQ(str.bcolor, 11U);
        EXPECT_EQ(str.fntname, "") << "the face is not copied";
        EXPECT_EQ(str.size, DigStr{}.size) << "nor its size";
        EXPECT_EQ(str.z, 0);
    }
};

TEST_F(CopiesTest, CopyTakesTheWholeItemUnderANewID) {
    AddItem("A", 1, 5, {{1, 2, 3}, {40, 50, 60}});
    AddItem("B", 2, 8);
    DigDat& source = Change("A", 1, 0);
    source.lineTag = 11;
    source.subLayNo = 12;
    source.active = 1;
    source.drawnFlg = 1;
    source.clipFlg = 0;
    source.orgRect = {1, 2, 3, 4};
    GiveText(source);
    EXPECT_EQ(store.CopyData("A", 1, 5, "B", 2), 9);
    const DigDat& copy = Item("B", 2, 9);
    EXPECT_EQ(copy.lineTag, 11);
    EXPECT_EQ(copy.subLayNo, 12);
    EXPECT_EQ(copy.active, 1);
    EXPECT_EQ(copy.drawnFlg, 1);
    EXPECT_EQ(copy.clipFlg, 0);
    EXPECT_EQ(copy.rect, (Rect{1, 2, 40, 50}));
    EXPECT_EQ(copy.orgRect, (Rect{1, 2, 3, 4}));
    ASSERT_EQ(copy.pntCnt, 2);
    EXPECT_EQ(copy.pnts[1].z, 60);
    EXPECT_FALSE(copy.orgPnts);
    EXPECT_EQ(copy.meshAttr, nullptr);
    ExpectTextCopied(copy);
    EXPECT_EQ(Item("A", 1, 5).str->fntname, "face") << "the source keeps what it has";
}

TEST_F(CopiesTest, CopyBetweenLayersOfDifferentTypesIsRefused) {
    AddItem("A", 1, 5, {{1, 2, 3}});
    const std::string before = DumpStore(store);
    EXPECT_EQ(store.CopyData("A", 1, 5, "C", 1), 0);
    EXPECT_EQ(DumpStore(store), before);
}

TEST_F(CopiesTest, CopyNeedsBothBlocksAndTheItem) {
    AddItem("A", 1, 5, {{1, 2, 3}});
    EXPECT_EQ(store.CopyData("A", 9, 5, "B", 2), 0);
    EXPECT_EQ(store.CopyData("A", 1, 5, "B", 9), 0);
    EXPECT_EQ(store.CopyData("A", 1, 6, "B", 2), 0);
    EXPECT_EQ(store.GetLayDatCnt("B", 2), 0);
}

TEST_F(CopiesTest, CopyRecountsTheDestinationsBounds) {
    AddItem("B", 2, 1, {{1000, 1000, 0}, {5, 6, 0}});
    ASSERT_TRUE(store.DelDigDatPnt("B", 2, 1, 0));
    EXPECT_EQ(BlockOf("B", 2).maxX, 1000) << "nothing has narrowed it so far";
    AddItem("A", 1, 5, {{-1, 20, 0}});
    ASSERT_EQ(store.CopyData("A", 1, 5, "B", 2), 2);
    EXPECT_EQ(BlockOf("B", 2).minX, -1);
    EXPECT_EQ(BlockOf("B", 2).maxX, 5);
    EXPECT_EQ(BlockOf("B", 2).minY, 6);
    EXPECT_EQ(BlockOf("B", 2).maxY, 20);
    EXPECT_EQ(store.GetLayDatCnt("B", 2), 2);
}

TEST_F(CopiesTest, RecountOfACircleLayerTakesTheFirstRadiusOnly) {
    AddItem("C", 1, 1, {{100, 100, 10}});
    AddItem("D", 1, 4, {{0, 0, 5}});
    ASSERT_EQ(store.CopyData("C", 1, 1, "D", 1), 5);
    EXPECT_EQ(BlockOf("D", 1).minX, -5);
    EXPECT_EQ(BlockOf("D", 1).maxX, 100);
}

TEST_F(CopiesTest, RecountWithoutAnyPointLeavesTheBounds) {
    AddItem("A", 1, 5);
    store.MutableBlock(store.FindBlock("B", 2).block).maxX = 77;
    EXPECT_EQ(store.CopyData("A", 1, 5, "B", 2), 1);
    EXPECT_EQ(BlockOf("B", 2).maxX, 77);
    EXPECT_EQ(Item("B", 2, 1).pntCnt, 0);
    EXPECT_FALSE(Item("B", 2, 1).pnts);
}

TEST_F(CopiesTest, CopyWithinOneBlockTakesTheFirstOfRepeatedIDs) {
    AddItem("A", 1, 5, {{1, 1, 0}});
    AddItem("A", 1, 5, {{2, 2, 0}});
    EXPECT_EQ(store.CopyData("A", 1, 5, "A", 1), 6);
    EXPECT_EQ(Item("A", 1, 6).pnts[0].x, 1);
}

TEST_F(CopiesTest, CopyHasItsOwnMeshArrays) {
    MakeBlock("M", 1, kLayMesh);
    AddItem("M", 1, 1);
    ASSERT_TRUE(store.SetMeshDat("M", 1, 1, 2, 1, std::vector<DigPnt>(2)));
    ASSERT_TRUE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>{5, 6}));
    ASSERT_EQ(store.CopyData("M", 1, 1, "M", 1), 2);
    ASSERT_TRUE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>{0, 0}));
    const DigMeshAttr& mesh = *Item("M", 1, 2).meshAttr;
    EXPECT_EQ(mesh.hcnt, 2);
    EXPECT_EQ(mesh.vcnt, 1);
    EXPECT_EQ(mesh.meshColor[0], 5U);
    EXPECT_EQ(mesh.meshColor[1], 6U);
    EXPECT_EQ(mesh.useFlag[1], 0xFF);
}

TEST_F(CopiesTest, CopyTakesAsManyFormerPointsAsThereAre) {
    AddItem("A", 1, 5, {{1, 1, 0}, {2, 2, 0}});
    DigDat& source = Change("A", 1, 0);
    ASSERT_TRUE(source.orgPnts.Resize(0, 1));
    source.orgPnts[0].x = 42;
    source.orgPntCnt = 1;  // the second point came later
    ASSERT_EQ(store.CopyData("A", 1, 5, "B", 2), 1);
    ASSERT_TRUE(Item("B", 2, 1).orgPnts);
    EXPECT_EQ(Item("B", 2, 1).orgPntCnt, 1);
    EXPECT_EQ(Item("B", 2, 1).orgPnts[0].x, 42);
}

TEST_F(CopiesTest, CopyInItsBlockStartsAfresh) {
    AddItem("A", 1, 5, {{1, 2, 3}, {40, 50, 60}});
    DigDat& source = Change("A", 1, 0);
    source.lineTag = 11;
    source.subLayNo = 12;
    source.active = 1;
    source.drawnFlg = 1;
    source.clipFlg = 0;
    source.orgRect = {1, 2, 3, 4};
    GiveText(source);
    store.MutableBlock(store.FindBlock("A", 1).block).maxX = 777;
    ASSERT_TRUE(store.CopyDatInBlock("A", 1, 5, 99));
    const DigDat& copy = Item("A", 1, 99);
    EXPECT_EQ(copy.lineTag, 11);
    EXPECT_EQ(copy.subLayNo, 12);
    EXPECT_EQ(copy.pntCnt, 2);
    EXPECT_EQ(copy.pnts[1].x, 40);
    EXPECT_EQ(copy.active, 0);
    EXPECT_EQ(copy.drawnFlg, 0);
    EXPECT_EQ(copy.clipFlg, 1);
    EXPECT_EQ(copy.rect, kEmptyItemRect);
    EXPECT_EQ(copy.orgRect, Rect{});
    EXPECT_EQ(BlockOf("A", 1).maxX, 777) << "the block's bounds are not recounted";
    ExpectTextCopied(copy);
    EXPECT_FALSE(store.CopyDatInBlock("A", 1, 6, 100));
    EXPECT_FALSE(store.CopyDatInBlock("A", 9, 5, 100));
}

}  // namespace
}  // namespace orvane
