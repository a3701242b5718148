// What the two ways of drawing a point layer share while they draw one block.
#pragma once

#include <cstdint>

#include "render/block_drawing.h"

namespace orvane {

struct PointBlock : BlockDrawing {
    PointBlock(const CDigMem& fromStore, const FrameTarget& target, DigBlock& block, std::int32_t layerPos, DrawScratch& buffers)
        : BlockDrawing(fromStore, target, block, layerPos, buffers), data(block) {}

    DigBlock& data;
    LookupInTable<const SymbolDef*> symbols;
};

// They hand items to each other one by one. An image item that is drawn alone is never handed back, so that this ends.

/// Draws all items, or `only` that one of the block, as symbols.
void DrawSymbols(PointBlock& points, DigDat* only);
/// The same as images.
void DrawImages(PointBlock& points, DigDat* only);

/// Draws with one of the two what `item` means; a position behind the last item means nothing.
template <class Draw>
void DrawPointItems(PointBlock& points, std::int32_t item, Draw draw) {
    if (item < 0) {
        draw(points, nullptr);
    } else if (static_cast<std::size_t>(item) < points.data.dats.size()) {
        draw(points, &points.data.dats[static_cast<std::size_t>(item)]);
    }
}

}  // namespace orvane
