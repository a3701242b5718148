// The change between the mesh frame and a plane zone, on a sheet of Tokyo in zone 9.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "geo/geo_conv.h"
#include "platform/grow_array.h"
#include "store/dat_lookup.h"
#include "tests/control/automation_rig.h"
#include "tests/support/control_rig.h"
#include "tests/support/store_test_access.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kSheetX = 3170000;  // sheet 533945
constexpr double kSheetY = 4280000;
constexpr std::int32_t kZone = 9;

const GeoConv conv;

bool SameBits(const DigPnt& a, const DigPnt& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

/// The plane place of a mesh place as map coordinates: east, north.
std::pair<double, double> MapOf(double x, double y, std::int32_t zone = kZone) {
    const PlaneXY plane = *conv.MeshToPlane({x, y}, zone);
    return {plane.y, plane.x};
}

class FrameChangeTest : public testing::Test {
protected:
    FrameChangeTest() {
        rig.StartOneToOne();
        rig.SetArea(-1e7, 1e7, -1e7, 1e7);
    }
    ~FrameChangeTest() override { ArrayFaults::Clear(); }
    COrvane4Ctrl& ctrl() { return *rig.ctrl; }
    void ToPlane(std::int32_t zone = kZone) { ctrl().ChgGeoFrame(1, zone); }
    void ToMesh() { ctrl().ChgGeoFrame(0, 0); }
    DigPnt& Pnt(std::string_view code, std::size_t item, std::size_t point) { return rig.Item(code, item).pnts.Change()[point]; }
    void ExpectAt(const DigPnt& pnt, std::pair<double, double> map) {
        EXPECT_EQ(pnt.x, map.first);
        EXPECT_EQ(pnt.y, map.second);
    }
    std::string State() { return DumpStore(ctrl().store) + DumpView(ctrl()); }
    /// A map that has all that a frame change reaches.
    void AddAll() {
        rig.AddLine("A", {{kSheetX, kSheetY}, {kSheetX + 123.456, kSheetY + 9876.54321}, {kSheetX + 25000.5, kSheetY - 0.1}});
        rig.AddItem("A", 2, {{kSheetX + 5, kSheetY + 7}});
        rig.AddLine("B", {{17.25, 33.125}, {-12345.5, 99.75}}, 3170000, 4280000);
        EXPECT_TRUE(ctrl().store.SetDigDatString("A", rig.kMesh, 1, kSheetX + 100.25, kSheetY + 200.75, "abc"));
    }
    ControlRig rig;
};

// --- Modes -----------------------------------------------------------------------------------------------------------------

TEST_F(FrameChangeTest, ASecondCallInThePlaneFrameChangesNothingWhateverItsZone) {
    AddAll();
    ToPlane();
    rig.Forget();
    const std::string state = State();
    ctrl().ChgGeoFrame(1, 9);
    ctrl().ChgGeoFrame(1, 10);
    EXPECT_EQ(State(), state);
    EXPECT_EQ(ctrl().frameZone, 9);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(FrameChangeTest, AnotherZoneNeedsAReturnThroughTheMeshFrame) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    ToPlane(9);
    ToMesh();
    ToPlane(10);
    EXPECT_EQ(ctrl().frameZone, 10);
    ExpectAt(Pnt("A", 0, 0), MapOf(kSheetX + 5, kSheetY + 7, 10));
}

TEST_F(FrameChangeTest, TheMeshFrameAskedForInTheMeshFrameChangesNothing) {
    AddAll();
    rig.Forget();
    const std::string state = State();
    ctrl().ChgGeoFrame(0, 9);
    EXPECT_EQ(State(), state);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(FrameChangeTest, ModeAndZoneAreKept) {
    EXPECT_EQ(ctrl().frameMode, 0);
    EXPECT_EQ(ctrl().frameZone, 0);
    ToPlane(13);
    EXPECT_EQ(ctrl().frameMode, 1);
    EXPECT_EQ(ctrl().frameZone, 13);
    ToMesh();
    EXPECT_EQ(ctrl().frameMode, 0);
    EXPECT_EQ(ctrl().frameZone, 0);
}

TEST_F(FrameChangeTest, AZoneOutsideOneToNineteenLeavesModeViewAndDataAndDrawsNothing) {
    AddAll();
    rig.SetView(kSheetX, -kSheetY);
    rig.Forget();
    const std::string state = State();
    for (const std::int32_t zone : {0, -1, 20, 65536 + 9, (std::numeric_limits<std::int32_t>::min)()}) {
        ToPlane(zone);
        EXPECT_EQ(ctrl().frameMode, 0) << zone;
        EXPECT_EQ(ctrl().frameZone, 0) << zone;
        EXPECT_EQ(State(), state) << zone;
    }
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(FrameChangeTest, AnyOtherModeIsStoredLeavesTheViewAndRepaints) {
    AddAll();
    rig.SetView(2e7, 2e7);  // outside the limits, where a jump would clamp it
    ctrl().RDMReDraw();
    for (const std::int32_t mode : {2, -1, (std::numeric_limits<std::int32_t>::max)()}) {
        rig.Forget();
        const std::string state = State();
        ctrl().ChgGeoFrame(mode, 9);
        EXPECT_EQ(ctrl().frameMode, mode);
        EXPECT_EQ(ctrl().frameZone, 0);
        EXPECT_EQ(State(), state);
        EXPECT_EQ(rig.VerbsWith("base PatBlt 0 0 800 600 0xFF0062").size(), 1u);
    }
}

TEST_F(FrameChangeTest, BackFromAnotherModeWithoutAPlaneFrameOnlyTheModeChanges) {
    AddAll();
    ToPlane();
    ToMesh();  // copies stand beside the data, and an edit follows
    Pnt("A", 0, 0).x += 3;
    ctrl().ChgGeoFrame(2, 0);
    const std::string state = State();
    ctrl().ChgGeoFrame(0, 0);
    EXPECT_EQ(ctrl().frameMode, 0);
    EXPECT_EQ(State(), state);
}

TEST_F(FrameChangeTest, AnotherModeBetweenThePlaneFrameAndTheMeshFrameLosesNothing) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    ToPlane();
    ctrl().ChgGeoFrame(5, 3);
    EXPECT_EQ(ctrl().frameZone, 9);
    ToMesh();
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 5, kSheetY + 7});
    EXPECT_EQ(ctrl().frameZone, 0);
}

TEST_F(FrameChangeTest, ThePlaneFrameAskedForAgainFromAnotherModeConvertsWhatIsPlaneAlready) {
    // Only the mode is asked, and it is another one: the data goes through the sheets once more as if its metres were mesh units,
    // the zone is the new one, and the way back leads to the metres of before.
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    ToPlane(9);
    const auto [east, north] = MapOf(kSheetX + 5, kSheetY + 7, 9);
    ctrl().ChgGeoFrame(5, 0);
    ToPlane(10);
    EXPECT_EQ(ctrl().frameZone, 10);
    ExpectAt(Pnt("A", 0, 0), MapOf(east, north, 10));
    ToMesh();
    ExpectAt(Pnt("A", 0, 0), {east, north});
    EXPECT_EQ(ctrl().frameMode, 0);
}

TEST_F(FrameChangeTest, TheFrameSurvivesAnInit) {
    ToPlane();
    ctrl().RDMInit();
    EXPECT_EQ(ctrl().frameMode, 1);
    EXPECT_EQ(ctrl().frameZone, 9);
}

TEST_F(FrameChangeTest, FiresNothingAndLeavesZoomAndTheModifiedFlag) {
    AddAll();
    ctrl().SetModified(false);
    ToPlane();
    ToMesh();
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
    EXPECT_EQ(rig.View().Zoom, 1000);
    EXPECT_FALSE(ctrl().Modified());
}

TEST(FrameChange, BeforeInitAndBeforeTheFirstPaintIsHarmless) {
    ControlRig rig;
    rig.ctrl->ChgGeoFrame(1, 9);
    rig.ctrl->ChgGeoFrame(0, 0);
    rig.ctrl->RDMInit();
    rig.ctrl->ChgGeoFrame(1, 9);
    rig.ctrl->ChgGeoFrame(0, 0);
    EXPECT_TRUE(std::isfinite(rig.ctrl->viewX));
    EXPECT_TRUE(std::isfinite(rig.ctrl->viewY));
}

TEST(FrameChange, BothNamesOfTheMemberChangeTheFrame) {
    AutomationRig rig;
    rig.Start();
    EXPECT_TRUE(rig.Run("ChgGeoFrame", 1, 9).Ok());
    EXPECT_EQ(rig.ctrl->frameZone, 9);
    EXPECT_TRUE(rig.Run("OrvChgGeoFrame", 0, 0).Ok());
    EXPECT_EQ(rig.ctrl->frameMode, 0);
    EXPECT_TRUE(rig.Run("OrvChgGeoFrame", 1, 12).Ok());
    EXPECT_EQ(rig.ctrl->frameZone, 12);
}

// --- Data ------------------------------------------------------------------------------------------------------------------

TEST_F(FrameChangeTest, APointInASheetsCornerGoesExactlyToTheSheetsCorner) {
    rig.AddLine("A", {{kSheetX, kSheetY}, {kSheetX + 10000, kSheetY + 10000}});
    ToPlane();
    const SheetCorners corners = *conv.CornersOf(533945, kZone);
    ExpectAt(Pnt("A", 0, 0), {corners.p1.y, corners.p1.x});
    // The far corner is the first of the sheet to the north-east, and the two sheets share it to a rounding.
    EXPECT_NEAR(Pnt("A", 0, 1).x, corners.p3.y, 1e-6);
    EXPECT_NEAR(Pnt("A", 0, 1).y, corners.p3.x, 1e-6);
}

TEST_F(FrameChangeTest, EastGoesToXAndNorthToYOfEveryPoint) {
    AddAll();
    ToPlane();
    ExpectAt(Pnt("A", 0, 1), MapOf(kSheetX + 123.456, kSheetY + 9876.54321));
    ExpectAt(Pnt("A", 0, 2), MapOf(kSheetX + 25000.5, kSheetY - 0.1));
    ExpectAt(Pnt("A", 1, 0), MapOf(kSheetX + 5, kSheetY + 7));
    EXPECT_NEAR(Pnt("A", 0, 0).x, -18843, 100) << "west of the meridian of 139 50'";
    EXPECT_NEAR(Pnt("A", 0, 0).y, -36950, 100) << "south of latitude 36";
}

TEST_F(FrameChangeTest, LocalCoordinatesAreConvertedAsIfTheyWereFullOnes) {
    AddAll();
    ToPlane();
    ExpectAt(Pnt("B", 0, 0), MapOf(17.25, 33.125));
    const auto [x, y] = MapOf(3170000, 4280000);
    EXPECT_EQ(rig.Block("B").GX, x);
    EXPECT_EQ(rig.Block("B").GY, y);
}

TEST_F(FrameChangeTest, ANegativeXIsSplitTowardZeroAndTheCarryDecidesItsSheet) {
    rig.AddLine("A", {{-5000, kSheetY}, {-15000, kSheetY}});
    ToPlane();
    const auto inSheet = [](std::int32_t mesh, double x, double y) {
        const PlaneXY plane = GeoConv::PlaneInSheet(*conv.CornersOf(mesh, kZone), x, y);
        return std::pair{plane.y, plane.x};
    };
    ExpectAt(Pnt("A", 0, 0), inSheet(53040, -5000, 0));
    ExpectAt(Pnt("A", 0, 1), inSheet(53, -5000, 0));
}

TEST_F(FrameChangeTest, AnOriginOfZeroStaysWhileTheBoundsAreConvertedAllTheSame) {
    AddAll();
    const DigBlock& block = rig.Block("A");
    const double minX = block.minX, minY = block.minY, maxX = block.maxX, maxY = block.maxY;
    ToPlane();
    EXPECT_EQ(block.GX, 0);
    EXPECT_EQ(block.GY, 0);
    EXPECT_EQ(std::pair(block.minX, block.minY), MapOf(minX, minY));
    EXPECT_EQ(std::pair(block.maxX, block.maxY), MapOf(maxX, maxY));
    EXPECT_EQ(block.orgMinX, minX);
    EXPECT_EQ(block.orgMaxY, maxY);
}

TEST_F(FrameChangeTest, AnOriginWithOneZeroIsConverted) {
    rig.AddLine("A", {{1, 2}}, 0, 4280000);
    ToPlane();
    EXPECT_EQ(std::pair(rig.Block("A").GX, rig.Block("A").GY), MapOf(0, 4280000));
}

TEST_F(FrameChangeTest, ItemRectanglesAreConvertedByTwoCornersAndRounded) {
    AddAll();
    const Rect before = rig.Item("A", 0).rect;
    ToPlane();
    const auto [left, top] = MapOf(before.left, before.top);
    const auto [right, bottom] = MapOf(before.right, before.bottom);
    EXPECT_EQ(rig.Item("A", 0).rect, (Rect{ToInt(left), ToInt(top), ToInt(right), ToInt(bottom)}));
    EXPECT_EQ(rig.Item("A", 0).orgRect, before);
}

TEST_F(FrameChangeTest, ATextsPositionIsConvertedAndComesBack) {
    AddAll();
    const DigStr& str = *rig.Item("A", 0).str;
    const double x = str.x, y = str.y, z = str.z;
    ToPlane();
    EXPECT_EQ(std::pair(str.x, str.y), MapOf(x, y));
    EXPECT_EQ(str.orgX, x);
    EXPECT_EQ(str.orgY, y);
    ToMesh();
    EXPECT_EQ(std::tuple(str.x, str.y, str.z), std::tuple(x, y, z));
}

TEST_F(FrameChangeTest, ACirclesRadiusStaysInMeshUnits) {
    ASSERT_TRUE(ctrl().store.DigMemAlloc2("C", rig.kMesh, kLayCircle, "", 1, 0, 0));
    ASSERT_TRUE(ctrl().store.AddDigDat("C", rig.kMesh, 1, 0));
    ASSERT_TRUE(ctrl().store.AddDigDatPnt("C", rig.kMesh, 1, {kSheetX + 5, kSheetY + 7, 321.5}));
    ToPlane();
    ExpectAt(Pnt("C", 0, 0), MapOf(kSheetX + 5, kSheetY + 7));
    EXPECT_EQ(Pnt("C", 0, 0).z, 321.5);
}

TEST_F(FrameChangeTest, AllPointsComeBackBitForBitWhileTheViewOnlyComesNear) {
    AddAll();
    rig.SetView(kSheetX + 4000.3, -kSheetY - 5000.7);
    std::vector<DigPnt> before;
    for (std::size_t i = 0; i < 3; ++i) before.push_back(Pnt("A", 0, i));
    for (std::size_t i = 0; i < 2; ++i) before.push_back(Pnt("B", 0, i));
    const DigBlock& block = rig.Block("B");
    const auto bounds = [&] { return std::vector{block.GX, block.GY, block.minX, block.minY, block.maxX, block.maxY}; };
    const std::vector<double> blockBefore = bounds();
    const Rect rect = rig.Item("A", 0).rect;
    ToPlane();
    ToMesh();
    for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(SameBits(Pnt("A", 0, i), before[i])) << i;
    for (std::size_t i = 0; i < 2; ++i) EXPECT_TRUE(SameBits(Pnt("B", 0, i), before[3 + i])) << i;
    EXPECT_EQ(bounds(), blockBefore);
    EXPECT_EQ(rig.Item("A", 0).rect, rect);
    EXPECT_NE(ctrl().viewX, kSheetX + 4000.3);
    EXPECT_NEAR(ctrl().viewX, kSheetX + 4000.3, 300) << "the window is as wide in metres as it was in units";
    EXPECT_NEAR(ctrl().viewY, -kSheetY - 5000.7, 300);
}

TEST_F(FrameChangeTest, TheCopyOfThePointsIsKeptAfterTheWayBack) {
    AddAll();
    ToPlane();
    ToMesh();
    const DigDat& item = rig.Item("A", 0);
    ASSERT_TRUE(item.orgPnts);
    EXPECT_EQ(item.orgPntCnt, 3);
    EXPECT_EQ(item.orgPnts[1].y, kSheetY + 9876.54321);
}

TEST_F(FrameChangeTest, ASecondChangeCopiesWhatHasBeenEditedSinceTheFirst) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    ToPlane();
    ToMesh();
    ASSERT_TRUE(ctrl().store.AddDigDatPnt("A", rig.kMesh, 1, {kSheetX + 50, kSheetY + 70, 0}));
    Pnt("A", 0, 0).x += 1;
    ToPlane();
    ToMesh();
    EXPECT_EQ(rig.Item("A", 0).orgPntCnt, 2);
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 6, kSheetY + 7});
    ExpectAt(Pnt("A", 0, 1), {kSheetX + 50, kSheetY + 70});
}

TEST_F(FrameChangeTest, PointsThatAreNotFiniteStayAndTheirNeighboursGo) {
    constexpr double bad = std::numeric_limits<double>::quiet_NaN();
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}, {kSheetX + 6, kSheetY + 8}});
    Pnt("A", 0, 0).x = bad;
    ToPlane();
    EXPECT_TRUE(std::isnan(Pnt("A", 0, 0).x));
    EXPECT_EQ(Pnt("A", 0, 0).y, kSheetY + 7);
    ExpectAt(Pnt("A", 0, 1), MapOf(kSheetX + 6, kSheetY + 8));
    ToMesh();
    EXPECT_TRUE(std::isnan(Pnt("A", 0, 0).x));
    ExpectAt(Pnt("A", 0, 1), {kSheetX + 6, kSheetY + 8});
}

TEST_F(FrameChangeTest, AnItemWithoutPointsHasItsRectangleCarriedThereAndBack) {
    ASSERT_TRUE(ctrl().store.DigMemAlloc2("A", rig.kMesh, kLayLine, "", 1, 0, 0));
    ASSERT_TRUE(ctrl().store.AddDigDat("A", rig.kMesh, 1, 0));
    ToPlane();
    EXPECT_FALSE(rig.Item("A", 0).orgPnts);
    EXPECT_EQ(rig.Item("A", 0).orgRect, kEmptyItemRect);
    ToMesh();
    EXPECT_EQ(rig.Item("A", 0).rect, kEmptyItemRect);
}

TEST_F(FrameChangeTest, TheWalkEndsAtTheFirstSlotWithoutABlockOnBothWays) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    rig.AddLine("B", {{kSheetX + 5, kSheetY + 7}});
    rig.AddLine("C", {{kSheetX + 5, kSheetY + 7}});
    const auto [x, y] = MapOf(kSheetX + 5, kSheetY + 7);
    std::vector<DigPnt*> points;  // in the order of the walk
    for (const DigIndex& entry : ctrl().store.Index()) {
        points.push_back(&ctrl().store.MutableBlock(entry.block).dats[0].pnts.Change()[0]);
    }
    ASSERT_EQ(points.size(), 3u);
    ASSERT_TRUE(StoreTestAccess::BreakSlot(ctrl().store, 1));
    ToPlane();
    ExpectAt(*points[0], {x, y});
    ExpectAt(*points[1], {kSheetX + 5, kSheetY + 7});
    ExpectAt(*points[2], {kSheetX + 5, kSheetY + 7});
    ToMesh();
    for (const DigPnt* point : points) ExpectAt(*point, {kSheetX + 5, kSheetY + 7});
    ToPlane();
    ASSERT_TRUE(StoreTestAccess::BreakSlot(ctrl().store, 0));
    ToMesh();
    ExpectAt(*points[0], {x, y});
}

// --- What changes while the plane frame stands -----------------------------------------------------------------------------

TEST_F(FrameChangeTest, AnItemAddedInThePlaneFrameStaysAsItIs) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    ToPlane();
    rig.AddItem("A", 2, {{-18000.5, -36000.25}, {-17000, -35000}});
    ASSERT_TRUE(ctrl().store.SetDigDatString("A", rig.kMesh, 2, -18000, -36000, "new"));
    const Rect rect = rig.Item("A", 1).rect;
    ToMesh();
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 5, kSheetY + 7});
    ExpectAt(Pnt("A", 1, 0), {-18000.5, -36000.25});
    EXPECT_EQ(rig.Item("A", 1).rect, rect);
    EXPECT_EQ(rig.Item("A", 1).str->x, -18000);
    EXPECT_FALSE(rig.Item("A", 1).orgPnts);
}

TEST_F(FrameChangeTest, ABlockAddedInThePlaneFrameStaysEvenInThePlaceOfOneThatHadACopy) {
    AddAll();
    ToPlane();
    ASSERT_TRUE(ctrl().store.DigMemDelete("B", rig.kMesh));
    rig.AddLine("N", {{10, 20}, {30, 40}}, -18000, -36000);
    EXPECT_EQ(rig.Block("N").orgGX, 3170000) << "the slot is the deleted one's";
    const DigBlock& block = rig.Block("N");
    const double maxY = block.maxY;
    ToMesh();
    EXPECT_EQ(block.GX, -18000);
    EXPECT_EQ(block.GY, -36000);
    EXPECT_EQ(block.maxY, maxY);
}

TEST_F(FrameChangeTest, PointsAddedToAnItemInThePlaneFrameStayBehindThoseThatComeBack) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    ToPlane();
    ASSERT_TRUE(ctrl().store.AddDigDatPnt("A", rig.kMesh, 1, {-17000, -35000, 0}));
    EXPECT_EQ(rig.Item("A", 0).orgPntCnt, 1);
    ToMesh();
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 5, kSheetY + 7});
    ExpectAt(Pnt("A", 0, 1), {-17000, -35000});
}

TEST_F(FrameChangeTest, PointsAddedInThePlaneFrameToAnItemThatWentThereEmptyAreNoneOfAnOlderCopy) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}, {kSheetX + 6, kSheetY + 8}});
    ToPlane();
    ToMesh();
    for (int i = 0; i < 2; ++i) ctrl().store.DelDigDatPnt("A", rig.kMesh, 1, 0);
    ASSERT_EQ(rig.Item("A", 0).pntCnt, 0);
    ToPlane();
    ASSERT_TRUE(ctrl().store.AddDigDatPnt("A", rig.kMesh, 1, {1, 2, 0}));
    ToMesh();
    ExpectAt(Pnt("A", 0, 0), {1, 2});
}

TEST_F(FrameChangeTest, PointsTakenAwayInThePlaneFrameLeaveAsManyOfTheCopyAsThereAreNow) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}, {kSheetX + 6, kSheetY + 8}, {kSheetX + 9, kSheetY + 9}});
    ToPlane();
    ASSERT_TRUE(ctrl().store.DelDigDatPnt("A", rig.kMesh, 1, 0));
    ToMesh();
    ASSERT_EQ(rig.Item("A", 0).pntCnt, 2);
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 5, kSheetY + 7});
    ExpectAt(Pnt("A", 0, 1), {kSheetX + 6, kSheetY + 8});
}

TEST_F(FrameChangeTest, ACopyMadeInThePlaneFrameComesBackWithItsSourcesCopyAndItsTextStays) {
    AddAll();
    ToPlane();
    const std::int32_t datID = ctrl().store.CopyData("A", rig.kMesh, 1, "A", rig.kMesh);
    ASSERT_GT(datID, 0);
    const double textX = rig.Item("A", 2).str->x;
    ToMesh();
    ExpectAt(Pnt("A", 2, 1), {kSheetX + 123.456, kSheetY + 9876.54321});
    EXPECT_EQ(rig.Item("A", 2).rect, rig.Item("A", 0).rect);
    EXPECT_EQ(rig.Item("A", 2).str->x, textX);
}

TEST_F(FrameChangeTest, AnItemWithoutMemoryForItsCopyStaysInTheMeshFrameAndLosesNothing) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    rig.AddItem("A", 2, {{kSheetX + 15, kSheetY + 17}});
    ToPlane();
    ToMesh();
    for (const std::int32_t datID : {1, 2}) {
        ASSERT_TRUE(ctrl().store.AddDigDatPnt("A", rig.kMesh, datID, {kSheetX + 50, kSheetY + 70, 0}));
    }
    Pnt("A", 0, 0).x += 1;
    ArrayFaults::FailNth(1);
    ToPlane();
    ArrayFaults::Clear();
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 6, kSheetY + 7});
    ExpectAt(Pnt("A", 1, 0), MapOf(kSheetX + 15, kSheetY + 17));
    ToMesh();
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 6, kSheetY + 7});
    ExpectAt(Pnt("A", 0, 1), {kSheetX + 50, kSheetY + 70});
    ExpectAt(Pnt("A", 1, 0), {kSheetX + 15, kSheetY + 17});
}

// --- The view --------------------------------------------------------------------------------------------------------------

TEST_F(FrameChangeTest, TheMiddleOfTheWindowIsTheSamePlaceAfterTheChange) {
    rig.SetView(kSheetX + 4600, -(kSheetY + 5300));  // 800 by 600 units: the middle is (kSheetX + 5000, kSheetY + 5000)
    ToPlane();
    const auto [x, y] = MapOf(kSheetX + 5000, kSheetY + 5000);
    EXPECT_EQ(ctrl().viewX, x - 400);
    EXPECT_EQ(ctrl().viewY, -y - 300);
    ToMesh();
    const MeshPoint corner = *conv.PlaneToMesh({y + 300, x - 400}, kZone);
    EXPECT_NEAR(ctrl().viewX, corner.x, 1e-6) << "the way back is that of the corner, with the window's own size in mesh units";
    EXPECT_NEAR(ctrl().viewY, -corner.y, 1e-6);
}

TEST_F(FrameChangeTest, HalvesOfTheWindowAreWholePixels) {
    ControlRig odd(ThousandDots(), 801, 601);
    odd.StartOneToOne();
    odd.SetArea(-1e7, 1e7, -1e7, 1e7);
    odd.SetView(kSheetX + 4600, -(kSheetY + 5300));
    odd.ctrl->ChgGeoFrame(1, kZone);
    const auto [x, y] = MapOf(kSheetX + 5000, kSheetY + 5000);
    EXPECT_EQ(odd.ctrl->viewX, x - 400.5);
    EXPECT_EQ(odd.ctrl->viewY, -y - 300.5);
}

TEST_F(FrameChangeTest, AMiddleOutsideTheCrossedLimitsLeavesTheCornersOwnPositionWithItsNorthUnturned) {
    // The test holds x against top and bottom: this x lies outside them. The clamps look at left, right, top and bottom as named.
    rig.SetView(kSheetX + 4600, -(kSheetY + 5300));
    rig.SetArea(-1e7, 1e7, -1e7, -20000);  // the middle's easting is -14000 or so
    ToPlane();
    const auto [x, y] = MapOf(kSheetX + 4600, kSheetY + 5300);
    EXPECT_LT(y, -20000);
    EXPECT_GT(x, -20000);
    EXPECT_EQ(ctrl().viewX, x);
    EXPECT_EQ(ctrl().viewY, y) << "the plane's north as it is, which is not turned over";
}

TEST_F(FrameChangeTest, WithTheMeshFramesLimitsTheViewStaysAtTheClampedCorner) {
    rig.SetArea(3e6, 4e6, -5e6, -4e6);
    rig.SetView(kSheetX + 4600, -(kSheetY + 5300));
    ToPlane();
    EXPECT_EQ(ctrl().viewX, 3e6);
    EXPECT_EQ(ctrl().viewY, -4e6 - 600);
}

TEST_F(FrameChangeTest, TheChangeRepaintsTheWholeMapOnce) {
    rig.Forget();
    ToPlane();
    EXPECT_EQ(rig.VerbsWith("base PatBlt 0 0 800 600 0xFF0062").size(), 1u);
    ToMesh();
    EXPECT_EQ(rig.VerbsWith("base PatBlt 0 0 800 600 0xFF0062").size(), 1u);
}

TEST_F(FrameChangeTest, AViewFarOutsideTheWorldGoesThereAndBackAndStaysFinite) {
    for (const double wild : {1e9, -1e9, 1e18, -1e18, 1e300, -1e300}) {
        rig.SetView(wild, wild);
        ToPlane();
        rig.SetView(wild, -wild);
        ToMesh();
        EXPECT_TRUE(std::isfinite(ctrl().viewX) && std::isfinite(ctrl().viewY)) << wild;
        EXPECT_EQ(ctrl().frameMode, 0);
    }
}

TEST_F(FrameChangeTest, AViewThatIsNotFiniteLeavesTheDatasChangeAlone) {
    rig.AddLine("A", {{kSheetX + 5, kSheetY + 7}});
    rig.SetView(std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN());
    ToPlane();
    ExpectAt(Pnt("A", 0, 0), MapOf(kSheetX + 5, kSheetY + 7));
    rig.SetView(std::numeric_limits<double>::quiet_NaN(), 0);
    ToMesh();
    ExpectAt(Pnt("A", 0, 0), {kSheetX + 5, kSheetY + 7});
}

}  // namespace
}  // namespace orvane
