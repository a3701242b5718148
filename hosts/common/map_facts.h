// What a map holds, told in words and as JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "store/cdigmem.h"
#include "store/extent.h"

namespace orvane {

struct LayerFacts {
    std::string code;  ///< UTF-8, as all texts here
    std::string name;
    std::int32_t layType = 0;
    std::int64_t blocks = 0;
    std::int64_t items = 0;
    std::int64_t points = 0;
    std::optional<MapExtent> bounds;  ///< none without an item
};

struct BlockFacts {
    std::string code;
    std::int32_t meshNo = 0;
    std::string path;
    double GX = 0;
    double GY = 0;
    std::int64_t items = 0;
    std::int64_t points = 0;
    std::optional<MapExtent> bounds;
};

struct MapFacts {
    std::vector<LayerFacts> layers;  ///< in the order of the table; behind them the codes of blocks without a layer, type 0
    std::vector<BlockFacts> blocks;  ///< in the order of the table
    std::int64_t items = 0;
    std::int64_t points = 0;
    std::optional<MapExtent> bounds;
};

/// Bounds are those of the blocks, in map units, y to the north.
MapFacts FactsOf(const CDigMem& store);

/// The layers as a table with the totals before it. Lines end in '\n'.
std::string FactsText(const MapFacts& facts);
/// The members layerCount, blockCount, items, points, bounds ([left, bottom, right, top] or null), layers and blocks of one JSON
/// object, without its braces.
std::string FactsJson(const MapFacts& facts);
/// A text in quotation marks, as JSON writes it: a byte that is part of no character becomes U+FFFD.
std::string JsonText(std::string_view utf8);

}  // namespace orvane
