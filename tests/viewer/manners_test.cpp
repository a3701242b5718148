// Languages, keys, settings, progress.
#include <QFile>
#include <QMenuBar>
#include <QTranslator>
#include <QWidgetAction>
#include <set>

#include "hosts/viewer/host_words.h"
#include "hosts/viewer/language.h"
#include "hosts/viewer/work_progress.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

/// Leaves of the menus.
void Collect(const QList<QAction*>& actions, QList<QAction*>& out) {
    for (QAction* action : actions) {
        if (action->isSeparator()) continue;
        if (action->menu() != nullptr) {
            Collect(action->menu()->actions(), out);
        } else {
            out << action;
        }
    }
}

class Manners : public Walk {};

TEST_F(Manners, EveryMenuHasALetterAndNoTwoActionsShareAKey) {
    QList<QAction*> actions;
    Collect(window->menuBar()->actions(), actions);
    EXPECT_GT(actions.size(), 60);
    for (const QAction* menu : window->menuBar()->actions())
        EXPECT_TRUE(menu->text().contains('&')) << menu->text().toStdString();
    std::set<QString> keys;
    for (const QAction* action : actions) {
        for (const QKeySequence& key : action->shortcuts()) {
            EXPECT_TRUE(keys.insert(key.toString()).second) << key.toString().toStdString() << " is used twice";
        }
    }
}

TEST_F(Manners, WhatTheToolBarsDoStandsInTheMenusToo) {
    QList<QAction*> inMenus;
    Collect(window->menuBar()->actions(), inMenus);
    for (QToolBar* bar : window->findChildren<QToolBar*>()) {
        for (QAction* action : bar->actions()) {
            if (action->isSeparator() || qobject_cast<QWidgetAction*>(action) != nullptr) continue;
            EXPECT_TRUE(inMenus.contains(action) || action == &window->Relations().StartAction()) << action->text().toStdString();
        }
    }
    EXPECT_NE(window->FindAction("Select by a shape"), nullptr) << "the one that the bar has as a switch";
}

TEST_F(Manners, PanelsAreReachedByTheirKeysAndTheMapAgain) {
    window->activateWindow();
    Press(Qt::Key_F2);
    EXPECT_TRUE(window->Layers().isVisible());
    EXPECT_TRUE(window->Layers().isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(window.get(), Qt::Key_F5);
    EXPECT_TRUE(Map().hasFocus());
}

TEST_F(Manners, WindowAndLanguageAreKeptInTheSettings) {
    window->Layers().hide();
    window->close();
    const MainWindow next;
    EXPECT_TRUE(const_cast<MainWindow&>(next).Layers().isHidden());
    EXPECT_EQ(Settings().organizationName(), "Orvane");
}

TEST_F(Manners, AllTextsAreTranslatedIntoJapanese) {
    QTranslator translator;
    Settings().setValue("language", "en");
    InstallLanguage();  // brings the resource in
    ASSERT_TRUE(translator.load(":/i18n/viewer_ja.qm"));
    QApplication::installTranslator(&translator);
    {
        MainWindow japanese;
        QList<QAction*> actions;
        Collect(japanese.menuBar()->actions(), actions);
        for (const QAction* action : actions) {
            bool hasJapanese = false;
            for (const QChar c : action->text()) hasJapanese |= c.unicode() >= 0x3000;
            EXPECT_TRUE(hasJapanese || action->text() == "English") << action->text().toStdString();
        }
        EXPECT_EQ(japanese.FindAction("Fit")->text(), QString::fromUtf8("全体表示(&F)"));
        EXPECT_EQ(Words("not kept by an archive: 3 sub layers"), QString::fromUtf8("アーカイブに残らないもの：サブレイヤ 3 件"));
    }
    QApplication::removeTranslator(&translator);
    EXPECT_EQ(Words("not kept by an archive: 3 sub layers"), "not kept by an archive: 3 sub layers");
    EXPECT_EQ(Words("some file 7 is odd: 100%"), "some file 7 is odd: 100%");
}

TEST_F(Manners, TheMenuChangesTheLanguageAtOnceByANewWindow) {
    int told = 0;
    QObject::connect(window.get(), &MainWindow::LanguageChanged, [&] { ++told; });
    QList<QAction*> actions;
    Collect(window->menuBar()->actions(), actions);
    for (QAction* action : actions) {
        if (action->text() == QString::fromUtf8("日本語")) action->trigger();
    }
    EXPECT_EQ(Settings().value("language"), "ja");
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(window->isVisible()) << "the program opens another one";
    InstallLanguage();
    {
        MainWindow next;
        EXPECT_EQ(next.FindAction("Fit")->text(), QString::fromUtf8("全体表示(&F)"));
    }
    InstallLanguage("en");
    MainWindow english;
    EXPECT_EQ(english.FindAction("Fit")->text(), "&Fit") << "the translation is gone again";
}

TEST_F(Manners, AnotherLanguageAsksForUnsavedChangesAndShowsTheSameMap) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    EXPECT_EQ(window->Files().Sources(), QStringList{Sample("tokyo_mesh.Ovb")});
    MakeLayer("EXTRA", kLayPoint);
    window->History().NoteOtherChange();
    int told = 0;
    QObject::connect(window.get(), &MainWindow::LanguageChanged, [&] { ++told; });
    QList<QAction*> actions;
    Collect(window->menuBar()->actions(), actions);
    WhenTold(QMessageBox::Cancel);
    for (QAction* action : actions) {
        if (action->text() == QString::fromUtf8("日本語")) action->trigger();
    }
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_NE(Settings().value("language").toString(), "ja") << "a language that was not taken is not kept";
    for (QAction* action : actions) {
        EXPECT_FALSE(action->text() == QString::fromUtf8("日本語") && action->isChecked());
    }
}

TEST_F(Manners, WorkThatRunsKeepsKeysFromTheWindowAndCanBeCancelled) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    int told = 0;
    {
        WorkProgress work(*window, "Working…");
        Press(Qt::CTRL | Qt::Key_O);  // no dialog opens, or the rig would say so
        window->close();
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(WorkProgress::IsRunning());
        EXPECT_TRUE(work.Tell(0.1));
        for (QProgressDialog* dialog : window->findChildren<QProgressDialog*>()) {
            ++told;
            dialog->cancel();
        }
        EXPECT_FALSE(work.Tell(0.2));
    }
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(WorkProgress::IsRunning());
}

TEST_F(Manners, TheMapIsAsSharpAsTheScreen) {
    // Run with ORVANE_TEST_SCALE 1, 1.5 and 2.
    const double ratio = Map().devicePixelRatioF();
    const QByteArray asked = qgetenv("ORVANE_TEST_SCALE");
    EXPECT_EQ(ratio, asked.isEmpty() ? ratio : asked.toDouble());
    EXPECT_EQ(Map().Picture().width(), qRound(Map().width() * ratio));
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    Settle();
    EXPECT_EQ(Map().grab().toImage().convertToFormat(QImage::Format_RGB32).size(), Map().Picture().size());
    EXPECT_EQ(Map().grab().toImage().convertToFormat(QImage::Format_RGB32).constScanLine(100)[0],
              Map().Picture().constScanLine(100)[0]);
}

}  // namespace
}  // namespace orvane
