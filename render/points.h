// Drawing of one block of a point layer, as symbols or as images.
#pragma once

#include <cstdint>

#include "render/draw_scratch.h"
#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

/// The `item` that stands for all items of a block.
inline constexpr std::int32_t kAllItems = -1;

// Both draw the items of a block, or only the one at position `item` where that is 0 or more; a position behind the last draws
// nothing. Items whose sub layer asks for the other way are drawn that way, in their turn. `honourClip` is not looked at: the
// bounds of an item tell nothing of its symbol, so each is tested by its own figure. REQUIRES: a block position below BlockCnt
// and a layer position of the table.

/// Points as symbols, from the built-in figures or the store's `symbols`.
void DrawSymbolBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                     DrawScratch& scratch, std::int32_t item);

/// Points as images: the layer's, or for a single item those of its sub layer, without which it is not drawn. Images that are
/// not named ".bmp" draw nothing and leave `drawnFlg` as it was. `LineTagMode` hides nothing here.
void DrawImageBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                    DrawScratch& scratch, std::int32_t item);

}  // namespace orvane
