// The mouse buttons. A handler does the control's own work first and tells the host of MouseDown or MouseUp last, so a host that
// hears of a click finds it done.
//
// The flag word is compared as a whole: a click with a key held that nothing is told for is no click of that kind.
#include <algorithm>
#include <string>
#include <utility>

#include "control/ctrl.h"
#include "platform/to_int.h"
#include "select/active_items.h"
#include "select/pick_figure.h"

namespace orvane {

namespace {

constexpr std::int16_t kLeftButton = 1;
constexpr std::int16_t kRightButton = 2;
constexpr std::int32_t kScrollPeriod_ms = 30;
constexpr std::int32_t kPanPeriod_ms = 100;
constexpr std::int32_t kNothingMet = -1;

/// Number of consecutive Shift clicks, over all controls.
thread_local std::int32_t clickCycle = 0;

/// The keys as the stock events tell them. A flag word knows of no Alt key, which would be 4.
std::int16_t ShiftState(std::uint32_t flags) {
    return static_cast<std::int16_t>(((flags & kMkShift) != 0 ? 1 : 0) + ((flags & kMkControl) != 0 ? 2 : 0));
}

std::string MessageOf(const FoundItem& item) {
    return "\n ID[" + std::to_string(item.datID) + "]--LayCode[" + std::string(item.code.View()) + "] MeshNo[" +
           std::to_string(item.meshNo) + "]";
}

}  // namespace

// --- What all buttons share --------------------------------------------------------------------------------------------------

void COrvane4Ctrl::FireItem(std::int32_t eventDispid, const FoundItem& item, Point at) {
    Fire(eventDispid,
         {Variant(item.datID), Variant(std::string(item.code.View())), Variant(item.meshNo), Variant(at.x), Variant(at.y)});
}

void COrvane4Ctrl::DefaultButtonDown(std::int16_t button, std::uint32_t flags, Point at) {
    if (dying_) return;  // nobody would let the mouse go again
    window_.CaptureMouse(true);
    Fire(kMouseDown, {Variant(button), Variant(ShiftState(flags)), Variant(at.x), Variant(at.y)});
}

void COrvane4Ctrl::DefaultButtonUp(std::int16_t button, std::uint32_t flags, Point at) {
    const std::uint32_t otherButton = button == kLeftButton ? kMkRButton : kMkLButton;
    if ((flags & otherButton) == 0) window_.CaptureMouse(false);
    Fire(kMouseUp, {Variant(button), Variant(ShiftState(flags)), Variant(at.x), Variant(at.y)});
}

void COrvane4Ctrl::BeginScroll(Point at, CursorShape shape, std::int32_t timerId, std::int32_t period_ms) {
    lastMouseX = at.x;
    lastMouseY = at.y;
    scrollActive = true;
    window_.SetCursorShape(shape);
    window_.StartTimer(timerId, period_ms);
}

// --- Right button ------------------------------------------------------------------------------------------------------------

void COrvane4Ctrl::OnRButtonDown(std::uint32_t flags, Point at) {
    const Scope scope(*this);
    input.rectState = RectState::None;
    if (scrollMode == kScrollOn && !scrollActive) BeginScroll(at, CursorShape::Scroll, kScrollTimer, kScrollPeriod_ms);
    DefaultButtonDown(kRightButton, flags, at);
}

void COrvane4Ctrl::OnRButtonUp(std::uint32_t flags, Point at) {
    const Scope scope(*this);
    if (scrollMode == kScrollOn) EndScroll(kScrollTimer);
    DefaultButtonUp(kRightButton, flags, at);
}

// --- Left button down --------------------------------------------------------------------------------------------------------

void COrvane4Ctrl::OnLButtonDown(std::uint32_t flags, Point at) {
    const Scope scope(*this);
    if (drawState_ < 1) return;
    std::int32_t met = kNothingMet;
    if (runMode == kRunPan) {
        BeginScroll(at, CursorShape::Pan, kPanTimer, kPanPeriod_ms);
    } else if (IsToolMode(runMode)) {
        const std::unique_ptr<DeviceContext> dc = window_.AcquireDC();
        ToolClick(*dc, flags, at);
    } else if (IsFigureMode(runMode)) {
        met = FigureClick(flags, at);
    } else {
        BeginRect(at);
    }
    // A click that met a figure or a vertex has been told of already.
    if (met == kNothingMet) DefaultButtonDown(kLeftButton, flags, at);
    if (IsFigureMode(runMode)) RedrawWindow(2);
}

/// Nothing is picked yet: a click selects when the button comes up.
void COrvane4Ctrl::BeginRect(Point at) {
    if (input.rectState == RectState::None) {
        input.rectState = RectState::Down;
        input.rectStart = at;
    }
    if (rectZoomMode == 0 && dataSelectMode == 0) {
        FoundItem none;
        none.datID = 0;
        FireItem(kOnDataClick, none, at);
    }
}

std::int32_t COrvane4Ctrl::FigureClick(std::uint32_t flags, Point at) {
    if (flags == kMkLButton) return runMode == kRunFigureClick ? PlainFigureClick(at) : kNothingMet;
    if (flags == (kMkLButton | kMkShift)) return NearFigureClick(at);
    if (flags == (kMkLButton | kMkShift | kMkControl)) return NearDataClick(at);
    return kNothingMet;
}

std::int32_t COrvane4Ctrl::PlainFigureClick(Point at) {
    if (const std::optional<OrgVertex> vertex = PickOrgPoint(store, at, PlaceOfPicks())) {
        Fire(kOnOrgPointClick,
             {Variant(vertex->ID), Variant(static_cast<std::int16_t>(vertex->index)), Variant(at.x), Variant(at.y)});
        return vertex->ID;
    }
    const std::int32_t figure = PickOrgFigure(store, at, PlaceOfPicks());
    if (figure < 0) return kNothingMet;
    Fire(kOnOrgDataClick, {Variant(figure), Variant(at.x), Variant(at.y)});
    return figure;
}

std::int32_t COrvane4Ctrl::NearFigureClick(Point at) {
    const std::optional<NearOrgVertex> met =
        NearOrgPoint(store, ScreenToWorldX(at.x), ScreenToWorldY(at.y), false, DraggedVertex());
    if (!met) return kNothingMet;
    const OrgVertex vertex = met->vertex;
    if (vertex.ID > -1) {
        Fire(kOnOrgNearPtClick, {Variant(vertex.ID), Variant(static_cast<std::int16_t>(vertex.index)), Variant(met->x),
                                 Variant(met->y), Variant(at.x), Variant(at.y)});
    }
    return vertex.ID;
}

/// An item whose number is below 0 is not told of; only -1 itself counts as nothing met.
std::int32_t COrvane4Ctrl::NearDataClick(Point at) {
    const std::optional<NearDatVertex> met = NearDataPoint(store, ScreenToWorldX(at.x), ScreenToWorldY(at.y));
    if (!met) return kNothingMet;
    if (met->datID >= 0) {
        Fire(kOnNearPtClick, {Variant(met->datID), Variant(static_cast<std::int16_t>(met->index)), Variant(met->meshNo),
                              Variant(met->x), Variant(met->y), Variant(at.x), Variant(at.y)});
    }
    return met->datID;
}

// --- Double click ------------------------------------------------------------------------------------------------------------

/// The default handling of a double click tells the host nothing: it stands for the second press, and that has no event here.
void COrvane4Ctrl::OnLButtonDblClk(std::uint32_t flags, Point at) {
    const Scope scope(*this);
    if (drawState_ < 1) return;
    if ((flags & kMkShift) != 0) return;
    if ((flags & kMkControl) != 0 && runMode != kRunEditPntAdd) return;
    if (runMode == kRunAddCollect && edit.EditType != kLayPoint) {
        FinishAddTool();
    } else if (runMode == kRunEditPntAdd) {
        FinishPointAddTool();
    } else if (const FoundItem item = FirstActive(store); item.Found()) {
        if (debugMode) {
            window_.ShowMessage(MessageOf(item), "ORVANE4", MessageIcon::Exclamation);
        } else {
            FireItem(kOnDataDblClick, item, at);
        }
    }
    input.dblClkSeen = true;
}

// --- Left button up ----------------------------------------------------------------------------------------------------------

void COrvane4Ctrl::OnLButtonUp(std::uint32_t flags, Point at) {
    const Scope scope(*this);
    if (drawState_ < 1) return;
    if (input.dblClkSeen) {
        DefaultButtonUp(kLeftButton, flags, at);
        input.dblClkSeen = false;
        return;
    }
    if (runMode == kRunPan) {
        EndScroll(kPanTimer);
    } else if (input.rectState == RectState::Dragging) {
        EndRect(flags, at);
    } else if (runMode == kRunNormal) {
        SelectByClick(flags, at);
    }
    DefaultButtonUp(kLeftButton, flags, at);
}

void COrvane4Ctrl::EndRect(std::uint32_t flags, Point at) {
    const Point from = input.rectStart;
    input.rectState = RectState::None;
    input.rectStart = {(std::min)(from.x, at.x), (std::min)(from.y, at.y)};
    input.rectEnd = {(std::max)(from.x, at.x), (std::max)(from.y, at.y)};
    window_.StopTimer(kRectTimer);
    const Rect box{input.rectStart.x, input.rectStart.y, input.rectEnd.x, input.rectEnd.y};
    if (rectZoomMode != 0) {
        RectZoomTo(input.rectStart, input.rectEnd);
        return;
    }
    if (EndSmallDrag(input.rectStart, input.rectEnd) || runMode != kRunNormal) return;
    if (dataSelectMode == 1) SelectInRect(store, box, PlaceOfPicks(), flags == kMkControl);
    RedrawWindow(0);
    runMode = kRunNormal;
}

void COrvane4Ctrl::SelectByClick(std::uint32_t flags, Point at) {
    clickCycle = flags == kMkShift ? SaturatedAdd(clickCycle, 1) : 0;
    FoundItem met;
    met.datID = 0;
    if (dataSelectMode == 1) {
        SelectAtPoint(store, at, PlaceOfPicks(), clickCycle, flags == kMkControl);
        RedrawWindow(0);
        met = FirstActive(store);
    }
    input.rectState = RectState::None;
    if (dataSelectMode == 0 || met.Found()) FireItem(kOnDataClick, met, at);
}

}  // namespace orvane
