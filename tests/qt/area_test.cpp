#include <gmock/gmock.h>

#include <QPainter>
#include <QPolygon>
#include <random>

#include "tests/qt/oracle.h"
#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using Rings = std::vector<std::vector<Point>>;

void SelectFillOnly(Picture& picture) {
    picture.dc.SelectPen(NullPen());
    picture.dc.SelectBrush(CreateSolidBrush(kBlack));
}

void ExpectRule(Picture& picture, const Rings& rings) {
    picture.Fill(kWhite);
    PolyPolygon(picture.dc, rings);
    int faults = 0;
    for (int y = 0; y < picture.Image().height(); ++y) {
        for (int x = 0; x < picture.Image().width(); ++x) {
            faults += (picture.At(x, y) == kBlack) != oracle::IsInside(rings, {x, y}) ? 1 : 0;
        }
    }
    EXPECT_EQ(faults, 0) << "first point " << rings[0][0].x << "," << rings[0][0].y;
}

TEST(QtArea, RightAndBottomEdgesLieOutside) {
    Picture picture(6, 5);
    SelectFillOnly(picture);
    PolyPolygon(picture.dc, {RectRing(1, 1, 4, 3)});
    EXPECT_THAT(picture.Rows(), ElementsAre("......",  //
                                            ".###..",  //
                                            ".###..",  //
                                            "......",  //
                                            "......"));
}

TEST(QtArea, PixelStandsAtItsWholePoint) {
    Picture picture(6, 6);
    SelectFillOnly(picture);
    PolyPolygon(picture.dc, {{{0, 0}, {5, 0}, {0, 5}}});
    EXPECT_THAT(picture.Rows(), ElementsAre("#####.",  //
                                            "####..",  //
                                            "###...",  //
                                            "##....",  //
                                            "#.....",  //
                                            "......"));
}

TEST(QtArea, RingsFillByTheAlternateRule) {
    Picture picture(9, 9);
    SelectFillOnly(picture);
    PolyPolygon(picture.dc, {RectRing(0, 0, 9, 9), RectRing(2, 2, 7, 7), RectRing(4, 4, 5, 5)});
    EXPECT_THAT(picture.Rows(), ElementsAre("#########",  //
                                            "#########",  //
                                            "##.....##",  //
                                            "##.....##",  //
                                            "##..#..##",  //
                                            "##.....##",  //
                                            "##.....##",  //
                                            "#########",  //
                                            "#########"));
}

TEST(QtArea, PolygonOutsideAPathIsFilledWithTheBrushAndOutlinedWithThePen) {
    Picture picture(6, 5);
    picture.dc.SelectPen(SolidPen(kRed));
    picture.dc.SelectBrush(CreateSolidBrush(kBlue));
    PolyPolygon(picture.dc, {RectRing(0, 0, 4, 3)});
    EXPECT_THAT(picture.Rows(), ElementsAre("rrrrr.",  //
                                            "rbbbr.",  //
                                            "rbbbr.",  //
                                            "rrrrr.",  //
                                            "......"));
}

TEST(QtArea, NullBrushLeavesTheInside) {
    Picture picture(6, 5);
    picture.dc.SelectPen(SolidPen(kRed));
    picture.dc.SelectBrush(NullBrush());
    PolyPolygon(picture.dc, {RectRing(0, 0, 4, 3)});
    EXPECT_THAT(picture.Rows(), ElementsAre("rrrrr.", "r...r.", "r...r.", "rrrrr.", "......"));
}

TEST(QtArea, ClosingPointMakesNoDifference) {
    Picture with(8, 8);
    Picture without(8, 8);
    for (Picture* picture : {&with, &without}) {
        picture->dc.SelectPen(SolidPen(kWhite));
        picture->dc.SelectBrush(CreateSolidBrush(kRed));
        picture->dc.SetROP2(Rop2::XorPen);
    }
    PolyPolygon(with.dc, {{{1, 1}, {6, 2}, {4, 6}, {1, 1}}});
    PolyPolygon(without.dc, {{{1, 1}, {6, 2}, {4, 6}}});
    EXPECT_EQ(with.Rows(), without.Rows());
}

TEST(QtArea, RingOfFewerThanTwoPointsMakesTheWholeCallDrawNothing) {
    Picture picture(5, 5);
    const std::vector<Point> pts{{0, 0}, {4, 0}, {4, 4}, {2, 2}};
    for (const std::int32_t last : {1, 0, -1}) {
        const std::int32_t counts[] = {3, last};
        picture.dc.PolyPolygon(pts.data(), counts, 2);
    }
    const std::int32_t one[] = {3};
    picture.dc.PolyPolygon(pts.data(), one, 0);
    picture.dc.PolyPolygon(pts.data(), one, -1);
    picture.dc.PolyPolygon(nullptr, one, 1);
    picture.dc.PolyPolygon(pts.data(), nullptr, 1);
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

TEST(QtArea, RandomRingsFollowTheRule) {
    std::mt19937 random(31);
    Picture picture(40, 40);
    SelectFillOnly(picture);
    for (int i = 0; i < 400; ++i) {
        Rings rings(1 + random() % 3);
        for (auto& ring : rings) {
            const std::size_t count = 2 + random() % 12;
            for (std::size_t k = 0; k < count; ++k) {
                ring.push_back({static_cast<std::int32_t>(random() % 60) - 10, static_cast<std::int32_t>(random() % 60) - 10});
            }
        }
        ExpectRule(picture, rings);
    }
}

TEST(QtArea, RingsOfAnyPointsOfThirtyTwoBitsFollowTheRule) {
    std::mt19937 random(32);
    Picture picture(24, 24);
    SelectFillOnly(picture);
    const auto any = [&]() -> std::int32_t {
        switch (random() % 4) {
            case 0:
                return static_cast<std::int32_t>(random() % 24);
            case 1:
                return static_cast<std::int32_t>(random());
            case 2:
                return random() % 2 == 0 ? INT32_MIN : INT32_MAX;
            default:
                return static_cast<std::int32_t>(random() % 2000000) - 1000000;
        }
    };
    for (int i = 0; i < 2000; ++i) {
        Rings rings(1);
        for (int k = 0; k < 5; ++k) rings[0].push_back({any(), any()});
        ExpectRule(picture, rings);
    }
}

TEST(QtArea, ManyTallEdgesFollowTheRule) {
    // More crossings than are kept at a time.
    std::mt19937 random(33);
    Picture picture(20, 500);
    SelectFillOnly(picture);
    Rings rings(1);
    for (int k = 0; k < 1500; ++k) {
        rings[0].push_back({static_cast<std::int32_t>(random() % 40) - 10, k % 2 == 0 ? -5 - k : 505 + k});
    }
    ExpectRule(picture, rings);
    ExpectRule(picture, {RectRing(3, 3, 9, 490)});
}

TEST(QtArea, PolygonOfHundredThousandFarPointsIsFilled) {
    std::mt19937 random(34);
    Picture picture(16, 12);
    SelectFillOnly(picture);
    Rings rings(1);
    for (int k = 0; k < 100000; ++k)
        rings[0].push_back({static_cast<std::int32_t>(random()), static_cast<std::int32_t>(random())});
    ExpectRule(picture, rings);
}

TEST(QtArea, FillWithinAClipOfSeveralRectanglesIsCutByIt) {
    Picture picture(8, 5);
    SelectFillOnly(picture);
    picture.dc.SelectClipRgn({0, 0, 3, 2}, RgnMode::Copy);
    picture.dc.SelectClipRgn({5, 1, 7, 4}, RgnMode::Or);
    PolyPolygon(picture.dc, {RectRing(1, 0, 8, 5)});
    EXPECT_THAT(picture.Rows(), ElementsAre(".##.....",  //
                                            ".##..##.",  //
                                            ".....##.",  //
                                            ".....##.",  //
                                            "........"));
}

TEST(QtArea, AreaAgreesWithAnotherPainter) {
    // There a pixel stands half a pixel right of its whole point and below it, and crossings next to one are rounded.
    std::mt19937 random(35);
    int drawn = 0;
    int different = 0;
    for (int i = 0; i < 50; ++i) {
        Picture ours(200, 200);
        Picture theirs(200, 200);
        SelectFillOnly(ours);
        std::vector<Point> ring;
        QPolygon polygon;
        for (int k = 0; k < 15; ++k) {
            ring.push_back({static_cast<std::int32_t>(random() % 200), static_cast<std::int32_t>(random() % 200)});
            polygon << QPoint(ring.back().x, ring.back().y);
        }
        PolyPolygon(ours.dc, {ring});
        {
            QPainter painter(&theirs.Image());
            painter.translate(0.5, 0.5);
            painter.setPen(Qt::NoPen);
            painter.setBrush(Qt::black);
            painter.drawPolygon(polygon, Qt::OddEvenFill);
        }
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x) {
                drawn += ours.At(x, y) == kBlack ? 1 : 0;
                different += ours.At(x, y) != theirs.At(x, y) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(drawn, 100000);
    EXPECT_LT(different, drawn / 100);
}

}  // namespace
}  // namespace orvane
