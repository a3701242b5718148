#include "hosts/viewer/layer_state.h"

#include <iterator>
#include <limits>
#include <utility>

#include "control/ctrl.h"

namespace orvane {

namespace {

template <class Record>
LayerState LookOf(const Record& record) {
    LayerState state;
    state.name = record.layerName.View();
    state.shown = record.dspFlg != 0;
    state.lineType = record.lineType;
    state.lineSize = record.lineSize;
    state.pgnType = record.pgnType;
    state.pntType = record.pntType;
    state.color = record.color;
    state.color2 = record.color2;
    state.noOutline = record.outLine != 0;
    state.covers = record.fillMode != 0;
    state.images = {std::string(record.imgfname.View()),
                    std::string(record.imgactfname.View()),
                    record.bmWidth,
                    record.bmHeight,
                    record.imgMinScl,
                    record.imgMaxScl,
                    record.imgMode,
                    record.imgPos};
    return state;
}

/// Straight into the record: the calls refuse a layer that is none of points, whose record may have had images before.
template <class Record>
void WriteImages(Record& record, const LayerImages& images) {
    record.imgfname.Set(images.file);
    record.imgactfname.Set(images.active);
    record.bmWidth = images.width;
    record.bmHeight = images.height;
    record.imgMinScl = images.leastScale;
    record.imgMaxScl = images.greatestScale;
    record.imgMode = images.mode;
    record.imgPos = images.position;
}

void WriteSubLayer(OrvaneWidget& map, const LayerChange& change, const LayerState& to) {
    const QByteArray code = QByteArray::fromStdString(change.code);
    map.Call("OrvSetSubLayerEx", {code, QByteArray::fromStdString(to.name), change.subLayNo, to.shown, to.lineType, to.lineSize,
                                  to.pgnType, to.pntType, to.color, to.noOutline ? 1 : 0, to.covers ? 1 : 0});
    map.Call("OrvSetSubLayColor2", {code, change.subLayNo, to.color2});
    const std::int32_t pos = map.Control().store.FindLayDef(change.code);
    if (pos < 0) return;
    for (SubLayDef& sub : map.Control().store.MutableLayer(pos).subLays) {
        if (sub.subLayNo == change.subLayNo) WriteImages(sub, to.images);
    }
}

void WriteLayer(OrvaneWidget& map, const LayerChange& change, const LayerState& to, std::int32_t layType) {
    const QByteArray code = QByteArray::fromStdString(change.code);
    map.Call("OrvSetLayColor", {code, to.color});
    map.Call("OrvSetLayColor2", {code, to.color2});
    map.Call("OrvSetLayLineSize", {code, to.lineSize});
    // One call sets the symbol, the hatch or the line type, by the layer's type; the outline's line type has its own.
    const std::int32_t own = layType == kLayPoint ? to.pntType : layType == kLayPolygon ? to.pgnType : to.lineType;
    map.Call("OrvSetLayPgnLine", {code, to.noOutline ? 1 : 0, to.lineType});
    map.Call("OrvSetLayLineType", {code, own});
    map.Call("OrvSetLayPgnMode", {code, to.covers ? 1 : 0});
    map.Call("OrvSetLayActMode", {code, to.active});
    map.Call("OrvSetLayEditFlg", {code, to.editable});
    const std::int32_t pos = map.Control().store.FindLayDef(change.code);
    // The automation call keeps four bytes of a name, too few to put back what a file brought.
    if (pos >= 0 && map.Control().store.Layer(pos).layerName.View() != to.name) {
        map.Control().store.SetLayerName(change.code, to.name);
    }
    if (pos >= 0) WriteImages(map.Control().store.MutableLayer(pos), to.images);
    const bool movesLayer = change.before.key != change.after.key;
    if (pos >= 0 && movesLayer && map.Control().store.Layer(pos).layIndex != to.key) map.Call("OrvSetLayIndex", {code, to.key});
    if (pos >= 0 && (map.Control().store.Layer(pos).dspFlg != 0) != to.shown) map.Call("OrvSetLayDspMode", {code, to.shown});
}

}  // namespace

LayerChange Unchanged(const LayerDef& layer, std::int32_t subLayNo) {
    const SubLayDef* sub = subLayNo != 0 ? CDigMem::FindSubLay(layer, subLayNo) : nullptr;
    const LayerState now = sub != nullptr ? StateOf(*sub) : StateOf(layer);
    return {std::string(layer.code.View()), sub != nullptr ? subLayNo : 0, now, now};
}

LayerState StateOf(const LayerDef& layer) {
    LayerState state = LookOf(layer);
    state.active = layer.actFlg != 0;
    state.editable = layer.editFlg != 0;
    state.key = layer.layIndex;
    return state;
}

LayerState StateOf(const SubLayDef& sub) { return LookOf(sub); }

std::vector<std::int32_t> DrawnLayers(CDigMem& store) {
    std::vector<std::int32_t> layers;
    std::set<std::int32_t> seen;
    const std::span<const DigIndex> drawn = store.Index();
    for (auto entry = drawn.rbegin(); entry != drawn.rend(); ++entry) {
        const bool hasRecord = entry->layer < store.LayerCnt();
        if (hasRecord && seen.insert(entry->layer).second) layers.push_back(entry->layer);
    }
    return layers;
}

std::vector<LayerChange> OwnKeys(CDigMem& store) {
    const std::vector<std::int32_t> layers = DrawnLayers(store);
    std::set<std::int32_t> keys;
    for (const std::int32_t pos : layers) keys.insert(store.Layer(pos).layIndex);
    const bool hasRoom = keys.empty() || *keys.begin() > std::numeric_limits<std::int32_t>::min();
    if (keys.size() == layers.size() && hasRoom) return {};
    std::vector<LayerChange> changes;
    for (const std::int32_t pos : layers) {
        changes.push_back(Unchanged(store.Layer(pos)));
        changes.back().after.key = static_cast<std::int32_t>(changes.size());
    }
    return changes;
}

void GiveOwnKeys(OrvaneWidget& map) { GiveKeys(map, OwnKeys(map.Control().store), true); }

void GiveKeys(OrvaneWidget& map, std::span<const LayerChange> changes, bool after) {
    for (const LayerChange& change : changes) {
        const std::int32_t key = after ? change.after.key : change.before.key;
        map.Call("OrvSetLayIndex", {QByteArray::fromStdString(change.code), key});
    }
    map.Call("OrvSortLayer");
}

std::int32_t KeyOverAll(CDigMem& store) {
    const std::vector<std::int32_t> layers = DrawnLayers(store);
    return layers.empty() ? 1 : store.Layer(layers.front()).layIndex - 1;
}

void WriteLayerStates(OrvaneWidget& map, std::span<const LayerChange> changes, bool after) {
    // Showing or hiding a layer paints the map; one paint at the end serves all.
    const bool drawn = map.MapDraw();
    map.SetMapDraw(false);
    for (const LayerChange& change : changes) {
        const LayerState& to = after ? change.after : change.before;
        const std::int32_t pos = map.Control().store.FindLayDef(change.code);
        if (pos < 0) continue;
        if (change.subLayNo != 0) {
            WriteSubLayer(map, change, to);
        } else {
            WriteLayer(map, change, to, map.Control().store.Layer(pos).layType);
        }
    }
    map.Call("OrvSortLayer");
    map.SetMapDraw(drawn);
    map.Call("OrvReDraw");
}

std::vector<LayerChange> LooksOf(const LayerDef& layer) {
    std::vector<LayerChange> looks = {Unchanged(layer)};
    for (const SubLayDef& sub : layer.subLays) looks.push_back(Unchanged(layer, sub.subLayNo));
    return looks;
}

std::vector<LayerChange> LooksOf(const CDigMem& store, const std::set<std::string>& codes) {
    std::vector<LayerChange> looks;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        if (!codes.empty() && codes.count(std::string(layer.code.View())) == 0) continue;
        std::vector<LayerChange> ofLayer = LooksOf(layer);
        std::move(ofLayer.begin(), ofLayer.end(), std::back_inserter(looks));
    }
    return looks;
}

std::vector<LayerChange> NewSubLayers(const CDigMem& store, const std::vector<LayerChange>& before) {
    std::set<std::pair<std::string, std::int32_t>> had;
    for (const LayerChange& one : before) had.emplace(one.code, one.subLayNo);
    std::vector<LayerChange> made = LooksOf(store);
    std::erase_if(made, [&](const LayerChange& one) { return one.subLayNo == 0 || had.count({one.code, one.subLayNo}) != 0; });
    return made;
}

void RemoveSubLayers(OrvaneWidget& map, std::span<const LayerChange> subLayers) {
    for (const LayerChange& one : subLayers) map.Control().store.RemoveSubLayer(one.code, one.subLayNo);
    map.Call("OrvReDraw");
}

void PutLooksBack(OrvaneWidget& map, std::vector<LayerChange> looks) {
    const CDigMem& store = map.Control().store;
    std::erase_if(looks, [&](LayerChange& look) {
        const std::int32_t pos = store.FindLayDef(look.code);
        if (pos < 0) return true;
        const bool isGone = look.subLayNo != 0 && CDigMem::FindSubLay(store.Layer(pos), look.subLayNo) == nullptr;
        if (isGone) return false;
        look.after = Unchanged(store.Layer(pos), look.subLayNo).before;
        return look.after == look.before;
    });
    if (!looks.empty()) WriteLayerStates(map, looks, false);
}

}  // namespace orvane
