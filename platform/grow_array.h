// The arrays of the store and the readers. Their growth can fail, and tests can make it fail; nothing here throws, and a growth
// that failed leaves the object as it was.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace orvane {

/// Makes array growth fail in tests. All of it is per thread, and off until asked for.
class ArrayFaults {
public:
    /// The `n`-th growth from now fails (1 is the next one); those behind it succeed again.
    static void FailNth(std::int64_t n) noexcept { Set(n, n); }
    /// The `n`-th growth from now and all that follow fail.
    static void FailFrom(std::int64_t n) noexcept { Set(n, (std::numeric_limits<std::int64_t>::max)()); }
    /// Every growth to more than this many bytes fails.
    static void FailOver(std::size_t bytes) noexcept {
        Clear();
        limit_bytes_ = bytes;
    }
    /// Growth succeeds again, and the count starts at 0.
    static void Clear() noexcept { Set(0, 0); }
    /// Growths asked for on this thread since the last of the calls above, failed ones included.
    static std::int64_t Count() noexcept { return count_; }
    /// The most bytes that one growth on this thread asked for since then.
    static std::size_t Largest_bytes() noexcept { return largest_bytes_; }
    /// Asked by the arrays, once for each growth.
    static bool Fails(std::size_t bytes) noexcept {
        ++count_;
        if (bytes > largest_bytes_) largest_bytes_ = bytes;
        return (count_ >= first_ && count_ <= last_) || bytes > limit_bytes_;
    }

private:
    static constexpr std::size_t kNoLimit = (std::numeric_limits<std::size_t>::max)();

    static void Set(std::int64_t first, std::int64_t last) noexcept {
        count_ = 0;
        largest_bytes_ = 0;
        first_ = first;
        last_ = last;
        limit_bytes_ = kNoLimit;
    }

    static inline thread_local std::int64_t count_ = 0;
    static inline thread_local std::size_t largest_bytes_ = 0;
    static inline thread_local std::int64_t first_ = 0;
    static inline thread_local std::int64_t last_ = 0;
    static inline thread_local std::size_t limit_bytes_ = kNoLimit;
};

/// Gives `block` the size of `count` elements, moving it where needed; null, with the block untouched, when it cannot.
inline void* GrowBlock(void* block, std::size_t count, std::size_t elementSize_bytes) noexcept {
    if (count > static_cast<std::size_t>((std::numeric_limits<std::ptrdiff_t>::max)()) / elementSize_bytes) return nullptr;
    if (ArrayFaults::Fails(count * elementSize_bytes)) return nullptr;
    return std::realloc(block, count * elementSize_bytes);
}

/// An array that knows its size. Elements may own other arrays: they travel by their moves, which must not throw.
template <class T>
class GrowArray {
public:
    GrowArray() = default;
    GrowArray(GrowArray&& other) noexcept { Swap(other); }
    GrowArray& operator=(GrowArray&& other) noexcept {
        GrowArray taken(std::move(other));
        Swap(taken);
        return *this;
    }
    GrowArray(const GrowArray&) = delete;
    GrowArray& operator=(const GrowArray&) = delete;
    ~GrowArray() {
        // Asked here and not in the class: a record may hold an array of its own kind, and is complete only by now.
        static_assert(std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T>);
        static_assert(std::is_nothrow_destructible_v<T> && alignof(T) <= alignof(std::max_align_t));
        Clear();
    }

    std::size_t size() const noexcept { return size_; }
    std::size_t capacity() const noexcept { return capacity_; }
    bool empty() const noexcept { return size_ == 0; }
    T* data() noexcept { return data_; }
    const T* data() const noexcept { return data_; }
    T* begin() noexcept { return data_; }
    T* end() noexcept { return data_ + size_; }
    const T* begin() const noexcept { return data_; }
    const T* end() const noexcept { return data_ + size_; }
    /// The i-th element; the caller sees to it that there is one.
    T& operator[](std::size_t i) noexcept { return data_[i]; }
    const T& operator[](std::size_t i) const noexcept { return data_[i]; }

    /// Makes room for `n` elements in all, and no more. False when it cannot; nothing changed then.
    [[nodiscard]] bool Reserve(std::size_t n) noexcept { return n <= capacity_ || Relocate(n); }

    /// New elements are value-initialised; surplus ones are destroyed as by Truncate. False when it cannot grow.
    [[nodiscard]] bool Resize(std::size_t n) noexcept {
        static_assert(std::is_nothrow_default_constructible_v<T>);
        if (n > capacity_ && !Relocate(Doubled(n))) return false;
        Truncate(n);
        std::uninitialized_value_construct_n(data_ + size_, n - size_);
        size_ = n;
        return true;
    }

    /// Destroys what stands behind the first `n` elements; their room stays for later ones.
    void Truncate(std::size_t n) noexcept {
        if (n >= size_) return;
        std::destroy(data_ + n, data_ + size_);
        size_ = n;
    }

    /// Appends. False when there is no room to be had; `value` keeps its content then. It may be an element of this array.
    [[nodiscard]] bool PushBack(T&& value) noexcept {
        if (size_ == capacity_) {
            T held(std::move(value));
            if (!Relocate(Doubled(size_ + 1))) {
                value = std::move(held);
                return false;
            }
            ::new (static_cast<void*>(data_ + size_)) T(std::move(held));
        } else {
            ::new (static_cast<void*>(data_ + size_)) T(std::move(value));
        }
        ++size_;
        return true;
    }
    [[nodiscard]] bool PushBack(const T& value) noexcept requires std::is_nothrow_copy_constructible_v<T> {
        return PushBack(T(value));
    }

    /// Takes one element out and closes the gap; a position outside changes nothing.
    void EraseAt(std::size_t i) noexcept {
        if (i >= size_) return;
        for (T* p = data_ + i; p + 1 != data_ + size_; ++p) *p = std::move(p[1]);
        --size_;
        std::destroy_at(data_ + size_);
    }

    /// Destroys all elements and gives the memory back.
    void Clear() noexcept {
        std::destroy(data_, data_ + size_);
        std::free(data_);
        data_ = nullptr;
        size_ = capacity_ = 0;
    }

    void Swap(GrowArray& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

private:
    std::size_t Doubled(std::size_t needed) const noexcept {
        const std::size_t doubled = capacity_ <= (std::numeric_limits<std::size_t>::max)() / 2 ? capacity_ * 2 : capacity_;
        return doubled > needed ? doubled : needed;
    }

    bool Relocate(std::size_t capacity) noexcept {
        if constexpr (std::is_trivially_copyable_v<T>) {
            void* moved = GrowBlock(data_, capacity, sizeof(T));
            if (moved == nullptr) return false;
            data_ = static_cast<T*>(moved);
        } else {
            T* moved = static_cast<T*>(GrowBlock(nullptr, capacity, sizeof(T)));
            if (moved == nullptr) return false;
            std::uninitialized_move_n(data_, size_, moved);
            std::destroy_n(data_, size_);
            std::free(data_);
            data_ = moved;
        }
        capacity_ = capacity;
        return true;
    }

    T* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

/// An array of one pointer's size; its owner keeps the count. It is always exactly as large as it was last made.
template <class T>
class OwnedArray {
    static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= alignof(std::max_align_t));

public:
    OwnedArray() = default;
    OwnedArray(OwnedArray&& other) noexcept : data_(std::exchange(other.data_, nullptr)) {}
    OwnedArray& operator=(OwnedArray&& other) noexcept {
        T* taken = std::exchange(other.data_, nullptr);
        std::free(data_);
        data_ = taken;
        return *this;
    }
    OwnedArray(const OwnedArray&) = delete;
    OwnedArray& operator=(const OwnedArray&) = delete;
    ~OwnedArray() { std::free(data_); }

    T* Get() noexcept { return data_; }
    const T* Get() const noexcept { return data_; }
    T& operator[](std::size_t i) noexcept { return data_[i]; }
    const T& operator[](std::size_t i) const noexcept { return data_[i]; }
    explicit operator bool() const noexcept { return data_ != nullptr; }

    /// Goes from `oldCount` to `newCount` elements; 0 frees. Elements behind the old count are zero bytes, or left as they come
    /// when `clearTail` is false. False when it cannot grow, with nothing changed; going down never fails.
    [[nodiscard]] bool Resize(std::size_t oldCount, std::size_t newCount, bool clearTail = true) noexcept {
        if (newCount == 0) {
            Free();
            return true;
        }
        const bool grows = data_ == nullptr || newCount > oldCount;
        void* moved = grows ? GrowBlock(data_, newCount, sizeof(T)) : std::realloc(data_, newCount * sizeof(T));
        if (moved == nullptr) return !grows;
        const std::size_t kept = data_ == nullptr ? 0 : oldCount;
        data_ = static_cast<T*>(moved);
        if (clearTail && newCount > kept) std::memset(static_cast<void*>(data_ + kept), 0, (newCount - kept) * sizeof(T));
        return true;
    }

    void Free() noexcept {
        std::free(data_);
        data_ = nullptr;
    }

private:
    T* data_ = nullptr;
};

}  // namespace orvane
