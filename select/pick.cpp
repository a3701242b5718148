// The searches at a point, over all that the last frame drew, from the top of the drawing down.
#include "select/pick.h"

#include "select/pick_item.h"
#include "select/pick_stack.h"
#include "select/top_down.h"

namespace orvane {

namespace {

bool IsSelectable(const LayerDef& layer, const DigBlock& block) {
    return layer.dspFlg != 0 && layer.actFlg != 0 && block.inView != 0;
}

/// How a search goes about it.
struct SearchWay {
    bool empties = false;     ///< takes everything out of the active set beforehand
    bool stopsEarly = false;  ///< with the first block that has an item under the click
    bool forEdit = false;     ///< among layers that may be edited
};

/// Leaves alone what is 0 already: what is not written need not go back to memory.
void Deactivate(DigDat& dat) {
    if (dat.active != 0) dat.active = 0;
}

/// Adds the items of a block that lie under the click, the topmost first.
void AddItems(CDigMem& store, const DigIndex& slot, Point at, const PickPlace& place, bool empties, PickScratch& scratch,
              PickStack& stack) {
    DigBlock& block = store.MutableBlock(slot.block);
    const ItemPick pick(store.view, place, at, PickRule::Select, block, store.Layer(slot.layer), scratch);
    for (DigDat& dat : TopDown(std::span(block.dats.data(), block.dats.size()))) {
        if (empties) Deactivate(dat);
        if (pick.Meets(dat)) stack.Add(dat);
    }
}

/// The stack under the click. The active set is emptied on the same walk, for the records of a large map are slow to come by, and
/// no rule asks whether an item is active.
void Search(CDigMem& store, Point at, const PickPlace& place, const SearchWay& way, PickStack& stack) {
    PickScratch scratch;
    for (const DigIndex& slot : TopDown(store.Index())) {
        const LayerDef& layer = store.Layer(slot.layer);
        const bool wanted = !(way.stopsEarly && !stack.Empty()) && (!way.forEdit || layer.editFlg != 0);
        if (wanted && IsSelectable(layer, store.Block(slot.block))) {
            AddItems(store, slot, at, place, way.empties, scratch, stack);
        } else if (way.empties && layer.actFlg != 0) {
            for (DigDat& dat : store.MutableBlock(slot.block).dats) Deactivate(dat);
        }
    }
}

}  // namespace

std::int32_t SelectAtPoint(CDigMem& store, Point at, const PickPlace& place, std::int32_t cycle, bool toggle) {
    if (!store.InitDone()) return 0;
    const bool plain = !toggle && cycle == 0;
    PickStack stack;
    Search(store, at, place, {.empties = plain, .stopsEarly = plain}, stack);
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
    PickStack stack;
    Search(store, at, place, {.empties = cycle == 0, .forEdit = true}, stack);
    stack.Activate(cycle);
    return stack.Count();
}

FoundItem PickForHint(CDigMem& store, Point at, const PickPlace& place) {
    if (!store.InitDone()) return {};
    PickScratch scratch;
    for (const DigIndex& slot : TopDown(store.Index())) {
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
