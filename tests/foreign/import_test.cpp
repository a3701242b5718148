#include "foreign/import.h"

#include <cmath>

#include "analysis/geometry/plane.h"
#include "tests/foreign/import_fixture.h"

namespace orvane {
namespace {

const char* const kTriangle = R"({"type":"Polygon","coordinates":[[[139.7,35.6],[139.8,35.6],[139.8,35.7],[139.7,35.6]]]})";
const char* const kLine = R"({"type":"LineString","coordinates":[[139.7,35.6],[139.8,35.7]]})";
const char* const kPoint = R"({"type":"Point","coordinates":[139.7,35.6]})";

std::vector<std::int32_t> Rings(const std::vector<DigPnt>& points) {
    std::vector<std::int32_t> counts(points.size());
    counts.resize(static_cast<std::size_t>(SplitRings(points, counts.data(), false)));
    return counts;
}

TEST_F(ImportTest, EastingGoesToXAndNorthingToY) {
    const ImportResult result = Run({GeoJson("town", R"({"type":"Point","coordinates":[140.2,36.4,12.5]})")});
    ASSERT_TRUE(result.Ok()) << result.error;
    const std::vector<DigPnt> points = Points("town", 1);
    ASSERT_EQ(points.size(), 1u);
    ExpectNear(points[0], Zone9Jgd(140.2, 36.4), 0.001);
    EXPECT_GT(points[0].x, 30000);  // east of the origin
    EXPECT_GT(points[0].y, 40000);  // north of it
    EXPECT_EQ(points[0].z, 12.5);
}

TEST_F(ImportTest, ABlockHasOriginZeroTheGivenGroupAndIdsFromOne) {
    options.grpNo = 7;
    const std::string source = GeoJson("town", {{kLine, "{}"}, {kLine, "{}"}, {kLine, "{}"}});
    ASSERT_TRUE(Run({source}).Ok());
    EXPECT_EQ(store.GetLayDatCnt("town", 7), 3);
    EXPECT_EQ(store.GetDigDatInfo("town", 7, 0), 1);
    EXPECT_EQ(store.GetDigDatInfo("town", 7, 2), 3);
    const DigIndex found = store.FindBlock("town", 7);
    ASSERT_GE(found.block, 0);
    EXPECT_EQ(store.Block(found.block).GX, 0);
    EXPECT_EQ(store.Block(found.block).GY, 0);
    DatInfo info;
    ASSERT_TRUE(store.GetDigDatInfoEx("town", 7, 1, info));
    EXPECT_EQ(info.lineTag, 0);
}

TEST_F(ImportTest, APolygonsHoleIsARingOfTheSameItem) {
    const ImportResult result = Run({GeoJson("lake", R"({"type":"Polygon","coordinates":[
        [[139.7,35.6],[139.8,35.6],[139.8,35.7],[139.7,35.7],[139.7,35.6]],
        [[139.72,35.62],[139.72,35.64],[139.74,35.64],[139.72,35.62]]]})")});
    ASSERT_TRUE(result.Ok()) << result.error;
    const std::vector<DigPnt> points = Points("lake", 1);
    EXPECT_EQ(Rings(points), (std::vector<std::int32_t>{5, 4}));
    EXPECT_TRUE(points[0].x == points[4].x && points[0].y == points[4].y) << "closed by exactly the opening point";
    EXPECT_TRUE(points[5].x == points[8].x && points[5].y == points[8].y);
}

TEST_F(ImportTest, AllPartsOfAMultiPolygonAreOneItem) {
    const ImportResult result = Run({GeoJson("isles", R"({"type":"MultiPolygon","coordinates":[
        [[[139.7,35.6],[139.8,35.6],[139.8,35.7],[139.7,35.6]]],
        [[[139.1,35.6],[139.2,35.6],[139.2,35.7],[139.1,35.6]]],
        [[[139.4,35.6],[139.5,35.6],[139.5,35.7],[139.4,35.7],[139.4,35.6]]]]})")});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(store.GetLayDatCnt("isles", 1), 1);
    EXPECT_EQ(Rings(Points("isles", 1)), (std::vector<std::int32_t>{4, 4, 5}));
}

TEST_F(ImportTest, AHoleOnTheFirstPointOfItsPolygonStaysAHole) {
    const ImportResult result = Run({GeoJson("notch", R"({"type":"Polygon","coordinates":[
        [[139.7,35.6],[139.8,35.6],[139.8,35.7],[139.7,35.7],[139.7,35.6]],
        [[139.7,35.6],[139.72,35.64],[139.74,35.64],[139.7,35.6]]]})")});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(Rings(Points("notch", 1)), (std::vector<std::int32_t>{5, 4}));
}

TEST_F(ImportTest, EachPartOfALineAndEachPointIsAnItem) {
    const ImportResult result = Run({GeoJson(
        "mix",
        {{R"({"type":"MultiLineString","coordinates":[[[139.7,35.6],[139.8,35.7]],[[139.1,35.1],[139.2,35.1],[139.3,35.1]]]})",
          "{}"},
         {R"({"type":"MultiPoint","coordinates":[[139.7,35.6],[139.8,35.7],[139.9,35.8]]})", "{}"}})});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(store.GetLayDatCnt("mix_line", 1), 2);
    EXPECT_EQ(store.PntCnt("mix_line", 1, 2), 3);
    EXPECT_EQ(store.GetLayDatCnt("mix_point", 1), 3);
    ASSERT_EQ(result.summary.layers.size(), 2u);
    EXPECT_EQ(result.summary.layers[0].layType, kLayLine);
    EXPECT_EQ(result.summary.layers[0].itemCnt, 2);
    EXPECT_EQ(result.summary.layers[0].pntCnt, 5);
    EXPECT_EQ(result.summary.layers[1].layType, kLayPoint);
}

TEST_F(ImportTest, ACollectionIsTakenApartAndItsEmptyPartsAreNoLoss) {
    options.assumeEpsg = 6668;
    const ImportResult result = Run({Wkt("all", {"GEOMETRYCOLLECTION(POINT(139.7 35.6),LINESTRING(139.7 35.6,139.8 35.6),"
                                                 "GEOMETRYCOLLECTION(POLYGON((139.7 35.6,139.8 35.6,139.8 35.7,139.7 35.6)),"
                                                 "POINT EMPTY,LINESTRING EMPTY))"})});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.layers.size(), 3u);
    EXPECT_EQ(result.summary.leftOut.LostShapes(), 0);
    EXPECT_EQ(store.GetLayDatCnt("all_polygon", 1), 1);
}

TEST_F(ImportTest, WhatASourceSaysOfItselfIsHandedOnOnce) {
    const std::string text =
        R"({"type":"FeatureCollection","description":"Credit to whom it is due","features":[{"type":"Feature",
        "properties":{},"geometry":{"type":"Point","coordinates":[139.7,35.6]}}]})";
    const ImportResult result = Run({File("a.geojson", text), File("b.geojson", text)});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.descriptions, (std::vector<std::string>{"Credit to whom it is due"}));
}

TEST_F(ImportTest, CurvesBecomeLinesThatKeepToTheCurve) {
    options.assumeEpsg = 6677;
    const ImportResult result = Run({Wkt("curve", {"CIRCULARSTRING(0 1000,1000 0,0 -1000)",
                                                   "CURVEPOLYGON(CIRCULARSTRING(0 1000,1000 0,0 -1000,-1000 0,0 1000))"})});
    ASSERT_TRUE(result.Ok()) << result.error;
    const std::vector<DigPnt> line = Points("curve_line", 1);
    EXPECT_GT(line.size(), 20u);
    for (const DigPnt& p : line) EXPECT_NEAR(std::hypot(p.x, p.y), 1000, 1e-6);
    const std::vector<DigPnt> ring = Points("curve_polygon", 1);
    EXPECT_GT(ring.size(), 40u);
    EXPECT_EQ(Rings(ring), (std::vector<std::int32_t>{static_cast<std::int32_t>(ring.size())}));
}

TEST_F(ImportTest, FacesOfABodyAreItemsOfTheirOwn) {
    options.assumeEpsg = 6677;
    const ImportResult result = Run({Wkt("tin", {"TIN Z(((0 0 1,10 0 1,0 10 1,0 0 1)),((0 0 1,10 0 1,0 -10 2,0 0 1)))"})});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(store.GetLayDatCnt("tin", 1), 2);
    EXPECT_EQ(Points("tin", 1)[0].z, 1);
}

TEST_F(ImportTest, WhatCannotBeStoredIsCountedAndTheRestIsStored) {
    options.assumeEpsg = 6668;
    options.zone = 9;
    const ImportResult result = Run({Wkt("bad", {"POINT(139.7 35.6)",                            // good
                                                 "POINT EMPTY",                                  // no geometry
                                                 "LINESTRING(139.7 35.6,139.7 35.6)",            // one place
                                                 "LINESTRING(139.7 35.6)",                       // one point
                                                 "POLYGON((139.7 35.6,139.8 35.6,139.7 35.6))",  // no area
                                                 "POINT(139.7 95)",                              // beyond the pole
                                                 "POINT(1e400 35)",                              // infinite
                                                 "LINESTRING(139.7 35.6,139.7 -1e999)",          // infinite too
                                                 "POLYGON((139 35,140 35,140 36,139 35),(139.5 35.2,139.5 35.2,139.5 35.2))"})});
    ASSERT_TRUE(result.Ok()) << result.error;
    const LeftOut& left = result.summary.leftOut;
    EXPECT_EQ(result.summary.featureCnt, 9);
    EXPECT_EQ(left.noGeometry, 1);
    EXPECT_EQ(left.tooFewPoints, 3);
    EXPECT_EQ(left.notFinite, 3);
    EXPECT_EQ(left.rings, 1);
    EXPECT_EQ(left.LostShapes(), 6);
    EXPECT_EQ(store.GetLayDatCnt("bad_point", 1), 1);
    EXPECT_EQ(store.GetLayDatCnt("bad_polygon", 1), 1);
}

TEST_F(ImportTest, ASourceOfNothingButUnstorableGeometryIsAFault) {
    options.assumeEpsg = 6668;
    options.zone = 9;
    const ImportResult result = Run({Wkt("bad", {"LINESTRING(139.7 35.6,139.7 35.6)"})});
    EXPECT_EQ(result.fault, ImportFault::Nothing);
    EXPECT_EQ(result.summary.leftOut.tooFewPoints, 1);
    EXPECT_EQ(store.LayerCnt(), 0);
}

TEST_F(ImportTest, LayersByAnAttributeJoinItsValuesAcrossSources) {
    options.byField = "KIND";
    const std::string first =
        GeoJson("a", {{kLine, R"({"KIND":"road"})"}, {kLine, R"({"KIND":"rail"})"}, {kLine, R"({"KIND":null})"}});
    const std::string second = GeoJson("b", {{kLine, R"({"KIND":"road"})"}, {kPoint, R"({"KIND":"rail"})"}});
    const ImportResult result = Run({first, second});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(store.GetLayDatCnt("road", 1), 2);
    EXPECT_EQ(store.GetLayDatCnt("rail_line", 1), 1);
    EXPECT_EQ(store.GetLayDatCnt("rail_point", 1), 1);
    EXPECT_EQ(store.GetLayDatCnt("(KIND)", 1), 1);
    EXPECT_TRUE(HasNote(result, "1 features have no value of KIND"));
}

TEST_F(ImportTest, AMissingAttributeIsNamedWithThoseThatThereAre) {
    options.byField = "NAME";
    const ImportResult result = Run({GeoJson("town", {{kLine, R"({"KIND":"road","LANES":2})"}})});
    EXPECT_EQ(result.fault, ImportFault::NoSuchField);
    EXPECT_NE(result.error.find("no attribute NAME; it has KIND, LANES"), std::string::npos) << result.error;
}

TEST_F(ImportTest, SourceLayersOfOneNameGetCodesOfTheirOwn) {
    const std::string first = GeoJson("town", kLine);
    ASSERT_TRUE(Run({first}).Ok());
    const ImportResult again = Run({first});
    ASSERT_TRUE(again.Ok()) << again.error;
    EXPECT_EQ(again.summary.layers[0].code, "town~2");
    EXPECT_EQ(store.GetLayDatCnt("town", 1), 1);
    EXPECT_EQ(store.GetLayDatCnt("town~2", 1), 1);
}

TEST_F(ImportTest, PointsAreDrawnOverLinesAndLinesOverPolygonsAndLaterLayersOverEarlierOnes) {
    const ImportResult result =
        Run({GeoJson("p", kPoint), GeoJson("l", kLine), GeoJson("a", kTriangle), GeoJson("b", kTriangle)});
    ASSERT_TRUE(result.Ok()) << result.error;
    std::string order;
    for (const DigIndex& slot : store.Index()) order += store.Layer(slot.layer).code.View();
    EXPECT_EQ(order, "ablp");
}

TEST_F(ImportTest, APolygonLayerIsFilledAndOutlinedInDifferentColours) {
    ASSERT_TRUE(Run({GeoJson("a", kTriangle), GeoJson("b", kTriangle)}).Ok());
    const LayerDef& a = store.Layer(store.FindLayDef("a"));
    EXPECT_EQ(a.outLine, 0) << "0 draws the outline";
    EXPECT_EQ(a.fillMode, 1);
    EXPECT_EQ(a.pgnType, 0);
    EXPECT_NE(a.color, a.color2);
    EXPECT_NE(a.color, store.Layer(store.FindLayDef("b")).color);
    EXPECT_EQ(a.layerName, "a");
}

TEST_F(ImportTest, ProgressRunsUpToOne) {
    double last = 0;
    int calls = 0;
    options.progress = [&](double fraction) {
        EXPECT_GE(fraction, last);
        last = fraction;
        ++calls;
        return true;
    };
    ASSERT_TRUE(Run({GeoJson("a", kTriangle), GeoJson("b", kLine)}).Ok());
    EXPECT_EQ(last, 1);
    EXPECT_EQ(calls, 4);  // two features, two items
}

TEST_F(ImportTest, ACancelledImportLeavesNoDataBehindWhereverItIsCancelled) {
    const std::vector<std::string> sources = {GeoJson("a", {{kTriangle, "{}"}, {kTriangle, "{}"}}), GeoJson("b", kLine)};
    for (int stopAt = 1; stopAt <= 6; ++stopAt) {
        int calls = 0;
        options.progress = [&](double) { return ++calls < stopAt; };
        const ImportResult result = Run(sources);
        EXPECT_EQ(result.fault, ImportFault::Cancelled) << stopAt;
        EXPECT_EQ(calls, stopAt);
        EXPECT_EQ(store.GetDigIndexCnt(), 0) << stopAt;
        EXPECT_TRUE(result.summary.layers.empty());
    }
}

TEST_F(ImportTest, AHostMayEmptyTheMapWhenAllIsReadAndBeforeAnythingIsStored) {
    const std::string source = GeoJson("a", kTriangle);
    ASSERT_TRUE(Run({source}).Ok());
    int calls = 0;
    options.beforeStoring = [&] {
        ++calls;
        EXPECT_EQ(store.GetLayDatCnt("a", 1), 1);
        store.Init();
    };
    EXPECT_FALSE(Run({"missing.shp"}).Ok());
    EXPECT_EQ(calls, 0) << "a source that cannot be read leaves the map alone";
    EXPECT_TRUE(Run({source}).Ok());
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(store.LayerCnt(), 1);
}

TEST_F(ImportTest, AHostThatEmptiesTheMapMeanwhileGetsAFault) {
    options.progress = [&](double fraction) {
        if (fraction > 0.85) store.Init();
        return true;
    };
    const ImportResult result = Run({GeoJson("a", {{kTriangle, "{}"}, {kTriangle, "{}"}, {kTriangle, "{}"}})});
    EXPECT_EQ(result.fault, ImportFault::NoRoom);
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
}

TEST_F(ImportTest, AFailedAllocationAnywhereLeavesNoDataBehind) {
    const std::vector<std::string> sources = {GeoJson("a", {{kTriangle, "{}"}, {kTriangle, "{}"}}), GeoJson("b", kLine)};
    ArrayFaults::Clear();
    ASSERT_TRUE(Run(sources).Ok());
    const std::int64_t growths = ArrayFaults::Count();
    ASSERT_GT(growths, 0);
    int faults = 0;
    for (std::int64_t n = 1; n <= growths; ++n) {
        store.Init();
        ArrayFaults::FailNth(n);
        const ImportResult result = Run(sources);
        ArrayFaults::Clear();
        if (result.Ok()) continue;  // a growth that the store can do without
        ++faults;
        EXPECT_EQ(result.fault, ImportFault::NoRoom) << n;
        EXPECT_EQ(store.GetDigIndexCnt(), 0) << n;
    }
    EXPECT_GT(faults, 0);
}

TEST_F(ImportTest, MoreLayersThanTheTableHoldsAreRefusedBeforeAnythingIsStored) {
    for (int i = 0; i < kMaxLayers - 1; ++i) ASSERT_TRUE(store.MakeLayer("L" + std::to_string(i), kLayLine));
    const ImportResult result = Run({GeoJson("a", kTriangle), GeoJson("b", kLine)});
    EXPECT_EQ(result.fault, ImportFault::NoRoom);
    EXPECT_EQ(result.error, "2 layers are more than the map has room for");
    EXPECT_EQ(store.LayerCnt(), kMaxLayers - 1);
    EXPECT_TRUE(Run({GeoJson("c", kLine)}).Ok()) << "one still fits";
}

TEST_F(ImportTest, AStoreThatIsNotInitialisedIsRefused) {
    CDigMem fresh;
    const std::vector<std::string> sources = {GeoJson("a", kLine)};
    EXPECT_EQ(ImportVector(fresh, sources, options).fault, ImportFault::NoRoom);
}

}  // namespace
}  // namespace orvane
