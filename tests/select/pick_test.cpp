// The searches at a point: which layers they look at, what they do with the stack of items that they meet.
#include <gtest/gtest.h>

#include "select/active_items.h"
#include "tests/select/pick_rig.h"

namespace orvane {
namespace {

class PickTest : public ::testing::Test, protected PickRig {
protected:
    /// A polygon layer with one box of pixels from (100, 100) to (200, 200).
    void AddBoxLayer(std::string_view code, std::int32_t index) {
        AddLayer(code, kLayPolygon, index);
        AddItem(code, BoxRing(100, 100, 200, 200));
    }
    std::int32_t EditClick(std::int32_t cycle = 0) { return SelectForEdit(store, {150, 150}, place, cycle); }
};

TEST_F(PickTest, OfTwoStackedPolygonsAClickSelectsTheTopOne) {
    AddBoxLayer("TOP", 1);
    AddBoxLayer("LOW", 2);
    Item("LOW", 1).active = 1;
    EXPECT_EQ(Click(150, 150), 1) << "the search ends with the first block that has one";
    EXPECT_TRUE(Active("TOP", 1));
    EXPECT_FALSE(Active("LOW", 1));
}

TEST_F(PickTest, ShiftClicksAlternateThroughTwoStackedPolygons) {
    AddBoxLayer("TOP", 1);
    AddBoxLayer("LOW", 2);
    for (std::int32_t cycle = 1; cycle <= 4; ++cycle) {
        EXPECT_EQ(ShiftClick(150, 150, cycle), 2);
        EXPECT_EQ(Active("TOP", 1), cycle % 2 == 0) << cycle;
        EXPECT_EQ(Active("LOW", 1), cycle % 2 == 1) << cycle;
    }
}

TEST_F(PickTest, ACtrlClickInvertsBothOfTwoStackedPolygonsWhateverTheCycle) {
    AddBoxLayer("TOP", 1);
    AddBoxLayer("LOW", 2);
    Item("LOW", 1).active = 1;
    EXPECT_EQ(CtrlClick(150, 150), 2);
    EXPECT_TRUE(Active("TOP", 1));
    EXPECT_FALSE(Active("LOW", 1));
    EXPECT_EQ(SelectAtPoint(store, {150, 150}, place, 5, true), 2);
    EXPECT_FALSE(Active("TOP", 1));
    EXPECT_TRUE(Active("LOW", 1));
}

TEST_F(PickTest, AToggledByteThatIsNeitherZeroNorOneBecomesOne) {
    AddBoxLayer("TOP", 1);
    Item("TOP", 1).active = 7;
    CtrlClick(150, 150);
    EXPECT_EQ(Item("TOP", 1).active, 1);
}

TEST_F(PickTest, AClickOnNothingEmptiesTheActiveSetAndShiftAndCtrlLeaveIt) {
    AddBoxLayer("TOP", 1);
    Item("TOP", 1).active = 1;
    EXPECT_EQ(ShiftClick(500, 500, 1), 0);
    EXPECT_EQ(CtrlClick(500, 500), 0);
    EXPECT_TRUE(Active("TOP", 1));
    EXPECT_EQ(Click(500, 500), 0);
    EXPECT_FALSE(Active("TOP", 1));
}

TEST_F(PickTest, AShiftClickLeavesItemsThatAreNotUnderTheCursor) {
    AddBoxLayer("TOP", 1);
    AddItem("TOP", BoxRing(300, 300, 400, 400)).active = 1;
    ShiftClick(150, 150, 1);
    EXPECT_TRUE(Active("TOP", 1));
    EXPECT_TRUE(Active("TOP", 2));
}

TEST_F(PickTest, WithinABlockTheLastItemIsOnTop) {
    AddBoxLayer("TOP", 1);
    AddItem("TOP", BoxRing(100, 100, 200, 200));
    EXPECT_EQ(Click(150, 150), 2) << "all of the block are counted";
    EXPECT_FALSE(Active("TOP", 1));
    EXPECT_TRUE(Active("TOP", 2));
    EXPECT_EQ(ShiftClick(150, 150, 1), 2);
    EXPECT_TRUE(Active("TOP", 1));
    EXPECT_FALSE(Active("TOP", 2));
}

TEST_F(PickTest, TheHintWalksTheItemsOfABlockFromTheFirstUpward) {
    AddBoxLayer("TOP", 1);
    AddItem("TOP", BoxRing(100, 100, 200, 200));
    AddBoxLayer("LOW", 2);
    const FoundItem found = PickForHint(store, {150, 150}, place);
    EXPECT_EQ(found.datID, 1);
    EXPECT_EQ(found.code.View(), "TOP");
    EXPECT_EQ(found.meshNo, kMesh);
    EXPECT_FALSE(Active("TOP", 1)) << "the hint changes nothing";
}

TEST_F(PickTest, ANegativeCycleMeetsItemsAndChangesNothing) {
    AddBoxLayer("TOP", 1);
    AddItem("TOP", BoxRing(300, 300, 400, 400)).active = 1;
    EXPECT_EQ(ShiftClick(150, 150, -1), 1);
    EXPECT_EQ(EditClick(-1), 1);
    EXPECT_FALSE(Active("TOP", 1));
    EXPECT_TRUE(Active("TOP", 2));
}

TEST_F(PickTest, OfMoreThanAHundredAndNinetyNineItemsTheCountStopsThere) {
    AddLayer("A", kLayPolygon, 1);
    for (int i = 0; i < 203; ++i) AddItem("A", BoxRing(100, 100, 200, 200));
    EXPECT_EQ(Click(150, 150), 199);
    EXPECT_TRUE(Active("A", 203)) << "the topmost";
    EXPECT_EQ(GetActDatCnt(store), 1);
    // From the top, 203 to 5 count; 4 to 1 share the slot behind, where 1 stands at the end.
    EXPECT_EQ(ShiftClick(150, 150, 198), 199);
    EXPECT_TRUE(Active("A", 5));
    EXPECT_EQ(ShiftClick(150, 150, 199), 199);
    EXPECT_TRUE(Active("A", 203)) << "the slot behind is never selected";
    EXPECT_EQ(GetActDatCnt(store), 1);
}

TEST_F(PickTest, TheClearingOfAShiftCycleIncludesTheSlotBehindTheCountAndTheToggleDoesNot) {
    AddLayer("A", kLayPolygon, 1);
    for (int i = 0; i < 203; ++i) AddItem("A", BoxRing(100, 100, 200, 200)).active = 1;
    ShiftClick(150, 150, 1);
    EXPECT_FALSE(Active("A", 1)) << "the last that was met stands in the slot";
    EXPECT_TRUE(Active("A", 202)) << "the chosen one";
    for (std::int32_t ID = 2; ID <= 4; ++ID) EXPECT_TRUE(Active("A", ID)) << "pushed out of the slot";
    EXPECT_EQ(GetActDatCnt(store), 4);

    store.ClearActive();
    EXPECT_EQ(CtrlClick(150, 150), 199);
    EXPECT_EQ(GetActDatCnt(store), 199);
    for (std::int32_t ID = 1; ID <= 4; ++ID) EXPECT_FALSE(Active("A", ID)) << ID;
}

TEST_F(PickTest, AHundredAndNinetyNineItemsLeaveTheSlotBehindEmpty) {
    AddLayer("A", kLayPolygon, 1);
    for (int i = 0; i < 199; ++i) AddItem("A", BoxRing(100, 100, 200, 200));
    EXPECT_EQ(ShiftClick(150, 150, 199), 199);
    EXPECT_TRUE(Active("A", 199));
    EXPECT_EQ(GetActDatCnt(store), 1);
}

TEST_F(PickTest, NoSearchButTheHintFindsAnItemOfAHiddenLayer) {
    AddBoxLayer("TOP", 1);
    Layer("TOP").dspFlg = 0;
    EXPECT_EQ(Click(150, 150), 0);
    EXPECT_EQ(EditClick(), 0);
    SelectInRect(store, {0, 0, 900, 900}, place, false);
    EXPECT_FALSE(Active("TOP", 1));
    // What hides a layer also takes its blocks out of view at the next paint, and then the hint finds nothing either.
    EXPECT_EQ(Hint(150, 150), 1);
    Block("TOP").inView = 0;
    EXPECT_EQ(Hint(150, 150), -1);
}

TEST_F(PickTest, ALayerThatIsNotActiveAndABlockOutOfViewArePassedOver) {
    AddBoxLayer("TOP", 1);
    Block("TOP").inView = 0;
    EXPECT_EQ(Click(150, 150), 0);
    EXPECT_EQ(EditClick(), 0);
    EXPECT_EQ(Hint(150, 150), 1) << "for the hint a shown and active layer is enough";
    Layer("TOP").actFlg = 0;
    EXPECT_EQ(Hint(150, 150), -1);
    Block("TOP").inView = 1;
    EXPECT_EQ(Click(150, 150), 0);
    EXPECT_EQ(EditClick(), 0);
    EXPECT_EQ(Hint(150, 150), 1) << "so is a block in view";
}

TEST_F(PickTest, TheSearchForAnEditLooksAtLayersThatMayBeEdited) {
    AddBoxLayer("TOP", 1);
    AddBoxLayer("LOW", 2);
    AddBoxLayer("FIX", 0);
    Layer("FIX").editFlg = 0;
    Item("FIX", 1).active = 1;
    EXPECT_EQ(EditClick(), 2) << "over all blocks, without an early end";
    EXPECT_FALSE(Active("FIX", 1));
    EXPECT_TRUE(Active("TOP", 1));
    EXPECT_FALSE(Active("LOW", 1));
    EXPECT_EQ(FirstActive(store).code.View(), "TOP");
    EXPECT_EQ(EditClick(3), 2);
    EXPECT_TRUE(Active("TOP", 1)) << "a cycle leaves the active set";
    EXPECT_TRUE(Active("LOW", 1));
}

TEST_F(PickTest, ItemsOfLayersThatAreNotActiveKeepTheirFlagWhenTheSetIsEmptied) {
    AddBoxLayer("TOP", 1);
    AddBoxLayer("LOW", 2);
    Layer("LOW").actFlg = 0;
    Item("LOW", 1).active = Item("TOP", 1).active = 1;
    EXPECT_EQ(store.ClearActive(), 1);
    EXPECT_TRUE(Active("LOW", 1));
}

TEST_F(PickTest, FirstActiveWalksFromTheTopAndItemsFromTheFirstUpwardShownOrNot) {
    AddBoxLayer("TOP", 1);
    AddBoxLayer("LOW", 2);
    AddItem("TOP", BoxRing(0, 0, 1, 1));
    AddItem("TOP", BoxRing(0, 0, 1, 1));
    EXPECT_FALSE(FirstActive(store).Found());
    EXPECT_EQ(FirstActive(store).datID, -1);
    EXPECT_EQ(FirstActive(store).code.View(), "");
    for (const std::int32_t ID : {2, 3}) Item("TOP", ID).active = 1;
    Item("LOW", 1).active = 1;
    EXPECT_EQ(FirstActive(store).datID, 2);
    Layer("TOP").dspFlg = 0;
    Block("TOP").inView = 0;
    EXPECT_EQ(FirstActive(store).code.View(), "TOP") << "hidden afterwards, still found";
    Layer("TOP").actFlg = 0;
    EXPECT_EQ(FirstActive(store).code.View(), "LOW");
    EXPECT_EQ(FirstActive(store).meshNo, kMesh);
}

TEST_F(PickTest, OrvSetActDatOnALayerThatIsNotActiveReturnsFalseAndSetsNothing) {
    AddBoxLayer("TOP", 1);
    Layer("TOP").actFlg = 0;
    EXPECT_FALSE(SetActDat(store, "TOP", kMesh, 1));
    EXPECT_FALSE(Active("TOP", 1));
    Layer("TOP").actFlg = 1;
    EXPECT_TRUE(SetActDat(store, "TOP", kMesh, 1));
    EXPECT_TRUE(Active("TOP", 1));
}

TEST_F(PickTest, SearchesOnAStoreBeforeItsFirstInitFindNothing) {
    CDigMem fresh;
    EXPECT_EQ(SelectAtPoint(fresh, {0, 0}, place, 0, false), 0);
    EXPECT_EQ(SelectForEdit(fresh, {0, 0}, place, 0), 0);
    EXPECT_EQ(SelectInRect(fresh, {0, 0, 9, 9}, place, false), 0);
    EXPECT_FALSE(PickForHint(fresh, {0, 0}, place).Found());
    EXPECT_FALSE(FirstActive(fresh).Found());
    EXPECT_EQ(GetActDatCnt(fresh), 0);
    EXPECT_FALSE(SetActDat(fresh, "A", 1, 1));
}

TEST_F(PickTest, WithoutMemoryForItsPixelsAPolygonIsPassedOver) {
    AddBoxLayer("TOP", 1);
    ArrayFaults::FailFrom(1);
    EXPECT_EQ(Click(150, 150), 0);
    ArrayFaults::Clear();
    EXPECT_EQ(Click(150, 150), 1);
}

TEST_F(PickTest, ASearchAsksForMemoryOnceNotForEachItem) {
    AddLayer("A", kLayPolygon, 1);
    for (int i = 0; i < 100; ++i) AddItem("A", BoxRing(100, 100, 200, 200));
    ArrayFaults::Clear();
    EXPECT_EQ(Click(150, 150), 100);
    EXPECT_LE(ArrayFaults::Count(), 2);
    ArrayFaults::Clear();
}

}  // namespace
}  // namespace orvane
