// The searches at a point, over all that the last frame drew, from the top of the drawing down.
#include "select/pick.h"

#include <ranges>

#include "select/pick_item.h"
#include "select/pick_stack.h"

namespace orvane {

namespace {

bool IsSelectable(const LayerDef& layer, const DigBlock& block) {
    return layer.dspFlg != 0 && layer.actFlg != 0 && block.inView != 0;
}

/// Adds the items of a block that lie under the click, the topmost first.
void AddItems(CDigMem& store, const DigIndex& slot, Point at, const PickPlace& place, PickScratch& scratch, PickStack& stack) {
    DigBlock& block = store.MutableBlock(slot.block);
    const ItemPick pick(store.view, place, at, PickRule::Select, block, store.Layer(slot.layer), scratch);
    for (DigDat& dat : std::views::reverse(block.dats)) {
        if (pick.Meets(dat)) stack.Add(dat);
    }
}

}  // namespace

std::int32_t SelectAtPoint(CDigMem& store, Point at, const PickPlace& place, std::int32_t cycle, bool toggle) {
    if (!store.InitDone()) return 0;
    const bool plain = !toggle && cycle == 0;
    if (plain) store.ClearActive();
    PickScratch scratch;
    PickStack stack;
    for (const DigIndex& slot : std::views::reverse(store.Index())) {
        if (!IsSelectable(store.Layer(slot.layer), store.Block(slot.block))) continue;
        AddItems(store, slot, at, place, scratch, stack);
        if (plain && !stack.Empty()) break;
    }
    if (toggle) {
        stack.Toggle();
    } else {
        if (cycle >= 1) stack.Deactivate();
        stack.Activate(cycle);
    }
    return stack.Count();
}

std::int32_t SelectForEdit(CDigMem& store, Point at, const PickPlace& place, std::int32_t cycle) {
    if (!store.InitDone()) return 0;
    if (cycle == 0) store.ClearActive();
    PickScratch scratch;
    PickStack stack;
    for (const DigIndex& slot : std::views::reverse(store.Index())) {
        const LayerDef& layer = store.Layer(slot.layer);
        if (layer.editFlg == 0 || !IsSelectable(layer, store.Block(slot.block))) continue;
        AddItems(store, slot, at, place, scratch, stack);
    }
    stack.Activate(cycle);
    return stack.Count();
}

FoundItem PickForHint(CDigMem& store, Point at, const PickPlace& place) {
    if (!store.InitDone()) return {};
    PickScratch scratch;
    for (const DigIndex& slot : std::views::reverse(store.Index())) {
        const LayerDef& layer = store.Layer(slot.layer);
        DigBlock& block = store.MutableBlock(slot.block);
        if (!(layer.dspFlg != 0 && layer.actFlg != 0) && block.inView != 1) continue;
        const ItemPick pick(store.view, place, at, PickRule::Hint, block, layer, scratch);
        for (DigDat& dat : block.dats) {
            if (pick.Meets(dat)) return {dat.datID, block.code, block.meshNo};
        }
    }
    return {};
}

}  // namespace orvane
