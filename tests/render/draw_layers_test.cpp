#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "render/layers.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DrawLayersTest : public testing::Test {
protected:
    std::int32_t AddLine(std::string_view code, std::int32_t index, Coordinates coordinates) {
        const std::int32_t layer = rig.AddLayer(code, kLayLine, index);
        rig.AddItem(code, coordinates);
        return layer;
    }
    std::vector<std::string> Polylines() { return rig.Verbs("Polyline"); }

    RenderRig rig;
};

TEST_F(DrawLayersTest, BlocksComeInIndexOrderSoThatTheSmallestKeyLiesOnTop) {
    AddLine("A", 1, {{10, 10}, {20, 10}});
    AddLine("B", 3, {{10, 20}, {20, 20}});
    AddLine("C", 2, {{10, 30}, {20, 30}});
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    EXPECT_THAT(Polylines(),
                ElementsAre("Polyline [(10,80) (20,80)]", "Polyline [(10,70) (20,70)]", "Polyline [(10,90) (20,90)]"));
}

TEST_F(DrawLayersTest, LinesAndPolygonsGoToTheirRoutines) {
    AddLine("L", 2, {{10, 10}, {20, 10}});
    rig.AddLayer("P", kLayPolygon, 1);
    rig.AddItem("P", {{10, 10}, {40, 10}, {40, 40}, {10, 10}});
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    const std::vector<std::string> verbs = rig.Verbs("Poly");
    EXPECT_THAT(verbs, ElementsAre("Polyline [(10,90) (20,90)]", "PolyPolygon [(10,90) (40,90) (40,60) (10,90)] [4]"));
}

/// What a block of one item of a layer type draws, its item with the label "x".
struct TypeDrawing {
    std::int32_t layType;
    std::uint8_t imgMode;
    std::string verb;      ///< that only this type's routine draws here
    std::size_t labelCnt;  ///< texts "x"; a text layer writes its own
};

TEST_F(DrawLayersTest, EachTypeGoesToItsRoutineAndAllButTextsAndMeshesToTheLabels) {
    const TypeDrawing kTypes[] = {
        {kLayPoint, 0, "Polygon [(0,80) (0,100) (20,100) (20,80)]", 1},
        {kLayPoint, 1, "LoadImage \"a.bmp\" bitmap#0", 1},
        {kLayLine, 0, "Polyline [(10,90) (20,80)]", 1},
        {kLayPolygon, 0, "PolyPolygon [] []", 1},
        {kLayCircle, 0, "Ellipse 6 86 14 94", 1},
        {kLayText, 0, "GetTextExtentPoint32 \"x\"", 1},
        {kLayEllipse, 0, "Ellipse 10 90 20 80", 1},
        {kLayMesh, 0, "", 0},
    };
    for (const TypeDrawing& type : kTypes) {
        RenderRig one;
        one.store.DigStrVisible = 1;
        one.AddLayer("A", type.layType);
        one.Layer(0).pntType = 1;
        one.Layer(0).imgMode = type.imgMode;
        one.Layer(0).imgfname.Set("a.bmp");
        one.AddItem("A", {{10, 10}, {20, 20}});
        one.Item(0, 0).pnts.Change()[0].z = 4;
        ASSERT_TRUE(one.store.SetDigDatString("A", RenderRig::kMesh, 1, 10, 10, "x"));
        one.Block(0).inView = 1;
        EXPECT_TRUE(DrawLayers(one.store, one.frame));
        const std::vector<std::string> verbs = one.Verbs();
        if (!type.verb.empty()) {
            EXPECT_THAT(verbs, testing::Contains(type.verb)) << type.layType;
        }
        EXPECT_EQ(static_cast<std::size_t>(std::count(verbs.begin(), verbs.end(), "TextOut 10 90 \"x\"")), type.labelCnt)
            << type.layType;
    }
}

TEST_F(DrawLayersTest, UnknownLayerTypeIsSkipped) {
    AddLine("L", 1, {{10, 10}, {20, 10}});
    for (const std::int32_t type : {0, 6, 7, 9, 11, -1}) {
        rig.Layer(0).layType = type;
        EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
        EXPECT_THAT(rig.Verbs(), IsEmpty());
    }
}

TEST_F(DrawLayersTest, OnlyExactlyOneInBothFlagsDraws) {
    AddLine("L", 1, {{10, 10}, {20, 10}});
    for (const int value : {0, 2, 255}) {
        const auto flag = static_cast<std::uint8_t>(value);
        rig.Layer(0).dspFlg = flag;
        EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
        EXPECT_THAT(rig.Verbs(), IsEmpty());
        rig.Layer(0).dspFlg = 1;
        rig.Block(0).inView = flag;
        EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
        EXPECT_THAT(rig.Verbs(), IsEmpty());
        rig.Block(0).inView = 1;
    }
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    EXPECT_EQ(Polylines().size(), 1u);
}

TEST_F(DrawLayersTest, ItemsOutsideOfTheSearchAreLeftOut) {
    AddLine("L", 1, {{10, 10}, {20, 10}});
    rig.Item(0, 0).clipFlg = 0;
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(rig.Item(0, 0).drawnFlg, kUntouched);
}

TEST_F(DrawLayersTest, StripsAreNormalised) {
    AddLine("L", 1, {{10, 10}, {20, 10}});
    rig.frame.stripA = rig.frame.stripB = {100, 100, 0, 0};
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    EXPECT_EQ(Polylines().size(), 1u);
}

TEST_F(DrawLayersTest, NegativeBlockNumberLeavesLaterLayersUndrawnWithTheirOldFlags) {
    AddLine("A", 3, {{10, 10}, {20, 10}});
    AddLine("B", 2, {{10, 20}, {20, 20}});
    AddLine("C", 1, {{10, 30}, {20, 30}});
    rig.Slot(1).block = -1;
    EXPECT_FALSE(DrawLayers(rig.store, rig.frame));
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(10,90) (20,90)]"));
    EXPECT_EQ(rig.Item(0, 0).drawnFlg, 1);
    EXPECT_EQ(rig.Item(2, 0).drawnFlg, kUntouched);
}

TEST_F(DrawLayersTest, SlotOutsideOfTheTablesEndsTheLoop) {
    AddLine("A", 3, {{10, 10}, {20, 10}});
    rig.Slot(0).block = 1;
    EXPECT_FALSE(DrawLayers(rig.store, rig.frame));
    rig.Slot(0) = {0, -1};
    EXPECT_FALSE(DrawLayers(rig.store, rig.frame));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(DrawLayersTest, EntryOfAnUnusedLayerRecordIsSkipped) {
    AddLine("A", 1, {{10, 10}, {20, 10}});
    rig.Slot(0).layer = 5;
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(DrawLayersTest, BeforeTheFirstInitItAnswersFalse) {
    CDigMem store;
    EXPECT_FALSE(DrawLayers(store, rig.frame));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

/// Draws the same store once more, on another context, while a line is being drawn.
class ReenteringContext : public RecordContext {
public:
    ReenteringContext(RenderRig& rig, DeviceContext& other) : RecordContext(rig.list, "dc"), rig_(rig), other_(other) {}
    void Polyline(const Point* pts, std::int32_t count) override {
        if (!inside_) {
            inside_ = true;
            FrameTarget nested = rig_.frame;
            nested.dc = &other_;
            nested.x = -50;
            DrawLayers(rig_.store, nested);
            inside_ = false;
        }
        RecordContext::Polyline(pts, count);
    }

private:
    RenderRig& rig_;
    DeviceContext& other_;
    bool inside_ = false;
};

TEST_F(DrawLayersTest, FrameInsideOfAFrameLeavesThePointsOfTheOuterOneAlone) {
    AddLine("A", 1, {{10, 10}, {20, 10}});
    RecordContext other(nullptr);
    ReenteringContext dc(rig, other);
    rig.frame.dc = &dc;
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(10,90) (20,90)]"));
}

TEST_F(DrawLayersTest, FrameTakesItsMemoryOnceAndNotPerItem) {
    AddLine("A", 1, {{10, 10}, {20, 10}});
    for (int i = 0; i < 200; ++i) rig.AddItem("A", {{10, 10}, {20, 10.0 + i / 10}});
    rig.Verbs();
    ArrayFaults::Clear();
    EXPECT_TRUE(DrawLayers(rig.store, rig.frame));
    EXPECT_LE(ArrayFaults::Count(), 1);
    EXPECT_EQ(Polylines().size(), 201u);
}

}  // namespace
}  // namespace orvane
