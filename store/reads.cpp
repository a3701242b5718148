// What hosts read of blocks and items.
#include "store/cdigmem.h"

namespace orvane {

std::int32_t CDigMem::GetLayDatCnt(std::string_view code, std::int32_t meshNo) const {
    const FoundConst found = FindForRead(code, meshNo);
    return found.block == nullptr ? 0 : found.block->datCnt;
}

std::int32_t CDigMem::GetDigDatInfo(std::string_view code, std::int32_t meshNo, std::int32_t idx) const {
    const FoundConst found = FindForRead(code, meshNo);
    if (found.block == nullptr || idx < 0 || idx > found.block->datCnt) return -1;
    // One behind the last is not refused; it reads as the cleared record that stands there.
    return idx == found.block->datCnt ? 0 : found.block->dats[static_cast<std::size_t>(idx)].datID;
}

bool CDigMem::GetDigDatInfoEx(std::string_view code, std::int32_t meshNo, std::int32_t datID, DatInfo& out) const {
    const FoundConst found = FindForRead(code, meshNo);
    const DigDat* dat = found.block == nullptr ? nullptr : FindDat(*found.block, datID);
    if (dat == nullptr) return false;
    out = {found.layer->layType, dat->lineTag, dat->pntCnt, dat->active == 1};
    return true;
}

std::string_view CDigMem::GetLayPath(std::string_view code, std::int32_t meshNo) const {
    const FoundConst found = FindForRead(code, meshNo);
    return found.block == nullptr ? std::string_view{} : found.block->path;
}

const DigDat* CDigMem::FindDat(std::string_view code, std::int32_t meshNo, std::int32_t datID) const {
    const FoundConst found = FindForRead(code, meshNo);
    return found.block == nullptr ? nullptr : FindDat(*found.block, datID);
}

std::int32_t CDigMem::PntCnt(std::string_view code, std::int32_t meshNo, std::int32_t datID) const {
    const DigDat* dat = FindDat(code, meshNo, datID);
    return dat == nullptr ? -1 : dat->pntCnt;
}

bool CDigMem::GetDigDatPnt(std::string_view code, std::int32_t meshNo, std::int32_t datID, double* x, double* y,
                           double* z) const {
    const FoundConst found = FindForRead(code, meshNo);
    const DigDat* dat = found.block == nullptr ? nullptr : FindDat(*found.block, datID);
    if (dat == nullptr) return false;
    for (std::int32_t i = 0; i < dat->pntCnt; ++i) {
        const DigPnt& pnt = dat->pnts[static_cast<std::size_t>(i)];
        x[i] = pnt.x + found.block->GX;
        y[i] = pnt.y + found.block->GY;
        if (z != nullptr) z[i] = pnt.z;
    }
    return true;
}

}  // namespace orvane
