// The tools that move, copy and delete whole items.
#include "tests/control/edit_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EditWholeTest : public testing::Test {
protected:
    EditWholeTest() {
        rig.AddOneOfEach();
        rig.Show();
    }
    EditRig rig;
};

// --- Move -------------------------------------------------------------------------------------------------------------------

TEST_F(EditWholeTest, AMovePicksWithOneClickAndWritesWithTheNext) {
    rig.Start(250);
    rig.Click(160, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 1 3 250"));
    EXPECT_EQ(rig.State(), "250/1");
    EXPECT_EQ(rig.ctrl->store.ActivePointType, 0);
    EXPECT_EQ(rig.Edit().EditAnchorX, 160);
    EXPECT_EQ(rig.Edit().EditAnchorY, -100);
    EXPECT_EQ(rig.Edit().EditLastX, 160);
    EXPECT_EQ(rig.Edit().EditLastY, -100);
    rig.Forget();
    rig.MoveTo(170, 120);
    rig.MoveTo(175, 130);
    EXPECT_EQ(rig.Rubber(), "(115 -130) (215 -130) (315 -230)");
    EXPECT_THAT(rig.Frames(), ElementsAre("figures", "figures"));
    EXPECT_EQ(rig.Pnts("A", 1), "(90 -120 7) (190 -120 8) (290 -220 9)");
    std::string inEvent;
    rig.log.onEnd = [&] { inEvent = rig.State() + ' ' + rig.Rubber(); };
    rig.Click(180, 140);
    EXPECT_EQ(inEvent, "250/1 none");
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 3 250"));
    EXPECT_EQ(rig.Pnts("A", 1), "(110 -160) (210 -160) (310 -260)") << "by the clicks' difference (20, -40), z 0";
    EXPECT_EQ(rig.Tag("A", 1), 5);
    EXPECT_FALSE(rig.Active("A", 1));
    EXPECT_EQ(rig.State(), "0/0");
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Edit().EditPntIdx, -1);
    EXPECT_EQ(rig.Edit().EditLastX, 180);
    EXPECT_THAT(rig.Frames(), ElementsAre("map"));
}

TEST_F(EditWholeTest, AfterAMoveOrACopyEditBusyStaysOne) {
    for (const std::int32_t tool : {250, 260}) {
        rig.Start(tool);
        rig.Click(160, 100);
        rig.Click(160, 100);
        EXPECT_EQ(rig.Mode(), 0);
        EXPECT_EQ(rig.Edit().EditBusy, 1);
    }
}

TEST_F(EditWholeTest, AClickOnNothingPicksNothing) {
    for (const std::int32_t tool : {250, 260, 300}) {
        rig.Start(tool);
        rig.Click(20, 500);
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/0");
        EXPECT_THAT(rig.Heard(), IsEmpty());
        EXPECT_THAT(rig.Verbs(), IsEmpty());
    }
}

TEST_F(EditWholeTest, InATurnedViewPointsMoveByTheUnturnedDifferenceOfTheClicks) {
    rig.Start(250, "A", 1);
    rig.ctrl->CancelOrgEdit();
    rig.Start(250);
    rig.Click(160, 100);
    ASSERT_EQ(rig.State(), "250/1");
    rig.ctrl->SetRotate(90);
    rig.SetView(1000, 2000);
    rig.Click(150, 130);  // world (1150, -2130)
    EXPECT_EQ(rig.Pnts("A", 1), "(1080 -2150) (1180 -2150) (1280 -2250)");
}

TEST_F(EditWholeTest, AnItemPickedInATurnedViewMovesSoToo) {
    rig.ctrl->SetRotate(180);
    rig.SetView(-500, -500);
    rig.Show();
    // A half turn puts map (200, -100) at (-200, -100) in the view's flipped sense: pixel (300, 400).
    rig.Start(250);
    rig.Click(340, 400);
    ASSERT_EQ(rig.State(), "250/1");
    rig.Click(350, 420);
    EXPECT_EQ(rig.Pnts("A", 1), "(100 -140) (200 -140) (300 -240)");
}

TEST_F(EditWholeTest, OfACircleOnlyTheCentreMoves) {
    rig.Start(250);
    rig.Click(400, 300);
    EXPECT_THAT(rig.Heard(), ElementsAre("start C 1 1 1 250"));
    rig.MoveTo(410, 310);
    EXPECT_EQ(rig.Rubber(), "(410 -310) (460 -310)");
    rig.Click(420, 330);
    EXPECT_THAT(rig.Heard(), ElementsAre("end C 1 1 2 250"));
    EXPECT_EQ(rig.Pnts("C", 1), "(410 -350 50)");
}

TEST_F(EditWholeTest, ARingStaysClosedWhileItsFigureShifts) {
    rig.Start(250);
    rig.Click(190, 330);
    rig.MoveTo(200, 340);
    EXPECT_EQ(rig.Rubber(), "(110 -310) (210 -310) (210 -410) (110 -310)");
    rig.Click(200, 340);
    EXPECT_EQ(rig.Pnts("P", 1), "(110 -310) (210 -310) (210 -410) (110 -310)");
}

TEST_F(EditWholeTest, APointItemMoves) {
    rig.Start(250);
    rig.Click(700, 100);
    rig.Click(690, 120);
    EXPECT_THAT(rig.Heard(), ElementsAre("start S 1 1 1 250", "end S 1 1 1 250"));
    EXPECT_EQ(rig.Pnts("S", 1), "(690 -120)");
}

TEST_F(EditWholeTest, ANamedItemMovesByTheDistanceFromTheAnchorThatStandsInTheRecord) {
    rig.Start(250, "A", 1);
    EXPECT_EQ(rig.State(), "250/1");
    rig.Click(3, 4);
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 3 250"));
    EXPECT_EQ(rig.Pnts("A", 1), "(93 -124) (193 -124) (293 -224)") << "no click has set an anchor: it is (0, 0)";
}

// --- Copy -------------------------------------------------------------------------------------------------------------------

TEST_F(EditWholeTest, ACopyIsMadeAtThePickAndCarriedFromThere) {
    rig.Add("A", 8, {{0, -500, 0}});
    rig.Show();
    rig.Start(260);
    rig.Click(160, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 9 3 260"));
    EXPECT_EQ(rig.State(), "260/1");
    EXPECT_EQ(rig.Edit().EditDatId, 9);
    EXPECT_EQ(rig.Pnts("A", 9), "(90 -120 7) (190 -120 8) (290 -220 9)");
    EXPECT_EQ(rig.Tag("A", 9), -1);
    EXPECT_FALSE(rig.Active("A", 9));
    EXPECT_EQ(rig.Tag("A", 1), 5);
    EXPECT_TRUE(rig.Active("A", 1)) << "the picked item stays active";
    EXPECT_EQ(rig.ctrl->store.ActivePointType, 0);
    rig.Click(170, 120);
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 9 3 260"));
    EXPECT_EQ(rig.Pnts("A", 9), "(100 -140) (200 -140) (300 -240)");
    EXPECT_EQ(rig.Tag("A", 9), 5) << "the tag came along";
    EXPECT_EQ(rig.Pnts("A", 1), "(90 -120 7) (190 -120 8) (290 -220 9)");
    EXPECT_TRUE(rig.Active("A", 1));
    EXPECT_EQ(rig.State(), "0/0");
}

TEST_F(EditWholeTest, TheCopyTakesTagSubLayerAndPointsAndLeavesTheBlocksBoundsAlone) {
    rig.Item("A", 0).subLayNo = 3;
    rig.Block("A").maxX = 12345;
    rig.Start(260);
    rig.Click(160, 100);
    ASSERT_EQ(rig.Block("A").datCnt, 2);
    const DigDat& copy = rig.Item("A", 1);
    EXPECT_EQ(copy.datID, 2);
    EXPECT_EQ(copy.subLayNo, 3);
    EXPECT_EQ(copy.rect, kEmptyItemRect) << "no point of it has been written yet";
    EXPECT_EQ(rig.Block("A").maxX, 12345);
    rig.Click(160, 100);
    EXPECT_EQ(rig.Item("A", 1).rect, (Rect{90, -220, 290, -120}));
}

TEST_F(EditWholeTest, ACircleIsCopiedWithItsRadius) {
    rig.Start(260);
    rig.Click(400, 300);
    rig.Click(420, 330);
    EXPECT_EQ(rig.Pnts("C", 1), "(390 -320 50)");
    EXPECT_EQ(rig.Pnts("C", 2), "(410 -350 50)");
}

TEST_F(EditWholeTest, ANamedItemIsNotCopiedButCarriedItself) {
    rig.Start(260, "A", 1);
    EXPECT_EQ(rig.Block("A").datCnt, 1);
    rig.Click(3, 4);
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 3 260"));
    EXPECT_EQ(rig.Pnts("A", 1), "(93 -124) (193 -124) (293 -224)");
}

TEST_F(EditWholeTest, WithTheGreatestIdTakenNoCopyCanBeMadeAndTheClickEnds) {
    rig.Add("A", 2147483647, {{0, -500, 0}});
    rig.Show();
    rig.Start(260);
    rig.Click(160, 100);
    EXPECT_EQ(rig.State(), "260/0");
    EXPECT_THAT(rig.Heard(), IsEmpty());
    EXPECT_EQ(rig.Block("A").datCnt, 2);
}

// --- Delete -----------------------------------------------------------------------------------------------------------------

TEST_F(EditWholeTest, ADeleteIsOneClickAndItsEndTellsTheCodeThatAnEarlierToolLeft) {
    rig.Start(250);
    rig.Click(700, 100);
    rig.Click(700, 100);
    rig.Heard();
    rig.Start(300);
    rig.Forget();
    std::string inEvents;
    rig.log.onStart = [&] { inEvents += rig.State() + (rig.Find("A", 1) != nullptr ? " there " : " gone "); };
    rig.log.onEnd = [&] { inEvents += rig.State() + (rig.Find("A", 1) != nullptr ? " there" : " gone"); };
    rig.Click(160, 100);
    EXPECT_EQ(inEvents, "300/0 there 0/0 gone");
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 1 3 300", "end S 1 1 0 300"));
    EXPECT_EQ(rig.Find("A", 1), nullptr);
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Edit().EditPntIdx, -1);
    EXPECT_EQ(rig.Edit().EditBusy, 0);
    EXPECT_THAT(rig.Frames(), ElementsAre("map"));
}

TEST_F(EditWholeTest, ADeleteBeforeAnyOtherToolTellsAnEmptyCodeAtItsEnd) {
    rig.Start(300);
    rig.Click(160, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 1 3 300", "end  1 1 0 300"));
}

TEST_F(EditWholeTest, ADeleteTakesTheRubberFigureThatItFindsWithIt) {
    rig.Start(200, "A", 1);
    rig.Edit().EditPhase = 0;
    rig.ctrl->runMode = 300;  // the host changes the mode behind the tools' backs
    rig.Click(700, 100);
    EXPECT_EQ(rig.Rubber(), "none");
    EXPECT_EQ(rig.Find("S", 1), nullptr);
}

TEST_F(EditWholeTest, OutsidePhaseZeroADeleteClickDoesNothing) {
    rig.Start(200, "A", 1);
    rig.ctrl->runMode = 300;
    rig.Click(700, 100);
    EXPECT_EQ(rig.State(), "300/1");
    EXPECT_NE(rig.Find("S", 1), nullptr);
}

TEST_F(EditWholeTest, OnlyLayersThatMayBeEditedAreMet) {
    rig.ctrl->store.SetLayEditFlg("A", false);
    for (const std::int32_t tool : {200, 210, 220, 250, 260, 300}) {
        rig.Start(tool);
        rig.Click(160, 100);
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/0");
    }
    EXPECT_THAT(rig.Heard(), IsEmpty());
}

}  // namespace
}  // namespace orvane
