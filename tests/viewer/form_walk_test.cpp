// Forms: what is written is what the operator changed, and what is half entered stays until it is applied.
#include <QAbstractItemView>
#include <QFontComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class FormWalk : public Walk {
protected:
    FormWalk() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 300);
        AddSquare("AREA", 2, 400, 0, 300);
        AddSquare("AREA", 3, 800, 0, 300);
        Map().Call("OrvSetLayColor", {"AREA", 0x112233});
        Fit();
    }
    const DigDat& Dat(int datID) { return *Store().FindDat("AREA", 1, datID); }
    QRgb PixelAt(double x, double y) {
        const double ratio = Map().devicePixelRatioF();
        return Map().Picture().pixel((QPointF(PointOf(x, y)) * ratio).toPoint()) & 0xFFFFFF;
    }
    void ApplyByButton() {
        for (QPushButton* button : window->Feature().findChildren<QPushButton*>()) {
            if (button->text() == "&Apply") button->click();
        }
        Settle();
    }
    /// A notch over a widget, as it comes when the pointer is there.
    static void TurnWheel(QWidget& over) {
        const QPointF at = over.rect().center();
        QWheelEvent event(at, over.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&over, &event);
        Settle();
    }
    QUndoStack& Stack() { return window->History().Stack(); }
};

TEST_F(FormWalk, ATextThatIsGivenWhileAToolHoldsTheFeatureLeavesItVisible) {
    Press(Qt::Key_M);
    Click(PointOf(500, 100));
    EXPECT_EQ(Dat(2).lineTag, -1) << "what the tool hides it by";
    EXPECT_EQ(window->Feature().TagField().value(), 0) << "which is not the feature's own";
    Press(Qt::Key_T);
    QTest::keyClicks(&window->Feature().TextField(), "Town");
    QTest::keyClick(&window->Feature().TextField(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(Map().RunMode(), 0);
    ASSERT_NE(Dat(2).str, nullptr);
    EXPECT_EQ(Dat(2).str->text, "Town");
    EXPECT_EQ(Dat(2).lineTag, 0);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_A);
    EXPECT_EQ(PixelAt(650, 250), 0x332211u);
}

TEST_F(FormWalk, APositiveTagHidesNothingAndNeitherDoesItInTheNextMap) {
    Click(PointOf(500, 100));
    window->Feature().TagField().setValue(7);
    ApplyByButton();
    EXPECT_EQ(Dat(2).lineTag, 7);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_A);
    EXPECT_EQ(PixelAt(500, 100), 0x332211u);
    Stack().setClean();
    window->Files().New();
    EXPECT_FALSE(Map().LineTagMode());
}

TEST_F(FormWalk, AChangeOfTheTagLeavesATextAsExactAsItWas) {
    // An angle of four decimals, a size beyond the field, and bytes that are no text at all.
    Map().Call("OrvSetDatString", {"AREA", 1, 2, 450.123456789, 50.0, QByteArray("\x81")});
    Map().Call("OrvSetStrStyle", {"AREA", 1, 2, "Nowhere", 300, 9, 4, 12.3456, true, false, false, 1, 2});
    const ItemCopy before = *CopyOf(Store(), {"AREA", 1, 2});
    ASSERT_EQ(before.text->angle, 12.3456);
    Click(PointOf(500, 200));
    window->Feature().TagField().setValue(9);
    ApplyByButton();
    ItemCopy after = *CopyOf(Store(), {"AREA", 1, 2});
    EXPECT_EQ(after.lineTag, 9);
    EXPECT_TRUE(after.text == before.text);
}

TEST_F(FormWalk, WhatIsEnteredStaysOverARefreshAndGoesWithAnotherFeature) {
    Click(PointOf(500, 100));
    window->Feature().TagField().setValue(7);
    window->Feature().TextField().setFocus();
    QTest::keyClicks(&window->Feature().TextField(), "Ward");
    window->Feature().Points().item(1, 0)->setText("712.5");
    QTest::mouseClick(&Map(), Qt::RightButton, {}, {200, 200});
    Press(Qt::Key_G);
    window->History().ChangeLayers("look", {});
    window->Layers().List().topLevelItem(0)->setCheckState(2, Qt::Unchecked);
    Settle();
    EXPECT_EQ(window->Feature().TagField().value(), 7);
    EXPECT_EQ(window->Feature().TextField().text(), "Ward");
    EXPECT_EQ(window->Feature().Points().item(1, 0)->text(), "712.5");
    // What nobody touched follows the map.
    Map().Call("OrvEditDatPnt", {"AREA", 1, 2, 2, 700.0, 333.0, 0.0});
    window->RefreshNow();
    EXPECT_EQ(window->Feature().Points().item(2, 1)->text(), "333");
    EXPECT_EQ(window->Feature().Points().item(1, 0)->text(), "712.5");
    ApplyByButton();
    EXPECT_EQ(Dat(2).lineTag, 0) << "its layer is not for editing";
    window->Layers().List().topLevelItem(0)->setCheckState(2, Qt::Checked);
    Settle();
    ApplyByButton();
    EXPECT_EQ(Dat(2).lineTag, 7);
    EXPECT_EQ(Dat(2).pnts[1].x, 712.5);
    EXPECT_EQ(Dat(2).str->text, "Ward");
    window->Feature().TagField().setValue(8);
    window->Feature().Show(ItemKey{"AREA", 1, 1});
    EXPECT_EQ(window->Feature().TagField().value(), 0) << "another feature has its own";
}

TEST_F(FormWalk, CoordinatesAreShownToTheMillimetreAndKeptWhole) {
    AddFeature("AREA", 4, {1200.123456, 1300.0, 1300.0}, {0.0, 0.0, 100.0});
    window->Feature().Show(ItemKey{"AREA", 1, 4});
    QTableWidget& points = window->Feature().Points();
    auto* delegate = qobject_cast<QStyledItemDelegate*>(points.itemDelegate());
    ASSERT_NE(delegate, nullptr);
    EXPECT_EQ(delegate->displayText(points.item(0, 0)->data(Qt::DisplayRole), QLocale::c()), "1200.123");
    EXPECT_EQ(points.item(0, 0)->toolTip(), "1200.123456");
    points.item(0, 1)->setText("5");
    ApplyByButton();
    EXPECT_EQ(Dat(4).pnts[0].x, 1200.123456);
    EXPECT_EQ(Dat(4).pnts[0].y, 5);
}

TEST_F(FormWalk, TheWheelPassesOverFieldsThatDoNotHaveTheKeyboard) {
    window->Layers().Choose("AREA");
    Map().setFocus();
    const LayerState before = StateOf(Store().Layer(Store().FindLayDef("AREA")));
    const auto fields = window->Layers().Looks().findChildren<QWidget*>();
    int turned = 0;
    for (QWidget* field : fields) {
        if (qobject_cast<QComboBox*>(field) == nullptr && qobject_cast<QAbstractSpinBox*>(field) == nullptr) continue;
        for (int notch = 0; notch < 3; ++notch) TurnWheel(*field);
        ++turned;
    }
    EXPECT_GE(turned, 4);
    EXPECT_EQ(StateOf(Store().Layer(Store().FindLayDef("AREA"))), before);
    EXPECT_EQ(Stack().count(), 0);
    Click(PointOf(500, 100));
    Map().setFocus();
    TurnWheel(window->Feature().TagField());
    EXPECT_EQ(window->Feature().TagField().value(), 0);
    window->Feature().show();
    window->Feature().raise();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
    window->Feature().TagField().setFocus();
    TurnWheel(window->Feature().TagField());
    EXPECT_EQ(window->Feature().TagField().value(), -1) << "a field that has the keyboard takes it";
}

TEST_F(FormWalk, AWidthOfTwoDigitsIsOneStep) {
    window->Layers().Choose("AREA");
    auto* width = window->Layers().Looks().findChild<QSpinBox*>();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
    width->setFocus();
    width->selectAll();
    QTest::keyClicks(width, "1");
    window->RefreshNow();
    QTest::keyClicks(width, "2");
    QTest::keyClick(width, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Store().Layer(Store().FindLayDef("AREA")).lineSize, 12);
    EXPECT_EQ(Stack().count(), 1);
}

TEST_F(FormWalk, TheLooksAreAllInViewAndTheListHasTheRest) {
    window->Layers().Choose("AREA");
    Settle();
    for (const QScrollArea* area : window->Layers().findChildren<QScrollArea*>()) {
        EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
    }
    const int form = window->Layers().Looks().height();
    const int list = window->Layers().List().height();
    window->resize(window->width(), window->height() + 200);
    Settle();
    EXPECT_EQ(window->Layers().Looks().height(), form);
    EXPECT_LE(window->minimumSizeHint().height(), 680) << "a low screen has room for the window";
    EXPECT_GT(window->Layers().List().height(), list);
}

TEST_F(FormWalk, NoPanelGrowsBesideTheMap) {
    window->resize(1180, 800);
    Settle();
    const int width = Map().width();
    EXPECT_GT(width, 1180 - 330 - 150);
    MakeLayer("ALAYEROFAVERYLONGCODETHATNOBODYWOULDWANTTOREAD", kLayPolygon);
    AddSquare("ALAYEROFAVERYLONGCODETHATNOBODYWOULDWANTTOREAD", 1000001, 0, 500, 300);
    Fit();
    Click(PointOf(100, 600));
    for (QDockWidget* dock : window->findChildren<QDockWidget*>()) {
        if (dock->objectName() == "events") continue;
        dock->raise();
        Settle();
        EXPECT_EQ(Map().width(), width) << dock->objectName().toStdString();
    }
}

TEST_F(FormWalk, ALayerIsRenamedAndTheOldNameComesBackWhole) {
    Store().SetLayerName("AREA", "Areas of the town");
    window->RefreshNow();
    window->Layers().Choose("AREA");
    WhenAsked([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "Areas of the town");
        dialog.findChild<QLineEdit*>()->setText(QString::fromUtf8("町の区域"));
        dialog.accept();
    });
    Choose("Rename the layer");
    const auto name = [this] { return std::string(Store().Layer(Store().FindLayDef("AREA")).layerName.View()); };
    EXPECT_EQ(name(), "\x92\xAC\x82\xCC\x8B\xE6\x88\xE6");
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(name(), "Areas of the town");
    Press(Qt::CTRL | Qt::Key_Y);
    EXPECT_EQ(name(), "\x92\xAC\x82\xCC\x8B\xE6\x88\xE6");
    WhenAsked([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QString(200, QChar(0x6771)));
        dialog.accept();
    });
    WhenTold(QMessageBox::Ok);
    Choose("Rename the layer");
    EXPECT_TRUE(said.contains("254")) << said.toStdString();
}

TEST_F(FormWalk, ANameLikeTheCodeIsShownOnce) {
    Store().SetLayerName("AREA", "AREA");
    window->RefreshNow();
    EXPECT_EQ(window->Layers().List().topLevelItem(0)->text(0), "AREA  (areas)");
}

TEST_F(FormWalk, ALayerIsRemovedWithItsDataAndComesBack) {
    MakeLayer("ROAD", kLayLine);
    Map().Call("DigMemAlloc2", {"AREA", 2, kLayPolygon, QByteArray("somewhere"), 5, 1000.0, 2000.0});
    Map().Call("OrvAddDatEx",
               {"AREA", 2, 7, 3, QVariantList{1.5, 9.0, 9.0}, QVariantList{1.0, 1.0, 5.0}, QVariantList{0.0, 1.0, 2.0}});
    window->RefreshNow();
    window->Layers().Choose("AREA");
    const ItemCopy first = *CopyOf(Store(), {"AREA", 1, 2});
    const ItemCopy far = *CopyOf(Store(), {"AREA", 2, 7});
    Choose("Remove the layer");
    EXPECT_LT(Store().FindBlock("AREA", 1).block, 0);
    EXPECT_EQ(window->Layers().List().topLevelItemCount(), 1) << "ROAD alone";
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(window->Layers().List().topLevelItemCount(), 2);
    EXPECT_EQ(BlockOf("AREA").datCnt, 3);
    EXPECT_TRUE(*CopyOf(Store(), {"AREA", 1, 2}) == first);
    EXPECT_TRUE(*CopyOf(Store(), {"AREA", 2, 7}) == far);
    const DigBlock& second = Store().Block(Store().FindBlock("AREA", 2).block);
    EXPECT_EQ(second.GX, 1000);
    EXPECT_EQ(second.GY, 2000);
    EXPECT_EQ(second.path, "somewhere");
    EXPECT_EQ(PixelAt(500, 100), 0x332211u);
    Press(Qt::CTRL | Qt::Key_Y);
    EXPECT_LT(Store().FindBlock("AREA", 2).block, 0);
}

TEST_F(FormWalk, LooksAndPresetsAreChosenInTheirFields) {
    window->Layers().Choose("AREA");
    LookEditor& looks = window->Layers().Looks();
    const auto layer = [this]() -> const LayerDef& { return Store().Layer(Store().FindLayDef("AREA")); };
    QComboBox* hatch = nullptr;
    for (QComboBox* box : looks.findChildren<QComboBox*>()) {
        if (box->itemText(1) == "rising lines") hatch = box;
    }
    ASSERT_NE(hatch, nullptr);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
    hatch->setFocus();
    QTest::keyClick(hatch, Qt::Key_Down);
    QTest::keyClick(hatch, Qt::Key_Down);
    Settle();
    EXPECT_EQ(layer().pgnType, 2);
    const bool wasOff = layer().outLine != 0;
    for (QCheckBox* box : looks.findChildren<QCheckBox*>()) {
        if (box->text() == "Outline") box->click();
    }
    Settle();
    EXPECT_NE(layer().outLine != 0, wasOff);
    const LayerState before = StateOf(layer());
    QAction* calm = nullptr;
    for (QAction* action : window->findChildren<QAction*>()) {
        if (action->text() == "Calm colours") calm = action;
    }
    ASSERT_NE(calm, nullptr);
    calm->trigger();
    Settle();
    EXPECT_NE(StateOf(layer()), before);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(StateOf(layer()), before);
}

TEST_F(FormWalk, WhatIsSelectedInAHiddenLayerIsNeitherCountedNorDeleted) {
    Click(PointOf(500, 100));
    EXPECT_EQ(SelectedCount(Store()), 1u);
    window->Layers().List().topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    Settle();
    EXPECT_EQ(SelectedCount(Store()), 0u);
    Press(Qt::Key_Delete);
    EXPECT_EQ(BlockOf("AREA").datCnt, 3);
}

TEST_F(FormWalk, MoreThanTheListShowsStaysSelected) {
    MakeLayer("TREE", kLayPoint);
    constexpr int kMore = 30;
    const int count = static_cast<int>(SelectionPanel::kMostRows) + kMore;
    for (int i = 1; i <= count; ++i) AddFeature("TREE", i, {i % 100 * 10.0}, {400.0 + i / 100});
    for (int i = 1; i <= count; ++i) Map().Call("OrvSetActDat", {"TREE", 1, i});
    Fit();
    ASSERT_EQ(SelectedCount(Store()), static_cast<std::size_t>(count));
    Press(Qt::Key_G);
    EXPECT_EQ(SelectedCount(Store()), static_cast<std::size_t>(count));
    window->Selection().List().clearSelection();
    window->Selection().List().topLevelItem(3)->setSelected(true);
    window->Selection().DropMarked();
    EXPECT_EQ(SelectedCount(Store()), static_cast<std::size_t>(count - 1));
    EXPECT_EQ(Store().FindDat("TREE", 1, 4)->active, 0);
}

TEST_F(FormWalk, MarksInTheListStayOverARefresh) {
    Click(PointOf(100, 100));
    Click(PointOf(500, 100), Qt::ControlModifier);
    Click(PointOf(900, 100), Qt::ControlModifier);
    QTreeWidget& list = window->Selection().List();
    ASSERT_EQ(list.topLevelItemCount(), 3);
    list.clearSelection();
    list.topLevelItem(1)->setSelected(true);
    list.topLevelItem(2)->setSelected(true);
    window->RefreshNow();
    EXPECT_EQ(list.selectedItems().size(), 2);
    window->Selection().KeepMarked();
    EXPECT_EQ(SelectedCount(Store()), 2u);
}

TEST_F(FormWalk, ATextIsPutIntoATextLayerByTheMouse) {
    MakeLayer("NAMES", kLayText);
    window->RefreshNow();
    window->findChild<ModeBar*>()->ChooseLayer("NAMES", 1);
    Press(Qt::Key_D);
    WhenAsked([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QString::fromUtf8("東京"));
        dialog.accept();
    });
    const QRgb before = PixelAt(600, 600);
    Click(PointOf(600, 600));
    ASSERT_EQ(BlockOf("NAMES").datCnt, 1);
    const DigDat& dat = BlockOf("NAMES").dats[0];
    ASSERT_NE(dat.str, nullptr);
    EXPECT_EQ(dat.str->text, "\x93\x8C\x8B\x9E");
    const double unit = Unit();
    EXPECT_NEAR(dat.str->x, 600, 2 * unit);
    EXPECT_NEAR(dat.str->y, 600, 2 * unit);
    bool inked = false;
    for (int i = 0; i < 20 && !inked; ++i) {
        for (int k = 0; k < 20; ++k)
            inked |= Map().Picture().pixel(PointOf(600, 600) * Map().devicePixelRatio() + QPoint(i, k)) != (before | 0xFF000000);
    }
    EXPECT_TRUE(inked);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("NAMES").datCnt, 0);
    Press(Qt::CTRL | Qt::Key_Y);
    EXPECT_EQ(BlockOf("NAMES").datCnt, 1);
}

TEST_F(FormWalk, TheMouseIsFreeAfterADialogThatTookItsRelease) {
    MakeLayer("NAMES", kLayText);
    window->RefreshNow();
    window->findChild<ModeBar*>()->ChooseLayer("NAMES", 1);
    Press(Qt::Key_D);
    WhenAsked([](QDialog& dialog) { dialog.reject(); });
    QTest::mousePress(&Map(), Qt::LeftButton, {}, PointOf(600, 600));  // the release goes to the dialog
    Settle();
    Click(PointOf(100, 100));
    EXPECT_EQ(SelectedCount(Store()), 1u) << "a press and a release, as any other click";
    Press(Qt::Key_D);
    WhenAsked([](QDialog& dialog) { dialog.reject(); });
    QTest::mousePress(&Map(), Qt::LeftButton, {}, PointOf(600, 600));
    Map().Call("OrvResetActiveAll");
    QTest::mouseMove(&Map(), PointOf(300, 300));
    Click(PointOf(100, 100));
    EXPECT_EQ(SelectedCount(Store()), 1u);
}

}  // namespace
}  // namespace orvane
