// Polygon overlay as a late-bound host calls it: what is stored, what the variants receive, the wait cursor.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "store/dat_lookup.h"
#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

using Places = std::vector<std::pair<double, double>>;
using Longs = std::vector<std::int32_t>;

Places Square(double x, double y, double side) { return {{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}, {x, y}}; }

class OverlayMembersTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.Start();
        for (const char* code : {"A", "B", "C"}) MakeBlock(code, kLayPolygon);
    }

    void MakeBlock(const char* code, std::int32_t type) {
        ASSERT_TRUE(Store().DigMemAlloc2(code, 1, type, "", 1, 0, 0));
        Store().SetLayDspFlg(code, true);
        Store().SetLayActive(code, true);
        Store().MutableBlock(Store().FindBlock(code, 1).block).inView = 1;
    }
    void Add(const char* code, std::int32_t id, const Places& places, bool active = false) {
        ASSERT_TRUE(Store().AddDigDat(code, 1, id, 0));
        for (const auto& [x, y] : places) ASSERT_TRUE(Store().AddDigDatPnt(code, 1, id, {x, y, 9}));
        if (active) Store().SetDigDatInfoEx(code, 1, id, 0, true);
    }
    Places Stored(const char* code, std::int32_t id) {
        Places places;
        const DigDat* dat = Store().FindDat(code, 1, id);
        for (std::int32_t i = 0; dat != nullptr && i < dat->pntCnt; ++i) {
            const DigPnt& p = dat->pnts[static_cast<std::size_t>(i)];
            EXPECT_EQ(p.z, 0);
            places.push_back({p.x, p.y});
        }
        return places;
    }
    static Longs ArrayOf(const Ran& ran, std::size_t arg) {
        const SafeArray* array = ran.args[arg].value.Array();
        if (array == nullptr || array->bounds.size() != 1 || array->bounds[0].lower != 0) return {-1};
        const auto* values = std::get_if<Longs>(&array->data);
        return values == nullptr ? Longs{-1} : *values;
    }
    Ran Pairs(std::int32_t mode = 0, const char* a = "A", const char* b = "B", const char* c = "C") {
        return rig.Run("OrvPolygonBuffering", mode, a, 1, b, 1, c, 1);
    }
    Ran Active(std::int32_t mode, const char* c = "C") { return rig.Run("OrvActPolygonBuffering", mode, c, 1); }
    CDigMem& Store() { return rig.ctrl->store; }

    AutomationRig rig;
};

TEST_F(OverlayMembersTest, TwoSquaresOverlappingAtOneCornerStoreOneRingThatStartsAtTheFirstEdgeTaken) {
    Add("A", 7, Square(0, 0, 10));
    Add("B", 8, Square(5, 5, 10));
    const Ran ran = Pairs();
    EXPECT_EQ(ran.Long(), 1);
    EXPECT_EQ(ArrayOf(ran, 7), Longs({7}));
    EXPECT_EQ(ArrayOf(ran, 8), Longs({8}));
    EXPECT_EQ(ArrayOf(ran, 9), Longs({1}));
    // The first piece of A inside of B goes up from (10, 5), which counts as inside of the ring: it is turned clockwise.
    EXPECT_EQ(Stored("C", 1), Places({{10, 5}, {5, 5}, {5, 10}, {10, 10}, {10, 5}}));
    const DigDat* dat = Store().FindDat("C", 1, 1);
    EXPECT_EQ(dat->lineTag, 0);
    EXPECT_EQ(dat->rect, (Rect{5, 5, 10, 10}));
    EXPECT_EQ(Store().FindDat("A", 1, 7)->pntCnt, 5) << "the sources stay";
}

TEST_F(OverlayMembersTest, EveryPairThatOverlapsHasItsEntryInTheThreeArrays) {
    Add("A", 1, Square(0, 0, 4));
    Add("A", 2, Square(20, 0, 4));
    Add("B", 11, Square(2, 2, 4));
    Add("B", 12, Square(-2, -2, 4));
    Add("B", 13, Square(22, 2, 4));
    Add("C", 40, Square(0, 0, 1));
    const Ran ran = Pairs();
    EXPECT_EQ(ran.Long(), 3);
    EXPECT_EQ(ArrayOf(ran, 7), Longs({1, 1, 2}));
    EXPECT_EQ(ArrayOf(ran, 8), Longs({11, 12, 13}));
    EXPECT_EQ(ArrayOf(ran, 9), Longs({41, 42, 43}));
}

TEST_F(OverlayMembersTest, WithoutAResultTheVariantsAreLeftAlone) {
    Add("A", 1, Square(0, 0, 4));
    Add("B", 2, Square(10, 0, 4));
    const Ran ran = Pairs();
    EXPECT_EQ(ran.Long(), 0);
    for (const std::size_t arg : {7u, 8u, 9u}) EXPECT_FALSE(ran.args[arg].written);
    EXPECT_FALSE(Active(0).args[3].written);
}

TEST_F(OverlayMembersTest, ModeOneOfThePairwiseOverlayGivesZero) {
    Add("A", 1, Square(0, 0, 4));
    Add("B", 2, Square(2, 2, 4));
    for (const std::int32_t mode : {1, -1, 2}) EXPECT_EQ(Pairs(mode).Long(), 0);
    EXPECT_EQ(Store().GetLayDatCnt("C", 1), 0);
}

TEST_F(OverlayMembersTest, EachBlockMustExistAndBeOfPolygons) {
    MakeBlock("LINES", kLayLine);
    Add("A", 1, Square(0, 0, 4));
    Add("B", 2, Square(2, 2, 4));
    for (const char* bad : {"LINES", "NONE"}) {
        EXPECT_EQ(Pairs(0, bad).Long(), 0) << bad;
        EXPECT_EQ(Pairs(0, "A", bad).Long(), 0) << bad;
        EXPECT_EQ(Pairs(0, "A", "B", bad).Long(), 0) << bad;
        EXPECT_EQ(Active(0, bad).Long(), 0) << bad;
    }
    EXPECT_EQ(Pairs().Long(), 1);
}

TEST_F(OverlayMembersTest, ItemsOfFewerThanThreePointsAndRectanglesThatDoNotMeetArePassedOver) {
    Add("A", 1, {{0, 0}, {9, 9}});
    Add("A", 2, Square(0, 0, 4));
    Add("B", 3, {{1, 1}, {2, 2}});
    Add("B", 4, Square(4.4, 0, 4));
    // The integer rectangles of 2 and 4 meet at 4; the polygons do not.
    EXPECT_EQ(Pairs().Long(), 0);
}

TEST_F(OverlayMembersTest, PolygonsThatOverlapArePassedOverWhenTheirStoredRectanglesDoNotMeet) {
    Add("A", 1, Square(0, 0, 4));
    Add("B", 2, Square(2, 2, 4));
    Rect& rect = Store().MutableBlock(Store().FindBlock("B", 1).block).dats[0].rect;
    const Rect own = rect;
    for (const Rect& apart : {Rect{5, 0, 9, 9}, Rect{-9, 0, -1, 9}, Rect{0, 5, 9, 9}, Rect{0, -9, 9, -1}}) {
        rect = apart;
        EXPECT_EQ(Pairs().Long(), 0);
    }
    for (const Rect& touching : {Rect{4, 4, 9, 9}, Rect{-9, -9, 0, 0}, own}) {
        rect = touching;
        EXPECT_EQ(Pairs().Long(), 1) << "rectangles that touch do meet";
    }
}

TEST_F(OverlayMembersTest, AnOverlapInTwoPartsIsOneItemOfTwoRings) {
    Add("A", 1, {{0, 0}, {10, 0}, {10, 6}, {8, 6}, {8, 2}, {2, 2}, {2, 6}, {0, 6}, {0, 0}});
    Add("B", 2, {{-1, 4}, {11, 4}, {11, 5}, {-1, 5}, {-1, 4}});
    EXPECT_EQ(Pairs().Long(), 1);
    EXPECT_EQ(Store().GetLayDatCnt("C", 1), 1);
    EXPECT_EQ(Stored("C", 1), Places({{0, 4}, {2, 4}, {2, 5}, {0, 5}, {0, 4}, {8, 4}, {10, 4}, {10, 5}, {8, 5}, {8, 4}}));
}

TEST_F(OverlayMembersTest, ResultsAddedToASourceBlockTakeNoPartThemselves) {
    Add("A", 1, Square(0, 0, 4));
    Add("B", 2, Square(2, 2, 4));
    EXPECT_EQ(Pairs(0, "A", "B", "B").Long(), 1);
    EXPECT_EQ(Store().GetLayDatCnt("B", 1), 2);
    EXPECT_EQ(Pairs(0, "A", "A", "A").Long(), 1) << "the polygon with itself";
}

TEST_F(OverlayMembersTest, TheWaitCursorStandsForTheCallAndIsPutBackAlsoWhenArgumentsAreBad) {
    EXPECT_EQ(Pairs(5).Long(), 0);
    EXPECT_EQ(Active(5).Long(), 0);
    EXPECT_EQ(rig.window.waitCursorCnt, 2);
    EXPECT_EQ(rig.window.waitCursorDepth, 0);
    EXPECT_TRUE(rig.window.messages.empty());
}

TEST_F(OverlayMembersTest, OneActivePolygonGivesZero) {
    Add("A", 1, Square(0, 0, 4), true);
    EXPECT_EQ(Active(0).Long(), 0);
    EXPECT_EQ(Active(1).Long(), 0);
}

TEST_F(OverlayMembersTest, TheActivePolygonsOfTwoLayersIntersectOrMergeIntoOneItem) {
    Add("A", 1, Square(0, 0, 10), true);
    Add("B", 2, Square(5, 5, 10), true);
    const Ran intersection = Active(0);
    EXPECT_EQ(intersection.Long(), 1);
    EXPECT_EQ(ArrayOf(intersection, 3), Longs({1}));
    EXPECT_EQ(Stored("C", 1).size(), 5u);
    const Ran merged = Active(1);
    EXPECT_EQ(merged.Long(), 1);
    EXPECT_EQ(ArrayOf(merged, 3), Longs({2}));
    EXPECT_EQ(Stored("C", 2).size(), 9u);
    EXPECT_EQ(Active(2).Long(), 0);
}

TEST_F(OverlayMembersTest, TheOverlayOfTheActiveItemsAddsOnePolygonToTheBlockAndNothingElsewhere) {
    Add("A", 1, Square(0, 0, 10), true);
    Add("B", 2, Square(5, 5, 10), true);
    Add("B", 3, Square(4, 4, 10), true);
    Add("C", 7, Square(90, 90, 1));
    for (const std::int32_t mode : {0, 1}) {
        EXPECT_EQ(Active(mode).Long(), 1);
        EXPECT_EQ(Store().GetLayDatCnt("C", 1), 2 + mode);
        EXPECT_EQ(Store().GetLayDatCnt("A", 1), 1);
        EXPECT_EQ(Store().GetLayDatCnt("B", 1), 2);
    }
    EXPECT_EQ(Store().FindDat("C", 1, 8)->active, 0);
    Add("A", 4, Square(500, 500, 1), true);
    EXPECT_EQ(Active(0).Long(), 0);
    EXPECT_EQ(Store().GetLayDatCnt("C", 1), 3) << "without a result nothing is added";
}

/// A ring of so many corners that its overlay asks several times.
Places ManyCorners(double x, double y) {
    Places places;
    for (int i = 0; i < 40000; ++i) {
        const double angle = 6.283185307179586 * i / 40000;
        const double reach = i % 2 == 0 ? 1000 : 999;
        places.push_back({x + reach * std::cos(angle), y + reach * std::sin(angle)});
    }
    places.push_back(places.front());
    return places;
}

TEST_F(OverlayMembersTest, AnOverlayThatTheHostEndsStoresNothingAlsoOfThePairsThatWereDone) {
    Add("A", 1, Square(0, 0, 4));
    Add("A", 2, ManyCorners(5000, 0));
    Add("B", 11, Square(2, 2, 4));
    Add("B", 12, ManyCorners(5500, 0));
    int asked = 0;
    double last = 0;
    rig.ctrl->SetProgress([&](double done) {
        last = done;
        return ++asked < 2;
    });
    const Ran ran = Pairs();
    EXPECT_EQ(ran.Long(), 0);
    EXPECT_EQ(asked, 2);
    EXPECT_GT(last, 0.5) << "the first pair was done";
    EXPECT_LT(last, 1);
    for (const std::size_t arg : {7u, 8u, 9u}) EXPECT_FALSE(ran.args[arg].written);
    EXPECT_EQ(Store().GetLayDatCnt("C", 1), 0);
    EXPECT_EQ(rig.window.waitCursorDepth, 0);
    rig.ctrl->SetProgress({});
    EXPECT_EQ(Pairs().Long(), 2);
}

TEST_F(OverlayMembersTest, AnOverlayOfActiveItemsThatTheHostEndsStoresNothing) {
    Add("A", 1, ManyCorners(0, 0), true);
    Add("A", 2, ManyCorners(500, 0), true);
    rig.ctrl->SetProgress([](double) { return false; });
    for (const std::int32_t mode : {0, 1}) {
        const Ran ran = Active(mode);
        EXPECT_EQ(ran.Long(), 0);
        EXPECT_FALSE(ran.args[3].written);
    }
    EXPECT_EQ(Store().GetLayDatCnt("C", 1), 0);
    rig.ctrl->SetProgress({});
    EXPECT_EQ(Active(0).Long(), 1);
}

TEST_F(OverlayMembersTest, TheRunningResultMeetsEachLaterItem) {
    Add("A", 1, Square(0, 0, 10), true);
    Add("A", 2, Square(5, 0, 10), true);
    Add("A", 3, Square(0, 5, 10), true);
    EXPECT_EQ(Active(0).Long(), 1);
    const DigDat* dat = Store().FindDat("C", 1, 1);
    ASSERT_NE(dat, nullptr);
    EXPECT_EQ(dat->rect, (Rect{5, 5, 10, 10}));
}

TEST_F(OverlayMembersTest, AStepWithoutAResultEndsTheRunWithZeroWhateverFollows) {
    Add("A", 1, Square(0, 0, 4), true);
    Add("A", 2, Square(10, 10, 4), true);
    Add("A", 3, Square(0, 0, 4), true);
    Add("B", 4, {{1, 1}}, true);
    EXPECT_EQ(Active(0).Long(), 0);
}

TEST_F(OverlayMembersTest, AnActiveItemOfFewerThanThreePointsEndsTheWholeOperation) {
    Add("A", 1, {{1, 1}, {2, 2}}, true);
    Add("A", 2, Square(0, 0, 4), true);
    Add("A", 3, Square(2, 2, 4), true);
    EXPECT_EQ(Active(0).Long(), 0);
    Store().SetDigDatInfoEx("A", 1, 1, 0, false);
    EXPECT_EQ(Active(0).Long(), 1);
}

TEST_F(OverlayMembersTest, OnlyItemsOfDisplayedActiveLayersInTheViewTakePart) {
    Add("A", 1, Square(0, 0, 4), true);
    Add("B", 2, Square(2, 2, 4), true);
    Store().SetLayDspFlg("B", false);
    EXPECT_EQ(Active(0).Long(), 0);
    Store().SetLayDspFlg("B", true);
    Store().SetLayActive("B", false);
    EXPECT_EQ(Active(0).Long(), 0);
    Store().SetLayActive("B", true);
    DigBlock& block = Store().MutableBlock(Store().FindBlock("B", 1).block);
    block.inView = 0;
    EXPECT_EQ(Active(0).Long(), 0);
    block.inView = 1;
    EXPECT_EQ(Active(0).Long(), 1);
}

TEST_F(OverlayMembersTest, NearbyCornersSnapSoThatNeighboursMergeWithoutASliver) {
    Add("A", 1, Square(0, 0, 4), true);
    Add("A", 2, {{4.00005, 0}, {8, 0}, {8, 4}, {4.00005, 4.00005}, {4.00005, 0}}, true);
    EXPECT_EQ(Active(1).Long(), 1);
    double area = 0;
    const Places ring = Stored("C", 1);
    for (std::size_t i = 1; i < ring.size(); ++i) {
        area += ring[i - 1].first * ring[i].second - ring[i].first * ring[i - 1].second;
    }
    EXPECT_EQ(ring.size(), 7u);
    EXPECT_EQ(area / 2, 32);
}

}  // namespace
}  // namespace orvane
