// Bytes into a file, handed to the system in large pieces.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "files/packed_fields.h"
#include "platform/files.h"
#include "platform/grow_array.h"

namespace orvane {

class PackedSink {
public:
    /// `file` may be null, for one that could not be created: Close says so.
    explicit PackedSink(std::unique_ptr<OutputFile> file) : file_(std::move(file)) {}
    PackedSink(const PackedSink&) = delete;
    PackedSink& operator=(const PackedSink&) = delete;

    /// Whether the file could be created and all went well so far. What is written after a failure goes nowhere.
    bool Good() const { return file_ != nullptr && good_; }
    /// Bytes written so far, those included that still wait.
    std::uint64_t Position() const { return position_; }

    void Write(const void* data, std::size_t size);
    void Write(std::string_view bytes) { Write(bytes.data(), bytes.size()); }
    template <std::size_t Size>
    void Write(const FieldWriter<Size>& record) {
        Write(record.Bytes(), record.Count());
    }
    template <class T>
    void WriteNumbers(const T* numbers, std::size_t count) {
        if constexpr (std::endian::native == std::endian::little) {
            Write(numbers, count * sizeof(T));
        } else {
            unsigned char bytes[sizeof(T)];
            for (std::size_t i = 0; i < count; ++i) {
                StoreLittle(numbers[i], bytes);
                Write(bytes, sizeof bytes);
            }
        }
    }
    /// `count` zero bytes.
    void WriteZeros(std::size_t count);
    /// Hands on what waits and closes the file. False when the system did not take everything.
    bool Close();

private:
    void Flush();

    static constexpr std::size_t kBufferSize = 256 * 1024;

    std::unique_ptr<OutputFile> file_;
    bool good_ = true;
    std::uint64_t position_ = 0;
    GrowArray<unsigned char> buffer_;
    std::size_t waiting_ = 0;
};

}  // namespace orvane
