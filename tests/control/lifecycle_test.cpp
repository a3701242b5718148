// Construction, init, term, the first paint and what is persisted.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/context_registry.h"
#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LifecycleTest : public testing::Test {
protected:
    /// Init, then a paint with drawing turned off: the buffers exist and nothing is composed yet.
    void BringToStateOne() {
        rig.ctrl->RDMInit();
        rig.ctrl->mapDraw = false;
        rig.Paint();
        ASSERT_EQ(rig.State(), 1);
        rig.Forget();
    }

    ControlRig rig;
};

TEST_F(LifecycleTest, AConstructedControlShowsNothingAndHasNoBuffers) {
    EXPECT_EQ(rig.ctrl->CurrentDrawState(), -1);
    EXPECT_EQ(rig.ctrl->BufferState(), -1);
    EXPECT_EQ(rig.ctrl->BaseDC(), nullptr);
    EXPECT_EQ(rig.ctrl->TopDC(), nullptr);
    EXPECT_EQ(rig.ctrl->BaseDcHandle(), 0);
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(LifecycleTest, AConstructedControlHasItsModesAndAllOtherFieldsZero) {
    const COrvane4Ctrl& ctrl = *rig.ctrl;
    EXPECT_EQ(ctrl.rastOnTop, 1);
    EXPECT_EQ(ctrl.wheelZoomMode, 1);
    EXPECT_EQ(ctrl.wheelRateUp, 1.2);
    EXPECT_EQ(ctrl.wheelRateDown, 0.8);
    EXPECT_EQ(ctrl.dataSelectMode, 1);
    EXPECT_FALSE(ctrl.mapDraw || ctrl.execRun || ctrl.debugMode || ctrl.orgStrVisible || ctrl.scrollActive);
    EXPECT_EQ(ctrl.orgTopDrawID, 0);
    EXPECT_EQ(ctrl.orgMoveID, 0);
    EXPECT_EQ(ctrl.orgMoveIndex, 0);
    EXPECT_FALSE(ctrl.orgMoving);
    EXPECT_EQ(ctrl.scaleBarMode, 0);
    EXPECT_EQ(ctrl.runMode, 0);
    EXPECT_EQ(ctrl.scrollMode, 0);
    EXPECT_EQ(ctrl.rectZoomMode, 0);
    EXPECT_EQ(ctrl.dotPerM, 0);
    EXPECT_EQ(ctrl.drawArea, Rect());
    for (const double v :
         {ctrl.viewX, ctrl.viewY, ctrl.areaLeft, ctrl.areaRight, ctrl.areaTop, ctrl.areaBottom, ctrl.pendX, ctrl.pendY}) {
        EXPECT_EQ(v, 0.0);
    }
}

TEST_F(LifecycleTest, InitGivesEachFieldItsValueWhateverItWas) {
    COrvane4Ctrl& ctrl = *rig.ctrl;
    CDigMem& store = ctrl.store;
    store.ActiveColor = 1;
    store.ActivePointType = 1;
    store.LineTagMode = 0;
    store.DigStrVisible = 1;
    store.CutSameString = 1;
    ctrl.orgStrVisible = true;
    ctrl.orgTopDrawID = 4;
    ctrl.orgMoveID = ctrl.orgMoveIndex = 5;
    ctrl.orgMoving = true;
    store.view.Rotate = store.view.OffX = store.view.OffY = store.view.ScaleX = store.view.ScaleY = 3;
    store.view.Zoom = 7;
    ctrl.viewX = ctrl.viewY = ctrl.pendX = ctrl.pendY = 5;
    rig.SetArea(1, 2, 3, 4);
    ctrl.scaleBarMode = 2;
    ctrl.mapDraw = ctrl.execRun = false;
    ctrl.debugMode = ctrl.scrollActive = true;
    ctrl.rectZoomMode = 10;
    EXPECT_TRUE(ctrl.RDMInit());

    EXPECT_EQ(store.ActiveColor, 255u);
    EXPECT_EQ(store.ActivePointType, 0);
    EXPECT_EQ(store.LineTagMode, 1);
    EXPECT_EQ(store.DigStrVisible, 0);
    EXPECT_EQ(store.CutSameString, 0);
    EXPECT_FALSE(ctrl.orgStrVisible);
    EXPECT_EQ(ctrl.orgTopDrawID, 0);
    EXPECT_EQ(ctrl.orgMoveID, 0);
    EXPECT_EQ(ctrl.orgMoveIndex, 0);
    EXPECT_FALSE(ctrl.orgMoving);
    for (const double v : {store.view.Rotate, store.view.OffX, store.view.OffY, ctrl.viewX, ctrl.viewY, ctrl.pendX, ctrl.pendY}) {
        EXPECT_EQ(v, 0.0);
    }
    EXPECT_EQ(store.view.ScaleX, 1.0);
    EXPECT_EQ(store.view.ScaleY, 1.0);
    EXPECT_EQ(store.view.Zoom, 10000);
    for (const double v : {ctrl.areaTop, ctrl.areaLeft, store.view.AreaTop, store.view.AreaLeft}) EXPECT_EQ(v, -10000.0);
    for (const double v : {ctrl.areaBottom, ctrl.areaRight, store.view.AreaBottom, store.view.AreaRight}) EXPECT_EQ(v, 20000.0);
    EXPECT_EQ(ctrl.CurrentDrawState(), 0);
    EXPECT_EQ(ctrl.scaleBarMode, 0);
    EXPECT_TRUE(ctrl.mapDraw);
    EXPECT_TRUE(ctrl.execRun);
    EXPECT_FALSE(ctrl.debugMode);
    EXPECT_FALSE(ctrl.scrollActive);
    EXPECT_EQ(ctrl.rectZoomMode, 0);
}

TEST_F(LifecycleTest, InitLeavesAloneWhatOnlyConstructionAndTheFirstPaintSet) {
    rig.Start();
    COrvane4Ctrl& ctrl = *rig.ctrl;
    ctrl.rastOnTop = 0;
    ctrl.wheelZoomMode = 2;
    ctrl.wheelRateUp = 1.1;
    ctrl.wheelRateDown = 0.9;
    ctrl.dataSelectMode = 0;
    ctrl.runMode = 10;
    ctrl.scrollMode = 10;
    ctrl.RDMInit();
    EXPECT_EQ(ctrl.rastOnTop, 0);
    EXPECT_EQ(ctrl.wheelZoomMode, 2);
    EXPECT_EQ(ctrl.wheelRateUp, 1.1);
    EXPECT_EQ(ctrl.wheelRateDown, 0.9);
    EXPECT_EQ(ctrl.dataSelectMode, 0);
    EXPECT_EQ(ctrl.runMode, 10);
    EXPECT_EQ(ctrl.scrollMode, 10);
    EXPECT_EQ(ctrl.dotPerM, 1000);
    EXPECT_EQ(ctrl.store.view.DotPerM, 1000);
    EXPECT_EQ(ctrl.store.view.ScreenDpi, 96);
    EXPECT_EQ(ctrl.store.view.DpiRatio, 1.0);
}

TEST_F(LifecycleTest, InitAsksForAPaintAndDrawsNothingItself) {
    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.window.invalidateCnt, 1);
    EXPECT_EQ(rig.window.acquireCnt, 0);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(rig.State(), 0);
    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.State(), 0) << "from state 0 it stays there";
    EXPECT_EQ(rig.window.acquireCnt, 0);
}

TEST_F(LifecycleTest, InitOfAComposedMapLeadsBackToZeroAndThePaintComposesOnTheOldBuffers) {
    rig.Start();
    DeviceContext* const base = rig.ctrl->BaseDC();
    DeviceContext* const top = rig.ctrl->TopDC();
    const std::int32_t asked = rig.window.invalidateCnt;
    const std::int32_t acquired = rig.window.acquireCnt;
    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.State(), 0);
    EXPECT_EQ(rig.window.invalidateCnt, asked + 1);
    EXPECT_EQ(rig.window.acquireCnt, acquired);
    EXPECT_THAT(rig.Verbs(), IsEmpty());

    rig.Paint();
    EXPECT_EQ(rig.State(), 2);
    EXPECT_EQ(rig.ctrl->BaseDC(), base);
    EXPECT_EQ(rig.ctrl->TopDC(), top);
    Lines expected = ComposedFrame();
    expected.insert(expected.begin(), "window FillRect (0,0,800,600) brush(0xFFFFFF)");
    EXPECT_EQ(rig.Verbs(), expected);
}

TEST_F(LifecycleTest, InitInStateOneComposesAtOnceOnAContextOfTheWindow) {
    BringToStateOne();
    rig.ctrl->scaleBarMode = 1;
    const std::int32_t acquired = rig.window.acquireCnt;
    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_EQ(rig.State(), 2);
    EXPECT_EQ(rig.window.acquireCnt, acquired + 1);
    EXPECT_EQ(rig.ctrl->scaleBarMode, 0);
    EXPECT_TRUE(rig.ctrl->mapDraw);
}

TEST_F(LifecycleTest, ASecondInitDiscardsTheStoreAndTheNextPaintComposesAnEmptyMap) {
    rig.StartOneToOne();
    rig.AddLine("A", {{10, -20}, {110, -70}});
    ASSERT_TRUE(rig.ctrl->store.lineTypes.PushBack(LineTypeDef()));
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("base Polyline [(10,20) (110,70)]"));

    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.ctrl->store.FindLayDef("A"), -1);
    EXPECT_EQ(rig.ctrl->store.GetDigIndexCnt(), 0);
    EXPECT_EQ(rig.ctrl->store.BlockCnt(), 0);
    EXPECT_EQ(rig.ctrl->store.lineTypes.size(), 0u);
    rig.Paint();
    Lines expected = ComposedFrame();
    expected.insert(expected.begin(), "window FillRect (0,0,800,600) brush(0xFFFFFF)");
    EXPECT_EQ(rig.Verbs(), expected);
}

TEST_F(LifecycleTest, TermOfAFreshControlDoesNothing) {
    const std::string before = DumpView(*rig.ctrl);
    rig.ctrl->RDMTerm();
    EXPECT_EQ(DumpView(*rig.ctrl), before);
    EXPECT_EQ(rig.window.invalidateCnt, 0);
}

TEST_F(LifecycleTest, TermBeforeTheFirstPaintLeavesTheStoreAndTheStateAlone) {
    rig.ctrl->RDMInit();
    rig.AddLine("A", {{10, -20}, {110, -70}});
    const std::string before = DumpView(*rig.ctrl) + DumpStore(rig.ctrl->store);
    rig.ctrl->RDMTerm();
    EXPECT_EQ(DumpView(*rig.ctrl) + DumpStore(rig.ctrl->store), before);
    EXPECT_EQ(rig.State(), 0);
}

TEST_F(LifecycleTest, AfterTermNothingIsRedrawnAndTheNextRedrawStillShowsTheMap) {
    rig.StartOneToOne();
    rig.AddLine("A", {{10, -20}, {110, -70}});
    const std::int32_t asked = rig.window.invalidateCnt;
    rig.ctrl->RDMTerm();
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(rig.window.invalidateCnt, asked);
    EXPECT_EQ(rig.State(), 2);
    EXPECT_TRUE(rig.ctrl->store.InitDone());
    rig.ctrl->RDMReDraw();
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("base Polyline [(10,20) (110,70)]"));
}

// --- Paints ----------------------------------------------------------------------------------------------------------------

TEST_F(LifecycleTest, APaintBeforeAnyInitFillsTheBoundsWhiteAndLeavesAllStateAsItWas) {
    const std::string before = DumpView(*rig.ctrl);
    const auto dc = rig.window.AcquireDC();
    rig.ctrl->OnDraw(*dc, {0, 0, 800, 600}, {10, 10, 20, 20});
    EXPECT_THAT(rig.Verbs(), ElementsAre("window FillRect (0,0,800,600) brush(0xFFFFFF)"));
    EXPECT_EQ(DumpView(*rig.ctrl), before);
    EXPECT_EQ(rig.ctrl->BaseDC(), nullptr);
}

TEST_F(LifecycleTest, TheFirstPaintAfterInitFillsMakesTheBuffersAndComposes) {
    rig.ctrl->RDMInit();
    rig.Forget();
    rig.Paint();
    EXPECT_EQ(rig.State(), 2);
    EXPECT_EQ(rig.ctrl->BufferState(), 0);
    const Lines lines = rig.Verbs();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front(), "window FillRect (0,0,800,600) brush(0xFFFFFF)");

    // Base first, then top: made, white all over. Then the frame.
    Lines buffers;
    for (const std::string& line : lines) {
        if (line.starts_with("base Sel") || line.starts_with("base Pat") || line.starts_with("top Sel") ||
            line.starts_with("top Pat")) {
            buffers.push_back(line);
        }
    }
    EXPECT_THAT(buffers,
                ElementsAre("base SelectObject bitmap#1", "base PatBlt 0 0 1920 1080 0xFF0062", "top SelectObject bitmap#2",
                            "top PatBlt 0 0 1920 1080 0xFF0062", "base SelectClipRgn (0,0,800,600) 5",
                            "top SelectClipRgn (0,0,800,600) 5", "base PatBlt 0 0 800 600 0xFF0062"));
    const Lines composed = ComposedFrame();
    ASSERT_GT(lines.size(), composed.size());
    const Lines frame(lines.end() - static_cast<std::ptrdiff_t>(composed.size()), lines.end());
    EXPECT_EQ(frame, composed);
}

TEST_F(LifecycleTest, TheBuffersAreMadeForTheWindowWithTheRightAndBottomOfTheDesktop) {
    rig.window.desktopRect = {100, 50, 1400, 900};
    rig.ctrl->RDMInit();
    rig.Paint();
    EXPECT_THAT(rig.VerbsWith("CreateCompatibleBitmap"), ElementsAre("window CreateCompatibleBitmap 1400 900 bitmap#1",
                                                                     "window CreateCompatibleBitmap 1400 900 bitmap#2"));
}

TEST_F(LifecycleTest, TheBuffersAreMadeOnceAndKeepTheirSizeWhenDesktopAndControlChange) {
    rig.Start();
    DeviceContext* const base = rig.ctrl->BaseDC();
    rig.window.desktopRect = {0, 0, 3000, 2000};
    rig.window.Resize(500, 400);
    rig.Paint();
    EXPECT_EQ(rig.Verbs(), RelaidFrame(500, 400));
    rig.ctrl->RDMInit();
    rig.Paint();
    EXPECT_THAT(rig.VerbsWith("Create"), IsEmpty());
    EXPECT_EQ(rig.ctrl->BaseDC(), base);
}

TEST(FirstPaint, ReadsHowFineTheDesktopIs) {
    ControlRig rig(DeviceNumbers{});  // 1920 pixels on 508 mm at 96 dpi
    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.ctrl->dotPerM, 0);
    rig.Paint();
    EXPECT_EQ(rig.ctrl->dotPerM, 3779) << "1920 * 1000 / 508 is 3779.5, and the division is of whole numbers";
    EXPECT_EQ(rig.View().DotPerM, 3779);
    EXPECT_EQ(rig.View().ScreenDpi, 96);
    EXPECT_EQ(rig.View().DeviceDpi, 96);
    EXPECT_EQ(rig.View().DpiRatio, 1.0);
}

TEST(FirstPaint, OnADesktopWithoutMillimetresFillsWhiteAndWaits) {
    DeviceNumbers numbers = ThousandDots();
    numbers.horzSize_mm = 0;
    ControlRig rig(numbers);
    rig.ctrl->RDMInit();
    rig.Paint();
    EXPECT_THAT(rig.VerbsWith("window F"), ElementsAre("window FillRect (0,0,800,600) brush(0xFFFFFF)"));
    EXPECT_EQ(rig.State(), 0);
    EXPECT_EQ(rig.ctrl->dotPerM, 0);
    EXPECT_EQ(rig.View().DotPerM, 0);
    EXPECT_EQ(rig.ctrl->BaseDcHandle(), 0);

    rig.desktop.SetDeviceNumbers(ThousandDots());
    rig.Paint();
    EXPECT_EQ(rig.State(), 2) << "the next paint tries again";
    EXPECT_EQ(rig.ctrl->dotPerM, 1000);
}

TEST(FirstPaint, OnAnAbsurdDesktopDoesNotOverflow) {
    DeviceNumbers numbers = ThousandDots();
    numbers.horzRes_px = 2147483647;
    numbers.horzSize_mm = -1;
    numbers.logPixelsX_dpi = 0;
    ControlRig rig(numbers);
    rig.window.desktopRect = {0, 0, -5, 0};
    rig.ctrl->RDMInit();
    rig.AddLine("A", {{10, -20}, {110, -70}});
    rig.Paint();
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.View().Zoom, 10000);
    EXPECT_EQ(rig.ctrl->viewX, 0.0);
}

TEST_F(LifecycleTest, APaintInStateOneComposesAndLaterOnesOnlyCopy) {
    BringToStateOne();
    rig.ctrl->mapDraw = true;
    rig.Paint();
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_EQ(rig.State(), 2);
    rig.Paint();
    EXPECT_EQ(rig.Verbs(), RelaidFrame());
    EXPECT_EQ(rig.State(), 2);
}

TEST_F(LifecycleTest, APaintDrawsOnTheContextItIsGiven) {
    rig.Start();
    RecordContext other(rig.verbs, "other");
    rig.ctrl->OnDraw(other, {0, 0, 800, 600}, {0, 0, 1, 1});
    EXPECT_EQ(rig.VerbsWith("other "), ScreenCopy("other"));
}

TEST_F(LifecycleTest, TheBaseBufferIsKnownToHostsByANumberFromTheFirstPaintOn) {
    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.ctrl->BaseDcHandle(), 0);
    rig.Paint();
    EXPECT_NE(rig.ctrl->BaseDcHandle(), 0);
    EXPECT_EQ(FindContext(rig.ctrl->BaseDcHandle()), rig.ctrl->BaseDC());
}

TEST_F(LifecycleTest, RefreshAsksForAPaintAndReturns) {
    rig.Start();
    const std::int32_t asked = rig.window.invalidateCnt;
    rig.ctrl->Refresh();
    EXPECT_EQ(rig.window.invalidateCnt, asked + 1);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

// --- Persistence -----------------------------------------------------------------------------------------------------------

/// A saved state of the control: writes down what is exchanged, and loads a zoom where it has one.
class SavedState : public PropertyExchange {
public:
    void ExchangeVersion(std::uint32_t version, bool loadDefault) override {
        calls.push_back("version " + std::to_string(version) + (loadDefault ? " with defaults" : " without defaults"));
    }
    void ExchangeLong(std::string_view name, std::int32_t& value, std::int32_t defaultValue) override {
        calls.push_back(std::string(name) + " default " + std::to_string(defaultValue));
        if (loading) {
            value = zoom;
        } else {
            zoom = value;
        }
        if (during) during();
    }

    Lines calls;
    bool loading = false;
    std::int32_t zoom = -1;
    std::function<void()> during;
};

TEST_F(LifecycleTest, ZoomIsAllThatIsPersisted) {
    rig.Start();
    rig.View().Zoom = 2500;
    SavedState saved;
    rig.ctrl->DoPropExchange(saved);
    EXPECT_THAT(saved.calls, ElementsAre("version 65536 with defaults", "Zoom default 10000"));
    EXPECT_EQ(saved.zoom, 2500);
}

TEST_F(LifecycleTest, ALoadedZoomGoesStraightIntoItsFieldAndLastsUntilInit) {
    SavedState saved;
    saved.loading = true;
    saved.zoom = 2500;
    rig.ctrl->DoPropExchange(saved);
    EXPECT_EQ(rig.View().Zoom, 2500);
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
    EXPECT_EQ(rig.State(), -1);
    rig.ctrl->RDMInit();
    EXPECT_EQ(rig.View().Zoom, 10000);
}

TEST_F(LifecycleTest, ALoadedZoomOfNothingDividesNothing) {
    rig.Start();
    SavedState saved;
    saved.loading = true;
    for (const std::int32_t zoom : {0, -5, -2147483647 - 1, 2147483647}) {
        saved.zoom = zoom;
        rig.ctrl->DoPropExchange(saved);
        rig.AddLine("A" + std::to_string(zoom), {{10, -20}, {110, -70}});
        rig.ctrl->RDMReDraw();
        rig.ctrl->MoveView(10, 10, true);
        rig.ctrl->ZoomAtPixel(5000, 10, 10);
        rig.ctrl->DoPropExchange(saved);
        rig.ctrl->WheelZoom(120, {400, 300});
        rig.ctrl->DoPropExchange(saved);
        rig.ctrl->WheelZoom(-120, {400, 300});
        rig.ctrl->DoPropExchange(saved);
        rig.ctrl->rectZoomMode = 20;
        rig.ctrl->RectZoomTo({10, 10}, {100, 100});
        rig.ctrl->DoPropExchange(saved);
        rig.ctrl->SetZoom(5000);
        EXPECT_TRUE(rig.ctrl->viewX == rig.ctrl->viewX && rig.ctrl->viewY == rig.ctrl->viewY) << zoom << " left a NaN";
    }
}

TEST_F(LifecycleTest, AnExchangeMayLetTheControlGo) {
    rig.Start();
    SavedState saved;
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    saved.during = [&] {
        rig.ctrl.reset();
        EXPECT_NE(FindContext(handle), nullptr) << "still standing";
    };
    rig.ctrl->DoPropExchange(saved);
    EXPECT_EQ(FindContext(handle), nullptr);
    EXPECT_EQ(saved.zoom, 10000);
}

}  // namespace
}  // namespace orvane
