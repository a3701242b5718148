#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

#include "tests/qt/text_sheet.h"

namespace orvane {
namespace {

TextSize Measure(const Font& font, std::string_view text) { return TextPainter::OfThread().Measure(font, text); }

/// How wide a wide character is in a font of that em: the em itself, or two of the narrow characters' cells where the face has
/// such cells of half an em. Sizes without a remainder tell which.
std::int32_t WideOf(std::int32_t em, const Font& like = MakeFont(0)) {
    Font large = like;
    large.height_px = -1000;
    const bool hasCells = Measure(large, "i").width_px == 500 && Measure(large, "W").width_px == 500;
    return hasCells ? (em + 1) / 2 * 2 : em;
}

TEST(TextMeasure, WideCharacterIsAsWideAsTheEmOfANegativeHeightOrAsTwoNarrowOnes) {
    for (const std::int32_t em : {1, 9, 12, 13, 16, 40, 333}) {
        EXPECT_EQ(Measure(MakeFont(-em), *EncodeCp932("国")).width_px, WideOf(em));
    }
}

TEST(TextMeasure, WideCharactersStayInStepWithNarrowOnesWhereTheFaceHasCells) {
    if (WideOf(9) == 9) GTEST_SKIP() << "the font has no cells";
    for (const std::int32_t em : {9, 10, 13, 15, 33}) {
        for (const std::int32_t width : {0, 7}) {
            Font font = MakeFont(-em);
            font.width_px = width;
            EXPECT_EQ(Measure(font, *EncodeCp932("国")).width_px, Measure(font, "il").width_px) << em << " " << width;
        }
    }
    EXPECT_EQ(Measure(MakeFont(-15), *EncodeCp932("東京")).width_px, 32);
}

TEST(TextMeasure, StrokesThatAreMadeBoldTakeAPixelMoreEach) {
    FontMatcher matcher;
    for (const std::string_view face : {"標準明朝", "ＭＳ Ｐ明朝", "no such face"}) {
        Font font = MakeFont(-15, face);
        const std::string text = *EncodeCp932("太い") + "Wi";
        const std::int32_t plain = Measure(font, text).width_px;
        font.weight = 700;
        const auto file = matcher.Match(std::string_view(font.faceName.data(), font.faceName.size()), 700, false);
        ASSERT_TRUE(file);
        if (!file->isBold) {
            EXPECT_EQ(Measure(font, text).width_px, plain + 4) << face;
        }
    }
}

TEST(TextMeasure, HeightZeroIsAnEmOfTwelve) { EXPECT_EQ(Measure(MakeFont(0), *EncodeCp932("国")).width_px, 12); }

TEST(TextMeasure, CellIsAscentAndDescentOfTheFontFileEachRounded) {
    FontMatcher matcher;
    const auto file = matcher.Match(MakeFont(-12).faceName.data(), 400, false);
    ASSERT_TRUE(file);
    const auto heights = ReadHeights(file->path);
    if (!heights) GTEST_SKIP() << "the font is one of a collection";
    for (const std::int32_t em : {9, 12, 15, 100}) {
        const auto expected = std::lround(heights->ascent_em * em) + std::lround(heights->descent_em * em);
        EXPECT_EQ(Measure(MakeFont(-em), "A").height_px, expected);
    }
}

TEST(TextMeasure, PositiveHeightIsThatOfTheCell) {
    for (const std::int32_t height : {12, 30, 200}) EXPECT_NEAR(Measure(MakeFont(height), "A").height_px, height, 1);
}

TEST(TextMeasure, OfTheFontsForAPositiveHeightTheLargestIsTakenThatDoesNotExceedIt) {
    FontMatcher matcher;
    const auto file = matcher.Match(MakeFont(16).faceName.data(), 400, false);
    ASSERT_TRUE(file);
    const auto heights = ReadHeights(file->path);
    if (!heights) GTEST_SKIP() << "the font is one of a collection";
    const double cell_em = heights->ascent_em + heights->descent_em;
    for (std::int32_t height = 6; height < 60; ++height) {
        std::int32_t em = 1;
        while (std::lround((em + 1) * cell_em) <= height) ++em;
        // As near as another one is, though: half a pixel too low is not what was wanted either.
        const bool nextIsNearer = std::lround(height / cell_em) < em;
        EXPECT_EQ(Measure(MakeFont(height), *EncodeCp932("国")).width_px, WideOf(nextIsNearer ? em - 1 : em)) << height;
    }
}

TEST(TextMeasure, WidthIsTheSumOfTheCharacters) {
    const Font font = MakeFont(-13);
    std::int32_t sum = 0;
    for (const std::string_view part : {"A", "i", "W"}) sum += Measure(font, part).width_px;
    EXPECT_EQ(Measure(font, "AiW").width_px, sum);
    EXPECT_EQ(Measure(font, kJapanese).width_px, 5 * WideOf(13));
}

TEST(TextMeasure, EmptyTextHasTheHeightOfACellAndNoWidth) {
    const TextSize size = Measure(MakeFont(-12), "");
    EXPECT_EQ(size.width_px, 0);
    EXPECT_EQ(size.height_px, Measure(MakeFont(-12), "A").height_px);
}

TEST(TextMeasure, EscapementUnderlineAndStrikeOutChangeNothing) {
    Font font = MakeFont(-12);
    const TextSize plain = Measure(font, kJapanese);
    font.escapement_tenths = 450;
    font.underline = font.strikeOut = true;
    const TextSize turned = Measure(font, kJapanese);
    EXPECT_EQ(turned.width_px, plain.width_px);
    EXPECT_EQ(turned.height_px, plain.height_px);
}

TEST(TextMeasure, WidthAskedForStretchesTheCharactersAndKeepsTheHeight) {
    Font font = MakeFont(-100);
    const std::string text = kJapanese;
    const TextSize natural = Measure(font, text);
    font.width_px = 30;
    const TextSize slim = Measure(font, text);
    font.width_px = 60;
    const TextSize wide = Measure(font, text);
    EXPECT_NEAR(wide.width_px, 2 * slim.width_px, 5);
    EXPECT_EQ(slim.height_px, natural.height_px);
    font.width_px = -60;
    EXPECT_EQ(Measure(font, text).width_px, wide.width_px);
}

TEST(TextMeasure, FaceForVerticalLinesMeasuresAsTheFaceItself) {
    EXPECT_EQ(Measure(MakeFont(-14, "@ＭＳ ゴシック"), "Wii").width_px, Measure(MakeFont(-14, "ＭＳ ゴシック"), "Wii").width_px);
}

TEST(TextMeasure, BytesBehindAZeroInTheFaceNameDoNotCount) {
    Font font = MakeFont(-14);
    const TextSize clean = Measure(font, "Wii");
    font.faceName[20] = 'x';
    EXPECT_EQ(Measure(font, "Wii").width_px, clean.width_px);
}

TEST(TextMeasure, HeightsBeyondTwoThousandAreHeldToIt) {
    const TextSize most = Measure(MakeFont(-2000), *EncodeCp932("国"));
    EXPECT_EQ(most.width_px, 2000);
    for (const std::int32_t height : {-2001, -100000, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(Measure(MakeFont(height), *EncodeCp932("国")).width_px, 2000);
    }
    EXPECT_LE(Measure(MakeFont(std::numeric_limits<std::int32_t>::max()), "A").height_px, 2001);
}

TEST(TextMeasure, WidthsBeyondTwoThousandAreHeldToIt) {
    Font font = MakeFont(-20);
    font.width_px = 2000;
    const TextSize most = Measure(font, "ABC");
    for (const std::int32_t width : {2001, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        font.width_px = width;
        EXPECT_EQ(Measure(font, "ABC").width_px, most.width_px);
    }
}

TEST(TextMeasure, WidthOfAVeryLongTextSaturates) {
    std::string text;
    for (int i = 0; i < 1'100'000; ++i) text += "\x8D\x91";  // 国
    EXPECT_EQ(Measure(MakeFont(-2000), text).width_px, std::numeric_limits<std::int32_t>::max());
}

TEST(TextMeasure, ControlCharactersAreAsWideAsASpace) {
    const Font font = MakeFont(-16);
    EXPECT_EQ(Measure(font, "\r\n\t").width_px, 3 * Measure(font, " ").width_px);
}

TEST(TextMeasure, EveryWeightAndAnyNameHaveAWidth) {
    for (const std::int32_t weight : {-5, 0, 1, 400, 700, 1000, std::numeric_limits<std::int32_t>::max()}) {
        Font font = MakeFont(-16, "no such face");
        font.weight = weight;
        font.italic = true;
        const std::int32_t width = Measure(font, *EncodeCp932("国")).width_px;
        EXPECT_GE(width, 16);
        EXPECT_LE(width, weight >= 600 ? 17 : 16) << weight;
    }
}

TEST(TextMeasure, ThousandsOfFaceNamesAndSizesAreMeasuredAlike) {
    for (int i = 0; i < 3000; ++i) {
        Font font = MakeFont(-(1 + i % 50), "face " + std::to_string(i));
        ASSERT_EQ(Measure(font, *EncodeCp932("国")).width_px, WideOf(1 + i % 50, font));
    }
}

TEST(TextMeasure, WithoutFontsEachByteIsHalfAnEm) {
    TextPainter painter(FontMatcher::OfNoFonts());
    const TextSize size = painter.Measure(MakeFont(-20), "abcde");
    EXPECT_EQ(size.width_px, 50);
    EXPECT_EQ(size.height_px, 20);
    EXPECT_EQ(painter.Measure(MakeFont(0), "ab").width_px, 12);
}

TEST(TextMeasure, EachThreadHasItsOwnPainterAndTheSameMeasures) {
    const TextPainter* const here = &TextPainter::OfThread();
    const TextPainter* there = nullptr;
    std::int32_t width = 0;
    std::thread([&] {
        there = &TextPainter::OfThread();
        width = Measure(MakeFont(-17), kJapanese).width_px;
    }).join();
    EXPECT_NE(here, there);
    EXPECT_EQ(here, &TextPainter::OfThread());
    EXPECT_EQ(width, 5 * WideOf(17));
}

TEST(FontMatching, NamesOfMinchoAndGothicAndUnknownOnesGiveAFontWithJapanese) {
    FontMatcher matcher;
    for (const std::string_view name : {"標準明朝", "ＭＳ ゴシック", "MS Mincho", "no such face", ""}) {
        const auto file = matcher.Match(*EncodeCp932(name), 400, false);
        ASSERT_TRUE(file) << name;
        const FontLibrary library;
        const auto face = FontFace::Open(library, *file, 1);
        ASSERT_NE(face, nullptr) << name;
        EXPECT_NE(face->GlyphOf(u'国'), 0u) << name;
        EXPECT_NE(face->GlyphOf(u'あ'), 0u) << name;
    }
}

TEST(FontMatching, CharacterIsFoundInSomeFontAndNoFontHasANonCharacter) {
    FontMatcher matcher;
    EXPECT_TRUE(matcher.FileWith(u'国'));
    EXPECT_FALSE(matcher.FileWith(u'\uFFFF'));
    EXPECT_FALSE(FontMatcher::OfNoFonts().FileWith(u'A'));
    EXPECT_FALSE(FontMatcher::OfNoFonts().Match("MS Gothic", 400, false));
}

TEST(FontMatching, FileThatIsNoFontDoesNotOpen) {
    const FontLibrary library;
    EXPECT_EQ(FontFace::Open(library, {"no such file", 0, false, false}, 1), nullptr);
    EXPECT_EQ(FontFace::Open(library, {"/dev/null", 0, false, false}, 1), nullptr);
}

}  // namespace
}  // namespace orvane
