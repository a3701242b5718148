#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "render/points.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using Lines = std::vector<std::string>;

constexpr char kNormalPen[] = "SelectObject pen(0x0 1 0x000000)";
constexpr char kNormalBrush[] = "SelectObject brush(0x00FF00)";
constexpr char kActivePen[] = "SelectObject pen(0x0 2 0x0000FF)";
constexpr char kActiveBrush[] = "SelectObject brush(0x0000FF)";
constexpr char kOldPen[] = "SelectObject pen(0x0 1 0x000000)";
constexpr char kOldBrush[] = "SelectObject brush(0xFFFFFF)";

/// One green layer of squares, with symbols of 12 pixels half side: 1:1000 gives 10, so sizes are fixed at 6 and doubled.
class SymbolBlockTest : public testing::Test {
protected:
    SymbolBlockTest() {
        rig.AddLayer("P", kLayPoint);
        Layer().color = 0x00FF00;
        Layer().pntType = 1;
        Layer().lineSize = 9999;
        rig.store.view.DpiRatio = 2;
    }
    LayerDef& Layer() { return rig.Layer(0); }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    void AddPoint(double x, double y, std::int32_t lineTag = 0) { rig.AddItem("P", {{x, y}}, lineTag); }
    void AddPointOfSubLayer(double x, double y, std::int32_t subLayNo) {
        AddPoint(x, y);
        Item(rig.Block(0).dats.size() - 1).subLayNo = subLayNo;
    }
    void AddSymbol(std::int32_t symNo, std::initializer_list<std::pair<Point, Point>> strokes) {
        SymbolDef def;
        def.symNo = symNo;
        def.strokeCnt = static_cast<std::int32_t>(strokes.size());
        ASSERT_TRUE(def.strokeFrom.Resize(0, strokes.size()));
        ASSERT_TRUE(def.strokeTo.Resize(0, strokes.size()));
        std::size_t k = 0;
        for (const auto& [from, to] : strokes) {
            def.strokeFrom[k] = from;
            def.strokeTo[k++] = to;
        }
        ASSERT_TRUE(rig.store.symbols.PushBack(std::move(def)));
    }

    Lines Draw(std::int32_t item = kAllItems) {
        DrawSymbolBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, item);
        return rig.Verbs();
    }
    /// What is drawn between the selection of an item's tools and the return of the old ones, for one inactive item.
    Lines Figure() {
        Lines all = Draw();
        EXPECT_GE(all.size(), 6u);
        if (all.size() < 6) return {};
        return Lines(all.begin() + 4, all.end() - 2);
    }
    /// The same with this figure, for a point in the middle unless there is one.
    Lines Figure(std::int32_t pntType) {
        Layer().pntType = pntType;
        if (rig.Block(0).dats.empty()) AddPoint(100, 50);
        return Figure();
    }
    Lines Polygons() {
        DrawSymbolBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, kAllItems);
        return rig.Verbs("Polygon");
    }
    std::size_t SquareCnt() { return Polygons().size() / 2; }

    RenderRig rig;
};

/// The verbs of a closed shape, which is filled and then outlined.
Lines Filled(const std::string& shape) { return {"BeginPath", shape, "EndPath", "FillPath", shape}; }

Lines With(Lines lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

const std::string kSquare = "Polygon [(88,38) (88,62) (112,62) (112,38)]";

// --- Tools --------------------------------------------------------------------------------------------------------------------

TEST_F(SymbolBlockTest, DrawsAPointVerbByVerb) {
    AddPoint(100, 50);
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kNormalPen, kNormalBrush, "BeginPath", kSquare, "EndPath",
                                    "FillPath", kSquare, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(SymbolBlockTest, BlockWithoutItemsSelectsItsToolsAndPutsTheOldOnesBack) {
    rig.dc.SelectPen(CreatePen(PenStyle::Dot, 1, 0x123456));
    rig.dc.SelectBrush(NullBrush());
    rig.Verbs();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, "SelectObject brush(null)", "SelectObject pen(0x2 1 0x123456)"));
}

TEST_F(SymbolBlockTest, ActiveItemTakesTheActivePenAndBrushAndTheNextTakesTheNormalOnes) {
    AddPoint(100, 50);
    AddPoint(100, 50);
    Item(0).active = 1;
    const Lines square = Filled(kSquare);
    Lines expected{kNormalPen, kNormalBrush, "SelectObject pen(0x0 4 0x0000FF)", kActiveBrush};
    expected = With(With(expected, square), {kNormalPen, kNormalBrush});
    expected = With(With(expected, square), {kOldBrush, kOldPen});
    EXPECT_THAT(Draw(), ElementsAreArray(expected));
}

TEST_F(SymbolBlockTest, PenOfNormalPointsIsBlackAndOnePixelWideAtEveryResolution) {
    rig.store.view.DpiRatio = 7.9;
    Layer().lineSize = 20;
    AddPoint(100, 50);
    Item(0).active = 1;
    const Lines lines = Draw();
    EXPECT_EQ(lines[0], kNormalPen);
    EXPECT_EQ(lines[2], "SelectObject pen(0x0 14 0x0000FF)");
}

TEST_F(SymbolBlockTest, SubLayerFillsWithItsOwnColorAndTheLayersBrushComesBackBehindIt) {
    SubLayDef& sub = rig.AddSubLayer(0, 4);
    sub.color = 0xABCDEF;
    sub.pntType = 2;
    sub.lineSize = 9999;
    AddPointOfSubLayer(100, 50, 4);
    Lines expected{kNormalPen, kNormalBrush, kNormalPen, "SelectObject brush(0xABCDEF)"};
    expected = With(With(expected, Filled("Ellipse 88 38 112 62")), {kNormalBrush, kOldBrush, kOldPen});
    EXPECT_THAT(Draw(), ElementsAreArray(expected));
}

TEST_F(SymbolBlockTest, ActiveItemOfASubLayerIsActiveInTheSubLayersFigure) {
    rig.store.view.DpiRatio = 1;
    SubLayDef& sub = rig.AddSubLayer(0, 4);
    sub.color = 0xABCDEF;
    sub.pntType = 2;
    AddPointOfSubLayer(100, 50, 4);
    Item(0).active = 1;
    Lines expected{kNormalPen, kNormalBrush, kActivePen, kActiveBrush};
    expected = With(With(expected, Filled("Ellipse 90 40 110 60")), {kNormalBrush, kOldBrush, kOldPen});
    EXPECT_THAT(Draw(), ElementsAreArray(expected));
}

// --- Figures ------------------------------------------------------------------------------------------------------------------

TEST_F(SymbolBlockTest, TriangleStandsOnItsBase) { EXPECT_EQ(Figure(0), Filled("Polygon [(100,38) (88,62) (112,62)]")); }

TEST_F(SymbolBlockTest, SquareCircleAndDiamond) {
    EXPECT_EQ(Figure(1), Filled(kSquare));
    EXPECT_EQ(Figure(2), Filled("Ellipse 88 38 112 62"));
    EXPECT_EQ(Figure(3), Filled("Polygon [(88,50) (100,62) (112,50) (100,38)]"));
}

TEST_F(SymbolBlockTest, StarHasTenPointsFromWholeDivisions) {
    EXPECT_EQ(Figure(4),
              Filled("Polygon [(100,38) (97,47) (88,47) (96,53) (92,62) (100,58) (108,62) (104,53) (112,47) (103,47)]"));
    // Half side 10: q = 2, t = 3, and u = 20 / 3 = 6.
    rig.store.view.DpiRatio = 1;
    Layer().lineSize = 0;
    EXPECT_EQ(Figure(4),
              Filled("Polygon [(100,40) (98,48) (90,48) (97,52) (94,60) (100,56) (106,60) (103,52) (110,48) (102,48)]"));
}

TEST_F(SymbolBlockTest, TriangleOnItsTip) { EXPECT_EQ(Figure(5), Filled("Polygon [(100,62) (88,38) (112,38)]")); }

TEST_F(SymbolBlockTest, Type7AndAllNumbersWithoutAFigureAreTheSquare) {
    for (const std::int32_t pntType : {6, 7, 8, 9, 13, 9998, 10000, -1, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(Figure(pntType), Filled(kSquare)) << pntType;
    }
}

TEST_F(SymbolBlockTest, CrossedSquareHasItsLinesBehindTheSquare) {
    EXPECT_EQ(Figure(10), With(Filled(kSquare), {"MoveToEx 112 50", "LineTo 88 50", "MoveToEx 100 62", "LineTo 100 38"}));
}

TEST_F(SymbolBlockTest, DotsAreAQuarterAndFourTimesAsLarge) {
    EXPECT_EQ(Figure(11), Filled("Ellipse 103 53 97 47"));
    EXPECT_EQ(Figure(12), Filled("Ellipse 148 98 52 2"));
}

TEST_F(SymbolBlockTest, QuarterOfASmallHalfSideIsCut) {
    rig.store.view.DpiRatio = 1;  // half side 6: a quarter is 1
    EXPECT_EQ(Figure(11), Filled("Ellipse 101 51 99 49"));
}

TEST_F(SymbolBlockTest, HalfSideFollowsTheScale) {
    Layer().lineSize = 1;
    const std::pair<std::int32_t, int> sizes[] = {{50001, 4}, {50000, 6}, {3001, 18}, {3000, 20}};
    rig.AddItem("P", {{0, 0}});  // the corner of the frame, where every scale shows it
    rig.frame.y = 0;
    for (const auto& [zoom, half] : sizes) {
        rig.store.view.Zoom = zoom;
        const std::string h = std::to_string(half);
        EXPECT_EQ(Figure(2), Filled("Ellipse -" + h + " -" + h + " " + h + " " + h)) << zoom;
    }
}

TEST_F(SymbolBlockTest, LineSize9999FixesTheSizeAtAllScales) {
    rig.AddItem("P", {{0, 0}});
    rig.frame.y = 0;
    for (const std::int32_t zoom : {1, 3000, 8000, 200000}) {
        rig.store.view.Zoom = zoom;
        EXPECT_EQ(Figure(2), Filled("Ellipse -12 -12 12 12")) << zoom;
    }
}

TEST_F(SymbolBlockTest, SubLayersLineSizeCountsForTheSizeOfItsItems) {
    rig.AddSubLayer(0, 4).pntType = 2;
    AddPointOfSubLayer(100, 50, 4);
    EXPECT_THAT(Draw(), Contains("Ellipse 80 30 120 70").Times(2)) << "1:1000 gives 10 pixels, doubled";
}

// --- Value text ---------------------------------------------------------------------------------------------------------------

TEST_F(SymbolBlockTest, ValueIsWrittenBesideBothDots) {
    AddPoint(100, 50);
    Item(0).pnts.Change()[0].z = 12.345;
    EXPECT_EQ(Figure(11).back(), "TextOut 112 38 \"12.35\"") << "the double lies above 12.345";
    EXPECT_EQ(Figure(12).back(), "TextOut 112 38 \"12.35\"");
    EXPECT_EQ(Figure(2).back(), "Ellipse 88 38 112 62");
}

TEST_F(SymbolBlockTest, ValueTakesFivePlacesAtLeast) {
    AddPoint(100, 50);
    const std::pair<double, std::string> texts[] = {{1, " 1.00"},       {0.0002, " 0.00"}, {99.994, "99.99"},
                                                    {99.996, "100.00"}, {0.125, " 0.12"},  {1234567.891, "1234567.89"}};
    for (const auto& [value, text] : texts) {
        Item(0).pnts.Change()[0].z = value;
        EXPECT_EQ(Figure(11).back(), "TextOut 112 38 \"" + text + "\"");
    }
}

TEST_F(SymbolBlockTest, ValueIsWrittenAtZoom5000AndNotAt5001) {
    Layer().pntType = 11;
    rig.AddItem("P", {{0, 0}});
    rig.frame.y = 0;
    Item(0).pnts.Change()[0].z = 3;
    rig.store.view.Zoom = 5000;
    EXPECT_THAT(Draw(), Contains("TextOut 12 -12 \" 3.00\""));
    rig.store.view.Zoom = 5001;
    EXPECT_THAT(Draw(), Not(Contains(StartsWith("TextOut"))));
}

TEST_F(SymbolBlockTest, ValueOfATenThousandthOrLessIsNotWritten) {
    Layer().pntType = 11;
    AddPoint(100, 50);
    for (const double value : {0.0001, 0.0, -7.0, std::nan("")}) {
        Item(0).pnts.Change()[0].z = value;
        EXPECT_THAT(Draw(), Not(Contains(StartsWith("TextOut")))) << value;
    }
    Item(0).pnts.Change()[0].z = 0.00011;
    EXPECT_THAT(Draw(), Contains("TextOut 112 38 \" 0.00\""));
}

TEST_F(SymbolBlockTest, GreatestValueIsWrittenInFull) {
    Layer().pntType = 11;
    AddPoint(100, 50);
    Item(0).pnts.Change()[0].z = (std::numeric_limits<double>::max)();
    DrawSymbolBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, kAllItems);
    const Lines texts = rig.Verbs("TextOut");
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_TRUE(texts[0].starts_with("TextOut 112 38 \"17976931348623157"));
    EXPECT_TRUE(texts[0].ends_with(".00\""));
    EXPECT_EQ(texts[0].size(), std::string("TextOut 112 38 \"\"").size() + 309 + 3);
    Item(0).pnts.Change()[0].z = INFINITY;
    EXPECT_THAT(Draw(), Contains("TextOut 112 38 \"  inf\""));
}

// --- Table symbols ------------------------------------------------------------------------------------------------------------

TEST_F(SymbolBlockTest, Type9999WithoutSubLayerLooksUpSymbol0) {
    AddSymbol(5, {{{0, 0}, {200, 200}}});
    AddSymbol(0, {{{-200, 0}, {200, 0}}, {{0, -200}, {0, 200}}});
    // -12 + 0.5 cuts to -11, so symbols lean a pixel to the right and, since y is turned over, up.
    EXPECT_EQ(Figure(9999), (Lines{"MoveToEx 89 50", "LineTo 112 50", "MoveToEx 100 61", "LineTo 100 38"}));
}

TEST_F(SymbolBlockTest, Type9999ThroughASubLayerLooksUpItsLineSize) {
    AddSymbol(0, {{{0, 0}, {0, 200}}});
    AddSymbol(5, {{{0, 0}, {200, 100}}});
    SubLayDef& sub = rig.AddSubLayer(0, 4);
    sub.pntType = 9999;
    sub.lineSize = 5;
    AddPointOfSubLayer(100, 50, 4);
    const Lines lines = Draw();
    EXPECT_THAT(lines, Contains("MoveToEx 100 50"));
    EXPECT_THAT(lines, Contains("LineTo 120 40")) << "1:1000 gives 10 pixels, doubled";
    EXPECT_THAT(lines, Not(Contains("FillPath")));
}

TEST_F(SymbolBlockTest, UnknownSymbolKeepsTheSquare) {
    AddSymbol(5, {{{0, 0}, {0, 200}}});
    EXPECT_EQ(Figure(9999), Filled(kSquare));
}

TEST_F(SymbolBlockTest, FirstSymbolWithTheNumberCounts) {
    AddSymbol(0, {{{0, 0}, {0, 200}}});
    AddSymbol(0, {{{0, 0}, {200, 0}}});
    EXPECT_EQ(Figure(9999), (Lines{"MoveToEx 100 50", "LineTo 100 38"}));
}

TEST_F(SymbolBlockTest, SymbolWithoutStrokesShowsNothingAndCountsAsDrawn) {
    AddSymbol(0, {});
    EXPECT_THAT(Figure(9999), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(SymbolBlockTest, StrokesAreRoundedByAHalfAndCut) {
    // Half side 12: 25 units are 1.5 pixels, 24 are 1.44; the half is added and the rest cut toward zero.
    AddSymbol(0, {{{25, 24}, {-25, -42}}});
    EXPECT_EQ(Figure(9999), (Lines{"MoveToEx 102 49", "LineTo 99 52"}));
}

TEST_F(SymbolBlockTest, ItemsTakeTurnsAmongManySymbolsAndSubLayers) {
    constexpr std::int32_t kMany = 300;  // more than are remembered
    for (std::int32_t i = 1; i <= kMany; ++i) {
        AddSymbol(1000 * i, {{{0, 0}, {0, 100 * i}}});
        SubLayDef& sub = rig.AddSubLayer(0, 64 * i);
        sub.pntType = 9999;
        sub.lineSize = 1000 * i;
    }
    for (int turn = 0; turn < 2; ++turn) {
        for (std::int32_t i = 1; i <= kMany; ++i) AddPointOfSubLayer(100, 50, 64 * i);
    }
    DrawSymbolBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, kAllItems);
    const Lines ends = rig.Verbs("LineTo");
    ASSERT_EQ(ends.size(), 2u * kMany);
    for (std::int32_t i = 1; i <= kMany; ++i) {
        const std::string end = "LineTo 100 " + std::to_string(50 - 10 * i);
        EXPECT_EQ(ends[static_cast<std::size_t>(i - 1)], end);
        EXPECT_EQ(ends[static_cast<std::size_t>(kMany + i - 1)], end);
    }
}

// --- Who is let through -------------------------------------------------------------------------------------------------------

TEST_F(SymbolBlockTest, ClipFlagOfThePointIsNotLookedAt) {
    AddPoint(100, 50);
    Item(0).clipFlg = 0;
    EXPECT_EQ(SquareCnt(), 1u);
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(SymbolBlockTest, LineTagMinusOneNeverShowsAndKeepsItsFlag) {
    AddPoint(100, 50, -1);
    EXPECT_EQ(SquareCnt(), 0u);
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(SymbolBlockTest, LineTagAboveZeroIsHiddenOnlyInModeOne) {
    AddPoint(100, 50, 5);
    AddPoint(100, 50, -2);
    rig.store.LineTagMode = 1;
    EXPECT_EQ(SquareCnt(), 1u);
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    rig.store.LineTagMode = 2;
    EXPECT_EQ(SquareCnt(), 2u);
}

TEST_F(SymbolBlockTest, PointIsTestedByItsSquareAndNotByItsBounds) {
    // A half is added and the rest cut toward zero, so that both come to lie a pixel to the right.
    AddPoint(-13, 50);  // the square ends at pixel 0
    AddPoint(-14, 50);  // and here at -1
    Item(0).rect = Item(1).rect = {9000, 9000, 9001, 9001};
    EXPECT_THAT(Polygons(), Contains("Polygon [(-24,38) (-24,62) (0,62) (0,38)]"));
    EXPECT_EQ(Item(0).drawnFlg, 1);
    EXPECT_EQ(Item(1).drawnFlg, 0);
}

TEST_F(SymbolBlockTest, SquareAroundTheStripShows) {
    rig.frame.stripA = rig.frame.stripB = {95, 45, 105, 55};
    AddPoint(100, 50);
    EXPECT_EQ(SquareCnt(), 1u);
}

TEST_F(SymbolBlockTest, BigDotOutsideByItsSquareIsNotDrawn) {
    Layer().pntType = 12;  // its dot would reach 48 pixels
    AddPoint(-20, 50);
    EXPECT_THAT(Draw(), Not(Contains(StartsWith("Ellipse"))));
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(SymbolBlockTest, SecondStripCountsAsTheFirst) {
    AddPoint(150, 90);
    rig.frame.stripA = {0, 0, 20, 100};
    rig.frame.stripB = {140, 0, 200, 20};
    EXPECT_EQ(SquareCnt(), 1u);
    rig.frame.stripB = {0, 90, 200, 100};
    EXPECT_EQ(SquareCnt(), 0u);
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(SymbolBlockTest, SubLayerThatIsSwitchedOffHidesTheItemAndClearsItsFlag) {
    rig.AddSubLayer(0, 4).dspFlg = 0;
    rig.AddSubLayer(0, 5).dspFlg = 2;
    AddPointOfSubLayer(100, 50, 4);
    AddPointOfSubLayer(100, 50, 5);
    DrawSymbolBlock(rig.store, rig.frame, 0, 0, true, rig.scratch, kAllItems);
    EXPECT_EQ(Item(0).drawnFlg, 0);
    EXPECT_EQ(Item(1).drawnFlg, 1) << "only 0 hides";
}

TEST_F(SymbolBlockTest, UnknownSubLayerDrawsWithTheLayersAttributes) {
    rig.AddSubLayer(0, 4).pntType = 2;
    rig.AddSubLayer(0, 0).pntType = 2;
    rig.AddSubLayer(0, -4).pntType = 2;
    for (const std::int32_t subLayNo : {5, 0, -4}) AddPointOfSubLayer(100, 50, subLayNo);
    EXPECT_EQ(SquareCnt(), 3u);
}

TEST_F(SymbolBlockTest, FirstSubLayerRecordWithTheNumberCounts) {
    rig.AddSubLayer(0, 4).pntType = 2;
    rig.AddSubLayer(0, 4).pntType = 3;
    AddPointOfSubLayer(100, 50, 4);
    EXPECT_THAT(Draw(), Contains(StartsWith("Ellipse")).Times(2));
}

TEST_F(SymbolBlockTest, ItemWithoutPointsIsLeftAlone) {
    rig.AddItem("P", {});
    EXPECT_EQ(SquareCnt(), 0u);
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(SymbolBlockTest, OnlyTheFirstPointOfAnItemIsDrawn) {
    rig.AddItem("P", {{100, 50}, {20, 20}});
    EXPECT_THAT(Polygons(), ElementsAre(kSquare, kSquare));
}

// --- One item -----------------------------------------------------------------------------------------------------------------

TEST_F(SymbolBlockTest, OneItemIsDrawnAlone) {
    for (int i = 0; i < 3; ++i) AddPoint(100 + i, 50);
    EXPECT_THAT(Draw(1), ElementsAre(kNormalPen, kNormalBrush, kNormalPen, kNormalBrush, "BeginPath",
                                     "Polygon [(89,38) (89,62) (113,62) (113,38)]", "EndPath", "FillPath",
                                     "Polygon [(89,38) (89,62) (113,62) (113,38)]", kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, 1);
    EXPECT_EQ(Item(2).drawnFlg, kUntouched);
}

TEST_F(SymbolBlockTest, OneItemThatIsNotShownDoesNotPassItsTurnToTheNext) {
    AddPoint(900, 50);
    AddPoint(100, 50, -1);
    AddPoint(100, 50);
    EXPECT_THAT(Draw(0), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    EXPECT_THAT(Draw(1), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 0);
    EXPECT_EQ(Item(2).drawnFlg, kUntouched);
}

TEST_F(SymbolBlockTest, ItemBehindTheLastDrawsNothing) {
    AddPoint(100, 50);
    EXPECT_THAT(Draw(1), IsEmpty());
    EXPECT_THAT(Draw(INT32_MAX), IsEmpty());
    EXPECT_EQ(Draw(-7).size(), 11u) << "every negative number means all";
}

// --- Places and odd values ----------------------------------------------------------------------------------------------------

TEST_F(SymbolBlockTest, BlockOriginPendingOffsetAndFrameOriginPlaceThePoint) {
    const std::int32_t at = rig.AddLayer("F", kLayPoint, 1, 1000, -500);
    rig.Layer(at).lineSize = 9999;
    rig.Layer(at).pntType = 2;
    rig.AddItem("F", {{10, 20}});
    rig.frame.x = 990;
    rig.frame.y = 400;
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    DrawSymbolBlock(rig.store, rig.frame, at, at, true, rig.scratch, kAllItems);
    // World (1010, 480): 20.75 + 0.5 and 79.25 + 0.5, each cut.
    EXPECT_THAT(rig.Verbs("Ellipse"), Contains("Ellipse 9 67 33 91").Times(2));
}

TEST_F(SymbolBlockTest, TurnedViewTurnsThePlaceAndNotTheFigure) {
    rig.store.view.Rotate = 90;  // world (x, y) goes to (y, -x): map (-50, -40), world (-50, 40), comes to (40, 50)
    rig.frame.y = 0;
    AddPoint(-50, -40);
    EXPECT_THAT(Polygons(), Contains("Polygon [(28,38) (28,62) (52,62) (52,38)]").Times(2));
}

TEST_F(SymbolBlockTest, HugeResolutionAndFarPointsSaturate) {
    rig.store.view.DpiRatio = 1e9;
    Layer().lineSize = 0;
    AddPoint(1e300, -1e300);
    AddSymbol(0, {{{INT32_MAX, INT32_MIN}, {INT32_MIN, INT32_MAX}}});
    for (const std::int32_t pntType : {0, 1, 2, 3, 4, 5, 10, 11, 12, 9999}) {
        Layer().pntType = pntType;
        Draw();
        rig.frame.stripA = rig.frame.stripB = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
        EXPECT_GE(Draw().size(), 6u) << pntType;
    }
    AddPoint(100, 50);
    Layer().pntType = 12;
    EXPECT_THAT(Draw(1), Contains("Ellipse 2147483647 2147483647 -2147483648 -2147483648").Times(2));
    // 12: 2147483647 is the half side, and a unit of the symbol is worth many times 32 bits.
    Layer().pntType = 9999;
    EXPECT_THAT(Draw(1), Contains("MoveToEx 2147483647 2147483647"));
}

TEST_F(SymbolBlockTest, NegativeAndMissingResolutionDrawsWithoutHarm) {
    AddPoint(100, 50);
    rig.store.view.DpiRatio = std::nan("");
    EXPECT_THAT(Polygons(), Contains("Polygon [(100,50) (100,50) (100,50) (100,50)]").Times(2));
    rig.store.view.DpiRatio = -1e300;
    for (const std::int32_t pntType : {0, 4, 11, 12}) {
        Layer().pntType = pntType;
        Draw();
    }
}

TEST_F(SymbolBlockTest, NotANumberAndInfinitePointsDrawWithoutHarm) {
    AddPoint(100, 50);
    Item(0).pnts.Change()[0] = {std::nan(""), INFINITY, std::nan("")};
    Draw();
    EXPECT_EQ(Item(0).drawnFlg, 0) << "far above the frame";
    rig.store.view.Zoom = 0;
    Draw();
}

TEST_F(SymbolBlockTest, FrameAllocatesNothing) {
    for (int i = 0; i < 100; ++i) AddPoint(100, 50);
    ArrayFaults::Clear();
    EXPECT_EQ(SquareCnt(), 100u);
    EXPECT_EQ(ArrayFaults::Count(), 0);
}

}  // namespace
}  // namespace orvane
