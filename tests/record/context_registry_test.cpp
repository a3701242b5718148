#include "platform/context_registry.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "platform/record/record_context.h"

namespace orvane {
namespace {

class RegistryTest : public testing::Test {
protected:
    DeviceContext& Context(std::size_t i) { return contexts_[i]; }
    RecordContext contexts_[2] = {RecordContext{std::shared_ptr<VerbList>()}, RecordContext{std::shared_ptr<VerbList>()}};
};

TEST_F(RegistryTest, AContextIsFoundUnderItsNumberUntilItIsTakenOut) {
    const std::int32_t first = RegisterContext(Context(0));
    const std::int32_t second = RegisterContext(Context(1));
    EXPECT_GT(first, 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(FindContext(first), &Context(0));
    EXPECT_EQ(FindContext(second), &Context(1));
    UnregisterContext(first);
    EXPECT_EQ(FindContext(first), nullptr);
    EXPECT_EQ(FindContext(second), &Context(1));
    UnregisterContext(second);
}

TEST_F(RegistryTest, ZeroAndUnknownNumbersNameNoContext) {
    const std::int32_t number = RegisterContext(Context(0));
    UnregisterContext(0);
    UnregisterContext(-1);
    UnregisterContext(number + 1000);
    EXPECT_EQ(FindContext(0), nullptr);
    EXPECT_EQ(FindContext(-1), nullptr);
    EXPECT_EQ(FindContext(INT32_MAX), nullptr);
    EXPECT_EQ(FindContext(number), &Context(0));
    UnregisterContext(number);
    UnregisterContext(number);
}

TEST_F(RegistryTest, ANumberIsNotGivenTwice) {
    std::set<std::int32_t> given;
    for (int i = 0; i < 1000; ++i) {
        const std::int32_t number = RegisterContext(Context(0));
        EXPECT_TRUE(given.insert(number).second);
        UnregisterContext(number);
    }
}

TEST_F(RegistryTest, ThreadsGetNumbersOfTheirOwnAndFindEachOthersContexts) {
    std::vector<std::int32_t> numbers(400);
    const auto enter = [&](std::size_t from) {
        for (std::size_t i = from; i < from + 100; ++i) numbers[i] = RegisterContext(Context(i % 2));
    };
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < 4; ++t) threads.emplace_back(enter, t * 100);
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::set<std::int32_t>(numbers.begin(), numbers.end()).size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        EXPECT_EQ(FindContext(numbers[i]), &Context(i % 2));
        UnregisterContext(numbers[i]);
    }
}

/// Knows the second context by the handle 70, and makes contexts on the handles 80 and above.
class FewHandles : public SystemContexts {
public:
    explicit FewHandles(DeviceContext& known) : known_(known) { SetSystemContexts(this); }
    ~FewHandles() override { SetSystemContexts(nullptr); }
    std::int32_t NumberOf(const DeviceContext& dc) override { return &dc == &known_ ? 70 : 0; }
    std::unique_ptr<DeviceContext> Open(std::int32_t number) override {
        if (number < 80) return nullptr;
        ++openedCnt;
        return std::make_unique<RecordContext>(std::shared_ptr<VerbList>());
    }
    int openedCnt = 0;

private:
    DeviceContext& known_;
};

TEST_F(RegistryTest, AContextWithAHandleOfTheSystemIsEnteredUnderIt) {
    FewHandles system(Context(1));
    const std::int32_t own = RegisterContext(Context(0));
    EXPECT_NE(own, 70);
    EXPECT_EQ(RegisterContext(Context(1)), 70);
    EXPECT_EQ(FindContext(70), &Context(1));
    EXPECT_EQ(OpenContext(70).get(), &Context(1)) << "and is not opened a second time";
    EXPECT_EQ(OpenContext(own).get(), &Context(0));
    UnregisterContext(70);
    UnregisterContext(own);
    EXPECT_EQ(OpenContext(70), nullptr);
    EXPECT_EQ(system.openedCnt, 0);
}

TEST_F(RegistryTest, AForeignHandleIsOpenedForOneUseAtATime) {
    FewHandles system(Context(1));
    std::shared_ptr<DeviceContext> opened = OpenContext(80);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened.use_count(), 1) << "nobody keeps it";
    EXPECT_EQ(FindContext(80), nullptr);
    EXPECT_NE(OpenContext(80), opened);
    EXPECT_EQ(system.openedCnt, 2);
    EXPECT_EQ(OpenContext(0), nullptr);
    EXPECT_EQ(OpenContext(79), nullptr);
    EXPECT_EQ(system.openedCnt, 2);
}

TEST_F(RegistryTest, WithoutHandlesOfTheSystemAnUnknownNumberOpensNothing) {
    EXPECT_EQ(OpenContext(80), nullptr);
    EXPECT_EQ(OpenContext(0), nullptr);
}

}  // namespace
}  // namespace orvane
