// The edit tools as the operator and the host meet them: through window messages and through the members of the surface.
#include "tests/control/automation_rig.h"
#include "tests/control/edit_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EditInputTest : public testing::Test {
protected:
    EditInputTest() {
        rig.AddLayer("A", kLayLine);
        rig.Add("A", 1, {{100, -100, 7}, {200, -100, 8}, {300, -200, 9}});
        rig.AddLayer("P", kLayPolygon);
        rig.Show();
    }
    void Press(std::int32_t x, std::int32_t y) {
        rig.ctrl->OnLButtonDown(kMkLButton, {x, y});
        rig.ctrl->OnLButtonUp(0, {x, y});
    }
    /// Two presses at one place; the second arrives as the double click.
    void DoublePress(std::int32_t x, std::int32_t y, std::uint32_t flags = kMkLButton) {
        Press(x, y);
        rig.ctrl->OnLButtonDblClk(flags, {x, y});
        rig.ctrl->OnLButtonUp(0, {x, y});
    }
    EditRig rig;
};

TEST_F(EditInputTest, APolygonIsDrawnWithClicksAndADoubleClickWhoseSecondPressAddsNoPoint) {
    rig.Start(100, "P");
    Press(100, 300);
    Press(200, 300);
    DoublePress(200, 400);
    EXPECT_THAT(rig.Heard(), ElementsAre("start P 1 -1 0 100", "end P 1 1 3 100"));
    EXPECT_EQ(rig.Pnts("P", 1), "(100 -300) (200 -300) (200 -400) (100 -300)");
    EXPECT_TRUE(rig.Active("P", 1));
    EXPECT_EQ(rig.Mode(), 0);
}

TEST_F(EditInputTest, AnInsertedPointIsKeptByADoubleClickWithCtrlHeld) {
    rig.Start(210);
    Press(160, 100);
    rig.ctrl->OnMouseMove(0, {160, 95});
    Press(165, 90);
    rig.ctrl->OnMouseMove(0, {165, 90});
    rig.ctrl->OnLButtonDblClk(kMkLButton | kMkControl, {165, 90});
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 1 3 200", "end A 1 1 4 210"));
    EXPECT_EQ(rig.Pnts("A", 1), "(100 -100) (165 -90) (200 -100) (300 -200)");
}

TEST_F(EditInputTest, AVertexIsMovedWithTwoClicksAndAThirdOffTheFigure) {
    rig.Start(200);
    Press(160, 100);
    Press(200, 100);
    rig.ctrl->OnMouseMove(0, {210, 150});
    EXPECT_EQ(rig.Rubber(), "(100 -100) (210 -150) (300 -200)");
    Press(210, 150);
    Press(20, 500);
    EXPECT_EQ(rig.Pnts("A", 1), "(100 -100) (210 -150) (300 -200)");
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 1 3 200", "end A 1 1 3 200"));
}

TEST_F(EditInputTest, AnItemIsCarriedWithTheButtonUp) {
    rig.Start(250);
    Press(160, 100);
    rig.ctrl->OnMouseMove(0, {170, 110});
    EXPECT_EQ(rig.Rubber(), "(110 -110) (210 -110) (310 -210)");
    Press(170, 110);
    EXPECT_EQ(rig.Pnts("A", 1), "(110 -110) (210 -110) (310 -210)");
}

TEST_F(EditInputTest, TheDeleteKeyTakesThePointAndRepaintsInModeTwo) {
    rig.Start(200);
    Press(160, 100);
    Press(200, 100);
    rig.Forget();
    rig.ctrl->OnKeyDown(kVkDelete);
    EXPECT_EQ(rig.Held(), "(100 -100) (300 -200)");
    EXPECT_THAT(rig.Frames(), ElementsAre("figures"));
}

TEST_F(EditInputTest, ACursorRestInAToolModeShowsNoHint) {
    for (const std::int32_t tool : {100, 200, 210, 220, 250, 260, 300}) {
        rig.Start(tool, tool == 100 ? "A" : "");
        rig.ctrl->OnMouseMove(0, {150, 100});
        EXPECT_FALSE(rig.window.Timers().contains(kHintTimer)) << tool;
        rig.ctrl->CancelOrgEdit();
    }
    rig.ctrl->OnMouseMove(0, {151, 100});
    EXPECT_TRUE(rig.window.Timers().contains(kHintTimer));
}

TEST_F(EditInputTest, WhileTheViewScrollsTheToolsDoNotFollowTheCursor) {
    rig.Start(250);
    Press(160, 100);
    rig.ctrl->scrollActive = true;
    rig.ctrl->OnMouseMove(0, {170, 110});
    EXPECT_EQ(rig.Rubber(), "(100 -100) (200 -100) (300 -200)");
}

TEST(EditSurface, BothTwinsStartAToolAndRefuseAlike) {
    for (const char* name : {"DigDatEditor", "OrvDatEditor"}) {
        AutomationRig rig;
        rig.Start();
        rig.ctrl->store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0);
        EXPECT_EQ(rig.Run(name, "none", 1, 0, 100).Long(), -1);
        EXPECT_EQ(rig.ctrl->runMode, 0);
        EXPECT_EQ(rig.Run(name, "A", 1, 0, 100).Long(), 0);
        EXPECT_EQ(rig.ctrl->runMode, 101);
        EXPECT_TRUE(rig.Run("OrvCancelOrgEdit").Ok());
        EXPECT_EQ(rig.ctrl->runMode, 0);
    }
}

// The copy inside a block as a host sees it: what it brings along and what starts anew.
TEST(EditSurface, ACopyByTheToolReadsBackWithItsTextButNeitherFontNorSizeNorSelection) {
    AutomationRig rig;
    rig.Start();
    COrvane4Ctrl& ctrl = *rig.ctrl;
    ctrl.store.view.Zoom = ctrl.dotPerM;
    ctrl.store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0);
    ctrl.store.SetLayEditFlg("A", true);
    rig.Run("AddDigDat", "A", 1, 4, 0);
    rig.Run("AddDigDatPnt", "A", 1, 4, 100.0, -100.0, 5.0);
    rig.Run("AddDigDatPnt", "A", 1, 4, 200.0, -100.0, 6.0);
    rig.Run("SetDigDatString", "A", 1, 4, 100.0, -100.0, "name");
    TextLook look;
    look.fntname = "Face";
    look.size = 33;
    look.style = 1;
    ctrl.store.SetDigDatStrStyle("A", 1, 4, look);
    ctrl.RDMReDraw();
    EXPECT_EQ(rig.Run("OrvDatEditor", "", 0, 0, 260).Long(), 0);
    ctrl.OnLButtonDown(kMkLButton, {150, 100});
    ctrl.OnLButtonDown(kMkLButton, {160, 120});
    const Ran info = rig.Run("GetDigDatInfoEx", "A", 1, 5);
    ASSERT_TRUE(info.True());
    const DigDat* copy = ctrl.store.FindDat("A", 1, 5);
    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->pntCnt, 2);
    EXPECT_EQ(copy->pnts[0].x, 110);
    EXPECT_EQ(copy->pnts[0].y, -120);
    EXPECT_EQ(copy->pnts[1].x, 210);
    EXPECT_EQ(copy->active, 0);
    ASSERT_NE(copy->str, nullptr);
    EXPECT_EQ(copy->str->text, "name");
    EXPECT_EQ(copy->str->x, 100) << "the text stays where the original's is";
    EXPECT_EQ(copy->str->style, 1);
    EXPECT_EQ(copy->str->size, 10);
    EXPECT_EQ(copy->str->fntname, "");
    EXPECT_EQ(ctrl.store.FindDat("A", 1, 4)->active, 1);
}

}  // namespace
}  // namespace orvane
