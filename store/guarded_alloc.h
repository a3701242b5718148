// Growth that the arrays do not do by themselves, under the same rules: it can fail, tests can make it fail, nothing escapes.
#pragma once

#include <algorithm>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>

#include "platform/grow_array.h"

namespace orvane {

/// Room for `n` elements in all, by doubling, so that asking for one more each time stays cheap.
template <class T>
[[nodiscard]] bool EnsureRoom(GrowArray<T>& array, std::size_t n) noexcept {
    if (n <= array.capacity()) return true;
    const std::size_t doubled = array.capacity() * 2;
    return array.Reserve(n > doubled ? n : doubled);
}

/// A new object, or null.
template <class T>
std::unique_ptr<T> NewGuarded() noexcept {
    if (ArrayFaults::Fails(sizeof(T))) return nullptr;
    return std::unique_ptr<T>(new (std::nothrow) T);
}

/// False leaves `to` as it was. An empty text always succeeds.
[[nodiscard]] inline bool AssignText(std::string& to, std::string_view text) noexcept {
    if (text.empty()) {
        to.clear();
        return true;
    }
    if (ArrayFaults::Fails(text.size())) return false;
    try {
        to.assign(text);
        return true;
    } catch (...) {
        return false;
    }
}

/// Makes room for `size` bytes, so that a later assignment of so many cannot fail. False leaves `text` as it was.
[[nodiscard]] inline bool ReserveText(std::string& text, std::size_t size) noexcept {
    if (size == 0) return true;
    if (ArrayFaults::Fails(size)) return false;
    try {
        text.reserve(size);
        return true;
    } catch (...) {
        return false;
    }
}

/// Gives `to`, which must hold nothing yet, a copy of the elements. False leaves it empty.
template <class T>
[[nodiscard]] bool CopyArray(OwnedArray<T>& to, std::span<const T> from) noexcept {
    if (!to.Resize(0, from.size(), false)) return false;
    std::copy(from.begin(), from.end(), to.Get());
    return true;
}

}  // namespace orvane
