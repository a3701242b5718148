// An image as the painter sees it: its size, its own place on the map, and windows of it as colours.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "foreign/raster/placement.h"

namespace orvane {

/// A colour and how much of it covers: 255 all.
struct Rgba {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
    friend bool operator==(const Rgba&, const Rgba&) = default;
};

/// A picture of a part of the image: each of its pixels stands for `pitchX` by `pitchY` pixels of the image, from (`left`, `top`)
/// on, y downward. A pitch is 1 from a whole pixel on, or larger; steps at the edges may reach over the image.
struct ImageWindow {
    double left = 0;
    double top = 0;
    double pitchX = 1;
    double pitchY = 1;
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
};

/// The pixels of the picture; 0 when it has no side.
inline std::size_t PixelsOf(const ImageWindow& w) {
    if (w.width_px < 1 || w.height_px < 1) return 0;
    return static_cast<std::size_t>(w.width_px) * static_cast<std::size_t>(w.height_px);
}

/// A pitch as it is compared with bounds: in 64ths of a pixel, since each strip of a picture tells the scale with an error of its
/// own.
inline double HeldPitch(double pitch) { return std::round(pitch * 64) / 64; }

class ReadableImage {
public:
    /// The most bytes that one call may decode: beyond it an image without overviews would hold up the map for minutes.
    static constexpr double kMaxCost_bytes = 1024.0 * 1024 * 1024;
    /// The most pixels of one picture.
    static constexpr std::size_t kMaxRead_px = 1 << 21;

    ReadableImage() = default;
    ReadableImage(const ReadableImage&) = delete;
    ReadableImage& operator=(const ReadableImage&) = delete;
    virtual ~ReadableImage() = default;

    virtual std::int32_t Width_px() const = 0;
    virtual std::int32_t Height_px() const = 0;
    /// Where the image says itself that it lies; nothing when it does not, or in a way that flattens it.
    virtual std::optional<Affine> OwnPlacement() const = 0;
    /// How many bytes a read must decode, at the least and to the order of magnitude; infinite when it cannot be told.
    virtual double Cost_bytes(const ImageWindow& window) = 0;
    /// Reads a window into `out`, which has PixelsOf(window) places, row by row from the top. A step of one pixel takes it as it
    /// is, a larger one the mean of what lies in it, by area; the same step gives the same colour in whatever window it stands.
    /// False when it cannot be read.
    virtual bool Read(const ImageWindow& window, std::span<Rgba> out) = 0;
};

}  // namespace orvane
