#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "render/shapes.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNormalPen[] = "SelectObject pen(0x0 2 0x0000AA)";
constexpr char kNormalBrush[] = "SelectObject brush(0x00FF00)";
constexpr char kOldPen[] = "SelectObject pen(0x0 1 0x000000)";
constexpr char kOldBrush[] = "SelectObject brush(0xFFFFFF)";
constexpr char kBlack[] = "SelectObject brush(0x000000)";
constexpr char kCopy[] = "SetROP2 13";
constexpr char kMask[] = "SetROP2 9";

/// One green mesh layer with a dark red outline of two pixels.
class MeshBlockTest : public testing::Test {
protected:
    MeshBlockTest() {
        rig.AddLayer("M", kLayMesh);
        LayerDef& layer = rig.Layer(0);
        layer.color = 0x00FF00;
        layer.color2 = 0x0000AA;
        layer.lineSize = 2;
    }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    DigMeshAttr& Attr(std::size_t i) { return *Item(i).meshAttr; }
    DigDat& AddMesh(std::int32_t hcnt, std::int32_t vcnt, const std::vector<DigPnt>& pnts) {
        rig.AddItem("M", {});
        const auto datID = static_cast<std::int32_t>(rig.Block(0).dats.size());
        EXPECT_TRUE(rig.store.SetMeshDat("M", RenderRig::kMesh, datID, hcnt, vcnt, pnts));
        return rig.Item(0, rig.Block(0).dats.size() - 1);
    }
    /// Rows and columns 10 units apart, the first point at map (x, y).
    DigDat& AddGrid(std::int32_t hcnt, std::int32_t vcnt, double x = 20, double y = 20) {
        std::vector<DigPnt> pnts;
        for (std::int32_t r = 0; r < vcnt; ++r) {
            for (std::int32_t c = 0; c < hcnt; ++c) pnts.push_back({x + 10 * c, y + 10 * r, 0});
        }
        return AddMesh(hcnt, vcnt, pnts);
    }
    std::vector<std::string> Draw(std::string_view verb = "", bool honourClip = true) {
        DrawMeshBlock(rig.store, rig.frame, 0, 0, honourClip, rig.scratch);
        return rig.Verbs(verb);
    }
    std::vector<std::string> Cells(bool honourClip = true) { return Draw("Polygon", honourClip); }

    RenderRig rig;
};

// --- Look ---------------------------------------------------------------------------------------------------------------------

TEST_F(MeshBlockTest, DrawsACellAroundEachGridPointVerbByVerb) {
    AddGrid(2, 2);
    Attr(0).meshColor[1] = 0x0000FF;
    Attr(0).useFlag[2] = Attr(0).useFlag[3] = 0;
    // The grid points (20, 20) and (30, 20) are the middles of cells of 10 units.
    EXPECT_THAT(Draw(),
                ElementsAre(kNormalPen, kNormalBrush, kCopy, kBlack, "BeginPath", "Polygon [(15,85) (25,85) (25,75) (15,75)]",
                            "EndPath", "FillPath", "SelectObject brush(0x0000FF)", "BeginPath",
                            "Polygon [(25,85) (35,85) (35,75) (25,75)]", "EndPath", "FillPath", kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(MeshBlockTest, OutlineIsStrokedWithTheLayersPen) {
    rig.Layer(0).outLine = 0;
    rig.Layer(0).lineType = 3;
    rig.store.view.DpiRatio = 2;
    AddGrid(2, 2);
    const std::vector<std::string> verbs = Draw();
    EXPECT_EQ(verbs[0], "SelectObject pen(0x3 4 0x0000AA)");
    EXPECT_EQ(verbs[7], "StrokeAndFillPath");
    rig.AddLineType(3, 1, {8, 4});
    EXPECT_EQ(Draw()[0], "SelectObject pen(0x10207 4 0x0000AA [16 8])") << "the pen of lines, unlike circles";
}

TEST_F(MeshBlockTest, PatternHatchesEachCellInItsColour) {
    rig.Layer(0).pgnType = 5;
    AddGrid(2, 2);
    Attr(0).meshColor[0] = 0x123456;
    const std::vector<std::string> verbs = Draw();
    EXPECT_EQ(verbs[1], "SelectObject brush(hatch 0 0x00FF00)");
    EXPECT_EQ(verbs[3], "SelectObject brush(hatch 0 0x123456)");
    rig.Layer(0).pgnType = 8;
    EXPECT_EQ(Draw()[3], "SelectObject brush(0x123456)");
}

TEST_F(MeshBlockTest, HollowCellsAreStrokedOrNotDrawnAtAll) {
    rig.Layer(0).pgnType = 7;
    rig.Layer(0).outLine = 0;
    AddGrid(2, 2);
    for (std::size_t i = 1; i < 4; ++i) Attr(0).useFlag[i] = 0;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, kBlack, "BeginPath",
                                    "Polygon [(15,85) (25,85) (25,75) (15,75)]", "EndPath", "StrokePath", kOldBrush, kOldPen));
    rig.Layer(0).outLine = 1;
    Item(0).drawnFlg = kUntouched;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, kBlack, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(MeshBlockTest, EveryFillModeButOneCombinesWithWhatLiesBelow) {
    AddGrid(2, 2);
    for (const int fillMode : {0, 2, 255}) {
        rig.Layer(0).fillMode = static_cast<std::uint8_t>(fillMode);
        EXPECT_EQ(Draw()[2], kMask);
    }
}

TEST_F(MeshBlockTest, NewMeshIsBlackAll) {
    AddGrid(3, 2);
    EXPECT_EQ(Draw(kBlack).size(), 6u);
}

TEST_F(MeshBlockTest, MeshWithNoCellInUseDrawsNothingAndKeepsItsFlag) {
    AddGrid(2, 2);
    for (std::size_t i = 0; i < 4; ++i) Attr(0).useFlag[i] = 0;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

// --- Cells --------------------------------------------------------------------------------------------------------------------

TEST_F(MeshBlockTest, LastRowAndColumnBorrowTheQuadrangleOfTheirNeighbour) {
    // Columns 10 and 20 units apart, rows 10 and 30: the quadrangles are 10 x 10, 20 x 10, 10 x 30 and 20 x 30.
    std::vector<DigPnt> pnts;
    for (const double y : {20.0, 30.0, 60.0}) {
        for (const double x : {40.0, 50.0, 70.0}) pnts.push_back({x, y, 0});
    }
    AddMesh(3, 3, pnts);
    EXPECT_THAT(Cells(), ElementsAre("Polygon [(35,85) (45,85) (45,75) (35,75)]", "Polygon [(40,85) (60,85) (60,75) (40,75)]",
                                     "Polygon [(60,85) (80,85) (80,75) (60,75)]", "Polygon [(35,85) (45,85) (45,55) (35,55)]",
                                     "Polygon [(40,85) (60,85) (60,55) (40,55)]", "Polygon [(60,85) (80,85) (80,55) (60,55)]",
                                     "Polygon [(35,55) (45,55) (45,25) (35,25)]", "Polygon [(40,55) (60,55) (60,25) (40,25)]",
                                     "Polygon [(60,55) (80,55) (80,25) (60,25)]"));
}

TEST_F(MeshBlockTest, MiddleOfASkewCellIsTheCrossingOfItsDiagonals) {
    // The diagonals (20, 20)-(60, 60) and (50, 20)-(20, 50) cross at (35, 35); the first cell moves by (-15, -15).
    AddMesh(2, 2, {{20, 20, 0}, {50, 20, 0}, {20, 50, 0}, {60, 60, 0}});
    EXPECT_EQ(Cells()[0], "Polygon [(5,95) (35,95) (45,55) (5,65)]");
}

TEST_F(MeshBlockTest, FoldedCellTakesTheMiddleOfTheCellBefore) {
    // The right quadrangle is so folded that both of its diagonals are level; the left one has its middle at (25, 25).
    const std::vector<DigPnt> pnts = {{20, 20, 0}, {30, 20, 0}, {50, 30, 0}, {20, 30, 0}, {30, 30, 0}, {60, 20, 0}};
    AddMesh(3, 2, pnts);
    const std::vector<std::string> cells = Cells();
    ASSERT_EQ(cells.size(), 6u);
    // Own point (30, 20): moved by (5, -5).
    EXPECT_EQ(cells[1], "Polygon [(35,85) (55,75) (65,85) (35,75)]");
}

TEST_F(MeshBlockTest, FoldedFirstCellHasItsMiddleAtTheOriginOfTheBlock) {
    AddMesh(2, 2, {{20, 20, 0}, {30, 30, 0}, {20, 30, 0}, {40, 20, 0}});
    EXPECT_EQ(Cells()[0], "Polygon [(40,60) (50,50) (60,60) (40,50)]") << "moved by its own place";
    AddGrid(2, 2);
    AddMesh(2, 2, {{20, 20, 0}, {30, 30, 0}, {20, 30, 0}, {40, 20, 0}});
    EXPECT_EQ(Cells()[8], "Polygon [(40,60) (50,50) (60,60) (40,50)]") << "the mesh before has no say";
}

TEST_F(MeshBlockTest, UnusedCellsStillLendTheirMiddleToFoldedOnes) {
    AddMesh(3, 2, {{20, 20, 0}, {30, 20, 0}, {50, 30, 0}, {20, 30, 0}, {30, 30, 0}, {60, 20, 0}});
    Attr(0).useFlag[0] = 0;
    EXPECT_EQ(Cells()[0], "Polygon [(35,85) (55,75) (65,85) (35,75)]");
}

TEST_F(MeshBlockTest, TurnOriginAndPendingOffsetPlaceTheCells) {
    AddGrid(2, 2);
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    EXPECT_EQ(Cells()[0], "Polygon [(16,84) (26,84) (26,74) (16,74)]");
    rig.frame.pendX = rig.frame.pendY = 0;
    // A quarter turn carries world (x, y) to (y, -x); the block moves the cell around (20, 20) to one around map (-50, -40).
    rig.Block(0).GX = -70;
    rig.Block(0).GY = -60;
    rig.store.view.Rotate = 90;
    rig.frame.y = 0.25;
    EXPECT_EQ(Cells()[0], "Polygon [(45,55) (45,45) (35,45) (35,55)]");
}

// --- Who is let through -------------------------------------------------------------------------------------------------------

TEST_F(MeshBlockTest, OnlyTheClipFlagKeepsAMeshOut) {
    for (int i = 0; i < 3; ++i) AddGrid(2, 2);
    Item(0).clipFlg = 0;
    Item(1).lineTag = -1;
    Item(2).lineTag = 3;
    rig.store.LineTagMode = 1;
    EXPECT_EQ(Cells().size(), 8u);
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Cells(false).size(), 12u);
}

TEST_F(MeshBlockTest, SubLayerAndActiveMarkChangeNothing) {
    rig.AddSubLayer(0, 4).dspFlg = 0;
    AddGrid(2, 2);
    const std::vector<std::string> verbs = Draw();
    Item(0).subLayNo = 4;
    Item(0).active = 1;
    EXPECT_EQ(Draw(), verbs);
}

TEST_F(MeshBlockTest, ItemsWithoutAGridAreSkipped) {
    rig.AddItem("M", {{10, 10}, {20, 20}});
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(MeshBlockTest, MeshOffTheStripsLosesItsFlag) {
    AddGrid(2, 2, 500, 20);
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(MeshBlockTest, BoxReachesHalfACellAndAUnitBeyondTheBounds) {
    // The bounds run from 20 to 41 and from 20 to 40: cells of 21 / 2 = 10 and 20 / 1 = 20 units, cut before they are halved.
    AddGrid(3, 2);
    Item(0).rect = {20, 20, 41, 40};
    // So the box runs from 20 - 5 - 1 = 14 to 47 and, downward, from 100 - 51 = 49 to 100 - 9 = 91.
    const Rect meeting[] = {{10, 60, 15, 61}, {46, 60, 50, 61}, {30, 40, 31, 50}, {30, 90, 31, 99}};
    const Rect beside[] = {{10, 60, 14, 61}, {47, 60, 50, 61}, {30, 40, 31, 49}, {30, 91, 31, 99}};
    for (int i = 0; i < 4; ++i) {
        rig.frame.stripA = rig.frame.stripB = meeting[i];
        EXPECT_EQ(Cells().size(), 6u) << i;
        rig.frame.stripA = rig.frame.stripB = beside[i];
        EXPECT_THAT(Cells(), IsEmpty()) << i;
    }
}

TEST_F(MeshBlockTest, HalfCellsOfWholeUnitsMayBeHalfUnits) {
    AddGrid(2, 2);
    Item(0).rect = {20, 20, 25, 25};  // 5 / 1 / 2.0 = 2.5: the box ends at 25 + 2.5 + 1 = 28.5
    rig.frame.x = 0.5;
    rig.frame.stripA = rig.frame.stripB = {27, 0, 30, 100};
    EXPECT_EQ(Cells().size(), 4u);
    rig.frame.x = 0.6;
    rig.frame.stripA = rig.frame.stripB = {28, 0, 30, 100};
    EXPECT_THAT(Cells(), IsEmpty());
    rig.frame.x = 0.5;
    EXPECT_THAT(Cells(), IsEmpty()) << "28 is the edge, which lies outside";
    rig.frame.x = -0.5;
    EXPECT_EQ(Cells().size(), 4u);
}

TEST_F(MeshBlockTest, SecondStripCountsAsTheFirst) {
    AddGrid(2, 2);
    rig.frame.stripA = {150, 0, 200, 100};
    rig.frame.stripB = {0, 0, 30, 100};
    EXPECT_EQ(Cells().size(), 4u);
}

// --- Grids that do not fit their points ---------------------------------------------------------------------------------------

TEST_F(MeshBlockTest, GridOfOneRowOrColumnDrawsNothingAndKeepsItsFlag) {
    AddMesh(1, 3, {{20, 20, 0}, {20, 30, 0}, {20, 40, 0}});
    AddMesh(3, 1, {{20, 20, 0}, {30, 20, 0}, {40, 20, 0}});
    AddMesh(1, 1, {{20, 20, 0}});
    AddMesh(-1, -2, {{20, 20, 0}, {30, 20, 0}});
    AddGrid(2, 2).meshAttr->hcnt = 0;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(Item(i).drawnFlg, kUntouched) << i;
}

TEST_F(MeshBlockTest, NoPointsKeepTheFlagAndOnePointClearsIt) {
    AddGrid(2, 2).pntCnt = 0;
    AddGrid(2, 2).pntCnt = 1;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, 0);
}

TEST_F(MeshBlockTest, MissingArraysClearTheFlag) {
    AddGrid(2, 2);
    AddGrid(2, 2);
    Attr(0).useFlag.Free();
    Attr(1).meshColor.Free();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 0);
    EXPECT_EQ(Item(1).drawnFlg, 0);
}

TEST_F(MeshBlockTest, PointsTakenOutReadAsZeroAndTheirCellsAreNotDrawn) {
    DigDat& dat = AddGrid(2, 2);
    ASSERT_TRUE(dat.pnts.Resize(4, 3));  // so that a memory checker sees a read beyond them
    dat.pntCnt = 3;
    // Corners (20, 20), (30, 20), (0, 0), (20, 30). The diagonal through (20, 20) and (0, 0) is y = x, the other one falls from
    // (30, 20) to (20, 30): they cross at (25, 25). The moved zero point, -5 across, rounds to -4.
    EXPECT_THAT(Cells(), ElementsAre("Polygon [(15,85) (25,85) (-4,105) (15,75)]", "Polygon [(25,85) (35,85) (5,105) (25,75)]",
                                     "Polygon [(15,75) (25,75) (-4,95) (15,65)]"));
}

TEST_F(MeshBlockTest, PointsAddedBehindTheGridHaveNoCells) {
    DigDat& dat = AddGrid(2, 2);
    ASSERT_TRUE(dat.pnts.Resize(4, 9));
    dat.pntCnt = 9;
    EXPECT_EQ(Cells().size(), 4u);
}

TEST_F(MeshBlockTest, NotANumberAndInfinitePointsDrawWithoutHarm) {
    AddGrid(2, 2);
    Item(0).pnts.Change()[0] = {std::nan(""), INFINITY, 0};
    EXPECT_EQ(Cells().size(), 4u);
}

TEST_F(MeshBlockTest, LargeMeshAsksForNoMemory) {
    RecordContext silent(nullptr);
    rig.frame.dc = &silent;
    AddGrid(300, 300);
    ArrayFaults::FailFrom(1);
    DrawMeshBlock(rig.store, rig.frame, 0, 0, true, rig.scratch);
    EXPECT_EQ(ArrayFaults::Count(), 0);
    ArrayFaults::Clear();
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

}  // namespace
}  // namespace orvane
