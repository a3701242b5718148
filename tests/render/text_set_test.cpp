#include "render/text_set.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvane {
namespace {

TEST(TextSetTest, HasWhatWasAddedByItsBytes) {
    TextSet set;
    EXPECT_FALSE(set.Has("a"));
    EXPECT_TRUE(set.Add("a"));
    EXPECT_TRUE(set.Add("a"));
    EXPECT_TRUE(set.Has("a"));
    EXPECT_FALSE(set.Has("A"));
    EXPECT_FALSE(set.Has(""));
    EXPECT_TRUE(set.Add(""));
    EXPECT_TRUE(set.Has(""));
    EXPECT_FALSE(set.Has(std::string_view("a\0b", 3)));
}

TEST(TextSetTest, ForgetEmptiesItAndKeepsItsRoom) {
    TextSet set;
    std::vector<std::string> texts;
    for (int i = 0; i < 1000; ++i) texts.push_back("text " + std::to_string(i));
    for (const std::string& text : texts) ASSERT_TRUE(set.Add(text));
    for (const std::string& text : texts) ASSERT_TRUE(set.Has(text));
    set.Forget();
    for (const std::string& text : texts) ASSERT_FALSE(set.Has(text));
    ArrayFaults::FailFrom(1);
    for (const std::string& text : texts) EXPECT_TRUE(set.Add(text));
    ArrayFaults::Clear();
    EXPECT_TRUE(set.Has("text 999"));
    EXPECT_FALSE(set.Has("text 1000"));
}

TEST(TextSetTest, WithoutRoomNothingIsAddedAndNothingLost) {
    TextSet set;
    ArrayFaults::FailFrom(1);
    EXPECT_FALSE(set.Add("a"));
    EXPECT_FALSE(set.Has("a"));
    ArrayFaults::Clear();
    std::vector<std::string> texts;
    for (int i = 0; i < 100; ++i) texts.push_back(std::to_string(i));
    ASSERT_TRUE(set.Add(texts[0]));
    ArrayFaults::FailFrom(1);
    std::size_t added = 1;
    while (added < texts.size() && set.Add(texts[added])) ++added;
    ArrayFaults::Clear();
    EXPECT_LT(added, texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(set.Has(texts[i]), i < added) << i;
}

}  // namespace
}  // namespace orvane
