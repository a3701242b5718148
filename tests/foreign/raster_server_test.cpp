// The eleven operations of a server, and the memory that it takes.
#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "foreign/raster/image_painter.h"
#include "foreign/raster_reader/raster_image.h"
#include "foreign/raster_reader/reader_fences.h"
#include "platform/cp932.h"
#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

TEST_F(RasterImageTest, AServerIsReadyOnceItIsInitialisedAndLoadsNothingBefore) {
    GdalRasterServer fresh;
    EXPECT_FALSE(fresh.SrvIsReady());
    EXPECT_FALSE(fresh.SrvLoad(MakeLetters({"r"})));
    EXPECT_TRUE(fresh.SrvInit());
    EXPECT_TRUE(fresh.SrvIsReady());
    EXPECT_TRUE(fresh.SrvLoad(MakeLetters({"r"})));
}

TEST_F(RasterImageTest, TheSizeIsTheImagesAndNoneWithoutOne) {
    EXPECT_EQ(server.SrvImgWidth(), 0);
    EXPECT_EQ(server.SrvImgHeight(), 0);
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rgb", "rgb"})));
    EXPECT_EQ(server.SrvImgWidth(), 3);
    EXPECT_EQ(server.SrvImgHeight(), 2);
    EXPECT_TRUE(server.SrvClose());
    EXPECT_EQ(server.SrvImgWidth(), 0);
    EXPECT_FALSE(server.SrvClose());
}

TEST_F(RasterImageTest, AClosedServerIsReadyAndDrawsNothing) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"r"})));
    server.SrvClose();
    EXPECT_TRUE(server.SrvIsReady());
    Picture picture(1, 1);
    EXPECT_FALSE(Draw(picture, 0, 0, 1, -1));
    EXPECT_FALSE(server.SrvSetCP1(0, 0, 0, 0));
    EXPECT_FALSE(server.SrvSetCP2(0, 0, 0, 0));
    EXPECT_FALSE(server.SrvCalcCorrect2());
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

TEST_F(RasterImageTest, ALoadTakesThePlaceOfTheImageThatIsOpen) {
    EXPECT_THAT(RowsOf(MakeLetters({"rr"})), ElementsAre("rr"));
    EXPECT_THAT(RowsOf(MakeLetters({"b"})), ElementsAre("b"));
    EXPECT_FALSE(server.SrvLoad("no such image.tif"));
    EXPECT_EQ(server.SrvImgWidth(), 0) << "and one that fails leaves none";
}

TEST_F(RasterImageTest, TwoControlPointsPlaceTheImageOnceTheCorrectionIsAskedFor) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    EXPECT_TRUE(server.SrvSetCP1(0, 0, 10, 10));
    EXPECT_TRUE(server.SrvSetCP2(2, 2, 14, 6));
    Picture before(2, 2);
    ASSERT_TRUE(Draw(before, 0, 0, 2, -2));
    EXPECT_THAT(before.Rows(), ElementsAre("rg", "by")) << "where its georeference says";
    EXPECT_TRUE(server.SrvCalcCorrect2());
    Picture after(6, 6);
    ASSERT_TRUE(Draw(after, 9, 11, 15, 5));
    EXPECT_THAT(after.Rows(), ElementsAre("......", ".rrgg.", ".rrgg.", ".bbyy.", ".bbyy.", "......"));
}

TEST_F(RasterImageTest, EqualControlPointsAreRefusedAndThePlacementBeforeStays) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    for (const ControlPoint& second : {ControlPoint{5, 5, 70, 80}, ControlPoint{6, 7, 10, 20}, ControlPoint{5, 5, 10, 20},
                                       ControlPoint{6, 7, std::nan(""), 0}}) {
        EXPECT_TRUE(server.SrvSetCP1(5, 5, 10, 20));
        EXPECT_TRUE(server.SrvSetCP2(static_cast<int>(second.bmpX), static_cast<int>(second.bmpY), second.GeoX, second.GeoY));
        EXPECT_FALSE(server.SrvCalcCorrect2());
        Picture picture(2, 1);
        EXPECT_TRUE(Draw(picture, 0, 0, 2, -1));
        EXPECT_THAT(picture.Rows(), ElementsAre("rg"));
    }
}

TEST_F(RasterImageTest, OneControlPointAloneIsRefused) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    EXPECT_TRUE(server.SrvSetCP2(0, 0, 100, 100));
    EXPECT_FALSE(server.SrvCalcCorrect2());
    Picture picture(2, 1);
    EXPECT_TRUE(Draw(picture, 0, 0, 2, -1));
    EXPECT_THAT(picture.Rows(), ElementsAre("rg"));
}

TEST_F(RasterImageTest, WithoutControlPointsTheCorrectionKeepsTheImagesOwnGeoreference) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    EXPECT_TRUE(server.SrvCalcCorrect2());
    Picture picture(2, 1);
    EXPECT_TRUE(Draw(picture, 0, 0, 2, -1));
    EXPECT_THAT(picture.Rows(), ElementsAre("rg"));
}

TEST_F(RasterImageTest, AnImageThatLiesNowhereIsNotDrawnUntilItIsPlaced) {
    const std::string png = NewName(".png");
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    {
        GDALDataset* const source = GDALDataset::Open(MakeLetters({"rg", "by"}).c_str());
        auto* const driver = GetGDALDriverManager()->GetDriverByName("PNG");
        GDALClose(driver->CreateCopy(png.c_str(), source, FALSE, nullptr, nullptr, nullptr));
        GDALClose(source);
        std::filesystem::remove(png + ".aux.xml");
    }
    ASSERT_TRUE(server.SrvLoad(png));
    Picture picture(2, 2);
    EXPECT_FALSE(server.SrvCalcCorrect2());
    EXPECT_FALSE(Draw(picture, 0, 0, 2, -2));
    EXPECT_EQ(picture.CountOther(kWhite), 0);
    server.SrvSetCP1(0, 0, 0, 0);
    server.SrvSetCP2(2, 0, 2, 0);
    EXPECT_TRUE(server.SrvCalcCorrect2());
    EXPECT_TRUE(Draw(picture, 0, 0, 2, -2));
    EXPECT_THAT(picture.Rows(), ElementsAre("rg", "by"));
}

TEST_F(RasterImageTest, ControlPointsGoWithTheirImageAndTheRotationStays) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    server.SrvSetCP1(0, 0, 100, 100);
    server.SrvRotate(180);
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    server.SrvSetCP2(2, 0, 102, 100);
    EXPECT_FALSE(server.SrvCalcCorrect2()) << "the first point was the other image's";
    Picture picture(2, 1);
    EXPECT_TRUE(Draw(picture, -2, 1, 0, 0));
    EXPECT_THAT(picture.Rows(), ElementsAre("gr"));
}

TEST_F(RasterImageTest, ARotationThatIsNoNumberIsRefusedAndTheOneBeforeStays) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    EXPECT_TRUE(server.SrvRotate(180));
    EXPECT_FALSE(server.SrvRotate(std::nan("")));
    EXPECT_FALSE(server.SrvRotate(std::numeric_limits<double>::infinity()));
    Picture picture(2, 1);
    EXPECT_TRUE(Draw(picture, -2, 1, 0, 0));
    EXPECT_THAT(picture.Rows(), ElementsAre("gr"));
}

TEST_F(RasterImageTest, AFileIsFoundByItsBytesOfCodePage932AndInAnyCase) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "orvane_raster_names";
    std::filesystem::create_directories(folder);
    const std::string name = "地図.TIF";
    {
        const std::string source = MakeLetters({"rgb"});
        std::ofstream(folder / name, std::ios::binary) << ContentOf(source);
    }
    EXPECT_TRUE(server.SrvLoad(*EncodeCp932((folder / name).string())));
    EXPECT_EQ(server.SrvImgWidth(), 3);
    EXPECT_TRUE(server.SrvLoad(*EncodeCp932((folder / "地図.tif").string())));
    EXPECT_TRUE(server.SrvLoad((folder / name).string())) << "as its bytes stand";
    server.SrvClose();
    std::filesystem::remove_all(folder);
}

// --- Memory -------------------------------------------------------------------------------------------------------------------

TEST_F(RasterImageTest, TheCacheIsBoundedTo256MiBUnlessASettingTellsAnotherSize) {
    GDALSetCacheMax64(std::int64_t{1} << 33);
    HoldCache();
    EXPECT_EQ(GDALGetCacheMax64(), 256 * 1024 * 1024);
    CPLSetConfigOption("GDAL_CACHEMAX", "77");
    GDALSetCacheMax64(77);
    HoldCache();
    EXPECT_EQ(GDALGetCacheMax64(), 77);
    CPLSetConfigOption("GDAL_CACHEMAX", nullptr);
    HoldCache();
    EXPECT_EQ(GDALGetCacheMax64(), 256 * 1024 * 1024);
}

TEST_F(RasterImageTest, PanningOverALargeImageNeverHoldsMoreThanTheCache) {
    // 12,000 x 12,000 of three bands are 432 MB of pixels; a file that never wrote its blocks takes no room.
    const std::string name =
        Make(12000, 12000, 3, GDT_Byte, nullptr, {"TILED=YES", "SPARSE_OK=TRUE", "BLOCKXSIZE=256", "BLOCKYSIZE=256"});
    constexpr std::int64_t kSmall = 4 * 1024 * 1024;
    GDALSetCacheMax64(kSmall);
    std::unique_ptr<RasterImage> image = RasterImage::Open(name);
    ASSERT_NE(image, nullptr);
    std::int64_t most = 0;
    for (int step = 0; step < 25; ++step) {
        Picture picture(400, 300);
        const double from = step * 450.0;
        ASSERT_TRUE(PaintImage(picture.dc, *image, {from, 2, 0, from, 0, 2}, {0, 0, 400, 300}));
        most = (std::max)(most, static_cast<std::int64_t>(GDALGetCacheUsed64()));
    }
    GDALSetCacheMax64(kReaderCache_bytes);
    EXPECT_GT(most, 0);
    EXPECT_LE(most, kSmall + 3 * 256 * 256) << "and the block at hand";
    image.reset();
    EXPECT_EQ(GDALGetCacheUsed64(), 0) << "what the image held is released";
}

}  // namespace
}  // namespace orvane
