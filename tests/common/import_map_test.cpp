#include "hosts/common/import_map.h"

#include <cpl_vsi.h>
#include <gtest/gtest.h>

#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

TEST(ImportMap, JapaneseNamesBecomeCodesInCodePage932) {
    std::string text = R"({"type":"FeatureCollection","features":[{"type":"Feature","properties":{"名":"千代田区"},
        "geometry":{"type":"Point","coordinates":[139.7,35.6]}}]})";
    VSIFCloseL(VSIFileFromMemBuffer("/vsimem/names.geojson", reinterpret_cast<GByte*>(text.data()), text.size(), FALSE));
    OffscreenMap map(100, 100);
    ImportOptions options;
    options.byField = "名";
    const std::vector<std::string> sources = {"/vsimem/names.geojson"};
    const ImportResult result = ImportMap(map.Control(), sources, options);
    VSIUnlink("/vsimem/names.geojson");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(map.Control().store.GetLayDatCnt("\x90\xE7\x91\xE3\x93\x63\x8B\xE6", 1), 1);
}

TEST(ImportMap, TheSummaryIsATableWithWhatWasLeftOutAndWhoseDataItIs) {
    ImportSummary summary;
    summary.zone = 9;
    summary.epsg = 6677;
    summary.system = "JGD2011 / Japan Plane Rectangular CS IX";
    summary.layers = {{"roads", "roads", kLayLine, 12, 345}, {"\x93\x8C\x8B\x9E", "東京", kLayPolygon, 1, 5}};
    summary.leftOut.tooFewPoints = 2;
    summary.descriptions = {"credit"};
    EXPECT_EQ(SummaryText(summary),
              "zone 9, EPSG:6677 JGD2011 / Japan Plane Rectangular CS IX\n"
              "layer  type          items       points\n"
              "roads  lines            12          345\n"
              "東京   polygons          1            5\n"
              "left out: 2 lines of one place or polygons without area\n"
              "credit\n");
}

TEST(ImportMap, EachKindOfLossHasItsLine) {
    EXPECT_TRUE(LeftOutLines({}).empty());
    LeftOut all;
    all.noGeometry = all.tooFewPoints = all.notFinite = all.unknownType = all.rings = 1;
    EXPECT_EQ(LeftOutLines(all).size(), 5u);
}

}  // namespace
}  // namespace orvane
