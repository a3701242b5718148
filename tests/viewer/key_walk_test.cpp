// The keyboard: who hears a key, which letters belong to what, and what Enter does.
#include <QAbstractButton>
#include <QCursor>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTranslator>
#include <map>

#include "hosts/viewer/language.h"
#include "hosts/viewer/print_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

/// Texts with a letter that Alt reaches in one window, or that a menu has.
QStringList TextsOf(const QWidget& window) {
    QStringList texts;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window) continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget); label != nullptr && label->buddy() != nullptr) {
            texts << label->text();
        }
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) texts << button->text();
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i) texts << tabs->tabText(i);
        }
        if (const auto* menus = qobject_cast<const QMenuBar*>(widget)) {
            for (const QAction* menu : menus->actions()) texts << menu->text();
        }
    }
    return texts;
}

QStringList TextsOf(const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions()) texts << action->text();
    return texts;
}

void ExpectNoLetterTwice(const QStringList& texts, const QString& where) {
    std::map<QString, QString> users;
    for (const QString& text : texts) {
        const QString letter = QKeySequence::mnemonic(text).toString();
        if (letter.isEmpty()) continue;
        const auto [at, isNew] = users.try_emplace(letter, text);
        EXPECT_TRUE(isNew) << where.toStdString() << ": " << letter.toStdString() << " for " << at->second.toStdString()
                           << " and " << text.toStdString();
    }
}

class KeyWalk : public Walk {
protected:
    void MakeSquares() {
        MakeLayer("AREA", kLayPolygon);
        MakeLayer("ROAD", kLayLine);
        MakeLayer("TREE", kLayPoint);
        AddSquare("AREA", 1, 0, 0, 300);
        AddSquare("AREA", 2, 400, 0, 300);
        AddSquare("AREA", 3, 800, 0, 300);
        Fit();
    }
    void Activate() {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
        Settle();
    }
    /// All dialogs that the window's actions open, each looked at and left.
    void LookAtDialogs(MainWindow& in, const std::function<void(QDialog&)>& look) {
        for (const char* name : {"New layer", "New sub layer", "Merge the selection", "Intersect the selection", "Print",
                                 "Rename the layer", "Scale"}) {
            WhenAsked([&](QDialog& dialog) {
                look(dialog);
                dialog.reject();
            });
            ASSERT_NE(in.FindAction(name), nullptr) << name;
            in.FindAction(name)->trigger();
            Settle();
        }
        in.Finder().show();
        look(in.Finder());
        in.Finder().hide();
    }
    /// The same with the texts of Japanese.
    template <class Work>
    void InJapanese(Work work) {
        InstallLanguage("en");  // brings the resource in
        QTranslator translator;
        ASSERT_TRUE(translator.load(":/i18n/viewer_ja.qm"));
        QApplication::installTranslator(&translator);
        {
            MainWindow japanese;
            japanese.show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(&japanese, 30000));
            japanese.Map().Call("OrvAddLayer", {"AREA", 1, kLayPolygon, 5});
            japanese.RefreshNow();
            Settle();
            work(japanese);
        }
        QApplication::removeTranslator(&translator);
    }
    void ExpectLettersOnce(MainWindow& in) {
        ExpectNoLetterTwice(TextsOf(static_cast<const QWidget&>(in)), "the window");
        int menus = 0;
        for (const QMenu* menu : in.findChildren<QMenu*>()) {
            ExpectNoLetterTwice(TextsOf(*menu), "menu " + menu->title());
            ++menus;
        }
        EXPECT_GT(menus, 8);
        LookAtDialogs(
            in, [](QDialog& dialog) { ExpectNoLetterTwice(TextsOf(static_cast<const QWidget&>(dialog)), dialog.windowTitle()); });
    }
};

TEST_F(KeyWalk, NoLetterStandsForTwoThings) {
    MakeSquares();
    ExpectLettersOnce(*window);
}

TEST_F(KeyWalk, NoLetterStandsForTwoThingsInJapaneseEither) {
    InJapanese([this](MainWindow& japanese) { ExpectLettersOnce(japanese); });
}

TEST_F(KeyWalk, PanelsAndDialogsAreInJapanese) {
    const auto look = [](const QWidget& in) {
        for (const QString& text : TextsOf(in)) {
            static const QStringList same{"OK", "&OK", "Cancel", "&Cancel", "Close", "&Close", "X", "Y", "▲", "▼"};
            bool isForeign = false;  // letters of a word
            bool hasJapanese = false;
            for (const QChar c : text) {
                isForeign |= c.unicode() < 0x80 && c.isLetter();
                hasJapanese |= c.unicode() >= 0x3000;
            }
            const bool isColor = text.startsWith('#');
            const bool isForm = text.startsWith("PDF") || text.startsWith("PNG");
            EXPECT_TRUE(!isForeign || hasJapanese || isColor || isForm || same.contains(text) || text.contains("Language"))
                << in.windowTitle().toStdString() << ": " << text.toStdString();
        }
        bool titled = in.windowTitle().isEmpty() || in.windowTitle().contains("ORVANE4");
        for (const QChar c : in.windowTitle()) titled |= c.unicode() >= 0x3000;
        EXPECT_TRUE(titled) << in.windowTitle().toStdString();
    };
    InJapanese([&](MainWindow& japanese) {
        look(japanese);
        LookAtDialogs(japanese, [&](QDialog& dialog) { look(dialog); });
    });
}

TEST_F(KeyWalk, EnterInAFieldOfTheSearchSearchesAndInTheListGoesThere) {
    MakeSquares();
    Press(Qt::CTRL | Qt::Key_F);
    FindDialog& find = window->Finder();
    find.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&find, 30000));
    QTest::keyClicks(&find.GroupField(), "1");
    QTest::keyClick(&find.GroupField(), Qt::Key_Return);
    Settle();
    EXPECT_TRUE(find.isVisible());
    ASSERT_EQ(find.List().topLevelItemCount(), 3);
    // An X server may have given the keyboard back to the window that asked for it before, where Down scrolls the map.
    const auto listHasKeyboard = [&] {
        if (find.List().hasFocus()) return true;
        find.activateWindow();
        find.List().setFocus();
        return false;
    };
    ASSERT_TRUE(QTest::qWaitFor(listHasKeyboard, 30000));
    QTest::keyClick(&find.List(), Qt::Key_Down);
    QTest::keyClick(&find.List(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(find.List().indexOfTopLevelItem(find.List().currentItem()), 1) << "no second search";
    const std::vector<ItemKey> selected = SelectedItems(Store(), 9);
    ASSERT_EQ(selected.size(), 1u);
    EXPECT_EQ(selected[0].datID, 2);
    find.close();
}

TEST_F(KeyWalk, EnterInTheScaleOfThePageDrawsItAndClosesNothing) {
    MakeSquares();
    PrintDialog print(Map(), "a map", "", window.get());
    print.show();
    print.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&print, 30000));
    print.ScaleField().setFocus();
    print.ScaleField().selectAll();
    const QImage before = print.Preview().pixmap().toImage();
    QTest::keyClicks(&print.ScaleField(), "1234");
    QTest::keyClick(&print.ScaleField(), Qt::Key_Return);
    Settle();
    EXPECT_TRUE(print.isVisible());
    EXPECT_EQ(print.ScaleField().value(), 1234);
    EXPECT_NE(print.Preview().pixmap().toImage(), before);
    print.close();
}

TEST_F(KeyWalk, ListsHaveTheArrowsAndLettersWhileTheyHaveTheKeyboard) {
    MakeSquares();
    Activate();
    QTreeWidget& list = window->Layers().List();
    Press(Qt::Key_F2);
    list.setFocus();
    list.setCurrentItem(list.topLevelItem(0));
    const QPoint before = PointOf(100, 100);
    QTest::keyClick(&list, Qt::Key_Down);
    Settle();
    EXPECT_EQ(list.currentItem(), list.topLevelItem(1));
    QTest::keyClick(&list, Qt::Key_Home);
    Settle();
    EXPECT_EQ(list.currentItem(), list.topLevelItem(0));
    QTest::keyClick(&list, Qt::Key_D);
    Settle();
    EXPECT_EQ(Map().RunMode(), 0);
    EXPECT_EQ(PointOf(100, 100), before);
    Press(Qt::Key_Down);
    EXPECT_NE(PointOf(100, 100), before) << "the map has them too";
    EXPECT_EQ(list.currentItem(), list.topLevelItem(0));
}

TEST_F(KeyWalk, AltAAppliesTheFeatureAndTabLeavesItsPoints) {
    MakeSquares();
    Click(PointOf(100, 100));
    window->Feature().show();
    window->Feature().raise();
    Activate();
    window->Feature().TagField().setFocus();
    window->Feature().TagField().setValue(5);
    QTest::keyClick(&window->Feature().TagField(), Qt::Key_A, Qt::AltModifier);
    // A button that a key presses shows itself pressed for a moment first.
    EXPECT_TRUE(QTest::qWaitFor([this] { return BlockOf("AREA").dats[0].lineTag == 5; }));
    QTableWidget& points = window->Feature().Points();
    points.setFocus();
    points.setCurrentCell(0, 0);
    QTest::keyClick(&points, Qt::Key_Tab);
    EXPECT_FALSE(points.hasFocus());
}

TEST_F(KeyWalk, DrawingWithoutALayerSaysWhyNothingHappens) {
    Press(Qt::Key_D);
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("New layer"))
        << window->statusBar()->currentMessage().toStdString();
    MakeLayer("AREA", kLayPolygon);
    Map().Call("OrvSetLayEditFlg", {"AREA", false});
    window->RefreshNow();
    Press(Qt::Key_D);
    EXPECT_EQ(Map().RunMode(), 0);
    EXPECT_TRUE(window->statusBar()->currentMessage().contains("not for editing"));
}

TEST_F(KeyWalk, AMessageLeavesThePlaceUnderTheCursorInView) {
    MakeSquares();
    window->statusBar()->showMessage("something to say", 15000);
    // The real pointer as well: a screen tells that it is elsewhere, and then there is no place under it.
    QCursor::setPos(Map().mapToGlobal(QPoint(200, 200)));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QTest::mouseMove(&Map(), {200, 200});
        QTest::mouseMove(&Map(), {201, 201});
        return !window->Place().text().isEmpty();
    }));
    EXPECT_TRUE(window->Place().isVisible());
}

TEST_F(KeyWalk, AnAreaShowsClosedWhileItGrows) {
    MakeSquares();
    window->Relations().Shape().setCurrentIndex(2);
    Press(Qt::Key_B);
    const auto drawn = [this] {
        std::vector<QPoint> points;
        if (Store().OrgDatCnt() == 0) return points;
        const OrgDat& dat = Store().OrgDats()[0];
        for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
            points.push_back(PointOf(dat.pnts[static_cast<std::size_t>(i)].x, dat.pnts[static_cast<std::size_t>(i)].y));
        }
        return points;
    };
    const QPoint a{100, 100}, b{300, 120}, c{250, 300}, d{120, 260};
    Click(a);
    Click(b);
    QTest::mouseMove(&Map(), c);
    Settle();
    const auto near = [](QPoint p, QPoint q) { return (p - q).manhattanLength() <= 2; };
    std::vector<QPoint> points = drawn();
    ASSERT_EQ(points.size(), 4u);
    EXPECT_TRUE(near(points[0], a) && near(points[1], b) && near(points[3], a));
    Click(c);
    Click(d);
    points = drawn();
    ASSERT_EQ(points.size(), 6u) << "four corners, the one that trails the mouse, and the first again";
    EXPECT_TRUE(near(points[2], c) && near(points[3], d) && near(points[5], a));
    Press(Qt::Key_Escape);
    EXPECT_EQ(Store().OrgDatCnt(), 0);
    window->Relations().Shape().setCurrentIndex(1);
    Press(Qt::Key_B);
    Click(a);
    Click(b);
    EXPECT_EQ(drawn().size(), 3u) << "a line stays open";
    Press(Qt::Key_Escape);
}

TEST_F(KeyWalk, PanMovesTheMapAndSelectsNothing) {
    MakeSquares();
    Press(Qt::Key_P);
    EXPECT_EQ(Map().RunMode(), kRunPan);
    const QPoint before = PointOf(100, 100);
    QTest::mousePress(&Map(), Qt::LeftButton, {}, before);
    QTest::mouseMove(&Map(), before + QPoint(80, 40));
    QCursor::setPos(Map().mapToGlobal(before + QPoint(80, 40)));  // a pan asks where the cursor is now and then
    EXPECT_TRUE(QTest::qWaitFor([&] { return PointOf(100, 100) != before; })) << "it follows as long as the button is held";
    QTest::mouseRelease(&Map(), Qt::LeftButton, {}, before + QPoint(80, 40));
    Settle();
    EXPECT_EQ(SelectedCount(Store()), 0u);
    Press(Qt::Key_S);
    EXPECT_EQ(Map().RunMode(), kRunNormal);
}

TEST_F(KeyWalk, TicksAloneAreAScaleBarModeOfTheirOwn) {
    MakeSquares();
    const QImage none = Map().Picture().copy();
    Choose("Metres");
    const QImage metres = Map().Picture().copy();
    Choose("Ticks only");
    EXPECT_EQ(Map().ScaleBarMode(), 3);
    EXPECT_NE(Map().Picture(), none);
    EXPECT_NE(Map().Picture(), metres);
    EXPECT_EQ(Settings().value("scaleBar"), 3);
}

TEST_F(KeyWalk, DrawnShapesSelectByEqualTouchingAndOverlap) {
    MakeSquares();
    struct Case {
        int relation;
        std::vector<QPoint> corners;  // map places
        std::vector<int> ids;
    };
    const auto select = [this](int relation, const std::vector<QPointF>& corners) {
        window->Relations().Relation().setCurrentIndex(relation);
        window->Relations().Select(3, corners);
        Settle();
        std::vector<int> ids;
        for (const ItemKey& key : SelectedItems(Store(), 9)) ids.push_back(key.datID);
        return ids;
    };
    EXPECT_EQ(select(0, {{0, 0}, {300, 0}, {300, 300}, {0, 300}}), (std::vector<int>{1})) << "equals";
    EXPECT_EQ(select(0, {{0, 0}, {300, 0}, {300, 290}, {0, 290}}), (std::vector<int>{}));
    EXPECT_EQ(select(3, {{300, 0}, {350, 0}, {350, 300}, {300, 300}}), (std::vector<int>{1})) << "touches";
    EXPECT_EQ(select(7, {{200, 100}, {500, 100}, {500, 200}, {200, 200}}), (std::vector<int>{1, 2})) << "overlaps";
}

TEST_F(KeyWalk, ShapeRelationAndPageAreKeptForTheNextTime) {
    MakeSquares();
    window->Relations().Shape().setCurrentIndex(1);
    window->Relations().Relation().setCurrentIndex(6);
    {
        PrintDialog print(Map(), "a map", "", window.get());
        print.show();
        print.ScaleField().setValue(2500);
        print.PaperField().setCurrentIndex(1);
        print.TurnField().setCurrentIndex(0);
        print.reject();
    }
    MainWindow next;
    EXPECT_EQ(next.Relations().Shape().currentIndex(), 1);
    EXPECT_EQ(next.Relations().Relation().currentIndex(), 6);
    PrintDialog print(Map(), "a map", "", window.get());
    EXPECT_EQ(print.ScaleField().value(), 2500);
    EXPECT_EQ(print.PaperField().currentIndex(), 1);
    EXPECT_EQ(print.TurnField().currentIndex(), 0);
}

TEST_F(KeyWalk, OneAndManyAreSaidAsInEnglish) {
    InstallLanguage("en");
    MakeSquares();
    FindDialog find(Map(), window.get());
    find.ShowLayers();
    const auto words = [&find] {
        QStringList all;
        for (const QLabel* label : find.findChildren<QLabel*>()) all << label->text();
        return all.join('|');
    };
    find.Find();
    EXPECT_TRUE(words().contains("3 features")) << words().toStdString();
    find.NumberField().setText("2");
    find.Find();
    EXPECT_TRUE(words().contains("1 feature")) << words().toStdString();
    EXPECT_FALSE(words().contains("(s)") || words().contains("1 features"));
}

}  // namespace
}  // namespace orvane
