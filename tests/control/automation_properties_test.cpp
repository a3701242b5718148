// Properties, the modified flag and the members around the control's life and view, called as a host calls them.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

class Listener : public ControlEvents {
public:
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override {
        ASSERT_EQ(eventDispid, kOnZoomChange);
        ASSERT_EQ(args.size(), 1u);
        zooms.emplace_back();
        ASSERT_TRUE(args[0].ToI4(zooms.back()));
    }
    std::vector<std::int32_t> zooms;
};

class PropertiesTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.Start();
        rig.ctrl->SetEvents(&listener);
        rig.ctrl->SetModified(false);
    }
    /// Writes, and tells whether that marked the control; the mark is cleared again.
    template <class T>
    bool PutMarks(const char* name, const T& value) {
        EXPECT_EQ(rig.Put(name, value).status, InvokeStatus::Ok) << name;
        const bool marked = rig.ctrl->Modified();
        rig.ctrl->SetModified(false);
        return marked;
    }

    Listener listener;
    AutomationRig rig;
};

TEST_F(PropertiesTest, HaveTheirValuesOfAnInit) {
    EXPECT_TRUE(rig.Run("ExecRun").True());
    EXPECT_TRUE(rig.Run("DebugMode").False());
    EXPECT_EQ(rig.Run("ScaleX").Double(), 1.0);
    EXPECT_EQ(rig.Run("ScaleY").Double(), 1.0);
    EXPECT_EQ(rig.Run("Rotate").Double(), 0.0);
    EXPECT_EQ(rig.Run("Zoom").Long(), 10000);
    EXPECT_TRUE(rig.Run("MapDraw").True());
    EXPECT_EQ(rig.Run("ScaleBarMode").Long(), 0);
    EXPECT_EQ(rig.Run("ActiveColor").Long(), 255);
    EXPECT_EQ(rig.Run("AreaTop").Double(), -10000.0);
    EXPECT_EQ(rig.Run("AreaBottom").Double(), 20000.0);
    EXPECT_EQ(rig.Run("AreaLeft").Double(), -10000.0);
    EXPECT_EQ(rig.Run("AreaRight").Double(), 20000.0);
    EXPECT_EQ(rig.Run("ActivePointType").Long(), 0);
    EXPECT_TRUE(rig.Run("OrgStrVisible").False());
    EXPECT_TRUE(rig.Run("LineTagMode").True());
    EXPECT_TRUE(rig.Run("DigStrVisible").False());
    EXPECT_TRUE(rig.Run("StrVisible").False());
    EXPECT_TRUE(rig.Run("CutSameString").False());
}

TEST_F(PropertiesTest, EveryWriteThatIsKeptMarksTheControlAsModified) {
    const struct {
        const char* name;
        Variant value;
    } kWrites[] = {
        {"ExecRun", Variant(false)},      {"DebugMode", Variant(true)},     {"RunMode", Variant(10)},
        {"ScrollMode", Variant(10)},      {"ScaleX", Variant(2.5)},         {"ScaleY", Variant(0.5)},
        {"Rotate", Variant(30.0)},        {"Zoom", Variant(2500)},          {"MapDraw", Variant(false)},
        {"ScaleBarMode", Variant(3)},     {"ActiveColor", Variant(65280)},  {"AreaTop", Variant(-1.5)},
        {"AreaBottom", Variant(2.5)},     {"AreaLeft", Variant(-3.5)},      {"AreaRight", Variant(4.5)},
        {"ActivePointType", Variant(1)},  {"OrgStrVisible", Variant(true)}, {"LineTagMode", Variant(false)},
        {"DigStrVisible", Variant(true)}, {"StrVisible", Variant(false)},   {"CutSameString", Variant(true)},
    };
    for (const auto& write : kWrites) {
        EXPECT_TRUE(PutMarks(write.name, write.value)) << write.name;
        double written = 0;
        double read = 1;
        EXPECT_TRUE(write.value.ToR8(written) && rig.Run(write.name).result.value.ToR8(read)) << write.name;
        EXPECT_EQ(read, written) << write.name;
    }
}

TEST_F(PropertiesTest, NoWriteRepaints) {
    rig.verbs->Clear();
    const std::int32_t asked = rig.window.invalidateCnt;
    for (const Member& property : Surface().Properties()) {
        if (property.readOnly) continue;
        EXPECT_EQ(rig.Put(property.name, 1).status, InvokeStatus::Ok) << property.name;
    }
    EXPECT_EQ(rig.verbs->Size(), 0u);
    EXPECT_EQ(rig.window.invalidateCnt, asked);
}

TEST_F(PropertiesTest, StrVisibleAndDigStrVisibleReadAndWriteOneValue) {
    rig.Put("StrVisible", true);
    EXPECT_TRUE(rig.Run("DigStrVisible").True());
    rig.Put("DigStrVisible", false);
    EXPECT_TRUE(rig.Run("StrVisible").False());
}

TEST_F(PropertiesTest, MemHandleReads0AfterAWriteOf5AndTheControlStaysUnmodified) {
    EXPECT_FALSE(PutMarks("MemHandle", 5));
    EXPECT_EQ(rig.Run("MemHandle").Long(), 0);
    EXPECT_FALSE(PutMarks("MemCnt", 5));
    EXPECT_EQ(rig.Run("MemCnt").Long(), 0);
}

TEST_F(PropertiesTest, TheRunAndScrollModesAreSixteenBitsWideAndSurviveAnInit) {
    rig.Put("RunMode", 250);
    rig.Put("ScrollMode", 10);
    EXPECT_EQ(rig.Run("RunMode").result.value.Type(), Vt::I2);
    rig.Run("RDMInit", "");
    EXPECT_EQ(rig.Run("RunMode").Long(), 250);
    EXPECT_EQ(rig.Run("ScrollMode").Long(), 10);
}

TEST_F(PropertiesTest, GetDCIsTheNumberOfTheBaseContextOnceTheFirstPaintMadeIt) {
    AutomationRig fresh;
    EXPECT_EQ(fresh.Run("GetDC").Long(), 0);
    fresh.Run("OrvInit");
    EXPECT_EQ(fresh.Run("GetDC").Long(), 0);
    fresh.Paint();
    EXPECT_EQ(fresh.Run("GetDC").Long(), fresh.ctrl->BaseDcHandle());
    EXPECT_NE(fresh.Run("GetDC").Long(), 0);
}

TEST_F(PropertiesTest, AZoomWriteIsClampedAndReportedOnce) {
    rig.Put("Zoom", 0);
    EXPECT_EQ(rig.Run("Zoom").Long(), 1);
    rig.Put("Zoom", -7);
    EXPECT_EQ(rig.Run("Zoom").Long(), 1);
    rig.Put("Zoom", 60000000);
    EXPECT_EQ(rig.Run("Zoom").Long(), 50000000);
    EXPECT_EQ(listener.zooms, (std::vector<std::int32_t>{1, 1, 50000000}));
}

TEST_F(PropertiesTest, AnAreaWriteReachesTheStoresCopyToo) {
    rig.Put("AreaTop", 1.0);
    rig.Put("AreaBottom", 2.0);
    rig.Put("AreaLeft", 3.0);
    rig.Put("AreaRight", 4.0);
    const ViewParams& view = rig.ctrl->store.view;
    EXPECT_EQ(view.AreaTop, 1.0);
    EXPECT_EQ(view.AreaBottom, 2.0);
    EXPECT_EQ(view.AreaLeft, 3.0);
    EXPECT_EQ(view.AreaRight, 4.0);
}

// --- Lifecycle and view -----------------------------------------------------------------------------------------------------

TEST_F(PropertiesTest, TheCodeArgumentOfAnInitHasNoEffect) {
    for (const char* code : {"", "123", "no number"}) {
        rig.Run("OrvAddLayer", "A", 1, 2, 1);
        EXPECT_TRUE(rig.Run("RDMInit", code).True()) << code;
        EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0) << code;
        EXPECT_EQ(rig.ctrl->store.GetDigIndexCnt(), 0) << code;
    }
}

TEST_F(PropertiesTest, TheMapStaysAfterATerm) {
    rig.Run("OrvAddLayer", "A", 1, 2, 1);
    EXPECT_TRUE(rig.Run("RDMTerm").Ok());
    EXPECT_TRUE(rig.Run("OrvTerm").Ok());
    EXPECT_EQ(rig.ctrl->store.GetDigIndexCnt(), 1);
}

TEST_F(PropertiesTest, RefreshAsksForAPaintAndAboutBoxDoesNothing) {
    rig.window.TakePaintRequest();
    EXPECT_TRUE(rig.Run("AboutBox").Ok());
    EXPECT_FALSE(rig.window.TakePaintRequest());
    EXPECT_TRUE(rig.window.messages.empty());
    EXPECT_TRUE(rig.Run("Refresh").Ok());
    EXPECT_TRUE(rig.window.TakePaintRequest());
}

TEST_F(PropertiesTest, GetScreenPosYNegatesAndItsExtendedFormDoesNot) {
    rig.ctrl->viewX = 30;
    rig.ctrl->viewY = 40;
    const double unit = 10000.0 / rig.ctrl->dotPerM;
    for (const char* name : {"GetScreenPosX", "OrvGetScreenPosX"})
        EXPECT_DOUBLE_EQ(rig.Run(name, 7).Double(), 7 * unit + 30) << name;
    for (const char* name : {"GetScreenPosY", "OrvGetScreenPosY"}) {
        EXPECT_EQ(rig.Run(name, 0).Double(), -40) << name;
        EXPECT_DOUBLE_EQ(rig.Run(name, 7).Double(), -(7 * unit + 40)) << name;
    }
    for (const char* name : {"GetScreenPosXEx", "OrvGetScreenPosXEx", "GetScreenPosYEx", "OrvGetScreenPosYEx"}) {
        EXPECT_EQ(rig.Run(name, 0, 5.5).Double(), 5.5) << name;
        EXPECT_DOUBLE_EQ(rig.Run(name, 7, 5.5).Double(), 7 * unit + 5.5) << name;
    }
}

TEST_F(PropertiesTest, TheOlderJumpsAndScrollAnswerTheirFixedNumbersAndTheNewerNothing) {
    EXPECT_EQ(rig.Run("MapJumpToXY", 5000.0, 5000.0).Long(), 0);
    EXPECT_TRUE(rig.Run("OrvMapJumpToXY", 5000.0, 5000.0).result.value.IsEmpty());
    EXPECT_EQ(rig.Run("RDMScrl", 1.0, 1.0).Long(), 1);
    EXPECT_TRUE(rig.Run("OrvScrl", 1.0, 1.0).result.value.IsEmpty());
    EXPECT_EQ(rig.Run("MapJumpToData", 7, "none", 1, true).Long(), 0);
    EXPECT_TRUE(rig.Run("OrvMapJumpToData", "none", 1, 7, true).result.value.IsEmpty());
}

TEST_F(PropertiesTest, BothJumpsToDataNameTheirItemInTheirOwnOrder) {
    rig.Run("OrvAddLayer", "A", 4, 1, 1);
    rig.Run("OrvAddDat", "A", 4, 9, 0);
    rig.Run("OrvAddDatPnt", "A", 4, 9, 5000.0, 6000.0, 0.0);
    rig.Put("AreaTop", -100000.0);
    rig.Put("AreaBottom", 100000.0);
    rig.Put("AreaLeft", -100000.0);
    rig.Put("AreaRight", 100000.0);
    const double halfW = 800 * 10000.0 / rig.ctrl->dotPerM / 2;
    const double halfH = 600 * 10000.0 / rig.ctrl->dotPerM / 2;
    const auto expectCentred = [&] {
        EXPECT_NEAR(rig.ctrl->viewX, 5000 - halfW, 1e-9);
        EXPECT_NEAR(rig.ctrl->viewY, -6000 - halfH, 1e-9);
        EXPECT_EQ(rig.ctrl->store.FindDat("A", 4, 9)->active, 1);
        rig.ctrl->viewX = rig.ctrl->viewY = 0;
        rig.ctrl->store.ClearActive();
    };
    rig.Run("MapJumpToData", 9, "A", 4, true);
    expectCentred();
    rig.Run("OrvMapJumpToData", "A", 4, 9, true);
    expectCentred();
}

TEST_F(PropertiesTest, AScrollIsGivenInMapSenseWithYUpward) {
    rig.Run("RDMScrl", 100.0, 50.0);
    const double x = rig.ctrl->viewX;
    const double y = rig.ctrl->viewY;
    // A drawn scroll moves the view by whole pixels; one pixel is less than three map units here.
    EXPECT_NEAR(x, 100.0, 3.0);
    EXPECT_LT(y, 0.0);
}

TEST_F(PropertiesTest, TheRectangleZoomModeIsStoredUnchecked) {
    rig.Run("RectZoom", 10);
    EXPECT_EQ(rig.ctrl->rectZoomMode, 10);
    rig.Run("OrvRectZoom", 77);
    EXPECT_EQ(rig.ctrl->rectZoomMode, 77);
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(PropertiesTest, TheWheelModeAndItsRateAreSetTogether) {
    rig.Run("OrvWheelZoomMode", 2, 0.6);
    EXPECT_EQ(rig.ctrl->wheelZoomMode, 2);
    EXPECT_EQ(rig.ctrl->wheelRateUp, 1.2);
    rig.Run("OrvWheelZoomMode", 1, 0.25);
    EXPECT_EQ(rig.ctrl->wheelRateUp, 1.25);
    EXPECT_EQ(rig.ctrl->wheelRateDown, 0.75);
}

TEST_F(PropertiesTest, TheFitTakesItsMargin) {
    rig.Run("OrvAddLayer", "A", 1, 2, 1);
    rig.Run("OrvAddDat", "A", 1, 1, 0);
    rig.Run("OrvAddDatPnt", "A", 1, 1, 0.0, 0.0, 0.0);
    rig.Run("OrvAddDatPnt", "A", 1, 1, 8000.0, 6000.0, 0.0);
    // 8000 units on 800 pixels of 3779 to the metre: 10 m a pixel.
    rig.Run("DspFit");
    EXPECT_EQ(rig.Run("Zoom").Long(), 37790);
    rig.Run("OrvDspFit2", 25);
    EXPECT_EQ(rig.Run("Zoom").Long(), 56685);
    rig.Run("OrvDspFit");
    EXPECT_EQ(rig.Run("Zoom").Long(), 37790);
    EXPECT_EQ(listener.zooms, (std::vector<std::int32_t>{37790, 56685, 37790}));
}

TEST_F(PropertiesTest, TheRasterModeIsKept) {
    rig.Run("RastDspMode", false);
    EXPECT_EQ(rig.ctrl->rastOnTop, 0);
    rig.Run("OrvDspRastMode", true);
    EXPECT_EQ(rig.ctrl->rastOnTop, 1);
}

TEST_F(PropertiesTest, BothRedrawsComposeTheMap) {
    for (const char* name : {"RDMReDraw", "OrvReDraw"}) {
        rig.verbs->Clear();
        EXPECT_TRUE(rig.Run(name).Ok());
        const std::vector<std::string> lines = rig.verbs->Lines();
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const auto& line) {
            return line.find("PatBlt 0 0 ") != std::string::npos && line.ends_with("0xFF0062");
        })) << name;
    }
}

TEST_F(PropertiesTest, FramesOnAHostsContextAnswer0OrNothing) {
    EXPECT_EQ(rig.Run("UserDcDraw", 0, 1, 2, 3, 4, 0).Long(), 0);
    EXPECT_TRUE(rig.Run("OrvUserDcDraw", 0, 1, 2, 3, 4, 0).result.value.IsEmpty());
    EXPECT_EQ(rig.Run("UserDcDrawEx", 0, 1, 2, 3, 4, 0.0, 0.0, 100, 0).Long(), 0);
    EXPECT_TRUE(rig.Run("OrvUserDcDrawEx", 0, 1, 2, 3, 4, 0.0, 0.0, 100, 0).result.value.IsEmpty());
}

TEST_F(PropertiesTest, TheSheetOriginOfAMeshNumber) {
    const Ran ran = rig.Run("GetMeshXY", 533945);
    EXPECT_TRUE(ran.True());
    EXPECT_EQ(ran.OutDouble(1), 3170000);
    EXPECT_EQ(ran.OutDouble(2), 4280000);
}

}  // namespace
}  // namespace orvane
