// The program that reads images, as the host sees it: started, asked, and ended when it does not answer.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foreign/raster/raster_sources.h"
#include "foreign/raster/reader_protocol.h"

namespace orvane {

/// The program: the file that the environment names in ORVANE_RASTER_READER, else "orvane4_raster_reader" beside the library or
/// program that this code is in.
std::string RasterReaderProgram();
/// Whether it is there and can be run.
bool HasRasterReader();

using ReaderDeadline = std::chrono::steady_clock::time_point;

enum class ReaderOutcome : std::uint8_t {
    Answered,
    Lost,     ///< it ended while it was at it, or was ended because it took too long, or answered nonsense
    Unheard,  ///< it ended before it took the question up
    Late,     ///< the time was over before it took the question up
};

inline constexpr char kTookTooLong[] = "it took too long";
inline constexpr char kNonsense[] = "the reader of images answered nonsense";

/// One process that reads images. Decoders of some hundred formats run in it, so that whatever a bad image does to them - hang,
/// crash, take all memory - ends with it, and the host is told in time. Not to be used by two threads at once.
class ReaderProcess {
public:
    explicit ReaderProcess(RasterSources sources) : sources_(sources) {}
    ~ReaderProcess() { End(); }
    ReaderProcess(const ReaderProcess&) = delete;
    ReaderProcess& operator=(const ReaderProcess&) = delete;

    /// Starts one where none runs, also where the last one has ended in between; false when none can be started.
    bool Ensure();
    /// Which one runs, counted over the whole program: what an earlier one had open is gone.
    std::uint64_t Number() const { return number_; }
    /// 0 while none runs.
    pid_t Pid() const { return pid_; }
    /// Asks it and waits for the answer. `reason` tells why there is none, and nothing when there is one.
    ReaderOutcome Ask(const ReaderQuestion& question, std::string_view name, ReaderDeadline deadline, ReaderAnswer& answer,
                      std::string& reason);
    /// What it wrote for the last read. It may change while it is looked at, if the reader is not what it was.
    const Rgba* Pixels() const { return memory_->pixels; }
    /// Ends it, at once.
    void End();
    /// After a fork the process is the parent's: lets go of it without a word.
    void Abandon();

private:
    bool Start();
    bool IsAlive();
    bool Send(ReaderQuestion question, std::string_view name);
    bool Receive(ReaderDeadline deadline, ReaderAnswer& answer, std::string& reason);
    void Release();

    RasterSources sources_;
    std::uint64_t number_ = 0;
    pid_t pid_ = 0;
    pid_t lingering_ = 0;  ///< killed, and not dead yet when it was last looked at
    int socket_ = -1;
    ReaderMemory* memory_ = nullptr;
    std::uint32_t question_ = 0;
};

}  // namespace orvane
