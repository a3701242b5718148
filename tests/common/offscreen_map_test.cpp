#include "hosts/common/offscreen_map.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QImage>
#include <filesystem>

#include "hosts/common/map_view.h"

namespace orvane {
namespace {

constexpr Rgb kFill = 0x1122CC;  // blue, green, red

void AddSquare(COrvane4Ctrl& ctrl, double side) {
    ctrl.store.DigMemAlloc2("S", 1, kLayPolygon, "", 0, 0, 0);
    ctrl.store.AddDigDat("S", 1, 1, 0);
    const DigPnt corners[] = {{0, 0}, {side, 0}, {side, side}, {0, side}, {0, 0}};
    ctrl.store.SetDigDatPnts("S", 1, 1, corners);
    ctrl.store.SetLayColor("S", kFill);
}

TEST(OffscreenMap, IsReadyToDraw) {
    OffscreenMap map(300, 200);
    EXPECT_EQ(map.Control().CurrentDrawState(), 2);
    EXPECT_EQ(map.Image().size(), QSize(300, 200));
    EXPECT_EQ(map.Image().pixel(150, 100), 0xFFFFFFFF);
}

TEST(OffscreenMap, ASquareInTheMiddleOfTheMapIsFilledInTheMiddleOfThePicture) {
    OffscreenMap map(300, 200);
    AddSquare(map.Control(), 1000);
    MapView view(map.Control());
    view.SetSquareArea();
    view.FitAll(10);
    // 1000 units and two margins of 100 over 200 pixels: the square is 167 pixels wide, from 67 to 233.
    EXPECT_EQ(map.Image().pixel(150, 100), 0xFFCC2211);
    EXPECT_EQ(map.Image().pixel(70, 100), 0xFFCC2211);
    EXPECT_EQ(map.Image().pixel(230, 100), 0xFFCC2211);
    EXPECT_EQ(map.Image().pixel(60, 100), 0xFFFFFFFF);
    EXPECT_EQ(map.Image().pixel(240, 100), 0xFFFFFFFF);
}

TEST(OffscreenMap, APictureLargerThanTheDesktopIsDrawnToItsEdges) {
    OffscreenMap map(2500, 1500);
    AddSquare(map.Control(), 100000);
    MapView view(map.Control());
    view.SetSquareArea();
    view.FitAll(0);
    view.ZoomBy(0.1);
    EXPECT_EQ(map.Image().pixel(2499 - 1, 1499 - 1), 0xFFCC2211);
}

TEST(OffscreenMap, ThePngHoldsThePicture) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("orvane_map_" + std::to_string(::getpid()) + "_図.png");
    OffscreenMap map(120, 80);
    AddSquare(map.Control(), 500);
    MapView(map.Control()).FitAll(10);
    ASSERT_TRUE(map.SavePng(file.string()));
    QImage read(QString::fromStdString(file.string()));
    std::filesystem::remove(file);
    EXPECT_EQ(read.convertToFormat(map.Image().format()), map.Image());
    EXPECT_FALSE(map.SavePng("/no/such/folder/map.png"));
}

}  // namespace
}  // namespace orvane
