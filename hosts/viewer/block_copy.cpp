#include "hosts/viewer/block_copy.h"

#include <set>
#include <utility>

#include "control/ctrl.h"

namespace orvane {

std::vector<BlockKey> BlockKeys(CDigMem& store) {
    std::vector<BlockKey> keys;
    for (const DigIndex& entry : store.Index()) {
        const DigBlock& block = store.Block(entry.block);
        keys.push_back({std::string(block.code.View()), block.meshNo});
    }
    return keys;
}

bool AnyKeyTwice(std::span<const BlockKey> keys) { return std::set<BlockKey>(keys.begin(), keys.end()).size() != keys.size(); }

std::vector<BlockCopy> BlockCopies(const CDigMem& store, std::span<const BlockKey> keys) {
    std::vector<BlockCopy> copies;
    for (const BlockKey& key : keys) {
        const DigIndex found = store.FindBlock(key.code, key.meshNo);
        if (found.block < 0) continue;
        const DigBlock& block = store.Block(found.block);
        const LayerDef& layer = store.Layer(found.layer);
        BlockCopy copy{key, layer.layType, layer.layIndex, block.path, block.GX, block.GY, {}};
        for (const DigDat& dat : block.dats) copy.items.push_back(CopyOf(dat));
        copies.push_back(std::move(copy));
    }
    return copies;
}

void DeleteBlocks(OrvaneWidget& map, std::span<const BlockKey> keys) {
    for (const BlockKey& key : keys) map.Call("OrvDelLayGrpDat", {QByteArray::fromStdString(key.code), key.meshNo});
    map.Call("OrvReDraw");
}

void MakeBlocks(OrvaneWidget& map, std::span<const BlockCopy> blocks) {
    for (const BlockCopy& block : blocks) {
        map.Call("DigMemAlloc2", {QByteArray::fromStdString(block.key.code), block.key.meshNo, block.layType,
                                  QByteArray::fromStdString(block.path), block.layIndex, block.GX, block.GY});
        std::vector<ItemChange> items;
        for (const ItemCopy& item : block.items) {
            const auto position = static_cast<std::int32_t>(items.size());
            items.push_back({block.key.code, block.key.meshNo, position, std::nullopt, item});
        }
        PerformChanges(map, items, true);
    }
    map.Call("OrvSortLayer");
    map.Call("OrvReDraw");
}

}  // namespace orvane
