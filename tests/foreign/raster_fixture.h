// Images made on the fly in a folder of the test's own, and what a server paints of them on a small picture.
#pragma once

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "foreign/raster/gdal_raster_server.h"
#include "tests/qt/picture.h"

namespace orvane {

/// Lets images come from wherever GDAL knows, as long as it lives.
struct AnySources {
    AnySources() { setenv("ORVANE_RASTER_SOURCES", "any", 1); }
    ~AnySources() { unsetenv("ORVANE_RASTER_SOURCES"); }
};

class RasterImageTest : public testing::Test {
protected:
    RasterImageTest() {
        setenv("ORVANE_RASTER_READER", ORVANE_RASTER_READER_FILE, 0);
        GDALAllRegister();
        CPLPushErrorHandler(CPLQuietErrorHandler);
        EXPECT_TRUE(server.SrvInit());
        std::filesystem::create_directories(folder_);
    }
    ~RasterImageTest() override {
        server.SrvClose();
        std::filesystem::remove_all(folder_);
        CPLPopErrorHandler();
    }

    using Look = std::function<void(GDALDataset&)>;

    /// The name of a new image without pixels, north up, its left top corner at (0, 0) of the map and a pixel one map unit wide;
    /// `look` changes it before it is closed.
    std::string Make(int width, int height, int bands, GDALDataType type, const Look& look,
                     const std::vector<std::string>& options = {}, const char* driver = "GTiff") {
        const std::string name = NewName(".tif");
        CPLStringList list;
        for (const std::string& option : options) list.AddString(option.c_str());
        auto* const format = GetGDALDriverManager()->GetDriverByName(driver);
        GDALDataset* const image = format->Create(name.c_str(), width, height, bands, type, list.List());
        EXPECT_NE(image, nullptr);
        if (image == nullptr) return name;
        double place[] = {0, 1, 0, 0, 0, -1};
        image->SetGeoTransform(place);
        if (look) look(*image);
        GDALClose(image);
        return name;
    }
    /// Writes one band row by row.
    template <class T>
    static void Write(GDALDataset& image, int band, std::vector<T> values, GDALDataType type) {
        EXPECT_EQ(
            image.GetRasterBand(band)->RasterIO(GF_Write, 0, 0, image.GetRasterXSize(), image.GetRasterYSize(), values.data(),
                                                image.GetRasterXSize(), image.GetRasterYSize(), type, 0, 0, nullptr),
            CE_None);
    }
    static void WriteBytes(GDALDataset& image, int band, const std::vector<std::uint8_t>& values) {
        Write(image, band, values, GDT_Byte);
    }
    /// An image in colours by the letters of Picture: '.', '#', 'r', 'g', 'b', 'y'.
    std::string MakeLetters(const std::vector<std::string>& rows, const Look& look = nullptr,
                            const std::vector<std::string>& options = {}) {
        return Make(
            static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), 3, GDT_Byte,
            [&](GDALDataset& image) {
                WriteLetters(image, rows);
                if (look) look(image);
            },
            options);
    }
    /// "rgb" with a mask that leaves out the middle one: in the image, or in a file beside it.
    std::string MakeMasked(const char* internal) {
        CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", internal);
        const std::string name = MakeLetters({"rgb"}, [](GDALDataset& image) {
            ASSERT_EQ(image.CreateMaskBand(GMF_PER_DATASET), CE_None);
            std::vector<std::uint8_t> mask{255, 0, 255};
            ASSERT_EQ(
                image.GetRasterBand(1)->GetMaskBand()->RasterIO(GF_Write, 0, 0, 3, 1, mask.data(), 3, 1, GDT_Byte, 0, 0, nullptr),
                CE_None);
        });
        CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
        return name;
    }
    /// Overviews of an image by their means, in a file beside it, as they are made for what may not be changed.
    static void AddOverviewsBeside(const std::string& name, std::vector<int> levels, const char* method = "AVERAGE") {
        GDALDataset* const image = GDALDataset::Open(name.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY);
        ASSERT_NE(image, nullptr) << name;
        EXPECT_EQ(image->BuildOverviews(method, static_cast<int>(levels.size()), levels.data(), 0, nullptr, nullptr, nullptr),
                  CE_None);
        GDALClose(image);
    }
    /// The name of a copy in another format.
    std::string CopyOf(const std::string& name, const char* driver, const char* ending,
                       const std::vector<std::string>& options = {}) {
        const std::string copy = NewName(ending);
        CPLStringList list;
        for (const std::string& option : options) list.AddString(option.c_str());
        auto* const format = GetGDALDriverManager()->GetDriverByName(driver);
        GDALDataset* const source = GDALDataset::Open(name.c_str());
        EXPECT_TRUE(format != nullptr && source != nullptr) << driver << ' ' << name;
        if (format == nullptr || source == nullptr) return copy;
        GDALDataset* const made = format->CreateCopy(copy.c_str(), source, FALSE, list.List(), nullptr, nullptr);
        EXPECT_NE(made, nullptr) << driver;
        GDALClose(made);
        GDALClose(source);
        return copy;
    }
    static void WriteLetters(GDALDataset& image, const std::vector<std::string>& rows) {
        std::vector<std::uint8_t> red, green, blue;
        for (const std::string& row : rows) {
            for (const char c : row) {
                red.push_back(c == '.' || c == 'r' || c == 'y' ? 255 : 0);
                green.push_back(c == '.' || c == 'g' || c == 'y' ? 255 : 0);
                blue.push_back(c == '.' || c == 'b' ? 255 : 0);
            }
        }
        WriteBytes(image, 1, red);
        WriteBytes(image, 2, green);
        WriteBytes(image, 3, blue);
    }
    /// The name of a new file of some bytes.
    std::string File(const std::string& content) { return Written(NewName(".bin"), content); }
    /// The same under a name that is told.
    static std::string Written(const std::string& name, const std::string& content) {
        EXPECT_TRUE(std::ofstream(name, std::ios::binary) << content) << name;
        return name;
    }
    static std::string ContentOf(const std::string& name) {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    /// A name in the test's folder that nothing else has.
    std::string NewName(const std::string& ending) { return (folder_ / ("raster" + std::to_string(made_++) + ending)).string(); }

    /// The whole picture shows the map rectangle from (x1, y1) at the left top to (x2, y2) at the right bottom.
    static RasterPart PartOf(const Picture& picture, double x1, double y1, double x2, double y2) {
        RasterPart part;
        part.X1 = x1;
        part.Y1 = y1;
        part.X2 = x2;
        part.Y2 = y2;
        part.pixels = {0, 0, picture.dc.Image().width(), picture.dc.Image().height()};
        return part;
    }
    bool Draw(Picture& picture, double x1, double y1, double x2, double y2) {
        return server.SrvDraw(picture.dc, PartOf(picture, x1, y1, x2, y2), 1);
    }
    /// Loads an image and shows all of it, a pixel for a pixel, on white.
    std::vector<std::string> RowsOf(const std::string& name) {
        EXPECT_TRUE(server.SrvLoad(name)) << name;
        Picture picture(server.SrvImgWidth(), server.SrvImgHeight());
        EXPECT_TRUE(Draw(picture, 0, 0, server.SrvImgWidth(), -server.SrvImgHeight()));
        return picture.Rows();
    }
    /// The same, the colour of one pixel.
    Rgb ColorAt(const std::string& name, int x, int y) {
        EXPECT_TRUE(server.SrvLoad(name)) << name;
        Picture picture(server.SrvImgWidth(), server.SrvImgHeight());
        EXPECT_TRUE(Draw(picture, 0, 0, server.SrvImgWidth(), -server.SrvImgHeight()));
        return picture.At(x, y);
    }

    GdalRasterServer server;

private:
    std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) / ("orvane_raster_test_" + std::to_string(getpid()));
    int made_ = 0;
};

}  // namespace orvane
