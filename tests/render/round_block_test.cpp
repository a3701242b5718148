#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "render/shapes.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNormalPen[] = "SelectObject pen(0x0 2 0x0000AA)";
constexpr char kNormalBrush[] = "SelectObject brush(0x00FF00)";
constexpr char kActiveBrush[] = "SelectObject brush(0x0000FF)";
constexpr char kOldPen[] = "SelectObject pen(0x0 1 0x000000)";
constexpr char kOldBrush[] = "SelectObject brush(0xFFFFFF)";
constexpr char kSubPen[] = "SelectObject pen(0x0 3 0x222222)";
constexpr char kSubBrush[] = "SelectObject brush(hatch 3 0x111111)";
constexpr char kCopy[] = "SetROP2 13";
constexpr char kMask[] = "SetROP2 9";

using DrawBlockFn = void (*)(CDigMem&, const FrameTarget&, std::int32_t, std::int32_t, bool, DrawScratch&);

/// Circles and ellipses differ in how an item becomes a box; both draw the box from (20, 20) to (60, 60) here.
struct Kind {
    const char* name;
    std::int32_t layType;
    DrawBlockFn draw;
};

const Kind kCircles{"Circle", kLayCircle, DrawCircleBlock};
const Kind kEllipses{"Ellipse", kLayEllipse, DrawEllipseBlock};
constexpr char kFigure[] = "Ellipse 20 20 60 60";

/// One green layer with a dark red outline of two pixels.
class RoundRig : public testing::Test {
protected:
    explicit RoundRig(const Kind& of) : kind(of) {
        rig.AddLayer("R", kind.layType);
        LayerDef& layer = rig.Layer(0);
        layer.color = 0x00FF00;
        layer.color2 = 0x0000AA;
        layer.lineSize = 2;
        layer.outLine = 0;
    }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    void AddCircle(double x, double y, double radius) {
        rig.AddItem("R", {{x, y}});
        DigDat& dat = rig.Item(0, rig.Block(0).dats.size() - 1);
        dat.pnts.Change()[0].z = radius;
        dat.rect = {static_cast<std::int32_t>(x - radius), static_cast<std::int32_t>(y - radius),
                    static_cast<std::int32_t>(x + radius), static_cast<std::int32_t>(y + radius)};
    }
    void AddFigure() {
        if (kind.layType == kLayCircle) {
            AddCircle(40, 60, 20);
        } else {
            rig.AddItem("R", {{20, 80}, {60, 40}});
        }
    }
    /// A figure far off the client area.
    void AddFarFigure() {
        AddFigure();
        rig.Item(0, rig.Block(0).dats.size() - 1).rect = {900, 900, 940, 940};
    }
    SubLayDef& AddSub() {
        SubLayDef& sub = rig.AddSubLayer(0, 4);
        sub.color = 0x111111;
        sub.color2 = 0x222222;
        sub.lineType = 1;
        sub.lineSize = 3;
        sub.fillMode = 0;
        sub.pgnType = 1;
        return sub;
    }
    std::vector<std::string> Draw(bool honourClip = true) {
        kind.draw(rig.store, rig.frame, 0, 0, honourClip, rig.scratch);
        return rig.Verbs();
    }
    std::vector<std::string> Figures(bool honourClip = true) {
        kind.draw(rig.store, rig.frame, 0, 0, honourClip, rig.scratch);
        return rig.Verbs("Ellipse");
    }

    Kind kind;
    RenderRig rig;
};

class CircleBlockTest : public RoundRig {
protected:
    CircleBlockTest() : RoundRig(kCircles) {}
};

class EllipseBlockTest : public RoundRig {
protected:
    EllipseBlockTest() : RoundRig(kEllipses) {}
};

/// What holds for both.
class RoundBlockTest : public RoundRig, public testing::WithParamInterface<Kind> {
protected:
    RoundBlockTest() : RoundRig(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Round, RoundBlockTest, testing::Values(kCircles, kEllipses),
                         [](const auto& of) { return std::string(of.param.name); });

// --- Look ---------------------------------------------------------------------------------------------------------------------

TEST_P(RoundBlockTest, FilledWithOutlineVerbByVerb) {
    AddFigure();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kFigure, "EndPath", "StrokeAndFillPath",
                                    kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_P(RoundBlockTest, BlockWithoutItemsSelectsItsToolsAndPutsTheOldOnesBack) {
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, FilledWithoutOutline) {
    rig.Layer(0).outLine = 1;
    AddFigure();
    EXPECT_THAT(Draw(),
                ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kFigure, "EndPath", "FillPath", kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, HollowStrokesItsOutlineOnly) {
    rig.Layer(0).pgnType = 7;
    AddFigure();
    EXPECT_THAT(Draw(),
                ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kFigure, "EndPath", "StrokePath", kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, HollowWithoutOutlineShowsNothingUnlessActive) {
    rig.Layer(0).pgnType = 7;
    rig.Layer(0).outLine = 1;
    AddFigure();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1);
    Item(0).active = 1;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, kCopy, kActiveBrush, "BeginPath", kFigure, "EndPath",
                                    "FillPath", kNormalBrush, kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, ActiveItemIsFilledSolidAndKeepsItsOutline) {
    rig.Layer(0).pgnType = 4;
    rig.Layer(0).fillMode = 0;
    AddFigure();
    Item(0).active = 1;
    EXPECT_THAT(Draw(),
                ElementsAre(kNormalPen, "SelectObject brush(hatch 2 0x00FF00)", kMask, kCopy, kActiveBrush, "BeginPath", kFigure,
                            "EndPath", "StrokeAndFillPath", "SelectObject brush(hatch 2 0x00FF00)", kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, EveryFillModeButOneCombinesWithWhatLiesBelow) {
    AddFigure();
    for (const int fillMode : {0, 2, 255}) {
        rig.Layer(0).fillMode = static_cast<std::uint8_t>(fillMode);
        EXPECT_EQ(Draw()[2], kMask);
    }
}

TEST_P(RoundBlockTest, PatternNumbersOutOfRangeAreSolid) {
    for (const std::int32_t pgnType : {-1, 8, INT32_MAX}) {
        rig.Layer(0).pgnType = pgnType;
        EXPECT_EQ(Draw()[1], kNormalBrush);
    }
}

TEST_P(RoundBlockTest, LineTypesNoughtToFourAreThePlatformsStyles) {
    for (const std::int32_t lineType : {0, 1, 2, 3, 4}) {
        rig.Layer(0).lineType = lineType;
        EXPECT_EQ(Draw()[0], "SelectObject pen(0x" + std::to_string(lineType) + " 2 0x0000AA)");
    }
    for (const std::int32_t lineType : {-1, 5, 7, 8, INT32_MAX}) {
        rig.Layer(0).lineType = lineType;
        EXPECT_EQ(Draw()[0], kNormalPen) << lineType;
    }
}

TEST_P(RoundBlockTest, PenIsPlainWhateverTheLineTypeFileSays) {
    rig.AddLineType(1, 1, {8, 4});
    rig.Layer(0).lineType = 1;
    EXPECT_EQ(Draw()[0], "SelectObject pen(0x1 2 0x0000AA)");
    rig.Layer(0).lineType = 2;
    EXPECT_EQ(Draw()[0], "SelectObject pen(0x2 2 0x0000AA)") << "not solid for want of a record";
}

TEST_P(RoundBlockTest, PenWidthGrowsWithTheWholePartOfTheDpiRatio) {
    rig.store.view.DpiRatio = 2.9;
    AddSub();
    AddFigure();
    Item(0).subLayNo = 4;
    const std::vector<std::string> verbs = Draw();
    EXPECT_EQ(verbs[0], "SelectObject pen(0x0 4 0x0000AA)");
    EXPECT_EQ(verbs[2], "SelectObject pen(0x0 6 0x222222)");
    rig.Layer(0).lineSize = INT32_MAX;
    EXPECT_EQ(Draw()[0], "SelectObject pen(0x0 2147483647 0x0000AA)");
}

// --- Who is let through -------------------------------------------------------------------------------------------------------

TEST_P(RoundBlockTest, GateIsThatOfLines) {
    for (int i = 0; i < 4; ++i) AddFigure();
    Item(0).clipFlg = 0;
    Item(1).lineTag = -1;
    Item(2).lineTag = 3;
    rig.store.LineTagMode = 1;
    EXPECT_EQ(Figures().size(), 1u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(Item(i).drawnFlg, kUntouched) << i;
    EXPECT_EQ(Item(3).drawnFlg, 1);
    rig.store.LineTagMode = 0;
    EXPECT_EQ(Figures().size(), 2u);
    EXPECT_EQ(Figures(false).size(), 3u);
}

TEST_P(RoundBlockTest, ItemOffTheStripsLosesItsFlag) {
    AddFarFigure();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_P(RoundBlockTest, EitherStripShowsIt) {
    AddFigure();
    rig.frame.stripA = {0, 0, 10, 100};
    rig.frame.stripB = {0, 0, 200, 30};
    EXPECT_EQ(Figures().size(), 1u);
    rig.frame.stripB = {0, 0, 200, 10};
    EXPECT_THAT(Figures(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_P(RoundBlockTest, PendingOffsetShiftsTheFigure) {
    AddFigure();
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 21 19 61 59"));
}

// --- Sub layers ---------------------------------------------------------------------------------------------------------------

TEST_P(RoundBlockTest, SubLayerDrawsWithItsOwnLookInASolidPenAndPutsTheLayersBack) {
    AddSub();
    AddFigure();
    Item(0).subLayNo = 4;
    AddFigure();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kSubPen, kSubBrush, kMask, "BeginPath", kFigure, "EndPath",
                                    "StrokeAndFillPath", kNormalPen, kNormalBrush, kCopy, "BeginPath", kFigure, "EndPath",
                                    "StrokeAndFillPath", kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, SubLayerWithoutOutlineMakesNoPenAndPutsNoneBack) {
    AddSub().outLine = 1;
    AddFigure();
    Item(0).subLayNo = 4;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kSubBrush, kMask, "BeginPath", kFigure, "EndPath", "FillPath",
                                    kNormalBrush, kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, ItemBehindASubLayerSeesItsHollownessWithTheLayersBrush) {
    AddSub().pgnType = 7;
    AddFigure();
    Item(0).subLayNo = 4;
    AddFigure();
    const std::vector<std::string> verbs = Draw();
    ASSERT_EQ(verbs.size(), 18u);
    EXPECT_EQ(verbs[8], "StrokePath");
    EXPECT_EQ(verbs[10], kNormalBrush);
    EXPECT_EQ(verbs[15], "StrokePath");
}

TEST_P(RoundBlockTest, ActiveItemTakesTheActiveBrushAndTheSubLayersOutline) {
    AddSub();
    AddFigure();
    Item(0).subLayNo = 4;
    Item(0).active = 1;
    EXPECT_THAT(Draw(),
                ElementsAre(kNormalPen, kNormalBrush, kSubPen, kSubBrush, kMask, kCopy, kActiveBrush, "BeginPath", kFigure,
                            "EndPath", "StrokeAndFillPath", kNormalBrush, kNormalPen, kNormalBrush, kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, SubLayerThatIsNotShownHidesTheItemAndChangesNothingBehindIt) {
    SubLayDef& sub = AddSub();
    AddFigure();
    Item(0).subLayNo = 4;
    AddFigure();
    for (const int dspFlg : {0, 2}) {
        sub.dspFlg = static_cast<std::uint8_t>(dspFlg);
        Item(0).drawnFlg = 1;
        EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kFigure, "EndPath", "StrokeAndFillPath",
                                        kOldBrush, kOldPen));
        EXPECT_EQ(Item(0).drawnFlg, 0);
    }
}

TEST_P(RoundBlockTest, UnknownSubLayerDrawsWithTheLayersAttributes) {
    AddSub();
    rig.AddSubLayer(0, -4).lineSize = 8;
    AddFigure();
    AddFigure();
    Item(0).subLayNo = 5;
    Item(1).subLayNo = -4;
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kFigure, "EndPath", "StrokeAndFillPath", kCopy,
                                    "BeginPath", kFigure, "EndPath", "StrokeAndFillPath", kOldBrush, kOldPen));
}

TEST_P(RoundBlockTest, UnknownPatternOfASubLayerIsSolid) {
    AddSub().pgnType = 8;
    AddFigure();
    Item(0).subLayNo = 4;
    EXPECT_EQ(Draw()[3], "SelectObject brush(0x111111)");
}

TEST_F(CircleBlockTest, CircleOffTheStripsLeavesItsSubLayersLookToTheItemsBehind) {
    AddSub().outLine = 1;
    AddFarFigure();
    Item(0).subLayNo = 4;
    AddFigure();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kSubBrush, kMask, "BeginPath", kFigure, "EndPath", "FillPath",
                                    kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 0);
    EXPECT_EQ(Item(1).drawnFlg, 1);
}

TEST_F(EllipseBlockTest, EllipseOffTheStripsLooksAtNoSubLayer) {
    AddSub().outLine = 1;
    AddFarFigure();
    Item(0).subLayNo = 4;
    AddFigure();
    EXPECT_THAT(Draw(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "BeginPath", kFigure, "EndPath", "StrokeAndFillPath",
                                    kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

// --- Circles ------------------------------------------------------------------------------------------------------------------

TEST_F(CircleBlockTest, ScaleXAloneStretchesTheRadius) {
    rig.store.view.ScaleX = 2;
    AddFigure();
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 40 0 120 80")) << "centre (80, 40), twice the radius in both directions";
    rig.store.view.ScaleX = 1;
    rig.store.view.ScaleY = 2;
    rig.frame.y = -200;
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 20 60 60 100")) << "centre (40, 80), the same radius";
}

TEST_F(CircleBlockTest, RadiusIsRoundedByAddingAHalf) {
    AddCircle(40, 60, 19.5);
    AddCircle(40, 60, 19.4);
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 20 20 60 60", "Ellipse 21 21 59 59"));
}

TEST_F(CircleBlockTest, TurnMovesTheCentre) {
    // A quarter turn carries world (x, y) to (y, -x): map (-50, -40), world (-50, 40), comes to (40, 50).
    rig.store.view.Rotate = 90;
    rig.frame.y = 0;
    AddCircle(-50, -40, 10);
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 30 40 50 60"));
}

TEST_F(CircleBlockTest, BlockOriginMovesTheCentre) {
    const std::int32_t moved = rig.AddLayer("M", kLayCircle, 1, 1000, -500);
    rig.AddItem("M", {{10, 20}});
    rig.Item(moved, 0).pnts.Change()[0].z = 5;
    rig.frame.x = 990;
    rig.frame.y = 400;
    DrawCircleBlock(rig.store, rig.frame, moved, moved, true, rig.scratch);
    EXPECT_THAT(rig.Verbs("Ellipse"), ElementsAre("Ellipse 15 75 25 85"));
}

TEST_F(CircleBlockTest, CircleWithoutPointsKeepsItsFlagEvenOffTheStrips) {
    rig.AddItem("R", {});
    rig.AddItem("R", {});
    Item(0).rect = {0, 0, 10, 10};
    Item(1).rect = {900, 900, 910, 910};
    EXPECT_THAT(Figures(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, kUntouched);
}

TEST_F(CircleBlockTest, NegativeRadiusTurnsTheBoxAround) {
    AddCircle(40, 60, 20);
    Item(0).pnts.Change()[0].z = -20;
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 59 59 21 21")) << "-20 + 0.5 is cut to -19";
}

TEST_F(CircleBlockTest, RadiusWithoutBoundIsHeldTo32Bits) {
    AddCircle(40, 60, 20);
    Item(0).pnts.Change()[0].z = INFINITY;
    EXPECT_THAT(Figures(), ElementsAre("Ellipse -2147483607 -2147483607 2147483647 2147483647"));
    Item(0).pnts.Change()[0].z = -INFINITY;
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 2147483647 2147483647 -2147483608 -2147483608"));
    Item(0).pnts.Change()[0] = {std::nan(""), 1e300, std::nan("")};
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 0 -2147483648 0 -2147483648"));
}

// --- Ellipses -----------------------------------------------------------------------------------------------------------------

TEST_F(EllipseBlockTest, EllipseOfFewerThanTwoPointsDrawsNothingAndKeepsItsFlag) {
    rig.AddItem("R", {});
    rig.AddItem("R", {{20, 80}});
    Item(0).rect = {0, 0, 10, 10};
    EXPECT_THAT(Figures(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, kUntouched);
}

TEST_F(EllipseBlockTest, PointsBehindTheSecondAreIgnored) {
    rig.AddItem("R", {{20, 80}, {60, 40}, {100, 10}});
    EXPECT_THAT(Figures(), ElementsAre(kFigure));
}

TEST_F(EllipseBlockTest, CornersComeInTheOrderOfThePointsAndEachScaleStretchesItsOwnDirection) {
    rig.store.view.ScaleX = 2;
    rig.AddItem("R", {{60, 40}, {20, 80}});
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 120 60 40 20"));
}

TEST_F(EllipseBlockTest, TurnMovesTheTwoCornersOnly) {
    // World (-50, 40) and (-60, 70) come to (40, 50) and (70, 60); the figure stays upright between them.
    rig.store.view.Rotate = 90;
    rig.frame.y = 0;
    rig.AddItem("R", {{-50, -40}, {-60, -70}});
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 40 50 70 60"));
}

TEST_F(EllipseBlockTest, NotANumberAndInfiniteCornersDrawWithoutHarm) {
    rig.AddItem("R", {{20, 80}, {60, 40}});
    Item(0).pnts.Change()[0] = {std::nan(""), INFINITY, 0};
    EXPECT_THAT(Figures(), ElementsAre("Ellipse 0 -2147483648 60 60"));
}

}  // namespace
}  // namespace orvane
