// What lets the target show through, at full size and made smaller, by the ways in which images say it.
#include <gmock/gmock.h>

#include <limits>

#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

constexpr int kSide = 400;
constexpr std::size_t kPixels = std::size_t{kSide} * kSide;

/// One value in the left half of an image, another one in the right half.
std::vector<std::uint8_t> Halves(std::uint8_t left, std::uint8_t right) {
    std::vector<std::uint8_t> values(kPixels, left);
    for (std::size_t i = 0; i < kPixels; ++i) {
        if (i % kSide >= kSide / 2) values[i] = right;
    }
    return values;
}

/// Images whose left half is red and whose right half is transparent.
class RasterTransparencyTest : public RasterImageTest {
protected:
    std::string WithOpacity() {
        return Make(kSide, kSide, 4, GDT_Byte,
                    [](GDALDataset& image) {
                        WriteBytes(image, 1, Halves(200, 0));
                        WriteBytes(image, 4, Halves(255, 0));
                    },
                    {"PHOTOMETRIC=RGB", "ALPHA=YES"});
    }
    std::string WithMask() {
        CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", "YES");
        const std::string name =
            Make(kSide, kSide, 3, GDT_Byte,
                 [](GDALDataset& image) {
                     WriteBytes(image, 1, Halves(200, 0));
                     ASSERT_EQ(image.CreateMaskBand(GMF_PER_DATASET), CE_None);
                     std::vector<std::uint8_t> mask = Halves(255, 0);
                     ASSERT_EQ(image.GetRasterBand(1)->GetMaskBand()->RasterIO(GF_Write, 0, 0, kSide, kSide, mask.data(), kSide,
                                                                               kSide, GDT_Byte, 0, 0, nullptr),
                               CE_None);
                 },
                 {"PHOTOMETRIC=RGB"});
        CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
        return name;
    }
    std::string WithNoData() {
        return Make(kSide, kSide, 3, GDT_Byte,
                    [](GDALDataset& image) {
                        WriteBytes(image, 1, Halves(200, 0));
                        for (int band = 1; band <= 3; ++band) image.GetRasterBand(band)->SetNoDataValue(0);
                    },
                    {"PHOTOMETRIC=RGB"});
    }
    /// Looks at both halves pixel for pixel and four to one.
    void ExpectTheRightHalfToBeTransparent(const std::string& name) {
        ASSERT_TRUE(server.SrvLoad(name)) << name;
        server.SrvSetCP1(0, 0, 0, 0);
        server.SrvSetCP2(kSide, kSide, kSide, -kSide);
        ASSERT_TRUE(server.SrvCalcCorrect2());
        for (const int side : {kSide, kSide / 4}) {
            Picture picture(side, side);
            picture.Fill(kGreen);
            ASSERT_TRUE(Draw(picture, 0, 0, kSide, -kSide));
            const Rgb left = picture.At(side / 4, side / 2);
            EXPECT_NEAR(left & 0xFF, 200, 3) << name << ' ' << side;
            EXPECT_LE(left >> 8, 0x0303u) << name << ' ' << side;
            EXPECT_EQ(picture.At(side * 3 / 4, side / 2), kGreen) << name << ' ' << side;
        }
    }
    /// One row on green, pixel for pixel.
    std::vector<std::string> OnGreen(const std::string& name) {
        EXPECT_TRUE(server.SrvLoad(name)) << name;
        Picture picture(server.SrvImgWidth(), 1);
        picture.Fill(kGreen);
        EXPECT_TRUE(Draw(picture, 0, 0, server.SrvImgWidth(), -1));
        return picture.Rows();
    }
    /// Red, and the last band, whose middle value is 0, told to be opacity.
    std::string RedWithLastBand(int bands, GDALDataType type, double full, const std::vector<std::string>& options) {
        return Make(
            3, 1, bands, type,
            [&](GDALDataset& image) {
                Write<double>(image, 1, {full, full, full}, GDT_Float64);
                Write<double>(image, bands, {full, 0, full}, GDT_Float64);
                image.GetRasterBand(bands)->SetColorInterpretation(GCI_AlphaBand);
            },
            options);
    }
};

TEST_F(RasterTransparencyTest, OfABandOfOpacityWithAndWithoutOverviews) {
    const std::string name = WithOpacity();
    ExpectTheRightHalfToBeTransparent(name);
    AddOverviewsBeside(name, {2, 4, 8});
    ExpectTheRightHalfToBeTransparent(name);
    const std::string png = CopyOf(name, "PNG", ".png");
    AddOverviewsBeside(png, {2, 4, 8});
    ExpectTheRightHalfToBeTransparent(png);
}

TEST_F(RasterTransparencyTest, OfAMaskWhereTheOverviewsHaveNone) {
    const std::string name = WithMask();
    ExpectTheRightHalfToBeTransparent(name);
    // The overviews of JPEG are in the file by its nature.
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", "YES");
    ExpectTheRightHalfToBeTransparent(CopyOf(name, "JPEG", ".jpg"));
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
    const std::string mosaic = CopyOf(name, "VRT", ".vrt");
    AddOverviewsBeside(mosaic, {2, 4, 8});
    ExpectTheRightHalfToBeTransparent(mosaic);
    AddOverviewsBeside(name, {2, 4, 8});
    ExpectTheRightHalfToBeTransparent(name);
}

TEST_F(RasterTransparencyTest, OfAMaskInAFileOfItsOwnWithoutOverviews) {
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", "NO");
    const std::string name = CopyOf(WithMask(), "JPEG", ".jpg", {"INTERNAL_MASK=NO"});
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
    ASSERT_TRUE(std::filesystem::exists(name + ".msk"));
    ExpectTheRightHalfToBeTransparent(name);
}

TEST_F(RasterTransparencyTest, OfValuesForNoDataWhichOverviewsDoNotTell) {
    const std::string name = WithNoData();
    ExpectTheRightHalfToBeTransparent(name);
    ExpectTheRightHalfToBeTransparent(CopyOf(name, "JPEG", ".jpg", {"QUALITY=100"}));
    const std::string mosaic = CopyOf(name, "VRT", ".vrt");
    AddOverviewsBeside(mosaic, {2, 4, 8});
    ExpectTheRightHalfToBeTransparent(mosaic);
    AddOverviewsBeside(name, {2, 4, 8});
    ExpectTheRightHalfToBeTransparent(name);
}

TEST_F(RasterTransparencyTest, OfAPlaceInATableThatStandsForNoData) {
    const std::string name = Make(kSide, kSide, 1, GDT_Byte, [](GDALDataset& image) {
        GDALColorTable colors;
        const GDALColorEntry red{200, 0, 0, 255};
        const GDALColorEntry black{0, 0, 0, 255};
        colors.SetColorEntry(0, &red);
        colors.SetColorEntry(1, &black);
        image.GetRasterBand(1)->SetColorTable(&colors);
        image.GetRasterBand(1)->SetNoDataValue(1);
        WriteBytes(image, 1, Halves(0, 1));
    });
    AddOverviewsBeside(name, {2, 4, 8}, "NEAREST");
    ExpectTheRightHalfToBeTransparent(name);
}

TEST_F(RasterTransparencyTest, OfABandOfOpacityBehindMoreBandsThanAreShown) {
    EXPECT_THAT(OnGreen(RedWithLastBand(5, GDT_Byte, 255, {"PHOTOMETRIC=RGB"})), ElementsAre("rgr"));
    EXPECT_THAT(OnGreen(RedWithLastBand(3, GDT_Byte, 255, {"PHOTOMETRIC=MINISBLACK"})), ElementsAre(".g."))
        << "the first is grey, the second has no meaning";
}

TEST_F(RasterTransparencyTest, OfABandOfOpacityThatStandsFirst) {
    const auto meaning = [](GDALDataset& image, int band, GDALColorInterp color, const std::vector<std::uint8_t>& values) {
        image.GetRasterBand(band)->SetColorInterpretation(color);
        WriteBytes(image, band, values);
    };
    const std::string colours = Make(3, 1, 4, GDT_Byte,
                                     [&](GDALDataset& image) {
                                         meaning(image, 1, GCI_AlphaBand, {255, 0, 255});
                                         meaning(image, 2, GCI_RedBand, {255, 255, 0});
                                         meaning(image, 3, GCI_GreenBand, {0, 0, 0});
                                         meaning(image, 4, GCI_BlueBand, {0, 0, 255});
                                     },
                                     {"PHOTOMETRIC=MINISBLACK"});
    EXPECT_THAT(OnGreen(colours), ElementsAre("rgb"));
    const std::string grey = Make(3, 1, 2, GDT_Byte,
                                  [&](GDALDataset& image) {
                                      meaning(image, 1, GCI_AlphaBand, {255, 0, 255});
                                      meaning(image, 2, GCI_GrayIndex, {0, 255, 255});
                                  },
                                  {"PHOTOMETRIC=MINISBLACK"});
    EXPECT_THAT(OnGreen(grey), ElementsAre("#g."));
}

// The least and the greatest value of the other bands are 0 and the full one.
TEST_F(RasterTransparencyTest, OfABandOfOpacityOfOtherTypesIsAllAboveZero) {
    for (const double full : {1.0, 255.0}) {
        EXPECT_THAT(OnGreen(RedWithLastBand(4, GDT_Float32, full, {"PHOTOMETRIC=RGB", "ALPHA=YES"})), ElementsAre("rgr")) << full;
        EXPECT_THAT(OnGreen(RedWithLastBand(4, GDT_Int16, full, {"PHOTOMETRIC=RGB", "ALPHA=YES"})), ElementsAre("rgr")) << full;
    }
}

TEST_F(RasterTransparencyTest, OfABandOfOpacityOfTwelveBitsIsByTheGreatestNumberOfTwelveBits) {
    const std::string name = Make(4, 1, 2, GDT_UInt16,
                                  [](GDALDataset& image) {
                                      Write<std::uint16_t>(image, 1, {0, 4095, 4095, 4095}, GDT_UInt16);
                                      Write<std::uint16_t>(image, 2, {4095, 2048, 2047, 0}, GDT_UInt16);
                                  },
                                  {"NBITS=12", "ALPHA=YES"});
    EXPECT_THAT(OnGreen(name), ElementsAre("#.gg"));
}

TEST_F(RasterTransparencyTest, OfANegativeValueForNoDataOfSignedBytes) {
    const std::string name = Make(4, 1, 1, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {0x80, 0xFF, 0, 0x7F});
                                      image.GetRasterBand(1)->SetNoDataValue(-128);
                                  },
                                  {"PIXELTYPE=SIGNEDBYTE"});
    EXPECT_THAT(OnGreen(name), ElementsAre("g#?.")) << "-1 is the least of what there is";
}

TEST_F(RasterTransparencyTest, OfAValueForNoDataThatNoneCanBeTheBandOfOpacityCounts) {
    for (const GDALDataType type : {GDT_Byte, GDT_UInt16}) {
        for (const double noData : {-9999.0, 0.5, 70000.0}) {
            const std::string name = Make(3, 1, 2, type,
                                          [&](GDALDataset& image) {
                                              const double full = type == GDT_Byte ? 255 : 65535;
                                              Write<double>(image, 1, {0, full, full}, GDT_Float64);
                                              Write<double>(image, 2, {full, 0, full}, GDT_Float64);
                                              image.GetRasterBand(1)->SetNoDataValue(noData);
                                          },
                                          {"ALPHA=YES"});
            EXPECT_THAT(OnGreen(name), ElementsAre("#g.")) << noData;
        }
    }
}

TEST_F(RasterTransparencyTest, OfAnInfiniteValueForNoDataOnlyThatOne) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double noData : {infinity, -infinity}) {
        const std::string name = Make(3, 1, 1, GDT_Float32, [&](GDALDataset& image) {
            Write<double>(image, 1, {1, noData, 2}, GDT_Float64);
            image.GetRasterBand(1)->SetNoDataValue(noData);
        });
        EXPECT_THAT(OnGreen(name), ElementsAre("#g.")) << noData;
    }
}

TEST_F(RasterTransparencyTest, OfWholeNumbersOnlyTheVeryValueForNoData) {
    const std::string name = Make(3, 1, 1, GDT_UInt32, [](GDALDataset& image) {
        Write<double>(image, 1, {4e9, 4e9 + 40, 4e9 + 80}, GDT_Float64);
        image.GetRasterBand(1)->SetNoDataValue(4e9);
    });
    EXPECT_THAT(OnGreen(name), ElementsAre("g#."));
}

TEST_F(RasterTransparencyTest, OfANegativeValueForNoDataBesideATable) {
    const std::string values = Make(3, 1, 1, GDT_Int16, [](GDALDataset& image) {
        Write<std::int16_t>(image, 1, {0, -9999, 1}, GDT_Int16);
    });
    const std::string name = File(
        "<VRTDataset rasterXSize='3' rasterYSize='1'><GeoTransform>0, 1, 0, 0, 0, -1</GeoTransform>"
        "<VRTRasterBand dataType='Int16' band='1'><NoDataValue>-9999</NoDataValue><ColorTable>"
        "<Entry c1='255' c2='0' c3='0' c4='255'/><Entry c1='0' c2='0' c3='255' c4='255'/></ColorTable>"
        "<SimpleSource><SourceFilename relativeToVRT='0'>" +
        values + "</SourceFilename><SourceBand>1</SourceBand></SimpleSource></VRTRasterBand></VRTDataset>");
    EXPECT_THAT(OnGreen(name), ElementsAre("rgb"));
}

// The overviews say no data where the mask that was made later lets through; in the image's own file they even have its flags.
TEST_F(RasterTransparencyTest, OfAMaskThatWasMadeAfterTheOverviewsAndLetsNoDataThrough) {
    for (const bool inside : {false, true}) {
        const std::string name = WithNoData();
        if (inside) {
            GDALDataset* const image = GDALDataset::Open(name.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE);
            ASSERT_NE(image, nullptr);
            int levels[] = {2, 4, 8};
            ASSERT_EQ(image->BuildOverviews("AVERAGE", 3, levels, 0, nullptr, nullptr, nullptr), CE_None);
            GDALClose(image);
        } else {
            AddOverviewsBeside(name, {2, 4, 8});
        }
        GDALDataset* const image = GDALDataset::Open(name.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY);
        ASSERT_NE(image, nullptr);
        CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", "NO");
        ASSERT_EQ(image->CreateMaskBand(GMF_PER_DATASET), CE_None);
        std::vector<std::uint8_t> mask = Halves(0, 255);
        ASSERT_EQ(image->GetRasterBand(1)->GetMaskBand()->RasterIO(GF_Write, 0, 0, kSide, kSide, mask.data(), kSide, kSide,
                                                                   GDT_Byte, 0, 0, nullptr),
                  CE_None);
        GDALClose(image);
        CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
        ASSERT_TRUE(server.SrvLoad(name));
        for (const int side : {kSide, kSide / 4}) {
            Picture picture(side, side);
            picture.Fill(kGreen);
            ASSERT_TRUE(Draw(picture, 0, 0, kSide, -kSide));
            EXPECT_EQ(picture.At(side / 4, side / 2), kGreen) << side << ' ' << inside;
            EXPECT_EQ(picture.At(side * 3 / 4, side / 2), kBlack) << side << ' ' << inside;
        }
    }
}

TEST_F(RasterTransparencyTest, OfAFractionForNoDataOfWholeNumbersThereIsNone) {
    for (const GDALDataType type : {GDT_Byte, GDT_UInt16, GDT_Int16}) {
        const std::string name = Make(2, 1, 1, type, [&](GDALDataset& image) {
            Write<double>(image, 1, {0, 100}, GDT_Float64);
            image.GetRasterBand(1)->SetNoDataValue(0.5);
        });
        EXPECT_EQ(OnGreen(name).front().substr(0, 1), "#") << type;
    }
}

TEST_F(RasterTransparencyTest, OfAMaskOfFewBits) {
    const std::string name = MakeLetters({"rgb"});
    const std::string mask = Make(3, 1, 1, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {1, 1, 0});
                                      image.SetMetadataItem("INTERNAL_MASK_FLAGS_1", "2");
                                      image.SetMetadataItem("INTERNAL_MASK_FLAGS_2", "2");
                                      image.SetMetadataItem("INTERNAL_MASK_FLAGS_3", "2");
                                  },
                                  {"NBITS=1"});
    std::filesystem::rename(mask, name + ".msk");
    EXPECT_THAT(OnGreen(name), ElementsAre("rgg"));
}

TEST_F(RasterTransparencyTest, WhatIsOpaqueByABandOfNumbersHasItsPartInTheRange) {
    const std::string name = Make(3, 1, 2, GDT_Float32,
                                  [](GDALDataset& image) {
                                      Write<float>(image, 1, {0, 50, 100}, GDT_Float32);
                                      Write<float>(image, 2, {0.25f, 1, 0.25f}, GDT_Float32);
                                  },
                                  {"ALPHA=YES"});
    EXPECT_THAT(OnGreen(name), ElementsAre("#?."));
}

TEST_F(RasterTransparencyTest, OfOneSetOfValuesForNoDataThatTheImageTells) {
    const std::string name = Make(3, 1, 3, GDT_Byte,
                                  [](GDALDataset& image) {
                                      WriteBytes(image, 1, {255, 0, 0});
                                      WriteBytes(image, 3, {0, 0, 255});
                                      image.SetMetadataItem("NODATA_VALUES", "0 0 0");
                                  },
                                  {"PHOTOMETRIC=RGB"});
    EXPECT_THAT(OnGreen(name), ElementsAre("rgb"));
}

TEST_F(RasterTransparencyTest, OfAFloatingValueForNoDataThatIsWrittenWithFewerDigits) {
    const std::string name = Make(3, 1, 1, GDT_Float32, [](GDALDataset& image) {
        Write<float>(image, 1, {-3.4028234663852886e38f, 1, 2}, GDT_Float32);
        image.GetRasterBand(1)->SetNoDataValue(-3.402823e38);
    });
    EXPECT_THAT(OnGreen(name), ElementsAre("g#."));
}

TEST_F(RasterTransparencyTest, OfNumbersThatAShortFloatingPointNumberCannotTellApart) {
    const std::string name = Make(3, 1, 1, GDT_UInt32, [](GDALDataset& image) {
        Write<double>(image, 1, {4e9, 4e9 + 80, 4e9 + 40}, GDT_Float64);
    });
    EXPECT_THAT(OnGreen(name), ElementsAre("#.?"));
    const std::string large = Make(3, 1, 1, GDT_Float64, [](GDALDataset& image) {
        Write<double>(image, 1, {0, 1e300, 5e299}, GDT_Float64);
    });
    EXPECT_THAT(OnGreen(large), ElementsAre("#.?"));
}

}  // namespace
}  // namespace orvane
