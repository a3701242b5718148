// The points of an item: all at once or one by one.
#include <limits>

#include "store/cdigmem.h"
#include "store/guarded_alloc.h"
#include "store/item_bounds.h"

namespace orvane {
namespace {

/// One point more, cleared; `pntCnt` stays. False leaves the item as it was. A count that no array can have is not raised.
bool GrowPnts(DigDat& dat) {
    if (dat.pntCnt < 0 || dat.pntCnt == (std::numeric_limits<std::int32_t>::max)()) return false;
    const auto count = static_cast<std::size_t>(dat.pntCnt);
    return dat.pnts.Resize(count, count + 1);
}

bool IsPointOf(const DigDat& dat, std::int32_t pntIdx) { return pntIdx >= 0 && pntIdx < dat.pntCnt && dat.pnts; }

}  // namespace

bool CDigMem::AddDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, DigPnt pnt) {
    const Found found = FindForChange(code, meshNo);
    if (found.block == nullptr) return false;
    const std::int32_t pos = FindDatDown(*found.block, datID);
    if (pos < 0) return false;
    DigDat& dat = found.block->dats[static_cast<std::size_t>(pos)];
    const bool wasInRect = dat.pnts.InRect();
    if (!GrowPnts(dat)) return false;
    const bool isFirst = dat.pntCnt == 0;
    dat.pnts.Change()[dat.pntCnt++] = pnt;
    GrowByAddedPoint(*found.block, pos, pnt, isFirst, found.layer->layType == kLayCircle);
    dat.pnts.MarkInRect((isFirst || wasInRect) && RectHolds(dat.rect, {&pnt, 1}));
    return true;
}

bool CDigMem::SetDigDatPnts(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::span<const DigPnt> pnts) {
    const Found found = FindForChange(code, meshNo);
    if (found.block == nullptr || pnts.empty()) return false;
    const std::int32_t pos = FindDatDown(*found.block, datID);
    if (pos < 0 || pnts.size() > static_cast<std::size_t>((std::numeric_limits<std::int32_t>::max)())) return false;
    OwnedArray<DigPnt> copy;
    if (!CopyArray(copy, pnts)) return false;
    DigDat& dat = found.block->dats[static_cast<std::size_t>(pos)];
    dat.pnts = std::move(copy);
    dat.pntCnt = static_cast<std::int32_t>(pnts.size());
    const bool isCircle = found.layer->layType == kLayCircle;
    for (std::size_t i = 0; i < pnts.size(); ++i) {
        GrowByAddedPoint(*found.block, pos, dat.pnts[i], i == 0, isCircle);
    }
    CheckItemRect(dat);
    return true;
}

bool CDigMem::EditDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt) {
    const Found found = FindForChange(code, meshNo);
    DigDat* dat = FindDatForChange(found, datID);
    if (dat == nullptr || !IsPointOf(*dat, pntIdx)) return false;
    const bool wasInRect = dat->pnts.InRect();
    dat->pnts.Change()[pntIdx] = pnt;
    GrowByMovedPoint(*found.block, *dat, pnt);
    dat->pnts.MarkInRect(wasInRect && RectHolds(dat->rect, {&pnt, 1}));
    return true;
}

bool CDigMem::InsertDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt) {
    const Found found = FindForChange(code, meshNo);
    DigDat* dat = FindDatForChange(found, datID);
    // The item gets longer also where the index lies behind it and the answer is false. The new last point is cleared.
    if (dat == nullptr || pntIdx < 0 || !GrowPnts(*dat)) return false;
    ++dat->pntCnt;
    if (pntIdx >= dat->pntCnt) return false;
    dat->pnts.Change()[pntIdx] = pnt;
    GrowByMovedPoint(*found.block, *dat, pnt);
    return true;
}

bool CDigMem::DelDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx) {
    DigDat* dat = FindDatForChange(FindForChange(code, meshNo), datID);
    if (dat == nullptr || !IsPointOf(*dat, pntIdx)) return false;
    const auto count = static_cast<std::size_t>(dat->pntCnt);
    const bool wasInRect = dat->pnts.InRect();
    DigPnt* const pnts = dat->pnts.Change();
    for (auto i = static_cast<std::size_t>(pntIdx); i + 1 < count; ++i) pnts[i] = pnts[i + 1];
    --dat->pntCnt;
    // The answer is whether points are left, so that of the last one's deletion is false.
    const bool left = dat->pnts.Resize(count, count - 1) && dat->pnts;
    dat->pnts.MarkInRect(wasInRect);
    return left;
}

}  // namespace orvane
