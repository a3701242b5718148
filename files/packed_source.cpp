#include "files/packed_source.h"

#include <algorithm>
#include <cstring>

namespace orvane {
namespace {

// A jump fetches little, because the next one may follow at once; reading on from there fetches more and more.
constexpr std::size_t kLeastFetch = 8 * 1024;
constexpr std::size_t kMostFetch = 256 * 1024;

}  // namespace

void PackedSource::Seek(std::uint64_t offset) {
    if (offset >= bufferAt_ && offset - bufferAt_ <= filled_) {
        pos_ = static_cast<std::size_t>(offset - bufferAt_);
        return;
    }
    bufferAt_ = offset;
    pos_ = filled_ = 0;
    fetch_ = 0;
}

/// Makes the buffer hold at least `size` bytes from the next one on.
bool PackedSource::Fill(std::size_t size) {
    if (Remaining() < size) return false;
    fetch_ = (std::clamp)(fetch_ * 2, kLeastFetch, kMostFetch);
    const auto wanted = static_cast<std::size_t>((std::min)(std::uint64_t{fetch_}, Remaining()));
    const std::size_t kept = filled_ - pos_;
    if (buffer_.size() < wanted && !buffer_.Resize(wanted)) return false;
    if (kept > 0) std::memmove(buffer_.data(), buffer_.data() + pos_, kept);
    bufferAt_ += pos_;
    pos_ = 0;
    filled_ = kept;
    filled_ += file_.ReadAt(bufferAt_ + kept, buffer_.data() + kept, wanted - kept);
    return filled_ >= size;
}

const unsigned char* PackedSource::Take(std::size_t size) {
    if (filled_ - pos_ < size && !Fill(size)) return nullptr;
    const unsigned char* record = buffer_.data() + pos_;
    pos_ += size;
    return record;
}

bool PackedSource::Read(void* to, std::size_t size) {
    if (size > Remaining()) return false;
    auto* bytes = static_cast<unsigned char*>(to);
    while (size > 0) {
        const std::size_t held = (std::min)(size, filled_ - pos_);
        if (held > 0) std::memcpy(bytes, buffer_.data() + pos_, held);
        pos_ += held;
        bytes += held;
        size -= held;
        if (size >= kMostFetch) {
            // More than the buffer could hold: it would only be copied once more.
            const std::size_t got = file_.ReadAt(Position(), bytes, size);
            Seek(Position() + got);
            return got == size;
        }
        if (size > 0 && !Fill(1)) return false;
    }
    return true;
}

}  // namespace orvane
