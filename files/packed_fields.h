// Packed little-endian records, field after field, the same on every host.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "store/fixed_text.h"

namespace orvane {

template <std::size_t Size>
using PackedBits = std::conditional_t<Size == 1, std::uint8_t, std::conditional_t<Size == 4, std::uint32_t, std::uint64_t>>;

/// A number of 1, 4 or 8 bytes, lowest byte first.
template <class T>
T LoadLittle(const unsigned char* bytes) {
    using Bits = PackedBits<sizeof(T)>;
    static_assert(sizeof(T) == sizeof(Bits));
    Bits bits = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) bits = static_cast<Bits>(bits | static_cast<Bits>(Bits{bytes[i]} << (8 * i)));
    return std::bit_cast<T>(bits);
}

template <class T>
void StoreLittle(T value, unsigned char* bytes) {
    using Bits = PackedBits<sizeof(T)>;
    static_assert(sizeof(T) == sizeof(Bits));
    const auto bits = std::bit_cast<Bits>(value);
    for (std::size_t i = 0; i < sizeof(T); ++i) bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
}

/// Takes the fields of one record. The caller sees to it that the record is long enough.
class FieldReader {
public:
    explicit FieldReader(const unsigned char* bytes) : at_(bytes) {}

    template <class T>
    T Get() {
        const T value = LoadLittle<T>(at_);
        at_ += sizeof(T);
        return value;
    }
    template <class T>
    void Get(T& value) {
        value = Get<T>();
    }
    /// A byte that stands for yes or no: 0 or 1.
    std::uint8_t Flag() { return Get<std::uint8_t>() != 0 ? 1 : 0; }
    /// The text of a field of `size` bytes, whose last byte is the terminator whatever it holds.
    std::string_view Text(std::size_t size) {
        const std::string_view field(reinterpret_cast<const char*>(at_), size - 1);
        at_ += size;
        return TillZero(field);
    }
    void Skip(std::size_t size) { at_ += size; }

private:
    const unsigned char* at_;
};

/// Fills the fields of one record of `Size` bytes; what is not filled is 0.
template <std::size_t Size>
class FieldWriter {
public:
    template <class T>
    void Put(T value) {
        StoreLittle(value, bytes_ + size_);
        size_ += sizeof(T);
    }
    /// Cut to leave room for one 0 byte, and filled up with zeros.
    void Text(std::string_view text, std::size_t fieldSize) {
        text = TillZero(text).substr(0, fieldSize - 1);
        if (!text.empty()) std::memcpy(bytes_ + size_, text.data(), text.size());
        size_ += fieldSize;
    }
    void Skip(std::size_t size) { size_ += size; }

    const unsigned char* Bytes() const { return bytes_; }
    std::size_t Count() const { return size_; }

private:
    unsigned char bytes_[Size] = {};
    std::size_t size_ = 0;
};

}  // namespace orvane
