#include "platform/gdi_constants.h"
#include "render/block_drawing.h"
#include "render/item_loop.h"
#include "render/line_pattern.h"
#include "render/line_polygon.h"

namespace orvane {

namespace {

/// Drops each point that lies on the pixel of the one kept before it; returns how many are left. A pixel that no picture reaches
/// stands for "none yet".
std::int32_t DropRepeats(Point* pts, std::int32_t count) {
    Point last{-99999999, -99999999};
    std::int32_t kept = 0;
    for (std::int32_t i = 0; i < count; ++i) {
        const Point pt = pts[i];
        pts[kept] = pt;
        if (pt != last) ++kept;
        last = pt;
    }
    return kept;
}

class LineBlock : BlockDrawing {
public:
    LineBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
              DrawScratch& buffers)
        : BlockDrawing(fromStore, target, block, layerPos, buffers),
          activePen_(pens_.Make(layer.lineType, PenUnitsToPix(3, penFactor), store.ActiveColor, kind_, index_)),
          normalPen_(pens_.Make(layer.lineType, PenUnitsToPix(layer.lineSize, penFactor), layer.color, kind_, index_)),
          activeBrush_(CreateSolidBrush(store.ActiveColor)),
          normalBrush_(CreateSolidBrush(layer.color)),
          selected_(dc, normalPen_, normalBrush_) {}

    void Draw(DigDat& dat) {
        if (!box.InStrips(dat.rect)) {
            dat.drawnFlg = 0;
            return;
        }
        if (dat.pntCnt < 1) return;
        Point* pts = scratch.Points(dat.pntCnt);
        if (pts == nullptr) return;
        transform.ToDevice(dat.pnts.Get(), dat.pntCnt, pts);
        const std::int32_t count = DropRepeats(pts, dat.pntCnt);
        if (count < 2) return;

        bool hidden = false;
        const SubLayDef* sub = SubLayerOf(dat, hidden);
        if (hidden) {
            dat.drawnFlg = 0;
            return;
        }
        // Kind and index are the block's: items behind this one that have no sub layer keep them, with the layer's own pen.
        if (sub != nullptr) {
            dc.SelectPen(pens_.Make(sub->lineType, PenUnitsToPix(sub->lineSize, penFactor), sub->color, kind_, index_));
        }
        MarkDrawn(dat);
        dc.SetROP2(Rop2::CopyPen);
        if (dat.active != 0) {
            dc.SelectBrush(activeBrush_);
            dc.SelectPen(activePen_);
        }
        DrawFigure(pts, count);
        if (dat.active != 0) {
            dc.SelectBrush(normalBrush_);
            dc.SelectPen(normalPen_);
        }
        if (sub != nullptr) dc.SelectPen(normalPen_);
    }

private:
    void DrawFigure(const Point* pts, std::int32_t count) {
        if (kind_ > kLineEndMarks) {
            DrawLinePattern(store, dc, frame.client, pts, count, index_);
            return;
        }
        dc.Polyline(pts, count);
        if (kind_ == kLineEndMarks) DrawLineEndMarks(store, dc, pts, count, index_);
    }

    LinePens pens_{store};
    std::int32_t kind_ = kLineStandard;
    std::int32_t index_ = -1;
    Pen activePen_, normalPen_;
    Brush activeBrush_, normalBrush_;
    SelectedTools selected_;
};

}  // namespace

void DrawLineBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                   DrawScratch& scratch) {
    DigBlock& data = store.MutableBlock(block);
    LineBlock drawing(store, frame, data, layer, scratch);
    ForEachShownItem(data, store.LineTagMode, honourClip, [&drawing](DigDat& dat) { drawing.Draw(dat); });
}

}  // namespace orvane
