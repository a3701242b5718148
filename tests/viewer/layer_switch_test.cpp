// The switches of a layer without a mouse.
#include <QMenu>

#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class LayerSwitches : public Walk {
protected:
    LayerSwitches() {
        MakeLayer("ROAD", kLayLine);
        AddFeature("ROAD", 1, {0.0, 100.0}, {0.0, 0.0});
        MakeLayer("POLE", kLayPoint);
        AddFeature("POLE", 1, {50.0}, {50.0});
        Fit();
        window->Layers().Choose("POLE");
        EXPECT_TRUE(window->Layers().MakeSubLayer(3, "tall"));
        Fit();
    }
    const LayerDef& Layer(const char* code) { return Store().Layer(Store().FindLayDef(code)); }
    /// A key where the keyboard is.
    static void Key(Qt::Key key) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key);
        Settle();
    }
    /// Into the list of layers, and with Up and Down to a row.
    void GoTo(const char* code, std::int32_t subLayNo = 0) {
        Press(Qt::Key_F2);
        QTreeWidget& list = window->Layers().List();
        ASSERT_TRUE(list.hasFocus());
        Key(Qt::Key_Home);
        const auto isThere = [&] {
            const QTreeWidgetItem* at = list.currentItem();
            return at->data(0, Qt::UserRole).toByteArray() == code && at->data(0, Qt::UserRole + 1).toInt() == subLayNo;
        };
        for (int i = 0; i < 5 && !isThere(); ++i) Key(Qt::Key_Down);
        ASSERT_TRUE(isThere());
    }
};

TEST_F(LayerSwitches, AKeyEachTurnsThemForTheLayerThatIsMarkedInTheList) {
    for (const char* code : {"ROAD", "POLE"}) {
        GoTo(code);
        Key(Qt::Key_F7);
        EXPECT_EQ(Layer(code).dspFlg, 0);
        EXPECT_TRUE(window->Layers().List().hasFocus()) << "the keyboard stays in the list";
        EXPECT_EQ(window->Layers().ChosenCode(), code);
        Key(Qt::Key_F8);
        EXPECT_EQ(Layer(code).actFlg, 0);
        Key(Qt::Key_F9);
        EXPECT_EQ(Layer(code).editFlg, 0);
        Key(Qt::Key_F8);
        EXPECT_NE(Layer(code).actFlg, 0);
        EXPECT_EQ(Layer(code).editFlg, 0);
        EXPECT_EQ(Layer(code).dspFlg, 0);
    }
}

TEST_F(LayerSwitches, OfASubLayerTheFirstTurnsItAndTheOthersItsLayer) {
    GoTo("POLE", 3);
    Key(Qt::Key_F7);
    EXPECT_EQ(CDigMem::FindSubLay(Layer("POLE"), 3)->dspFlg, 0);
    EXPECT_NE(Layer("POLE").dspFlg, 0);
    Key(Qt::Key_F8);
    EXPECT_EQ(Layer("POLE").actFlg, 0);
    Key(Qt::Key_F9);
    EXPECT_EQ(Layer("POLE").editFlg, 0);
}

TEST_F(LayerSwitches, EachTurnIsAStepThatCanBeUndone) {
    GoTo("ROAD");
    const int steps = window->History().Stack().count();
    Key(Qt::Key_F9);
    EXPECT_EQ(Layer("ROAD").editFlg, 0);
    EXPECT_EQ(window->History().Stack().count(), steps + 1);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_NE(Layer("ROAD").editFlg, 0);
}

TEST_F(LayerSwitches, TheMenuShowsHowTheyStand) {
    GoTo("ROAD");
    Key(Qt::Key_F8);
    QAction* selected = window->FindAction("Let it be selected");
    QAction* edited = window->FindAction("Let it be edited");
    ASSERT_TRUE(selected != nullptr && edited != nullptr);
    for (QMenu* menu : window->findChildren<QMenu*>()) {
        if (menu->actions().contains(selected)) emit menu->aboutToShow();
    }
    EXPECT_FALSE(selected->isChecked());
    EXPECT_TRUE(edited->isChecked());
    EXPECT_TRUE(window->FindAction("Show it")->isChecked());
}

TEST_F(LayerSwitches, WithoutALayerTheirKeysDoNothing) {
    window->Files().New();
    Settle();
    for (const Qt::Key key : {Qt::Key_F7, Qt::Key_F8, Qt::Key_F9}) Press(key);
    EXPECT_EQ(window->History().Stack().count(), 0);
}

}  // namespace
}  // namespace orvane
