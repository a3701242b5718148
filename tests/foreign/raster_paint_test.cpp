// The pixels that a server paints.
#include <gmock/gmock.h>

#include <cmath>

#include "store/view_params.h"
#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

const std::vector<std::string> kFlag = {"rrgg", "rrgg", "bbyy", "bbyy"};

TEST_F(RasterImageTest, AnImageIsPaintedPixelForPixelWhereItsOwnGeoreferenceSays) {
    EXPECT_THAT(RowsOf(MakeLetters({"rgb", "y#r"})), ElementsAre("rgb", "y#r"));
}

TEST_F(RasterImageTest, TheMapsYIsNorth) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    Picture picture(4, 4);
    // One map unit a pixel; the image's left top corner, (0, 0) of the map, is one pixel from the left and two from the top.
    ASSERT_TRUE(Draw(picture, -1, 2, 3, -2));
    EXPECT_THAT(picture.Rows(), ElementsAre("....", "....", ".rg.", ".by."));
}

TEST_F(RasterImageTest, AnImageThatIsStoredSouthUpIsTurnedRound) {
    const std::string name = MakeLetters({"rg", "by"}, [](GDALDataset& image) {
        double place[] = {0, 1, 0, -2, 0, 1};
        image.SetGeoTransform(place);
    });
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(2, 2);
    ASSERT_TRUE(Draw(picture, 0, 0, 2, -2));
    EXPECT_THAT(picture.Rows(), ElementsAre("by", "rg"));
}

TEST_F(RasterImageTest, ALargerPixelTakesTheNearest) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    Picture picture(5, 5);
    ASSERT_TRUE(Draw(picture, 0, 0, 2, -2));
    // Two pixels over five: the centre of the third is the middle, which belongs to the second.
    EXPECT_THAT(picture.Rows(), ElementsAre("rrggg", "rrggg", "bbyyy", "bbyyy", "bbyyy"));
}

TEST_F(RasterImageTest, ASmallerPixelTakesTheMean) {
    const std::string name = Make(4, 2, 1, GDT_Byte, [](GDALDataset& image) {
        WriteBytes(image, 1, {0, 100, 10, 10, 20, 200, 30, 50});
    });
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(2, 1);
    ASSERT_TRUE(Draw(picture, 0, 0, 4, -2));
    EXPECT_EQ(picture.At(0, 0), 0x505050u) << "(0 + 100 + 20 + 200) / 4";
    EXPECT_EQ(picture.At(1, 0), 0x191919u) << "(10 + 10 + 30 + 50) / 4";
}

TEST_F(RasterImageTest, ASmallerPixelTakesTheMeanOfTheColoursOfATable) {
    const std::string name = Make(4, 4, 1, GDT_Byte, [](GDALDataset& image) {
        GDALColorTable colors;
        const GDALColorEntry black{0, 0, 0, 255}, white{255, 255, 255, 255}, red{200, 0, 0, 255};
        colors.SetColorEntry(0, &black);
        colors.SetColorEntry(1, &white);
        colors.SetColorEntry(2, &red);
        image.GetRasterBand(1)->SetColorTable(&colors);
        WriteBytes(image, 1, {0, 1, 2, 2, 1, 0, 2, 2, 0, 0, 1, 1, 0, 2, 1, 1});
    });
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(2, 2);
    ASSERT_TRUE(Draw(picture, 0, 0, 4, -4));
    EXPECT_EQ(picture.At(0, 0), 0x808080u);
    EXPECT_EQ(picture.At(1, 0), 0x0000C8u);
    EXPECT_EQ(picture.At(0, 1), 0x000032u) << "one pixel of four is red";
    EXPECT_EQ(picture.At(1, 1), kWhite);
}

TEST_F(RasterImageTest, OverviewsStandForTheImageWhereItIsMadeSmaller) {
    // The overviews are painted green, the image itself is red: what is shown tells which was read.
    const std::string name = Make(512, 512, 3, GDT_Byte, [](GDALDataset& image) {
        image.GetRasterBand(1)->Fill(255);
        int levels[] = {2, 4};
        ASSERT_EQ(image.BuildOverviews("NEAREST", 2, levels, 0, nullptr, nullptr, nullptr), CE_None);
        for (int level = 0; level < 2; ++level) {
            image.GetRasterBand(1)->GetOverview(level)->Fill(0);
            image.GetRasterBand(2)->GetOverview(level)->Fill(255);
        }
    });
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(100, 100);
    ASSERT_TRUE(Draw(picture, 0, 0, 500, -500));
    EXPECT_EQ(picture.CountOther(kGreen), 0);
    ASSERT_TRUE(Draw(picture, 0, 0, 100, -100));
    EXPECT_EQ(picture.CountOther(kRed), 0);
}

TEST_F(RasterImageTest, TheImageTurnsAsTheViewTurnsTheMap) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters(kFlag)));
    ASSERT_TRUE(server.SrvRotate(90));
    // RotateView with 90 carries view (x, y) to (y, -x): the map's east goes up, its south to the right.
    Picture picture(4, 4);
    ASSERT_TRUE(Draw(picture, 0, 4, 4, 0));
    EXPECT_THAT(picture.Rows(), ElementsAre("ggyy", "ggyy", "rrbb", "rrbb"));
    ASSERT_TRUE(server.SrvRotate(0));
    Picture straight(4, 4);
    ASSERT_TRUE(Draw(straight, 0, 0, 4, -4));
    EXPECT_THAT(straight.Rows(), ElementsAreArray(kFlag));
}

TEST_F(RasterImageTest, ATurnedImageCoversThePixelsWhoseCentresLieInItAndNoOthers) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters(kFlag)));
    ASSERT_TRUE(server.SrvRotate(30));
    Picture picture(160, 160);
    ASSERT_TRUE(Draw(picture, -8, 8, 8, -8));
    const double a = -30 * 0.01745328;
    int near = 0;
    for (int y = 0; y < 160; ++y) {
        for (int x = 0; x < 160; ++x) {
            // Back to the map by the turn of the opposite angle; ten pixels are one unit.
            const double viewX = (x + 0.5) / 10 - 8;
            const double viewY = (y + 0.5) / 10 - 8;
            const double u = std::cos(-a) * viewX - std::sin(-a) * viewY;
            const double v = std::sin(-a) * viewX + std::cos(-a) * viewY;
            if (std::abs(u - std::round(u)) < 1e-6 || std::abs(v - std::round(v)) < 1e-6) {
                ++near;
                continue;
            }
            const bool inside = u > 0 && u < 4 && v > 0 && v < 4;
            const std::map<char, Rgb> colors{{'r', kRed}, {'g', kGreen}, {'b', kBlue}, {'y', kYellow}};
            const Rgb expected = inside ? colors.at(kFlag[static_cast<std::size_t>(v)][static_cast<std::size_t>(u)]) : kWhite;
            ASSERT_EQ(picture.At(x, y), expected) << x << ' ' << y;
        }
    }
    EXPECT_LT(near, 100);
}

TEST_F(RasterImageTest, ATurnedLargeImageIsWholeAcrossTheSeamsOfItsTiles) {
    const std::string name = Make(3000, 3000, 3, GDT_Byte, [](GDALDataset& image) { image.GetRasterBand(1)->Fill(255); });
    ASSERT_TRUE(server.SrvLoad(name));
    for (const double angle : {0.0, 17.0, 45.0, 200.0}) {
        for (const double zoom : {0.5, 1.0, 2.7}) {
            ASSERT_TRUE(server.SrvRotate(angle));
            Picture picture(1100, 700);
            double x = 1500;
            double y = 1500;
            RotateView(x, y, angle);
            const double w = 550 * zoom / 2;
            const double h = 350 * zoom / 2;
            ASSERT_TRUE(Draw(picture, x - w, -(y - h), x + w, -(y + h)));
            EXPECT_EQ(picture.CountOther(kRed), 0) << angle << ' ' << zoom;
        }
    }
}

TEST_F(RasterImageTest, ATurnedImageThatIsMadeSmallerIsSmooth) {
    std::vector<std::uint8_t> board(200 * 200);
    for (std::size_t i = 0; i < board.size(); ++i) board[i] = (i / 200 + i % 200) % 2 == 0 ? 0 : 255;
    const std::string name = Make(200, 200, 1, GDT_Byte, [&](GDALDataset& image) { WriteBytes(image, 1, board); });
    ASSERT_TRUE(server.SrvLoad(name));
    ASSERT_TRUE(server.SrvRotate(30));
    double x = 100;
    double y = 100;
    RotateView(x, y, 30);
    for (const double zoom : {2.5, 4.0, 7.3}) {
        Picture picture(20, 20);
        ASSERT_TRUE(Draw(picture, x - 10 * zoom, -(y - 10 * zoom), x + 10 * zoom, -(y + 10 * zoom)));
        for (int row = 0; row < 20; ++row) {
            for (int column = 0; column < 20; ++column) {
                const auto grey = static_cast<int>(picture.At(column, row) & 0xFF);
                ASSERT_NEAR(grey, 127, 64) << zoom;
            }
        }
    }
}

TEST_F(RasterImageTest, OnlyTheRectangleThatIsAskedForIsPaintedAndTheClipHolds) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rrrr", "rrrr", "rrrr", "rrrr"})));
    Picture picture(4, 4);
    picture.dc.SelectClipRgn({0, 0, 2, 4}, RgnMode::Copy);
    const RasterPart part{1, -1, 4, -3, {1, 1, 4, 3}, 0, 0};
    ASSERT_TRUE(server.SrvDraw(picture.dc, part, 1));
    EXPECT_THAT(picture.Rows(), ElementsAre("....", ".r..", ".r..", "...."));
}

TEST_F(RasterImageTest, ThePendingOffsetShiftsWhatIsShown) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    Picture picture(4, 3);
    RasterPart part = PartOf(picture, 0, 0, 4, -3);
    part.PendX = 0.6;
    part.PendY = 0.4;
    ASSERT_TRUE(server.SrvDraw(picture.dc, part, 1));
    EXPECT_THAT(picture.Rows(), ElementsAre(".rg.", ".by.", "...."));
}

TEST_F(RasterImageTest, AnImageElsewhereIsNoFailureAndPaintsNothing) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    Picture picture(4, 4);
    EXPECT_TRUE(Draw(picture, 1000, 1000, 1004, 996));
    EXPECT_TRUE(Draw(picture, 1e18, 1e18, 2e18, 0.5e18));
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

// --- Transparency -------------------------------------------------------------------------------------------------------------

TEST_F(RasterImageTest, WhereTheBandOfOpacityIsLessThanHalfTheTargetIsKept) {
    const std::string name = Make(4, 1, 4, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteLetters(image, {"rrrr"});
                                      WriteBytes(image, 4, {255, 128, 127, 0});
                                  },
                                  {"PHOTOMETRIC=RGB", "ALPHA=YES"});
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(4, 1);
    picture.Fill(kYellow);
    ASSERT_TRUE(Draw(picture, 0, 0, 4, -1));
    EXPECT_THAT(picture.Rows(), ElementsAre("rryy"));
    EXPECT_TRUE(picture.FourthBytesAreKept());
}

TEST_F(RasterImageTest, WhatHasNoDataIsTransparent) {
    const std::string name = Make(3, 1, 1, GDT_Byte, [](GDALDataset& image) {
        image.GetRasterBand(1)->SetNoDataValue(7);
        WriteBytes(image, 1, {0, 7, 255});
    });
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(3, 1);
    picture.Fill(kGreen);
    ASSERT_TRUE(Draw(picture, 0, 0, 3, -1));
    EXPECT_THAT(picture.Rows(), ElementsAre("#g."));
}

TEST_F(RasterImageTest, AColourIsTransparentOnlyWhereAllItsBandsHaveNoData) {
    const std::string name = MakeLetters({"r#b."}, [](GDALDataset& image) {
        for (int band = 1; band <= 3; ++band) image.GetRasterBand(band)->SetNoDataValue(0);
    });
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(4, 1);
    picture.Fill(kYellow);
    ASSERT_TRUE(Draw(picture, 0, 0, 4, -1));
    EXPECT_THAT(picture.Rows(), ElementsAre("ryb."));
}

TEST_F(RasterImageTest, AMaskBesideTheBandsIsHonoured) { EXPECT_THAT(RowsOf(MakeMasked("YES")), ElementsAre("r.b")); }

TEST_F(RasterImageTest, TransparentPixelsHaveNoPartInTheMean) {
    const std::string name = Make(4, 2, 4, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteLetters(image, {"rgbb", "rgbb"});
                                      WriteBytes(image, 4, {255, 0, 0, 0, 255, 0, 0, 0});
                                  },
                                  {"PHOTOMETRIC=RGB", "ALPHA=YES"});
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(2, 1);
    ASSERT_TRUE(Draw(picture, 0, 0, 4, -2));
    EXPECT_THAT(picture.Rows(), ElementsAre("r.")) << "half covered is shown, in the colour of what covers";
}

}  // namespace
}  // namespace orvane
