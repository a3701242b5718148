// Overlay figures and the scale bar in the three kinds of frame.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// A pixel is a map unit and the view stands at (0, 0): map (x, y) comes to pixel (x, -y).
class OverlayFrameTest : public testing::Test {
protected:
    OverlayFrameTest() { rig.StartOneToOne(); }
    std::int32_t AddFigure(Coordinates coordinates) {
        const std::int32_t ID = rig.ctrl->store.MakeOrgDat(kLayLine, 1, 0, 1);
        for (const auto& [x, y] : coordinates) EXPECT_GT(rig.ctrl->store.AddOrgPnt(ID, x, y), 0);
        return ID;
    }
    void Scroll(double newX, double newY) {
        const double oldX = rig.ctrl->viewX, oldY = rig.ctrl->viewY;
        rig.SetView(newX, newY);
        const auto dc = rig.window.AcquireDC();
        rig.ctrl->RedrawScroll(*dc, oldX, oldY);
    }
    ControlRig rig;
};

TEST_F(OverlayFrameTest, FiguresAreLaidIntoTheTopBufferInEveryMode) {
    AddFigure({{10, -20}, {110, -70}});
    for (const std::int32_t mode : {0, 1, 2}) {
        rig.ctrl->RedrawWindow(mode);
        Lines steps = rig.Verbs();
        std::erase_if(steps, [](const std::string& line) { return line.find("SelectObject") != std::string::npos; });
        Lines expected = mode == 0 ? ComposedFrame() : RelaidFrame();
        const auto copied = std::find(expected.begin(), expected.end(), "top BitBlt 0 0 800 600 base 0 0 0xCC0020");
        ASSERT_NE(copied, expected.end());
        expected.insert(copied + 1, {"top SetROP2 13", "top Polyline [(10,20) (110,70)]"});
        EXPECT_EQ(steps, expected) << mode;
    }
}

TEST_F(OverlayFrameTest, ScrolledFrameDrawsFiguresInTheStripsWithThePendingPart) {
    AddFigure({{795, -20}, {805, -70}});
    AddFigure({{100, -20}, {200, -70}});
    Scroll(10.5, 20.25);  // 11 pixels are shifted, which leaves -0.5; and 20 with 0.25 to go
    // 795 - 10.5 - 0.5 + 0.5, 20 - 20.25 + 0.25 + 0.5.
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(784,0) (794,50)]"));
}

TEST_F(OverlayFrameTest, HostsContextGetsTheFiguresAndNoScaleBar) {
    AddFigure({{0, 0}, {100, 50}});
    rig.ctrl->scaleBarMode = 1;
    ForeignContext foreign(ThousandDots());
    rig.ctrl->UserDcDrawEx(foreign.handle, 0, 0, 300, 400, 0, 0, 1000, 1);
    Lines steps = foreign.Verbs();
    std::erase_if(steps, [](const std::string& line) { return line.starts_with("SelectObject"); });
    EXPECT_THAT(steps, ElementsAre("SetROP2 13", "Polyline [(200,150) (300,100)]"));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(OverlayFrameTest, StringsFollowTheirProperty) {
    rig.ctrl->store.SetOrgDatString(AddFigure({{10, -20}, {110, -70}}), "name", 30, -40, 10, 0, 0);
    rig.ctrl->orgStrVisible = false;
    rig.ctrl->RedrawWindow(1);
    EXPECT_THAT(rig.VerbsWith("TextOut"), IsEmpty());
    rig.ctrl->orgStrVisible = true;
    rig.ctrl->RedrawWindow(1);
    EXPECT_THAT(rig.VerbsWith("TextOut"), ElementsAre("top TextOut 30 40 \"name\""));
}

TEST_F(OverlayFrameTest, TopFigureIsDrawnOnceMoreAndLeavesNoTrace) {
    rig.ctrl->orgTopDrawID = AddFigure({{10, -20}, {110, 30}});
    rig.SetView(0, -100);
    rig.ctrl->RedrawWindow(1);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(10,120) (110,70)]", "top Polyline [(10,80) (110,130)]"));
    EXPECT_EQ(rig.ctrl->store.OrgDatCnt(), 1);
}

TEST_F(OverlayFrameTest, RulersGoStraightToTheScreenBehindItsCopy) {
    rig.ctrl->scaleBarMode = 1;
    rig.SetView(25, 0);
    rig.ctrl->RedrawWindow(1);
    const Lines lines = rig.Verbs();
    const auto copied = std::find(lines.begin(), lines.end(), "window BitBlt 1 1 780 580 top 1 1 0xCC0020");
    ASSERT_NE(copied, lines.end());
    EXPECT_TRUE(std::all_of(copied, lines.end(), [](const std::string& line) { return line.starts_with("window "); }));
    const Lines bar(copied + 1, lines.end());
    // 4 sides, 2 bands, 3 settings, 3 fonts selected, 40 and 30 ticks of 4 verbs, 2 put back.
    EXPECT_THAT(bar, SizeIs(4 + 2 + 3 + 3 + 40 * 4 + 30 * 4 + 2));
    EXPECT_EQ(bar[4], "window FillRect (780,0,800,600) brush(0x808080)");
    EXPECT_EQ(bar[10], "window MoveToEx 15 580");
    EXPECT_EQ(bar[12], "window GetTextExtentPoint32 \"40m\"");
}

TEST_F(OverlayFrameTest, ScrolledFrameShiftsTheTicksByTheFractionOfAPixel) {
    rig.ctrl->scaleBarMode = 3;
    Scroll(10.25, 0.5);
    // The first tick below is 20 - 10.25 + 0.25 pixels away, and the one at the right 20 - 0.5 - 0.5.
    const Lines starts = rig.VerbsWith("MoveToEx");
    EXPECT_EQ(starts.front(), "window MoveToEx 10 580");
    EXPECT_EQ(starts[40], "window MoveToEx 780 19");
}

TEST_F(OverlayFrameTest, LabelsAreMadeForTheDotsInAnInchOfTheBaseBuffer) {
    rig.ctrl->scaleBarMode = 1;
    auto* base = dynamic_cast<RecordContext*>(rig.ctrl->BaseDC());
    ASSERT_NE(base, nullptr);
    DeviceNumbers numbers = ThousandDots();
    numbers.logPixelsY_dpi = 144;
    base->SetDeviceNumbers(numbers);
    rig.ctrl->RedrawWindow(1);
    EXPECT_THAT(rig.Verbs(), Contains("window SelectObject font(-14 0 0 0 400 128 \"\x95\x57\x8F\x80\x96\xBE\x92\xA9\")"));
}

}  // namespace
}  // namespace orvane
