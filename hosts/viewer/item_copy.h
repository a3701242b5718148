// Features as the store keeps them, by number and by place, and which of them are selected.
#pragma once

#include <QString>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "store/cdigmem.h"

namespace orvane {

/// What addresses a feature; `code` is bytes in code page 932.
struct ItemKey {
    std::string code;
    std::int32_t meshNo = 0;
    std::int32_t datID = 0;
    friend auto operator<=>(const ItemKey&, const ItemKey&) = default;
};

/// A feature by its position in its block: features that share a number are told apart by it.
struct ItemPlace {
    ItemKey key;
    std::int32_t position = 0;
    friend auto operator<=>(const ItemPlace&, const ItemPlace&) = default;
};

struct TextCopy {
    double x = 0;  ///< local to the block, as the points
    double y = 0;
    double z = 0;
    std::string text;
    std::string fntname;
    std::int32_t size = 10;  ///< points
    std::int32_t style = 0;
    std::int32_t pos = 0;
    double angle = 0;  ///< degrees
    bool fill = false;
    bool uline = false;
    bool strike = false;
    Rgb fcolor = 0;
    Rgb bcolor = 0xFFFFFF;
    friend bool operator==(const TextCopy&, const TextCopy&) = default;
};

struct GridCopy {
    std::int32_t hcnt = 0;
    std::int32_t vcnt = 0;
    std::vector<bool> useFlag;
    std::vector<std::uint32_t> meshColor;
    friend bool operator==(const GridCopy&, const GridCopy&) = default;
};

/// What files bring of a block and no call writes: above all an origin of more than whole units.
struct BlockFacts {
    std::int32_t blkState = 1;
    std::int32_t recCnt = 0;
    std::uint8_t blkFlg = 0;
    double GX = 0;  ///< map units
    double GY = 0;
};
BlockFacts FactsOf(const DigBlock& block);
/// Gives a block that was made anew its facts back.
void PutFacts(CDigMem& store, std::string_view code, std::int32_t meshNo, const BlockFacts& facts);

/// All of a feature that is data; whether it is selected is not, and where its rectangle lies is no difference.
struct ItemCopy {
    std::int32_t datID = 0;
    std::int32_t lineTag = 0;
    std::int32_t subLayNo = 0;
    std::vector<DigPnt> pnts;  ///< local to the block, map units, y to the north
    std::optional<TextCopy> text;
    std::optional<GridCopy> grid;
    /// Whole units. Archives keep it, and calls make it anew in their own way, so that it goes back as it was read. Nothing in a
    /// copy whose points were changed since.
    std::optional<Rect> rect;
};
bool operator==(const ItemCopy& a, const ItemCopy& b);
/// Whether they have the same coordinates in the same order.
bool SamePoints(const std::vector<DigPnt>& a, const std::vector<DigPnt>& b);

ItemCopy CopyOf(const DigDat& dat);
/// The block of a feature, there or not, or null.
const DigBlock* BlockOf(const CDigMem& store, const ItemKey& key);
/// The first feature with the key, or nothing.
std::optional<ItemCopy> CopyOf(const CDigMem& store, const ItemKey& key);
/// Its position in its block, or -1.
std::int32_t PositionOf(const CDigMem& store, const ItemKey& key);
/// The features that are selected in shown layers, and sub layers, whose features can be, those drawn first first; not more than
/// `limit`. What a hidden layer has selected is not lost, but neither listed nor changed with the rest.
std::vector<ItemKey> SelectedItems(CDigMem& store, std::size_t limit);
/// What else is selected: in hidden layers and sub layers. Who selects anew puts it back.
std::vector<ItemPlace> UnseenSelection(CDigMem& store);
/// What SelectedItems tells, with where they are.
std::vector<ItemPlace> SelectedPlaces(CDigMem& store, std::size_t limit = static_cast<std::size_t>(-1));
std::size_t SelectedCount(CDigMem& store);

/// The code of the layer that a text stands for: what an event tells is decoded, and bytes may decode to the same text.
std::string CodeOf(const CDigMem& store, const QString& text);
}  // namespace orvane
