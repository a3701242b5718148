#include "platform/to_int.h"
#include "render/item_loop.h"
#include "render/round_block.h"
#include "render/shapes.h"

namespace orvane {

namespace {

class CircleBlock : RoundBlock {
public:
    CircleBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
                DrawScratch& buffers)
        : RoundBlock(fromStore, target, block, layerPos, buffers),
          scaleX_(store.view.ScaleX),
          pixPerUnit_(store.view.PixPerUnit()) {}

    void Draw(DigDat& dat) {
        const bool inStrips = box.InStrips(dat.rect);
        if (dat.pntCnt < 1) return;
        bool hidden = false;
        const SubLayDef* sub = SubLayerOf(dat, hidden);
        const bool taken = sub != nullptr && !hidden;
        // The sub layer's look is taken before the strips count: a circle beside them leaves it to the items behind.
        if (taken) TakeRoundSubLayer(*sub);
        if (!inStrips || hidden) {
            dat.drawnFlg = 0;
            return;
        }
        const DigPnt& pnt = dat.pnts[0];
        const Point centre = transform.ToDevice(pnt.x, pnt.y);
        const std::int32_t r = ToInt(pnt.z * scaleX_ * pixPerUnit_);
        DrawItem(dat, taken, [&] {
            dc.Ellipse(SaturatedAdd(centre.x, SaturatedNegative(r)), SaturatedAdd(centre.y, SaturatedNegative(r)),
                       SaturatedAdd(centre.x, r), SaturatedAdd(centre.y, r));
        });
    }

private:
    double scaleX_, pixPerUnit_;
};

}  // namespace

void DrawCircleBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                     DrawScratch& scratch) {
    DigBlock& data = store.MutableBlock(block);
    CircleBlock drawing(store, frame, data, layer, scratch);
    ForEachShownItem(data, store.LineTagMode, honourClip, [&drawing](DigDat& dat) { drawing.Draw(dat); });
}

}  // namespace orvane
