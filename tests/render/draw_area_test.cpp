#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

#include "platform/rect.h"
#include "render/layers.h"
#include "store/strips.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

/// The area is told in the frame of the view: y is map y negated.
constexpr Rect kArea{0, -100, 200, 0};

class DrawAreaTest : public testing::Test {
protected:
    /// A line layer of its own with one line, its block not in view.
    std::int32_t AddLine(std::string_view code, Coordinates coordinates, double GX = 0, double GY = 0) {
        const std::int32_t layer = rig.AddLayer(code, kLayLine, 1, GX, GY);
        rig.AddItem(code, coordinates);
        DigDat& dat = rig.Item(layer, 0);
        dat.clipFlg = dat.drawnFlg = kUntouched;
        rig.Block(layer).inView = kUntouched;
        return layer;
    }
    /// Whether a block of one short line at that map position is found.
    bool Finds(double x, double y, const Rect& area = kArea) {
        RenderRig fresh;
        fresh.store.view = rig.store.view;
        fresh.AddLayer("L", kLayLine);
        fresh.AddItem("L", {{x, y}, {x, y}});
        EXPECT_TRUE(SetDrawArea(fresh.store, area));
        EXPECT_LE(fresh.Block(0).inView, 1);
        return fresh.Block(0).inView == 1;
    }

    RenderRig rig;
};

TEST_F(DrawAreaTest, BlockWhollyInsideIsMarkedWithAllItsItems) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.AddItem("A", {{30, 30}, {40, 40}});
    rig.Item(0, 1).clipFlg = 0;
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, 1);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(rig.Item(0, i).clipFlg, 1);
        EXPECT_EQ(rig.Item(0, i).drawnFlg, 1);
    }
}

TEST_F(DrawAreaTest, WhollyInsideDoesNotLookAtTheItemsBoxes) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.Item(0, 0).rect = {5000, 5000, 5001, 5001};
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Item(0, 0).clipFlg, 1);
}

TEST_F(DrawAreaTest, BlockPartlyInsideIsMarkedItemByItem) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.AddItem("A", {{900, 900}, {950, 950}});
    rig.AddItem("A", {{190, 50}, {300, 60}});
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, 1);
    EXPECT_EQ(rig.Item(0, 0).clipFlg, 1);
    EXPECT_EQ(rig.Item(0, 1).clipFlg, 0);
    EXPECT_EQ(rig.Item(0, 2).clipFlg, 1);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(rig.Item(0, i).drawnFlg, 1) << "drawing itself takes it away again";
}

TEST_F(DrawAreaTest, BlockOutsideIsNotInViewAndItsItemsKeepTheirFlags) {
    AddLine("A", {{900, 900}, {950, 950}});
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, 0);
    EXPECT_EQ(rig.Item(0, 0).clipFlg, kUntouched);
    EXPECT_EQ(rig.Item(0, 0).drawnFlg, kUntouched);
}

TEST_F(DrawAreaTest, HiddenLayerIsNotInViewAndItsItemsKeepTheirFlags) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.Layer(0).dspFlg = 0;
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, 0);
    EXPECT_EQ(rig.Item(0, 0).clipFlg, kUntouched);
    EXPECT_EQ(rig.Item(0, 0).drawnFlg, kUntouched);
}

TEST_F(DrawAreaTest, OnlyTheFlagZeroHidesALayerHere) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.Layer(0).dspFlg = 2;
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, 1);
}

TEST_F(DrawAreaTest, BlockOriginMovesItsBox) {
    AddLine("A", {{10, 10}, {20, 20}}, 1000, -2000);
    AddLine("B", {{10, 10}, {20, 20}});
    EXPECT_TRUE(SetDrawArea(rig.store, {1000, 1900, 1200, 2000}));
    EXPECT_EQ(rig.Block(0).inView, 1) << "map y -1990 is view y 1990";
    EXPECT_EQ(rig.Block(1).inView, 0);
}

TEST_F(DrawAreaTest, AreaAndBoxGrowByOneUnitEach) {
    // The area begins at 0 and grows to -1; a line at x grows to x + 1, and right edges lie outside.
    EXPECT_TRUE(Finds(-1, 50));
    EXPECT_FALSE(Finds(-2, 50));
    // It ends at 200 and grows to 201; a line at x grows to x - 1.
    EXPECT_TRUE(Finds(201, 50));
    EXPECT_FALSE(Finds(202, 50));
    EXPECT_TRUE(Finds(50, -1));
    EXPECT_FALSE(Finds(50, -2));
    EXPECT_TRUE(Finds(50, 101));
    EXPECT_FALSE(Finds(50, 102));
}

TEST_F(DrawAreaTest, AreaIsNormalisedFirst) {
    EXPECT_TRUE(Finds(50, 50, {200, 0, 0, -100}));
    EXPECT_FALSE(Finds(250, 50, {200, 0, 0, -100}));
}

TEST_F(DrawAreaTest, BoxesBesideASmallAreaAreNotNearlyEqualToIt) {
    // Rebased, the area is (0, 0, 4, 4), where a side of 0 or below matches its 0 and anything from 4 to 4.04 its 4. A box that
    // ends where the area begins has a right side of 0.
    EXPECT_FALSE(Finds(-2, -1, {0, 0, 2, 2}));
    EXPECT_FALSE(Finds(1, 2, {0, 0, 2, 2}));
    EXPECT_TRUE(Finds(1, -1, {0, 0, 2, 2}));
}

TEST_F(DrawAreaTest, TurnedViewCoversTheTurnedArea) {
    // Back by a quarter turn the vectors (100, 0), (100, 50), (0, 50) go to about (0, 100), (-50, 100), (-50, 0). The factor of
    // the angle is short, so the whole parts are x from -49 to 0 and y from 0 to 100: (-49, 0, 0, 100), and (-50, -1, 1, 101)
    // when grown.
    rig.store.view.Rotate = 90;
    const Rect area{0, 0, 100, 50};
    EXPECT_TRUE(Finds(-50, -50, area));
    EXPECT_FALSE(Finds(-51, -50, area));
    EXPECT_TRUE(Finds(1, -50, area));
    EXPECT_FALSE(Finds(2, -50, area));
    EXPECT_TRUE(Finds(-25, 1, area));
    EXPECT_FALSE(Finds(-25, 2, area));
    EXPECT_TRUE(Finds(-25, -101, area));
    EXPECT_FALSE(Finds(-25, -102, area));
}

TEST_F(DrawAreaTest, TurnedAreaTakesItsExtentsBySizeAndSoCoversTooMuch) {
    // Back by an eighth: (100, 0) to (70.7, 70.7), (100, 50) to (35.4, 106.1), (0, 50) to (-35.4, 35.4). The least y is 35, and
    // 35 counts upward from the corner as if it were -35.
    rig.store.view.Rotate = 45;
    const Rect area{0, 0, 100, 50};
    EXPECT_TRUE(Finds(0, 36, area));
    EXPECT_FALSE(Finds(0, 38, area));
}

TEST_F(DrawAreaTest, TurnedCornerTakesTheWholePartsOfTheOffsets) {
    rig.store.view.Rotate = 360;  // nearly no turn: 360 * 0.01745328 is short of a circle by 4.5e-6
    rig.store.view.OffX = 1000.9;
    rig.store.view.OffY = 0;
    // The corner moves to 1000, the vectors keep their lengths but for the cut, and the least x is that of (0, 50), about 0.
    EXPECT_TRUE(Finds(1000, -10, {0, 0, 100, 50}));
    EXPECT_FALSE(Finds(10, -10, {0, 0, 100, 50}));
    rig.store.view.Rotate = 0;
    EXPECT_TRUE(Finds(10, -10, {0, 0, 100, 50})) << "without a turn the offsets play no part";
}

// --- Against the steps one by one ------------------------------------------------------------

/// The search as its steps are told, box by box, with the near equality asked where boxes do not meet.
class StepByStep {
public:
    StepByStep(const Rect& given, const ViewParams& view) {
        Box r = ToBox(given);
        if (view.Rotate != 0) {
            double px = static_cast<double>(r.left + std::int64_t(view.OffX)),
                   py = static_cast<double>(r.top + std::int64_t(view.OffY));
            RotateView(px, py, -view.Rotate);
            const double w = static_cast<double>(r.right - r.left), h = static_cast<double>(r.bottom - r.top);
            double xs[] = {w, w, 0}, ys[] = {0, h, h};
            std::int64_t minX = 1410065407, minY = 1410065407, maxX = -1410065407, maxY = -1410065407;
            for (int i = 0; i < 3; ++i) {
                RotateView(xs[i], ys[i], -view.Rotate);
                minX = std::min(minX, std::int64_t(xs[i]));
                minY = std::min(minY, std::int64_t(ys[i]));
                maxX = std::max(maxX, std::int64_t(xs[i]));
                maxY = std::max(maxY, std::int64_t(ys[i]));
            }
            r = {std::int64_t(px) - std::abs(minX), std::int64_t(py) - std::abs(minY), std::int64_t(px) + std::abs(maxX),
                 std::int64_t(py) + std::abs(maxY)};
        }
        r = InflateBox(NormalizeBox(r), 1);
        corner_ = r;
        area_ = {0, 0, r.right - r.left, r.bottom - r.top};
    }

    void Mark(const DigBlock& block, int& inView, std::vector<int>& clip) const {
        const Box b = Boxed(block.GX + block.minX, -(block.GY + block.maxY), block.GX + block.maxX, -(block.GY + block.minY));
        Box t;
        if (!IntersectBox(area_, b, t)) {
            inView = RectNearEqual(area_, b) ? 1 : 0;
            if (inView == 0) return;
            t = {std::max(area_.left, b.left), std::min(area_.top, b.top), std::min(area_.right, b.right),
                 std::max(area_.bottom, b.bottom)};
        }
        inView = 1;
        for (const DigDat& dat : block.dats) {
            Box unused;
            const Box d = Boxed(dat.rect.left + block.GX, -(dat.rect.top + block.GY), dat.rect.right + block.GX,
                                -(dat.rect.bottom + block.GY));
            clip.push_back(t == b || IntersectBox(area_, d, unused) || RectNearEqual(area_, d) ? 1 : 0);
        }
    }

private:
    Box Boxed(double left, double top, double right, double bottom) const {
        const Box b =
            InflateBox(NormalizeBox({std::int64_t(left), std::int64_t(top), std::int64_t(right), std::int64_t(bottom)}), 1);
        return {b.left - corner_.left, b.top - corner_.top, b.right - corner_.left, b.bottom - corner_.top};
    }

    Box corner_, area_;
};

TEST_F(DrawAreaTest, MarksWhatTheStepsMarkOnRandomMaps) {
    std::mt19937 random(7);
    int found = 0, missed = 0, wholly = 0;
    for (int round = 0; round < 1500; ++round) {
        // Small numbers now and then, where one percent and the unit of growth decide.
        const int size = round % 3 == 0 ? 6 : 400;
        std::uniform_int_distribution<int> coordinate(-size, size);
        RenderRig fresh;
        fresh.AddLayer("L", kLayLine, 1, coordinate(random), coordinate(random));
        for (int i = 0; i < 5; ++i) {
            fresh.AddItem("L", {{coordinate(random) / 3.0, coordinate(random) / 3.0},
                                {coordinate(random) / 3.0, coordinate(random) / 3.0}});
        }
        if (round % 2 == 0) fresh.store.view.Rotate = coordinate(random);
        fresh.store.view.OffX = coordinate(random) / 7.0;
        const Rect area{coordinate(random), coordinate(random), coordinate(random), coordinate(random)};

        int inView = 0;
        std::vector<int> clip;
        StepByStep(area, fresh.store.view).Mark(fresh.Block(0), inView, clip);
        ASSERT_TRUE(SetDrawArea(fresh.store, area));
        ASSERT_EQ(fresh.Block(0).inView, inView) << round;
        for (std::size_t i = 0; i < clip.size(); ++i) ASSERT_EQ(fresh.Item(0, i).clipFlg, clip[i]) << round << ' ' << i;
        for (const int flag : clip) ++(flag == 1 ? found : missed);
        wholly += inView == 1 && std::count(clip.begin(), clip.end(), 0) == 0 ? 1 : 0;
    }
    EXPECT_GT(found, 500);
    EXPECT_GT(missed, 500);
    EXPECT_GT(wholly, 100);
}

// --- Broken and extreme -------------------------------------------------------------------------------------------------------

TEST_F(DrawAreaTest, BeforeTheFirstInitItAnswersFalse) {
    CDigMem store;
    EXPECT_FALSE(SetDrawArea(store, kArea));
    rig.store.FreeAll();
    EXPECT_FALSE(SetDrawArea(rig.store, kArea));
}

TEST_F(DrawAreaTest, EmptyStoreAnswersTrue) { EXPECT_TRUE(SetDrawArea(rig.store, kArea)); }

TEST_F(DrawAreaTest, NegativeBlockNumberEndsTheSearchAndLaterBlocksKeepTheirFlags) {
    for (const char* code : {"A", "B", "C"}) AddLine(code, {{10, 10}, {20, 20}});
    const std::int32_t first = rig.Slot(0).block, third = rig.Slot(2).block;
    rig.Slot(1).block = -1;
    EXPECT_FALSE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(first).inView, 1);
    EXPECT_EQ(rig.Block(third).inView, kUntouched);
    EXPECT_EQ(rig.Item(third, 0).clipFlg, kUntouched);
}

TEST_F(DrawAreaTest, SlotOutsideOfTheTablesEndsTheSearchAsWell) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.Slot(0).block = 1;
    EXPECT_FALSE(SetDrawArea(rig.store, kArea));
    rig.Slot(0) = {0, -1};
    EXPECT_FALSE(SetDrawArea(rig.store, kArea));
    rig.Slot(0) = {0, 10000};
    EXPECT_FALSE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, kUntouched);
}

TEST_F(DrawAreaTest, EntryOfAnUnusedLayerRecordIsNotInView) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.Slot(0).layer = 5;
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, 0);
}

TEST_F(DrawAreaTest, ExtentsBeyondThirtyTwoBitsSaturate) {
    AddLine("A", {{-1e12, -1e12}, {1e12, 1e12}});
    AddLine("B", {{1e12, 1e12}, {2e12, 2e12}});
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Block(0).inView, 1);
    EXPECT_EQ(rig.Block(1).inView, 0);
    constexpr std::int32_t kMin = -2147483647 - 1, kMax = 2147483647;
    EXPECT_TRUE(SetDrawArea(rig.store, {kMin, kMin, kMax, kMax}));
    EXPECT_EQ(rig.Block(0).inView, 1);
    EXPECT_EQ(rig.Block(1).inView, 1) << "saturated, it lies on the edge of the widest area";
}

TEST_F(DrawAreaTest, HugeOriginsAnswerWithoutOverflow) {
    AddLine("A", {{10, 10}, {20, 20}});
    rig.Block(0).GX = 1e300;
    rig.Block(0).GY = -1e300;
    for (const double rotate : {0.0, 33.0}) {
        rig.store.view.Rotate = rotate;
        EXPECT_TRUE(SetDrawArea(rig.store, kArea));
        EXPECT_EQ(rig.Block(0).inView, 0);
        EXPECT_TRUE(SetDrawArea(rig.store, {-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647}));
        EXPECT_TRUE(SetDrawArea(rig.store, {2147483647, 2147483647, -2147483647 - 1, -2147483647 - 1}));
    }
}

TEST_F(DrawAreaTest, NotANumberReadsAsZero) {
    const double nan = std::nan("");
    AddLine("A", {{500, 500}, {600, 600}});
    DigBlock& block = rig.Block(0);
    block.minX = block.minY = block.maxX = block.maxY = nan;
    EXPECT_TRUE(SetDrawArea(rig.store, {-10, -10, 10, 10}));
    EXPECT_EQ(block.inView, 1);
    EXPECT_TRUE(SetDrawArea(rig.store, {100, 100, 110, 110}));
    EXPECT_EQ(block.inView, 0);
    rig.store.view.Rotate = nan;
    rig.store.view.OffX = nan;
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
}

TEST_F(DrawAreaTest, ItemThatHasNoPointsYetHasABoxTurnedInsideOut) {
    AddLine("A", {{-500, 10}, {20, 20}});
    rig.AddItem("A", {});
    ASSERT_EQ(rig.Item(0, 1).rect, kEmptyItemRect);
    EXPECT_TRUE(SetDrawArea(rig.store, kArea));
    EXPECT_EQ(rig.Item(0, 1).clipFlg, 1) << "normalised it covers all";
}

}  // namespace
}  // namespace orvane
