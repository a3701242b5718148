// The texts of items and their look.
#include "store/cdigmem.h"
#include "store/guarded_alloc.h"

namespace orvane {
namespace {

void SetFace(DigStr& str, std::string_view fntname) { str.fntname.assign(fntname); }

void SetStyle(DigStr& str, const TextLook& look) {
    str.style = look.style;
    str.pos = look.pos;
    str.angle = look.angle;
    str.fill = look.fill ? 1 : 0;
    str.uline = look.uline ? 1 : 0;
    str.strike = look.strike ? 1 : 0;
}

void SetColors(DigStr& str, Rgb fcolor, Rgb bcolor) {
    str.fcolor = fcolor;
    str.bcolor = bcolor;
}

/// REQUIRES: room for the face.
void SetLook(DigStr& str, const TextLook& look) {
    SetFace(str, look.fntname);
    str.size = look.size;
    SetStyle(str, look);
    SetColors(str, look.fcolor, look.bcolor);
}

/// Changes every text of the block; false when there is no block.
template <class Change>
bool ForEachText(DigBlock* block, Change change) {
    if (block == nullptr) return false;
    for (DigDat& dat : block->dats) {
        if (dat.str != nullptr) change(*dat.str);
    }
    return true;
}

/// Room for a face in every text of the block, so that either all of them get it or none. False also when there is no block.
bool ReserveFaces(DigBlock* block, std::string_view fntname) {
    bool done = true;
    const bool found = ForEachText(block, [&](DigStr& str) { done = done && ReserveText(str.fntname, fntname.size()); });
    return found && done;
}

}  // namespace

bool CDigMem::SetDigDatString(std::string_view code, std::int32_t meshNo, std::int32_t datID, double x, double y,
                              std::string_view text) {
    const Found found = FindForChange(code, meshNo);
    if (found.block == nullptr) return false;
    const std::int32_t pos = FindDatDown(*found.block, datID);
    if (pos < 0) return false;
    std::unique_ptr<DigStr> made = NewGuarded<DigStr>();
    if (made != nullptr && !AssignText(made->text, text)) made.reset();
    if (made != nullptr) {
        made->x = x;
        made->y = y;
    }
    // The former text goes even when there is no memory for the new one: a stale label would be worse than none.
    DigDat& dat = found.block->dats[static_cast<std::size_t>(pos)];
    dat.str = std::move(made);
    return dat.str != nullptr;
}

bool CDigMem::SetDigDatStrStyle(std::string_view code, std::int32_t meshNo, std::int32_t datID, const TextLook& look) {
    const Found found = FindForChange(code, meshNo);
    if (found.block == nullptr) return false;
    const std::int32_t pos = FindDatDown(*found.block, datID);
    if (pos < 0) return false;
    DigStr* str = found.block->dats[static_cast<std::size_t>(pos)].str.get();
    if (str == nullptr || !ReserveText(str->fntname, look.fntname.size())) return false;
    SetLook(*str, look);
    return true;
}

bool CDigMem::SetFontStyleAll(std::string_view code, std::int32_t meshNo, const TextLook& look) {
    DigBlock* block = FindForChange(code, meshNo).block;
    if (!ReserveFaces(block, look.fntname)) return false;
    return ForEachText(block, [&](DigStr& str) { SetLook(str, look); });
}

bool CDigMem::SetFontName(std::string_view code, std::int32_t meshNo, std::string_view fntname) {
    DigBlock* block = FindForChange(code, meshNo).block;
    if (!ReserveFaces(block, fntname)) return false;
    return ForEachText(block, [&](DigStr& str) { SetFace(str, fntname); });
}

bool CDigMem::SetFontSize(std::string_view code, std::int32_t meshNo, std::int32_t size) {
    return ForEachText(FindForChange(code, meshNo).block, [&](DigStr& str) { str.size = size; });
}

bool CDigMem::SetFontStyle(std::string_view code, std::int32_t meshNo, const TextLook& look) {
    return ForEachText(FindForChange(code, meshNo).block, [&](DigStr& str) { SetStyle(str, look); });
}

bool CDigMem::SetFontColor(std::string_view code, std::int32_t meshNo, Rgb fcolor, Rgb bcolor) {
    return ForEachText(FindForChange(code, meshNo).block, [&](DigStr& str) { SetColors(str, fcolor, bcolor); });
}

}  // namespace orvane
