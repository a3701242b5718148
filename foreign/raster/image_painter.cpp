#include "foreign/raster/image_painter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/rect.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

// A picture of this many pixels is read, turned into colours and blitted at a time: few enough to stay in the processor's cache.
constexpr std::int32_t kTile_px = 1 << 16;
constexpr std::int32_t kTileSide_px = 256;
constexpr std::int32_t kMaxTileWidth_px = 8192;
// What rounding leaves of a turn shifts nothing in the image by as much as this; such an image lies straight.
constexpr double kDrift_px = 1e-3;
// A centre on the border of two image pixels belongs to the right and lower one, whichever strip the pixel is asked for in.
constexpr double kTie = 1e-6;
constexpr std::uint8_t kOpaqueFrom = 128;
constexpr Rgb kClear = 0xFFFFFF;
constexpr Rgba kNothing{0, 0, 0, 0};

/// Edges with fractions.
struct Edges {
    double left, top, right, bottom;
};

Edges EdgesUnder(const Affine& a, const Edges& box) {
    Edges out{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const double cornerX : {box.left, box.right}) {
        for (const double cornerY : {box.top, box.bottom}) {
            double x = cornerX;
            double y = cornerY;
            a.Apply(x, y);
            out = {(std::min)(out.left, x), (std::min)(out.top, y), (std::max)(out.right, x), (std::max)(out.bottom, y)};
        }
    }
    return out;
}

Edges EdgesOf(const Rect& r) {
    return {static_cast<double>(r.left), static_cast<double>(r.top), static_cast<double>(r.right), static_cast<double>(r.bottom)};
}

/// The steps of the image that are read along one axis.
struct AxisWindow {
    double from = 0;
    double pitch = 1;
    std::int32_t count = 0;
};

/// The image without a turn that cannot be seen: it stays in place in its middle.
Affine Straightened(Affine a, double width, double height) {
    const double driftX = std::abs(a.xy / a.yy) * height;
    const double driftY = std::abs(a.yx / a.xx) * width;
    if (!(driftX <= kDrift_px && driftY <= kDrift_px)) return a;
    const std::optional<Affine> back = Inverse(a);
    if (!back) return a;
    double x = width / 2;
    double y = height / 2;
    back->Apply(x, y);
    return {a.x0 + a.xy * y, a.xx, 0, a.y0 + a.yx * x, 0, a.yy};
}

/// The steps between two edges of an image that is turned, from the image's own edge on, so that each part of a picture has
/// the means that every other part has, however the view has moved.
AxisWindow TurnedWindowOf(double low, double high, double size, double pitch) {
    const double steps = std::ceil(size / pitch);
    // One step more on either side: a centre on the border of two steps may belong to the next.
    const double first = std::clamp(std::floor(low / pitch) - 1, 0.0, steps - 1);
    const double last = std::clamp(std::ceil(high / pitch) + 1, first + 1, steps);
    return {first * pitch, pitch, TruncToInt32(last - first)};
}

/// The steps between two edges that lie in the image, or reach into it. Where several image pixels fall together, the steps go on
/// from `low` whatever part of them is in the image, so that each part of a picture has the means that the whole has.
AxisWindow WindowOf(double low, double high, double size, double pitch) {
    const double from = (std::max)(low, 0.0);
    const double to = (std::min)(high, size);
    if (!(from < to)) return {};
    if (HeldPitch(pitch) > 1) {
        const double first = std::floor((from - low) / pitch + kTie);
        const double last = (std::max)(std::ceil((to - low) / pitch - kTie), first + 1);
        return {low + first * pitch, pitch, TruncToInt32(last - first)};
    }
    return {std::floor(from), 1, TruncToInt32(std::ceil(to) - std::floor(from))};
}

/// Where the centre of a pixel is covered the pixel is; what is transparent around it has no part in the colour.
Rgba MeanOf(const Rgba (&part)[4]) {
    std::int32_t red = 0, green = 0, blue = 0, alpha = 0;
    for (const Rgba& one : part) {
        red += one.red * one.alpha;
        green += one.green * one.alpha;
        blue += one.blue * one.alpha;
        alpha += one.alpha;
    }
    if (alpha == 0) return kNothing;
    const auto mean = [alpha](std::int32_t sum) { return static_cast<std::uint8_t>((sum + alpha / 2) / alpha); };
    return {mean(red), mean(green), mean(blue), 255};
}

/// A window that was read, looked up at places on the device.
struct Turned {
    const Rgba* pixels;
    const ImageWindow& window;
    double width;  ///< of the image
    double height;

    Rgba At(const Affine& imageOfPixels, double x, double y) const {
        imageOfPixels.Apply(x, y);
        x += kTie;
        y += kTie;
        if (!(x >= 0 && x < width && y >= 0 && y < height)) return kNothing;
        const std::int32_t column = std::clamp(TruncToInt32((x - window.left) / window.pitchX), 0, window.width_px - 1);
        const std::int32_t row = std::clamp(TruncToInt32((y - window.top) / window.pitchY), 0, window.height_px - 1);
        return pixels[static_cast<std::ptrdiff_t>(row) * window.width_px + column];
    }
};

class Painter {
public:
    Painter(DeviceContext& dc, ReadableImage& image, const Affine& imageOfPixels)
        : dc_(dc),
          image_(image),
          to_(Straightened(imageOfPixels, image.Width_px(), image.Height_px())),
          pitchX_(std::hypot(to_.xx, to_.xy)),
          pitchY_(std::hypot(to_.yx, to_.yy)),
          straight_(to_.xy == 0 && to_.yx == 0),
          smooth_(!straight_ && HeldPitch((std::max)(pitchX_, pitchY_)) > 1) {
        // Rows of means that do not run along the pixels would be cut into steps: of finer means each pixel takes four.
        if (smooth_) {
            pitchX_ /= 2;
            pitchY_ /= 2;
        }
        if (!straight_) {
            pitchX_ = HeldPitch(pitchX_);
            pitchY_ = HeldPitch(pitchY_);
        }
    }

    /// Why the last Paint failed, where the image itself did not.
    const char* Reason() const { return reason_; }

    bool Paint(const Rect& pixels) {
        const std::optional<Affine> back = Inverse(to_);
        if (!back) return Fail("it cannot be shown at this scale");
        const Edges shown = EdgesUnder(*back, {0, 0, Width(), Height()});
        const Rect reach{TruncToInt32(std::floor(shown.left)), TruncToInt32(std::floor(shown.top)),
                         TruncToInt32(std::ceil(shown.right)), TruncToInt32(std::ceil(shown.bottom))};
        Rect area;
        if (!IntersectRect(pixels, reach, area)) return true;
        // A strip may reach far beyond what the target shows of it.
        const std::optional<Rect> seen = dc_.ClipBox();
        if (seen && !IntersectRect(Rect(area), *seen, area)) return true;
        const double width_px = static_cast<double>(area.right) - area.left;
        const double height_px = static_cast<double>(area.bottom) - area.top;
        if (width_px * height_px > kMaxPaint_px) return Fail("too many pixels of the picture are asked for");
        const ImageWindow all = WindowUnder(area);
        if (all.width_px > 0 && all.height_px > 0 && !(image_.Cost_bytes(all) <= ReadableImage::kMaxCost_bytes)) return false;
        return PaintTiles(area);
    }

private:
    bool Fail(const char* reason) {
        reason_ = reason;
        return false;
    }
    double Width() const { return image_.Width_px(); }
    double Height() const { return image_.Height_px(); }

    AxisWindow AxisOf(double low, double high, double size, double pitch) const {
        if (straight_ || pitch <= 1) return WindowOf(low, high, size, pitch);
        return low < size && high > 0 ? TurnedWindowOf(low, high, size, pitch) : AxisWindow{};
    }
    ImageWindow WindowUnder(const Rect& area) const {
        const Edges edges = EdgesUnder(to_, EdgesOf(area));
        const AxisWindow x = AxisOf(edges.left, edges.right, Width(), pitchX_);
        const AxisWindow y = AxisOf(edges.top, edges.bottom, Height(), pitchY_);
        return {x.from, y.from, x.pitch, y.pitch, x.count, y.count};
    }

    /// An image that lies straight is read in bands, as files store it; of one that is turned a band would cross far too much.
    bool PaintTiles(const Rect& area) {
        const bool straight = std::abs(to_.xy) * kTileSide_px < pitchX_ && std::abs(to_.yx) * kTileSide_px < pitchY_;
        const std::int32_t width = (std::min)(area.right - area.left, straight ? kMaxTileWidth_px : kTileSide_px);
        const std::int32_t height = kTile_px / (std::max)(width, kTileSide_px);
        for (std::int64_t top = area.top; top < area.bottom; top += height) {
            for (std::int64_t left = area.left; left < area.right; left += width) {
                const Rect tile{static_cast<std::int32_t>(left), static_cast<std::int32_t>(top),
                                static_cast<std::int32_t>((std::min)(left + width, std::int64_t{area.right})),
                                static_cast<std::int32_t>((std::min)(top + height, std::int64_t{area.bottom}))};
                if (!PaintTile(tile)) return false;
            }
        }
        return true;
    }

    bool PaintTile(const Rect& tile) {
        const ImageWindow window = WindowUnder(tile);
        if (window.width_px < 1 || window.height_px < 1) return true;
        read_.resize(PixelsOf(window));
        if (!image_.Read(window, read_)) return false;
        const std::vector<Rgba>* shown = &samples_;
        if (!straight_) {
            TakeTurned(tile, window);
        } else if (IsInStep(tile, window)) {
            shown = &read_;
        } else {
            TakeStraight(window);
        }
        const std::size_t covered = TakeColors(*shown);
        if (covered == 0) return true;
        if (covered == shown->size()) return Blit(tile, colors_, Rop3::SrcCopy);
        mask_.resize(shown->size());
        for (std::size_t i = 0; i < mask_.size(); ++i) mask_[i] = (*shown)[i].alpha >= kOpaqueFrom ? 0 : kClear;
        return Blit(tile, mask_, Rop3::SrcAnd) && Blit(tile, colors_, Rop3::SrcPaint);
    }

    /// The colours of what is covered, black elsewhere; how many are covered.
    std::size_t TakeColors(const std::vector<Rgba>& shown) {
        static_assert(std::endian::native == std::endian::little, "a colour has red in its lowest byte, and so has a sample");
        colors_.resize(shown.size());
        std::uint32_t covered = 0;
        for (std::size_t i = 0; i < colors_.size(); ++i) {
            const auto bits = std::bit_cast<std::uint32_t>(shown[i]);
            const std::uint32_t isCovered = bits >> 24 >= kOpaqueFrom ? 1 : 0;
            colors_[i] = bits & 0xFFFFFFu & (0 - isCovered);
            covered += isCovered;
        }
        return covered;
    }

    /// The steps that pixels in a row take of one axis of the window; -1 outside the image.
    static void TakeSteps(std::int32_t from, std::int32_t to, double start, double step, double size, const AxisWindow& run,
                          std::vector<std::int32_t>& out) {
        out.clear();
        for (std::int32_t at = from; at < to; ++at) {
            const double place = start + step * (at + 0.5) + kTie;
            const std::int32_t taken = TruncToInt32((place - run.from) / run.pitch);
            out.push_back(place >= 0 && place < size ? std::clamp(taken, 0, run.count - 1) : -1);
        }
    }

    /// Finds the column of each pixel across and the row of each down; whether they are those of the window itself.
    bool IsInStep(const Rect& tile, const ImageWindow& w) {
        TakeSteps(tile.left, tile.right, to_.x0, to_.xx, Width(), {w.left, w.pitchX, w.width_px}, columns_);
        TakeSteps(tile.top, tile.bottom, to_.y0, to_.yy, Height(), {w.top, w.pitchY, w.height_px}, rows_);
        const auto isRun = [](const std::vector<std::int32_t>& steps, std::int32_t count) {
            std::int32_t next = 0;
            for (const std::int32_t step : steps) {
                if (step != next++) return false;
            }
            return next == count;
        };
        return isRun(columns_, w.width_px) && isRun(rows_, w.height_px);
    }

    void TakeStraight(const ImageWindow& window) {
        samples_.assign(columns_.size() * rows_.size(), kNothing);
        Rgba* to = samples_.data();
        for (const std::int32_t row : rows_) {
            if (row < 0) {
                to += columns_.size();
                continue;
            }
            const Rgba* const from = read_.data() + static_cast<std::ptrdiff_t>(row) * window.width_px;
            for (const std::int32_t column : columns_) {
                if (column >= 0) *to = from[column];
                ++to;
            }
        }
    }

    void TakeTurned(const Rect& tile, const ImageWindow& window) {
        const Turned source{read_.data(), window, Width(), Height()};
        samples_.clear();
        for (std::int32_t y = tile.top; y < tile.bottom; ++y) {
            for (std::int32_t x = tile.left; x < tile.right; ++x) {
                const Rgba center = source.At(to_, x + 0.5, y + 0.5);
                if (!smooth_ || center.alpha < kOpaqueFrom) {
                    samples_.push_back(center);
                    continue;
                }
                Rgba part[4];
                for (int i = 0; i < 4; ++i) part[i] = source.At(to_, x + 0.25 + i % 2 * 0.5, y + 0.25 + i / 2 * 0.5);
                samples_.push_back(MeanOf(part));
            }
        }
    }

    bool Blit(const Rect& tile, const std::vector<Rgb>& pixels, Rop3 rop) {
        const std::int32_t width = tile.right - tile.left;
        const std::int32_t height = tile.bottom - tile.top;
        const std::unique_ptr<Bitmap> bitmap = dc_.CreatePixelBitmap(width, height, pixels.data());
        if (bitmap == nullptr) return Fail("there is no memory for its picture");
        const std::unique_ptr<DeviceContext> memory = dc_.CreateCompatibleDC();
        memory->SelectBitmap(bitmap.get());
        dc_.BitBlt(tile.left, tile.top, width, height, *memory, 0, 0, rop);
        memory->SelectBitmap(nullptr);
        return true;
    }

    DeviceContext& dc_;
    ReadableImage& image_;
    Affine to_;
    double pitchX_;  ///< image pixels that fall together, along each axis of the image
    double pitchY_;
    bool straight_;
    bool smooth_;
    const char* reason_ = "";
    std::vector<Rgba> read_;
    std::vector<Rgba> samples_;  ///< of the pixels of a tile
    std::vector<Rgb> colors_;
    std::vector<Rgb> mask_;
    std::vector<std::int32_t> columns_;
    std::vector<std::int32_t> rows_;
};

}  // namespace

bool PaintImage(DeviceContext& dc, ReadableImage& image, const Affine& imageOfPixels, const Rect& pixels, std::string* reason) {
    Painter painter(dc, image, imageOfPixels);
    const bool done = painter.Paint(pixels);
    if (reason != nullptr) *reason = painter.Reason();
    return done;
}

}  // namespace orvane
