#include "platform/file_names.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

// In code page 932 "ソ" is 83 5C, "ア" 83 41 and "ヂ" 83 61: second bytes that look like a backslash, A and a.
constexpr char kSo932[] = "\x83\x5C";
constexpr char kA932[] = "\x83\x41";
constexpr char kDi932[] = "\x83\x61";
constexpr char kAUtf8[] = "\xE3\x81\x82";

TEST(IsUtf8Test, TellsTheTwoEncodingsApart) {
    EXPECT_TRUE(IsUtf8(""));
    EXPECT_TRUE(IsUtf8("plain.dat"));
    EXPECT_TRUE(IsUtf8(kAUtf8));
    EXPECT_FALSE(IsUtf8(kSo932));
    EXPECT_FALSE(IsUtf8("\xE3\x81"));          // cut
    EXPECT_FALSE(IsUtf8("\xC0\xAF"));          // never a head
    EXPECT_FALSE(IsUtf8("\xF5\x80\x80\x80"));  // beyond the last character
}

TEST(CharacterLengthTest, ACutCharacterIsOneByte) {
    EXPECT_EQ(CharacterLength("", false), 0u);
    EXPECT_EQ(CharacterLength("a", false), 1u);
    EXPECT_EQ(CharacterLength(kSo932, false), 2u);
    EXPECT_EQ(CharacterLength("\x83", false), 1u);
    EXPECT_EQ(CharacterLength("\xB1x", false), 1u);  // half-width katakana
    EXPECT_EQ(CharacterLength(kAUtf8, true), 3u);
}

TEST(EqualAnyCaseTest, OnlyTheLettersAToZHaveCase) {
    EXPECT_TRUE(EqualAnyCase("Map.OVM", "mAP.ovm"));
    EXPECT_FALSE(EqualAnyCase("map", "maps"));
    EXPECT_FALSE(EqualAnyCase("[", "{"));
    EXPECT_FALSE(EqualAnyCase("@", "`"));
}

TEST(EqualAnyCaseTest, TheSecondByteOfACharacterHasNoCase) {
    EXPECT_FALSE(EqualAnyCase(kA932, kDi932));
    EXPECT_TRUE(EqualAnyCase(std::string(kA932) + "x", std::string(kA932) + "X"));
    EXPECT_TRUE(EqualAnyCase(std::string(kAUtf8) + "x", std::string(kAUtf8) + "X"));
}

TEST(MatchAnyCaseTest, AStarStandsForAnyRunAndAQuestionMarkForOneCharacter) {
    EXPECT_TRUE(MatchAnyCase("*.arc", "53394611.ARC"));
    EXPECT_TRUE(MatchAnyCase("*.ARC", "a.b.arc"));
    EXPECT_FALSE(MatchAnyCase("*.arc", "a.arcx"));
    EXPECT_FALSE(MatchAnyCase("*.arc", "arc"));
    EXPECT_TRUE(MatchAnyCase("*", ""));
    EXPECT_TRUE(MatchAnyCase("**a**", "bab"));
    EXPECT_TRUE(MatchAnyCase("a*b*c", "aXbbYc"));
    EXPECT_FALSE(MatchAnyCase("a*b*c", "aXbbY"));
    EXPECT_TRUE(MatchAnyCase("m?p", "map"));
    EXPECT_FALSE(MatchAnyCase("m?p", "mp"));
    EXPECT_FALSE(MatchAnyCase("?", ""));
    EXPECT_TRUE(MatchAnyCase("", ""));
    EXPECT_FALSE(MatchAnyCase("", "a"));
}

TEST(MatchAnyCaseTest, AQuestionMarkTakesAWholeCharacterOfEitherEncoding) {
    EXPECT_TRUE(MatchAnyCase("?.x", std::string(kSo932) + ".x"));
    EXPECT_TRUE(MatchAnyCase("?.x", std::string(kAUtf8) + ".x"));
    EXPECT_FALSE(MatchAnyCase("??.x", std::string(kAUtf8) + ".x"));
}

TEST(MatchAnyCaseTest, LongRunsOfStarsEndSoon) {
    const std::string name(2000, 'a');
    std::string pattern;
    for (int i = 0; i < 500; ++i) pattern += "*a";
    EXPECT_TRUE(MatchAnyCase(pattern, name));
    EXPECT_FALSE(MatchAnyCase(pattern + "b", name));
}

}  // namespace
}  // namespace orvane
