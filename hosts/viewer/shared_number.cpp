#include "hosts/viewer/shared_number.h"

#include "control/ctrl.h"
#include "hosts/viewer/item_changes.h"
#include "hosts/viewer/selecting.h"

namespace orvane {

namespace {

using Placed = std::pair<std::int32_t, ItemCopy>;

std::vector<Placed> FeaturesOf(const CDigMem& store, const ItemKey& key) {
    std::vector<Placed> features;
    const std::int32_t pos = store.FindBlock(key.code, key.meshNo).block;
    if (pos < 0) return features;
    std::int32_t position = 0;
    for (const DigDat& dat : store.Block(pos).dats) {
        if (dat.datID == key.datID) features.emplace_back(position, CopyOf(dat));
        ++position;
    }
    return features;
}

std::vector<ItemChange> ChangesBetween(const ItemKey& key, const std::vector<Placed>& before, const std::vector<Placed>& after) {
    std::vector<ItemChange> changes;
    if (before.size() == after.size() + 1) {
        std::size_t gone = 0;
        while (gone < after.size() && before[gone] == after[gone]) ++gone;
        changes.push_back({key.code, key.meshNo, before[gone].first, before[gone].second, std::nullopt});
    } else if (before.size() == after.size()) {
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (before[i] == after[i]) continue;
            changes.push_back({key.code, key.meshNo, after[i].first, before[i].second, after[i].second});
        }
    }
    return changes;
}

}  // namespace

std::optional<SharedNumber> SharedBy(const CDigMem& store, const ItemPlace& picked) {
    std::vector<Placed> features = FeaturesOf(store, picked.key);
    if (features.size() < 2) return std::nullopt;
    const BlockKey block{picked.key.code, picked.key.meshNo};
    return SharedNumber{picked, std::move(features), BoundsOf(store, {&block, 1})};
}

void PutBack(OrvaneWidget& map, const SharedNumber& shared) {
    const CDigMem& store = map.Control().store;
    const std::vector<ItemChange> changes =
        ChangesBetween(shared.picked.key, shared.features, FeaturesOf(store, shared.picked.key));
    PerformChanges(map, changes, false);
    PutBounds(map.Control().store, shared.bounds);
    SelectOnly(map, {&shared.picked, 1});
    map.Call("OrvReDraw");
}

}  // namespace orvane
