// Selection by a rectangle: what lies whole within it.
#include <algorithm>

#include "platform/rect.h"
#include "platform/to_int.h"
#include "select/pick.h"
#include "select/pick_item.h"

namespace orvane {

namespace {

/// Down to this scale denominator, items are boxed by their points, further out by their rectangles.
constexpr std::int32_t kBoxedByPoints = 150;

/// Corners of an item on the screen.
struct Corners {
    Point leftTop, rightBottom;
};

/// The device transform before it rounds.
class UnroundedTransform {
public:
    UnroundedTransform(const ViewParams& view, const PickPlace& place, const DigBlock& block)
        : view_(view), place_(place), block_(block), rotation_(view.Rotate), pixPerUnit_(view.PixPerUnit()) {}

    void ToDevice(double& x, double& y) const {
        x += block_.GX;
        y = -(y + block_.GY);
        rotation_.Apply(x, y);
        x = (x * view_.ScaleX - place_.viewX - view_.OffX) * pixPerUnit_ + place_.devOffX;
        y = (y * view_.ScaleY - place_.viewY - view_.OffY) * pixPerUnit_ + place_.devOffY;
    }

private:
    const ViewParams& view_;
    const PickPlace& place_;
    const DigBlock& block_;
    ViewRotation rotation_;
    double pixPerUnit_;
};

/// The two corners of the item's rectangle as they stand, turned with the view; which is the upper one is not asked.
Corners CornersOfRect(const UnroundedTransform& transform, const Rect& rect) {
    double left = rect.left, top = rect.top, right = rect.right, bottom = rect.bottom;
    transform.ToDevice(left, top);
    transform.ToDevice(right, bottom);
    return {{TruncToInt32(left), TruncToInt32(top)}, {ToInt(right), ToInt(bottom)}};
}

/// Around the points. Only the first one is rounded, on its right and lower side.
Corners CornersOfPoints(const UnroundedTransform& transform, const DigDat& dat) {
    Corners corners;
    for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
        const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
        double x = pnt.x, y = pnt.y;
        transform.ToDevice(x, y);
        const Point p{TruncToInt32(x), TruncToInt32(y)};
        if (i == 0) {
            corners = {p, {ToInt(x), ToInt(y)}};
        } else {
            corners.leftTop = {(std::min)(corners.leftTop.x, p.x), (std::min)(corners.leftTop.y, p.y)};
            corners.rightBottom = {(std::max)(corners.rightBottom.x, p.x), (std::max)(corners.rightBottom.y, p.y)};
        }
    }
    return corners;
}

/// An image's left top corner goes with its position on the data point, its right bottom one does not.
Corners GrownByImage(const Corners& corners, const LayerDef& layer, ImageHalf half) {
    const Point moved = ImageCentre(corners.leftTop, layer.imgPos, half);
    return {{SaturatedAdd(moved.x, SaturatedNegative(half.width_px)), SaturatedAdd(moved.y, SaturatedNegative(half.height_px))},
            {SaturatedAdd(corners.rightBottom.x, half.width_px), SaturatedAdd(corners.rightBottom.y, half.height_px)}};
}

bool HasRectRule(std::int32_t layType) {
    return layType == kLayPoint || layType == kLayLine || layType == kLayPolygon || layType == kLayCircle ||
           layType == kLayEllipse;
}

void SelectInBlock(const ViewParams& view, const PickPlace& place, const Rect& area, const LayerDef& layer, DigBlock& block) {
    if (!HasRectRule(layer.layType)) return;
    const UnroundedTransform transform(view, place, block);
    const bool isImage = layer.layType == kLayPoint && layer.imgMode == 1;
    const bool isSymbol = layer.layType == kLayPoint && !isImage;
    const ImageHalf half = isImage ? ImageHalfOf(layer, view) : ImageHalf{};
    for (DigDat& dat : block.dats) {
        if (dat.drawnFlg != 1 || dat.clipFlg != 1 || dat.pntCnt < 1) continue;
        Corners corners = view.Zoom > kBoxedByPoints ? CornersOfRect(transform, dat.rect) : CornersOfPoints(transform, dat);
        if (isImage) corners = GrownByImage(corners, layer, half);
        if (PtInRect(area, corners.leftTop) && (isSymbol || PtInRect(area, corners.rightBottom))) dat.active = 1;
    }
}

}  // namespace

std::int32_t SelectInRect(CDigMem& store, const Rect& selRect, const PickPlace& place, bool add) {
    if (!store.InitDone()) return 0;
    if (!add) store.ClearActive();
    const Rect area = NormalizeRect(selRect);
    for (const DigIndex& slot : store.Index()) {
        const LayerDef& layer = store.Layer(slot.layer);
        DigBlock& block = store.MutableBlock(slot.block);
        if (layer.dspFlg != 0 && layer.actFlg != 0 && block.inView != 0) SelectInBlock(store.view, place, area, layer, block);
    }
    return 0;
}

}  // namespace orvane
