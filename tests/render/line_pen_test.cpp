#include <gtest/gtest.h>

#include "render/line_polygon.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

struct Made {
    Pen pen;
    std::int32_t kind = 77;
    std::int32_t index = 77;
};

Made Make(const RenderRig& rig, std::int32_t lineType, std::int32_t width = 4, Rgb color = 0x112233) {
    Made made;
    made.pen = MakeLinePen(rig.store, lineType, width, color, made.kind, made.index);
    return made;
}

Pen Dashed(PenStyle style, std::int32_t width, std::initializer_list<std::int32_t> dashes) {
    const std::vector<std::int32_t> list(dashes);
    return ExtCreatePen(style, width, 0x112233, static_cast<std::int32_t>(list.size()), list.data());
}

TEST(MakeLinePenTest, WithoutLineTypesZeroToFourAreTheStandardStyles) {
    RenderRig rig;
    const PenStyle styles[] = {PenStyle::Solid, PenStyle::Dash, PenStyle::Dot, PenStyle::DashDot, PenStyle::DashDotDot};
    for (std::int32_t lineType = 0; lineType < 5; ++lineType) {
        const Made made = Make(rig, lineType);
        EXPECT_EQ(made.pen, CreatePen(styles[lineType], 4, 0x112233));
        EXPECT_EQ(made.kind, 0);
        EXPECT_EQ(made.index, -1);
    }
}

TEST(MakeLinePenTest, WithoutLineTypesNumbersOutsideAreSolid) {
    RenderRig rig;
    EXPECT_EQ(Make(rig, -1).pen, CreatePen(PenStyle::Solid, 4, 0x112233));
    EXPECT_EQ(Make(rig, 5).pen, CreatePen(PenStyle::Solid, 4, 0x112233));
}

TEST(MakeLinePenTest, LineTypeThreeIsSolidWhenALoadedFileLacksIt) {
    RenderRig rig;
    rig.AddLineType(8, 0);
    const Made made = Make(rig, 3);
    EXPECT_EQ(made.pen, CreatePen(PenStyle::Solid, 4, 0x112233));
    EXPECT_EQ(made.kind, 0);
    EXPECT_EQ(made.index, -1);
}

TEST(MakeLinePenTest, LastRecordWithTheNumberWins) {
    RenderRig rig;
    rig.AddLineType(3, 5);
    rig.AddLineType(3, 4);
    rig.AddLineType(9, 7);
    const Made made = Make(rig, 3);
    EXPECT_EQ(made.kind, 4);
    EXPECT_EQ(made.index, 1);
}

TEST(MakeLinePenTest, KindZeroIsAStandardStyleWithTheSameLimits) {
    RenderRig rig;
    rig.AddLineType(2, 0);
    rig.AddLineType(30, 0);
    EXPECT_EQ(Make(rig, 2).pen, CreatePen(PenStyle::Dot, 4, 0x112233));
    EXPECT_EQ(Make(rig, 2).index, 0);
    EXPECT_EQ(Make(rig, 30).pen, CreatePen(PenStyle::Solid, 4, 0x112233));
    EXPECT_EQ(Make(rig, 30).index, 1);
}

TEST(MakeLinePenTest, KindsAboveOneAreSolidPens) {
    RenderRig rig;
    for (std::int32_t kind = 2; kind <= 8; ++kind) {
        rig.AddLineType(100 + kind, kind);
        const Made made = Make(rig, 100 + kind);
        EXPECT_EQ(made.pen, CreatePen(PenStyle::Solid, 4, 0x112233));
        EXPECT_EQ(made.kind, kind);
        EXPECT_EQ(made.index, kind - 2);
    }
}

TEST(MakeLinePenTest, DashesOnAThinLineAreACosmeticPenOfWidthOne) {
    RenderRig rig;
    rig.AddLineType(7, 1, {5, 2});
    for (const std::int32_t width : {1, 0, -3}) EXPECT_EQ(Make(rig, 7, width).pen, Dashed(PenStyle::UserStyle, 1, {5, 2}));
    EXPECT_EQ(Make(rig, 7).kind, 1);
}

TEST(MakeLinePenTest, DashesOnAWideLineAreAGeometricPenWithFlatEnds) {
    RenderRig rig;
    rig.AddLineType(7, 1, {5, 2});
    EXPECT_EQ(Make(rig, 7, 2).pen, Dashed(PenStyle::GeometricFlatUser, 2, {5, 2}));
    EXPECT_EQ(static_cast<std::uint32_t>(Make(rig, 7, 2).pen.style), 0x10207u);
}

TEST(MakeLinePenTest, DashesGrowWithTheWholePartOfTheDpiRatio) {
    RenderRig rig;
    rig.AddLineType(7, 1, {5, 2});
    rig.store.view.DpiRatio = 3.9;
    EXPECT_EQ(Make(rig, 7, 2).pen, Dashed(PenStyle::GeometricFlatUser, 2, {15, 6}));
}

TEST(MakeLinePenTest, OnlyTenDashesAreTakenOverButTheCountIsTheRecordsOwn) {
    RenderRig rig;
    rig.AddLineType(7, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    EXPECT_EQ(Make(rig, 7).pen, Dashed(PenStyle::GeometricFlatUser, 4, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 0}));
}

TEST(MakeLinePenTest, CountBeyondTheListReadsZeros) {
    RenderRig rig;
    rig.AddLineType(7, 1, {4, 1}).ltCnt = 5;
    EXPECT_EQ(Make(rig, 7).pen, Dashed(PenStyle::GeometricFlatUser, 4, {4, 1, 0, 0, 0}));
}

TEST(MakeLinePenTest, CountBeyondSixteenOrBelowOneGivesTheEmptyPen) {
    RenderRig rig;
    LineTypeDef& def = rig.AddLineType(7, 1, {4, 1});
    for (const std::int32_t count : {17, 2147483647, 0, -1, -2147483647 - 1}) {
        def.ltCnt = count;
        EXPECT_TRUE(Make(rig, 7, 4).pen.empty) << count;
        EXPECT_TRUE(Make(rig, 7, 1).pen.empty) << count;
    }
}

TEST(MakeLinePenTest, DashesThatNoPenTakesGiveTheEmptyPen) {
    RenderRig rig;
    rig.AddLineType(7, 1, {0, 0});
    rig.AddLineType(8, 1, {3, -1});
    EXPECT_TRUE(Make(rig, 7).pen.empty);
    EXPECT_TRUE(Make(rig, 8).pen.empty);
    EXPECT_EQ(Make(rig, 8).kind, 1);
}

TEST(MakeLinePenTest, HugeDashesAndFactorsSaturate) {
    RenderRig rig;
    rig.AddLineType(7, 1, {2147483647, 1});
    rig.store.view.DpiRatio = 1e12;
    EXPECT_EQ(Make(rig, 7).pen, Dashed(PenStyle::GeometricFlatUser, 4, {2147483647, 2147483647}));
}

}  // namespace
}  // namespace orvane
