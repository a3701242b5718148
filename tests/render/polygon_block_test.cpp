#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/line_polygon.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNormalPen[] = "SelectObject pen(0x0 2 0x0000AA)";
constexpr char kNormalBrush[] = "SelectObject brush(0x00FF00)";
constexpr char kActiveBrush[] = "SelectObject brush(0x0000FF)";
constexpr char kOldPen[] = "SelectObject pen(0x0 1 0x000000)";
constexpr char kOldBrush[] = "SelectObject brush(0xFFFFFF)";
constexpr char kCopy[] = "SetROP2 13";
constexpr char kMask[] = "SetROP2 9";
constexpr char kSquare[] = "PolyPolygon [(10,90) (40,90) (40,60) (10,60) (10,90)] [5]";

/// One green polygon layer with a dark red outline of two pixels.
class PolygonBlockTest : public testing::Test {
protected:
    PolygonBlockTest() {
        rig.AddLayer("P", kLayPolygon);
        LayerDef& layer = rig.Layer(0);
        layer.color = 0x00FF00;
        layer.color2 = 0x0000AA;
        layer.lineSize = 2;
        layer.outLine = 0;
    }
    void AddSquare() { rig.AddItem("P", {{10, 10}, {40, 10}, {40, 40}, {10, 40}, {10, 10}}); }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    std::vector<std::string> PolyPolygons() {
        DrawPolygonBlock(rig.store, rig.frame, 0, 0, true, rig.scratch);
        return rig.Verbs("PolyPolygon");
    }

    RenderRig rig;
};

TEST_F(PolygonBlockTest, FilledWithOutlineVerbByVerb) {
    AddSquare();
    EXPECT_THAT(rig.DrawPolygons(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kSquare, "EndPath",
                                                "StrokeAndFillPath", kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(PolygonBlockTest, FilledWithoutOutline) {
    rig.Layer(0).outLine = 1;
    AddSquare();
    EXPECT_THAT(rig.DrawPolygons(),
                ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kSquare, "EndPath", "FillPath", kOldBrush, kOldPen));
}

TEST_F(PolygonBlockTest, EveryFillModeButOneCombinesWithWhatLiesBelow) {
    AddSquare();
    for (const int fillMode : {0, 2, 255}) {
        rig.Layer(0).fillMode = static_cast<std::uint8_t>(fillMode);
        EXPECT_EQ(rig.DrawPolygons()[2], kMask);
    }
    rig.Layer(0).fillMode = 1;
    EXPECT_EQ(rig.DrawPolygons()[2], kCopy);
}

TEST_F(PolygonBlockTest, FillPatternsAreTheHatchesOfTheTable) {
    const char* const brushes[] = {"brush(0x00FF00)",         "brush(hatch 3 0x00FF00)", "brush(hatch 4 0x00FF00)",
                                   "brush(hatch 5 0x00FF00)", "brush(hatch 2 0x00FF00)", "brush(hatch 0 0x00FF00)",
                                   "brush(hatch 1 0x00FF00)", "brush(0x00FF00)"};
    for (std::int32_t pgnType = 0; pgnType <= 7; ++pgnType) {
        rig.Layer(0).pgnType = pgnType;
        EXPECT_EQ(rig.DrawPolygons()[1], std::string("SelectObject ") + brushes[pgnType]);
    }
    for (const std::int32_t pgnType : {-1, 8, 2147483647}) {
        rig.Layer(0).pgnType = pgnType;
        EXPECT_EQ(rig.DrawPolygons()[1], kNormalBrush);
    }
}

TEST_F(PolygonBlockTest, OutlineTakesItsPenFromTheLineType) {
    rig.Layer(0).lineType = 3;
    rig.store.view.DpiRatio = 2;
    EXPECT_EQ(rig.DrawPolygons()[0], "SelectObject pen(0x3 4 0x0000AA)");
    rig.AddLineType(9, 4);
    rig.Layer(0).lineType = 9;
    AddSquare();
    EXPECT_EQ(PolyPolygons().size(), 1u) << "patterns of a line type stay away from polygons";
}

// --- Hollow and active --------------------------------------------------------------------------------------------------------

TEST_F(PolygonBlockTest, HollowStrokesItsOutlineOnly) {
    rig.Layer(0).pgnType = 7;
    AddSquare();
    EXPECT_THAT(rig.DrawPolygons(),
                ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kSquare, "EndPath", "StrokePath", kOldBrush, kOldPen));
}

TEST_F(PolygonBlockTest, HollowWithoutOutlineShowsNothingUnlessActive) {
    rig.Layer(0).pgnType = 7;
    rig.Layer(0).outLine = 1;
    AddSquare();
    EXPECT_THAT(rig.DrawPolygons(), ElementsAre(kNormalPen, kNormalBrush, kCopy, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1) << "it can be hit all the same";
    Item(0).active = 1;
    EXPECT_THAT(rig.DrawPolygons(), ElementsAre(kNormalPen, kNormalBrush, kCopy, kCopy, kActiveBrush, "BeginPath", kSquare,
                                                "EndPath", "FillPath", kNormalBrush, kOldBrush, kOldPen));
}

TEST_F(PolygonBlockTest, ActiveItemIsFilledSolidAndKeepsItsOutlineColour) {
    rig.Layer(0).pgnType = 4;
    rig.Layer(0).fillMode = 0;
    AddSquare();
    Item(0).active = 1;
    EXPECT_THAT(rig.DrawPolygons(),
                ElementsAre(kNormalPen, "SelectObject brush(hatch 2 0x00FF00)", kMask, kCopy, kActiveBrush, "BeginPath", kSquare,
                            "EndPath", "StrokeAndFillPath", "SelectObject brush(hatch 2 0x00FF00)", kOldBrush, kOldPen));
}

// --- Rings --------------------------------------------------------------------------------------------------------------------

TEST_F(PolygonBlockTest, ArrayThatEndsWhereItBeganIsOneRingEvenIfItPassesThere) {
    rig.AddItem("P", {{10, 10}, {40, 10}, {40, 40}, {10, 10}, {5, 10}, {5, 5}, {10, 10}});
    EXPECT_THAT(PolyPolygons(), ElementsAre("PolyPolygon [(10,90) (40,90) (40,60) (10,90) (5,90) (5,95) (10,90)] [7]"));
}

TEST_F(PolygonBlockTest, SecondClosedRingInsideTheFirstIsAHole) {
    rig.AddItem("P", {{10, 10}, {40, 10}, {40, 40}, {10, 10}, {20, 15}, {30, 15}, {30, 20}, {20, 15}});
    EXPECT_THAT(PolyPolygons(),
                ElementsAre("PolyPolygon [(10,90) (40,90) (40,60) (10,90) (20,85) (30,85) (30,80) (20,85)] [4 4]"));
}

TEST_F(PolygonBlockTest, PointsThatCloseNoRingStillIssueTheVerbs) {
    rig.AddItem("P", {{10, 10}, {40, 10}, {40, 40}});
    const std::vector<std::string> verbs = rig.DrawPolygons();
    ASSERT_EQ(verbs.size(), 9u);
    EXPECT_EQ(verbs[3], "BeginPath");
    EXPECT_TRUE(verbs[4].starts_with("PolyPolygon") && verbs[4].ends_with(" []")) << verbs[4];
    EXPECT_EQ(verbs[5], "EndPath");
    EXPECT_EQ(verbs[6], "StrokeAndFillPath");
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(PolygonBlockTest, PointsBehindTheLastRingAreNotPartOfIt) {
    rig.AddItem("P", {{10, 10}, {40, 10}, {40, 40}, {10, 10}, {1, 1}});
    EXPECT_THAT(PolyPolygons(), ElementsAre("PolyPolygon [(10,90) (40,90) (40,60) (10,90)] [4]"));
}

TEST_F(PolygonBlockTest, RepeatedDevicePointsStay) {
    rig.AddItem("P", {{10, 10}, {10.1, 10.1}, {40, 40}, {10, 10}});
    EXPECT_THAT(PolyPolygons(), ElementsAre("PolyPolygon [(10,90) (10,90) (40,60) (10,90)] [4]"));
}

// --- Who is let through -------------------------------------------------------------------------------------------------------

TEST_F(PolygonBlockTest, ItemsWithFewerThanTwoPointsKeepTheirFlag) {
    rig.AddItem("P", {});
    rig.AddItem("P", {{10, 10}});
    Item(0).rect = Item(1).rect = {0, 0, 20, 20};
    EXPECT_THAT(PolyPolygons(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, kUntouched);
}

TEST_F(PolygonBlockTest, GateAndBoxAreThoseOfLines) {
    for (int i = 0; i < 5; ++i) AddSquare();
    Item(0).clipFlg = 0;
    Item(1).lineTag = -1;
    Item(2).lineTag = 3;
    Item(3).rect = {900, 900, 910, 910};
    rig.store.LineTagMode = 1;
    EXPECT_EQ(PolyPolygons().size(), 1u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(Item(i).drawnFlg, kUntouched) << i;
    EXPECT_EQ(Item(3).drawnFlg, 0);
    EXPECT_EQ(Item(4).drawnFlg, 1);
}

TEST_F(PolygonBlockTest, EitherFailedBufferSkipsTheItemAndKeepsItsFlag) {
    for (const std::int64_t nth : {1, 2}) {
        RenderRig fresh;
        fresh.AddLayer("P", kLayPolygon);
        fresh.AddItem("P", {{10, 10}, {40, 10}, {40, 40}, {10, 10}});
        ArrayFaults::FailNth(nth);
        DrawPolygonBlock(fresh.store, fresh.frame, 0, 0, true, fresh.scratch);
        ArrayFaults::Clear();
        EXPECT_THAT(fresh.Verbs("PolyPolygon"), IsEmpty());
        EXPECT_EQ(fresh.Item(0, 0).drawnFlg, kUntouched);
    }
}

TEST_F(PolygonBlockTest, BuffersAreReusedFromItemToItem) {
    for (int i = 0; i < 100; ++i) AddSquare();
    ArrayFaults::Clear();
    EXPECT_EQ(PolyPolygons().size(), 100u);
    EXPECT_LE(ArrayFaults::Count(), 2);
}

// --- Sub layers ---------------------------------------------------------------------------------------------------------------

class PolygonSubLayerTest : public PolygonBlockTest {
protected:
    PolygonSubLayerTest() {
        SubLayDef& sub = rig.AddSubLayer(0, 4);
        sub.color = 0x111111;
        sub.color2 = 0x222222;
        sub.lineType = 1;
        sub.lineSize = 3;
        sub.outLine = 0;
        sub.fillMode = 0;
        sub.pgnType = 1;
    }
    SubLayDef& Sub() { return rig.Layer(0).subLays[0]; }
    void AddSubSquare() {
        AddSquare();
        Item(rig.Block(0).dats.size() - 1).subLayNo = 4;
    }
};

TEST_F(PolygonSubLayerTest, DrawsWithItsOwnAttributesAndPutsTheLayersBack) {
    AddSubSquare();
    AddSquare();
    EXPECT_THAT(rig.DrawPolygons(),
                ElementsAre(kNormalPen, kNormalBrush, "SelectObject pen(0x1 3 0x222222)", "SelectObject brush(hatch 3 0x111111)",
                            kMask, "BeginPath", kSquare, "EndPath", "StrokeAndFillPath", kNormalPen, kNormalBrush, kCopy,
                            "BeginPath", kSquare, "EndPath", "StrokeAndFillPath", kOldBrush, kOldPen));
}

TEST_F(PolygonSubLayerTest, WithoutOutlineItMakesNoPenAndPutsNoneBack) {
    Sub().outLine = 1;
    AddSubSquare();
    EXPECT_THAT(rig.DrawPolygons(), ElementsAre(kNormalPen, kNormalBrush, "SelectObject brush(hatch 3 0x111111)", kMask,
                                                "BeginPath", kSquare, "EndPath", "FillPath", kNormalBrush, kOldBrush, kOldPen));
}

TEST_F(PolygonSubLayerTest, ItemBehindItHasTheLayersOutlineAndFillModeAgain) {
    Sub().outLine = 1;
    AddSubSquare();
    AddSquare();
    const std::vector<std::string> verbs = rig.DrawPolygons();
    ASSERT_EQ(verbs.size(), 16u);
    EXPECT_EQ(verbs[7], "FillPath");
    EXPECT_EQ(verbs[9], kCopy);
    EXPECT_EQ(verbs[13], "StrokeAndFillPath");
}

TEST_F(PolygonSubLayerTest, ItemBehindItSeesItsHollownessWithTheLayersBrush) {
    Sub().pgnType = 7;
    AddSubSquare();
    AddSquare();
    EXPECT_THAT(rig.DrawPolygons(),
                ElementsAre(kNormalPen, kNormalBrush, "SelectObject pen(0x1 3 0x222222)", "SelectObject brush(0x111111)", kMask,
                            "BeginPath", kSquare, "EndPath", "StrokePath", kNormalPen, kNormalBrush, kCopy, "BeginPath", kSquare,
                            "EndPath", "StrokePath", kOldBrush, kOldPen));
}

TEST_F(PolygonSubLayerTest, ItemBehindAFilledSubLayerOfAHollowLayerIsFilledWithTheLayersBrush) {
    rig.Layer(0).pgnType = 7;
    AddSubSquare();
    AddSquare();
    const std::vector<std::string> verbs = rig.DrawPolygons();
    EXPECT_EQ(verbs[15], "StrokeAndFillPath");
    EXPECT_EQ(verbs[10], kNormalBrush);
}

TEST_F(PolygonSubLayerTest, UnknownNumbersOfItsRecordReadAsZero) {
    Sub().pgnType = 8;
    Sub().lineType = 5;
    rig.AddLineType(5, 1, {4, 4});
    rig.AddLineType(0, 1, {6, 6});
    AddSubSquare();
    const std::vector<std::string> verbs = rig.DrawPolygons();
    EXPECT_EQ(verbs[2], "SelectObject pen(0x10207 3 0x222222 [6 6])") << "line type 5 is read as 0 before the table is asked";
    EXPECT_EQ(verbs[3], "SelectObject brush(0x111111)");
}

TEST_F(PolygonSubLayerTest, NotShownHidesTheItemAndClearsItsFlag) {
    Sub().dspFlg = 0;
    AddSubSquare();
    EXPECT_THAT(PolyPolygons(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(PolygonSubLayerTest, NotShownChangesNothingForTheItemsBehind) {
    Sub().dspFlg = 0;
    Sub().pgnType = 7;
    AddSubSquare();
    AddSquare();
    EXPECT_THAT(rig.DrawPolygons(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kSquare, "EndPath",
                                                "StrokeAndFillPath", kOldBrush, kOldPen));
}

TEST_F(PolygonSubLayerTest, UnknownNumberDrawsWithTheLayersAttributes) {
    AddSquare();
    Item(0).subLayNo = 5;
    EXPECT_THAT(rig.DrawPolygons(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kSquare, "EndPath",
                                                "StrokeAndFillPath", kOldBrush, kOldPen));
}

TEST_F(PolygonSubLayerTest, ActiveItemTakesTheActiveBrushAndTheSubLayersOutline) {
    AddSubSquare();
    Item(0).active = 1;
    EXPECT_THAT(rig.DrawPolygons(),
                ElementsAre(kNormalPen, kNormalBrush, "SelectObject pen(0x1 3 0x222222)", "SelectObject brush(hatch 3 0x111111)",
                            kMask, kCopy, kActiveBrush, "BeginPath", kSquare, "EndPath", "StrokeAndFillPath", kNormalBrush,
                            kNormalPen, kNormalBrush, kOldBrush, kOldPen));
}

}  // namespace
}  // namespace orvane
