#include "store/cdigmem.h"
#include "store/dat_lookup.h"
#include "store/guarded_alloc.h"
#include "store/layer_type.h"

namespace orvane {
namespace {

/// Makes the change when the layer is there; tells whether it is.
template <class Change>
bool ChangeLayer(LayerDef* layer, Change change) {
    if (layer == nullptr) return false;
    change(*layer);
    return true;
}

}  // namespace

LayerDef* CDigMem::FindLayer(std::string_view code) {
    const std::int32_t pos = FindLayDef(code);
    return pos < 0 ? nullptr : &MutableLayer(pos);
}

bool CDigMem::MakeLayer(std::string_view code, std::int32_t layType) {
    code = TillZero(code);
    if (!initDone_ || !IsMakeableType(layType) || code.size() > static_cast<std::size_t>(kMaxCode)) return false;
    if (LayerCnt() == kMaxLayers || FindLayDef(code) >= 0) return false;
    // With an empty code the record written would read as unused, so there is nothing to keep.
    if (code.empty()) return true;
    // A text of its own, because the one given may stand in a record that moves.
    FixedText<kMaxCode> layerCode;
    layerCode.Set(code);
    if (!keys_.ReserveLayer() || !EnsureRoom(layers_, layers_.size() + 1)) return false;
    AppendLayer(layerCode, layType);
    return true;
}

/// REQUIRES: room for it in the table and in the keys.
void CDigMem::AppendLayer(const FixedText<kMaxCode>& code, std::int32_t layType) {
    LayerDef layer;
    layer.code = code;
    layer.layIndex = LayerCnt() + 1;
    layer.layType = layType;
    layer.color = 0xDCDCDC;
    layer.lineSize = 1;
    layer.dspFlg = 1;
    layer.outLine = 1;
    layer.actFlg = 1;
    layer.spareFlg = 1;
    layer.fillMode = 1;
    if (layers_.PushBack(std::move(layer))) keys_.LayerAdded();
}

std::int32_t CDigMem::SetLayIndex(std::string_view code, std::int32_t index) {
    const std::int32_t pos = FindLayDef(code);
    if (pos < 0) return 0;
    MutableLayer(pos).layIndex = index;
    keys_.LayerKeyChanged(pos);
    return 1;
}

bool CDigMem::SetLayDspFlg(std::string_view code, bool disp) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.dspFlg = disp; });
}

bool CDigMem::SetLayColor(std::string_view code, Rgb color) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.color = color; });
}

bool CDigMem::SetLayColor2(std::string_view code, Rgb color) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.color2 = color; });
}

bool CDigMem::SetLayLineSize(std::string_view code, std::int32_t size) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.lineSize = size; });
}

bool CDigMem::SetLayLineType(std::string_view code, std::int32_t type) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { TypeFieldOf(layer, layer.layType) = type; });
}

bool CDigMem::SetLayOutLine(std::string_view code, bool outLineOff) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.outLine = outLineOff; });
}

bool CDigMem::SetLayPgnMode(std::string_view code, bool copy) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.fillMode = copy; });
}

bool CDigMem::SetLayPgnLine(std::string_view code, bool outLineOff, std::int32_t lineType) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) {
        layer.outLine = outLineOff;
        layer.lineType = lineType;
    });
}

bool CDigMem::SetLayActive(std::string_view code, bool active) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.actFlg = active; });
}

bool CDigMem::SetLayEditFlg(std::string_view code, bool edit) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.editFlg = edit; });
}

bool CDigMem::SetLayDisplay(std::string_view code, const LayerDisplay& display) {
    return ChangeLayer(FindLayer(code), [&](LayerDef& layer) {
        layer.dspFlg = display.disp;
        layer.pntType = display.pntType;
        layer.pgnType = display.pgnType;
        layer.lineType = display.lineType;
        layer.lineSize = display.lineSize;
        layer.outLine = display.outLine;
        layer.color = display.color;
        layer.actFlg = display.active;
        layer.fillMode = display.fillMode;
    });
}

bool CDigMem::SetLayerName(std::string_view code, std::string_view layerName) {
    return ChangeLayer(FindLayer(code), [=](LayerDef& layer) { layer.layerName.Set(layerName); });
}

}  // namespace orvane
