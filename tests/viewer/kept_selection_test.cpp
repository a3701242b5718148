// Who edits goes on with what is selected; who undoes sees what changed.
#include "hosts/viewer/selecting.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class KeptSelection : public Walk {
protected:
    KeptSelection() {
        MakeLayer("AREA", kLayPolygon);
        for (int i = 1; i <= 4; ++i) AddSquare("AREA", i, 200.0 * i, 0, 100);
        Fit();
        for (int i = 1; i <= 3; ++i) Map().Call("OrvSetActDat", {"AREA", 1, i});
        window->RefreshNow();
    }
    std::vector<int> Selected() {
        std::vector<int> numbers;
        for (const ItemPlace& place : SelectedPlaces(Store())) numbers.push_back(place.key.datID);
        return numbers;
    }
    void ChangeTagOf(int row, int tag) {
        window->Selection().List().setCurrentItem(window->Selection().List().topLevelItem(row));
        Settle();
        window->Feature().TagField().setValue(tag);
        window->Feature().ApplyButton().click();
        Settle();
    }
};

TEST_F(KeptSelection, ApplyLeavesAllThatIsSelected) {
    ChangeTagOf(1, 7);
    ASSERT_EQ(Store().FindDat("AREA", 1, 2)->lineTag, 7);
    EXPECT_EQ(Selected(), (std::vector<int>{1, 2, 3}));
    ChangeTagOf(2, 8);
    EXPECT_EQ(Store().FindDat("AREA", 1, 3)->lineTag, 8);
    EXPECT_EQ(Selected(), (std::vector<int>{1, 2, 3}));
}

TEST_F(KeptSelection, UndoAndRedoSelectWhatChanged) {
    ChangeTagOf(1, 7);
    window->History().Undo();
    EXPECT_EQ(Selected(), std::vector<int>{2});
    Map().Call("OrvSetActDat", {"AREA", 1, 4});
    window->History().Redo();
    EXPECT_EQ(Selected(), std::vector<int>{2});
}

TEST_F(KeptSelection, NumbersOfTheirOwnLeaveTheSelectionToo) {
    AddSquare("AREA", 3, 1000, 0, 100);
    Store().MutableBlock(Store().FindBlock("AREA", 1).block).dats[4].active = 1;
    Press(Qt::Key_N);
    EXPECT_EQ(SelectedPlaces(Store()).size(), 4u);
    EXPECT_EQ(window->History().Stack().count(), 1);
}

TEST_F(KeptSelection, ADeletionLeavesNothingSelected) {
    Press(Qt::Key_Delete);
    EXPECT_EQ(BlockOf("AREA").datCnt, 1);
    EXPECT_TRUE(Selected().empty());
}

}  // namespace
}  // namespace orvane
