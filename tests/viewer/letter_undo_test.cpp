// Undo and redo to the letter: the store afterwards is the store before, whatever shares its number, its origin or its code.
#include <QListWidget>
#include <tuple>

#include "hosts/viewer/feature_panel.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

/// All that is data in a store: looks by layer with data, and what blocks and features hold, in the order of drawing.
struct Whole {
    std::vector<std::pair<std::string, LayerState>> looks;
    std::vector<std::tuple<std::string, std::int32_t, double, double, double, double, double, double>> blocks;
    std::vector<std::tuple<std::int32_t, std::uint8_t, std::int32_t, std::string>> facts;
    std::vector<ItemCopy> features;
    friend bool operator==(const Whole&, const Whole&) = default;
};

Whole WholeOf(CDigMem& store) {
    Whole whole;
    std::string last;
    for (const DigIndex& entry : store.Index()) {
        const LayerDef& layer = store.Layer(entry.layer);
        const std::string code(layer.code.View());
        if (code != last) {
            whole.looks.emplace_back(code + '/' + std::to_string(layer.layType), StateOf(layer));
            for (const SubLayDef& sub : layer.subLays) whole.looks.emplace_back(code, StateOf(sub));
        }
        last = code;
        const DigBlock& block = store.Block(entry.block);
        whole.blocks.emplace_back(code, block.meshNo, block.GX, block.GY, block.minX, block.minY, block.maxX, block.maxY);
        whole.facts.emplace_back(block.blkState, block.blkFlg, block.recCnt, block.path);
        for (const DigDat& dat : block.dats) whole.features.push_back(CopyOf(dat));
    }
    return whole;
}

class LetterUndo : public Walk {
protected:
    Whole Now() { return WholeOf(Store()); }
    DigBlock& MutableBlock(const char* code) { return Store().MutableBlock(Store().FindBlock(code, 1).block); }
    EditHistory& History() { return window->History(); }
    void ChooseLayer(const char* code) {
        window->RefreshNow();
        window->Layers().Choose(code);
    }
    /// Two texts of one number with different heights, sub layers and tags, and a third of another number between them.
    void MakeTwins() {
        MakeLayer("NAME", kLayText);
        for (const int no : {1, 2}) {
            ASSERT_TRUE(Map().Call("OrvSetSubLayerEx", {"NAME", "sub", no, true, 0, 1, 0, 0, 0x10 * no, 1, 1}).toBool());
        }
        const int ids[] = {5, 6, 5};
        for (int i = 0; i < 3; ++i) {
            AddFeature("NAME", ids[i], {100.0 * i}, {50.0});
            Map().Call("OrvSetDatString", {"NAME", 1, ids[i], 100.0 * i, 50.0, QString("text %1").arg(i)});
            DigDat& dat = MutableBlock("NAME").dats[static_cast<std::size_t>(i)];
            dat.str->z = 10.0 + i;  // as an archive gives it
            dat.subLayNo = i % 3;
            dat.lineTag = i + 1;
        }
    }
};

TEST_F(LetterUndo, TwinsOfOneNumberKeepTheirOwnSubLayersAndHeights) {
    MakeTwins();
    const Whole before = Now();
    History().Change("deleting", Deletions(Store(), {{{"NAME", 1, 5}, 0}, {{"NAME", 1, 5}, 2}}));
    const Whole deleted = Now();
    ASSERT_EQ(deleted.features.size(), 1u);
    History().Undo();
    EXPECT_TRUE(Now() == before);
    History().Redo();
    EXPECT_TRUE(Now() == deleted);
    History().Undo();
    ASSERT_EQ(BlockOf("NAME").dats[2].str->z, 12.0);
    EXPECT_EQ(BlockOf("NAME").dats[0].subLayNo, 0);
    EXPECT_EQ(BlockOf("NAME").dats[2].subLayNo, 2);
}

TEST_F(LetterUndo, ATwinIsChangedAloneWhicheverOfThemItIs) {
    MakeTwins();
    for (const std::int32_t position : {0, 2}) {
        const Whole before = Now();
        const ItemCopy old = CopyOf(BlockOf("NAME").dats[static_cast<std::size_t>(position)]);
        ItemCopy changed = old;
        changed.text->text = "other";
        changed.text->z = 77.5;
        changed.subLayNo = 1;
        changed.pnts.push_back({7, 8, 9});
        History().Change("changing a feature", {{"NAME", 1, position, old, changed}});
        for (std::size_t i = 0; i < 3; ++i) {
            const bool isIt = i == static_cast<std::size_t>(position);
            EXPECT_TRUE(CopyOf(BlockOf("NAME").dats[i]) == (isIt ? changed : before.features[i])) << position << ' ' << i;
        }
        History().Undo();
        EXPECT_TRUE(Now().features == before.features) << position;
    }
}

TEST_F(LetterUndo, ASelectedTwinStaysTheOneThatIsSelected) {
    MakeTwins();
    MutableBlock("NAME").dats[2].active = 1;
    History().Change("deleting", Deletions(Store(), {{{"NAME", 1, 6}, 1}}));
    Map().Call("OrvResetActiveAll");
    MutableBlock("NAME").dats[1].active = 1;
    ItemCopy changed = CopyOf(BlockOf("NAME").dats[0]);
    changed.lineTag = 9;
    const ItemChange change{"NAME", 1, 0, CopyOf(BlockOf("NAME").dats[0]), changed};
    PerformChanges(Map(), {&change, 1}, true);
    EXPECT_EQ(BlockOf("NAME").dats[0].active, 0);
    EXPECT_EQ(BlockOf("NAME").dats[1].active, 1);
}

TEST_F(LetterUndo, TwinGridsKeepTheirTags) {
    MakeLayer("GRID", kLayMesh);
    for (int i = 0; i < 2; ++i) {
        const QVariantList x{0.0, 10.0, 0.0, 10.0}, y{0.0, 0.0, 10.0, 10.0}, z{0.0, 0.0, 0.0, 0.0};
        Map().Call("OrvAddMeshDat", {"GRID", 1, 3, 2, 2, x, y, z});
        MutableBlock("GRID").dats[static_cast<std::size_t>(i)].lineTag = 40 + i;
    }
    const Whole before = Now();
    History().Change("deleting", Deletions(Store(), {{{"GRID", 1, 3}, 0}, {{"GRID", 1, 3}, 1}}));
    History().Undo();
    EXPECT_TRUE(Now() == before);
}

TEST_F(LetterUndo, ALayerComesBackWithOriginsOfMoreThanWholeUnitsAndAllThatFilesSayOfBlocks) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 50.0}, {20.0, 60.0});
    AddFeature("ROAD", 1, {15.0, 55.0}, {20.0, 60.0});
    DigBlock& block = MutableBlock("ROAD");
    block.GX = 1234.625;
    block.GY = -77.25;
    block.blkFlg = 3;
    block.recCnt = 8;
    block.blkState = 2;
    block.maxX = 4000;  // wider than the features, as after a deletion
    const Whole before = Now();
    ChooseLayer("ROAD");
    Choose("Remove the layer");
    EXPECT_EQ(Store().FindBlock("ROAD", 1).block, -1);
    History().Undo();
    EXPECT_TRUE(Now() == before);
    History().Redo();
    History().Undo();
    EXPECT_TRUE(Now() == before);
    // A block that is written anew for its twins keeps the origin too.
    History().Change("deleting", Deletions(Store(), {{{"ROAD", 1, 1}, 1}}));
    EXPECT_EQ(BlockOf("ROAD").GX, 1234.625);
    History().Undo();
    EXPECT_EQ(BlockOf("ROAD").GY, -77.25);
    EXPECT_TRUE(Now().features == before.features);
}

TEST_F(LetterUndo, ALayerThatWasRemovedAndMadeAgainComesBackWithItsOwnLooks) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 50.0}, {20.0, 60.0});
    Map().Call("OrvSetLayColor", {"ROAD", 0x112233});
    Map().Call("OrvSetLayLineSize", {"ROAD", 5});
    const Whole before = Now();
    ChooseLayer("ROAD");
    Choose("Remove the layer");
    window->Layers().MakeLayer("ROAD", kLayPolygon, 1);
    const Whole remade = Now();
    ASSERT_EQ(remade.looks.size(), 1u);
    EXPECT_EQ(remade.looks[0].first, "ROAD/3") << "another type on the old record";
    EXPECT_EQ(remade.looks[0].second.lineSize, 1) << "nothing of the old look";
    History().Undo();
    History().Undo();
    EXPECT_TRUE(Now() == before);
    History().Redo();
    History().Redo();
    EXPECT_TRUE(Now() == remade);
}

TEST_F(LetterUndo, WhatCannotComeBackNowIsKeptUntilItCan) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 50.0}, {20.0, 60.0});
    MakeLayer("TREE", kLayPoint);
    Map().Call("OrvSetLayIndex", {"TREE", 6});  // layers that share a key get keys of their own
    const Whole before = Now();
    ChooseLayer("ROAD");
    Choose("Remove the layer");
    ASSERT_TRUE(Map().Call("OrvAddLayer", {"ROAD", 1, static_cast<int>(kLayLine), 5}).toBool());
    QString words;
    QObject::connect(&History(), &EditHistory::Said, [&](const QString& told) { words = told; });
    History().Undo();
    EXPECT_FALSE(words.isEmpty());
    EXPECT_EQ(History().Stack().index(), 1) << "the step is not undone";
    EXPECT_EQ(BlockOf("ROAD").datCnt, 0) << "what stands in the way is nobody's to delete";
    Map().Call("OrvDelLayGrpDat", {"ROAD", 1});
    History().Undo();
    EXPECT_EQ(History().Stack().index(), 0);
    EXPECT_TRUE(Now() == before);
}

TEST_F(LetterUndo, InAPlaneZoneLooksAndImagesGoBackAndLayersAreNeitherMadeNorRemoved) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    const Whole before = Now();
    window->RefreshNow();
    const std::string code = window->Layers().ChosenCode();
    window->Place().ChangeFrame(9);
    EXPECT_TRUE(History().RemoveLayer("removing a layer", code));
    window->Layers().MakeLayer("NEW", kLayPoint, 1);
    EXPECT_FALSE(window->Files().Import({Sample("tokyo.geojson")}, {}).Ok());
    WhenTold(QMessageBox::Ok);
    window->Layers().AskNewLayer();
    EXPECT_TRUE(said.contains("own frame")) << said.toStdString();
    EXPECT_EQ(History().Stack().count(), 0);
    LayerChange change = Unchanged(Store().Layer(Store().FindLayDef(code)));
    change.after.color = 0x0000FF;
    History().ChangeLayers("look of a layer", {change});
    Settle();
    window->RefreshNow();
    EXPECT_TRUE(window->FindAction("Undo")->isEnabled());
    History().Undo();
    EXPECT_EQ(Store().Layer(Store().FindLayDef(code)).color, change.before.color);
    window->Place().ChangeFrame(0);
    EXPECT_TRUE(Now().looks == before.looks);
    EXPECT_TRUE(Now().features == before.features);
}

TEST_F(LetterUndo, AnArchiveThatAddsToBlocksOfTheMapGoesAndComes) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 50.0}, {20.0, 60.0});
    MakeLayer("TREE", kLayPoint);
    AddFeature("TREE", 1, {5.0}, {6.0});
    ASSERT_TRUE(window->Files().Save(File("both.Ovb"), "").saved);
    ChooseLayer("TREE");
    Choose("Remove the layer");
    const Whole before = Now();
    ASSERT_TRUE(window->Files().Import({File("both.Ovb")}, {}).Ok());
    ASSERT_EQ(BlockOf("ROAD").datCnt, 2) << "the same number twice";
    ASSERT_GE(Store().FindBlock("TREE", 1).block, 0);
    const Whole after = Now();
    History().Undo();
    EXPECT_TRUE(Now().features == before.features);
    EXPECT_EQ(Now().blocks.size(), before.blocks.size());
    History().Redo();
    EXPECT_TRUE(Now() == after);
}

TEST_F(LetterUndo, AStepOfTheImagesClosesThePlacingOfOne) {
    QImage scan(200, 100, QImage::Format_RGB32);
    scan.fill(Qt::gray);
    ASSERT_TRUE(scan.save(File("scan.png")));
    ASSERT_EQ(window->Images().Add(File("scan.png")), "");
    window->Images().SetOnTop(Map().Control().rastOnTop != 1);
    window->Images().List().setCurrentRow(0);
    window->Images().AskPlace();
    Settle();
    const auto placing = [this] {
        for (const QDialog* dialog : window->findChildren<QDialog*>("placing")) {
            if (dialog->isVisible()) return true;
        }
        return false;
    };
    ASSERT_TRUE(placing());
    History().Undo();
    Settle();
    EXPECT_FALSE(placing());
}

TEST_F(LetterUndo, GoingToAFeatureAndTakingOneOutLeaveWhatAHiddenLayerHasSelected) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 50.0}, {20.0, 60.0});
    MakeLayer("TREE", kLayPoint);
    AddFeature("TREE", 1, {5.0}, {6.0});
    AddFeature("TREE", 2, {15.0}, {6.0});
    Fit();
    for (const int id : {1, 2}) Map().Call("OrvSetActDat", {"TREE", 1, id});
    Map().Call("OrvSetActDat", {"ROAD", 1, 1});
    Map().Call("OrvSetLayDspMode", {"ROAD", false});
    window->RefreshNow();
    ASSERT_EQ(SelectedCount(Store()), 2u);
    window->Selection().JumpToCurrent();
    EXPECT_EQ(BlockOf("ROAD").dats[0].active, 1);
    EXPECT_EQ(SelectedCount(Store()), 2u);
    window->RefreshNow();
    window->Selection().DropMarked();
    EXPECT_EQ(SelectedCount(Store()), 1u);
    EXPECT_EQ(BlockOf("ROAD").dats[0].active, 1);
}

}  // namespace
}  // namespace orvane
