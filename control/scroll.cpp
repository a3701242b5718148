// Moving the view within its limits: programmatic scrolls and the ticks of the two held-button scrolls.
#include <cmath>

#include "control/ctrl.h"
#include "platform/rect.h"

namespace orvane {

namespace {

/// New position of one axis. `low` and `high` are its limits, `extent` the view's size, all in map units.
double ClampedMove(double now, double wanted, double extent, double low, double high) {
    if (!(high > extent)) return low;
    if (wanted > low) return wanted + extent < high ? wanted : high - extent;
    // At the lower limit the old position comes in once more; hosts know the view's way of creeping up to its edge.
    return std::fabs(wanted) < now ? wanted + now : low;
}

}  // namespace

std::int32_t COrvane4Ctrl::MoveView(double dx, double dy, bool redraw) {
    const Rect client = window_.ClientRect();
    const double H = store.view.PixToWorldF(client.bottom - client.top);
    const double W = store.view.PixToWorldF(client.right - client.left);
    if (H > areaBottom && W > areaRight) return 0;
    const double oldX = viewX;
    const double oldY = viewY;
    viewY = ClampedMove(oldY, oldY + dy, H, areaTop, areaBottom);
    viewX = ClampedMove(oldX, oldX + dx, W, areaLeft, areaRight);
    if (!redraw) return 1;
    const std::unique_ptr<DeviceContext> dc = window_.AcquireDC();
    if (viewX == oldX && viewY == oldY) {
        Redraw(*dc, 0);
    } else {
        RedrawScroll(*dc, oldX, oldY);
    }
    return 1;
}

void COrvane4Ctrl::ScrollTick() {
    const Scope scope(*this);
    const Rect client = window_.ClientRect();
    if (!PtInRect(client, window_.ScreenToClient(window_.CursorPos()))) {
        scrollActive = false;
        window_.StopTimer(kScrollTimer);
        window_.SetCursorShape(CursorShape::Arrow);
        return;
    }
    const double dy = store.view.PixToWorldF(2 * lastMouseY - client.bottom) / 20.0;
    const double dx = store.view.PixToWorldF(2 * lastMouseX - client.right) / 20.0;
    MoveView(dx, dy, true);
}

void COrvane4Ctrl::PanTick() {
    const Scope scope(*this);
    const Point cursor = window_.ScreenToClient(window_.CursorPos());
    if (!PtInRect(window_.ClientRect(), cursor)) {
        // The pan's own timer goes on: the pan is taken up again when the cursor comes back.
        scrollActive = false;
        window_.StopTimer(kScrollTimer);
        window_.SetCursorShape(CursorShape::Arrow);
        return;
    }
    const double dx = lastMouseX - cursor.x;
    const double dy = lastMouseY - cursor.y;
    if (dx == 0 && dy == 0) return;
    MoveView(store.view.PixToWorldF(dx), store.view.PixToWorldF(dy), true);
    lastMouseX = cursor.x;
    lastMouseY = cursor.y;
}

void COrvane4Ctrl::EndScroll(std::int32_t timerId) {
    const Scope scope(*this);
    window_.StopTimer(timerId);
    scrollActive = false;
    RedrawWindow(0);
    window_.SetCursorShape(CursorShape::Arrow);
}

}  // namespace orvane
