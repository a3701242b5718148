// The process that reads images: killed, hanging, out of memory, missing, telling nonsense, left alone.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
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

#include "foreign/raster_reader/plain_files.h"
#include "foreign/raster_reader/reader_fences.h"
#include "tests/foreign/raster_reader_fixture.h"

namespace orvane {
namespace {

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
    const std::string tooMuch = "too much of it would have to be decoded for this scale: it, or its mask, has no overviews";
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
