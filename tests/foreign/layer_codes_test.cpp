#include "foreign/layer_codes.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

// Two bytes for the characters 東 and 〓, none for others.
std::optional<std::string> TwoCharacters(std::string_view utf8) {
    if (utf8 == "東") return "\x93\x8C";
    if (utf8 == "〓") return "\x81\xAC";
    return std::nullopt;
}

std::string Repeat(const std::string& text, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += text;
    return out;
}

TEST(LayerCodes, ANameOfFiftyBytesIsTakenWhole) {
    LayerCodes codes(TwoCharacters);
    EXPECT_EQ(codes.Make(Repeat("東", 25)), Repeat("\x93\x8C", 25));
    EXPECT_FALSE(codes.LostCharacters());
}

TEST(LayerCodes, ALongerNameIsCutBetweenCharacters) {
    LayerCodes codes(TwoCharacters);
    EXPECT_EQ(codes.Make("A" + Repeat("東", 25)), "A" + Repeat("\x93\x8C", 24));
}

TEST(LayerCodes, NamesThatBecomeEqualByTheCutAreToldApart) {
    LayerCodes codes(TwoCharacters);
    const std::string start = Repeat("東", 25);
    EXPECT_EQ(codes.Make(start + "1"), Repeat("\x93\x8C", 25));
    EXPECT_EQ(codes.Make(start + "2"), Repeat("\x93\x8C", 24) + "~2");
    EXPECT_EQ(codes.Make(start + "3"), Repeat("\x93\x8C", 24) + "~3");
    for (int i = 4; i < 10; ++i) codes.Make(start);
    EXPECT_EQ(codes.Make(start), Repeat("\x93\x8C", 23) + "~10");
}

TEST(LayerCodes, ACodeThatTheMapHasIsNotMadeAgain) {
    LayerCodes codes(TwoCharacters);
    codes.Take("road");
    codes.Take("road~2");
    EXPECT_EQ(codes.Make("road"), "road~3");
}

TEST(LayerCodes, CharactersWithoutBytesAndControlCharactersAreReplaced) {
    LayerCodes codes(TwoCharacters);
    EXPECT_EQ(codes.Make("a\nb\tc"), "a_b_c");
    EXPECT_FALSE(codes.LostCharacters());
    EXPECT_EQ(codes.Make("caf\xC3\xA9"), "caf\x81\xAC");
    EXPECT_TRUE(codes.LostCharacters());
    EXPECT_EQ(codes.Make("\xFF\xE3"), "\x81\xAC\x81\xAC") << "stray bytes count one by one";
}

TEST(LayerCodes, WithoutAConverterOnlyAsciiHasBytes) {
    LayerCodes codes({});
    EXPECT_EQ(codes.Make("東A"), "_A");
    EXPECT_TRUE(codes.LostCharacters());
}

TEST(LayerCodes, AnEmptyNameStillGivesACode) {
    LayerCodes codes({});
    EXPECT_EQ(codes.Make(""), "layer");
    EXPECT_EQ(codes.Make(""), "layer~2");
}

}  // namespace
}  // namespace orvane
