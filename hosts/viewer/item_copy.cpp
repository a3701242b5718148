#include "hosts/viewer/item_copy.h"

#include <algorithm>
#include <utility>

#include "hosts/qt/qt_values.h"
#include "platform/cp932.h"
#include "store/mesh_size.h"

namespace orvane {

namespace {

TextCopy CopyOf(const DigStr& str) {
    TextCopy copy;
    copy.x = str.x;
    copy.y = str.y;
    copy.z = str.z;
    copy.text = str.text;
    copy.fntname = str.fntname;
    copy.size = str.size;
    copy.style = str.style;
    copy.pos = str.pos;
    copy.angle = str.angle;
    copy.fill = str.fill != 0;
    copy.uline = str.uline != 0;
    copy.strike = str.strike != 0;
    copy.fcolor = str.fcolor;
    copy.bcolor = str.bcolor;
    return copy;
}

GridCopy CopyOf(const DigMeshAttr& attr) {
    GridCopy copy{attr.hcnt, attr.vcnt, {}, {}};
    for (std::size_t i = 0; i < MeshSize(attr); ++i) {
        copy.useFlag.push_back(attr.useFlag[i] != 0);
        copy.meshColor.push_back(attr.meshColor[i]);
    }
    return copy;
}

}  // namespace

bool SamePoints(const std::vector<DigPnt>& a, const std::vector<DigPnt>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const DigPnt& p, const DigPnt& q) { return p.x == q.x && p.y == q.y && p.z == q.z; });
}

const DigBlock* BlockOf(const CDigMem& store, const ItemKey& key) {
    const std::int32_t pos = store.FindBlock(key.code, key.meshNo).block;
    return pos < 0 ? nullptr : &store.Block(pos);
}

bool operator==(const ItemCopy& a, const ItemCopy& b) {
    return a.datID == b.datID && a.lineTag == b.lineTag && a.subLayNo == b.subLayNo && SamePoints(a.pnts, b.pnts) &&
           a.text == b.text && a.grid == b.grid;
}

ItemCopy CopyOf(const DigDat& dat) {
    ItemCopy copy;
    copy.datID = dat.datID;
    copy.lineTag = dat.lineTag;
    copy.subLayNo = dat.subLayNo;
    const std::int32_t cnt = (std::max)(dat.pntCnt, 0);
    for (std::int32_t i = 0; i < cnt; ++i) copy.pnts.push_back(dat.pnts[static_cast<std::size_t>(i)]);
    if (dat.str != nullptr) copy.text = CopyOf(*dat.str);
    if (dat.meshAttr != nullptr) copy.grid = CopyOf(*dat.meshAttr);
    copy.rect = dat.rect;
    return copy;
}

std::optional<ItemCopy> CopyOf(const CDigMem& store, const ItemKey& key) {
    const DigDat* dat = store.FindDat(key.code, key.meshNo, key.datID);
    if (dat == nullptr) return std::nullopt;
    return CopyOf(*dat);
}

std::int32_t PositionOf(const CDigMem& store, const ItemKey& key) {
    const DigBlock* block = BlockOf(store, key);
    const DigDat* dat = store.FindDat(key.code, key.meshNo, key.datID);
    if (block == nullptr || dat == nullptr) return -1;
    return static_cast<std::int32_t>(dat - block->dats.data());
}

namespace {

enum class Seen : bool { No, Yes };

/// Calls `take(block, position)` for every selected feature that is shown, or that is not, until it answers false.
template <class Take>
void ForEachSelected(CDigMem& store, Seen seen, Take take) {
    for (const DigIndex& entry : store.Index()) {
        const LayerDef& layer = store.Layer(entry.layer);
        if (layer.actFlg == 0) continue;
        const DigBlock& block = store.Block(entry.block);
        for (std::size_t i = 0; i < block.dats.size(); ++i) {
            if (block.dats[i].active != 1) continue;
            const SubLayDef* sub = CDigMem::FindSubLay(layer, block.dats[i].subLayNo);
            const bool shown = layer.dspFlg != 0 && (sub == nullptr || sub->dspFlg != 0);
            if (shown == (seen == Seen::Yes) && !take(block, i)) return;
        }
    }
}

std::vector<ItemPlace> PlacesOf(CDigMem& store, Seen seen, std::size_t limit) {
    std::vector<ItemPlace> places;
    ForEachSelected(store, seen, [&](const DigBlock& block, std::size_t i) {
        if (places.size() >= limit) return false;
        places.push_back({{std::string(block.code.View()), block.meshNo, block.dats[i].datID}, static_cast<std::int32_t>(i)});
        return true;
    });
    return places;
}

}  // namespace

std::vector<ItemKey> SelectedItems(CDigMem& store, std::size_t limit) {
    std::vector<ItemKey> keys;
    for (ItemPlace& place : SelectedPlaces(store, limit)) keys.push_back(std::move(place.key));
    return keys;
}

std::vector<ItemPlace> UnseenSelection(CDigMem& store) { return PlacesOf(store, Seen::No, static_cast<std::size_t>(-1)); }

std::vector<ItemPlace> SelectedPlaces(CDigMem& store, std::size_t limit) { return PlacesOf(store, Seen::Yes, limit); }

std::size_t SelectedCount(CDigMem& store) {
    std::size_t count = 0;
    ForEachSelected(store, Seen::Yes, [&](const DigBlock&, std::size_t) { return ++count > 0; });
    return count;
}

std::string CodeOf(const CDigMem& store, const QString& text) {
    const std::string bytes = EncodeCp932Shown(text.toStdString());
    if (store.FindLayDef(bytes) >= 0) return bytes;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        if (ToQString(store.Layer(i).code.View()) == text) return std::string(store.Layer(i).code.View());
    }
    return bytes;
}

BlockFacts FactsOf(const DigBlock& block) { return {block.blkState, block.recCnt, block.blkFlg, block.GX, block.GY}; }

void PutFacts(CDigMem& store, std::string_view code, std::int32_t meshNo, const BlockFacts& facts) {
    const std::int32_t pos = store.FindBlock(code, meshNo).block;
    if (pos < 0 || facts.blkState < 0) return;
    DigBlock& block = store.MutableBlock(pos);
    block.blkState = facts.blkState;
    block.recCnt = facts.recCnt;
    block.blkFlg = facts.blkFlg;
    block.GX = facts.GX;
    block.GY = facts.GY;
}

}  // namespace orvane
