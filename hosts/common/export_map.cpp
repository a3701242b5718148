#include "hosts/common/export_map.h"

#include <array>
#include <utility>

#include "platform/cp932.h"

namespace orvane {

ExportResult ExportMap(CDigMem& store, std::span<const std::string> layers, ExportOptions options) {
    options.decode = DecodeCp932Shown;
    options.layers.clear();
    for (const std::string& layer : layers) {
        std::optional<std::string> code = EncodeCp932(layer);
        if (!code) return {ExportFault::BadOption, "no such layer: " + layer, {}};
        options.layers.push_back(*std::move(code));
    }
    return ExportVector(store, options);
}

std::vector<std::string> LeftOutLines(const ExportLeftOut& leftOut) {
    struct Row {
        std::int64_t count;
        const char* what;
    };
    const std::array<Row, 10> rows = {{{leftOut.emptyLayers, "layers without items"},
                                       {leftOut.tooFewPoints, "items of one place or without points"},
                                       {leftOut.openPolygons, "polygons without a closed ring of some area"},
                                       {leftOut.noText, "items of text layers without a text"},
                                       {leftOut.noGrid, "mesh items without a grid"},
                                       {leftOut.notFinite, "items with coordinates that are no place"},
                                       {leftOut.unknownType, "items of layers of no known type"},
                                       {leftOut.rings, "rings without area, of polygons that were written"},
                                       {leftOut.tails, "loose ends of polygons behind their last closed ring"},
                                       {leftOut.cells, "mesh cells without area or place"}}};
    std::vector<std::string> lines;
    for (const Row& row : rows) {
        if (row.count > 0) lines.push_back("left out: " + std::to_string(row.count) + " " + row.what);
    }
    return lines;
}

std::string SummaryText(const ExportSummary& summary) {
    std::string text = FactsOf(summary.format).name;
    text += summary.epsg > 0 ? ", EPSG:" + std::to_string(summary.epsg) + "\n" : ", no coordinate system\n";
    for (const ExportedLayer& layer : summary.layers) {
        text += layer.name + ": " + std::to_string(layer.featureCnt) + " features in " + layer.file + "\n";
    }
    for (const std::string& line : LeftOutLines(summary.leftOut)) text += line + "\n";
    return text;
}

std::string ExportFormatNames() {
    std::string names;
    for (const ExportFormatFacts& facts : ExportFormats()) names += std::string(names.empty() ? "" : ", ") + facts.name;
    return names;
}

}  // namespace orvane
