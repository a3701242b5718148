// The process that reads images: killed, hanging, out of memory, missing, telling nonsense, left alone.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "foreign/raster/remote_image.h"
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
    const auto kib = [](const char* what) {
        std::ifstream status("/proc/" + std::to_string(Reader()) + "/status");
        std::string word;
        long long value = 0;
        while (status >> word && word != what) {
        }
        status >> value;
        return value;
    };
    const long long start = kib("VmSize:");
    ASSERT_GT(start, 0);
    // A description of three GiB, which is read as a whole, in a file that takes no room.
    Written(name + ".aux.xml", "<PAMDataset>");
    fs::resize_file(name + ".aux.xml", std::uintmax_t{3} << 30);
    EXPECT_TRUE(server.SrvLoad(name)) << "the description is left out";
    EXPECT_LT(kib("VmPeak:"), start + static_cast<long long>(kReaderMemory_bytes / 1024));
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
    const std::string size = std::to_string(sizeof(ReaderAnswer));
    const std::string name = MakeLetters({"rg"});
    for (const std::string& does :
         {std::string("exit 0"), std::string("exec sleep 100"), std::string("printf x >&3; exec sleep 100"),
          "head -c " + size + " /dev/zero >&3; exec sleep 100",                   // no
          "head -c " + size + " /dev/zero | tr '\\0' '\\1' >&3; exec sleep 100",  // neither yes nor no
          "head -c " + size + " /dev/zero | tr '\\0' '\\377' >&3; exec sleep 100",
          "(printf '\\1\\0\\0\\0'; head -c " + std::to_string(sizeof(ReaderAnswer) - 4) + " /dev/zero) | dd bs=" + size +
              " iflag=fullblock 2>/dev/null >&3; exec sleep 100",  // yes, but without a size
          std::string("head -c 4096 /dev/zero >&3; exec sleep 100")}) {
        const std::string script = Written(NewName(".sh"), "#!/bin/sh\n" + does + "\n");
        fs::permissions(script, fs::perms::owner_all);
        const Variable program("ORVANE_RASTER_READER", script);
        const Variable limit("ORVANE_RASTER_SECONDS", "1");
        EndRasterReaders();
        EXPECT_FALSE(server.SrvLoad(name)) << does;
        EXPECT_FALSE(LastRasterFailure().empty()) << does;
        EXPECT_EQ(server.SrvImgWidth(), 0) << does;
    }
    EndRasterReaders();
    EXPECT_TRUE(server.SrvLoad(name));
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
