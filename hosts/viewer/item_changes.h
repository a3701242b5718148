// Edits of features, and the way back: written by automation calls, so that each stands where it stood before.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/qt/orvane_widget.h"
#include "hosts/viewer/item_copy.h"

namespace orvane {

/// One feature before an edit and after it; nothing stands for a feature that was not there. Only the datID may differ from the
/// key's block: the copies carry it.
struct ItemChange {
    std::string code;
    std::int32_t meshNo = 0;
    std::int32_t position = 0;  ///< in the block, when the change was made
    std::optional<ItemCopy> before;
    std::optional<ItemCopy> after;
};

/// The deletion of features, in the order that lets them come back to their places. `progress` is told the part that is copied,
/// 0 to 1; once it has answered false the answer is empty.
std::vector<ItemChange> Deletions(const CDigMem& store, const std::vector<ItemPlace>& places,
                                  const std::function<bool(double)>& progress = {});
/// The deletion of the first feature with the key.
std::vector<ItemChange> Deletion(const CDigMem& store, const ItemKey& key);

/// Performs changes in their order, or takes them back in the opposite one. Each must find the state that the other direction
/// leaves. Features keep their order in the block: what comes behind a feature that returns is taken out and put back.
///
/// `progress` is told the part that is done, 0 to 1. Once it has answered false, what was done is taken back while it is told
/// what is left of that, and the answer is false. Bounds of blocks and the selection stay as the way there and back leaves them.
bool PerformChanges(OrvaneWidget& map, std::span<const ItemChange> changes, bool forward,
                    const std::function<bool(double)>& progress = {});

}  // namespace orvane
