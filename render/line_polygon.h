// Drawing of one block of a line layer and of a polygon layer, and the pens of all lines.
#pragma once

#include <cstdint>

#include "platform/pen_brush_font.h"
#include "render/draw_scratch.h"
#include "render/lookup_memo.h"
#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

/// How a line is drawn, by the kind of its line type.
enum LineKind : std::int32_t {
    kLineStandard = 0,
    kLineDashes = 1,
    kLineEndMarks = 2,  ///< the kinds behind it are patterns, which draw the line themselves
    kLineTicks = 3,
    kLineMidTicks = 4,   ///< dashes with a tick at the middle
    kLineDashTicks = 5,  ///< dashes with ticks where `ltPos` says
    kLineHidden = 6,
    kLineWaves = 7,
    kLineShapes = 8,
};

/// The pen style of a standard line type: numbers 0 to 4 are the platform's own styles in its own order, all others are solid.
PenStyle StandardStyle(std::int32_t lineType);

/// A pen for a line type number; `width` in pixels. `kind` tells how the line is drawn, `index` the record of the line type table
/// or -1.
Pen MakeLinePen(const CDigMem& store, std::int32_t lineType, std::int32_t width, Rgb color, std::int32_t& kind,
                std::int32_t& index);

/// The same for many lines: keeps where the numbers met last stand in the table, which must not change while it lives.
class LinePens {
public:
    explicit LinePens(const CDigMem& store) : store_(store) {}
    Pen Make(std::int32_t lineType, std::int32_t width, Rgb color, std::int32_t& kind, std::int32_t& index);

private:
    const CDigMem& store_;
    LookupInTable<std::int32_t> positions_;
};

/// Pen units (line sizes, dash lengths) to pixels, by the factor of a finer device.
std::int32_t PenUnitsToPix(std::int32_t units, std::int32_t penFactor);

/// Draws the items of a block; `honourClip` leaves out what the area search found outside. REQUIRES: a block position below
/// BlockCnt and a layer position of the table.
void DrawLineBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                   DrawScratch& scratch);
void DrawPolygonBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                      DrawScratch& scratch);

}  // namespace orvane
