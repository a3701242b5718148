// Layers that were removed: the control keeps their records, and nothing else of the program may.
#include <QComboBox>
#include <QTreeWidget>

#include "hosts/viewer/find_dialog.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class RemovedLayers : public Walk {
protected:
    void WriteBytes(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void Remove(const char* code) {
        window->RefreshNow();
        window->Layers().Choose(code);
        Choose("Remove the layer");
        ASSERT_EQ(Store().FindBlock(code, 1).block, -1);
        ASSERT_GE(Store().FindLayDef(code), 0) << "the record stays, which is what this is about";
    }
    void MakeTwoLayers() {
        MakeLayer("roads", kLayLine);
        AddFeature("roads", 1, {-9000.0, -8500.0}, {-30000.0, -30200.0});
        MakeLayer("trees", kLayPoint);
        AddFeature("trees", 1, {-9100.0}, {-30100.0});
    }
    /// A file of foreign data with one layer of lines, "roads".
    QString RoadsFile() {
        WriteBytes(File("roads.geojson"),
                   R"({"type":"FeatureCollection","name":"roads","features":[{"type":"Feature","properties":{},)"
                   R"("geometry":{"type":"LineString","coordinates":[[139.70,35.68],[139.71,35.69]]}}]})");
        return File("roads.geojson");
    }
};

TEST_F(RemovedLayers, AnImportTakesTheCodeOfARemovedLayerAndNothingOfItsLook) {
    MakeTwoLayers();
    Map().Call("OrvSetLayLineSize", {"trees", 7});
    Map().Call("OrvSetLayColor", {"roads", 0x123456});
    Map().Call("OrvSetLayLineSize", {"roads", 9});
    Remove("roads");
    Remove("trees");
    Map().Call("OrvDelLayDat", {"trees"});
    ASSERT_TRUE(window->Files().Import({RoadsFile()}, {}).Ok());
    EXPECT_EQ(Store().FindLayDef("roads~2"), -1);
    ASSERT_GE(Store().FindBlock("roads", 1).block, 0);
    const LayerDef& layer = Store().Layer(Store().FindLayDef("roads"));
    EXPECT_EQ(layer.layType, kLayLine);
    EXPECT_EQ(layer.lineSize, 1);
    EXPECT_NE(layer.color, 0x123456u);
    EXPECT_EQ(layer.editFlg, 1);
    window->History().Undo();
    window->History().Undo();
    window->History().Undo();
    const LayerDef& old = Store().Layer(Store().FindLayDef("roads"));
    EXPECT_EQ(old.color, 0x123456u);
    EXPECT_EQ(old.lineSize, 9);
}

TEST_F(RemovedLayers, ALayerThatStandsKeepsItsCodeFromImports) {
    MakeTwoLayers();
    ASSERT_TRUE(window->Files().Import({RoadsFile()}, {}).Ok());
    EXPECT_GE(Store().FindLayDef("roads~2"), 0);
}

TEST_F(RemovedLayers, AnArchiveIsSavedWithoutThem) {
    MakeTwoLayers();
    Map().Call("OrvSetSubLayerEx", {"roads", "sub", 1, true, 0, 1, 0, 0, 0, 1, 1});
    Remove("roads");
    for (const char* version : {"1.00", "1.10"}) {
        for (const char* name : {"map.Ovb", "map.Ovt"}) {
            const bool neverRead = QString(name).endsWith("t") && QString(version) == "1.00";
            EXPECT_FALSE(window->Files().Losses(File(name), version).join(' ').contains("sub layers"));
            const SavedArchive saved = window->Files().Save(File(name), version);
            ASSERT_TRUE(saved.saved) << saved.error;
            EXPECT_EQ(saved.counts.layers, 1);
            if (neverRead) continue;
            CDigMem look;
            look.Init();
            ASSERT_TRUE(OpenArchive(look, File(name).toStdString()).opened) << name << version;
            EXPECT_EQ(look.LayerCnt(), 1);
            EXPECT_EQ(look.FindLayDef("roads"), -1);
            EXPECT_GE(look.FindBlock("trees", 1).block, 0);
        }
    }
    window->History().Undo();
    ASSERT_TRUE(window->Files().Save(File("map.Ovb"), "").saved);
    CDigMem look;
    look.Init();
    ASSERT_TRUE(OpenArchive(look, File("map.Ovb").toStdString()).opened);
    EXPECT_GE(look.FindLayDef("roads"), 0) << "taken back, it is a layer as any";
}

TEST_F(RemovedLayers, ALayerThatCameWithoutDataIsSavedAgain) {
    MakeTwoLayers();
    ASSERT_TRUE(Store().MakeLayer("plans", kLayLine));
    ASSERT_TRUE(SaveArchive(Store(), File("map.Ovb").toStdString(), "").saved);
    ASSERT_TRUE(window->Load({File("map.Ovb")}, {}).Ok());
    ASSERT_GE(Store().FindLayDef("plans"), 0);
    ASSERT_TRUE(window->Files().Save(File("again.Ovb"), "").saved);
    CDigMem look;
    look.Init();
    ASSERT_TRUE(OpenArchive(look, File("again.Ovb").toStdString()).opened);
    EXPECT_GE(look.FindLayDef("plans"), 0);
}

TEST_F(RemovedLayers, AnExportOfTheOneThatIsLeftIsAFileAndNoFolder) {
    MakeTwoLayers();
    Remove("roads");
    WhenAskedForFile(File("left.shp"));
    WhenAsked([](QDialog& dialog) { dialog.accept(); });  // for the plane system, which nobody knows
    Press(Qt::CTRL | Qt::Key_E);                          // words of layers without items would fail the walk
    EXPECT_TRUE(QFileInfo(File("left.shp")).isFile());
    EXPECT_FALSE(QFileInfo(File("left")).isDir());
}

TEST_F(RemovedLayers, NoListHasThem) {
    MakeTwoLayers();
    Remove("roads");
    window->Finder().ShowLayers();
    for (const QComboBox* box : window->Finder().findChildren<QComboBox*>()) {
        EXPECT_EQ(box->findText("roads"), -1);
        EXPECT_GE(box->findText("trees"), 0);
    }
    window->RefreshNow();
    ASSERT_EQ(window->Layers().List().topLevelItemCount(), 1);
    EXPECT_TRUE(window->Layers().List().topLevelItem(0)->text(0).startsWith("trees"));
}

TEST_F(RemovedLayers, AnImportThatMayNotMixSaysWhatIsInTheWay) {
    MakeTwoLayers();
    ASSERT_EQ(window->Files().WriteExchange(File("map.txt"), "1.01"), "");
    WhenAskedForFile(File("map.txt"), "Exchange text (*.txt)");
    WhenTold(QMessageBox::Ok);
    Press(Qt::CTRL | Qt::Key_I);
    EXPECT_TRUE(said.contains("cannot be mixed")) << said.toStdString();
    EXPECT_TRUE(said.contains("roads")) << said.toStdString();
    EXPECT_FALSE(said.contains("damaged")) << said.toStdString();
    EXPECT_FALSE(said.contains("backup")) << said.toStdString();
}

TEST_F(RemovedLayers, AnImportThatFailsInItsMiddleLeavesNothing) {
    MakeTwoLayers();
    ASSERT_EQ(window->Files().WriteExchange(File("whole.txt"), "1.01"), "");
    QFile whole(File("whole.txt"));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    QByteArray text = whole.readAll();
    text.replace("roads", "other").replace("trees", "third");
    // The same blocks once more are the fault in its middle.
    WriteBytes(File("broken.txt"), text + text.mid(text.indexOf('\n') + 1));
    const std::int32_t layers = Store().GetDigIndexCnt();
    const ImportResult result = window->Files().Import({File("broken.txt")}, {});
    EXPECT_FALSE(result.Ok());
    EXPECT_EQ(Store().GetDigIndexCnt(), layers);
    EXPECT_EQ(window->History().Stack().count(), 0);
    EXPECT_FALSE(window->isWindowModified());
}

}  // namespace
}  // namespace orvane
