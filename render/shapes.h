// Drawing of one block of a circle, ellipse, text or mesh layer, and of the labels of the other layers.
#pragma once

#include <cstdint>

#include "platform/gdi_constants.h"
#include "render/draw_scratch.h"
#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

/// The alignment of a `T_StringPos` from 0 to 8; other numbers read as 0, left and top. The positions that are called central
/// stand on the base line and not in the middle of the height.
TextAlign TextAlignOf(std::int32_t pos);

// All of them draw the items of a block; `honourClip` leaves out what the area search found outside. REQUIRES: a block position
// below BlockCnt and a layer position of the table.

/// Circles: the first point of an item is the centre, its z the radius in map units. ScaleX stretches the radius, ScaleY does
/// not.
void DrawCircleBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                     DrawScratch& scratch);

/// Ellipses: the first two points of an item are opposite corners of its box. A turned view moves the corners, and the figure
/// stays upright.
void DrawEllipseBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                      DrawScratch& scratch);

/// Texts. They keep their `drawnFlg`; with CutSameString the items that repeat an earlier text lose their `clipFlg` until the
/// next area search. Alignment, background mode and raster mode stay behind in the context.
void DrawTextBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                   DrawScratch& scratch);

/// The texts of items of other layers, with whatever font, colour and alignment the context has; nothing unless DigStrVisible is
/// set. Runs behind the block's own routine, whose `drawnFlg` it reads.
void DrawLabels(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                DrawScratch& scratch);

/// Meshes: a filled cell around each grid point that is in use. A grid of fewer than two rows or columns has no cells: nothing is
/// drawn and its `drawnFlg` stays.
void DrawMeshBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                   DrawScratch& scratch);

}  // namespace orvane
