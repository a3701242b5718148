// The point move tool, and the Delete key in it.
#include "tests/control/edit_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EditPointMoveTest : public testing::Test {
protected:
    EditPointMoveTest() {
        rig.AddOneOfEach();
        rig.AddLayer("E", kLayEllipse);
        rig.Add("E", 1, {{500, -100, 0}, {600, -200, 0}});
        rig.Show();
        rig.Start(200);
    }
    void PickLine() {
        rig.Click(160, 100);
        ASSERT_EQ(rig.State(), "200/1");
    }
    void PickPolygon() {
        rig.Click(190, 330);
        ASSERT_EQ(rig.State(), "200/1");
    }
    EditRig rig;
};

TEST_F(EditPointMoveTest, APickTellsTheStartAndLoadsTheItem) {
    rig.Click(160, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 1 3 200"));
    EXPECT_EQ(rig.State(), "200/1");
    EXPECT_EQ(rig.Rubber(), "(100 -100) (200 -100) (300 -200)");
    EXPECT_EQ(rig.Tag("A", 1), -1);
    EXPECT_TRUE(rig.Active("A", 1)) << "the pick makes it active";
    EXPECT_EQ(rig.Edit().EditTag, 5);
    EXPECT_EQ(rig.Edit().EditCode.View(), "A");
    EXPECT_EQ(rig.ctrl->store.ActivePointType, 1);
}

TEST_F(EditPointMoveTest, AClickOnNothingPicksNothingAndChangesNothing) {
    rig.Click(20, 500);
    EXPECT_EQ(rig.State(), "200/0");
    EXPECT_THAT(rig.Heard(), IsEmpty());
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(EditPointMoveTest, TheStartIsToldBeforeTheRecordIsFilled) {
    rig.log.onStart = [&] {
        EXPECT_EQ(rig.State(), "200/0");
        EXPECT_EQ(rig.Edit().EditCnt, 0);
        EXPECT_EQ(rig.Tag("A", 1), 5);
        EXPECT_EQ(rig.Rubber(), "none");
    };
    PickLine();
}

TEST_F(EditPointMoveTest, AClickOnAVertexTakesItUpAndTheNextPutsItDown) {
    PickLine();
    rig.Forget();
    rig.Click(200, 100);
    EXPECT_EQ(rig.State(), "200/2");
    EXPECT_EQ(rig.Edit().EditPntIdx, 1);
    rig.MoveTo(210, 150);
    EXPECT_EQ(rig.Rubber(), "(100 -100) (210 -150) (300 -200)");
    EXPECT_EQ(rig.Held(), "(100 -100) (200 -100) (300 -200)") << "the figure follows, the record waits for the click";
    rig.Forget();
    rig.Click(220, 160);
    EXPECT_EQ(rig.State(), "200/1");
    EXPECT_EQ(rig.Edit().EditPntIdx, -1);
    EXPECT_EQ(rig.Edit().EditBusy, 1);
    EXPECT_EQ(rig.Held(), "(100 -100) (220 -160) (300 -200)");
    EXPECT_EQ(rig.Pnts("A", 1), "(90 -120 7) (190 -120 8) (290 -220 9)") << "the store is not touched";
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(EditPointMoveTest, AMoveOfAHeldPointRepaintsInModeTwo) {
    PickLine();
    rig.Click(200, 100);
    rig.Forget();
    rig.MoveTo(210, 150);
    EXPECT_THAT(rig.Frames(), ElementsAre("figures"));
    rig.MoveTo(210, 151);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(100,100) (210,151) (300,200)]"));
}

TEST_F(EditPointMoveTest, AClickOffTheFigureCommits) {
    PickLine();
    rig.Click(200, 100);
    rig.Click(220, 160);
    rig.Heard();
    rig.Forget();
    std::string stateInEvent;
    rig.log.onEnd = [&] {
        stateInEvent = rig.State();
        EXPECT_EQ(rig.Rubber(), "none");
        EXPECT_EQ(rig.Pnts("A", 1), "(90 -120) (210 -180) (290 -220)");
        EXPECT_THAT(rig.Verbs(), IsEmpty()) << "the repaint follows";
    };
    rig.Click(20, 500);
    EXPECT_EQ(stateInEvent, "200/1") << "the reset follows";
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 3 200"));
    EXPECT_EQ(rig.Pnts("A", 1), "(90 -120) (210 -180) (290 -220)") << "z is 0 on every point";
    EXPECT_EQ(rig.Tag("A", 1), 5);
    EXPECT_FALSE(rig.Active("A", 1));
    EXPECT_EQ(rig.State(), "0/0");
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Edit().EditPntIdx, -1);
    EXPECT_EQ(rig.Edit().EditBusy, 0);
    EXPECT_THAT(rig.Frames(), ElementsAre("map"));
}

TEST_F(EditPointMoveTest, AClickOnAnotherActiveFigureIsOffTheRubberFigure) {
    const std::int32_t host = rig.ctrl->store.MakeOrgDat(kLayLine, 1, 0, 0);
    rig.ctrl->store.AddOrgPnt(host, 50, -550);
    rig.ctrl->store.SetOrgDataActive(host, true);
    PickLine();
    rig.Click(50, 550);
    EXPECT_EQ(rig.State(), "0/0");
    EXPECT_EQ(rig.Rubber(), "(50 -550)") << "the host's figure stays";
}

TEST_F(EditPointMoveTest, VertexZeroOfAPolygonTakesTheClosingPointAlong) {
    PickPolygon();
    rig.Click(100, 300);
    EXPECT_EQ(rig.Edit().EditPntIdx, 0);
    rig.MoveTo(90, 290);
    EXPECT_EQ(rig.Rubber(), "(90 -290) (200 -300) (200 -400) (90 -290)");
    rig.Click(80, 280);
    EXPECT_EQ(rig.Held(), "(80 -280) (200 -300) (200 -400) (80 -280)");
    rig.Click(20, 500);
    EXPECT_EQ(rig.Pnts("P", 1), "(80 -280) (200 -300) (200 -400) (80 -280)");
}

TEST_F(EditPointMoveTest, EveryLaterPointAtTheSamePlaceGoesAlongInAPolygonButNoEarlierOne) {
    rig.Add("P", 2, {{300, -300, 0}, {400, -300, 0}, {300, -300, 0}, {350, -350, 0}, {300, -300, 0}});
    rig.ctrl->CancelOrgEdit();
    ASSERT_EQ(rig.Start(200, "P", 2), 0);
    rig.Edit().EditPhase = 2;
    rig.Edit().EditPntIdx = 2;
    rig.Click(310, 310);
    EXPECT_EQ(rig.Held(), "(300 -300) (400 -300) (310 -310) (350 -350) (310 -310)");
    rig.Edit().EditPhase = 2;
    rig.Edit().EditPntIdx = 2;
    rig.Click(300, 300);
    rig.Edit().EditPhase = 2;
    rig.Edit().EditPntIdx = 0;
    rig.Click(320, 320);
    EXPECT_EQ(rig.Held(), "(320 -320) (400 -300) (320 -320) (350 -350) (320 -320)");
}

TEST_F(EditPointMoveTest, InALineNoOtherPointGoesAlong) {
    rig.Add("A", 2, {{0, -500, 0}, {100, -500, 0}, {0, -500, 0}});
    ASSERT_EQ(rig.Start(200, "A", 2), 0);
    rig.Click(10, 480);
    rig.Click(30, 470);
    EXPECT_EQ(rig.Held(), "(30 -470) (110 -480) (10 -480)");
}

TEST_F(EditPointMoveTest, APointItemIsCarriedAtOnceAndPutDownByOneClick) {
    rig.Click(700, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start S 1 1 1 200"));
    EXPECT_EQ(rig.State(), "200/2");
    EXPECT_EQ(rig.Edit().EditPntIdx, 0);
    EXPECT_EQ(rig.Edit().EditCnt, 1);
    rig.MoveTo(650, 150);
    EXPECT_EQ(rig.Rubber(), "(650 -150)");
    rig.Click(600, 200);
    EXPECT_THAT(rig.Heard(), ElementsAre("end S 1 1 1 200"));
    EXPECT_EQ(rig.Pnts("S", 1), "(600 -200)");
    EXPECT_EQ(rig.State(), "0/0");
    EXPECT_FALSE(rig.Active("S", 1));
}

TEST_F(EditPointMoveTest, APointItemThatTheHostNamedAnswersNoClick) {
    rig.Start(200, "S", 1);
    EXPECT_EQ(rig.State(), "200/1");
    rig.Click(700, 100);
    rig.Click(20, 500);
    EXPECT_EQ(rig.State(), "200/1");
    EXPECT_THAT(rig.Heard(), IsEmpty());
}

TEST_F(EditPointMoveTest, ACircleIsEditedByItsCentreAndTheRimPointEastOfIt) {
    rig.Click(400, 300);
    EXPECT_THAT(rig.Heard(), ElementsAre("start C 1 1 1 200"));
    EXPECT_EQ(rig.Held(), "(400 -300) (450 -300)");
    EXPECT_EQ(rig.Edit().EditSavedCnt, 2);
    rig.Click(450, 300);
    rig.Click(430, 340);  // 30 and 40 away from the centre
    rig.Click(430, 340);
    EXPECT_EQ(rig.State(), "0/0") << "the figure was dragged by no move, so its rim point is still where it was";
    EXPECT_THAT(rig.Heard(), ElementsAre("end C 1 1 2 200"));
    EXPECT_EQ(rig.Pnts("C", 1), "(390 -320 50)");
}

TEST_F(EditPointMoveTest, TheCommitTurnsTheTwoPointsOfACircleIntoCentreAndRadius) {
    rig.Click(400, 300);
    rig.Click(400, 300);
    rig.Click(420, 300);
    rig.Click(20, 500);
    EXPECT_EQ(rig.Pnts("C", 1), "(410 -320 30)");
}

TEST_F(EditPointMoveTest, ACircleThatHasMorePointsIsItsFirstOneAllTheSame) {
    rig.Add("C", 2, {{690, -320, 50}, {90, -20, 4}});  // map (700 -300)
    rig.Show();
    rig.Start(200);
    rig.Click(700, 300);
    EXPECT_EQ(rig.Held(), "(700 -300) (750 -300)");
    EXPECT_EQ(rig.Edit().EditSavedCnt, 2);
    rig.Click(20, 500);
    EXPECT_EQ(rig.Pnts("C", 2), "(690 -320 50) (90 -20 4)");
}

TEST_F(EditPointMoveTest, ANamedCircleTakesItsRadiusFromThePlaceThatTheRecordHoldsNothingAt) {
    rig.Start(200, "C", 1);
    rig.Click(20, 500);
    EXPECT_EQ(rig.Pnts("C", 1), "(390 -320 500)") << "centre (400, -300) against (0, 0)";
    EXPECT_THAT(rig.Heard(), ElementsAre("end C 1 1 1 200"));
}

TEST_F(EditPointMoveTest, AnEllipseMovesByItsCorners) {
    rig.Click(550, 150);
    EXPECT_THAT(rig.Heard(), ElementsAre("start E 1 1 2 200"));
    rig.Click(600, 200);
    rig.Click(620, 230);
    rig.Click(20, 500);
    EXPECT_EQ(rig.Pnts("E", 1), "(500 -100) (620 -230)");
}

TEST_F(EditPointMoveTest, TheCursorTurnsIntoACrossOverAVertexInPhaseOne) {
    rig.window.SetCursorShape(CursorShape::Hand);
    rig.MoveTo(200, 100);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Hand) << "before the pick EditPntIdx is 0 and not -1";
    PickLine();
    rig.MoveTo(200, 100);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Cross);
    rig.MoveTo(20, 500);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Arrow);
    rig.Click(200, 100);
    rig.window.SetCursorShape(CursorShape::Hand);
    rig.MoveTo(300, 200);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Hand) << "a held point leaves the cursor alone";
}

TEST_F(EditPointMoveTest, AHeldPointThatTheRecordDoesNotHaveIsPutDownNowhere) {
    PickLine();
    rig.ctrl->store.AddOrgPnt(rig.Edit().EditOrgId, 400, -400);  // the host lengthens the figure behind the tool's back
    rig.Click(400, 400);
    EXPECT_EQ(rig.State(), "200/2");
    rig.Click(410, 410);
    EXPECT_EQ(rig.State(), "200/1");
    EXPECT_EQ(rig.Held(), "(100 -100) (200 -100) (300 -200)");
}

// --- The Delete key ---------------------------------------------------------------------------------------------------------

TEST_F(EditPointMoveTest, DeleteInPhaseOneDeletesTheItemAndTheToolWaitsForTheNext) {
    PickLine();
    rig.Heard();
    rig.PressDelete();
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 0 300"));
    EXPECT_EQ(rig.Find("A", 1), nullptr);
    EXPECT_EQ(rig.Rubber(), "none");
    EXPECT_EQ(rig.State(), "200/0");
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Edit().EditPntIdx, -1);
    EXPECT_EQ(rig.Edit().EditBusy, 0);
    rig.Click(190, 330);
    EXPECT_THAT(rig.Heard(), ElementsAre("start P 1 1 4 200"));
}

TEST_F(EditPointMoveTest, DeleteInPhaseTwoTakesTheHeldPointAndTheItemKeepsThePointsBehindTheNewCount) {
    PickLine();
    rig.Click(200, 100);
    rig.PressDelete();
    EXPECT_EQ(rig.State(), "200/1");
    EXPECT_EQ(rig.Edit().EditPntIdx, -1);
    EXPECT_EQ(rig.Edit().EditBusy, 1);
    EXPECT_EQ(rig.Rubber(), "(100 -100) (300 -200)");
    EXPECT_EQ(rig.Held(), "(100 -100) (300 -200)");
    rig.Heard();
    rig.Click(20, 500);
    EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 2 200"));
    EXPECT_EQ(rig.Pnts("A", 1), "(90 -120) (290 -220) (290 -220 9)");
}

TEST_F(EditPointMoveTest, DeleteKnowsNoLeastCountButTheFiguresOwnLastPoint) {
    PickLine();
    for (std::int32_t i = 0; i < 2; ++i) {
        rig.Click(100 + 100 * i, 100);
        rig.PressDelete();
    }
    EXPECT_EQ(rig.Held(), "(300 -200)");
    rig.Click(300, 200);
    rig.PressDelete();
    EXPECT_EQ(rig.Held(), "(300 -200)");
    EXPECT_EQ(rig.State(), "200/2") << "a removal that fails leaves the record as it was";
}

TEST_F(EditPointMoveTest, DeleteOfVertexZeroClosesTheFiguresRingButNotTheRecords) {
    PickPolygon();
    rig.Click(100, 300);
    rig.PressDelete();
    EXPECT_EQ(rig.Rubber(), "(200 -300) (200 -400) (200 -300)");
    EXPECT_EQ(rig.Held(), "(200 -300) (200 -400) (100 -300)");
}

TEST_F(EditPointMoveTest, DeleteLeavesACarriedPointItemAlone) {
    rig.Click(700, 100);
    rig.PressDelete();
    EXPECT_EQ(rig.State(), "200/2");
    EXPECT_NE(rig.Find("S", 1), nullptr);
}

TEST_F(EditPointMoveTest, DeleteInPhaseZeroAndInOtherModesDoesNothing) {
    rig.PressDelete();
    EXPECT_EQ(rig.State(), "200/0");
    for (const std::int32_t tool : {210, 220, 250, 260}) {
        rig.Start(tool, "A", 1);
        rig.PressDelete();
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/1");
        rig.ctrl->store.SetDigDatInfoEx("A", 1, 1, 5, false);
    }
    EXPECT_THAT(rig.Heard(), IsEmpty());
}

TEST_F(EditPointMoveTest, TheKeyItselfPaintsNothing) {
    PickLine();
    rig.Forget();
    rig.PressDelete();
    EXPECT_THAT(rig.Verbs(), IsEmpty()) << "the repaint is the key handler's";
}

TEST_F(EditPointMoveTest, AfterTheRadiusPointOfACircleWasDeletedTheOldRadiusIsWritten) {
    rig.Click(400, 300);
    rig.Click(450, 300);
    rig.PressDelete();
    EXPECT_EQ(rig.Held(), "(400 -300)");
    rig.Click(20, 500);
    EXPECT_EQ(rig.Pnts("C", 1), "(390 -320 50)") << "what stood behind the count is still there";
}

}  // namespace
}  // namespace orvane
