// What tools cannot do is said.
#include <QStatusBar>
#include <cmath>

#include "hosts/viewer/mode_bar.h"
#include "hosts/viewer/new_text.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class RefusedTools : public Walk {
protected:
    QString Status() { return window->statusBar()->currentMessage(); }
    void Start(Qt::Key tool) {
        window->statusBar()->clearMessage();
        Press(tool);
    }
    /// A ring of so many points, the closing one among them, around (500, 500).
    void AddRing(int datID, int count) {
        QVariantList x, y;
        for (int i = 0; i < count; ++i) {
            const double angle = (i % (count - 1)) * 2 * 3.14159265358979 / (count - 1);
            x << 500 + 400 * std::cos(angle);
            y << 500 + 400 * std::sin(angle);
        }
        AddFeature("AREA", datID, x, y);
    }
};

TEST_F(RefusedTools, AFeatureOfMorePointsThanToolsHoldIsToldOfByEachThatWouldTakeItUp) {
    MakeLayer("AREA", kLayPolygon);
    AddRing(1, 5001);
    Fit();
    for (const Qt::Key tool : {Qt::Key_M, Qt::Key_V, Qt::Key_A, Qt::Key_X, Qt::Key_C}) {
        SCOPED_TRACE(QKeySequence(tool).toString().toStdString());
        Start(tool);
        Click(PointOf(500, 500));
        EXPECT_TRUE(Status().contains("5001")) << Status().toStdString();
        EXPECT_TRUE(Status().contains("5000"));
        Press(Qt::Key_Escape);
    }
}

TEST_F(RefusedTools, AFeatureOfAsManyPointsAsToolsHoldIsTakenUp) {
    MakeLayer("AREA", kLayPolygon);
    AddRing(1, 5000);
    Fit();
    Start(Qt::Key_M);
    Click(PointOf(500, 500));
    EXPECT_FALSE(Status().contains("5000"));
    EXPECT_EQ(Map().Control().edit.EditPhase, 1);
    Press(Qt::Key_Escape);
}

TEST_F(RefusedTools, PointFeaturesHaveNoPointsToAddOrTake) {
    MakeLayer("POLE", kLayPoint);
    AddFeature("POLE", 1, {0.0}, {0.0});
    AddFeature("POLE", 2, {100.0}, {100.0});
    Fit();
    for (const Qt::Key tool : {Qt::Key_A, Qt::Key_X}) {
        Start(tool);
        Click(PointOf(100, 100));
        EXPECT_TRUE(Status().contains("lines and areas")) << Status().toStdString();
        Press(Qt::Key_Escape);
    }
    Start(Qt::Key_A);
    Click(PointOf(50, 50));
    EXPECT_FALSE(Status().contains("lines and areas")) << "nothing was met";
}

TEST_F(RefusedTools, AFeatureOfALayerWhoseBoxesKeepItFromToolsIsToldOfByAllOfThem) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 100);
    Fit();
    for (const Qt::Key tool : {Qt::Key_M, Qt::Key_C, Qt::Key_K, Qt::Key_V, Qt::Key_A, Qt::Key_X}) {
        SCOPED_TRACE(QKeySequence(tool).toString().toStdString());
        Map().Call("OrvSetLayEditFlg", {"AREA", false});
        Start(tool);
        Click(PointOf(50, 50));
        EXPECT_TRUE(Status().contains("layer AREA") && Status().contains("\"Edit\"")) << Status().toStdString();
        Press(Qt::Key_Escape);
        Map().Call("OrvSetLayEditFlg", {"AREA", true});
        Map().Call("OrvSetLayActMode", {"AREA", false});
        Start(tool);
        Click(PointOf(50, 50));
        EXPECT_TRUE(Status().contains("layer AREA") && Status().contains("\"Select\"")) << Status().toStdString();
        Press(Qt::Key_Escape);
        Map().Call("OrvSetLayActMode", {"AREA", true});
        Map().Call("OrvSetLayDspMode", {"AREA", false});
        Start(tool);
        Click(PointOf(50, 50));
        EXPECT_TRUE(Status().contains("shown")) << Status().toStdString();
        Press(Qt::Key_Escape);
        Map().Call("OrvSetLayDspMode", {"AREA", true});
    }
    EXPECT_EQ(BlockOf("AREA").datCnt, 1);
}

TEST_F(RefusedTools, AToolThatMeetsItsFeatureSaysNothing) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 100);
    AddSquare("AREA", 2, 200, 0, 100);
    Fit();
    for (const Qt::Key tool : {Qt::Key_M, Qt::Key_C, Qt::Key_V, Qt::Key_A, Qt::Key_X, Qt::Key_K}) {
        SCOPED_TRACE(QKeySequence(tool).toString().toStdString());
        Start(tool);
        Click(PointOf(50, 50));
        EXPECT_FALSE(Status().contains("Nothing lies") || Status().contains("What lies")) << Status().toStdString();
        Press(Qt::Key_Escape);
    }
    EXPECT_EQ(BlockOf("AREA").datCnt, 1) << "deleted without a word";
}

TEST_F(RefusedTools, AGroupBelowZeroIsNotDrawnIn) {
    Map().Call("DigMemAlloc2", {"AREA", -5, static_cast<int>(kLayPolygon), "", 5, 0.0, 0.0});
    Map().Call("OrvSetLayEditFlg", {"AREA", true});
    Map().Call("OrvSetLayActMode", {"AREA", true});
    Fit();
    Start(Qt::Key_D);
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    EXPECT_TRUE(Status().contains("group -5")) << Status().toStdString();
}

TEST_F(RefusedTools, AHiddenLayerIsNotDrawnIn) {
    MakeLayer("AREA", kLayPolygon);
    Fit();
    Map().Call("OrvSetLayDspMode", {"AREA", false});
    Start(Qt::Key_D);
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    EXPECT_TRUE(Status().contains("hidden")) << Status().toStdString();
    Map().Call("OrvSetLayDspMode", {"AREA", true});
    Start(Qt::Key_D);
    EXPECT_EQ(Map().RunMode(), kRunAddCollect);
    Press(Qt::Key_Escape);
}

TEST_F(RefusedTools, AHiddenLayerTakesNoTextEither) {
    MakeLayer("NAME", kLayText);
    Fit();
    Map().Call("OrvSetLayDspMode", {"NAME", false});
    Start(Qt::Key_D);
    EXPECT_TRUE(Status().contains("hidden")) << Status().toStdString();
}

TEST_F(RefusedTools, ThatClicksMeetNoTextsIsSaidWhereTheyAreShown) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 1000);
    MakeLayer("NAME", kLayText);
    Fit();
    Start(Qt::Key_M);
    Click(PointOf(1100, 1100));
    ASSERT_TRUE(Status().contains("Nothing lies here")) << Status().toStdString();
    EXPECT_FALSE(Status().contains("Ctrl+F")) << "there are none";
    ASSERT_TRUE(PutText(Map(), window->History(), {"NAME", 1, 0}, {1100, 1100}, "Town"));
    Start(Qt::Key_M);
    Click(PointOf(1100, 1100) + QPoint(4, 4));
    EXPECT_TRUE(Status().contains("Ctrl+F")) << Status().toStdString();
    EXPECT_TRUE(Status().contains("F4"));
    Map().Call("OrvSetLayDspMode", {"NAME", false});
    Start(Qt::Key_M);
    Click(PointOf(1100, 1100) + QPoint(4, 4));
    EXPECT_FALSE(Status().contains("Ctrl+F")) << Status().toStdString();
}

}  // namespace
}  // namespace orvane
