// The list of layers shows the order of drawing, and nothing but ▲ and ▼ changes it.
#include <QTreeWidget>

#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class LayerOrder : public Walk {
protected:
    /// A layer with the key that it has in a file.
    void MakeWithKey(const char* code, int key) {
        ASSERT_TRUE(Map().Call("OrvAddLayer", {code, 1, static_cast<int>(kLayPolygon), key}).toBool());
        Map().Call("OrvSetLayActMode", {code, true});
        Map().Call("OrvSetLayEditFlg", {code, true});
        AddSquare(code, 1, -9000, -30000, 100);
    }
    /// An archive whose layers all have the same key, opened.
    void OpenEqual(const char* codes) {
        for (const char* code = codes; *code != 0; ++code) MakeWithKey(std::string(1, *code).c_str(), 1);
        ASSERT_TRUE(window->Files().Save(File("equal.Ovb"), "").saved);
        ASSERT_TRUE(window->Load({File("equal.Ovb")}, {}).Ok());
        ASSERT_EQ(Store().Layer(0).layIndex, Store().Layer(1).layIndex);
    }
    /// Codes of the layers from the one drawn last.
    std::string Drawn() {
        std::string codes;
        for (const DigIndex& entry : Store().Index()) codes.insert(0, Store().Block(entry.block).code.View());
        return codes;
    }
    std::string Listed() {
        window->RefreshNow();
        std::string codes;
        const QTreeWidget& list = window->Layers().List();
        for (int i = 0; i < list.topLevelItemCount(); ++i)
            codes += list.topLevelItem(i)->text(0).section(' ', 0, 0).toStdString();
        return codes;
    }
    bool Import(const char* name) {
        QFile file(File(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"type":"FeatureCollection","name":"Z","features":[{"type":"Feature","properties":{},)"
                   R"("geometry":{"type":"Polygon","coordinates":[[[139.7,35.6],[139.8,35.6],[139.8,35.7],[139.7,35.6]]]}}]})");
        file.close();
        return window->Files().Import({File(name)}, {}).Ok();
    }
};

TEST_F(LayerOrder, LayersOfAFileThatShareTheirKeyAreListedAsTheyAreDrawn) {
    OpenEqual("ABCD");
    EXPECT_EQ(Listed(), Drawn());
    EXPECT_EQ(Drawn().size(), 4u);
}

TEST_F(LayerOrder, UpAndDownMoveTheLayerByOnePlaceOfTheDrawing) {
    OpenEqual("ABCD");
    const std::string before = Drawn();
    std::string wanted = before;
    std::swap(wanted[1], wanted[2]);
    window->Layers().Choose(std::string(1, before[2]));
    Press(Qt::CTRL | Qt::Key_PageUp);
    EXPECT_EQ(Drawn(), wanted);
    EXPECT_EQ(Listed(), wanted);
    Press(Qt::CTRL | Qt::Key_PageDown);
    EXPECT_EQ(Drawn(), before);
    Press(Qt::CTRL | Qt::Key_Z);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(Drawn(), before);
}

TEST_F(LayerOrder, AnImportAndItsUndoLeaveTheOtherLayersInTheirOrder) {
    OpenEqual("ABC");
    const std::string before = Drawn();
    ASSERT_TRUE(Import("Z.geojson"));
    std::string with = Drawn();
    ASSERT_EQ(std::erase(with, 'Z'), 1u);
    EXPECT_EQ(with, before);
    with = Drawn();
    EXPECT_EQ(Listed(), with);
    window->History().Undo();
    EXPECT_EQ(Drawn(), before);
    window->History().Redo();
    EXPECT_EQ(Drawn(), with);
    window->History().Undo();
    window->Layers().MakeLayer("N", kLayPoint, 1);
    EXPECT_EQ(Drawn(), "N" + before) << "a new layer lies over all";
}

TEST_F(LayerOrder, AnImportWhoseKeyALayerHasChangesTheKeysInOneStep) {
    MakeWithKey("Z", 2);
    ASSERT_TRUE(window->Files().Save(File("z.Ovb"), "").saved);
    window->Files().New();
    OpenEqual("AB");
    window->RefreshNow();
    window->Layers().Choose(Drawn().substr(1));
    window->Layers().Move(true);
    const std::string before = Drawn();
    ASSERT_TRUE(window->Files().Import({File("z.Ovb")}, {}).Ok());
    EXPECT_EQ(window->History().Stack().count(), 2);
    const std::string with = Drawn();
    std::set<std::int32_t> keys;
    for (std::int32_t i = 0; i < Store().LayerCnt(); ++i) keys.insert(Store().Layer(i).layIndex);
    EXPECT_EQ(keys.size(), 3u);
    window->History().Undo();
    EXPECT_EQ(Drawn(), before);
    window->History().Undo();
    EXPECT_EQ(Drawn(), std::string(before.rbegin(), before.rend()));
    window->History().Redo();
    window->History().Redo();
    EXPECT_EQ(Drawn(), with);
}

TEST_F(LayerOrder, NewLayersHaveKeysOfTheirOwnAndStayInTheirOrderWhenTheMapIsOpenedAgain) {
    for (const char* code : {"A", "B", "C", "D"}) ASSERT_TRUE(window->Layers().MakeLayer(code, kLayPolygon, 1));
    EXPECT_EQ(Drawn(), "DCBA");
    EXPECT_EQ(Listed(), "DCBA");
    for (const char* code : {"A", "B", "C", "D"}) AddSquare(code, 1, 0, 0, 100);
    window->Layers().Choose("B");
    window->Layers().RemoveLayer();
    EXPECT_EQ(Drawn(), "DCA");
    ASSERT_TRUE(window->Files().Save(File("map.Ovb"), "").saved);
    ASSERT_TRUE(window->Load({File("map.Ovb")}, {}).Ok());
    EXPECT_EQ(Drawn(), "DCA");
}

TEST_F(LayerOrder, ARemovedLayerOfAFileLeavesTheOthersInTheirOrderInTheArchive) {
    OpenEqual("ABCDE");
    std::string left = Drawn();
    std::erase(left, 'B');
    window->RefreshNow();
    window->Layers().Choose("B");
    window->Layers().RemoveLayer();
    EXPECT_EQ(Drawn(), left);
    ASSERT_TRUE(window->Files().Save(File("map.Ovb"), "").saved);
    ASSERT_TRUE(window->Load({File("map.Ovb")}, {}).Ok());
    EXPECT_EQ(Drawn(), left);
}

TEST_F(LayerOrder, ALookThatIsTakenBackLeavesTheOrderThatCameSince) {
    OpenEqual("ABC");
    const std::string before = Drawn();
    LayerChange look = Unchanged(Store().Layer(0));
    look.after.lineSize = 7;
    window->History().ChangeLayers("look", {look});
    ASSERT_TRUE(Import("Z.geojson"));
    window->History().Undo();
    window->History().Undo();
    EXPECT_EQ(Store().Layer(0).lineSize, 1);
    EXPECT_EQ(Drawn(), before);
}

TEST_F(LayerOrder, OverTheLeastKeyThereIsRoomForANewLayer) {
    MakeWithKey("A", (std::numeric_limits<std::int32_t>::min)());
    MakeWithKey("B", 3);
    ASSERT_TRUE(window->Layers().MakeLayer("N", kLayPoint, 1));
    EXPECT_EQ(Drawn(), "NAB");
}

TEST_F(LayerOrder, WhatIsRefusedMovesNoKey) {
    OpenEqual("AB");
    const auto expectEqualKeys = [this](const char* after) {
        EXPECT_EQ(Store().Layer(0).layIndex, Store().Layer(1).layIndex) << after;
        EXPECT_EQ(window->History().Stack().count(), 0) << after;
        EXPECT_FALSE(window->History().IsModified()) << after;
    };
    EXPECT_FALSE(window->Layers().MakeLayer("A", kLayPolygon, 1)) << "the block is there";
    expectEqualKeys("a layer that was not made");
    window->Layers().Choose("A");
    window->History().LetEdit(false);
    window->Layers().RemoveLayer();
    expectEqualKeys("a layer that may not be removed");
    window->History().LetEdit(true);
    ASSERT_TRUE(Map().Call("OrvAddLayer", {"A", 2, static_cast<int>(kLayPolygon), 1}).toBool());
    const std::int32_t twin = Store().FindBlock("A", 2).block;
    Store().MutableBlock(twin).meshNo = 1;
    WhenTold(QMessageBox::Ok);
    window->Layers().RemoveLayer();
    EXPECT_TRUE(said.contains("same group")) << said.toStdString();
    expectEqualKeys("a layer that could not come back");
    Store().MutableBlock(twin).meshNo = 2;
}

TEST_F(LayerOrder, ANewLayerLiesOverThoseThatSharedTheirKey) {
    OpenEqual("ABCD");
    const std::string before = Drawn();
    ASSERT_TRUE(window->Layers().MakeLayer("E", kLayPolygon, 1));
    EXPECT_EQ(Drawn(), "E" + before);
    window->History().Undo();
    EXPECT_EQ(Drawn(), before);
}

}  // namespace
}  // namespace orvane
