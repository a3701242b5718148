// What the drawing routines of a block take once, before they walk its items.
#pragma once

#include "render/draw_scratch.h"
#include "render/item_gate.h"
#include "render/lookup_memo.h"
#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

struct BlockDrawing {
    BlockDrawing(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
                 DrawScratch& buffers)
        : store(fromStore),
          frame(target),
          dc(*target.dc),
          layer(fromStore.Layer(layerPos)),
          scratch(buffers),
          penFactor(fromStore.view.PenFactor()),
          box(fromStore.view, target, block.GX, block.GY),
          transform(fromStore.view, target.x, target.y, target.pendX, target.pendY, block.GX, block.GY) {}
    BlockDrawing(const BlockDrawing&) = delete;
    BlockDrawing& operator=(const BlockDrawing&) = delete;

    /// The record of the item's sub layer, shown or not, or null.
    const SubLayDef* SubLayer(const DigDat& dat) {
        if (dat.subLayNo < 1) return nullptr;
        return subLayers.Get(dat.subLayNo, layer.subLays.size(),
                             [this](std::int32_t number) { return CDigMem::FindSubLay(layer, number); });
    }

    /// The same; `hidden` when it has one that is not shown.
    const SubLayDef* SubLayerOf(const DigDat& dat, bool& hidden) {
        const SubLayDef* sub = SubLayer(dat);
        hidden = sub != nullptr && sub->dspFlg != 1;
        return sub;
    }

    /// Whether the item's text is switched off by its sub layer; of a sub layer's look nothing else reaches texts.
    bool TextIsOff(const DigDat& dat) {
        const SubLayDef* sub = SubLayer(dat);
        return sub != nullptr && sub->dspFlg == 0;
    }

    const CDigMem& store;
    const FrameTarget& frame;
    DeviceContext& dc;
    const LayerDef& layer;
    DrawScratch& scratch;
    std::int32_t penFactor;
    StripBox box;
    DeviceTransform transform;
    LookupInTable<const SubLayDef*> subLayers;
};

/// A block's pen and brush, selected in this order; the old ones go back in the other.
class SelectedTools {
public:
    SelectedTools(DeviceContext& dc, const Pen& pen, const Brush& brush)
        : dc_(dc), oldPen_(dc.SelectPen(pen)), oldBrush_(dc.SelectBrush(brush)) {}
    SelectedTools(const SelectedTools&) = delete;
    SelectedTools& operator=(const SelectedTools&) = delete;
    ~SelectedTools() {
        dc_.SelectBrush(oldBrush_);
        dc_.SelectPen(oldPen_);
    }

    /// What the context held before.
    const Pen& OldPen() const { return oldPen_; }
    const Brush& OldBrush() const { return oldBrush_; }

private:
    DeviceContext& dc_;
    Pen oldPen_;
    Brush oldBrush_;
};

}  // namespace orvane
