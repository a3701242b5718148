// Areas that an overlay would go past are no part of it without a word.
#include "hosts/viewer/overlay_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class OverlayView : public Walk {
protected:
    OverlayView() {
        for (const char* code : {"A", "B", "C"}) MakeLayer(code, kLayPolygon);
        AddSquare("A", 1, 0, 0, 100);
        AddSquare("B", 1, 50, 0, 100);
        AddSquare("C", 1, 100000, 0, 100);
        Fit();
        for (const char* code : {"A", "B", "C"}) Map().Call("OrvSetActDat", {code, 1, 1});
        window->RefreshNow();
    }
    /// Goes to where the areas of A and B are, and those of C not.
    void LookAtTwo() {
        Map().Call("OrvMapJumpToXY", {75.0, 50.0});
        Map().SetZoom(1000);
        Map().Call("OrvReDraw");
        Settle();
    }
    QString Run(Overlay what) { return RunOverlay(Map(), window->History(), what, "A", 1); }
};

TEST_F(OverlayView, AnAreaOutOfViewIsNotLeftOutSilently) {
    LookAtTwo();
    for (const Overlay what : {Overlay::Merge, Overlay::Intersect}) {
        const QString why = Run(what);
        EXPECT_TRUE(why.contains("layer C, group 1, are out of view")) << why.toStdString();
        EXPECT_EQ(BlockOf("A").datCnt, 1);
        EXPECT_FALSE(window->History().IsModified());
    }
}

TEST_F(OverlayView, TheDialogSaysItToo) {
    LookAtTwo();
    OverlayDialog dialog(Map(), window->History(), Overlay::Merge, window.get());
    WhenTold(QMessageBox::Ok);
    dialog.accept();
    EXPECT_TRUE(said.contains("out of view")) << said.toStdString();
    EXPECT_EQ(BlockOf("A").datCnt, 1);
}

TEST_F(OverlayView, WhatIsSelectedInViewIsMergedWhereverTheRestIs) {
    LookAtTwo();
    Map().Call("OrvResetActiveAll");
    for (const char* code : {"A", "B"}) Map().Call("OrvSetActDat", {code, 1, 1});
    EXPECT_EQ(Run(Overlay::Merge), "");
    EXPECT_EQ(BlockOf("A").datCnt, 2);
}

TEST_F(OverlayView, AnAreaOfAHiddenSubLayerIsNotTakenSilently) {
    ASSERT_TRUE(Map().Call("OrvSetSubLayerEx", {"C", "sub", 2, false, 0, 1, 0, 0, 0, 1, 1}).toBool());
    ASSERT_TRUE(Map().Call("OrvSetDatSubLayer", {"C", 1, 1, 2}).toBool());
    const QString why = Run(Overlay::Merge);
    EXPECT_TRUE(why.contains("A hidden sub layer of layer C has selected areas")) << why.toStdString();
    EXPECT_EQ(BlockOf("A").datCnt, 1);
    // One of a hidden layer is left out anyway.
    Map().Call("OrvSetLayDspMode", {"C", false});
    EXPECT_EQ(Run(Overlay::Merge), "");
}

TEST_F(OverlayView, AllThatIsInViewIsMerged) {
    EXPECT_EQ(Run(Overlay::Merge), "");
    EXPECT_EQ(BlockOf("A").datCnt, 2);
}

TEST_F(OverlayView, AHiddenLayerTakesNoResultThatNobodyWouldSee) {
    Map().Call("OrvSetLayDspMode", {"A", false});
    for (const Overlay what : {Overlay::Merge, Overlay::Intersect}) {
        const QString why = Run(what);
        EXPECT_TRUE(why.contains("hidden") && why.contains("box before its name")) << why.toStdString();
        EXPECT_EQ(BlockOf("A").datCnt, 1);
    }
    EXPECT_FALSE(window->History().IsModified());
}

}  // namespace
}  // namespace orvane
