// Coordinates of the form that are still being typed when they are applied.
#include <QSignalSpy>
#include <QTableWidget>

#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class TypedCell : public Walk {
protected:
    TypedCell() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 5, 0, 0, 1000);
        Fit();
        Map().Call("OrvSetActDat", {"AREA", 1, 5});
        window->RefreshNow();
        window->Feature().show();
        window->Feature().raise();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
        Settle();
    }
    /// Opens the editor of a cell and types into it.
    void Type(int row, int column, const char* keys) {
        QTableWidget& points = window->Feature().Points();
        points.setFocus();
        points.setCurrentCell(row, column);
        Settle();
        if (qobject_cast<QLineEdit*>(QApplication::focusWidget()) == nullptr) points.editItem(points.currentItem());
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, keys);
        ASSERT_EQ(editor->text(), keys);
    }
    /// The button goes down and, after a moment, up.
    void ApplyByKey() {
        const QSignalSpy clicked(&window->Feature().ApplyButton(), &QPushButton::clicked);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !clicked.isEmpty(); }, 30000));
        Settle();
    }
    int Steps() { return window->History().Stack().count(); }
};

TEST_F(TypedCell, TheKeyOfApplyTakesWhatStandsInTheOpenEditor) {
    Type(2, 0, "777");
    ApplyByKey();
    EXPECT_EQ(BlockOf("AREA").dats[0].pnts[2].x, 777);
    EXPECT_EQ(Steps(), 1);
    EXPECT_EQ(window->Feature().Points().item(2, 0)->text(), "777");
    Type(1, 1, "-12.5");
    ApplyByKey();
    EXPECT_EQ(BlockOf("AREA").dats[0].pnts[1].y, -12.5);
    EXPECT_EQ(BlockOf("AREA").dats[0].pnts[2].x, 777);
    EXPECT_EQ(Steps(), 2);
}

TEST_F(TypedCell, ItIsToldWhenWhatStandsThereIsNoNumber) {
    Type(2, 0, "7x7");
    WhenTold(QMessageBox::Ok);
    ApplyByKey();
    EXPECT_TRUE(said.contains("7x7"));
    EXPECT_EQ(Steps(), 0);
    EXPECT_EQ(BlockOf("AREA").dats[0].pnts[2].x, 1000);
}

TEST_F(TypedCell, WhatWasGivenUpIsNotTaken) {
    Type(2, 0, "777");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    Settle();
    ApplyByKey();
    EXPECT_EQ(BlockOf("AREA").dats[0].pnts[2].x, 1000);
    EXPECT_EQ(Steps(), 0);
}

}  // namespace
}  // namespace orvane
