// Mouse moves by their flag word: the MouseMove event, the rubber rectangle, the hint's timer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/control/input_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class InputMoveTest : public testing::Test {
protected:
    InputRig rig;
    COrvane4Ctrl& ctrl = *rig.ctrl;
};

// --- The event ---------------------------------------------------------------------------------------------------------------

TEST_F(InputMoveTest, AMoveTellsButtonOneForTheLeftButtonAloneAndNeverTellsKeys) {
    ctrl.dataSelectMode = 0;  // so that nothing is tracked
    rig.Hover({10, 20});
    rig.DragTo({11, 21});
    ctrl.OnMouseMove(kMkLButton | kMkShift, {12, 22});
    ctrl.OnMouseMove(kMkShift | kMkControl, {13, 23});
    ctrl.OnMouseMove(kMkLButton | kMkRButton, {14, 24});
    EXPECT_THAT(rig.Events(), ElementsAre("MouseMove 0 0 10 20", "MouseMove 1 0 11 21", "MouseMove 0 0 12 22",
                                          "MouseMove 0 0 13 23", "MouseMove 0 0 14 24"));
}

TEST_F(InputMoveTest, NoMouseMoveFiresWhileSomethingScrolls) {
    ctrl.scrollActive = true;
    rig.Hover({10, 20});
    EXPECT_THAT(rig.Events(), IsEmpty());
    EXPECT_EQ(ctrl.input.lastMovePos, (Point{10, 20}));
    EXPECT_TRUE(rig.Ticks(2)) << "the hint is armed all the same";
}

TEST_F(InputMoveTest, NoMouseMoveFiresForRightButtonMovesWhichOnlySteerTheScroll) {
    rig.Hover({10, 20});
    rig.Events();
    ctrl.OnMouseMove(kMkRButton, {30, 40});
    EXPECT_THAT(rig.Events(), IsEmpty());
    EXPECT_EQ(ctrl.lastMouseX, 30);
    EXPECT_EQ(ctrl.lastMouseY, 40);
    EXPECT_FALSE(rig.Ticks(2));
    EXPECT_EQ(ctrl.input.lastMovePos, (Point{10, 20}));
    rig.Hover({10, 20});
    ctrl.OnMouseMove(kMkRButton, {10, 20});
    EXPECT_FALSE(rig.Ticks(2)) << "at the same place too";
}

TEST_F(InputMoveTest, NoMouseMoveFiresWhileARubberRectangleIsTracked) {
    rig.Hover({10, 20});
    rig.Down({10, 20});
    rig.Events();
    rig.DragTo({50, 60});
    rig.DragTo({70, 80});
    EXPECT_THAT(rig.Events(), IsEmpty());
    EXPECT_EQ(ctrl.input.lastMovePos, (Point{10, 20}));
}

TEST_F(InputMoveTest, ALeftMoveWithoutAButtonDownBeforeItIsTrackedToNothing) {
    rig.DragTo({50, 60});
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_FALSE(rig.Ticks(3));
    EXPECT_THAT(rig.Events(), IsEmpty());
}

// --- The rubber rectangle's states -------------------------------------------------------------------------------------------

TEST_F(InputMoveTest, TheFirstLeftMoveStartsTheRectangleAndItsTimer) {
    rig.Down({10, 20});
    EXPECT_EQ(rig.Rubber(), RectState::Down);
    EXPECT_EQ(ctrl.input.rectStart, (Point{10, 20}));
    EXPECT_FALSE(rig.Ticks(3));
    rig.DragTo({50, 60});
    EXPECT_EQ(rig.Rubber(), RectState::Dragging);
    EXPECT_EQ(ctrl.input.rectEnd, (Point{50, 60}));
    EXPECT_EQ(rig.Period_ms(3), 100);
}

TEST_F(InputMoveTest, LaterMovesOnlyMoveTheCornerAndDoNotPutTheTickOff) {
    rig.Down({10, 20});
    rig.DragTo({50, 60});
    const double due_s = rig.window.Timers().at(3).due_s;
    rig.window.clock_s += 0.05;
    rig.DragTo({70, 5});
    EXPECT_EQ(ctrl.input.rectEnd, (Point{70, 5}));
    EXPECT_EQ(rig.window.Timers().at(3).due_s, due_s);
}

TEST_F(InputMoveTest, ARightButtonDownDropsTheRectangleInAnyState) {
    rig.Down({10, 20});
    rig.RightDown({10, 20});
    EXPECT_EQ(rig.Rubber(), RectState::None);
    rig.Down({10, 20});
    rig.DragTo({50, 60});
    rig.RightDown({50, 60});
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_TRUE(rig.Ticks(3));
}

TEST_F(InputMoveTest, ADragOnWhichShiftIsPressedDropsTheRectangleAndLeavesItsTimerRunningWithTheLastOne) {
    rig.Down({10, 20});
    rig.DragTo({50, 60});
    ctrl.OnMouseMove(kMkLButton | kMkShift, {70, 80});
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_TRUE(rig.Ticks(3));
    rig.Tick(3);
    EXPECT_EQ(rig.VerbsWith("Polyline"), Lines{"window Polyline [(10,20) (10,60) (50,60) (50,20) (10,20)]"});
    rig.Up({70, 80}, kMkShift);
    EXPECT_TRUE(rig.Ticks(3)) << "this button up ends no rectangle";
    rig.Drag({100, 100}, {200, 200});
    EXPECT_FALSE(rig.Ticks(3)) << "the next one that is dragged to its end does";
}

TEST_F(InputMoveTest, AMoveWithAnotherFlagWordDropsTheRectangleInTheNormalModeOnly) {
    rig.Down({10, 20});
    rig.Hover({11, 21});
    EXPECT_EQ(rig.Rubber(), RectState::None);
    ctrl.runMode = 100;
    rig.Down({10, 20});
    rig.Hover({12, 22});
    EXPECT_EQ(rig.Rubber(), RectState::Down);
}

TEST_F(InputMoveTest, ARectangleIsTrackedWhileItSelectsOrZooms) {
    struct Case {
        std::int16_t runMode;
        std::uint8_t selects;
        std::int32_t zoomMode;
        bool tracked;
    };
    const Case cases[] = {{kRunNormal, 1, 0, true},    {kRunNormal, 0, 0, false},       {kRunNormal, 0, 10, true},
                          {kRunNormal, 1, -1, true},   {kRunNormal, 0, -1, false},      {100, 1, 0, false},
                          {100, 1, 20, true},          {kRunPan, 1, 10, false},         {kRunFigureNear, 1, 10, false},
                          {100, 1, -1, false},         {kRunFigureClick, 1, 10, false}, {kRunEditPntMove, 1, 10, true},
                          {kRunAddCollect, 0, 1, true}};
    for (const Case& c : cases) {
        ctrl.runMode = c.runMode;
        ctrl.dataSelectMode = c.selects;
        ctrl.rectZoomMode = c.zoomMode;
        ctrl.input.rectState = RectState::Down;
        rig.DragTo({50, 60});
        EXPECT_EQ(rig.Rubber() == RectState::Dragging, c.tracked) << c.runMode << ' ' << c.zoomMode;
        EXPECT_EQ(rig.Events().empty(), c.tracked) << c.runMode << ' ' << c.zoomMode;
    }
}

// --- The hint's timer --------------------------------------------------------------------------------------------------------

TEST_F(InputMoveTest, AMoveInTheNormalModeArmsTheHint) {
    for (const std::uint32_t flags : {0u, 4u, 8u, 5u, 3u}) {
        rig.window.StopTimer(2);
        rig.window.clock_s = 12.75;
        ctrl.OnMouseMove(flags, {10, 20});
        EXPECT_EQ(rig.Period_ms(2), 10) << flags;
        EXPECT_EQ(ctrl.input.lastMoveTime_s, 12) << flags;
    }
}

TEST_F(InputMoveTest, NoOtherModeArmsTheHintAndAMoveToAnotherPlaceStopsIt) {
    for (const std::int16_t mode : {kRunPan, kRunFigureNear, kRunFigureClick, std::int16_t{100}, kRunEditPntMove, kRunMoveDat}) {
        ctrl.runMode = kRunNormal;
        rig.Hover({10, 20});
        ASSERT_TRUE(rig.Ticks(2));
        ctrl.runMode = mode;
        rig.Hover({10, 20});
        EXPECT_TRUE(rig.Ticks(2)) << "a move to the same place lets it run: " << mode;
        rig.Hover({10, 21});
        EXPECT_FALSE(rig.Ticks(2)) << mode;
    }
}

TEST_F(InputMoveTest, ALeftMoveToAnotherPlaceStopsTheHint) {
    rig.Hover({10, 20});
    rig.DragTo({10, 20});
    EXPECT_TRUE(rig.Ticks(2));
    rig.DragTo({11, 20});
    EXPECT_FALSE(rig.Ticks(2));
}

}  // namespace
}  // namespace orvane
