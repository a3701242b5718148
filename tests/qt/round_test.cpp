// Ellipses, arcs and chords. What is expected is worked out from the curve itself: every pixel of a thin outline lies within
// three quarters of a pixel of the curve, the outline is symmetric, and nothing leaves the box.
#include <gmock/gmock.h>

#include <cmath>

#include "platform/qt/round_figures.h"
#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

constexpr std::int32_t kMin = INT32_MIN;
constexpr std::int32_t kMax = INT32_MAX;

/// How far a pixel is from the ellipse of a box whose right and bottom edges lie outside: from the nearest of many points on it.
double FromCurve(const Rect& box, int x, int y) {
    constexpr int kSamples = 1500;
    const double a = (box.right - 1 - box.left) / 2.0;
    const double b = (box.bottom - 1 - box.top) / 2.0;
    double nearest = 1e9;
    for (int i = 0; i < kSamples; ++i) {
        const double t = 6.283185307179586 * i / kSamples;
        nearest = std::fmin(nearest, std::hypot(box.left + a + a * std::cos(t) - x, box.top + b + b * std::sin(t) - y));
    }
    return nearest;
}

void Ellipse(DeviceContext& dc, const Rect& box) { dc.Ellipse(box.left, box.top, box.right, box.bottom); }

TEST(QtEllipse, OutlineLiesOnTheCurveAndTouchesAllSidesOfItsBox) {
    for (const Rect box : {Rect{2, 3, 13, 14}, Rect{1, 1, 40, 12}, Rect{5, 2, 12, 37}, Rect{0, 0, 6, 6}}) {
        Picture picture(44, 40);
        picture.dc.SelectBrush(NullBrush());
        Ellipse(picture.dc, box);
        Rect reached{100, 100, -1, -1};
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 44; ++x) {
                if (picture.At(x, y) == kWhite) continue;
                EXPECT_LE(FromCurve(box, x, y), 0.75) << x << ", " << y;
                reached = {std::min(reached.left, x), std::min(reached.top, y), std::max(reached.right, x + 1),
                           std::max(reached.bottom, y + 1)};
            }
        }
        EXPECT_EQ(reached, box) << "right and bottom lie outside";
    }
}

TEST(QtEllipse, IsTheSameFromAllFourSides) {
    for (int side = 2; side < 30; ++side) {
        Picture picture(side, side);
        picture.dc.SelectBrush(NullBrush());
        Ellipse(picture.dc, {0, 0, side, side});
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const Rgb here = picture.At(x, y);
                EXPECT_EQ(here, picture.At(side - 1 - x, y)) << side;
                EXPECT_EQ(here, picture.At(x, side - 1 - y)) << side;
                EXPECT_EQ(here, picture.At(y, x)) << side;
            }
        }
    }
}

TEST(QtEllipse, TouchesAllSidesOfItsBoxAtEverySize) {
    for (int width = 1; width < 12; ++width) {
        for (int height = 1; height < 12; ++height) {
            Picture picture(14, 14);
            Ellipse(picture.dc, {1, 1, 1 + width, 1 + height});
            Rect reached{100, 100, -1, -1};
            for (int y = 0; y < 14; ++y) {
                for (int x = 0; x < 14; ++x) {
                    if (picture.At(x, y) == kWhite) continue;
                    reached = {std::min(reached.left, x), std::min(reached.top, y), std::max(reached.right, x + 1),
                               std::max(reached.bottom, y + 1)};
                }
            }
            EXPECT_EQ(reached, (Rect{1, 1, 1 + width, 1 + height}));
        }
    }
}

TEST(QtEllipse, SmallOnesAreWhatAPersonWouldDot) {
    Picture picture(7, 7);
    picture.dc.SelectBrush(NullBrush());
    Ellipse(picture.dc, {0, 0, 7, 7});
    EXPECT_THAT(picture.Rows(), ElementsAre("..###..", ".#...#.", "#.....#", "#.....#", "#.....#", ".#...#.", "..###.."));
}

TEST(QtEllipse, FillsItsInside) {
    Picture picture(30, 30);
    picture.dc.SelectBrush(CreateSolidBrush(kRed));
    const Rect box{3, 4, 28, 25};
    Ellipse(picture.dc, box);
    const double a = (box.right - 1 - box.left) / 2.0;
    const double b = (box.bottom - 1 - box.top) / 2.0;
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 30; ++x) {
            const double r = std::hypot((x - (box.left + a)) / a, (y - (box.top + b)) / b);
            if (r < 0.85) {
                EXPECT_EQ(picture.At(x, y), kRed) << x << ", " << y;
            } else if (r > 1.1) {
                EXPECT_EQ(picture.At(x, y), kWhite) << x << ", " << y;
            }
        }
    }
}

TEST(QtEllipse, CornersMayStandInAnyOrder) {
    Picture one(20, 20);
    Ellipse(one.dc, {2, 3, 15, 17});
    for (const Rect box : {Rect{15, 3, 2, 17}, Rect{2, 17, 15, 3}, Rect{15, 17, 2, 3}}) {
        Picture other(20, 20);
        Ellipse(other.dc, box);
        EXPECT_EQ(one.Rows(), other.Rows());
    }
}

TEST(QtEllipse, WithoutWidthOrHeightDrawsNothing) {
    Picture picture(10, 10);
    Ellipse(picture.dc, {5, 1, 5, 9});
    Ellipse(picture.dc, {1, 5, 9, 5});
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

TEST(QtEllipse, PathIsFilledWithoutALine) {
    Picture picture(20, 20);
    picture.dc.SelectBrush(CreateSolidBrush(kRed));
    picture.dc.BeginPath();
    picture.dc.Ellipse(2, 2, 18, 18);
    picture.dc.EndPath();
    picture.dc.FillPath();
    EXPECT_EQ(picture.At(10, 10), kRed);
    for (const std::string& row : picture.Rows()) EXPECT_EQ(row.find('#'), std::string::npos);
}

TEST(QtEllipse, FarLargerThanTheSurfaceStillPassesWhereItShould) {
    // A circle about (-100000, 50) with radius 100050: it crosses row 50 at x 50.
    Picture picture(100, 100);
    picture.dc.SelectBrush(NullBrush());
    Ellipse(picture.dc, {-200050, -100000, 51, 100101});
    EXPECT_EQ(picture.At(50, 50), kBlack);
    EXPECT_EQ(picture.At(47, 50), kWhite);
    EXPECT_EQ(picture.At(53, 50), kWhite);
}

TEST(QtEllipse, TakesEveryCoordinate) {
    Picture picture(10, 10);
    Ellipse(picture.dc, {kMin, kMin, kMax, kMax});
    Ellipse(picture.dc, {kMin, 0, kMax, 10});
    Ellipse(picture.dc, {kMax, kMax, kMin, kMin});
    picture.dc.ArcTo({kMin, kMin, kMax, kMax}, {kMin, kMax}, {kMax, kMin});
    picture.dc.Chord({kMin, kMin, kMax, kMax}, {kMin, kMax}, {kMax, kMin});
    EXPECT_TRUE(picture.FourthBytesAreKept());
}

TEST(QtEllipse, WidePenStaysWithinHalfItsWidthOfTheCurve) {
    const Rect box{8, 8, 43, 33};
    Picture picture(50, 40);
    picture.dc.SelectBrush(NullBrush());
    picture.dc.SelectPen(SolidPen(kBlack, 5));
    Ellipse(picture.dc, box);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 50; ++x) {
            const double away = FromCurve(box, x, y);
            if (away < 1.5) {
                EXPECT_EQ(picture.At(x, y), kBlack) << x << ", " << y;
            } else if (away > 3.5) {
                EXPECT_EQ(picture.At(x, y), kWhite) << x << ", " << y;
            }
        }
    }
}

TEST(QtEllipse, LargeOutlinesAreDrawnFromFewPoints) {
    for (const std::int32_t reach : {2000, 100000, kMax / 2}) {
        std::vector<Point> pts;
        RoundFigure({-reach, -reach, reach, reach}).Outline({0, -reach - 9, 1000, -reach + 1000}, pts);
        EXPECT_LE(pts.size(), 2000u);
    }
}

// --- Arcs --------------------------------------------------------------------------------------------------------------

/// The upper half of a circle about (20, 20) with radius 15, from its left end to its right one.
constexpr Rect kArcBox{5, 5, 36, 36};

TEST(QtArcTo, ClockwiseFromLeftToRightGoesOverTheTop) {
    Picture picture(40, 40);
    picture.dc.SetArcDirection(ArcDirection::Clockwise);
    picture.dc.MoveToEx(5, 20);
    picture.dc.ArcTo(kArcBox, {5, 20}, {35, 20});
    EXPECT_EQ(picture.At(20, 5), kBlack);
    EXPECT_EQ(picture.At(20, 35), kWhite);
}

TEST(QtArcTo, StartsCounterClockwise) {
    Picture picture(40, 40);
    picture.dc.MoveToEx(5, 20);
    picture.dc.ArcTo(kArcBox, {5, 20}, {35, 20});
    EXPECT_EQ(picture.At(20, 5), kWhite);
    EXPECT_EQ(picture.At(20, 35), kBlack);
}

TEST(QtArcTo, BeginsWithALineFromThePositionAndMovesItToTheEnd) {
    Picture picture(60, 40);
    picture.dc.SetArcDirection(ArcDirection::Clockwise);
    picture.dc.MoveToEx(0, 20);
    picture.dc.ArcTo(kArcBox, {0, 20}, {100, 20});
    EXPECT_EQ(picture.At(2, 20), kBlack) << "the line to the arc";
    picture.dc.LineTo(55, 20);
    EXPECT_EQ(picture.At(36, 20), kBlack) << "a line from the arc's end";
    EXPECT_EQ(picture.At(33, 20), kWhite);
}

TEST(QtArcTo, IsFilledByNothing) {
    Picture picture(40, 40);
    picture.dc.SelectBrush(CreateSolidBrush(kRed));
    picture.dc.MoveToEx(5, 20);
    picture.dc.ArcTo(kArcBox, {5, 20}, {35, 20});
    for (const std::string& row : picture.Rows()) EXPECT_EQ(row.find('r'), std::string::npos);
}

TEST(QtChord, FillsBetweenArcAndChord) {
    Picture picture(40, 40);
    picture.dc.SelectBrush(CreateSolidBrush(kRed));
    picture.dc.SetArcDirection(ArcDirection::Clockwise);
    picture.dc.Chord(kArcBox, {5, 20}, {35, 20});
    EXPECT_EQ(picture.At(20, 12), kRed);
    EXPECT_EQ(picture.At(20, 5), kBlack) << "the arc";
    EXPECT_EQ(picture.At(20, 20), kBlack) << "the chord";
    EXPECT_EQ(picture.At(20, 28), kWhite);
}

// --- Positions -----------------------------------------------------------------------------------------------------------

TEST(QtLineTo, GoesOnFromThePosition) {
    Picture picture(6, 3);
    picture.dc.MoveToEx(0, 0);
    picture.dc.LineTo(4, 0);
    picture.dc.LineTo(4, 2);
    EXPECT_THAT(picture.Rows(), ElementsAre("#####.", "....#.", "......")) << "the last point is left out";
}

TEST(QtPolygon, IsFilledAndOutlined) {
    Picture picture(7, 6);
    picture.dc.SelectBrush(CreateSolidBrush(kRed));
    const std::vector<Point> ring = RectRing(1, 1, 5, 4);
    picture.dc.Polygon(ring.data(), 4);
    EXPECT_THAT(picture.Rows(), ElementsAre(".......", ".#####.", ".#rrr#.", ".#rrr#.", ".#####.", "......."));
}

}  // namespace
}  // namespace orvane
