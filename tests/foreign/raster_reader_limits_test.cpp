// What the process that reads images may take: time, memory, files.
#include <signal.h>
#include <sys/resource.h>

#include <iterator>

#include "foreign/raster_reader/reader_fences.h"
#include "tests/foreign/raster_reader_fixture.h"

namespace orvane {
namespace {

class RasterReaderLimitsTest : public RasterReaderTest {};

TEST_F(RasterReaderLimitsTest, AnImageThatHangsIsGivenUpAtTheLimitOfTime) {
    GdalRasterServer other;
    ASSERT_TRUE(other.SrvInit());
    ASSERT_TRUE(other.SrvLoad(MakeLetters({"by"})));
    const pid_t before = Reader();
    const std::string hanging = Written(NewName(".vrt"), Hanging(pipe_));
    {
        const Variable limit("ORVANE_RASTER_SECONDS", "1");
        EXPECT_FALSE(server.SrvLoad(hanging));
    }
    EXPECT_EQ(LastRasterFailure(), "it took too long");
    EXPECT_FALSE(IsThere(before));
    EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
    ASSERT_TRUE(server.SrvLoad(HangingWhenDrawn()));
    {
        const Variable limit("ORVANE_RASTER_SECONDS", "1");
        EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
    }
    EXPECT_EQ(LastRasterFailure(), "it took too long");
    EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
}

TEST_F(RasterReaderLimitsTest, AnImageThatWaitedWhileAnotherOneHungHasAllItsTimeAndIsDrawn) {
    GdalRasterServer other;
    ASSERT_TRUE(other.SrvInit());
    ASSERT_TRUE(other.SrvLoad(MakeLetters({"by"})));
    const std::string hanging = Written(NewName(".vrt"), Hanging(pipe_));
    const Variable limit("ORVANE_RASTER_SECONDS", "2");
    std::thread first([&] {
        GdalRasterServer hung;
        EXPECT_TRUE(hung.SrvInit());
        EXPECT_FALSE(hung.SrvLoad(hanging));
    });
    ASSERT_TRUE(WaitsAtPipe());
    EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
    first.join();
    LetGo();
    EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
}

TEST_F(RasterReaderLimitsTest, AnImageThatTheReaderNeverTookUpWithinItsTimeIsNotLost) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    kill(Reader(), SIGSTOP);
    {
        const Variable limit("ORVANE_RASTER_SECONDS", "1");
        EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
    }
    EXPECT_EQ(LastRasterFailure(), "it took too long");
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
}

TEST_F(RasterReaderLimitsTest, WhatWasDoneLeavesNoReasonBehind) {
    std::string reason;
    const std::unique_ptr<RemoteImage> image = RemoteImage::Open(MakeLetters({"rg"}), RasterSources::LocalFiles, reason);
    ASSERT_NE(image, nullptr);
    std::vector<Rgba> pixels(2);
    EXPECT_FALSE(image->Read({1, 0, 1, 1, 2, 1}, pixels)) << "it reaches over the image";
    EXPECT_EQ(image->Reason(), "it cannot be read");
    EXPECT_TRUE(image->Read({0, 0, 1, 1, 2, 1}, pixels));
    EXPECT_EQ(image->Reason(), "");
}

TEST_F(RasterReaderLimitsTest, ItMayHaveAsManyFilesOpenAsTheSystemLetsItHave) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit low{200, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &low), 0);
    EXPECT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    setrlimit(RLIMIT_NOFILE, &before);
    rlimit there{};
    ASSERT_EQ(prlimit(Reader(), RLIMIT_NOFILE, nullptr, &there), 0);
    EXPECT_EQ(there.rlim_cur, before.rlim_max);
}

TEST_F(RasterReaderLimitsTest, WhereTooManyImagesAreOpenTheNextIsRefusedAndNoneIsWithoutItsMask) {
    const std::string name = MakeMasked("NO");
    ASSERT_TRUE(server.SrvLoad(name));
    const rlim_t most = OpenFiles(Reader()).size() + 24;
    const rlimit limit{most, most};
    ASSERT_EQ(prlimit(Reader(), RLIMIT_NOFILE, &limit, nullptr), 0);
    std::vector<std::unique_ptr<GdalRasterServer>> open;
    while (open.size() < 30) {
        open.push_back(std::make_unique<GdalRasterServer>());
        ASSERT_TRUE(open.back()->SrvInit());
        if (!open.back()->SrvLoad(name)) break;
        EXPECT_THAT(Seen(*open.back(), 3), ElementsAre("r.b")) << open.size();
    }
    EXPECT_EQ(LastRasterFailure(), "too many images are open");
    EXPECT_THAT(open, testing::SizeIs(testing::AllOf(testing::Gt(2u), testing::Lt(12u))));
    EXPECT_THAT(Seen(server, 3), ElementsAre("r.b"));
    open.erase(open.begin(), open.begin() + 2);
    EXPECT_TRUE(open.back()->SrvLoad(name)) << "two were closed";
}

TEST_F(RasterReaderLimitsTest, ItsCacheIsHeldTo256MiBAndToWhatASettingTells) {
#ifdef ORVANE_SANITIZED
    GTEST_SKIP() << "what is released is kept for a while there";
#endif
    // 1800 tiles of 192 KiB, all bands together: 338 MiB.
    const std::string name =
        Make(11520, 10240, 3, GDT_Byte, nullptr, {"TILED=YES", "SPARSE_OK=TRUE", "BLOCKXSIZE=256", "BLOCKYSIZE=256"});
    const auto kept_MiB = [&] {
        EndRasterReaders();
        std::string reason;
        const std::unique_ptr<RemoteImage> image = RemoteImage::Open(name, RasterSources::LocalFiles, reason);
        EXPECT_NE(image, nullptr) << reason;
        if (image == nullptr) return 0LL;
        const long long start = KiB("VmRSS:");
        std::vector<Rgba> pixel(1);
        for (int y = 0; y < 10240; y += 256) {
            for (int x = 0; x < 11520; x += 256) {
                image->StartClock();
                EXPECT_TRUE(image->Read({double(x), double(y), 1, 1, 1, 1}, pixel));
            }
        }
        return (KiB("VmHWM:") - start) / 1024;
    };
    const long long kept = kept_MiB();
    EXPECT_GT(kept, 240);
    EXPECT_LT(kept, 290);
    const Variable setting("GDAL_CACHEMAX", "16");
    EXPECT_LT(kept_MiB(), 50);
}

TEST_F(RasterReaderLimitsTest, ASettingForTheCacheLeavesDecodersTheirPartOfTheMemory) {
    const Variable setting("GDAL_CACHEMAX", "4096");
    GDALSetCacheMax64(GIntBig{4096} << 20);
    HoldCache();
    EXPECT_EQ(GDALGetCacheMax64(), GIntBig{1} << 30);
    GDALSetCacheMax64(GIntBig{500} << 20);
    HoldCache();
    EXPECT_EQ(GDALGetCacheMax64(), GIntBig{500} << 20);
    GDALSetCacheMax64(kReaderCache_bytes);
}

TEST_F(RasterReaderLimitsTest, TheLimitOfTimeIsAMinuteUnlessTheEnvironmentTellsSecondsUpToADay) {
    EXPECT_EQ(RasterLimit_s(), 60);
    const std::pair<const char*, int> cases[] = {{"1", 1},    {"86400", 86400}, {"86401", 60},      {"0", 60},
                                                 {"-5", 60},  {"", 60},         {"2s", 60},         {"1.5", 60},
                                                 {"1e3", 60}, {" 7", 60},       {"99999999999", 60}};
    for (const auto& [told, seconds] : cases) {
        const Variable limit("ORVANE_RASTER_SECONDS", told);
        EXPECT_EQ(RasterLimit_s(), seconds) << told;
    }
}

TEST_F(RasterReaderLimitsTest, AnImageThatEatsMemoryIsHeldToTheLimitAndTheOthersGoOn) {
#ifdef ORVANE_SANITIZED
    GTEST_SKIP() << "address space has no limit there";
#endif
    const std::string name = MakeLetters({"rg"});
    ASSERT_TRUE(server.SrvLoad(name));
    const long long start = KiB("VmSize:");
    ASSERT_GT(start, 0);
    // A description of three GiB, which is read as a whole, in a file that takes no room.
    Written(name + ".aux.xml", "<PAMDataset>");
    fs::resize_file(name + ".aux.xml", std::uintmax_t{3} << 30);
    EXPECT_TRUE(server.SrvLoad(name)) << "the description is left out";
    EXPECT_LT(KiB("VmPeak:"), start + static_cast<long long>(kReaderMemory_bytes / 1024));
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
    std::ifstream limits("/proc/" + std::to_string(Reader()) + "/limits");
    const std::string text((std::istreambuf_iterator<char>(limits)), {});
    EXPECT_THAT(text, testing::ContainsRegex("Max core file size +0 +0"));
    EXPECT_THAT(text, testing::ContainsRegex("Max file size +0 +0"));
    EXPECT_THAT(text, testing::ContainsRegex("Max address space +[0-9]+ +[0-9]+"));
}

}  // namespace
}  // namespace orvane
