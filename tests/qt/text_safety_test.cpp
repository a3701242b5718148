#include <gtest/gtest.h>

#include <limits>

#include "tests/qt/text_sheet.h"

namespace orvane {
namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kAngles[] = {0, 900, 1800, 2700, 123, 3599, -1, kMost, kLeast};
constexpr std::uint32_t kAligns[] = {0, 24, 8, 6, 30, 14, 2, 26, 10, 0xFFFFFFFF};

TEST(TextClip, PixelsOutsideTheClipStayAndThoseInsideAreAsWithoutClip) {
    const std::vector<Rect> pieces = {{30, 10, 45, 20}, {60, 10, 75, 20}, {20, 22, 90, 26}};
    for (const std::int32_t height : {-16, -400}) {  // out of the cache, and past it
        for (const std::int32_t angle : {0, 200}) {
            Font font = MakeFont(height);
            font.escapement_tenths = angle;
            font.underline = font.strikeOut = true;
            TextSheet whole(120, 40);
            TextSheet clipped(120, 40);
            clipped.Clip(pieces);
            whole.Draw(MakeLook(font, BkMode::Opaque), 10, 10, kJapanese);
            clipped.Draw(MakeLook(font, BkMode::Opaque), 10, 10, kJapanese);
            for (std::int32_t y = 0; y < 40; ++y) {
                for (std::int32_t x = 0; x < 120; ++x) {
                    bool isInside = false;
                    for (const Rect& r : pieces)
                        isInside = isInside || (x >= r.left && x < r.right && y >= r.top && y < r.bottom);
                    ASSERT_EQ(clipped.At(x, y), isInside ? whole.At(x, y) : ToPixel(kPaper)) << x << ' ' << y << ' ' << angle;
                }
            }
        }
    }
}

TEST(TextClip, TextThatCrossesEachEdgeIsCutThere) {
    TextSheet large(300, 300);
    large.Draw(MakeLook(MakeFont(-40), BkMode::Opaque), 60, 130, kJapanese);
    for (const auto& [dx, dy] : {std::pair{-80, -140}, {-80, -100}, {-150, -150}, {-90, -110}}) {
        TextSheet part(100, 60);
        part.Draw(MakeLook(MakeFont(-40), BkMode::Opaque), 60 + dx, 130 + dy, kJapanese);
        for (std::int32_t y = 0; y < 60; ++y) {
            for (std::int32_t x = 0; x < 100; ++x) ASSERT_EQ(part.At(x, y), large.At(x - dx, y - dy));
        }
    }
}

TEST(TextClip, EmptyClipDrawsNothing) {
    TextSheet sheet(40, 40);
    sheet.Clip({});
    sheet.Draw(MakeLook(MakeFont(-16), BkMode::Opaque), 10, 10, kJapanese);
    EXPECT_EQ(sheet.Count(), 0);
    const PixelSurface none;
    TextPainter::OfThread().Draw(none, ClipArea{}, MakeLook(MakeFont(-16)), 0, 0, kJapanese);
}

TEST(TextSafety, AnchorsAtTheEndsOfTheNumbersDrawNothing) {
    TextSheet sheet(40, 40);
    for (const std::int32_t x : {kLeast, kMost, 20}) {
        for (const std::int32_t y : {kLeast, kMost, 20}) {
            if (x == 20 && y == 20) continue;
            for (const std::int32_t angle : kAngles) {
                for (const std::uint32_t align : kAligns) {
                    Font font = MakeFont(-16);
                    font.escapement_tenths = angle;
                    font.underline = font.strikeOut = true;
                    sheet.Draw(MakeLook(font, BkMode::Opaque, align), x, y, kJapanese);
                }
            }
        }
    }
    EXPECT_EQ(sheet.Count(), 0);
}

TEST(TextSafety, HugeSizesDrawTheirPartInsideTheClip) {
    for (const std::int32_t height : {-2000, kLeast, kMost}) {
        for (const std::int32_t width : {0, 1, kMost}) {
            for (const std::int32_t angle : {0, 900, 123}) {
                Font font = MakeFont(height);
                font.width_px = width;
                font.escapement_tenths = angle;
                font.weight = 900;
                font.italic = font.underline = font.strikeOut = true;
                TextSheet sheet(60, 60);
                sheet.Draw(MakeLook(font, BkMode::Opaque), 10, 50, kJapanese);
                EXPECT_GT(sheet.Count(), 0) << height << ' ' << width << ' ' << angle;
            }
        }
    }
}

TEST(TextSafety, LongTextShowsItsStartWhenAnchoredLeftAndItsEndWhenAnchoredRight) {
    std::string body;
    for (int i = 0; i < 200'000; ++i) body += *EncodeCp932("国");
    const std::string text = kJapanese + body + kJapanese;
    const std::string start = kJapanese + body.substr(0, 80);
    const std::string end = body.substr(0, 80) + kJapanese;
    for (const std::int32_t angle : {0, 300}) {
        Font font = MakeFont(-16);
        font.escapement_tenths = angle;
        TextSheet left(200, 200);
        TextSheet leftShort(200, 200);
        left.Draw(MakeLook(font), 20, 150, text);
        leftShort.Draw(MakeLook(font), 20, 150, start);
        EXPECT_GT(left.Count(), 300);
        EXPECT_EQ(left.Pixels(), leftShort.Pixels());
        TextSheet right(200, 200);
        TextSheet rightShort(200, 200);
        right.Draw(MakeLook(font, BkMode::Transparent, 2), 180, 50, text);
        rightShort.Draw(MakeLook(font, BkMode::Transparent, 2), 180, 50, end);
        EXPECT_GT(right.Count(), 300);
        EXPECT_EQ(right.Pixels(), rightShort.Pixels());
    }
}

TEST(TextSafety, LongBackgroundsAndBarsEndAtTheClip) {
    std::string text;
    for (int i = 0; i < 200'000; ++i) text += *EncodeCp932("　");
    for (const std::uint32_t align : kAligns) {
        Font font = MakeFont(-2000);
        font.escapement_tenths = 1;
        font.underline = true;
        TextSheet sheet(60, 60);
        sheet.Draw(MakeLook(font, BkMode::Opaque, align), 30, 30, text);
        EXPECT_GT(sheet.Count(), 0) << align;
    }
}

TEST(TextSafety, EveryPairOfBytesIsDrawnOrLeftOut) {
    TextSheet sheet(40, 40);
    const Font font = MakeFont(-12);
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; second += first < 0x80 ? 51 : 3) {
            const char bytes[] = {static_cast<char>(first), static_cast<char>(second)};
            sheet.Draw(MakeLook(font), 10, 10, {bytes, 2});
        }
    }
    EXPECT_GT(sheet.Count(), 0);
}

TEST(TextSafety, HalfACharacterAtTheEndLeavesTheTextBeforeItAsItWas) {
    const Font font = MakeFont(-16);
    TextSheet whole(200, 40);
    TextSheet cut(200, 40);
    whole.Draw(MakeLook(font), 10, 10, kJapanese);
    cut.Draw(MakeLook(font), 10, 10, kJapanese + "\x8D");
    for (std::int32_t y = 0; y < 40; ++y) {
        for (std::int32_t x = 0; x < 10 + 5 * 16; ++x) ASSERT_EQ(cut.At(x, y), whole.At(x, y));
    }
    EXPECT_GT(TextPainter::OfThread().Measure(font, kJapanese + "\x8D").width_px, 80);
}

TEST(TextSafety, BytesThatDoNotDecodeShowAStandIn) {
    TextSheet sheet(60, 60);
    sheet.Draw(MakeLook(MakeFont(-30)), 10, 10, "\x81");
    EXPECT_GT(sheet.Count(), 10);
}

TEST(TextSafety, FaceNameCutThroughACharacterStillDraws) {
    Font font = MakeFont(-16);
    font.faceName.fill('\x95');
    TextSheet sheet(120, 40);
    sheet.Draw(MakeLook(font), 10, 10, kJapanese);
    EXPECT_GT(sheet.Count(), 100);
}

TEST(TextSafety, WithoutFontsNothingIsDrawn) {
    TextPainter painter(FontMatcher::OfNoFonts());
    TextSheet sheet(60, 60);
    Font font = MakeFont(-20);
    font.underline = true;
    painter.Draw(sheet.Surface(), sheet.Area(), MakeLook(font, BkMode::Opaque), 10, 10, kJapanese);
    EXPECT_EQ(sheet.Count(), 0);
}

TEST(TextSafety, CacheOfGlyphsStaysInItsBoundOverManySizesAndAngles) {
    TextPainter painter;
    TextSheet sheet(60, 60);
    for (std::int32_t i = 0; i < 900; ++i) {
        Font font = MakeFont(-(60 + i % 150));
        font.escapement_tenths = 7 * i;
        painter.Draw(sheet.Surface(), sheet.Area(), MakeLook(font), 30, 30, kJapanese);
        ASSERT_LE(painter.Cache().UsedBytes(), GlyphCache::kMaxBytes);
    }
    EXPECT_GT(painter.Cache().UsedBytes(), GlyphCache::kMaxBytes / 4);
}

TEST(GlyphCaching, WhatIsInUseStaysAndWhatIsNotGoes) {
    GlyphCache cache;
    const GlyphImage size{nullptr, -3, -4, 200, 300};
    cache.Add({1, 1}, size)[59999] = 77;
    cache.Add({2, 2}, size);
    for (std::uint64_t i = 100; i < 600; ++i) {
        if (!cache.Find({i, 0})) cache.Add({i, 0}, size);
        const auto kept = cache.Find({1, 1});
        ASSERT_TRUE(kept);
        ASSERT_EQ(kept->coverage[59999], 77);
        ASSERT_EQ(kept->left, -3);
        ASSERT_EQ(kept->height_px, 300);
        ASSERT_LE(cache.UsedBytes(), GlyphCache::kMaxBytes);
    }
    EXPECT_FALSE(cache.Find({2, 2}));
}

}  // namespace
}  // namespace orvane
