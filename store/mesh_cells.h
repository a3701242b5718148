// The cells that the grid points of a mesh item stand for.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "analysis/geometry/plane.h"
#include "store/records.h"

namespace orvane {

/// The four corners of a cell, local to the block, once around.
struct MeshCell {
    DigPnt corners[4];
};

/// The cells of one grid, one for each grid point, from the first to the last. Each is the grid's own quadrangle moved so that
/// its middle lies on the grid point; the last row and column borrow the quadrangle of their neighbour. Needs no memory but this,
/// so that a grid of any size can be walked.
class MeshCellWalk {
public:
    /// REQUIRES: at least two rows and columns.
    explicit MeshCellWalk(const DigMeshAttr& attr) : hcnt_(attr.hcnt), vcnt_(attr.vcnt) {}

    /// The next cell of the grid on these points, which the item has; those that it lacks read as zero.
    MeshCell Next(std::span<const DigPnt> pnts) {
        const auto at = [pnts](std::int64_t i) {
            const auto pos = static_cast<std::size_t>(i);
            return pos < pnts.size() ? pnts[pos] : DigPnt{};
        };
        const std::int64_t inRow = (std::min)(column_, hcnt_ - 2);
        const std::int64_t a = (std::min)(row_, vcnt_ - 2) * hcnt_ + inRow;
        const std::int64_t b = a + hcnt_;
        MeshCell cell{{at(a), at(a + 1), at(b + 1), at(b)}};
        // A cell folded so that its diagonals run side by side has no middle; that of the cell before serves it.
        SegCross(cell.corners[0], cell.corners[2], cell.corners[1], cell.corners[3], middle_);
        const DigPnt own = at((row_ == vcnt_ - 1 ? b : a) + (column_ == hcnt_ - 1 ? 1 : 0));
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
    std::int64_t hcnt_, vcnt_;
    std::int64_t row_ = 0, column_ = 0;
    DigPnt middle_{};
};

}  // namespace orvane
