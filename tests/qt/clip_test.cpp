#include <gmock/gmock.h>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

// What can be drawn on shows black.
Rows Reach(Picture& picture) {
    picture.dc.PatBlt(-1000, -1000, 2000, 2000, Rop3::Blackness);
    return picture.Rows();
}

TEST(QtClip, NoneAtTheStart) {
    Picture picture(3, 2);
    EXPECT_THAT(Reach(picture), ElementsAre("###", "###"));
}

TEST(QtClip, CopySetsRightAndBottomOut) {
    Picture picture(4, 3);
    picture.dc.SelectClipRgn({0, 0, 1, 1}, RgnMode::Copy);
    picture.dc.SelectClipRgn({1, 0, 3, 2}, RgnMode::Copy);
    EXPECT_THAT(Reach(picture), ElementsAre(".##.", ".##.", "...."));
}

TEST(QtClip, EmptyRectangleCopiedGivesAnEmptyClipThatDrawsNothing) {
    Picture picture(3, 2);
    picture.dc.SelectClipRgn({1, 1, 1, 2}, RgnMode::Copy);
    Polyline(picture.dc, {{0, 0}, {3, 0}});
    PolyPolygon(picture.dc, {RectRing(0, 0, 3, 2)});
    picture.dc.FillRect({0, 0, 3, 2}, CreateSolidBrush(kRed));
    picture.dc.BitBlt(0, 0, 1, 1, picture.dc, 1, 1, Rop3::SrcInvert);
    picture.dc.ScrollDC(1, 0, {0, 0, 3, 2}, {0, 0, 3, 2});
    EXPECT_THAT(Reach(picture), ElementsAre("...", "..."));
}

TEST(QtClip, OrAddsToTheClip) {
    Picture picture(5, 3);
    picture.dc.SelectClipRgn({0, 0, 2, 2}, RgnMode::Copy);
    picture.dc.SelectClipRgn({3, 1, 5, 3}, RgnMode::Or);
    EXPECT_THAT(Reach(picture), ElementsAre("##...", "##.##", "...##"));
}

TEST(QtClip, OrWithoutAClipStartsFromTheWholeSurface) {
    Picture picture(3, 2);
    picture.dc.SelectClipRgn({0, 0, 1, 1}, RgnMode::Or);
    EXPECT_THAT(Reach(picture), ElementsAre("###", "###"));
}

TEST(QtClip, AndXorAndDiffCombine) {
    const auto reach = [](RgnMode mode) {
        Picture picture(5, 1);
        picture.dc.SelectClipRgn({0, 0, 3, 1}, RgnMode::Copy);
        picture.dc.SelectClipRgn({2, 0, 5, 1}, mode);
        return Reach(picture)[0];
    };
    EXPECT_EQ(reach(RgnMode::And), "..#..");
    EXPECT_EQ(reach(RgnMode::Xor), "##.##");
    EXPECT_EQ(reach(RgnMode::Diff), "##...");
}

TEST(QtClip, UnknownModeChangesNothing) {
    Picture picture(3, 1);
    picture.dc.SelectClipRgn({0, 0, 1, 1}, static_cast<RgnMode>(6));
    EXPECT_THAT(Reach(picture), ElementsAre("###"));
}

TEST(QtClip, ExcludeTakesFromTheWholeSurfaceWhereThereIsNoClip) {
    Picture picture(4, 3);
    picture.dc.ExcludeClipRect({1, 1, 3, 2});
    EXPECT_THAT(Reach(picture), ElementsAre("####", "#..#", "####"));
}

TEST(QtClip, ExcludeTakesFromTheClip) {
    Picture picture(4, 3);
    picture.dc.SelectClipRgn({0, 0, 3, 3}, RgnMode::Copy);
    picture.dc.ExcludeClipRect({2, 0, 4, 2});
    EXPECT_THAT(Reach(picture), ElementsAre("##..", "##..", "###."));
}

TEST(QtClip, ExcludingAllAndAddingTwoStripsLeavesTheStrips) {
    Picture picture(6, 4);
    picture.dc.SelectClipRgn({0, 0, 6, 4}, RgnMode::Copy);
    picture.dc.ExcludeClipRect({0, 0, 6, 4});
    picture.dc.SelectClipRgn({4, 0, 6, 4}, RgnMode::Or);
    picture.dc.SelectClipRgn({0, 3, 6, 4}, RgnMode::Or);
    EXPECT_THAT(Reach(picture), ElementsAre("....##", "....##", "....##", "######"));
    picture.Fill(kWhite);
    picture.dc.SelectPen(NullPen());
    picture.dc.SelectBrush(CreateSolidBrush(kRed));
    PolyPolygon(picture.dc, {{{0, 0}, {6, 0}, {6, 4}, {0, 4}}});
    EXPECT_THAT(picture.Rows(), ElementsAre("....rr", "....rr", "....rr", "rrrrrr"));
    picture.dc.SelectClipRgn({0, 0, 6, 4}, RgnMode::Copy);
    EXPECT_THAT(Reach(picture), ElementsAre("######", "######", "######", "######"));
}

TEST(QtClip, CornersMayStandInAnyOrder) {
    Picture picture(4, 3);
    picture.dc.SelectClipRgn({3, 2, 1, 0}, RgnMode::Copy);
    EXPECT_THAT(Reach(picture), ElementsAre(".##.", ".##.", "...."));
}

TEST(QtClip, FarthestCornersAreTheWholeSurface) {
    Picture picture(3, 2);
    picture.dc.SelectClipRgn({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, RgnMode::Copy);
    EXPECT_THAT(Reach(picture), ElementsAre("###", "###"));
    picture.Fill(kWhite);
    picture.dc.ExcludeClipRect({INT32_MIN, 1, INT32_MAX, INT32_MAX});
    EXPECT_THAT(Reach(picture), ElementsAre("###", "..."));
}

TEST(QtClip, ReachesBeyondTheSurfaceOfTheMoment) {
    QtContext dc;
    const auto small_one = dc.CreateCompatibleBitmap(2, 1);
    const auto large_one = dc.CreateCompatibleBitmap(6, 1);
    dc.SelectBitmap(small_one.get());
    dc.SelectClipRgn({1, 0, 4, 1}, RgnMode::Copy);
    dc.SelectBitmap(large_one.get());
    dc.PatBlt(0, 0, 6, 1, Rop3::Whiteness);
    std::string row;
    for (int x = 0; x < 6; ++x) row += dc.Image().pixel(x, 0) == 0xFFFFFFFFu ? '.' : '#';
    EXPECT_EQ(row, "#...##");
}

TEST(QtClip, OfThousandsOfRectanglesCutsEachShape) {
    Picture picture(100, 100);
    for (int y = 0; y < 100; ++y) {
        for (int x = y % 2; x < 100; x += 2) picture.dc.ExcludeClipRect({x, y, x + 1, y + 1});
    }
    picture.dc.SelectPen(NullPen());
    picture.dc.SelectBrush(CreateSolidBrush(kBlack));
    PolyPolygon(picture.dc, {RectRing(0, 0, 100, 100)});
    EXPECT_EQ(picture.CountOther(kWhite), 5000);
    picture.dc.SelectPen(SolidPen(kRed));
    Polyline(picture.dc, {{0, 50}, {100, 50}});
    picture.dc.SelectPen(SolidPen(kRed, 5));
    Polyline(picture.dc, {{10, 20}, {90, 70}});
    EXPECT_EQ(picture.At(1, 50), kRed);
    EXPECT_EQ(picture.CountOther(kWhite), 5000);
}

TEST(QtClip, ItsBoxIsWhatCanShowOnTheBitmap) {
    Picture picture(20, 10);
    EXPECT_EQ(picture.dc.ClipBox(), (Rect{0, 0, 20, 10}));
    picture.dc.SelectClipRgn({-5, 3, 8, 30}, RgnMode::Copy);
    EXPECT_EQ(picture.dc.ClipBox(), (Rect{0, 3, 8, 10}));
    picture.dc.SelectClipRgn({15, 0, 16, 1}, RgnMode::Or);
    EXPECT_EQ(picture.dc.ClipBox(), (Rect{0, 0, 16, 10}));
    picture.dc.SelectClipRgn({0, 0, 0, 0}, RgnMode::Copy);
    EXPECT_EQ(picture.dc.ClipBox()->right, picture.dc.ClipBox()->left) << "nothing can show";
    QtContext without;
    EXPECT_EQ(without.ClipBox()->bottom, without.ClipBox()->top) << "nor without a bitmap";
}

}  // namespace
}  // namespace orvane
