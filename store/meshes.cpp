// The grids of mesh items.
#include <algorithm>
#include <limits>

#include "store/cdigmem.h"
#include "store/guarded_alloc.h"
#include "store/item_bounds.h"
#include "store/mesh_size.h"

namespace orvane {
namespace {

/// Whether an array of `size` elements may be laid over one of the grid's own: it must be as long as the item has points, and the
/// grid's array, which points added or deleted later do not change, must have room.
bool FitsMesh(const DigDat* dat, std::size_t size) {
    return dat != nullptr && size > 0 && dat->pntCnt >= 0 && size == static_cast<std::size_t>(dat->pntCnt) &&
           dat->meshAttr != nullptr && size <= MeshSize(*dat->meshAttr);
}

}  // namespace

DigDat* CDigMem::FindMeshDat(const Found& found, std::int32_t datID) {
    if (found.block == nullptr || found.layer->layType != kLayMesh) return nullptr;
    const std::int32_t pos = FindDatDown(*found.block, datID);
    return pos < 0 ? nullptr : &found.block->dats[static_cast<std::size_t>(pos)];
}

bool CDigMem::SetMeshDat(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t hcnt, std::int32_t vcnt,
                         std::span<const DigPnt> pnts) {
    const std::int64_t product = static_cast<std::int64_t>(hcnt) * vcnt;
    if (product < 1 || product > (std::numeric_limits<std::int32_t>::max)()) return false;
    const auto size = static_cast<std::size_t>(product);
    const Found found = FindForChange(code, meshNo);
    DigDat* dat = FindMeshDat(found, datID);
    if (dat == nullptr || pnts.size() < size) return false;

    std::unique_ptr<DigMeshAttr> attr = NewGuarded<DigMeshAttr>();
    OwnedArray<DigPnt> copy;
    if (attr == nullptr || !attr->useFlag.Resize(0, size, false) || !attr->meshColor.Resize(0, size) ||
        !CopyArray(copy, pnts.first(size))) {
        return false;
    }
    std::fill_n(attr->useFlag.Get(), size, std::uint8_t{0xFF});
    attr->hcnt = hcnt;
    attr->vcnt = vcnt;
    attr->arrayCnt = static_cast<std::int32_t>(product);
    dat->meshAttr = std::move(attr);
    dat->pnts = std::move(copy);
    dat->pntCnt = static_cast<std::int32_t>(product);
    const auto pos = static_cast<std::int32_t>(dat - found.block->dats.data());
    for (std::size_t i = 0; i < size; ++i) GrowByAddedPoint(*found.block, pos, dat->pnts[i], i == 0, false);
    CheckItemRect(*dat);
    return true;
}

bool CDigMem::SetMeshUseFlag(std::string_view code, std::int32_t meshNo, std::int32_t datID,
                             std::span<const std::uint8_t> useFlag) {
    DigDat* dat = FindMeshDat(FindForChange(code, meshNo), datID);
    if (!FitsMesh(dat, useFlag.size()) || !dat->meshAttr->useFlag) return false;
    std::transform(useFlag.begin(), useFlag.end(), dat->meshAttr->useFlag.Get(),
                   [](std::uint8_t flag) { return static_cast<std::uint8_t>(flag != 0); });
    return true;
}

bool CDigMem::SetMeshColor(std::string_view code, std::int32_t meshNo, std::int32_t datID,
                           std::span<const std::uint32_t> colors) {
    DigDat* dat = FindMeshDat(FindForChange(code, meshNo), datID);
    if (!FitsMesh(dat, colors.size()) || !dat->meshAttr->meshColor) return false;
    std::copy(colors.begin(), colors.end(), dat->meshAttr->meshColor.Get());
    return true;
}

}  // namespace orvane
