// A sub layer whose number is 0, as exchange texts of other programs bring it, is not taken for its layer.
#include <QTreeWidget>

#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class SubLayerZero : public Walk {
protected:
    SubLayerZero() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 100);
        for (const int no : {0, 2}) {
            EXPECT_TRUE(Map().Call("OrvSetSubLayerEx", {"AREA", "sub", no, true, 0, 1, 0, 0, 0, 1, 1}).toBool());
        }
        Fit();
    }
    QTreeWidget& List() { return window->Layers().List(); }
    QTreeWidgetItem* Zero() { return List().topLevelItem(0)->child(0); }
    const LayerDef& Layer() { return Store().Layer(Store().FindLayDef("AREA")); }
    /// What is told, and that the layer and its sub layers are as they were.
    template <class Work>
    void ExpectRefused(Work work) {
        const LayerState before = StateOf(Layer());
        WhenTold(QMessageBox::Ok);
        work();
        Settle();
        EXPECT_TRUE(said.contains("its number is 0")) << said.toStdString();
        EXPECT_EQ(StateOf(Layer()), before);
        EXPECT_EQ(Layer().subLays.size(), 2u);
        EXPECT_EQ(BlockOf("AREA").datCnt, 1);
        EXPECT_EQ(window->History().Stack().count(), 0);
        said.clear();
    }
};

TEST_F(SubLayerZero, ItIsARowBelowItsLayer) {
    ASSERT_EQ(List().topLevelItemCount(), 1);
    ASSERT_EQ(List().topLevelItem(0)->childCount(), 2);
    EXPECT_EQ(Zero()->text(0), "0  sub");
    EXPECT_FALSE(Zero()->data(1, Qt::CheckStateRole).isValid()) << "the boxes beside are the layer's";
}

TEST_F(SubLayerZero, ItsRemovalIsNotThatOfTheLayer) {
    List().setCurrentItem(Zero());
    ExpectRefused([this] { Choose("Remove the layer"); });
}

TEST_F(SubLayerZero, ItsBoxAndItsKeyDoNotHideTheLayer) {
    List().setCurrentItem(Zero());
    ExpectRefused([this] { Zero()->setCheckState(0, Qt::Unchecked); });
    EXPECT_EQ(Zero()->checkState(0), Qt::Checked);
    ExpectRefused([this] { Press(Qt::Key_F7); });
}

TEST_F(SubLayerZero, ItsNameAndItsLookAreNotThoseOfTheLayer) {
    List().setCurrentItem(Zero());
    Settle();
    EXPECT_FALSE(window->Layers().Looks().isEnabled());
    ExpectRefused([this] { Choose("Rename the layer"); });
    List().setCurrentItem(List().topLevelItem(0)->child(1));
    EXPECT_TRUE(window->Layers().Looks().isEnabled()) << "a sub layer of another number has a look of its own";
}

TEST_F(SubLayerZero, TheListKeepsTheChosenRow) {
    List().setCurrentItem(Zero());
    MakeLayer("NEW", kLayPoint);
    window->RefreshNow();
    ASSERT_NE(List().currentItem(), nullptr);
    EXPECT_EQ(List().currentItem()->text(0), "0  sub");
}

}  // namespace
}  // namespace orvane
