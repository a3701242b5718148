// The lines of a text file, fetched in large pieces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/files.h"
#include "platform/grow_array.h"

namespace orvane {

class TextLines {
public:
    /// Starts at the first byte. The file must outlive this.
    explicit TextLines(InputFile& file) : file_(file), size_bytes_(file.Size_bytes()) {}
    TextLines(const TextLines&) = delete;
    TextLines& operator=(const TextLines&) = delete;

    /// The next line without its end, which is LF or CR LF; a 0 byte ends what is given of it. It may be as long as the file: the
    /// buffer grows to hold it. False behind the last line and without memory. The text is valid until the next call.
    bool Next(std::string_view& line);
    /// Bytes behind the last line given.
    std::uint64_t Remaining() const { return Position() < size_bytes_ ? size_bytes_ - Position() : 0; }
    std::uint64_t Size_bytes() const { return size_bytes_; }

private:
    std::uint64_t Position() const { return readAt_ - (filled_ - pos_); }
    bool Fill();

    InputFile& file_;
    std::uint64_t size_bytes_;
    std::uint64_t readAt_ = 0;  ///< offset of the first byte not fetched
    std::size_t pos_ = 0;       ///< of the next byte, in the buffer
    std::size_t filled_ = 0;
    GrowArray<char> buffer_;
};

}  // namespace orvane
