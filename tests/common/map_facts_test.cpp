#include "hosts/common/map_facts.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(MapFactsTest, JsonTextEscapesWhatJsonAsksFor) {
    EXPECT_EQ(JsonText("a\"b\\c\n"), "\"a\\\"b\\\\c\\u000a\"");
    EXPECT_EQ(JsonText("\xE6\x9D\xB1\xF0\x9F\x97\xBE"), "\"\xE6\x9D\xB1\xF0\x9F\x97\xBE\"");
}

TEST(MapFactsTest, JsonTextIsUtf8WhateverTheBytes) {
    const std::string odd = "\xEF\xBF\xBD";
    EXPECT_EQ(JsonText("\xFF\xFE.Ovb"), "\"" + odd + odd + ".Ovb\"");
    EXPECT_EQ(JsonText("\x80"), "\"" + odd + "\"") << "a byte that continues nothing";
    EXPECT_EQ(JsonText("\xC0\xAF"), "\"" + odd + odd + "\"") << "a longer form than needed";
    EXPECT_EQ(JsonText("\xED\xA0\x80"), "\"" + odd + odd + odd + "\"") << "half of a pair";
    EXPECT_EQ(JsonText("\xF4\x90\x80\x80"), "\"" + odd + odd + odd + odd + "\"") << "beyond the last character";
    EXPECT_EQ(JsonText("a\xE6\x9D"), "\"a" + odd + odd + "\"") << "cut off";
}

}  // namespace
}  // namespace orvane
