// The rules of the picks once more, word by word and item by item, with no regard to speed: what the searches are held to.
#pragma once

#include "select/pick.h"

namespace orvane {

enum class PlainRule { Select, Hint };

/// Whether the item is met by a click.
bool PlainHit(const CDigMem& store, Point at, const PickPlace& place, PlainRule rule, const DigBlock& block,
              const LayerDef& layer, const DigDat& dat);
/// What the searches of the same name do and answer.
std::int32_t PlainSelectAtPoint(CDigMem& store, Point at, const PickPlace& place, std::int32_t cycle, bool toggle);
FoundItem PlainPickForHint(CDigMem& store, Point at, const PickPlace& place);

}  // namespace orvane
