// Numbers for places: equal coordinates have equal numbers.
#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace orvane {

/// A hash table of points, compared exactly. What is not a number equals nothing, so each such point has a number of its own.
/// Growing may throw std::bad_alloc.
class VertexTable {
public:
    /// Makes room for that many vertices.
    void Reserve(std::size_t count) {
        places_.reserve(count);
        marks_.reserve(count);
        if (slots_.size() < 2 * count) Rehash(2 * count);
    }
    std::size_t size() const { return places_.size(); }

    /// The number of a place, new or not, with `mark` set on it.
    std::int32_t Put(double x, double y, std::uint8_t mark) {
        if (2 * (places_.size() + 1) > slots_.size()) Rehash(4 * (places_.size() + 4));
        const std::size_t slot = SlotOf(x, y);
        std::int32_t vertex = slots_[slot];
        if (vertex < 0) {
            vertex = static_cast<std::int32_t>(places_.size());
            places_.push_back({x, y});
            marks_.push_back(0);
            if (x == x && y == y) slots_[slot] = vertex;
        }
        marks_[static_cast<std::size_t>(vertex)] |= mark;
        return vertex;
    }
    /// The number of a place, or -1.
    std::int32_t Find(double x, double y) const { return slots_.empty() ? -1 : slots_[SlotOf(x, y)]; }
    std::uint8_t Marks(std::int32_t vertex) const { return marks_[static_cast<std::size_t>(vertex)]; }

private:
    struct Place {
        double x, y;
    };

    /// The slot of that place, or the free one where it belongs.
    std::size_t SlotOf(double x, double y) const {
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = HashOf(x, y) & mask;
        while (slots_[slot] >= 0) {
            const Place& place = places_[static_cast<std::size_t>(slots_[slot])];
            if (place.x == x && place.y == y) break;
            slot = (slot + 1) & mask;
        }
        return slot;
    }
    /// Both zeros are one number.
    static std::size_t HashOf(double x, double y) {
        std::uint64_t h = std::bit_cast<std::uint64_t>(x + 0.0) * 0x9E3779B97F4A7C15u;
        h = (h ^ (h >> 32)) + std::bit_cast<std::uint64_t>(y + 0.0);
        h *= 0xC2B2AE3D27D4EB4Fu;
        h ^= h >> 29;
        h *= 0x165667B19E3779F9u;
        return static_cast<std::size_t>(h ^ (h >> 32));
    }
    void Rehash(std::size_t least) {
        std::vector<std::int32_t> larger(std::bit_ceil(least), -1);
        slots_.swap(larger);
        for (std::size_t i = 0; i < places_.size(); ++i) {
            const Place& place = places_[i];
            if (place.x == place.x && place.y == place.y) slots_[SlotOf(place.x, place.y)] = static_cast<std::int32_t>(i);
        }
    }

    std::vector<Place> places_;
    std::vector<std::uint8_t> marks_;
    std::vector<std::int32_t> slots_;  ///< a power of two; -1 is free
};

}  // namespace orvane
