// Making and deleting blocks.
#include "geo/mesh_number.h"
#include "platform/to_int.h"
#include "store/cdigmem.h"
#include "store/dat_lookup.h"
#include "store/guarded_alloc.h"
#include "store/layer_type.h"

namespace orvane {
namespace {

/// A record's path holds so many bytes.
constexpr std::size_t kMaxPath = 511;

void FreeItems(DigBlock& block) {
    block.datCnt = 0;
    block.datMax = 0;
    block.dats.Clear();
    block.datLookup.reset();
}

}  // namespace

bool CDigMem::DigMemAlloc(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path,
                          std::int32_t index) {
    const MeshXY origin = MeshOrigin(0, meshNo);
    return MakeBlock(code, meshNo, layType, path, index, origin.x, origin.y);
}

bool CDigMem::DigMemAlloc2(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path,
                           std::int32_t index, double GX, double GY) {
    return MakeBlock(code, meshNo, layType, path, index, TruncToInt32(GX), TruncToInt32(GY));
}

bool CDigMem::MakeBlock(std::string_view code, std::int32_t meshNo, std::int32_t layType, std::string_view path,
                        std::int32_t index, std::int32_t gx, std::int32_t gy) {
    if (!initDone_ || TillZero(code).size() > static_cast<std::size_t>(kMaxCode)) return false;
    if (FindBlock(code, meshNo).block >= 0) return false;
    // A text of its own, because the one given may stand in a record that moves.
    FixedText<kMaxCode> blockCode;
    blockCode.Set(code);
    code = blockCode.View();
    std::int32_t layer = FindLayDef(code);
    const bool isNewLayer = layer < 0;
    if (isNewLayer && LayerCnt() == kMaxLayers) return false;
    // A new layer that gets no record leaves the entry pointing behind the table, until a later layer takes that place.
    const bool makesRecord = isNewLayer && IsMakeableType(layType) && !code.empty();
    const std::int32_t freeSlot = keys_.FreeSlot();

    // Everything that can fail comes first; the block array last, because its size tells.
    std::string pathText;
    if (!AssignText(pathText, TillZero(path).substr(0, kMaxPath)) || !keys_.ReserveBlock()) return false;
    if (makesRecord && (!keys_.ReserveLayer() || !EnsureRoom(layers_, layers_.size() + 1))) return false;
    if (isNewLayer && !makesRecord && !keys_.ReserveOrphan()) return false;
    if (freeSlot < 0 && !blocks_.Resize(blocks_.size() + 1)) return false;

    const std::int32_t pos = freeSlot < 0 ? BlockCnt() - 1 : freeSlot;
    if (freeSlot >= 0) keys_.TakeFreeSlot();
    DigBlock& block = MutableBlock(pos);
    block.path = std::move(pathText);
    block.code = blockCode;
    block.blkState = 1;
    block.meshNo = meshNo;
    FreeItems(block);
    block.GX = gx;
    block.GY = gy;
    block.minX = block.minY = block.maxX = block.maxY = 0;
    block.orgKept = false;

    if (isNewLayer) {
        layer = LayerCnt();
        if (makesRecord) AppendLayer(blockCode, layType);
    } else if (freeSlot >= 0) {
        // Only a reused slot hands its type on to a layer that is there already.
        MutableLayer(layer).layType = layType;
    }
    if (makesRecord) {
        MutableLayer(layer).layIndex = index;
        keys_.LayerKeyChanged(layer);
    }
    keys_.Add(pos, layer);
    return true;
}

bool CDigMem::DigMemDelete(std::string_view code, std::int32_t meshNo) {
    const DigIndex entry = FindBlock(code, meshNo);
    if (entry.block < 0) return false;
    DeleteBlock(entry.block);
    return true;
}

std::int32_t CDigMem::DigMemDeleteLay(std::string_view code) {
    if (TillZero(code).size() > static_cast<std::size_t>(kMaxCode)) return 0;
    // A text of its own, because the one given may stand in a block that goes.
    FixedText<kMaxCode> layerCode;
    layerCode.Set(code);
    std::int32_t deleted = 0;
    for (std::int32_t i = 0; i < BlockCnt(); ++i) {
        if (Block(i).blkState < 0 || Block(i).code != layerCode.View()) continue;
        DeleteBlock(i);
        ++deleted;
    }
    return deleted;
}

std::int32_t CDigMem::DigMemDeleteMeshNo(std::int32_t meshNo) {
    std::int32_t deleted = 0;
    for (std::int32_t i = 0; i < BlockCnt(); ++i) {
        if (Block(i).blkState < 0 || Block(i).meshNo != meshNo) continue;
        DeleteBlock(i);
        ++deleted;
    }
    return deleted;
}

/// The entry goes by the block's key: where that is another block's entry, it is the other one's that goes.
void CDigMem::DeleteBlock(std::int32_t pos) {
    DigBlock& block = MutableBlock(pos);
    const std::int32_t layer = FindLayDef(block.code.View());
    if (layer >= 0) keys_.RemoveKey(layer, block.meshNo);
    FreeItems(block);
    block.path.clear();
    block.code.Clear();
    block.meshNo = 0;
    if (block.blkState == kFreeBlock) return;
    block.blkState = kFreeBlock;
    keys_.BlockFreed(pos);
}

}  // namespace orvane
