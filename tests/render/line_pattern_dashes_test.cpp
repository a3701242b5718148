// Dashes with ticks (kinds 4 and 5).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/render/pattern_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;

using Lines = std::vector<std::string>;

/// Dashes of 6 and gaps of 4 with ticks of 4 pixels at right angles.
class LineDashesTest : public testing::Test {
protected:
    LineDashesTest() : rig(4, {6, 4}) {
        rig.def.ltLen = 4;
        rig.def.ltAngle = 90.0;
    }
    /// The first pitch runs from x = 10 to x = 19, so its dash ends at 10 + 6 * 9 / 10 = 15 and its middle lies at 10 + 3 * 9 /
    /// 10 = 12.
    Lines FirstPitch() { return rig.Draw({{10, 50}, {20, 50}}); }
    Lines FirstTicks() { return rig.Draw({{10, 50}, {20, 50}}, "Polyline"); }
    void SlantedTicks(std::int32_t place) {
        rig.def.ltKind = 5;
        rig.def.ltPos = place;
        rig.def.ltLen = 10;  // at 60 degrees 5 along and 8.66, rounded 9, aside
        rig.def.ltAngle = 60.0;
    }
    PatternRig rig;
};

TEST_F(LineDashesTest, DashesAreDrawnWithATickAtTheMiddleAndGapsAreMoves) {
    EXPECT_THAT(rig.Draw({{10, 50}, {40, 50}}),
                ElementsAre("MoveToEx 10 50", "LineTo 15 50", "Polyline [(12,50) (12,46)]", "MoveToEx 18 50",  //
                            "LineTo 25 50", "Polyline [(22,50) (22,46)]", "MoveToEx 29 50",                    //
                            "LineTo 35 50", "Polyline [(32,50) (32,46)]", "MoveToEx 39 50", "LineTo 40 50"));
}

TEST_F(LineDashesTest, KindFiveDrawsTheSame) {
    const Lines lines = rig.Draw({{10, 50}, {40, 50}});
    rig.def.ltKind = 5;
    EXPECT_EQ(rig.Draw({{10, 50}, {40, 50}}), lines);
}

TEST_F(LineDashesTest, TicksStandAtDashStartEndOrBoth) {
    rig.def.ltKind = 5;
    rig.def.ltPos = 1;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(10,50) (10,46)]"));
    rig.def.ltPos = 2;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(15,50) (15,46)]"));
    rig.def.ltPos = 3;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(10,50) (10,46)]", "Polyline [(15,50) (15,46)]"));
    for (const std::int32_t other : {0, 4, -1}) {
        rig.def.ltPos = other;
        EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(12,50) (12,46)]")) << other;
    }
}

TEST_F(LineDashesTest, StartTicksLeanTheOtherWayRound) {
    SlantedTicks(3);
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(10,50) (5,41)]", "Polyline [(15,50) (20,41)]"));
    rig.def.ltDir = 2;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(10,50) (5,59)]", "Polyline [(15,50) (20,59)]"));
}

TEST_F(LineDashesTest, AlternatingSideFlipsForEachDash) {
    rig.def.ltDir = 3;
    rig.def.ltKind = 5;
    rig.def.ltPos = 3;
    rig.def.ltList[0] = 4;
    rig.def.ltList[1] = 2;
    ASSERT_TRUE(rig.def.ltList.PushBack(4));
    rig.def.ltCnt = 3;
    // Dashes end at 10 + 4 * 9 / 10 = 13 and, behind a gap of 2 * 9 / 10 = 1, at 17. Both start ticks stand at the pitch's start.
    EXPECT_THAT(rig.Draw({{10, 50}, {20, 50}, {26, 50}}, "Polyline"),
                ElementsAre("Polyline [(10,50) (10,54)]", "Polyline [(13,50) (13,54)]",  //
                            "Polyline [(10,50) (10,46)]", "Polyline [(17,50) (17,46)]"));
}

TEST_F(LineDashesTest, MiddleTicksOfLaterDashesStandAtTheMiddleOfTheFirst) {
    rig.def.ltList[0] = 4;
    rig.def.ltList[1] = 2;
    ASSERT_TRUE(rig.def.ltList.PushBack(4));
    rig.def.ltCnt = 3;
    EXPECT_THAT(FirstPitch(), ElementsAre("MoveToEx 10 50", "LineTo 13 50", "Polyline [(11,50) (11,46)]", "MoveToEx 14 50",
                                          "LineTo 17 50", "Polyline [(11,50) (11,46)]", "LineTo 20 50"));
}

TEST_F(LineDashesTest, TicksOnBothSidesAtRightAnglesAreOneStroke) {
    rig.def.ltDir = 1;
    rig.def.ltKind = 5;
    rig.def.ltPos = 3;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(10,54) (10,46)]", "Polyline [(15,46) (15,54)]"));
    rig.def.ltPos = 0;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(12,46) (12,54)]"));
    rig.def.ltAngle = -90.0;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(12,54) (12,46)]"));
}

TEST_F(LineDashesTest, TicksOnBothSidesAtTheStartAreJoinedThere) {
    SlantedTicks(1);
    rig.def.ltDir = 1;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(5,59) (10,50) (5,41)]"));
}

TEST_F(LineDashesTest, TicksOnBothSidesAtEndOrMiddleAreJoinedAtItsXInBothCoordinates) {
    SlantedTicks(2);
    rig.def.ltDir = 1;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(20,41) (15,15) (20,59)]"));
    rig.def.ltPos = 0;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(17,41) (12,12) (17,59)]"));
    rig.def.ltPos = 3;
    EXPECT_THAT(FirstTicks(), ElementsAre("Polyline [(5,59) (10,50) (5,41)]", "Polyline [(20,41) (15,15) (20,59)]"));
}

TEST_F(LineDashesTest, UnknownSideDrawsDashesWithoutTicks) {
    rig.def.ltDir = 4;
    EXPECT_THAT(FirstPitch(), ElementsAre("MoveToEx 10 50", "LineTo 15 50", "MoveToEx 18 50", "LineTo 20 50"));
}

TEST_F(LineDashesTest, DashesAndTicksGrowWithTheWholePartOfTheDpiRatio) {
    rig.store.view.DpiRatio = 2.9;
    // The pitch of 20 ends at 29: 12 * 19 / 20 = 11, its middle 6 * 19 / 20 = 5, the gap 8 * 19 / 20 = 7.
    EXPECT_THAT(rig.Draw({{10, 50}, {30, 50}}),
                ElementsAre("MoveToEx 10 50", "LineTo 21 50", "Polyline [(15,50) (15,42)]", "MoveToEx 28 50", "LineTo 30 50"));
}

TEST_F(LineDashesTest, HalfOfAnOddDashIsCutBeforeItIsScaled) {
    rig.def.ltList[0] = 7;
    rig.def.ltList[1] = 3;
    EXPECT_THAT(rig.Draw({{10, 10}, {10, 40}}, "Polyline"),
                ElementsAre("Polyline [(10,12) (14,12)]", "Polyline [(10,22) (14,22)]", "Polyline [(10,32) (14,32)]"));
}

TEST_F(LineDashesTest, ProportionsAreCutTowardZeroInEveryDirection) {
    rig.def.ltLen = 0;
    // Backwards: from 40 to 31 in the first pitch, 6 * -9 / 10 = -5, 4 * -9 / 10 = -3.
    EXPECT_THAT(rig.Draw({{40, 50}, {30, 50}}),
                ElementsAre("MoveToEx 40 50", "LineTo 35 50", "Polyline [(38,50) (38,50)]", "MoveToEx 32 50", "LineTo 30 50"));
}

// --- The list ------------------------------------------------------------

TEST_F(LineDashesTest, CountBelowTheListLeavesTheRestOut) {
    rig.def.ltCnt = 1;  // dashes of 6 one behind the other; the first pitch is 10 to 15
    EXPECT_THAT(rig.Draw({{10, 50}, {17, 50}}, "LineTo"), ElementsAre("LineTo 15 50", "LineTo 17 50"));
    rig.def.ltCnt = 0;
    EXPECT_THAT(FirstPitch(), ElementsAre("MoveToEx 10 50"));
    rig.def.ltCnt = -1;
    EXPECT_THAT(FirstPitch(), ElementsAre("MoveToEx 10 50"));
}

TEST_F(LineDashesTest, CountBeyondTheListDrawsWhatIsThere) {
    const Lines lines = FirstPitch();
    rig.def.ltCnt = 2147483647;
    EXPECT_EQ(FirstPitch(), lines);
}

TEST_F(LineDashesTest, NegativeDashesGoBack) {
    rig.def.ltList[1] = -4;
    // The pitch of 2 ends at 11: 6 * 1 / 2 = 3 to the right, then 4 * 1 / 2 = 2 back.
    EXPECT_THAT(rig.Draw({{10, 50}, {13, 50}}),
                ElementsAre("MoveToEx 10 50", "LineTo 13 50", "Polyline [(11,50) (11,46)]", "MoveToEx 11 50", "LineTo 13 50"));
    rig.def.ltList[1] = -6;
    EXPECT_THAT(FirstPitch(), ElementsAre("MoveToEx 10 50"));
}

TEST_F(LineDashesTest, HugeDashesDrawWithoutOverflow) {
    constexpr std::int32_t kMost = 2147483647;
    constexpr std::int32_t kLeast = -2147483647 - 1;
    rig.store.view.DpiRatio = 1e10;
    for (const auto& [a, b] : {std::pair{kMost, kMost}, {kMost, kLeast}, {kLeast, kMost}, {1, kMost}}) {
        rig.def.ltList[0] = a;
        rig.def.ltList[1] = b;
        rig.def.ltLen = kLeast;
        for (std::int32_t place = 0; place < 4; ++place) {
            rig.def.ltPos = place;
            rig.Draw({{kLeast, kLeast}, {kMost, kMost}, {kLeast, 3}, {0, kMost}});
        }
    }
    rig.def.ltList[0] = kMost;
    rig.def.ltList[1] = -kMost + 1;
    rig.def.ltPos = 0;
    rig.store.view.DpiRatio = 1;
    rig.def.ltLen = 0;
    // Pitches of one pixel: the first ends where it starts, the second is one long.
    EXPECT_THAT(
        rig.Draw({{10, 50}, {12, 50}}),
        ElementsAre("MoveToEx 10 50", "LineTo 10 50", "Polyline [(10,50) (10,50)]", "MoveToEx 10 50", "LineTo 2147483647 50",
                    "Polyline [(1073741833,50) (1073741833,50)]", "MoveToEx 11 50", "LineTo 12 50"));
}

// --- The clip ------------------------------------------------------------

TEST_F(LineDashesTest, PitchesOutsideMoveThePositionOn) {
    rig.clip = {30, 0, 40, 100};
    EXPECT_THAT(rig.Draw({{10, 50}, {65, 50}}),
                ElementsAre("MoveToEx 10 50", "MoveToEx 29 50", "LineTo 35 50", "Polyline [(32,50) (32,46)]", "MoveToEx 39 50",
                            "LineTo 45 50", "Polyline [(42,50) (42,46)]", "MoveToEx 49 50", "MoveToEx 59 50", "LineTo 65 50"));
    EXPECT_THAT(rig.Draw({{10, 150}, {40, 150}}), ElementsAre("MoveToEx 10 150", "MoveToEx 39 150", "LineTo 40 150"));
}

}  // namespace
}  // namespace orvane
