// The keyboard in the panels: where it goes, and which keys are the map's all the same.
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>

#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class PanelKeys : public Walk {
protected:
    PanelKeys() {
        MakeLayer("AREA", kLayPolygon);
        for (int i = 1; i <= 2; ++i) AddSquare("AREA", i, 200.0 * i, 0, 100);
        Fit();
        Map().Call("OrvSetActDat", {"AREA", 1, 1});
        window->RefreshNow();
    }
    /// A key for whatever has the keyboard.
    void Type(QKeyCombination key) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
        Settle();
    }
    const DigDat& First() { return BlockOf("AREA").dats[0]; }
    QString Status() { return window->statusBar()->currentMessage(); }
};

TEST_F(PanelKeys, ThePanelOfTheFeatureGivesTheKeyboardToItsFirstField) {
    Press(Qt::Key_F4);
    EXPECT_EQ(QApplication::focusWidget(), &window->Feature().TagField());
    Press(Qt::Key_T);
    Press(Qt::Key_F4);
    EXPECT_TRUE(window->Feature().isAncestorOf(QApplication::focusWidget()));
    EXPECT_TRUE(QApplication::focusWidget()->isVisible());
}

TEST_F(PanelKeys, TabStopsAtNoScrollArea) {
    for (const Qt::Key panel : {Qt::Key_F2, Qt::Key_F4}) {
        Press(panel);
        for (int i = 0; i < 30; ++i) {
            Type(Qt::Key_Tab);
            EXPECT_EQ(qobject_cast<QScrollArea*>(QApplication::focusWidget()), nullptr) << i;
        }
    }
}

TEST_F(PanelKeys, TheEventsAreReachedAndReadByTheKeyboard) {
    auto* lines = window->findChild<QDockWidget*>("events")->findChild<QPlainTextEdit*>();
    Press(Qt::Key_F12);
    EXPECT_EQ(QApplication::focusWidget(), lines);
    lines->setPlainText("one\ntwo");
    Type(Qt::CTRL | Qt::Key_Home);
    Type(Qt::SHIFT | Qt::Key_Down);
    EXPECT_EQ(lines->textCursor().selectedText().size(), 4) << "a line and its end";
    Type(Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), lines);
}

TEST_F(PanelKeys, UndoInTheWidthOfALayerIsTheMaps) {
    window->Layers().Choose("AREA");
    auto* width = window->Layers().Looks().findChild<QSpinBox*>();
    const std::int32_t before = Store().Layer(0).lineSize;
    Press(Qt::Key_F2);
    width->setFocus();
    Type(Qt::Key_Up);
    ASSERT_EQ(Store().Layer(0).lineSize, before + 1);
    Type(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(Store().Layer(0).lineSize, before);
    EXPECT_EQ(width->value(), before);
    Type(Qt::CTRL | Qt::Key_Y);
    EXPECT_EQ(Store().Layer(0).lineSize, before + 1);
    // What is half typed is the field's own.
    width->selectAll();
    Type(Qt::Key_4);
    Type(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(Store().Layer(0).lineSize, before + 1);
    EXPECT_NE(width->text(), "4");
}

TEST_F(PanelKeys, UndoInTheTextIsTheFieldsUntilItIsApplied) {
    Press(Qt::Key_T);
    QTest::keyClicks(&window->Feature().TextField(), "Town");
    Type(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(window->History().Stack().count(), 0);
    EXPECT_NE(window->Feature().TextField().text(), "Town");
    window->Feature().TextField().clear();
    QTest::keyClicks(&window->Feature().TextField(), "City");
    Type(Qt::Key_Return);
    ASSERT_NE(First().str, nullptr);
    EXPECT_EQ(QApplication::focusWidget(), &window->Feature().TextField());
    Type(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(First().str, nullptr);
    EXPECT_EQ(window->Feature().TextField().text(), "");
    Type(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    ASSERT_NE(First().str, nullptr);
    EXPECT_EQ(window->Feature().TextField().text(), "City");
}

TEST_F(PanelKeys, DeleteInTheListOfTheSelectionDeletesIt) {
    Press(Qt::Key_F3);
    ASSERT_EQ(QApplication::focusWidget(), &window->Selection().List());
    Type(Qt::Key_Delete);
    ASSERT_EQ(BlockOf("AREA").datCnt, 1);
    EXPECT_EQ(First().datID, 2);
    window->History().Undo();
    EXPECT_EQ(BlockOf("AREA").datCnt, 2);
}

TEST_F(PanelKeys, InAPlaneZoneTheKeysOfEditingSayWhyNothingHappens) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    const DigBlock& block = Store().Block(Store().Index()[0].block);
    const ItemKey key{std::string(block.code.View()), block.meshNo, block.dats[0].datID};
    window->History().Change("deleting", Deletion(Store(), key));
    window->Place().ChangeFrame(9);
    Settle();
    for (const QKeyCombination pressed : {QKeyCombination(Qt::Key_D), Qt::CTRL | Qt::Key_Z, QKeyCombination(Qt::Key_Delete),
                                          QKeyCombination(Qt::Key_M), QKeyCombination(Qt::Key_T)}) {
        SCOPED_TRACE(QKeySequence(pressed).toString().toStdString());
        window->statusBar()->clearMessage();
        Press(pressed);
        EXPECT_TRUE(Status().contains("plane zone")) << Status().toStdString();
    }
    window->statusBar()->clearMessage();
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    EXPECT_EQ(Status(), "") << "nothing was undone, in any frame";
    Press(Qt::Key_F3);
    Type(Qt::Key_Delete);
    EXPECT_TRUE(Status().contains("plane zone")) << Status().toStdString();
    window->Place().ChangeFrame(0);
    window->History().Undo();
    window->History().Stack().setClean();
}

TEST_F(PanelKeys, PointsThatCannotBeChangedAreExplained) {
    QLabel& note = window->Feature().PointsNote();
    EXPECT_TRUE(note.isHidden());
    MakeLayer("LONG", kLayLine);
    for (const int count : {5000, 5001}) {
        QVariantList x, y;
        for (int i = 0; i < count; ++i) {
            x << i * 1.0;
            y << 0.0;
        }
        AddFeature("LONG", count, x, y);
    }
    window->Feature().Show(ItemKey{"LONG", 1, 5001});
    EXPECT_FALSE(note.isHidden());
    EXPECT_TRUE(note.text().contains("first 5000 points")) << note.text().toStdString();
    window->Feature().Show(ItemKey{"LONG", 1, 5000});
    EXPECT_TRUE(note.isHidden());
    MakeLayer("GRID", kLayMesh);
    const QVariantList gx{0.0, 10.0, 0.0, 10.0}, gy{0.0, 0.0, 10.0, 10.0}, gz{1.0, 2.0, 3.0, 4.0};
    ASSERT_TRUE(Map().Call("OrvAddMeshDat", {"GRID", 1, 1, 2, 2, gx, gy, gz}).isValid());
    window->Feature().Show(ItemKey{"GRID", 1, 1});
    EXPECT_FALSE(note.isHidden());
    EXPECT_TRUE(note.text().contains("mesh")) << note.text().toStdString();
    window->Feature().Show(std::nullopt);
    EXPECT_TRUE(note.isHidden());
}

TEST_F(PanelKeys, UndoInANumberOrFontThatIsHalfTypedIsTheFields) {
    ASSERT_TRUE(window->History().Change("deleting", Deletion(Store(), {"AREA", 1, 2})));
    Map().Call("OrvSetActDat", {"AREA", 1, 1});
    window->RefreshNow();
    Settle();
    Press(Qt::Key_T);
    QList<QWidget*> fields;
    for (auto* number : window->Feature().findChildren<QDoubleSpinBox*>()) fields << number;
    ASSERT_EQ(fields.size(), 3) << "angle and the two of the anchor";
    fields << window->Feature().findChild<QFontComboBox*>();
    for (QWidget* field : fields) {
        SCOPED_TRACE(field->metaObject()->className());
        window->Feature().findChild<QCheckBox*>("has text")->setChecked(true);
        for (QCheckBox* box : window->Feature().findChildren<QCheckBox*>()) {
            if (box->text().remove('&') == "Font") box->setChecked(true);
        }
        field->setFocus();
        ASSERT_TRUE(field->hasFocus());
        auto* line = field->findChild<QLineEdit*>();
        const QString whole = line->text();
        for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Minus}) {
            line->selectAll();
            Type(QKeyCombination(key));
            if (key == Qt::Key_Minus && line->text() == whole) continue;  // the angle takes none
            ASSERT_NE(line->text(), whole);
            Type(Qt::CTRL | Qt::Key_Z);
            EXPECT_EQ(BlockOf("AREA").datCnt, 1) << "the map keeps its last edit";
            EXPECT_EQ(line->text(), whole);
        }
    }
}

TEST_F(PanelKeys, InAPlaneZoneLettersSearchTheListOfTheSelection) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    const DigBlock& block = Store().Block(Store().Index()[0].block);
    Map().Call("OrvSetActDat", {QByteArray(block.code.CStr()), block.meshNo, block.dats[0].datID});
    window->Place().ChangeFrame(9);
    Settle();
    Press(Qt::Key_F3);
    for (const Qt::Key letter : {Qt::Key_D, Qt::Key_V, Qt::Key_A, Qt::Key_T}) {
        window->statusBar()->clearMessage();
        Type(letter);
        EXPECT_FALSE(Status().contains("plane zone")) << QKeySequence(letter).toString().toStdString();
    }
    for (const QKeyCombination own : {QKeyCombination(Qt::Key_Delete), Qt::CTRL | Qt::Key_L}) {
        window->statusBar()->clearMessage();
        Type(own);
        EXPECT_TRUE(Status().contains("plane zone")) << QKeySequence(own).toString().toStdString();
    }
    window->Place().ChangeFrame(0);
}

}  // namespace
}  // namespace orvane
