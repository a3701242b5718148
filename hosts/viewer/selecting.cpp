#include "hosts/viewer/selecting.h"

#include <algorithm>

#include "control/ctrl.h"

namespace orvane {

namespace {

bool HasNumberAt(const DigBlock& block, std::int32_t position, std::int32_t datID) {
    return position >= 0 && position < block.datCnt && block.dats[static_cast<std::size_t>(position)].datID == datID;
}

}  // namespace

std::int32_t PositionNow(const CDigMem& store, const ItemPlace& place) {
    const DigBlock* block = BlockOf(store, place.key);
    if (block == nullptr) return -1;
    if (HasNumberAt(*block, place.position, place.key.datID)) return place.position;
    if (store.FindDat(place.key.code, place.key.meshNo, place.key.datID) == nullptr) return -1;
    const auto from = std::clamp<std::int32_t>(place.position, 0, block->datCnt - 1);
    for (std::int32_t away = 0; away < block->datCnt; ++away) {
        if (HasNumberAt(*block, from - away, place.key.datID)) return from - away;
        if (HasNumberAt(*block, from + away, place.key.datID)) return from + away;
    }
    return -1;
}

std::optional<ItemCopy> CopyAt(const CDigMem& store, const ItemPlace& place) {
    const std::int32_t at = PositionNow(store, place);
    if (at < 0) return std::nullopt;
    return CopyOf(BlockOf(store, place.key)->dats[static_cast<std::size_t>(at)]);
}

bool IsSameItem(const CDigMem& store, const ItemPlace& a, const ItemPlace& b) {
    if (a.key != b.key) return false;
    if (a.position == b.position) return true;
    const DigBlock* block = BlockOf(store, a.key);
    if (block == nullptr) return false;
    return std::count_if(block->dats.begin(), block->dats.end(), [&](const DigDat& dat) { return dat.datID == a.key.datID; }) < 2;
}

void AddToSelection(OrvaneWidget& map, std::span<const ItemPlace> places) {
    CDigMem& store = map.Control().store;
    for (const ItemPlace& place : places) {
        const std::int32_t at = PositionNow(store, place);
        const ItemKey& key = place.key;
        if (at < 0) continue;
        if (PositionOf(store, key) == at) {
            map.Call("OrvSetActDat", {QByteArray::fromStdString(key.code), key.meshNo, key.datID});
            continue;
        }
        // The call would meet the first feature of the number.
        const DigIndex found = store.FindBlock(key.code, key.meshNo);
        if (store.Layer(found.layer).actFlg == 0) continue;
        store.MutableBlock(found.block).dats[static_cast<std::size_t>(at)].active = 1;
    }
}

void SelectOnly(OrvaneWidget& map, std::span<const ItemPlace> places) {
    const UnseenKeeper unseen(map);
    map.Call("OrvResetActiveAll");
    AddToSelection(map, places);
}

// The call that jumps to a feature finds it by its number, and changes what is selected.
void JumpToItem(OrvaneWidget& map, const ItemPlace& place) {
    const CDigMem& store = map.Control().store;
    const std::int32_t at = PositionNow(store, place);
    if (at < 0) return;
    const DigBlock& block = *BlockOf(store, place.key);
    const DigDat& dat = block.dats[static_cast<std::size_t>(at)];
    if (dat.pntCnt <= 0) return;
    double x = 0;
    double y = 0;
    for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
        const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
        x += pnt.x + block.GX;
        y += pnt.y + block.GY;
    }
    map.Call("OrvMapJumpToXY", {x / dat.pntCnt, y / dat.pntCnt});
}

UnseenKeeper::UnseenKeeper(OrvaneWidget& map) : map_(map), unseen_(UnseenSelection(map.Control().store)) {}

UnseenKeeper::~UnseenKeeper() { AddToSelection(map_, unseen_); }

}  // namespace orvane
