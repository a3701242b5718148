// Symbols and line types that were read stay, whatever map is opened and whatever file is chosen by mistake.
#include <QStatusBar>

#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class KeptTables : public Walk {
protected:
    QString Written(const char* name, const QByteArray& text) {
        QFile file(File(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    QString Symbols() { return Written("symbols.txt", "1,0,1,2,3\r\n1,4,5,6,7\r\n2,8,9,10,11\r\n9,0,0,0,0\r\n"); }
    QString LineTypes() { return Written("lines.txt", "SYS,30,solid\r\nUSERA,10,dash,2,6,2\r\nUSERG,20,wave,7,12,3\r\n"); }
    void Choose(const char* action, const QString& file) {
        WhenAskedForFile(file);
        Walk::Choose(action);
    }
    void ExpectBoth(CDigMem& store, const char* after) {
        ASSERT_EQ(store.symbols.size(), 2u) << after;
        EXPECT_EQ(store.symbols[0].strokeCnt, 2) << after;
        ASSERT_EQ(store.lineTypes.size(), 3u) << after;
        EXPECT_EQ(store.lineTypes[2].ltId, 20) << after;
    }
};

TEST_F(KeptTables, TheyStayOverANewMapAnOpenedOneAndANewWindow) {
    Choose("Read symbols", Symbols());
    Choose("Read line types", LineTypes());
    ExpectBoth(Store(), "reading");
    window->Files().New();
    ExpectBoth(Store(), "a new map");
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    ExpectBoth(Store(), "an archive");
    ASSERT_TRUE(window->Load({Sample("tokyo.geojson")}, {}).Ok());
    ExpectBoth(Store(), "vector data");
    MainWindow next;  // as a choice of another language makes one
    ExpectBoth(next.Map().Control().store, "another window");
}

TEST_F(KeptTables, AFileOfAnotherKindIsSaidAndTakesNothingAway) {
    Choose("Read symbols", Symbols());
    Choose("Read line types", LineTypes());
    const QString table = Written("table.csv", "name,height,width,depth,colour\r\nhouse,a,b,c,d\r\ntree,a,b,c,d\r\n");
    for (const QString& wrong : {LineTypes(), table, Written("empty.txt", {})}) {
        WhenAskedForFile(wrong);
        WhenTold(QMessageBox::Ok);
        Walk::Choose("Read symbols");
        EXPECT_TRUE(said.contains("those that were there stay")) << said.toStdString();
        ExpectBoth(Store(), "no symbols");
    }
    for (const QString& wrong : {Symbols(), table}) {
        WhenAskedForFile(wrong);
        WhenTold(QMessageBox::Ok);
        Walk::Choose("Read line types");
        EXPECT_TRUE(said.contains("Choose a line type file")) << said.toStdString();
        ExpectBoth(Store(), "no line types");
    }
    window->Files().New();
    ExpectBoth(Store(), "the files that were good are the ones that are kept");
}

TEST_F(KeptTables, OfAStrokeTheLeadingDigitsCount) {
    Choose("Read symbols", Written("fractions.txt", "1,0.5,1,2,3\r\n1,4 ,5.25,6,7.\r\n9,0,0,0,0\r\n"));
    ASSERT_EQ(Store().symbols.size(), 1u);
    EXPECT_EQ(Store().symbols[0].strokeCnt, 2);
}

TEST_F(KeptTables, AFileThatIsGoneIsSaidAndComesBackByItself) {
    Choose("Read symbols", Symbols());
    QFile::rename(File("symbols.txt"), File("away.txt"));
    window->Files().New();
    EXPECT_TRUE(Store().symbols.empty());
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("symbols.txt"))
        << window->statusBar()->currentMessage().toStdString();
    const ImportResult result = window->Load({Sample("tokyo.geojson")}, {});
    ASSERT_TRUE(result.Ok());
    ASSERT_FALSE(result.summary.notes.empty());
    EXPECT_NE(result.summary.notes.back().find("symbols.txt"), std::string::npos);
    QFile::rename(File("away.txt"), File("symbols.txt"));
    window->Files().New();
    EXPECT_EQ(Store().symbols.size(), 2u);
}

TEST_F(KeptTables, TheStandardOnesComeBackForGood) {
    Choose("Read symbols", Symbols());
    Choose("Read line types", LineTypes());
    Walk::Choose("Standard symbols and line types");
    EXPECT_TRUE(Store().symbols.empty());
    EXPECT_TRUE(Store().lineTypes.empty());
    window->Files().New();
    EXPECT_TRUE(Store().symbols.empty());
    EXPECT_TRUE(Store().lineTypes.empty());
}

}  // namespace
}  // namespace orvane
