#include <gmock/gmock.h>

#include "tests/qt/picture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

constexpr Rop2 kAllModes[] = {Rop2::Black,      Rop2::NotMergePen, Rop2::MaskNotPen, Rop2::NotCopyPen,
                              Rop2::MaskPenNot, Rop2::Not,         Rop2::XorPen,     Rop2::NotMaskPen,
                              Rop2::MaskPen,    Rop2::NotXorPen,   Rop2::Nop,        Rop2::MergeNotPen,
                              Rop2::CopyPen,    Rop2::MergePenNot, Rop2::MergePen,   Rop2::White};

// The platform's own table of the sixteen modes, p the pen or brush and d the destination.
Rgb Expected(Rop2 mode, Rgb p, Rgb d) {
    const Rgb all = 0xFFFFFF;
    switch (mode) {
        case Rop2::Black:
            return 0;
        case Rop2::NotMergePen:
            return ~(p | d) & all;
        case Rop2::MaskNotPen:
            return ~p & d & all;
        case Rop2::NotCopyPen:
            return ~p & all;
        case Rop2::MaskPenNot:
            return p & ~d & all;
        case Rop2::Not:
            return ~d & all;
        case Rop2::XorPen:
            return p ^ d;
        case Rop2::NotMaskPen:
            return ~(p & d) & all;
        case Rop2::MaskPen:
            return p & d;
        case Rop2::NotXorPen:
            return ~(p ^ d) & all;
        case Rop2::Nop:
            return d;
        case Rop2::MergeNotPen:
            return (~p | d) & all;
        case Rop2::CopyPen:
            return p;
        case Rop2::MergePenNot:
            return (p | ~d) & all;
        case Rop2::MergePen:
            return p | d;
        case Rop2::White:
            return all;
    }
    return 0x777777;
}

constexpr Rgb kInk = 0x36C91F;
constexpr Rgb kUnder = 0x5A0FF3;
constexpr Rgb kBehind = 0xA53C66;

TEST(QtRop2, AllModesCombineLinesBitByBit) {
    for (const std::int32_t width_px : {1, 3}) {
        for (const Rop2 mode : kAllModes) {
            Picture picture(20, 9);
            picture.Fill(kUnder);
            picture.dc.SetROP2(mode);
            picture.dc.SelectPen(SolidPen(kInk, width_px));
            Polyline(picture.dc, {{4, 4}, {10, 4}, {16, 4}});
            for (int x = 4; x < 16; ++x) {
                EXPECT_EQ(picture.At(x, 4), Expected(mode, kInk, kUnder)) << static_cast<int>(mode) << " width " << width_px;
            }
            EXPECT_EQ(picture.At(10, 8), kUnder);
            EXPECT_TRUE(picture.FourthBytesAreKept());
        }
    }
}

TEST(QtRop2, AllModesCombineSolidFillsBitByBit) {
    for (const Rop2 mode : kAllModes) {
        Picture picture(4, 4);
        picture.Fill(kUnder);
        picture.dc.SetROP2(mode);
        picture.dc.SelectPen(NullPen());
        picture.dc.SelectBrush(CreateSolidBrush(kInk));
        PolyPolygon(picture.dc, {RectRing(0, 0, 4, 3)});
        EXPECT_EQ(picture.At(2, 2), Expected(mode, kInk, kUnder)) << static_cast<int>(mode);
        EXPECT_EQ(picture.At(2, 3), kUnder);
        EXPECT_TRUE(picture.FourthBytesAreKept());
    }
}

TEST(QtRop2, AllModesCombineHatchesAndTheirGapsBitByBit) {
    for (const Rop2 mode : kAllModes) {
        for (const BkMode gaps : {BkMode::Opaque, BkMode::Transparent}) {
            Picture picture(16, 16);
            picture.Fill(kUnder);
            picture.dc.SetROP2(mode);
            picture.dc.SetBkMode(gaps);
            picture.dc.SetBkColor(kBehind);
            picture.dc.SelectPen(NullPen());
            picture.dc.SelectBrush(CreateHatchBrush(Hatch::Vertical, kInk));
            PolyPolygon(picture.dc, {RectRing(0, 0, 16, 16)});
            const Rgb gap = gaps == BkMode::Opaque ? Expected(mode, kBehind, kUnder) : kUnder;
            for (int x = 0; x < 16; ++x) {
                EXPECT_EQ(picture.At(x, 5), x % 8 == 4 ? Expected(mode, kInk, kUnder) : gap)
                    << static_cast<int>(mode) << " at " << x;
            }
            EXPECT_TRUE(picture.FourthBytesAreKept());
        }
    }
}

TEST(QtRop2, MaskPenUnderTwoPolygonsIsTheAndOfAllColours) {
    Picture picture(3, 1);
    picture.dc.SetROP2(Rop2::MaskPen);
    picture.dc.SelectPen(NullPen());
    picture.dc.SelectBrush(CreateSolidBrush(kYellow));
    PolyPolygon(picture.dc, {RectRing(0, 0, 2, 1)});
    picture.dc.SelectBrush(CreateSolidBrush(0xFFFF00));
    PolyPolygon(picture.dc, {RectRing(1, 0, 3, 1)});
    EXPECT_EQ(picture.At(0, 0), kYellow);
    EXPECT_EQ(picture.At(1, 0), kGreen);
    EXPECT_EQ(picture.At(2, 0), 0xFFFF00u);
}

TEST(QtRop2, FillRectPatBltAndBlitsDoNotAskForIt) {
    Picture source(1, 1);
    source.Fill(kBlue);
    Picture picture(4, 1);
    picture.dc.SetROP2(Rop2::Black);
    picture.dc.SelectBrush(CreateSolidBrush(kGreen));
    picture.dc.FillRect({0, 0, 1, 1}, CreateSolidBrush(kRed));
    picture.dc.PatBlt(1, 0, 1, 1, Rop3::PatCopy);
    picture.dc.BitBlt(2, 0, 1, 1, source.dc, 0, 0, Rop3::SrcCopy);
    EXPECT_THAT(picture.Rows(), ElementsAre("rgb."));
}

Rows RowsOfHatch(Hatch hatch) {
    Picture picture(8, 8);
    picture.dc.SetBkMode(BkMode::Transparent);
    picture.dc.FillRect({0, 0, 8, 8}, CreateHatchBrush(hatch, kBlack));
    return picture.Rows();
}

TEST(QtHatch, HasThePlatformsPattern) {
    EXPECT_THAT(RowsOfHatch(Hatch::Horizontal), ElementsAre("........", "........", "........", "########",  //
                                                            "........", "........", "........", "........"));
    EXPECT_THAT(RowsOfHatch(Hatch::Vertical), ElementsAre("....#...", "....#...", "....#...", "....#...",  //
                                                          "....#...", "....#...", "....#...", "....#..."));
    EXPECT_THAT(RowsOfHatch(Hatch::FDiagonal), ElementsAre("#.......", ".#......", "..#.....", "...#....",  //
                                                           "....#...", ".....#..", "......#.", ".......#"));
    EXPECT_THAT(RowsOfHatch(Hatch::BDiagonal), ElementsAre(".......#", "......#.", ".....#..", "....#...",  //
                                                           "...#....", "..#.....", ".#......", "#......."));
    EXPECT_THAT(RowsOfHatch(Hatch::Cross), ElementsAre("....#...", "....#...", "....#...", "########",  //
                                                       "....#...", "....#...", "....#...", "....#..."));
    EXPECT_THAT(RowsOfHatch(Hatch::DiagCross), ElementsAre("#......#", ".#....#.", "..#..#..", "...##...",  //
                                                           "...##...", "..#..#..", ".#....#.", "#......#"));
}

TEST(QtHatch, PatternStandsStillUnderTheAreasThatShowIt) {
    Picture picture(24, 24);
    picture.dc.SetBkMode(BkMode::Transparent);
    picture.dc.SelectPen(NullPen());
    picture.dc.SelectBrush(CreateHatchBrush(Hatch::FDiagonal, kBlack));
    PolyPolygon(picture.dc, {RectRing(3, 5, 22, 23)});
    for (int y = 0; y < 24; ++y) {
        for (int x = 0; x < 24; ++x) {
            const bool inside = x >= 3 && x < 22 && y >= 5 && y < 23;
            EXPECT_EQ(picture.At(x, y) == kBlack, inside && x % 8 == y % 8);
        }
    }
}

TEST(QtHatch, GapsTakeTheBackgroundColourWhileOpaqueAndStayWhileTransparent) {
    Picture picture(8, 2);
    picture.Fill(kGreen);
    picture.dc.SelectPen(NullPen());
    picture.dc.SelectBrush(CreateHatchBrush(Hatch::Vertical, kBlack));
    picture.dc.SetBkColor(kRed);
    PolyPolygon(picture.dc, {RectRing(0, 0, 8, 1)});
    picture.dc.SetBkMode(BkMode::Transparent);
    PolyPolygon(picture.dc, {RectRing(0, 1, 8, 2)});
    EXPECT_THAT(picture.Rows(), ElementsAre("rrrr#rrr", "gggg#ggg"));
}

TEST(QtHatch, NumberThatThePlatformDoesNotHaveFillsNothing) {
    Picture picture(8, 8);
    picture.dc.FillRect({0, 0, 8, 8}, CreateHatchBrush(static_cast<Hatch>(6), kBlack));
    picture.dc.FillRect({0, 0, 8, 8}, CreateHatchBrush(static_cast<Hatch>(0xFFFFFFFF), kBlack));
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

}  // namespace
}  // namespace orvane
