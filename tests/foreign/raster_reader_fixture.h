// The process that reads images, as tests look at it: its files and memory, and images that hang in it.
#pragma once

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "foreign/raster/remote_image.h"
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

inline pid_t Reader() { return RasterReaderPid(RasterSources::LocalFiles); }

/// What the system tells of the reader's memory.
inline long long KiB(const char* what) {
    std::ifstream status("/proc/" + std::to_string(Reader()) + "/status");
    std::string word;
    long long value = 0;
    while (status >> word && word != what) {
    }
    status >> value;
    return value;
}

/// Neither gone nor waiting for nothing but its parent's look.
inline bool IsThere(pid_t pid) {
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
inline std::vector<std::string> OpenFiles(pid_t pid) {
    std::vector<std::string> files;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(pid) + "/fd", error))
        files.push_back(fs::read_symlink(entry.path(), error).string());
    return files;
}

inline bool HasOpen(pid_t pid, const std::string& name) {
    const std::vector<std::string> files = OpenFiles(pid);
    return std::find(files.begin(), files.end(), name) != files.end();
}

/// A composition whose coordinate system sends the library of projections into a pipe, for which nobody stands at the other end.
inline std::string Hanging(const std::string& pipe, const std::string& band = "<VRTRasterBand dataType=\"Byte\" band=\"1\"/>") {
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

}  // namespace
}  // namespace orvane
