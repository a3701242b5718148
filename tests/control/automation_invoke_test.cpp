// Late-bound calls: ways in, refusals, outputs and buffers.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <utility>

#include "control/automation/arrays.h"
#include "platform/variant_array.h"
#include "tests/control/automation_rig.h"
#include "tests/support/value_types.h"

namespace orvane {
namespace {

class InvokeTest : public ::testing::Test {
protected:
    void SetUp() override { rig.Start(); }

    /// A block "A" 1 of lines with the item 7 of three points.
    void MakeLine() {
        ASSERT_TRUE(rig.Run("DigMemAlloc2", "A", 1, 2, "", 1, 100.0, 200.0).True());
        ASSERT_TRUE(rig.Run("OrvAddDat", "A", 1, 7, 3).True());
        for (int i = 0; i < 3; ++i) ASSERT_TRUE(rig.Run("OrvAddDatPnt", "A", 1, 7, 1.0 + i, 10.0 + i, 0.5 + i).True());
    }

    AutomationRig rig;
};

TEST_F(InvokeTest, CallsAMemberByNameByDispidAndByDescription) {
    std::vector<Argument> args(1);
    args[0].value = Variant(std::int32_t{60});
    EXPECT_EQ(Invoke(*rig.ctrl, "Zoom", InvokeKind::Put, args).status, InvokeStatus::Ok);
    std::int32_t zoom = 0;
    EXPECT_TRUE(Invoke(*rig.ctrl, "ZOOM", InvokeKind::Get, {}).value.ToI4(zoom));
    EXPECT_EQ(zoom, 60);
    args[0].value = Variant(std::int32_t{70});
    EXPECT_EQ(Invoke(*rig.ctrl, 8, InvokeKind::Put, args).status, InvokeStatus::Ok);
    EXPECT_TRUE(Invoke(*rig.ctrl, 8, InvokeKind::Get, {}).value.ToI4(zoom));
    EXPECT_EQ(zoom, 70);
    EXPECT_TRUE(Invoke(*rig.ctrl, *Surface().Find("Zoom"), InvokeKind::Method, {}).value.ToI4(zoom));
    EXPECT_EQ(zoom, 70);
}

TEST_F(InvokeTest, RefusesUnknownNamesAndDispidsAndEvents) {
    EXPECT_EQ(Invoke(*rig.ctrl, "Zoomm", InvokeKind::Get, {}).status, InvokeStatus::UnknownMember);
    EXPECT_EQ(Invoke(*rig.ctrl, "", InvokeKind::Get, {}).status, InvokeStatus::UnknownMember);
    EXPECT_EQ(Invoke(*rig.ctrl, 0, InvokeKind::Method, {}).status, InvokeStatus::UnknownMember);
    EXPECT_EQ(Invoke(*rig.ctrl, -605, InvokeKind::Method, {}).status, InvokeStatus::UnknownMember);
    EXPECT_EQ(Invoke(*rig.ctrl, *Surface().FindEvent("OnZoomChange"), InvokeKind::Method, {}).status,
              InvokeStatus::UnknownMember);
}

TEST_F(InvokeTest, RefusesAWrongNumberOfArgumentsForEveryMember) {
    const auto check = [&](const Member& member) {
        std::vector<Argument> tooMany(member.args.size() + 1);
        EXPECT_EQ(Invoke(*rig.ctrl, member, InvokeKind::Method, tooMany).status, InvokeStatus::BadArgCount) << member.name;
        if (member.args.empty()) return;
        std::vector<Argument> tooFew(member.args.size() - 1);
        EXPECT_EQ(Invoke(*rig.ctrl, member, InvokeKind::Method, tooFew).status, InvokeStatus::BadArgCount) << member.name;
    };
    for (const Member& member : Surface().Properties()) check(member);
    for (const Member& member : Surface().Methods()) check(member);
    EXPECT_EQ(Invoke(*rig.ctrl, "Zoom", InvokeKind::Put, {}).status, InvokeStatus::BadArgCount);
}

TEST_F(InvokeTest, AWrongNumberOfArgumentsDoesNothing) {
    std::vector<Argument> none;
    EXPECT_EQ(Invoke(*rig.ctrl, "MakeLayer", InvokeKind::Method, none).status, InvokeStatus::BadArgCount);
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0);
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(InvokeTest, AValueThatDoesNotConvertIsRefusedWithItsPosition) {
    const Ran ran = rig.Run("OrvAddDat", "A", 1, "seven", 0);
    EXPECT_EQ(ran.result.status, InvokeStatus::TypeMismatch);
    EXPECT_EQ(ran.result.argIndex, 2u);
    EXPECT_TRUE(ran.result.value.IsEmpty());
}

TEST_F(InvokeTest, NumbersAndTextsConvertByTheRulesOfTheAutomationTypes) {
    EXPECT_EQ(rig.Put("Zoom", "250").status, InvokeStatus::Ok);
    EXPECT_EQ(rig.Run("Zoom").Long(), 250);
    EXPECT_EQ(rig.Put("Zoom", 2.5).status, InvokeStatus::Ok);
    EXPECT_EQ(rig.Run("Zoom").Long(), 2);
    EXPECT_EQ(rig.Put("Zoom", 3.5).status, InvokeStatus::Ok);
    EXPECT_EQ(rig.Run("Zoom").Long(), 4);
    EXPECT_EQ(rig.Put("Zoom", 1e12).status, InvokeStatus::TypeMismatch);
    EXPECT_EQ(rig.Run("Zoom").Long(), 4);
    EXPECT_TRUE(rig.Run("OrvMakeLayer", 77, 2).True());
    EXPECT_EQ(rig.Layer("77").layType, 2);
}

TEST_F(InvokeTest, ASixteenBitArgumentRefusesWhatDoesNotFit) {
    EXPECT_EQ(rig.Run("SetDigDatInfoEx", "A", 1, 32768, 0, true).result.status, InvokeStatus::TypeMismatch);
    EXPECT_EQ(rig.Run("SetDigDatInfoEx", "A", 1, 32768, 0, true).result.argIndex, 2u);
    EXPECT_EQ(rig.Put("RunMode", 40000).status, InvokeStatus::TypeMismatch);
    EXPECT_EQ(rig.Put("ScaleBarMode", -32769).status, InvokeStatus::TypeMismatch);
}

TEST_F(InvokeTest, AnyTruthBecomesOneBeforeAWorkerSeesIt) {
    ASSERT_TRUE(rig.Run("OrvMakeLayer", "A", 2).True());
    for (const Variant& truth :
         {Variant(true), Variant(std::int16_t{-1}), Variant(std::int32_t{1}), Variant(0.25), Variant("True")}) {
        rig.Put("DigStrVisible", false);
        EXPECT_EQ(rig.Put("DigStrVisible", truth).status, InvokeStatus::Ok);
        EXPECT_TRUE(rig.Run("StrVisible").True());
        EXPECT_TRUE(rig.Run("OrvSetLayEditFlg", "A", truth).True());
        EXPECT_EQ(rig.Layer("A").editFlg, 1);
        EXPECT_TRUE(rig.Run("OrvSetLayEditFlg", "A", 0).True());
        EXPECT_EQ(rig.Layer("A").editFlg, 0);
    }
}

TEST_F(InvokeTest, ATextInEndsAtItsFirstZeroByte) {
    EXPECT_TRUE(rig.Run("OrvMakeLayer", std::string("AB\0CD", 5), 2).True());
    EXPECT_EQ(rig.Layer("AB").layType, 2);
    EXPECT_TRUE(rig.Run("OrvMakeLayer", std::string("AB\0XY", 5), 2).False());
    EXPECT_TRUE(rig.Run("OrvSetLayColor", std::string("AB\0", 3), 5).True());
    EXPECT_TRUE(rig.Run("DigMemAlloc", "AB", 1, 2, std::string("p\0q", 3), 1).True());
    EXPECT_EQ(rig.Run("GetLayPath", "AB", 1).Text(), "p");
}

TEST_F(InvokeTest, AColourRoundsLikeALongThroughoutItsBits) {
    const ValueType& color = Surface().Find("ActiveColor")->result;
    const std::pair<double, std::int32_t> cases[] = {
        {2.5, 2},
        {3.5, 4},
        {3.4999, 3},
        {2147483646.5, 2147483646},       // the last half within a long
        {2147483647.5, -2147483647 - 1},  // the first of the upper half of the bits
        {4278190334.5, static_cast<std::int32_t>(0xFF0000FE)},
        {4278190335.5, static_cast<std::int32_t>(0xFF000100)},
        {4294967295.4, -1},
        {-0.5, 0},
        {-2147483648.0, -2147483647 - 1},
    };
    for (const auto& [given, wanted] : cases) {
        std::int32_t bits = 77;
        EXPECT_TRUE(WrapUnsigned(color, Variant(given)).ToI4(bits)) << given;
        EXPECT_EQ(bits, wanted) << given;
        GrowArray<std::uint32_t> colors;
        EXPECT_TRUE(ReadColors(MakeArray(std::vector<Variant>{Variant(given)}), colors)) << given;
        ASSERT_EQ(colors.size(), 1U) << given;
        EXPECT_EQ(colors[0], static_cast<std::uint32_t>(wanted)) << given;
    }
    for (const double beyond : {4294967295.5, 4294967296.0, 1e300, -2147483649.0, std::nan("")}) {
        std::int32_t bits = 77;
        EXPECT_FALSE(WrapUnsigned(color, Variant(beyond)).ToI4(bits)) << beyond;
    }
    std::int32_t plain = 0;
    EXPECT_FALSE(WrapUnsigned(Surface().Find("Zoom")->result, Variant(4278190335.0)).ToI4(plain)) << "a number that is no colour";
}

TEST_F(InvokeTest, AWorkerSeesATextUpToItsFirstZeroByteAndCutAsItsSignatureTells) {
    Member echo = *Surface().Find("GetLayPath");
    echo.worker = [](Call& call) { call.ReturnBytes(call.Bytes(0)); };
    const auto told = [&](const std::string& text) {
        std::vector<Argument> args(2);
        args[0].value = Variant(text);
        std::string bytes;
        Invoke(*rig.ctrl, echo, InvokeKind::Method, args).value.ToBytes(bytes);
        return bytes;
    };
    const std::string long60(60, 'k');
    EXPECT_EQ(told(std::string("AB\0CD", 5)), "AB");
    EXPECT_EQ(told(std::string("\0CD", 3)), "");
    EXPECT_EQ(told(long60), long60);
    echo.args[0].cut_bytes = 4;
    EXPECT_EQ(told("ABCDEFG"), "ABCD");
    EXPECT_EQ(told(std::string("ABC\0EFG", 7)), "ABC");
}

TEST_F(InvokeTest, TheDeviceContextOfTheMapCannotBeWritten) {
    EXPECT_EQ(rig.Put("GetDC", 5).status, InvokeStatus::NotSupported);
    EXPECT_NE(rig.Run("GetDC").Long(), 0);
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(InvokeTest, AMethodCannotBeWritten) {
    EXPECT_EQ(rig.Put("RDMReDraw", 5).status, InvokeStatus::NotSupported);
    EXPECT_EQ(rig.Put("OrvAddDat", "A", 1, 7, 0, 5).status, InvokeStatus::NotSupported);
}

TEST_F(InvokeTest, AnIndexedPropertyIsReadWithItsArgumentAndWrittenWithTheValueLast) {
    const Ran read = rig.Run("OrgDataActive", 1);
    EXPECT_TRUE(read.False());
    const InvokeResult written = rig.Put("OrvOrgDataActive", 1, true);
    EXPECT_EQ(written.status, InvokeStatus::Ok);
    EXPECT_TRUE(written.value.IsEmpty());
    EXPECT_EQ(rig.Put("OrgDataActive", 1).status, InvokeStatus::BadArgCount);
    EXPECT_EQ(rig.Put("OrgDataActive", 1, "perhaps").status, InvokeStatus::TypeMismatch);
}

TEST_F(InvokeTest, OutputsComeBackByPositionAndAreMarkedAsWritten) {
    MakeLine();
    const Ran ran = rig.Run("OrvGetDatInfoEx", "A", 1, 7);
    ASSERT_TRUE(ran.True());
    for (std::size_t i = 3; i < 7; ++i) EXPECT_TRUE(ran.args[i].written) << i;
    EXPECT_EQ(ran.OutLong(3), 2);
    EXPECT_EQ(ran.OutLong(4), 3);
    EXPECT_EQ(ran.OutLong(5), 3);
    EXPECT_EQ(ran.OutLong(6), 0);
}

TEST_F(InvokeTest, OutputsOfAMissingItemStayUntouched) {
    MakeLine();
    const Ran info = rig.Run("OrvGetDatInfoEx", "A", 1, 8);
    EXPECT_TRUE(info.False());
    for (std::size_t i = 3; i < 7; ++i) {
        EXPECT_FALSE(info.args[i].written) << i;
        EXPECT_TRUE(info.args[i].value.IsEmpty()) << i;
    }
    const Ran points = rig.Run("OrvGetDatPnt", "A", 1, 8);
    EXPECT_TRUE(points.False());
    EXPECT_FALSE(points.args[3].written);
    EXPECT_FALSE(points.args[4].written);
}

TEST_F(InvokeTest, BufferLengthTellsThePointsOfTheItemThatTheArgumentsName) {
    MakeLine();
    const Member& read = *Surface().Find("OrvGetDatPntEx");
    std::vector<Argument> args(6);
    args[0].value = Variant("A");
    args[1].value = Variant(std::int32_t{1});
    args[2].value = Variant(std::int32_t{7});
    EXPECT_EQ(BufferLength(*rig.ctrl, read, 3, args), 3u);
    EXPECT_EQ(BufferLength(*rig.ctrl, read, 5, args), 3u);
    EXPECT_EQ(BufferLength(*rig.ctrl, read, 0, args), 0u);
    EXPECT_EQ(BufferLength(*rig.ctrl, read, 99, args), 0u);
    args[2].value = Variant(std::int32_t{8});
    EXPECT_EQ(BufferLength(*rig.ctrl, read, 3, args), 0u);
    args[2].value = Variant("no number");
    EXPECT_EQ(BufferLength(*rig.ctrl, read, 3, args), 0u);
    EXPECT_EQ(BufferLength(*rig.ctrl, read, 3, {}), 0u);
}

TEST_F(InvokeTest, BufferLengthTellsTheCountArgumentTheActiveItemsAndTheLineTypes) {
    const Member& test = *Surface().Find("OrvTestLine");
    std::vector<Argument> args(4);
    args[2].value = Variant(std::int32_t{5});
    EXPECT_EQ(BufferLength(*rig.ctrl, test, 0, args), 5u);
    EXPECT_EQ(BufferLength(*rig.ctrl, test, 1, args), 5u);
    args[2].value = Variant(std::int32_t{-5});
    EXPECT_EQ(BufferLength(*rig.ctrl, test, 0, args), 0u);
    std::int32_t active = -1;
    ASSERT_TRUE(rig.Run("OrvGetActDatCnt").result.value.ToI4(active));
    EXPECT_EQ(BufferLength(*rig.ctrl, *Surface().Find("OrvGetActDat"), 0, {}), static_cast<std::size_t>(active));
    EXPECT_EQ(BufferLength(*rig.ctrl, *Surface().Find("OrvGetLineType"), 0, {}), 0u);
    ASSERT_TRUE(rig.ctrl->store.lineTypes.Resize(3));
    EXPECT_EQ(BufferLength(*rig.ctrl, *Surface().Find("OrvGetLineType"), 0, {}), 3u);
    EXPECT_EQ(BufferLength(*rig.ctrl, *Surface().Find("GetMeshXY"), 1, {}), 1u);
}

TEST_F(InvokeTest, AShortBufferIsRefusedWithNothingWritten) {
    MakeLine();
    std::vector<Argument> args(5);
    args[0].value = Variant("A");
    args[1].value = Variant(std::int32_t{1});
    args[2].value = Variant(std::int32_t{7});
    args[3].buffer = std::vector<double>{-1, -2, -3};
    args[4].buffer = std::vector<double>{-4, -5};
    const InvokeResult refused = Invoke(*rig.ctrl, "OrvGetDatPnt", InvokeKind::Method, args);
    EXPECT_EQ(refused.status, InvokeStatus::BufferTooShort);
    EXPECT_EQ(refused.argIndex, 4u);
    EXPECT_EQ(std::get<std::vector<double>>(args[3].buffer), (std::vector<double>{-1, -2, -3}));
    EXPECT_EQ(std::get<std::vector<double>>(args[4].buffer), (std::vector<double>{-4, -5}));
    EXPECT_FALSE(args[3].written);
}

TEST_F(InvokeTest, ABufferOfAnotherTypeIsRefused) {
    MakeLine();
    std::vector<Argument> args(5);
    args[0].value = Variant("A");
    args[1].value = Variant(std::int32_t{1});
    args[2].value = Variant(std::int32_t{7});
    args[3].buffer = std::vector<std::int32_t>(3);
    args[4].buffer = std::vector<double>(3);
    EXPECT_EQ(Invoke(*rig.ctrl, "OrvGetDatPnt", InvokeKind::Method, args).status, InvokeStatus::TypeMismatch);
    args[3].buffer = {};
    EXPECT_EQ(Invoke(*rig.ctrl, "OrvGetDatPnt", InvokeKind::Method, args).argIndex, 3u);
}

TEST_F(InvokeTest, ALongerBufferIsFilledFromTheFirstAndTellsHowMany) {
    MakeLine();
    std::vector<Argument> args(6);
    args[0].value = Variant("A");
    args[1].value = Variant(std::int32_t{1});
    args[2].value = Variant(std::int32_t{7});
    for (std::size_t i = 3; i < 6; ++i) args[i].buffer = std::vector<double>(5, -9.0);
    ASSERT_EQ(Invoke(*rig.ctrl, "OrvGetDatPntEx", InvokeKind::Method, args).status, InvokeStatus::Ok);
    EXPECT_EQ(args[3].count, 3u);
    EXPECT_EQ(std::get<std::vector<double>>(args[3].buffer), (std::vector<double>{101, 102, 103, -9, -9}));
    EXPECT_EQ(std::get<std::vector<double>>(args[4].buffer), (std::vector<double>{210, 211, 212, -9, -9}));
    EXPECT_EQ(std::get<std::vector<double>>(args[5].buffer), (std::vector<double>{0.5, 1.5, 2.5, -9, -9}));
}

TEST_F(InvokeTest, AnItemWithoutPointsGivesEmptyBuffersThatAreWritten) {
    MakeLine();
    ASSERT_TRUE(rig.Run("OrvAddDat", "A", 1, 9, 0).True());
    const Ran ran = rig.Run("OrvGetDatPnt", "A", 1, 9);
    EXPECT_TRUE(ran.True());
    EXPECT_TRUE(ran.args[3].written);
    EXPECT_EQ(ran.args[3].count, 0u);
}

TEST_F(InvokeTest, MakeBufferGivesTheElementTypeOfTheArgument) {
    EXPECT_EQ(std::get<std::vector<std::string>>(MakeBuffer(Surface().Find("OrvGetActDat")->args[0], 2)).size(), 2u);
    EXPECT_EQ(std::get<std::vector<std::int32_t>>(MakeBuffer(Surface().Find("OrvGetActDat")->args[1], 2)).size(), 2u);
    EXPECT_EQ(std::get<std::vector<double>>(MakeBuffer(Surface().Find("OrvTestLine")->args[0], 2)).size(), 2u);
    EXPECT_EQ(MakeBuffer(Surface().Find("OrvTestLine")->args[2], 2).index(), 0u);
    EXPECT_EQ(MakeBuffer(Surface().Find("OrvTestLine")->args[0], (std::numeric_limits<std::size_t>::max)()).index(), 0u);
}

/// Inputs of zero or an empty text, buffers to measure.
Ran RunWithNothing(AutomationRig& rig, const Member& member) { return rig.RunWith(member.name, {}); }

TEST_F(InvokeTest, EveryMemberAnswersAValueOfItsResultType) {
    for (const auto& members : {Surface().Properties(), Surface().Methods()}) {
        for (const Member& member : members) {
            const Ran ran = RunWithNothing(rig, member);
            EXPECT_TRUE(ran.Ok()) << member.name;
            EXPECT_EQ(ran.result.value.Type(), TypeOf(member.result.kind)) << member.name;
        }
    }
}

TEST_F(InvokeTest, AMemberThatIsNotBuiltAnswersItsFailureValueAndLeavesOutputsUntouched) {
    MakeLine();
    Member notBuilt = *Surface().Find("OrvGetDatInfoEx");
    notBuilt.worker = nullptr;
    std::vector<Argument> args(7);
    args[0].value = Variant("A");
    args[1].value = Variant(std::int32_t{1});
    args[2].value = Variant(std::int32_t{7});
    const InvokeResult result = Invoke(*rig.ctrl, notBuilt, InvokeKind::Method, args);
    EXPECT_EQ(result.status, InvokeStatus::Ok);
    bool value = true;
    EXPECT_TRUE(result.value.ToBool(value) && !value);
    for (const Argument& argument : args) EXPECT_FALSE(argument.written);
}

TEST_F(InvokeTest, AnExceptionInsideAMemberEndsAsItsFailureValue) {
    Member broken = *Surface().Find("GetDigDatInfo");
    std::vector<Argument> args(3);
    for (const Worker worker : {Worker([](Call&) { throw std::bad_alloc(); }), Worker([](Call&) { throw 1; })}) {
        broken.worker = worker;
        const InvokeResult result = Invoke(*rig.ctrl, broken, InvokeKind::Method, args);
        EXPECT_EQ(result.status, InvokeStatus::Ok);
        std::int32_t value = 0;
        EXPECT_TRUE(result.value.ToI4(value) && value == -1);
    }
}

TEST(InvokeBeforeInit, EveryMemberIsSafeOnAControlThatWasNeverStarted) {
    for (const auto& members : {Surface().Properties(), Surface().Methods()}) {
        for (const Member& member : members) {
            AutomationRig rig;
            EXPECT_TRUE(RunWithNothing(rig, member).Ok()) << member.name;
        }
    }
}

class Destroyer : public ControlEvents {
public:
    explicit Destroyer(ControlPtr& ctrl) : ctrl_(ctrl) {}
    void Fire(std::int32_t, std::span<const Variant> args) override {
        args[0].ToI4(heard);
        ctrl_.reset();
    }
    std::int32_t heard = 0;

private:
    ControlPtr& ctrl_;
};

TEST(InvokeReentry, AHandlerMayDestroyTheControlThatCallsIt) {
    AutomationRig rig;
    rig.Start();
    Destroyer destroyer(rig.ctrl);
    rig.ctrl->SetEvents(&destroyer);
    COrvane4Ctrl& ctrl = *rig.ctrl;
    std::vector<Argument> args(1);
    args[0].value = Variant(std::int32_t{500});
    EXPECT_EQ(Invoke(ctrl, "Zoom", InvokeKind::Put, args).status, InvokeStatus::Ok);
    EXPECT_EQ(destroyer.heard, 500);
    EXPECT_EQ(rig.ctrl, nullptr);
}

TEST(InvokeReentry, AMessageOfTheFreeIdMayRunAnInit) {
    AutomationRig rig;
    rig.Start();
    rig.window.onMessage = [&](const ShownMessage&) { rig.Run("OrvInit"); };
    const Ran ran = rig.Run("OrvGetFreeDatID", "none", 1, 0);
    EXPECT_EQ(ran.Long(), -1);
    ASSERT_EQ(rig.window.messages.size(), 1u);
}

TEST(InvokeReentry, AMessageOfTheFreeIdMayDestroyTheControl) {
    AutomationRig rig;
    rig.Start();
    rig.window.onMessage = [&](const ShownMessage&) { rig.ctrl.reset(); };
    COrvane4Ctrl& ctrl = *rig.ctrl;
    std::vector<Argument> args(3);
    const InvokeResult result = Invoke(ctrl, "GetFreeDigDatID", InvokeKind::Method, args);
    std::int32_t id = 0;
    EXPECT_TRUE(result.value.ToI4(id) && id == -1);
    EXPECT_EQ(rig.ctrl, nullptr);
}

}  // namespace
}  // namespace orvane
