#include "tests/select/plain_pick.h"

#include <cmath>
#include <vector>

#include "analysis/geometry/plane.h"
#include "platform/point_in_region.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

Point Device(const CDigMem& store, const PickPlace& place, const DigBlock& block, const DigPnt& pnt) {
    double x = pnt.x + block.GX;
    double y = -(pnt.y + block.GY);
    RotateView(x, y, store.view.Rotate);
    x = x * store.view.ScaleX - place.viewX - store.view.OffX;
    y = y * store.view.ScaleY - place.viewY - store.view.OffY;
    const double r = static_cast<double>(store.view.DotPerM) / static_cast<double>(store.view.Zoom);
    return {ToInt(x * r + place.devOffX), ToInt(y * r + place.devOffY)};
}

std::int32_t PointSize(const CDigMem& store, const LayerDef& layer) {
    const std::int32_t zoom = store.view.Zoom;
    const std::int32_t factor = TruncToInt32(store.view.DpiRatio);
    if (layer.lineSize == 9999) return 6 * factor;
    if (zoom >= 50001) return 2 * factor;
    if (zoom >= 30001) return 3 * factor;
    if (zoom >= 20001) return 4 * factor;
    if (zoom >= 10001) return 5 * factor;
    if (zoom >= 7001) return 6 * factor;
    if (zoom >= 5001) return 7 * factor;
    return zoom >= 3001 ? 9 * factor : 10 * factor;
}

bool InBox(std::int64_t x, std::int64_t y, std::int64_t halfWidth, std::int64_t halfHeight, Point at) {
    return at.x >= x - halfWidth && at.x < x + halfWidth && at.y >= y - halfHeight && at.y < y + halfHeight;
}

bool PointHit(const CDigMem& store, Point at, PlainRule rule, const LayerDef& layer, const DigDat& dat, Point p) {
    if (layer.imgMode == 1 && rule == PlainRule::Select) {
        double scale = static_cast<double>(store.view.DotPerM) / static_cast<double>(store.view.Zoom);
        if (scale < layer.imgMinScl) scale = layer.imgMinScl;
        if (scale > layer.imgMaxScl) scale = layer.imgMaxScl;
        const std::int32_t factor = TruncToInt32(store.view.DpiRatio);
        const std::int32_t hw = TruncToInt32(static_cast<double>(layer.bmWidth * factor) * scale / 2.0);
        const std::int32_t hh = TruncToInt32(static_cast<double>(layer.bmHeight * factor) * scale / 2.0);
        std::int32_t x = p.x, y = p.y;
        if (layer.imgPos == 1 || layer.imgPos == 2) x = SaturatedAdd(p.x, hw);
        if (layer.imgPos == 3 || layer.imgPos == 4) x = SaturatedAdd(p.x, -hw);
        if (layer.imgPos == 1 || layer.imgPos == 3) y = SaturatedAdd(p.y, hh);
        if (layer.imgPos == 2 || layer.imgPos == 4) y = SaturatedAdd(p.y, -hh);
        return InBox(x, y, hw, hh, at);
    }
    std::int32_t style = layer.lineType;
    if (dat.subLayNo >= 1) {
        for (const SubLayDef& sub : layer.subLays) {
            if (sub.subLayNo != dat.subLayNo) continue;
            if (sub.dspFlg == 0) return false;
            style = sub.lineType;
            break;
        }
    }
    const std::int32_t size = PointSize(store, layer) * (style == 12 ? 4 : 1);
    return InBox(p.x, p.y, size, size, at);
}

bool LineHit(const Rect& client, Point at, const std::vector<Point>& pts) {
    for (std::size_t i = 0; i + 1 < pts.size(); ++i) {
        const Point a = pts[i];
        const Point b = pts[i + 1];
        if (a.y < client.top && b.y < client.top) continue;
        if (a.y > client.bottom && b.y > client.bottom) continue;
        if (a.x < client.left && b.x < client.left) continue;
        if (a.x > client.right && b.x > client.right) continue;
        std::int32_t ox = 2, oy = 2;
        if (a.x == b.x) {
            oy = 0;
        } else if (a.y == b.y) {
            ox = 0;
        } else if ((a.x > b.x && a.y > b.y) || (a.x < b.x && a.y < b.y)) {
            ox = -2;
        }
        const Point band[] = {{SaturatedAdd(a.x, -ox), SaturatedAdd(a.y, -oy)},
                              {SaturatedAdd(b.x, -ox), SaturatedAdd(b.y, -oy)},
                              {SaturatedAdd(b.x, ox), SaturatedAdd(b.y, oy)},
                              {SaturatedAdd(a.x, ox), SaturatedAdd(a.y, oy)}};
        if (PtInPolygon(band, 4, at)) return true;
    }
    return false;
}

bool PolygonHit(const CDigMem& store, Point at, const PickPlace& place, const DigBlock& block, const DigDat& dat,
                const std::vector<Point>& pts) {
    const double r = static_cast<double>(store.view.DotPerM) / static_cast<double>(store.view.Zoom);
    const double high = std::fabs(static_cast<double>(dat.rect.bottom) - dat.rect.top) * store.view.ScaleY * r;
    const double wide = std::fabs(static_cast<double>(dat.rect.right) - dat.rect.left) * store.view.ScaleX * r;
    const std::span<const DigPnt> pnts(dat.pnts.Get(), static_cast<std::size_t>(dat.pntCnt));
    if (TruncToInt32(high) >= 1001 || TruncToInt32(wide) >= 1001) {
        double x = (at.x / r - place.devOffX) / store.view.ScaleX + place.viewX + store.view.OffX;
        double y = (at.y / r - place.devOffY) / store.view.ScaleY + place.viewY + store.view.OffY;
        RotateView(x, y, -store.view.Rotate);
        return PntInPgn({x - block.GX, -(y - block.GY), 0}, pnts) == 1;
    }
    std::vector<std::int32_t> counts(pts.size());
    return PtInPolyPolygon(pts.data(), counts.data(), SplitRings(pnts, counts.data(), false), at);
}

bool CircleHit(const CDigMem& store, Point at, const DigDat& dat, Point p) {
    const double r = static_cast<double>(store.view.DotPerM) / static_cast<double>(store.view.Zoom);
    const double z = dat.pnts[0].z * store.view.ScaleX * r + 0.5;
    if (std::fabs(z) < 1) return at == p;
    return PtInEllipse({TruncToInt32(p.x - z), TruncToInt32(p.y - z), TruncToInt32(p.x + z), TruncToInt32(p.y + z)}, at);
}

bool Passes(const LayerDef& layer, const DigBlock& block) { return layer.dspFlg != 0 && layer.actFlg != 0 && block.inView != 0; }

}  // namespace

bool PlainHit(const CDigMem& store, Point at, const PickPlace& place, PlainRule rule, const DigBlock& block,
              const LayerDef& layer, const DigDat& dat) {
    if (dat.drawnFlg != 1 || dat.clipFlg != 1 || dat.pntCnt < 1) return false;
    std::vector<Point> pts;
    for (std::int32_t i = 0; i < dat.pntCnt; ++i)
        pts.push_back(Device(store, place, block, dat.pnts[static_cast<std::size_t>(i)]));
    if (layer.layType == 1) return PointHit(store, at, rule, layer, dat, pts[0]);
    if (layer.layType == 2) return LineHit(place.client, at, pts);
    if (layer.layType == 3) return PolygonHit(store, at, place, block, dat, pts);
    if (rule == PlainRule::Hint) return false;
    if (layer.layType == 4) return CircleHit(store, at, dat, pts[0]);
    return layer.layType == 8 && pts.size() > 1 && PtInEllipse({pts[0].x, pts[0].y, pts[1].x, pts[1].y}, at);
}

std::int32_t PlainSelectAtPoint(CDigMem& store, Point at, const PickPlace& place, std::int32_t cycle, bool toggle) {
    if (!toggle && cycle == 0) store.ClearActive();
    std::vector<DigDat*> slots(200, nullptr);
    std::size_t count = 0;
    const std::vector<DigIndex> index(store.Index().begin(), store.Index().end());
    for (std::size_t i = index.size(); i-- > 0;) {
        const LayerDef& layer = store.Layer(index[i].layer);
        DigBlock& block = store.MutableBlock(index[i].block);
        if (!Passes(layer, block)) continue;
        for (std::size_t j = block.dats.size(); j-- > 0;) {
            if (!PlainHit(store, at, place, PlainRule::Select, block, layer, block.dats[j])) continue;
            slots[count] = &block.dats[j];
            if (count < 199) ++count;
        }
        if (!toggle && cycle == 0 && count > 0) break;
    }
    if (count == 0) return 0;
    if (toggle) {
        for (std::size_t i = 0; i < count; ++i) slots[i]->active = slots[i]->active == 1 ? 0 : 1;
    } else if (cycle == 0) {
        slots[0]->active = 1;
    } else {
        for (DigDat* dat : slots) {
            if (dat != nullptr) dat->active = 0;
        }
        slots[static_cast<std::size_t>(cycle) % count]->active = 1;
    }
    return static_cast<std::int32_t>(count);
}

FoundItem PlainPickForHint(CDigMem& store, Point at, const PickPlace& place) {
    const std::vector<DigIndex> index(store.Index().begin(), store.Index().end());
    for (std::size_t i = index.size(); i-- > 0;) {
        const LayerDef& layer = store.Layer(index[i].layer);
        const DigBlock& block = store.Block(index[i].block);
        if (!((layer.dspFlg != 0 && layer.actFlg != 0) || block.inView == 1)) continue;
        for (const DigDat& dat : block.dats) {
            if (PlainHit(store, at, place, PlainRule::Hint, block, layer, dat)) return {dat.datID, block.code, block.meshNo};
        }
    }
    return {};
}

}  // namespace orvane
