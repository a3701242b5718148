// Host code inside the events of the mouse: it may start the control over, delete what was picked, change the mode, send further
// messages or let the control go. Nothing is hurt, and what comes after the event still comes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/context_registry.h"
#include "tests/control/input_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// One message that fires an event other than the stock ones, on a map with one line and one active figure.
struct MessageCase {
    const char* name;
    std::string_view event;
    std::function<void(COrvane4Ctrl&)> prepare;
    std::function<void(COrvane4Ctrl&)> send;
    /// What is told behind the event when it leaves everything as it is.
    const char* last;
};

void PrintTo(const MessageCase& c, std::ostream* out) { *out << c.name; }

std::function<void(COrvane4Ctrl&)> Mode(std::int16_t mode) {
    return [mode](COrvane4Ctrl& c) { c.runMode = mode; };
}
void SelectOff(COrvane4Ctrl& c) { c.dataSelectMode = 0; }
void Nothing(COrvane4Ctrl&) {}
void Activate(COrvane4Ctrl& c) { c.store.SetDigDatInfoEx("A", 1, 1, 0, true); }

const MessageCase kCases[] = {
    {"ClickDown", "OnDataClick", SelectOff,
     [](COrvane4Ctrl& c) {
         c.OnLButtonDown(1, {150, 50});
     },
     "MouseDown"},
    {"ClickUp", "OnDataClick", Nothing,
     [](COrvane4Ctrl& c) {
         c.OnLButtonUp(0, {150, 50});
     },
     "MouseUp"},
    {"DownItself", "MouseDown", Nothing,
     [](COrvane4Ctrl& c) {
         c.OnLButtonDown(1, {150, 50});
     },
     "MouseDown"},
    {"UpItself", "MouseUp", Nothing,
     [](COrvane4Ctrl& c) {
         c.OnLButtonUp(0, {500, 500});
     },
     "MouseUp"},
    {"RightDown", "MouseDown", Nothing,
     [](COrvane4Ctrl& c) {
         c.OnRButtonDown(2, {150, 50});
     },
     "MouseDown"},
    {"RightUp", "MouseUp", [](COrvane4Ctrl& c) { c.scrollMode = 10; },
     [](COrvane4Ctrl& c) {
         c.OnRButtonUp(0, {1, 2});
     },
     "MouseUp"},
    {"Point", "OnOrgPointClick", Mode(51),
     [](COrvane4Ctrl& c) {
         c.OnLButtonDown(1, {300, 300});
     },
     "OnOrgPointClick"},
    {"Figure", "OnOrgDataClick", Mode(51),
     [](COrvane4Ctrl& c) {
         c.OnLButtonDown(1, {350, 300});
     },
     "OnOrgDataClick"},
    {"NearFigure", "OnOrgNearPtClick", Mode(50),
     [](COrvane4Ctrl& c) {
         c.OnLButtonDown(5, {350, 300});
     },
     "OnOrgNearPtClick"},
    {"NearData", "OnNearPtClick", Mode(50),
     [](COrvane4Ctrl& c) {
         c.OnLButtonDown(13, {150, 50});
     },
     "OnNearPtClick"},
    {"DoubleClick", "OnDataDblClick", Activate,
     [](COrvane4Ctrl& c) {
         c.OnLButtonDblClk(1, {150, 50});
     },
     "OnDataDblClick"},
    {"Move", "MouseMove", Nothing,
     [](COrvane4Ctrl& c) {
         c.OnMouseMove(0, {150, 50});
     },
     "MouseMove"},
    {"DragMove", "MouseMove",
     [](COrvane4Ctrl& c) {
         c.runMode = 50;
         c.orgMoveID = 1;
         c.orgMoving = true;
     },
     [](COrvane4Ctrl& c) {
         c.OnMouseMove(1, {310, 310});
     },
     "MouseMove"},
    {"Hint", "OnHintStart",
     [](COrvane4Ctrl& c) {
         c.input.lastMovePos = {150, 50};
         c.input.lastMoveTime_s = -10;
     },
     [](COrvane4Ctrl& c) { c.OnTimer(2); }, "OnHintStart"},
    {"Wheel", "OnZoomChange", Nothing,
     [](COrvane4Ctrl& c) {
         c.OnMouseWheel(0, 120, {500, 300});
     },
     "OnZoomChange"},
    {"ZoomRectangle", "OnZoomChange",
     [](COrvane4Ctrl& c) {
         c.rectZoomMode = 10;
         c.input.rectState = RectState::Dragging;
     },
     [](COrvane4Ctrl& c) {
         c.OnLButtonUp(0, {400, 300});
     },
     "MouseUp"},
};

class InputReentryTest : public testing::TestWithParam<MessageCase> {
protected:
    InputReentryTest() {
        rig.AddRow("A", 50);
        rig.AddFigure(kLayLine, {{300, 300}, {400, 300}}, true);
        rig.window.cursorPos = rig.window.ClientToScreen({150, 50});
        GetParam().prepare(*rig.ctrl);
        rig.Forget();
    }
    /// The host's code runs once, at the first event of the case.
    void SendWith(std::function<void()> hostCode) {
        rig.log.onEvent = [this, hostCode](std::string_view event) {
            if (event != GetParam().event || called) return;
            called = true;
            hostCode();
        };
        COrvane4Ctrl& ctrl = *rig.ctrl;
        GetParam().send(ctrl);
        EXPECT_TRUE(called);
    }
    std::string LastEvent() {
        const Lines lines = rig.Events();
        return lines.empty() ? "" : lines.back().substr(0, lines.back().find(' '));
    }
    /// The control still does what it is asked for.
    void ExpectAlive() {
        rig.log.onEvent = nullptr;
        rig.Paint();
        rig.ctrl->runMode = kRunNormal;
        rig.ctrl->input.dblClkSeen = false;
        rig.Events();
        rig.Up({700, 500});
        EXPECT_EQ(LastEvent(), "MouseUp");
    }
    InputRig rig;
    bool called = false;
};

TEST_P(InputReentryTest, TheEventComesAndTheOthersAfterIt) {
    SendWith([] {});
    EXPECT_EQ(LastEvent(), GetParam().last);
}

TEST_P(InputReentryTest, AHostMayStartTheControlOver) {
    SendWith([&] { rig.ctrl->RDMInit(); });
    EXPECT_EQ(LastEvent(), GetParam().last);
    EXPECT_EQ(rig.State(), 0);
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0);
    ExpectAlive();
}

TEST_P(InputReentryTest, AHostMayStartTheControlOverAndPaintIt) {
    SendWith([&] {
        rig.ctrl->RDMInit();
        rig.Paint();
    });
    EXPECT_EQ(LastEvent(), GetParam().last);
    ExpectAlive();
}

TEST_P(InputReentryTest, AHostMayDeleteTheBlockAndTheFigures) {
    SendWith([&] {
        rig.ctrl->store.DigMemDelete("A", ControlRig::kMesh);
        rig.ctrl->store.DelOrgData(1);
    });
    EXPECT_EQ(LastEvent(), GetParam().last);
    ExpectAlive();
}

TEST_P(InputReentryTest, AHostMayChangeTheRunMode) {
    for (const std::int16_t mode : std::vector<std::int16_t>{0, 10, 50, 51, 100, 101, 200, 210, 220, 250, 260, 300, -1}) {
        InputRig fresh;
        fresh.AddRow("A", 50);
        fresh.AddFigure(kLayLine, {{300, 300}, {400, 300}}, true);
        fresh.window.cursorPos = fresh.window.ClientToScreen({150, 50});
        GetParam().prepare(*fresh.ctrl);
        fresh.log.onEvent = [&](std::string_view) { fresh.ctrl->runMode = mode; };
        GetParam().send(*fresh.ctrl);
        EXPECT_FALSE(fresh.Events().empty());
    }
}

TEST_P(InputReentryTest, AHostMaySendEveryOtherMessage) {
    SendWith([&] {
        COrvane4Ctrl& c = *rig.ctrl;
        c.OnLButtonDown(1, {10, 10});
        c.OnMouseMove(1, {60, 70});
        c.OnTimer(3);
        c.OnLButtonUp(0, {60, 70});
        c.OnLButtonDblClk(1, {150, 50});
        c.OnLButtonUp(0, {150, 50});
        c.OnRButtonDown(2, {150, 50});
        c.OnMouseMove(2, {151, 50});
        c.OnTimer(1);
        c.OnRButtonUp(0, {150, 50});
        c.OnMouseWheel(0, -120, {150, 50});
        c.OnKeyDown(kVkDelete);
        c.OnKeyDown(kVkEscape);
        c.OnMouseMove(0, {150, 50});
        c.OnTimer(2);
        c.OnTimer(11);
    });
    // Where nothing is told behind the event, the last line is one of the host's own messages.
    if (GetParam().last != GetParam().event) {
        EXPECT_EQ(LastEvent(), GetParam().last);
    }
    ExpectAlive();
}

TEST_P(InputReentryTest, AHostMayLetTheControlGoAndItEndsWithTheMessage) {
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    SendWith([&] {
        rig.ctrl.reset();
        EXPECT_NE(FindContext(handle), nullptr) << "still standing while its own message is handled";
    });
    EXPECT_EQ(FindContext(handle), nullptr);
    EXPECT_THAT(rig.Events(), testing::Not(IsEmpty()));
}

INSTANTIATE_TEST_SUITE_P(, InputReentryTest, testing::ValuesIn(kCases), [](const auto& tested) { return tested.param.name; });

class InputReentry : public testing::Test {
protected:
    InputRig rig;
    COrvane4Ctrl& ctrl = *rig.ctrl;
};

TEST_F(InputReentry, AControlThatIsLetGoInItsClickDoesNotKeepTheMouse) {
    ctrl.dataSelectMode = 0;
    rig.log.onEvent = [&](std::string_view) { rig.ctrl.reset(); };
    rig.Down({10, 20});
    EXPECT_THAT(rig.Events(), ElementsAre("OnDataClick 0 '' 0 10 20"));
    EXPECT_FALSE(rig.window.captured);
}

TEST_F(InputReentry, AControlMayBeLetGoWhileItsMessageBoxStands) {
    rig.AddRow("A", 50);
    Activate(ctrl);
    ctrl.debugMode = true;
    rig.window.onMessage = [&](const ShownMessage&) { rig.ctrl.reset(); };
    ctrl.OnLButtonDblClk(1, {150, 50});
    EXPECT_EQ(rig.ctrl, nullptr);
}

TEST_F(InputReentry, AScrollThatTheHostBeginsInsideAMoveKeepsTheToolFromIt) {
    ctrl.runMode = kRunFigureNear;
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}});
    ctrl.orgMoveID = 1;
    ctrl.orgMoving = true;
    rig.log.onEvent = [&](std::string_view) { ctrl.scrollActive = true; };
    rig.DragTo({310, 310});
    EXPECT_EQ(ctrl.store.FindOrgDat(1)->pnts[0].x, 300);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(InputReentry, TheFigureThatTheHostDeletesInsideAMoveIsNotWritten) {
    ctrl.runMode = kRunFigureNear;
    rig.AddFigure(kLayLine, {{300, 300}, {400, 300}});
    ctrl.orgMoveID = 1;
    ctrl.orgMoving = true;
    rig.log.onEvent = [&](std::string_view) { ctrl.store.DelOrgData(1); };
    rig.DragTo({310, 310});
    EXPECT_EQ(ctrl.store.OrgDatCnt(), 0);
}

}  // namespace
}  // namespace orvane
