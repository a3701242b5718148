#include "select/pick_item.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <span>

#include "analysis/geometry/plane.h"
#include "platform/point_in_region.h"
#include "platform/to_int.h"
#include "select/hit_shapes.h"
#include "select/world_point.h"
#include "store/image_scale.h"
#include "store/item_bounds.h"
#include "store/symbol_size.h"

namespace orvane {

namespace {

/// The style whose symbol is drawn four times as large as the others.
constexpr std::int32_t kLargeStyle = 12;
constexpr double kLargeStyleFactor = 4.0;
/// From this size in pixels on, the platform's regions of polygons are not reliable.
constexpr std::int32_t kLargePolygon_px = 1001;

std::span<const DigPnt> PntsOf(const DigDat& dat) { return {dat.pnts.Get(), static_cast<std::size_t>(dat.pntCnt)}; }

}  // namespace

ImageHalf ImageHalfOf(const LayerDef& layer, const ViewParams& view) {
    const double scale = ImageScale(layer, view.PixPerUnit());
    const auto half = [scale, &view](std::int32_t side_px) {
        return TruncToInt32(static_cast<double>(std::int64_t{side_px} * view.PenFactor()) * scale / 2.0);
    };
    return {half(layer.bmWidth), half(layer.bmHeight)};
}

Point ImageCentre(Point p, std::int32_t imgPos, ImageHalf half) {
    if (imgPos < 1 || imgPos > 4) return p;
    const auto shifted = [](std::int32_t v, std::int32_t by, bool up) {
        return SaturatedAdd(v, up ? by : SaturatedNegative(by));
    };
    return {shifted(p.x, half.width_px, imgPos <= 2), shifted(p.y, half.height_px, imgPos == 1 || imgPos == 3)};
}

ItemPick::ItemPick(const ViewParams& view, const PickPlace& place, Point at, PickRule rule, const DigBlock& block,
                   const LayerDef& layer, PickScratch& scratch)
    : layer_(layer),
      at_(at),
      rule_(rule),
      scratch_(scratch),
      client_(place.client),
      transform_(view, place.viewX, place.viewY, place.devOffX, place.devOffY, block.GX, block.GY),
      pixPerUnit_(view.PixPerUnit()),
      scaleX_(view.ScaleX),
      scaleY_(view.ScaleY),
      symbolSize_px_(SymbolHalfSide(layer.lineSize, view.Zoom, view.PenFactor())),
      imageHalf_(ImageHalfOf(layer, view)),
      worldAt_(FlippedWorldPoint(view, place, at)),
      window_(view, place, block.GX, block.GY, at, Margin_px()) {
    // The sign of GY is not what turning the axis asks for; it is exact where GY is 0.
    worldAt_.x -= block.GX;
    worldAt_.y = -(worldAt_.y - block.GY);
}

/// How far from the lines between its points an item of the layer may be met.
std::int64_t ItemPick::Margin_px() const {
    if (layer_.layType == kLayLine) return kBandHalf_px;
    if (layer_.layType != kLayPoint) return 0;
    if (AsImages()) {
        return 2 * std::int64_t{
                       (std::max)(std::abs(std::int64_t{imageHalf_.width_px}), std::abs(std::int64_t{imageHalf_.height_px}))};
    }
    return 4 * std::abs(std::int64_t{symbolSize_px_});
}

bool ItemPick::IsOutOfReach(const Rect& rect) const {
    switch (layer_.layType) {
        case kLayPoint:
        case kLayLine:
            return window_.Misses(rect);
        case kLayPolygon:
            return window_.Misses(rect) && (!IsLarge(rect) || IsClearOfRay(rect));
        case kLayEllipse:
            return !window_.Turned() && window_.Misses(rect);
        default:
            return false;  // a circle's radius need not be in its rectangle
    }
}

bool ItemPick::LooksAndMeets(DigDat& dat) const {
    CheckItemRect(dat);
    return MeetsByPoints(dat);
}

bool ItemPick::MeetsByPoints(const DigDat& dat) const {
    switch (layer_.layType) {
        case kLayPoint:
            return MeetsPoint(dat);
        case kLayLine:
            return MeetsLine(dat);
        case kLayPolygon:
            return MeetsPolygon(dat);
        case kLayCircle:
            return rule_ == PickRule::Select && MeetsCircle(dat);
        case kLayEllipse:
            return rule_ == PickRule::Select && MeetsEllipse(dat);
        default:
            return false;
    }
}

bool ItemPick::SymbolSize(const DigDat& dat, std::int32_t& size_px) const {
    std::int32_t style = layer_.lineType;
    if (dat.subLayNo >= 1) {
        if (const SubLayDef* sub = CDigMem::FindSubLay(layer_, dat.subLayNo)) {
            if (sub->dspFlg == 0) return false;
            style = sub->lineType;
        }
    }
    size_px = style == kLargeStyle ? TruncToInt32(kLargeStyleFactor * symbolSize_px_) : symbolSize_px_;
    return true;
}

bool ItemPick::MeetsPoint(const DigDat& dat) const {
    const Point p = transform_.ToDevice(dat.pnts[0].x, dat.pnts[0].y);
    if (AsImages()) {
        return InBoxAround(ImageCentre(p, layer_.imgPos, imageHalf_), imageHalf_.width_px, imageHalf_.height_px, at_);
    }
    std::int32_t size_px = 0;
    return SymbolSize(dat, size_px) && InBoxAround(p, size_px, size_px, at_);
}

bool ItemPick::MeetsLine(const DigDat& dat) const {
    Point a = transform_.ToDevice(dat.pnts[0].x, dat.pnts[0].y);
    for (const DigPnt& pnt : PntsOf(dat).subspan(1)) {
        const Point b = transform_.ToDevice(pnt.x, pnt.y);
        const bool offClient = (a.y < client_.top && b.y < client_.top) || (a.y > client_.bottom && b.y > client_.bottom) ||
                               (a.x < client_.left && b.x < client_.left) || (a.x > client_.right && b.x > client_.right);
        if (!offClient && InBandAlong(a, b, at_)) return true;
        a = b;
    }
    return false;
}

bool ItemPick::IsLarge(const Rect& rect) const {
    const auto size = [this](std::int32_t from, std::int32_t to, double scale) {
        return static_cast<double>(std::abs(std::int64_t{to} - from)) * scale * pixPerUnit_;
    };
    return (std::max)(TruncToInt32(size(rect.top, rect.bottom, scaleY_)), TruncToInt32(size(rect.left, rect.right, scaleX_))) >=
           kLargePolygon_px;
}

bool ItemPick::IsClearOfRay(const Rect& rect) const {
    // Points may stand a unit outside of the rectangle and are rounded to six decimals by the test that this saves. On the left
    // of a polygon that test has its own mind, so there it is asked.
    return worldAt_.y > rect.bottom + 2.0 || worldAt_.y < rect.top - 2.0 || worldAt_.x > rect.right + 2.0;
}

bool ItemPick::MeetsPolygon(const DigDat& dat) const {
    const std::span<const DigPnt> pnts = PntsOf(dat);
    if (IsLarge(dat.rect)) return InPolygonIfMemory(worldAt_, pnts).value_or(false);
    Point* const pts = scratch_.Points(dat.pntCnt);
    std::int32_t* const ringCounts = scratch_.RingCounts(dat.pntCnt);
    if (pts == nullptr || ringCounts == nullptr) return false;
    transform_.ToDevice(pnts.data(), dat.pntCnt, pts);
    return PtInPolyPolygon(pts, ringCounts, SplitRings(pnts, ringCounts, false), at_);
}

bool ItemPick::MeetsCircle(const DigDat& dat) const {
    const DigPnt& pnt = dat.pnts[0];
    const Point p = transform_.ToDevice(pnt.x, pnt.y);
    const double z = pnt.z * scaleX_ * pixPerUnit_ + 0.5;
    const Rect box{TruncToInt32(p.x - z), TruncToInt32(p.y - z), TruncToInt32(p.x + z), TruncToInt32(p.y + z)};
    // Truncated, the box of a circle below a pixel may lie beside its own centre, which is all that there is to be met.
    if (std::fabs(z) < 1.0) return at_ == p;
    return PtInEllipse(box, at_);
}

bool ItemPick::MeetsEllipse(const DigDat& dat) const {
    if (dat.pntCnt < 2) return false;
    const Point a = transform_.ToDevice(dat.pnts[0].x, dat.pnts[0].y);
    const Point b = transform_.ToDevice(dat.pnts[1].x, dat.pnts[1].y);
    return PtInEllipse({a.x, a.y, b.x, b.y}, at_);
}

}  // namespace orvane
