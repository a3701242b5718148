// What an edit leaves behind when it is taken back: the bounds of blocks, a source that was copied, the view and the records.
#include "hosts/viewer/layer_state.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class UndoBounds : public Walk {
protected:
    EditHistory& History() { return window->History(); }
    std::map<BlockKey, BlockBox> Bounds() { return BoundsOf(Store(), BlockKeys(Store())); }
    /// The map place in the middle of the window.
    QPointF Middle() {
        COrvane4Ctrl& ctrl = Map().Control();
        const Rect client = ctrl.window().ClientRect();
        return {ctrl.ScreenToWorldX(client.right / 2.0), ctrl.ScreenToWorldY(client.bottom / 2.0)};
    }
    void ExpectMiddle(QPointF middle, double pixels, const char* what) {
        EXPECT_NEAR(Middle().x(), middle.x(), Unit() * pixels) << what;
        EXPECT_NEAR(Middle().y(), middle.y(), Unit() * pixels) << what;
    }
};

TEST_F(UndoBounds, AFeatureThatWasFarAwayForAStepLeavesNoWideBlock) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    const auto before = Bounds();
    const DigBlock& block = Store().Block(Store().Index()[0].block);
    const std::string code(block.code.View());
    const ItemCopy item = CopyOf(block.dats[0]);
    ItemCopy moved = item;
    for (DigPnt& pnt : moved.pnts) pnt.x += 500000;
    History().Change("far", {{code, block.meshNo, 0, item, moved}});
    const auto after = Bounds();
    ASSERT_NE(before, after);
    History().Undo();
    EXPECT_EQ(Bounds(), before);
    History().Redo();
    EXPECT_EQ(Bounds(), after);
    History().Undo();
    EXPECT_EQ(Bounds(), before);
}

TEST_F(UndoBounds, NeitherDoesAToolThatMovedOne) {
    MakeLayer("roads", kLayLine);
    AddFeature("roads", 1, {0.0, 100.0}, {0.0, 100.0});
    AddFeature("roads", 2, {300.0, 900.0}, {0.0, 900.0});
    Fit();
    const auto before = Bounds();
    ASSERT_TRUE(History().StartTool(kRunMoveDat));
    Click(PointOf(50, 50));
    Click(PointOf(50, 850));
    History().CancelTool();
    ASSERT_EQ(History().Stack().count(), 1);
    ASSERT_NE(Bounds(), before);
    History().Undo();
    EXPECT_EQ(Bounds(), before);
}

TEST_F(UndoBounds, NorAnImportIntoABlock) {
    MakeLayer("roads", kLayLine);
    AddFeature("roads", 1, {-5000.0, 9000.0}, {0.0, 9000.0});
    ASSERT_TRUE(window->Files().Save(File("far.Ovb"), "").saved);
    window->Files().New();
    MakeLayer("roads", kLayLine);
    AddFeature("roads", 2, {0.0, 100.0}, {0.0, 100.0});
    const auto before = Bounds();
    ASSERT_TRUE(window->Files().Import({File("far.Ovb")}, {}).Ok());
    ASSERT_NE(Bounds(), before);
    History().Undo();
    EXPECT_EQ(BlockOf("roads").datCnt, 1);
    EXPECT_EQ(Bounds(), before);
}

TEST_F(UndoBounds, ACopyIsNotBegunOnAFeatureThatCancellingWouldDelete) {
    MakeLayer("roads", kLayLine);
    AddFeature("roads", 1, {0.0, 100.0}, {0.0, 100.0});
    Fit();
    EXPECT_FALSE(History().StartTool(kRunCopyDat, ItemKey{"roads", 1, 1}));
    History().CancelTool();
    EXPECT_EQ(BlockOf("roads").datCnt, 1);
    EXPECT_TRUE(History().StartTool(kRunCopyDat)) << "by a pick it begins";
    History().CancelTool();
}

TEST_F(UndoBounds, SavingInAPlaneZoneLeavesTheView) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    window->Place().ChangeFrame(9);
    Map().SetZoom(50000);
    Map().Call("OrvReDraw");
    const QPointF middle = Middle();
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    ExpectMiddle(middle, 0.01, "saves");
    ASSERT_EQ(window->Files().WriteExchange(File("a.txt"), "1.01"), "");
    ExpectMiddle(middle, 0.01, "exchange text");
    ExportOptions options;
    options.path = File("a.gpkg").toStdString();
    options.format = ExportFormatByExtension(options.path);
    ASSERT_TRUE(window->Files().Export(options).Ok());
    ExpectMiddle(middle, 0.01, "export");
}

TEST_F(UndoBounds, TheFrameMenuKeepsTheMiddle) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    Map().SetZoom(50000);
    Map().Call("OrvReDraw");
    const QPointF mesh = Middle();
    const QString place = window->Place().PlaceText(mesh.x(), mesh.y()).section("   ", 1, 1);
    for (int i = 0; i < 5; ++i) {
        window->Place().ChangeFrame(9);
        window->Place().ChangeFrame(0);
    }
    ExpectMiddle(mesh, 0.01, "round trips");
    // A map that was scrolled there goes back to the place that it shows now.
    window->Place().ChangeFrame(9);
    Map().Call("OrvMapJumpToXY", {Middle().x() + 500, Middle().y() - 700});
    const QString there = window->Place().PlaceText(Middle().x(), Middle().y()).section("   ", 1, 1);
    window->Place().ChangeFrame(0);
    EXPECT_NE(there, place);
    EXPECT_EQ(window->Place().PlaceText(Middle().x(), Middle().y()).section("   ", 1, 1), there);
}

TEST_F(UndoBounds, AnArchiveWithALayerOfAnotherTypeIsNotMixedIn) {
    MakeLayer("roads", kLayPolygon);
    AddSquare("roads", 1, 0, 0, 50);
    ASSERT_TRUE(window->Files().Save(File("areas.Ovb"), "").saved);
    ASSERT_EQ(window->Files().WriteExchange(File("areas.txt"), "1.01"), "");
    window->Files().New();
    MakeLayer("roads", kLayPoint);
    AddFeature("roads", 1, {10.0}, {10.0});
    for (const char* name : {"areas.Ovb", "areas.txt"}) {
        const ImportResult result = window->Files().Import({File(name)}, {});
        EXPECT_EQ(result.fault, ImportFault::Shared) << name;
        EXPECT_NE(result.error.find("roads"), std::string::npos) << result.error;
        EXPECT_EQ(BlockOf("roads").datCnt, 1);
        EXPECT_EQ(Store().Layer(Store().FindLayDef("roads")).layType, kLayPoint);
    }
    EXPECT_EQ(History().Stack().count(), 0);
}

TEST_F(UndoBounds, ItTakesTheRecordOfALayerThatWasRemoved) {
    MakeLayer("roads", kLayPolygon);
    AddSquare("roads", 1, 0, 0, 50);
    Map().Call("OrvSetLayLineSize", {"roads", 6});
    ASSERT_TRUE(window->Files().Save(File("areas.Ovb"), "").saved);
    window->Files().New();
    MakeLayer("trees", kLayPoint);
    AddFeature("trees", 1, {10.0}, {10.0});
    MakeLayer("roads", kLayPoint);
    AddFeature("roads", 3, {10.0}, {10.0});
    Map().Call("OrvSetLayLineSize", {"roads", 2});
    ASSERT_TRUE(History().RemoveLayer("removing", "roads"));
    ASSERT_TRUE(window->Files().Import({File("areas.Ovb")}, {}).Ok());
    const LayerDef& layer = Store().Layer(Store().FindLayDef("roads"));
    EXPECT_EQ(layer.layType, kLayPolygon);
    EXPECT_EQ(layer.lineSize, 6);
    EXPECT_EQ(layer.editFlg, 1);
    History().Undo();
    History().Undo();
    EXPECT_EQ(layer.layType, kLayPoint);
    EXPECT_EQ(layer.lineSize, 2);
    EXPECT_EQ(BlockOf("roads").dats[0].datID, 3);
}

TEST_F(UndoBounds, ALayerWithoutDataLeavesItsCodeFreeWhenItIsReopened) {
    MakeLayer("roads", kLayLine);
    AddFeature("roads", 1, {0.0, 100.0}, {0.0, 100.0});
    window->Layers().MakeLayer("trees", kLayPolygon, 1);
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    ASSERT_TRUE(window->Load({File("a.Ovb")}, {}).Ok());
    ASSERT_GE(Store().FindLayDef("trees"), 0);
    ASSERT_EQ(Store().FindBlock("trees", 1).block, -1);
    WhenAsked([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("code")->setText("trees");
        dialog.accept();
    });
    window->Layers().AskNewLayer();
    EXPECT_GE(Store().FindBlock("trees", 1).block, 0);
    EXPECT_EQ(Store().Layer(Store().FindLayDef("trees")).layType, kLayPoint) << "the type that the dialog offers first";
    History().Undo();
    EXPECT_TRUE(History().RemovedLayers().empty()) << "it came with the file";
}

TEST_F(UndoBounds, AnImportTakesTheCodeOfALayerThatCameWithoutData) {
    MakeLayer("roads", kLayLine);
    AddFeature("roads", 1, {0.0, 100.0}, {0.0, 100.0});
    window->Layers().MakeLayer("tokyo", kLayPoint, 1);
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    ASSERT_TRUE(window->Load({File("a.Ovb")}, {}).Ok());
    ASSERT_TRUE(window->Files().Import({Sample("tokyo.geojson")}, {}).Ok());
    for (std::int32_t i = 0; i < Store().LayerCnt(); ++i) {
        EXPECT_EQ(Store().Layer(i).code.View().find("~2"), std::string_view::npos) << Store().Layer(i).code.CStr();
    }
}

TEST_F(UndoBounds, AnEmptyRecordOfAnImportIsSavedAgain) {
    MakeLayer("roads", kLayPoint);
    AddFeature("roads", 5, {10.0}, {10.0});
    MakeLayer("plans", kLayLine);
    ASSERT_TRUE(window->Files().Save(File("b.Ovb"), "").saved);
    window->Files().New();
    MakeLayer("trees", kLayPoint);
    AddFeature("trees", 5, {10.0}, {10.0});
    History().Forget();
    ASSERT_TRUE(window->Files().Import({File("b.Ovb")}, {}).Ok());
    EXPECT_TRUE(History().RemovedLayers().empty());
    ASSERT_TRUE(window->Files().Save(File("c.Ovb"), "").saved);
    CDigMem look;
    look.Init();
    ASSERT_TRUE(OpenArchive(look, File("c.Ovb").toStdString()).opened);
    EXPECT_GE(look.FindLayDef("plans"), 0);
}

TEST_F(UndoBounds, ALayerOnTheRecordOfARemovedOneHasNoneOfItsImages) {
    for (const std::int32_t layType : {kLayPoint, kLayPolygon}) {
        window->Files().New();
        MakeLayer("roads", kLayPoint);
        AddFeature("roads", 1, {10.0}, {10.0});
        ASSERT_TRUE(Map().Call("OrvSetLayImage", {"roads", "old.bmp", "picked.bmp", 20, 10, 1.0, 2.0}).toBool());
        ASSERT_TRUE(Map().Call("OrvSetLayImagePos", {"roads", 3}).toBool());
        ASSERT_TRUE(Map().Call("OrvDspLayImage", {"roads", true}).toBool());
        ASSERT_TRUE(History().RemoveLayer("removing", "roads"));
        window->Layers().MakeLayer("roads", layType, 1);
        const LayerDef& layer = Store().Layer(Store().FindLayDef("roads"));
        ASSERT_EQ(layer.layType, layType);
        EXPECT_EQ(layer.imgMode, 0);
        EXPECT_EQ(layer.imgPos, 0);
        EXPECT_TRUE(layer.imgfname.View().empty()) << layer.imgfname.CStr();
        EXPECT_TRUE(layer.imgactfname.View().empty());
        EXPECT_EQ(layer.bmWidth, 0);
        History().Undo();
        History().Undo();
        EXPECT_EQ(layer.imgMode, 1);
        EXPECT_EQ(layer.imgPos, 3);
        EXPECT_EQ(layer.imgfname.View(), "old.bmp");
        EXPECT_EQ(layer.bmHeight, 10);
    }
}

TEST_F(UndoBounds, ARectangleOfAFeatureComesBackAsItWasRead) {
    MakeLayer("POND", kLayCircle);
    AddFeature("POND", 1, {100.0}, {100.0}, {30.0});
    AddFeature("POND", 2, {500.0}, {500.0}, {30.0});
    const auto rect = [&](std::size_t at) { return BlockOf("POND").dats[at].rect; };
    const Rect odd{90, 95, 105, 110};  // as a copy made by a tool has it: the centre's alone, and wider
    Store().MutableBlock(Store().FindBlock("POND", 1).block).dats[0].rect = odd;
    const Rect second = rect(1);
    History().Change("gone", Deletion(Store(), {"POND", 1, 1}));
    EXPECT_EQ(rect(0), second) << "it moved up";
    History().Undo();
    EXPECT_EQ(rect(0), odd);
    EXPECT_EQ(rect(1), second) << "which was taken out and put back";
    ItemCopy moved = *CopyOf(Store(), {"POND", 1, 1});
    const ItemCopy before = moved;
    moved.pnts[0].x = 300;
    History().Change("moved", {{"POND", 1, 0, before, moved}});
    const Rect made = rect(0);
    EXPECT_GE(made.right, 300);
    History().Undo();
    EXPECT_EQ(rect(0), odd);
    History().Redo();
    EXPECT_EQ(rect(0), made);
}

}  // namespace
}  // namespace orvane
