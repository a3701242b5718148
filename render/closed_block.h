// What the blocks of closed figures share: the look of the layer and of its sub layers, and the path that draws a figure.
#pragma once

#include <cstdint>

#include "platform/gdi_constants.h"
#include "render/block_drawing.h"
#include "render/fill_style.h"
#include "render/line_polygon.h"

namespace orvane {

/// An outline is a pen and no more: patterns of a line type stay away from closed figures.
inline Pen OutlinePen(const CDigMem& store, std::int32_t lineType, std::int32_t lineSize, Rgb color) {
    std::int32_t kind = 0;
    std::int32_t index = 0;
    return MakeLinePen(store, lineType, PenUnitsToPix(lineSize, store.view.PenFactor()), color, kind, index);
}

/// Issues the verbs of one figure, which `shape` puts into a path; none for a figure with neither fill nor outline.
template <class Shape>
void DrawClosedFigure(DeviceContext& dc, bool filled, bool outlined, Shape shape) {
    if (!filled && !outlined) return;
    dc.BeginPath();
    shape();
    dc.EndPath();
    if (!filled) {
        dc.StrokePath();
    } else if (!outlined) {
        dc.FillPath();
    } else {
        dc.StrokeAndFillPath();
    }
}

class ClosedBlock : protected BlockDrawing {
protected:
    ClosedBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
                DrawScratch& buffers, const Pen& outlinePen)
        : BlockDrawing(fromStore, target, block, layerPos, buffers),
          outLine_(layer.outLine),
          fillMode_(layer.fillMode),
          pgnType_(KnownPgnType(layer.pgnType)),
          normalPen_(outlinePen),
          activeBrush_(CreateSolidBrush(store.ActiveColor)),
          normalBrush_(FillBrush(pgnType_, layer.color)),
          selected_(dc, normalPen_, normalBrush_) {}

    /// `makePen` makes the sub layer's outline; it is asked only where there is one.
    template <class MakePen>
    void TakeSubLayer(const SubLayDef& sub, MakePen makePen) {
        outLine_ = sub.outLine;
        fillMode_ = sub.fillMode;
        pgnType_ = KnownPgnType(sub.pgnType);
        if (outLine_ == 0) dc.SelectPen(makePen());
        dc.SelectBrush(FillBrush(pgnType_, sub.color));
    }

    /// Draws an item in the look at hand and puts the layer's back if that was a sub layer's. `shape` issues the figure's verb.
    template <class Shape>
    void DrawItem(DigDat& dat, bool fromSubLayer, Shape shape) {
        const bool active = dat.active != 0;
        MarkDrawn(dat);
        dc.SetROP2(FillRop(fillMode_));
        if (active) {
            dc.SetROP2(Rop2::CopyPen);
            dc.SelectBrush(activeBrush_);
        }
        DrawClosedFigure(dc, pgnType_ != kPgnHollow || active, outLine_ == 0, shape);
        if (active) dc.SelectBrush(normalBrush_);
        if (fromSubLayer) PutLayerBack();
    }

private:
    /// All but the fill pattern number: whether the next items are hollow goes on being the sub layer's say.
    void PutLayerBack() {
        if (outLine_ == 0) dc.SelectPen(normalPen_);
        dc.SelectBrush(normalBrush_);
        outLine_ = layer.outLine;
        fillMode_ = layer.fillMode;
    }

    std::uint8_t outLine_, fillMode_;
    std::int32_t pgnType_;
    Pen normalPen_;
    Brush activeBrush_, normalBrush_;
    SelectedTools selected_;
};

}  // namespace orvane
