#include "hosts/common/map_facts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

#include "hosts/common/table_text.h"
#include "platform/cp932.h"

namespace orvane {
namespace {

void Widen(std::optional<MapExtent>& bounds, const MapExtent& more) {
    if (!bounds) bounds = more;
    bounds->left = std::min(bounds->left, more.left);
    bounds->right = std::max(bounds->right, more.right);
    bounds->low = std::min(bounds->low, more.low);
    bounds->high = std::max(bounds->high, more.high);
}

BlockFacts FactsOfBlock(const DigBlock& block) {
    BlockFacts facts;
    facts.code = DecodeCp932Shown(block.code.View());
    facts.meshNo = block.meshNo;
    facts.path = DecodeCp932Shown(block.path);
    facts.GX = block.GX;
    facts.GY = block.GY;
    facts.items = block.datCnt;
    for (const DigDat& dat : block.dats) facts.points += std::max(dat.pntCnt, 0);
    if (block.datCnt > 0) {
        facts.bounds = {block.GX + block.minX, block.GX + block.maxX, block.GY + block.minY, block.GY + block.maxY};
    }
    return facts;
}

void Add(LayerFacts& layer, const BlockFacts& block) {
    ++layer.blocks;
    layer.items += block.items;
    layer.points += block.points;
    if (block.bounds) Widen(layer.bounds, *block.bounds);
}

const char* TypeName(std::int32_t layType) {
    switch (layType) {
        case kLayPoint:
            return "points";
        case kLayLine:
            return "lines";
        case kLayPolygon:
            return "polygons";
        case kLayCircle:
            return "circles";
        case kLayText:
            return "texts";
        case kLayEllipse:
            return "ellipses";
        case kLayMesh:
            return "meshes";
        default:
            return "none";
    }
}

/// The shortest text that reads back as the number; JSON has no other numbers.
std::string JsonNumber(double value) {
    if (!std::isfinite(value)) return "null";
    char bytes[64];
    return {bytes, std::to_chars(bytes, bytes + sizeof bytes, value).ptr};
}

std::string ShownNumber(double value) { return std::isfinite(value) ? JsonNumber(value) : "none"; }

std::string JsonBounds(const std::optional<MapExtent>& bounds) {
    if (!bounds) return "null";
    return "[" + JsonNumber(bounds->left) + ", " + JsonNumber(bounds->low) + ", " + JsonNumber(bounds->right) + ", " +
           JsonNumber(bounds->high) + "]";
}

/// Bytes of the character that a text begins with, at least two; 0 where it is none that UTF-8 has: a byte out of place, a longer
/// form than needed, half of a pair, or beyond the last character.
std::size_t Utf8SequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) return 0;
    }
    const unsigned char second = byte(1);
    const bool isOdd = (first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
                       (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90);
    return isOdd ? 0 : length;
}

template <class Facts>
std::string JsonCounts(const Facts& facts) {
    return "\"items\": " + std::to_string(facts.items) + ", \"points\": " + std::to_string(facts.points) +
           ", \"bounds\": " + JsonBounds(facts.bounds);
}

template <class Facts, class Line>
std::string JsonList(const std::vector<Facts>& all, Line line) {
    std::string text = "[";
    for (const Facts& one : all) text += (text.size() > 1 ? ",\n    {" : "\n    {") + line(one) + "}";
    return text + (all.empty() ? "]" : "\n  ]");
}

}  // namespace

MapFacts FactsOf(const CDigMem& store) {
    MapFacts facts;
    std::map<std::string, std::size_t, std::less<>> layers;  // by the bytes of the code
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        layers.emplace(layer.code.View(), facts.layers.size());
        facts.layers.push_back(
            {DecodeCp932Shown(layer.code.View()), DecodeCp932Shown(layer.layerName.View()), layer.layType, 0, 0, 0, {}});
    }
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        if (block.blkState != 1) continue;
        BlockFacts own = FactsOfBlock(block);
        const auto [found, isNew] = layers.emplace(block.code.View(), facts.layers.size());
        if (isNew) facts.layers.push_back({own.code, {}, 0, 0, 0, 0, {}});
        Add(facts.layers[found->second], own);
        facts.items += own.items;
        facts.points += own.points;
        if (own.bounds) Widen(facts.bounds, *own.bounds);
        facts.blocks.push_back(std::move(own));
    }
    return facts;
}

std::string FactsText(const MapFacts& facts) {
    std::string text = "layers " + std::to_string(facts.layers.size()) + ", blocks " + std::to_string(facts.blocks.size()) +
                       ", items " + std::to_string(facts.items) + ", points " + std::to_string(facts.points) + "\n";
    if (facts.bounds) {
        text += "left " + ShownNumber(facts.bounds->left) + ", bottom " + ShownNumber(facts.bounds->low) + ", right " +
                ShownNumber(facts.bounds->right) + ", top " + ShownNumber(facts.bounds->high) + "\n";
    }
    std::size_t columns = 5;
    for (const LayerFacts& layer : facts.layers) columns = std::max(columns, Columns(layer.code));
    const auto row = [&](const std::string& code, const std::string& type, const std::string& blocks, const std::string& items,
                         const std::string& points, const std::string& name) {
        text += PadRight(code, columns) + "  " + PadRight(type, 8) + "  " + PadLeft(blocks, 7) + "  " + PadLeft(items, 9) + "  " +
                PadLeft(points, 11) + (name.empty() ? "" : "  ") + name + "\n";
    };
    if (!facts.layers.empty()) row("layer", "type", "blocks", "items", "points", "name");
    for (const LayerFacts& layer : facts.layers) {
        row(layer.code, TypeName(layer.layType), std::to_string(layer.blocks), std::to_string(layer.items),
            std::to_string(layer.points), layer.name);
    }
    return text;
}

std::string JsonText(std::string_view utf8) {
    std::string text = "\"";
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        if (static_cast<unsigned char>(c) >= 0x80) {
            const std::size_t length = Utf8SequenceLength(utf8.substr(i));
            text += length == 0 ? std::string_view("\xEF\xBF\xBD") : utf8.substr(i, length);
            if (length > 1) i += length - 1;
        } else if (c == '"' || c == '\\') {
            text += {'\\', c};
        } else if (static_cast<unsigned char>(c) < 0x20) {
            constexpr const char* kDigits = "0123456789abcdef";
            text += {'\\', 'u', '0', '0', kDigits[c / 16], kDigits[c % 16]};
        } else {
            text += c;
        }
    }
    return text + "\"";
}

std::string FactsJson(const MapFacts& facts) {
    const auto layerLine = [](const LayerFacts& layer) {
        return "\"code\": " + JsonText(layer.code) + ", \"name\": " + JsonText(layer.name) +
               ", \"type\": " + JsonText(TypeName(layer.layType)) + ", \"blocks\": " + std::to_string(layer.blocks) + ", " +
               JsonCounts(layer);
    };
    const auto blockLine = [](const BlockFacts& block) {
        return "\"code\": " + JsonText(block.code) + ", \"meshNo\": " + std::to_string(block.meshNo) +
               ", \"path\": " + JsonText(block.path) + ", \"origin\": [" + JsonNumber(block.GX) + ", " + JsonNumber(block.GY) +
               "], " + JsonCounts(block);
    };
    return "  \"layerCount\": " + std::to_string(facts.layers.size()) +
           ", \"blockCount\": " + std::to_string(facts.blocks.size()) + ",\n  " + JsonCounts(facts) +
           ",\n  \"layers\": " + JsonList(facts.layers, layerLine) + ",\n  \"blocks\": " + JsonList(facts.blocks, blockLine);
}

}  // namespace orvane
