// One feature picked, told of or reached by keys alone, in every mode that takes a click.
#include <QToolTip>

#include "hosts/viewer/mode_bar.h"
#include "store/dat_lookup.h"
#include "tests/viewer/key_rig.h"

namespace orvane {
namespace {

class KeyPick : public KeyRig {
protected:
    KeyPick() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 300);
        AddSquare("AREA", 2, 400, 0, 300);
        AddSquare("AREA", 3, 500, 100, 100);  // in the one before
        MakeLayer("ROAD", kLayLine);
        AddFeature("ROAD", 1, {0.0, 300.0, 600.0}, {500.0, 500.0, 500.0});
        Fit();
        Map().Call("OrvResetActiveAll");
    }
    ~KeyPick() override { window->Files().New(); }

    void PressOn(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Map(), key, modifiers);
        Settle();
    }
    std::vector<int> Selected(const char* code = "AREA") {
        std::vector<int> ids;
        for (const DigDat& dat : BlockOf(code).dats) {
            if (dat.active == 1) ids.push_back(dat.datID);
        }
        return ids;
    }
    const DigDat& Road() { return BlockOf("ROAD").dats[0]; }
};

TEST_F(KeyPick, SpaceBringsTheCrossAndSelectsOneFeature) {
    EXPECT_FALSE(Cross().isVisible());
    Press(Qt::Key_Space);
    ASSERT_TRUE(Cross().isVisible());
    EXPECT_TRUE(Selected().empty()) << "the first only asks for the cross";
    ClickAt(150, 150);
    EXPECT_EQ(Selected(), std::vector{1});
    EXPECT_EQ(window->Selection().Current()->key.datID, 1) << "the lists follow";
    ClickAt(450, 50);
    EXPECT_EQ(Selected(), std::vector{2});
}

TEST_F(KeyPick, ControlAndSpaceAddAFeatureAndTakeItAway) {
    Press(Qt::Key_Space);
    ClickAt(150, 150);
    ClickAt(450, 50, Qt::ControlModifier);
    EXPECT_EQ(Selected(), (std::vector{1, 2}));
    ClickAt(150, 150, Qt::ControlModifier);
    EXPECT_EQ(Selected(), std::vector{2});
}

TEST_F(KeyPick, ShiftAndSpaceStepThroughAStack) {
    Press(Qt::Key_Space);
    ClickAt(550, 150);
    const std::vector<int> top = Selected();
    ASSERT_EQ(top.size(), 1u);
    ClickAt(550, 150, Qt::ShiftModifier);
    ASSERT_EQ(Selected().size(), 1u);
    EXPECT_NE(Selected(), top);
    EXPECT_GE(Selected().front(), 2);
}

TEST_F(KeyPick, EscapeGivesTheArrowsBackToTheMap) {
    Press(Qt::Key_Space);
    const double before = Map().Control().viewX;
    Press(Qt::Key_Right);
    EXPECT_EQ(Map().Control().viewX, before);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Cross().isVisible());
    Press(Qt::Key_Right);
    EXPECT_NE(Map().Control().viewX, before);
}

TEST_F(KeyPick, EnterDragsARectangleThatSelects) {
    Press(Qt::Key_Space);
    GoTo(PointOf(380, -20));
    PressOn(Qt::Key_Return);
    GoTo(PointOf(720, 320));
    EXPECT_TRUE(Selected().empty()) << "the button is still held";
    PressOn(Qt::Key_Return);
    EXPECT_EQ(Selected(), (std::vector{2, 3}));
    GoTo(PointOf(-20, -20));
    PressOn(Qt::Key_Return);
    GoTo(PointOf(320, 320));
    PressOn(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Selected(), (std::vector{1, 2, 3})) << "with Ctrl it adds";
}

TEST_F(KeyPick, ADragThatIsGivenUpSelectsNothing) {
    Press(Qt::Key_Space);
    ClickAt(150, 150);
    for (const QPointF to : {QPointF(380, -20), QPointF(720, 320)}) {
        GoTo(PointOf(380, -20));
        PressOn(Qt::Key_Return);
        GoTo(PointOf(to.x(), to.y()));
        PressOn(Qt::Key_Escape);
        EXPECT_TRUE(Cross().isVisible()) << "the next Escape puts it away";
        EXPECT_EQ(Selected(), std::vector{1});
        GoTo(PointOf(720, 350));  // no button is held any more
        EXPECT_EQ(Selected(), std::vector{1});
    }
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Cross().isVisible());
}

TEST_F(KeyPick, ADragEndsWhenTheMapLosesTheKeyboard) {
    Press(Qt::Key_Space);
    GoTo(PointOf(380, -20));
    PressOn(Qt::Key_Return);
    GoTo(PointOf(720, 320));
    Press(Qt::Key_F3);
    EXPECT_FALSE(Cross().isVisible());
    EXPECT_TRUE(Selected().empty());
}

TEST_F(KeyPick, ARectangleZoomsWithoutAMouse) {
    const QPointF low(400, 0);
    const QPointF high(700, 300);
    const std::int32_t before = Map().Zoom();
    Press(Qt::Key_R);
    GoTo(PointOf(low.x(), high.y()));
    PressOn(Qt::Key_Space);
    GoTo(PointOf(high.x(), low.y()));
    PressOn(Qt::Key_Space);
    EXPECT_LT(Map().Zoom(), before);
    const COrvane4Ctrl& ctrl = Map().Control();
    const double wide = ctrl.ScreenToWorldX(Map().Picture().width()) - ctrl.ScreenToWorldX(0);
    const double high_m = ctrl.ScreenToWorldY(0) - ctrl.ScreenToWorldY(Map().Picture().height());
    EXPECT_NEAR((std::min)(wide, high_m), 300, 0.1 * 300) << "the rectangle fills the window";
    EXPECT_TRUE(Selected().empty());
}

TEST_F(KeyPick, ARectangleToZoomByIsGivenUpBeforeAndInItsDrag) {
    const std::int32_t before = Map().Zoom();
    Press(Qt::Key_R);
    GoTo(PointOf(400, 300));
    PressOn(Qt::Key_Space);
    GoTo(PointOf(700, 0));
    PressOn(Qt::Key_Escape);
    EXPECT_NE(Map().Control().rectZoomMode, 0);
    PressOn(Qt::Key_Escape);
    EXPECT_EQ(Map().Control().rectZoomMode, 0);
    EXPECT_EQ(Map().Zoom(), before);
    EXPECT_TRUE(Selected().empty());
}

TEST_F(KeyPick, HTellsOfTheFeatureUnderTheCross) {
    Press(Qt::Key_Space);
    GoTo(PointOf(150, 150));
    PressOn(Qt::Key_H);
    EXPECT_TRUE(QToolTip::text().contains("AREA / 1: 1")) << QToolTip::text().toStdString();
    EXPECT_TRUE(Selected().empty()) << "telling selects nothing";
    QToolTip::hideText();
}

TEST_F(KeyPick, WhereAClickPansSpaceGoesBackToSelecting) {
    Press(Qt::Key_P);
    ASSERT_EQ(Map().RunMode(), kRunPan);
    Press(Qt::Key_Space);
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    ClickAt(150, 150);
    EXPECT_EQ(Selected(), std::vector{1});
}

TEST_F(KeyPick, TheMouseTakesOver) {
    Press(Qt::Key_Space);
    const QPoint to = Map().rect().center() + QPoint(40, 40);
    QTest::mouseMove(window->windowHandle(), Map().mapTo(window.get(), to));
    Settle();
    EXPECT_FALSE(Cross().isVisible());
}

TEST_F(KeyPick, ADeletedFeatureIsChosenByTheCross) {
    Press(Qt::Key_K);
    ClickAt(150, 150);
    EXPECT_EQ(BlockOf("AREA").datCnt, 2);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("AREA").datCnt, 3);
}

TEST_F(KeyPick, ACopyIsChosenAndPlaced) {
    Press(Qt::Key_C);
    ClickAt(300, 500);
    ClickAt(300, 400);
    ASSERT_EQ(BlockOf("ROAD").datCnt, 2);
    EXPECT_NEAR(BlockOf("ROAD").dats[1].pnts[1].y, 400, 4 * Unit());
}

TEST_F(KeyPick, AVertexIsChosenAndMoved) {
    Press(Qt::Key_V);
    ClickAt(150, 500);  // the line
    ClickAt(300, 500);  // its vertex
    ClickAt(300, 400);
    ClickAt(600, 300);  // beside it ends
    EXPECT_NEAR(Road().pnts[1].y, 400, 4 * Unit());
    EXPECT_LT(Map().RunMode(), kRunAddEdit);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(Road().pnts[1].y, 500);
}

TEST_F(KeyPick, AVertexIsChosenAndDeleted) {
    Press(Qt::Key_X);
    ClickAt(150, 500);
    ClickAt(300, 500);
    ClickAt(600, 300);
    EXPECT_EQ(Road().pntCnt, 2);
}

TEST_F(KeyPick, AVertexIsAdded) {
    Press(Qt::Key_A);
    ClickAt(150, 500);
    ClickAt(220, 400);
    PressOn(Qt::Key_Return);
    ASSERT_EQ(Road().pntCnt, 4);
    EXPECT_NEAR(Road().pnts[1].x, 220, 4 * Unit()) << "between the two whose line was met";
    EXPECT_NEAR(Road().pnts[1].y, 400, 4 * Unit());
}

}  // namespace
}  // namespace orvane
