// The place that the status bar tells while the cursor rests and the map moves under it.
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class RestingCursor : public Walk {
protected:
    RestingCursor() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 1000);
        Fit();
        QObject::connect(&Map(), &OrvaneWidget::MouseMove, [this](short, short, int x, int y) { heard_px_ = {x, y}; });
    }
    /// What the label has to say of the place where the map heard of the cursor.
    QString PlaceHere() {
        const COrvane4Ctrl& ctrl = Map().Control();
        return QStringLiteral("X (east) %1 Y (north) %2")
            .arg(ctrl.ScreenToWorldX(heard_px_.x()), 0, 'f', 1)
            .arg(ctrl.ScreenToWorldY(heard_px_.y()), 0, 'f', 1);
    }
    void Rest(QPoint at) {
        QTest::mouseMove(&Map(), at + QPoint(3, 3));
        QTest::mouseMove(&Map(), at);
        Settle();
    }

private:
    QPoint heard_px_;
};

TEST_F(RestingCursor, ScrollZoomAndFitByKeyTellWhereItIsNow) {
    Rest({200, 150});
    ASSERT_EQ(window->Place().text(), PlaceHere());
    for (const QKeyCombination key : {QKeyCombination(Qt::Key_Right), QKeyCombination(Qt::Key_Up), QKeyCombination(Qt::Key_Plus),
                                      Qt::SHIFT | Qt::Key_Left, QKeyCombination(Qt::Key_Minus), QKeyCombination(Qt::Key_Home)}) {
        const QString before = window->Place().text();
        Press(key);
        EXPECT_EQ(window->Place().text(), PlaceHere()) << QKeySequence(key).toString().toStdString();
        EXPECT_NE(window->Place().text(), before);
    }
}

TEST_F(RestingCursor, AnotherMapIsToldOfInItsOwnCoordinates) {
    Rest({200, 150});
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    Settle();
    ASSERT_TRUE(window->Place().IsMeshMap());
    EXPECT_TRUE(window->Place().text().startsWith("mesh 5339")) << window->Place().text().toStdString();
}

TEST_F(RestingCursor, BeforeItIsOverTheMapNothingIsTold) {
    Press(Qt::Key_Right);
    EXPECT_TRUE(window->Place().text().isEmpty());
}

}  // namespace
}  // namespace orvane
