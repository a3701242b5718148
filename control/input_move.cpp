// Mouse moves: what a held button drags, what arms the hint, and the MouseMove event.
#include <cmath>

#include "control/ctrl.h"

namespace orvane {

namespace {

constexpr std::int32_t kHintPeriod_ms = 10;
constexpr std::int32_t kRectPeriod_ms = 100;

}  // namespace

void COrvane4Ctrl::OnMouseMove(std::uint32_t flags, Point at) {
    const Scope scope(*this);
    if (drawState_ < 1) return;
    if (at != input.lastMovePos) window_.StopTimer(kHintTimer);
    if (flags == kMkRButton) {
        lastMouseX = at.x;
        lastMouseY = at.y;
        window_.StopTimer(kHintTimer);
        return;
    }
    if (flags == kMkLButton) {
        const bool selects = runMode == kRunNormal && dataSelectMode == 1;
        const bool zooms = runMode != kRunPan && !IsFigureMode(runMode) && rectZoomMode > 0;
        if (selects || zooms) return TrackRect(at);
    } else if (runMode == kRunNormal) {
        // The timer of the rectangle is not stopped here: hosts know the rectangle that stays while Shift is pressed in a drag.
        input.rectState = RectState::None;
        window_.StartTimer(kHintTimer, kHintPeriod_ms);
        input.lastMoveTime_s = std::floor(window_.Clock_s());
    }
    input.lastMovePos = at;
    if (!scrollActive) {
        const std::int16_t button = flags == kMkLButton ? 1 : 0;
        Fire(kMouseMove, {Variant(button), Variant(std::int16_t{0}), Variant(at.x), Variant(at.y)});
    }
    if (scrollActive) return;
    if (IsFigureMode(runMode)) {
        DragFigurePoint(at);
    } else if (IsToolMode(runMode)) {
        ToolMove(flags, at);
    }
}

void COrvane4Ctrl::TrackRect(Point at) {
    if (input.rectState == RectState::None) return;
    input.rectEnd = at;
    if (input.rectState == RectState::Dragging) return;
    window_.StartTimer(kRectTimer, kRectPeriod_ms);
    input.rectState = RectState::Dragging;
}

void COrvane4Ctrl::DragFigurePoint(Point at) {
    if (!orgMoving) return;
    store.EditOrgPnt(orgMoveID, orgMoveIndex, ScreenToWorldX(at.x), ScreenToWorldY(at.y));
    RedrawWindow(2);
}

}  // namespace orvane
