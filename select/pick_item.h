// Whether one data item lies under a click: the rule of each type, in device pixels against the points that were drawn.
#pragma once

#include <cstdint>

#include "select/pick.h"
#include "select/pick_scratch.h"
#include "select/pick_window.h"
#include "store/cdigmem.h"

namespace orvane {

/// The hint takes all points for symbols and does not look at circles and ellipses.
enum class PickRule : std::uint8_t { Select, Hint };

/// Half the width and height of a point layer's images on the screen, in pixels.
struct ImageHalf {
    std::int32_t width_px = 0;
    std::int32_t height_px = 0;
};
ImageHalf ImageHalfOf(const LayerDef& layer, const ViewParams& view);
/// The centre of an image whose data point is at `p`, by the layer's `imgPos`.
Point ImageCentre(Point p, std::int32_t imgPos, ImageHalf half);

/// Tests items of one block against one click. The block's layer and the view must not change while it lives.
class ItemPick {
public:
    ItemPick(const ViewParams& view, const PickPlace& place, Point at, PickRule rule, const DigBlock& block,
             const LayerDef& layer, PickScratch& scratch);

    /// Texts, meshes and types without a rule are never met, nor is an item that the last frame did not draw or that has no
    /// points. An item whose rectangle nobody has looked at is looked at now, for the clicks to come.
    bool Meets(DigDat& dat) const {
        if (dat.drawnFlg != 1 || dat.clipFlg != 1 || dat.pntCnt < 1) return false;
        if (dat.pnts.InRect()) return !IsOutOfReach(dat.rect) && MeetsByPoints(dat);
        return LooksAndMeets(dat);
    }

private:
    bool IsOutOfReach(const Rect& rect) const;
    bool LooksAndMeets(DigDat& dat) const;
    bool MeetsByPoints(const DigDat& dat) const;
    bool MeetsPoint(const DigDat& dat) const;
    bool MeetsLine(const DigDat& dat) const;
    bool MeetsPolygon(const DigDat& dat) const;
    bool MeetsCircle(const DigDat& dat) const;
    bool MeetsEllipse(const DigDat& dat) const;

    std::int64_t Margin_px() const;
    bool AsImages() const { return rule_ == PickRule::Select && layer_.imgMode == 1; }
    /// A polygon too large for a region of pixels.
    bool IsLarge(const Rect& rect) const;
    /// For large polygons: no ray to the right from the click's map point crosses a side.
    bool IsClearOfRay(const Rect& rect) const;
    /// False when the item's sub layer is hidden, so that it is not met at all.
    bool SymbolSize(const DigDat& dat, std::int32_t& size_px) const;

    const LayerDef& layer_;
    const Point at_;
    const PickRule rule_;
    PickScratch& scratch_;
    const Rect client_;
    const DeviceTransform transform_;
    const double pixPerUnit_, scaleX_, scaleY_;
    const std::int32_t symbolSize_px_;
    const ImageHalf imageHalf_;
    DigPnt worldAt_;  ///< local to the block, by the rule of large polygons
    const PickWindow window_;
};

}  // namespace orvane
