// The bytes of a file one after the other, fetched in large pieces.
#pragma once

#include <array>
#include <cstdint>

#include "platform/files.h"

namespace orvane {

class ByteSource {
public:
    static constexpr int kEnd = -1;

    /// Reads from the first byte on. The file must outlive this.
    explicit ByteSource(InputFile& file) : file_(file) {}
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// The next byte, 0 to 255, without taking it; kEnd behind the last one, and from where the system cannot read on.
    int Peek() {
        if (pos_ == filled_ && !Fill()) return kEnd;
        return bytes_[pos_];
    }
    /// The same, and takes it.
    int Next() {
        const int byte = Peek();
        if (byte != kEnd) ++pos_;
        return byte;
    }

    /// How many bytes were taken. At the end it is the file's size, unless the system could not read on.
    std::uint64_t Taken_bytes() const { return offset_ + pos_; }

private:
    bool Fill() {
        offset_ += filled_;
        pos_ = 0;
        filled_ = file_.ReadAt(offset_, bytes_.data(), bytes_.size());
        return filled_ != 0;
    }

    InputFile& file_;
    std::uint64_t offset_ = 0;  ///< of the first byte held
    std::size_t pos_ = 0;
    std::size_t filled_ = 0;
    std::array<unsigned char, 16384> bytes_;
};

}  // namespace orvane
