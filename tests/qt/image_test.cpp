// Bitmaps of one bit a pixel, blits that stretch, pictures from files.
#include <gmock/gmock.h>

#include <string>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

constexpr std::int32_t kMin = INT32_MIN;
constexpr std::int32_t kMax = INT32_MAX;

void Put(Picture& picture, const Rows& rows) {
    const std::map<char, Rgb> colors{{'#', kBlack}, {'r', kRed}, {'g', kGreen}, {'b', kBlue}, {'y', kYellow}, {'.', kWhite}};
    for (std::size_t y = 0; y < rows.size(); ++y) {
        for (std::size_t x = 0; x < rows[y].size(); ++x) {
            picture.Set(static_cast<int>(x), static_cast<int>(y), colors.at(rows[y][x]));
        }
    }
}

/// A memory context over a bitmap of one bit a pixel.
struct Monochrome {
    Monochrome(DeviceContext& like, int width_px, int height_px)
        : bitmap(like.CreateMonochromeBitmap(width_px, height_px)), dc(like.CreateCompatibleDC()) {
        dc->SelectBitmap(bitmap.get());
    }
    std::unique_ptr<Bitmap> bitmap;
    std::unique_ptr<DeviceContext> dc;
};

TEST(QtMonochrome, BecomesWhereTheSourceHasItsBackgroundColour) {
    Picture source(4, 1);
    Put(source, {"rgbr"});
    source.dc.SetBkColor(kRed);
    Monochrome mask(source.dc, 4, 1);
    mask.dc->BitBlt(0, 0, 4, 1, source.dc, 0, 0, Rop3::SrcCopy);
    Picture seen(4, 1);
    seen.dc.BitBlt(0, 0, 4, 1, *mask.dc, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(seen.Rows(), ElementsAre(".##."));
}

TEST(QtMonochrome, ComesOutInTheTargetsColours) {
    Picture source(2, 1);
    Put(source, {".#"});
    Monochrome mask(source.dc, 2, 1);
    mask.dc->BitBlt(0, 0, 2, 1, source.dc, 0, 0, Rop3::SrcCopy);
    Picture target(2, 1);
    target.dc.SetBkColor(kGreen);
    target.dc.SetTextColor(kBlue);
    target.dc.BitBlt(0, 0, 2, 1, *mask.dc, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(target.Rows(), ElementsAre("gb"));
}

TEST(QtMonochrome, InvertedCopyTurnsBlackAndWhiteRound) {
    Picture source(2, 1);
    Put(source, {".#"});
    Monochrome mask(source.dc, 2, 1);
    mask.dc->BitBlt(0, 0, 2, 1, source.dc, 0, 0, Rop3::SrcCopy);
    Picture target(2, 1);
    target.dc.BitBlt(0, 0, 2, 1, *mask.dc, 0, 0, Rop3::NotSrcCopy);
    EXPECT_THAT(target.Rows(), ElementsAre("#."));
}

TEST(QtMonochrome, StartsBlackAndIsRefusedWithoutASide) {
    Picture picture(2, 1);
    Monochrome mask(picture.dc, 2, 1);
    picture.dc.BitBlt(0, 0, 2, 1, *mask.dc, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("##"));
    EXPECT_EQ(picture.dc.CreateMonochromeBitmap(0, 4), nullptr);
    EXPECT_EQ(picture.dc.CreateMonochromeBitmap(kMax, kMax), nullptr);
}

// --- Pictures out of pixels -------------------------------------------------------------------------------------------------

/// A picture drawn out of a bitmap.
Rows Shown(DeviceContext& like, Bitmap& bitmap) {
    Picture seen(bitmap.Width_px(), bitmap.Height_px());
    const auto memory = like.CreateCompatibleDC();
    memory->SelectBitmap(&bitmap);
    seen.dc.BitBlt(0, 0, bitmap.Width_px(), bitmap.Height_px(), *memory, 0, 0, Rop3::SrcCopy);
    return seen.Rows();
}

TEST(QtPixelBitmap, HasTheGivenPixelsRowByRowFromTheTop) {
    Picture picture(1, 1);
    const Rgb pixels[] = {kRed, kGreen, kGreen, kBlue, kYellow, kBlack};
    const auto made = picture.dc.CreatePixelBitmap(3, 2, pixels);
    ASSERT_NE(made, nullptr);
    EXPECT_THAT(Shown(picture.dc, *made), ElementsAre("rgg", "by#"));
}

TEST(QtPixelBitmap, ABackEndThatDoesNotKnowBetterFillsTheSame) {
    Picture picture(1, 1);
    const Rgb pixels[] = {kRed, kGreen, kGreen, kBlue, kYellow, kBlack};
    const auto made = picture.dc.DeviceContext::CreatePixelBitmap(3, 2, pixels);
    ASSERT_NE(made, nullptr);
    EXPECT_THAT(Shown(picture.dc, *made), ElementsAre("rgg", "by#"));
}

TEST(QtPixelBitmap, IsRefusedWithoutASideOrPixelsOrMemory) {
    Picture picture(1, 1);
    const Rgb pixel = kRed;
    EXPECT_EQ(picture.dc.CreatePixelBitmap(0, 1, &pixel), nullptr);
    EXPECT_EQ(picture.dc.CreatePixelBitmap(1, -1, &pixel), nullptr);
    EXPECT_EQ(picture.dc.CreatePixelBitmap(kMax, kMax, &pixel), nullptr);
    EXPECT_EQ(picture.dc.CreatePixelBitmap(1, 1, nullptr), nullptr);
    EXPECT_EQ(picture.dc.DeviceContext::CreatePixelBitmap(1, 1, nullptr), nullptr);
}

// --- StretchBlt --------------------------------------------------------------------------------------------------------

TEST(QtStretchBlt, GrowsByWholePixels) {
    Picture source(2, 2);
    Put(source, {"rg", "by"});
    Picture picture(6, 4);
    picture.dc.StretchBlt(1, 0, 4, 4, source.dc, 0, 0, 2, 2, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre(".rrgg.", ".rrgg.", ".bbyy.", ".bbyy."));
}

TEST(QtStretchBlt, ShrinksByAndSoThatDarkLinesStay) {
    Picture source(4, 2);
    Put(source, {"...#", "r..."});
    Picture picture(2, 1);
    picture.dc.StretchBlt(0, 0, 2, 1, source.dc, 0, 0, 4, 2, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("r#"));
}

TEST(QtStretchBlt, CombinesWithTheTarget) {
    Picture source(1, 1);
    Put(source, {"g"});
    Picture picture(2, 1);
    Put(picture, {"r."});
    picture.dc.StretchBlt(0, 0, 2, 1, source.dc, 0, 0, 1, 1, Rop3::SrcPaint);
    EXPECT_THAT(picture.Rows(), ElementsAre("y."));
    picture.dc.StretchBlt(0, 0, 2, 1, source.dc, 0, 0, 1, 1, Rop3::SrcAnd);
    EXPECT_THAT(picture.Rows(), ElementsAre("gg"));
    EXPECT_TRUE(picture.FourthBytesAreKept());
}

TEST(QtStretchBlt, MirrorsWhereTheSignsDiffer) {
    Picture source(2, 1);
    Put(source, {"rg"});
    Picture picture(4, 1);
    picture.dc.StretchBlt(4, 0, -4, 1, source.dc, 0, 0, 2, 1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("ggrr"));
    picture.dc.StretchBlt(4, 0, -4, 1, source.dc, 2, 0, -2, 1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rrgg"));
}

TEST(QtStretchBlt, ATargetPixelTakesTheSourcePixelThatItsCentreFallsOn) {
    Picture source(3, 1);
    Put(source, {"rgb"});
    Picture picture(7, 1);
    picture.dc.StretchBlt(0, 0, 7, 1, source.dc, 0, 0, 3, 1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rrgggbb"));
}

TEST(QtStretchBlt, ASourcePixelFallsTogetherWithThoseOfTheSameTargetPixel) {
    for (int dark = 0; dark < 7; ++dark) {
        Picture source(7, 1);
        std::string row(7, '.');
        row[static_cast<std::size_t>(dark)] = '#';
        Put(source, {row});
        Picture picture(3, 1);
        picture.dc.StretchBlt(0, 0, 3, 1, source.dc, 0, 0, 7, 1, Rop3::SrcCopy);
        const std::string expected = dark < 2 ? "#.." : dark < 5 ? ".#." : "..#";
        EXPECT_THAT(picture.Rows(), ElementsAre(expected)) << dark;
    }
}

TEST(QtStretchBlt, ACentreOnABorderBelongsToWhatComesBeforeItInTheRunsOwnDirection) {
    Picture source(2, 1), wide(3, 1);
    Put(source, {"rg"});
    wide.dc.StretchBlt(0, 0, 3, 1, source.dc, 0, 0, 2, 1, Rop3::SrcCopy);
    EXPECT_THAT(wide.Rows(), ElementsAre("rrg"));
    wide.dc.StretchBlt(3, 0, -3, 1, source.dc, 0, 0, 2, 1, Rop3::SrcCopy);
    EXPECT_THAT(wide.Rows(), ElementsAre("grr"));
    wide.dc.StretchBlt(0, 0, 3, 1, source.dc, 2, 0, -2, 1, Rop3::SrcCopy);
    EXPECT_THAT(wide.Rows(), ElementsAre("ggr"));
    Put(wide, {".#."});
    Picture narrow(2, 1);
    narrow.dc.StretchBlt(0, 0, 2, 1, wide.dc, 0, 0, 3, 1, Rop3::SrcCopy);
    EXPECT_THAT(narrow.Rows(), ElementsAre("#."));
}

TEST(QtStretchBlt, IsACopyWhereNothingIsStretched) {
    Picture source(3, 1);
    Put(source, {"rgb"});
    Picture picture(3, 1);
    picture.dc.StretchBlt(0, 0, 3, 1, source.dc, 0, 0, 3, 1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rgb"));
}

TEST(QtStretchBlt, IsCutByTheClip) {
    Picture source(1, 1);
    Put(source, {"r"});
    Picture picture(4, 3);
    picture.dc.SelectClipRgn({0, 0, 1, 3}, RgnMode::Copy);
    picture.dc.SelectClipRgn({3, 1, 4, 2}, RgnMode::Or);
    picture.dc.StretchBlt(-5, -5, 20, 20, source.dc, 0, 0, 1, 1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("r...", "r..r", "r..."));
}

TEST(QtStretchBlt, LeavesWhatHasItsSourceOutside) {
    Picture source(1, 1);
    Put(source, {"r"});
    Picture picture(4, 1);
    picture.dc.StretchBlt(0, 0, 4, 1, source.dc, -1, 0, 2, 1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("..rr"));
}

TEST(QtStretchBlt, TakesEveryNumber) {
    Picture source(3, 3);
    Picture picture(5, 5);
    for (const std::int32_t size : {0, 1, -1, kMin, kMax}) {
        for (const std::int32_t sourceSize : {0, 1, -1, kMin, kMax}) {
            picture.dc.StretchBlt(2, 2, size, size, source.dc, 0, 0, sourceSize, sourceSize, Rop3::SrcCopy);
            picture.dc.StretchBlt(kMin, kMax, size, size, source.dc, kMax, kMin, sourceSize, sourceSize, Rop3::SrcCopy);
            picture.dc.StretchBlt(kMin, kMin, size, size, source.dc, 1, 1, sourceSize, sourceSize, Rop3::SrcAnd);
        }
    }
    EXPECT_TRUE(picture.FourthBytesAreKept());
}

TEST(QtStretchBlt, OntoTheSameBitmapChangesNothing) {
    Picture picture(2, 1);
    Put(picture, {"rg"});
    picture.dc.StretchBlt(0, 0, 2, 1, picture.dc, 0, 0, 1, 1, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rg"));
}

// --- Pictures from files -------------------------------------------------------------------------------------------------

TEST(QtLoadBitmapFile, NothingCanBeLoadedWithoutFiles) {
    Picture picture(1, 1);
    EXPECT_EQ(picture.dc.LoadBitmapFile("picture.bmp"), nullptr);
}

}  // namespace
}  // namespace orvane
