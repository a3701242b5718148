// The list of layers stays as the operator has it while the map is worked on.
#include <QScrollBar>
#include <QTreeWidget>

#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class LayerList : public Walk {
protected:
    LayerList() {
        for (int i = 10; i < 60; ++i) {
            const std::string code = "L" + std::to_string(i);
            MakeLayer(code.c_str(), kLayPolygon);
            for (int sub = 1; sub <= 2; ++sub) {
                Map().Call("OrvSetSubLayerEx", {code.c_str(), "sub", sub, true, 0, 1, 0, 0, 0, 1, 1});
            }
        }
        AddSquare("L10", 1, 0, 0, 100);
        Fit();
        List().collapseAll();
        List().setCurrentItem(List().topLevelItem(40));
        Settle();
        place_ = List().verticalScrollBar()->value();
        EXPECT_GT(place_, 0);
        code_ = window->Layers().ChosenCode();
    }
    QTreeWidget& List() { return window->Layers().List(); }
    void ExpectAsItWas() {
        EXPECT_EQ(List().verticalScrollBar()->value(), place_);
        EXPECT_EQ(window->Layers().ChosenCode(), code_);
        for (int i = 0; i < List().topLevelItemCount(); ++i) {
            const bool isNew = List().topLevelItem(i)->text(0).startsWith("NEW");
            EXPECT_TRUE(isNew || !List().topLevelItem(i)->isExpanded()) << i;
        }
    }
    int place_ = 0;
    std::string code_;
};

TEST_F(LayerList, AClickOnTheMapLeavesItAsItIs) {
    const QTreeWidgetItem* item = List().topLevelItem(3);
    Click(PointOf(50, 50));
    ASSERT_EQ(SelectedPlaces(Store()).size(), 1u);
    EXPECT_EQ(List().topLevelItem(3), item) << "nothing was made anew";
    ExpectAsItWas();
}

TEST_F(LayerList, ALookShowsInItsRow) {
    LayerChange look = Unchanged(Store().Layer(0));
    look.after.name = "name";
    look.after.shown = look.after.active = look.after.editable = false;
    window->History().ChangeLayers("look", {look});
    Settle();
    ExpectAsItWas();
    const std::string code(Store().Layer(0).code.View());
    const QList<QTreeWidgetItem*> rows = List().findItems(QString::fromStdString(code) + " name", Qt::MatchStartsWith);
    ASSERT_EQ(rows.size(), 1);
    for (int column = 0; column < 3; ++column) EXPECT_EQ(rows[0]->checkState(column), Qt::Unchecked);
}

TEST_F(LayerList, ALayerThatComesLeavesTheOthersClosedAndTheListInItsPlace) {
    MakeLayer("NEW", kLayPoint);
    window->RefreshNow();
    ASSERT_EQ(List().topLevelItemCount(), 51);
    ExpectAsItWas();
}

TEST_F(LayerList, ALayerThatIsMovedStaysInSight) {
    for (int i = 0; i < 40; ++i) Press(Qt::CTRL | Qt::Key_PageUp);
    EXPECT_EQ(window->Layers().ChosenCode(), code_);
    EXPECT_EQ(List().topLevelItem(0), List().currentItem());
    EXPECT_TRUE(List().viewport()->rect().intersects(List().visualItemRect(List().currentItem())));
}

TEST_F(LayerList, ABoxThatIsSwitchedTwiceShowsWhatTheLayerIs) {
    QTreeWidgetItem* item = List().topLevelItem(0);
    item->setCheckState(0, Qt::Unchecked);
    item->setCheckState(0, Qt::Checked);
    Settle();
    const LayerDef& layer = Store().Layer(Store().FindLayDef(item->text(0).section(' ', 0, 0).toStdString()));
    EXPECT_EQ(List().topLevelItem(0)->checkState(0) == Qt::Checked, layer.dspFlg != 0);
}

}  // namespace
}  // namespace orvane
