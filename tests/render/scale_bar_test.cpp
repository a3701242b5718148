#include "render/scale_bar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

using Lines = std::vector<std::string>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A client area of 60 x 40 pixels of one map unit each, its corner at map (0, 0): a tick on every 20 pixels, three below and
/// two at the right.
class ScaleBarTest : public testing::Test {
protected:
    ScaleBarTest() {
        rig.frame.y = 0;
        SetClient(60, 40);
    }
    void SetClient(std::int32_t right, std::int32_t bottom) { rig.frame.client = {0, 0, right, bottom}; }
    void Draw(std::int16_t mode) { DrawScaleBar(rig.frame, rig.store.view, mode, 96); }
    Lines All(std::int16_t mode) {
        Draw(mode);
        return rig.Verbs();
    }
    Lines Texts(std::int16_t mode) {
        Draw(mode);
        return rig.Verbs("TextOut");
    }
    Lines Starts(std::int16_t mode) {
        Draw(mode);
        return rig.Verbs("MoveToEx");
    }
    /// The first label below and the first at the right, in a client area that has one tick on each side.
    Lines Labels(std::int16_t mode) {
        SetClient(20, 20);
        Lines labels = Texts(mode);
        for (std::string& label : labels) label.erase(0, label.find('"'));
        return labels;
    }

    RenderRig rig;
};

TEST_F(ScaleBarTest, ModeZeroDrawsTheFourSidesAndNothingElse) {
    EXPECT_THAT(All(0), ElementsAre("PatBlt 0 0 1 40 0x000042", "PatBlt 0 0 60 1 0x000042", "PatBlt 59 0 60 40 0xFF0062",
                                    "PatBlt 0 39 60 40 0xFF0062"));
}

// The font of 7 points at 96 dots an inch is 9 pixels high, so a byte counts 4.5 pixels.
TEST_F(ScaleBarTest, MetresVerbByVerb) {
    EXPECT_THAT(All(1), ElementsAreArray(Lines{"PatBlt 0 0 1 40 0x000042",
                                               "PatBlt 0 0 60 1 0x000042",
                                               "PatBlt 59 0 60 40 0xFF0062",
                                               "PatBlt 0 39 60 40 0xFF0062",
                                               "FillRect (40,0,60,40) brush(0x808080)",
                                               "FillRect (0,20,60,40) brush(0x808080)",
                                               "SelectObject pen(0x0 1 0xFFFFFF)",
                                               "SetBkMode 1",
                                               "SetTextColor 0xFFFFFF",
                                               "SelectObject font(-9 0 0 0 400 128 \"\x95\x57\x8F\x80\x96\xBE\x92\xA9\")",
                                               "MoveToEx 20 20",
                                               "LineTo 20 29",
                                               "GetTextExtentPoint32 \"20m\"",
                                               "TextOut 14 28 \"20m\"",
                                               "MoveToEx 40 20",
                                               "LineTo 40 29",
                                               "GetTextExtentPoint32 \"40m\"",
                                               "TextOut 34 28 \"40m\"",
                                               "MoveToEx 60 20",
                                               "LineTo 60 29",
                                               "GetTextExtentPoint32 \"60m\"",
                                               "TextOut 54 28 \"60m\"",
                                               "SelectObject font(0 0 0 0 400 128 \"\")",
                                               "SelectObject font(-9 0 900 0 400 128 \"\x95\x57\x8F\x80\x96\xBE\x92\xA9\")",
                                               "MoveToEx 40 20",
                                               "LineTo 49 20",
                                               "GetTextExtentPoint32 \"-20m\"",
                                               "TextOut 48 29 \"-20m\"",
                                               "MoveToEx 40 40",
                                               "LineTo 49 40",
                                               "GetTextExtentPoint32 \"-40m\"",
                                               "TextOut 48 49 \"-40m\"",
                                               "SelectObject pen(0x0 1 0x000000)",
                                               "SelectObject font(0 0 0 0 400 128 \"\")"}));
}

TEST_F(ScaleBarTest, LeftAndTopOfTheClientAreaAreNotRead) {
    const Lines plain = All(1);
    rig.frame.client.left = 17;
    rig.frame.client.top = 5;
    EXPECT_EQ(All(1), plain);
}

TEST_F(ScaleBarTest, RightRulerShowsMapYToTheNorth) {
    rig.frame.y = -100;
    SetClient(20, 100);
    EXPECT_THAT(Texts(1), ElementsAre("TextOut 14 88 \"20m\"", "TextOut 8 26 \"80m\"", "TextOut 8 46 \"60m\"",
                                      "TextOut 8 66 \"40m\"", "TextOut 8 86 \"20m\"", "TextOut 8 104 \"0m\""));
}

TEST_F(ScaleBarTest, ModeThreeGivesTicksAndEmptyTexts) {
    for (const std::int16_t mode : std::initializer_list<std::int16_t>{3, -1, 32767, -32768}) {
        const Lines lines = All(mode);
        EXPECT_THAT(lines, SizeIs(4 + 2 + 3 + 1 + 3 * 4 + 2 + 2 * 4 + 2)) << mode;
        EXPECT_THAT(Texts(mode), ElementsAre("TextOut 20 28 \"\"", "TextOut 40 28 \"\"", "TextOut 60 28 \"\"",
                                             "TextOut 48 20 \"\"", "TextOut 48 40 \"\""));
    }
}

TEST_F(ScaleBarTest, DoublingTheZoomKeepsTheTicksAndDoublesTheDifferenceOfTheLabels) {
    const Lines ticks = Starts(1);
    rig.store.view.Zoom = 2000;
    EXPECT_EQ(Starts(1), ticks);
    EXPECT_THAT(Texts(1), ElementsAre("TextOut 14 28 \"40m\"", "TextOut 34 28 \"80m\"", "TextOut 51 28 \"120m\"",
                                      "TextOut 48 29 \"-40m\"", "TextOut 48 49 \"-80m\""));
}

TEST_F(ScaleBarTest, CornerBetweenTwoTicksBringsTheFirstOneNearer) {
    rig.frame.x = 25;
    rig.frame.y = 38;
    // 25 is 5 behind the tick at 20, and 38 is 18 behind it.
    EXPECT_THAT(Starts(1), ElementsAre("MoveToEx 15 20", "MoveToEx 35 20", "MoveToEx 55 20", "MoveToEx 40 2", "MoveToEx 40 22"));
    EXPECT_THAT(Labels(1), ElementsAre("\"40m\"", "\"-40m\""));
}

TEST_F(ScaleBarTest, WithANegativeCornerTheFirstTickIsMoreThanAStepAway) {
    rig.frame.x = -5;
    rig.frame.y = -12;
    EXPECT_THAT(Starts(1), ElementsAre("MoveToEx 25 20", "MoveToEx 45 20", "MoveToEx 65 20", "MoveToEx 40 32", "MoveToEx 40 52"));
    EXPECT_THAT(Labels(1), ElementsAre("\"20m\"", "\"-20m\""));
}

TEST_F(ScaleBarTest, PendingPixelsShiftTheTicksAndNotTheLabels) {
    rig.frame.pendX = 0.5;
    rig.frame.pendY = -0.75;
    EXPECT_THAT(Starts(1), ElementsAre("MoveToEx 21 20", "MoveToEx 41 20", "MoveToEx 61 20", "MoveToEx 40 19", "MoveToEx 40 39"));
    EXPECT_THAT(Labels(1), ElementsAre("\"20m\"", "\"-20m\""));
}

TEST_F(ScaleBarTest, NumberOfTicksIsRounded) {
    SetClient(50, 49);  // 2.5 and 2.45 steps
    EXPECT_THAT(Starts(1), SizeIs(3 + 2));
}

TEST_F(ScaleBarTest, FineDeviceSpreadsTheTicksAndTheFontFollowsItsOwnNumber) {
    rig.store.view.DotPerM = 2000;
    DrawScaleBar(rig.frame, rig.store.view, 1, 144);
    const Lines lines = rig.Verbs();
    EXPECT_THAT(lines, testing::Contains("SelectObject font(-14 0 0 0 400 128 \"\x95\x57\x8F\x80\x96\xBE\x92\xA9\")"));
    EXPECT_THAT(lines, testing::Contains("MoveToEx 40 20"));
    EXPECT_THAT(lines, testing::Contains("GetTextExtentPoint32 \"20m\""));
}

// --- Minutes and seconds ------------------------------------------------------------------------------------------------------

TEST_F(ScaleBarTest, GraticuleLabelsAreTextOfTheFixedSheet) {
    rig.frame.x = 2000;
    rig.frame.y = -2020;
    // 2020 * 45 / 1000 + 30 = 120 seconds. -2000 is rounded to -1999, and 1999 * 3 / 100 = 59 seconds.
    EXPECT_THAT(Labels(2), ElementsAre("\"E41\\xDF24'00\\x22\"", "\"N43\\xDF05'59\\x22\""));
}

TEST_F(ScaleBarTest, GraticuleDividesTowardZeroAndBorrowsForNegativeSeconds) {
    rig.frame.x = -2000;
    rig.frame.y = 2000;
    // -1980 is rounded to -1979, -1979 * 45 / 1000 = -89, and with 30 it is -59 of 22 minutes; -2020 * 3 / 100 = -60 of 5
    // minutes.
    EXPECT_THAT(Labels(2), ElementsAre("\"E41\\xDF21'01\\x22\"", "\"N43\\xDF04'00\\x22\""));
    rig.frame.x = -720;
    // -699 * 45 / 1000 = -31 (31.455 cut), and with 30 it is -1.
    EXPECT_THAT(Labels(2)[0], "\"E41\\xDF21'59\\x22\"");
}

TEST_F(ScaleBarTest, GraticuleMinutesWrapAtTheHourInBothDirections) {
    rig.frame.x = 100000;
    // 100020 * 45 / 1000 + 30 = 4530 seconds after 22 minutes: 1 hour 37 minutes 30 seconds.
    EXPECT_THAT(Labels(2)[0], "\"E41\\xDF37'30\\x22\"");
    rig.frame.x = -100000;
    // -4499 + 30 = -4469 seconds after 22 minutes: 52 minutes 29 seconds before the hour.
    EXPECT_THAT(Labels(2)[0], "\"E41\\xDF07'31\\x22\"");
}

TEST_F(ScaleBarTest, OnlyTheMetresOfTheRightRulerTakeAHalfOff) {
    rig.store.view.Zoom = 25;  // a tick on every half metre
    rig.frame.y = 99;
    EXPECT_THAT(Labels(1)[1], "\"-99m\"");
    // 99.5 is rounded to 100, and -100 * 3 / 100 = -3 seconds; -99 would give -2.
    EXPECT_THAT(Labels(2)[1], "\"N43\\xDF04'57\\x22\"");
}

TEST_F(ScaleBarTest, LabelsAtTheEndsOfTheNumberRangeAreSafe) {
    rig.frame.x = 1e300;
    rig.frame.y = 1e300;
    EXPECT_THAT(Labels(1), ElementsAre("\"2147483647m\"", "\"-2147483647m\""));
    // 2147483647 * 45 / 1000 + 30 = 96636794 seconds, 2147483647 * 3 / 100 = 64424509 seconds.
    EXPECT_THAT(Labels(2), ElementsAre("\"E41\\xDF55'14\\x22\"", "\"N43\\xDF23'11\\x22\""));
    rig.frame.x = rig.frame.y = -1e300;
    EXPECT_THAT(Labels(1), ElementsAre("\"-2147483648m\"", "\"2147483647m\""));
}

// --- Numbers that no screen has -----------------------------------------------------------------------------------------------

TEST_F(ScaleBarTest, WithoutAScaleOrADeviceThereAreNoTicks) {
    rig.store.view.Zoom = 0;
    EXPECT_THAT(Starts(1), IsEmpty());
    rig.store.view.Zoom = 1000;
    rig.store.view.DotPerM = 0;
    EXPECT_THAT(Starts(2), IsEmpty());
    EXPECT_THAT(All(1), SizeIs(4 + 2 + 3 + 1 + 2 + 2)) << "the bands and the fonts all the same";
    rig.store.view.DotPerM = -1000;
    EXPECT_THAT(Starts(1), IsEmpty());
}

TEST_F(ScaleBarTest, NotANumberInTheViewCountsAsZero) {
    rig.frame.x = rig.frame.y = kNaN;
    EXPECT_THAT(Texts(1), SizeIs(5));
    rig.frame.x = rig.frame.y = std::numeric_limits<double>::infinity();
    EXPECT_THAT(Labels(1), Each("\"0m\""));
}

TEST_F(ScaleBarTest, DeviceOfHugePixelsDrawsABoundedNumberOfTicks) {
    rig.store.view.DotPerM = 1;  // a fiftieth of a pixel from tick to tick
    SetClient(2147483647, -5);
    EXPECT_THAT(Starts(3), SizeIs(65536));
}

TEST_F(ScaleBarTest, ClientAreasWithoutExtentOrBelowZeroStayInRange) {
    SetClient(0, 0);
    EXPECT_THAT(Starts(1), IsEmpty());
    SetClient(-2147483647 - 1, -2147483647 - 1);
    EXPECT_THAT(All(1).front(), "PatBlt 0 0 1 -2147483648 0x000042");
}

TEST_F(ScaleBarTest, DeviceWithoutDotsInAnInchGetsTheDefaultHeight) {
    DrawScaleBar(rig.frame, rig.store.view, 1, 0);
    EXPECT_THAT(rig.Verbs("SelectObject font")[0], "SelectObject font(0 0 0 0 400 128 \"\x95\x57\x8F\x80\x96\xBE\x92\xA9\")");
}

}  // namespace
}  // namespace orvane
