#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/qt/text_sheet.h"

namespace orvane {
namespace {

constexpr std::uint32_t kBaseline = 24;

std::int32_t WidthOf(const Font& font, std::string_view text) { return TextPainter::OfThread().Measure(font, text).width_px; }
std::int32_t HeightOf(const Font& font) { return TextPainter::OfThread().Measure(font, "").height_px; }

/// The rows from the cell's top down to the baseline, by where an opaque cell stands over an anchor on the baseline.
std::int32_t AscentOf(const Font& font) {
    TextSheet sheet(400, 400);
    sheet.Draw(MakeLook(font, BkMode::Opaque, kBaseline), 10, 200, kBlanks);
    return 200 - sheet.Box().top;
}

TEST(TextDraw, JapaneseTextGivesInkInEveryKindOfFace) {
    for (const std::string_view face : {"標準明朝", "ＭＳ ゴシック", "", "no such face", "DejaVu Sans", "@明朝"}) {
        TextSheet sheet(200, 40);
        sheet.Draw(MakeLook(MakeFont(-16, face)), 10, 10, kJapanese);
        EXPECT_GT(sheet.Count(), 100) << face;
    }
}

TEST(TextDraw, CharacterThatTheFaceDoesNotHaveComesFromAnother) {
    // The sign for missing characters would look the same for both.
    TextSheet first(40, 40);
    TextSheet second(40, 40);
    first.Draw(MakeLook(MakeFont(-20, "DejaVu Sans")), 5, 5, *EncodeCp932("国"));
    second.Draw(MakeLook(MakeFont(-20, "DejaVu Sans")), 5, 5, *EncodeCp932("森"));
    EXPECT_GT(first.Count(), 20);
    EXPECT_NE(first.Pixels(), second.Pixels());
}

struct Placed {
    std::uint32_t align;
    int across;  ///< 0 the anchor is at the left, 1 in the middle, 2 at the right
    int down;    ///< 0 at the top, 1 on the baseline, 2 at the bottom
};
constexpr Placed kPlaced[] = {{0, 0, 0},  {24, 0, 1}, {8, 0, 2},  {6, 1, 0}, {30, 1, 1},
                              {14, 1, 2}, {2, 2, 0},  {26, 2, 1}, {10, 2, 2}};

Rect CellAt(const Placed& placed, const Font& font, std::int32_t width, std::int32_t x, std::int32_t y) {
    const std::int32_t left = x - (placed.across == 0 ? 0 : placed.across == 1 ? width / 2 : width);
    const std::int32_t top = y - (placed.down == 0 ? 0 : placed.down == 1 ? AscentOf(font) : HeightOf(font));
    return {left, top, left + width, top + HeightOf(font)};
}

TEST(TextDraw, EachOfTheNineAlignmentsPutsTheCellOnItsSideOfTheAnchor) {
    const Font font = MakeFont(-16);
    for (const Placed& placed : kPlaced) {
        TextSheet sheet(300, 200);
        sheet.Draw(MakeLook(font, BkMode::Opaque, placed.align), 150, 100, kBlanks);
        EXPECT_EQ(sheet.Box(), CellAt(placed, font, 48, 150, 100)) << placed.align;
    }
}

TEST(TextDraw, InkStandsInTheCellInEachAlignment) {
    const Font font = MakeFont(-20);
    const std::string text = "H" + kJapanese + "H";
    for (const Placed& placed : kPlaced) {
        TextSheet sheet(400, 200);
        sheet.Draw(MakeLook(font, BkMode::Transparent, placed.align), 200, 100, text);
        const Rect cell = CellAt(placed, font, WidthOf(font, text), 200, 100);
        const Rect ink = sheet.Box();
        EXPECT_GE(ink.left, cell.left - 1) << placed.align;
        EXPECT_LE(ink.right, cell.right + 1) << placed.align;
        EXPECT_GE(ink.top, cell.top - 1) << placed.align;
        EXPECT_LE(ink.bottom, cell.bottom + 1) << placed.align;
        EXPECT_GT(ink.right - ink.left, WidthOf(font, text) * 3 / 4) << placed.align;
    }
}

TEST(TextDraw, CapitalsStandOnTheBaseline) {
    TextSheet sheet(200, 100);
    // Without serifs: those of a Japanese font may stand above the line.
    sheet.Draw(MakeLook(MakeFont(-30, "ゴシック"), BkMode::Transparent, kBaseline), 10, 60, "HEH");
    EXPECT_NEAR(sheet.Box().bottom, 60, 1);
    EXPECT_LT(sheet.Box().top, 60 - 15);
}

TEST(TextDraw, OtherAlignmentFlagsHaveNoEffect) {
    TextSheet plain(200, 60);
    TextSheet flagged(200, 60);
    plain.Draw(MakeLook(MakeFont(-16)), 20, 20, kJapanese);
    flagged.Draw(MakeLook(MakeFont(-16), BkMode::Transparent, 1 | 256), 20, 20, kJapanese);
    EXPECT_EQ(plain.Pixels(), flagged.Pixels());
}

TEST(TextDraw, QuarterTurnsTurnTheCellRoundTheAnchor) {
    Font font = MakeFont(-16);
    const std::int32_t h = HeightOf(font);
    const std::pair<std::int32_t, Rect> cases[] = {
        {900, {150, 100 - 48, 150 + h, 100}},        {1800, {150 - 48, 100 - h, 150, 100}},
        {2700, {150 - h, 100, 150, 100 + 48}},       {-900, {150 - h, 100, 150, 100 + 48}},
        {3600 + 900, {150, 100 - 48, 150 + h, 100}}, {-36000, {150, 100, 150 + 48, 100 + h}},
    };
    for (const auto& [angle, cell] : cases) {
        font.escapement_tenths = angle;
        TextSheet sheet(300, 200);
        sheet.Draw(MakeLook(font, BkMode::Opaque), 150, 100, kBlanks);
        EXPECT_EQ(sheet.Box(), cell) << angle;
    }
}

TEST(TextDraw, QuarterTurnTurnsTheInkPixelByPixel) {
    Font font = MakeFont(-16);
    TextSheet level(300, 300);
    level.Draw(MakeLook(font), 150, 150, kJapanese);
    font.escapement_tenths = 900;
    TextSheet turned(300, 300);
    turned.Draw(MakeLook(font), 150, 150, kJapanese);
    int compared = 0;
    level.ForEachInk([&](std::int32_t x, std::int32_t y) {
        // The pixel's square, turned counter-clockwise: what was right of the anchor is above it, what was below is right of it.
        ++compared;
        const int there = static_cast<int>(turned.At(150 + (y - 150), 150 - (x - 150) - 1) & 0xFF);
        EXPECT_NEAR(there, static_cast<int>(level.At(x, y) & 0xFF), 2);
    });
    EXPECT_GT(compared, 100);
}

TEST(TextDraw, InkOfATurnedTextStandsInItsTurnedCell) {
    Font font = MakeFont(-18);
    const double w = WidthOf(font, kJapanese);
    const double h = HeightOf(font);
    for (std::int32_t angle = 50; angle < 3600; angle += 333) {
        font.escapement_tenths = angle;
        TextSheet sheet(300, 300);
        sheet.Draw(MakeLook(font), 150, 150, kJapanese);
        const double c = std::cos(angle * std::numbers::pi / 1800);
        const double s = std::sin(angle * std::numbers::pi / 1800);
        double farthest = 0;
        sheet.ForEachInk([&](std::int32_t x, std::int32_t y) {
            const double dx = x + 0.5 - 150;
            const double dy = y + 0.5 - 150;
            const double along = dx * c - dy * s;
            const double down = dx * s + dy * c;
            EXPECT_TRUE(along > -2 && along < w + 2 && down > -2 && down < h + 2) << angle;
            farthest = (std::max)(farthest, along);
        });
        EXPECT_GT(farthest, w * 0.9) << angle;
    }
}

TEST(TextDraw, OpaqueBackgroundOfATurnedTextCoversTheTurnedCell) {
    Font font = MakeFont(-20);
    font.escapement_tenths = 300;
    TextSheet sheet(300, 300);
    sheet.Draw(MakeLook(font, BkMode::Opaque), 100, 200, kBlanks);
    const double c = std::cos(std::numbers::pi / 6);
    const double s = std::sin(std::numbers::pi / 6);
    for (std::int32_t y = 0; y < 300; ++y) {
        for (std::int32_t x = 0; x < 300; ++x) {
            const double along = (x + 0.5 - 100) * c - (y + 0.5 - 200) * s;
            const double down = (x + 0.5 - 100) * s + (y + 0.5 - 200) * c;
            const double inside = (std::min)((std::min)(along, 60 - along), (std::min)(down, HeightOf(font) - down));
            if (std::fabs(inside) < 0.01) continue;
            ASSERT_EQ(sheet.At(x, y), ToPixel(inside > 0 ? kCellColor : kPaper)) << x << ' ' << y;
        }
    }
}

TEST(TextDraw, OrientationHasNoPart) {
    Font font = MakeFont(-16);
    TextSheet plain(200, 60);
    plain.Draw(MakeLook(font), 20, 20, kJapanese);
    font.orientation_tenths = 900;
    TextSheet oriented(200, 60);
    oriented.Draw(MakeLook(font), 20, 20, kJapanese);
    EXPECT_EQ(plain.Pixels(), oriented.Pixels());
}

TEST(TextDraw, OpaqueBackgroundLeavesNothingOfWhatWasInTheCell) {
    const Font font = MakeFont(-16);
    TextSheet sheet(120, 40);
    sheet.Draw(MakeLook(font, BkMode::Opaque), 10, 10, kJapanese);
    for (std::int32_t y = 10; y < 10 + HeightOf(font); ++y) {
        for (std::int32_t x = 10; x < 10 + 80; ++x) EXPECT_EQ(sheet.At(x, y) & 0xFF, 0u);  // neither yellow nor black has blue
    }
}

TEST(TextDraw, TransparentBlanksDrawNothing) {
    TextSheet sheet(120, 40);
    sheet.Draw(MakeLook(MakeFont(-16)), 10, 10, kBlanks + " \r\n\t");
    EXPECT_EQ(sheet.Count(), 0);
}

TEST(TextDraw, UnderlineRunsBelowTheBaselineAlongTheWholeText) {
    Font font = MakeFont(-20);
    font.underline = true;
    TextSheet sheet(120, 60);
    sheet.Draw(MakeLook(font, BkMode::Transparent, kBaseline), 10, 30, kBlanks);
    const Rect bar = sheet.Box();
    EXPECT_EQ(bar.left, 10);
    EXPECT_EQ(bar.right, 70);
    EXPECT_GE(bar.top, 30);
    EXPECT_LE(bar.bottom, 30 + HeightOf(font) - AscentOf(font));
    EXPECT_EQ(sheet.Count(), (bar.right - bar.left) * (bar.bottom - bar.top));
}

TEST(TextDraw, StrikeOutRunsAboveTheBaselineAlongTheWholeText) {
    Font font = MakeFont(-20);
    font.strikeOut = true;
    TextSheet sheet(120, 60);
    sheet.Draw(MakeLook(font, BkMode::Transparent, kBaseline), 10, 30, kBlanks);
    const Rect bar = sheet.Box();
    EXPECT_EQ(bar.left, 10);
    EXPECT_EQ(bar.right, 70);
    EXPECT_LT(bar.bottom, 30);
    EXPECT_GT(bar.top, 30 - 15);
}

TEST(TextDraw, UnderlineTurnsWithTheText) {
    Font font = MakeFont(-20);
    font.underline = true;
    font.escapement_tenths = 900;
    TextSheet sheet(100, 120);
    sheet.Draw(MakeLook(font, BkMode::Transparent, kBaseline), 40, 100, kBlanks);
    const Rect bar = sheet.Box();
    EXPECT_EQ(bar.top, 40);
    EXPECT_EQ(bar.bottom, 100);
    EXPECT_GE(bar.left, 40);
    EXPECT_LE(bar.right - bar.left, 3);
    font.escapement_tenths = 450;
    TextSheet slant(120, 120);
    slant.Draw(MakeLook(font, BkMode::Transparent, kBaseline), 40, 100, kBlanks);
    const double run = 60 / std::numbers::sqrt2;
    EXPECT_NEAR(slant.Box().right - slant.Box().left, run, 4);
    EXPECT_NEAR(slant.Box().bottom - slant.Box().top, run, 4);
}

TEST(TextDraw, BoldHasMoreInk) {
    Font font = MakeFont(-16);
    TextSheet normal(120, 40);
    normal.Draw(MakeLook(font), 10, 10, kJapanese);
    font.weight = 700;
    TextSheet bold(120, 40);
    bold.Draw(MakeLook(font), 10, 10, kJapanese);
    EXPECT_GT(bold.Darkness(), normal.Darkness() * 1.15);
}

TEST(TextDraw, ItalicLeansToTheRight) {
    Font font = MakeFont(-60);
    const auto topOverBottom = [](const TextSheet& sheet) {
        const Rect box = sheet.Box();
        double sums[2] = {0, 0};
        int counts[2] = {0, 0};
        sheet.ForEachInk([&](std::int32_t x, std::int32_t y) {
            const int half = y < (box.top + box.bottom) / 2 ? 0 : 1;
            sums[half] += x;
            ++counts[half];
        });
        return sums[0] / counts[0] - sums[1] / counts[1];
    };
    TextSheet normal(120, 100);
    normal.Draw(MakeLook(font), 30, 10, "H");
    font.italic = true;
    TextSheet italic(120, 100);
    italic.Draw(MakeLook(font), 30, 10, "H");
    EXPECT_NEAR(topOverBottom(normal), 0, 1);
    EXPECT_GT(topOverBottom(italic), 2);
}

TEST(TextDraw, InkTakesTheTextColourAndTheFourthByteStays) {
    TextSheet sheet(60, 60);
    TextState look = MakeLook(MakeFont(-40));
    look.textColor = 0x332211;
    sheet.Draw(look, 5, 5, *EncodeCp932("■"));
    EXPECT_EQ(sheet.At(25, 25), 0xFF112233u);
    for (const Pixel p : sheet.Pixels()) EXPECT_EQ(p >> 24, 0xFFu);
}

TEST(TextDraw, EdgesAreGreyByTheirCoverage) {
    Font font = MakeFont(-100);
    font.escapement_tenths = 450;
    TextSheet sheet(200, 200);
    sheet.Draw(MakeLook(font), 20, 100, *EncodeCp932("■"));
    bool hasGrey = false;
    sheet.ForEachInk([&](std::int32_t x, std::int32_t y) {
        const Pixel p = sheet.At(x, y);
        EXPECT_EQ(p & 0xFF, p >> 8 & 0xFF);
        EXPECT_EQ(p & 0xFF, p >> 16 & 0xFF);
        hasGrey = hasGrey || ((p & 0xFF) > 64 && (p & 0xFF) < 192);
    });
    EXPECT_TRUE(hasGrey);
}

TEST(TextDraw, SecondTimeOutOfTheCacheLooksTheSame) {
    for (const std::int32_t angle : {0, 450, 900, 1234}) {
        Font font = MakeFont(-16);
        font.escapement_tenths = angle;
        TextSheet first(200, 200);
        TextSheet second(200, 200);
        first.Draw(MakeLook(font), 100, 100, kJapanese);
        second.Draw(MakeLook(font), 100, 100, kJapanese);
        EXPECT_EQ(first.Pixels(), second.Pixels()) << angle;
    }
}

TEST(TextDraw, LargeGlyphPastTheCacheLooksLikeASmallerOneScaled) {
    TextSheet large(500, 500);
    large.Draw(MakeLook(MakeFont(-400)), 20, 20, *EncodeCp932("国"));
    TextSheet cached(250, 250);
    cached.Draw(MakeLook(MakeFont(-200)), 10, 10, *EncodeCp932("国"));
    EXPECT_NEAR(large.Darkness() / 4, cached.Darkness(), cached.Darkness() * 0.03);
    EXPECT_NEAR(large.Box().left / 2.0, cached.Box().left, 2);
    EXPECT_NEAR(large.Box().bottom / 2.0, cached.Box().bottom, 2);
}

}  // namespace
}  // namespace orvane
