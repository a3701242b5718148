// The relation members on a painted map: what takes part, and how the answers stand in the active set.
#include <gtest/gtest.h>

#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

enum Op : std::int32_t { Equals, Disjoint, Intersects, Touches, Crosses, Within, Contains, Overlaps };
using Places = std::vector<std::pair<double, double>>;

/// A pixel is one map unit; the view shows x from 0 to 800 and y from 0 down to -600.
class RelationMembersTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.Start();
        rig.Put("Zoom", rig.ctrl->store.view.DotPerM);
        rig.ctrl->viewX = rig.ctrl->viewY = 0;
    }

    void Add(const char* code, std::int32_t type, std::int32_t datID, const Places& places, double GX = 0, double GY = 0) {
        CDigMem& store = rig.ctrl->store;
        if (store.FindBlock(code, 1).block < 0) {
            ASSERT_TRUE(store.DigMemAlloc2(code, 1, type, "", 1, GX, GY));
        }
        ASSERT_TRUE(store.AddDigDat(code, 1, datID, 0));
        std::vector<DigPnt> pnts;
        for (const auto& [x, y] : places) pnts.push_back({x, y, 0});
        ASSERT_TRUE(store.SetDigDatPnts(code, 1, datID, pnts));
    }
    DigDat& Item(const char* code, std::size_t i) {
        return rig.ctrl->store.MutableBlock(rig.ctrl->store.FindBlock(code, 1).block).dats[i];
    }
    void Paint() { rig.Run("RDMReDraw"); }

    std::int32_t TestPoint(double x, double y, std::int32_t op) { return rig.Run("OrvTestPoint", x, y, op).Long(); }
    /// A call of one of the two array forms; `pcnt` where it is not the number of places.
    std::int32_t TestArray(const char* name, const Places& places, std::int32_t op, std::int32_t pcnt = -12345) {
        std::vector<double> x, y;
        for (const auto& place : places) {
            x.push_back(place.first);
            y.push_back(place.second);
        }
        std::vector<Argument> args(4);
        args[0].buffer = x;
        args[1].buffer = y;
        args[2].value = Variant(pcnt == -12345 ? static_cast<std::int32_t>(places.size()) : pcnt);
        args[3].value = Variant(op);
        Ran ran;
        ran.result = Invoke(*rig.ctrl, name, InvokeKind::Method, args);
        return ran.Ok() ? ran.Long() : -1;
    }
    std::int32_t TestLine(const Places& places, std::int32_t op) { return TestArray("OrvTestLine", places, op); }
    std::int32_t TestArea(const Places& places, std::int32_t op) { return TestArray("OrvTestArea", places, op); }

    /// The active items, "code:datID" each, in the order of the store.
    std::string Active() {
        std::string text;
        for (std::int32_t pos = 0; pos < rig.ctrl->store.BlockCnt(); ++pos) {
            const DigBlock& block = rig.ctrl->store.Block(pos);
            for (const DigDat& dat : block.dats) {
                if (dat.active == 1) text += std::string(block.code.View()) + ":" + std::to_string(dat.datID) + " ";
            }
        }
        return text;
    }

    AutomationRig rig;
};

const Places kSquare{{100, -100}, {200, -100}, {200, -200}, {100, -200}, {100, -100}};

TEST_F(RelationMembersTest, PointsLinesAndPolygonsOnTheScreenAreFoundByAnArea) {
    Add("P", 1, 1, {{150, -150}});
    Add("P", 1, 2, {{350, -150}});
    Add("L", 2, 1, {{120, -120}, {180, -180}});
    Add("L", 2, 2, {{150, -150}, {300, -150}});
    Add("G", 3, 1, {{120, -120}, {140, -120}, {140, -140}, {120, -120}});
    Add("G", 3, 2, {{180, -180}, {280, -180}, {280, -280}, {180, -180}});
    Paint();
    EXPECT_EQ(TestArea(kSquare, Contains), 1);
    EXPECT_EQ(Active(), "P:1 L:1 G:1 ");
    EXPECT_EQ(TestArea(kSquare, Overlaps), 1);
    EXPECT_EQ(Active(), "L:2 G:2 ");
    EXPECT_EQ(TestArea(kSquare, Intersects), 1);
    EXPECT_EQ(Active(), "P:1 L:2 G:1 G:2 ") << "a line within is disjoint from an area that stands first";
    EXPECT_EQ(TestArea(kSquare, Disjoint), 1);
    EXPECT_EQ(Active(), "P:2 L:1 ");
}

TEST_F(RelationMembersTest, LinesAndPointsAreGivenInMapCoordinates) {
    Add("P", 1, 1, {{150, -150}});
    Add("L", 2, 1, {{100, -100}, {300, -100}, {300, -200}});
    Add("G", 3, 1, kSquare);
    Paint();
    EXPECT_EQ(TestPoint(150, -150, Equals), 1);
    EXPECT_EQ(Active(), "P:1 ");
    EXPECT_EQ(TestPoint(150, -150, Within), 1);
    EXPECT_EQ(Active(), "P:1 G:1 ");
    EXPECT_EQ(TestPoint(300, -200, Touches), 1);
    EXPECT_EQ(Active(), "L:1 ");
    EXPECT_EQ(TestLine({{300, -200}, {300, -100}, {100, -100}}, Equals), 1);
    EXPECT_EQ(Active(), "L:1 ");
    EXPECT_EQ(TestLine({{150, -50}, {150, -250}}, Crosses), 1);
    EXPECT_EQ(Active(), "P:1 L:1 G:1 ") << "a point between the ends of the line too";
}

TEST_F(RelationMembersTest, ItemsStandWhereTheirBlocksOriginPutsThem) {
    Add("P", 1, 1, {{50, -50}}, 100, -100);
    Paint();
    TestPoint(150, -150, Equals);
    EXPECT_EQ(Active(), "P:1 ");
    TestPoint(50, -50, Equals);
    EXPECT_EQ(Active(), "");
}

TEST_F(RelationMembersTest, APointTestWithoutAMatchLeavesTheActiveSetEmpty) {
    Add("P", 1, 1, {{150, -150}});
    Paint();
    Item("P", 0).active = 1;
    EXPECT_EQ(TestPoint(700, -500, Equals), 1);
    EXPECT_EQ(Active(), "");
}

TEST_F(RelationMembersTest, ALineOfOnePointIsRefusedAndTheActiveSetStaysAsItWas) {
    Add("P", 1, 1, {{150, -150}});
    Paint();
    Item("P", 0).active = 1;
    EXPECT_EQ(TestLine({{1, 1}}, Disjoint), 0);
    EXPECT_EQ(TestLine({}, Disjoint), 0);
    EXPECT_EQ(TestArea({{1, 1}, {2, 2}}, Disjoint), 0);
    EXPECT_EQ(TestArray("OrvTestLine", {}, Disjoint, -7), 0);
    EXPECT_EQ(Active(), "P:1 ");
    EXPECT_EQ(TestLine({{1, -1}, {2, -2}}, Equals), 1);
    EXPECT_EQ(Active(), "");
}

TEST_F(RelationMembersTest, AnOperatorThatIsNoneEmptiesTheActiveSetAndMatchesNothing) {
    Add("P", 1, 1, {{150, -150}});
    Paint();
    for (const std::int32_t op : {8, 100, -1}) {
        Item("P", 0).active = 1;
        EXPECT_EQ(TestPoint(150, -150, op), 1);
        EXPECT_EQ(Active(), "") << op;
    }
}

TEST_F(RelationMembersTest, LayersThatAreHiddenOrNotActiveAreNotTested) {
    Add("A", 1, 1, {{150, -150}});
    Add("B", 1, 1, {{150, -150}});
    Add("C", 1, 1, {{150, -150}});
    Paint();
    CDigMem& store = rig.ctrl->store;
    store.MutableLayer(store.FindLayDef("A")).dspFlg = 0;
    store.MutableLayer(store.FindLayDef("B")).actFlg = 0;
    Item("A", 0).active = Item("B", 0).active = 1;
    TestPoint(150, -150, Equals);
    EXPECT_EQ(Active(), "B:1 C:1 ") << "the reset reaches hidden layers, but none that is not active";
}

TEST_F(RelationMembersTest, BlocksOutOfViewAndItemsNotDrawnAreNotTested) {
    Add("A", 1, 1, {{150, -150}});
    Add("A", 1, 2, {{150, -150}});
    Add("A", 1, 3, {{150, -150}});
    Add("B", 1, 1, {{150, -150}});
    Paint();
    Item("A", 0).drawnFlg = 0;
    Item("A", 1).clipFlg = 0;
    rig.ctrl->store.MutableBlock(rig.ctrl->store.FindBlock("B", 1).block).inView = 0;
    TestPoint(150, -150, Equals);
    EXPECT_EQ(Active(), "A:3 ");
}

TEST_F(RelationMembersTest, WhatIsOffTheScreenCannotMatch) {
    Add("P", 1, 1, {{150, -150}});
    Add("P", 1, 2, {{5000, -5000}});
    Paint();
    TestPoint(5000, -5000, Equals);
    EXPECT_EQ(Active(), "");
    TestPoint(1, -1, Disjoint);
    EXPECT_EQ(Active(), "P:1 ");
}

TEST_F(RelationMembersTest, ALinePartlyOffTheScreenIsTestedOnAllItsPoints) {
    Add("L", 2, 1, {{700, -100}, {3000, -100}, {3000, -2000}});
    Paint();
    TestLine({{2900, -1500}, {3100, -1500}}, Crosses);
    EXPECT_EQ(Active(), "L:1 ");
    TestPoint(3000, -2000, Touches);
    EXPECT_EQ(Active(), "L:1 ");
}

TEST_F(RelationMembersTest, ItemsWithoutPointsAreNotTested) {
    Add("P", 1, 1, {{150, -150}});
    rig.ctrl->store.AddDigDat("P", 1, 2, 0);
    Paint();
    Item("P", 1).drawnFlg = Item("P", 1).clipFlg = 1;
    TestPoint(1, -1, Disjoint);
    EXPECT_EQ(Active(), "P:1 ");
}

TEST_F(RelationMembersTest, CirclesTextsEllipsesAndMeshesAreNeverMadeActive) {
    for (const std::int32_t type : {4, 5, 8, 10}) {
        const std::string code = "T" + std::to_string(type);
        Add(code.c_str(), type, 1, {{150, -150}, {160, -160}, {170, -150}});
    }
    Paint();
    for (const std::int32_t type : {4, 5, 8, 10}) {
        const std::string code = "T" + std::to_string(type);
        Item(code.c_str(), 0).drawnFlg = Item(code.c_str(), 0).clipFlg = 1;
        rig.ctrl->store.MutableBlock(rig.ctrl->store.FindBlock(code, 1).block).inView = 1;
    }
    for (std::int32_t op = 0; op < 8; ++op) {
        TestPoint(150, -150, op);
        TestLine({{150, -150}, {160, -160}}, op);
        TestArea(kSquare, op);
        EXPECT_EQ(Active(), "") << op;
    }
}

TEST_F(RelationMembersTest, AChangeOfTheViewCanChangeWhatRoundingLetsThrough) {
    // A third of the way along a slanted line: whether its distance comes out as 0 depends on where the view stands.
    Add("L", 2, 1, {{0, 0}, {300, -100}});
    Paint();
    int found = 0;
    constexpr int kViews = 64;
    for (int i = 0; i < kViews; ++i) {
        rig.ctrl->viewX = -i * 0.1;
        rig.ctrl->viewY = -i * 0.7;
        TestPoint(100.5, -33.5, Intersects);
        if (!Active().empty()) ++found;
    }
    EXPECT_GT(found, 0);
    EXPECT_LT(found, kViews);
}

TEST_F(RelationMembersTest, AScaleAtWhichAllFallsTogetherMakesAllPointsEqual) {
    Add("P", 1, 1, {{150, -150}});
    Paint();
    rig.ctrl->store.view.ScaleX = rig.ctrl->store.view.ScaleY = 0;
    TestPoint(700, -20, Equals);
    EXPECT_EQ(Active(), "P:1 ");
}

TEST_F(RelationMembersTest, ATurnedViewTurnsQueryAndItemsAlike) {
    Add("P", 1, 1, {{150, -150}});
    Add("G", 3, 1, {{120, -120}, {140, -120}, {140, -140}, {120, -120}});
    Paint();
    rig.ctrl->store.view.Rotate = 30;
    TestPoint(150, -150, Equals);
    EXPECT_EQ(Active(), "P:1 ");
    TestArea(kSquare, Contains);
    EXPECT_EQ(Active(), "P:1 G:1 ");
}

TEST_F(RelationMembersTest, BeforeInitTheCountAloneIsAnswered) {
    AutomationRig bare;
    EXPECT_EQ(bare.Run("OrvTestPoint", 1.0, 2.0, 0).Long(), 1);
    for (const auto& [name, fewest] : {std::pair("OrvTestLine", 2), {"OrvTestArea", 3}}) {
        for (const std::int32_t pcnt : {fewest - 1, fewest}) {
            std::vector<Argument> args(4);
            args[0].buffer = args[1].buffer = std::vector<double>{1, 2, 3};
            args[2].value = Variant(pcnt);
            args[3].value = Variant(std::int32_t{Disjoint});
            Ran ran;
            ran.result = Invoke(*bare.ctrl, name, InvokeKind::Method, args);
            EXPECT_EQ(ran.Long(), pcnt == fewest ? 1 : 0) << name;
        }
    }
}

TEST_F(RelationMembersTest, ATestThatTheHostEndsAnswersItsFailureValueAndLeavesNothingActive) {
    Places zigzag;
    for (int i = 0; i < 2200000; ++i) zigzag.push_back({10 + i % 700, i % 2 == 0 ? -10 : -300});
    Add("L", 2, 1, {{5, -5}, {6, -6}});
    Add("L", 2, 2, zigzag);
    Add("L", 2, 3, {{5, -5}, {6, -6}});
    Paint();
    const Places around{{0, 0}, {790, 0}, {790, -590}, {0, -590}, {0, 0}};
    EXPECT_EQ(TestArea(around, Contains), 1);
    EXPECT_EQ(Active(), "L:1 L:2 L:3 ");
    int asked = 0;
    rig.ctrl->SetProgress([&](double) {
        ++asked;
        rig.ctrl->SetProgress({});  // also what is being asked may be replaced
        return false;
    });
    EXPECT_EQ(TestArea(around, Contains), 0);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(Active(), "");
    EXPECT_EQ(TestArea(around, Contains), 1) << "nobody is asked any more";
    EXPECT_EQ(Active(), "L:1 L:2 L:3 ");
    rig.ctrl->SetProgress([](double) { return false; });
    EXPECT_EQ(TestLine(zigzag, Disjoint), 0);
    EXPECT_EQ(TestPoint(700, -300, Disjoint), 1) << "short enough not to ask";
}

}  // namespace
}  // namespace orvane
