// Lookups by key and the display index. Before the first Init and after FreeAll every key is unknown.
#include "store/cdigmem.h"

namespace orvane {

std::int32_t CDigMem::FindLayDef(std::string_view code) const { return initDone_ ? keys_.FindLayer(TillZero(code)) : -1; }

std::int32_t CDigMem::FindDigIndex(std::string_view code, std::int32_t meshNo) {
    const std::int32_t layer = FindLayDef(code);
    return layer < 0 ? -1 : keys_.FindPosition(layer, meshNo);
}

DigIndex CDigMem::FindBlock(std::string_view code, std::int32_t meshNo) const {
    const std::int32_t layer = FindLayDef(code);
    if (layer < 0) return {};
    const std::int32_t block = keys_.FindBlock(layer, meshNo);
    return block < 0 ? DigIndex{} : DigIndex{block, layer};
}

std::int32_t CDigMem::GetDigIndexCnt() { return keys_.EntryCnt(); }

std::span<const DigIndex> CDigMem::Index() { return keys_.Entries(); }

void CDigMem::DelDigIndex(std::int32_t pos) { keys_.RemoveAt(pos); }

void CDigMem::SortDigIndex() {
    if (initDone_) keys_.Sort();
}

CDigMem::FoundConst CDigMem::FindForRead(std::string_view code, std::int32_t meshNo) const {
    const DigIndex entry = FindBlock(code, meshNo);
    if (entry.block < 0) return {};
    return {&Block(entry.block), &Layer(entry.layer)};
}

CDigMem::Found CDigMem::FindForChange(std::string_view code, std::int32_t meshNo) {
    const DigIndex entry = FindBlock(code, meshNo);
    if (entry.block < 0) return {};
    return {&MutableBlock(entry.block), &Layer(entry.layer)};
}

}  // namespace orvane
