// The selection: the `active` bytes of the items.
#include "store/cdigmem.h"

namespace orvane {

std::int32_t CDigMem::ClearActive() {
    std::int32_t cleared = 0;
    for (const DigIndex& entry : Index()) {
        if (Layer(entry.layer).actFlg == 0) continue;
        for (DigDat& dat : MutableBlock(entry.block).dats) {
            if (dat.active == 1) ++cleared;
            if (dat.active != 0) dat.active = 0;  // what is not written need not go back to memory
        }
    }
    return cleared;
}

bool CDigMem::ActivateForJump(std::string_view code, std::int32_t meshNo, std::int32_t datID, bool active, bool& hasPoints,
                              double& meanX, double& meanY) {
    const Found found = FindForChange(code, meshNo);
    DigDat* dat = FindDatForChange(found, datID);
    if (dat == nullptr) return false;
    dat->active = active;
    hasPoints = dat->pntCnt > 0;
    if (!hasPoints) return true;
    double sumX = 0;
    double sumY = 0;
    for (std::int32_t i = 0; i < dat->pntCnt; ++i) {
        const DigPnt& pnt = dat->pnts[static_cast<std::size_t>(i)];
        sumX += pnt.x + found.block->GX;
        sumY += pnt.y + found.block->GY;
    }
    meanX = sumX / dat->pntCnt;
    meanY = sumY / dat->pntCnt;
    return true;
}

}  // namespace orvane
