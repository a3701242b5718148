#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "render/shapes.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kMask[] = "SetROP2 9";
constexpr char kTransparent[] = "SetBkMode 1";

class LabelPassTest : public testing::Test {
protected:
    LabelPassTest() {
        rig.AddLayer("P", kLayPoint);
        rig.store.DigStrVisible = 1;
    }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    DigStr& AddLabel(std::string_view text) {
        rig.AddItem("P", {{10, 10}});
        DigDat& dat = rig.Item(0, rig.Block(0).dats.size() - 1);
        dat.drawnFlg = 1;
        dat.str = std::make_unique<DigStr>();
        dat.str->x = 50;
        dat.str->y = 60;
        dat.str->text = text;
        return *dat.str;
    }
    std::vector<std::string> Draw(std::string_view verb = "", bool honourClip = true) {
        DrawLabels(rig.store, rig.frame, 0, 0, honourClip, rig.scratch);
        return rig.Verbs(verb);
    }

    RenderRig rig;
};

TEST_F(LabelPassTest, WritesEachTextInMaskModeWithoutABackground) {
    AddLabel("a");
    AddLabel("b").y = 50;
    EXPECT_THAT(Draw(), ElementsAre(kMask, kTransparent, "TextOut 50 40 \"a\"", kMask, kTransparent, "TextOut 50 50 \"b\""));
}

TEST_F(LabelPassTest, NothingOfTheStringsLookApplies) {
    DigStr& str = AddLabel("a");
    str.style = 7;
    str.fill = 1;
    str.pos = 8;
    str.angle = 30;
    str.fcolor = 0x0000FF;
    str.fntname = "MS";
    EXPECT_THAT(Draw(), ElementsAre(kMask, kTransparent, "TextOut 50 40 \"a\""));
}

TEST_F(LabelPassTest, SwitchedOffItHidesTheLabels) {
    AddLabel("a");
    rig.store.DigStrVisible = 0;
    EXPECT_THAT(Draw(), IsEmpty());
    rig.store.DigStrVisible = -1;
    EXPECT_EQ(Draw().size(), 3u) << "any value but 0 shows them";
}

TEST_F(LabelPassTest, SwitchHasNoEffectOnTextLayers) {
    const std::int32_t texts = rig.AddLayer("T", kLayText);
    rig.AddItem("T", {});
    rig.Item(texts, 0).str = std::make_unique<DigStr>();
    rig.Item(texts, 0).str->text = "abc";
    rig.Item(texts, 0).str->y = 50;
    for (const std::int32_t visible : {0, 1}) {
        rig.store.DigStrVisible = visible;
        DrawTextBlock(rig.store, rig.frame, texts, texts, true, rig.scratch);
        EXPECT_EQ(rig.Verbs("TextOut").size(), 1u);
    }
}

TEST_F(LabelPassTest, ItemsThatWereNotDrawnHaveNoLabel) {
    AddLabel("a");
    AddLabel("b");
    rig.AddItem("P", {{10, 10}});  // without a text
    Item(0).drawnFlg = 0;
    EXPECT_THAT(Draw("TextOut"), ElementsAre("TextOut 50 40 \"b\""));
    EXPECT_EQ(Item(0).drawnFlg, 0);
    EXPECT_EQ(Item(1).drawnFlg, 1);
}

TEST_F(LabelPassTest, GateIsThatOfFigures) {
    for (const char* text : {"a", "b", "c", "d"}) AddLabel(text);
    Item(0).clipFlg = 0;
    Item(1).lineTag = -1;
    Item(2).lineTag = 3;
    rig.store.LineTagMode = 1;
    EXPECT_THAT(Draw("TextOut"), ElementsAre("TextOut 50 40 \"d\""));
    rig.store.LineTagMode = 0;
    EXPECT_EQ(Draw("TextOut").size(), 2u);
    EXPECT_EQ(Draw("TextOut", false).size(), 3u);
}

TEST_F(LabelPassTest, OnlyASubLayerThatIsSwitchedOffHidesTheLabel) {
    SubLayDef& sub = rig.AddSubLayer(0, 4);
    AddLabel("a");
    AddLabel("b");
    Item(0).subLayNo = 4;
    Item(1).subLayNo = 5;
    EXPECT_EQ(Draw("TextOut").size(), 2u);
    sub.dspFlg = 0;
    EXPECT_THAT(Draw("TextOut"), ElementsAre("TextOut 50 40 \"b\""));
    sub.dspFlg = 2;
    EXPECT_EQ(Draw("TextOut").size(), 2u);
}

TEST_F(LabelPassTest, LabelsOffTheClientAreaAreWrittenAllTheSame) {
    AddLabel("a").x = 900;
    EXPECT_THAT(Draw("TextOut"), ElementsAre("TextOut 900 40 \"a\"")) << "the item was drawn, so its label is";
}

TEST_F(LabelPassTest, EmptyTextIsWrittenToo) {
    AddLabel("");
    EXPECT_THAT(Draw(), ElementsAre(kMask, kTransparent, "TextOut 50 40 \"\""));
}

TEST_F(LabelPassTest, PendingOffsetAndTurnPlaceTheAnchor) {
    DigStr& str = AddLabel("a");
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    EXPECT_THAT(Draw("TextOut"), ElementsAre("TextOut 51 39 \"a\""));
    rig.frame.pendX = rig.frame.pendY = 0;
    // A quarter turn carries world (-40, 50) to (50, 40).
    rig.store.view.Rotate = 90;
    rig.frame.y = 0;
    str.x = -40;
    str.y = -50;
    EXPECT_THAT(Draw("TextOut"), ElementsAre("TextOut 50 40 \"a\""));
}

TEST_F(LabelPassTest, LabelsComeOutInTheAlignmentThatATextBlockLeft) {
    const std::int32_t texts = rig.AddLayer("T", kLayText);
    rig.AddItem("T", {});
    rig.Item(texts, 0).str = std::make_unique<DigStr>();
    rig.Item(texts, 0).str->pos = 8;
    AddLabel("a");
    DrawTextBlock(rig.store, rig.frame, texts, texts, true, rig.scratch);
    Draw();
    EXPECT_EQ(rig.dc.SetTextAlign(TextAlign::LeftTop), TextAlign::RightBottom);
    EXPECT_EQ(rig.dc.SelectFont(Font{}), Font{}) << "its font went back";
}

}  // namespace
}  // namespace orvane
