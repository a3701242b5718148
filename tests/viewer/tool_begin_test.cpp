// A tool that is ended before it has begun, by keys or by a press that looks like the second of a double click.
#include "hosts/viewer/key_pointer.h"
#include "hosts/viewer/mode_bar.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class ToolBegin : public Walk {
protected:
    void Start(int layType) {
        MakeLayer("AREA", layType);
        Fit();
        window->History().NoteSaved();
        window->findChild<ModeBar*>()->ChooseLayer("AREA", 1);
        Press(Qt::Key_D);
        ASSERT_EQ(Map().RunMode(), kRunAddCollect);
    }
    void ExpectNothingHappened() {
        EXPECT_EQ(BlockOf("AREA").datCnt, 0);
        EXPECT_EQ(window->History().Stack().count(), 0);
        EXPECT_FALSE(window->History().IsModified());
    }
    QPoint Middle() { return Map().rect().center(); }
};

TEST_F(ToolBegin, EnterBeforeAnyPointOfALineEndsNothing) {
    Start(kLayLine);
    Press(Qt::Key_Right);
    Press(Qt::Key_Return);
    ExpectNothingHappened();
    EXPECT_EQ(Map().RunMode(), kRunAddCollect) << "the tool waits for its first point";
}

TEST_F(ToolBegin, EnterBeforeAnyPointOfAnAreaEndsNothing) {
    Start(kLayPolygon);
    Press(Qt::Key_Right);
    Press(Qt::Key_Return);
    ExpectNothingHappened();
    QTest::keyClick(&Map(), Qt::Key_Space);
    Press(Qt::Key_Return);
    EXPECT_EQ(BlockOf("AREA").datCnt, 1) << "after a point it ends the figure";
    EXPECT_EQ(window->History().Stack().count(), 1);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("AREA").datCnt, 0);
}

TEST_F(ToolBegin, ASecondPressRightAfterTheToolWasChosenIsItsFirstPoint) {
    MakeLayer("AREA", kLayPolygon);
    Fit();
    window->findChild<ModeBar*>()->ChooseLayer("AREA", 1);
    Click(Middle());
    Press(Qt::Key_D);
    QTest::mouseDClick(&Map(), Qt::LeftButton, {}, Middle());
    Settle();
    EXPECT_EQ(BlockOf("AREA").datCnt, 0);
    EXPECT_EQ(Map().RunMode(), kRunAddCollect);
    Click(Middle() + QPoint(40, 0));
    DoubleClick(Middle() + QPoint(40, 40));
    ASSERT_EQ(BlockOf("AREA").datCnt, 1);
    EXPECT_EQ(BlockOf("AREA").dats[0].pntCnt, 4) << "three clicks and the end that closes the ring";
    EXPECT_EQ(window->History().Stack().count(), 1);
}

TEST_F(ToolBegin, ASecondPressRightAfterTheToolWasChosenPicksAFeature) {
    MakeLayer("POLE", kLayPoint);
    AddFeature("POLE", 1, {0.0}, {0.0});
    AddFeature("POLE", 2, {100.0}, {100.0});
    Fit();
    Press(Qt::Key_K);
    QTest::mouseDClick(&Map(), Qt::LeftButton, {}, PointOf(100, 100));
    Settle();
    ASSERT_EQ(BlockOf("POLE").datCnt, 1);
    EXPECT_EQ(BlockOf("POLE").dats[0].datID, 1);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("POLE").datCnt, 2);
}

TEST_F(ToolBegin, ADoubleClickBesideAllFeaturesDoesNotEndAddingPoints) {
    MakeLayer("ROAD", kLayLine);
    AddFeature("ROAD", 1, {0.0, 100.0}, {0.0, 0.0});
    AddFeature("ROAD", 2, {0.0, 100.0}, {100.0, 100.0});
    Fit();
    Press(Qt::Key_A);
    DoubleClick(PointOf(50, 50));
    EXPECT_EQ(Map().RunMode(), kRunEditPntAdd);
    EXPECT_EQ(window->History().Stack().count(), 0);
}

TEST_F(ToolBegin, ACircleThatEndsWithItsFirstPointIsNotDrawn) {
    Start(kLayCircle);
    DoubleClick(Middle());
    ExpectNothingHappened();
}

}  // namespace
}  // namespace orvane
