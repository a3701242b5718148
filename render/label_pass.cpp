#include "render/block_drawing.h"
#include "render/item_loop.h"
#include "render/shapes.h"

namespace orvane {

namespace {

class LabelPass : BlockDrawing {
public:
    LabelPass(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
              DrawScratch& buffers)
        : BlockDrawing(fromStore, target, block, layerPos, buffers) {}

    void Draw(const DigDat& dat) {
        if (TextIsOff(dat)) return;
        const Point at = transform.ToDevice(dat.str->x, dat.str->y);
        dc.SetROP2(Rop2::MaskPen);
        dc.SetBkMode(BkMode::Transparent);
        dc.DrawTextBytes(at.x, at.y, dat.str->text);
    }
};

}  // namespace

void DrawLabels(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                DrawScratch& scratch) {
    if (store.DigStrVisible == 0) return;
    DigBlock& data = store.MutableBlock(block);
    LabelPass drawing(store, frame, data, layer, scratch);
    ForEachTextItem(data, [&](const DigDat& dat) {
        if (dat.drawnFlg != 0 && PassesGate(dat, store.LineTagMode, honourClip)) drawing.Draw(dat);
    });
}

}  // namespace orvane
