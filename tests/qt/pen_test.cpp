#include <gmock/gmock.h>

#include <random>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

std::string Repeat(const std::string& text, std::size_t length) {
    std::string out;
    while (out.size() < length) out += text;
    return out.substr(0, length);
}

std::string Dash(std::size_t line, std::size_t gap) { return std::string(line, '#') + std::string(gap, '.'); }

// The row that a pen draws from the left edge to the right one, over `under`, with a yellow background colour.
std::string RowOf(const Pen& pen, BkMode mode, Rgb under = kWhite) {
    Picture picture(60, 1);
    picture.Fill(under);
    picture.dc.SetBkMode(mode);
    picture.dc.SetBkColor(kYellow);
    picture.dc.SelectPen(pen);
    Polyline(picture.dc, {{0, 0}, {60, 0}});
    return picture.Rows()[0];
}

std::string InYellow(std::string row) {
    std::replace(row.begin(), row.end(), '.', 'y');
    return row;
}

TEST(QtPen, StandardDashesHaveThePlatformsLengths) {
    const auto row = [](PenStyle style) { return RowOf(CreatePen(style, 1, kBlack), BkMode::Transparent); };
    EXPECT_EQ(row(PenStyle::Solid), std::string(60, '#'));
    EXPECT_EQ(row(PenStyle::Dash), Repeat(Dash(18, 6), 60));
    EXPECT_EQ(row(PenStyle::Dot), Repeat(Dash(3, 3), 60));
    EXPECT_EQ(row(PenStyle::DashDot), Repeat(Dash(9, 6) + Dash(3, 6), 60));
    EXPECT_EQ(row(PenStyle::DashDotDot), Repeat(Dash(9, 3) + Dash(3, 3) + Dash(3, 3), 60));
    EXPECT_EQ(row(PenStyle::Null), std::string(60, '.'));
}

TEST(QtPen, GapsTakeTheBackgroundColourWhileTheModeIsOpaque) {
    for (const PenStyle style : {PenStyle::Dash, PenStyle::Dot, PenStyle::DashDot, PenStyle::DashDotDot}) {
        const Pen pen = CreatePen(style, 1, kBlack);
        EXPECT_EQ(RowOf(pen, BkMode::Opaque), InYellow(RowOf(pen, BkMode::Transparent)));
    }
}

TEST(QtPen, DashesOfAnUndrawnWidthZeroAreThoseOfWidthOne) {
    EXPECT_EQ(RowOf(CreatePen(PenStyle::Dot, 0, kBlack), BkMode::Transparent), Repeat(Dash(3, 3), 60));
}

TEST(QtPen, DashedPenWiderThanOneIsSolid) {
    for (const PenStyle style : {PenStyle::Dash, PenStyle::Dot, PenStyle::DashDot, PenStyle::DashDotDot}) {
        Picture dashed(40, 9);
        Picture solid(40, 9);
        dashed.dc.SelectPen(CreatePen(style, 3, kRed));
        solid.dc.SelectPen(SolidPen(kRed, 3));
        Polyline(dashed.dc, {{3, 4}, {36, 4}});
        Polyline(solid.dc, {{3, 4}, {36, 4}});
        EXPECT_EQ(dashed.Rows(), solid.Rows());
        EXPECT_EQ(dashed.Rows()[4].substr(4, 30), std::string(30, 'r'));
    }
}

TEST(QtPen, CosmeticUserStyleCountsInUnitsOfThreePixels) {
    const std::int32_t dashes[] = {4, 1, 1, 2};
    const Pen pen = ExtCreatePen(PenStyle::UserStyle, 1, kBlack, 4, dashes);
    EXPECT_EQ(RowOf(pen, BkMode::Transparent), Repeat(Dash(12, 3) + Dash(3, 6), 60));
}

TEST(QtPen, GeometricUserStyleCountsInPixels) {
    const std::int32_t dashes[] = {10, 5};
    const Pen thin = ExtCreatePen(PenStyle::GeometricFlatUser, 1, kBlack, 2, dashes);
    EXPECT_EQ(RowOf(thin, BkMode::Transparent), Repeat(Dash(10, 5), 60));
}

TEST(QtPen, GapsOfPensWithADashListOfTheirOwnStayInBothModes) {
    const std::int32_t dashes[] = {4, 2};
    for (const PenStyle style : {PenStyle::UserStyle, PenStyle::GeometricFlatUser}) {
        const Pen pen = ExtCreatePen(style, 1, kBlack, 2, dashes);
        EXPECT_EQ(RowOf(pen, BkMode::Opaque, kWhite), RowOf(pen, BkMode::Transparent, kWhite));
    }
}

TEST(QtPen, OddDashListChangesLineAndGapEachTimeThrough) {
    const std::int32_t dashes[] = {1, 2, 3};
    const Pen pen = ExtCreatePen(PenStyle::GeometricFlatUser, 1, kBlack, 3, dashes);
    EXPECT_EQ(RowOf(pen, BkMode::Transparent), Repeat("#..###.##...", 60));
}

TEST(QtPen, DashListOfZerosMadeByHandIsSolid) {
    Pen pen = SolidPen(kBlack);
    pen.style = PenStyle::UserStyle;
    EXPECT_EQ(RowOf(pen, BkMode::Transparent), std::string(60, '#'));
    pen.dashCnt = 2;
    EXPECT_EQ(RowOf(pen, BkMode::Transparent), std::string(60, '#'));
    pen.dashes = {-5, 3};
    pen.dashCnt = 200;
    EXPECT_EQ(RowOf(pen, BkMode::Transparent), std::string(60, '.')) << "a list that holds a gap only";
}

TEST(QtPen, DashesGoOnRoundTheCornersOfAFigure) {
    Picture picture(8, 6);
    picture.dc.SetBkMode(BkMode::Transparent);
    picture.dc.SelectPen(CreatePen(PenStyle::Dot, 1, kBlack));
    Polyline(picture.dc, {{0, 0}, {7, 0}, {7, 5}, {0, 5}});
    EXPECT_THAT(picture.Rows(), ElementsAre("###...##",  //
                                            ".......#",  //
                                            "........",  //
                                            "........",  //
                                            "........",  //
                                            ".#...###"))
        << "the row at the bottom is drawn from the right";
}

TEST(QtPen, DashesAreCountedInPixelsOfTheLongerAxis) {
    Picture picture(14, 14);
    picture.dc.SetBkMode(BkMode::Transparent);
    picture.dc.SelectPen(CreatePen(PenStyle::Dot, 1, kBlack));
    Polyline(picture.dc, {{0, 0}, {14, 14}});
    for (int i = 0; i < 14; ++i) EXPECT_EQ(picture.At(i, i), i / 3 % 2 == 0 ? kBlack : kWhite) << i;
}

TEST(QtPen, EachFigureOfAPathStartsItsDashesAnew) {
    Picture picture(12, 2);
    picture.dc.SetBkMode(BkMode::Transparent);
    picture.dc.SelectPen(CreatePen(PenStyle::Dash, 1, kBlack));
    picture.dc.BeginPath();
    Polyline(picture.dc, {{0, 0}, {12, 0}});
    Polyline(picture.dc, {{0, 1}, {12, 1}});
    picture.dc.EndPath();
    picture.dc.StrokePath();
    EXPECT_THAT(picture.Rows(), ElementsAre("############", "############"));
}

TEST(QtPen, DashesOfALineFromFarAwayAreThoseOfTheWholeLine) {
    const std::int32_t dashes[] = {7, 4};
    for (const std::int32_t start : {INT32_MIN, -2000000000, -12345, -1}) {
        Picture picture(40, 1);
        picture.dc.SelectPen(ExtCreatePen(PenStyle::GeometricFlatUser, 1, kBlack, 2, dashes));
        Polyline(picture.dc, {{start, 0}, {INT32_MAX, 0}});
        std::string expected;
        for (std::int64_t x = 0; x < 40; ++x) expected += (x - start) % 11 < 7 ? '#' : '.';
        EXPECT_EQ(picture.Rows()[0], expected);
    }
}

TEST(QtPen, GapsFollowTheRasterOperationOnceForEachPixel) {
    Picture picture(24, 1);
    picture.Fill(kRed);
    picture.dc.SetROP2(Rop2::XorPen);
    picture.dc.SetBkColor(kGreen);
    picture.dc.SelectPen(CreatePen(PenStyle::Dash, 1, kBlue));
    Polyline(picture.dc, {{0, 0}, {24, 0}});
    for (int x = 0; x < 24; ++x) EXPECT_EQ(picture.At(x, 0), x < 18 ? (kRed ^ kBlue) : (kRed ^ kGreen)) << x;
}

TEST(QtPen, UnknownStyleMadeByHandDrawsSolid) {
    Pen pen = SolidPen(kBlack);
    pen.style = static_cast<PenStyle>(0x77);
    EXPECT_EQ(RowOf(pen, BkMode::Transparent), std::string(60, '#'));
}

}  // namespace
}  // namespace orvane
