// Colours out of every kind of bands.
#include <gmock/gmock.h>

#include <limits>

#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

TEST_F(RasterImageTest, OneBandIsGrey) {
    const std::string name = Make(3, 1, 1, GDT_Byte, [](GDALDataset& image) { WriteBytes(image, 1, {0, 0x42, 255}); });
    EXPECT_THAT(RowsOf(name), ElementsAre("#?."));
    EXPECT_EQ(ColorAt(name, 1, 0), 0x424242u);
}

TEST_F(RasterImageTest, APaletteGivesItsColours) {
    const std::string name = Make(4, 1, 1, GDT_Byte, [](GDALDataset& image) {
        GDALColorTable colors;
        const GDALColorEntry red{255, 0, 0, 255}, blue{0, 0, 255, 255}, clear{0, 255, 0, 0};
        colors.SetColorEntry(0, &blue);
        colors.SetColorEntry(1, &red);
        colors.SetColorEntry(2, &clear);
        image.GetRasterBand(1)->SetColorTable(&colors);
        WriteBytes(image, 1, {1, 0, 1, 0});
    });
    EXPECT_THAT(RowsOf(name), ElementsAre("rbrb"));
}

TEST_F(RasterImageTest, ATransparentPlaceOfAPaletteAndOneOutsideItKeepTheTarget) {
    const std::string vrt = File(
        "<VRTDataset rasterXSize=\"4\" rasterYSize=\"1\"><GeoTransform>0,1,0,0,0,-1</GeoTransform>"
        "<VRTRasterBand dataType=\"Byte\" band=\"1\" subClass=\"VRTRawRasterBand\"><ColorInterp>Palette</ColorInterp>"
        "<ColorTable><Entry c1=\"255\" c2=\"0\" c3=\"0\" c4=\"255\"/><Entry c1=\"0\" c2=\"255\" c3=\"0\" c4=\"0\"/></ColorTable>"
        "<SourceFilename relativetoVRT=\"0\">" +
        File(std::string("\0\1\11\0", 4)) + "</SourceFilename></VRTRasterBand></VRTDataset>");
    EXPECT_THAT(RowsOf(vrt), ElementsAre("r..r"));
}

TEST_F(RasterImageTest, OneBitAPixelIsBlackAndWhite) {
    const std::string name = Make(4, 1, 1, GDT_Byte, [](GDALDataset& image) { WriteBytes(image, 1, {1, 0, 0, 1}); }, {"NBITS=1"});
    EXPECT_THAT(RowsOf(name), ElementsAre(".##."));
}

TEST_F(RasterImageTest, FourBitsAPixelGoFromBlackToWhite) {
    const std::string name = Make(4, 1, 1, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {0, 15, 5, 10});
                                  },
                                  {"NBITS=4"});
    EXPECT_THAT(RowsOf(name), ElementsAre("#.??"));
    EXPECT_EQ(ColorAt(name, 2, 0), 0x555555u);
}

TEST_F(RasterImageTest, ColoursOfFourBitsABandGoToFullColours) {
    const std::string name = Make(3, 1, 3, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {15, 0, 5});
                                      WriteBytes(image, 2, {0, 15, 10});
                                      WriteBytes(image, 3, {0, 0, 3});
                                  },
                                  {"NBITS=4", "PHOTOMETRIC=RGB"});
    EXPECT_THAT(RowsOf(name), ElementsAre("rg?"));
    EXPECT_EQ(ColorAt(name, 2, 0), 0x33AA55u);
}

TEST_F(RasterImageTest, OpacityOfFourBitsIsFullAtFifteenAndHalfAtEight) {
    const std::string name = Make(5, 1, 2, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {15, 0, 15, 0, 5});
                                      WriteBytes(image, 2, {15, 0, 8, 7, 15});
                                  },
                                  {"NBITS=4", "ALPHA=YES"});
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(5, 1);
    picture.Fill(kGreen);
    ASSERT_TRUE(Draw(picture, 0, 0, 5, -1));
    EXPECT_THAT(picture.Rows(), ElementsAre(".g.g?"));
    EXPECT_EQ(picture.At(4, 0), 0x555555u);
}

TEST_F(RasterImageTest, SignedBytesAreShownByTheirRange) {
    const std::string name = Make(4, 1, 1, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {0x80, 0x7F, 0xFF, 0});
                                  },
                                  {"PIXELTYPE=SIGNEDBYTE"});
    EXPECT_THAT(RowsOf(name), ElementsAre("#.??"));
    EXPECT_EQ(ColorAt(name, 2, 0), 0x7F7F7Fu) << "-1 is 127 above the least of 255";
    EXPECT_EQ(ColorAt(name, 3, 0), 0x808080u);
    const std::string some = Make(3, 1, 1, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {0xF6, 10, 0});
                                  },
                                  {"PIXELTYPE=SIGNEDBYTE"});
    EXPECT_EQ(ColorAt(some, 0, 0), kBlack);
    EXPECT_EQ(ColorAt(some, 1, 0), kWhite);
    EXPECT_EQ(ColorAt(some, 2, 0), 0x808080u) << "halfway from -10 to 10";
}

TEST_F(RasterImageTest, SixteenBitsAreShownFromTheLeastToTheGreatestValue) {
    const std::string name = Make(4, 1, 1, GDT_UInt16, [](GDALDataset& image) {
        Write<std::uint16_t>(image, 1, {1000, 3000, 2000, 1000}, GDT_UInt16);
    });
    EXPECT_THAT(RowsOf(name), ElementsAre("#.?#"));
    EXPECT_EQ(ColorAt(name, 2, 0), 0x808080u);
}

TEST_F(RasterImageTest, OneRangeForAllBandsKeepsTheHue) {
    const std::string name = Make(2, 1, 3, GDT_UInt16,
                                  [](GDALDataset& image) {
                                      Write<std::uint16_t>(image, 1, {0, 4000}, GDT_UInt16);
                                      Write<std::uint16_t>(image, 2, {0, 2000}, GDT_UInt16);
                                      Write<std::uint16_t>(image, 3, {0, 0}, GDT_UInt16);
                                  },
                                  {"PHOTOMETRIC=RGB"});
    EXPECT_EQ(ColorAt(name, 1, 0), 0x0080FFu);
}

TEST_F(RasterImageTest, SignedAndFloatingValuesAreShownByTheirRangeAndNoNumberIsBlack) {
    const std::string whole = Make(3, 1, 1, GDT_Int16, [](GDALDataset& image) {
        Write<std::int16_t>(image, 1, {-300, 300, 0}, GDT_Int16);
    });
    EXPECT_THAT(RowsOf(whole), ElementsAre("#.?"));
    EXPECT_EQ(ColorAt(whole, 2, 0), 0x808080u);
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    const std::string floating = Make(4, 1, 1, GDT_Float32, [&](GDALDataset& image) {
        Write<float>(image, 1, {0.25f, 0.75f, none, infinite}, GDT_Float32);
    });
    EXPECT_THAT(RowsOf(floating), ElementsAre("#.#."));
}

TEST_F(RasterImageTest, NoDataHasNoPartInTheRange) {
    const std::string name = Make(3, 1, 1, GDT_Int16, [](GDALDataset& image) {
        image.GetRasterBand(1)->SetNoDataValue(-32768);
        Write<std::int16_t>(image, 1, {-32768, 10, 20}, GDT_Int16);
    });
    EXPECT_THAT(RowsOf(name), ElementsAre(".#."));
}

TEST_F(RasterImageTest, OneValueEverywhereIsBlackAndNothingIsDividedByZero) {
    const std::string name = Make(2, 1, 1, GDT_UInt16, [](GDALDataset& image) { image.GetRasterBand(1)->Fill(500); });
    EXPECT_THAT(RowsOf(name), ElementsAre("##"));
}

TEST_F(RasterImageTest, CyanMagentaYellowAndBlackAreInks) {
    const std::string name = Make(5, 1, 4, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {0, 255, 0, 0, 0});
                                      WriteBytes(image, 2, {0, 255, 255, 0, 0});
                                      WriteBytes(image, 3, {0, 0, 255, 0, 0});
                                      WriteBytes(image, 4, {0, 0, 0, 255, 128});
                                  },
                                  {"PHOTOMETRIC=CMYK"});
    EXPECT_THAT(RowsOf(name), ElementsAre(".br#?"));
    EXPECT_EQ(ColorAt(name, 4, 0), 0x7F7F7Fu);
}

TEST_F(RasterImageTest, OfManyBandsWithoutAMeaningTheFirstThreeAreRedGreenAndBlue) {
    const std::string name = Make(3, 1, 6, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteLetters(image, {"rgb"});
                                      for (int band = 4; band <= 6; ++band) image.GetRasterBand(band)->Fill(99);
                                  },
                                  {"PHOTOMETRIC=MINISBLACK"});
    EXPECT_THAT(RowsOf(name), ElementsAre("rgb"));
}

TEST_F(RasterImageTest, BandsStandForWhatTheySayInAnyOrder) {
    const std::string name = Make(2, 1, 3, GDT_Byte, [](GDALDataset& image) {
        image.GetRasterBand(1)->SetColorInterpretation(GCI_BlueBand);
        image.GetRasterBand(2)->SetColorInterpretation(GCI_GreenBand);
        image.GetRasterBand(3)->SetColorInterpretation(GCI_RedBand);
        WriteLetters(image, {"rb"});
    });
    EXPECT_THAT(RowsOf(name), ElementsAre("br"));
}

TEST_F(RasterImageTest, GreyWithOpacityIsGreyAndTransparent) {
    const std::string name = Make(3, 1, 2, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {0, 0, 255});
                                      WriteBytes(image, 2, {255, 0, 255});
                                  },
                                  {"ALPHA=YES"});
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(3, 1);
    picture.Fill(kGreen);
    ASSERT_TRUE(Draw(picture, 0, 0, 3, -1));
    EXPECT_THAT(picture.Rows(), ElementsAre("#g."));
}

TEST_F(RasterImageTest, OpacityOfSixteenBitsCountsByItsHalf) {
    const std::string name = Make(3, 1, 4, GDT_UInt16,
                                  [](GDALDataset& image) {
                                      Write<std::uint16_t>(image, 1, {65535, 65535, 65535}, GDT_UInt16);
                                      Write<std::uint16_t>(image, 2, {0, 0, 0}, GDT_UInt16);
                                      Write<std::uint16_t>(image, 3, {0, 0, 0}, GDT_UInt16);
                                      Write<std::uint16_t>(image, 4, {65535, 20000, 45000}, GDT_UInt16);
                                  },
                                  {"PHOTOMETRIC=RGB", "ALPHA=YES"});
    EXPECT_THAT(RowsOf(name), ElementsAre("r.r"));
}

}  // namespace
}  // namespace orvane
