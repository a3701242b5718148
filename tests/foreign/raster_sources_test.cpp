// Where the pixels of an image may come from: plain files and folders of the disk, and what these are composed of.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
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
    std::set<std::string> Names() {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(NewName("")).parent_path()))
            all.insert(entry.path().filename().string());
        return all;
    }
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
    const std::vector<std::string> others = {"GTIFF_DIR:1:" + name, VrtOf(name, 2, 1), "/vsisubfile/0," + name,
                                             "DERIVED_SUBDATASET:CONJ:" + name};
    for (const std::string& other : others) EXPECT_FALSE(server.SrvLoad(other)) << other;
    const AnySources any;
    for (const std::string& other : others) EXPECT_TRUE(server.SrvLoad(other)) << other;
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
    for (const char* name : {"MEM:::DATAPOINTER=1,PIXELS=9,LINES=9", "GTIFF_DIR:1:a.tif", "vsistdin", "WMTS:a"}) {
        Written(name, content);
        EXPECT_TRUE(server.SrvLoad(name)) << name;
        EXPECT_EQ(server.SrvImgWidth(), 2) << name;
    }
    std::filesystem::current_path(before);
}

// --- Formats ------------------------------------------------------------------------------------------------------------------

TEST_F(RasterSourcesTest, ACompositionOfOtherImagesIsReadByWhateverName) {
    const std::string composition = VrtOf(Square('r', 4), 4, 4);
    for (const char* ending : {".vrt", ".tif"}) EXPECT_EQ(ColorAt(Written(NewName(ending), composition), 1, 1), kRed);
}

TEST_F(RasterSourcesTest, AHeaderThatNamesTheFileOfItsPixelsIsRead) {
    const std::string pixels = std::filesystem::path(File(std::string(16, '\x55'))).filename().string();
    const std::string name = Written(
        NewName(".ers"),
        "DatasetHeader Begin\n\tDataSetType\t= ERStorage\n\tDataType\t= Raster\n\tByteOrder\t= LSBFirst\n\tDataFile = \"" +
            pixels +
            "\"\n\tRasterInfo Begin\n\t\tCellType\t= Unsigned8BitInteger\n\t\tNrOfLines\t= 4\n\t\tNrOfCellsPerLine\t= 4\n"
            "\t\tNrOfBands\t= 1\n\tRasterInfo End\nDatasetHeader End\n");
    EXPECT_TRUE(server.SrvLoad(name));
    EXPECT_EQ(server.SrvImgWidth(), 4);
}

TEST_F(RasterSourcesTest, ADescriptionOfAServiceIsRefusedUnlessAnySourceWillDo) {
    const std::string service =
        "<GDAL_WMS><Service name=\"TMS\"><ServerUrl>http://192.0.2.1/${z}/${x}/${y}.png</ServerUrl></Service><DataWindow>"
        "<UpperLeftX>0</UpperLeftX><UpperLeftY>0</UpperLeftY><LowerRightX>9</LowerRightX><LowerRightY>-9</LowerRightY>"
        "<TileLevel>0</TileLevel></DataWindow><BandsCount>3</BandsCount></GDAL_WMS>";
    const std::string name = Written(NewName(".xml"), service);
    EXPECT_FALSE(server.SrvLoad(name));
    const AnySources any;
    EXPECT_TRUE(server.SrvLoad(name)) << "nobody is asked yet";
}

/// A port of this machine that listens, and tells whether anyone called.
class Listener {
public:
    Listener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(socket_, 4), 0);
        EXPECT_EQ(getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size), 0);
        port_ = ntohs(address.sin_port);
    }
    ~Listener() { close(socket_); }
    std::string Address() const { return "http://127.0.0.1:" + std::to_string(port_); }
    bool WasCalled() const {
        const int call = accept(socket_, nullptr, nullptr);
        if (call >= 0) close(call);
        return call >= 0;
    }

private:
    int socket_;
    int port_ = 0;
};

TEST_F(RasterSourcesTest, ACompositionCallsNobodyInTheNetworkUnlessAnySourceWillDo) {
    setenv("ORVANE_RASTER_SECONDS", "2", 1);
    const Listener listener;
    const std::string name = Written(NewName(".vrt"), VrtOf("/vsicurl/" + listener.Address() + "/a.tif", 4, 4));
    Picture picture(4, 4);
    EXPECT_FALSE(server.SrvLoad(name) && Draw(picture, 0, 0, 4, -4));
    EXPECT_FALSE(listener.WasCalled());
    {
        const AnySources any;
        EXPECT_FALSE(server.SrvLoad(name) && Draw(picture, 0, 0, 4, -4)) << "nobody answers";
        EXPECT_TRUE(listener.WasCalled());
    }
    unsetenv("ORVANE_RASTER_SECONDS");
}

TEST_F(RasterSourcesTest, NothingIsWrittenBesideADatabaseThatWantsALog) {
    const std::string name = Square('r', 64);
    const std::string database = NewName(".gpkg");
    GDALDataset* const from = GDALDataset::Open(name.c_str());
    auto* const driver = GetGDALDriverManager()->GetDriverByName("GPKG");
    if (driver == nullptr) GTEST_SKIP() << "this GDAL has no databases";
    GDALClose(driver->CreateCopy(database.c_str(), from, FALSE, nullptr, nullptr, nullptr));
    GDALClose(from);
    // These bytes of its head have also those who only read it make a log.
    std::string bytes = ContentOf(database);
    bytes[18] = bytes[19] = 2;
    Written(database, bytes);
    const std::set<std::string> before = Names();
    server.SrvLoad(database);
    EXPECT_EQ(Names(), before);
    EXPECT_EQ(ContentOf(database), bytes);
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
          Case{"WEBP", ".webp", {"LOSSLESS=TRUE"}}, Case{"SGI", ".rgb", {}}, Case{"PCIDSK", ".pix", {}}, Case{"ERS", ".ers", {}},
          Case{"NITF", ".ntf", {}}, Case{"FITS", ".fits", {}}, Case{"HDF4Image", ".hdf", {}}, Case{"MFF2", "", {}},
          Case{"PAux", ".raw", {}}, Case{"VRT", ".vrt", {}}}) {
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
    const std::set<std::string> before = Names();
    ASSERT_TRUE(server.SrvLoad(name));
    Picture picture(16, 16);
    EXPECT_TRUE(Draw(picture, 0, 0, 64, -64));
    server.SrvClose();
    EXPECT_EQ(Names(), before);
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
    const std::string name = MakeMasked("NO");
    ASSERT_TRUE(std::filesystem::exists(name + ".msk"));
    EXPECT_THAT(RowsOf(name), ElementsAre("r.b"));
}

TEST_F(RasterSourcesTest, OverviewsThatAreACompositionAreTaken) {
    const std::string name = Square('r', 400);
    Written(name + ".ovr", VrtOf(Square('g', 50), 50, 50));
    EXPECT_EQ(SmallColor(name), kGreen);
}

TEST_F(RasterSourcesTest, AMaskThatIsACompositionIsTaken) {
    const std::string name = Square('r', 400);
    const std::string flag =
        "<Metadata><MDI key=\"INTERNAL_MASK_FLAGS_1\">2</MDI><MDI key=\"INTERNAL_MASK_FLAGS_2\">2</MDI>"
        "<MDI key=\"INTERNAL_MASK_FLAGS_3\">2</MDI></Metadata>";
    Written(name + ".msk", VrtOf(Square('g', 400), 400, 400, flag));
    EXPECT_EQ(SmallColor(name), kWhite) << "the first band of the green image is nought";
}

TEST_F(RasterSourcesTest, OverviewsByAnotherNameAreTakenAndAPipeInTheirPlaceIsNotWaitedFor) {
    const Deadline deadline(20);
    const std::string name = Square('r', 400);
    const std::string other = Written(NewName(".vrt"), VrtOf(Square('g', 50), 50, 50));
    Written(name + ".aux.xml", OverviewFile(other));
    EXPECT_EQ(SmallColor(name), kGreen);
    server.SrvClose();
    MakePipe(other);
    EXPECT_EQ(SmallColor(name), kRed);
}

TEST_F(RasterSourcesTest, APipeInPlaceOfAPartOfACompositionIsNotWaitedFor) {
    const Deadline deadline(20);
    const std::string part = NewName(".tif");
    MakePipe(part);
    const std::string name = Written(NewName(".vrt"), VrtOf(part, 4, 4));
    Picture picture(4, 4);
    EXPECT_FALSE(server.SrvLoad(name) && Draw(picture, 0, 0, 4, -4));
}

TEST_F(RasterSourcesTest, ALinkToAPipeIsNotWaitedForNorIsOneToAnImageRefused) {
    const Deadline deadline(20);
    const std::string pipe = NewName(".fifo");
    MakePipe(pipe);
    const std::string link = NewName(".tif");
    std::filesystem::create_symlink(pipe, link);
    EXPECT_FALSE(server.SrvLoad(link));
    const std::string good = NewName(".tif");
    std::filesystem::create_symlink(Square('r', 4), good);
    EXPECT_EQ(ColorAt(good, 1, 1), kRed);
}

}  // namespace
}  // namespace orvane
