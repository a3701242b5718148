// Features by their place and what of them is selected: such as share a number are told apart, and what hidden layers have
// selected stays.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "hosts/qt/orvane_widget.h"
#include "hosts/viewer/item_copy.h"

namespace orvane {

/// Where a feature stands now: at its place or, where others came or went before it, at the next place to it that has its number;
/// -1 when there is none.
std::int32_t PositionNow(const CDigMem& store, const ItemPlace& place);
/// The feature there, or nothing.
std::optional<ItemCopy> CopyAt(const CDigMem& store, const ItemPlace& place);
/// Whether two places are those of one feature: a number that no other feature has tells it wherever it stands.
bool IsSameItem(const CDigMem& store, const ItemPlace& a, const ItemPlace& b);

/// Selects these features beside what is selected. Those of layers without the box "Select" stay as they are.
void AddToSelection(OrvaneWidget& map, std::span<const ItemPlace> places);
/// Makes these features the selected ones. What hidden layers and sub layers have selected stays.
void SelectOnly(OrvaneWidget& map, std::span<const ItemPlace> places);
/// Moves the map to the middle of a feature's points. What is selected stays; without points the map stays too.
void JumpToItem(OrvaneWidget& map, const ItemPlace& place);

/// Puts back what hidden layers have selected when it ends, for calls that select anew. No feature comes or goes meanwhile.
class UnseenKeeper {
public:
    explicit UnseenKeeper(OrvaneWidget& map);
    ~UnseenKeeper();
    UnseenKeeper(const UnseenKeeper&) = delete;
    UnseenKeeper& operator=(const UnseenKeeper&) = delete;

private:
    OrvaneWidget& map_;
    std::vector<ItemPlace> unseen_;
};

}  // namespace orvane
