#include <gmock/gmock.h>

#include <random>

#include "tests/qt/oracle.h"
#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

TEST(QtThinLine, LastPointIsNotDrawn) {
    Picture picture(6, 3);
    Polyline(picture.dc, {{0, 0}, {3, 0}, {3, 2}, {5, 2}});
    EXPECT_THAT(picture.Rows(), ElementsAre("####..",  //
                                            "...#..",  //
                                            "...##."));
}

TEST(QtThinLine, WidthZeroDrawsAsOne) {
    Picture picture(4, 3);
    picture.dc.SelectPen(SolidPen(kRed, 0));
    Polyline(picture.dc, {{0, 1}, {4, 1}});
    EXPECT_THAT(picture.Rows(), ElementsAre("....", "rrrr", "...."));
}

TEST(QtThinLine, LineOfNoLengthFewerThanTwoPointsAndNoPointsDrawNothing) {
    Picture picture(3, 3);
    Polyline(picture.dc, {{1, 1}, {1, 1}});
    Polyline(picture.dc, {{1, 1}});
    picture.dc.Polyline(nullptr, 5);
    const Point point{1, 1};
    picture.dc.Polyline(&point, 0);
    picture.dc.Polyline(&point, -3);
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

TEST(QtThinLine, TieOfAFlatLineGoesUpInBothDirections) {
    Picture there(5, 3);
    Polyline(there.dc, {{0, 0}, {4, 2}});
    EXPECT_THAT(there.Rows(), ElementsAre("##...", "..##.", "....."));
    Picture back(5, 3);
    Polyline(back.dc, {{4, 2}, {0, 0}});
    EXPECT_THAT(back.Rows(), ElementsAre(".#...", "..##.", "....#"));
}

TEST(QtThinLine, TieOfASteepLineGoesLeftInBothDirections) {
    Picture there(3, 5);
    Polyline(there.dc, {{0, 0}, {2, 4}});
    EXPECT_THAT(there.Rows(), ElementsAre("#..", "#..", ".#.", ".#.", "..."));
    Picture back(3, 5);
    Polyline(back.dc, {{2, 4}, {0, 0}});
    EXPECT_THAT(back.Rows(), ElementsAre("...", "#..", ".#.", ".#.", "..#"));
}

TEST(QtThinLine, DiagonalStepsBothWaysAtOnce) {
    Picture picture(4, 4);
    Polyline(picture.dc, {{3, 0}, {0, 3}});
    EXPECT_THAT(picture.Rows(), ElementsAre("...#", "..#.", ".#..", "...."));
}

// Draws figures and asks the rule about every pixel of the picture.
void ExpectRule(Picture& picture, const std::vector<Point>& pts, const ClipArea* clip = nullptr) {
    picture.Fill(kWhite);
    Polyline(picture.dc, pts);
    int faults = 0;
    for (int y = 0; y < picture.Image().height(); ++y) {
        for (int x = 0; x < picture.Image().width(); ++x) {
            bool expected = oracle::IsOnFigure(pts, false, {x, y});
            if (clip != nullptr) {
                expected = expected && std::any_of(clip->rects.begin(), clip->rects.end(), [x, y](const Rect& r) {
                               return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
                           });
            }
            faults += (picture.At(x, y) == kBlack) != expected ? 1 : 0;
        }
    }
    EXPECT_EQ(faults, 0) << "first points " << pts[0].x << "," << pts[0].y << " " << pts[1].x << "," << pts[1].y;
}

TEST(QtThinLine, EveryShortLineFollowsTheRule) {
    Picture picture(19, 19);
    for (int x = 0; x <= 18; ++x) {
        for (int y = 0; y <= 18; ++y) ExpectRule(picture, {{9, 9}, {x, y}});
    }
}

TEST(QtThinLine, LinesThatLeaveThePictureKeepThePixelsOfTheWholeLine) {
    std::mt19937 random(4711);
    Picture picture(40, 30);
    const auto near = [&] { return static_cast<std::int32_t>(random() % 400) - 180; };
    for (int i = 0; i < 2000; ++i) ExpectRule(picture, {{near(), near()}, {near(), near()}});
}

TEST(QtThinLine, LinesBetweenAnyTwoPointsOfThirtyTwoBitsFollowTheRule) {
    std::mt19937 random(4712);
    Picture picture(32, 24);
    const auto any = [&] { return static_cast<std::int32_t>(random()); };
    for (int i = 0; i < 500; ++i) {
        // Past the picture, about opposite of the first point.
        const Point a{any(), any()};
        const auto beyond = [&](std::int32_t v) { return -(v / 2) + static_cast<std::int32_t>(random() % 40); };
        ExpectRule(picture, {a, {beyond(a.x), beyond(a.y)}});
    }
}

TEST(QtThinLine, LinesBetweenTheFarthestPointsFollowTheRule) {
    Picture picture(32, 24);
    const std::int32_t ends[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 1, 23, 31, INT32_MAX - 1, INT32_MAX};
    for (const std::int32_t x0 : ends) {
        for (const std::int32_t y0 : ends) {
            for (const std::int32_t x1 : ends) {
                for (const std::int32_t y1 : ends) ExpectRule(picture, {{x0, y0}, {x1, y1}});
            }
        }
    }
}

TEST(QtThinLine, LinesWithinAClipOfSeveralRectanglesKeepThePixelsOfTheWholeLine) {
    std::mt19937 random(4713);
    Picture picture(40, 30);
    picture.dc.SelectClipRgn({2, 3, 20, 28}, RgnMode::Copy);
    picture.dc.SelectClipRgn({15, 10, 38, 20}, RgnMode::Or);
    picture.dc.ExcludeClipRect({8, 8, 17, 13});
    ClipArea clip;
    QRegion region = QRegion(2, 3, 18, 25).united(QRegion(15, 10, 23, 10)).subtracted(QRegion(8, 8, 9, 5));
    for (const QRect& r : region) clip.rects.push_back({r.left(), r.top(), r.right() + 1, r.bottom() + 1});
    for (int i = 0; i < 1000; ++i) {
        const auto near = [&] { return static_cast<std::int32_t>(random() % 60) - 10; };
        ExpectRule(picture, {{near(), near()}, {near(), near()}, {near(), near()}}, &clip);
    }
}

TEST(QtThinLine, PolylineOfHundredThousandFarPointsIsDrawnWhereItMeetsThePicture) {
    std::mt19937 random(4714);
    std::vector<Point> pts;
    for (int i = 0; i < 100000; ++i) pts.push_back({static_cast<std::int32_t>(random()), static_cast<std::int32_t>(random())});
    pts.push_back({-1000000000, 5});
    pts.push_back({1000000000, 5});
    Picture picture(50, 10);
    Polyline(picture.dc, pts);
    EXPECT_EQ(picture.Rows()[5], std::string(50, '#'));
}

TEST(QtThinLine, ExclusiveOrMeetsEachPixelOfAPolylineOnce) {
    Picture picture(5, 4);
    picture.dc.SelectPen(SolidPen(kWhite));
    picture.dc.SetROP2(Rop2::XorPen);
    Polyline(picture.dc, {{0, 0}, {3, 0}, {3, 3}, {0, 3}});
    EXPECT_THAT(picture.Rows(), ElementsAre("####.", "...#.", "...#.", ".###."));
    Polyline(picture.dc, {{0, 0}, {3, 0}, {3, 3}, {0, 3}});
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

}  // namespace
}  // namespace orvane
