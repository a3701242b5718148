// Copies of items, with all that they own.
#include "store/cdigmem.h"
#include "store/guarded_alloc.h"
#include "store/item_bounds.h"
#include "store/mesh_size.h"

namespace orvane {
namespace {

/// A copy with its arrays, or null when there is no grid to copy or no memory for it.
std::unique_ptr<DigMeshAttr> CopyMesh(const DigMeshAttr* from) {
    if (from == nullptr) return nullptr;
    std::unique_ptr<DigMeshAttr> to = NewGuarded<DigMeshAttr>();
    if (to == nullptr) return nullptr;
    const std::size_t size = MeshSize(*from);
    to->hcnt = from->hcnt;
    to->vcnt = from->vcnt;
    to->arrayCnt = static_cast<std::int32_t>(size);
    if (from->useFlag && !CopyArray(to->useFlag, {from->useFlag.Get(), size})) return nullptr;
    if (from->meshColor && !CopyArray(to->meshColor, {from->meshColor.Get(), size})) return nullptr;
    return to;
}

/// A copy of text, anchor and look, with the font face and its size as in a new text; null when there is nothing to copy or no
/// memory.
std::unique_ptr<DigStr> CopyStr(const DigStr* from) {
    if (from == nullptr) return nullptr;
    std::unique_ptr<DigStr> to = NewGuarded<DigStr>();
    if (to == nullptr || !AssignText(to->text, from->text)) return nullptr;
    to->x = from->x;
    to->y = from->y;
    to->style = from->style;
    to->fill = from->fill;
    to->pos = from->pos;
    to->angle = from->angle;
    to->uline = from->uline;
    to->strike = from->strike;
    to->fcolor = from->fcolor;
    to->bcolor = from->bcolor;
    return to;
}

/// Gives `to` copies of what `from` owns. An item whose points cannot be copied has none.
void CopyOwned(DigDat& to, const DigDat& from) {
    to.pntCnt = from.pntCnt;
    if (from.pntCnt > 0) {
        const auto pntCnt = static_cast<std::size_t>(from.pntCnt);
        if (!CopyArray(to.pnts, {from.pnts.Get(), pntCnt})) to.pntCnt = 0;
        to.meshAttr = CopyMesh(from.meshAttr.get());
        if (from.orgPnts) {
            if (CopyArray(to.orgPnts, {from.orgPnts.Get(), static_cast<std::size_t>(from.orgPntCnt)})) {
                to.orgPntCnt = from.orgPntCnt;
            } else {
                to.pnts.Free();
                to.pntCnt = 0;
            }
        }
    }
    to.str = CopyStr(from.str.get());
}

}  // namespace

std::int32_t CDigMem::CopyData(std::string_view srcCode, std::int32_t srcMeshNo, std::int32_t srcDatID, std::string_view dstCode,
                               std::int32_t dstMeshNo) {
    const Found src = FindForChange(srcCode, srcMeshNo);
    const Found dst = FindForChange(dstCode, dstMeshNo);
    if (src.block == nullptr || dst.block == nullptr || src.layer->layType != dst.layer->layType) return 0;
    const std::int32_t newID = NextDatID(*dst.block);
    const DigDat* from = FindDatForChange(src, srcDatID);
    if (newID < 1 || from == nullptr) return 0;

    DigDat copy;
    copy.datID = newID;
    copy.lineTag = from->lineTag;
    copy.subLayNo = from->subLayNo;
    copy.clipFlg = from->clipFlg;
    copy.drawnFlg = from->drawnFlg;
    copy.active = from->active;
    copy.rect = from->rect;
    copy.orgRect = from->orgRect;
    copy.orgKept = from->orgKept;
    CopyOwned(copy, *from);
    if (!AppendDat(*dst.block, std::move(copy))) return 0;
    RecountBounds(*dst.block, dst.layer->layType == kLayCircle);
    return newID;
}

bool CDigMem::CopyDatInBlock(std::string_view code, std::int32_t meshNo, std::int32_t srcID, std::int32_t newID) {
    const Found found = FindForChange(code, meshNo);
    const DigDat* from = FindDatForChange(found, srcID);
    if (from == nullptr) return false;
    DigDat copy;
    copy.datID = newID;
    copy.lineTag = from->lineTag;
    copy.subLayNo = from->subLayNo;
    copy.clipFlg = 1;
    copy.rect = kEmptyItemRect;
    CopyOwned(copy, *from);
    return AppendDat(*found.block, std::move(copy));
}

}  // namespace orvane
