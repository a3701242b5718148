// Drawing, moving and selecting by a shape without a mouse.
#include "hosts/viewer/mode_bar.h"
#include "store/dat_lookup.h"
#include "tests/viewer/key_rig.h"

namespace orvane {
namespace {

class KeyPointerWalk : public KeyRig {
protected:
    KeyPointerWalk() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 300);
        MakeLayer("POLE", kLayPoint);
        AddFeature("POLE", 1, {400.0}, {400.0});
        Fit();
    }
};

TEST_F(KeyPointerWalk, AnAreaIsDrawn) {
    window->findChild<ModeBar*>()->ChooseLayer("AREA", 1);
    Press(Qt::Key_D);
    ClickAt(350, 100);
    ClickAt(400, 100);
    ClickAt(400, 200);
    GoTo(PointOf(380, 250));  // on the way to nowhere
    QTest::keyClick(&Map(), Qt::Key_Return);
    Settle();
    ASSERT_EQ(BlockOf("AREA").datCnt, 2);
    const DigDat& drawn = BlockOf("AREA").dats[1];
    ASSERT_EQ(drawn.pntCnt, 4);
    const double unit = Unit();
    const std::vector<QPointF> corners{{350, 100}, {400, 100}, {400, 200}};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        EXPECT_NEAR(drawn.pnts[i].x, corners[i].x(), 4 * unit);
        EXPECT_NEAR(drawn.pnts[i].y, corners[i].y(), 4 * unit);
    }
    Press(Qt::Key_Escape);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("AREA").datCnt, 1);
}

TEST_F(KeyPointerWalk, APointIsMoved) {
    Press(Qt::Key_M);
    ClickAt(400, 400);
    ClickAt(350, 380);
    const double unit = Unit();
    EXPECT_NEAR(BlockOf("POLE").dats[0].pnts[0].x, 350, 4 * unit);
    EXPECT_NEAR(BlockOf("POLE").dats[0].pnts[0].y, 380, 4 * unit);
}

TEST_F(KeyPointerWalk, AShapeSelects) {
    Map().Call("OrvResetActiveAll");
    window->Relations().Relation().setCurrentIndex(6);  // contains
    window->Relations().Shape().setCurrentIndex(2);
    Press(Qt::Key_B);
    ClickAt(380, 380);
    ClickAt(420, 380);
    ClickAt(420, 420);
    ClickAt(380, 420);
    QTest::keyClick(&Map(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(BlockOf("POLE").dats[0].active, 1);
    EXPECT_EQ(BlockOf("AREA").dats[0].active, 0);
}

TEST_F(KeyPointerWalk, WithoutAToolTheArrowsScroll) {
    const double before = Map().Control().viewX;
    Press(Qt::Key_Right);
    EXPECT_NE(Map().Control().viewX, before);
    EXPECT_FALSE(Cross().isVisible());
}

}  // namespace
}  // namespace orvane
