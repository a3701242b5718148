#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "analysis/geometry/plane.h"
#include "render/closed_block.h"
#include "render/shapes.h"
#include "store/mesh_size.h"

namespace orvane {

namespace {

/// The four corners of a cell, local to the block, once around.
struct Quad {
    DigPnt corners[4];
};

/// The cells of one grid, from the first to the last. Each is the grid's own quadrangle moved so that its middle lies on the grid
/// point; the last row and column borrow the quadrangle of their neighbour. Needs no memory but this, so that a grid of any size
/// is drawn.
class CellWalk {
public:
    /// REQUIRES: at least two rows and columns.
    CellWalk(const DigDat& dat, const DigMeshAttr& attr)
        : pnts_(dat.pnts.Get()), pntCnt_(dat.pntCnt), hcnt_(attr.hcnt), vcnt_(attr.vcnt) {}

    Quad Next() {
        const std::int64_t inRow = (std::min)(column_, hcnt_ - 2);
        const std::int64_t a = (std::min)(row_, vcnt_ - 2) * hcnt_ + inRow;
        const std::int64_t b = a + hcnt_;
        Quad cell{{At(a), At(a + 1), At(b + 1), At(b)}};
        // A cell folded so that its diagonals run side by side has no middle; that of the cell before serves it.
        SegCross(cell.corners[0], cell.corners[2], cell.corners[1], cell.corners[3], middle_);
        const DigPnt own = At((row_ == vcnt_ - 1 ? b : a) + (column_ == hcnt_ - 1 ? 1 : 0));
        const double gx = own.x - middle_.x;
        const double gy = own.y - middle_.y;
        for (DigPnt& corner : cell.corners) {
            corner.x += gx;
            corner.y += gy;
        }
        if (++column_ == hcnt_) {
            column_ = 0;
            ++row_;
        }
        return cell;
    }

private:
    /// Points that were taken out of the item after its grid was set read as zero.
    DigPnt At(std::int64_t i) const { return i < pntCnt_ ? pnts_[i] : DigPnt{}; }

    const DigPnt* pnts_;
    std::int64_t pntCnt_, hcnt_, vcnt_;
    std::int64_t row_ = 0, column_ = 0;
    DigPnt middle_{};
};

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
        CellWalk walk(dat, attr);
        for (std::size_t i = 0; i < count; ++i) {
            const Quad cell = walk.Next();
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
