// Selection by clicks and by the rubber rectangle, and the zoom rectangle.
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

class InputSelectTest : public testing::Test {
protected:
    InputSelectTest() { rig.AddRow("A", 50); }
    InputRig rig;
    COrvane4Ctrl& ctrl = *rig.ctrl;
};

// --- Clicks ------------------------------------------------------------------------------------------------------------------

TEST_F(InputSelectTest, AClickSelectsAtButtonUpRedrawsAndTellsTheItem) {
    rig.Down({150, 50});
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 150 50"));
    rig.Up({150, 50});
    EXPECT_TRUE(rig.Active("A"));
    EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataClick 1 'A' 1 150 50", "MouseUp 1 0 150 50"));
    EXPECT_EQ(rig.Rubber(), RectState::None);
}

TEST_F(InputSelectTest, AClickOnEmptyMapClearsTheActiveSetRepaintsAndFiresNoOnDataClick) {
    rig.Click({150, 50});
    rig.Events();
    rig.Forget();
    rig.Click({400, 400});
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 400 400", "MouseUp 1 0 400 400"));
}

TEST_F(InputSelectTest, ACtrlOrShiftClickOnEmptyMapKeepsTheActiveSetAndTellsItsFirstItem) {
    for (const std::uint32_t key : {kCtrl, kShift}) {
        rig.Click({150, 50});
        rig.Events();
        rig.Up({400, 400}, key);
        EXPECT_TRUE(rig.Active("A"));
        EXPECT_THAT(rig.Events(), Contains("OnDataClick 1 'A' 1 400 400"));
    }
}

TEST_F(InputSelectTest, ShiftClicksStepThroughStackedItemsAndAClickWithoutShiftStartsAgain) {
    for (const char* code : {"B", "C"}) rig.AddRow(code, 50);
    const auto activeAfter = [&](std::uint32_t keys) {
        rig.Click({150, 50}, keys);
        std::string active;
        for (const char* code : {"A", "B", "C"}) active += rig.Active(code) ? code : "";
        return active;
    };
    const std::string top = activeAfter(0);
    const std::string second = activeAfter(kShift);
    const std::string third = activeAfter(kShift);
    EXPECT_EQ(top.size() + second.size() + third.size(), 3u);
    EXPECT_THAT((std::vector{top, second, third}), testing::UnorderedElementsAre("A", "B", "C"));
    EXPECT_EQ(activeAfter(kShift), top);
    EXPECT_EQ(activeAfter(kShift), second);
    EXPECT_EQ(activeAfter(0), top);
    EXPECT_EQ(activeAfter(kShift), second);
}

TEST_F(InputSelectTest, TheShiftCountIsTakenFromTheFlagWordAtButtonUpAsAWhole) {
    rig.AddRow("B", 50);
    rig.Click({150, 50});
    const bool top = rig.Active("B");
    rig.Down({150, 50});
    rig.Up({150, 50}, kShift);
    EXPECT_NE(rig.Active("B"), top) << "Shift at the release counts";
    rig.Up({150, 50}, kShift | kMkRButton);
    EXPECT_EQ(rig.Active("B"), top) << "any other flag word is a plain click";
    rig.Up({150, 50}, kShift);
    EXPECT_NE(rig.Active("B"), top) << "the count had been reset";
}

TEST_F(InputSelectTest, TheShiftCountIsOneForTheWholeProgram) {
    rig.AddRow("B", 50);
    InputRig other;
    other.AddRow("A", 50);
    other.AddRow("B", 50);
    rig.Click({150, 50});
    const bool top = rig.Active("B");
    rig.Click({150, 50}, kShift);  // 1: the second of two
    ASSERT_NE(rig.Active("B"), top);
    other.Click({150, 50}, kShift);  // 2: the first again
    EXPECT_EQ(other.Active("B"), top);
}

TEST_F(InputSelectTest, ACtrlClickInvertsAndOnlyThatFlagWordDoes) {
    rig.Up({150, 50}, kCtrl);
    EXPECT_TRUE(rig.Active("A"));
    rig.Up({150, 50}, kCtrl);
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataClick 1 'A' 1 150 50", "MouseUp 1 2 150 50", "MouseUp 1 2 150 50"));
    rig.Up({150, 50}, kCtrl | kShift);
    rig.Up({150, 50}, kCtrl | kShift);
    EXPECT_TRUE(rig.Active("A")) << "both keys together are a plain click";
}

TEST_F(InputSelectTest, TheItemIsToldAfterTheRedrawAndBeforeMouseUp) {
    rig.Down({150, 50});
    rig.Events();
    std::size_t drawn = 0;
    rig.log.onEvent = [&](std::string_view event) {
        if (event == "OnDataClick") drawn = rig.verbs->Size();
    };
    rig.Up({150, 50});
    EXPECT_GT(drawn, 0u);
    EXPECT_EQ(drawn, rig.verbs->Size());
    EXPECT_THAT(rig.Events(), ElementsAre(StartsWith("OnDataClick"), StartsWith("MouseUp")));
}

// --- The rubber rectangle ----------------------------------------------------------------------------------------------------

TEST_F(InputSelectTest, ARectangleSelectsWhatLiesInItRedrawsAndTellsNoItem) {
    rig.Drag({90, 40}, {210, 60});
    EXPECT_TRUE(rig.Active("A"));
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 90 40", "MouseUp 1 0 210 60"));
    EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_FALSE(rig.Ticks(3));
    EXPECT_EQ(ctrl.runMode, kRunNormal);
}

TEST_F(InputSelectTest, ARectangleMayBeDraggedFromAnyCorner) {
    for (const auto& [from, to] : {std::pair<Point, Point>{{210, 60}, {90, 40}}, {{90, 60}, {210, 40}}, {{210, 40}, {90, 60}}}) {
        ctrl.store.ClearActive();
        rig.Drag(from, to);
        EXPECT_TRUE(rig.Active("A"));
        EXPECT_EQ(ctrl.input.rectStart, (Point{90, 40}));
        EXPECT_EQ(ctrl.input.rectEnd, (Point{210, 60}));
    }
}

TEST_F(InputSelectTest, ARectangleAddsWithCtrlAtTheReleaseAndOnlyWithIt) {
    rig.AddRow("B", 150);
    rig.Click({150, 50});
    rig.Down({90, 140});
    rig.DragTo({210, 160});
    rig.Up({210, 160}, kCtrl);
    EXPECT_TRUE(rig.Active("A") && rig.Active("B"));
    rig.Down({90, 140});
    rig.DragTo({210, 160});
    rig.Up({210, 160}, kCtrl | kShift);
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_TRUE(rig.Active("B"));
}

TEST_F(InputSelectTest, ARectangleDragOfThreeByThreePixelsSelectsNothingRestoresThePictureAndTellsNoItem) {
    rig.AddLine("B", {{301, -301}, {302, -302}});
    ctrl.RDMReDraw();
    rig.Forget();
    rig.Drag({300, 300}, {303, 303});
    EXPECT_FALSE(rig.Active("B"));
    EXPECT_THAT(rig.Verbs(), ElementsAre("window BitBlt 0 0 800 600 top 0 0 0xCC0020"));
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 300 300", "MouseUp 1 0 303 303"));
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_FALSE(rig.Ticks(3));
}

TEST_F(InputSelectTest, ARectangleIsOneFromFivePixelsOnInEitherDirection) {
    for (const Point to : {Point{305, 300}, {300, 305}, {304, 305}}) {
        rig.Drag({300, 300}, to);
        EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
    }
    rig.Drag({300, 300}, {304, 304});
    EXPECT_THAT(rig.Verbs(), ElementsAre("window BitBlt 0 0 800 600 top 0 0 0xCC0020"));
}

TEST_F(InputSelectTest, ADragThatComesBackToItsStartDoesNothing) {
    rig.Click({150, 50});
    rig.Events();
    rig.Forget();
    rig.Down({300, 300});
    rig.DragTo({400, 400});
    rig.Up({300, 300});
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_TRUE(rig.Active("A"));
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 300 300", "MouseUp 1 0 300 300"));
    EXPECT_FALSE(rig.Ticks(3));
}

TEST_F(InputSelectTest, ARunModeThatChangesDuringTheDragSelectsNothing) {
    rig.Down({90, 40});
    rig.DragTo({210, 60});
    ctrl.runMode = 100;
    rig.Up({210, 60});
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_EQ(ctrl.runMode, 100);
    EXPECT_EQ(rig.Rubber(), RectState::None);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(InputSelectTest, SelectionSwitchedOffDuringTheDragSelectsNothingAndRedraws) {
    rig.Down({90, 40});
    rig.DragTo({210, 60});
    ctrl.dataSelectMode = 0;
    rig.Up({210, 60});
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 90 40", "MouseUp 1 0 210 60"));
}

TEST_F(InputSelectTest, CornersAtTheEndsOfTheNumbersAreHeld) {
    constexpr std::int32_t low = -2147483647 - 1, high = 2147483647;
    rig.Drag({low, low}, {high, high});
    EXPECT_TRUE(rig.Active("A"));
    ctrl.rectZoomMode = 10;
    rig.Drag({low, high}, {high, low});
    EXPECT_EQ(ctrl.rectZoomMode, 0);
}

// --- The zoom rectangle ------------------------------------------------------------------------------------------------------

TEST_F(InputSelectTest, AZoomRectangleZoomsSelectsNothingAndEndsItsMode) {
    ctrl.rectZoomMode = 10;
    rig.Drag({100, 150}, {500, 350});
    EXPECT_EQ(rig.View().Zoom, 500);
    EXPECT_EQ(ctrl.viewX, 100);
    EXPECT_EQ(ctrl.rectZoomMode, 0);
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_THAT(rig.Events(), ElementsAre("MouseDown 1 0 100 150", "OnZoomChange 500", "MouseUp 1 0 500 350"));
}

TEST_F(InputSelectTest, AZoomRectangleWorksInTheToolModesAndWithSelectionOff) {
    for (const std::int16_t mode : {kRunNormal, std::int16_t{100}, std::int16_t{7}}) {
        ctrl.input.rectState = RectState::None;
        rig.View().Zoom = 1000;
        ctrl.runMode = mode;
        ctrl.dataSelectMode = 0;
        ctrl.rectZoomMode = 10;
        rig.Drag({100, 150}, {500, 350});
        EXPECT_EQ(rig.View().Zoom, 500) << mode;
        EXPECT_EQ(ctrl.runMode, mode);
    }
}

TEST_F(InputSelectTest, AZoomRectangleOfLessThanFivePixelsRestoresThePictureAndLeavesItsModeSet) {
    ctrl.rectZoomMode = 20;
    rig.Drag({300, 300}, {304, 297});
    EXPECT_EQ(ctrl.rectZoomMode, 20);
    EXPECT_EQ(rig.View().Zoom, 1000);
    EXPECT_THAT(rig.Verbs(), ElementsAre("window BitBlt 0 0 800 600 top 0 0 0xCC0020"));
}

TEST_F(InputSelectTest, AnUnknownZoomModeEndsWithTheRectangleAndARepaint) {
    ctrl.rectZoomMode = 15;
    rig.Drag({100, 150}, {500, 350});
    EXPECT_EQ(rig.View().Zoom, 1000);
    EXPECT_EQ(ctrl.rectZoomMode, 0);
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
}

TEST_F(InputSelectTest, AClickWhileAZoomRectangleWaitsSelects) {
    ctrl.rectZoomMode = 10;
    rig.Click({150, 50});
    EXPECT_TRUE(rig.Active("A"));
    EXPECT_EQ(ctrl.rectZoomMode, 10);
}

}  // namespace
}  // namespace orvane
