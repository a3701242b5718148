// Files that are not the map's alone: other programs save them, links lead to them, they vanish.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

class SharedArchive : public Walk {
protected:
    void MakeMap() {
        MakeLayer("roads", kLayLine);
        AddFeature("roads", 1, {0.0, 100.0}, {0.0, 100.0});
        Fit();
    }
    /// Another viewer opens the archive, gives it one feature more and saves it.
    void SaveByAnother(const QString& path) {
        MainWindow other;
        ASSERT_TRUE(other.Load({path}, {}).Ok());
        auto* map = static_cast<OrvaneWidget*>(other.centralWidget());
        ASSERT_TRUE(
            map->Call("OrvAddDatEx", {"roads", 1, 99, 0, QVariantList{1.0, 5.0}, QVariantList{1.0, 5.0}, QVariantList{0.0, 0.0}})
                .toBool());
        ASSERT_TRUE(other.Files().Save(path, "").saved);
    }
    std::vector<int> NumbersIn(const QString& path) {
        CDigMem look;
        look.Init();
        EXPECT_TRUE(OpenArchive(look, path.toStdString()).opened);
        std::vector<int> numbers;
        const std::int32_t pos = look.FindBlock("roads", 1).block;
        if (pos < 0) return numbers;
        for (const DigDat& dat : look.Block(pos).dats) numbers.push_back(dat.datID);
        return numbers;
    }
    std::string Path(const char* name) { return File(name).toStdString(); }
    std::string TextOf(const char* name) {
        std::ostringstream text;
        text << std::ifstream(Path(name), std::ios::binary).rdbuf();
        return text.str();
    }
    QStringList Names() { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
};

TEST_F(SharedArchive, WhatAnotherSavedIsNotSavedOverWithoutAWord) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    SaveByAnother(File("a.Ovb"));
    AddFeature("roads", 7, {30.0, 40.0}, {10.0, 20.0});
    WhenTold(QMessageBox::Cancel);
    EXPECT_FALSE(window->Files().AskSave());
    EXPECT_TRUE(said.contains("a.Ovb")) << said.toStdString();
    EXPECT_EQ(NumbersIn(File("a.Ovb")), (std::vector{1, 99}));
    WhenTold(QMessageBox::SaveAll);
    WhenAskedForFile(File("mine.Ovb"));
    EXPECT_TRUE(window->Files().AskSave());
    EXPECT_EQ(NumbersIn(File("a.Ovb")), (std::vector{1, 99}));
    EXPECT_EQ(NumbersIn(File("mine.Ovb")), (std::vector{1, 7}));
}

TEST_F(SharedArchive, TheOperatorMaySaveOverIt) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    ASSERT_TRUE(window->Load({File("a.Ovb")}, {}).Ok());
    SaveByAnother(File("a.Ovb"));
    WhenTold(QMessageBox::Save);
    EXPECT_TRUE(window->Files().AskSave());
    EXPECT_EQ(NumbersIn(File("a.Ovb")), (std::vector{1}));
}

TEST_F(SharedArchive, TheMapsOwnSavesAskNothing) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    EXPECT_TRUE(window->Files().AskSave());
    ASSERT_TRUE(window->Load({File("a.Ovb")}, {}).Ok());
    EXPECT_TRUE(window->Files().AskSave());
    EXPECT_TRUE(window->Files().AskSave());
    for (const char* ending : {"a.Ovb", "a.Ovi", "a.Ovl", "a.Ovm"}) QFile::remove(File(ending));
    EXPECT_TRUE(window->Files().AskSave()) << "what is gone cannot be lost";
}

TEST_F(SharedArchive, LinksStayAndWhatTheyLeadToIsSaved) {
    MakeMap();
    QDir(folder.path()).mkdir("real");
    ASSERT_TRUE(window->Files().Save(File("real/a.Ovb"), "").saved);
    const QStringList real = QDir(File("real")).entryList(QDir::Files);
    for (const QString& name : real) {
        fs::create_symlink(fs::path("real") / name.toStdString(), folder.filePath(name).toStdString());
    }
    ASSERT_TRUE(window->Load({File("a.Ovb")}, {}).Ok());
    AddFeature("roads", 2, {30.0, 40.0}, {10.0, 20.0});
    EXPECT_TRUE(window->Files().AskSave());
    EXPECT_TRUE(window->Files().AskSave()) << "it knows its own save again";
    for (const QString& name : real) EXPECT_TRUE(QFileInfo(folder.filePath(name)).isSymLink()) << name.toStdString();
    EXPECT_EQ(NumbersIn(File("real/a.Ovb")), (std::vector{1, 2}));
    EXPECT_EQ(NumbersIn(File("a.Ovb")), (std::vector{1, 2}));
    EXPECT_EQ(QDir(File("real")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), real);
}

TEST_F(SharedArchive, LinksIntoDifferentFoldersAreRefusedInWords) {
    MakeMap();
    QDir(folder.path()).mkdir("real");
    QDir(folder.path()).mkdir("other");
    ASSERT_TRUE(window->Files().Save(File("real/a.Ovb"), "").saved);
    ASSERT_TRUE(window->Files().Save(File("other/a.Ovb"), "").saved);
    for (const QString& name : QDir(File("real")).entryList(QDir::Files)) {
        const fs::path to = name.endsWith(".Ovi") ? "other" : "real";
        fs::create_symlink(to / name.toStdString(), folder.filePath(name).toStdString());
    }
    AddFeature("roads", 2, {30.0, 40.0}, {10.0, 20.0});
    const SavedArchive saved = window->Files().Save(File("a.Ovb"), "");
    EXPECT_FALSE(saved.saved);
    EXPECT_NE(saved.error.find("links"), std::string::npos) << saved.error;
    EXPECT_TRUE(QFileInfo(File("a.Ovi")).isSymLink());
    EXPECT_EQ(NumbersIn(File("real/a.Ovb")), (std::vector{1}));
}

TEST_F(SharedArchive, AnExchangeTextTakesThePlaceOfNoArchivesFile) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    for (const char* name : {"a.Ovb", "a.ovl", "a.OVI", "a.Ovt", "b.Ovm"}) {
        EXPECT_NE(window->Files().WriteExchange(File(name), "1.01"), "") << name;
    }
    EXPECT_EQ(NumbersIn(File("a.Ovb")), (std::vector{1}));
    EXPECT_FALSE(QFileInfo::exists(File("b.Ovm")));
    WhenAskedForFile(File("c.Ovb"));
    WhenTold(QMessageBox::Ok);
    Choose("Write exchange text");
    EXPECT_TRUE(said.contains("archive")) << said.toStdString();
    EXPECT_FALSE(QFileInfo::exists(File("c.Ovb")));
}

TEST_F(SharedArchive, AnExchangeTextIsWrittenThroughALinkAndOverNoOtherFile) {
    MakeMap();
    std::ofstream(Path("real.txt")) << "old";
    std::ofstream(Path("real.txt.part")) << "mine";
    std::ofstream(Path("real.txt.part1")) << "mine too";
    std::ofstream(Path("x.txt.part")) << "and this";
    fs::create_symlink("real.txt", Path("x.txt"));
    const QStringList before = Names();
    EXPECT_EQ(window->Files().WriteExchange(File("x.txt"), "1.01"), "");
    EXPECT_TRUE(fs::is_symlink(Path("x.txt")));
    EXPECT_NE(TextOf("real.txt").find("roads"), std::string::npos);
    EXPECT_EQ(TextOf("real.txt.part"), "mine");
    EXPECT_EQ(TextOf("real.txt.part1"), "mine too");
    EXPECT_EQ(TextOf("x.txt.part"), "and this");
    EXPECT_EQ(Names(), before);
}

TEST_F(SharedArchive, AnExchangeTextGoesWhereALinkLeadsThoughNothingIsThereYet) {
    MakeMap();
    fs::create_directory(Path("real"));
    fs::create_symlink("real/new.txt", Path("x.txt"));
    EXPECT_EQ(window->Files().WriteExchange(File("x.txt"), "1.01"), "");
    EXPECT_TRUE(fs::is_symlink(Path("x.txt")));
    EXPECT_NE(TextOf("real/new.txt").find("roads"), std::string::npos);
    fs::create_symlink("real/new.Ovb", Path("y.txt"));
    EXPECT_NE(window->Files().WriteExchange(File("y.txt"), "1.01"), "") << "an archive's file would stand there";
    EXPECT_FALSE(QFileInfo::exists(File("real/new.Ovb")));
}

TEST_F(SharedArchive, AnExchangeTextIsNotWrittenWhereLinksLeadRoundInACircle) {
    MakeMap();
    fs::create_symlink("y.txt", Path("x.txt"));
    fs::create_symlink("x.txt", Path("y.txt"));
    EXPECT_TRUE(window->Files().WriteExchange(File("x.txt"), "1.01").contains("link"));
    EXPECT_TRUE(fs::is_symlink(Path("x.txt")));
}

TEST_F(SharedArchive, AnExchangeTextWithADotInItsNameGetsItsEnding) {
    MakeMap();
    WhenAskedForFile(File("map.v2"));
    Choose("Write exchange text");
    EXPECT_EQ(Names(), QStringList{"map.v2.txt"});
}

TEST_F(SharedArchive, AChangeOfLanguageAsksWhereTheFileHasVanished) {
    ASSERT_TRUE(window->Load({Sample("tokyo.geojson")}, {}).Ok());
    QAction* japanese = nullptr;
    for (QAction* action : window->findChildren<QAction*>()) {
        if (action->data().toString() == "ja") japanese = action;
    }
    ASSERT_NE(japanese, nullptr);
    int closed = 0;
    QObject::connect(window.get(), &MainWindow::LanguageChanged, [&] { ++closed; });
    QFile::remove(window->Files().Sources().front());
    WhenTold(QMessageBox::Cancel);
    japanese->trigger();
    EXPECT_EQ(closed, 0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(said.contains("tokyo.geojson")) << said.toStdString();
    WhenTold(QMessageBox::Save);
    WhenAskedForFile(File("kept.Ovb"));
    japanese->trigger();
    EXPECT_EQ(closed, 1);
    EXPECT_TRUE(QFileInfo::exists(File("kept.Ovb")));
    EXPECT_EQ(window->Files().Sources(), QStringList{File("kept.Ovb")});
}

}  // namespace
}  // namespace orvane
