#include "hosts/common/import_map.h"

#include <algorithm>
#include <array>

#include "hosts/common/table_text.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

const char* TypeName(std::int32_t layType) {
    switch (layType) {
        case kLayPoint:
            return "points";
        case kLayLine:
            return "lines";
        default:
            return "polygons";
    }
}

}  // namespace

ImportResult ImportMap(COrvane4Ctrl& ctrl, std::span<const std::string> sources, ImportOptions options) {
    options.encode = EncodeCp932;
    return ImportVector(ctrl.store, sources, options);
}

std::vector<std::string> LeftOutLines(const LeftOut& leftOut) {
    struct Row {
        std::int64_t count;
        const char* what;
    };
    const std::array<Row, 5> rows = {{{leftOut.noGeometry, "features without geometry"},
                                      {leftOut.tooFewPoints, "lines of one place or polygons without area"},
                                      {leftOut.notFinite, "shapes with coordinates that do not lie where the map reaches"},
                                      {leftOut.unknownType, "geometries of a kind that the map does not hold, or broken ones"},
                                      {leftOut.rings, "holes or parts without area, of polygons that were taken"}}};
    std::vector<std::string> lines;
    for (const Row& row : rows) {
        if (row.count > 0) lines.push_back("left out: " + std::to_string(row.count) + " " + row.what);
    }
    return lines;
}

std::string SummaryText(const ImportSummary& summary) {
    std::string text;
    if (summary.zone > 0) {
        text += "zone " + std::to_string(summary.zone) + ", EPSG:" + std::to_string(summary.epsg) + " " + summary.system + "\n";
    }
    if (summary.sheetCnt > 0) text += "mesh frame, " + std::to_string(summary.sheetCnt) + " sheets, " + summary.system + "\n";
    std::size_t nameColumns = 5;
    for (const ImportedLayer& layer : summary.layers) nameColumns = std::max(nameColumns, Columns(DecodeCp932Shown(layer.code)));
    const auto row = [&](const std::string& code, const std::string& type, const std::string& items, const std::string& points) {
        text +=
            PadRight(code, nameColumns) + "  " + PadRight(type, 8) + "  " + PadLeft(items, 9) + "  " + PadLeft(points, 11) + "\n";
    };
    if (!summary.layers.empty()) row("layer", "type", "items", "points");
    for (const ImportedLayer& layer : summary.layers) {
        row(DecodeCp932Shown(layer.code), TypeName(layer.layType), std::to_string(layer.itemCnt), std::to_string(layer.pntCnt));
    }
    for (const std::string& line : LeftOutLines(summary.leftOut)) text += line + "\n";
    for (const std::string& description : summary.descriptions) text += description + "\n";
    return text;
}

}  // namespace orvane
