// Whole blocks of a map: those that an import or a new layer brought, taken away and put back by automation calls.
#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "hosts/viewer/item_copy.h"

namespace orvane {

/// What addresses a block; `code` is bytes in code page 932.
struct BlockKey {
    std::string code;
    std::int32_t meshNo = 0;
    friend auto operator<=>(const BlockKey&, const BlockKey&) = default;
};

struct BlockCopy {
    BlockKey key;
    std::int32_t layType = 0;
    std::int32_t layIndex = 0;
    std::string path;
    double GX = 0;  ///< map units
    double GY = 0;
    std::vector<ItemCopy> items;
};

/// The blocks in drawing order.
std::vector<BlockKey> BlockKeys(CDigMem& store);
/// Whether two of the keys are the same: a file can bring two blocks of one key, of which calls meet the first alone.
bool AnyKeyTwice(std::span<const BlockKey> keys);
/// Copies of those blocks that are there, each with all of its features.
std::vector<BlockCopy> BlockCopies(const CDigMem& store, std::span<const BlockKey> keys);
/// Their layers stay, as no call takes a layer away.
void DeleteBlocks(OrvaneWidget& map, std::span<const BlockKey> keys);
void MakeBlocks(OrvaneWidget& map, std::span<const BlockCopy> blocks);

}  // namespace orvane
