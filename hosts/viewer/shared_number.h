// Features of a block that share a number. The control's tools know a feature by its number alone: of such they hide, read and
// write now the first and now the last.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "hosts/viewer/block_copy.h"
#include "hosts/viewer/item_changes.h"

namespace orvane {

struct SharedNumber {
    ItemPlace picked;                                         ///< the one of them that the operator means
    std::vector<std::pair<std::int32_t, ItemCopy>> features;  ///< all of them as they were, with their positions in the block
    std::map<BlockKey, BlockBox> bounds;                      ///< of the block
};

/// Nothing where no other feature has the number of the one that is picked.
std::optional<SharedNumber> SharedBy(const CDigMem& store, const ItemPlace& picked);
/// Takes back what a tool has done to them, at most a deletion or a change of some, and selects the one that was picked.
void PutBack(OrvaneWidget& map, const SharedNumber& shared);

/// What gives those of the features that share their number one that no other feature of their block has. Where all that share a
/// number are among them, the first keeps it.
std::vector<ItemChange> OwnNumbers(const CDigMem& store, std::span<const ItemPlace> places);

}  // namespace orvane
