// An import beside a map: what the map has stays where it is and as the operator left it, and goes back to that.
#include "hosts/viewer/block_copy.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class ImportBeside : public Walk {
protected:
    void WriteBytes(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    DigBlock& Road() { return Store().MutableBlock(Store().FindBlock("ROAD", 1).block); }
    const LayerDef& Layer(const char* code) { return Store().Layer(Store().FindLayDef(code)); }
    /// An archive with one line of ROAD, group 1, and the same map with another origin of that group.
    void MakeTwoOrigins(double x, const char* path) {
        MakeLayer("ROAD", kLayLine);
        AddFeature("ROAD", 1, {10.0, 20.0}, {30.0, 40.0});
        Road().GX = 100;
        Road().path = path;
        ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
        Road().GX = x;
        Road().path = "mine";
        AddFeature("ROAD", 2, {50.0, 60.0}, {70.0, 80.0});
    }
    void ExpectUnmoved(double x) {
        EXPECT_EQ(Road().GX, x);
        EXPECT_EQ(Road().GY, 0);
        EXPECT_EQ(Road().path, "mine");
        ASSERT_GE(Road().datCnt, 2);
        EXPECT_EQ(Road().dats[1].pnts[0].x, 50);
    }
};

TEST_F(ImportBeside, AnArchiveWithAnotherOriginIsRefusedAndMovesNothing) {
    MakeTwoOrigins(500.25, "theirs");
    const ImportResult result = window->Files().Import({File("a.Ovb")}, {});
    EXPECT_EQ(result.fault, ImportFault::Shared);
    EXPECT_NE(result.error.find("layer ROAD, group 1"), std::string::npos) << result.error;
    ExpectUnmoved(500.25);
    EXPECT_EQ(Road().datCnt, 2);
    WhenAskedForFile(File("a.Ovb"));
    WhenTold(QMessageBox::Ok);
    Choose("Import");
    EXPECT_TRUE(said.contains("layer ROAD, group 1 has another origin")) << said.toStdString();
    EXPECT_TRUE(said.contains("Remove that layer")) << said.toStdString();
}

TEST_F(ImportBeside, AnArchiveThatHasLostItsOriginIsRefusedToo) {
    MakeTwoOrigins(100, "");
    const ImportResult result = window->Files().Import({File("a.Ovb")}, {});
    EXPECT_EQ(result.fault, ImportFault::Shared) << "its line would lie 100 units away";
    ExpectUnmoved(100);
    EXPECT_EQ(Road().datCnt, 2);
}

TEST_F(ImportBeside, AnArchiveOfTheSameOriginAddsItsFeaturesAndLeavesThePath) {
    MakeTwoOrigins(100, "theirs");
    ASSERT_TRUE(window->Files().Import({File("a.Ovb")}, {}).Ok());
    ExpectUnmoved(100);
    EXPECT_EQ(Road().datCnt, 3);
    window->History().Undo();
    ExpectUnmoved(100);
    EXPECT_EQ(Road().datCnt, 2);
}

TEST_F(ImportBeside, AnArchiveThatCanBeReadInPartBringsNothing) {
    MakeLayer("ROAD", kLayLine);
    for (int n = 1; n < 200; ++n) AddFeature("ROAD", n, {10.0 * n, 20.0}, {30.0, 40.0});
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    QFile file(File("a.Ovb"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(file.size() / 2));
    file.close();
    window->Files().New();
    MakeLayer("TREE", kLayPoint);
    AddFeature("TREE", 1, {1.0}, {2.0});
    EXPECT_EQ(window->Files().Import({File("a.Ovb")}, {}).fault, ImportFault::Unreadable);
    EXPECT_EQ(Store().FindBlock("ROAD", 1).block, -1);
}

TEST_F(ImportBeside, ALayerThatTheOperatorLockedStaysSo) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 20.0}, {30.0, 40.0});
    ASSERT_TRUE(Map().Call("OrvAddLayer", {"ROAD", 2, kLayLine, 5}).toBool());
    ASSERT_TRUE(
        Map()
            .Call("OrvAddDatEx", {"ROAD", 2, 1, 0, QVariantList{1.0, 2.0}, QVariantList{1.0, 2.0}, QVariantList{0.0, 0.0}})
            .toBool());
    MakeLayer("TREE", kLayPoint);
    AddFeature("TREE", 1, {1.0}, {2.0});
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    window->Files().New();
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 20.0}, {30.0, 40.0});
    Map().Call("OrvSetLayActMode", {"ROAD", false});
    Map().Call("OrvSetLayEditFlg", {"ROAD", false});
    const auto expectLocked = [&](const char* when) {
        EXPECT_EQ(Layer("ROAD").actFlg, 0) << when;
        EXPECT_EQ(Layer("ROAD").editFlg, 0) << when;
    };
    ASSERT_TRUE(window->Files().Import({File("a.Ovb")}, {}).Ok());
    EXPECT_GE(Store().FindBlock("ROAD", 2).block, 0);
    expectLocked("after the import");
    EXPECT_EQ(Layer("TREE").editFlg, 1) << "what came as a layer of its own can be edited";
    window->History().Undo();
    EXPECT_LT(Store().FindBlock("ROAD", 2).block, 0);
    expectLocked("after undo");
    window->History().Redo();
    expectLocked("after redo");
}

class EmptyRecord : public ImportBeside {
protected:
    /// A layer without data, as a file may bring it, and its looks.
    void MakeRecord(const char* code) {
        MakeLayer(code, kLayPoint);
        Map().Call("OrvSetLayColor", {code, 0x123456});
        Store().SetLayerName(code, "old name");
        Map().Call("OrvSetLayEditFlg", {code, false});
        LayerDef& layer = Store().MutableLayer(Store().FindLayDef(code));
        layer.pntType = 4;
        layer.pgnType = 6;
        Map().Call("OrvDelLayGrpDat", {code, 1});
        window->History().Forget();
    }
    void ExpectRecord(const char* code) {
        EXPECT_EQ(Layer(code).layType, kLayPoint);
        EXPECT_EQ(Layer(code).color, 0x123456u);
        EXPECT_EQ(Layer(code).layerName.View(), "old name");
        EXPECT_EQ(Layer(code).editFlg, 0);
        EXPECT_EQ(Layer(code).pntType, 4);
        EXPECT_EQ(Layer(code).pgnType, 6);
    }
};

TEST_F(EmptyRecord, ANewLayerGivesTheRecordBackThatItTookOver) {
    MakeRecord("ROAD");
    ASSERT_TRUE(window->Layers().MakeLayer("ROAD", kLayPolygon, 1));
    const LayerState made = StateOf(Layer("ROAD"));
    EXPECT_EQ(Layer("ROAD").layType, kLayPolygon);
    for (int round = 0; round < 2; ++round) {
        window->History().Undo();
        EXPECT_LT(Store().FindBlock("ROAD", 1).block, 0);
        ExpectRecord("ROAD");
        window->History().Redo();
        EXPECT_GE(Store().FindBlock("ROAD", 1).block, 0);
        EXPECT_EQ(Layer("ROAD").layType, kLayPolygon);
        EXPECT_TRUE(StateOf(Layer("ROAD")) == made);
    }
    EXPECT_EQ(window->History().Stack().count(), 1) << "it is one step";
}

TEST_F(EmptyRecord, AnImportGivesTheRecordBackThatItTookOver) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {10.0, 20.0}, {30.0, 40.0});
    Map().Call("OrvSetLayColor", {"ROAD", 0x00FF00});
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    ASSERT_EQ(window->Files().WriteExchange(File("a.txt"), "1.01"), "");
    for (const char* name : {"a.Ovb", "a.txt"}) {
        window->Files().New();
        MakeRecord("ROAD");
        MakeLayer("TREE", kLayPoint);
        AddFeature("TREE", 1, {1.0}, {2.0});
        ASSERT_TRUE(window->Files().Import({File(name)}, {}).Ok()) << name;
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(Layer("ROAD").layType, kLayLine) << name;
            EXPECT_EQ(Layer("ROAD").color, 0x00FF00u) << name;
            window->History().Undo();
            ExpectRecord("ROAD");
            window->History().Redo();
        }
    }
}

const char* const kGood = "FH,533945,x,2,1,y,y,0,0,10000,10000,z\r\nTREE,1,100,200\r\n\x1A";
const char* const kContradicting = "FH,533945,x,3,1,y,y,0,0,10000,10000,z\r\nROAD,0,1,2\r\n100,200\r\n300.5,400\r\n\x1A";

class FaultyOlderFiles : public ImportBeside {
protected:
    FaultyOlderFiles() {
        QDir(folder.path()).mkdir("older");
        WriteBytes(File("older/trees.pnt"), kGood);
        WriteBytes(File("older/bad.arc"), "no line");
        WriteBytes(File("older/worse.ARC"), kContradicting);
        MakeLayer("MINE", kLayPoint);
        AddFeature("MINE", 1, {1.0}, {2.0});
    }
    /// A box of the control's own would be a dialog that nobody expects.
    void ExpectNamed() {
        EXPECT_TRUE(said.contains("bad.arc cannot be read")) << said.toStdString();
        EXPECT_TRUE(said.contains("worse.ARC cannot be read: its data contradict each other")) << said.toStdString();
        EXPECT_FALSE(said.contains("trees.pnt")) << said.toStdString();
    }
};

TEST_F(FaultyOlderFiles, AFolderOpensWithWhatCanBeReadAndSaysWhichFilesCannot) {
    window->History().Forget();
    WhenTold(QMessageBox::Ok);
    window->Files().Open({File("older")}, {});
    ExpectNamed();
    EXPECT_GE(Store().FindLayDef("TREE"), 0);
    EXPECT_LT(Store().FindLayDef("MINE"), 0);
}

TEST_F(FaultyOlderFiles, SeveralFilesOpenInTheSameWay) {
    window->History().Forget();
    WhenTold(QMessageBox::Ok);
    window->Files().Open({File("older/bad.arc"), File("older/worse.ARC"), File("older/trees.pnt")}, {});
    ExpectNamed();
    EXPECT_GE(Store().FindLayDef("TREE"), 0);
}

TEST_F(FaultyOlderFiles, AnImportBringsNothingAndSaysWhichFilesAreToBlame) {
    WhenAskedForFile("\"" + File("older/bad.arc") + "\" \"" + File("older/worse.ARC") + "\" \"" + File("older/trees.pnt") + "\"");
    WhenTold(QMessageBox::Ok);
    Choose("Import");
    ExpectNamed();
    EXPECT_TRUE(said.contains("nothing of it was imported")) << said.toStdString();
    EXPECT_LT(Store().FindLayDef("TREE"), 0);
    EXPECT_EQ(window->Files().Import({File("older")}, {}).fault, ImportFault::Unreadable);
    EXPECT_LT(Store().FindLayDef("TREE"), 0);
    QFile::remove(File("older/bad.arc"));
    QFile::remove(File("older/worse.ARC"));
    EXPECT_TRUE(window->Files().Import({File("older")}, {}).Ok());
    EXPECT_GE(Store().FindLayDef("TREE"), 0);
    EXPECT_EQ(BlockOf("MINE").datCnt, 1);
}

TEST_F(FaultyOlderFiles, OfManyThatFailSomeAreNamedAndTheOthersCounted) {
    for (int n = 0; n < 30; ++n) WriteBytes(File("older/f%1.pnt").replace("%1", QString::number(n)), "no line");
    const ImportResult result = window->Load({File("older")}, {});
    ASSERT_TRUE(result.Ok());
    ASSERT_EQ(result.summary.notes.size(), 21u);
    EXPECT_TRUE(result.summary.notes.back().starts_with("error: 12 more file")) << result.summary.notes.back();
}

}  // namespace
}  // namespace orvane
