// The view's fields, its two inverses, and the jumps.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kDegree = 0.01745328;  // the coarse factor of the view's rotation

class ViewTest : public testing::Test {
protected:
    ViewTest() { rig.Start(); }
    ControlRig rig;
};

// --- Properties ------------------------------------------------------------------------------------------------------------

TEST_F(ViewTest, EachViewPropertySetsItsFieldMarksTheControlAndDrawsNothing) {
    COrvane4Ctrl& c = *rig.ctrl;
    struct Property {
        void (COrvane4Ctrl::*set)(double);
        const double& field;
    };
    const Property properties[] = {{&COrvane4Ctrl::SetScaleX, rig.View().ScaleX}, {&COrvane4Ctrl::SetScaleY, rig.View().ScaleY},
                                   {&COrvane4Ctrl::SetRotate, rig.View().Rotate}, {&COrvane4Ctrl::SetAreaTop, c.areaTop},
                                   {&COrvane4Ctrl::SetAreaBottom, c.areaBottom},  {&COrvane4Ctrl::SetAreaLeft, c.areaLeft},
                                   {&COrvane4Ctrl::SetAreaRight, c.areaRight}};
    double value = 1.5;
    for (const Property& property : properties) {
        c.SetModified(false);
        (c.*property.set)(value);
        EXPECT_EQ(property.field, value);
        EXPECT_TRUE(c.Modified());
        value += 1;
    }
    // 4.5, 5.5, 6.5, 7.5 went to top, bottom, left, right.
    EXPECT_EQ(rig.View().AreaTop, 4.5);
    EXPECT_EQ(rig.View().AreaBottom, 5.5);
    EXPECT_EQ(rig.View().AreaLeft, 6.5);
    EXPECT_EQ(rig.View().AreaRight, 7.5);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

TEST_F(ViewTest, NewLimitsDoNotMoveTheViewAtOnce) {
    rig.SetView(100, 100);
    rig.SetArea(0, 10, 0, 10);
    EXPECT_EQ(rig.ctrl->viewX, 100);
    EXPECT_EQ(rig.ctrl->viewY, 100);
}

// --- Inverses --------------------------------------------------------------------------------------------------------------

TEST_F(ViewTest, TheShortInverseCountsFromTheViewWithYTurnedOver) {
    rig.SetView(1000, -500);
    EXPECT_EQ(rig.ctrl->ScreenToWorldX(7), 1070);
    EXPECT_EQ(rig.ctrl->ScreenToWorldY(7), 430);
    EXPECT_EQ(rig.ctrl->ScreenToWorldY(0), 500) << "at pixel 0 it is the view's y negated";
    EXPECT_EQ(rig.ctrl->ScreenToWorldX(-7), 930);
}

TEST_F(ViewTest, TheShortInverseIgnoresRotationStretchAndOffsets) {
    rig.SetView(1000, -500);
    rig.View().Rotate = 45;
    rig.View().ScaleX = rig.View().ScaleY = 3;
    rig.View().OffX = rig.View().OffY = 77;
    rig.ctrl->devOffX = rig.ctrl->devOffY = 5;
    EXPECT_EQ(rig.ctrl->ScreenToWorldX(7), 1070);
    EXPECT_EQ(rig.ctrl->ScreenToWorldY(7), 430);
}

TEST(ViewBits, TheShortInverseMultipliesBeforeItDivides) {
    ControlRig rig(DeviceNumbers{});  // DotPerM 3779
    rig.Start();
    rig.View().Zoom = 12345;
    rig.SetView(0.1, 0.2);
    int differ = 0;
    for (int px = 1; px < 100; ++px) {
        EXPECT_EQ(rig.ctrl->ScreenToWorldX(px), 12345.0 * px / 3779.0 + 0.1);
        EXPECT_EQ(rig.ctrl->ScreenToWorldY(px), -(12345.0 * px / 3779.0 + 0.2));
        differ += 12345.0 * px / 3779.0 != px * (12345.0 / 3779.0);
    }
    EXPECT_GT(differ, 0);
}

class FullInverseTest : public ViewTest {
protected:
    std::pair<double, double> At(std::int32_t px, std::int32_t py) {
        std::pair<double, double> map;
        rig.ctrl->FullInverse(px, py, map.first, map.second);
        return map;
    }
};

TEST_F(FullInverseTest, WithAPlainViewIsTheShortOne) {
    rig.SetView(1000, -500);
    EXPECT_NEAR(At(7, 9).first, 1070, 1e-9);
    EXPECT_NEAR(At(7, 9).second, 410, 1e-9);
}

TEST_F(FullInverseTest, DividesByTheScaleBeforeTheViewIsAddedEvenThoughDrawingDoesNot) {
    rig.SetView(1000, -500);
    rig.View().ScaleX = 2;
    rig.View().ScaleY = 4;
    rig.View().OffX = 30;
    rig.View().OffY = 40;
    // r = 1000 / 10000 = 0.1: (7 / 0.1) / 2 + 1000 + 30 and (8 / 0.1) / 4 - 500 + 40, y turned over.
    EXPECT_NEAR(At(7, 8).first, 1065, 1e-9);
    EXPECT_NEAR(At(7, 8).second, 440, 1e-9);
}

TEST_F(FullInverseTest, SubtractsThePixelOriginAfterTheDivision) {
    rig.ctrl->devOffX = 5;
    rig.ctrl->devOffY = 6;
    EXPECT_NEAR(At(7, 8).first, 65, 1e-9);    // 70 - 5
    EXPECT_NEAR(At(7, 8).second, -74, 1e-9);  // -(80 - 6)
}

TEST_F(FullInverseTest, TurnsBackByTheCoarseDegree) {
    rig.SetView(1000, -500);
    rig.View().Rotate = 30;
    const double a = 30 * kDegree;  // RotateView with -30 turns by a = -(-30) * the factor
    const double x = 70 + 1000, y = 80 - 500;
    EXPECT_NEAR(At(7, 8).first, std::cos(a) * x - std::sin(a) * y, 1e-9);
    EXPECT_NEAR(At(7, 8).second, -(std::sin(a) * x + std::cos(a) * y), 1e-9);
}

TEST_F(FullInverseTest, LeadsBackToTheMapPointThatDrawingPutThere) {
    rig.SetView(-321, 456);
    rig.View().Rotate = 200;
    const DeviceTransform transform(rig.View(), rig.ctrl->viewX, rig.ctrl->viewY, 0, 0, 0, 0);
    for (const auto& [mapX, mapY] : {std::pair{1234.0, -777.0}, {-5000.0, 42.0}, {0.0, 0.0}}) {
        const Point at = transform.ToDevice(mapX, mapY);
        const auto back = At(at.x, at.y);
        EXPECT_NEAR(back.first, mapX, 20) << "up to one pixel a turned axis, and a pixel is 10 units";
        EXPECT_NEAR(back.second, mapY, 20);
    }
}

TEST_F(FullInverseTest, OfAWorldWithoutSizeTouchesNothingOfTheControl) {
    const std::string before = DumpView(*rig.ctrl);
    rig.View().ScaleX = rig.View().ScaleY = 0;
    At(1, 1);
    rig.View().Zoom = 0;
    At(1, 1);
    rig.View().ScaleX = rig.View().ScaleY = 1;
    rig.View().Zoom = 10000;
    EXPECT_EQ(DumpView(*rig.ctrl), before);
}

// --- JumpTo: the view is 8000 wide and 6000 high -----------------------------------------------------------------------------

TEST_F(ViewTest, AJumpInsideTheStartingLimitsCentresAndComposes) {
    rig.ctrl->JumpTo(5000, 5000);
    EXPECT_EQ(rig.ctrl->viewX, 1000);   // 5000 - 4000
    EXPECT_EQ(rig.ctrl->viewY, -8000);  // -5000 - 3000
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_FALSE(rig.ctrl->Modified());
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

TEST_F(ViewTest, AJumpToThirtyThousandFailsTheTestAndTheViewStaysButIsRepainted) {
    rig.SetView(100, 200);
    rig.ctrl->JumpTo(30000, 0);
    EXPECT_EQ(rig.ctrl->viewX, 100);
    EXPECT_EQ(rig.ctrl->viewY, 200);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(ViewTest, AJumpThatFailsTheTestStillRunsTheClamps) {
    rig.SetView(15000, -12000);
    rig.ctrl->JumpTo(30000, 0);
    EXPECT_EQ(rig.ctrl->viewX, 12000) << "20000 - 8000";
    EXPECT_EQ(rig.ctrl->viewY, -10000) << "the top limit";
}

TEST_F(ViewTest, AJumpTakesAContextOfItsOwnAndGivesItBack) {
    const std::int32_t acquired = rig.window.acquireCnt;
    rig.ctrl->JumpTo(0, 0);
    EXPECT_EQ(rig.window.acquireCnt, acquired + 1);
}

TEST_F(ViewTest, TheJumpComparesXWithTopAndBottomAndYWithLeftAndRight) {
    rig.View().Zoom = 1;  // a view of 0.8 by 0.6, so that the clamps hide no jump
    const auto jumped = [&](double x, double y) {
        rig.SetView(1, 1);
        rig.ctrl->JumpTo(x, y);
        return rig.ctrl->viewX != 1 || rig.ctrl->viewY != 1;
    };
    rig.SetArea(-1e5, 1e5, -50, 50);
    EXPECT_FALSE(jumped(100, 0)) << "left and right would allow x = 100, top and bottom do not";
    EXPECT_TRUE(jumped(0, 90000)) << "top and bottom would not allow y = 90000, left and right do";
    rig.SetArea(-50, 50, -1e5, 1e5);
    EXPECT_TRUE(jumped(100, 0));
    EXPECT_FALSE(jumped(0, 100));
    EXPECT_TRUE(jumped(100, 40));
}

TEST_F(ViewTest, APointOnALimitIsOutside) {
    rig.SetArea(-300, 400, -100, 200);  // left right top bottom
    rig.View().Zoom = 1;                // a view of 0.8 by 0.6, so that the clamps hide no jump
    const auto jumped = [&](double x, double y) {
        rig.SetView(-250, -50);
        rig.ctrl->JumpTo(x, y);
        return rig.ctrl->viewX != -250 || rig.ctrl->viewY != -50;
    };
    EXPECT_FALSE(jumped(-100, 0)) << "x on top";
    EXPECT_FALSE(jumped(200, 0)) << "x on bottom";
    EXPECT_FALSE(jumped(0, 300)) << "flipped y on left";
    EXPECT_FALSE(jumped(0, -400)) << "flipped y on right";
    EXPECT_TRUE(jumped(-99.9, 0));
    EXPECT_TRUE(jumped(199.9, 0));
    EXPECT_TRUE(jumped(0, 299.9));
    EXPECT_TRUE(jumped(0, -399.9));
}

TEST_F(ViewTest, RightAndBottomHoldTheViewThenLeftAndTopWin) {
    rig.SetArea(-10000, 10000, -9000, 9000);
    rig.ctrl->JumpTo(8000, -8000);
    EXPECT_EQ(rig.ctrl->viewX, 2000) << "4000 + 8000 exceeds 10000";
    EXPECT_EQ(rig.ctrl->viewY, 3000) << "5000 + 6000 exceeds 9000";
    rig.ctrl->JumpTo(-8000, 8000);
    EXPECT_EQ(rig.ctrl->viewX, -10000) << "-12000 is below";
    EXPECT_EQ(rig.ctrl->viewY, -9000) << "-11000 is below";
    rig.SetArea(-1000, 1000, -900, 900);
    rig.ctrl->JumpTo(0, 0);
    EXPECT_EQ(rig.ctrl->viewX, -1000) << "1000 - 8000, then the left limit";
    EXPECT_EQ(rig.ctrl->viewY, -900);
}

TEST_F(ViewTest, EachClampHasItsOwnLimit) {
    rig.SetArea(-10000, 10000, -9000, 9000);
    rig.ctrl->JumpTo(5500, -6500);
    EXPECT_EQ(rig.ctrl->viewX, 1500) << "1500 + 8000 is within 10000";
    EXPECT_EQ(rig.ctrl->viewY, 3000) << "3500 + 6000 exceeds 9000";
    rig.ctrl->JumpTo(-5500, 6500);
    EXPECT_EQ(rig.ctrl->viewX, -9500) << "above -10000";
    EXPECT_EQ(rig.ctrl->viewY, -9000) << "-9500 is below -9000";
}

TEST_F(ViewTest, AJumpTurnsThePointBeforeItTestsAndCentres) {
    rig.View().Rotate = 30;
    rig.ctrl->JumpTo(1000, 2000);
    const double a = -30 * kDegree;
    EXPECT_NEAR(rig.ctrl->viewX, std::cos(a) * 1000 - std::sin(a) * -2000 - 4000, 1e-9);
    EXPECT_NEAR(rig.ctrl->viewY, std::sin(a) * 1000 + std::cos(a) * -2000 - 3000, 1e-9);
}

TEST_F(ViewTest, AJumpBeforeTheFirstPaintMovesTheViewAndDrawsNothing) {
    ControlRig fresh;
    fresh.ctrl->RDMInit();
    fresh.ctrl->JumpTo(500, 700);
    EXPECT_EQ(fresh.ctrl->viewX, 500) << "a view without size is centred on its corner";
    EXPECT_EQ(fresh.ctrl->viewY, -700);
    EXPECT_THAT(fresh.Verbs(), IsEmpty());
    EXPECT_EQ(fresh.State(), 0);
}

TEST_F(ViewTest, AJumpToNowhereStoresNoNaN) {
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    for (const auto& [x, y] : {std::pair{nan, 0.0}, {0.0, nan}, {inf, 0.0}, {0.0, -inf}, {nan, inf}}) {
        rig.SetView(10, 20);
        rig.ctrl->JumpTo(x, y);
        EXPECT_EQ(rig.ctrl->viewX, 10);
        EXPECT_EQ(rig.ctrl->viewY, 20);
    }
    rig.View().Rotate = nan;
    rig.ctrl->JumpTo(1, 1);
    EXPECT_EQ(rig.ctrl->viewX, 10);
}

// --- MapJumpToData -----------------------------------------------------------------------------------------------------------

class JumpToDataTest : public ViewTest {
protected:
    JumpToDataTest() {
        rig.AddLine("A", {{10, 20}, {30, 60}, {50, 10}}, 1000, -2000);
        rig.AddItem("A", 2, {{0, 0}, {1, 1}});
        rig.AddLine("B", {{0, 0}, {1, 1}});
        rig.Item("A", 1).active = 1;
        rig.Item("B", 0).active = 1;
    }
    std::vector<int> Active() { return {rig.Item("A", 0).active, rig.Item("A", 1).active, rig.Item("B", 0).active}; }
};

TEST_F(JumpToDataTest, GoesToTheMeanOfThePointsInMapSense) {
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh, 1, false);
    EXPECT_EQ(rig.ctrl->viewX, 1030 - 4000);  // (1010 + 1030 + 1050) / 3
    EXPECT_EQ(rig.ctrl->viewY, 1970 - 3000);  // -(-1980 - 1940 - 1990) / 3
    EXPECT_EQ(rig.VerbsWith("window "), ScreenCopy()) << "it repaints";
    EXPECT_THAT(Active(), ElementsAre(0, 1, 1)) << "the others keep their flags";
}

TEST_F(JumpToDataTest, WithoutActivationTakesTheItemOutOfTheActiveSet) {
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh, 2, false);
    EXPECT_THAT(Active(), ElementsAre(0, 0, 1));
}

TEST_F(JumpToDataTest, WithActivationMakesItTheOnlyActiveOne) {
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh, 1, true);
    EXPECT_THAT(Active(), ElementsAre(1, 0, 0));
}

TEST_F(JumpToDataTest, OfMissingDataClearsTheActiveSetAndDoesNoMore) {
    rig.SetView(15000, 0);  // would be clamped by a jump
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh, 99, true);
    EXPECT_THAT(Active(), ElementsAre(0, 0, 0));
    EXPECT_EQ(rig.ctrl->viewX, 15000);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    rig.Item("B", 0).active = 1;
    rig.ctrl->MapJumpToData("none", ControlRig::kMesh, 1, true);
    EXPECT_THAT(Active(), ElementsAre(0, 0, 0));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(JumpToDataTest, OfMissingDataWithoutActivationDoesNothing) {
    const std::string before = DumpView(*rig.ctrl) + DumpStore(rig.ctrl->store);
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh + 1, 1, false);
    rig.ctrl->MapJumpToData("", ControlRig::kMesh, 1, false);
    EXPECT_EQ(DumpView(*rig.ctrl) + DumpStore(rig.ctrl->store), before);
}

TEST_F(JumpToDataTest, OfARepeatedIdMeetsTheFirstItem) {
    rig.AddItem("A", 1, {{500, 500}});
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh, 1, true);
    EXPECT_EQ(rig.ctrl->viewX, 1030 - 4000);
    EXPECT_EQ(rig.Item("A", 0).active, 1);
    EXPECT_EQ(rig.Item("A", 2).active, 0);
}

TEST_F(JumpToDataTest, OfAnItemWithoutPointsClampsAndRepaintsTheViewAsItIs) {
    rig.AddItem("A", 7, {});
    rig.SetView(15000, 200);
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh, 7, true);
    EXPECT_EQ(rig.Item("A", 2).active, 1);
    EXPECT_EQ(rig.ctrl->viewX, 12000) << "only the clamp: 20000 - 8000";
    EXPECT_EQ(rig.ctrl->viewY, 200);
    EXPECT_EQ(rig.VerbsWith("base PatBlt"), Lines{"base PatBlt 0 0 800 600 0xFF0062"});
}

TEST_F(JumpToDataTest, OfPointsThatAreNoNumbersStoresNone) {
    rig.AddItem("A", 8, {{std::nan(""), 1}, {std::numeric_limits<double>::infinity(), 2}});
    rig.SetView(10, 20);
    rig.ctrl->MapJumpToData("A", ControlRig::kMesh, 8, true);
    EXPECT_EQ(rig.ctrl->viewX, 10);
    EXPECT_EQ(rig.ctrl->viewY, 20);
}

}  // namespace
}  // namespace orvane
