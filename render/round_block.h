// What circles and ellipses have in common: unlike polygons they take plain pens, whatever a line type file says.
#pragma once

#include "render/closed_block.h"

namespace orvane {

class RoundBlock : protected ClosedBlock {
protected:
    RoundBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
               DrawScratch& buffers)
        : ClosedBlock(fromStore, target, block, layerPos, buffers, LayerPen(fromStore, fromStore.Layer(layerPos))) {}

    /// The outline of a sub layer is solid, whatever its line type.
    void TakeRoundSubLayer(const SubLayDef& sub) {
        TakeSubLayer(sub, [&] { return CreatePen(PenStyle::Solid, PenUnitsToPix(sub.lineSize, penFactor), sub.color2); });
    }

private:
    static Pen LayerPen(const CDigMem& store, const LayerDef& layer) {
        const std::int32_t width_px = PenUnitsToPix(layer.lineSize, store.view.PenFactor());
        return CreatePen(StandardStyle(layer.lineType), width_px, layer.color2);
    }
};

}  // namespace orvane
