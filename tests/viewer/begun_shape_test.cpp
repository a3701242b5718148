// A shape or a click that is begun is the last thing that the operator did: undo ends it, and nothing else.
#include <QLineEdit>

#include "hosts/viewer/mode_bar.h"
#include "hosts/viewer/relation_bar.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/shape_tool.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class BegunShape : public Walk {
protected:
    BegunShape() {
        MakeLayer("NAME", kLayText);
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 1000);
        Fit();
    }
    ~BegunShape() override { Settings().remove("keepDrawing"); }
    ShapeTool& Shape() { return *Map().findChild<ShapeTool*>(); }
    QAction& Undo() { return *window->FindAction("Undo"); }
    void EditOnce() {
        window->History().Change("deleting", Deletion(Store(), {"AREA", 1, 1}));
        Settle();
        ASSERT_EQ(BlockOf("AREA").datCnt, 0);
    }
    void BeginText() {
        window->findChild<ModeBar*>()->ChooseLayer("NAME", 1);
        Press(Qt::Key_D);
        ASSERT_TRUE(Shape().IsRunning());
    }
    void WhenAskedForText(const char* text) {
        WhenAsked([text](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText(text);
            dialog.accept();
        });
    }
    int Texts() { return BlockOf("NAME").datCnt; }
};

TEST_F(BegunShape, UndoEndsAShapeThatHasPointsAndLeavesTheEditBefore) {
    EditOnce();
    window->Relations().Shape().setCurrentIndex(window->Relations().Shape().findData(3));
    Press(Qt::Key_B);
    Click(PointOf(100, 100));
    Click(PointOf(500, 100));
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_FALSE(Shape().IsRunning());
    EXPECT_EQ(BlockOf("AREA").datCnt, 0);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("AREA").datCnt, 1) << "the next one is the edit";
}

TEST_F(BegunShape, UndoEndsAShapeWhereNothingElseIsToBeUndone) {
    EXPECT_FALSE(Undo().isEnabled());
    Press(Qt::Key_B);
    EXPECT_TRUE(Undo().isEnabled());
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_FALSE(Shape().IsRunning());
    EXPECT_FALSE(Undo().isEnabled());
}

TEST_F(BegunShape, UndoEndsATextThatWaitsForItsClick) {
    EditOnce();
    BeginText();
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_FALSE(Shape().IsRunning());
    EXPECT_EQ(BlockOf("AREA").datCnt, 0);
}

TEST_F(BegunShape, RedoIsNoEndOfItAlone) {
    EditOnce();
    window->History().Undo();
    Settle();
    Press(Qt::Key_B);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    EXPECT_FALSE(Shape().IsRunning());
    EXPECT_EQ(BlockOf("AREA").datCnt, 0);
}

TEST_F(BegunShape, ATextIsFollowedByTheNextOneWhereTheOperatorKeepsDrawing) {
    Press(Qt::SHIFT | Qt::Key_D);
    BeginText();
    for (const int n : {1, 2}) {
        WhenAskedForText("Town");
        Click(PointOf(300.0 * n, 500));
        EXPECT_EQ(Texts(), n);
        EXPECT_TRUE(Shape().IsRunning());
    }
    WhenAsked([](QDialog& dialog) { dialog.reject(); });
    Click(PointOf(500, 800));
    EXPECT_EQ(Texts(), 2);
    EXPECT_FALSE(Shape().IsRunning()) << "who gives a text up wants no other one";
    EXPECT_EQ(window->History().Stack().count(), 2);
}

TEST_F(BegunShape, ATextIsTheLastOneWithoutTheSwitch) {
    BeginText();
    WhenAskedForText("Town");
    Click(PointOf(300, 500));
    EXPECT_EQ(Texts(), 1);
    EXPECT_FALSE(Shape().IsRunning());
}

}  // namespace
}  // namespace orvane
