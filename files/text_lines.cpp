#include "files/text_lines.h"

#include <algorithm>
#include <cstring>

#include "store/fixed_text.h"

namespace orvane {

bool TextLines::Next(std::string_view& line) {
    std::size_t searched = 0;
    const char* end = nullptr;
    for (;;) {
        const std::size_t held = filled_ - pos_;
        const char* begin = held > 0 ? buffer_.data() + pos_ : nullptr;
        if (held > searched) end = static_cast<const char*>(std::memchr(begin + searched, '\n', held - searched));
        if (end != nullptr) {
            line = {begin, static_cast<std::size_t>(end - begin)};
            break;
        }
        searched = held;
        if (Fill()) continue;
        if (held == 0) return false;
        line = {begin, held};
        break;
    }
    pos_ += line.size() + (end != nullptr ? 1 : 0);
    if (end != nullptr && line.ends_with('\r')) line.remove_suffix(1);
    line = TillZero(line);
    return true;
}

/// Fetches more behind what is held. False, with what is held where it was, when there is no more or no memory.
bool TextLines::Fill() {
    constexpr std::size_t kLeastBuffer = 256 * 1024;
    const std::uint64_t left = size_bytes_ - (std::min)(size_bytes_, readAt_);
    if (left == 0) return false;
    const std::size_t held = filled_ - pos_;
    if (held == buffer_.size()) {
        const std::size_t larger = (std::max)(kLeastBuffer, 2 * held);
        const auto all = static_cast<std::size_t>((std::min)(std::uint64_t{larger}, held + left));
        if (!buffer_.Resize(all)) return false;
    }
    if (held > 0) std::memmove(buffer_.data(), buffer_.data() + pos_, held);
    pos_ = 0;
    filled_ = held;
    const auto wanted = static_cast<std::size_t>((std::min)(std::uint64_t{buffer_.size() - held}, left));
    const std::size_t got = file_.ReadAt(readAt_, buffer_.data() + held, wanted);
    readAt_ += got;
    filled_ += got;
    return got > 0;
}

}  // namespace orvane
