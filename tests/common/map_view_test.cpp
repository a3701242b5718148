#include "hosts/common/map_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "hosts/common/offscreen_map.h"

namespace orvane {
namespace {

class MapViewTest : public ::testing::Test {
protected:
    MapViewTest() : map(600, 400), ctrl(map.Control()), view(ctrl), calls(ctrl) {}

    void AddLine(std::initializer_list<DigPnt> points) {
        const std::string code = "L" + std::to_string(++lines_);
        ASSERT_TRUE(ctrl.store.DigMemAlloc2(code, 1, kLayLine, "", 0, 0, 0));
        ASSERT_TRUE(ctrl.store.AddDigDat(code, 1, 1, 0));
        ASSERT_TRUE(ctrl.store.SetDigDatPnts(code, 1, 1, std::span(points.begin(), points.size())));
    }
    double Centre(const char* member, std::int32_t pixels) {
        double value = 0;
        calls.Call(member, {Variant(pixels / 2)}).ToR8(value);
        return value;
    }
    double CentreX() { return Centre("OrvGetScreenPosX", 600); }
    double CentreY() { return Centre("OrvGetScreenPosY", 400); }
    double UnitsPerPixel() { return view.Zoom() / 3779.0; }

    OffscreenMap map;
    COrvane4Ctrl& ctrl;
    MapView view;
    Automation calls;

private:
    int lines_ = 0;
};

TEST_F(MapViewTest, TheExtentHoldsAllBlocksWithDataAtTheirOrigins) {
    EXPECT_FALSE(DataExtent(ctrl.store));
    AddLine({{10, -20}, {30, 5}});
    ASSERT_TRUE(ctrl.store.DigMemAlloc2("far", 1, kLayLine, "", 0, 1000, 2000));
    EXPECT_EQ(DataExtent(ctrl.store)->right, 30) << "a block without items does not count";
    ASSERT_TRUE(ctrl.store.AddDigDat("far", 1, 1, 0));
    ASSERT_TRUE(ctrl.store.AddDigDatPnt("far", 1, 1, {1, 2}));
    const MapExtent extent = *DataExtent(ctrl.store);
    EXPECT_EQ(extent.left, 10);
    EXPECT_EQ(extent.right, 1001);
    EXPECT_EQ(extent.low, -20);
    EXPECT_EQ(extent.high, 2002);
}

TEST_F(MapViewTest, TheAreaIsOneSquareAboutTheOriginThatHoldsTheDataWithRoom) {
    AddLine({{-90000, -40000}, {-10000, -30000}});
    view.SetSquareArea();
    const double half = calls.GetR8("AreaRight");
    EXPECT_EQ(calls.GetR8("AreaBottom"), half);
    EXPECT_EQ(calls.GetR8("AreaLeft"), -half);
    EXPECT_EQ(calls.GetR8("AreaTop"), -half);
    EXPECT_GE(half, 90000 + 4 * 80000);
    EXPECT_EQ(ctrl.store.view.AreaLeft, -half) << "the store's copy too";
}

TEST_F(MapViewTest, FarFromTheOriginAFitCentresTheData) {
    AddLine({{-91000, -45000}, {-11000, -32000}});
    view.SetSquareArea();
    view.FitAll(5);
    EXPECT_NEAR(CentreX(), -51000, UnitsPerPixel());
    EXPECT_NEAR(CentreY(), -38500, UnitsPerPixel());
    // 80000 and two margins of 5 percent over 600 pixels.
    EXPECT_NEAR(view.Zoom(), 88000.0 / 600 * 3779, 2);
}

TEST_F(MapViewTest, DataWithoutHeightOrWidthIsCentredAndShownWhole) {
    AddLine({{-51000, -20000}, {-41000, -20000}});
    view.SetSquareArea();
    view.FitAll(5);
    EXPECT_NEAR(CentreX(), -46000, UnitsPerPixel());
    EXPECT_NEAR(CentreY(), -20000, UnitsPerPixel());
    EXPECT_GT(600 * UnitsPerPixel(), 10000);
    EXPECT_LT(400 * UnitsPerPixel(), 2 * 10000);
}

TEST_F(MapViewTest, ASinglePlaceIsCentredAtOneToFiveThousand) {
    ASSERT_TRUE(ctrl.store.DigMemAlloc2("P", 1, kLayPoint, "", 0, 0, 0));
    ASSERT_TRUE(ctrl.store.AddDigDat("P", 1, 1, 0));
    ASSERT_TRUE(ctrl.store.AddDigDatPnt("P", 1, 1, {-7000, 3000}));
    view.SetSquareArea();
    view.FitAll(5);
    EXPECT_EQ(view.Zoom(), 5000);
    EXPECT_NEAR(CentreX(), -7000, 2);
    EXPECT_NEAR(CentreY(), 3000, 2);
}

TEST_F(MapViewTest, AnEmptyMapMayBeFittedScrolledAndZoomed) {
    view.SetSquareArea();
    view.FitAll(5);
    view.ScrollBy(0.5, 0.5);
    EXPECT_TRUE(view.ZoomBy(0.5));
    EXPECT_EQ(view.Zoom(), 5000);
}

TEST_F(MapViewTest, AZoomKeepsTheCentre) {
    AddLine({{-91000, -45000}, {-11000, -32000}});
    view.SetSquareArea();
    view.FitAll(0);
    const std::int32_t before = view.Zoom();
    EXPECT_TRUE(view.ZoomBy(1 / 1.5));
    EXPECT_NEAR(view.Zoom(), before / 1.5, 1);
    EXPECT_NEAR(CentreX(), -51000, UnitsPerPixel());
    EXPECT_NEAR(CentreY(), -38500, UnitsPerPixel());
}

TEST_F(MapViewTest, TheSmallestScalesStillChangeByAStep) {
    calls.Put("Zoom", Variant(std::int32_t{1}));
    EXPECT_TRUE(view.ZoomBy(1.2));
    EXPECT_EQ(view.Zoom(), 2);
    EXPECT_TRUE(view.ZoomBy(0.9));
    EXPECT_TRUE(view.ZoomBy(0.9));
    EXPECT_EQ(view.Zoom(), 1);
}

TEST_F(MapViewTest, ZoomingOutStopsWhereTheLimitsCouldNotScrollTheView) {
    AddLine({{-9000, -4000}, {-1000, -3000}});
    view.SetSquareArea();
    view.FitAll(0);
    int steps = 0;
    while (steps < 100 && view.ZoomBy(1.5)) ++steps;
    EXPECT_GT(steps, 2);
    EXPECT_LT(steps, 20);
    EXPECT_LT(600 * UnitsPerPixel(), calls.GetR8("AreaRight"));
    const double x = CentreX();
    view.ScrollBy(0.1, 0);
    EXPECT_GT(CentreX(), x) << "it still scrolls";
}

TEST_F(MapViewTest, AScrollMovesTheViewByPartsOfTheWindow) {
    AddLine({{-9000, -4000}, {9000, 3000}});
    view.SetSquareArea();
    view.FitAll(0);
    const double x = CentreX();
    const double y = CentreY();
    view.ScrollBy(0.25, 0);
    EXPECT_NEAR(CentreX(), x + 150 * UnitsPerPixel(), UnitsPerPixel());
    EXPECT_NEAR(CentreY(), y, UnitsPerPixel());
    view.ScrollBy(-0.25, 0.25);
    EXPECT_NEAR(CentreX(), x, 2 * UnitsPerPixel());
    EXPECT_NEAR(CentreY(), y + 100 * UnitsPerPixel(), 2 * UnitsPerPixel());
}

TEST_F(MapViewTest, AfterAScrollAPaintShowsTheNewPicture) {
    AddLine({{-9000, 0}, {9000, 1}});
    view.SetSquareArea();
    view.FitAll(0);
    view.ScrollBy(0, 0.25);  // the line goes down by 100 pixels
    const QImage scrolled = map.Image().copy();
    map.Paint();
    EXPECT_EQ(map.Image(), scrolled);
    int inkedRow = -1;
    for (int y = 1; y < 400; ++y) {
        if (map.Image().pixel(300, y) != 0xFFFFFFFF) inkedRow = y;
    }
    EXPECT_NEAR(inkedRow, 300, 1);
}

TEST_F(MapViewTest, AWrongNameOrArgumentIsAnErrorOfTheProgram) {
    EXPECT_THROW(calls.Call("OrvNoSuchMember"), std::logic_error);
    EXPECT_THROW(calls.Call("OrvDspFit2"), std::logic_error);
    EXPECT_THROW(calls.Put("GetDC", Variant(std::int32_t{1})), std::logic_error);
}

}  // namespace
}  // namespace orvane
