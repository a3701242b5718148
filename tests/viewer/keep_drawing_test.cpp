// Many figures of one layer, one after the other.
#include "hosts/viewer/mode_bar.h"
#include "hosts/viewer/settings.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class KeepDrawing : public Walk {
protected:
    KeepDrawing() {
        MakeLayer("TREE", kLayPoint);
        Fit();
        window->findChild<ModeBar*>()->ChooseLayer("TREE", 1);
    }
    ~KeepDrawing() override { Settings().remove("keepDrawing"); }
    QPoint Place(int n) { return Map().rect().center() + QPoint(40 * n, 10 * n); }
    void Plant(int n) {
        Click(Place(n));
        Settle();
    }
    int Trees() { return BlockOf("TREE").datCnt; }
};

TEST_F(KeepDrawing, AFigureEndsTheToolUntilTheOperatorWantsMany) {
    Press(Qt::Key_D);
    Plant(0);
    ASSERT_EQ(Trees(), 1);
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    Plant(1);
    EXPECT_EQ(Trees(), 1);
}

TEST_F(KeepDrawing, EachClickMakesAPointUntilEscapeAndEachIsAStep) {
    Press(Qt::SHIFT | Qt::Key_D);
    Press(Qt::Key_D);
    for (int n = 0; n < 4; ++n) Plant(n);
    EXPECT_EQ(Trees(), 4);
    EXPECT_EQ(Map().RunMode(), kRunAddCollect);
    Press(Qt::Key_Escape);
    Settle();
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    Plant(5);
    EXPECT_EQ(Trees(), 4);
    EXPECT_EQ(window->History().Stack().count(), 4);
    Press(Qt::CTRL | Qt::Key_Z);
    Settle();
    EXPECT_EQ(Trees(), 3);
    EXPECT_EQ(Map().RunMode(), kRunNormal) << "what is taken back begins nothing";
}

TEST_F(KeepDrawing, ItHoldsForTheNextWindowAndEndsWithAnotherTool) {
    Press(Qt::SHIFT | Qt::Key_D);
    Press(Qt::Key_D);
    Plant(0);
    Press(Qt::Key_S);
    Settle();
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    EXPECT_EQ(Trees(), 1);
    MainWindow next;
    EXPECT_TRUE(next.FindAction("Keep drawing")->isChecked());
}

}  // namespace
}  // namespace orvane
