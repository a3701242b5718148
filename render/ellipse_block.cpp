#include "render/item_loop.h"
#include "render/round_block.h"
#include "render/shapes.h"

namespace orvane {

namespace {

class EllipseBlock : RoundBlock {
public:
    EllipseBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
                 DrawScratch& buffers)
        : RoundBlock(fromStore, target, block, layerPos, buffers) {}

    void Draw(DigDat& dat) {
        if (!box.InStrips(dat.rect)) {
            dat.drawnFlg = 0;
            return;
        }
        if (dat.pntCnt < 2) return;
        bool hidden = false;
        const SubLayDef* sub = SubLayerOf(dat, hidden);
        if (hidden) {
            dat.drawnFlg = 0;
            return;
        }
        if (sub != nullptr) TakeRoundSubLayer(*sub);
        Point corners[2];
        transform.ToDevice(dat.pnts.Get(), 2, corners);
        DrawItem(dat, sub != nullptr, [&] { dc.Ellipse(corners[0].x, corners[0].y, corners[1].x, corners[1].y); });
    }
};

}  // namespace

void DrawEllipseBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                      DrawScratch& scratch) {
    DigBlock& data = store.MutableBlock(block);
    EllipseBlock drawing(store, frame, data, layer, scratch);
    ForEachShownItem(data, store.LineTagMode, honourClip, [&drawing](DigDat& dat) { drawing.Draw(dat); });
}

}  // namespace orvane
