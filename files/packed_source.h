// Packed records out of a file, fetched in large pieces.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "files/packed_fields.h"
#include "platform/files.h"
#include "platform/grow_array.h"

namespace orvane {

class PackedSource {
public:
    static constexpr std::size_t kMaxRecord = 2048;

    /// Starts at the first byte. The file must outlive this.
    explicit PackedSource(InputFile& file) : file_(file), size_bytes_(file.Size_bytes()) {}
    PackedSource(const PackedSource&) = delete;
    PackedSource& operator=(const PackedSource&) = delete;

    std::uint64_t Size_bytes() const { return size_bytes_; }
    /// Offset of the next byte.
    std::uint64_t Position() const { return bufferAt_ + pos_; }
    /// Bytes from there to the end of the file.
    std::uint64_t Remaining() const { return Position() < size_bytes_ ? size_bytes_ - Position() : 0; }
    /// Goes to an offset, which may lie behind the end.
    void Seek(std::uint64_t offset);

    /// The next `size` bytes, at most kMaxRecord, or null when there are fewer, when the system cannot read them or there is no
    /// memory for a buffer. Valid until the next call.
    const unsigned char* Take(std::size_t size);
    /// The next bytes, to `to`. False when there are fewer.
    bool Read(void* to, std::size_t size);
    /// The next `count` numbers. False when there are fewer.
    template <class T>
    bool ReadNumbers(T* to, std::size_t count) {
        if (!Read(to, count * sizeof(T))) return false;
        if constexpr (std::endian::native != std::endian::little) {
            for (std::size_t i = 0; i < count; ++i) to[i] = LoadLittle<T>(reinterpret_cast<const unsigned char*>(to + i));
        }
        return true;
    }

private:
    bool Fill(std::size_t size);

    InputFile& file_;
    std::uint64_t size_bytes_;
    std::uint64_t bufferAt_ = 0;  ///< offset of the first byte held
    std::size_t pos_ = 0;         ///< of the next byte, in the buffer
    std::size_t filled_ = 0;
    std::size_t fetch_ = 0;  ///< how much the last fetch asked for
    GrowArray<unsigned char> buffer_;
};

}  // namespace orvane
