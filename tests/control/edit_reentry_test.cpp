// Host code inside the events of the edit tools: it may start another tool, delete the item, empty the store or let the control
// go.
#include "platform/context_registry.h"
#include "tests/control/edit_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A tool brought to where its next step fires an event.
struct ToolCase {
    const char* name;
    std::function<void(EditRig&)> start;
    std::function<void(EditRig&)> fire;
};

void PrintTo(const ToolCase& toolCase, std::ostream* out) { *out << toolCase.name; }

std::function<void(EditRig&)> Waiting(std::int32_t tool) {
    return [tool](EditRig& rig) { rig.Start(tool); };
}

std::function<void(EditRig&)> Loaded(std::int32_t tool) {
    return [tool](EditRig& rig) {
        rig.Start(tool);
        rig.Click(160, 100);
    };
}

std::function<void(EditRig&)> ClickAt(std::int32_t x, std::int32_t y) {
    return [x, y](EditRig& rig) { rig.Click(x, y); };
}

const ToolCase kCases[] = {
    {"AddPoint", [](EditRig& rig) { rig.Start(100, "S"); }, ClickAt(10, 10)},
    {"AddFirstClick", [](EditRig& rig) { rig.Start(100, "A"); }, ClickAt(10, 10)},
    {"AddCircle",
     [](EditRig& rig) {
         rig.Start(100, "C");
         rig.Click(10, 10);
     },
     ClickAt(40, 50)},
    {"AddEnd",
     [](EditRig& rig) {
         rig.Start(100, "P");
         rig.Click(10, 10);
         rig.Click(40, 10);
     },
     [](EditRig& rig) { rig.ctrl->FinishAddTool(); }},
    {"PointMovePick", Waiting(200), ClickAt(160, 100)},
    {"PointMovePickOfAPoint", Waiting(200), ClickAt(700, 100)},
    {"PointMoveEnd", Loaded(200), ClickAt(20, 500)},
    {"PointMoveDeleteKey", Loaded(200), [](EditRig& rig) { rig.PressDelete(); }},
    {"PointAddPick", Waiting(210), ClickAt(160, 100)},
    {"PointAddEnd", Loaded(210), [](EditRig& rig) { rig.ctrl->FinishPointAddTool(); }},
    {"PointDeletePick", Waiting(220), ClickAt(160, 100)},
    {"PointDeleteEnd",
     [](EditRig& rig) {
         Loaded(220)(rig);
         rig.Click(200, 100);
     },
     ClickAt(20, 500)},
    {"MovePick", Waiting(250), ClickAt(400, 300)},
    {"MoveEnd", Loaded(250), ClickAt(20, 500)},
    {"CopyPick", Waiting(260), ClickAt(160, 100)},
    {"CopyEnd", Loaded(260), ClickAt(20, 500)},
    {"Delete", Waiting(300), ClickAt(160, 100)},
    {"Cancel", Loaded(260), [](EditRig& rig) { rig.ctrl->CancelOrgEdit(); }},
};

class EditReentry : public testing::TestWithParam<ToolCase> {
protected:
    EditReentry() { Prepare(); }
    void Prepare() {
        fired = 0;
        rig.AddLayer("A", kLayLine, 10, 20);
        rig.Add("A", 1, {{90, -120, 7}, {190, -120, 8}, {290, -220, 9}});
        rig.AddLayer("S", kLayPoint);
        rig.Add("S", 1, {{700, -100, 3}});
        rig.AddLayer("C", kLayCircle);
        rig.Add("C", 1, {{400, -300, 50}});
        rig.AddLayer("P", kLayPolygon);
        rig.Show();
        GetParam().start(rig);
    }
    /// Runs the step with this host code in both events, and then every tool's move, key and cancel over what is left.
    void Run(const std::function<void()>& host) {
        rig.log.onStart = rig.log.onEnd = [&] {
            ++fired;
            host();
        };
        GetParam().fire(rig);
        EXPECT_GT(fired, 0);
        rig.log.onStart = rig.log.onEnd = nullptr;
        if (rig.ctrl == nullptr) return;
        for (const std::int16_t mode :
             {kRunAddCollect, kRunEditPntMove, kRunEditPntAdd, kRunEditPntDel, kRunMoveDat, kRunCopyDat}) {
            rig.ctrl->runMode = mode;
            rig.MoveTo(200, 100);
            rig.Click(200, 100);
            rig.MoveTo(210, 100);
            rig.Click(210, 100);
            rig.PressDelete();
        }
        rig.ctrl->FinishPointAddTool();
        rig.ctrl->FinishAddTool();
        rig.ctrl->runMode = 200;
        rig.ctrl->CancelOrgEdit();
        EXPECT_EQ(rig.Mode(), 0);
    }
    EditRig rig;
    int fired = 0;
};

TEST_P(EditReentry, MayStartTheControlOver) {
    Run([&] {
        rig.ctrl->RDMInit();
        rig.Paint();
    });
}

TEST_P(EditReentry, MayStartOverAndFillTheStoreWithSomethingElseOfTheSameNames) {
    Run([&] {
        rig.ctrl->RDMInit();
        rig.AddLayer("A", kLayCircle);
        rig.Add("A", 1, {{1, 1, 1}});
        rig.Paint();
    });
}

TEST_P(EditReentry, MayDeleteTheItemAtHand) {
    Run([&] {
        for (const char* code : {"A", "S", "C", "P"}) {
            while (rig.Block(code).datCnt > 0) rig.ctrl->store.DelDigDat(code, 1, rig.Block(code).dats[0].datID);
        }
    });
}

TEST_P(EditReentry, MayDeleteTheBlocks) {
    Run([&] {
        for (const char* code : {"A", "S", "C", "P"}) rig.ctrl->store.DigMemDelete(code, 1);
        rig.Paint();
    });
}

TEST_P(EditReentry, MayMakeTheItemLongerThanTheRecordHolds) {
    Run([&] {
        const std::vector<DigPnt> many(5001);
        for (const char* code : {"A", "S", "C"}) {
            for (std::int32_t id = 1; id <= 2; ++id) rig.ctrl->store.SetDigDatPnts(code, 1, id, many);
        }
    });
    EXPECT_LE(rig.Edit().EditCnt, 5000);
}

TEST_P(EditReentry, MayStartAnyOtherTool) {
    for (const std::int32_t tool : {100, 200, 210, 220, 250, 260, 300}) {
        SCOPED_TRACE(tool);
        Run([&] { rig.Start(tool, "A", tool == 100 ? 0 : 1); });
        rig.ctrl->runMode = 0;
        rig.StartOneToOne();
        Prepare();
    }
}

TEST_P(EditReentry, MayCancelAndDeleteAllFigures) {
    Run([&] {
        if (fired < 3) rig.ctrl->CancelOrgEdit();
        while (rig.ctrl->store.OrgDatCnt() > 0) rig.ctrl->store.DropLastOrgDat();
    });
}

TEST_P(EditReentry, MayLetTheControlGo) {
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    COrvane4Ctrl& ctrl = *rig.ctrl;
    const COrvane4Ctrl::Scope scope(ctrl);
    // The steps reach the control through the rig, which has to keep it until they have got there.
    rig.log.onStart = rig.log.onEnd = [&] {
        ++fired;
        ctrl.SetEvents(nullptr);
        EXPECT_NE(FindContext(handle), nullptr);
    };
    GetParam().fire(rig);
    EXPECT_EQ(fired, 1);
    rig.ctrl.reset();
    EXPECT_NE(FindContext(handle), nullptr) << "held by the outermost call";
}

INSTANTIATE_TEST_SUITE_P(, EditReentry, testing::ValuesIn(kCases), [](const auto& tested) { return tested.param.name; });

class EditReentryOnce : public testing::Test {
protected:
    EditReentryOnce() {
        rig.AddLayer("A", kLayLine);
        rig.Add("A", 1, {{100, -100, 7}, {200, -100, 8}, {300, -200, 9}});
        rig.Show();
    }
    EditRig rig;
};

TEST_F(EditReentryOnce, AControlThatIsLetGoInsideAnEventEndsWhenTheClickReturns) {
    const std::int32_t handle = rig.ctrl->BaseDcHandle();
    COrvane4Ctrl& ctrl = *rig.ctrl;
    rig.Start(200);
    const auto dc = rig.window.AcquireDC();
    rig.log.onStart = [&] {
        rig.ctrl.reset();
        EXPECT_NE(FindContext(handle), nullptr);
    };
    ctrl.ToolClick(*dc, kMkLButton, {160, 100});
    EXPECT_EQ(FindContext(handle), nullptr);
}

TEST_F(EditReentryOnce, AToolStartedInsideTheEndOfACommitIsResetByItsRest) {
    rig.Start(200);
    rig.Click(160, 100);
    rig.log.onEnd = [&] { EXPECT_EQ(rig.Start(250, "A", 1), 0); };
    rig.Click(20, 500);
    EXPECT_EQ(rig.State(), "0/0");
    EXPECT_EQ(rig.Edit().EditCnt, 0);
    EXPECT_EQ(rig.Tag("A", 1), -1) << "its item stays hidden";
    EXPECT_NE(rig.Rubber(), "none");
}

TEST_F(EditReentryOnce, AnItemDeletedInsideTheStartIsNotLoaded) {
    rig.Start(200);
    rig.log.onStart = [&] { rig.ctrl->store.DelDigDat("A", 1, 1); };
    rig.Click(160, 100);
    EXPECT_EQ(rig.State(), "200/0");
    EXPECT_EQ(rig.Rubber(), "none");
}

TEST_F(EditReentryOnce, ARunModeWrittenInsideTheStartStaysAndTheItemIsLoadedAllTheSame) {
    rig.Start(200);
    rig.log.onStart = [&] { rig.ctrl->runMode = 0; };
    rig.Click(160, 100);
    EXPECT_EQ(rig.State(), "0/1");
    EXPECT_EQ(rig.Tag("A", 1), -1);
}

TEST_F(EditReentryOnce, ACommitIntoADeletedBlockWritesNothingAndTheEndIsToldAllTheSame) {
    for (const std::int32_t tool : {200, 250}) {
        rig.Start(tool, "A", 1);
        rig.ctrl->store.DigMemDelete("A", 1);
        rig.Click(20, 500);
        EXPECT_THAT(rig.Heard(), ElementsAre("end A 1 1 3 " + std::to_string(tool)));
        EXPECT_EQ(rig.ctrl->store.GetLayDatCnt("A", 1), 0);
        EXPECT_EQ(rig.State(), "0/0");
        rig.AddLayer("A", kLayLine);
        rig.Add("A", 1, {{100, -100, 7}, {200, -100, 8}, {300, -200, 9}});
    }
}

TEST_F(EditReentryOnce, AMessageOfTheFreeIdMayStartTheControlOver) {
    rig.ctrl->store.MakeLayer("C", kLayCircle);
    rig.window.onMessage = [&](const ShownMessage&) { rig.ctrl->RDMInit(); };
    rig.Start(100, "C");
    rig.Click(400, 300);
    rig.Click(430, 340);
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0);
    EXPECT_THAT(rig.Heard(), ElementsAre("start C 1 -1 0 100", "end C 1 -1 2 100"));
}

}  // namespace
}  // namespace orvane
