// The add tool: each click is a point of a new item.
#include "tests/control/edit_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EditAddTest : public testing::Test {
protected:
    void Layer(std::string_view code, std::int32_t layType, double GX = 0, double GY = 0) {
        rig.AddLayer(code, layType, GX, GY);
        rig.Show();
    }
    EditRig rig;
};

// --- Points -----------------------------------------------------------------------------------------------------------------

TEST_F(EditAddTest, OneClickOnAPointLayerMakesTheItem) {
    Layer("S", kLayPoint, 10, 20);
    rig.Add("S", 4, {{1, 1, 0}});
    rig.Start(100, "S");
    rig.Click(700, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start S 1 -1 0 100", "end S 1 5 0 100"));
    EXPECT_EQ(rig.Pnts("S", 5), "(690 -120)");
    EXPECT_EQ(rig.Mode(), 0);
    EXPECT_EQ(rig.Edit().EditBusy, 0);
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Rubber(), "none");
    EXPECT_FALSE(rig.Active("S", 5));
    EXPECT_EQ(rig.Tag("S", 5), 0);
}

TEST_F(EditAddTest, TheFinalRepaintComposes) {
    Layer("S", kLayPoint);
    rig.Start(100, "S");
    rig.Click(900, 900);
    EXPECT_THAT(rig.Frames(), ElementsAre("map"));
}

TEST_F(EditAddTest, AMissingBlockIsMadeWithAnOriginOfZeroAndTheRecordsType) {
    rig.ctrl->store.MakeLayer("S", kLayPoint);
    rig.Start(100, "S", 33, 8);
    rig.Click(700, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start S 8 -1 0 100", "end S 8 33 0 100"));
    ASSERT_GE(rig.ctrl->store.FindBlock("S", 8).block, 0);
    const DigBlock& block = rig.ctrl->store.Block(rig.ctrl->store.FindBlock("S", 8).block);
    EXPECT_EQ(block.GX, 0);
    EXPECT_EQ(block.GY, 0);
    EXPECT_EQ(block.path, "");
    ASSERT_EQ(block.datCnt, 1);
    EXPECT_EQ(block.dats[0].datID, 33) << "the number that the host asked for";
    EXPECT_EQ(block.dats[0].pnts[0].x, 700);
    EXPECT_EQ(rig.ctrl->store.Layer(0).layIndex, 1) << "the layer was there: its key stays";
}

TEST_F(EditAddTest, TheLayerOfABlockThatIsMadeAfreshStandsAtKey9999) {
    Layer("S", kLayPoint);
    rig.Start(100, "S");
    rig.log.onStart = [&] { rig.ctrl->RDMInit(); };
    rig.Click(700, 100);
    ASSERT_EQ(rig.ctrl->store.LayerCnt(), 1);
    EXPECT_EQ(rig.ctrl->store.Layer(0).layType, kLayPoint);
    EXPECT_EQ(rig.ctrl->store.Layer(0).layIndex, 9999);
    EXPECT_EQ(rig.Pnts("S", 1), "(700 -100)") << "the commit runs on, into the new store";
}

TEST_F(EditAddTest, RunModeIsNormalBeforeTheEndIsTold) {
    Layer("S", kLayPoint);
    Layer("L", kLayLine);
    std::vector<std::int32_t> modes;
    rig.log.onEnd = [&] { modes.push_back(rig.Mode()); };
    rig.log.onStart = [&] { modes.push_back(rig.Mode()); };
    rig.Start(100, "S");
    rig.Click(10, 10);
    rig.Start(100, "L");
    rig.Click(10, 10);
    rig.ctrl->FinishAddTool();
    EXPECT_THAT(modes, ElementsAre(101, 0, 101, 0));
}

TEST_F(EditAddTest, AHostThatStartsTheAddToolAnewAtItsEndDrawsOn) {
    Layer("S", kLayPoint);
    rig.log.onEnd = [&] { EXPECT_EQ(rig.Start(100, "S"), 0); };
    rig.Start(100, "S");
    for (std::int32_t i = 1; i <= 3; ++i) {
        rig.Click(10 * i, 10);
        EXPECT_EQ(rig.State(), "101/0");
        EXPECT_EQ(rig.Block("S").datCnt, i);
    }
}

// --- Lines and polygons -----------------------------------------------------------------------------------------------------

TEST_F(EditAddTest, AFirstClickTellsTheStartAndMakesThePointThatTrailsTheCursor) {
    Layer("L", kLayLine);
    rig.Start(100, "L");
    rig.Click(100, 100);
    EXPECT_THAT(rig.Heard(), ElementsAre("start L 1 -1 0 100"));
    EXPECT_EQ(rig.Rubber(), "(100 -100) (100 -100)");
    EXPECT_EQ(rig.State(), "101/0");
    EXPECT_THAT(rig.Verbs(), IsEmpty()) << "a click paints nothing";
    rig.Click(200, 100);
    EXPECT_THAT(rig.Heard(), IsEmpty());
    EXPECT_EQ(rig.Rubber(), "(100 -100) (100 -100) (200 -100)");
    EXPECT_EQ(rig.Held(), "(100 -100) (200 -100)");
    EXPECT_EQ(rig.Block("L").datCnt, 0) << "nothing is stored before the end";
}

TEST_F(EditAddTest, AMouseMoveDragsTheTrailingPointWithoutComposing) {
    Layer("L", kLayLine);
    rig.Start(100, "L");
    rig.MoveTo(50, 60);
    EXPECT_THAT(rig.Frames(), ElementsAre("figures")) << "before the first click there is no point to drag";
    rig.Click(100, 100);
    rig.MoveTo(150, 160);
    EXPECT_EQ(rig.Rubber(), "(100 -100) (150 -160)");
    rig.Click(200, 100);
    rig.MoveTo(250, 260);
    EXPECT_EQ(rig.Rubber(), "(100 -100) (150 -160) (250 -260)");
    EXPECT_EQ(rig.VerbsWith("Polyline").back(), "top Polyline [(100,100) (150,160) (250,260)]");
    EXPECT_EQ(rig.Held(), "(100 -100) (200 -100)");
}

TEST_F(EditAddTest, ADoubleClickEndsALineWhichIsActiveThen) {
    Layer("L", kLayLine, 10, 20);
    rig.Start(100, "L");
    rig.Click(100, 100);
    rig.Click(200, 100);
    rig.Heard();
    rig.ctrl->FinishAddTool();
    EXPECT_THAT(rig.Heard(), ElementsAre("end L 1 1 2 100"));
    EXPECT_EQ(rig.Pnts("L", 1), "(90 -120) (190 -120)");
    EXPECT_TRUE(rig.Active("L", 1));
    EXPECT_EQ(rig.Tag("L", 1), 0);
    EXPECT_EQ(rig.State(), "0/0");
    EXPECT_EQ(rig.Rubber(), "none");
}

TEST_F(EditAddTest, APolygonOfThreeClicksGetsItsFirstPointAgainAndTheEndSaysThree) {
    Layer("P", kLayPolygon);
    rig.Start(100, "P");
    rig.Click(100, 300);
    rig.Click(200, 300);
    rig.Click(200, 400);
    rig.ctrl->FinishAddTool();
    EXPECT_THAT(rig.Heard(), ElementsAre("start P 1 -1 0 100", "end P 1 1 3 100"));
    EXPECT_EQ(rig.Pnts("P", 1), "(100 -300) (200 -300) (200 -400) (100 -300)");
    EXPECT_TRUE(rig.Active("P", 1));
}

TEST_F(EditAddTest, APolygonClosedByHandIsLeftAsItIs) {
    Layer("P", kLayPolygon);
    rig.Start(100, "P");
    for (const Point at : {Point{100, 300}, {200, 300}, {200, 400}, {100, 300}}) rig.Click(at.x, at.y);
    rig.ctrl->FinishAddTool();
    EXPECT_EQ(rig.Pnts("P", 1), "(100 -300) (200 -300) (200 -400) (100 -300)");
}

TEST_F(EditAddTest, ARingInsideTheDrawingIsARingAndNothingIsClosed) {
    Layer("P", kLayPolygon);
    rig.Start(100, "P");
    for (const Point at : {Point{100, 300}, {200, 300}, {100, 300}, {150, 350}}) rig.Click(at.x, at.y);
    rig.ctrl->FinishAddTool();
    EXPECT_EQ(rig.Pnts("P", 1), "(100 -300) (200 -300) (100 -300) (150 -350)");
}

TEST_F(EditAddTest, APolygonOfOneClickIsItsOwnRingAndOneOfTwoIsClosed) {
    Layer("P", kLayPolygon);
    rig.Start(100, "P");
    rig.Click(100, 300);
    rig.ctrl->FinishAddTool();
    EXPECT_EQ(rig.Pnts("P", 1), "(100 -300)");
    rig.Start(100, "P");
    rig.Click(100, 300);
    rig.Click(200, 300);
    rig.ctrl->FinishAddTool();
    EXPECT_EQ(rig.Pnts("P", 2), "(100 -300) (200 -300) (100 -300)");
}

TEST_F(EditAddTest, ADoubleClickBeforeAnyClickMakesAnItemWithoutPoints) {
    for (const std::int32_t type : {kLayLine, kLayPolygon}) {
        EditRig fresh;
        fresh.AddLayer("L", type);
        fresh.Start(100, "L");
        fresh.ctrl->FinishAddTool();
        EXPECT_THAT(fresh.Heard(), ElementsAre("end L 1 1 0 100"));
        EXPECT_EQ(fresh.Pnts("L", 1), "");
    }
}

TEST_F(EditAddTest, ALineOrPolygonMakesAMissingBlock) {
    rig.ctrl->store.MakeLayer("L", kLayLine);
    rig.Start(100, "L");
    rig.Click(100, 100);
    rig.Click(200, 100);
    rig.ctrl->FinishAddTool();
    EXPECT_EQ(rig.Pnts("L", 1), "(100 -100) (200 -100)");
    EXPECT_THAT(rig.window.messages, IsEmpty());
}

// --- Circles and ellipses ---------------------------------------------------------------------------------------------------

TEST_F(EditAddTest, TheSecondClickOfACircleMakesItWithTheDistanceAsItsRadius) {
    Layer("C", kLayCircle, 10, 20);
    rig.Start(100, "C", 6);
    rig.Click(400, 300);
    EXPECT_EQ(rig.State(), "101/0");
    rig.Click(430, 340);
    EXPECT_THAT(rig.Heard(), ElementsAre("start C 1 -1 0 100", "end C 1 6 2 100"));
    EXPECT_EQ(rig.Pnts("C", 6), "(390 -320 50)");
    EXPECT_FALSE(rig.Active("C", 6)) << "a circle is not selected by its making";
    EXPECT_EQ(rig.Mode(), 0);
    EXPECT_EQ(rig.Rubber(), "none");
}

TEST_F(EditAddTest, TheSecondClickOfAnEllipseMakesItFromBothPoints) {
    Layer("E", kLayEllipse, 10, 20);
    rig.Start(100, "E");
    rig.Click(500, 100);
    rig.Click(600, 200);
    EXPECT_THAT(rig.Heard(), ElementsAre("start E 1 -1 0 100", "end E 1 1 2 100"));
    EXPECT_EQ(rig.Pnts("E", 1), "(490 -120) (590 -220)");
    EXPECT_FALSE(rig.Active("E", 1));
}

TEST_F(EditAddTest, ForACircleOrAnEllipseAMissingBlockIsNotMadeAndNothingIsWritten) {
    for (const std::int32_t type : {kLayCircle, kLayEllipse}) {
        EditRig fresh;
        fresh.ctrl->store.MakeLayer("C", type);
        fresh.Start(100, "C", 6);
        fresh.Click(400, 300);
        fresh.Click(430, 340);
        EXPECT_EQ(fresh.ctrl->store.BlockCnt(), 0);
        EXPECT_THAT(fresh.Heard(), ElementsAre("start C 1 -1 0 100", "end C 1 6 2 100"));
        EXPECT_EQ(fresh.Mode(), 0);
        EXPECT_THAT(fresh.window.messages, IsEmpty());
    }
}

TEST_F(EditAddTest, TheSearchForAFreeIdInAMissingBlockTellsTheOperatorAndGivesMinusOne) {
    rig.ctrl->store.MakeLayer("C", kLayCircle);
    rig.Start(100, "C");
    rig.Click(400, 300);
    rig.Click(430, 340);
    ASSERT_EQ(rig.window.messages.size(), 1u);
    EXPECT_EQ(rig.window.messages[0].text, "ERROR 1094 : DigDat Index Not Found !");
    EXPECT_THAT(rig.Heard(), ElementsAre("start C 1 -1 0 100", "end C 1 -1 2 100"));
}

TEST_F(EditAddTest, ADoubleClickAfterOneClickOfACircleMakesAnItemWithoutPointsThatIsNotActive) {
    Layer("C", kLayCircle);
    rig.Start(100, "C");
    rig.Click(400, 300);
    rig.ctrl->FinishAddTool();
    EXPECT_EQ(rig.Pnts("C", 1), "");
    EXPECT_FALSE(rig.Active("C", 1));
}

// --- Rotation and limits ----------------------------------------------------------------------------------------------------

TEST_F(EditAddTest, ClicksAreReadWithoutTheViewsRotation) {
    Layer("S", kLayPoint);
    rig.ctrl->SetRotate(90);
    rig.SetView(1000, -500);
    rig.Start(100, "S");
    rig.Click(10, 20);
    EXPECT_EQ(rig.Pnts("S", 1), "(1010 480)");
}

TEST_F(EditAddTest, AFiveThousandAndFirstClickIsNotTaken) {
    Layer("L", kLayLine);
    rig.Start(100, "L");
    for (std::int32_t i = 0; i < 5000; ++i) rig.Click(i % 700, 10);
    EXPECT_EQ(rig.Edit().EditCnt, 5000);
    EXPECT_EQ(rig.ctrl->store.OrgDats()[0].pntCnt, 5001) << "with the trailing one";
    rig.Click(5, 500);
    EXPECT_EQ(rig.Edit().EditCnt, 5000);
    EXPECT_EQ(rig.ctrl->store.OrgDats()[0].pntCnt, 5001);
    rig.Heard();
    rig.ctrl->FinishAddTool();
    EXPECT_THAT(rig.Heard(), ElementsAre("end L 1 1 5000 100"));
    EXPECT_EQ(rig.Find("L", 1)->pntCnt, 5000);
    EXPECT_EQ(rig.Find("L", 1)->pnts[4999].y, -10);
}

TEST_F(EditAddTest, APolygonOfFiveThousandClicksIsClosedInTheStore) {
    Layer("P", kLayPolygon);
    rig.Start(100, "P");
    for (std::int32_t i = 0; i < 5000; ++i) rig.Click(i, i % 2 == 0 ? 10 : 20);
    rig.ctrl->FinishAddTool();
    EXPECT_EQ(rig.Find("P", 1)->pntCnt, 5001);
}

TEST_F(EditAddTest, AClickWithoutMemoryIsNotTaken) {
    Layer("L", kLayLine);
    rig.Start(100, "L");
    ArrayFaults::FailNth(1);
    rig.Click(100, 100);
    ArrayFaults::Clear();
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Rubber(), "");
    EXPECT_THAT(rig.Heard(), IsEmpty());
    rig.Click(100, 100);
    EXPECT_EQ(rig.Edit().EditCnt, 1);
}

}  // namespace
}  // namespace orvane
