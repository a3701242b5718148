// Small figures that come again and again, as the symbols of points do, kept as the pixels that they give.
//
// A figure gives the same pixels wherever it stands, moved with it, as long as pen and brush replace what is there and have no
// pattern that lies fixed on the surface. So once a figure has come twice its pixels are worked out apart and only copied after
// that. Figures that never repeat cost a look at the first few of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/qt/ink.h"
#include "platform/qt/path_bracket.h"
#include "platform/qt/span_painter.h"

namespace orvane {

class FigureStamps {
public:
    enum class Found : std::uint8_t {
        Nothing,  ///< to be drawn as it is
        Repeat,   ///< came before: draw Moved() on Canvas() and Keep() it
        Stamp,    ///< Put() draws it
    };

    /// Pen or brush have changed: nothing that is kept holds any more.
    void Forget();
    /// Looks for a figure. Only single ones of few points and pixels are kept, which lie wholly in a clip of one rectangle.
    Found Look(const Figures& figures, bool fill, bool stroke, const ClipArea& clip);

    /// The figure of the last Look, moved so that it lies on the canvas. It holds until the next Look.
    Figures Moved();
    /// Pixels without colour, as large as the figure.
    const PixelSurface& Canvas() const { return canvas_; }
    const ClipArea& CanvasClip() const { return canvasClip_; }
    /// Keeps what was drawn on the canvas.
    void Keep();
    /// Copies the pixels that are kept of the figure of the last Look.
    void Put(const PixelSurface& surface) const;

private:
    static constexpr std::size_t kStampCnt = 4;

    struct Shape {
        std::vector<Point> offsets;  ///< from the first point
        bool fill = false;
        bool stroke = false;
        bool closed = false;
        friend bool operator==(const Shape&, const Shape&) = default;
    };
    /// Pixels of one row side by side; dx and dy are from the first point.
    struct Run {
        std::int32_t dx = 0;
        std::int32_t dy = 0;
        std::size_t from = 0;
        std::size_t count = 0;
    };
    struct Stamp {
        Shape shape;
        Rect box;  ///< of the offsets, right and bottom behind the last pixel
        std::vector<Run> runs;
        std::vector<Pixel> pixels;
    };

    static bool IsShape(const Shape& shape, const Figures& figures, bool fill, bool stroke);
    bool TakeShape(const Figures& figures, bool fill, bool stroke, const ClipArea& clip);

    Stamp stamps_[kStampCnt];
    Shape seen_[kStampCnt];
    std::size_t nextStamp_ = 0;
    std::size_t nextSeen_ = 0;
    std::size_t misses_ = 0;

    // The figure of the last Look.
    Shape shape_;
    Rect box_;  ///< of the offsets, right and bottom behind the last pixel
    Point at_;
    const Stamp* stamp_ = nullptr;

    std::vector<Point> moved_;
    std::int32_t movedCnt_ = 0;
    std::uint8_t movedClosed_ = 0;
    std::vector<Pixel> pixels_;
    PixelSurface canvas_;
    ClipArea canvasClip_;
};

}  // namespace orvane
