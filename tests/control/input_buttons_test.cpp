// The mouse buttons: the order of the control's own work and the events, run modes, the double click, the capture.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/control/input_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class InputButtonsTest : public testing::Test {
protected:
    InputRig rig;
    COrvane4Ctrl& ctrl = *rig.ctrl;
};

// --- Stock events and the capture --------------------------------------------------------------------------------------------

TEST_F(InputButtonsTest, AClickTellsButtonKeysAndPlaceAndHoldsTheMouseBetween) {
    rig.Down({10, 20}, InputRig::kShift);
    EXPECT_TRUE(rig.window.captured);
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 1 10 20"));
    rig.Up({30, 40}, InputRig::kCtrl);
    EXPECT_FALSE(rig.window.captured);
    EXPECT_THAT(rig.Events(), ElementsAre("MouseUp 1 2 30 40"));
    rig.RightDown({-5, -6});
    EXPECT_TRUE(rig.window.captured);
    ctrl.OnRButtonUp(kMkShift | kMkControl, {7, 8});
    EXPECT_FALSE(rig.window.captured);
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 2 0 -5 -6", "MouseUp 2 3 7 8"));
}

TEST_F(InputButtonsTest, TheMouseIsHeldUntilTheLastButtonIsUp) {
    rig.Down({10, 20});
    rig.RightDown({10, 20});
    ctrl.OnRButtonUp(kMkLButton, {10, 20});
    EXPECT_TRUE(rig.window.captured);
    rig.RightDown({10, 20});
    ctrl.OnLButtonUp(kMkRButton, {10, 20});
    EXPECT_TRUE(rig.window.captured);
    rig.RightUp({10, 20});
    EXPECT_FALSE(rig.window.captured);
}

TEST_F(InputButtonsTest, TheMouseIsHeldAlreadyWhenMouseDownIsTold) {
    bool held = false;
    rig.log.onEvent = [&](std::string_view event) { held = event == "MouseDown" && rig.window.captured; };
    rig.Down({10, 20});
    EXPECT_TRUE(held);
}

// --- Before the first paint --------------------------------------------------------------------------------------------------

TEST(InputBeforeThePaint, TheLeftButtonAndMovesDoNothingAtAllAndTheRightButtonWorks) {
    for (const bool initialised : {false, true}) {
        ControlRig rig;
        InputLog log;
        rig.ctrl->SetEvents(&log);
        if (initialised) rig.ctrl->RDMInit();
        rig.ctrl->OnLButtonDown(1, {10, 20});
        rig.ctrl->OnLButtonDblClk(1, {10, 20});
        rig.ctrl->OnLButtonUp(0, {10, 20});
        rig.ctrl->OnMouseMove(0, {10, 20});
        EXPECT_THAT(log.Take(), IsEmpty());
        EXPECT_FALSE(rig.window.captured);
        EXPECT_THAT(rig.window.Timers(), IsEmpty());
        EXPECT_EQ(rig.ctrl->input.rectState, RectState::None);
        EXPECT_FALSE(rig.ctrl->input.dblClkSeen);

        rig.ctrl->scrollMode = 10;
        rig.ctrl->OnRButtonDown(2, {10, 20});
        EXPECT_TRUE(rig.window.Timers().contains(1));
        rig.ctrl->OnTimer(1);
        rig.ctrl->OnRButtonUp(0, {30, 40});
        EXPECT_THAT(rig.window.Timers(), IsEmpty());
        EXPECT_THAT(log.Take(), ElementsAre("MouseDown 2 0 10 20", "MouseUp 2 0 30 40"));
        EXPECT_THAT(rig.Verbs(), IsEmpty());
    }
}

// --- Right button ------------------------------------------------------------------------------------------------------------

TEST_F(InputButtonsTest, WithScrollModeOffTheRightButtonOnlyTells) {
    rig.RightDown({10, 20});
    EXPECT_FALSE(ctrl.scrollActive);
    EXPECT_THAT(rig.window.Timers(), IsEmpty());
    rig.RightUp({10, 20});
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 2 0 10 20", "MouseUp 2 0 10 20"));
}

TEST_F(InputButtonsTest, WithScrollModeOnTheRightButtonScrollsFromDownToUp) {
    ctrl.scrollMode = 10;
    rig.RightDown({10, 20});
    EXPECT_TRUE(ctrl.scrollActive);
    EXPECT_EQ(ctrl.lastMouseX, 10);
    EXPECT_EQ(ctrl.lastMouseY, 20);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Scroll);
    EXPECT_EQ(rig.Period_ms(1), 30);
    rig.RightUp({10, 20});
    EXPECT_FALSE(ctrl.scrollActive);
    EXPECT_EQ(rig.Period_ms(1), -1);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Arrow);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 2 0 10 20", "MouseUp 2 0 10 20"));
}

TEST_F(InputButtonsTest, ThePictureStandsBeforeTheRightMouseUpIsTold) {
    ctrl.scrollMode = 10;
    rig.RightDown({10, 20});
    Lines drawn;
    rig.log.onEvent = [&](std::string_view) { drawn = rig.Verbs(); };
    rig.RightUp({10, 20});
    EXPECT_EQ(drawn, ComposedFrame());
}

TEST_F(InputButtonsTest, AnyOtherScrollModeIsOff) {
    for (const std::int16_t mode : std::vector<std::int16_t>{1, 9, 11, -10}) {
        ctrl.scrollMode = mode;
        rig.RightDown({10, 20});
        EXPECT_FALSE(ctrl.scrollActive) << mode;
    }
}

TEST_F(InputButtonsTest, TheRightButtonDuringAPanLeavesThePanAlone) {
    ctrl.scrollMode = 10;
    ctrl.runMode = kRunPan;
    rig.Down({100, 100});
    rig.RightDown({10, 20});
    EXPECT_EQ(ctrl.lastMouseX, 100);
    EXPECT_FALSE(rig.Ticks(1));
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Pan);
}

TEST_F(InputButtonsTest, WithScrollModeOnARightDragOutOfTheWindowStopsAtTheNextTickAndTheLaterButtonUpStillRepaints) {
    ctrl.scrollMode = 10;
    rig.window.cursorPos = {500, 350};
    rig.RightDown({400, 300});
    rig.window.cursorPos = {99, 350};
    rig.Tick(1);
    EXPECT_FALSE(ctrl.scrollActive);
    EXPECT_FALSE(rig.Ticks(1));
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Arrow);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    rig.RightUp({-1, 300});
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(InputButtonsTest, AScrollTickMovesTowardThePlaceOfTheLastRightMove) {
    ctrl.scrollMode = 10;
    rig.window.cursorPos = {600, 350};
    rig.RightDown({400, 300});
    ctrl.OnMouseMove(kMkRButton, {500, 300});
    rig.Tick(1);
    EXPECT_EQ(ctrl.viewX, 10);  // (2 * 500 - 800) / 20
    EXPECT_EQ(ctrl.viewY, 0);
}

// --- Pan ---------------------------------------------------------------------------------------------------------------------

TEST_F(InputButtonsTest, InPanModeTheLeftButtonPansFromDownToUp) {
    ctrl.runMode = kRunPan;
    rig.window.cursorPos = {500, 350};
    rig.Down({400, 300});
    EXPECT_TRUE(ctrl.scrollActive);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Pan);
    EXPECT_EQ(rig.Period_ms(11), 100);
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 400 300"));
    rig.window.cursorPos = {470, 340};
    rig.Tick(11);
    EXPECT_EQ(ctrl.viewX, 30);
    EXPECT_EQ(ctrl.viewY, 10);
    rig.Forget();
    rig.Up({370, 290});
    EXPECT_FALSE(ctrl.scrollActive);
    EXPECT_FALSE(rig.Ticks(11));
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Arrow);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_THAT(rig.Events(), ElementsAre("MouseUp 1 0 370 290"));
    EXPECT_EQ(ctrl.runMode, kRunPan);
}

TEST_F(InputButtonsTest, APanDraggedOutOfTheWindowGoesOnWhenTheCursorComesBackWithMouseMovesMeanwhile) {
    ctrl.runMode = kRunPan;
    rig.window.cursorPos = {500, 350};
    rig.Down({400, 300});
    rig.DragTo({410, 300});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 400 300"));
    rig.window.cursorPos = {99, 350};
    rig.Tick(11);
    EXPECT_FALSE(ctrl.scrollActive);
    EXPECT_TRUE(rig.Ticks(11));
    rig.DragTo({-1, 300});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseMove 1 0 -1 300"));
    rig.window.cursorPos = {480, 350};
    rig.Tick(11);
    EXPECT_EQ(ctrl.viewX, 20);
    rig.Up({380, 300});
    EXPECT_FALSE(rig.Ticks(11));
}

// --- Clicks in the normal mode with selection off ----------------------------------------------------------------------------

TEST_F(InputButtonsTest, WithSelectionOffAClickFiresOnDataClickWithZerosTwiceAtButtonDownAndAtButtonUp) {
    ctrl.dataSelectMode = 0;
    rig.Down({10, 20});
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataClick 0 '' 0 10 20", "MouseDown 1 0 10 20"));
    rig.Up({10, 20});
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataClick 0 '' 0 10 20", "MouseUp 1 0 10 20"));
    EXPECT_THAT(rig.Verbs(), IsEmpty()) << "nothing is selected, so nothing is drawn anew";
    EXPECT_EQ(rig.Rubber(), RectState::None);
}

TEST_F(InputButtonsTest, WithSelectionOffAndAZoomRectangleWaitingOnlyTheButtonUpFires) {
    ctrl.dataSelectMode = 0;
    ctrl.rectZoomMode = 10;
    rig.Click({10, 20});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 10 20", "OnDataClick 0 '' 0 10 20", "MouseUp 1 0 10 20"));
    EXPECT_EQ(ctrl.rectZoomMode, 10);
}

// --- Run modes without a meaning ---------------------------------------------------------------------------------------------

TEST_F(InputButtonsTest, AnUnknownRunModeIsLikeTheNormalOneAtButtonDownAndDoesNotSelectAtButtonUp) {
    rig.AddRow("A", 50);
    for (const std::int16_t mode : std::vector<std::int16_t>{100, 1, 52, 102, 999, -1}) {
        ctrl.runMode = mode;
        ctrl.input.rectState = RectState::None;
        rig.Down({150, 50});
        EXPECT_EQ(rig.Rubber(), RectState::Down) << mode;
        rig.Up({150, 50});
        EXPECT_EQ(rig.Rubber(), RectState::Down) << "only the normal mode ends it: " << mode;
        EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 150 50", "MouseUp 1 0 150 50"));
        EXPECT_FALSE(rig.Active("A"));
        EXPECT_EQ(ctrl.runMode, mode);
        EXPECT_THAT(rig.Verbs(), IsEmpty());
        ctrl.dataSelectMode = 0;
        rig.Click({150, 50});
        EXPECT_THAT(rig.Events(), ElementsAre("OnDataClick 0 '' 0 150 50", "MouseDown 1 0 150 50", "MouseUp 1 0 150 50"));
        ctrl.dataSelectMode = 1;
    }
}

TEST_F(InputButtonsTest, ASecondButtonDownKeepsTheFirstCorner) {
    rig.Down({10, 20});
    rig.Down({30, 40});
    EXPECT_EQ(ctrl.input.rectStart, (Point{10, 20}));
}

// --- Run modes of the tools --------------------------------------------------------------------------------------------------

TEST_F(InputButtonsTest, InTheDeleteModeAClickOnNothingChangesNothingAndFiresOnlyMouseDown) {
    rig.AddRow("A", 50);
    ctrl.runMode = kRunDeleteDat;
    rig.Down({400, 400});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 400 400"));
    EXPECT_EQ(ctrl.runMode, kRunDeleteDat);
    EXPECT_EQ(rig.Block("A").dats.size(), 1u);
    EXPECT_EQ(rig.Rubber(), RectState::None);
}

TEST_F(InputButtonsTest, AToolsActionComesBeforeMouseDown) {
    rig.AddRow("A", 50);
    ctrl.store.SetLayEditFlg("A", true);
    ctrl.runMode = kRunDeleteDat;
    rig.Down({150, 50});
    EXPECT_THAT(rig.Events(),
                ElementsAre(testing::StartsWith("OnEditorStart"), testing::StartsWith("OnEditorEnd"), "MouseDown 1 0 150 50"));
    EXPECT_EQ(ctrl.runMode, kRunNormal);
}

// --- Double click ------------------------------------------------------------------------------------------------------------

TEST_F(InputButtonsTest, ADoubleClickTellsTheFirstActiveItemAfterTheClick) {
    rig.AddRow("A", 50);
    rig.Click({150, 50});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 150 50", "OnDataClick 1 'A' 1 150 50", "MouseUp 1 0 150 50"));
    ctrl.OnLButtonDblClk(1, {151, 51});
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataDblClick 1 'A' 1 151 51"));
}

TEST_F(InputButtonsTest, ADoubleClickWithNothingActiveTellsNothing) {
    ctrl.OnLButtonDblClk(1, {10, 20});
    EXPECT_THAT(rig.Events(), IsEmpty());
    EXPECT_TRUE(ctrl.input.dblClkSeen);
}

TEST_F(InputButtonsTest, TheButtonUpAfterADoubleClickFiresOnlyMouseUp) {
    rig.AddRow("A", 50);
    ctrl.dataSelectMode = 0;
    ctrl.OnLButtonDblClk(1, {150, 50});
    rig.Up({150, 50});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseUp 1 0 150 50"));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_FALSE(ctrl.input.dblClkSeen);
    rig.Up({150, 50});
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataClick 0 '' 0 150 50", "MouseUp 1 0 150 50"));
}

TEST_F(InputButtonsTest, AShiftDoubleClickIsIgnoredInEveryMode) {
    rig.AddRow("A", 50);
    ctrl.store.SetDigDatInfoEx("A", 1, 1, 0, true);
    for (const std::int16_t mode : {kRunNormal, kRunEditPntAdd}) {
        ctrl.runMode = mode;
        ctrl.OnLButtonDblClk(kMkLButton | kMkShift, {150, 50});
        ctrl.OnLButtonDblClk(kMkLButton | kMkShift | kMkControl, {150, 50});
        EXPECT_THAT(rig.Events(), IsEmpty());
        EXPECT_FALSE(ctrl.input.dblClkSeen);
        EXPECT_EQ(ctrl.runMode, mode);
    }
}

TEST_F(InputButtonsTest, ACtrlDoubleClickIsIgnoredUnlessPointsAreAdded) {
    rig.AddRow("A", 50);
    ctrl.store.SetDigDatInfoEx("A", 1, 1, 0, true);
    ctrl.OnLButtonDblClk(kMkLButton | kMkControl, {150, 50});
    EXPECT_THAT(rig.Events(), IsEmpty());
    EXPECT_FALSE(ctrl.input.dblClkSeen);
    ctrl.runMode = kRunEditPntAdd;
    ctrl.OnLButtonDblClk(kMkLButton | kMkControl, {150, 50});
    EXPECT_TRUE(ctrl.input.dblClkSeen);
    EXPECT_EQ(ctrl.runMode, kRunNormal) << "the tool has ended";
}

TEST_F(InputButtonsTest, InDebugModeADoubleClickShowsTheKeyInAMessageInstead) {
    rig.AddRow("A", 50);
    ctrl.store.SetDigDatInfoEx("A", 1, 1, 0, true);
    ctrl.debugMode = true;
    ctrl.OnLButtonDblClk(1, {150, 50});
    ASSERT_EQ(rig.window.messages.size(), 1u);
    EXPECT_EQ(rig.window.messages[0].text, "\n ID[1]--LayCode[A] MeshNo[1]");
    EXPECT_THAT(rig.Events(), IsEmpty());
    EXPECT_TRUE(ctrl.input.dblClkSeen);
}

TEST_F(InputButtonsTest, ADoubleClickInPanModeStartsNoPan) {
    rig.AddRow("A", 50);
    ctrl.store.SetDigDatInfoEx("A", 1, 1, 0, true);
    ctrl.runMode = kRunPan;
    ctrl.OnLButtonDblClk(1, {150, 50});
    EXPECT_FALSE(rig.Ticks(11));
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataDblClick 1 'A' 1 150 50"));
    rig.Up({150, 50});
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

// --- What init resets --------------------------------------------------------------------------------------------------------

TEST_F(InputButtonsTest, InitForgetsTheDragTheMoveAndTheDoubleClickAndKeepsTheModes) {
    ctrl.runMode = 77;
    ctrl.scrollMode = 10;
    ctrl.dataSelectMode = 0;
    ctrl.input = {RectState::Dragging, {1, 2}, {3, 4}, {5, 6}, 7, true};
    ctrl.scrollActive = true;
    ctrl.rectZoomMode = 10;
    ctrl.RDMInit();
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_EQ(ctrl.input.lastMovePos, Point{});
    EXPECT_EQ(ctrl.input.lastMoveTime_s, 0);
    EXPECT_FALSE(ctrl.input.dblClkSeen);
    EXPECT_FALSE(ctrl.scrollActive);
    EXPECT_EQ(ctrl.rectZoomMode, 0);
    EXPECT_EQ(ctrl.runMode, 77);
    EXPECT_EQ(ctrl.scrollMode, 10);
    EXPECT_EQ(ctrl.dataSelectMode, 0);
}

}  // namespace
}  // namespace orvane
