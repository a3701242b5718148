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
    if (!GrowPnts(dat)) return false;
    const bool isFirst = dat.pntCnt == 0;
    dat.pnts[static_cast<std::size_t>(dat.pntCnt++)] = pnt;
    GrowByAddedPoint(*found.block, pos, pnt, isFirst, found.layer->layType == kLayCircle);
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
    return true;
}

bool CDigMem::EditDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt) {
    const Found found = FindForChange(code, meshNo);
    DigDat* dat = FindDatForChange(found, datID);
    if (dat == nullptr || !IsPointOf(*dat, pntIdx)) return false;
    dat->pnts[static_cast<std::size_t>(pntIdx)] = pnt;
    GrowByMovedPoint(*found.block, *dat, pnt);
    return true;
}

bool CDigMem::InsertDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx, DigPnt pnt) {
    const Found found = FindForChange(code, meshNo);
    DigDat* dat = FindDatForChange(found, datID);
    // The item gets longer also where the index lies behind it and the answer is false. The new last point is cleared.
    if (dat == nullptr || pntIdx < 0 || !GrowPnts(*dat)) return false;
    ++dat->pntCnt;
    if (pntIdx >= dat->pntCnt) return false;
    dat->pnts[static_cast<std::size_t>(pntIdx)] = pnt;
    GrowByMovedPoint(*found.block, *dat, pnt);
    return true;
}

bool CDigMem::DelDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t pntIdx) {
    DigDat* dat = FindDatForChange(FindForChange(code, meshNo), datID);
    if (dat == nullptr || !IsPointOf(*dat, pntIdx)) return false;
    const auto count = static_cast<std::size_t>(dat->pntCnt);
    for (auto i = static_cast<std::size_t>(pntIdx); i + 1 < count; ++i) dat->pnts[i] = dat->pnts[i + 1];
    --dat->pntCnt;
    // The answer is whether points are left, so that of the last one's deletion is false.
    return dat->pnts.Resize(count, count - 1) && dat->pnts;
}

}  // namespace orvane
