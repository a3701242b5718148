// What the code below the viewer says of files and names, in the operator's language; and that what is needed is in sight.
#include <QHeaderView>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeWidget>

#include "hosts/viewer/color_button.h"
#include "hosts/viewer/host_words.h"
#include "hosts/viewer/language.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class WordsWalk : public Walk {
protected:
    ~WordsWalk() override { InstallLanguage("en"); }
};

TEST_F(WordsWalk, LinesWithNamesAreInJapaneseWithTheirNames) {
    InstallLanguage("ja");
    EXPECT_EQ(Words("no such file: /tmp/100%2.shp"), QString::fromUtf8("ファイルがありません：/tmp/100%2.shp"));
    EXPECT_EQ(Words("Zone 9 was taken because roads is in it."),
              QString::fromUtf8("roads が 9 系にあるため、9 系を選びました。"));
    EXPECT_EQ(Words("cannot read a.shp: it is odd: very"), QString::fromUtf8("a.shp を読めません：it is odd: very"));
    EXPECT_EQ(Words("a line that nobody knows: x"), "a line that nobody knows: x");
    InstallLanguage("en");
    EXPECT_EQ(Words("no such file: /tmp/100%2.shp"), "no such file: /tmp/100%2.shp");
}

TEST_F(WordsWalk, TheNotesOfAnImportAreWholeInTheHintOfTheBar) {
    InstallLanguage("ja");
    MainWindow japanese;
    ASSERT_TRUE(japanese.Load({Sample("tokyo.geojson")}, {}).Ok());
    const QString notes = japanese.statusBar()->currentMessage();
    EXPECT_FALSE(notes.isEmpty());
    EXPECT_EQ(japanese.statusBar()->toolTip(), notes);
    EXPECT_FALSE(notes.contains("was taken")) << notes.toStdString();
}

TEST_F(WordsWalk, AZoneSaysWhyNothingIsEditedThere) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    window->Place().ChangeFrame(9);
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("nothing is edited"));
    window->Place().ChangeFrame(0);
    EXPECT_EQ(window->statusBar()->currentMessage(), "");
}

TEST_F(WordsWalk, WhiteIsSeenOnAWhiteField) {
    const QImage patch = ColorIcon(0xFFFFFF).pixmap(16, 16).toImage();
    EXPECT_EQ(patch.pixel(patch.width() / 2, patch.height() / 2) & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_NE(patch.pixel(0, 0) & 0xFFFFFF, 0xFFFFFFu);
}

TEST_F(WordsWalk, LayersOfASecondImportAreToldFromTheFirst) {
    for (const char* name : {"a", "b"}) {
        QFile file(File((QString(name) + ".geojson").toUtf8().constData()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            R"({"type":"Feature","properties":{},"geometry":{"type":"LineString","coordinates":[[139.7,35.6],[139.8,35.7]]}})");
    }
    ASSERT_TRUE(window->Load({File("a.geojson")}, {}).Ok());
    ASSERT_TRUE(window->Files().Import({File("b.geojson")}, {}).Ok());
    ASSERT_EQ(Store().LayerCnt(), 2);
    EXPECT_NE(Store().Layer(0).color, Store().Layer(1).color);
}

TEST_F(WordsWalk, ApplyIsInSightInALowWindow) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 300);
    Map().Call("OrvSetActDat", {"AREA", 1, 1});
    window->RefreshNow();
    window->resize(1180, 700);
    window->Feature().show();
    window->Feature().raise();
    QTest::qWait(100);
    QPushButton* apply = nullptr;
    for (QPushButton* button : window->Feature().findChildren<QPushButton*>()) {
        if (button->text() == "&Apply") apply = button;
    }
    ASSERT_NE(apply, nullptr);
    EXPECT_TRUE(apply->isEnabled());
    EXPECT_FALSE(apply->visibleRegion().isEmpty());
    EXPECT_EQ(apply->visibleRegion().boundingRect().height(), apply->height());
    Map().Call("OrvResetActiveAll");
    window->RefreshNow();
    EXPECT_FALSE(apply->isEnabled());
}

TEST_F(WordsWalk, LongNamesOfLayersAreReadWholeSomewhere) {
    MakeLayer("A_LAYER_OF_A_NAME_THAT_NO_BAR_HAS_ROOM_FOR", kLayPolygon);
    AddSquare("A_LAYER_OF_A_NAME_THAT_NO_BAR_HAS_ROOM_FOR", 1, 0, 0, 300);
    window->RefreshNow();
    EXPECT_TRUE(window->Layers().List().topLevelItem(0)->toolTip(0).contains("THAT_NO_BAR_HAS_ROOM_FOR"));
    bool inBar = false;
    for (const QComboBox* box : window->findChild<ModeBar*>()->findChildren<QComboBox*>()) {
        inBar = inBar || box->toolTip().contains("THAT_NO_BAR_HAS_ROOM_FOR");
    }
    EXPECT_TRUE(inBar);
    window->Finder().ShowLayers();
    window->Finder().Find();
    for (const QTreeWidget* list : window->Finder().findChildren<QTreeWidget*>()) {
        EXPECT_GE(list->header()->sectionSize(0),
                  list->fontMetrics().horizontalAdvance("A_LAYER_OF_A_NAME_THAT_NO_BAR_HAS_ROOM"));
    }
}

}  // namespace
}  // namespace orvane
