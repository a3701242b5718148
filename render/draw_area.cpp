// The area search: marks what meets a rectangle of the world, so that drawing and picking need not ask again.
//
// Corners are whole numbers of 32 bits, as truncation gives them, and all box arithmetic on them runs in 64 bits: no extent of a
// block and no rectangle can overflow it.
#include <algorithm>
#include <cstdlib>

#include "platform/rect.h"
#include "platform/to_int.h"
#include "render/index_slot.h"
#include "render/layers.h"
#include "store/strips.h"

namespace orvane {

namespace {

Box MovedBy(const Box& box, std::int64_t dx, std::int64_t dy) { return {box.left + dx, box.top + dy, box.right + dx, box.bottom + dy}; }

/// Covers the view when it is turned. Extents count by their size and not by their sign, which covers more than it must where
/// all corners lie on one side.
Box TurnedArea(const Box& area, const ViewParams& view) {
    const ViewRotation back(-view.Rotate);
    double px = static_cast<double>(area.left + TruncToInt32(view.OffX));
    double py = static_cast<double>(area.top + TruncToInt32(view.OffY));
    back.Apply(px, py);
    const std::int64_t rx = TruncToInt32(px);
    const std::int64_t ry = TruncToInt32(py);

    const double width = static_cast<double>(area.right - area.left);
    const double height = static_cast<double>(area.bottom - area.top);
    const double xs[] = {width, width, 0};
    const double ys[] = {0, height, height};
    constexpr std::int64_t kStart = 1410065407;
    Box extent{kStart, kStart, -kStart, -kStart};
    for (int i = 0; i < 3; ++i) {
        double x = xs[i];
        double y = ys[i];
        back.Apply(x, y);
        extent.left = (std::min)(extent.left, std::int64_t{TruncToInt32(x)});
        extent.top = (std::min)(extent.top, std::int64_t{TruncToInt32(y)});
        extent.right = (std::max)(extent.right, std::int64_t{TruncToInt32(x)});
        extent.bottom = (std::max)(extent.bottom, std::int64_t{TruncToInt32(y)});
    }
    return {rx - std::abs(extent.left), ry - std::abs(extent.top), rx + std::abs(extent.right), ry + std::abs(extent.bottom)};
}

/// The box between two map corners in the frame of the view, y downward, grown by one unit on all sides; it is never empty.
Box GrownBox(double x1, double y1, double x2, double y2) {
    return InflateBox(NormalizeBox({TruncToInt32(x1), TruncToInt32(-y1), TruncToInt32(x2), TruncToInt32(-y2)}), 1);
}

/// Both boxes have an inside, as GrownBox makes them.
bool Meets(const Box& a, const Box& b) { return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom; }

/// The rectangle of a search, rebased so that its left top corner is (0, 0): the quotients of the near-equality rule mean nothing
/// at large coordinates.
struct SearchArea {
    Box area;
    std::int64_t cornerX, cornerY;

    SearchArea(const Rect& given, const ViewParams& view) {
        const Box wanted = view.Rotate != 0 ? TurnedArea(ToBox(given), view) : ToBox(given);
        const Box grown = InflateBox(NormalizeBox(wanted), 1);
        cornerX = grown.left;
        cornerY = grown.top;
        area = MovedBy(grown, -cornerX, -cornerY);
    }

    Box Rebased(const Box& box) const { return MovedBy(box, -cornerX, -cornerY); }
    bool Shows(const Box& box) const { return Meets(area, box) || RectNearEqual(area, box); }
};

void MarkAll(DigBlock& block) {
    for (DigDat& dat : block.dats) {
        dat.drawnFlg = 1;
        dat.clipFlg = 1;
    }
}

void MarkEach(DigBlock& block, const SearchArea& search) {
    const double gx = block.GX;
    const double gy = block.GY;
    for (DigDat& dat : block.dats) {
        const Rect& rect = dat.rect;
        const Box box = search.Rebased(GrownBox(rect.left + gx, rect.top + gy, rect.right + gx, rect.bottom + gy));
        dat.drawnFlg = 1;
        dat.clipFlg = search.Shows(box) ? 1 : 0;
    }
}

/// Marks one block of a layer that is shown.
void MarkBlock(DigBlock& block, const SearchArea& search) {
    const Box box = search.Rebased(GrownBox(block.GX + block.minX, block.GY + block.maxY, block.GX + block.maxX, block.GY + block.minY));
    block.inView = search.Shows(box) ? 1 : 0;
    if (block.inView == 0) return;
    const Box& area = search.area;
    Box common;
    if (!IntersectBox(area, box, common)) {
        common = {(std::max)(area.left, box.left), (std::min)(area.top, box.top), (std::min)(area.right, box.right),
                  (std::max)(area.bottom, box.bottom)};
    }
    if (common == box) {
        MarkAll(block);
    } else {
        MarkEach(block, search);
    }
}

}  // namespace

bool SetDrawArea(CDigMem& store, const Rect& area) {
    if (!store.InitDone()) return false;
    const SearchArea search(area, store.view);
    for (const DigIndex slot : store.Index()) {
        if (!IsWholeSlot(store, slot)) return false;
        DigBlock& block = store.MutableBlock(slot.block);
        if (store.Layer(slot.layer).dspFlg == 0) {
            block.inView = 0;
        } else {
            MarkBlock(block, search);
        }
    }
    return true;
}

}  // namespace orvane
