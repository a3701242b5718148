#include <gmock/gmock.h>

#include <QPainter>
#include <cmath>
#include <random>

#include "tests/qt/oracle.h"
#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

TEST(QtWideLine, LevelLineCoversItsWidth) {
    Picture three(12, 7);
    three.dc.SelectPen(SolidPen(kBlack, 3));
    Polyline(three.dc, {{-9, 3}, {20, 3}});
    const std::string full(12, '#');
    const std::string none(12, '.');
    EXPECT_THAT(three.Rows(), ElementsAre(none, none, full, full, full, none, none));
    Picture two(12, 7);
    two.dc.SelectPen(SolidPen(kBlack, 2));
    Polyline(two.dc, {{-9, 3}, {20, 3}});
    EXPECT_THAT(two.Rows(), ElementsAre(none, none, full, full, none, none, none)) << "of an even width the upper row is in";
}

TEST(QtWideLine, UprightLineCoversItsWidth) {
    Picture four(8, 3);
    four.dc.SelectPen(SolidPen(kBlack, 4));
    Polyline(four.dc, {{4, -9}, {4, 20}});
    EXPECT_THAT(four.Rows(), ElementsAre("..####..", "..####..", "..####.."));
}

TEST(QtWideLine, NegativeWidthMadeByHandCountsByItsSize) {
    Picture picture(12, 7);
    Pen pen = SolidPen(kBlack, 3);
    pen.width_px = -3;
    picture.dc.SelectPen(pen);
    Polyline(picture.dc, {{-9, 3}, {20, 3}});
    EXPECT_EQ(picture.Rows()[2], std::string(12, '#'));
    EXPECT_EQ(picture.Rows()[1], std::string(12, '.'));
}

TEST(QtWideLine, PointDrawnTwiceIsADisc) {
    Picture picture(7, 7);
    picture.dc.SelectPen(SolidPen(kBlack, 5));
    Polyline(picture.dc, {{3, 3}, {3, 3}});
    EXPECT_THAT(picture.Rows(), ElementsAre(".......",  //
                                            "..###..",  //
                                            ".#####.",  //
                                            ".#####.",  //
                                            ".#####.",  //
                                            "..###..",  //
                                            "......."));
}

double DistanceFrom(const std::vector<Point>& pts, bool closed, Point p) {
    double least = 1e300;
    for (std::size_t i = 0; i + (closed ? 0 : 1) < pts.size(); ++i) {
        least = std::fmin(least, oracle::Distance(pts[i], pts[(i + 1) % pts.size()], p));
    }
    return least;
}

// The bars' corners stand on a grid of 1/256 pixel, so a pixel this near to the edge may fall either way.
constexpr double kSlack_px = 0.01;

void ExpectDistanceRule(Picture& picture, const std::vector<Point>& pts, bool closed, double width_px) {
    int faults = 0;
    for (int y = 0; y < picture.Image().height(); ++y) {
        for (int x = 0; x < picture.Image().width(); ++x) {
            const double inside = width_px / 2 - DistanceFrom(pts, closed, {x, y});
            if (std::fabs(inside) < kSlack_px) continue;
            faults += (picture.At(x, y) == kBlack) != (inside > 0) ? 1 : 0;
        }
    }
    EXPECT_EQ(faults, 0) << "width " << width_px << " first point " << pts[0].x << "," << pts[0].y;
}

TEST(QtWideLine, HasThePixelsWithinHalfItsWidth) {
    std::mt19937 random(51);
    for (int i = 0; i < 150; ++i) {
        Picture picture(60, 50);
        const auto width_px = static_cast<std::int32_t>(2 + random() % 12);
        picture.dc.SelectPen(SolidPen(kBlack, width_px));
        std::vector<Point> pts;
        for (int k = 0; k < 4; ++k)
            pts.push_back({static_cast<std::int32_t>(random() % 100) - 20, static_cast<std::int32_t>(random() % 90) - 20});
        Polyline(picture.dc, pts);
        ExpectDistanceRule(picture, pts, false, width_px);
    }
}

TEST(QtWideLine, OutlineOfAPolygonIsClosed) {
    Picture picture(40, 40);
    picture.dc.SelectPen(SolidPen(kBlack, 5));
    picture.dc.SelectBrush(NullBrush());
    const std::vector<Point> ring{{5, 8}, {33, 12}, {20, 35}};
    PolyPolygon(picture.dc, {ring});
    ExpectDistanceRule(picture, ring, true, 5);
}

TEST(QtWideLine, FarPointsAndHugeWidthsKeepTheRule) {
    std::mt19937 random(52);
    for (const std::int32_t width_px : {3, 1001, 70001, 2000000000, INT32_MAX}) {
        for (int i = 0; i < 40; ++i) {
            Picture picture(30, 20);
            picture.dc.SelectPen(SolidPen(kBlack, width_px));
            // Both ends about as far off as half the width, so that an edge of the bar or of a disc may come near.
            const auto off = [&] {
                return static_cast<std::int32_t>(static_cast<std::int64_t>(random() % 2000) * (width_px / 2 + 20) / 1000 -
                                                 width_px / 2);
            };
            const std::vector<Point> pts{{off(), off()}, {off(), off()}};
            Polyline(picture.dc, pts);
            ExpectDistanceRule(picture, pts, false, width_px);
        }
    }
}

TEST(QtWideLine, EndsAndWidthsAtTheLimitsAreSafe) {
    const std::int32_t ends[] = {INT32_MIN, -1, 10, INT32_MAX};
    Picture picture(20, 20);
    for (const std::int32_t width_px : {2, 1000000, INT32_MAX, INT32_MIN}) {
        Pen pen = SolidPen(kBlack);
        pen.width_px = width_px;
        picture.dc.SelectPen(pen);
        for (const std::int32_t x0 : ends) {
            for (const std::int32_t y0 : ends) {
                for (const std::int32_t x1 : ends) {
                    for (const std::int32_t y1 : ends) Polyline(picture.dc, {{x0, y0}, {x1, y1}});
                }
            }
        }
    }
    picture.Fill(kWhite);
    Polyline(picture.dc, {{INT32_MIN, 10}, {INT32_MAX, 10}});
    EXPECT_EQ(picture.CountOther(kBlack), 0) << "a pen as wide as everything";
}

TEST(QtWideLine, HundredThousandOverlappingSegmentsOfAHugePenCoverThePicture) {
    std::mt19937 random(53);
    Picture picture(800, 600);
    picture.dc.SelectPen(SolidPen(kBlack, 900));
    std::vector<Point> pts;
    for (int i = 0; i < 100000; ++i)
        pts.push_back({static_cast<std::int32_t>(random() % 800), static_cast<std::int32_t>(random() % 600)});
    Polyline(picture.dc, pts);
    EXPECT_EQ(picture.CountOther(kBlack), 0);
}

TEST(QtWideLine, ExclusiveOrMeetsEachPixelOnce) {
    const std::vector<Point> pts{{10, 10}, {40, 12}, {12, 30}, {45, 40}, {10, 10}};
    Picture plain(60, 50);
    plain.dc.SelectPen(SolidPen(kBlack, 9));
    Polyline(plain.dc, pts);
    Picture inverted(60, 50);
    inverted.dc.SelectPen(SolidPen(kBlack, 9));
    inverted.dc.SetROP2(Rop2::Not);
    Polyline(inverted.dc, pts);
    EXPECT_EQ(inverted.Rows(), plain.Rows());
    EXPECT_GT(plain.CountOther(kWhite), 1000);
}

TEST(QtWideLine, FiguresOfOnePathAreOneLineUnderExclusiveOr) {
    Picture picture(20, 9);
    picture.dc.SelectPen(SolidPen(kWhite, 3));
    picture.dc.SetROP2(Rop2::XorPen);
    picture.dc.BeginPath();
    Polyline(picture.dc, {{-5, 4}, {25, 4}});
    Polyline(picture.dc, {{10, -5}, {10, 14}});
    picture.dc.EndPath();
    picture.dc.StrokePath();
    EXPECT_EQ(picture.At(10, 4), kBlack);
    EXPECT_EQ(picture.At(2, 4), kBlack);
    EXPECT_EQ(picture.At(10, 1), kBlack);
}

TEST(QtWideLine, AreaUnderAWideOutlineIsDrawnOnlyWhereTheOutlineLeavesIt) {
    Picture picture(20, 20);
    picture.dc.SetROP2(Rop2::MaskPen);
    picture.dc.SelectPen(SolidPen(kYellow, 5));
    picture.dc.SelectBrush(CreateSolidBrush(0xFFFF00));
    PolyPolygon(picture.dc, {RectRing(5, 5, 15, 15)});
    EXPECT_EQ(picture.At(10, 10), 0xFFFF00u);
    EXPECT_EQ(picture.At(6, 10), kYellow) << "inside the outline's inner half";
    EXPECT_EQ(picture.At(4, 10), kYellow);
    EXPECT_EQ(picture.At(0, 0), kWhite);
}

TEST(QtWideLine, ClipOfSeveralRectanglesCutsIt) {
    const std::vector<Point> pts{{5, 5}, {30, 20}, {8, 33}};
    for (const Rop2 mode : {Rop2::CopyPen, Rop2::Not}) {
        Picture whole(40, 40);
        Picture cut(40, 40);
        for (Picture* picture : {&whole, &cut}) {
            picture->dc.SelectPen(SolidPen(kBlack, 7));
            picture->dc.SetROP2(mode);
        }
        cut.dc.ExcludeClipRect({10, 10, 20, 30});
        cut.dc.ExcludeClipRect({25, 0, 27, 40});
        Polyline(whole.dc, pts);
        Polyline(cut.dc, pts);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) {
                const bool out = (x >= 10 && x < 20 && y >= 10 && y < 30) || (x >= 25 && x < 27);
                EXPECT_EQ(cut.At(x, y), out ? kWhite : whole.At(x, y)) << x << "," << y;
            }
        }
    }
}

TEST(QtWideLine, GeometricUserStyleHasFlatDashesCountedInPixels) {
    const std::int32_t dashes[] = {6, 3};
    Picture picture(24, 5);
    picture.dc.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 3, kBlack, 2, dashes));
    Polyline(picture.dc, {{2, 2}, {22, 2}});
    const std::string none(24, '.');
    const std::string row = "..######...######...##..";
    EXPECT_THAT(picture.Rows(), ElementsAre(none, row, row, row, none));
}

TEST(QtWideLine, DashesAreCountedAlongTheLineAndGoOnRoundCorners) {
    const std::int32_t dashes[] = {10, 10};
    Picture picture(60, 60);
    picture.dc.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 4, kBlack, 2, dashes));
    // 3, 4, 5: the slanted part is 25 long; then it goes on to the right.
    Polyline(picture.dc, {{5, 5}, {20, 25}, {55, 25}});
    const auto along = [](double s) {
        return Point{static_cast<std::int32_t>(std::lround(5 + 0.6 * s)), static_cast<std::int32_t>(std::lround(5 + 0.8 * s))};
    };
    for (const double s : {2.0, 5.0, 8.0, 22.0, 24.0}) EXPECT_EQ(picture.At(along(s).x, along(s).y), kBlack) << s;
    for (const double s : {12.0, 15.0, 18.0}) EXPECT_EQ(picture.At(along(s).x, along(s).y), kWhite) << s;
    // The dash that began at 20 ends 5 pixels behind the corner; the next runs from 15 to 25 behind it.
    EXPECT_EQ(picture.Rows()[25].substr(20, 35), "#####..........##########..........");
}

TEST(QtWideLine, CornerIsRoundedOffWhereADashGoesThroughIt) {
    const std::int32_t through[] = {100, 5};
    const std::int32_t gapThere[] = {12, 5};
    Picture round(40, 40);
    Picture open(40, 40);
    round.dc.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 9, kBlack, 2, through));
    open.dc.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 9, kBlack, 2, gapThere));
    for (Picture* picture : {&round, &open}) Polyline(picture->dc, {{10, 20}, {25, 20}, {25, 35}});
    EXPECT_EQ(round.At(28, 18), kBlack);
    EXPECT_EQ(open.At(28, 18), kWhite);
    EXPECT_EQ(open.At(27, 30), kBlack);
}

TEST(QtWideLine, FlatDashesOfALineFromFarAwayAreThoseOfTheWholeLine) {
    const std::int32_t dashes[] = {7, 4};
    for (const std::int32_t start : {INT32_MIN, -2000000000, -12345}) {
        Picture picture(40, 3);
        picture.dc.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 3, kBlack, 2, dashes));
        Polyline(picture.dc, {{start, 1}, {INT32_MAX, 1}});
        std::string expected;
        for (std::int64_t x = 0; x < 40; ++x) expected += (x - start) % 11 < 7 ? '#' : '.';
        EXPECT_EQ(picture.Rows()[1], expected);
    }
}

TEST(QtWideLine, DashedHugePenBetweenTheFarthestPointsIsSafe) {
    const std::int32_t dashes[] = {1, 1};
    Picture picture(64, 64);
    picture.dc.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, INT32_MAX, kBlack, 2, dashes));
    Polyline(picture.dc, {{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}, {INT32_MAX, INT32_MIN}, {INT32_MIN, INT32_MAX}});
    EXPECT_GT(picture.CountOther(kWhite), 0);
}

TEST(QtWideLine, AgreesWithAnotherPainter) {
    std::mt19937 random(54);
    int drawn = 0;
    int different = 0;
    for (int i = 0; i < 30; ++i) {
        Picture ours(200, 200);
        Picture theirs(200, 200);
        ours.dc.SelectPen(SolidPen(kBlack, 7));
        std::vector<Point> pts;
        QPolygonF line;
        for (int k = 0; k < 5; ++k) {
            pts.push_back({static_cast<std::int32_t>(random() % 200), static_cast<std::int32_t>(random() % 200)});
            line << QPointF(pts.back().x + 0.5, pts.back().y + 0.5);
        }
        Polyline(ours.dc, pts);
        {
            QPainter painter(&theirs.Image());
            painter.setPen(QPen(Qt::black, 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPolyline(line);
        }
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x) {
                drawn += ours.At(x, y) == kBlack ? 1 : 0;
                different += ours.At(x, y) != theirs.At(x, y) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(drawn, 50000);
    EXPECT_LT(different, drawn / 20) << "edge pixels, where curves are flattened";
}

}  // namespace
}  // namespace orvane
