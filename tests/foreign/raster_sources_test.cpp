// Where the pixels of an image may come from: plain files of formats that keep them to themselves.
#include <cpl_vsi.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;

/// Ends the program when something waits for what never comes.
struct Deadline {
    explicit Deadline(unsigned seconds) { alarm(seconds); }
    ~Deadline() { alarm(0); }
};

void MakePipe(const std::string& name) {
    std::filesystem::remove(name);
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0) << name;
}

/// A composition that shows another image.
std::string VrtOf(const std::string& source, int width, int height, const std::string& more = "") {
    const std::string size = "xSize=\"" + std::to_string(width) + "\" ySize=\"" + std::to_string(height) + "\"";
    std::string text = "<VRTDataset rasterXSize=\"" + std::to_string(width) + "\" rasterYSize=\"" + std::to_string(height) +
                       "\"><GeoTransform>0,1,0,0,0,-1</GeoTransform>" + more;
    for (const char* band : {"1", "2", "3"}) {
        text += std::string("<VRTRasterBand dataType=\"Byte\" band=\"") + band +
                "\"><SimpleSource><SourceFilename relativeToVRT=\"0\">" + source + "</SourceFilename><SourceBand>" + band +
                "</SourceBand><SrcRect xOff=\"0\" yOff=\"0\" " + size + "/><DstRect xOff=\"0\" yOff=\"0\" " + size +
                "/></SimpleSource></VRTRasterBand>";
    }
    return text + "</VRTDataset>";
}

std::string OverviewFile(const std::string& name) {
    return "<PAMDataset><Metadata domain=\"OVERVIEWS\"><MDI key=\"OVERVIEW_FILE\">" + name + "</MDI></Metadata></PAMDataset>";
}

class RasterSourcesTest : public RasterImageTest {
protected:
    /// A square in one colour of 'r', 'g', 'b'.
    std::string Square(char color, int side) {
        return Make(side, side, 3, GDT_Byte, [&](GDALDataset& image) {
            image.GetRasterBand(color == 'r' ? 1 : color == 'g' ? 2 : 3)->Fill(255);
        });
    }
    /// What one pixel shows of an image of 400 units when it is made smaller by 8.
    Rgb SmallColor(const std::string& name) {
        EXPECT_TRUE(server.SrvLoad(name)) << name;
        Picture picture(50, 50);
        EXPECT_TRUE(Draw(picture, 0, 0, 400, -400)) << name;
        return picture.At(25, 25);
    }
    /// Overviews in a file of their own beside the image, in another colour than the image.
    void AddGreenOverviews(const std::string& name) {
        GDALDataset* const image = GDALDataset::Open(name.c_str());
        int levels[] = {2, 4, 8};
        ASSERT_EQ(image->BuildOverviews("NEAREST", 3, levels, 0, nullptr, nullptr, nullptr), CE_None);
        GDALClose(image);
        GDALDataset* const overviews = GDALDataset::Open((name + ".ovr").c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE);
        ASSERT_NE(overviews, nullptr);
        for (int band = 1; band <= 3; ++band) {
            overviews->GetRasterBand(band)->Fill(band == 2 ? 255 : 0);
            for (int i = 0; i < 2; ++i) overviews->GetRasterBand(band)->GetOverview(i)->Fill(band == 2 ? 255 : 0);
        }
        GDALClose(overviews);
    }
};

// --- Names --------------------------------------------------------------------------------------------------------------------

TEST_F(RasterSourcesTest, WhatIsNoFileOrFolderOfTheDiskIsNotOpenedUnlessAnySourceWillDo) {
    const std::string name = MakeLetters({"rg"});
    const std::string content = ContentOf(name);
    std::vector<GByte> bytes(content.begin(), content.end());
    VSIFCloseL(VSIFileFromMemBuffer("/vsimem/raster_sources.tif", bytes.data(), bytes.size(), FALSE));
    unsigned char pixels[] = {1, 2, 3, 4};
    char pointer[100];
    std::snprintf(pointer, sizeof pointer, "MEM:::DATAPOINTER=%p,PIXELS=2,LINES=2", static_cast<void*>(pixels));
    const std::vector<std::string> others = {"/vsimem/raster_sources.tif", pointer, "GTIFF_DIR:1:" + name, VrtOf(name, 2, 1),
                                             "/vsisubfile/0," + name};
    for (const std::string& other : others) EXPECT_FALSE(server.SrvLoad(other)) << other;
    const AnySources any;
    for (const std::string& other : others) EXPECT_TRUE(server.SrvLoad(other)) << other;
    server.SrvClose();
    VSIUnlink("/vsimem/raster_sources.tif");
}

TEST_F(RasterSourcesTest, StandardInputDevicesAndTheNetworkAreNotWaitedFor) {
    const Deadline deadline(20);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const int input = dup(0);
    dup2(ends[0], 0);
    // The last address answers nobody.
    for (const char* name : {"/vsistdin/", "/dev/stdin", "/dev/zero", "/dev/null", "/vsigzip//dev/zero",
                             "/vsicurl/http://192.0.2.1/a.tif", "http://192.0.2.1/a.tif", "WMS:http://192.0.2.1/"}) {
        EXPECT_FALSE(server.SrvLoad(name)) << name;
    }
    dup2(input, 0);
    for (const int end : {input, ends[0], ends[1]}) close(end);
}

TEST_F(RasterSourcesTest, AFileWhoseNameReadsLikeAnotherSourceIsThatFile) {
    const std::string content = ContentOf(MakeLetters({"rg"}));
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::path(NewName("")).parent_path());
    for (const char* name : {"MEM:::DATAPOINTER=1,PIXELS=9,LINES=9", "<VRTDataset>", "GTIFF_DIR:1:a.tif", "vsistdin"}) {
        Written(name, content);
        EXPECT_TRUE(server.SrvLoad(name)) << name;
        EXPECT_EQ(server.SrvImgWidth(), 2) << name;
    }
    std::filesystem::current_path(before);
}

// --- Formats ------------------------------------------------------------------------------------------------------------------

TEST_F(RasterSourcesTest, ACompositionOfOtherImagesIsRefusedByWhateverNameUnlessAnySourceWillDo) {
    const std::string composition = VrtOf(Square('r', 4), 4, 4);
    for (const char* ending : {".vrt", ".tif"}) {
        const std::string name = Written(NewName(ending), composition);
        EXPECT_FALSE(server.SrvLoad(name));
        const AnySources any;
        EXPECT_TRUE(server.SrvLoad(name));
        EXPECT_EQ(ColorAt(name, 1, 1), kRed);
    }
}

TEST_F(RasterSourcesTest, AHeaderThatNamesTheFileOfItsPixelsIsRefusedUnlessAnySourceWillDo) {
    const std::string pixels = std::filesystem::path(File(std::string(16, '\x55'))).filename().string();
    const std::string name = Written(
        NewName(".ers"),
        "DatasetHeader Begin\n\tDataSetType\t= ERStorage\n\tDataType\t= Raster\n\tByteOrder\t= LSBFirst\n\tDataFile = \"" +
            pixels +
            "\"\n\tRasterInfo Begin\n\t\tCellType\t= Unsigned8BitInteger\n\t\tNrOfLines\t= 4\n\t\tNrOfCellsPerLine\t= 4\n"
            "\t\tNrOfBands\t= 1\n\tRasterInfo End\nDatasetHeader End\n");
    EXPECT_FALSE(server.SrvLoad(name));
    const AnySources any;
    EXPECT_TRUE(server.SrvLoad(name));
}

TEST_F(RasterSourcesTest, UsualFormatsAreReadWithTheirOverviewsAndFilesBesideThem) {
    const std::string source = Square('r', 64);
    struct Case {
        const char* driver;
        const char* ending;
        std::vector<std::string> options;
    };
    for (const Case& c :
         {Case{"PNG", ".png", {}}, Case{"BMP", ".bmp", {}}, Case{"HFA", ".img", {}}, Case{"HFA", ".img", {"USE_SPILL=YES"}},
          Case{"ENVI", ".dat", {}}, Case{"PNM", ".ppm", {}}, Case{"GPKG", ".gpkg", {}},
          Case{"GTiff", ".tif", {"COMPRESS=DEFLATE"}}, Case{"JP2OpenJPEG", ".jp2", {"QUALITY=100", "REVERSIBLE=YES"}},
          Case{"WEBP", ".webp", {"LOSSLESS=TRUE"}}, Case{"SGI", ".rgb", {}}}) {
        auto* const driver = GetGDALDriverManager()->GetDriverByName(c.driver);
        if (driver == nullptr) continue;  // not every GDAL has all of them
        const std::string name = NewName(c.ending);
        CPLStringList options;
        for (const std::string& option : c.options) options.AddString(option.c_str());
        GDALDataset* const from = GDALDataset::Open(source.c_str());
        GDALClose(driver->CreateCopy(name.c_str(), from, FALSE, options.List(), nullptr, nullptr));
        GDALClose(from);
        ASSERT_TRUE(server.SrvLoad(name)) << c.driver;
        EXPECT_TRUE(server.SrvSetCP1(0, 0, 0, 0) && server.SrvSetCP2(64, 64, 64, -64) && server.SrvCalcCorrect2());
        Picture picture(32, 32);
        EXPECT_TRUE(Draw(picture, 0, 0, 64, -64)) << c.driver;
        EXPECT_EQ(picture.At(16, 16), kRed) << c.driver;
    }
}

TEST_F(RasterSourcesTest, AGridInAFolderIsReadByTheFoldersName) {
    const std::string folder = NewName(".zarr");
    auto* const driver = GetGDALDriverManager()->GetDriverByName("Zarr");
    if (driver == nullptr) GTEST_SKIP() << "this GDAL has no format of folders that it can write";
    GDALDataset* const image = driver->Create(folder.c_str(), 3, 2, 1, GDT_Byte, nullptr);
    ASSERT_NE(image, nullptr);
    GDALClose(image);
    ASSERT_TRUE(std::filesystem::is_directory(folder));
    EXPECT_TRUE(server.SrvLoad(folder));
    EXPECT_EQ(server.SrvImgWidth(), 3);
}

TEST_F(RasterSourcesTest, NothingIsWrittenBesideAnImage) {
    const std::string name = Make(64, 64, 1, GDT_UInt16, [](GDALDataset& image) { image.GetRasterBand(1)->Fill(7); });
    const auto folder = std::filesystem::path(name).parent_path();
    const auto names = [&] {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) all.insert(entry.path().filename().string());
        return all;
    };
    const std::set<std::string> before = names();
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(16, 16);
    EXPECT_TRUE(Draw(picture, 0, 0, 64, -64));
    server.SrvClose();
    EXPECT_EQ(names(), before);
}

// --- Files beside an image ----------------------------------------------------------------------------------------------------

TEST_F(RasterSourcesTest, APipeBesideAnImageIsNotWaitedForWhateverItIsTakenFor) {
    const Deadline deadline(60);
    for (const char* ending : {".ovr", ".OVR", ".msk",     ".MSK", ".aux.xml", ".aux", ".tfw", ".tifw", ".wld", ".prj", ".tab",
                               ".rpb", ".RPB", "_rpc.txt", ".imd", ".pvl",     ".xml", ".hdr", ".rrd",  ".ige", ".clr"}) {
        const std::string name = Square('r', 400);
        const std::string stem = name.substr(0, name.size() - 4);
        MakePipe(name + ending);
        MakePipe(stem + ending);
        EXPECT_EQ(SmallColor(name), kRed) << ending;
    }
}

TEST_F(RasterSourcesTest, APipeThatComesAfterTheImageIsNotWaitedForEither) {
    const Deadline deadline(20);
    const std::string name = Square('r', 400);
    ASSERT_TRUE(server.SrvLoad(name));
    for (const char* ending : {".ovr", ".msk", ".aux.xml"}) MakePipe(name + ending);
    Picture picture(50, 50);
    EXPECT_TRUE(Draw(picture, 0, 0, 400, -400));
    EXPECT_EQ(picture.CountOther(kRed), 0);
}

TEST_F(RasterSourcesTest, APipeInPlaceOfThePixelsOfAHeaderIsNotWaitedFor) {
    const Deadline deadline(20);
    const std::string name = NewName(".img");
    CPLStringList options;
    options.AddString("USE_SPILL=YES");
    auto* const driver = GetGDALDriverManager()->GetDriverByName("HFA");
    ASSERT_NE(driver, nullptr);
    GDALClose(driver->Create(name.c_str(), 64, 64, 1, GDT_Byte, options.List()));
    const std::string pixels = name.substr(0, name.size() - 4) + ".ige";
    ASSERT_TRUE(std::filesystem::exists(pixels));
    MakePipe(pixels);
    Picture picture(32, 32);
    const bool loaded = server.SrvLoad(name);
    server.SrvSetCP1(0, 0, 0, 0);
    server.SrvSetCP2(64, 64, 64, -64);
    server.SrvCalcCorrect2();
    EXPECT_FALSE(loaded && Draw(picture, 0, 0, 64, -64));
}

TEST_F(RasterSourcesTest, OverviewsInAFileOfTheirOwnStandForTheImage) {
    const std::string name = Square('r', 400);
    AddGreenOverviews(name);
    EXPECT_EQ(SmallColor(name), kGreen);
}

TEST_F(RasterSourcesTest, AMaskInAFileOfItsOwnIsHonoured) {
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", "NO");
    const std::string name = MakeLetters({"rgb"}, [](GDALDataset& image) {
        ASSERT_EQ(image.CreateMaskBand(GMF_PER_DATASET), CE_None);
        std::vector<std::uint8_t> mask{255, 0, 255};
        ASSERT_EQ(
            image.GetRasterBand(1)->GetMaskBand()->RasterIO(GF_Write, 0, 0, 3, 1, mask.data(), 3, 1, GDT_Byte, 0, 0, nullptr),
            CE_None);
    });
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", nullptr);
    ASSERT_TRUE(std::filesystem::exists(name + ".msk"));
    EXPECT_THAT(RowsOf(name), ElementsAre("r.b"));
}

TEST_F(RasterSourcesTest, OverviewsThatAreACompositionAreNotTakenUnlessAnySourceWillDo) {
    const std::string name = Square('r', 400);
    Written(name + ".ovr", VrtOf(Square('g', 50), 50, 50));
    EXPECT_EQ(SmallColor(name), kRed);
    const AnySources any;
    EXPECT_EQ(SmallColor(name), kGreen);
}

TEST_F(RasterSourcesTest, AMaskThatIsACompositionIsNotTakenUnlessAnySourceWillDo) {
    const std::string name = Square('r', 400);
    const std::string flag =
        "<Metadata><MDI key=\"INTERNAL_MASK_FLAGS_1\">2</MDI><MDI key=\"INTERNAL_MASK_FLAGS_2\">2</MDI>"
        "<MDI key=\"INTERNAL_MASK_FLAGS_3\">2</MDI></Metadata>";
    Written(name + ".msk", VrtOf(Square('g', 400), 400, 400, flag));
    EXPECT_EQ(SmallColor(name), kRed);
    const AnySources any;
    EXPECT_EQ(SmallColor(name), kWhite) << "the first band of the green image is nought";
}

TEST_F(RasterSourcesTest, OverviewsByAnotherNameRefuseTheImageUnlessAnySourceWillDo) {
    const std::string name = Square('r', 400);
    Written(name + ".aux.xml", OverviewFile(Written(NewName(".vrt"), VrtOf(Square('g', 50), 50, 50))));
    EXPECT_FALSE(server.SrvLoad(name));
    const AnySources any;
    EXPECT_EQ(SmallColor(name), kGreen);
}

TEST_F(RasterSourcesTest, OverviewsOfOverviewsByAnotherNameAreNotLookedFor) {
    const Deadline deadline(20);
    const std::string name = Square('r', 400);
    AddGreenOverviews(name);
    const std::string other = NewName(".tif");
    MakePipe(other);
    Written(name + ".ovr.aux.xml", OverviewFile(other));
    EXPECT_TRUE(server.SrvLoad(name)) << "nobody looks at the description of an overview";
}

TEST_F(RasterSourcesTest, NorIsTheDescriptionOfAnOverviewOfOneLevelLookedAt) {
    const Deadline deadline(20);
    const std::string name = Square('r', 400);
    const std::string other = NewName(".tif");
    MakePipe(other);
    // A plain image in place of the file with overviews: it has none of its own, so that GDAL asks for those of its description.
    for (const char* const helper : {".ovr", ".msk"}) {
        std::filesystem::copy_file(Square('g', 200), name + helper);
        Written(name + helper + ".aux.xml", OverviewFile(other));
        EXPECT_TRUE(server.SrvLoad(name)) << helper;
        server.SrvClose();
    }
}

TEST_F(RasterSourcesTest, ADescriptionOfAbsurdSizeIsNotRead) {
    const std::string name = NewName(".png");
    GDALDataset* const source = GDALDataset::Open(MakeLetters({"rg"}).c_str());
    GDALClose(GetGDALDriverManager()->GetDriverByName("PNG")->CreateCopy(name.c_str(), source, FALSE, nullptr, nullptr, nullptr));
    GDALClose(source);
    std::string place = "<PAMDataset><GeoTransform>0,1,0,0,0,-1</GeoTransform></PAMDataset>";
    Written(name + ".aux.xml", place);
    ASSERT_TRUE(server.SrvLoad(name));
    EXPECT_TRUE(server.SrvCalcCorrect2());
    place.resize(64 * 1024 * 1024 + 1, ' ');
    Written(name + ".aux.xml", place);
    ASSERT_TRUE(server.SrvLoad(name));
    EXPECT_FALSE(server.SrvCalcCorrect2()) << "it lies nowhere then";
}

}  // namespace
}  // namespace orvane
