// Raster slots as a host drives them, with servers that write down what they are asked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/cp932.h"
#include "tests/support/control_rig.h"
#include "tests/support/raster_log.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RasterTest : public testing::Test {
protected:
    RasterTest() {
        Rasters().SetMaker(log.Maker());
        rig.StartOneToOne();
    }
    ~RasterTest() override { log.host = nullptr; }  // the servers outlive what a test gave it to refer to
    RasterSlots& Rasters() { return rig.ctrl->rasters; }
    bool Init(std::int32_t count) { return Rasters().RastInit(count, rig.window); }
    bool Load(std::int32_t index) { return Rasters().RastLoad(index, "map.tif", rig.window); }
    /// A table with images in the given slots; what they were asked is forgotten.
    void Show(std::int32_t count, std::initializer_list<std::int32_t> indices) {
        ASSERT_TRUE(Init(count));
        for (const std::int32_t index : indices) ASSERT_TRUE(Load(index));
        log.lines.clear();
    }
    std::vector<std::string> Draws() {
        std::vector<std::string> draws;
        for (const std::string& line : log.Take()) {
            if (line.find("SrvDraw") != std::string::npos) draws.push_back(line);
        }
        return draws;
    }
    std::string LastMessage() { return rig.window.messages.empty() ? "" : rig.window.messages.back().text; }

    RasterLog log;
    ControlRig rig;
};

TEST_F(RasterTest, InitTwiceWithoutTermIsRefusedAndTheTableStays) {
    Show(2, {1});
    EXPECT_FALSE(Init(5));
    EXPECT_EQ(Rasters().Count(), 2);
    EXPECT_TRUE(Rasters().RastClose(1));
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvClose"));
}

TEST_F(RasterTest, InitOfZeroIsTrueAndARealCountMayFollow) {
    EXPECT_TRUE(Init(0));
    EXPECT_TRUE(Rasters().IsOn());
    EXPECT_FALSE(Rasters().RastTerm()) << "there are no slots";
    EXPECT_FALSE(Load(0));
    EXPECT_TRUE(Init(3));
    EXPECT_EQ(Rasters().Count(), 3);
}

TEST_F(RasterTest, TermWithNoTableIsFalse) { EXPECT_FALSE(Rasters().RastTerm()); }

TEST_F(RasterTest, LoadBehindTheLastSlotIsFalse) {
    ASSERT_TRUE(Init(2));
    EXPECT_FALSE(Load(2));
    EXPECT_FALSE(Load(-1));
    EXPECT_EQ(log.made, 0);
    EXPECT_THAT(rig.window.messages, IsEmpty());
}

TEST_F(RasterTest, EveryIndexOutOfRangeIsRefusedByEveryCall) {
    Show(2, {0, 1});
    for (const std::int32_t index : {-2147483647 - 1, -1, 2, 2147483647}) {
        std::int32_t width = 5;
        std::int32_t height = 6;
        EXPECT_FALSE(Rasters().RastClose(index));
        EXPECT_FALSE(Rasters().RastSetCP1(index, 1, 2, 3, 4));
        EXPECT_FALSE(Rasters().RastSetCP2(index, 1, 2, 3, 4));
        EXPECT_FALSE(Rasters().RastCalcCorrect2(index));
        EXPECT_FALSE(Rasters().RastSetDispFlg(index, false));
        EXPECT_FALSE(Rasters().RastImageSize(index, width, height));
        EXPECT_EQ(width, 5);
        EXPECT_EQ(height, 6);
    }
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(RasterTest, NegativeCountCannotBeHadAndIsTold) {
    EXPECT_FALSE(Init(-1));
    EXPECT_EQ(LastMessage(), "ERROR 6410 : Raster area allocation error!");
    EXPECT_EQ(rig.window.messages.back().icon, MessageIcon::None);
    EXPECT_FALSE(Rasters().IsOn());
    EXPECT_EQ(Rasters().Count(), 0);
}

TEST_F(RasterTest, TheGreatestCountTakesNoMemoryAndItsLastSlotWorks) {
    ASSERT_TRUE(Init(2147483647));
    EXPECT_TRUE(Load(2147483646));
    EXPECT_TRUE(Load(5));
    log.lines.clear();
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(Draws(), ElementsAre(testing::StartsWith("2 SrvDraw"), testing::StartsWith("1 SrvDraw"))) << "slot 5 first";
    EXPECT_TRUE(Rasters().RastTerm());
}

TEST_F(RasterTest, TheFirstLoadMakesTheServerAndLaterOnesGoToTheSame) {
    ASSERT_TRUE(Init(1));
    EXPECT_TRUE(Load(0));
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvInit", "1 SrvLoad map.tif"));
    EXPECT_TRUE(Load(0));
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvLoad map.tif")) << "with no close in between";
}

TEST_F(RasterTest, WithoutAServerTheMessageIsShownAndTheVectorMapWorksOn) {
    Rasters().SetMaker(nullptr);
    ASSERT_TRUE(Init(1));
    EXPECT_FALSE(Load(0));
    const std::string words =
        "OV4Raster.DLL \xE3\x82\x92\xE3\x83\xAC\xE3\x82\xB8\xE3\x82\xB9\xE3\x83\x88\xE3\x83\xAA\xE7\x99\xBB"
        "\xE9\x8C\xB2\xE3\x81\x97\xE3\x81\xA6\xE4\xB8\x8B\xE3\x81\x95\xE3\x81\x84\xE3\x80\x82";
    EXPECT_EQ(DecodeCp932(LastMessage()), words);
    rig.AddLine("L", {{0, 0}, {100, -100}});
    rig.Forget();
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(rig.VerbsWith("Polyline"), testing::SizeIs(1));
    Rasters().SetMaker(log.Maker());
    EXPECT_TRUE(Load(0)) << "the slot stays empty, and a later load tries again";
}

TEST_F(RasterTest, AServerThatCannotBeInitialisedStaysInItsSlot) {
    ASSERT_TRUE(Init(1));
    log.answers["SrvInit"] = false;
    EXPECT_FALSE(Load(0));
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvInit"));
    log.answers.clear();
    EXPECT_TRUE(Load(0));
    EXPECT_EQ(log.made, 1);
}

TEST_F(RasterTest, AnEmptySlotKeepsItsSwitchForAServerThatCannotBeInitialised) {
    ASSERT_TRUE(Init(3));
    EXPECT_TRUE(Rasters().RastSetDispFlg(2, true));
    EXPECT_TRUE(Rasters().RastSetDispFlg(0, false));
    rig.ctrl->RDMReDraw();
    Rasters().RastRotateAll(30);
    EXPECT_THAT(log.Take(), ElementsAre()) << "a slot without an instance is asked nothing";
    log.answers["SrvInit"] = false;
    EXPECT_FALSE(Load(2));
    EXPECT_FALSE(Load(0));
    log.lines.clear();
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(Draws(), testing::SizeIs(1)) << "of the slot that was switched on";
    EXPECT_TRUE(Rasters().RastTerm());
    ASSERT_TRUE(Init(3));
    EXPECT_FALSE(Load(2));
    log.lines.clear();
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(Draws(), testing::IsEmpty()) << "a new table begins switched off";
}

TEST_F(RasterTest, ALoadThatFailsStillShowsTheSlot) {
    ASSERT_TRUE(Init(1));
    log.answers["SrvLoad"] = false;
    EXPECT_FALSE(Load(0));
    log.lines.clear();
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(Draws(), testing::SizeIs(1));
}

TEST_F(RasterTest, CloseAnswersTrueWhateverTheServerSaysAndTheSlotIsStillAskedToDraw) {
    Show(1, {0});
    log.answers["SrvClose"] = false;
    EXPECT_TRUE(Rasters().RastClose(0));
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvClose"));
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(Draws(), testing::SizeIs(1));
}

TEST_F(RasterTest, ControlPointsAndTheCorrectionAnswerTrueWhateverTheServerSays) {
    Show(1, {0});
    log.answers = {{"SrvSetCP1", false}, {"SrvSetCP2", false}, {"SrvCalcCorrect2", false}};
    EXPECT_TRUE(Rasters().RastSetCP1(0, 1, 2, 3.5, 4.5));
    EXPECT_TRUE(Rasters().RastSetCP2(0, 10, 20, 30, 40));
    EXPECT_TRUE(Rasters().RastCalcCorrect2(0));
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvSetCP1 1 2 3.5 4.5", "1 SrvSetCP2 10 20 30 40", "1 SrvCalcCorrect2"));
}

TEST_F(RasterTest, AnEmptySlotIsValidAndReadsAsNoImage) {
    ASSERT_TRUE(Init(1));
    std::int32_t width = 5;
    std::int32_t height = 6;
    EXPECT_TRUE(Rasters().RastImageSize(0, width, height));
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
    EXPECT_TRUE(Rasters().RastClose(0));
    EXPECT_TRUE(Rasters().RastSetCP1(0, 1, 2, 3, 4));
    EXPECT_TRUE(Rasters().RastCalcCorrect2(0));
}

TEST_F(RasterTest, TheSizeOfAnImageIsTheServers) {
    Show(1, {0});
    std::int32_t width = 0;
    std::int32_t height = 0;
    EXPECT_TRUE(Rasters().RastImageSize(0, width, height));
    EXPECT_EQ(width, 641);
    EXPECT_EQ(height, 481);
}

TEST_F(RasterTest, HiddenSlotsAreNotAskedToDraw) {
    Show(2, {0, 1});
    EXPECT_TRUE(Rasters().RastSetDispFlg(0, false));
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(Draws(), ElementsAre(testing::StartsWith("2 SrvDraw")));
}

TEST_F(RasterTest, AWholeFrameAsksOnceForTheClientAreaInMapSense) {
    Show(1, {0});
    rig.SetView(1000, -2000);
    rig.ctrl->RDMReDraw();
    // At one map unit a pixel: the view's corner is (1000, 2000) on the map, y to the north.
    EXPECT_THAT(Draws(), ElementsAre("1 SrvDraw 1000 2000 1800 1400 0 0 800 600 0 0 1"));
}

TEST_F(RasterTest, LaterSlotsPaintOverEarlierOnes) {
    Show(3, {2, 0, 1});
    rig.ctrl->RDMReDraw();
    // Numbered as they were loaded, asked as they stand.
    EXPECT_THAT(Draws(), ElementsAre(testing::StartsWith("2 "), testing::StartsWith("3 "), testing::StartsWith("1 ")));
}

TEST_F(RasterTest, TheRasterOnTopIsDrawnAfterTheLayersAndTheTableIsNotTouched) {
    Show(1, {0});
    rig.AddLine("L", {{0, 0}, {100, -100}});
    std::vector<std::string> order;
    log.host = [&](const std::string& call) { order.push_back(call + std::to_string(rig.VerbsWith("Polyline").size())); };
    rig.ctrl->rastOnTop = 0;
    rig.Forget();
    rig.ctrl->RDMReDraw();
    rig.ctrl->rastOnTop = 1;
    rig.Forget();
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(order, ElementsAre("SrvDraw0", "SrvDraw1"));
    EXPECT_EQ(Rasters().Count(), 1);
}

TEST_F(RasterTest, AScrollAsksForBothStripsAndAServerThatFailsOneGetsTheOther) {
    Show(1, {0});
    log.answers["SrvDraw"] = false;
    rig.ctrl->MoveView(10, 20, true);
    const std::vector<std::string> draws = Draws();
    ASSERT_EQ(draws.size(), 2u);
    // The right 10 columns and the bottom 20 rows, each a little wider as the scroll uncovers it.
    EXPECT_NE(draws[0], draws[1]);
    EXPECT_THAT(draws[0], testing::HasSubstr(" 800 600 "));
    EXPECT_THAT(draws[1], testing::HasSubstr(" 800 600 "));
}

TEST_F(RasterTest, TheStripsOfAScrollAreToldWithTheirOwnMapRectanglesAndTheFractionThatIsPending) {
    Show(1, {0});
    rig.ctrl->rastOnTop = 0;
    rig.SetView(10.25, 20.5);
    const auto dc = rig.window.AcquireDC();
    rig.ctrl->RedrawScroll(*dc, 0, 0);
    // 10.25 pixels to the right are 10 and a quarter pending; 20.5 down round to 21, half a pixel too much.
    EXPECT_THAT(Draws(), ElementsAre("1 SrvDraw 800.25 -20.5 810.25 -620.5 790 0 800 600 0.25 -0.5 1",
                                     "1 SrvDraw 10.25 -599.5 810.25 -620.5 0 579 800 600 0.25 -0.5 1"));
}

TEST_F(RasterTest, AStripOutsideTheClientAreaIsNotAskedForUnlessTheTwoAreAlike) {
    Show(1, {0});
    const auto dc = rig.window.AcquireDC();
    struct Case {
        Rect client, strip;
        bool asked;
    };
    for (const Case& c : {
             Case{{0, 0, 800, 600}, {799, 599, 900, 700}, true},     // one pixel in common
             Case{{0, 0, 800, 600}, {800, 0, 900, 600}, false},      // side by side
             Case{{0, 0, 800, 600}, {0, 0, 0, 600}, false},          // without width, 0 is not alike 800
             Case{{0, 0, 0, 0}, {0, 0, 0, 0}, true},                 // both empty: a side of 0 is alike
             Case{{0, 0, 0, 600}, {0, 0, 0, 594}, true},             // 594 / 600 is 0.99
             Case{{0, 0, 0, 600}, {0, 0, 0, 593}, false},            // less than that
             Case{{995, 0, 1000, 10}, {1000, 0, 1005, 10}, true},    // side by side, each edge within one per cent
             Case{{989, 0, 1000, 10}, {1000, 0, 1005, 10}, false},   // the left edges are not
             Case{{995, 0, 1000, 10}, {1000, 10, 1005, 20}, false},  // nor are the lower ones here
         }) {
        rig.ctrl->rasters.RastDraw(rig.View(), {dc.get(), dc.get(), 0, 0, c.client, c.strip, c.strip, 0, 0});
        EXPECT_THAT(Draws(), testing::SizeIs(c.asked ? 1 : 0)) << c.strip.left << ' ' << c.strip.bottom;
    }
    // One strip that is passed over leaves the other to be asked for.
    rig.ctrl->rasters.RastDraw(rig.View(),
                               {dc.get(), dc.get(), 0, 0, {0, 0, 800, 600}, {800, 0, 900, 600}, {0, 500, 800, 600}, 0, 0});
    EXPECT_THAT(Draws(), ElementsAre("1 SrvDraw 0 -500 800 -600 0 500 800 600 0 0 1"));
}

TEST_F(RasterTest, StripsWithTheirCornersInAnotherOrderAreSetRight) {
    Show(1, {0});
    const auto dc = rig.window.AcquireDC();
    rig.ctrl->rasters.RastDraw(rig.View(),
                               {dc.get(), dc.get(), 5, 7, {0, 0, 800, 600}, {800, 600, 790, 0}, {800, 580, 0, 600}, 0, 0});
    EXPECT_THAT(Draws(),
                ElementsAre("1 SrvDraw 795 -7 805 -607 790 0 800 600 0 0 1", "1 SrvDraw 5 -587 805 -607 0 580 800 600 0 0 1"));
    rig.ctrl->rasters.RastDraw(rig.View(),
                               {dc.get(), dc.get(), 0, 0, {0, 0, 800, 600}, {800, 600, 790, 0}, {790, 0, 800, 600}, 0, 0});
    EXPECT_THAT(Draws(), testing::SizeIs(1)) << "then they are one strip";
}

TEST_F(RasterTest, EqualStripsAreDrawnOnceAndStripsThatDifferInAnyCoordinateTwice) {
    Show(1, {0});
    const auto dc = rig.window.AcquireDC();
    const Rect first{100, 100, 200, 200};
    const auto count = [&](const Rect& second) {
        rig.ctrl->rasters.RastDraw(rig.View(), {dc.get(), dc.get(), 0, 0, {0, 0, 800, 600}, first, second, 0, 0});
        return Draws().size();
    };
    EXPECT_EQ(count(first), 1u);
    for (const Rect& other :
         {Rect{101, 100, 200, 200}, Rect{100, 101, 200, 200}, Rect{100, 100, 201, 200}, Rect{100, 100, 200, 201}}) {
        EXPECT_EQ(count(other), 2u);
    }
}

TEST_F(RasterTest, AHostsOwnContextGetsTheRasterBelowOrAboveTheLayersAroundItsOwnCentre) {
    Show(1, {0});
    rig.AddLine("L", {{1000, 2000}, {1050, 1980}});
    std::vector<std::string> order;
    ForeignContext host{ThousandDots()};
    log.host = [&](const std::string& call) { order.push_back(call + std::to_string(host.VerbsWith("Polyline").size())); };
    rig.SetView(1000, -2000);
    for (const std::int32_t onTop : {0, 1}) {
        rig.ctrl->rastOnTop = onTop;
        // The picture is centred on the view's corner: 200 and 150 pixels to either side of it.
        rig.ctrl->UserDcDraw(host.handle, 0, 0, 400, 300, 1);
        EXPECT_THAT(Draws(), ElementsAre("1 SrvDraw 800 2150 1200 1850 0 0 400 300 0 0 1"));
        host.verbs->Clear();
        // At half the size, with a rectangle that does not begin at 0: top 1, left 2, bottom 300, right 400.
        rig.ctrl->UserDcDrawEx(host.handle, 1, 2, 300, 400, 1000, 2000, 2000, 1);
        EXPECT_THAT(Draws(), ElementsAre("1 SrvDraw 604 2298 1400 1700 2 1 400 300 0 0 1"));
        host.verbs->Clear();
    }
    EXPECT_THAT(order, ElementsAre("SrvDraw0", "SrvDraw0", "SrvDraw1", "SrvDraw1"));
}

TEST_F(RasterTest, RotateIsToldToImagesThatAreReadyAndNotToOnesLoadedLater) {
    Show(2, {0});
    rig.ctrl->SetRotate(30);
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvRotate 30"));
    ASSERT_TRUE(Load(1));
    EXPECT_THAT(log.Take(), ElementsAre("2 SrvIsReady", "2 SrvInit", "2 SrvLoad map.tif"));
    log.answers["SrvIsReady"] = false;
    rig.ctrl->SetRotate(40);
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "2 SrvIsReady"));
}

TEST_F(RasterTest, TermClosesWhatIsReadyAndLetsGoOfAll) {
    Show(3, {0, 2});
    EXPECT_TRUE(Rasters().RastTerm());
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvClose", "2 SrvIsReady", "2 SrvClose"));
    EXPECT_EQ(log.alive, 0);
    EXPECT_EQ(Rasters().Count(), 0);
    EXPECT_FALSE(Rasters().IsOn());
}

TEST_F(RasterTest, TermClosesNoServerThatIsNotReadyAndLetsGoOfItAllTheSame) {
    Show(2, {0});
    log.answers["SrvInit"] = false;
    EXPECT_FALSE(Load(1));
    log.lines.clear();
    EXPECT_TRUE(Rasters().RastTerm());
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvClose", "2 SrvIsReady"));
    EXPECT_EQ(log.alive, 0);
}

TEST_F(RasterTest, TermOfTheControlClosesTheImagesAndLeavesTheMap) {
    Show(1, {0});
    rig.AddLine("L", {{0, 0}, {100, -100}});
    rig.ctrl->RDMTerm();
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvClose"));
    rig.Forget();
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(Draws(), IsEmpty());
    EXPECT_THAT(rig.VerbsWith("Polyline"), testing::SizeIs(1)) << "the map is still drawn";
}

TEST_F(RasterTest, TermBeforeTheFirstPaintReleasesTheRastersAndBeforeInitDoesNothing) {
    ControlRig fresh;
    fresh.ctrl->rasters.SetMaker(log.Maker());
    ASSERT_TRUE(fresh.ctrl->rasters.RastInit(1, fresh.window));
    ASSERT_TRUE(fresh.ctrl->rasters.RastLoad(0, "a", fresh.window));
    log.lines.clear();
    fresh.ctrl->RDMTerm();
    EXPECT_THAT(log.Take(), IsEmpty()) << "no init was called yet";
    EXPECT_EQ(log.alive, 1);
    fresh.ctrl->RDMInit();
    ASSERT_TRUE(fresh.ctrl->rasters.RastInit(1, fresh.window));
    ASSERT_TRUE(fresh.ctrl->rasters.RastLoad(0, "a", fresh.window));
    log.lines.clear();
    fresh.ctrl->RDMTerm();
    EXPECT_THAT(log.Take(), ElementsAre("2 SrvIsReady", "2 SrvClose"));
}

TEST_F(RasterTest, AnInitWithImagesOpenForgetsThemWithoutAClose) {
    Show(1, {0});
    rig.ctrl->RDMInit();
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_EQ(log.alive, 0) << "the memory is released";
    EXPECT_EQ(Rasters().Count(), 0);
    EXPECT_FALSE(Rasters().IsOn());
}

TEST_F(RasterTest, TheEndOfTheControlClosesTheImages) {
    Show(1, {0});
    rig.ctrl.reset();
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvClose"));
    EXPECT_EQ(log.alive, 0);
}

TEST_F(RasterTest, TheEndOfAControlThatWasNeverPaintedClosesTheImages) {
    ControlRig fresh;
    fresh.ctrl->rasters.SetMaker(log.Maker());
    ASSERT_TRUE(fresh.ctrl->rasters.RastInit(2, fresh.window));
    ASSERT_TRUE(fresh.ctrl->rasters.RastLoad(1, "a", fresh.window));
    log.lines.clear();
    fresh.ctrl.reset();
    EXPECT_THAT(log.Take(), ElementsAre("1 SrvIsReady", "1 SrvClose"));
    EXPECT_EQ(log.alive, 0);
}

// --- Servers that run host code ---------------------------------------------------------------------------------------------

TEST_F(RasterTest, AServerMayEndTheTableInAnyOfItsCalls) {
    for (const char* at : {"SrvIsReady", "SrvInit", "SrvLoad", "SrvDraw", "SrvRotate", "SrvClose", "SrvImgWidth", "SrvSetCP1"}) {
        log.host = nullptr;
        rig.ctrl->RDMInit();
        ASSERT_TRUE(Init(3)) << at;
        bool done = false;
        log.host = [&](const std::string& call) {
            if (call != at || done) return;
            done = true;
            rig.ctrl->RDMInit();
            Init(1);
        };
        Load(0);
        Load(2);
        rig.Paint();
        rig.ctrl->RDMReDraw();
        rig.ctrl->SetRotate(10);
        std::int32_t width = 0;
        std::int32_t height = 0;
        Rasters().RastImageSize(0, width, height);
        Rasters().RastSetCP1(0, 1, 1, 1, 1);
        Rasters().RastClose(0);
        EXPECT_TRUE(done) << at;
    }
    log.host = nullptr;
}

TEST_F(RasterTest, AServerMayDestroyTheControlWhileItDraws) {
    Show(1, {0});
    log.host = [&](const std::string& call) {
        if (call == "SrvDraw") rig.ctrl.reset();
    };
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(log.alive, 0);
}

TEST_F(RasterTest, AServerMayLoadIntoAnotherSlotWhileTheImagesAreDrawn) {
    Show(5, {1, 3});
    bool done = false;
    log.host = [&](const std::string& call) {
        if (call != "SrvDraw" || done) return;
        done = true;
        Load(0);
        Load(2);
    };
    rig.ctrl->RDMReDraw();
    log.host = nullptr;
    // Slot 0 lies behind the walk; slot 2 ahead of it.
    EXPECT_THAT(Draws(), ElementsAre(testing::StartsWith("1 "), testing::StartsWith("4 "), testing::StartsWith("2 ")));
}

}  // namespace
}  // namespace orvane
