// A byte string of bounded length inside a record: bytes of code page 932, cut to fit.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace orvane {

/// The text before its first 0 byte, which is all that a record can keep of it.
inline std::string_view TillZero(std::string_view text) { return text.substr(0, text.find('\0')); }

/// Holds at most `N` bytes and a terminator. A text with a 0 byte ends there.
template <std::size_t N>
class FixedText {
public:
    /// Keeps the first `N` bytes; a two-byte character may lose its second. The text may be this object's own.
    void Set(std::string_view text) {
        const std::size_t given = TillZero(text).size();
        const std::size_t size = given < N ? given : N;
        if (size > 0) std::memmove(bytes_, text.data(), size);  // an empty view may have no bytes to point at
        bytes_[size] = '\0';
    }
    void Clear() { bytes_[0] = '\0'; }
    bool Empty() const { return bytes_[0] == '\0'; }
    const char* CStr() const { return bytes_; }
    std::string_view View() const { return {bytes_, std::strlen(bytes_)}; }
    friend bool operator==(const FixedText& a, std::string_view b) { return a.View() == b; }

private:
    char bytes_[N + 1] = {};
};

}  // namespace orvane
