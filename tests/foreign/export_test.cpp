#include "foreign/export.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "platform/cp932.h"
#include "tests/foreign/export_fixture.h"

namespace orvane {
namespace {

const std::vector<DigPnt> kSquare = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}};

std::vector<DigPnt> Box(double x, double y, double size) {
    return {{x, y, 0}, {x + size, y, 0}, {x + size, y + size, 0}, {x, y + size, 0}, {x, y, 0}};
}

std::vector<DigPnt> operator+(std::vector<DigPnt> a, const std::vector<DigPnt>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

class EveryFormat : public ExportTest, public ::testing::WithParamInterface<const char*> {
protected:
    std::string Out() const { return std::string("out") + GetParam(); }
};
INSTANTIATE_TEST_SUITE_P(Formats, EveryFormat, ::testing::Values(".gpkg", ".geojson", ".shp", ".fgb"),
                         [](const auto& format) { return std::string(format.param + 1); });

std::multiset<std::string> Wkts(const std::vector<ReadFeature>& features) {
    std::multiset<std::string> wkts;
    for (const ReadFeature& feature : features) wkts.insert(feature.Wkt());
    return wkts;
}

TEST_P(EveryFormat, PointsKeepTheirPlaceAndAttributes) {
    options.decode = DecodeCp932Shown;
    const std::string code = *EncodeCp932("電柱");
    Layer(code, kLayPoint, -5, 1000, -2000);
    store.SetLayColor(code, 0x0380FE);  // red 254, green 128, blue 3
    Item(code, 2147483647, {{1.25, 2.5, 0}}, -1, -5);
    store.SetDigDatString(code, -5, 2147483647, 7, 8, *EncodeCp932("表示"));
    const auto features = Through(Out());
    ASSERT_EQ(features.size(), 1u);
    EXPECT_EQ(features[0].Wkt(), "POINT (1001.25 -1997.5)");
    EXPECT_EQ(features[0].Text("code"), "電柱");
    EXPECT_EQ(features[0].Number("meshNo"), -5);
    EXPECT_EQ(features[0].Number("datID"), 2147483647);
    EXPECT_EQ(features[0].Number("lineTag"), -1);
    EXPECT_EQ(features[0].Number("subLayNo"), 0);
    EXPECT_EQ(features[0].Text("color"), "#FE8003");
    EXPECT_EQ(features[0].Text("text"), "表示");
    EXPECT_EQ(features[0].Text("fcolor"), "#000000");
    EXPECT_EQ(features[0].Text("bcolor"), "#FFFFFF");
}

TEST_P(EveryFormat, ALayerWithAHeightIsWrittenWithHeights) {
    Layer("P", kLayPoint);
    Item("P", 1, {{1, 2, 0}});
    Item("P", 2, {{3, 4, 5.5}});
    EXPECT_EQ(Wkts(Through(Out())), (std::multiset<std::string>{"POINT Z (1 2 0)", "POINT Z (3 4 5.5)"}));
}

TEST_P(EveryFormat, LinesKeepAllPoints) {
    Layer("L", kLayLine, 1, 100, 200);
    Item("L", 1, {{0, 0, 0}, {0.1, 0, 0}, {0.1, 0, 0}, {1, 1, 0}});
    EXPECT_EQ(Wkts(Through(Out())), (std::multiset<std::string>{"LINESTRING (100 200,100.1 200.0,100.1 200.0,101 201)"}));
}

TEST_P(EveryFormat, APolygonsHolesAndIslandsGetTheirRoles) {
    // Rings inside first, one turned about: neither order nor direction tells what a ring is.
    std::vector<DigPnt> island = Box(4, 4, 2);
    std::reverse(island.begin(), island.end());
    Layer("G", kLayPolygon);
    Item("G", 1, island + Box(2, 2, 6) + Box(0, 0, 10) + Box(20, 0, 5));
    const auto features = Through(Out());
    ASSERT_EQ(features.size(), 1u);
    auto parts = features[0].Parts();
    ASSERT_EQ(parts.size(), 3u);
    std::sort(parts.begin(), parts.end(), [](auto* a, auto* b) { return a->get_Area() < b->get_Area(); });
    EXPECT_EQ(parts[0]->get_Area(), 4);
    EXPECT_EQ(parts[1]->get_Area(), 25);
    EXPECT_EQ(parts[2]->get_Area(), 100 - 36);
    ASSERT_EQ(parts[2]->getNumInteriorRings(), 1);
    EXPECT_EQ(parts[2]->getInteriorRing(0)->get_Area(), 36);
    EXPECT_EQ(parts[0]->getNumInteriorRings() + parts[1]->getNumInteriorRings(), 0);
}

TEST_F(ExportTest, OuterRingsRunAgainstTheClockAndHolesWithIt) {
    Layer("G", kLayPolygon);
    std::vector<DigPnt> outer = kSquare;
    std::reverse(outer.begin(), outer.end());
    Item("G", 1, outer + Box(2, 2, 3));
    const auto features = Through("out.geojson");
    ASSERT_EQ(features.size(), 1u);
    const OGRPolygon& polygon = *features[0].Geometry()->toPolygon();
    EXPECT_FALSE(polygon.getExteriorRing()->isClockwise());
    EXPECT_TRUE(polygon.getInteriorRing(0)->isClockwise());
}

TEST_F(ExportTest, AnArrayThatEndsInItsFirstPointIsOneRingAsTheMapDrawsIt) {
    // It passes its first point in between: walked ring by ring it would be two.
    Layer("G", kLayPolygon);
    Item("G", 1, {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 0, 0}, {-4, 0, 0}, {-4, -4, 0}, {0, 0, 0}});
    const auto features = Through("out.gpkg");
    ASSERT_EQ(features.size(), 1u);
    ASSERT_EQ(features[0].Parts().size(), 1u);
    EXPECT_EQ(features[0].Parts()[0]->getExteriorRing()->getNumPoints(), 7);
}

TEST_F(ExportTest, PolygonsThatCloseNoRingAreLeftOutAndCounted) {
    Layer("G", kLayPolygon);
    Item("G", 1, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}});                                       // never closes: drawn by nothing
    Item("G", 2, {{0, 0, 0}, {10, 0, 0}, {0, 0, 0}});                                         // closes without area
    Item("G", 3, {{0, 0, 0}, {5, 5, 0}, {10, 10, 0}, {0, 0, 0}});                             // all on one line
    Item("G", 4, kSquare + std::vector<DigPnt>{{20, 20, 0}, {30, 20, 0}, {30, 30, 0}});       // a tail that closes nothing
    Item("G", 5, kSquare + std::vector<DigPnt>{{2, 2, 0}, {3, 3, 0}, {2, 2, 0}, {4, 4, 0}});  // a flat ring, and a tail
    Item("G", 6, {});
    const ExportResult result = Run("out.fgb");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.openPolygons, 3);
    EXPECT_EQ(result.summary.leftOut.tooFewPoints, 1);
    EXPECT_EQ(result.summary.leftOut.tails, 2);
    EXPECT_EQ(result.summary.leftOut.rings, 1);
    EXPECT_EQ(result.summary.leftOut.LostItems(), 4);
    EXPECT_EQ(result.summary.layers[0].featureCnt, 2);
    const auto features = Read(options.path);
    ASSERT_EQ(features.size(), 2u);
    for (const ReadFeature& feature : features) EXPECT_EQ(feature.Geometry()->toMultiPolygon()->get_Area(), 100);
}

TEST_P(EveryFormat, ACircleIsAPolygonOf72PointsThatKeepsItsRadius) {
    Layer("C", kLayCircle, 1, 100, 0);
    store.SetLayColor2("C", 0x0000FF);
    Item("C", 1, {{5, 7, 3.25}, {99, 99, 99}});
    const auto features = Through(Out());
    ASSERT_EQ(features.size(), 1u);
    EXPECT_EQ(features[0].Number("radius"), 3.25);
    EXPECT_EQ(features[0].Text("color2"), "#FF0000");
    ASSERT_EQ(features[0].Parts().size(), 1u);
    const OGRLinearRing& ring = *features[0].Parts()[0]->getExteriorRing();
    ASSERT_EQ(ring.getNumPoints(), 73);
    EXPECT_FALSE(ring.Is3D()) << "a radius is no height";
    for (const OGRPoint& p : ring) EXPECT_NEAR(std::hypot(p.getX() - 105, p.getY() - 7), 3.25, 1e-12);
    EXPECT_NEAR(ring.get_Area(), 36 * 3.25 * 3.25 * std::sin(5 * std::numbers::pi / 180), 1e-9);
}

TEST_P(EveryFormat, AnEllipseFillsItsBoxWhicheverCornersSpanIt) {
    Layer("E", kLayEllipse, 1, 10, 20);
    Item("E", 1, {{8, 1, 0}, {0, 5, 0}, {77, 77, 0}});
    const auto features = Through(Out());
    ASSERT_EQ(features.size(), 1u);
    EXPECT_EQ(features[0].Number("radiusX"), 4);
    EXPECT_EQ(features[0].Number("radiusY"), 2);
    OGREnvelope box;
    features[0].Geometry()->getEnvelope(&box);
    EXPECT_NEAR(box.MinX, 10, 1e-12);
    EXPECT_NEAR(box.MaxX, 18, 1e-12);
    EXPECT_NEAR(box.MinY, 21, 1e-12);
    EXPECT_NEAR(box.MaxY, 25, 1e-12);
    EXPECT_EQ(features[0].Parts()[0]->getExteriorRing()->getNumPoints(), 73);
    for (const OGRPoint& p : *features[0].Parts()[0]->getExteriorRing()) {
        EXPECT_NEAR(std::pow((p.getX() - 14) / 4, 2) + std::pow((p.getY() - 23) / 2, 2), 1, 1e-12);
    }
}

TEST_F(ExportTest, RoundFiguresWithoutExtentAreLeftOut) {
    Layer("C", kLayCircle);
    Item("C", 1, {{5, 7, 0}});
    Item("C", 2, {{5, 7, -2}});  // drawn with its corners swapped
    Item("C", 3, {});
    Layer("E", kLayEllipse);
    Item("E", 1, {{1, 1, 0}});
    Item("E", 2, {{1, 1, 0}, {1, 5, 0}});
    Item("E", 3, {{1, 1, 0}, {2, 5, 0}});
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.tooFewPoints, 4);
    const auto circles = Read(options.path, "C");
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_EQ(circles[0].Number("radius"), -2);
    EXPECT_EQ(Read(options.path, "E").size(), 1u);
}

TEST_P(EveryFormat, ATextIsAPointAtItsAnchorWithItsLook) {
    options.decode = DecodeCp932Shown;
    Layer("T", kLayText, 1, 50, 60);
    Item("T", 4, {{1, 1, 0}});  // points of texts mean nothing
    store.SetDigDatString("T", 1, 4, 2.5, 3.5, *EncodeCp932("本町"));
    const std::string face = *EncodeCp932("標準ゴシック");
    TextLook look;
    look.fntname = face;
    look.size = 12;
    look.style = 5;
    look.pos = 4;
    look.angle = 45.25;
    look.fill = true;
    look.uline = true;
    look.fcolor = 0x123456;
    look.bcolor = 0xABCDEF;
    ASSERT_TRUE(store.SetDigDatStrStyle("T", 1, 4, look));
    const auto features = Through(Out());
    ASSERT_EQ(features.size(), 1u);
    EXPECT_EQ(features[0].Wkt(), "POINT (52.5 63.5)");
    EXPECT_EQ(features[0].Text("text"), "本町");
    EXPECT_EQ(features[0].Text("fntname"), "標準ゴシック");
    EXPECT_EQ(features[0].Number("size"), 12);
    EXPECT_EQ(features[0].Number("style"), 5);
    EXPECT_EQ(features[0].Number("pos"), 4);
    EXPECT_EQ(features[0].Number("angle"), 45.25);
    EXPECT_EQ(features[0].Number("fill"), 1);
    EXPECT_EQ(features[0].Number("uline"), 1);
    EXPECT_EQ(features[0].Number("strike"), 0);
    EXPECT_EQ(features[0].Text("fcolor"), "#563412");
    EXPECT_EQ(features[0].Text("bcolor"), "#EFCDAB");
}

TEST_F(ExportTest, AnItemOfATextLayerWithoutATextIsLeftOut) {
    Layer("T", kLayText);
    Item("T", 1, {{1, 1, 0}});
    Item("T", 2, {});
    store.SetDigDatString("T", 1, 2, 1, 1, "x");
    const ExportResult result = Run("out.fgb");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.noText, 1);
    EXPECT_EQ(Read(options.path).size(), 1u);
}

TEST_P(EveryFormat, EveryUsedCellOfAMeshIsAPolygonWithItsColourAndHeight) {
    Layer("M", kLayMesh, 1, 100, 200);
    Item("M", 9, {});
    // Three columns 10 apart, two rows 20 apart.
    const std::vector<DigPnt> grid = {{0, 0, 1}, {10, 0, 2}, {20, 0, 3}, {0, 20, 4}, {10, 20, 5}, {20, 20, 6}};
    ASSERT_TRUE(store.SetMeshDat("M", 1, 9, 3, 2, grid));
    ASSERT_TRUE(store.SetMeshUseFlag("M", 1, 9, std::vector<std::uint8_t>{1, 0, 1, 1, 1, 0}));
    ASSERT_TRUE(store.SetMeshColor("M", 1, 9, std::vector<std::uint32_t>{0xFF, 0, 0xFF00, 0xFF0000, 0xFFFFFF, 0}));
    const auto features = Through(Out());
    ASSERT_EQ(features.size(), 4u);
    struct Cell {
        double row, column, height, x, y;
        const char* color;
    };
    const std::vector<Cell> cells = {
        {0, 0, 1, 0, 0, "#FF0000"}, {0, 2, 3, 20, 0, "#00FF00"}, {1, 0, 4, 0, 20, "#0000FF"}, {1, 1, 5, 10, 20, "#FFFFFF"}};
    for (const Cell& cell : cells) {
        const auto found = std::find_if(features.begin(), features.end(), [&](const ReadFeature& feature) {
            return feature.Number("row") == cell.row && feature.Number("column") == cell.column;
        });
        ASSERT_NE(found, features.end());
        EXPECT_EQ(found->Number("height"), cell.height);
        EXPECT_EQ(found->Text("color"), cell.color);
        EXPECT_EQ(found->Number("datID"), 9);
        OGREnvelope box;
        found->Geometry()->getEnvelope(&box);
        EXPECT_EQ(box.MinX, 100 + cell.x - 5) << "the grid point is the middle of its cell";
        EXPECT_EQ(box.MaxX, 100 + cell.x + 5);
        EXPECT_EQ(box.MinY, 200 + cell.y - 10);
        EXPECT_EQ(box.MaxY, 200 + cell.y + 10);
    }
}

TEST_F(ExportTest, AMeshOfOneColumnHasNoCells) {
    Layer("M", kLayMesh);
    Item("M", 1, {});
    ASSERT_TRUE(store.SetMeshDat("M", 1, 1, 1, 2, std::vector<DigPnt>{{0, 0, 0}, {0, 1, 0}}));
    Item("M", 2, {{1, 1, 0}});
    Item("M", 3, {});
    ASSERT_TRUE(store.SetMeshDat("M", 1, 3, 2, 2, std::vector<DigPnt>(4)));  // all in one place
    const ExportResult result = Run("out.fgb");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.noGrid, 2);
    EXPECT_EQ(result.summary.leftOut.cells, 4);
}

TEST_F(ExportTest, AnItemOfAShownSubLayerHasItsColours) {
    Layer("G", kLayPolygon);
    store.SetLayColor("G", 0x0000FF);
    store.SetSubLayer("G", 1, "", true, 0, 1, 0x00FF00, true);
    store.SetSubLayColor2("G", 1, 0xFF0000);
    store.SetSubLayer("G", 2, "", false, 0, 1, 0x00FF00, true);
    for (std::int32_t id = 1; id <= 3; ++id) Item("G", id, kSquare);
    store.SetDigDatSubLayer("G", 1, 2, 1);
    store.SetDigDatSubLayer("G", 1, 3, 2);
    const auto features = Through("out.gpkg");
    ASSERT_EQ(features.size(), 3u);
    EXPECT_EQ(features[0].Text("color"), "#FF0000");
    EXPECT_EQ(features[1].Text("color"), "#00FF00");
    EXPECT_EQ(features[1].Text("color2"), "#0000FF");
    EXPECT_EQ(features[1].Number("subLayNo"), 1);
    EXPECT_EQ(features[2].Text("color"), "#FF0000") << "a sub layer that does not show lends no colour";
}

TEST_F(ExportTest, ItemsWithoutATextHaveNone) {
    Layer("P", kLayPoint);
    Item("P", 1, {{0, 0, 0}});
    Item("P", 2, {{0, 0, 0}});
    store.SetDigDatString("P", 1, 2, 0, 0, "");
    const auto features = Through("out.gpkg");
    ASSERT_EQ(features.size(), 2u);
    EXPECT_EQ(features[0].Text("text"), "(null)");
    EXPECT_EQ(features[0].Text("fcolor"), "(null)");
    EXPECT_EQ(features[1].Text("text"), "") << "an empty text is one";
    EXPECT_FALSE(features[0].Has("fntname")) << "labels take no look from their text";
}

TEST_F(ExportTest, BytesThatAreNoTextAreShownAsSuch) {
    Layer("P", kLayPoint);
    Item("P", 1, {{0, 0, 0}});
    store.SetDigDatString("P", 1, 1, 0, 0, std::string("a\0\x95z", 4));
    options.decode = DecodeCp932Shown;
    EXPECT_EQ(Through("a.geojson")[0].Text("text"), "a " + DecodeCp932Shown("\x95z"));
    options.decode = nullptr;
    EXPECT_EQ(Through("b.geojson")[0].Text("text"), "a \xEF\xBF\xBDz");
}

TEST_F(ExportTest, AShapefileCutsLongTextsBetweenCharactersAndSaysSo) {
    options.decode = DecodeCp932Shown;
    Layer("P", kLayPoint);
    std::string text;
    std::string shown;
    for (int i = 0; i < 100; ++i) text += *EncodeCp932("あ");
    for (int i = 0; i < 84; ++i) shown += "あ";
    Item("P", 1, {{0, 0, 0}});
    store.SetDigDatString("P", 1, 1, 0, 0, text);
    const ExportResult result = Run("out.shp");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_TRUE(HasNote(result, "1 texts were cut to 254 bytes"));
    EXPECT_EQ(Read(options.path)[0].Text("text"), shown);
    const ExportResult whole = Run("out.gpkg");
    EXPECT_FALSE(HasNote(whole, "cut"));
    EXPECT_EQ(Read(options.path)[0].Text("text").size(), 300u);
}

TEST_F(ExportTest, CoordinatesThatAreNoPlaceLeaveTheirItemOut) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Layer("P", kLayPoint);
    Item("P", 1, {{inf, 0, 0}});
    Item("P", 2, {{0, nan, 0}});
    Item("P", 3, {{0, 0, -inf}});
    Item("P", 4, {{1, 1, 0}});
    Layer("G", kLayPolygon);
    Item("G", 1, {{0, 0, 0}, {1e308, 0, 0}, {1e308, 1e308, 0}, {0, 0, 0}});
    Layer("T", kLayText);
    Item("T", 1, {});
    store.SetDigDatString("T", 1, 1, nan, 0, "x");
    Layer("C", kLayCircle);
    Item("C", 1, {{0, 0, inf}});
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.notFinite, 6);
    EXPECT_EQ(Read(options.path, "P").size(), 1u);
}

TEST_F(ExportTest, LinesOfOnePlaceAreLeftOut) {
    Layer("L", kLayLine);
    Item("L", 1, {{1, 1, 0}});
    Item("L", 2, {{1, 1, 0}, {1, 1, 5}});
    Item("L", 3, {});
    Item("L", 4, {{1, 1, 0}, {1, 2, 0}});
    const ExportResult result = Run("out.fgb");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.tooFewPoints, 3);
    EXPECT_EQ(Read(options.path).size(), 1u);
}

TEST_F(ExportTest, AllBlocksOfALayerAreOneLayerInDrawingOrder) {
    Layer("P", kLayPoint, 2, 100, 0);
    Layer("Q", kLayPoint, 1);
    Layer("P", kLayPoint, 1, 200, 0);
    Item("P", 1, {{1, 0, 0}}, 0, 2);
    Item("P", 2, {{2, 0, 0}}, 0, 2);
    Item("P", 1, {{3, 0, 0}}, 0, 1);
    Item("Q", 1, {{4, 0, 0}});
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    const auto features = Read(options.path, "P");
    ASSERT_EQ(features.size(), 3u);
    EXPECT_EQ(features[0].Wkt(), "POINT (101 0)");
    EXPECT_EQ(features[1].Wkt(), "POINT (102 0)");
    EXPECT_EQ(features[2].Wkt(), "POINT (203 0)");
    EXPECT_EQ(features[2].Number("meshNo"), 1);
    EXPECT_EQ(Read(options.path, "Q").size(), 1u);
    ASSERT_EQ(result.summary.layers.size(), 2u);
    EXPECT_EQ(result.summary.layers[0].code, "P");
    EXPECT_EQ(result.summary.layers[0].featureCnt, 3);
}

TEST_F(ExportTest, LayersOfUnknownTypesAndEmptyOnesAreLeftOut) {
    Layer("Six", 6);
    Item("Six", 1, {{0, 0, 0}});
    Layer("None", kLayPoint);
    ASSERT_TRUE(store.MakeLayer("Bare", kLayPoint));
    Layer("P", kLayPoint);
    Item("P", 1, {{0, 0, 0}});
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.unknownType, 1);
    EXPECT_EQ(result.summary.leftOut.emptyLayers, 3);
    EXPECT_EQ(Open(options.path)->GetLayerCount(), 1);
}

TEST_F(ExportTest, CodesThatDifferOnlyInCaseAreTwoTables) {
    for (const char* code : {"Abc", "abc"}) {
        Layer(code, kLayPoint);
        Item(code, 1, {{0, 0, 0}});
    }
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    ASSERT_EQ(Read(options.path, "abc~2").size(), 1u);
    EXPECT_EQ(Read(options.path, "abc~2")[0].Text("code"), "abc");
}

TEST_F(ExportTest, ALayersNameDescribesItInAGeoPackage) {
    options.decode = DecodeCp932Shown;
    Layer("P", kLayPoint);
    store.SetLayerName("P", *EncodeCp932("電柱の位置"));
    Item("P", 1, {{0, 0, 0}});
    ASSERT_TRUE(Run("out.gpkg").Ok());
    const auto dataset = Open(options.path);
    EXPECT_STREQ(dataset->GetLayer(0)->GetMetadataItem("DESCRIPTION"), "電柱の位置");
}

TEST_F(ExportTest, HiddenLayersAndItemsAreWritten) {
    Layer("P", kLayPoint);
    Item("P", 1, {{0, 0, 0}}, -1);
    store.MutableLayer(0).dspFlg = 0;
    EXPECT_EQ(Through("out.fgb").size(), 1u);
}

}  // namespace
}  // namespace orvane
