#include <algorithm>

#include "render/item_loop.h"
#include "render/line_polygon.h"
#include "render/point_block.h"
#include "render/points.h"
#include "render/symbol_figures.h"
#include "store/strips.h"
#include "store/symbol_size.h"

namespace orvane {

namespace {

class SymbolWalk {
public:
    explicit SymbolWalk(PointBlock& points)
        : points_(points),
          dc_(points.dc),
          zoom_(points.store.view.Zoom),
          activePen_(CreatePen(PenStyle::Solid, PenUnitsToPix(2, points.penFactor), points.store.ActiveColor)),
          activeBrush_(CreateSolidBrush(points.store.ActiveColor)),
          normalBrush_(CreateSolidBrush(points.layer.color)),
          selected_(points.dc, normalPen_, normalBrush_) {}

    void Draw(DigDat& dat) {
        const SubLayDef* sub = points_.SubLayer(dat);
        if (sub != nullptr && sub->dspFlg == 0) {
            dat.drawnFlg = 0;
            return;
        }
        if (sub != nullptr && sub->imgMode == 1) {
            DrawImages(points_, &dat);
            return;
        }
        if (dat.pntCnt < 1) return;
        const LayerDef& layer = points_.layer;
        const SymbolPlace place = Place(dat.pnts[0], sub != nullptr ? sub->lineSize : layer.lineSize);
        const std::array<Point, 4> square = SymbolSquare(place);
        if (!PntsInStrips(square.data(), 4, points_.frame.stripA, points_.frame.stripB)) {
            dat.drawnFlg = 0;
            return;
        }
        MarkDrawn(dat);
        if (dat.active != 0) {
            dc_.SelectPen(activePen_);
            dc_.SelectBrush(activeBrush_);
        } else {
            dc_.SelectPen(normalPen_);
            dc_.SelectBrush(sub != nullptr ? CreateSolidBrush(sub->color) : normalBrush_);
        }
        const std::int32_t pntType = sub != nullptr ? sub->pntType : layer.pntType;
        DrawSymbolFigure(dc_, pntType, place, pntType == kTableSymbol ? Symbol(sub) : nullptr);
        if (sub != nullptr) dc_.SelectBrush(normalBrush_);
    }

private:
    SymbolPlace Place(const DigPnt& pnt, std::int32_t lineSize) const {
        // Values would crowd the picture at small scales, and a height of 0 is none.
        constexpr std::int32_t kMostZoomOfValues = 5000;
        constexpr double kLeastValue = 0.0001;
        return {points_.transform.ToDevice(pnt.x, pnt.y), SymbolHalfSide(lineSize, zoom_, points_.penFactor), pnt.z,
                pnt.z > kLeastValue && zoom_ <= kMostZoomOfValues};
    }

    /// A sub layer names its symbol by its line size; without one it is symbol 0. The first record with the number counts.
    const SymbolDef* Symbol(const SubLayDef* sub) {
        const std::int32_t wanted = sub != nullptr ? sub->lineSize : 0;
        return points_.symbols.Get(wanted, points_.store.symbols.size(), [this](std::int32_t symNo) -> const SymbolDef* {
            const GrowArray<SymbolDef>& all = points_.store.symbols;
            const SymbolDef* found =
                std::find_if(all.begin(), all.end(), [symNo](const SymbolDef& symbol) { return symbol.symNo == symNo; });
            return found != all.end() ? found : nullptr;
        });
    }

    PointBlock& points_;
    DeviceContext& dc_;
    std::int32_t zoom_;
    Pen normalPen_ = CreatePen(PenStyle::Solid, 1, 0);  // a hair line at every resolution
    Pen activePen_;
    Brush activeBrush_, normalBrush_;
    SelectedTools selected_;
};

}  // namespace

void DrawSymbols(PointBlock& points, DigDat* only) {
    SymbolWalk walk(points);
    const std::int32_t lineTagMode = points.store.LineTagMode;
    constexpr bool kHonourClip = false;
    if (only == nullptr) {
        ForEachShownItem(points.data, lineTagMode, kHonourClip, [&walk](DigDat& dat) { walk.Draw(dat); });
    } else if (PassesGate(*only, lineTagMode, kHonourClip)) {
        walk.Draw(*only);
    }
}

void DrawSymbolBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool /*honourClip*/,
                     DrawScratch& scratch, std::int32_t item) {
    PointBlock points(store, frame, store.MutableBlock(block), layer, scratch);
    DrawPointItems(points, item, DrawSymbols);
}

}  // namespace orvane
