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

namespace orvane {

namespace {

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

/// The rectangle of a search, moved so that its left top corner is (0, 0).
///
/// A box is found when it meets the rectangle or nearly equals it (RectNearEqual), and one look answers both: a side of 0 matches
/// no side above 0, and a side above 0 only such as lie above 0, so a box that nearly equals (0, 0, width, height) meets it too.
class SearchArea {
public:
    SearchArea(const Rect& given, const ViewParams& view) {
        const Box wanted = view.Rotate != 0 ? TurnedArea(ToBox(given), view) : ToBox(given);
        const Box grown = InflateBox(NormalizeBox(wanted), 1);
        cornerX_ = grown.left;
        cornerY_ = grown.top;
        width_ = grown.right - grown.left;
        height_ = grown.bottom - grown.top;
    }

    /// The box between two map corners: y turned downward, grown by one unit on all sides, moved as the rectangle. It is never
    /// empty.
    Box Rebased(double x1, double y1, double x2, double y2) const {
        const std::int64_t left = TruncToInt32(x1), right = TruncToInt32(x2);
        const std::int64_t top = TruncToInt32(-y1), bottom = TruncToInt32(-y2);
        return {(std::min)(left, right) - 1 - cornerX_, (std::min)(top, bottom) - 1 - cornerY_,
                (std::max)(left, right) + 1 - cornerX_, (std::max)(top, bottom) + 1 - cornerY_};
    }
    // Without shortcuts: which item lies where cannot be foretold, and a wrong guess costs more than all four comparisons.
    bool Finds(const Box& box) const { return (box.left < width_) & (box.right > 0) & (box.top < height_) & (box.bottom > 0); }
    bool Holds(const Box& box) const { return box.left >= 0 && box.right <= width_ && box.top >= 0 && box.bottom <= height_; }

private:
    std::int64_t cornerX_, cornerY_, width_, height_;
};

void MarkAll(DigBlock& block) {
    for (DigDat& dat : block.dats) {
        // Most flags stand already. What is not written need not go back to memory, and that is what this loop waits for.
        if ((dat.drawnFlg & dat.clipFlg) != 1) dat.drawnFlg = dat.clipFlg = 1;
    }
}

void MarkEach(DigBlock& block, const SearchArea& area) {
    const SearchArea search = area;  // a copy that the writes below cannot alias
    const double gx = block.GX;
    const double gy = block.GY;
    for (DigDat& dat : block.dats) {
        const Rect& rect = dat.rect;
        dat.drawnFlg = 1;
        dat.clipFlg = search.Finds(search.Rebased(rect.left + gx, rect.top + gy, rect.right + gx, rect.bottom + gy)) ? 1 : 0;
    }
}

/// Marks one block of a layer that is shown.
void MarkBlock(DigBlock& block, const SearchArea& search) {
    const Box box = search.Rebased(block.GX + block.minX, block.GY + block.maxY, block.GX + block.maxX, block.GY + block.minY);
    block.inView = search.Finds(box) ? 1 : 0;
    if (block.inView == 0) return;
    if (search.Holds(box)) {
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
