#include "hosts/common/exchange_losses.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <utility>

#include "files/exchange_format.h"
#include "hosts/common/text_limits.h"
#include "platform/cp932.h"
#include "platform/to_int.h"
#include "store/layer_type.h"

namespace orvane {
namespace {

constexpr const char* kWayOut = "; change that, or save the map as .Ovb";

bool Has(std::string_view text, std::string_view what) { return text.find(what) != std::string_view::npos; }

std::string LayerWords(std::string_view code) { return "layer \"" + DecodeCp932Shown(code) + "\""; }

/// Whether the text has a number to the last bit: six decimals are written.
bool IsKept(double value) { return std::nearbyint(value * 1e6) / 1e6 == value || !(std::abs(value) < 9e9); }

bool AreNumbersKept(const DigDat& dat) {
    const auto count = static_cast<std::size_t>((std::max)(dat.pntCnt, 0));
    const DigPnt* const pnts = dat.pnts.Get();
    const auto kept = [](const DigPnt& pnt) { return IsKept(pnt.x) && IsKept(pnt.y) && IsKept(pnt.z); };
    if (!std::all_of(pnts, pnts + count, kept)) return false;
    return dat.str == nullptr || (IsKept(dat.str->x) && IsKept(dat.str->y) && IsKept(dat.str->angle));
}

bool HasImages(const ImageLook& look, std::uint8_t mode) {
    return mode != 0 || !look.imgfname.View().empty() || !look.imgactfname.View().empty();
}

struct Counts {
    std::int64_t names = 0;
    std::int64_t images = 0;
    std::int64_t secondColours = 0;
    std::int64_t imagePositions = 0;
    std::int64_t subNames = 0;
    std::int64_t subImages = 0;
    std::int64_t subCommas = 0;
    std::int64_t subColours = 0;
    std::int64_t subTwice = 0;
    std::int64_t origins = 0;
    std::int64_t paths = 0;
    std::int64_t decimals = 0;
    std::int64_t meshes = 0;
    std::int64_t fonts = 0;
    std::int64_t heights = 0;
    std::int64_t commas = 0;
    std::int64_t subNumbers = 0;
    std::string firstComma;
};

void CountSubLayers(const LayerDef& layer, Counts& counts) {
    std::set<std::int32_t> numbers;
    for (const SubLayDef& sub : layer.subLays) {
        counts.subNames += !sub.layerName.View().empty();
        counts.subImages += HasImages(sub, sub.imgMode);
        counts.subCommas += Has(sub.imgfname.View(), ",") || Has(sub.imgactfname.View(), ",");
        counts.subColours += sub.color2 != 0 || sub.imgPos != 0;
        counts.subTwice += !numbers.insert(sub.subLayNo).second;
    }
}

void CountLayer(const LayerDef& layer, Counts& counts) {
    counts.names += !layer.layerName.View().empty();
    counts.images += HasImages(layer, layer.imgMode);
    counts.secondColours += layer.color2 != 0;
    counts.imagePositions += layer.imgPos != 0;
    CountSubLayers(layer, counts);
}

void CountText(const DigBlock& block, const DigDat& dat, Counts& counts) {
    const DigStr& str = *dat.str;
    // Readers of these files give a text its own beginning for a font.
    const std::string_view text(str.text);
    counts.fonts += str.fntname != text.substr(0, text.empty() ? 0 : text.size() - 1);
    counts.heights += str.z != 0;
    if (!Has(text, ",")) return;
    if (++counts.commas > 1) return;
    counts.firstComma = "the first of these texts is of feature " + std::to_string(dat.datID) + " in " +
                        LayerWords(block.code.View()) + ", group " + std::to_string(block.meshNo);
}

void CountSubNumbers(const DigBlock& block, Counts& counts) {
    const auto hasSub = [](const DigDat& dat) { return dat.subLayNo != 0; };
    if (std::none_of(block.dats.begin(), block.dats.end(), hasSub)) return;
    std::vector<std::pair<std::int32_t, std::size_t>> places;
    places.reserve(block.dats.size());
    for (std::size_t i = 0; i < block.dats.size(); ++i) places.emplace_back(block.dats[i].datID, i);
    std::sort(places.begin(), places.end());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const std::int32_t subLayNo = block.dats[places[i].second].subLayNo;
        // Readers find the first that has the number.
        const bool isTwice = i > 0 && places[i].first == places[i - 1].first;
        counts.subNumbers += subLayNo < 0 || (subLayNo > 0 && isTwice);
    }
}

void CountBlock(const DigBlock& block, Counts& counts) {
    const auto isWhole = [](double value) { return static_cast<double>(TruncToInt32(value)) == value; };
    counts.origins += !isWhole(block.GX) || !isWhole(block.GY);
    counts.paths += Has(block.path, ",");
    CountSubNumbers(block, counts);
    for (const DigDat& dat : block.dats) {
        counts.decimals += !AreNumbersKept(dat);
        counts.meshes += dat.meshAttr != nullptr;
        if (dat.str != nullptr) CountText(block, dat, counts);
    }
}

/// The codes of layers and names of sub layers, and what else of a layer's record stands between commas.
std::string WrongLayer(const LayerDef& layer, bool named) {
    const std::string_view code = layer.code.View();
    const std::string who = LayerWords(code);
    if (Has(code, ",") || Has(code, "\n")) return who + " has a comma or a line break in its code";
    if (Has(layer.imgfname.View(), "\n") || Has(layer.imgactfname.View(), "\n"))
        return who + " has a line break in the name of an image";
    if (!named) return {};
    const auto wrongName = [](std::string_view name) { return Has(name, ",") || Has(name, "\n"); };
    if (wrongName(layer.layerName.View())) return who + " has a comma or a line break in its name";
    for (const SubLayDef& sub : layer.subLays) {
        const std::string part = "sub layer " + std::to_string(sub.subLayNo) + " of " + who;
        if (wrongName(sub.layerName.View())) return part + " has a comma or a line break in its name";
        for (const std::string_view image : {sub.imgfname.View(), sub.imgactfname.View()}) {
            if (Has(image, "\n") || Has(image, "\","))
                return part + " has a line break or a quote and a comma in the name of an image";
        }
    }
    return {};
}

/// What keeps a block from being made at all.
std::string WrongBlock(const CDigMem& store, const DigBlock& block, std::set<std::pair<std::string, std::int32_t>>& seen) {
    const std::string group = "group " + std::to_string(block.meshNo);
    if (block.code.Empty()) return group + " has a layer without a code";
    const std::string who = LayerWords(block.code.View());
    const std::int32_t layer = store.FindLayDef(block.code.View());
    if (layer < 0 || !IsMakeableType(store.Layer(layer).layType)) return who + " is of no known type";
    if (!seen.emplace(block.code.View(), block.meshNo).second) return group + " of " + who + " is there twice";
    return Has(block.path, "\n") ? group + " of " + who + " has a line break in its path" : std::string();
}

std::string WrongInItem(const LayerDef& layer, const DigDat& dat) {
    if (std::string wrong = WhatNoTextHolds(dat); !wrong.empty()) return wrong;
    if (dat.subLayNo > 0 && CDigMem::FindSubLay(layer, dat.subLayNo) == nullptr) return "a sub layer that is not there";
    if (dat.str == nullptr) return {};
    if (Has(dat.str->text, "\",")) return "a quote and a comma behind it in its text";
    return Has(dat.str->fntname, "\",") ? "a quote and a comma behind it in its font name" : std::string();
}

std::string WrongItem(const CDigMem& store, const DigBlock& block) {
    const LayerDef& layer = store.Layer(store.FindLayDef(block.code.View()));
    for (const DigDat& dat : block.dats) {
        const std::string wrong = WrongInItem(layer, dat);
        if (wrong.empty()) continue;
        return "feature " + std::to_string(dat.datID) + " of " + LayerWords(block.code.View()) + ", group " +
               std::to_string(block.meshNo) + ", has " + wrong;
    }
    return {};
}

}  // namespace

std::vector<std::string> ExchangeLosses(CDigMem& store, std::string_view version) {
    Counts counts;
    std::set<std::int32_t> layers;
    for (const DigIndex& entry : store.Index()) {
        if (entry.layer < store.LayerCnt() && layers.insert(entry.layer).second) CountLayer(store.Layer(entry.layer), counts);
        CountBlock(store.Block(entry.block), counts);
    }
    std::vector<std::string> lines;
    const auto add = [&lines](std::int64_t count, const char* what) {
        if (count > 0) lines.push_back("not kept by an exchange text: " + std::to_string(count) + " " + what);
    };
    add(counts.commas, "texts with commas, which come back without them");
    if (!counts.firstComma.empty()) lines.push_back(counts.firstComma);
    add(counts.origins, "origins of blocks that are no whole numbers, whose features come back moved");
    add(counts.fonts, "fonts of texts: the text without its last character comes back for a font");
    add(counts.heights, "heights of texts");
    add(counts.decimals, "features with more than six decimals, which come back rounded");
    add(counts.meshes, "grids of mesh features");
    add(counts.subNumbers, "numbers of sub layers of features that share their number, or numbers below 0");
    add(counts.paths, "paths of blocks with commas, which come back cut");
    add(counts.names, "names of layers");
    add(counts.images, "images of point layers");
    add(counts.secondColours, "second colours of layers");
    add(counts.imagePositions, "positions of images of layers");
    add(counts.subColours, "second colours or positions of images of sub layers");
    add(counts.subTwice, "sub layers that share their number");
    if (version == kExchangeVersionPlain) {
        add(counts.subNames, "names of sub layers: version 1.00 has none");
        add(counts.subImages, "images of sub layers: version 1.00 has none");
    } else {
        add(counts.subCommas, "image names of sub layers with commas, which come back cut");
    }
    add(store.OrgDatCnt(), "overlay figures");
    return lines;
}

std::string WhatExchangeCannotHold(CDigMem& store, std::string_view version) {
    std::set<std::pair<std::string, std::int32_t>> seen;
    std::set<std::int32_t> layers;
    for (const DigIndex& entry : store.Index()) {
        const DigBlock& block = store.Block(entry.block);
        std::string wrong = WrongBlock(store, block, seen);
        const bool isNew = wrong.empty() && layers.insert(entry.layer).second;
        if (isNew) wrong = WrongLayer(store.Layer(entry.layer), version != kExchangeVersionPlain);
        if (wrong.empty()) wrong = WrongItem(store, block);
        if (!wrong.empty()) return wrong + ", which an exchange text cannot hold" + kWayOut;
    }
    return {};
}

}  // namespace orvane
