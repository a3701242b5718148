#include "files/packed_sink.h"

#include <algorithm>
#include <cstring>

namespace orvane {

void PackedSink::Write(const void* data, std::size_t size) {
    position_ += size;
    if (!Good() || size == 0) return;
    if (buffer_.empty() && !buffer_.Resize(kBufferSize)) {
        good_ = false;
        return;
    }
    if (size > kBufferSize - waiting_) Flush();
    if (size >= kBufferSize) {
        good_ = good_ && file_->Write(data, size);
        return;
    }
    std::memcpy(buffer_.data() + waiting_, data, size);
    waiting_ += size;
}

void PackedSink::WriteZeros(std::size_t count) {
    constexpr unsigned char kZeros[256] = {};
    for (; count > 0 && Good(); count -= (std::min)(count, sizeof kZeros)) Write(kZeros, (std::min)(count, sizeof kZeros));
}

bool PackedSink::Close() {
    Flush();
    if (file_ == nullptr) return false;
    const bool closed = file_->Close();
    return closed && good_;
}

void PackedSink::Flush() {
    if (Good() && waiting_ > 0) good_ = file_->Write(buffer_.data(), waiting_);
    waiting_ = 0;
}

}  // namespace orvane
