// Host code that runs inside a call of the control: it may start the control over, paint it, or let it go.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/context_registry.h"
#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Every way into the control that fires an event, on a map that one line fills.
struct EventCase {
    const char* name;
    std::function<void(COrvane4Ctrl&)> call;
    std::size_t eventCnt = 1;
};

void PrintTo(const EventCase& eventCase, std::ostream* out) { *out << eventCase.name; }

const EventCase kEventCases[] = {
    {"ZoomWrite", [](COrvane4Ctrl& c) { c.SetZoom(500); }},
    {"ZoomAtPixel", [](COrvane4Ctrl& c) { c.ZoomAtPixel(500, 10, 10); }},
    {"WheelAboutTheCentre",
     [](COrvane4Ctrl& c) {
         c.WheelZoom(120, {400, 300});
     }},
    {"WheelAtTheCursor",
     [](COrvane4Ctrl& c) {
         c.wheelZoomMode = 2;
         c.WheelZoom(-120, {400, 300});
     }},
    {"Fit", [](COrvane4Ctrl& c) { c.DspFit(0); }},
    {"FitWithMargin", [](COrvane4Ctrl& c) { c.DspFit(10); }},
    {"RectangleUp",
     [](COrvane4Ctrl& c) {
         c.rectZoomMode = 10;
         c.RectZoomTo({100, 100}, {500, 300});
     }},
    {"RectangleDown",
     [](COrvane4Ctrl& c) {
         c.rectZoomMode = 20;
         c.RectZoomTo({100, 100}, {500, 300});
     },
     2},
};

class HandlerTest : public testing::TestWithParam<EventCase> {
protected:
    HandlerTest() {
        rig.StartOneToOne();
        rig.AddLine("A", {{10, -20}, {110, -70}});
        rig.ctrl->RDMReDraw();
        rig.Forget();
    }
    ControlRig rig;
};

TEST_P(HandlerTest, IsCalledAsOftenAsTold) {
    GetParam().call(*rig.ctrl);
    EXPECT_EQ(rig.events.Zooms().size(), GetParam().eventCnt);
}

TEST_P(HandlerTest, MayLetTheControlGoAndDestructionWaitsForTheOutermostCall) {
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    COrvane4Ctrl& ctrl = *rig.ctrl;
    rig.events.onEvent = [&](std::int32_t) {
        rig.ctrl.reset();
        EXPECT_NE(FindContext(handle), nullptr) << "still standing while its own call runs";
    };
    GetParam().call(ctrl);
    EXPECT_EQ(rig.ctrl, nullptr);
    EXPECT_EQ(FindContext(handle), nullptr) << "gone when the call has returned";
}

TEST_P(HandlerTest, MayLetTheControlGoInsideANestedCall) {
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    COrvane4Ctrl& ctrl = *rig.ctrl;
    int depth = 0;
    rig.events.onEvent = [&](std::int32_t) {
        if (++depth == 1) {
            ctrl.SetZoom(700);
            EXPECT_NE(FindContext(handle), nullptr);
        } else {
            rig.ctrl.reset();
        }
    };
    GetParam().call(ctrl);
    EXPECT_EQ(FindContext(handle), nullptr);
}

TEST_P(HandlerTest, MayStartTheControlOver) {
    rig.events.onEvent = [&](std::int32_t) { rig.ctrl->RDMInit(); };
    GetParam().call(*rig.ctrl);
    EXPECT_EQ(rig.State(), 0) << "started over, waiting for its paint";
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0);
    EXPECT_THAT(rig.VerbsWith("Polyline"), IsEmpty());
    rig.events.onEvent = nullptr;
    rig.Paint();
    EXPECT_EQ(rig.State(), 2);
    EXPECT_THAT(rig.VerbsWith("Polyline"), IsEmpty());
}

TEST_P(HandlerTest, MayDeleteTheDataAndPaint) {
    rig.events.onEvent = [&](std::int32_t) {
        rig.ctrl->store.DigMemDelete("A", ControlRig::kMesh);
        rig.Paint();
    };
    GetParam().call(*rig.ctrl);
    EXPECT_EQ(rig.State(), 2);
    rig.Forget();
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

INSTANTIATE_TEST_SUITE_P(, HandlerTest, testing::ValuesIn(kEventCases), [](const auto& tested) { return tested.param.name; });

class ReentryTest : public testing::Test {
protected:
    ControlRig rig;
};

TEST_F(ReentryTest, AWindowThatPaintsInsideTheInitFindsTheControlReady) {
    rig.window.onInvalidate = [&] { rig.Paint(); };
    EXPECT_TRUE(rig.ctrl->RDMInit());
    EXPECT_EQ(rig.State(), 2);
    EXPECT_EQ(rig.ctrl->BufferState(), 0);
}

TEST_F(ReentryTest, AWindowThatLetsTheControlGoInsideTheInitEndsItAfterwards) {
    rig.ctrl->RDMInit();
    rig.ctrl->mapDraw = false;
    rig.Paint();
    ASSERT_EQ(rig.State(), 1) << "so that init still has a frame to draw when the handler returns";
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    rig.window.onInvalidate = [&] {
        rig.ctrl.reset();
        EXPECT_NE(FindContext(handle), nullptr);
    };
    EXPECT_TRUE(rig.ctrl->RDMInit());
    EXPECT_EQ(FindContext(handle), nullptr);
}

TEST_F(ReentryTest, OutsideOfItsCallsTheControlEndsAtOnce) {
    rig.StartOneToOne();
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    rig.ctrl.reset();
    EXPECT_EQ(FindContext(handle), nullptr);
}

TEST_F(ReentryTest, AScopeHoldsTheControlUntilTheLastOneEnds) {
    rig.Start();
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    {
        COrvane4Ctrl::Scope outer(*rig.ctrl);
        {
            COrvane4Ctrl::Scope inner(*rig.ctrl);
            rig.ctrl.reset();
        }
        EXPECT_NE(FindContext(handle), nullptr);
    }
    EXPECT_EQ(FindContext(handle), nullptr);
}

TEST_F(ReentryTest, AControlCanBeLetGoInEveryState) {
    rig.ctrl.reset();  // constructed
    for (const int state : {0, 1, 2}) {
        ControlRig other;
        other.ctrl->RDMInit();
        other.AddLine("A", {{10, -20}, {110, -70}});
        if (state == 1) other.ctrl->mapDraw = false;
        if (state > 0) other.Paint();
        ASSERT_EQ(other.State(), state);
        const std::int32_t handle = other.ctrl->BaseDcHandle();
        other.ctrl.reset();
        EXPECT_EQ(FindContext(handle), nullptr);
    }
}

TEST_F(ReentryTest, AControlThatWasStartedOverAndNotYetPaintedLetsItsBuffersGo) {
    rig.Start();
    rig.ctrl->RDMInit();
    ASSERT_EQ(rig.State(), 0);
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    EXPECT_NE(FindContext(handle), nullptr) << "the buffers stay through an init";
    rig.ctrl.reset();
    EXPECT_EQ(FindContext(handle), nullptr);
}

TEST_F(ReentryTest, TheHandlerMayTakeItselfAway) {
    rig.StartOneToOne();
    rig.events.onEvent = [&](std::int32_t) { rig.ctrl->SetEvents(nullptr); };
    rig.ctrl->SetZoom(500);
    rig.ctrl->SetZoom(700);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(500));
}

// Every call of the control, on one that was never started: nothing guards the host, and nothing may be hurt.
TEST_F(ReentryTest, EveryCallBeforeTheFirstInitIsSafe) {
    COrvane4Ctrl& c = *rig.ctrl;
    c.RDMReDraw();
    c.RedrawWindow(0);
    const auto dc = rig.window.AcquireDC();
    c.Redraw(*dc, 0);
    c.RedrawScroll(*dc, 1, 1);
    c.DrawUserDc(*dc, {0, 0, 100, 100}, 0, 0, 1000, 0);
    c.UserDcDraw(0, 0, 0, 10, 10, 0);
    c.UserDcDrawEx(12345, 0, 0, 10, 10, 0, 0, 1000, 0);
    c.SetZoom(5000);
    c.ZoomAtPixel(100, 10, 10);
    c.JumpTo(0, 0);
    c.MapJumpToData("A", 1, 1, true);
    c.DspFit(10);
    EXPECT_EQ(c.MoveView(10, 10, true), 1) << "neither side of a view of size 0 exceeds its limit";
    c.ScrollTick();
    c.PanTick();
    c.EndScroll(1);
    c.rectZoomMode = 10;
    c.RectZoomTo({0, 0}, {100, 100});
    EXPECT_FALSE(c.WheelZoom(120, {0, 0}));
    double x = 0, y = 0;
    c.FullInverse(10, 10, x, y);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(c.CurrentDrawState(), -1);
    EXPECT_TRUE(c.viewX == c.viewX && c.viewY == c.viewY) << "no NaN in the view";
    EXPECT_TRUE(c.RDMInit());
    rig.Paint();
    EXPECT_EQ(rig.State(), 2);
}

}  // namespace
}  // namespace orvane
