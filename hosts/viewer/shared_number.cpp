#include "hosts/viewer/shared_number.h"

#include <limits>
#include <set>

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

/// Numbers that no feature of a block has: behind its highest one, or the lowest ones where none is left there.
class FreeNumbers {
public:
    FreeNumbers(const std::map<std::int32_t, std::size_t>& used, std::size_t wanted) : used_(used) {
        constexpr std::int64_t kMost = (std::numeric_limits<std::int32_t>::max)();
        const std::int64_t highest = used.empty() ? 0 : used.rbegin()->first;
        if (highest > 0 && highest + static_cast<std::int64_t>(wanted) <= kMost) next_ = static_cast<std::int32_t>(highest) + 1;
    }
    std::int32_t Take() {
        while (used_.count(next_) != 0) ++next_;
        return next_++;
    }

private:
    const std::map<std::int32_t, std::size_t>& used_;
    std::int32_t next_ = 1;
};

void AddOwnNumbers(const DigBlock& block, const BlockKey& key, const std::set<std::int32_t>& positions,
                   std::vector<ItemChange>& changes) {
    std::map<std::int32_t, std::size_t> counts;
    for (const DigDat& dat : block.dats) ++counts[dat.datID];
    std::map<std::int32_t, std::size_t> chosen;
    for (const std::int32_t at : positions) ++chosen[block.dats[static_cast<std::size_t>(at)].datID];
    FreeNumbers free(counts, positions.size());
    for (const std::int32_t at : positions) {
        const DigDat& dat = block.dats[static_cast<std::size_t>(at)];
        const std::size_t count = counts.at(dat.datID);
        if (count < 2) continue;
        std::size_t& left = chosen.at(dat.datID);
        if (left == count) {
            left = 0;  // the others of them are none that keeps it
            continue;
        }
        ItemCopy after = CopyOf(dat);
        after.datID = free.Take();
        changes.push_back({key.code, key.meshNo, at, CopyOf(dat), std::move(after)});
    }
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

std::vector<ItemChange> OwnNumbers(const CDigMem& store, std::span<const ItemPlace> places) {
    std::map<BlockKey, std::set<std::int32_t>> byBlock;
    for (const ItemPlace& place : places) {
        const std::int32_t at = PositionNow(store, place);
        if (at >= 0) byBlock[{place.key.code, place.key.meshNo}].insert(at);
    }
    std::vector<ItemChange> changes;
    for (const auto& [key, positions] : byBlock) {
        AddOwnNumbers(store.Block(store.FindBlock(key.code, key.meshNo).block), key, positions, changes);
    }
    return changes;
}

}  // namespace orvane
