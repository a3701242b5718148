#include "hosts/common/archive_losses.h"

#include <cstdint>

namespace orvane {
namespace {

// What an archive has room for where the store has a whole number.
bool FitsByte(std::int32_t value) { return value >= -128 && value <= 127; }

struct Counts {
    std::int64_t subLayers = 0;
    std::int64_t subLayerItems = 0;
    std::int64_t active = 0;
    std::int64_t editable = 0;
    std::int64_t tags = 0;
    std::int64_t looks = 0;
    std::int64_t sizes = 0;
    std::int64_t origins = 0;
    std::int64_t strayPaths = 0;
    std::int64_t emptyBlocks = 0;
    std::int64_t meshes = 0;
    std::int64_t secondColours = 0;
    std::int64_t imagePositions = 0;
    std::int64_t texts = 0;
};

void CountLayers(const CDigMem& store, std::span<const std::string> leaveOut, Counts& counts) {
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        if (std::find(leaveOut.begin(), leaveOut.end(), layer.code.View()) != leaveOut.end()) continue;
        counts.subLayers += layer.subLayCnt;
        counts.active += layer.actFlg != 0;
        counts.editable += layer.editFlg != 0;
        counts.secondColours += layer.color2 != 0;
        counts.imagePositions += layer.imgPos != 0;
    }
}

void CountItem(const DigDat& dat, Counts& counts) {
    counts.subLayerItems += dat.subLayNo != 0;
    counts.tags += !FitsByte(dat.lineTag);
    counts.meshes += dat.meshAttr != nullptr;
    if (dat.str == nullptr) return;
    ++counts.texts;
    counts.sizes += !FitsByte(dat.str->size);
    counts.looks += !FitsByte(dat.str->style) || !FitsByte(dat.str->pos);
}

void CountBlocks(const CDigMem& store, Counts& counts) {
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        if (block.blkState != 1) continue;
        counts.origins += block.path.empty() && (block.GX != 0 || block.GY != 0);
        counts.strayPaths += !block.path.empty() && block.datCnt > 0 && store.FindLayDef(block.code.View()) < 0;
        counts.emptyBlocks += block.datCnt == 0;
        for (const DigDat& dat : block.dats) CountItem(dat, counts);
    }
}

}  // namespace

std::vector<std::string> ArchiveLosses(const CDigMem& store, bool text, std::string_view version,
                                       std::span<const std::string> leaveOut) {
    Counts counts;
    CountLayers(store, leaveOut, counts);
    CountBlocks(store, counts);
    const bool is100 = version == "1.00";
    std::vector<std::string> lines;
    const auto add = [&lines](std::int64_t count, const char* what) {
        if (count > 0) lines.push_back("not kept by an archive: " + std::to_string(count) + " " + what);
    };
    add(counts.subLayers, "sub layers");
    add(counts.subLayerItems, "sub layer numbers of items");
    add(counts.active, "switches of layers whose items may become active");
    add(counts.editable, "switches of layers that may be edited");
    add(counts.tags, "item tags beyond -128 to 127, which come back as others");
    add(counts.sizes, "text sizes above 127, which come back as others");
    add(counts.looks, "text styles or positions beyond -128 to 127, which come back as others");
    add(counts.origins, "origins of blocks without a path, whose items come back moved");
    add(counts.strayPaths, "paths and origins of blocks whose code has no layer");
    add(counts.emptyBlocks, "blocks without items");
    add(store.OrgDatCnt(), "overlay figures");
    if (is100) {
        add(counts.meshes, "grids of mesh items: version 1.00 has none");
        add(counts.secondColours, "second colours of layers: version 1.00 has none");
        add(counts.imagePositions, "image positions of layers: version 1.00 has none");
    }
    if (!text) return lines;
    lines.emplace_back("text keeps six decimals of a coordinate, and of a use flag only whether it is 0");
    lines.emplace_back(is100 ? "text of version 1.00 is never read back; 1.10 is"
                             : "text is read only with the .Ovi file of its version beside it: keep the files together");
    return lines;
}

}  // namespace orvane
