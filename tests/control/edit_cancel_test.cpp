// The cancel of the edit tools, at each phase of each.
#include "tests/control/edit_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EditCancelTest : public testing::Test {
protected:
    EditCancelTest() {
        rig.AddLayer("A", kLayLine);
        rig.Add("A", 1, {{100, -100, 7}, {200, -100, 8}, {300, -200, 9}}, 5);
        rig.AddLayer("S", kLayPoint);
        rig.Add("S", 1, {{700, -100, 3}}, 6);
        rig.ctrl->store.LineTagMode = 0;
        rig.Show();
    }
    /// Nothing is loaded, no tool runs and no figure is left.
    void ExpectEnded() {
        EXPECT_EQ(rig.State(), "0/0");
        EXPECT_EQ(rig.Rubber(), "none");
        EXPECT_EQ(rig.Edit().EditCnt, 0);
        EXPECT_EQ(rig.Edit().EditPntIdx, -1);
        EXPECT_EQ(rig.Edit().EditBusy, 0);
    }
    EditRig rig;
};

TEST_F(EditCancelTest, EscapeIsTheCancel) {
    rig.Start(200, "A", 1);
    rig.ctrl->OnKeyDown(kVkEscape);
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 0 999"));
    ExpectEnded();
}

TEST_F(EditCancelTest, AddBeforeAndAfterItsFirstClick) {
    for (const bool clicked : {false, true}) {
        rig.Start(100, "A", 9);
        if (clicked) rig.Click(10, 10);
        rig.Heard();
        rig.ctrl->CancelOrgEdit();
        EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 9 0 999"));
        ExpectEnded();
        EXPECT_EQ(rig.Find("A", 9), nullptr);
    }
}

TEST_F(EditCancelTest, EachToolWithALoadedItemGivesTheTagBackAndWritesNoPoint) {
    for (const std::int32_t tool : {200, 210, 220, 250}) {
        rig.Start(tool);
        rig.Click(160, 100);
        ASSERT_EQ(rig.State(), std::to_string(tool) + "/1");
        rig.MoveTo(170, 95);
        if (tool == 210) rig.Click(170, 95);
        if (tool == 220) rig.Click(200, 100);
        rig.Heard();
        std::string inEvent;
        rig.log.onEnd = [&] { inEvent = rig.State() + ' ' + rig.Rubber() + ' ' + std::to_string(rig.Tag("A", 1)); };
        rig.Forget();
        rig.ctrl->CancelOrgEdit();
        EXPECT_EQ(inEvent, "0/0 none 5");
        EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 0 999")) << tool;
        EXPECT_THAT(rig.Frames(), ElementsAre("map"));
        ExpectEnded();
        EXPECT_EQ(rig.Pnts("A", 1), "(100 -100 7) (200 -100 8) (300 -200 9)");
        EXPECT_FALSE(rig.Active("A", 1));
    }
}

TEST_F(EditCancelTest, AHeldPointGoesBack) {
    rig.Start(200);
    rig.Click(160, 100);
    rig.Click(200, 100);
    rig.MoveTo(220, 110);
    ASSERT_EQ(rig.State(), "200/2");
    rig.ctrl->CancelOrgEdit();
    ExpectEnded();
    EXPECT_EQ(rig.Pnts("A", 1), "(100 -100 7) (200 -100 8) (300 -200 9)");
    EXPECT_EQ(rig.Tag("A", 1), 5);
}

TEST_F(EditCancelTest, ACarriedPointItemGoesBack) {
    rig.Start(200);
    rig.Click(700, 100);
    ASSERT_EQ(rig.State(), "200/2");
    rig.ctrl->CancelOrgEdit();
    ExpectEnded();
    EXPECT_EQ(rig.Pnts("S", 1), "(700 -100 3)");
    EXPECT_EQ(rig.Tag("S", 1), 6);
}

TEST_F(EditCancelTest, TheCancelOfACopyRemovesTheCopyAndReports999) {
    rig.Start(260);
    rig.Click(160, 100);
    ASSERT_EQ(rig.Block("A").datCnt, 2);
    rig.Heard();
    rig.ctrl->OnKeyDown(kVkEscape);
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 2 0 999"));
    ExpectEnded();
    EXPECT_EQ(rig.Block("A").datCnt, 1);
    EXPECT_EQ(rig.Pnts("A", 1), "(100 -100 7) (200 -100 8) (300 -200 9)");
    EXPECT_TRUE(rig.Active("A", 1));
}

TEST_F(EditCancelTest, TheCancelOfACopyThatWasStartedOnANamedItemDeletesThatItem) {
    rig.Start(260, "A", 1);
    rig.ctrl->CancelOrgEdit();
    EXPECT_EQ(rig.Find("A", 1), nullptr);
}

TEST_F(EditCancelTest, InPhaseZeroPointMoveOnlyEnds) {
    rig.Start(200, "A", 1);
    rig.ctrl->CancelOrgEdit();
    rig.Heard();
    rig.Start(200, "", 1);
    rig.Item("A", 0).active = 1;
    rig.ctrl->CancelOrgEdit();
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 0 999"));
    EXPECT_EQ(rig.Mode(), 0);
    EXPECT_EQ(rig.Tag("A", 1), 5);
    EXPECT_TRUE(rig.Active("A", 1));
    EXPECT_EQ(rig.Edit().EditPntIdx, 0) << "the record stays";
}

TEST_F(EditCancelTest, InPhaseZeroTheOtherToolsWriteTagZeroByTheKeyInTheRecord) {
    for (const std::int32_t tool : {210, 220, 250, 300}) {
        rig.Start(200, "A", 1);
        rig.ctrl->CancelOrgEdit();
        rig.ctrl->store.SetDigDatInfoEx("A", 1, 1, 5, true);
        rig.Heard();
        rig.Start(tool, "", 1);
        rig.ctrl->CancelOrgEdit();
        EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 0 999"));
        ExpectEnded();
        EXPECT_EQ(rig.Tag("A", 1), 0) << tool;
        EXPECT_FALSE(rig.Active("A", 1));
        rig.ctrl->store.SetDigDatInfoEx("A", 1, 1, 5, false);
    }
}

TEST_F(EditCancelTest, InPhaseZeroTheCopyToolDeletesTheItemOfTheKeyInTheRecord) {
    rig.Start(200, "A", 1);
    rig.ctrl->CancelOrgEdit();
    rig.Start(260, "", 1);
    rig.ctrl->CancelOrgEdit();
    EXPECT_EQ(rig.Find("A", 1), nullptr);
}

TEST_F(EditCancelTest, WithoutAKeyInTheRecordNothingIsWritten) {
    rig.Start(250);
    rig.ctrl->CancelOrgEdit();
    EXPECT_THAT(rig.Heard(), ElementsAre("end  0 0 0 999"));
    EXPECT_EQ(rig.Tag("A", 1), 5);
}

TEST_F(EditCancelTest, OutsideTheToolsACancelOnlyRepaints) {
    rig.Start(200, "A", 1);
    for (const std::int32_t mode : {0, 10, 50, 51, 99, 100, 102, 999, -1}) {
        rig.ctrl->runMode = static_cast<std::int16_t>(mode);
        rig.Forget();
        rig.ctrl->CancelOrgEdit();
        EXPECT_EQ(rig.State(), std::to_string(mode) + "/1");
        EXPECT_THAT(rig.Frames(), ElementsAre("map"));
    }
    EXPECT_NE(rig.Rubber(), "none");
    EXPECT_THAT(rig.Heard(), IsEmpty());
}

}  // namespace
}  // namespace orvane
