#include "select/near_segment.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>

#include "tests/select/pick_rig.h"

namespace orvane {
namespace {

class NearSegmentTest : public ::testing::Test {
protected:
    NearSegmentTest() { store.Init(); }

    std::int32_t Add(std::int16_t type, const std::vector<DigPnt>& pnts) {
        const std::int32_t ID = store.MakeOrgDat(type, 1, 0, 0);
        for (const DigPnt& pnt : pnts) EXPECT_GT(store.AddOrgPnt(ID, pnt.x, pnt.y), 0);
        return ID;
    }
    NearSegmentAnswer Find(double x, double y, bool keep = false, std::int32_t ID = 1) {
        return NearSegment(store, ID, x, y, keep);
    }
    void ExpectEnds(const NearSegmentAnswer& answer, DigPnt first, DigPnt second) {
        EXPECT_EQ(answer.firstX, first.x);
        EXPECT_EQ(answer.firstY, first.y);
        EXPECT_EQ(answer.secondX, second.x);
        EXPECT_EQ(answer.secondY, second.y);
    }
    CDigMem store;
};

TEST_F(NearSegmentTest, NoFigureAndFiguresOfFewerThanTwoPointsAreMinusOne) {
    Add(2, {{0, 0, 0}});
    EXPECT_EQ(Find(0, 0).index, -1);
    EXPECT_EQ(Find(0, 0, false, 9).index, -1);
    EXPECT_EQ(NearSegment(CDigMem(), 1, 0, 0, false).index, -1);
}

TEST_F(NearSegmentTest, OnALineANewPointGoesBetweenTheNearestVertexAndTheNearerSegmentsOtherEnd) {
    Add(2, {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {200, 100, 0}});
    const NearSegmentAnswer before = Find(90, 1);  // nearest vertex 1, the segment before it
    EXPECT_EQ(before.index, 1);
    EXPECT_EQ(before.other, 0);
    ExpectEnds(before, {100, 0, 0}, {0, 0, 0});
    const NearSegmentAnswer behind = Find(99, 20);
    EXPECT_EQ(behind.index, 2);
    EXPECT_EQ(behind.other, 1);
    ExpectEnds(behind, {100, 0, 0}, {100, 100, 0});
}

TEST_F(NearSegmentTest, OfEquallyNearSegmentsTheLaterIsTaken) {
    Add(2, {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}});
    EXPECT_EQ(Find(110, -10).index, 2);
}

TEST_F(NearSegmentTest, AtTheEndsOfALineANewPointGoesBeforeTheFirstOrBehindTheLast) {
    Add(2, {{0, 0, 0}, {100, 0, 0}, {200, 0, 0}});
    const NearSegmentAnswer first = Find(10, 5);
    EXPECT_EQ(first.index, 0) << "even beside the first segment";
    EXPECT_EQ(first.other, 0);
    ExpectEnds(first, {0, 0, 0}, {0, 0, 0});
    const NearSegmentAnswer last = Find(190, 5);
    EXPECT_EQ(last.index, 3);
    EXPECT_EQ(last.other, 2);
    ExpectEnds(last, {200, 0, 0}, {200, 0, 0});
}

TEST_F(NearSegmentTest, OnAClosedRingTheEndsAreNeighboursAndTheClosingPointIsSteppedOver) {
    Add(3, {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}, {0, 0, 0}});
    const NearSegmentAnswer wrapped = Find(1, 20);  // the side from the first point to the last corner
    EXPECT_EQ(wrapped.index, 4) << "before the point that closes the ring";
    EXPECT_EQ(wrapped.other, 3);
    ExpectEnds(wrapped, {0, 0, 0}, {0, 100, 0});
    const NearSegmentAnswer onward = Find(20, 1);
    EXPECT_EQ(onward.index, 1);
    EXPECT_EQ(onward.other, 0);
    ExpectEnds(onward, {0, 0, 0}, {100, 0, 0});
    EXPECT_EQ(Find(1, 80).index, 4) << "from the corner's side of it";
}

TEST_F(NearSegmentTest, EveryRingOfAPolygonWrapsByItself) {
    Add(3, {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 0, 0}, {300, 0, 0}, {400, 0, 0}, {400, 100, 0}, {300, 0, 0}, {9, 9, 0}});
    const NearSegmentAnswer wrapped = Find(321, 20);  // the second ring's slanted side
    EXPECT_EQ(wrapped.index, 7);
    EXPECT_EQ(wrapped.other, 6);
    ExpectEnds(wrapped, {300, 0, 0}, {400, 100, 0});
    EXPECT_EQ(Find(390, 1).index, 5);
}

TEST_F(NearSegmentTest, OfTwoCoincidentVerticesTheLowerIndexWins) {
    Add(2, {{0, 0, 0}, {100, 0, 0}, {100, 0, 0}, {200, 0, 0}});
    ExpectEnds(Find(100, 1), {100, 0, 0}, {100, 0, 0});
    EXPECT_EQ(Find(100, 1).index, 2);
}

TEST_F(NearSegmentTest, AMissingNeighbourOfAnOpenPolygonReadsAsZero) {
    Add(3, {{1000, 1000, 0}, {1100, 1000, 0}, {1100, 1100, 0}});
    const NearSegmentAnswer last = Find(1090, 1120);
    EXPECT_EQ(last.index, 3);
    ExpectEnds(last, {1100, 1100, 0}, {0, 0, 0});
    const NearSegmentAnswer first = Find(900, 905);
    EXPECT_EQ(first.index, 0);
    EXPECT_EQ(first.other, -1);
    ExpectEnds(first, {1000, 1000, 0}, {0, 0, 0});
}

TEST_F(NearSegmentTest, VerticesThatAreNoNumbersOrTooFarAreMinusOne) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    Add(3, {{kNaN, 0, 0}, {0, kNaN, 0}, {1e10, 0, 0}});
    EXPECT_EQ(Find(0, 0).index, -1);
    EXPECT_EQ(Find(kNaN, 0).index, -1);
}

TEST_F(NearSegmentTest, WithKeepItAnswersWhatItAnsweredLast) {
    Add(2, {{0, 0, 0}, {100, 0, 0}, {200, 0, 0}});
    Add(2, {{0, 0, 0}, {10, 0, 0}});
    const NearSegmentAnswer found = Find(120, 1);
    EXPECT_EQ(found.index, 2);
    const NearSegmentAnswer kept = Find(0, 0, true);
    EXPECT_EQ(kept.index, 2);
    EXPECT_EQ(kept.other, 1);
    ExpectEnds(kept, {100, 0, 0}, {200, 0, 0});
    EXPECT_EQ(Find(0, 0, true, 2).index, 2) << "of whatever figure";
    EXPECT_EQ(Find(0, 0, false, 9).index, -1);
    EXPECT_EQ(Find(120, 1, true).index, -1) << "the last answer was none";
}

TEST_F(NearSegmentTest, WithKeepAndNothingToRememberItIsMinusOne) {
    Add(2, {{0, 0, 0}, {100, 0, 0}});
    EXPECT_NE(Find(0, 0).index, -1);
    std::int32_t index = 0;
    std::thread([&] { index = Find(0, 0, true).index; }).join();  // the state is kept per thread
    EXPECT_EQ(index, -1);
}

TEST_F(NearSegmentTest, WithoutMemoryForTheRingsItIsMinusOne) {
    Add(3, {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 0, 0}});
    ArrayFaults::FailFrom(1);
    EXPECT_EQ(Find(50, 0).index, -1);
    ArrayFaults::Clear();
    EXPECT_NE(Find(50, 0).index, -1);
}

}  // namespace
}  // namespace orvane
