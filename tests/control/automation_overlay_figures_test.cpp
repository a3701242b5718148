// The members for overlay figures, called as a host calls them: each argument reaches its place, under both names.
#include <gtest/gtest.h>

#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

/// The names of one family.
struct Family {
    const char *make, *edit, *del, *add, *ins, *delPnt, *editPnt, *read, *idAt, *active, *string, *moveOn, *moveOff, *top;
};
constexpr Family kFamilies[] = {
    {"MakeOrgDatEx", "EditOrgDatEx", "DelOrgDataEx", "AddOrgPnt", "InsOrgPnt", "DelOrgPnt", "EditOrgPnt", "GetOrgDatEx",
     "GetOrgID", "OrgDataActive", "SetOrgDatString", "MoveOnOrgPnt", "MoveOffOrgPnt", "SetOrgTopDrawID"},
    {"OrvMakeOrgDatEx", "OrvEditOrgDatEx", "OrvDelOrgDataEx", "OrvAddOrgPnt", "OrvInsOrgPnt", "OrvDelOrgPnt", "OrvEditOrgPnt",
     "OrvGetOrgDatEx", "OrvGetOrgID", "OrvOrgDataActive", "OrvSetOrgDatString", "OrvMoveOnOrgPnt", "OrvMoveOffOrgPnt",
     "OrvSetOrgTopDrawID"},
};

class OverlayMembersTest : public ::testing::TestWithParam<Family> {
protected:
    void SetUp() override {
        rig.Start();
        rig.ctrl->SetModified(false);
        rig.verbs->Clear();
    }
    std::int32_t Make(std::int32_t type) { return rig.Run(f.make, type, 1, 0, 0).Long(); }
    const OrgDat& Figure(std::int32_t id) {
        static const OrgDat kNone;
        const OrgDat* dat = rig.ctrl->store.FindOrgDat(id);
        EXPECT_NE(dat, nullptr);
        return dat == nullptr ? kNone : *dat;
    }
    std::vector<double> Xs(std::int32_t id) {
        std::vector<double> xs;
        for (const DigPnt& pnt : Figure(id).pnts) xs.push_back(pnt.x);
        return xs;
    }
    AutomationRig rig;
    const Family f = GetParam();
};

INSTANTIATE_TEST_SUITE_P(BothFamilies, OverlayMembersTest, ::testing::ValuesIn(kFamilies),
                         [](const auto& family) { return std::string(family.index == 0 ? "OlderNames" : "NewerNames"); });

TEST_P(OverlayMembersTest, OnAFreshStoreAddingAPointIsMinusOneForAnyId) {
    for (const int id : {-1, 0, 1, 2}) EXPECT_EQ(rig.Run(f.add, id, 1.0, 2.0).Long(), -1);
}

TEST_P(OverlayMembersTest, AFigureIsMadeReadEditedAndDeleted) {
    EXPECT_EQ(rig.Run(f.make, 3, 5, 0x112233, 1).Long(), 1);
    EXPECT_EQ(Figure(1).type, 3);
    const Ran made = rig.Run(f.read, 1);
    EXPECT_EQ(made.Long(), 0) << "no points yet, and the outputs are filled";
    for (std::size_t i = 1; i <= 4; ++i) EXPECT_TRUE(made.args[i].written) << i;
    EXPECT_EQ(made.OutLong(1), 3);
    EXPECT_EQ(made.OutLong(2), 5);
    EXPECT_EQ(made.OutLong(3), 0x112233);
    EXPECT_EQ(made.OutLong(4), 1);

    EXPECT_TRUE(rig.Run(f.edit, 1, 2, 6, 0x445566, 0).True());
    EXPECT_EQ(rig.Run(f.add, 1, 1.0, 2.0).Long(), 1);
    const Ran edited = rig.Run(f.read, 1);
    EXPECT_EQ(edited.Long(), 1);
    EXPECT_EQ(edited.OutLong(1), 2);
    EXPECT_EQ(edited.OutLong(2), 6);
    EXPECT_EQ(edited.OutLong(3), 0x445566);
    EXPECT_EQ(edited.OutLong(4), 0);

    EXPECT_EQ(rig.Run(f.del, 1).Long(), 0);
    EXPECT_EQ(rig.Run(f.del, 1).Long(), -1);
    EXPECT_TRUE(rig.Run(f.edit, 1, 2, 6, 0, 0).False());
    const Ran gone = rig.Run(f.read, 1);
    EXPECT_EQ(gone.Long(), -1);
    for (std::size_t i = 1; i <= 4; ++i) EXPECT_FALSE(gone.args[i].written) << i;
}

TEST_P(OverlayMembersTest, TypeAndLineComeBackWithTheirSignInTheWidthOfTheFamily) {
    ASSERT_EQ(rig.Run(f.make, -5, -7, -1, 1).Long(), 1);
    const Ran ran = rig.Run(f.read, 1);
    EXPECT_EQ(ran.OutLong(1), -5);
    EXPECT_EQ(ran.OutLong(2), -7);
    EXPECT_EQ(ran.OutLong(3), -1);
    const Vt width = std::string_view(f.read) == "GetOrgDatEx" ? Vt::I2 : Vt::I4;
    for (const std::size_t i : {1U, 2U, 4U}) EXPECT_EQ(ran.args[i].value.Type(), width) << i;
}

TEST_P(OverlayMembersTest, PointsUnderTheirNumbers) {
    ASSERT_EQ(Make(2), 1);
    EXPECT_EQ(rig.Run(f.add, 1, 10.0, 1.0).Long(), 1);
    EXPECT_EQ(rig.Run(f.add, 1, 30.0, 3.0).Long(), 2);
    EXPECT_EQ(rig.Run(f.ins, 1, 1, 20.0, 2.0).Long(), 3);
    EXPECT_EQ(rig.Run(f.ins, 1, 4, 20.0, 2.0).Long(), -1);
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(Figure(1).pnts[1].y, 2);
    EXPECT_EQ(rig.Run(f.editPnt, 1, 2, 31.0, 4.0).Long(), 0);
    EXPECT_EQ(Figure(1).pnts[2].y, 4);
    EXPECT_EQ(rig.Run(f.editPnt, 2, 2, 31.0, 4.0).Long(), -1);
    EXPECT_EQ(rig.Run(f.delPnt, 1, 0).Long(), 2);
    EXPECT_EQ(Xs(1), (std::vector<double>{20, 31}));
}

TEST_P(OverlayMembersTest, ASecondPointOfAPointFigureIsRefused) {
    ASSERT_EQ(Make(1), 1);
    EXPECT_EQ(rig.Run(f.add, 1, 1.0, 2.0).Long(), 1);
    EXPECT_EQ(rig.Run(f.add, 1, 1.0, 2.0).Long(), -1);
}

TEST_P(OverlayMembersTest, AClosedPolygonStaysClosed) {
    ASSERT_EQ(Make(3), 1);
    for (const double x : {0.0, 10.0, 20.0, 0.0}) rig.Run(f.add, 1, x, 0.0);
    EXPECT_EQ(rig.Run(f.editPnt, 1, 0, 5.0, 0.0).Long(), 0);
    EXPECT_EQ(Xs(1), (std::vector<double>{5, 10, 20, 5}));
    EXPECT_EQ(rig.Run(f.delPnt, 1, 0).Long(), 3);
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 20, 10}));
}

TEST_P(OverlayMembersTest, TheCountAsPositionIsNoPointToEditButDropsTheLastOne) {
    ASSERT_EQ(Make(2), 1);
    for (const double x : {0.0, 10.0, 20.0}) rig.Run(f.add, 1, x, 0.0);
    EXPECT_EQ(rig.Run(f.editPnt, 1, 3, 5.0, 0.0).Long(), -2);
    EXPECT_EQ(rig.Run(f.delPnt, 1, 3).Long(), 2);
    EXPECT_EQ(Xs(1), (std::vector<double>{0, 10}));
}

TEST_P(OverlayMembersTest, TheLastPointOfAFigureDoesNotGo) {
    ASSERT_EQ(Make(2), 1);
    rig.Run(f.add, 1, 1.0, 2.0);
    EXPECT_EQ(rig.Run(f.delPnt, 1, 0).Long(), -1);
    EXPECT_EQ(rig.Run(f.read, 1).Long(), 1);
}

TEST_P(OverlayMembersTest, ANumberMadeTwiceMeetsTheOlderFigure) {
    for (int i = 1; i <= 3; ++i) ASSERT_EQ(Make(i), i);
    ASSERT_EQ(rig.Run(f.del, 2).Long(), 0);
    EXPECT_EQ(Make(8), 3);
    EXPECT_EQ(rig.Run(f.read, 3).OutLong(1), 3);
    EXPECT_EQ(rig.Run(f.idAt, 0).Long(), 1);
    EXPECT_EQ(rig.Run(f.idAt, 1).Long(), 3);
    EXPECT_EQ(rig.Run(f.idAt, 2).Long(), 3);
    for (const int pos : {-1, 3, 4, 2147483647}) EXPECT_EQ(rig.Run(f.idAt, pos).Long(), -1) << pos;
}

TEST_P(OverlayMembersTest, TheActiveStateIsReadAndWrittenByNumber) {
    Make(2);
    Make(2);
    EXPECT_TRUE(rig.Run(f.active, 2).False());
    EXPECT_FALSE(rig.ctrl->Modified());
    EXPECT_EQ(rig.Put(f.active, 2, -1).status, InvokeStatus::Ok) << "any truth is 1 by the time it arrives";
    EXPECT_TRUE(rig.ctrl->Modified());
    EXPECT_TRUE(rig.Run(f.active, 2).True());
    EXPECT_TRUE(rig.Run(f.active, 1).False());
    EXPECT_EQ(Figure(2).active, 1);
    rig.Put(f.active, 2, false);
    EXPECT_TRUE(rig.Run(f.active, 2).False());
}

TEST_P(OverlayMembersTest, AnUnknownFigureIsNotActiveAndItsWriteStillSetsTheModifiedFlag) {
    EXPECT_TRUE(rig.Run(f.active, 1).False());
    EXPECT_EQ(rig.Put(f.active, 1, true).status, InvokeStatus::Ok);
    EXPECT_TRUE(rig.Run(f.active, 1).False());
    EXPECT_TRUE(rig.ctrl->Modified());
}

TEST_P(OverlayMembersTest, AStringAnswersTrueWhateverBecameOfIt) {
    EXPECT_TRUE(rig.Run(f.string, 1, "mark", 1.0, 2.0, 3, 4, 5).True());
    ASSERT_EQ(Make(2), 1);
    EXPECT_TRUE(rig.Run(f.string, 1, "", 1.0, 2.0, 3, 4, 5).True());
    EXPECT_TRUE(Figure(1).strText.empty());
    EXPECT_TRUE(rig.Run(f.string, 1, "mark", 1.5, 2.5, 3, 4, 5).True());
    EXPECT_EQ(Figure(1).strText, "mark");
    EXPECT_EQ(Figure(1).strX, 1.5);
    EXPECT_EQ(Figure(1).strY, 2.5);
    EXPECT_EQ(Figure(1).strSize, 3);
    EXPECT_EQ(Figure(1).strColor, 4U);
    EXPECT_EQ(Figure(1).strFill, 5);
}

TEST_P(OverlayMembersTest, TheDragKeepsFigurePointAndFlag) {
    const bool older = std::string_view(f.moveOn) == "MoveOnOrgPnt";
    const Ran on = rig.Run(f.moveOn, 7, 3);
    EXPECT_TRUE(older ? on.True() : on.Ok() && on.result.value.IsEmpty());
    EXPECT_EQ(rig.ctrl->orgMoveID, 7);
    EXPECT_EQ(rig.ctrl->orgMoveIndex, 3);
    EXPECT_TRUE(rig.ctrl->orgMoving);
    const Ran off = rig.Run(f.moveOff, 8, 9);
    EXPECT_TRUE(older ? off.True() : off.Ok() && off.result.value.IsEmpty());
    EXPECT_FALSE(rig.ctrl->orgMoving);
    EXPECT_EQ(rig.ctrl->orgMoveID, 7) << "the arguments are not used";
    EXPECT_EQ(rig.ctrl->orgMoveIndex, 3);
}

TEST_P(OverlayMembersTest, TheTopFigureIsKeptWhetherOrNotItExists) {
    const bool older = std::string_view(f.top) == "SetOrgTopDrawID";
    const Ran ran = rig.Run(f.top, 42);
    EXPECT_TRUE(older ? ran.True() : ran.Ok() && ran.result.value.IsEmpty());
    EXPECT_EQ(rig.ctrl->orgTopDrawID, 42);
}

TEST_P(OverlayMembersTest, NoneOfThemRepaintsAndOnlyTheActiveStateMarksTheControlAsModified) {
    Make(2);
    rig.Run(f.add, 1, 1.0, 2.0);
    rig.Run(f.string, 1, "mark", 1.0, 2.0, 3, 4, 5);
    rig.Run(f.edit, 1, 3, 1, 1, 1);
    rig.Run(f.moveOn, 1, 0);
    rig.Run(f.top, 1);
    EXPECT_FALSE(rig.ctrl->Modified());
    rig.Put(f.active, 1, true);
    rig.Run(f.del, 1);
    EXPECT_TRUE(rig.verbs->Lines().empty());
}

TEST_P(OverlayMembersTest, ASecondInitDiscardsTheFiguresAndTheDrag) {
    Make(2);
    Make(2);
    rig.Run(f.moveOn, 2, 1);
    rig.Run(f.top, 2);
    ASSERT_TRUE(rig.Run("OrvInit").Ok());
    EXPECT_EQ(rig.Run(f.idAt, 0).Long(), -1);
    EXPECT_EQ(rig.Run(f.read, 1).Long(), -1);
    EXPECT_FALSE(rig.ctrl->orgMoving);
    EXPECT_EQ(rig.ctrl->orgMoveID, 0);
    EXPECT_EQ(rig.ctrl->orgMoveIndex, 0);
    EXPECT_EQ(rig.ctrl->orgTopDrawID, 0);
    EXPECT_EQ(Make(2), 1);
}

TEST_P(OverlayMembersTest, TermLeavesTheFiguresWithTheMap) {
    Make(2);
    rig.Run("RDMTerm");
    EXPECT_EQ(rig.Run(f.read, 1).Long(), 0);
}

TEST_P(OverlayMembersTest, BeforeInitNoFigureIsMade) {
    AutomationRig fresh;
    EXPECT_EQ(fresh.Run(f.make, 2, 1, 0, 0).Long(), -1);
    EXPECT_EQ(fresh.Run(f.idAt, 0).Long(), -1);
}

class OverlayWidthsTest : public ::testing::Test {
protected:
    void SetUp() override { rig.Start(); }
    AutomationRig rig;
};

TEST_F(OverlayWidthsTest, TheOlderNamesRefuseWhatDoesNotFitInto16Bits) {
    EXPECT_EQ(rig.Run("MakeOrgDatEx", 40000, 1, 0, 0).result.status, InvokeStatus::TypeMismatch);
    EXPECT_EQ(rig.Run("MakeOrgDatEx", 2, 40000, 0, 0).result.status, InvokeStatus::TypeMismatch);
    EXPECT_EQ(rig.Run("MakeOrgDatEx", 2, 1, 0, 40000).result.status, InvokeStatus::TypeMismatch);
    EXPECT_EQ(rig.ctrl->store.OrgDatCnt(), 0);
}

TEST_F(OverlayWidthsTest, TheNewerNamesTakeTheLow16BitsOfTypeAndLineAndAFillOfExactlyOne) {
    ASSERT_EQ(rig.Run("OrvMakeOrgDatEx", 65538, 40000, 0, 65537).Long(), 1);
    const Ran made = rig.Run("OrvGetOrgDatEx", 1);
    EXPECT_EQ(made.OutLong(1), 2);
    EXPECT_EQ(made.OutLong(2), -25536);
    EXPECT_EQ(made.OutLong(4), 0);
    ASSERT_TRUE(rig.Run("OrvEditOrgDatEx", 1, -65533, 32768, 0, 1).True());
    const Ran edited = rig.Run("OrvGetOrgDatEx", 1);
    EXPECT_EQ(edited.OutLong(1), 3);
    EXPECT_EQ(edited.OutLong(2), -32768);
    EXPECT_EQ(edited.OutLong(4), 1);
}

}  // namespace
}  // namespace orvane
