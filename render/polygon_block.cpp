#include <span>

#include "analysis/geometry/plane.h"
#include "platform/gdi_constants.h"
#include "render/block_drawing.h"
#include "render/fill_style.h"
#include "render/item_loop.h"
#include "render/line_polygon.h"

namespace orvane {

namespace {

class PolygonBlock : BlockDrawing {
public:
    PolygonBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
                 DrawScratch& buffers)
        : BlockDrawing(fromStore, target, block, layerPos, buffers),
          outLine_(layer.outLine),
          fillMode_(layer.fillMode),
          pgnType_(KnownPgnType(layer.pgnType)),
          normalPen_(OutlinePen(layer.lineType, layer.lineSize, layer.color2)),
          activeBrush_(CreateSolidBrush(store.ActiveColor)),
          normalBrush_(FillBrush(pgnType_, layer.color)),
          selected_(dc, normalPen_, normalBrush_) {}

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
        if (sub != nullptr) TakeSubLayer(*sub);
        const bool active = dat.active != 0;
        if (dat.drawnFlg != 1) dat.drawnFlg = 1;  // most stand already, and an unwritten item need not go back to memory
        dc.SetROP2(FillRop(fillMode_));
        if (active) {
            dc.SetROP2(Rop2::CopyPen);
            dc.SelectBrush(activeBrush_);
        }
        DrawFigure(pts, ringCounts, ringCnt, active);
        if (active) dc.SelectBrush(normalBrush_);
        if (sub != nullptr) PutLayerBack();
    }

private:
    /// The outline is a pen and no more: patterns of a line type stay away from polygons.
    Pen OutlinePen(std::int32_t lineType, std::int32_t lineSize, Rgb color) const {
        std::int32_t kind = 0;
        std::int32_t index = 0;
        return MakeLinePen(store, lineType, PenUnitsToPix(lineSize, penFactor), color, kind, index);
    }

    void TakeSubLayer(const SubLayDef& sub) {
        outLine_ = sub.outLine;
        fillMode_ = sub.fillMode;
        pgnType_ = KnownPgnType(sub.pgnType);
        const std::int32_t lineType = sub.lineType < 0 || sub.lineType > 4 ? 0 : sub.lineType;
        if (outLine_ == 0) dc.SelectPen(OutlinePen(lineType, sub.lineSize, sub.color2));
        dc.SelectBrush(FillBrush(pgnType_, sub.color));
    }

    /// All but the fill pattern number: whether the next items are hollow goes on being the sub layer's say.
    void PutLayerBack() {
        if (outLine_ == 0) dc.SelectPen(normalPen_);
        dc.SelectBrush(normalBrush_);
        outLine_ = layer.outLine;
        fillMode_ = layer.fillMode;
    }

    void DrawFigure(const Point* pts, const std::int32_t* ringCounts, std::int32_t ringCnt, bool active) {
        const bool filled = pgnType_ != kPgnHollow || active;
        if (!filled && outLine_ != 0) return;
        dc.BeginPath();
        dc.PolyPolygon(pts, ringCounts, ringCnt);
        dc.EndPath();
        if (!filled) {
            dc.StrokePath();
        } else if (outLine_ != 0) {
            dc.FillPath();
        } else {
            dc.StrokeAndFillPath();
        }
    }

    std::uint8_t outLine_, fillMode_;
    std::int32_t pgnType_;
    Pen normalPen_;
    Brush activeBrush_, normalBrush_;
    SelectedTools selected_;
};

}  // namespace

void DrawPolygonBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                      DrawScratch& scratch) {
    DigBlock& data = store.MutableBlock(block);
    PolygonBlock drawing(store, frame, data, layer, scratch);
    ForEachShownItem(data, store.LineTagMode, honourClip, [&drawing](DigDat& dat) { drawing.Draw(dat); });
}

}  // namespace orvane
