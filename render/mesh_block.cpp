#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "render/closed_block.h"
#include "render/shapes.h"
#include "store/mesh_cells.h"
#include "store/mesh_size.h"

namespace orvane {

namespace {

/// Half the width of a cell, from the whole numbers of the bounds. REQUIRES: at least two points in a row.
double HalfCell(std::int32_t low, std::int32_t high, std::int32_t count) {
    return static_cast<double>(std::abs((std::int64_t{high} - low) / (std::int64_t{count} - 1))) / 2.0;
}

class MeshBlock : BlockDrawing {
public:
    MeshBlock(const CDigMem& fromStore, const FrameTarget& target, const DigBlock& block, std::int32_t layerPos,
              DrawScratch& buffers)
        : BlockDrawing(fromStore, target, block, layerPos, buffers),
          pgnType_(KnownPgnType(layer.pgnType)),
          selected_(dc, OutlinePen(store, layer.lineType, layer.lineSize, layer.color2), FillBrush(pgnType_, layer.color)) {}

    void Draw(DigDat& dat) {
        const DigMeshAttr& attr = *dat.meshAttr;
        if (attr.hcnt < 2 || attr.vcnt < 2) return;  // no cells, and no distance between them
        const double hx = HalfCell(dat.rect.left, dat.rect.right, attr.hcnt);
        const double hy = HalfCell(dat.rect.top, dat.rect.bottom, attr.vcnt);
        if (!box.InStrips(dat.rect, hx, hy)) {
            dat.drawnFlg = 0;
            return;
        }
        if (dat.pntCnt < 1) return;
        if (dat.pntCnt < 2 || !attr.useFlag || !attr.meshColor) {
            dat.drawnFlg = 0;
            return;
        }
        DrawCells(dat, attr);
    }

private:
    void DrawCells(DigDat& dat, const DigMeshAttr& attr) {
        dc.SetROP2(FillRop(layer.fillMode));
        const std::size_t count = (std::min)(MeshSize(attr), static_cast<std::size_t>(dat.pntCnt));
        const std::span<const DigPnt> pnts(dat.pnts.Get(), static_cast<std::size_t>(dat.pntCnt));
        MeshCellWalk walk(attr);
        for (std::size_t i = 0; i < count; ++i) {
            const MeshCell cell = walk.Next(pnts);
            if (attr.useFlag[i] == 0) continue;
            Point pts[4];
            transform.ToDevice(cell.corners, 4, pts);
            dc.SelectBrush(FillBrush(pgnType_, attr.meshColor[i]));
            dat.drawnFlg = 1;
            DrawClosedFigure(dc, pgnType_ != kPgnHollow, layer.outLine == 0, [&] { dc.Polygon(pts, 4); });
        }
    }

    std::int32_t pgnType_;
    SelectedTools selected_;
};

}  // namespace

void DrawMeshBlock(CDigMem& store, const FrameTarget& frame, std::int32_t block, std::int32_t layer, bool honourClip,
                   DrawScratch& scratch) {
    DigBlock& data = store.MutableBlock(block);
    MeshBlock drawing(store, frame, data, layer, scratch);
    for (DigDat& dat : data.dats) {
        if (dat.meshAttr != nullptr && (!honourClip || dat.clipFlg != 0)) drawing.Draw(dat);
    }
}

}  // namespace orvane
