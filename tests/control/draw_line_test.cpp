// One line in a line type on a context of the host.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/automation/invoke.h"
#include "tests/control/automation_rig.h"
#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kMost = 2147483647;
constexpr std::int32_t kLeast = -2147483647 - 1;
constexpr char kBlackBrush[] = "SelectObject brush(0x000000)";
constexpr char kCopy[] = "SetROP2 13";
constexpr char kOldPen[] = "SelectObject pen(0x0 1 0x000000)";
constexpr char kOldBrush[] = "SelectObject brush(0xFFFFFF)";

DeviceNumbers Dpi(std::int32_t dpi) {
    DeviceNumbers numbers = ThousandDots();
    numbers.logPixelsX_dpi = dpi;
    return numbers;
}

class DrawLineTest : public testing::Test {
protected:
    DrawLineTest() { rig.Start(); }

    LineTypeDef& AddLineType(std::int32_t id, std::int32_t kind, std::int32_t value, std::int32_t shape = 0) {
        LineTypeDef def;
        def.ltId = id;
        def.ltKind = kind;
        def.ltCnt = 1;
        EXPECT_TRUE(def.ltList.PushBack(value));
        EXPECT_TRUE(def.ltList2.PushBack(shape));
        GrowArray<LineTypeDef>& table = rig.ctrl->store.lineTypes;
        EXPECT_TRUE(table.PushBack(std::move(def)));
        return table[table.size() - 1];
    }
    Lines Draw(ForeignContext& context, std::int32_t lineType, std::int32_t width = 2) {
        rig.ctrl->DrawLine(context.handle, clip, {10, 50}, {42, 50}, lineType, width, 0x0000FF);
        return context.Verbs();
    }

    ControlRig rig;
    ForeignContext screen{Dpi(96)};
    ForeignContext printer{Dpi(288)};
    ForeignContext coarse{Dpi(48)};
    Rect clip{0, 0, 200, 100};
};

TEST_F(DrawLineTest, StandardTypeIsAPolylineWithItsPenAndABlackBrush) {
    EXPECT_THAT(Draw(screen, 2), ElementsAre("SelectObject pen(0x2 2 0x0000FF)", kBlackBrush, kCopy, "Polyline [(10,50) (42,50)]",
                                             kOldPen, kOldBrush));
}

TEST_F(DrawLineTest, EndMarksFollowTheLine) {
    AddLineType(7, 2, 10, 5).ltPos = 2;
    EXPECT_THAT(Draw(screen, 7), ElementsAre("SelectObject pen(0x0 2 0x0000FF)", kBlackBrush, kCopy, "Polyline [(10,50) (42,50)]",
                                             "Polyline [(35,43) (42,50) (35,57)]", kOldPen, kOldBrush));
}

TEST_F(DrawLineTest, PatternDrawsTheLineItself) {
    AddLineType(7, 3, 10).ltBase = 1;
    clip = {21, 0, 25, 100};  // of the pitches 10 to 19, 19 to 29, 29 to 39 only the second
    EXPECT_THAT(Draw(screen, 7), ElementsAre("SelectObject pen(0x0 2 0x0000FF)", kBlackBrush, kCopy, "MoveToEx 10 50",
                                             "Polyline [(29,50) (29,50)]", "LineTo 42 50", kOldPen, kOldBrush));
}

TEST_F(DrawLineTest, FinerDeviceGrowsWidthPitchAndTheFarSidesOfTheClip) {
    LineTypeDef& def = AddLineType(7, 3, 5);
    def.ltLen = 2;
    def.ltAngle = 90;
    // Three times the screen: a width of 6, pitches of 15 that end at 24 and 39, ticks of 6.
    EXPECT_THAT(Draw(printer, 7),
                ElementsAre("SelectObject pen(0x0 6 0x0000FF)", kBlackBrush, kCopy, "MoveToEx 10 50",
                            "Polyline [(24,50) (24,44)]", "Polyline [(39,50) (39,44)]", "MoveToEx 42 50", kOldPen, kOldBrush));
    clip = {0, 17, 9, 17};  // as (0, 17) to (27, 51), the bottom a pixel below the line
    EXPECT_THAT(Draw(printer, 7), Contains("Polyline [(39,50) (39,44)]"));
    clip = {0, 17, 8, 17};  // to 24, where the second pitch begins
    EXPECT_THAT(Draw(printer, 7),
                testing::AllOf(Contains("Polyline [(24,50) (24,44)]"), testing::Not(Contains("Polyline [(39,50) (39,44)]"))));
    clip = {0, 51, 100, 100};
    EXPECT_THAT(Draw(printer, 7), testing::Not(Contains("Polyline [(24,50) (24,44)]"))) << "the top does not grow";
}

TEST_F(DrawLineTest, RatioIsCutToWholeTimesAndPutBack) {
    rig.View().DpiRatio = 7.5;
    ForeignContext odd(Dpi(191));
    EXPECT_EQ(Draw(odd, 0).front(), "SelectObject pen(0x0 2 0x0000FF)") << "1.99 times is once";
    EXPECT_EQ(rig.View().DpiRatio, 7.5);
}

TEST_F(DrawLineTest, CoarserDeviceThanTheScreenHasNoWidthAndNoPatterns) {
    EXPECT_THAT(Draw(coarse, 0), Contains("SelectObject pen(0x0 0 0x0000FF)"));
    AddLineType(7, 3, 10);
    EXPECT_THAT(Draw(coarse, 7),
                ElementsAre("SelectObject pen(0x0 0 0x0000FF)", kBlackBrush, kCopy, "MoveToEx 10 50", kOldPen, kOldBrush));
}

TEST_F(DrawLineTest, PenAndBrushOfTheHostComeBackAndTheCopyingModeStays) {
    screen.dc.SelectPen(CreatePen(PenStyle::Dash, 5, 0x123456));
    screen.dc.SelectBrush(CreateSolidBrush(0xABCDEF));
    screen.dc.SetROP2(Rop2::XorPen);
    Draw(screen, 0);
    EXPECT_EQ(screen.dc.SelectPen(CreatePen(PenStyle::Solid, 1, 0)), CreatePen(PenStyle::Dash, 5, 0x123456));
    EXPECT_EQ(screen.dc.SelectBrush(WhiteBrush()), CreateSolidBrush(0xABCDEF));
    EXPECT_EQ(screen.dc.SetROP2(Rop2::CopyPen), Rop2::CopyPen);
}

TEST_F(DrawLineTest, NoSuchContextDrawsNothing) {
    const std::string before = DumpView(*rig.ctrl);
    for (const std::int32_t handle : {0, -1, 987654}) rig.ctrl->DrawLine(handle, clip, {1, 2}, {3, 4}, 0, 1, 0);
    EXPECT_EQ(DumpView(*rig.ctrl), before);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(DrawLineTest, BeforeTheFirstPaintNothingIsDrawn) {
    ControlRig fresh;
    fresh.ctrl->DrawLine(screen.handle, clip, {10, 50}, {42, 50}, 0, 1, 0);
    EXPECT_THAT(screen.Verbs(), IsEmpty());
    fresh.ctrl->RDMInit();
    fresh.ctrl->DrawLine(screen.handle, clip, {10, 50}, {42, 50}, 0, 1, 0);
    EXPECT_THAT(screen.Verbs(), IsEmpty());
    fresh.Paint();
    fresh.ctrl->DrawLine(screen.handle, clip, {10, 50}, {42, 50}, 0, 1, 0);
    EXPECT_EQ(screen.VerbsWith("Polyline").size(), 1u);
}

TEST_F(DrawLineTest, TurnedOffDrawingConcernsTheMapOnly) {
    rig.ctrl->mapDraw = false;
    EXPECT_THAT(Draw(screen, 0), Contains("Polyline [(10,50) (42,50)]"));
}

TEST_F(DrawLineTest, AbsurdNumbersAndDevicesAreDrawnWithoutOverflow) {
    for (std::int32_t kind = 0; kind <= 8; ++kind) AddLineType(kind, kind, 40, 5);
    for (const std::int32_t dpi : {0, -1, kMost, kLeast}) {
        ForeignContext absurd(Dpi(dpi));
        for (std::int32_t kind = -1; kind <= 9; ++kind) {
            rig.ctrl->DrawLine(absurd.handle, {kMost, kLeast, kLeast, kMost}, {kLeast, kMost}, {kMost, kLeast}, kind, kMost,
                               0xFFFFFFFF);
            rig.ctrl->DrawLine(absurd.handle, {kLeast, kLeast, kMost, kMost}, {kLeast, kMost}, {kMost, kLeast}, kind, kLeast, 0);
        }
    }
    EXPECT_EQ(rig.View().DpiRatio, 1.0);
}

TEST(DrawLineMemberTest, ArgumentsAreReadByTheirNames) {
    AutomationRig rig;
    rig.Start();
    ForeignContext context(Dpi(96));
    LineTypeDef def;
    def.ltId = 7;
    def.ltKind = 3;
    ASSERT_TRUE(def.ltList.PushBack(10));
    ASSERT_TRUE(rig.ctrl->store.lineTypes.PushBack(std::move(def)));
    // top 40, left 21, bottom 60, right 30: the pitches from 19 to 29 and from 29 to 39.
    EXPECT_TRUE(rig.Run("OrvDrawLine", context.handle, 40, 21, 60, 30, 10, 50, 52, 50, 7, 3, 0x332211).Ok());
    EXPECT_THAT(context.Verbs(),
                ElementsAre("SelectObject pen(0x0 3 0x332211)", kBlackBrush, kCopy, "MoveToEx 10 50",
                            "Polyline [(29,50) (29,50)]", "Polyline [(39,50) (39,50)]", "MoveToEx 52 50", kOldPen, kOldBrush));
}

}  // namespace
}  // namespace orvane
