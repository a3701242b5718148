#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "render/shapes.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kCopy[] = "SetROP2 13";
constexpr char kMask[] = "SetROP2 9";
constexpr char kTransparent[] = "SetBkMode 1";
constexpr char kOpaque[] = "SetBkMode 2";
constexpr char kLeftTop[] = "SetTextAlign 0";
/// 9 points on a device of 96 dots per inch are 12 pixels.
constexpr char kMsFont[] = "SelectObject font(-12 0 0 0 400 128 \"MS\")";
constexpr char kOldFont[] = "SelectObject font(0 0 0 0 400 128 \"\")";

class TextBlockTest : public testing::Test {
protected:
    TextBlockTest() { rig.AddLayer("T", kLayText); }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    DigStr& Str(std::size_t i) { return *Item(i).str; }
    DigStr& AddText(std::string_view text, double x = 50, double y = 60, std::int32_t lineTag = 0) {
        rig.AddItem("T", {}, lineTag);
        DigDat& dat = rig.Item(0, rig.Block(0).dats.size() - 1);
        dat.str = std::make_unique<DigStr>();
        dat.str->x = x;
        dat.str->y = y;
        dat.str->text = text;
        dat.str->fntname = "MS";
        dat.str->size = 9;
        return *dat.str;
    }
    std::vector<std::string> Draw(std::string_view verb = "", bool honourClip = true) {
        DrawTextBlock(rig.store, rig.frame, 0, 0, honourClip, rig.scratch);
        return rig.Verbs(verb);
    }
    std::vector<std::string> Texts(bool honourClip = true) { return Draw("TextOut", honourClip); }
    /// The font that the first text is drawn in.
    std::string FirstFont() {
        const std::vector<std::string> fonts = Draw("SelectObject");
        return fonts.empty() ? "" : fonts[0].substr(std::string("SelectObject ").size());
    }

    RenderRig rig;
};

// --- One text -----------------------------------------------------------------------------------------------------------------

TEST_F(TextBlockTest, DrawsATextVerbByVerb) {
    DigStr& str = AddText("abc");
    str.fcolor = 0x0000FF;
    str.bcolor = 0x00FF00;
    EXPECT_THAT(Draw(), ElementsAre(kMask, kTransparent, kLeftTop, kMsFont, "GetTextExtentPoint32 \"abc\"",
                                    "SetTextColor 0x0000FF", "SetBkColor 0x00FF00", "TextOut 50 40 \"abc\"",
                                    "SetTextColor 0x000000", "SetBkColor 0xFFFFFF", kOldFont));
}

TEST_F(TextBlockTest, FilledTextPaintsItsBackground) {
    AddText("abc").fill = 1;
    const std::vector<std::string> verbs = Draw();
    EXPECT_EQ(verbs[0], kCopy);
    EXPECT_EQ(verbs[1], kOpaque);
    Str(0).fill = 2;
    EXPECT_EQ(Draw()[1], kOpaque) << "any value but 0";
}

TEST_F(TextBlockTest, HaloIsTheTextFourTimesInTheBackgroundColourBeneath) {
    DigStr& str = AddText("abc");
    str.fcolor = 0x0000FF;
    str.bcolor = 0x00FF00;
    str.style = 4;
    const std::vector<std::string> verbs = Draw();
    const std::vector<std::string> inside(verbs.begin() + 5, verbs.end() - 1);
    EXPECT_THAT(inside,
                ElementsAre("SetTextColor 0x0000FF", "SetBkColor 0x00FF00", "SetTextColor 0x00FF00", "TextOut 49 41 \"abc\"",
                            "TextOut 49 39 \"abc\"", "TextOut 51 41 \"abc\"", "TextOut 51 39 \"abc\"", "SetTextColor 0x0000FF",
                            "TextOut 50 40 \"abc\"", "SetTextColor 0x000000", "SetBkColor 0xFFFFFF"));
}

TEST_F(TextBlockTest, OldColoursOfTheContextComeBack) {
    rig.dc.SetTextColor(0x123456);
    rig.dc.SetBkColor(0x654321);
    rig.Verbs();
    AddText("abc");
    const std::vector<std::string> verbs = Draw();
    EXPECT_EQ(verbs[8], "SetTextColor 0x123456");
    EXPECT_EQ(verbs[9], "SetBkColor 0x654321");
}

TEST_F(TextBlockTest, EmptyBlockIssuesNoVerb) {
    EXPECT_THAT(Draw(), IsEmpty());
    rig.AddItem("T", {{50, 60}});
    EXPECT_THAT(Draw(), IsEmpty()) << "an item without a text";
}

TEST_F(TextBlockTest, ItemKeepsTheFlagThatTheSearchGaveIt) {
    AddText("abc");
    AddText("far", 900, 900);
    EXPECT_EQ(Texts().size(), 1u);
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, kUntouched);
}

TEST_F(TextBlockTest, AlignmentAndModesStayBehindInTheContext) {
    DigStr& str = AddText("abc");
    str.pos = 8;
    str.fill = 1;
    Draw();
    EXPECT_EQ(rig.dc.SetTextAlign(TextAlign::LeftTop), TextAlign::RightBottom);
    EXPECT_EQ(rig.dc.SetBkMode(BkMode::Transparent), BkMode::Opaque);
    EXPECT_EQ(rig.dc.SetROP2(Rop2::Nop), Rop2::CopyPen);
}

// --- Where
// ----------------------------------------------------------------------------------------------------------------------

TEST_F(TextBlockTest, BlockOriginPendingOffsetAndTurnPlaceTheAnchor) {
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    AddText("abc");
    EXPECT_THAT(Texts(), ElementsAre("TextOut 51 39 \"abc\""));
    rig.frame.pendX = rig.frame.pendY = 0;
    // A quarter turn carries world (50, -60), with the origin added (-40, 50), to (50, 40).
    rig.Block(0).GX = -90;
    rig.Block(0).GY = -110;
    rig.store.view.Rotate = 90;
    rig.frame.y = 0;
    EXPECT_THAT(Texts(), ElementsAre("TextOut 50 40 \"abc\""));
}

TEST_F(TextBlockTest, AnchorsOutOfAllBoundsDrawWithoutHarm) {
    DigStr& str = AddText("abc", 1e300, -1e300);
    str.style = 4;
    EXPECT_THAT(Texts(), IsEmpty());
    rig.frame.stripA = rig.frame.stripB = {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
    EXPECT_THAT(Texts(), ElementsAre("TextOut 2147483646 2147483647 \"abc\"", "TextOut 2147483646 2147483646 \"abc\"",
                                     "TextOut 2147483647 2147483647 \"abc\"", "TextOut 2147483647 2147483646 \"abc\"",
                                     "TextOut 2147483647 2147483647 \"abc\""));
    str.x = std::nan("");
    EXPECT_EQ(Texts().back(), "TextOut 0 2147483647 \"abc\"");
}

TEST_F(TextBlockTest, BoxReachesAWholeTextToEverySideOfTheAnchorWhateverTheAlignment) {
    // Three bytes of half an em of 12 pixels: 18 wide, 12 high; the box runs from (32, 28) to (68, 52).
    AddText("abc");
    const Rect meeting[] = {{20, 40, 33, 41}, {67, 40, 80, 41}, {50, 20, 51, 29}, {50, 51, 51, 60}};
    const Rect beside[] = {{20, 40, 32, 41}, {68, 40, 80, 41}, {50, 20, 51, 28}, {50, 52, 51, 60}};
    for (const std::int32_t pos : {0, 8}) {
        Str(0).pos = pos;
        for (int i = 0; i < 4; ++i) {
            rig.frame.stripA = rig.frame.stripB = meeting[i];
            EXPECT_EQ(Texts().size(), 1u) << i;
            rig.frame.stripA = rig.frame.stripB = beside[i];
            EXPECT_THAT(Texts(), IsEmpty()) << i;
        }
    }
}

TEST_F(TextBlockTest, TextOffTheStripsStillTakesItsFontAndIsMeasured) {
    AddText("far", 900, 900);
    EXPECT_THAT(Draw(), ElementsAre(kMask, kTransparent, kLeftTop, kMsFont, "GetTextExtentPoint32 \"far\"", kOldFont));
}

TEST_F(TextBlockTest, SecondStripCountsAsTheFirst) {
    AddText("abc");
    rig.frame.stripA = {0, 0, 10, 100};
    rig.frame.stripB = {40, 0, 60, 100};
    EXPECT_EQ(Texts().size(), 1u);
    rig.frame.stripB = rig.frame.stripA;
    EXPECT_THAT(Texts(), IsEmpty());
}

// --- Who is let through -------------------------------------------------------------------------------------------------------

TEST_F(TextBlockTest, ClipFlagAndLineTagMinusOneKeepATextOutAndLineTagModeDoesNot) {
    for (const char* text : {"a", "b", "c"}) AddText(text);
    Item(0).clipFlg = 0;
    Item(1).lineTag = -1;
    Item(2).lineTag = 7;
    rig.store.LineTagMode = 1;
    EXPECT_THAT(Texts(), ElementsAre("TextOut 50 40 \"c\""));
    EXPECT_THAT(Texts(false), ElementsAre("TextOut 50 40 \"a\"", "TextOut 50 40 \"c\""));
}

TEST_F(TextBlockTest, SubLayerOnlySwitchesATextOff) {
    SubLayDef& sub = rig.AddSubLayer(0, 4);
    sub.color = 0x123456;
    AddText("on");
    AddText("unknown");
    Item(0).subLayNo = 4;
    Item(1).subLayNo = 5;
    EXPECT_THAT(Texts(), ElementsAre("TextOut 50 40 \"on\"", "TextOut 50 40 \"unknown\""));
    sub.dspFlg = 0;
    EXPECT_THAT(Draw(), Contains("TextOut 50 40 \"unknown\""));
    EXPECT_THAT(Texts(), ElementsAre("TextOut 50 40 \"unknown\""));
    sub.dspFlg = 2;
    EXPECT_EQ(Texts().size(), 2u) << "only exactly 0 hides, unlike for figures";
}

TEST_F(TextBlockTest, SubLayerNumbersBelowOneAreNone) {
    rig.AddSubLayer(0, -4).dspFlg = 0;
    AddText("a");
    Item(0).subLayNo = -4;
    EXPECT_EQ(Texts().size(), 1u);
}

TEST_F(TextBlockTest, ActiveTextLooksAsAnyOther) {
    AddText("abc");
    const std::vector<std::string> verbs = Draw();
    Item(0).active = 1;
    EXPECT_EQ(Draw(), verbs);
}

// --- Font
// -----------------------------------------------------------------------------------------------------------------------

TEST_F(TextBlockTest, FontIsKeptWhileTextsAskForTheSameAndTheOldOneIsSelectedBetweenTwo) {
    AddText("a");
    AddText("b").fcolor = 0xFF0000;
    AddText("c").size = 18;
    AddText("d");
    EXPECT_THAT(Draw("SelectObject"),
                ElementsAre(kMsFont, kOldFont, "SelectObject font(-24 0 0 0 400 128 \"MS\")", kOldFont, kMsFont, kOldFont));
}

TEST_F(TextBlockTest, EveryAttributeOfTheFontTellsOneFromAnother) {
    AddText("a");
    AddText("b");
    const auto selects = [this] { return Draw("SelectObject").size(); };
    ASSERT_EQ(selects(), 2u);
    const DigStr plain = Str(1);
    using Change = void (*)(DigStr&);
    constexpr Change kChanges[] = {
        [](DigStr& s) { s.size = 10; },      [](DigStr& s) { s.style = 1; }, [](DigStr& s) { s.style = 2; },
        [](DigStr& s) { s.angle = 1; },      [](DigStr& s) { s.uline = 1; }, [](DigStr& s) { s.strike = 1; },
        [](DigStr& s) { s.fntname = "ms"; },
    };
    for (const Change change : kChanges) {
        Str(1) = plain;
        change(Str(1));
        EXPECT_EQ(selects(), 4u);
    }
    Str(1) = plain;
    Str(1).style = 4;
    Str(1).pos = 3;
    Str(1).fill = 1;
    EXPECT_EQ(selects(), 2u) << "halo, position and background are none of the font's";
}

TEST_F(TextBlockTest, StyleBitsAndFlagsOfTheFont) {
    DigStr& str = AddText("abc");
    str.style = 1;
    EXPECT_EQ(FirstFont(), "font(-12 0 0 0 700 128 \"MS\")");
    str.style = 2;
    EXPECT_EQ(FirstFont(), "font(-12 0 0 0 400 italic 128 \"MS\")");
    str.style = 4;
    EXPECT_EQ(FirstFont(), "font(-12 0 0 0 400 128 \"MS\")");
    str.style = 0;
    str.uline = 1;
    EXPECT_EQ(FirstFont(), "font(-12 0 0 0 400 underline 128 \"MS\")");
    str.uline = 0;
    str.strike = 1;
    EXPECT_EQ(FirstFont(), "font(-12 0 0 0 400 strikeOut 128 \"MS\")");
}

TEST_F(TextBlockTest, SizeIsInPointsOfTheTargetAndDoesNotFollowTheScale) {
    DigStr& str = AddText("abc");
    str.size = 10;
    EXPECT_EQ(FirstFont(), "font(-13 0 0 0 400 128 \"MS\")") << "13.33";
    rig.store.view.DpiRatio = 2;
    rig.frame.x = 25;
    rig.frame.y = -50;
    rig.store.view.Zoom = 2000;
    EXPECT_EQ(FirstFont(), "font(-13 0 0 0 400 128 \"MS\")");
    DeviceNumbers printer;
    printer.logPixelsX_dpi = 600;
    printer.logPixelsY_dpi = 300;
    rig.dc.SetDeviceNumbers(printer);
    EXPECT_EQ(FirstFont(), "font(-42 0 0 0 400 128 \"MS\")") << "41.67";
    str.size = -10;
    EXPECT_EQ(FirstFont(), "font(42 0 0 0 400 128 \"MS\")");
    str.size = INT32_MAX;
    EXPECT_EQ(FirstFont(), "font(1 0 0 0 400 128 \"MS\")") << "a size that does not fit is -1";
}

TEST_F(TextBlockTest, AngleIsInTenthsRoundedByAddingAHalf) {
    DigStr& str = AddText("abc");
    str.angle = 45.25;
    EXPECT_EQ(FirstFont(), "font(-12 0 453 453 400 128 \"MS\")");
    str.angle = -45.25;
    EXPECT_EQ(FirstFont(), "font(-12 0 -452 -452 400 128 \"MS\")");
    str.angle = 720;
    EXPECT_EQ(FirstFont(), "font(-12 0 7200 7200 400 128 \"MS\")");
    str.angle = std::nan("");
    EXPECT_EQ(FirstFont(), "font(-12 0 0 0 400 128 \"MS\")");
    str.angle = INFINITY;
    EXPECT_EQ(FirstFont(), "font(-12 0 2147483647 2147483647 400 128 \"MS\")");
}

TEST_F(TextBlockTest, TextWithoutAFontNameIsSetInTheDefaultFace) {
    AddText("abc").fntname = "";
    EXPECT_EQ(FirstFont(), "font(-12 0 0 0 400 128 \"\x95\x57\x8F\x80\x96\xBE\x92\xA9\")");
}

TEST_F(TextBlockTest, FontNameIsCutTo32Bytes) {
    AddText("a").fntname = std::string(32, 'x');
    AddText("b").fntname = std::string(32, 'x') + "yz";
    EXPECT_THAT(Draw("SelectObject"),
                ElementsAre("SelectObject font(-12 0 0 0 400 128 \"" + std::string(32, 'x') + "\")", kOldFont))
        << "what stands behind tells none apart";
}

// --- Position -----------------------------------------------------------------------------------------------------------------

TEST_F(TextBlockTest, PositionsAreTheAlignmentsOfTheTable) {
    const int values[] = {0, 24, 8, 6, 30, 14, 2, 26, 10};
    for (std::int32_t pos = 0; pos <= 8; ++pos) {
        EXPECT_EQ(static_cast<int>(TextAlignOf(pos)), values[pos]) << pos;
    }
    for (const std::int32_t pos : {-1, 9, INT32_MIN, INT32_MAX}) EXPECT_EQ(TextAlignOf(pos), TextAlign::LeftTop) << pos;
}

TEST_F(TextBlockTest, CentralPositionStandsOnTheBaseLine) {
    AddText("abc").pos = 4;
    EXPECT_EQ(Draw()[2], "SetTextAlign 30");
}

// --- Repeated texts -----------------------------------------------------------------------------------------------------------

TEST_F(TextBlockTest, OfEqualTextsInABlockTheFirstShowsWhenRepeatsAreCut) {
    for (const char* text : {"a", "b", "a", "A", "b", "a"}) AddText(text);
    EXPECT_EQ(Texts().size(), 6u) << "off at first";
    rig.store.CutSameString = 1;
    EXPECT_THAT(Texts(), ElementsAre("TextOut 50 40 \"a\"", "TextOut 50 40 \"b\"", "TextOut 50 40 \"A\""));
    EXPECT_EQ(Item(0).clipFlg, 1);
    EXPECT_EQ(Item(2).clipFlg, 0);
    EXPECT_EQ(Item(2).drawnFlg, kUntouched);
}

TEST_F(TextBlockTest, EqualTextsInDifferentBlocksBothShow) {
    rig.store.CutSameString = 1;
    AddText("a");
    const std::int32_t other = rig.AddLayer("U", kLayText);
    rig.AddItem("U", {});
    rig.Item(other, 0).str = std::make_unique<DigStr>(Str(0));
    EXPECT_EQ(Texts().size(), 1u);
    DrawTextBlock(rig.store, rig.frame, other, other, true, rig.scratch);
    EXPECT_EQ(rig.Verbs("TextOut").size(), 1u);
}

TEST_F(TextBlockTest, CutFlagOutlivesTheStrip) {
    rig.store.CutSameString = -1;
    AddText("a", 20, 50);
    AddText("a", 180, 50);
    EXPECT_EQ(Texts().size(), 1u);
    rig.frame.stripA = rig.frame.stripB = {150, 0, 200, 100};
    EXPECT_THAT(Texts(), IsEmpty()) << "no new search has brought it back";
    Item(1).clipFlg = 1;
    EXPECT_EQ(Texts().size(), 1u) << "the first is off the strip and cuts nothing";
}

TEST_F(TextBlockTest, ItemsThatAreNotWrittenCutNothing) {
    rig.store.CutSameString = 1;
    rig.AddSubLayer(0, 4).dspFlg = 0;
    AddText("a").text = "a";
    AddText("a", 50, 60, -1);
    AddText("a");
    AddText("a", 900, 900);
    AddText("a");
    Item(0).clipFlg = 0;
    Item(2).subLayNo = 4;
    EXPECT_EQ(Texts().size(), 1u);
    EXPECT_EQ(Item(1).clipFlg, 1);
    EXPECT_EQ(Item(4).clipFlg, 1);
}

TEST_F(TextBlockTest, HiddenItemsBehindLoseTheirFlagLikeOthers) {
    rig.store.CutSameString = 1;
    rig.AddSubLayer(0, 4).dspFlg = 0;
    AddText("a");
    AddText("a", 50, 60, -1);
    AddText("a");
    AddText("a", 900, 900);
    Item(2).subLayNo = 4;
    Texts();
    for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(Item(i).clipFlg, 0) << i;
}

TEST_F(TextBlockTest, WithoutTheClipHonouredRepeatsLoseTheirFlagAndShow) {
    rig.store.CutSameString = 1;
    AddText("a");
    AddText("a");
    EXPECT_EQ(Texts(false).size(), 2u);
    EXPECT_EQ(Item(1).clipFlg, 0);
}

/// What the cutting must come to, told the long way: of which items the text is written, and the flags left behind.
std::vector<std::size_t> CutTheLongWay(DigBlock& block, const LayerDef& layer, const Rect& strip, bool honourClip) {
    std::vector<std::size_t> written;
    for (std::size_t i = 0; i < block.dats.size(); ++i) {
        const DigDat& dat = block.dats[i];
        if (dat.str == nullptr || (honourClip && dat.clipFlg == 0) || dat.lineTag == -1) continue;
        const SubLayDef* sub = dat.subLayNo > 0 ? CDigMem::FindSubLay(layer, dat.subLayNo) : nullptr;
        if (sub != nullptr && sub->dspFlg == 0) continue;
        if (dat.str->x > strip.right + 100) continue;  // the far ones of these tests
        written.push_back(i);
        for (std::size_t j = i + 1; j < block.dats.size(); ++j) {
            DigDat& later = block.dats[j];
            if (later.clipFlg != 0 && later.str != nullptr && later.str->text == dat.str->text) later.clipFlg = 0;
        }
    }
    return written;
}

class CutSameStringTest : public TextBlockTest, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Memory, CutSameStringTest, testing::Bool(),
                         [](const auto& of) { return std::string(of.param ? "Enough" : "None"); });

TEST_P(CutSameStringTest, FlagsAndTextsAreThoseOfTheDoubleLoop) {
    std::mt19937 random(7);
    const auto below = [&random](std::uint32_t n) { return static_cast<std::int32_t>(random() % n); };
    rig.store.CutSameString = 1;
    rig.AddSubLayer(0, 1).dspFlg = 0;
    rig.AddSubLayer(0, 2);
    constexpr std::size_t kItems = 120;
    for (std::size_t i = 0; i < kItems; ++i) {
        AddText("");
        if (below(10) == 0) Item(i).str = nullptr;
    }
    for (int round = 0; round < 60; ++round) {
        const std::uint32_t words = 1 + static_cast<std::uint32_t>(round);
        for (std::size_t i = 0; i < kItems; ++i) {
            DigDat& dat = Item(i);
            dat.clipFlg = below(4) == 0 ? 0 : 1;
            dat.lineTag = below(8) == 0 ? -1 : 3;
            dat.subLayNo = below(6);
            if (dat.str == nullptr) continue;
            dat.str->text = "w" + std::to_string(below(words));
            dat.str->x = below(5) == 0 ? 900 : 50;
        }
        std::vector<std::uint8_t> before;
        for (std::size_t i = 0; i < kItems; ++i) before.push_back(Item(i).clipFlg);
        const bool honourClip = round % 2 == 0;
        const std::vector<std::size_t> written = CutTheLongWay(rig.Block(0), rig.Layer(0), rig.frame.stripA, honourClip);
        std::vector<std::uint8_t> expected;
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < kItems; ++i) expected.push_back(Item(i).clipFlg);
        for (const std::size_t i : written) texts.push_back("TextOut 50 40 \"" + Str(i).text + "\"");
        for (std::size_t i = 0; i < kItems; ++i) Item(i).clipFlg = before[i];

        // Without memory the set gives up at its first growth or, once it has some room, in the middle of a block.
        const bool enough = GetParam();
        if (!enough) ArrayFaults::FailFrom(1 + round % 2);
        DrawTextBlock(rig.store, rig.frame, 0, 0, honourClip, rig.scratch);
        ArrayFaults::Clear();
        EXPECT_EQ(rig.Verbs("TextOut"), texts) << round;
        for (std::size_t i = 0; i < kItems; ++i) EXPECT_EQ(Item(i).clipFlg, expected[i]) << round << ' ' << i;
        if (!enough) rig.scratch.Texts() = TextSet();
    }
}

TEST_F(TextBlockTest, HundredThousandTextsAreCutWithoutComparingEachWithEach) {
    // The long way would compare five thousand million pairs; this test ends because it is not taken.
    rig.store.CutSameString = 1;
    RecordContext silent(nullptr);
    rig.frame.dc = &silent;
    for (int i = 0; i < 100000; ++i) AddText(std::to_string(i % 50000));
    DrawTextBlock(rig.store, rig.frame, 0, 0, true, rig.scratch);
    EXPECT_EQ(Item(49999).clipFlg, 1);
    EXPECT_EQ(Item(50000).clipFlg, 0);
    EXPECT_EQ(Item(99999).clipFlg, 0);
    for (int i = 0; i < 50000; ++i) Item(static_cast<std::size_t>(i) + 50000).clipFlg = 1;
    ArrayFaults::Clear();
    DrawTextBlock(rig.store, rig.frame, 0, 0, true, rig.scratch);
    EXPECT_EQ(ArrayFaults::Count(), 0) << "a warm frame asks for no memory";
}

}  // namespace
}  // namespace orvane
