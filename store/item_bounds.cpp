#include "store/item_bounds.h"

#include "platform/to_int.h"

namespace orvane {
namespace {

/// Takes the point's truncated coordinate where it lies outside; `highShift` is added on the high side.
void GrowRect(Rect& rect, const DigPnt& pnt, double highShift) {
    // The high sides are asked with "not at least", which a NaN passes and "less" would not.
    if (rect.left > pnt.x) rect.left = TruncToInt32(pnt.x);
    if (!(rect.right >= pnt.x)) rect.right = TruncToInt32(pnt.x + highShift);
    if (rect.top > pnt.y) rect.top = TruncToInt32(pnt.y);
    if (!(rect.bottom >= pnt.y)) rect.bottom = TruncToInt32(pnt.y + highShift);
}

void GrowBlock(DigBlock& block, const DigPnt& pnt) {
    if (block.minX > pnt.x) block.minX = pnt.x;
    if (block.maxX < pnt.x) block.maxX = pnt.x;
    if (block.minY > pnt.y) block.minY = pnt.y;
    if (block.maxY < pnt.y) block.maxY = pnt.y;
}

void SetBlock(DigBlock& block, const DigPnt& pnt, double reach) {
    block.minX = pnt.x - reach;
    block.maxX = pnt.x + reach;
    block.minY = pnt.y - reach;
    block.maxY = pnt.y + reach;
}

}  // namespace

void GrowByAddedPoint(DigBlock& block, std::int32_t datPos, const DigPnt& pnt, bool isFirst, bool isCircle) {
    Rect& rect = block.dats[static_cast<std::size_t>(datPos)].rect;
    const double reach = isCircle ? pnt.z : 0;
    if (isFirst) {
        rect.left = TruncToInt32(pnt.x - reach);
        rect.right = TruncToInt32(pnt.x + reach + 0.5);
        rect.top = TruncToInt32(pnt.y - reach);
        rect.bottom = TruncToInt32(pnt.y + reach + 0.5);
    } else {
        GrowRect(rect, pnt, 0.5);
    }
    if (isFirst && datPos == 0) {
        SetBlock(block, pnt, reach);
    } else {
        GrowBlock(block, pnt);
    }
}

void GrowByMovedPoint(DigBlock& block, DigDat& dat, const DigPnt& pnt) {
    GrowRect(dat.rect, pnt, 0);
    GrowBlock(block, pnt);
}

bool RectHolds(const Rect& rect, std::span<const DigPnt> pnts) {
    const double left = rect.left - 1.0;
    const double right = rect.right + 1.0;
    const double top = rect.top - 1.0;
    const double bottom = rect.bottom + 1.0;
    bool holds = true;
    for (const DigPnt& pnt : pnts) {
        holds = holds && pnt.x >= left && pnt.x <= right && pnt.y >= top && pnt.y <= bottom;
    }
    return holds;
}

void CheckItemRect(DigDat& dat) {
    const bool any = dat.pntCnt > 0 && dat.pnts;
    dat.pnts.MarkInRect(any && RectHolds(dat.rect, {dat.pnts.Get(), static_cast<std::size_t>(dat.pntCnt)}));
}

void RecountBounds(DigBlock& block, bool isCircle) {
    bool any = false;
    for (const DigDat& dat : block.dats) {
        for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
            const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
            if (any) {
                GrowBlock(block, pnt);
            } else {
                SetBlock(block, pnt, isCircle ? pnt.z : 0);
            }
            any = true;
        }
    }
}

}  // namespace orvane
