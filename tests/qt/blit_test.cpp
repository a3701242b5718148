#include <gmock/gmock.h>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

constexpr std::int32_t kMin = INT32_MIN;
constexpr std::int32_t kMax = INT32_MAX;

// Rows of letters onto a picture, as Picture::Rows shows them.
void Put(Picture& picture, const Rows& rows) {
    for (std::size_t y = 0; y < rows.size(); ++y) {
        for (std::size_t x = 0; x < rows[y].size(); ++x) {
            const char letter = rows[y][x];
            const Rgb color = letter == '#'   ? kBlack
                              : letter == 'r' ? kRed
                              : letter == 'g' ? kGreen
                              : letter == 'b' ? kBlue
                              : letter == 'y' ? kYellow
                                              : kWhite;
            picture.Set(static_cast<int>(x), static_cast<int>(y), color);
        }
    }
}

TEST(QtBitBlt, CopiesTheRectangleToItsPlace) {
    Picture source(4, 3);
    Put(source, {"rgb.", "ybr.", "...."});
    Picture picture(5, 4);
    picture.dc.BitBlt(1, 2, 3, 2, source.dc, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre(".....", ".....", ".rgb.", ".ybr."));
}

TEST(QtBitBlt, CombinesSourceAndDestination) {
    Picture source(1, 1);
    source.Fill(0x0F3355);
    const auto result = [&](Rop3 rop) {
        Picture picture(1, 1);
        picture.Fill(0x35A5F1);
        picture.dc.BitBlt(0, 0, 1, 1, source.dc, 0, 0, rop);
        EXPECT_TRUE(picture.FourthBytesAreKept());
        return picture.At(0, 0);
    };
    EXPECT_EQ(result(Rop3::SrcCopy), 0x0F3355u);
    EXPECT_EQ(result(Rop3::SrcPaint), 0x0F3355u | 0x35A5F1u);
    EXPECT_EQ(result(Rop3::SrcAnd), 0x0F3355u & 0x35A5F1u);
    EXPECT_EQ(result(Rop3::SrcInvert), 0x0F3355u ^ 0x35A5F1u);
    EXPECT_EQ(result(Rop3::Whiteness), 0xFFFFFFu);
    EXPECT_EQ(result(Rop3::Blackness), 0u);
    EXPECT_EQ(result(Rop3::DstInvert), ~0x35A5F1u & 0xFFFFFFu);
    EXPECT_EQ(result(static_cast<Rop3>(0x00330008)), ~0x0F3355u & 0xFFFFFFu) << "the inverted source";
    EXPECT_EQ(result(static_cast<Rop3>(0x00440328)), 0x0F3355u & ~0x35A5F1u) << "source and inverted destination";
    EXPECT_EQ(result(static_cast<Rop3>(0x00BB0226)), (~0x0F3355u | 0x35A5F1u) & 0xFFFFFFu) << "inverted source or destination";
    EXPECT_EQ(result(static_cast<Rop3>(0x00C000CA)), 0x35A5F1u) << "source and pattern: not offered";
}

TEST(QtBitBlt, MaskAndColourPairLeavesWhatIsMaskedOut) {
    Picture mask(3, 1);
    Put(mask, {"#.#"});
    Picture colour(3, 1);
    Put(colour, {"r#b"});
    Picture picture(3, 1);
    Put(picture, {"ggg"});
    picture.dc.BitBlt(0, 0, 3, 1, mask.dc, 0, 0, Rop3::SrcAnd);
    picture.dc.BitBlt(0, 0, 3, 1, colour.dc, 0, 0, Rop3::SrcPaint);
    EXPECT_THAT(picture.Rows(), ElementsAre("rgb"));
}

TEST(QtBitBlt, IsCutByTheTargetsClipAndNotByTheSources) {
    Picture source(4, 2);
    Put(source, {"rrrr", "gggg"});
    source.dc.SelectClipRgn({0, 0, 1, 1}, RgnMode::Copy);
    Picture picture(4, 2);
    picture.dc.SelectClipRgn({0, 0, 2, 1}, RgnMode::Copy);
    picture.dc.SelectClipRgn({3, 1, 4, 2}, RgnMode::Or);
    picture.dc.BitBlt(0, 0, 4, 2, source.dc, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rr..", "...g"));
}

TEST(QtBitBlt, PartsOutsideTheSourceAreNotCopied) {
    Picture source(2, 2);
    source.Fill(kRed);
    Picture picture(6, 4);
    picture.dc.BitBlt(0, 0, 6, 4, source.dc, -2, -1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("......", "..rr..", "..rr..", "......"));
}

TEST(QtBitBlt, PartsOutsideTheTargetAreCut) {
    Picture source(4, 4);
    Put(source, {"rgby", "gbyr", "byrg", "yrgb"});
    Picture picture(2, 2);
    picture.dc.BitBlt(-1, -2, 4, 4, source.dc, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("yr", "rg"));
}

TEST(QtBitBlt, NegativeSizesCoverWhatLiesBetweenTheEdges) {
    Picture source(4, 4);
    Put(source, {"rgby", "gbyr", "byrg", "yrgb"});
    Picture picture(4, 4);
    picture.dc.BitBlt(3, 3, -2, -2, source.dc, 2, 2, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("....", ".rg.", ".gb.", "...."));
}

TEST(QtBitBlt, EmptyAndFarthestRectanglesAreSafe) {
    Picture source(2, 2);
    source.Fill(kRed);
    Picture picture(2, 2);
    picture.dc.BitBlt(0, 0, 0, 2, source.dc, 0, 0, Rop3::SrcCopy);
    picture.dc.BitBlt(kMax, kMax, kMax, kMax, source.dc, kMin, kMin, Rop3::SrcCopy);
    picture.dc.BitBlt(kMin, kMin, kMin, kMin, source.dc, kMax, kMax, Rop3::SrcCopy);
    picture.dc.BitBlt(0, 0, 2, 2, source.dc, kMax, kMin, Rop3::SrcInvert);
    EXPECT_EQ(picture.CountOther(kWhite), 0);
    picture.dc.BitBlt(-1000000000, -1000000000, kMax, kMax, source.dc, -1000000000, -1000000000, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rr", "rr"));
}

// Every overlap within one picture must read what was there before; the model copies through a second grid of letters.
TEST(QtBitBlt, OverlappingCopiesWithinOnePictureReadWhatWasThereBefore) {
    const Rows start{"rgby#", "gby#r", "by#rg", "y#rgb", "#rgby"};
    for (const bool severalRects : {false, true}) {
        for (int dx = -2; dx <= 2; ++dx) {
            for (int dy = -2; dy <= 2; ++dy) {
                Picture picture(5, 5);
                Put(picture, start);
                if (severalRects) picture.dc.ExcludeClipRect({2, 2, 3, 3});
                picture.dc.BitBlt(dx, dy, 5, 5, picture.dc, 0, 0, Rop3::SrcCopy);
                Rows expected = start;
                for (int y = 0; y < 5; ++y) {
                    for (int x = 0; x < 5; ++x) {
                        const bool inSource = x - dx >= 0 && x - dx < 5 && y - dy >= 0 && y - dy < 5;
                        if (!inSource || (severalRects && x == 2 && y == 2)) continue;
                        expected[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] =
                            start[static_cast<std::size_t>(y - dy)][static_cast<std::size_t>(x - dx)];
                    }
                }
                EXPECT_EQ(picture.Rows(), expected) << dx << "," << dy;
            }
        }
    }
}

TEST(QtBitBlt, OverlappingCombinationReadsWhatWasThereBefore) {
    Picture picture(4, 1);
    Put(picture, {"#.#."});
    picture.dc.BitBlt(1, 0, 3, 1, picture.dc, 0, 0, Rop3::SrcInvert);
    EXPECT_THAT(picture.Rows(), ElementsAre("#..."));
}

TEST(QtBitBlt, TwoContextsOnOneBitmapAreOnePicture) {
    QtContext dc;
    const auto bitmap = dc.CreateCompatibleBitmap(4, 1);
    const auto other = dc.CreateCompatibleDC();
    dc.SelectBitmap(bitmap.get());
    other->SelectBitmap(bitmap.get());
    other->FillRect({0, 0, 1, 1}, CreateSolidBrush(kRed));
    other->FillRect({1, 0, 2, 1}, CreateSolidBrush(kGreen));
    dc.BitBlt(1, 0, 3, 1, *other, 0, 0, Rop3::SrcCopy);
    const QImage& image = dc.Image();
    EXPECT_EQ(image.pixel(0, 0), 0xFFFF0000u);
    EXPECT_EQ(image.pixel(1, 0), 0xFFFF0000u);
    EXPECT_EQ(image.pixel(2, 0), 0xFF00FF00u);
    EXPECT_EQ(image.pixel(3, 0), 0xFF000000u);
}

TEST(QtBitBlt, SourceWithoutBitmapDrawsNothing) {
    QtContext none;
    Picture picture(2, 1);
    picture.dc.BitBlt(0, 0, 2, 1, none, 0, 0, Rop3::SrcAnd);
    EXPECT_EQ(picture.CountOther(kWhite), 0);
    picture.dc.BitBlt(0, 0, 2, 1, none, 0, 0, Rop3::Blackness);
    EXPECT_THAT(picture.Rows(), ElementsAre("##")) << "this mode reads no source";
}

TEST(QtPatBlt, WhitensBlackensInvertsAndLaysTheBrush) {
    Picture picture(8, 1);
    Put(picture, {"rrrrrrrr"});
    picture.dc.SelectBrush(CreateSolidBrush(kGreen));
    picture.dc.PatBlt(0, 0, 2, 1, Rop3::Whiteness);
    picture.dc.PatBlt(2, 0, 2, 1, Rop3::Blackness);
    picture.dc.PatBlt(4, 0, 2, 1, Rop3::PatCopy);
    picture.dc.PatBlt(6, 0, 1, 1, Rop3::DstInvert);
    EXPECT_EQ(picture.Rows()[0].substr(0, 6), "..##gg");
    EXPECT_EQ(picture.At(6, 0), 0xFFFF00u);
    EXPECT_EQ(picture.At(7, 0), kRed);
    EXPECT_TRUE(picture.FourthBytesAreKept());
}

TEST(QtPatBlt, CombinesBrushAndDestination) {
    Picture picture(2, 1);
    picture.Fill(0x35A5F1);
    picture.dc.SelectBrush(CreateSolidBrush(0x0F3355));
    picture.dc.PatBlt(0, 0, 1, 1, static_cast<Rop3>(0x005A0049));
    EXPECT_EQ(picture.At(0, 0), 0x0F3355u ^ 0x35A5F1u) << "the pattern's exclusive or";
    EXPECT_EQ(picture.At(1, 0), 0x35A5F1u);
}

TEST(QtPatBlt, ModeThatReadsASourceDrawsNothing) {
    Picture picture(2, 1);
    picture.dc.PatBlt(0, 0, 2, 1, Rop3::SrcCopy);
    picture.dc.PatBlt(0, 0, 2, 1, Rop3::SrcInvert);
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

TEST(QtPatBlt, NullBrushLaysNothing) {
    Picture picture(2, 1);
    picture.Fill(kRed);
    picture.dc.SelectBrush(NullBrush());
    picture.dc.PatBlt(0, 0, 2, 1, Rop3::PatCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rr"));
    picture.dc.PatBlt(0, 0, 2, 1, Rop3::Whiteness);
    EXPECT_THAT(picture.Rows(), ElementsAre(".."));
}

TEST(QtPatBlt, NegativeEmptyAndFarthestSizesAreSafe) {
    Picture picture(4, 2);
    picture.dc.PatBlt(3, 1, -2, -1, Rop3::Blackness);
    EXPECT_THAT(picture.Rows(), ElementsAre(".##.", "...."));
    picture.dc.PatBlt(0, 0, 0, 2, Rop3::Blackness);
    picture.dc.PatBlt(kMax, kMax, kMax, kMax, Rop3::Blackness);
    picture.dc.PatBlt(kMin, kMin, kMin, kMin, Rop3::Blackness);
    EXPECT_THAT(picture.Rows(), ElementsAre(".##.", "...."));
    picture.dc.PatBlt(kMin, kMin, kMax, kMax, Rop3::Blackness);
    EXPECT_THAT(picture.Rows(), ElementsAre(".##.", "....")) << "it ends one before the first pixel";
    picture.dc.PatBlt(kMax, kMax, kMin, kMin, Rop3::Blackness);
    EXPECT_THAT(picture.Rows(), ElementsAre("####", "####"));
}

TEST(QtFillRect, RightAndBottomAreExcludedAndTheClipHolds) {
    Picture picture(5, 4);
    picture.dc.SelectClipRgn({0, 0, 5, 2}, RgnMode::Copy);
    picture.dc.FillRect({1, 1, 4, 3}, CreateSolidBrush(kRed));
    EXPECT_THAT(picture.Rows(), ElementsAre(".....", ".rrr.", ".....", "....."));
}

TEST(QtFillRect, EmptyNullAndFarthestRectanglesAreSafe) {
    Picture picture(2, 1);
    picture.dc.FillRect({0, 0, 0, 1}, CreateSolidBrush(kRed));
    picture.dc.FillRect({0, 0, 2, 1}, NullBrush());
    EXPECT_EQ(picture.CountOther(kWhite), 0);
    picture.dc.FillRect({kMin, kMin, kMax, kMax}, CreateSolidBrush(kRed));
    EXPECT_THAT(picture.Rows(), ElementsAre("rr"));
    picture.dc.FillRect({2, 1, 0, 0}, CreateSolidBrush(kBlue));
    EXPECT_THAT(picture.Rows(), ElementsAre("bb")) << "corners in another order";
}

TEST(QtScroll, MovesThePixelsAndLeavesWhatIsUncovered) {
    Picture picture(5, 3);
    Put(picture, {"rgb..", "gbr..", "brg.."});
    picture.dc.ScrollDC(2, 1, {0, 0, 5, 3}, {0, 0, 5, 3});
    EXPECT_THAT(picture.Rows(), ElementsAre("rgb..", "gbrgb", "brgbr"));
}

TEST(QtScroll, MovesBackwards) {
    Picture picture(4, 2);
    Put(picture, {"rgby", "ybgr"});
    picture.dc.ScrollDC(-1, -1, {0, 0, 4, 2}, {0, 0, 4, 2});
    EXPECT_THAT(picture.Rows(), ElementsAre("bgry", "ybgr"));
}

TEST(QtScroll, TakesOnlyWhatLiesInScrollAndClipAndKeepsWithinTheClip) {
    Picture picture(6, 1);
    Put(picture, {"rgbyrg"});
    picture.dc.ScrollDC(2, 0, {1, 0, 4, 1}, {0, 0, 5, 1});
    EXPECT_THAT(picture.Rows(), ElementsAre("rgbgbg")) << "the third moved pixel falls beyond the clip";
    Put(picture, {"rgbyrg"});
    picture.dc.ScrollDC(-1, 0, {0, 0, 6, 1}, {2, 0, 6, 1});
    EXPECT_THAT(picture.Rows(), ElementsAre("rgyrgg"));
}

TEST(QtScroll, KeepsWithinTheContextsClip) {
    Picture picture(6, 1);
    Put(picture, {"rgbyrg"});
    picture.dc.SelectClipRgn({1, 0, 4, 1}, RgnMode::Copy);
    picture.dc.ScrollDC(1, 0, {0, 0, 6, 1}, {0, 0, 6, 1});
    EXPECT_THAT(picture.Rows(), ElementsAre("rggbrg"));
}

TEST(QtScroll, ClipOfSeveralRectanglesMovesEachPixelOnce) {
    Picture picture(5, 3);
    Put(picture, {"rgby#", "gby#r", "by#rg"});
    picture.dc.ExcludeClipRect({2, 1, 3, 2});
    picture.dc.ScrollDC(1, 1, {0, 0, 5, 3}, {0, 0, 5, 3});
    // The pixel at (2, 1) neither moves nor is written, so (3, 2) keeps its own.
    EXPECT_THAT(picture.Rows(), ElementsAre("rgby#", "gryby", "bgbr#"));
}

TEST(QtScroll, FarthestDistancesMoveNothing) {
    Picture picture(3, 2);
    Put(picture, {"rgb", "bgr"});
    for (const std::int32_t far_off : {kMin, kMin + 1, -3, 3, kMax}) {
        picture.dc.ScrollDC(far_off, 0, {kMin, kMin, kMax, kMax}, {kMin, kMin, kMax, kMax});
        picture.dc.ScrollDC(0, far_off, {kMin, kMin, kMax, kMax}, {kMin, kMin, kMax, kMax});
    }
    EXPECT_THAT(picture.Rows(), ElementsAre("rgb", "bgr"));
    picture.dc.ScrollDC(0, 0, {0, 0, 3, 2}, {0, 0, 3, 2});
    EXPECT_THAT(picture.Rows(), ElementsAre("rgb", "bgr"));
}

TEST(QtScroll, IsNoMatterOfTheRasterOperationNorOfAnOpenPath) {
    Picture picture(3, 1);
    Put(picture, {"rgb"});
    picture.dc.SetROP2(Rop2::Black);
    picture.dc.BeginPath();
    picture.dc.ScrollDC(1, 0, {0, 0, 3, 1}, {0, 0, 3, 1});
    EXPECT_THAT(picture.Rows(), ElementsAre("rrg"));
}

}  // namespace
}  // namespace orvane
