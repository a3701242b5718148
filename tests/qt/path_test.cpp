#include <gmock/gmock.h>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

class QtPath : public testing::Test {
protected:
    QtPath() : picture(6, 5), dc(picture.dc) {
        dc.SelectPen(SolidPen(kRed));
        dc.SelectBrush(CreateSolidBrush(kBlue));
    }
    void GatherRect() {
        dc.BeginPath();
        PolyPolygon(dc, {RectRing(0, 0, 4, 3)});
        dc.EndPath();
    }
    void GatherOpenCorner() {
        dc.BeginPath();
        Polyline(dc, {{0, 0}, {4, 0}, {4, 3}, {0, 3}});
        dc.EndPath();
    }
    Picture picture;
    QtContext& dc;
};

const Rows kNothing{"......", "......", "......", "......", "......"};
const Rows kFilled{"bbbb..", "bbbb..", "bbbb..", "......", "......"};
const Rows kOutlined{"rrrrr.", "r...r.", "r...r.", "rrrrr.", "......"};
const Rows kBoth{"rrrrr.", "rbbbr.", "rbbbr.", "rrrrr.", "......"};

TEST_F(QtPath, ShapesInsideTheBracketAreNotDrawn) {
    GatherRect();
    EXPECT_EQ(picture.Rows(), kNothing);
}

TEST_F(QtPath, FillPathFillsWithoutOutline) {
    GatherRect();
    dc.FillPath();
    EXPECT_EQ(picture.Rows(), kFilled);
}

TEST_F(QtPath, StrokePathOutlinesWithoutFill) {
    GatherRect();
    dc.StrokePath();
    EXPECT_EQ(picture.Rows(), kOutlined);
}

TEST_F(QtPath, StrokeAndFillPathDoesBoth) {
    GatherRect();
    dc.StrokeAndFillPath();
    EXPECT_EQ(picture.Rows(), kBoth);
}

TEST_F(QtPath, StrokeAndFillPathClosesOpenFigures) {
    GatherOpenCorner();
    dc.StrokeAndFillPath();
    EXPECT_EQ(picture.Rows(), kBoth);
}

TEST_F(QtPath, StrokePathLeavesOpenFiguresOpen) {
    GatherOpenCorner();
    dc.StrokePath();
    EXPECT_THAT(picture.Rows(), ElementsAre("rrrrr.", "....r.", "....r.", ".rrrr.", "......"));
}

TEST_F(QtPath, FillPathFillsOpenFiguresAsIfClosed) {
    GatherOpenCorner();
    dc.FillPath();
    EXPECT_EQ(picture.Rows(), kFilled);
}

TEST_F(QtPath, EachOfTheThreeConsumesThePath) {
    void (QtContext::*const verbs[])() = {&QtContext::FillPath, &QtContext::StrokePath, &QtContext::StrokeAndFillPath};
    for (const auto consume : verbs) {
        for (const auto second : verbs) {
            GatherRect();
            (dc.*consume)();
            picture.Fill(kWhite);
            (dc.*second)();
            EXPECT_EQ(picture.Rows(), kNothing);
        }
    }
}

TEST_F(QtPath, WithoutAPathTheDrawingVerbsDoNothing) {
    dc.FillPath();
    dc.StrokePath();
    dc.StrokeAndFillPath();
    dc.EndPath();
    dc.StrokeAndFillPath();
    EXPECT_EQ(picture.Rows(), kNothing);
}

TEST_F(QtPath, DrawingVerbInsideTheBracketFailsAndLeavesThePath) {
    dc.BeginPath();
    PolyPolygon(dc, {RectRing(0, 0, 4, 3)});
    dc.FillPath();
    dc.StrokePath();
    dc.StrokeAndFillPath();
    EXPECT_EQ(picture.Rows(), kNothing);
    dc.EndPath();
    dc.StrokeAndFillPath();
    EXPECT_EQ(picture.Rows(), kBoth);
}

TEST_F(QtPath, BeginPathDropsThePathBefore) {
    GatherRect();
    dc.BeginPath();
    Polyline(dc, {{0, 4}, {6, 4}});
    dc.BeginPath();
    Polyline(dc, {{5, 0}, {5, 2}});
    dc.EndPath();
    dc.StrokePath();
    EXPECT_THAT(picture.Rows(), ElementsAre(".....r", ".....r", "......", "......", "......"));
}

TEST_F(QtPath, FiguresOfOnePathFillTogetherByTheAlternateRule) {
    dc.BeginPath();
    PolyPolygon(dc, {RectRing(0, 0, 6, 5)});
    PolyPolygon(dc, {RectRing(1, 1, 3, 3), RectRing(4, 1, 5, 4)});
    dc.EndPath();
    dc.FillPath();
    EXPECT_THAT(picture.Rows(), ElementsAre("bbbbbb", "b..b.b", "b..b.b", "bbbb.b", "bbbbbb"));
}

TEST_F(QtPath, PenAndBrushAreThoseOfTheMomentOfDrawing) {
    GatherRect();
    dc.SelectPen(SolidPen(kGreen));
    dc.SelectBrush(CreateSolidBrush(kYellow));
    dc.StrokeAndFillPath();
    EXPECT_THAT(picture.Rows(), ElementsAre("ggggg.", "gyyyg.", "gyyyg.", "ggggg.", "......"));
}

TEST_F(QtPath, RefusedPolygonLeavesNoFigure) {
    dc.BeginPath();
    const std::vector<Point> pts{{0, 0}, {4, 0}, {4, 4}, {2, 2}};
    const std::int32_t counts[] = {3, 1};
    dc.PolyPolygon(pts.data(), counts, 2);
    dc.EndPath();
    dc.StrokeAndFillPath();
    EXPECT_EQ(picture.Rows(), kNothing);
}

TEST_F(QtPath, EmptyPathIsConsumedToo) {
    dc.BeginPath();
    dc.EndPath();
    dc.StrokeAndFillPath();
    dc.FillPath();
    EXPECT_EQ(picture.Rows(), kNothing);
}

TEST_F(QtPath, FillsAndBlitsInsideTheBracketDrawAtOnce) {
    dc.BeginPath();
    dc.PatBlt(0, 0, 1, 1, Rop3::Blackness);
    dc.FillRect({1, 0, 2, 1}, CreateSolidBrush(kGreen));
    dc.EndPath();
    EXPECT_EQ(picture.Rows()[0], "#g....");
}

TEST_F(QtPath, PathOutlivesAChangeOfBitmap) {
    GatherRect();
    const auto bitmap = dc.CreateCompatibleBitmap(6, 5);
    dc.SelectBitmap(bitmap.get());
    dc.FillPath();
    EXPECT_EQ(dc.Image().pixel(2, 2), 0xFF0000FFu);
    EXPECT_EQ(picture.Rows(), kNothing);
}

TEST_F(QtPath, PathDrawnWithoutBitmapIsConsumed) {
    GatherRect();
    dc.SelectBitmap(nullptr);
    dc.FillPath();
    QtBitmap bitmap(picture.Image());
    dc.SelectBitmap(&bitmap);
    dc.FillPath();
    EXPECT_EQ(bitmap.Image().pixel(2, 2), 0xFFFFFFFFu);
}

}  // namespace
}  // namespace orvane
