// Fitting the view to all data. The client area is 800 x 600 pixels of a screen with 1000 dots a metre.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/control_rig.h"
#include "tests/support/store_test_access.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FitTest : public testing::Test {
protected:
    FitTest() {
        rig.Start();
        rig.SetArea(-1e7, 1e7, -1e7, 1e7);
    }
    void ExpectNothingHappens(std::int32_t rate = 0) {
        const std::string before = DumpView(*rig.ctrl);
        rig.ctrl->DspFit(rate);
        EXPECT_EQ(DumpView(*rig.ctrl), before);
        EXPECT_THAT(rig.Verbs(), IsEmpty());
        EXPECT_THAT(rig.events.Zooms(), IsEmpty());
    }
    ControlRig rig;
};

TEST_F(FitTest, OfAnEmptyMapChangesNothingAndFiresNothing) {
    ExpectNothingHappens();
    ExpectNothingHappens(10);
}

TEST_F(FitTest, OfASinglePointChangesNothing) {
    rig.AddLine("A", {{500, 700}});
    ExpectNothingHappens();
    ExpectNothingHappens(50);
}

TEST_F(FitTest, OfALineWithoutHeightOrWidthChangesNothing) {
    rig.AddLine("A", {{0, 700}, {4000, 700}});
    ExpectNothingHappens();
    rig.ctrl->RDMInit();
    rig.Paint();
    rig.Forget();
    rig.AddLine("A", {{100, 0}, {100, 3000}});
    ExpectNothingHappens();
}

TEST_F(FitTest, TakesTheLargerZoomOfTheTwoAxesAndCentres) {
    rig.AddLine("A", {{0, 0}, {4000, 1500}});
    rig.ctrl->DspFit(0);
    // 4000 / 800 * 1000 = 5000 and 1500 / 600 * 1000 = 2500. At 5000 the view is 4000 x 3000, centred on (2000, 750).
    EXPECT_EQ(rig.View().Zoom, 5000);
    EXPECT_EQ(rig.ctrl->viewX, 0);
    EXPECT_EQ(rig.ctrl->viewY, -2250);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(5000));
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("base Polyline [(0,450) (800,150)]"));  // 5 units a pixel
    EXPECT_FALSE(rig.ctrl->Modified()) << "unlike a write of the property";

    rig.AddLine("B", {{0, 0}, {1000, 6000}});
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 10000);  // now 6000 / 600 * 1000
    EXPECT_EQ(rig.ctrl->viewX, 2000 - 4000);
    EXPECT_EQ(rig.ctrl->viewY, -3000 - 3000);
}

TEST_F(FitTest, RoundsTheZoomToTheNearestWholeNumber) {
    rig.AddLine("A", {{0, 0}, {1000, 0.5}});
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 1250);  // 1000 / 800 * 1000
    rig.AddLine("B", {{0, 0}, {1001.3, 0.5}});
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 1252);  // 1251.625
}

TEST(FitBits, DividesByThePixelsBeforeItMultipliesByTheDots) {
    // Widths so close to a half that 3779 dots a metre round them the other way when taken before the division.
    for (const auto& [width, zoom] : {std::pair{1.1643291876157713, 5}, {0.952632971685631, 5}, {3.7046837787774543, 17}}) {
        ControlRig rig{DeviceNumbers{}};
        rig.Start();
        rig.AddLine("A", {{0, 0}, {width, 0.5}});
        rig.ctrl->DspFit(0);
        EXPECT_EQ(rig.View().Zoom, zoom) << width;
        EXPECT_NE(static_cast<int>(width * 3779 / 800 + 0.5), zoom) << "or these figures tell nothing";
    }
}

TEST_F(FitTest, AnAxisThatRoundsToNothingCountsAsNone) {
    rig.AddLine("A", {{0, 0}, {1000, 0.0002}});  // 0.0002 / 600 * 1000 = 0.0003
    ExpectNothingHappens();
}

TEST_F(FitTest, TheZoomStandsAtItsNewValueAndTheViewStillAtItsOldWhenTheEventFires) {
    rig.AddLine("A", {{0, 0}, {4000, 1500}});
    rig.SetView(77, 88);
    double x = 0;
    std::int32_t zoom = 0;
    rig.events.onEvent = [&](std::int32_t) {
        x = rig.ctrl->viewX;
        zoom = rig.View().Zoom;
    };
    rig.ctrl->DspFit(0);
    EXPECT_EQ(zoom, 5000);
    EXPECT_EQ(x, 77);
}

TEST_F(FitTest, SpansAllBlocksByTheirOriginsHiddenOnesTooInAnyOrder) {
    struct Corner {
        double GX, GY;
    };
    // Each side is set by another block: x from -1000 to 3000, y from 200 to 1700.
    Corner corners[] = {{-1000, 500}, {2900, 600}, {500, 200}, {400, 1600}};
    for (int first = 0; first < 4; ++first) {
        ControlRig turned;
        turned.Start();
        turned.SetArea(-1e7, 1e7, -1e7, 1e7);
        for (int i = 0; i < 4; ++i) {
            const Corner& corner = corners[(first + i) % 4];
            turned.AddLine(std::to_string(i), {{0, 0}, {100, 100}}, corner.GX, corner.GY);
            turned.ctrl->store.SetLayDspFlg(std::to_string(i), i % 2 == 0);
        }
        turned.ctrl->DspFit(0);
        EXPECT_EQ(turned.View().Zoom, 5000);
        EXPECT_EQ(turned.ctrl->viewX, 1000 - 2000);
        EXPECT_EQ(turned.ctrl->viewY, -950 - 1500);
    }
}

TEST_F(FitTest, LeavesOutBlocksWithoutData) {
    rig.AddLine("A", {{1000, 1000}, {5000, 2500}});
    ASSERT_TRUE(rig.ctrl->store.DigMemAlloc2("B", ControlRig::kMesh, kLayLine, "", 1, -100000, -100000));
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 5000);
}

TEST_F(FitTest, LeavesOutWhatIsInNoIndexSlot) {
    rig.AddLine("A", {{0, 0}, {100000, 100000}});
    ASSERT_TRUE(StoreTestAccess::BreakSlot(rig.ctrl->store, 0));
    ExpectNothingHappens();
}

TEST_F(FitTest, AMarginIsAPercentageOfEachSideOnEachSide) {
    rig.AddLine("A", {{0, 0}, {4000, 1500}});
    rig.ctrl->DspFit(10);
    EXPECT_EQ(rig.View().Zoom, 6000);  // (4000 + 2 * 400) / 800 * 1000
    EXPECT_EQ(rig.ctrl->viewX, 2000 - 2400);
    EXPECT_EQ(rig.ctrl->viewY, -750 - 1800);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(6000));
    rig.ctrl->DspFit(1);
    EXPECT_EQ(rig.View().Zoom, 5100);
}

TEST_F(FitTest, ARateAboveFiftyCountsAsFiftyAndBelowOneAsNone) {
    rig.AddLine("A", {{0, 0}, {4000, 1500}});
    for (const auto& [rate, zoom] : {std::pair{50, 10000}, {80, 10000}, {2147483647, 10000}, {0, 5000}, {-5, 5000}}) {
        rig.ctrl->DspFit(rate);
        EXPECT_EQ(rig.View().Zoom, zoom) << rate;
    }
}

TEST_F(FitTest, MayLeaveTheRangeOfTheZoomProperty) {
    rig.AddLine("A", {{0, 0}, {80000000, 100}});
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 100000000);  // 80000000 / 800 * 1000
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(100000000));
}

TEST_F(FitTest, JumpsByTheCrossedTestOfTheLimits) {
    rig.AddLine("A", {{0, 0}, {4000, 1500}});
    rig.SetArea(-1e7, 1e7, -1e7, 1000);  // the centre's x of 2000 exceeds the bottom limit
    rig.SetView(55, -4000);
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 5000);
    EXPECT_EQ(rig.ctrl->viewX, 55);
    EXPECT_EQ(rig.ctrl->viewY, -4000);
}

TEST_F(FitTest, OfAWindowWithoutWidthOrHeightChangesNothing) {
    rig.AddLine("A", {{0, 0}, {4000, 1500}});
    rig.window.Resize(0, 600);
    ExpectNothingHappens();
    rig.window.Resize(800, 0);
    ExpectNothingHappens();
}

TEST_F(FitTest, OfAWindowOfOnePixelIsAFit) {
    rig.AddLine("A", {{0, 0}, {4, 2}});
    rig.window.Resize(1, 600);
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 4000);
    rig.window.Resize(800, 1);
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 2000);
}

TEST(FitBeforeTheFirstPaint, ChangesNothingBecauseNothingTellsHowLargeAPixelIs) {
    ControlRig rig;
    rig.ctrl->RDMInit();
    rig.AddLine("A", {{0, 0}, {4000, 1500}});
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 10000);
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

TEST_F(FitTest, OfDataBeyondThirtyTwoBitsSaturates) {
    rig.AddLine("A", {{-1e12, -1e12}, {1e12, 1e12}});
    rig.ctrl->DspFit(0);
    EXPECT_EQ(rig.View().Zoom, 2147483647);
    EXPECT_TRUE(std::isfinite(rig.ctrl->viewX) && std::isfinite(rig.ctrl->viewY));
}

TEST_F(FitTest, OfEndlessDataStoresNoNaN) {
    const double inf = std::numeric_limits<double>::infinity();
    rig.AddLine("A", {{-inf, -inf}, {inf, inf}});
    rig.AddLine("B", {{std::nan(""), 0}, {1, std::nan("")}});
    rig.ctrl->DspFit(10);
    rig.ctrl->DspFit(0);
    EXPECT_TRUE(std::isfinite(rig.ctrl->viewX) && std::isfinite(rig.ctrl->viewY));
    EXPECT_GE(rig.View().Zoom, 1);
}

}  // namespace
}  // namespace orvane
