#include "foreign/raster/remote_image.h"

#include <pthread.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>

namespace orvane {

namespace {

/// The processes of this program. They are never destroyed, because images may outlive whatever is destroyed at the end of a
/// program; the system closes the sockets then, and the processes end.
struct Readers {
    std::mutex mutex;
    ReaderProcess local{RasterSources::LocalFiles};
    ReaderProcess any{RasterSources::Any};
    std::uint32_t images = 0;

    ReaderProcess& Of(RasterSources sources) { return sources == RasterSources::Any ? any : local; }

    static Readers& Get() {
        static Readers* const readers = [] {
            static Readers* made = nullptr;
            made = new Readers;
            // A child that was forked off must not talk into the parent's socket, nor keep it open when the parent is gone.
            pthread_atfork([] { made->mutex.lock(); }, [] { made->mutex.unlock(); },
                           [] {
                               made->local.Abandon();
                               made->any.Abandon();
                               made->mutex.unlock();
                           });
            return made;
        }();
        return *readers;
    }
};

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

std::unique_ptr<RemoteImage> RemoteImage::Open(std::string name, RasterSources sources, std::string& reason) {
    reason = "its name is too long";
    if (name.empty() || name.size() > kMaxImageName) return nullptr;
    std::unique_ptr<RemoteImage> image(new RemoteImage(std::move(name), sources));
    image->StartClock();
    Readers& readers = Readers::Get();
    const std::lock_guard<std::mutex> lock(readers.mutex);
    // 0 once in four thousand million images; a number that is still in use then is answered with false.
    image->number_ = ++readers.images;
    if (image->OpenThere(readers.Of(sources), image->facts_)) return image;
    reason = image->reason_;
    return nullptr;
}

RemoteImage::~RemoteImage() {
    Readers& readers = Readers::Get();
    const std::lock_guard<std::mutex> lock(readers.mutex);
    ReaderProcess& reader = readers.Of(sources_);
    if (reader_ == 0 || reader.Number() != reader_ || reader.Pid() == 0) return;
    StartClock();
    ReaderQuestion question;
    question.ask = ReaderAsk::Close;
    question.image = number_;
    ReaderAnswer answer;
    reader.Ask(question, {}, deadline_, answer, reason_);
}

std::optional<Affine> RemoteImage::OwnPlacement() const {
    if (facts_.hasPlacement == 0) return std::nullopt;
    return facts_.placement;
}

void RemoteImage::StartClock() { deadline_ = std::chrono::steady_clock::now() + std::chrono::seconds(RasterLimit_s()); }

ReaderOutcome RemoteImage::AskOnce(ReaderProcess& reader, ReaderQuestion question, std::string_view name, ReaderAnswer& answer) {
    question.image = number_;
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
        if (outcome == ReaderOutcome::Lost || !IsSound(answer)) return false;
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
                reason_ = "its file has changed";
                reader_ = 0;
                return false;
            }
        }
        if (AskOnce(reader, question, {}, answer) == ReaderOutcome::Answered) return answer.done == 1;
    }
    return false;
}

bool RemoteImage::NotStarted() {
    reason_ = "the reader of images cannot be started";
    return false;
}

double RemoteImage::Cost_bytes(const ImageWindow& window) {
    Readers& readers = Readers::Get();
    const std::lock_guard<std::mutex> lock(readers.mutex);
    ReaderQuestion question;
    question.ask = ReaderAsk::Cost;
    question.window = window;
    ReaderAnswer answer;
    if (!Ask(readers.Of(sources_), question, answer) || !(answer.cost_bytes >= 0)) return HUGE_VAL;
    if (answer.cost_bytes > kMaxCost_bytes)
        reason_ = "too much of it would have to be decoded for this scale: it has no overviews";
    return answer.cost_bytes;
}

bool RemoteImage::Read(const ImageWindow& window, std::span<Rgba> out) {
    if (out.size() != PixelsOf(window) || out.empty() || out.size() > kMaxRead_px) return false;
    Readers& readers = Readers::Get();
    const std::lock_guard<std::mutex> lock(readers.mutex);
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
    const std::lock_guard<std::mutex> lock(readers.mutex);
    return readers.Of(sources).Pid();
}

void EndRasterReaders() {
    Readers& readers = Readers::Get();
    const std::lock_guard<std::mutex> lock(readers.mutex);
    readers.local.End();
    readers.any.End();
}

}  // namespace orvane
