// The process that reads images: killed, hanging, out of memory, missing, telling nonsense, left alone.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <thread>

#include "foreign/raster/remote_image.h"
#include "foreign/raster_reader/plain_files.h"
#include "foreign/raster_reader/reader_fences.h"
#include "tests/foreign/raster_fixture.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

/// Sets a variable of the environment as long as it lives.
class Variable {
public:
    Variable(const char* name, const std::string& value) : name_(name) {
        if (const char* const told = std::getenv(name)) before_ = told;
        setenv(name, value.c_str(), 1);
    }
    ~Variable() {
        if (before_.empty()) {
            unsetenv(name_);
        } else {
            setenv(name_, before_.c_str(), 1);
        }
    }

private:
    const char* name_;
    std::string before_;
};

pid_t Reader() { return RasterReaderPid(RasterSources::LocalFiles); }

/// What the system tells of the reader's memory.
long long KiB(const char* what) {
    std::ifstream status("/proc/" + std::to_string(Reader()) + "/status");
    std::string word;
    long long value = 0;
    while (status >> word && word != what) {
    }
    status >> value;
    return value;
}

/// Neither gone nor waiting for nothing but its parent's look.
bool IsThere(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string number, program, state;
    return stat >> number >> program >> state && state != "Z";
}

/// Waits until it is so, as long as a broken program may take; the answer is whether it came to be.
template <class Is>
bool Comes(Is is) {
    for (int i = 0; i < 20000; ++i) {
        if (is()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

/// What the files of a process are.
std::vector<std::string> OpenFiles(pid_t pid) {
    std::vector<std::string> files;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(pid) + "/fd", error))
        files.push_back(fs::read_symlink(entry.path(), error).string());
    return files;
}

bool HasOpen(pid_t pid, const std::string& name) {
    const std::vector<std::string> files = OpenFiles(pid);
    return std::find(files.begin(), files.end(), name) != files.end();
}

/// A composition whose coordinate system sends the library of projections into a pipe, for which nobody stands at the other end.
std::string Hanging(const std::string& pipe, const std::string& band = "<VRTRasterBand dataType=\"Byte\" band=\"1\"/>") {
    return "<VRTDataset rasterXSize=\"2\" rasterYSize=\"1\"><SRS>+init=" + pipe +
           ":x +type=crs</SRS><GeoTransform>0,1,0,0,0,-1</GeoTransform>" + band + "</VRTDataset>";
}

class RasterReaderTest : public RasterImageTest {
protected:
    RasterReaderTest() : pipe_(NewName(".fifo")) {
        EndRasterReaders();
        EXPECT_EQ(mkfifo(pipe_.c_str(), 0600), 0);
    }
    ~RasterReaderTest() override {
        server.SrvClose();
        EndRasterReaders();
    }

    std::vector<std::string> Seen(GdalRasterServer& of, int width) {
        Picture picture(width, 1);
        if (!of.SrvDraw(picture.dc, PartOf(picture, 0, 0, width, -1), 1)) return {"false"};
        return picture.Rows();
    }
    /// An image that is opened without trouble, and hangs once it is drawn.
    std::string HangingWhenDrawn() {
        const std::string part = Written(NewName(".vrt"), Hanging(pipe_));
        const std::string source =
            "<SimpleSource><SourceFilename>" + part +
            "</SourceFilename><SourceBand>1</SourceBand><SourceProperties RasterXSize=\"2\" RasterYSize=\"1\" DataType=\"Byte\" "
            "BlockXSize=\"2\" BlockYSize=\"1\"/><SrcRect xOff=\"0\" yOff=\"0\" xSize=\"2\" ySize=\"1\"/>"
            "<DstRect xOff=\"0\" yOff=\"0\" xSize=\"2\" ySize=\"1\"/></SimpleSource>";
        return Written(NewName(".vrt"),
                       "<VRTDataset rasterXSize=\"2\" rasterYSize=\"1\"><GeoTransform>0,1,0,0,0,-1</GeoTransform><VRTRasterBand "
                       "dataType=\"Byte\" band=\"1\">" +
                           source + source + "</VRTRasterBand></VRTDataset>");
    }
    /// What a reader says of an image of 2 x 1 pixels that lies somewhere.
    static ReaderAnswer Yes() {
        ReaderAnswer answer{};
        answer.done = 1;
        answer.width_px = 2;
        answer.height_px = 1;
        answer.hasPlacement = 1;
        answer.placement = {0, 1, 0, 0, 0, -1};
        return answer;
    }
    /// Commands that send messages to the host whatever it asks, and wait then.
    std::string Saying(const std::string& message) { return "cat " + File(message) + " >&3; exec sleep 100"; }
    std::string Saying(const std::vector<ReaderAnswer>& answers) {
        std::string all;
        for (const ReaderAnswer& answer : answers)
            all += "cat " + File(std::string(reinterpret_cast<const char*>(&answer), sizeof answer)) + " >&3; ";
        return all + "exec sleep 100";
    }
    std::string Script(const std::string& does) {
        const std::string script = Written(NewName(".sh"), "#!/bin/sh\n" + does + "\n");
        fs::permissions(script, fs::perms::owner_all);
        return script;
    }
    /// Waits until the reader waits at the pipe.
    bool WaitsAtPipe() {
        return Comes([&] {
            const int end = open(pipe_.c_str(), O_WRONLY | O_NONBLOCK);
            if (end < 0) return false;
            // Whoever opened it would go on at the end of what is written to it, so it is held until the reader is gone.
            held_ = end;
            return true;
        });
    }
    void LetGo() {
        if (held_ >= 0) close(held_);
        held_ = -1;
    }

    std::string pipe_;
    int held_ = -1;
};

// --- Ended
// ----------------------------------------------------------------------------------------------------------------------

TEST_F(RasterReaderTest, AReaderThatWasKilledWhileNothingWasAskedIsReplacedAndAllImagesGoOnWithTheirPlaces) {
    GdalRasterServer other;
    ASSERT_TRUE(other.SrvInit());
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    ASSERT_TRUE(other.SrvLoad(MakeLetters({"by"})));
    EXPECT_TRUE(other.SrvSetCP1(0, 0, 1, 0) && other.SrvSetCP2(2, 0, 3, 0) && other.SrvCalcCorrect2());
    for (int round = 0; round < 3; ++round) {
        const pid_t before = Reader();
        ASSERT_GT(before, 0);
        kill(before, SIGKILL);
        EXPECT_THAT(Seen(server, 3), ElementsAre("rg."));
        EXPECT_THAT(Seen(other, 3), ElementsAre(".by"));
        EXPECT_NE(Reader(), before);
        EXPECT_FALSE(fs::exists("/proc/" + std::to_string(before))) << "nothing of it is left";
    }
}

TEST_F(RasterReaderTest, TheImageThatItWasKilledOverIsRefusedUntilItIsLoadedAgainAndTheOthersGoOn) {
    GdalRasterServer other;
    ASSERT_TRUE(other.SrvInit());
    ASSERT_TRUE(other.SrvLoad(MakeLetters({"by"})));
    const std::string name = HangingWhenDrawn();
    ASSERT_TRUE(server.SrvLoad(name));
    const pid_t reader = Reader();
    std::thread killer([&] {
        if (WaitsAtPipe()) kill(reader, SIGKILL);
    });
    EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
    killer.join();
    LetGo();
    EXPECT_EQ(LastRasterFailure(), "the reader of images ended");
    EXPECT_THAT(Seen(server, 2), ElementsAre("false")) << "it is not asked again";
    EXPECT_EQ(Reader(), 0);
    EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
    Written(name, ContentOf(MakeLetters({"rg"})));
    EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
    EXPECT_TRUE(server.SrvLoad(name));
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
}

TEST_F(RasterReaderTest, AnImageThatCrashesItIsFalseAndTheOthersGoOn) {
    const AnySources any;
    GdalRasterServer other;
    ASSERT_TRUE(other.SrvInit());
    ASSERT_TRUE(other.SrvLoad(MakeLetters({"by"})));
    // Pixels at an address where nothing is.
    ASSERT_TRUE(server.SrvLoad("MEM:::DATAPOINTER=0x10,PIXELS=2,LINES=1,GEOTRANSFORM=0/1/0/0/0/-1"));
    EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
    EXPECT_EQ(LastRasterFailure(), "the reader of images ended");
    EXPECT_EQ(RasterReaderPid(RasterSources::Any), 0);
    EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
}

TEST_F(RasterReaderTest, AnImageThatEndsItWhileItIsLoadedIsNotLoadedAndWhatWasOpenIsLeftInPlace) {
    const std::string name = Written(NewName(".vrt"), Hanging(pipe_));
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"by"})));
    GdalRasterServer other;
    ASSERT_TRUE(other.SrvInit());
    const pid_t reader = Reader();
    std::thread killer([&] {
        if (WaitsAtPipe()) kill(reader, SIGKILL);
    });
    EXPECT_FALSE(other.SrvLoad(name));
    killer.join();
    LetGo();
    EXPECT_EQ(other.SrvImgWidth(), 0);
    EXPECT_THAT(Seen(server, 2), ElementsAre("by"));
}

TEST_F(RasterReaderTest, AnImageWhoseFileHasAnotherSizeWhenItIsOpenedAgainIsFalse) {
    const std::string name = MakeLetters({"rg"});
    ASSERT_TRUE(server.SrvLoad(name));
    const std::string before = ContentOf(name);
    Written(name, ContentOf(MakeLetters({"rgb"})));
    kill(Reader(), SIGKILL);
    EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
    EXPECT_EQ(LastRasterFailure(), "its file has changed");
    EXPECT_FALSE(HasOpen(Reader(), name)) << "nobody would close it there";
    Written(name, before);
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
}

TEST_F(RasterReaderTest, AnImageIsFoundAgainWhenTheProgramHasGoneToAnotherFolder) {
    const fs::path name = MakeLetters({"rg"});
    const fs::path before = fs::current_path();
    fs::current_path(name.parent_path());
    ASSERT_TRUE(server.SrvLoad(name.filename().string()));
    fs::current_path("/");
    kill(Reader(), SIGKILL);
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
    fs::current_path(before);
}

// --- Limits
// ---------------------------------------------------------------------------------------------------------------------

TEST_F(RasterReaderTest, AnImageThatHangsIsGivenUpAtTheLimitOfTime) {
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

TEST_F(RasterReaderTest, AnImageThatWaitedWhileAnotherOneHungHasAllItsTimeAndIsDrawn) {
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

TEST_F(RasterReaderTest, AnImageThatTheReaderNeverTookUpWithinItsTimeIsNotLost) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    kill(Reader(), SIGSTOP);
    {
        const Variable limit("ORVANE_RASTER_SECONDS", "1");
        EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
    }
    EXPECT_EQ(LastRasterFailure(), "it took too long");
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
}

TEST_F(RasterReaderTest, WhatWasDoneLeavesNoReasonBehind) {
    std::string reason;
    const std::unique_ptr<RemoteImage> image = RemoteImage::Open(MakeLetters({"rg"}), RasterSources::LocalFiles, reason);
    ASSERT_NE(image, nullptr);
    std::vector<Rgba> pixels(2);
    EXPECT_FALSE(image->Read({1, 0, 1, 1, 2, 1}, pixels)) << "it reaches over the image";
    EXPECT_EQ(image->Reason(), "it cannot be read");
    EXPECT_TRUE(image->Read({0, 0, 1, 1, 2, 1}, pixels));
    EXPECT_EQ(image->Reason(), "");
}

TEST_F(RasterReaderTest, ItMayHaveAsManyFilesOpenAsTheSystemLetsItHave) {
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

TEST_F(RasterReaderTest, WhereTooManyImagesAreOpenTheNextIsRefusedAndNoneIsWithoutItsMask) {
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

TEST_F(RasterReaderTest, ItsCacheIsHeldTo256MiBAndToWhatASettingTells) {
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

TEST_F(RasterReaderTest, TheLimitOfTimeIsAMinuteUnlessTheEnvironmentTellsSecondsUpToADay) {
    EXPECT_EQ(RasterLimit_s(), 60);
    const std::pair<const char*, int> cases[] = {{"1", 1},    {"86400", 86400}, {"86401", 60},      {"0", 60},
                                                 {"-5", 60},  {"", 60},         {"2s", 60},         {"1.5", 60},
                                                 {"1e3", 60}, {" 7", 60},       {"99999999999", 60}};
    for (const auto& [told, seconds] : cases) {
        const Variable limit("ORVANE_RASTER_SECONDS", told);
        EXPECT_EQ(RasterLimit_s(), seconds) << told;
    }
}

TEST_F(RasterReaderTest, AnImageThatEatsMemoryIsHeldToTheLimitAndTheOthersGoOn) {
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

// --- Missing, or another program
// ------------------------------------------------------------------------------------------------

TEST_F(RasterReaderTest, WithoutTheProgramThereIsNoServerAndImagesThatAreOpenWaitForIt) {
    ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
    {
        const Variable program("ORVANE_RASTER_READER", "/no/such/program");
        EndRasterReaders();
        GdalRasterServer fresh;
        EXPECT_FALSE(fresh.SrvInit());
        EXPECT_FALSE(fresh.SrvLoad(MakeLetters({"rg"})));
        EXPECT_THAT(Seen(server, 2), ElementsAre("false"));
        EXPECT_EQ(LastRasterFailure(), "the reader of images cannot be started");
    }
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
}

TEST_F(RasterReaderTest, AProgramThatIsNoReaderIsAnsweredWithFalse) {
    const std::string name = MakeLetters({"rg"});
    const std::string nonsense = "the reader of images answered nonsense";
    ReaderAnswer without = Yes();
    without.width_px = 0;
    ReaderAnswer negative = Yes();
    negative.height_px = -1;
    ReaderAnswer flat = Yes();
    flat.placement = {0, 1, 2, 0, 2, 4};
    ReaderAnswer none = Yes();
    none.placement.x0 = std::numeric_limits<double>::quiet_NaN();
    const struct {
        std::string does;
        std::string reason;
    } cases[] = {
        {"exit 0", "the reader of images ended"},
        {"exec sleep 100", "it took too long"},
        {"printf x >&3; exec sleep 100", nonsense},
        {Saying(std::string(sizeof(ReaderAnswer), '\0')), "it cannot be read"},
        {Saying(std::string(sizeof(ReaderAnswer), '\1')), std::string(kMaxReason, '?')},
        {Saying(std::string(sizeof(ReaderAnswer), '\377')), std::string(kMaxReason, '?')},
        {Saying(std::string(4096, '\0')), nonsense},
        {Saying({without}), nonsense},
        {Saying({negative}), nonsense},
        {Saying({flat}), nonsense},
        {Saying({none}), nonsense},
    };
    for (const auto& c : cases) {
        const Variable program("ORVANE_RASTER_READER", Script(c.does));
        const Variable limit("ORVANE_RASTER_SECONDS", "1");
        EndRasterReaders();
        EXPECT_FALSE(server.SrvLoad(name)) << c.does;
        EXPECT_EQ(LastRasterFailure(), c.reason) << c.does;
        EXPECT_EQ(server.SrvImgWidth(), 0) << c.does;
    }
    EndRasterReaders();
    EXPECT_TRUE(server.SrvLoad(name));
}

TEST_F(RasterReaderTest, AProgramThatAnswersNonsenseOfAnOpenImageHasItNotDrawn) {
    ReaderAnswer cheap = Yes();
    cheap.cost_bytes = 10;
    ReaderAnswer negative = Yes();
    negative.cost_bytes = -1;
    ReaderAnswer none = Yes();
    none.cost_bytes = std::numeric_limits<double>::quiet_NaN();
    ReaderAnswer dear = Yes();
    dear.cost_bytes = std::numeric_limits<double>::infinity();
    ReaderAnswer neither = Yes();
    neither.done = 2;
    const std::string nonsense = "the reader of images answered nonsense";
    const std::string tooMuch = "too much of it would have to be decoded for this scale: it has no overviews";
    const struct {
        std::string does;
        std::string reason;
    } cases[] = {{Saying({Yes(), negative}), nonsense},
                 {Saying({Yes(), none}), nonsense},
                 {Saying({Yes(), dear}), tooMuch},
                 {Saying({Yes(), neither}), "it cannot be read"},
                 {Saying({Yes(), cheap, neither}), "it cannot be read"}};
    const std::string name = MakeLetters({"rg"});
    for (const auto& c : cases) {
        const Variable program("ORVANE_RASTER_READER", Script(c.does));
        EndRasterReaders();
        ASSERT_TRUE(server.SrvLoad(name)) << c.reason << LastRasterFailure();
        EXPECT_THAT(Seen(server, 2), ElementsAre("false")) << c.reason;
        EXPECT_EQ(LastRasterFailure(), c.reason);
    }
    EndRasterReaders();
}

TEST_F(RasterReaderTest, StartedByHandOrByAnotherVersionItSaysSoAndEnds) {
    const std::string version = std::string(" ") + kReaderVersion;
    for (const std::string& words :
         {std::string(), version, std::string(" 0 local"), version + " local", version + " everything"}) {
        const int status = std::system((std::string(ORVANE_RASTER_READER_FILE) + words + " 2>/dev/null 3<&- 4<&-").c_str());
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 2) << words;
    }
}

// --- Together
// -------------------------------------------------------------------------------------------------------------------

TEST_F(RasterReaderTest, TwoServersTakeTurnsAtOneReaderAndWhatOneClosesIsClosedThere) {
    const std::string first = MakeLetters({"rg"});
    const std::string second = MakeLetters({"by"});
    ASSERT_TRUE(server.SrvLoad(first));
    const pid_t reader = Reader();
    {
        GdalRasterServer other;
        ASSERT_TRUE(other.SrvInit());
        ASSERT_TRUE(other.SrvLoad(second));
        for (int round = 0; round < 3; ++round) {
            EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
            EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
        }
        EXPECT_TRUE(HasOpen(reader, first));
        EXPECT_TRUE(HasOpen(reader, second));
    }
    EXPECT_FALSE(HasOpen(reader, second)) << "a server that is forgotten closes its image too";
    EXPECT_TRUE(HasOpen(reader, first));
    server.SrvClose();
    EXPECT_FALSE(HasOpen(reader, first));
    EXPECT_EQ(Reader(), reader);
}

TEST_F(RasterReaderTest, ServersOfSeveralThreadsTakeTurns) {
    const std::string name = MakeLetters({"rg", "by"});
    std::vector<std::thread> threads;
    std::atomic<int> good{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            GdalRasterServer own;
            for (int round = 0; round < 10; ++round) good += own.SrvInit() && own.SrvLoad(name) && own.SrvClose() ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(good, 40);
}

TEST_F(RasterReaderTest, ItHasNoFilesOfTheHostsAndTheHostKeepsNoneOfItsOwn) {
    const std::string secret = File("secret");
    const int open_ = open(secret.c_str(), O_RDONLY);  // open for every program that is started, unless closed
    ASSERT_GE(open_, 0);
    const std::size_t before = OpenFiles(getpid()).size();
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(server.SrvLoad(MakeLetters({"rg"})));
        EXPECT_FALSE(HasOpen(Reader(), secret));
        EXPECT_EQ(fs::read_symlink("/proc/" + std::to_string(Reader()) + "/fd/0"), "/dev/null");
        EXPECT_EQ(fs::read_symlink("/proc/" + std::to_string(Reader()) + "/fd/1"), "/dev/null");
        EndRasterReaders();
    }
    EXPECT_EQ(OpenFiles(getpid()).size(), before);
    close(open_);
}

TEST_F(RasterReaderTest, ItStandsInNoFolderOfTheHostsSoThatANameRelativeToNothingIsFoundOrNotWheneverItWasStarted) {
    const fs::path part = MakeLetters({"rg"});
    const std::string name = Written(
        NewName(".vrt"),
        "<VRTDataset rasterXSize=\"2\" rasterYSize=\"1\"><GeoTransform>0,1,0,0,0,-1</GeoTransform><VRTRasterBand "
        "dataType=\"Byte\" "
        "band=\"1\"><SimpleSource><SourceFilename relativeToVRT=\"0\">" +
            part.filename().string() +
            "</SourceFilename><SourceBand>1</SourceBand><SourceProperties RasterXSize=\"2\" RasterYSize=\"1\" DataType=\"Byte\" "
            "BlockXSize=\"2\" BlockYSize=\"1\"/></SimpleSource></VRTRasterBand></VRTDataset>");
    const fs::path before = fs::current_path();
    fs::current_path(part.parent_path());
    EndRasterReaders();
    EXPECT_TRUE(!server.SrvLoad(name) || Seen(server, 2) == std::vector<std::string>{"false"});
    ASSERT_TRUE(server.SrvLoad(part.filename().string())) << "the host's own names are the host's";
    EXPECT_EQ(fs::read_symlink("/proc/" + std::to_string(Reader()) + "/cwd"), "/");
    fs::current_path(before);
}

/// Runs `is` in a program that is forked off; whether it was so there.
template <class Is>
bool IsSoInAChild(Is is) {
    const pid_t child = fork();
    if (child == 0) _exit(is() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(RasterReaderTest, WhatTheSystemTellsOfItselfIsNoFileThere) {
    const std::string plain = File("plain");
    const std::string link = NewName(".txt");
    fs::create_symlink("/proc/version", link);
    EXPECT_TRUE(IsSoInAChild([&] {
        InstallPlainFiles();
        const auto isThere = [](const std::string& name) {
            VSIStatBufL stat;
            VSILFILE* const file = VSIFOpenL(name.c_str(), "rb");
            if (file != nullptr) VSIFCloseL(file);
            return std::pair(VSIStatL(name.c_str(), &stat) == 0, file != nullptr);
        };
        const std::pair<bool, bool> yes(true, true), no(false, false);
        for (const std::string& name : {std::string("/proc/version"), std::string("/proc/self/maps"),
                                        std::string("/proc/../proc/version"), std::string("/sys/kernel/uevent_seqnum"), link}) {
            if (isThere(name) != no) return false;
        }
        char** const names = VSIReadDir("/proc");
        CSLDestroy(names);
        return names == nullptr && isThere(plain) == yes && isThere("/proc/self/root" + plain) == yes;
    }));
}

TEST_F(RasterReaderTest, ItGetsNoSocketByTheNumbersOfAnotherMachineEither) {
#if defined(__x86_64__)
    EXPECT_TRUE(IsSoInAChild([] {
        KeepToLocalFiles();
        const auto isRefused = [](long number) { return syscall(number, AF_UNIX, SOCK_STREAM, 0) == -1 && errno == EACCES; };
        return isRefused(__NR_socket) && isRefused(__NR_socket | 0x40000000) && getppid() != 0;
    }));
#else
    GTEST_SKIP() << "there is one numbering";
#endif
}

// --- The host's end
// -------------------------------------------------------------------------------------------------------------

TEST_F(RasterReaderTest, AForkedProgramHasAReaderOfItsOwnWhichEndsWithIt) {
    const std::string name = MakeLetters({"rg"});
    ASSERT_TRUE(server.SrvLoad(name));
    const pid_t ours = Reader();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        const bool good = Reader() == 0 && Seen(server, 2) == std::vector<std::string>{"rg"};
        const pid_t own = good ? Reader() : 0;
        static_cast<void>(!write(ends[1], &own, sizeof own));
        _exit(0);
    }
    pid_t theirs = 0;
    EXPECT_EQ(read(ends[0], &theirs, sizeof theirs), static_cast<ssize_t>(sizeof theirs));
    waitpid(child, nullptr, 0);
    EXPECT_GT(theirs, 0);
    EXPECT_NE(theirs, ours);
    EXPECT_TRUE(Comes([&] { return !IsThere(theirs); }));
    EXPECT_THAT(Seen(server, 2), ElementsAre("rg"));
    EXPECT_EQ(Reader(), ours);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(RasterReaderTest, AForkDoesNotWaitForAnImageThatHangsAndTheChildReadsItsOwn) {
    GdalRasterServer other;
    ASSERT_TRUE(other.SrvInit());
    ASSERT_TRUE(other.SrvLoad(MakeLetters({"by"})));
    const std::string hanging = Written(NewName(".vrt"), Hanging(pipe_));
    const std::string fresh = MakeLetters({"rg"});
    const pid_t ours = Reader();
    std::thread first([&] {
        GdalRasterServer hung;
        EXPECT_TRUE(hung.SrvInit());
        EXPECT_FALSE(hung.SrvLoad(hanging));
    });
    ASSERT_TRUE(WaitsAtPipe());
    const auto start = std::chrono::steady_clock::now();
    const bool good = IsSoInAChild([&] {
        // Images that were open before, and new ones, have numbers of their own there.
        return server.SrvLoad(fresh) && Seen(other, 2) == std::vector<std::string>{"by"} &&
               Seen(server, 2) == std::vector<std::string>{"rg"} && Reader() != ours && Reader() != 0;
    });
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << "a minute is the limit of the image";
    EXPECT_TRUE(good);
    EXPECT_TRUE(IsThere(ours));
    kill(ours, SIGKILL);
    first.join();
    LetGo();
    EXPECT_THAT(Seen(other, 2), ElementsAre("by"));
}

TEST_F(RasterReaderTest, WhenTheHostIsKilledItEndsAlsoWhileItHangs) {
    const std::string hanging = Written(NewName(".vrt"), Hanging(pipe_));
    const pid_t child = fork();
    if (child == 0) {
        server.SrvLoad(hanging);
        _exit(0);
    }
    ASSERT_TRUE(WaitsAtPipe());
    pid_t theirs = 0;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        std::ifstream stat(entry.path() / "stat");
        std::string number, program, state;
        pid_t parent = 0;
        if (stat >> number >> program >> state >> parent && parent == child) theirs = std::stoi(number);
    }
    EXPECT_GT(theirs, 0);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(Comes([&] { return !IsThere(theirs); }));
    LetGo();
}

}  // namespace
}  // namespace orvane
