// The start of the edit tools by the host: what is refused, what stands in the record afterwards, what becomes of a tool that
// runs.
#include "tests/control/edit_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kItemTools[] = {200, 210, 220, 250, 260};

std::vector<DigPnt> Zigzag(std::int32_t cnt) {
    std::vector<DigPnt> pnts;
    for (std::int32_t i = 0; i < cnt; ++i) pnts.push_back({i * 0.1, i % 2 == 0 ? -100.0 : -110.0, 0});
    return pnts;
}

class EditStartTest : public testing::Test {
protected:
    EditStartTest() {
        rig.AddLayer("A", kLayLine);
        rig.Add("A", 1, {{100, -100, 7}, {200, -100, 8}, {300, -200, 9}}, 5);
        rig.AddLayer("C", kLayCircle, 1000, 2000);
        rig.Add("C", 1, {{-600, -2300, 50}});
        rig.Show();
    }
    EditRig rig;
};

// --- The add tool -----------------------------------------------------------------------------------------------------------

TEST_F(EditStartTest, TheAddToolRefusesAnEmptyCodeAndAMeshNumberBelowZero) {
    EXPECT_EQ(rig.Start(100, ""), -1);
    EXPECT_EQ(rig.Start(100, "A", 0, -1), -1);
    EXPECT_EQ(rig.Start(100, "none"), -1);
    EXPECT_EQ(rig.Mode(), 0);
    EXPECT_EQ(rig.Rubber(), "none");
    EXPECT_EQ(rig.Start(100, "A", 0, 0), 0);
}

TEST_F(EditStartTest, TheAddToolRefusesADatIdInUseAndTheRunModeStays) {
    rig.ctrl->runMode = 10;
    EXPECT_EQ(rig.Start(100, "A", 1), -1);
    EXPECT_EQ(rig.Mode(), 10);
    EXPECT_EQ(rig.Start(100, "A", 2), 0);
    EXPECT_EQ(rig.Mode(), 101);
}

TEST_F(EditStartTest, TheAddToolMakesARedFigureOfTheLayersTypeAndWidth) {
    rig.ctrl->store.SetLayLineSize("A", 4);
    rig.ctrl->store.ActivePointType = 0;
    EXPECT_EQ(rig.Start(100, "A", 9), 0);
    EXPECT_EQ(rig.State(), "101/0");
    const OrgDat& figure = *rig.ctrl->store.FindOrgDat(rig.Edit().EditOrgId);
    EXPECT_EQ(figure.type, kLayLine);
    EXPECT_EQ(figure.line, 4);
    EXPECT_EQ(figure.color, 255u);
    EXPECT_EQ(figure.fill, 0);
    EXPECT_EQ(figure.active, 1);
    EXPECT_EQ(figure.pntCnt, 0);
    EXPECT_EQ(rig.ctrl->store.ActivePointType, 1);
    EXPECT_EQ(rig.Edit().EditBusy, 1);
    EXPECT_EQ(rig.Edit().EditType, kLayLine);
    EXPECT_EQ(rig.Edit().EditPntIdx, 0);
    EXPECT_EQ(rig.Edit().EditCode.View(), "A");
    EXPECT_EQ(rig.Edit().EditMesh, 1);
    EXPECT_EQ(rig.Edit().EditDatId, 9);
    EXPECT_EQ(rig.Edit().EditTag, 0);
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Edit().EditSavedCnt, 0);
    EXPECT_THAT(rig.Heard(), IsEmpty());
    EXPECT_THAT(rig.Verbs(), IsEmpty()) << "the start paints nothing";
}

TEST_F(EditStartTest, TheFigureOfAPolygonGetsWidthOne) {
    rig.AddLayer("P", kLayPolygon);
    rig.ctrl->store.SetLayLineSize("P", 4);
    rig.Start(100, "P");
    EXPECT_EQ(rig.ctrl->store.FindOrgDat(rig.Edit().EditOrgId)->line, 1);
}

// --- Tools on items ---------------------------------------------------------------------------------------------------------

TEST_F(EditStartTest, WithoutACodeEachToolWaitsForAPickWithAClearedRecord) {
    for (const std::int32_t tool : {200, 210, 220, 250, 260, 300}) {
        rig.Start(200, "A", 1);
        rig.ctrl->CancelOrgEdit();
        EXPECT_EQ(rig.Start(tool, "", 77, 5), 0) << tool;
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/0");
        EXPECT_EQ(rig.Edit().EditBusy, 0);
        EXPECT_EQ(rig.Edit().EditPntIdx, 0);
        EXPECT_EQ(rig.Edit().EditOrgId, -1);
        EXPECT_EQ(rig.Edit().EditDatId, 77);
        EXPECT_EQ(rig.Edit().EditTag, 0);
        EXPECT_EQ(rig.Edit().EditCnt, 0);
        EXPECT_EQ(rig.Edit().EditSavedCnt, 0);
        EXPECT_EQ(rig.Edit().EditCode.View(), "A") << "from the tool before";
        EXPECT_EQ(rig.Edit().EditMesh, 1);
        rig.ctrl->runMode = 0;
    }
}

TEST_F(EditStartTest, ANamedLayerAndItemMustExist) {
    for (const std::int32_t tool : {200, 210, 220, 250, 260, 300}) {
        EXPECT_EQ(rig.Start(tool, "none", 1), -1) << tool;
        EXPECT_EQ(rig.Start(tool, "A", 2), -1) << tool;
        EXPECT_EQ(rig.Start(tool, "A", 1, 2), -1) << tool;
        EXPECT_EQ(rig.Mode(), 0);
        EXPECT_EQ(rig.Rubber(), "none");
        EXPECT_EQ(rig.Tag("A", 1), 5);
    }
}

TEST_F(EditStartTest, ACodeWithoutAnItemNumberTakesTheTypeAndWaitsForAPick) {
    for (const std::int32_t tool : {200, 210, 220, 250, 260, 300}) {
        EXPECT_EQ(rig.Start(tool, "A", 0), 0);
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/0");
        EXPECT_EQ(rig.Edit().EditType, kLayLine);
        rig.ctrl->runMode = 0;
        EXPECT_EQ(rig.Start(tool, "A", 1, -1), 0) << "a mesh number below 0 names no item";
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/0");
        rig.ctrl->runMode = 0;
    }
    EXPECT_EQ(rig.Rubber(), "none");
}

TEST_F(EditStartTest, ANamedItemIsLoadedWithoutAnEvent) {
    for (const std::int32_t tool : kItemTools) {
        rig.Item("A", 0).active = 1;
        rig.Show();
        EXPECT_EQ(rig.Start(tool, "A", 1), 0) << tool;
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/1");
        EXPECT_EQ(rig.Rubber(), "(100 -100) (200 -100) (300 -200)");
        EXPECT_EQ(rig.Held(), "(100 -100) (200 -100) (300 -200)");
        EXPECT_EQ(rig.Edit().EditBusy, 1);
        EXPECT_EQ(rig.Edit().EditPntIdx, -1);
        EXPECT_EQ(rig.Edit().EditType, kLayLine);
        EXPECT_EQ(rig.Edit().EditSavedCnt, 3);
        EXPECT_EQ(rig.Edit().EditTag, 5);
        EXPECT_EQ(rig.Edit().EditDatId, 1);
        EXPECT_EQ(rig.Tag("A", 1), -1);
        EXPECT_TRUE(rig.Active("A", 1)) << "as it was";
        EXPECT_EQ(rig.ctrl->store.ActivePointType, tool == 250 || tool == 260 ? 0 : 1);
        EXPECT_THAT(rig.Heard(), IsEmpty());
        const OrgDat& figure = *rig.ctrl->store.FindOrgDat(rig.Edit().EditOrgId);
        EXPECT_EQ(figure.line, 1);
        EXPECT_EQ(figure.color, 255u);
        EXPECT_EQ(figure.active, 1);
        const Lines drawn = rig.VerbsWith("Polyline");
        ASSERT_EQ(drawn.size(), 1u) << "the item has gone and the figure stands in for it";
        EXPECT_EQ(drawn[0], "top Polyline [(100,100) (200,100) (300,200)]");
        rig.ctrl->store.DelOrgData(rig.Edit().EditOrgId);
        rig.ctrl->store.SetDigDatInfoEx("A", 1, 1, 5, false);
        rig.ctrl->runMode = 0;
    }
}

TEST_F(EditStartTest, AnItemThatIsNotActiveStaysSo) {
    rig.Start(200, "A", 1);
    EXPECT_FALSE(rig.Active("A", 1));
}

TEST_F(EditStartTest, ANamedCircleIsLoadedAsItStandsAndGetsNoSecondPoint) {
    EXPECT_EQ(rig.Start(200, "C", 1), 0);
    EXPECT_EQ(rig.Held(), "(400 -300)");
    EXPECT_EQ(rig.Rubber(), "(400 -300)");
}

TEST_F(EditStartTest, DeleteTakesANamedItemAndDoesNotLoadIt) {
    EXPECT_EQ(rig.Start(300, "A", 1), 0);
    EXPECT_EQ(rig.State(), "300/0");
    EXPECT_EQ(rig.Rubber(), "none");
    EXPECT_EQ(rig.Tag("A", 1), 5);
    rig.Click(400, 300);
    EXPECT_EQ(rig.Find("C", 1), nullptr) << "a click picks all the same";
    EXPECT_NE(rig.Find("A", 1), nullptr);
}

TEST_F(EditStartTest, AnyOtherEditTypeAnswersZeroAndStartsNothing) {
    for (const std::int32_t type : {0, 10, 50, 51, 99, 101, 199, 201, 270, 301, 999, -1, 65736, -65336}) {
        EXPECT_EQ(rig.Start(type, "A", 1), 0) << type;
        EXPECT_EQ(rig.Mode(), 0);
        EXPECT_EQ(rig.Rubber(), "none");
    }
}

// --- While another tool runs ------------------------------------------------------------------------------------------------

TEST_F(EditStartTest, AToolThatIsStartedWhileAnotherHasAnItemLeavesThatItemHidden) {
    rig.Start(200, "A", 1);
    EXPECT_EQ(rig.Start(250), 0);
    EXPECT_EQ(rig.State(), "250/0");
    EXPECT_EQ(rig.Tag("A", 1), -1);
    EXPECT_EQ(rig.Rubber(), "none");
    EXPECT_THAT(rig.Heard(), IsEmpty());
}

TEST_F(EditStartTest, ARefusedStartHasDroppedTheRunningToolAndLeavesItsMode) {
    rig.Start(200, "A", 1);
    EXPECT_EQ(rig.Start(220, "none", 1), -1);
    EXPECT_EQ(rig.State(), "200/0");
    EXPECT_EQ(rig.Rubber(), "none");
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Edit().EditBusy, 0);
    EXPECT_EQ(rig.Tag("A", 1), -1);
}

TEST_F(EditStartTest, AnUnknownEditTypeDropsTheRunningToolTooAndLeavesItsMode) {
    rig.Start(200, "A", 1);
    EXPECT_EQ(rig.Start(7), 0);
    EXPECT_EQ(rig.State(), "200/0");
    EXPECT_EQ(rig.Edit().EditPntIdx, -1);
    EXPECT_EQ(rig.Rubber(), "none");
}

TEST_F(EditStartTest, BelowOneHundredNoToolRuns) {
    rig.Start(200, "A", 1);
    rig.ctrl->runMode = 99;
    EXPECT_EQ(rig.Start(7), 0);
    EXPECT_EQ(rig.State(), "99/1");
    EXPECT_NE(rig.Rubber(), "none");
    rig.ctrl->runMode = 100;
    EXPECT_EQ(rig.Start(7), 0);
    EXPECT_EQ(rig.State(), "100/0");
    EXPECT_EQ(rig.Rubber(), "none");
}

TEST_F(EditStartTest, TheRubberFigureOfAFormerStoreIsNobodysFigureAnyMore) {
    rig.Start(200, "A", 1);
    ASSERT_EQ(rig.Edit().EditOrgId, 1);
    rig.ctrl->RDMInit();
    rig.Paint();
    EXPECT_EQ(rig.State(), "200/1") << "an init leaves mode and record alone";
    ASSERT_EQ(rig.ctrl->store.MakeOrgDat(kLayLine, 1, 0, 0), 1);
    rig.ctrl->store.AddOrgPnt(1, 10, -10);
    rig.ctrl->store.SetOrgDataActive(1, true);
    rig.Click(10, 10);
    EXPECT_EQ(rig.State(), "0/0") << "the host's own figure is not the tool's, so that was a click off the figure";
    EXPECT_EQ(rig.Rubber(), "(10 -10)");
}

// --- Limits -----------------------------------------------------------------------------------------------------------------

TEST_F(EditStartTest, AnItemOfFiveThousandPointsIsTakenAndALongerOneRefused) {
    rig.Add("A", 2, Zigzag(5000));
    rig.Add("A", 3, Zigzag(5001));
    for (const std::int32_t tool : kItemTools) {
        EXPECT_EQ(rig.Start(tool, "A", 3), -1) << tool;
        EXPECT_EQ(rig.Mode(), 0);
        EXPECT_EQ(rig.Rubber(), "none");
        EXPECT_EQ(rig.Tag("A", 3), 0);
        EXPECT_EQ(rig.Start(tool, "A", 2), 0) << tool;
        EXPECT_EQ(rig.Edit().EditCnt, 5000);
        rig.ctrl->CancelOrgEdit();
        rig.Add("A", 2, Zigzag(5000));  // the cancel of a copy deletes its item
        rig.Heard();
    }
}

TEST_F(EditStartTest, APickOfALongerItemEndsTheClickBeforeTheEventAndBeforeACopyIsMade) {
    rig.Add("A", 3, Zigzag(5001));
    rig.Show();
    for (const std::int32_t tool : kItemTools) {
        rig.Start(tool);
        rig.Click(50, 105);
        EXPECT_TRUE(rig.Active("A", 3)) << "the pick itself has been made";
        EXPECT_EQ(rig.State(), std::to_string(tool) + "/0");
        EXPECT_THAT(rig.Heard(), IsEmpty());
        EXPECT_EQ(rig.Block("A").datCnt, 2);
        EXPECT_EQ(rig.Tag("A", 3), 0);
    }
}

TEST_F(EditStartTest, TheDeleteToolHoldsNoPointsAndTakesALongerItem) {
    rig.Add("A", 3, Zigzag(5001));
    rig.Show();
    EXPECT_EQ(rig.Start(300, "A", 3), 0);
    rig.Click(50, 105);
    EXPECT_EQ(rig.Find("A", 3), nullptr);
    EXPECT_THAT(rig.Heard(), ElementsAre("start A 1 3 5001 300", "end  1 3 0 300"));
}

TEST_F(EditStartTest, WithoutMemoryAStartIsRefusedAndRecordAndItemStayAsTheyWere) {
    for (const std::int32_t tool : {100, 200, 250}) {
        for (std::int64_t n = 1; n <= 2; ++n) {
            EditRig fresh;
            fresh.AddLayer("A", kLayLine);
            fresh.Add("A", 1, {{100, -100, 0}, {200, -100, 0}}, 5);
            ArrayFaults::FailNth(n);
            const std::int32_t answer = fresh.Start(tool, "A", tool == 100 ? 7 : 1);
            const std::int64_t asked = ArrayFaults::Count();
            ArrayFaults::Clear();
            if (asked < n || (tool == 100 && n > 1)) continue;
            EXPECT_EQ(answer, -1) << tool << ' ' << n;
            EXPECT_EQ(fresh.State(), "0/0");
            EXPECT_EQ(fresh.Rubber(), "none");
            EXPECT_EQ(fresh.Edit().EditCnt, 0);
            EXPECT_EQ(fresh.Tag("A", 1), 5);
        }
    }
}

TEST_F(EditStartTest, BeforeTheFirstInitEveryToolIsRefusedOrWaits) {
    ControlRig raw;
    for (const std::int32_t tool : {100, 200, 210, 220, 250, 260, 300}) {
        EXPECT_EQ(raw.ctrl->DigDatEditor("A", 1, 1, tool), -1);
        EXPECT_EQ(raw.ctrl->DigDatEditor("", 1, 1, tool), tool == 100 ? -1 : 0);
        const auto dc = raw.window.AcquireDC();
        raw.ctrl->SetEvents(nullptr);
        raw.ctrl->ToolClick(*dc, 1, {10, 10});
        raw.ctrl->ToolMove(0, {10, 10});
        raw.ctrl->ToolDeleteKey(*dc);
        raw.ctrl->FinishPointAddTool();
        raw.ctrl->FinishAddTool();
        raw.ctrl->CancelOrgEdit();
    }
    EXPECT_THAT(raw.Verbs(), IsEmpty());
    EXPECT_EQ(raw.ctrl->store.LayerCnt(), 0);
}

}  // namespace
}  // namespace orvane
