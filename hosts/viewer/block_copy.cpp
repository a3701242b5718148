#include "hosts/viewer/block_copy.h"

#include <algorithm>
#include <set>
#include <utility>

#include "control/ctrl.h"
#include "hosts/viewer/item_changes.h"

namespace orvane {

namespace {

BlockBox BoundsOf(const DigBlock& block) { return {block.minX, block.minY, block.maxX, block.maxY}; }

void PutBounds(DigBlock& block, const BlockBox& bounds) {
    block.minX = bounds[0];
    block.minY = bounds[1];
    block.maxX = bounds[2];
    block.maxY = bounds[3];
}

std::size_t CountFeatures(const CDigMem& store, std::span<const BlockKey> keys) {
    std::size_t count = 0;
    for (const BlockKey& key : keys) {
        const std::int32_t pos = store.FindBlock(key.code, key.meshNo).block;
        if (pos >= 0) count += store.Block(pos).dats.size();
    }
    return count;
}

}  // namespace

std::map<BlockKey, BlockBox> BoundsOf(const CDigMem& store, std::span<const BlockKey> keys) {
    std::map<BlockKey, BlockBox> all;
    for (const BlockKey& key : keys) {
        const std::int32_t pos = store.FindBlock(key.code, key.meshNo).block;
        if (pos >= 0) all[key] = BoundsOf(store.Block(pos));
    }
    return all;
}

void PutBounds(CDigMem& store, const std::map<BlockKey, BlockBox>& bounds) {
    for (const auto& [key, one] : bounds) {
        const std::int32_t pos = store.FindBlock(key.code, key.meshNo).block;
        if (pos >= 0) PutBounds(store.MutableBlock(pos), one);
    }
}

std::map<BlockKey, BlockOrigin> OriginsOf(const CDigMem& store, std::span<const BlockKey> keys) {
    std::map<BlockKey, BlockOrigin> all;
    for (const BlockKey& key : keys) {
        const std::int32_t pos = store.FindBlock(key.code, key.meshNo).block;
        if (pos >= 0) all[key] = {FactsOf(store.Block(pos)), store.Block(pos).path};
    }
    return all;
}

void PutOrigins(CDigMem& store, const std::map<BlockKey, BlockOrigin>& origins) {
    for (const auto& [key, one] : origins) {
        const std::int32_t pos = store.FindBlock(key.code, key.meshNo).block;
        if (pos < 0) continue;
        PutFacts(store, key.code, key.meshNo, one.facts);
        store.MutableBlock(pos).path = one.path;
    }
}

std::set<std::int32_t> LayersWithData(CDigMem& store) {
    std::set<std::int32_t> layers;
    for (const DigIndex& entry : store.Index()) {
        if (entry.layer < store.LayerCnt()) layers.insert(entry.layer);  // a block may have no layer record
    }
    return layers;
}

std::vector<BlockKey> BlockKeys(CDigMem& store) {
    std::vector<BlockKey> keys;
    for (const DigIndex& entry : store.Index()) {
        const DigBlock& block = store.Block(entry.block);
        keys.push_back({std::string(block.code.View()), block.meshNo});
    }
    return keys;
}

bool AnyKeyTwice(std::span<const BlockKey> keys) { return std::set<BlockKey>(keys.begin(), keys.end()).size() != keys.size(); }

std::optional<std::vector<BlockCopy>> BlockCopies(const CDigMem& store, std::span<const BlockKey> keys,
                                                  const std::function<bool(double)>& progress) {
    constexpr std::size_t kTellEvery = 1000;
    const std::size_t all = CountFeatures(store, keys);
    std::size_t done = 0;
    std::vector<BlockCopy> copies;
    for (const BlockKey& key : keys) {
        const DigIndex found = store.FindBlock(key.code, key.meshNo);
        if (found.block < 0) continue;
        const DigBlock& block = store.Block(found.block);
        const LayerDef& layer = store.Layer(found.layer);
        BlockCopy copy{key, layer.layType, layer.layIndex, block.path, FactsOf(block), {}, {}};
        copy.bounds = BoundsOf(block);
        for (const DigDat& dat : block.dats) {
            if (progress && ++done % kTellEvery == 0 && !progress(static_cast<double>(done) / static_cast<double>(all)))
                return {};
            copy.items.push_back(CopyOf(dat));
        }
        copies.push_back(std::move(copy));
    }
    return copies;
}

void DeleteBlocks(OrvaneWidget& map, std::span<const BlockKey> keys) {
    for (const BlockKey& key : keys) map.Call("OrvDelLayGrpDat", {QByteArray::fromStdString(key.code), key.meshNo});
    map.Call("OrvReDraw");
}

bool MakeEmptyBlock(OrvaneWidget& map, const BlockCopy& block) {
    const QByteArray code = QByteArray::fromStdString(block.key.code);
    const auto make = [&] {
        return map
            .Call("DigMemAlloc2", {code, block.key.meshNo, block.layType, QByteArray::fromStdString(block.path), block.layIndex,
                                   block.facts.GX, block.facts.GY})
            .toBool();
    };
    if (!make()) return false;
    const CDigMem& store = map.Control().store;
    const std::int32_t layer = store.FindLayDef(block.key.code);
    if (layer < 0 || store.Layer(layer).layType == block.layType) return layer >= 0;
    // A layer that was there takes the type only when the block comes to stand in the place of a deleted one.
    map.Call("OrvDelLayGrpDat", {code, block.key.meshNo});
    return make();
}

bool MakeBlocks(OrvaneWidget& map, std::span<const BlockCopy> blocks, const std::function<bool(double)>& progress) {
    std::vector<BlockKey> made;
    bool all = true;
    std::size_t count = 0;
    std::size_t done = 0;
    for (const BlockCopy& block : blocks) count += block.items.size();
    for (const BlockCopy& block : blocks) {
        all = MakeEmptyBlock(map, block);
        if (!all) break;
        made.push_back(block.key);
        std::vector<ItemChange> items;
        for (const ItemCopy& item : block.items) {
            const auto position = static_cast<std::int32_t>(items.size());
            items.push_back({block.key.code, block.key.meshNo, position, std::nullopt, item});
        }
        const auto told = [&](double part) {
            const double now = static_cast<double>(done) + part * static_cast<double>(items.size());
            return !progress || progress(now / static_cast<double>((std::max)(count, std::size_t{1})));
        };
        all = PerformChanges(map, items, true, told) && told(1);  // blocks may be many and small
        if (!all) break;
        done += items.size();
        CDigMem& store = map.Control().store;
        const std::int32_t pos = store.FindBlock(block.key.code, block.key.meshNo).block;
        all = pos >= 0 && store.Block(pos).dats.size() == block.items.size();
        if (!all) break;
        PutFacts(store, block.key.code, block.key.meshNo, block.facts);
        PutBounds(store.MutableBlock(pos), block.bounds);
    }
    if (!all) DeleteBlocks(map, made);
    map.Call("OrvSortLayer");
    map.Call("OrvReDraw");
    return all;
}

}  // namespace orvane
