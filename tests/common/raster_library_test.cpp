// The library of raster servers as hosts load it.
#include "hosts/common/raster_library.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// Sets the environment's word for the library as long as it lives.
struct LibraryNamed {
    explicit LibraryNamed(const std::string& name) { setenv("ORVANE_RASTER_SERVER", name.c_str(), 1); }
    ~LibraryNamed() { unsetenv("ORVANE_RASTER_SERVER"); }
};

/// A BMP file of one blue pixel, and a world file that lays it from (0, 0) to (1000, -1000).
std::string BluePixel() {
    const fs::path name = fs::path(testing::TempDir()) / "orvane_blue.bmp";
    const char bytes[] =
        "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x01\0\0\0\x01\0\0\0\x01\0\x18\0\0\0\0\0\x04\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
        "\0"
        "\xFF\0\0\0";
    std::ofstream(name, std::ios::binary).write(bytes, 0x3A);
    std::ofstream(fs::path(name).replace_extension(".bpw")) << "1000\n0\n0\n-1000\n500\n-500\n";
    return name.string();
}

TEST(RasterLibrary, StandsBesideTheProgramOrInTheLibFolderOfItsTree) {
    const std::vector<std::string> names = RasterLibraryNames();
    ASSERT_EQ(names.size(), 3u);
    EXPECT_TRUE(names[0].ends_with("/tests/liborvane_gdal_raster.so")) << names[0];
    EXPECT_TRUE(names[1].ends_with("/tests/../lib/liborvane_gdal_raster.so")) << names[1];
    EXPECT_TRUE(names[2].ends_with("/tests/../lib/orvane4/liborvane_gdal_raster.so")) << names[2];
    for (const std::string& name : names) EXPECT_TRUE(fs::path(name).is_absolute()) << "the program may go to another folder";
}

TEST(RasterLibrary, TheEnvironmentNamesAnotherFileAndNoOtherThen) {
    const LibraryNamed named("/no/such/library.so");
    EXPECT_EQ(RasterLibraryNames(), std::vector<std::string>{"/no/such/library.so"});
}

// Stands before the first load of this program: what was loaded stays loaded.
TEST(RasterLibrary, WithoutItTheMessageIsShownAndTheMapWorksOnAndALaterLoadFindsIt) {
    OffscreenMap map(100, 100);
    COrvane4Ctrl& ctrl = map.Control();
    ASSERT_TRUE(ctrl.rasters.RastInit(1, map.Form()));
    for (const std::string& name : {std::string("/no/such/library.so"), BluePixel()}) {
        const LibraryNamed named(name);  // nothing, and a file that is no library
        ctrl.rasters.SetMaker(RasterLibraryMaker());
        EXPECT_FALSE(ctrl.rasters.RastLoad(0, BluePixel(), map.Form()));
    }
    ASSERT_EQ(map.Form().messages.size(), 2u);
    EXPECT_TRUE(map.Form().messages[0].text.starts_with("OV4Raster.DLL ")) << map.Form().messages[0].text;
    ctrl.RDMReDraw();
    EXPECT_EQ(map.Image().pixel(50, 50), 0xFFFFFFFF);
    ctrl.rasters.SetMaker(RasterLibraryMaker());
    EXPECT_TRUE(ctrl.rasters.RastLoad(0, BluePixel(), map.Form()));
}

TEST(RasterLibrary, AnOffscreenMapPaintsAnImageThroughIt) {
    OffscreenMap map(100, 100);
    COrvane4Ctrl& ctrl = map.Control();
    ASSERT_TRUE(ctrl.rasters.RastInit(1, map.Form()));
    ASSERT_TRUE(ctrl.rasters.RastLoad(0, BluePixel(), map.Form()));
    std::int32_t width = 0;
    std::int32_t height = 0;
    EXPECT_TRUE(ctrl.rasters.RastImageSize(0, width, height));
    EXPECT_EQ(width, 1);
    EXPECT_EQ(height, 1);
    ctrl.store.view.Zoom = 3779 * 20;  // twenty map units a pixel
    ctrl.JumpTo(0, 0);
    EXPECT_EQ(map.Image().pixel(75, 75), 0xFF0000FF) << "fifty pixels to the right and down from the middle";
    EXPECT_EQ(map.Image().pixel(25, 25), 0xFFFFFFFF);
    ctrl.RDMTerm();
    EXPECT_EQ(ctrl.rasters.Count(), 0);
}

}  // namespace
}  // namespace orvane
