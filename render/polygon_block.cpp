#include <span>

#include "analysis/geometry/plane.h"
#include "render/closed_block.h"
#include "render/item_loop.h"
#include "render/line_polygon.h"

namespace orvane {

namespace {

class PolygonBlock : ClosedBlock {
public:
    PolygonBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
                 DrawScratch& buffers)
        : ClosedBlock(fromStore, target, block, layerPos, buffers, LayerPen(fromStore, fromStore.Layer(layerPos))) {}

    void Draw(DigDat& dat) {
        if (!box.InStrips(dat.rect)) {
            dat.drawnFlg = 0;
            return;
        }
        if (dat.pntCnt < 1) return;
        Point* pts = scratch.Points(dat.pntCnt);
        std::int32_t* ringCounts = pts == nullptr ? nullptr : scratch.RingCounts(dat.pntCnt);
        if (ringCounts == nullptr) return;
        const std::span<const DigPnt> pnts(dat.pnts.Get(), static_cast<std::size_t>(dat.pntCnt));
        const std::int32_t ringCnt = SplitRings(pnts, ringCounts, false);
        transform.ToDevice(pnts.data(), dat.pntCnt, pts);  // repeats stay, because rings must stay closed
        if (dat.pntCnt < 2) return;

        bool hidden = false;
        const SubLayDef* sub = SubLayerOf(dat, hidden);
        if (hidden) {
            dat.drawnFlg = 0;
            return;
        }
        if (sub != nullptr) {
            TakeSubLayer(*sub, [&] {
                const std::int32_t lineType = sub->lineType < 0 || sub->lineType > 4 ? 0 : sub->lineType;
                return OutlinePen(store, lineType, sub->lineSize, sub->color2);
            });
        }
        DrawItem(dat, sub != nullptr, [&] { dc.PolyPolygon(pts, ringCounts, ringCnt); });
    }

private:
    static Pen LayerPen(const CDigMem& store, const LayerDef& layer) {
        return OutlinePen(store, layer.lineType, layer.lineSize, layer.color2);
    }
};

}  // namespace

void DrawPolygonBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                      DrawScratch& scratch) {
    DigBlock& data = store.MutableBlock(block);
    PolygonBlock drawing(store, frame, data, layer, scratch);
    ForEachShownItem(data, store.LineTagMode, honourClip, [&drawing](DigDat& dat) { drawing.Draw(dat); });
}

}  // namespace orvane
