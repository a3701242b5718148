// What is no image, or no whole one, or far too much of one: an answer, and nothing else.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <iterator>
#include <random>

#include "platform/record/record_context.h"
#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

std::string Vrt(const std::string& width, const std::string& height, const std::string& bands) {
    return "<VRTDataset rasterXSize=\"" + width + "\" rasterYSize=\"" + height + "\"><GeoTransform>0,1,0,0,0,-1</GeoTransform>" +
           bands + "</VRTDataset>";
}

constexpr char kByteBand[] = "<VRTRasterBand dataType=\"Byte\" band=\"1\"/>";

TEST_F(RasterImageTest, AMissingFileIsFalse) {
    EXPECT_FALSE(server.SrvLoad("no/such/image.tif"));
    EXPECT_FALSE(server.SrvLoad(""));
    EXPECT_FALSE(server.SrvLoad(std::string_view("a\0b", 3)));
    EXPECT_FALSE(server.SrvLoad("\x83")) << "half a character";
}

TEST_F(RasterImageTest, WhatIsNoImageIsFalse) {
    EXPECT_FALSE(server.SrvLoad(File("")));
    EXPECT_FALSE(server.SrvLoad(File("nothing that is a picture\n")));
    EXPECT_FALSE(server.SrvLoad(std::filesystem::temp_directory_path().string()));
}

TEST_F(RasterImageTest, AVectorFileIsFalse) {
    EXPECT_FALSE(server.SrvLoad(File(R"({"type":"FeatureCollection","features":[]})")));
}

TEST_F(RasterImageTest, APipeIsNotWaitedFor) {
    const std::string pipe = testing::TempDir() + "/orvane_raster_pipe";
    std::filesystem::remove(pipe);
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(server.SrvLoad(pipe));
    std::filesystem::remove(pipe);
}

TEST_F(RasterImageTest, AnImageWithoutASideIsFalse) {
    EXPECT_FALSE(server.SrvLoad(File(Vrt("0", "5", kByteBand))));
    EXPECT_FALSE(server.SrvLoad(File(Vrt("5", "0", kByteBand))));
    EXPECT_FALSE(server.SrvLoad(File(Vrt("-5", "5", kByteBand))));
}

/// A TIFF of one band of bytes in tiles of 256 x 256, none of which is in the file.
std::string SparseTiff(std::uint32_t width, std::uint32_t height, std::uint32_t tiles) {
    std::string bytes("II*\0\10\0\0\0", 8);
    const auto add = [&](std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i) bytes.push_back(static_cast<char>(value >> 8 * i));
    };
    // Where its tiles lie, and how long they are, stands behind the file's end, or is nought.
    const std::uint32_t entries[][4] = {{256, 4, 1, width}, {257, 4, 1, height}, {258, 3, 1, 8},   {259, 3, 1, 1},
                                        {262, 3, 1, 1},     {277, 3, 1, 1},      {322, 4, 1, 256}, {323, 4, 1, 256},
                                        {324, 4, tiles, 0}, {325, 4, tiles, 0}};
    add(std::size(entries), 2);
    for (const auto& entry : entries) {
        add(entry[0], 2);
        add(entry[1], 2);
        add(entry[2], 4);
        add(entry[3], 4);
    }
    add(0, 4);
    return bytes;
}

TEST_F(RasterImageTest, ATiffThatTellsNoWidthOrNoHeightIsFalse) {
    ASSERT_TRUE(server.SrvLoad(File(SparseTiff(4, 3, 1)))) << "it is the size alone that is wrong";
    EXPECT_EQ(server.SrvImgWidth(), 4);
    EXPECT_EQ(server.SrvImgHeight(), 3);
    EXPECT_FALSE(server.SrvLoad(File(SparseTiff(0, 3, 1))));
    EXPECT_FALSE(server.SrvLoad(File(SparseTiff(4, 0, 1))));
    EXPECT_FALSE(server.SrvLoad(File(SparseTiff(0, 0, 0))));
    EXPECT_EQ(server.SrvImgWidth(), 0);
}

TEST_F(RasterImageTest, ATiffWithMoreSidesThanANumberHoldsIsFalse) {
    EXPECT_FALSE(server.SrvLoad(File(SparseTiff(0xFFFFFFFF, 0xFFFFFFFF, 1))));
    EXPECT_FALSE(server.SrvLoad(File(SparseTiff(0x80000000, 1, 1))));
}

TEST_F(RasterImageTest, ATiffOfTwoMillionPixelsASideIsOpenedAndOnlyAReadableViewOfItIsDrawn) {
    // Tiles so large that the table of them is small; none of them is in the file.
    const std::string name = Make(2000000, 2000000, 1, GDT_Byte, nullptr,
                                  {"TILED=YES", "SPARSE_OK=TRUE", "BIGTIFF=YES", "BLOCKXSIZE=4096", "BLOCKYSIZE=4096"});
    ASSERT_TRUE(server.SrvLoad(name));
    EXPECT_EQ(server.SrvImgWidth(), 2000000);
    EXPECT_EQ(server.SrvImgHeight(), 2000000);
    Picture picture(50, 50);
    EXPECT_FALSE(Draw(picture, 0, 0, 2000000, -2000000)) << "all of it would have to be read";
    EXPECT_THAT(LastRasterFailure(), testing::HasSubstr("no overviews"));
    EXPECT_TRUE(Draw(picture, 1999950, -1999950, 2000000, -2000000));
    EXPECT_EQ(picture.CountOther(kBlack), 0);
}

TEST_F(RasterImageTest, AnImageWithoutABandIsFalse) { EXPECT_FALSE(server.SrvLoad(File(Vrt("5", "5", "")))); }

TEST_F(RasterImageTest, ATruncatedImageIsFalseWhenItIsLoadedOrWhenItIsDrawn) {
    const std::string name = Make(300, 300, 3, GDT_Byte, [](GDALDataset& image) { image.GetRasterBand(2)->Fill(255); },
                                  {"TILED=YES", "BLOCKXSIZE=64", "BLOCKYSIZE=64"});
    const std::string whole = ContentOf(name);
    ASSERT_GT(whole.size(), 300u * 300 * 3);
    int refused = 0;
    for (std::size_t length = 0; length < whole.size(); length += 4999) {
        const std::string part = File(whole.substr(0, length));
        Picture picture(300, 300);
        if (!server.SrvLoad(part) || !Draw(picture, 0, 0, 300, -300)) ++refused;
    }
    EXPECT_EQ(refused, static_cast<int>((whole.size() + 4998) / 4999));
}

TEST_F(RasterImageTest, ATruncatedCompressedImageIsFalseOrShownInPart) {
    std::vector<std::uint8_t> values(200 * 200);
    std::mt19937 random(3);
    for (std::uint8_t& value : values) value = static_cast<std::uint8_t>(random());
    const std::string name = Make(200, 200, 1, GDT_Byte, [&](GDALDataset& image) { WriteBytes(image, 1, values); });
    const auto draw = [this] {
        server.SrvSetCP1(0, 0, 0, 0);
        server.SrvSetCP2(200, 200, 200, -200);
        Picture picture(200, 200);
        return server.SrvCalcCorrect2() && Draw(picture, 0, 0, 200, -200);
    };
    ASSERT_TRUE(server.SrvLoad(name));
    const pid_t reader = RasterReaderPid(RasterSources::LocalFiles);
    for (const char* format : {"PNG", "JPEG", "GIF"}) {
        const std::string whole = ContentOf(CopyOf(name, format, ""));
        ASSERT_GT(whole.size(), 1000u) << format;
        int refused = 0;
        for (std::size_t length = 0; length < whole.size(); length += whole.size() / 23) {
            if (!server.SrvLoad(File(whole.substr(0, length))) || !draw()) ++refused;
            ASSERT_EQ(RasterReaderPid(RasterSources::LocalFiles), reader) << format << ": it did not come through " << length;
        }
        EXPECT_GT(refused, 0) << format << ", nothing at all is no image";
        EXPECT_TRUE(server.SrvLoad(File(whole)) && draw()) << format << ", all of it";
        server.SrvClose();
    }
}

TEST_F(RasterImageTest, AnAbsurdlyLargeImageIsOpenedAndOnlyAReadableViewOfItIsDrawn) {
    const std::string name = File(Vrt("2147483647", "2147483647", kByteBand));
    ASSERT_TRUE(server.SrvLoad(name));
    EXPECT_EQ(server.SrvImgWidth(), 2147483647);
    Picture picture(50, 50);
    EXPECT_FALSE(Draw(picture, 0, 0, 2147483647, -2147483647.0)) << "all of it would have to be read";
    EXPECT_TRUE(Draw(picture, 2147483597, -2147483597.0, 2147483647, -2147483647.0));
    EXPECT_EQ(picture.CountOther(kBlack), 0);
}

TEST_F(RasterImageTest, AnAbsurdlyLargeImageWhoseRangeCannotBeFoundIsFalse) {
    EXPECT_FALSE(server.SrvLoad(File(Vrt(
        "2147483647", "2147483647", "<VRTRasterBand dataType=\"UInt16\" band=\"1\" blockXSize=\"4096\" blockYSize=\"4096\"/>"))));
}

TEST_F(RasterImageTest, AnImageInBlocksThatTheCacheCannotHoldIsFalse) {
    // A raw band comes in rows, and one row of it is as much.
    const std::string raw =
        "<VRTRasterBand dataType=\"Byte\" band=\"1\" subClass=\"VRTRawRasterBand\"><SourceFilename relativetoVRT=\"0\">" +
        File("x") + "</SourceFilename></VRTRasterBand>";
    EXPECT_FALSE(server.SrvLoad(File(Vrt("2000000000", "10", raw))));
}

TEST_F(RasterImageTest, OfARectangleOfAbsurdSizeOnlyWhatCanShowIsPainted) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    Picture picture(2, 2);
    constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    RasterPart part{0, 0, 2, -2, {kMin, kMin, kMax, kMax}, 0, 0};
    EXPECT_TRUE(server.SrvDraw(picture.dc, part, 1));
    EXPECT_EQ(picture.CountOther(kYellow), 0)
        << "the middle of the image, made larger two thousand million times, is its last pixel";
    part = {-1e9, 1e9, 1e9, -1e9, {-1000000000, -1000000000, 1000000000, 1000000000}, 0, 0};
    EXPECT_TRUE(server.SrvDraw(picture.dc, part, 1)) << "the image is four of them";
    EXPECT_EQ(picture.At(0, 0), kRed);
    EXPECT_EQ(picture.At(1, 1), kYellow);
}

TEST_F(RasterImageTest, OnATargetThatDoesNotTellWhatItShowsAnAbsurdRectangleIsFalse) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    RecordContext target(std::make_shared<VerbList>(), "target");
    EXPECT_FALSE(server.SrvDraw(target, {0, 0, 2, -2, {0, 0, 20000, 20000}, 0, 0}, 1)) << "four hundred million pixels";
    EXPECT_EQ(LastRasterFailure(), "too many pixels of the picture are asked for");
    EXPECT_TRUE(server.SrvDraw(target, {0, 0, 2, -2, {0, 0, 200, 200}, 0, 0}, 1));
}

/// A target that has no memory for pictures.
class PoorContext final : public RecordContext {
public:
    using RecordContext::RecordContext;
    std::unique_ptr<Bitmap> CreatePixelBitmap(std::int32_t, std::int32_t, const Rgb*) override { return nullptr; }
};

TEST_F(RasterImageTest, WithoutMemoryForAPictureADrawIsFalseAndTellsSo) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    PoorContext target(std::make_shared<VerbList>(), "target");
    EXPECT_FALSE(server.SrvDraw(target, {0, 0, 2, -2, {0, 0, 2, 2}, 0, 0}, 1));
    EXPECT_EQ(LastRasterFailure(), "there is no memory for its picture");
}

TEST_F(RasterImageTest, WhatTheTargetDoesNotShowOfAnImageIsNotRead) {
    // Of its tiles only the first row is in the file.
    const std::string name = Make(512, 512, 1, GDT_Byte, [](GDALDataset& image) { image.GetRasterBand(1)->Fill(255); },
                                  {"TILED=YES", "BLOCKXSIZE=128", "BLOCKYSIZE=128"});
    const std::string part = File(ContentOf(name).substr(0, 8 + 4 * 128 * 128 + 9000));
    ASSERT_TRUE(server.SrvLoad(part));
    Picture whole(512, 512);
    EXPECT_FALSE(Draw(whole, 0, 0, 512, -512));
    whole.Fill(kRed);
    whole.dc.SelectClipRgn({0, 0, 512, 128}, RgnMode::Copy);
    EXPECT_TRUE(Draw(whole, 0, 0, 512, -512)) << "beyond the clip";
    EXPECT_EQ(whole.CountOther(kRed), 512 * 128);
    Picture low(512, 128);
    low.Fill(kRed);
    EXPECT_TRUE(server.SrvDraw(low.dc, {0, 0, 512, -512, {0, 0, 512, 512}, 0, 0}, 1)) << "beyond the bitmap";
    EXPECT_EQ(low.CountOther(kWhite), 0);
    whole.dc.SelectClipRgn({0, 0, 0, 0}, RgnMode::Copy);
    EXPECT_TRUE(Draw(whole, 0, 0, 512, -512)) << "nothing can show";
}

// --- What a draw may cost -----------------------------------------------------------------------------------------------------

TEST_F(RasterImageTest, BandsThatStandInTheSameBlocksCountInFullAndOthersOnlyWhereTheyAreShown) {
    const std::vector<std::string> tiles = {"TILED=YES", "BLOCKXSIZE=512", "BLOCKYSIZE=512", "SPARSE_OK=TRUE",
                                            "PHOTOMETRIC=MINISBLACK"};
    for (const char* interleave : {"PIXEL", "BAND"}) {
        std::vector<std::string> options = tiles;
        options.push_back(std::string("INTERLEAVE=") + interleave);
        // All of it in 40 bands are 1.25 GiB, three bands 96 MiB.
        ASSERT_TRUE(server.SrvLoad(Make(5792, 5792, 40, GDT_Byte, nullptr, options)));
        Picture picture(100, 100);
        EXPECT_EQ(Draw(picture, 0, 0, 5792, -5792), std::string(interleave) == "BAND") << interleave;
        EXPECT_TRUE(Draw(picture, 0, 0, 100, -100)) << interleave;
    }
}

TEST_F(RasterImageTest, ABandOfOpacityCountsAsWell) {
    const std::vector<std::string> options = {"TILED=YES",      "BLOCKXSIZE=512",  "BLOCKYSIZE=512",
                                              "SPARSE_OK=TRUE", "INTERLEAVE=BAND", "PHOTOMETRIC=RGB"};
    // A band is 275.6 MiB.
    ASSERT_TRUE(server.SrvLoad(Make(17000, 17000, 3, GDT_Byte, nullptr, options)));
    Picture picture(20, 20);
    EXPECT_TRUE(Draw(picture, 0, 0, 17000, -17000));
    std::vector<std::string> opacity = options;
    opacity.push_back("ALPHA=YES");
    ASSERT_TRUE(server.SrvLoad(Make(17000, 17000, 4, GDT_Byte, nullptr, opacity)));
    EXPECT_FALSE(Draw(picture, 0, 0, 17000, -17000));
    EXPECT_TRUE(Draw(picture, 0, 0, 8000, -8000));
}

TEST_F(RasterImageTest, ValuesOfSeveralBytesCountByTheirBytes) {
    const std::vector<std::string> options = {"TILED=YES", "BLOCKXSIZE=512", "BLOCKYSIZE=512", "SPARSE_OK=TRUE"};
    // 13000 squared are 161 MiB a byte.
    Picture picture(20, 20);
    ASSERT_TRUE(server.SrvLoad(Make(13000, 13000, 1, GDT_Float32, nullptr, options)));
    EXPECT_TRUE(Draw(picture, 0, 0, 13000, -13000));
    ASSERT_TRUE(server.SrvLoad(Make(13000, 13000, 1, GDT_Float64, nullptr, options)));
    EXPECT_FALSE(Draw(picture, 0, 0, 13000, -13000));
}

TEST_F(RasterImageTest, TheRangeIsFoundOnACoarserGridWhereTheBlocksAreManyAndRefusedWhereTheyAreTooLargeForAll) {
    const std::vector<std::string> tiles = {"TILED=YES", "BLOCKXSIZE=256", "BLOCKYSIZE=256", "SPARSE_OK=TRUE", "PHOTOMETRIC=RGB"};
    EXPECT_TRUE(server.SrvLoad(Make(20000, 20000, 3, GDT_UInt16, nullptr, tiles))) << "64 by 64 blocks are 1.5 GiB";
    // A block of one band is 15 MiB, and there are 8 by 8.
    const std::vector<std::string> large = {"TILED=YES",      "BLOCKXSIZE=2800", "BLOCKYSIZE=2800",
                                            "SPARSE_OK=TRUE", "INTERLEAVE=BAND", "PHOTOMETRIC=MINISBLACK"};
    EXPECT_TRUE(server.SrvLoad(Make(22400, 22400, 1, GDT_UInt16, nullptr, large)));
    EXPECT_FALSE(server.SrvLoad(Make(22400, 22400, 3, GDT_UInt16, nullptr, large))) << "the sum over its bands is too much";
}

TEST_F(RasterImageTest, NumbersThatAreNoneAreFalse) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg", "by"})));
    Picture picture(2, 2);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double bad : {nan, infinite, -infinite}) {
        EXPECT_FALSE(Draw(picture, bad, 0, 2, -2));
        EXPECT_FALSE(Draw(picture, 0, 0, 2, bad));
        RasterPart part = PartOf(picture, 0, 0, 2, -2);
        part.PendY = bad;
        EXPECT_FALSE(server.SrvDraw(picture.dc, part, 1));
    }
    EXPECT_TRUE(server.SrvDraw(picture.dc, {0, 0, 0, 0, {1, 1, 1, 1}, 0, 0}, 1)) << "no pixel is asked for";
    EXPECT_EQ(picture.CountOther(kWhite), 0);
}

TEST_F(RasterImageTest, AGeoreferenceThatFlattensTheImageIsNone) {
    for (const char* place : {"0,0,0,0,0,0", "0,1,2,0,2,4", "0,nan,0,0,0,-1", "0,1e300,0,0,0,-1e300"}) {
        const std::string name = File("<VRTDataset rasterXSize=\"2\" rasterYSize=\"2\"><GeoTransform>" + std::string(place) +
                                      "</GeoTransform>" + kByteBand + "</VRTDataset>");
        ASSERT_TRUE(server.SrvLoad(name)) << place;
        Picture picture(2, 2);
        EXPECT_FALSE(Draw(picture, 0, 0, 2, -2)) << place;
    }
}

// Bytes changed at random in a small file: whatever GDAL makes of them, there is an answer.
TEST_F(RasterImageTest, AnImageWithBytesChangedAtRandomIsAnsweredInOneWayOrTheOther) {
    const std::string name = MakeLetters({"rgby", "ybgr"});
    const std::string whole = ContentOf(name);
    std::mt19937 random(11);
    ASSERT_TRUE(server.SrvLoad(name));
    const pid_t reader = RasterReaderPid(RasterSources::LocalFiles);
    for (int round = 0; round < 400; ++round) {
        std::string bytes = whole;
        for (int i = 0; i < 1 + round % 5; ++i) bytes[random() % bytes.size()] = static_cast<char>(random());
        const std::string changed = File(bytes);
        if (server.SrvLoad(changed)) {
            Picture picture(8, 4);
            Draw(picture, 0, 0, 4, -2);
        }
        server.SrvClose();
        ASSERT_EQ(RasterReaderPid(RasterSources::LocalFiles), reader) << "it did not come through round " << round;
        std::filesystem::remove(changed);
    }
}

}  // namespace
}  // namespace orvane
