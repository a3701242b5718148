// The two run modes of the overlay figures: near points, clicks on figures and vertices, the drag of a vertex.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/control/input_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::uint32_t kShift = InputRig::kShift;
constexpr std::uint32_t kCtrl = InputRig::kCtrl;

class InputFiguresTest : public testing::Test {
protected:
    InputFiguresTest() { ctrl.runMode = kRunFigureClick; }
    InputRig rig;
    COrvane4Ctrl& ctrl = *rig.ctrl;
};

TEST_F(InputFiguresTest, APlainClickOnAVertexOfAnActiveFigureTellsThePointAndNoMouseDown) {
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}}, true);
    rig.Down({401, 300});
    EXPECT_THAT(rig.Events(), ElementsAre("OnOrgPointClick 1 1 401 300"));
    EXPECT_FALSE(rig.window.captured);
}

TEST_F(InputFiguresTest, APlainClickOnAnInactiveFigureTellsTheFigureAndNoMouseDown) {
    rig.AddFigure(kLayLine, {{100, 100}, {200, 100}});
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}});
    rig.Down({350, 300});
    EXPECT_THAT(rig.Events(), ElementsAre("OnOrgDataClick 2 350 300"));
}

TEST_F(InputFiguresTest, APlainClickBesideAllFiguresTellsMouseDownAlone) {
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}}, true);
    rig.Down({500, 500});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 500 500"));
}

TEST_F(InputFiguresTest, ModeFiftyDoesNotAnswerPlainClicks) {
    ctrl.runMode = kRunFigureNear;
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}}, true);
    rig.Down({400, 300});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 400 300"));
}

TEST_F(InputFiguresTest, AShiftClickTellsTheNearestPointOfAnyFigureInBothModes) {
    rig.AddFigure(kLayLine, {{100, 100}, {200, 100}}, true);
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}});
    for (const std::int16_t mode : {kRunFigureNear, kRunFigureClick}) {
        ctrl.runMode = mode;
        rig.Down({380, 310}, kShift);
        EXPECT_THAT(rig.Events(), ElementsAre("OnOrgNearPtClick 2 1 400 -300 380 310"));
        EXPECT_FALSE(rig.window.captured);
    }
}

TEST_F(InputFiguresTest, AShiftClickPassesTheDraggedPointOver) {
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}});
    ctrl.orgMoveID = 1;
    ctrl.orgMoveIndex = 1;
    ctrl.orgMoving = true;
    rig.Down({400, 300}, kShift);
    EXPECT_THAT(rig.Events(), ElementsAre("OnOrgNearPtClick 1 0 300 -300 400 300"));
}

TEST_F(InputFiguresTest, AShiftClickWithoutFiguresTellsMouseDown) {
    rig.Down({400, 300}, kShift);
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 1 400 300"));
}

TEST_F(InputFiguresTest, ACtrlShiftClickTellsTheNearestPointOfTheDataInBothModes) {
    rig.AddRow("A", 50);
    rig.AddItem("A", 7, {{300, -60}, {350, -60}});
    ctrl.RDMReDraw();
    for (const std::int16_t mode : {kRunFigureNear, kRunFigureClick}) {
        ctrl.runMode = mode;
        rig.Down({340, 70}, kShift | kCtrl);
        EXPECT_THAT(rig.Events(), ElementsAre("OnNearPtClick 7 1 1 350 -60 340 70"));
    }
}

TEST_F(InputFiguresTest, WithAllDataFartherThanTenThousandUnitsNoNearPointIsTold) {
    rig.AddLine("A", {{-20000, -50}, {10500, -50}});
    ctrl.RDMReDraw();
    rig.Down({400, 50}, kShift | kCtrl);
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 3 400 50"));
}

TEST_F(InputFiguresTest, ANearItemWithANegativeNumberTellsNothingAtAll) {
    rig.AddLine("A", {{100, -50}, {200, -50}});
    rig.Item("A", 0).datID = -5;
    ctrl.RDMReDraw();
    rig.Down({150, 50}, kShift | kCtrl);
    EXPECT_THAT(rig.Events(), IsEmpty());
    rig.Item("A", 0).datID = -1;
    rig.Down({150, 50}, kShift | kCtrl);
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 3 150 50"));
}

TEST_F(InputFiguresTest, EveryOtherFlagWordTellsMouseDownAlone) {
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}}, true);
    rig.AddRow("A", 50);
    for (const std::uint32_t keys : {kCtrl, kMkRButton, kShift | kMkRButton, std::uint32_t{16}}) {
        rig.Down({400, 300}, keys);
        EXPECT_THAT(rig.Events(), ElementsAre(StartsWith("MouseDown 1"))) << keys;
    }
}

TEST_F(InputFiguresTest, EveryClickEndsWithAnOverlayRepaintHitOrNot) {
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}}, true);
    for (const std::int16_t mode : {kRunFigureNear, kRunFigureClick}) {
        ctrl.runMode = mode;
        for (const Point at : {Point{400, 300}, Point{500, 500}}) {
            rig.Forget();
            rig.Down(at);
            const Lines verbs = rig.Verbs();
            EXPECT_THAT(verbs, Contains("top BitBlt 0 0 800 600 base 0 0 0xCC0020"));
            EXPECT_THAT(verbs, testing::Not(Contains(StartsWith("base PatBlt")))) << "the map is not composed";
        }
    }
}

TEST_F(InputFiguresTest, TheRepaintComesAfterMouseDownAndByTheModeOfThatMoment) {
    std::size_t drawn = 99;
    rig.log.onEvent = [&](std::string_view) { drawn = rig.verbs->Size(); };
    rig.Down({500, 500});
    EXPECT_EQ(drawn, 0u);
    EXPECT_GT(rig.verbs->Size(), 0u);
    rig.Forget();
    rig.log.onEvent = [&](std::string_view) { ctrl.runMode = kRunNormal; };
    rig.Down({500, 500});
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(InputFiguresTest, TheButtonUpOnlyTells) {
    rig.AddRow("A", 50);
    for (const std::int16_t mode : {kRunFigureNear, kRunFigureClick}) {
        ctrl.runMode = mode;
        rig.Up({150, 50});
        EXPECT_THAT(rig.Events(), ElementsAre("MouseUp 1 0 150 50"));
        EXPECT_FALSE(rig.Active("A"));
        EXPECT_THAT(rig.Verbs(), IsEmpty());
    }
}

// --- The drag of a vertex ----------------------------------------------------------------------------------------------------

TEST_F(InputFiguresTest, AMoveWritesTheDraggedPointAndRepaintsTheOverlayAfterTheEvent) {
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}});
    ctrl.orgMoveID = 1;
    ctrl.orgMoveIndex = 1;
    ctrl.orgMoving = true;
    rig.SetView(10, 20);
    for (const std::int16_t mode : {kRunFigureNear, kRunFigureClick}) {
        ctrl.runMode = mode;
        for (const std::uint32_t flags : {0u, 1u, 4u}) {
            rig.Forget();
            ctrl.store.EditOrgPnt(1, 1, 0, 0);
            ctrl.OnMouseMove(flags, {500, 100});
            EXPECT_EQ(ctrl.store.FindOrgDat(1)->pnts[1].x, 510);
            EXPECT_EQ(ctrl.store.FindOrgDat(1)->pnts[1].y, -120);
            EXPECT_THAT(rig.Verbs(), Contains("top BitBlt 0 0 800 600 base 0 0 0xCC0020"));
        }
    }
    EXPECT_THAT(rig.Events(), testing::SizeIs(6));
}

TEST_F(InputFiguresTest, ADraggedFirstPointOfAPolygonTakesItsClosingPointAlong) {
    rig.AddFigure(kLayPolygon, {{300, 300}, {400, 300}, {400, 400}, {300, 300}});
    ctrl.orgMoveID = 1;
    ctrl.orgMoveIndex = 0;
    ctrl.orgMoving = true;
    rig.DragTo({310, 290});
    EXPECT_EQ(ctrl.store.FindOrgDat(1)->pnts[3].x, 310);
    EXPECT_EQ(ctrl.store.FindOrgDat(1)->pnts[3].y, -290);
}

TEST_F(InputFiguresTest, WithoutTheDragFlagOrInAnotherModeNoPointIsWritten) {
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}});
    ctrl.orgMoveID = 1;
    ctrl.orgMoveIndex = 1;
    rig.DragTo({500, 100});
    ctrl.orgMoving = true;
    ctrl.runMode = kRunNormal;
    rig.Hover({500, 101});
    EXPECT_EQ(ctrl.store.FindOrgDat(1)->pnts[1].x, 400);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(InputFiguresTest, ADragOfAPointThatIsNotThereOnlyRepaints) {
    ctrl.orgMoveID = 9;
    ctrl.orgMoveIndex = -4;
    ctrl.orgMoving = true;
    rig.DragTo({500, 100});
    EXPECT_THAT(rig.Verbs(), testing::Not(IsEmpty()));
}

TEST_F(InputFiguresTest, ARepaintOfTheOverlayRightAfterAnInitComposesTheMap) {
    rig.AddRow("A", 50);
    ctrl.RDMInit();
    ctrl.mapDraw = false;
    rig.Paint();
    ASSERT_EQ(rig.State(), 1);
    ctrl.mapDraw = true;
    ctrl.orgMoving = true;
    rig.Forget();
    rig.DragTo({500, 100});
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_EQ(rig.State(), 2);
}

}  // namespace
}  // namespace orvane
