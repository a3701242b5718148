// The library of raster servers as hosts load it.
#include "hosts/common/raster_library.h"

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <thread>
#include <vector>

#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// Sets the environment's word for the library as long as it lives.
struct LibraryNamed {
    explicit LibraryNamed(const std::string& name) { setenv("ORVANE_RASTER_SERVER", name.c_str(), 1); }
    ~LibraryNamed() { unsetenv("ORVANE_RASTER_SERVER"); }
};

/// The same for the program that the library starts.
struct ReaderNamed {
    explicit ReaderNamed(const std::string& name) { setenv("ORVANE_RASTER_READER", name.c_str(), 1); }
    ~ReaderNamed() { unsetenv("ORVANE_RASTER_READER"); }
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

TEST(RasterLibrary, ANameFromTheFolderAtHandHoldsWhenTheProgramGoesToAnotherOne) {
    const LibraryNamed named("./library.so");
    EXPECT_EQ(RasterLibraryNames(), std::vector<std::string>{(fs::current_path() / "./library.so").string()});
    const LibraryNamed bare("library.so");
    EXPECT_EQ(RasterLibraryNames(), std::vector<std::string>{"library.so"}) << "the system looks for it";
}

/// Loads it by a name from the folder at hand, and once more from another folder.
[[noreturn]] void LoadFromTwoFolders() {
    fs::current_path(fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "lib");
    setenv("ORVANE_RASTER_SERVER", "./liborvane_gdal_raster.so", 1);
    const RasterServerMaker make = RasterLibraryMaker();
    const bool first = make() != nullptr;
    fs::current_path("/");
    const bool second = make() != nullptr;
    std::exit(first && second ? 0 : 1);
}

TEST(RasterLibrary, ItsReaderIsFoundFromAnotherFolderToo) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(LoadFromTwoFolders(), testing::ExitedWithCode(0), "");
}

TEST(RasterLibrary, IsFoundByAProgramThatIsCalledByALinkOrByAnyName) {
    const fs::path folder = fs::path(testing::TempDir()) / ("orvane_link_" + std::to_string(getpid()));
    fs::create_directories(folder);
    fs::create_symlink(fs::read_symlink("/proc/self/exe"), folder / "test");
    const std::string rest = " --gtest_filter=RasterLibrary.StandsBesideTheProgram* > /dev/null";
    const std::string quoted = "\"" + folder.string() + "\"";
    EXPECT_EQ(std::system((quoted + "/test" + rest).c_str()), 0);
    EXPECT_EQ(std::system(("cd " + quoted + " && ./test" + rest).c_str()), 0);
    EXPECT_EQ(std::system(("bash -c 'exec -a no/such/name " + quoted + "/test" + rest + "'").c_str()), 0);
    fs::remove_all(folder);
}

bool IsMapped(const std::string& file) {
    std::ifstream maps("/proc/self/maps");
    const std::string all((std::istreambuf_iterator<char>(maps)), {});
    return all.find(file) != std::string::npos;
}

// These stand before the first load of this program that gives a server: that library stays loaded.
TEST(RasterLibrary, OneThatDoesNotFitIsLetGo) {
    const std::string name = fs::path(testing::TempDir()) / ("orvane_misfit_" + std::to_string(getpid()) + ".so");
    fs::copy_file(ORVANE_MISFIT_RASTER_FILE, name, fs::copy_options::overwrite_existing);
    const LibraryNamed named(name);
    EXPECT_EQ(RasterLibraryMaker()(), nullptr);
    EXPECT_FALSE(IsMapped(name)) << "another one in its place would not be looked at";
    EXPECT_EQ(RasterLibraryLack(), "the library " + name + " was built for another version");
    fs::remove(name);
}

TEST(RasterLibrary, OneWithoutTheProgramThatReadsImagesIsLetGoToo) {
    const ReaderNamed named("/no/such/program");
    EXPECT_EQ(RasterLibraryMaker()(), nullptr);
    EXPECT_FALSE(IsMapped("liborvane_gdal_raster.so"));
    EXPECT_TRUE(RasterLibraryLack().starts_with("the library /")) << RasterLibraryLack();
    EXPECT_TRUE(RasterLibraryLack().ends_with(
        "/liborvane_gdal_raster.so needs the program /no/such/program, which is not there or cannot be run"))
        << RasterLibraryLack();
}

TEST(RasterLibrary, OneThatIsNotThereOrIsNoLibraryIsToldByItsName) {
    {
        const LibraryNamed named("/no/such/library.so");
        EXPECT_EQ(RasterLibraryMaker()(), nullptr);
    }
    EXPECT_EQ(RasterLibraryLack(), "they need a library that is not there; it was looked for at /no/such/library.so");
    const std::string picture = BluePixel();
    const LibraryNamed named(picture);
    EXPECT_EQ(RasterLibraryMaker()(), nullptr);
    EXPECT_TRUE(RasterLibraryLack().starts_with("the library " + picture + " cannot be loaded: ")) << RasterLibraryLack();
}

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

TEST(RasterLibrary, TellsWhyALoadFailed) {
    const std::unique_ptr<RasterServer> server = RasterLibraryMaker()();
    ASSERT_NE(server, nullptr);
    EXPECT_TRUE(server->SrvInit() && server->SrvLoad(BluePixel())) << RasterLibraryFailure();
    EXPECT_FALSE(server->SrvLoad("/no/such/image.tif"));
    EXPECT_EQ(RasterLibraryFailure(), "there is no such file or folder");
}

TEST(RasterLibrary, AProgramThatGoesMissingLaterIsToldToo) {
    ASSERT_NE(RasterLibraryMaker()(), nullptr);
    const ReaderNamed named("/no/such/program");
    EXPECT_EQ(RasterLibraryMaker()(), nullptr);
    EXPECT_TRUE(RasterLibraryLack().ends_with(" needs the program /no/such/program, which is not there or cannot be run"))
        << RasterLibraryLack();
}

TEST(RasterLibrary, SeveralThreadsLoadItAtOnce) {
    std::vector<std::thread> threads;
    std::atomic<int> good{0};
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) good += RasterLibraryMaker()() != nullptr ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(good, 160);
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

/// A BMP file of 256 x 256 pixels in colours without order, and a world file that lays it from (0, 0) to (256, -256).
std::string NoisePicture() {
    constexpr unsigned kSide = 256;
    const fs::path name = fs::path(testing::TempDir()) / ("orvane_noise_" + std::to_string(getpid()) + ".bmp");
    const unsigned char head[54] = {'B', 'M', 0x36, 0, 3, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40,
                                    0,   0,   0,    0, 1, 0, 0, 0, 1, 0, 0,  1, 0, 24};
    std::string bytes(reinterpret_cast<const char*>(head), sizeof head);
    for (unsigned i = 0; i < kSide * kSide * 3; ++i) bytes.push_back(static_cast<char>((i + 1) * 2654435761u >> 13));
    std::ofstream(name, std::ios::binary) << bytes;
    std::ofstream(fs::path(name).replace_extension(".bpw")) << "1\n0\n0\n-1\n0.5\n-0.5\n";
    return name.string();
}

/// However the view is scrolled, and by whatever fractions of a pixel, what stands there is what a frame drawn anew shows.
void ExpectScrollsToShowTheFrameDrawnAnew(const std::string& name, double x, double y, double angle, double zoom) {
    OffscreenMap map(150, 100);
    COrvane4Ctrl& ctrl = map.Control();
    ctrl.SetAreaLeft(-1e9);
    ctrl.SetAreaRight(1e9);
    ctrl.SetAreaTop(-1e9);
    ctrl.SetAreaBottom(1e9);
    ctrl.store.view.Zoom = static_cast<std::int32_t>(3779 * zoom);
    ASSERT_TRUE(ctrl.rasters.RastInit(1, map.Form()));
    ASSERT_TRUE(ctrl.rasters.RastLoad(0, name, map.Form()));
    ctrl.SetRotate(angle);
    ctrl.JumpTo(x, y);
    for (int i = 0; i < 12; ++i) {
        ASSERT_NE(map.Image().pixel(75, 50), 0xFFFFFFFF);
        ctrl.MoveView((i * 37 % 23 - 11) * 1.37, (i * 29 % 19 - 9) * 1.73, true);
        const QImage scrolled = map.Image().copy();
        ctrl.RDMReDraw();
        EXPECT_EQ(scrolled, map.Image()) << angle << ' ' << zoom << ' ' << i;
    }
}

TEST(RasterLibrary, AScrolledPictureIsTheOneDrawnAnew) {
    const std::string name = NoisePicture();
    for (const double angle : {0.0, 17.0, 30.0}) {
        for (const double zoom : {0.4, 1.0, 1.3, 2.3, 4.7}) ExpectScrollsToShowTheFrameDrawnAnew(name, 128, -128, angle, zoom);
    }
    fs::remove(name);
    fs::remove(fs::path(name).replace_extension(".bpw"));
}

/// A TIFF of three bands in colours without order, with overviews of which its size is no multiple, from (-5000.3, 700.7) on.
std::string NoiseWithOverviews() {
    GDALAllRegister();
    constexpr int kWidth = 1003;
    constexpr int kHeight = 751;
    const std::string name = fs::path(testing::TempDir()) / ("orvane_noise_" + std::to_string(getpid()) + ".tif");
    GDALDataset* const image =
        GetGDALDriverManager()->GetDriverByName("GTiff")->Create(name.c_str(), kWidth, kHeight, 3, GDT_Byte, nullptr);
    double place[] = {-5000.3, 1, 0, 700.7, 0, -1};
    image->SetGeoTransform(place);
    std::vector<std::uint8_t> values(std::size_t{kWidth} * kHeight * 3);
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<std::uint8_t>((i + 1) * 2654435761u >> 13);
    int levels[] = {2, 4};
    EXPECT_EQ(
        image->RasterIO(GF_Write, 0, 0, kWidth, kHeight, values.data(), kWidth, kHeight, GDT_Byte, 3, nullptr, 0, 0, 0, nullptr),
        CE_None);
    EXPECT_EQ(image->BuildOverviews("AVERAGE", 2, levels, 0, nullptr, nullptr, nullptr), CE_None);
    GDALClose(image);
    return name;
}

TEST(RasterLibrary, AScrolledPictureOutOfOverviewsIsTheOneDrawnAnew) {
    const std::string name = NoiseWithOverviews();
    for (const double angle : {0.0, 17.0}) {
        for (const double zoom : {2.3, 3.3, 4.7})
            ExpectScrollsToShowTheFrameDrawnAnew(name, -5000.3 + 501, 700.7 - 375, angle, zoom);
    }
    fs::remove(name);
}

}  // namespace
}  // namespace orvane
