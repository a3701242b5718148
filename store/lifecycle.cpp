#include "store/cdigmem.h"
#include "store/dat_lookup.h"

namespace orvane {

CDigMem::CDigMem() = default;

CDigMem::~CDigMem() { FreeAll(); }

std::int32_t CDigMem::Init() {
    FreeAll();
    ++resetCount_;
    layers_.Clear();
    initDone_ = true;
    view.zoomStep = 1;
    view.Zoom = 10000;
    symbols.Clear();
    lineTypes.Clear();
    return 1;
}

void CDigMem::FreeAll() {
    if (!initDone_) return;
    initDone_ = false;
    ++resetCount_;
    for (LayerDef& layer : layers_) {
        layer.subLays.Clear();
        layer.subLookup.reset();
        layer.subLayCnt = 0;
        layer.subLayMax = 0;
    }
    blocks_.Clear();
    keys_.Clear();
    symbols.Clear();
    orgDats_.Clear();
    orgLookup_.reset();
    lineTypes.Clear();
}

const LayerDef& CDigMem::Layer(std::int32_t pos) const {
    static const LayerDef unused;
    return pos >= 0 && pos < LayerCnt() ? layers_[static_cast<std::size_t>(pos)] : unused;
}

}  // namespace orvane
