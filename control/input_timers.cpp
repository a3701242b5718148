// What comes to the control without a mouse button: timer ticks, keys and the wheel.
#include <cmath>

#include "control/ctrl.h"
#include "control/rubber_line.h"

namespace orvane {

void COrvane4Ctrl::OnTimer(std::int32_t id) {
    const Scope scope(*this);
    if (id == kScrollTimer) ScrollTick();
    if (id == kHintTimer) HintTick();
    if (id == kRectTimer) DrawRubberRect();
    if (id == kPanTimer) PanTick();
}

/// The clock counts whole seconds, so the rest that a hint needs is between one and two, by where in a second the last move fell.
void COrvane4Ctrl::HintTick() {
    const Point cursor = window_.CursorPos();
    if (cursor != window_.ClientToScreen(input.lastMovePos)) {
        // The cursor left the place without a move that came here.
        window_.StopTimer(kHintTimer);
        return;
    }
    if (!(std::floor(window_.Clock_s()) - input.lastMoveTime_s > 1.0)) return;
    const FoundItem item = PickForHint(store, input.lastMovePos, PlaceOfPicks());
    // Stopped before the host hears of it too: one that waits inside its handler would be told again at each tick.
    window_.StopTimer(kHintTimer);
    if (!item.Found()) return;
    FireItem(kOnHintStart, item, cursor);
    window_.StopTimer(kHintTimer);
}

void COrvane4Ctrl::DrawRubberRect() {
    const Point start = input.rectStart;
    const Point end = input.rectEnd;
    const Point outline[] = {start, {start.x, end.y}, end, {end.x, start.y}, start};
    DrawRubberLine(*this, outline);
}

void COrvane4Ctrl::OnKeyDown(std::uint32_t key) {
    const Scope scope(*this);
    if (key == kVkDelete) {
        const std::unique_ptr<DeviceContext> dc = window_.AcquireDC();
        if (runMode == kRunEditPntMove) ToolDeleteKey(*dc);
        Redraw(*dc, 2);
    } else if (key == kVkEscape) {
        CancelOrgEdit();
    }
}

void COrvane4Ctrl::OnMouseWheel(std::uint32_t flags, std::int32_t delta, Point screen) {
    const Scope scope(*this);
    if (!WheelZoom(delta, screen)) return;
    // The new scale moved the map away under the rubber band.
    if (runMode == kRunEditPntAdd && edit.EditPhase == 1 && !scrollActive) ToolMove(flags, window_.ScreenToClient(screen));
}

}  // namespace orvane
