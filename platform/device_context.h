// The drawing seam. Verbs take the platform's arguments in the platform's order; what they do to pixels is told per back end.
//
// A context starts as the platform's does: opaque background mode, white background colour, black text at the left top, black
// one-pixel pen, white brush, R2_COPYPEN, counter-clockwise arcs, position (0, 0), no clip. State lives as long as its context.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/gdi_constants.h"
#include "platform/pen_brush_font.h"
#include "platform/values.h"

namespace orvane {

/// A bitmap that some context's back end made. It owns its pixels and must outlive its selection.
class Bitmap {
public:
    Bitmap() = default;
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;
    virtual ~Bitmap() = default;

    virtual std::int32_t Width_px() const = 0;
    virtual std::int32_t Height_px() const = 0;
};

class DeviceContext {
public:
    DeviceContext() = default;
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;
    virtual ~DeviceContext() = default;

    /// A number of the device: pixels, millimetres or dots per inch.
    virtual std::int32_t GetDeviceCaps(DeviceCap index) const = 0;

    /// A memory context of the same back end, with no bitmap selected; never null.
    virtual std::unique_ptr<DeviceContext> CreateCompatibleDC() = 0;
    /// A bitmap for contexts of the same back end, black; null when its memory cannot be had or a side is below 1.
    virtual std::unique_ptr<Bitmap> CreateCompatibleBitmap(std::int32_t width_px, std::int32_t height_px) = 0;
    /// A bitmap of one bit a pixel, black. A blit from colours into it gives white where the source has its background colour and
    /// black elsewhere; a blit out of it gives the target's text colour for black and its background colour for white. Null as
    /// above.
    virtual std::unique_ptr<Bitmap> CreateMonochromeBitmap(std::int32_t width_px, std::int32_t height_px) = 0;
    /// A bitmap with the given pixels, row by row from the top; null as above. A back end that does not know better fills it run
    /// by run.
    virtual std::unique_ptr<Bitmap> CreatePixelBitmap(std::int32_t width_px, std::int32_t height_px, const Rgb* pixels);
    /// The bitmap of an uncompressed BMP file, its name in code page 932 bytes; null when it cannot be loaded.
    virtual std::unique_ptr<Bitmap> LoadBitmapFile(std::string_view fileName) = 0;
    /// Draws into `bitmap` from now on; null selects none, and what is drawn then is lost.
    virtual void SelectBitmap(Bitmap* bitmap) = 0;

    // State. Each setter returns the value before. The empty pen changes nothing.
    virtual Pen SelectPen(const Pen& pen) = 0;
    virtual Brush SelectBrush(const Brush& brush) = 0;
    virtual Font SelectFont(const Font& font) = 0;
    virtual Rop2 SetROP2(Rop2 mode) = 0;
    virtual BkMode SetBkMode(BkMode mode) = 0;
    virtual Rgb SetBkColor(Rgb color) = 0;
    virtual Rgb SetTextColor(Rgb color) = 0;
    virtual TextAlign SetTextAlign(TextAlign align) = 0;
    virtual ArcDirection SetArcDirection(ArcDirection direction) = 0;

    // Lines and areas, with the selected pen and brush. Boxes of round figures are (left, top) to (right, bottom), in any order.
    virtual void MoveToEx(std::int32_t x, std::int32_t y) = 0;
    /// A line from the current position, which moves to its end.
    virtual void LineTo(std::int32_t x, std::int32_t y) = 0;
    virtual void Polyline(const Point* pts, std::int32_t count) = 0;
    /// `counts[i]` is the number of points of ring i; the rings stand one behind the other in `pts`. Alternate fill rule.
    virtual void PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) = 0;

    virtual void Polygon(const Point* pts, std::int32_t count) = 0;
    virtual void Ellipse(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) = 0;
    /// A line from the current position to the start of an arc of the box's ellipse, then the arc, in the arc direction, to its
    /// end, where the position moves to. `start` and `end` tell the rays from the centre on which the ends lie.
    virtual void ArcTo(const Rect& box, Point start, Point end) = 0;
    /// The area between such an arc, from `start` to `end`, and its chord. The position stays.
    virtual void Chord(const Rect& box, Point start, Point end) = 0;

    // Path bracket: shape verbs between BeginPath and EndPath are gathered. The three verbs that draw the path consume it;
    // StrokeAndFillPath closes open figures.
    virtual void BeginPath() = 0;
    virtual void EndPath() = 0;
    virtual void FillPath() = 0;
    virtual void StrokePath() = 0;
    virtual void StrokeAndFillPath() = 0;

    // Text in code page 932 bytes, in the selected font. Combining modes have no part in it.
    virtual void DrawTextBytes(std::int32_t x, std::int32_t y, std::string_view text) = 0;
    /// Width and height of the text as it would be drawn without escapement.
    virtual TextSize TextExtent(std::string_view text) = 0;

    // Clip. Rectangles are in device coordinates.
    virtual void SelectClipRgn(const Rect& region, RgnMode mode) = 0;
    virtual void ExcludeClipRect(const Rect& rect) = 0;
    /// A rectangle outside which nothing can show, left <= right and top <= bottom; empty where nothing can show at all. Nothing
    /// when the back end does not know.
    virtual std::optional<Rect> ClipBox() const { return std::nullopt; }

    // Fills and blits; the clip applies to the target.
    virtual void FillRect(const Rect& rect, const Brush& brush) = 0;
    virtual void PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) = 0;
    virtual void BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                        std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) = 0;
    /// A blit that stretches the source's box into the target's.
    virtual void StretchBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                            std::int32_t sourceX, std::int32_t sourceY, std::int32_t sourceWidth, std::int32_t sourceHeight,
                            Rop3 rop) = 0;
    /// Moves the pixels of `scroll` by (dx, dy) within `clip` (and the context's clip); what is uncovered keeps its pixels.
    virtual void ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) = 0;
};

}  // namespace orvane
