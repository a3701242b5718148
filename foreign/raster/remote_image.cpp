#include "foreign/raster/remote_image.h"

#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <mutex>
#include <new>
#include <utility>

namespace orvane {

namespace {

/// The processes of this program. They are never destroyed, because images may outlive whatever is destroyed at the end of a
/// program; the system closes the sockets then, and the processes end.
struct Readers {
    std::timed_mutex mutex;
    ReaderProcess local{RasterSources::LocalFiles};
    ReaderProcess any{RasterSources::Any};
    std::uint32_t images = 0;

    explicit Readers(std::uint32_t firstImages = 0) : images(firstImages) {}

    ReaderProcess& Of(RasterSources sources) { return sources == RasterSources::Any ? any : local; }

    static Readers& Get() {
        static Readers* const readers = [] {
            made = new Readers;
            pthread_atfork(BeforeFork, AfterForkInParent, AfterForkInChild);
            return made;
        }();
        return *readers;
    }

private:
    static void BeforeFork() { isHeld = made->mutex.try_lock_for(kForkWait); }
    static void AfterForkInParent() {
        if (isHeld) made->mutex.unlock();
    }
    /// A child must not talk into the parent's socket, nor keep it open when the parent is gone.
    static void AfterForkInChild() {
        made->local.Abandon();
        made->any.Abandon();
        if (isHeld) {
            made->mutex.unlock();
        } else {
            // The thread that holds them is not here to let go of them. Images that are open keep their numbers.
            new (made) Readers(made->images);
        }
    }

    /// A fork waits for what is soon done, but not for an image that hangs.
    static constexpr std::chrono::milliseconds kForkWait{200};
    static inline Readers* made = nullptr;
    static inline thread_local bool isHeld = false;
};
using ReadersLock = std::lock_guard<std::timed_mutex>;

constexpr int kAttempts = 2;

/// What the reader says of an image could come from anybody who has taken it over.
bool IsSound(const ReaderAnswer& answer) {
    return answer.done == 1 && answer.width_px > 0 && answer.height_px > 0 &&
           (answer.hasPlacement == 0 || Inverse(answer.placement).has_value());
}

/// Its words in one line of plain letters.
std::string ReasonOf(const ReaderAnswer& answer) {
    std::string reason(answer.reason, (std::min)(std::size_t{answer.reasonLength}, sizeof answer.reason));
    std::replace_if(
        reason.begin(), reason.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return reason.empty() ? "it cannot be read" : reason;
}

}  // namespace

/// The reader's work for an image, from when this thread has the reader to itself: waiting for others takes none of its time.
class RemoteImage::Turn {
public:
    explicit Turn(RemoteImage& image) : image_(image) { image.deadline_ = std::chrono::steady_clock::now() + image.left_; }
    ~Turn() { image_.left_ = image_.deadline_ - std::chrono::steady_clock::now(); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    RemoteImage& image_;
};

std::unique_ptr<RemoteImage> RemoteImage::Open(std::string name, RasterSources sources, std::string& reason) {
    reason = "its name is too long";
    if (name.empty() || name.size() > kMaxImageName) return nullptr;
    std::unique_ptr<RemoteImage> image(new RemoteImage(std::move(name), sources));
    image->StartClock();
    Readers& readers = Readers::Get();
    const ReadersLock lock(readers.mutex);
    const Turn turn(*image);
    // 0 once in four thousand million images; a number that is still in use then is answered with false.
    image->number_ = ++readers.images;
    if (image->OpenThere(readers.Of(sources), image->facts_)) return image;
    reason = image->reason_;
    return nullptr;
}

RemoteImage::~RemoteImage() {
    Readers& readers = Readers::Get();
    const ReadersLock lock(readers.mutex);
    ReaderProcess& reader = readers.Of(sources_);
    if (reader_ == 0 || reader.Number() != reader_ || reader.Pid() == 0) return;
    StartClock();
    const Turn turn(*this);
    CloseThere(reader);
}

void RemoteImage::CloseThere(ReaderProcess& reader) {
    ReaderQuestion question;
    question.ask = ReaderAsk::Close;
    ReaderAnswer answer;
    AskOnce(reader, question, {}, answer);
    reader_ = 0;
}

std::optional<Affine> RemoteImage::OwnPlacement() const {
    if (facts_.hasPlacement == 0) return std::nullopt;
    return facts_.placement;
}

void RemoteImage::StartClock() { left_ = std::chrono::seconds(RasterLimit_s()); }

ReaderOutcome RemoteImage::AskOnce(ReaderProcess& reader, ReaderQuestion question, std::string_view name, ReaderAnswer& answer) {
    question.image = number_;
    if (std::chrono::steady_clock::now() >= deadline_) {
        reason_ = kTookTooLong;
        return ReaderOutcome::Late;
    }
    const ReaderOutcome outcome = reader.Ask(question, name, deadline_, answer, reason_);
    // What was done to it once would be done to each new process.
    if (outcome == ReaderOutcome::Lost) isLost_ = true;
    if (outcome == ReaderOutcome::Answered && answer.done != 1) reason_ = ReasonOf(answer);
    return outcome;
}

bool RemoteImage::OpenThere(ReaderProcess& reader, ReaderAnswer& answer) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (!reader.Ensure()) return NotStarted();
        const ReaderOutcome outcome = AskOnce(reader, {}, name_, answer);
        if (outcome == ReaderOutcome::Unheard) continue;
        if (outcome != ReaderOutcome::Answered) return false;
        if (!IsSound(answer)) {
            if (answer.done == 1) reason_ = kNonsense;
            return false;
        }
        reader_ = reader.Number();
        return true;
    }
    return false;
}

bool RemoteImage::Ask(ReaderProcess& reader, const ReaderQuestion& question, ReaderAnswer& answer) {
    for (int attempt = 0; attempt < kAttempts && !isLost_; ++attempt) {
        if (!reader.Ensure()) return NotStarted();
        if (reader.Number() != reader_) {
            ReaderAnswer again;
            if (!OpenThere(reader, again)) return false;
            if (again.width_px != facts_.width_px || again.height_px != facts_.height_px) {
                CloseThere(reader);
                reason_ = "its file has changed";
                return false;
            }
        }
        const ReaderOutcome outcome = AskOnce(reader, question, {}, answer);
        if (outcome == ReaderOutcome::Answered) return answer.done == 1;
        if (outcome == ReaderOutcome::Late) return false;
    }
    return false;
}

bool RemoteImage::NotStarted() {
    reason_ = "the reader of images cannot be started";
    return false;
}

double RemoteImage::Cost_bytes(const ImageWindow& window) {
    Readers& readers = Readers::Get();
    const ReadersLock lock(readers.mutex);
    const Turn turn(*this);
    ReaderQuestion question;
    question.ask = ReaderAsk::Cost;
    question.window = window;
    ReaderAnswer answer;
    if (!Ask(readers.Of(sources_), question, answer)) return HUGE_VAL;
    if (!(answer.cost_bytes >= 0)) {
        reason_ = kNonsense;
        return HUGE_VAL;
    }
    if (answer.cost_bytes > kMaxCost_bytes)
        reason_ = "too much of it would have to be decoded for this scale: it, or its mask, has no overviews";
    return answer.cost_bytes;
}

bool RemoteImage::Read(const ImageWindow& window, std::span<Rgba> out) {
    if (out.size() != PixelsOf(window) || out.empty() || out.size() > kMaxRead_px) return false;
    Readers& readers = Readers::Get();
    const ReadersLock lock(readers.mutex);
    const Turn turn(*this);
    ReaderProcess& reader = readers.Of(sources_);
    ReaderQuestion question;
    question.ask = ReaderAsk::Read;
    question.window = window;
    ReaderAnswer answer;
    if (!Ask(reader, question, answer)) return false;
    std::copy_n(reader.Pixels(), out.size(), out.begin());
    return true;
}

pid_t RasterReaderPid(RasterSources sources) {
    Readers& readers = Readers::Get();
    const ReadersLock lock(readers.mutex);
    return readers.Of(sources).Pid();
}

void EndRasterReaders() {
    Readers& readers = Readers::Get();
    const ReadersLock lock(readers.mutex);
    readers.local.End();
    readers.any.End();
}

}  // namespace orvane
