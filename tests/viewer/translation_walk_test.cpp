// A change of language from the program's start on, and every word that a Japanese operator sees.
#include <QAbstractButton>
#include <QComboBox>
#include <QFontComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPointer>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabBar>
#include <QToolBar>
#include <QTreeWidget>

#include "hosts/viewer/language.h"
#include "hosts/viewer/print_dialog.h"
#include "hosts/viewer/run_viewer.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

QAction* LanguageAction(MainWindow& window, const QString& shown) {
    for (QAction* action : window.findChildren<QAction*>()) {
        if (action->text() == shown) return action;
    }
    return nullptr;
}

class TranslationWalk : public Walk {
protected:
    ~TranslationWalk() override {
        InstallLanguage("en");
        Settings().remove("language");
    }

    /// Whether a text is one that needs no Japanese: it has no English word, or is the same in both languages.
    static bool NeedsNone(const QString& text) {
        static const QRegularExpression word("[A-Za-z]{3,}");
        static const QStringList same{"ORVANE4", "English", "PDF", "PNG", "JIS", "ANSI", "Letter", "tokyo"};
        QString rest = text;
        for (const QString& known : same) rest.remove(known, Qt::CaseInsensitive);
        return !word.match(rest).hasMatch();
    }
    void Look(const QString& text, const QString& where) {
        bool hasJapanese = NeedsNone(text);
        for (const QChar c : text) hasJapanese = hasJapanese || c.unicode() >= 0x3000;
        EXPECT_TRUE(hasJapanese) << where.toStdString() << ": " << text.toStdString();
        ++looked;
    }
    void LookAt(const QWidget& top) {
        QList<const QWidget*> widgets{&top};
        for (const QWidget* child : top.findChildren<const QWidget*>()) widgets << child;
        for (const QWidget* widget : widgets) {
            const QString where = QString::fromLatin1(widget->metaObject()->className());
            Look(widget->windowTitle(), where + " title");
            Look(widget->toolTip(), where + " hint");
            Look(widget->accessibleName(), where + " name");
            if (const auto* label = qobject_cast<const QLabel*>(widget)) Look(label->text(), where);
            if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) Look(button->text(), where);
            if (const auto* group = qobject_cast<const QGroupBox*>(widget)) Look(group->title(), where);
            if (const auto* spin = qobject_cast<const QSpinBox*>(widget)) Look(spin->prefix() + spin->suffix(), where);
            if (const auto* box = qobject_cast<const QComboBox*>(widget);
                box != nullptr && qobject_cast<const QFontComboBox*>(widget) == nullptr) {
                for (int i = 0; i < box->count(); ++i) Look(box->itemText(i), where);
            }
            if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
                for (int i = 0; i < tabs->count(); ++i) Look(tabs->tabText(i), where);
            }
            if (const auto* tree = qobject_cast<const QTreeWidget*>(widget)) {
                for (int i = 0; i < tree->columnCount(); ++i) Look(tree->headerItem()->text(i), where);
            }
        }
    }
    /// Looks at the next dialog and refuses it.
    void WhenLookedAt() {
        WhenAsked([this](QDialog& dialog) {
            ++dialogs;
            LookAt(dialog);
            if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
                Look(box->text(), "a message");
                Look(box->informativeText(), "a message");
            }
            dialog.reject();
        });
    }

    int looked = 0;
    int dialogs = 0;
};

TEST_F(TranslationWalk, AnotherLanguageIsAnotherWindowWithTheSameMapUntilTheLastOneCloses) {
    window->close();
    Settings().setValue("language", "en");
    int windows = 0;
    QPointer<MainWindow> seen;  // the next one may stand in the same place of memory
    QTimer operatorsHand;
    QObject::connect(&operatorsHand, &QTimer::timeout, [&] {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            auto* now = qobject_cast<MainWindow*>(top);
            if (now == nullptr || now == window.get() || now == seen || !now->isVisible()) continue;
            if (now->Files().Sources().isEmpty()) continue;  // not opened yet
            seen = now;
            ++windows;
            EXPECT_EQ(now->Files().Sources(), QStringList{Sample("tokyo_mesh.Ovb")});
            EXPECT_EQ(now->FindAction("Fit")->text(), windows == 2 ? QString::fromUtf8("全体表示(&F)") : QString("&Fit"));
            const QList<QLabel*> labels = now->findChildren<QLabel*>();
            EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](QLabel* l) { return l->text() == "of the office"; }));
            QAction* next = LanguageAction(*now, windows == 1 ? QString::fromUtf8("日本語") : QString("English"));
            ASSERT_NE(next, nullptr);
            windows < 3 ? next->trigger() : static_cast<void>(now->close());
            return;
        }
    });
    operatorsHand.start(20);
    QTimer::singleShot(60000, qApp, [] { QApplication::exit(99); });  // else a fault would hang the walk
    ViewerStart start;
    start.files = {Sample("tokyo_mesh.Ovb")};
    start.credit = "of the office";
    EXPECT_EQ(RunViewer(start), 0);
    EXPECT_EQ(windows, 3);
    EXPECT_EQ(Settings().value("language"), "en");
}

TEST_F(TranslationWalk, FieldsLabelsAndListsAreInJapanese) {
    window->close();
    InstallLanguage("ja");
    MainWindow japanese;
    ASSERT_TRUE(japanese.Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    japanese.Map().Call("OrvResetActiveAll");
    japanese.RefreshNow();
    // What the map itself brings has no language.
    CDigMem& store = japanese.Map().Control().store;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) store.SetLayerName(store.Layer(i).code.View(), "");
    japanese.SetCredit({});
    for (const QWidget* part : QList<const QWidget*>{&japanese.Layers().Looks(), &japanese.Feature(), &japanese.Images(),
                                                     &japanese.Selection(), &japanese.Finder()}) {
        LookAt(*part);
    }
    for (const QToolBar* bar : japanese.findChildren<QToolBar*>()) Look(bar->windowTitle(), "bar");
    const RelationBar& relations = japanese.Relations();
    LookAt(relations);
    PrintDialog print(japanese.Map(), {}, {}, &japanese);
    print.SetTrueToScale(false);
    print.ShowPreview();
    LookAt(print);
    OverlayDialog overlay(japanese.Map(), japanese.History(), Overlay::Merge, &japanese);
    LookAt(overlay);
    EXPECT_GT(looked, 300);
}

TEST_F(TranslationWalk, QuestionsAndMessagesAreInJapanese) {
    InstallLanguage("ja");
    MainWindow japanese;
    japanese.show();
    const auto choose = [&](const char* name, int answers) {
        for (int i = 0; i < answers; ++i) WhenLookedAt();
        QAction* action = japanese.FindAction(name);
        ASSERT_NE(action, nullptr) << name;
        action->trigger();
        Settle();
    };
    ASSERT_TRUE(japanese.Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    japanese.RefreshNow();
    for (const char* name :
         {"New layer", "New sub layer", "Rename the layer", "Scale", "Print", "About", "Merge the selection"}) {
        choose(name, 1);
    }
    japanese.History().NoteOtherChange();
    choose("New", 1);  // unsaved changes
    // A file that cannot be read, one that shares a block, and words that no map can hold.
    QFile bad(File("bad.txt"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("nothing");
    bad.close();
    WhenTold(QMessageBox::Discard);
    WhenTold(QMessageBox::Ok);
    japanese.Open({File("bad.txt")}, {});
    Look(said.section('\n', 0, 0), "a file that cannot be read");
    const OverlayDialog overlay(japanese.Map(), japanese.History(), Overlay::Merge, &japanese);
    Look(RunOverlay(japanese.Map(), japanese.History(), Overlay::Merge, "none", 1), "an overlay into nothing");
    EXPECT_EQ(dialogs, 8);
    japanese.Files().New();
}

}  // namespace
}  // namespace orvane
