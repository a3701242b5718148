// The drawing seam. Verbs take the platform's arguments in the platform's order; what they do to pixels is told per back end.
//
// A context starts as the platform's does: opaque background mode, white background colour, black one-pixel pen, white brush,
// R2_COPYPEN, no clip. State lives as long as its context.
#pragma once

#include <cstdint>
#include <memory>

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
    /// Draws into `bitmap` from now on; null selects none, and what is drawn then is lost.
    virtual void SelectBitmap(Bitmap* bitmap) = 0;

    // State. Each setter returns the value before. The empty pen changes nothing.
    virtual Pen SelectPen(const Pen& pen) = 0;
    virtual Brush SelectBrush(const Brush& brush) = 0;
    virtual Font SelectFont(const Font& font) = 0;
    virtual Rop2 SetROP2(Rop2 mode) = 0;
    virtual BkMode SetBkMode(BkMode mode) = 0;
    virtual Rgb SetBkColor(Rgb color) = 0;

    // Lines and areas, with the selected pen and brush.
    virtual void Polyline(const Point* pts, std::int32_t count) = 0;
    /// `counts[i]` is the number of points of ring i; the rings stand one behind the other in `pts`. Alternate fill rule.
    virtual void PolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t ringCnt) = 0;

    // Path bracket: shape verbs between BeginPath and EndPath are gathered. The three verbs that draw the path consume it;
    // StrokeAndFillPath closes open figures.
    virtual void BeginPath() = 0;
    virtual void EndPath() = 0;
    virtual void FillPath() = 0;
    virtual void StrokePath() = 0;
    virtual void StrokeAndFillPath() = 0;

    // Clip. Rectangles are in device coordinates.
    virtual void SelectClipRgn(const Rect& region, RgnMode mode) = 0;
    virtual void ExcludeClipRect(const Rect& rect) = 0;

    // Fills and blits; the clip applies to the target.
    virtual void FillRect(const Rect& rect, const Brush& brush) = 0;
    virtual void PatBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, Rop3 rop) = 0;
    virtual void BitBlt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, DeviceContext& source,
                        std::int32_t sourceX, std::int32_t sourceY, Rop3 rop) = 0;
    /// Moves the pixels of `scroll` by (dx, dy) within `clip` (and the context's clip); what is uncovered keeps its pixels.
    virtual void ScrollDC(std::int32_t dx, std::int32_t dy, const Rect& scroll, const Rect& clip) = 0;
};

}  // namespace orvane
