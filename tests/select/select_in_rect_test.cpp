// Selection by a rectangle.
#include <gtest/gtest.h>

#include "tests/select/pick_rig.h"

namespace orvane {
namespace {

class SelectInRectTest : public ::testing::Test, protected PickRig {
protected:
    bool Selects(std::string_view code, const Rect& rect, std::int32_t ID = 1) {
        EXPECT_EQ(SelectInRect(store, rect, place, false), 0);
        return Active(code, ID);
    }
};

TEST_F(SelectInRectTest, ARectangleAroundHalfOfALineSelectsNothing) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {At(100, 100), At(200, 200)});
    EXPECT_FALSE(Selects("L", {50, 50, 150, 150}));
    EXPECT_FALSE(Selects("L", {150, 150, 250, 250}));
    EXPECT_TRUE(Selects("L", {50, 50, 250, 250}));
    EXPECT_TRUE(Selects("L", {250, 250, 50, 50})) << "corners in any order";
}

TEST_F(SelectInRectTest, TheRectanglesRightAndBottomEdgesLieOutside) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {At(100, 100), At(200, 200)});
    // Its own rectangle goes from y -200 to -99: a half is added to the first point's -100 before it is cut toward 0.
    EXPECT_TRUE(Selects("L", {100, 99, 201, 201}));
    EXPECT_FALSE(Selects("L", {100, 99, 200, 201}));
    EXPECT_FALSE(Selects("L", {100, 99, 201, 200}));
    EXPECT_FALSE(Selects("L", {101, 99, 201, 201}));
    EXPECT_FALSE(Selects("L", {100, 100, 201, 201}));
}

TEST_F(SelectInRectTest, WithoutAddTheActiveSetIsEmptiedFirst) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {At(100, 100), At(200, 200)});
    AddItem("L", {At(500, 500), At(600, 600)});
    EXPECT_TRUE(Selects("L", {50, 50, 250, 250}));
    SelectInRect(store, {450, 450, 650, 650}, place, true);
    EXPECT_TRUE(Active("L", 1));
    EXPECT_TRUE(Active("L", 2));
    SelectInRect(store, {450, 450, 650, 650}, place, false);
    EXPECT_FALSE(Active("L", 1));
    EXPECT_TRUE(Active("L", 2));
}

TEST_F(SelectInRectTest, TextAndMeshItemsAreNotSelected) {
    for (const std::int32_t layType : {5, 10, 7}) {
        const std::string code = std::to_string(layType);
        AddLayer(code, layType, layType);
        AddItem(code, {At(100, 100), At(200, 200)});
        EXPECT_FALSE(Selects(code, {0, 0, 900, 700}));
    }
}

TEST_F(SelectInRectTest, AllOtherTypesAreSelectedWhenTheyLieWholeWithin) {
    for (const std::int32_t layType : {2, 3, 4, 8}) {
        const std::string code = std::to_string(layType);
        AddLayer(code, layType, layType);
        AddItem(code, {At(100, 100, 50), At(120, 120)});
        EXPECT_TRUE(Selects(code, {40, 40, 160, 160})) << layType;
        EXPECT_EQ(Selects(code, {90, 90, 160, 160}), layType != 4) << "a circle's rectangle holds its radius";
        EXPECT_FALSE(Selects(code, {40, 40, 110, 110})) << layType;
    }
}

TEST_F(SelectInRectTest, OnlyTheFirstCornerOfASymbolCounts) {
    AddLayer("P", kLayPoint, 1);
    AddItem("P", {At(100.7, 100)});
    EXPECT_TRUE(Selects("P", {100, 100, 101, 101})) << "its right corner lies at 101";
    EXPECT_FALSE(Selects("P", {101, 100, 110, 110}));
}

TEST_F(SelectInRectTest, AnImagesFirstCornerGoesWithItsPositionTheOtherDoesNot) {
    LayerDef& layer = AddLayer("P", kLayPoint, 1);
    layer.imgMode = 1;
    layer.bmWidth = 20;
    layer.bmHeight = 10;
    layer.imgMinScl = layer.imgMaxScl = 1;
    AddItem("P", {At(100, 100)});
    // The data point's rectangle has its corners at (100, 100) and (100, 99).
    EXPECT_TRUE(Selects("P", {90, 95, 111, 105}));
    EXPECT_FALSE(Selects("P", {91, 95, 111, 105}));
    EXPECT_FALSE(Selects("P", {90, 96, 111, 105}));
    EXPECT_FALSE(Selects("P", {90, 95, 110, 105}));
    EXPECT_FALSE(Selects("P", {90, 95, 111, 104}));
    layer.imgPos = 4;  // ten to the left and five up
    EXPECT_TRUE(Selects("P", {80, 90, 111, 106}));
    EXPECT_FALSE(Selects("P", {81, 90, 111, 106}));
    EXPECT_FALSE(Selects("P", {80, 90, 110, 106})) << "the right corner stays";
}

TEST_F(SelectInRectTest, FarOutTheItemsRectangleIsTakenAndCloseByItsPoints) {
    AddLayer("L", kLayLine, 1);
    DigDat& dat = AddItem("L", {At(100, 100), At(200, 200)});
    dat.pnts.Change();
    dat.rect = {500, -600, 600, -500};
    store.view.Zoom = store.view.DotPerM = 151;
    EXPECT_TRUE(Selects("L", {450, 450, 650, 650}));
    EXPECT_FALSE(Selects("L", {50, 50, 250, 250}));
    store.view.Zoom = store.view.DotPerM = 150;
    EXPECT_FALSE(Selects("L", {450, 450, 650, 650}));
    EXPECT_TRUE(Selects("L", {50, 50, 250, 250}));
}

TEST_F(SelectInRectTest, OfPointsOnlyTheFirstIsRoundedOnItsRightAndLowerSide) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {At(100.6, 100.6), At(90, 90)});
    AddItem("L", {At(290, 290), At(300.6, 300.6)});
    store.view.Zoom = store.view.DotPerM = 100;
    EXPECT_FALSE(Selects("L", {90, 90, 101, 101})) << "100.6 rounds to 101";
    EXPECT_TRUE(Selects("L", {90, 90, 102, 102}));
    EXPECT_TRUE(Selects("L", {290, 290, 301, 301}, 2)) << "300.6 is cut to 300";
}

TEST_F(SelectInRectTest, CloseByACircleCountsByItsCentre) {
    AddLayer("C", kLayCircle, 1);
    AddItem("C", {At(100, 100, 50)});
    store.view.Zoom = store.view.DotPerM = 100;
    EXPECT_TRUE(Selects("C", {99, 99, 102, 102}));
}

TEST_F(SelectInRectTest, TheTwoCornersTurnWithTheView) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {{100, 50, 0}, {200, 70, 0}});
    // A turn by -90 degrees in the flipped sense takes (x, y) to (y, -x): corners (100, -50) and (200, -70) go to (-50, -100) and
    // (-70, -200), up to the coarse degree.
    store.view.Rotate = 90;
    EXPECT_TRUE(Selects("L", {-75, -205, -45, -95}));
    EXPECT_FALSE(Selects("L", {-75, -195, -45, -95}));
    EXPECT_FALSE(Selects("L", {-75, -205, -55, -95}));
}

TEST_F(SelectInRectTest, SubLayersPlayNoPartAndItemsThatWereNotDrawnAreLeft) {
    AddLayer("P", kLayPoint, 1);
    SubLayerSettings hidden;
    ASSERT_TRUE(store.SetSubLayerEx("P", 4, hidden));
    AddItem("P", {At(100, 100)}).subLayNo = 4;
    EXPECT_TRUE(Selects("P", {0, 0, 900, 700}));
    Item("P", 1).clipFlg = 0;
    EXPECT_FALSE(Selects("P", {0, 0, 900, 700}));
    Item("P", 1).clipFlg = 1;
    Item("P", 1).drawnFlg = 0;
    EXPECT_FALSE(Selects("P", {0, 0, 900, 700}));
}

TEST_F(SelectInRectTest, LayersAndBlocksAreGatedAsForAClick) {
    AddLayer("P", kLayPoint, 1).actFlg = 0;
    AddItem("P", {At(100, 100)});
    EXPECT_FALSE(Selects("P", {0, 0, 900, 700}));
    Layer("P").actFlg = 1;
    Block("P").inView = 0;
    EXPECT_FALSE(Selects("P", {0, 0, 900, 700}));
    Block("P").inView = 1;
    EXPECT_TRUE(Selects("P", {0, 0, 900, 700}));
}

TEST_F(SelectInRectTest, TheBlocksOriginIsAdded) {
    AddLayer("P", kLayPoint, 1, 300, -200);
    AddItem("P", {At(100, 100)});
    EXPECT_TRUE(Selects("P", {400, 300, 401, 301}));
}

}  // namespace
}  // namespace orvane
