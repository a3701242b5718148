#include <algorithm>

#include "store/cdigmem.h"
#include "store/dat_lookup.h"
#include "store/layer_type.h"

namespace orvane {
namespace {

/// The told capacity grows by so many records.
constexpr std::int32_t kSubLayStep = 50;

void WriteSettings(SubLayDef& sub, const SubLayerSettings& settings) {
    sub.outLine = settings.outLine;
    sub.fillMode = settings.fillMode;
    sub.color = settings.color;
    sub.color2 = 0;
    sub.dspFlg = settings.disp;
    sub.lineType = settings.lineType;
    sub.lineSize = settings.lineSize;
    sub.pgnType = settings.pgnType;
    sub.pntType = settings.pntType;
    sub.layerName.Set(settings.layerName);
}

}  // namespace

const SubLayDef* CDigMem::FindSubLay(const LayerDef& layer, std::int32_t subLayNo) {
    const std::size_t cnt = layer.subLays.size();
    if (cnt > static_cast<std::size_t>(DatLookup::kWalkedItems)) {
        if (layer.subLookup == nullptr) layer.subLookup = DatLookup::Build(layer.subLays);
        if (layer.subLookup != nullptr) {
            const std::int32_t pos = layer.subLookup->First(subLayNo);
            return pos < 0 ? nullptr : &layer.subLays[static_cast<std::size_t>(pos)];
        }
    }
    const SubLayDef* found =
        std::find_if(layer.subLays.begin(), layer.subLays.end(), [=](const SubLayDef& sub) { return sub.subLayNo == subLayNo; });
    return found == layer.subLays.end() ? nullptr : found;
}

SubLayDef* CDigMem::FindSubLayForChange(LayerDef* layer, std::int32_t subLayNo) {
    ++subLayChangeCount_;
    return layer == nullptr ? nullptr : const_cast<SubLayDef*>(FindSubLay(*layer, subLayNo));
}

bool CDigMem::SetSubLayer(std::string_view code, std::int32_t subLayNo, std::string_view layerName, bool disp,
                          std::int32_t lineType, std::int32_t lineSize, Rgb color, bool outLine) {
    const LayerDef* layer = FindLayer(code);
    if (layer == nullptr) return false;
    SubLayerSettings settings;
    settings.layerName = layerName;
    settings.disp = disp;
    settings.lineSize = lineSize;
    settings.color = color;
    settings.outLine = outLine;
    TypeFieldOf(settings, layer->layType) = lineType;
    return SetSubLayerEx(code, subLayNo, settings);
}

bool CDigMem::SetSubLayerEx(std::string_view code, std::int32_t subLayNo, const SubLayerSettings& settings) {
    LayerDef* layer = FindLayer(code);
    if (layer == nullptr) return false;
    if (SubLayDef* sub = FindSubLayForChange(layer, subLayNo)) {
        WriteSettings(*sub, settings);
        return true;
    }
    SubLayDef sub;
    sub.subLayNo = subLayNo;
    sub.layType = layer->layType;
    WriteSettings(sub, settings);
    if (!layer->subLays.PushBack(std::move(sub))) return false;
    if (layer->subLookup != nullptr && !layer->subLookup->Append(subLayNo, layer->subLayCnt)) layer->subLookup.reset();
    ++layer->subLayCnt;
    if (layer->subLayMax < layer->subLayCnt) layer->subLayMax += kSubLayStep;
    return true;
}

bool CDigMem::RemoveSubLayer(std::string_view code, std::int32_t subLayNo) {
    LayerDef* layer = FindLayer(code);
    const SubLayDef* sub = FindSubLayForChange(layer, subLayNo);
    if (sub == nullptr) return false;
    layer->subLays.EraseAt(static_cast<std::size_t>(sub - layer->subLays.data()));
    layer->subLookup.reset();
    --layer->subLayCnt;
    return true;
}

bool CDigMem::SetSubLayColor(std::string_view code, std::int32_t subLayNo, Rgb color) {
    SubLayDef* sub = FindSubLayForChange(FindLayer(code), subLayNo);
    if (sub != nullptr) sub->color = color;
    return sub != nullptr;
}

bool CDigMem::SetSubLayColor2(std::string_view code, std::int32_t subLayNo, Rgb color) {
    SubLayDef* sub = FindSubLayForChange(FindLayer(code), subLayNo);
    if (sub != nullptr) sub->color2 = color;
    return sub != nullptr;
}

}  // namespace orvane
