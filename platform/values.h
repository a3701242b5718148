// Plain values of the device: points, rectangles, colours. Device coordinates: x right, y down, in pixels.
#pragma once

#include <cstdint>

namespace orvane {

/// A colour in COLORREF order: red in the low byte, blue in the third.
using Rgb = std::uint32_t;

struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct TextSize {
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
    friend bool operator==(const TextSize&, const TextSize&) = default;
};

/// Left and top lie inside, right and bottom outside, as the platform's rectangle functions read them.
struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// The same in 64 bits, for boxes of map units whose corners may be shifted without overflow.
struct Box {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;
    friend bool operator==(const Box&, const Box&) = default;
};

}  // namespace orvane
