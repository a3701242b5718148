// What a slip, a broken file or a cancelled read must never cost: files on the disk and the map that is there.
#include <QPrinter>

#include "files/exchange_format.h"
#include "hosts/viewer/print_dialog.h"
#include "hosts/viewer/work_progress.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class CarefulFiles : public Walk {
protected:
    ~CarefulFiles() override { WorkProgress::SetPatience(700); }

    void WriteBytes(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray BytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not there");
    }
    /// As the rig's, but the key comes when the answer is over: the dialog may ask a question of its own, which is answered next.
    void WhenAskedForFile(const QString& path) {
        WhenAsked([path](QDialog& dialog) {
            auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(name, nullptr) << "another dialog than one for files";
            name->setText(path);
            emit name->textEdited(path);  // the file that the dialog offers is no longer chosen
            QMetaObject::invokeMethod(
                name, [name] { QTest::keyClick(name, Qt::Key_Return); }, Qt::QueuedConnection);
        });
    }
    /// All that the map holds, a line a block.
    std::vector<std::pair<ItemKey, std::vector<ItemCopy>>> Content() {
        std::vector<std::pair<ItemKey, std::vector<ItemCopy>>> content;
        for (const DigIndex& entry : Store().Index()) {
            const DigBlock& block = Store().Block(entry.block);
            auto& line = content.emplace_back(ItemKey{std::string(block.code.View()), block.meshNo, 0}, std::vector<ItemCopy>());
            for (const DigDat& dat : block.dats) line.second.push_back(CopyOf(dat));
        }
        return content;
    }
    void MakeTwoLayers() {
        MakeLayer("ROAD", kLayLine);
        MakeLayer("TREE", kLayPoint);
        AddFeature("ROAD", 1, {-9000.0, -8500.0}, {-30000.0, -30200.0});
        AddFeature("TREE", 1, {-9100.0}, {-30100.0});
        Fit();
    }
    void MakeMany(const char* code, int count) {
        MakeLayer(code, kLayPoint);
        for (int n = 1; n <= count; ++n) AddFeature(code, n, {n * 3.0}, {n * 2.0});
    }
    /// Cancels whatever work shows.
    void CancelAllWork() {
        WorkProgress::SetPatience(0);
        QObject::connect(&cancel_, &QTimer::timeout, [this] {
            for (QProgressDialog* dialog : window->findChildren<QProgressDialog*>()) {
                if (dialog->isVisible()) dialog->cancel();
            }
        });
        cancel_.start(0);
    }
    void StopCancelling() { cancel_.stop(); }
    static void Refuse(QDialog& dialog) { dialog.reject(); }

private:
    QTimer cancel_;
};

TEST_F(CarefulFiles, AFolderThatAnExportWouldReplaceIsAskedForFirst) {
    MakeTwoLayers();
    ASSERT_TRUE(QDir(folder.path()).mkdir("roads"));
    WriteBytes(File("roads/old.shp"), "old");
    WhenAskedForFile(File("roads.shp"));
    WhenTold(QMessageBox::No);
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_TRUE(said.contains("roads") && said.contains("all that is in it")) << said.toStdString();
    EXPECT_EQ(BytesOf(File("roads/old.shp")), "old");
    WhenAskedForFile(File("roads.shp"));
    WhenTold(QMessageBox::Yes);
    WhenAsked([](QDialog& dialog) { dialog.accept(); });  // for the plane system, which nobody knows
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_FALSE(QFileInfo::exists(File("roads/old.shp")));
    EXPECT_TRUE(QFileInfo::exists(File("roads/ROAD.shp")));
}

TEST_F(CarefulFiles, WhatBelongsToAFileOfTheNameIsAskedForToo) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {0.0, 5.0}, {0.0, 7.0});
    WriteBytes(File("roads.dbf"), "a table of somebody");
    WhenAskedForFile(File("roads.shp"));
    WhenTold(QMessageBox::No);
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_EQ(BytesOf(File("roads.dbf")), "a table of somebody");
}

TEST_F(CarefulFiles, AFolderWithTheMapsOwnSourcesIsNeverReplaced) {
    MakeTwoLayers();
    ExportOptions out;
    out.path = File("roads").toStdString();
    out.format = ExportFormat::Shapefile;
    ASSERT_TRUE(window->Files().Export(out).Ok());
    ImportOptions options;
    options.assumeEpsg = 6677;
    ASSERT_TRUE(window->Load({File("roads/ROAD.shp"), File("roads/TREE.shp")}, options).Ok());
    const QByteArray before = BytesOf(File("roads/TREE.shp"));
    WhenAskedForFile(File("roads.shp"));
    WhenTold(QMessageBox::Yes);
    WhenTold(QMessageBox::Ok);
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_TRUE(said.contains("was read from")) << said.toStdString();
    EXPECT_EQ(BytesOf(File("roads/TREE.shp")), before);
}

TEST_F(CarefulFiles, AllFourFormatsAreWrittenAndReadAgain) {
    ASSERT_TRUE(window->Load({Sample("tokyo.geojson")}, {}).Ok());
    const auto itemCnt = [](const CDigMem& store) {
        std::int64_t count = 0;
        for (std::int32_t i = 0; i < store.BlockCnt(); ++i) count += store.Block(i).datCnt;
        return count;
    };
    const bool isFolder = Store().LayerCnt() > 1;
    for (const QString ending : {"gpkg", "geojson", "shp", "fgb"}) {
        WhenAskedForFile(File("map.") + ending);
        Press(Qt::CTRL | Qt::Key_E);
        QStringList files;
        if (isFolder && ending != "gpkg") {
            for (const QFileInfo& file : QDir(File("map")).entryInfoList({"*." + ending})) files << file.filePath();
            EXPECT_EQ(files.size(), Store().LayerCnt()) << ending.toStdString();
        } else {
            files << File("map.") + ending;
        }
        MainWindow reader;
        const ImportResult result = reader.Load(files, {});
        ASSERT_TRUE(result.Ok()) << ending.toStdString() << ' ' << result.error;
        EXPECT_GT(itemCnt(Store()), 0);
        EXPECT_EQ(itemCnt(reader.Map().Control().store), itemCnt(Store())) << ending.toStdString();
        QDir(File("map")).removeRecursively();
    }
}

TEST_F(CarefulFiles, ANameThatGetsItsEndingIsAskedForBeforeItIsReplaced) {
    MakeTwoLayers();
    WriteBytes(File("view.png"), "old");
    WriteBytes(File("view.v2.png"), "old");
    WriteBytes(File("map.txt"), "old");
    WhenAskedForFile(File("view"));
    WhenTold(QMessageBox::No);
    WhenAsked(Refuse);  // the dialog stays
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    EXPECT_EQ(BytesOf(File("view.png")), "old");
    WhenAskedForFile(File("view.v2"));
    WhenTold(QMessageBox::No);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    EXPECT_EQ(BytesOf(File("view.v2.png")), "old");
    WhenAskedForFile(File("map"));
    WhenTold(QMessageBox::No);
    WhenAsked(Refuse);
    Press(Qt::CTRL | Qt::Key_T);
    EXPECT_EQ(BytesOf(File("map.txt")), "old");
}

TEST_F(CarefulFiles, PagesGetTheirEndings) {
    MakeTwoLayers();
    for (const char* ending : {"pdf", "png"}) {
        WhenAsked([ending](QDialog& dialog) {
            for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
                const QString text = QString(button->text()).remove('&').remove(QStringLiteral("…"));
                if (text == QString(ending).toUpper()) QMetaObject::invokeMethod(button, "click", Qt::QueuedConnection);
            }
        });
        WhenAskedForFile(File("page"));
        WhenAsked(Refuse);
        Press(Qt::CTRL | Qt::Key_P);
        EXPECT_TRUE(QFileInfo::exists(File("page.") + ending)) << ending;
    }
    EXPECT_FALSE(QFileInfo::exists(File("page")));
}

TEST_F(CarefulFiles, TheOtherFormOfAnArchiveOfTheNameIsAskedFor) {
    MakeTwoLayers();
    ASSERT_TRUE(window->Files().Save(File("map.Ovt"), "").saved);
    const QByteArray text = BytesOf(File("map.Ovt"));
    WhenAskedForFile(File("map.Ovb"));
    WhenTold(QMessageBox::No);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    EXPECT_EQ(BytesOf(File("map.Ovt")), text);
    EXPECT_FALSE(QFileInfo::exists(File("map.Ovb")));
}

TEST_F(CarefulFiles, WhatCannotBeOpenedLeavesTheMapThatIsThere) {
    MakeTwoLayers();
    const auto before = Content();
    const QByteArray magic(kExchangeMagic.data(), static_cast<qsizetype>(kExchangeMagic.size()));
    WriteBytes(File("bad.txt"), magic + QByteArray(kExchangeVersionNamed.data()) + "\r\nnothing of a map\r\n");
    WriteBytes(File("bad.arc"), "no line");
    ASSERT_TRUE(QDir(folder.path()).mkdir("older"));
    WriteBytes(File("older/bad.pnt"), "no line");
    for (const char* name : {"bad.txt", "bad.arc", "older"}) {
        EXPECT_EQ(window->Load({File(name)}, {}).fault, ImportFault::Unreadable) << name;
        EXPECT_TRUE(Content() == before) << name;
        EXPECT_EQ(window->Files().Import({File(name)}, {}).fault, ImportFault::Unreadable) << name;
        EXPECT_TRUE(Content() == before) << name;
    }
}

TEST_F(CarefulFiles, AReadThatIsCancelledLeavesTheMapThatIsThere) {
    MakeMany("MANY", 5000);
    ASSERT_TRUE(window->Files().Save(File("many.Ovb"), "").saved);
    ASSERT_EQ(window->Files().WriteExchange(File("many.txt"), "1.01"), "");
    QStringList older;
    for (int n = 0; n < 8; ++n) {
        older << File("p%1.pnt").replace("%1", QString::number(n));
        WriteBytes(older.back(), "FH,53394" + QByteArray::number(n) + ",x,2,1,y,y,0,0,10000,10000,z\r\nPNT,1,100,200\r\n\x1A");
    }
    window->Files().New();
    MakeTwoLayers();
    const auto before = Content();
    const std::int32_t layers = Store().LayerCnt();
    CancelAllWork();
    for (const QStringList& sources : {QStringList{File("many.Ovb")}, QStringList{File("many.txt")}, older}) {
        EXPECT_EQ(window->Files().Import(sources, {}).fault, ImportFault::Cancelled) << sources.front().toStdString();
        EXPECT_TRUE(Content() == before);
        EXPECT_EQ(Store().LayerCnt(), layers) << "not even a layer came";
        EXPECT_EQ(window->Load(sources, {}).fault, ImportFault::Cancelled) << sources.front().toStdString();
        EXPECT_TRUE(Content() == before);
    }
    StopCancelling();
    ASSERT_TRUE(window->Files().Import(older, {}).Ok());
    EXPECT_EQ(Content().size(), before.size() + 8);
}

TEST_F(CarefulFiles, OlderFilesBesideAMapLeaveItsAreasWhereTheyAre) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 100);
    const std::int32_t key = Store().Layer(0).layIndex;
    WriteBytes(File("trees.pnt"), "FH,533945,x,2,1,y,y,0,0,10000,10000,z\r\nPNT,1,100,200\r\n\x1A");
    ASSERT_TRUE(window->Files().Import({File("trees.pnt")}, {}).Ok());
    EXPECT_EQ(Store().Layer(0).layIndex, key);
}

TEST_F(CarefulFiles, AnExchangeTextBesideAMapLeavesTheLooksOfItsLayers) {
    MakeTwoLayers();
    ASSERT_EQ(window->Files().WriteExchange(File("map.txt"), "1.01"), "");
    // The same layers with other groups.
    QByteArray text = BytesOf(File("map.txt"));
    window->Files().New();
    ASSERT_TRUE(Map().Call("OrvAddLayer", {"ROAD", 7, static_cast<int>(kLayLine), 5}).toBool());
    Map().Call("OrvSetLayColor", {"ROAD", 0x123456});
    WriteBytes(File("map.txt"), text);
    ASSERT_TRUE(window->Files().Import({File("map.txt")}, {}).Ok());
    EXPECT_EQ(Store().Layer(Store().FindLayDef("ROAD")).color, 0x123456u);
    EXPECT_GE(Store().FindBlock("ROAD", 1).block, 0);
}

TEST_F(CarefulFiles, AnArchiveOfTheOldVersionIsSavedInItsVersion) {
    MakeTwoLayers();
    ASSERT_TRUE(window->Files().Save(File("old.Ovb"), "1.00").saved);
    ASSERT_TRUE(window->Load({File("old.Ovb")}, {}).Ok());
    window->History().Change("deleting", Deletion(Store(), {"TREE", 1, 1}));
    AddFeature("TREE", 2, {-9000.0}, {-30000.0});
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_FALSE(window->isWindowModified());
    CDigMem look;
    look.Init();
    EXPECT_EQ(OpenArchive(look, File("old.Ovb").toStdString()).report.version, "1.00");
}

TEST_F(CarefulFiles, WhatAnExchangeTextDoesNotKeepIsSaidBeforeItIsWritten) {
    MakeTwoLayers();
    Map().Call("OrvSetLayColor2", {"ROAD", 0x123456});
    WhenAskedForFile(File("map.txt"));
    WhenTold(QMessageBox::Cancel);
    Press(Qt::CTRL | Qt::Key_T);
    EXPECT_TRUE(said.contains("second colours")) << said.toStdString();
    EXPECT_FALSE(QFileInfo::exists(File("map.txt")));
    WhenAskedForFile(File("map.txt"));
    WhenTold(QMessageBox::Save);
    Press(Qt::CTRL | Qt::Key_T);
    EXPECT_TRUE(QFileInfo::exists(File("map.txt")));
}

}  // namespace
}  // namespace orvane
