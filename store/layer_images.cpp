#include "store/cdigmem.h"

namespace orvane {
namespace {

void WriteImage(ImageLook& look, const ImageSettings& settings) {
    look.imgfname.Set(settings.imgfname);
    look.imgactfname.Set(settings.imgactfname);
    look.bmWidth = settings.bmWidth;
    look.bmHeight = settings.bmHeight;
    look.imgMinScl = settings.imgMinScl;
    look.imgMaxScl = settings.imgMaxScl;
}

}  // namespace

/// The point layer with that code, if any block of it stands in the index; else null.
LayerDef* CDigMem::FindImageLayer(std::string_view code) {
    const std::int32_t pos = FindLayDef(code);
    if (pos < 0 || !keys_.LayerHasEntry(pos) || Layer(pos).layType != kLayPoint) return nullptr;
    return &MutableLayer(pos);
}

bool CDigMem::SetLayImage(std::string_view code, const ImageSettings& settings) {
    LayerDef* layer = FindImageLayer(code);
    if (layer == nullptr) return false;
    WriteImage(*layer, settings);
    layer->imgMode = 0;
    return true;
}

bool CDigMem::DspLayImage(std::string_view code, bool mode) {
    LayerDef* layer = FindImageLayer(code);
    if (layer != nullptr) layer->imgMode = mode;
    return layer != nullptr;
}

bool CDigMem::SetLayImagePos(std::string_view code, std::int32_t pos) {
    LayerDef* layer = FindImageLayer(code);
    if (layer != nullptr) layer->imgPos = pos;
    return layer != nullptr;
}

bool CDigMem::SetSubLayImage(std::string_view code, std::int32_t subLayNo, const ImageSettings& settings) {
    SubLayDef* sub = FindSubLayForChange(FindImageLayer(code), subLayNo);
    if (sub == nullptr) return false;
    WriteImage(*sub, settings);
    sub->imgMode = 0;
    sub->imgPos = 0;
    return true;
}

bool CDigMem::SetSubLayImageMode(std::string_view code, std::int32_t subLayNo, const ImageSettings& settings, bool imgMode) {
    SubLayDef* sub = FindSubLayForChange(FindLayer(code), subLayNo);
    if (sub == nullptr) return false;
    WriteImage(*sub, settings);
    sub->imgMode = imgMode;
    return true;
}

bool CDigMem::DspSubLayImage(std::string_view code, std::int32_t subLayNo, bool mode) {
    SubLayDef* sub = FindSubLayForChange(FindImageLayer(code), subLayNo);
    if (sub != nullptr) sub->imgMode = mode;
    return sub != nullptr;
}

bool CDigMem::SetSubLayImagePos(std::string_view code, std::int32_t subLayNo, std::int32_t pos) {
    SubLayDef* sub = FindSubLayForChange(FindImageLayer(code), subLayNo);
    if (sub != nullptr) sub->imgPos = pos;
    return sub != nullptr;
}

}  // namespace orvane
