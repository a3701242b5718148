// Whole blocks of a map: those that an import or a new layer brought, taken away and put back by automation calls.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "hosts/qt/orvane_widget.h"
#include "hosts/viewer/item_copy.h"

namespace orvane {

/// What addresses a block; `code` is bytes in code page 932.
struct BlockKey {
    std::string code;
    std::int32_t meshNo = 0;
    friend auto operator<=>(const BlockKey&, const BlockKey&) = default;
};

using BlockBox = std::array<double, 4>;  ///< minX, minY, maxX, maxY, local: they may be wider than the features

struct BlockCopy {
    BlockKey key;
    std::int32_t layType = 0;
    std::int32_t layIndex = 0;
    std::string path;
    BlockFacts facts;
    BlockBox bounds{};
    std::vector<ItemCopy> items;
};

/// Bounds of those of the blocks that are there. Calls widen them, and none brings them back.
std::map<BlockKey, BlockBox> BoundsOf(const CDigMem& store, std::span<const BlockKey> keys);
/// Gives them to the blocks; those that are gone are passed over.
void PutBounds(CDigMem& store, const std::map<BlockKey, BlockBox>& bounds);

/// What places the features of a block on the map, and where it came from.
struct BlockOrigin {
    BlockFacts facts;
    std::string path;
};
/// Those of the blocks that are there. An archive that is read beside them brings its own.
std::map<BlockKey, BlockOrigin> OriginsOf(const CDigMem& store, std::span<const BlockKey> keys);
/// Gives them back to the blocks; those that are gone are passed over.
void PutOrigins(CDigMem& store, const std::map<BlockKey, BlockOrigin>& origins);

/// Positions of the layers that have a block. A layer cannot be taken out of its table: one without counts as removed.
std::set<std::int32_t> LayersWithData(CDigMem& store);
/// The blocks in drawing order.
std::vector<BlockKey> BlockKeys(CDigMem& store);
/// Whether two of the keys are the same: a file can bring two blocks of one key, of which calls meet the first alone.
bool AnyKeyTwice(std::span<const BlockKey> keys);
/// Copies of those blocks that are there, each with all of its features. `progress` is told the part that is done, 0 to 1;
/// nothing once it has answered false.
std::optional<std::vector<BlockCopy>> BlockCopies(const CDigMem& store, std::span<const BlockKey> keys,
                                                  const std::function<bool(double)>& progress = {});
/// Their layers stay, as no call takes a layer away.
void DeleteBlocks(OrvaneWidget& map, std::span<const BlockKey> keys);
/// Makes all of them again, or none: false when one is there or has no room, and once `progress`, which is told the part that is
/// done, 0 to 1, has answered false.
bool MakeBlocks(OrvaneWidget& map, std::span<const BlockCopy> blocks, const std::function<bool(double)>& progress = {});
/// Makes one without features, its origin cut to whole units, and its layer where there is none. A layer without data takes the
/// type, but not the key. False when the block is there or has no room.
bool MakeEmptyBlock(OrvaneWidget& map, const BlockCopy& block);

}  // namespace orvane
