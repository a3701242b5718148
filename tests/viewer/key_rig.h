// An operator without a mouse: the cross over the map.
#pragma once

#include "hosts/viewer/key_pointer.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {

class KeyRig : public Walk {
protected:
    /// Presses arrows until the cross is at a place of the map's widget; it starts in the middle.
    void GoTo(QPoint to) {
        const QPoint at = Cross().isVisible() ? Cross().geometry().center() : Map().rect().center();
        const auto go = [&](int from, int until, Qt::Key back, Qt::Key on) {
            int way = until - from;
            while (way != 0) {
                const bool large = std::abs(way) >= KeyPointer::kLargeStep;
                const int step = large ? KeyPointer::kLargeStep : 1;
                QTest::keyClick(&Map(), way < 0 ? back : on, large ? Qt::ShiftModifier : Qt::NoModifier);
                way += way < 0 ? step : -step;
            }
        };
        go(at.x(), to.x(), Qt::Key_Left, Qt::Key_Right);
        go(at.y(), to.y(), Qt::Key_Up, Qt::Key_Down);
        ASSERT_TRUE(Cross().isVisible());
        ASSERT_EQ(Cross().geometry().center(), to);
    }
    void ClickAt(double x, double y, Qt::KeyboardModifiers modifiers = {}) {
        GoTo(PointOf(x, y));
        QTest::keyClick(&Map(), Qt::Key_Space, modifiers);
        Settle();
    }
    QWidget& Cross() { return *Map().findChild<KeyPointer*>(); }
};

}  // namespace orvane
