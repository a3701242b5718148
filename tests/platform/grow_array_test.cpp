#include "platform/grow_array.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace orvane {
namespace {

// Counts how many of its kind are alive, and owns memory as the store's records do.
struct Tracked {
    static inline int alive = 0;
    GrowArray<int> numbers;
    int mark = 0;

    Tracked() noexcept { ++alive; }
    Tracked(Tracked&& other) noexcept : numbers(std::move(other.numbers)), mark(std::exchange(other.mark, -1)) { ++alive; }
    Tracked& operator=(Tracked&& other) noexcept {
        numbers = std::move(other.numbers);
        mark = std::exchange(other.mark, -1);
        return *this;
    }
    ~Tracked() { --alive; }
};

Tracked Marked(int mark) {
    Tracked tracked;
    tracked.mark = mark;
    EXPECT_TRUE(tracked.numbers.PushBack(mark * 10));
    return tracked;
}

class GrowArrayTest : public testing::Test {
protected:
    void TearDown() override {
        ArrayFaults::Clear();
        EXPECT_EQ(Tracked::alive, 0);
    }
};

TEST_F(GrowArrayTest, StartsEmptyAndOwnsNothing) {
    const GrowArray<int> array;
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(array.size(), 0u);
    EXPECT_EQ(array.capacity(), 0u);
    EXPECT_EQ(array.data(), nullptr);
    EXPECT_EQ(array.begin(), array.end());
}

TEST_F(GrowArrayTest, ResizeGivesZerosBehindTheOldElements) {
    GrowArray<int> array;
    ASSERT_TRUE(array.PushBack(7));
    ASSERT_TRUE(array.Resize(100));
    EXPECT_EQ(array[0], 7);
    for (std::size_t i = 1; i < 100; ++i) EXPECT_EQ(array[i], 0);
}

TEST_F(GrowArrayTest, ElementsCutOffAreZeroWhenTheirRoomIsUsedAgain) {
    GrowArray<int> array;
    for (int i = 1; i <= 4; ++i) ASSERT_TRUE(array.PushBack(i));
    array.Truncate(1);
    ASSERT_TRUE(array.Resize(4));
    EXPECT_EQ(array[0], 1);
    EXPECT_EQ(array[3], 0);
}

TEST_F(GrowArrayTest, TruncateBeyondTheEndChangesNothing) {
    GrowArray<int> array;
    ASSERT_TRUE(array.PushBack(1));
    array.Truncate(5);
    EXPECT_EQ(array.size(), 1u);
}

TEST_F(GrowArrayTest, CapacityDoublesSoThatGrowthsStayFew) {
    GrowArray<int> array;
    ArrayFaults::Clear();
    for (int i = 0; i < 1000; ++i) ASSERT_TRUE(array.PushBack(i));
    EXPECT_EQ(ArrayFaults::Count(), 11);  // 1, 2, 4 ... 1024
    EXPECT_EQ(array.capacity(), 1024u);
}

TEST_F(GrowArrayTest, ReserveTakesExactlyWhatIsAskedAndNeverShrinks) {
    GrowArray<int> array;
    ASSERT_TRUE(array.Reserve(37));
    EXPECT_EQ(array.capacity(), 37u);
    ASSERT_TRUE(array.Reserve(3));
    EXPECT_EQ(array.capacity(), 37u);
    EXPECT_TRUE(array.empty());
}

TEST_F(GrowArrayTest, RecordsThatOwnArraysTravelByMoveWhenItGrows) {
    GrowArray<Tracked> array;
    for (int i = 0; i < 20; ++i) ASSERT_TRUE(array.PushBack(Marked(i)));
    EXPECT_EQ(Tracked::alive, 20);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(array[static_cast<std::size_t>(i)].mark, i);
        EXPECT_EQ(array[static_cast<std::size_t>(i)].numbers[0], i * 10);
    }
}

TEST_F(GrowArrayTest, AnElementOfTheArrayItselfCanBeAppendedWhileItGrows) {
    GrowArray<Tracked> array;
    ASSERT_TRUE(array.PushBack(Marked(5)));
    ASSERT_EQ(array.size(), array.capacity());
    ASSERT_TRUE(array.PushBack(std::move(array[0])));
    EXPECT_EQ(array[1].mark, 5);
    EXPECT_EQ(array[1].numbers[0], 50);
}

TEST_F(GrowArrayTest, EraseClosesTheGapAndKeepsTheOrder) {
    GrowArray<Tracked> array;
    for (int i = 0; i < 4; ++i) ASSERT_TRUE(array.PushBack(Marked(i)));
    array.EraseAt(1);
    ASSERT_EQ(array.size(), 3u);
    EXPECT_EQ(array[0].mark, 0);
    EXPECT_EQ(array[1].mark, 2);
    EXPECT_EQ(array[2].mark, 3);
    EXPECT_EQ(array[2].numbers[0], 30);
    EXPECT_EQ(Tracked::alive, 3);
}

TEST_F(GrowArrayTest, EraseAtAPositionOutsideChangesNothing) {
    GrowArray<int> array;
    array.EraseAt(0);
    ASSERT_TRUE(array.PushBack(1));
    array.EraseAt(1);
    EXPECT_EQ(array.size(), 1u);
}

TEST_F(GrowArrayTest, ClearFreesAllOfIt) {
    GrowArray<Tracked> array;
    ASSERT_TRUE(array.PushBack(Marked(1)));
    array.Clear();
    EXPECT_EQ(Tracked::alive, 0);
    EXPECT_EQ(array.capacity(), 0u);
    EXPECT_EQ(array.data(), nullptr);
}

TEST_F(GrowArrayTest, AMovedArrayLeavesAnEmptyOneBehind) {
    GrowArray<int> first;
    ASSERT_TRUE(first.PushBack(1));
    GrowArray<int> second(std::move(first));
    EXPECT_TRUE(first.empty());
    EXPECT_EQ(second[0], 1);
    GrowArray<int> third;
    ASSERT_TRUE(third.PushBack(9));
    third = std::move(second);
    EXPECT_EQ(third.size(), 1u);
    EXPECT_EQ(third[0], 1);
    EXPECT_EQ(second.capacity(), 0u);
}

TEST_F(GrowArrayTest, AFailedGrowthLeavesTheArrayAsItWas) {
    GrowArray<Tracked> array;
    for (int i = 0; i < 4; ++i) ASSERT_TRUE(array.PushBack(Marked(i)));
    const Tracked* before = array.data();
    ArrayFaults::FailFrom(1);
    EXPECT_FALSE(array.Resize(5));
    EXPECT_FALSE(array.Reserve(5));
    ArrayFaults::Clear();
    Tracked extra = Marked(4);
    ArrayFaults::FailFrom(1);
    EXPECT_FALSE(array.PushBack(std::move(extra)));
    ArrayFaults::Clear();
    EXPECT_EQ(array.data(), before);
    EXPECT_EQ(array.size(), 4u);
    EXPECT_EQ(array.capacity(), 4u);
    EXPECT_EQ(array[3].numbers[0], 30);
    EXPECT_EQ(extra.mark, 4);
    EXPECT_EQ(extra.numbers[0], 40);
}

TEST_F(GrowArrayTest, AGrowthBeyondAllMemoryFailsWithoutAsking) {
    GrowArray<double> array;
    EXPECT_FALSE(array.Resize(SIZE_MAX));
    EXPECT_FALSE(array.Reserve(SIZE_MAX / sizeof(double) + 2));
    EXPECT_TRUE(array.empty());
}

TEST_F(GrowArrayTest, OnlyTheNthGrowthFailsWhenAskedFor) {
    ArrayFaults::FailNth(2);
    GrowArray<int> array;
    EXPECT_TRUE(array.Reserve(1));
    EXPECT_FALSE(array.Reserve(2));
    EXPECT_TRUE(array.Reserve(3));
}

TEST_F(GrowArrayTest, AllGrowthsFromTheNthOnFailWhenAskedFor) {
    ArrayFaults::FailFrom(2);
    GrowArray<int> array;
    EXPECT_TRUE(array.Reserve(1));
    EXPECT_FALSE(array.Reserve(2));
    EXPECT_FALSE(array.Reserve(3));
}

TEST_F(GrowArrayTest, GrowthsBeyondASizeFailWhenAskedFor) {
    ArrayFaults::FailOver(64);
    GrowArray<std::int32_t> array;
    EXPECT_TRUE(array.Reserve(16));
    EXPECT_FALSE(array.Reserve(17));
    ArrayFaults::Clear();
    EXPECT_TRUE(array.Reserve(17));
}

TEST_F(GrowArrayTest, ARecordMayHoldAnArrayOfItsOwnKind) {
    struct Node {
        OwnedArray<int> numbers;
        GrowArray<Node> children;
    };
    Node root;
    ASSERT_TRUE(root.children.Resize(2));
    ASSERT_TRUE(root.children[1].children.PushBack(Node{}));
    EXPECT_EQ(root.children[1].children.size(), 1u);
}

TEST(OwnedArrayTest, IsOnePointerAndStartsNull) {
    EXPECT_EQ(sizeof(OwnedArray<double>), sizeof(void*));
    const OwnedArray<int> array;
    EXPECT_FALSE(array);
    EXPECT_EQ(array.Get(), nullptr);
}

TEST(OwnedArrayTest, NewElementsAreClearedAndOldOnesKept) {
    OwnedArray<std::int32_t> array;
    ASSERT_TRUE(array.Resize(0, 2));
    array[0] = 5;
    array[1] = 6;
    ASSERT_TRUE(array.Resize(2, 50));
    EXPECT_EQ(array[0], 5);
    EXPECT_EQ(array[1], 6);
    for (std::size_t i = 2; i < 50; ++i) EXPECT_EQ(array[i], 0);
}

TEST(OwnedArrayTest, ASmallerSizeKeepsTheHead) {
    OwnedArray<std::int32_t> array;
    ASSERT_TRUE(array.Resize(0, 10));
    array[2] = 3;
    ASSERT_TRUE(array.Resize(10, 3));
    EXPECT_EQ(array[2], 3);
}

TEST(OwnedArrayTest, SizeZeroFrees) {
    OwnedArray<std::int32_t> array;
    ASSERT_TRUE(array.Resize(0, 10));
    ASSERT_TRUE(array.Resize(10, 0));
    EXPECT_FALSE(array);
}

TEST(OwnedArrayTest, AFailedGrowthLeavesItAsItWasAndGoingDownNeverFails) {
    OwnedArray<std::int32_t> array;
    ASSERT_TRUE(array.Resize(0, 4));
    array[3] = 9;
    ArrayFaults::FailFrom(1);
    const std::int32_t* before = array.Get();
    EXPECT_FALSE(array.Resize(4, 5));
    EXPECT_EQ(array.Get(), before);
    EXPECT_EQ(array[3], 9);
    EXPECT_TRUE(array.Resize(4, 3));
    EXPECT_TRUE(array.Resize(3, 0));
    EXPECT_FALSE(array.Resize(0, 1));
    EXPECT_FALSE(array);
    ArrayFaults::Clear();
}

TEST(OwnedArrayTest, ACountBeyondAllMemoryFails) {
    OwnedArray<double> array;
    EXPECT_FALSE(array.Resize(0, SIZE_MAX / 4));
    EXPECT_FALSE(array);
}

TEST(OwnedArrayTest, MovesLeaveNullBehind) {
    OwnedArray<std::int32_t> first;
    ASSERT_TRUE(first.Resize(0, 1));
    first[0] = 8;
    OwnedArray<std::int32_t> second(std::move(first));
    EXPECT_FALSE(first);
    OwnedArray<std::int32_t> third;
    ASSERT_TRUE(third.Resize(0, 3));
    third = std::move(second);
    EXPECT_EQ(third[0], 8);
    EXPECT_FALSE(second);
}

}  // namespace
}  // namespace orvane
