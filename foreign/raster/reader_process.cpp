#include "foreign/raster/reader_process.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

extern char** environ;

namespace orvane {

namespace {

std::atomic<std::uint64_t> startedReaders{0};

/// A descriptor that is closed at the end, and stands above those that the reader is started with.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {
        if (fd_ < 0 || fd_ > kReaderPixels) return;
        const int high = fcntl(fd_, F_DUPFD_CLOEXEC, kReaderPixels + 1);
        close(fd_);
        fd_ = high;
    }
    ~Descriptor() {
        if (fd_ >= 0) close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return fd_; }
    int Release() { return std::exchange(fd_, -1); }

private:
    int fd_;
};

/// Memory of a fixed size, which the reader can neither shorten nor lengthen under the host's feet.
int MakePixelMemory() {
    const int fd = memfd_create("orvane4 pixels", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (fd < 0) return fd;
    if (ftruncate(fd, sizeof(ReaderMemory)) == 0 && fcntl(fd, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) == 0)
        return fd;
    close(fd);
    return -1;
}

/// How the reader is started: no descriptors but its own, no signal of the host's that is blocked or passed over, and a process
/// group of its own, so that a key that interrupts the host is not meant for it.
class SpawnPlan {
public:
    SpawnPlan(int socket, int pixels) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawnattr_init(&attributes_);
        posix_spawn_file_actions_adddup2(&actions_, socket, kReaderSocket);
        posix_spawn_file_actions_adddup2(&actions_, pixels, kReaderPixels);
        posix_spawn_file_actions_addopen(&actions_, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, 1, "/dev/null", O_WRONLY, 0);
#ifndef ORVANE_SANITIZED  // whose reports go there
        posix_spawn_file_actions_addopen(&actions_, 2, "/dev/null", O_WRONLY, 0);
#endif
        posix_spawn_file_actions_addclosefrom_np(&actions_, kReaderPixels + 1);
        sigset_t none, all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnPlan() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    /// The number of the process; 0 when it cannot be started.
    pid_t Start(const std::string& program, const char* sources) const {
        std::string words[] = {program, kReaderVersion, sources};
        char* const arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
        pid_t pid = 0;
        return posix_spawn(&pid, program.c_str(), &actions_, &attributes_, arguments, environ) == 0 ? pid : 0;
    }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

/// -1 when it is no child of this program any more, its number when it has just ended, 0 while it runs.
pid_t Reap(pid_t pid) {
    pid_t done = 0;
    do {
        done = waitpid(pid, nullptr, WNOHANG);
    } while (done < 0 && errno == EINTR);
    return done;
}

}  // namespace

std::string RasterReaderProgram() {
    if (const char* const told = std::getenv("ORVANE_RASTER_READER")) return told;
    // Once, because the program may go to another folder later.
    static const std::string beside = [] {
        static const char here = 0;
        Dl_info info{};
        const std::string path = dladdr(&here, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
        // It stands beside the file that a link leads to.
        std::error_code error;
        const std::filesystem::path whole = std::filesystem::weakly_canonical(path, error);
        // A bare name would be looked for in the folder at hand.
        return whole.is_absolute() ? (whole.parent_path() / "orvane4_raster_reader").string() : std::string();
    }();
    return beside;
}

bool HasRasterReader() {
    const std::string program = RasterReaderProgram();
    std::error_code error;
    return std::filesystem::is_regular_file(program, error) && access(program.c_str(), X_OK) == 0;
}

bool ReaderProcess::Ensure() { return IsAlive() || Start(); }

bool ReaderProcess::Start() {
    End();
    if (lingering_ != 0 && Reap(lingering_) != 0) lingering_ = 0;
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return false;
    Descriptor own(ends[0]);
    const Descriptor theirs(ends[1]);
    const Descriptor memory(MakePixelMemory());
    if (own.Get() < 0 || theirs.Get() < 0 || memory.Get() < 0) return false;
    void* const pixels = mmap(nullptr, sizeof(ReaderMemory), PROT_READ, MAP_SHARED, memory.Get(), 0);
    if (pixels == MAP_FAILED) return false;
    memory_ = static_cast<ReaderMemory*>(pixels);
    const SpawnPlan plan(theirs.Get(), memory.Get());
    pid_ = plan.Start(RasterReaderProgram(), sources_ == RasterSources::Any ? kReaderOfAny : kReaderOfLocalFiles);
    socket_ = own.Release();
    if (pid_ == 0) {
        Release();
        return false;
    }
    number_ = ++startedReaders;
    return true;
}

bool ReaderProcess::IsAlive() {
    if (pid_ == 0) return false;
    pollfd look{socket_, 0, 0};
    return poll(&look, 1, 0) == 0 && Reap(pid_) == 0;
}

void ReaderProcess::End() {
    if (pid_ != 0 && Reap(pid_) == 0) {
        kill(pid_, SIGKILL);
        // What waits inside the system, for a disk that does not answer, dies later; nobody waits for it here.
        for (int i = 0; i < 1000; ++i) {
            lingering_ = Reap(pid_) == 0 ? pid_ : 0;
            if (lingering_ == 0) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    Release();
}

void ReaderProcess::Abandon() {
    lingering_ = 0;
    Release();
}

void ReaderProcess::Release() {
    // A program that is forked off in the middle of it must not let go once more of what is another thread's by then.
    const int socket = std::exchange(socket_, -1);
    if (socket >= 0) close(socket);
    ReaderMemory* const memory = std::exchange(memory_, nullptr);
    if (memory != nullptr) munmap(memory, sizeof(ReaderMemory));
    pid_ = 0;
}

ReaderOutcome ReaderProcess::Ask(const ReaderQuestion& question, std::string_view name, ReaderDeadline deadline,
                                 ReaderAnswer& answer, std::string& reason) {
    constexpr char kEnded[] = "the reader of images ended";
    reason = kEnded;
    if (Send(question, name) && Receive(deadline, answer, reason)) {
        reason.clear();
        return ReaderOutcome::Answered;
    }
    const bool begun = memory_->begun.load() == question_;
    End();
    if (begun || reason == kNonsense) return ReaderOutcome::Lost;
    return reason == kTookTooLong ? ReaderOutcome::Late : ReaderOutcome::Unheard;
}

bool ReaderProcess::Send(ReaderQuestion question, std::string_view name) {
    question_ = question_ == UINT32_MAX ? 1 : question_ + 1;
    question.number = question_;
    question.nameLength = name.size();
    iovec parts[] = {{&question, sizeof question}, {const_cast<char*>(name.data()), name.size()}};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    ssize_t sent = 0;
    // There is room: what was asked before was answered.
    do {
        sent = sendmsg(socket_, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (sent < 0 && errno == EINTR);
    return sent == static_cast<ssize_t>(sizeof question + name.size());
}

bool ReaderProcess::Receive(ReaderDeadline deadline, ReaderAnswer& answer, std::string& reason) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
        pollfd look{socket_, POLLIN, 0};
        const int ready = poll(&look, 1, static_cast<int>(std::clamp<std::int64_t>(left, 0, 1 << 30)));
        if (ready < 0 && errno == EINTR) continue;
        if (ready == 0) reason = kTookTooLong;
        if (ready <= 0) return false;
        // One byte more than an answer has, so that a longer one shows.
        char bytes[sizeof(ReaderAnswer) + 1];
        const ssize_t length = recv(socket_, bytes, sizeof bytes, MSG_DONTWAIT);
        if (length < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (length > 0 && length != static_cast<ssize_t>(sizeof(ReaderAnswer))) reason = kNonsense;
        if (length != static_cast<ssize_t>(sizeof(ReaderAnswer))) return false;
        std::memcpy(&answer, bytes, sizeof answer);
        return true;
    }
}

}  // namespace orvane
