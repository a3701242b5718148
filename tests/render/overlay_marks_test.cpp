// The marks of active figures, the top figure, and the strings.
#include <gmock/gmock.h>

#include "platform/grow_array.h"
#include "tests/render/overlay_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// --- Vertex marks -------------------------------------------------------------------------------------------------------------

class VertexMarksTest : public OverlayTest {
protected:
    VertexMarksTest() { rig.store.ActivePointType = 1; }
    /// A circle of radius `r` around a pixel.
    static std::string Ring(std::int32_t x, std::int32_t y, std::int32_t r) {
        return "Ellipse " + std::to_string(x - r) + " " + std::to_string(y - r) + " " + std::to_string(x + r) + " " +
               std::to_string(y + r);
    }
};

TEST_F(VertexMarksTest, LineOfTwoPointsHasRings5And3AtTheFirstAnd5AtTheSecond) {
    AddActive(kLayLine, {{10, 90}, {30, 50}}, 2, 0x00FF00);
    EXPECT_THAT(Drawn(), ElementsAre(kMask, kEntryBrush, kEntryPen, Ring(10, 10, 5), Ring(10, 10, 3), Ring(30, 50, 5),
                                     "SelectObject pen(0x0 2 0x00FF00)", kActiveBrush, kActivePen, "Polyline [(10,10) (30,50)]"));
}

TEST_F(VertexMarksTest, SecondVertexHasThreeRings) {
    AddActive(kLayLine, {{10, 90}, {30, 50}, {50, 40}, {70, 40}});
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre(Ring(10, 10, 5), Ring(10, 10, 3), Ring(30, 50, 2), Ring(30, 50, 4),
                                                Ring(30, 50, 3), Ring(50, 60, 3), Ring(70, 60, 5)));
}

TEST_F(VertexMarksTest, SinglePointIsMarkedTwice) {
    AddActive(kLayPoint, {{10, 90}}, 1);
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre(Ring(10, 10, 5), Ring(10, 10, 5)));
}

TEST_F(VertexMarksTest, EachRingOfAPolygonIsMarkedByItself) {
    AddActive(kLayPolygon, {{10, 90}, {30, 90}, {30, 50}, {10, 90}, {15, 80}, {20, 80}, {20, 75}, {15, 80}, {5, 5}});
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre(Ring(10, 10, 5), Ring(10, 10, 3), Ring(30, 10, 2), Ring(30, 10, 4),
                                                Ring(30, 10, 3), Ring(30, 50, 3), Ring(10, 10, 5),  //
                                                Ring(15, 20, 5), Ring(15, 20, 3), Ring(20, 20, 2), Ring(20, 20, 4),
                                                Ring(20, 20, 3), Ring(20, 25, 3), Ring(15, 20, 5)))
        << "the point behind the rings has no mark";
}

TEST_F(VertexMarksTest, PolygonWithoutRingsIsMarkedAsALine) {
    AddActive(kLayPolygon, {{10, 90}, {30, 90}, {30, 50}});
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre(Ring(10, 10, 5), Ring(10, 10, 3), Ring(30, 10, 2), Ring(30, 10, 4),
                                                Ring(30, 10, 3), Ring(30, 50, 5)));
}

TEST_F(VertexMarksTest, RingOfOnePointIsMarkedTwice) {
    AddActive(kLayPolygon, {{10, 90}});
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre(Ring(10, 10, 5), Ring(10, 10, 5)));
}

TEST_F(VertexMarksTest, LineThatClosesIsNotMarkedByRings) {
    AddActive(kLayLine, {{10, 90}, {30, 90}, {10, 90}, {50, 50}});
    EXPECT_EQ(DrawnBy("Ellipse").size(), 7u);
}

TEST_F(VertexMarksTest, MarksOfAnEllipseComeBehindItsBox) {
    AddActive(kLayEllipse, {{20, 80}, {60, 50}}, 2);
    EXPECT_THAT(Drawn(),
                ElementsAre(kMask, "SelectObject pen(0x2 1 0x000000)", "Polyline [(20,20) (20,50) (60,50) (60,20) (20,20)]",
                            kBlackPen, kEntryBrush, kEntryPen, Ring(20, 20, 5), Ring(20, 20, 3), Ring(60, 50, 5), kActiveBrush,
                            kActivePen, "BeginPath", "Ellipse 20 20 60 50", "EndPath", "FillPath"));
}

TEST_F(VertexMarksTest, TypesThatDrawNothingAreMarkedAllTheSame) {
    AddActive(5, {{10, 90}, {30, 50}}, 2);
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre(Ring(10, 10, 5), Ring(10, 10, 3), Ring(30, 50, 5)));
}

TEST_F(VertexMarksTest, OnlyActiveFiguresInTheCircleModeAreMarked) {
    const std::int32_t pos = AddActive(kLayLine, {{10, 90}, {30, 50}});
    for (const std::int32_t mode : {0, 2, -1}) {
        rig.store.ActivePointType = mode;
        EXPECT_THAT(DrawnBy("Ellipse"), IsEmpty()) << mode;
    }
    rig.store.ActivePointType = 1;
    rig.store.MutableOrgDat(pos).active = 0;
    EXPECT_THAT(DrawnBy("Ellipse"), IsEmpty());
}

// --- Top figure ---------------------------------------------------------------------------------------------------------------

/// Map y 0 lies in the middle, so that a mirrored figure stays in sight: map (x, y) comes to pixel (x, 50 - y).
class TopFigureTest : public OverlayTest {
protected:
    TopFigureTest() { rig.frame.y = -50; }
};

TEST_F(TopFigureTest, IsDrawnOnceMoreAtTheEndMirroredAboutTheXAxisOfTheMap) {
    Add(kLayLine, {{10, 20}, {30, 40}}, 3, 0x00FF00, 1);
    Add(kLayLine, {{50, 20}, {60, 40}}, 2, 0xFF0000);
    topDrawID = 1;
    EXPECT_THAT(Drawn(), ElementsAre(kCopy, "SelectObject pen(0x0 3 0x00FF00)", "Polyline [(10,30) (30,10)]", kMask,
                                     "SelectObject pen(0x0 2 0xFF0000)", "Polyline [(50,30) (60,10)]", kCopy,
                                     "SelectObject pen(0x0 3 0x00FF00)", "Polyline [(10,70) (30,90)]"));
    EXPECT_EQ(rig.store.OrgDatCnt(), 2);
    EXPECT_EQ(rig.store.OrgDats()[0].pntCnt, 2);
    EXPECT_EQ(rig.store.OrgDats()[1].pntCnt, 2);
}

TEST_F(TopFigureTest, EveryTypeIsTakenOver) {
    Add(kLayCircle, {{50, 20}, {53, 24}}, 1);
    topDrawID = 1;
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre("Ellipse 45 25 55 35", "Ellipse 45 65 55 75"));
    rig.store.MutableOrgDat(0).type = kLayPoint;
    EXPECT_THAT(DrawnBy("Polygon"),
                ElementsAre("Polygon [(40,20) (60,20) (60,40) (40,40)]", "Polygon [(40,20) (60,20) (60,40) (40,40)]",
                            "Polygon [(40,60) (60,60) (60,80) (40,80)]", "Polygon [(40,60) (60,60) (60,80) (40,80)]"));
}

TEST_F(TopFigureTest, IsNeverActive) {
    AddActive(kLayLine, {{10, 20}, {30, 40}}, 3, 0x00FF00);
    rig.store.ActivePointType = 1;
    topDrawID = 1;
    const Lines lines = Drawn();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), kActivePen), 1);
    EXPECT_THAT(Lines(lines.end() - 3, lines.end()),
                ElementsAre(kMask, "SelectObject pen(0x0 3 0x00FF00)", "Polyline [(10,70) (30,90)]"));
}

TEST_F(TopFigureTest, OffTheStripsItIsDrawnWhenItsMirrorImageIsInSight) {
    Add(kLayLine, {{10, -80}, {30, -90}});
    topDrawID = 1;
    EXPECT_THAT(DrawnBy("Polyline"), IsEmpty());
    rig.frame.y = 50;  // the client area shows map y from -50 to -150, so nothing of the mirror image
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(10,30) (30,40)]"));
    rig.frame.y = -130;  // from 130 to 30
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(10,50) (30,40)]"));
}

TEST_F(TopFigureTest, UnknownIdLeavesAFigureWithoutPointsThatIsRemovedAgain) {
    Add(kLayLine, {{10, 20}, {30, 40}});
    for (const std::int32_t unknown : {77, 2}) {  // 2 is what the added figure itself is called
        topDrawID = unknown;
        EXPECT_THAT(Drawn(), ElementsAre(kMask, kBlackPen, "Polyline [(10,30) (30,10)]"));
        EXPECT_EQ(rig.store.OrgDatCnt(), 1);
        EXPECT_EQ(rig.store.GetOrgID(0), 1);
    }
}

TEST_F(TopFigureTest, IsRemovedWhenAFigureWithoutPointsEndsTheDrawing) {
    Add(kLayLine, {{10, 20}, {30, 40}});
    Add(kLayLine, {});
    topDrawID = 1;
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(10,30) (30,10)]"));
    EXPECT_EQ(rig.store.OrgDatCnt(), 2);
}

TEST_F(TopFigureTest, SharesItsIdWithAnOlderFigureAfterADeletionAndTheOlderOneStays) {
    Add(kLayLine, {{1, 1}, {2, 2}});
    Add(kLayLine, {{1, 1}, {2, 2}});
    Add(kLayLine, {{10, 20}, {30, 40}});
    ASSERT_EQ(rig.store.DelOrgData(2), 0);
    topDrawID = 3;  // the second of two figures, and the third is made with 3 as well
    EXPECT_THAT(DrawnBy("Polyline"),
                ElementsAre("Polyline [(1,49) (2,48)]", "Polyline [(10,30) (30,10)]", "Polyline [(10,70) (30,90)]"));
    ASSERT_EQ(rig.store.OrgDatCnt(), 2);
    EXPECT_EQ(rig.store.GetOrgID(1), 3);
    EXPECT_EQ(rig.store.OrgDats()[1].pntCnt, 2);
}

TEST_F(TopFigureTest, TakesThePointsOfAllFiguresOfThatIdAndTheLookOfTheLast) {
    Add(kLayLine, {{10, 20}, {30, 40}}, 3, 0x00FF00);
    rig.store.MutableOrgDat(Add(kLayLine, {{50, 20}, {60, 40}}, 2, 0xFF0000)).ID = 1;
    topDrawID = 1;
    const Lines lines = Drawn();
    EXPECT_THAT(Lines(lines.end() - 2, lines.end()),
                ElementsAre("SelectObject pen(0x0 2 0xFF0000)", "Polyline [(10,70) (30,90) (50,70) (60,90)]"));
}

TEST_F(TopFigureTest, ZeroAndNegativeIdsAddNothing) {
    Add(kLayLine, {{10, 20}, {30, 40}});
    for (const std::int32_t none : {0, -1}) {
        topDrawID = none;
        EXPECT_EQ(DrawnBy("Polyline").size(), 1u);
    }
}

TEST_F(TopFigureTest, WithoutMemoryForItTheOthersAreDrawn) {
    Add(kLayLine, {{10, 20}, {30, 40}});
    topDrawID = 1;
    ArrayFaults::FailNth(1);
    const Lines lines = DrawnBy("Polyline");
    ArrayFaults::Clear();
    EXPECT_THAT(lines, ElementsAre("Polyline [(10,30) (30,10)]"));
    EXPECT_EQ(rig.store.OrgDatCnt(), 1);
}

// --- Strings ------------------------------------------------------------------------------------------------------------------

class OverlayStringsTest : public OverlayTest {
protected:
    OverlayStringsTest() { strVisible = true; }
    void SetString(std::int32_t pos, std::string_view text, double x, double y, std::int32_t fill = 0) {
        EXPECT_EQ(rig.store.SetOrgDatString(rig.store.GetOrgID(pos), text, x, y, 99, 0x00FF00, fill), 0);
    }
    /// What comes behind the figures.
    Lines Strings() {
        const Lines lines = All();
        const auto end = std::find(lines.begin(), lines.end(), kEntryPen);
        EXPECT_NE(end, lines.end());
        return end == lines.end() ? Lines{} : Lines(end + 1, lines.end());
    }
};

TEST_F(OverlayStringsTest, AreWrittenBehindAllFiguresInTheFontAndColourOfTheContext) {
    SetString(Add(kLayLine, {{10, 20}, {30, 40}}), "first", 20, 30, 1);
    Add(kLayLine, {{10, 20}, {30, 40}});
    SetString(Add(kLayLine, {{10, 20}, {30, 40}}), "\x8A\xBF\x8E", 40, 50);
    EXPECT_THAT(Strings(), ElementsAre(kCopy, "TextOut 20 70 \"first\"", kMask, "TextOut 40 50 \"\\x8A\\xBF\\x8E\""));
}

TEST_F(OverlayStringsTest, AreNotWrittenWhileTheyAreOff) {
    SetString(Add(kLayLine, {{10, 20}, {30, 40}}), "first", 20, 30);
    strVisible = false;
    EXPECT_THAT(Strings(), IsEmpty());
}

TEST_F(OverlayStringsTest, AreWrittenForFiguresThatAreNotDrawn) {
    SetString(Add(kLayLine, {}), "a", 20, 30);
    SetString(Add(kLayLine, {{10, 20}, {30, 40}}), "b", 2000, 30, -1);
    EXPECT_THAT(Strings(), ElementsAre(kMask, "TextOut 20 70 \"a\"", kCopy, "TextOut 2000 70 \"b\""));
}

TEST_F(OverlayStringsTest, AreNotWrittenForDeletedRecordsNorForTheTopFigure) {
    SetString(Add(kLayLine, {{10, 20}, {30, 40}}), "a", 20, 30);
    SetString(Add(kLayLine, {{10, 20}, {30, 40}}), "b", 20, 30);
    rig.store.MutableOrgDat(0).ID = 0;
    topDrawID = 2;
    EXPECT_THAT(Strings(), ElementsAre(kMask, "TextOut 20 70 \"b\""));
}

TEST_F(OverlayStringsTest, ArePlacedLikeThePointsOfFigures) {
    SetString(Add(kLayLine, {{10, 20}, {30, 40}}), "a", 10, 20);
    rig.store.view.Rotate = 90;
    rig.store.view.OffX = 5;
    rig.frame.x = -100;
    rig.frame.y = -60;
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -3;
    // World (10, -20) turns to (-20, -10).
    EXPECT_THAT(Strings(), ElementsAre(kMask, "TextOut 76 47 \"a\""));
}

}  // namespace
}  // namespace orvane
