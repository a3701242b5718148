// Lifecycle, view and frame as a host reaches them: by name, with map-sense coordinates and handles. 1000 dots a metre, so that a
// pixel is 10 units at the start.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/control/automation_rig.h"
#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ViewCallsTest : public testing::Test {
protected:
    ViewCallsTest() {
        rig.desktop.SetDeviceNumbers(ThousandDots());
        rig.Start();
        rig.ctrl->SetEvents(&events);
        rig.ctrl->SetModified(false);
        rig.verbs->Clear();
    }
    /// The lines that hold `part` since the last call.
    Lines VerbsWith(std::string_view part) {
        Lines lines = rig.verbs->Lines();
        rig.verbs->Clear();
        std::erase_if(lines, [part](const std::string& line) { return line.find(part) == std::string::npos; });
        return lines;
    }
    void AddLine() {
        ASSERT_TRUE(rig.Run("OrvAddLayer", "A", 1, 2, 1).True());
        ASSERT_TRUE(rig.Run("OrvAddDat", "A", 1, 7, 0).True());
        for (const double x : {1000.0, 1400.0}) ASSERT_TRUE(rig.Run("OrvAddDatPnt", "A", 1, 7, x, 2000.0 + x, 0.0).True());
        rig.verbs->Clear();
    }
    EventLog events;
    AutomationRig rig;
};

TEST_F(ViewCallsTest, TheExtendedScreenPositionsTakeTheCallersEdgeAndNegateNothing) {
    rig.ctrl->viewX = 300;
    rig.ctrl->viewY = 400;
    EXPECT_EQ(rig.Run("GetScreenPosX", 7).Double(), 370);
    EXPECT_EQ(rig.Run("OrvGetScreenPosX", -7).Double(), 230);
    EXPECT_EQ(rig.Run("GetScreenPosY", 7).Double(), -470);
    EXPECT_EQ(rig.Run("OrvGetScreenPosY", 0).Double(), -400);
    for (const char* name : {"GetScreenPosXEx", "OrvGetScreenPosXEx", "GetScreenPosYEx", "OrvGetScreenPosYEx"}) {
        EXPECT_EQ(rig.Run(name, 0, 12.5).Double(), 12.5) << name;
        EXPECT_EQ(rig.Run(name, 7, 12.5).Double(), 82.5) << name;
        EXPECT_EQ(rig.Run(name, -7, -12.5).Double(), -82.5) << name;
    }
}

TEST_F(ViewCallsTest, AScrollByNothingRepaintsTheWholeMapAndAnswersOne) {
    EXPECT_EQ(rig.Run("RDMScrl", 0.0, 0.0).Long(), 1);
    EXPECT_THAT(VerbsWith("PatBlt 0 0 800 600 0xFF0062").size(), 1u);
    rig.Run("OrvScrl", 0.0, 0.0);
    EXPECT_THAT(VerbsWith("PatBlt 0 0 800 600 0xFF0062").size(), 1u);
}

TEST_F(ViewCallsTest, AScrollTakesYUpward) {
    EXPECT_EQ(rig.Run("RDMScrl", 100.0, -50.0).Long(), 1);
    EXPECT_EQ(rig.ctrl->viewX, 100);
    EXPECT_EQ(rig.ctrl->viewY, 50);
    rig.Run("OrvScrl", 100.0, -50.0);
    EXPECT_EQ(rig.ctrl->viewX, 200);
    EXPECT_EQ(rig.ctrl->viewY, 100);
}

TEST_F(ViewCallsTest, TheOlderScrollAnswersOneEvenWhenNothingCanMove) {
    for (const char* name : {"AreaRight", "AreaBottom"}) rig.Put(name, 100.0);  // the view is 8000 by 6000
    EXPECT_EQ(rig.Run("RDMScrl", 100.0, 50.0).Long(), 1);
    EXPECT_EQ(rig.ctrl->viewX, 0);
    EXPECT_EQ(rig.ctrl->viewY, 0);
    EXPECT_THAT(VerbsWith(""), IsEmpty());
}

TEST_F(ViewCallsTest, BothJumpsTakeYUpward) {
    for (const char* name : {"MapJumpToXY", "OrvMapJumpToXY"}) {
        rig.ctrl->viewX = rig.ctrl->viewY = 0;
        rig.Run(name, 5000.0, 5000.0);
        EXPECT_EQ(rig.ctrl->viewX, 1000) << name;
        EXPECT_EQ(rig.ctrl->viewY, -8000) << name;
    }
}

TEST_F(ViewCallsTest, BothJumpsToDataAnswerTheSameWhetherOrNotItIsFound) {
    AddLine();
    EXPECT_EQ(rig.Run("MapJumpToData", 7, "A", 1, true).Long(), 0);
    EXPECT_EQ(rig.ctrl->viewX, 1200 - 4000);
    EXPECT_EQ(rig.ctrl->viewY, -3200 - 3000);
    EXPECT_EQ(rig.Run("MapJumpToData", 8, "A", 1, true).Long(), 0);
    EXPECT_EQ(rig.ctrl->store.FindDat("A", 1, 7)->active, 0) << "the active set was cleared all the same";
}

TEST_F(ViewCallsTest, AFitWithARateOfEightyCountsAsFiftyAndOneOfZeroAsNone) {
    AddLine();
    const auto fitted = [&](const char* name, auto... rate) {
        rig.Run(name, rate...);
        return rig.Run("Zoom").Long();
    };
    // 400 by 400 units on 600 pixels: 400 / 600 * 1000 = 666.7; with half of it on each side 1333.3.
    EXPECT_EQ(fitted("OrvDspFit"), 667);
    EXPECT_EQ(fitted("OrvDspFit2", 80), 1333);
    EXPECT_EQ(fitted("OrvDspFit2", 50), 1333);
    EXPECT_EQ(fitted("OrvDspFit2", 0), 667);
    EXPECT_EQ(fitted("OrvDspFit2", -3), 667);
    EXPECT_EQ(fitted("DspFit"), 667);
    EXPECT_THAT(events.Zooms(), ElementsAre(667, 1333, 1333, 667, 667, 667));
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(ViewCallsTest, TheWheelKeepsItsRatesWhenOnlyTheModeIsGood) {
    rig.Run("OrvWheelZoomMode", 2, 0.6);
    EXPECT_EQ(rig.ctrl->wheelZoomMode, 2);
    EXPECT_EQ(rig.ctrl->wheelRateUp, 1.2);
    EXPECT_EQ(rig.ctrl->wheelRateDown, 0.8);
    rig.Run("OrvWheelZoomMode", 3, 0.1);
    EXPECT_EQ(rig.ctrl->wheelZoomMode, 2);
    EXPECT_EQ(rig.ctrl->wheelRateUp, 1.2);
}

TEST_F(ViewCallsTest, DrawingIsTurnedOffAndOnWithoutARepaint) {
    rig.Put("MapDraw", false);
    EXPECT_THAT(VerbsWith(""), IsEmpty());
    rig.Run("OrvReDraw");
    EXPECT_THAT(VerbsWith(""), IsEmpty());
    rig.Put("MapDraw", true);
    EXPECT_THAT(VerbsWith(""), IsEmpty());
    rig.Run("OrvReDraw");
    EXPECT_THAT(VerbsWith("PatBlt 0 0 800 600 0xFF0062").size(), 1u);
}

TEST_F(ViewCallsTest, TheForeignFramesReadTheirRectanglesInTwoWays) {
    AddLine();
    rig.ctrl->viewX = 1000;
    rig.ctrl->viewY = -3000;
    ForeignContext foreign(ThousandDots());
    for (const char* name : {"UserDcDraw", "OrvUserDcDraw"}) {
        rig.Run(name, foreign.handle, 0, 0, 300, 400, 0);  // top left bottom right, read as left top right bottom
        const Lines lines = foreign.Verbs();
        EXPECT_EQ(lines.front(), "PatBlt 0 0 300 400 0xFF0062") << name;
        EXPECT_THAT(lines, testing::Contains("Polyline [(150,200) (190,160)]")) << name << " is centred on the view's corner";
    }
    for (const char* name : {"UserDcDrawEx", "OrvUserDcDrawEx"}) {
        rig.Run(name, foreign.handle, 0, 0, 300, 400, 1400.0, 3400.0, 5000, 0);
        const Lines lines = foreign.Verbs();
        EXPECT_EQ(lines.front(), "PatBlt 0 0 400 300 0xFF0062") << name;
        EXPECT_THAT(lines, testing::Contains("Polyline [(120,230) (200,150)]")) << name << " is centred on the map point";
    }
    EXPECT_EQ(rig.Run("Zoom").Long(), 10000);
}

TEST_F(ViewCallsTest, InitAndTermAreOneOperationUnderTheirTwoNames) {
    for (const auto& [init, term] : {std::pair{"RDMInit", "RDMTerm"}, {"OrvInit", "OrvTerm"}}) {
        AddLine();
        rig.Put("Zoom", 123);
        rig.Run(term);
        EXPECT_EQ(rig.ctrl->store.GetDigIndexCnt(), 1) << term;
        EXPECT_TRUE((std::string_view(init) == "RDMInit" ? rig.Run(init, "123") : rig.Run(init)).True());
        EXPECT_EQ(rig.ctrl->store.GetDigIndexCnt(), 0) << init;
        EXPECT_EQ(rig.Run("Zoom").Long(), 10000) << init;
        EXPECT_EQ(rig.ctrl->CurrentDrawState(), 0) << init;
        rig.Paint();
    }
}

}  // namespace
}  // namespace orvane
