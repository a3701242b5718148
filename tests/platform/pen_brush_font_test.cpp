#include "platform/pen_brush_font.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvane {
namespace {

Pen Dashed(PenStyle style, std::int32_t width_px, const std::vector<std::int32_t>& dashes) {
    return ExtCreatePen(style, width_px, 0x00FF00, static_cast<std::int32_t>(dashes.size()), dashes.data());
}

TEST(PenTest, AContextsFirstPenIsBlackSolidAndOnePixelWide) {
    EXPECT_EQ(Pen{}, CreatePen(PenStyle::Solid, 1, 0));
    EXPECT_FALSE(Pen{}.empty);
}

TEST(PenTest, KeepsStyleWidthAndColour) {
    const Pen pen = CreatePen(PenStyle::DashDot, 3, 0x123456);
    EXPECT_EQ(pen.style, PenStyle::DashDot);
    EXPECT_EQ(pen.width_px, 3);
    EXPECT_EQ(pen.color, 0x123456u);
    EXPECT_EQ(pen.dashCnt, 0);
}

TEST(PenTest, ANegativeWidthCountsByItsAbsoluteValue) {
    EXPECT_EQ(CreatePen(PenStyle::Solid, -4, 0).width_px, 4);
    EXPECT_EQ(CreatePen(PenStyle::Solid, INT32_MIN, 0).width_px, INT32_MAX);
}

TEST(PenTest, AWidthOfZeroStaysZeroInTheValue) { EXPECT_EQ(CreatePen(PenStyle::Solid, 0, 0).width_px, 0); }

TEST(PenTest, AStyleThatIsNoStandardOneIsSolid) {
    EXPECT_EQ(CreatePen(PenStyle::UserStyle, 1, 0).style, PenStyle::Solid);
    EXPECT_EQ(CreatePen(static_cast<PenStyle>(99), 1, 0).style, PenStyle::Solid);
}

TEST(PenTest, AUserStyleKeepsItsLengths) {
    const Pen pen = Dashed(PenStyle::GeometricFlatUser, 5, {8, 2, 1, 2});
    EXPECT_FALSE(pen.empty);
    EXPECT_EQ(pen.style, PenStyle::GeometricFlatUser);
    EXPECT_EQ(pen.width_px, 5);
    ASSERT_EQ(pen.dashCnt, 4);
    EXPECT_EQ(pen.dashes[0], 8);
    EXPECT_EQ(pen.dashes[3], 2);
    EXPECT_EQ(pen.dashes[4], 0);
}

TEST(PenTest, OneToSixteenLengthsAreTakenByBothUserStyles) {
    for (const PenStyle style : {PenStyle::UserStyle, PenStyle::GeometricFlatUser}) {
        EXPECT_TRUE(Dashed(style, 1, {}).empty);
        EXPECT_FALSE(Dashed(style, 1, {3}).empty);
        EXPECT_FALSE(Dashed(style, 1, std::vector<std::int32_t>(16, 3)).empty);
        EXPECT_TRUE(Dashed(style, 1, std::vector<std::int32_t>(17, 3)).empty);
    }
}

TEST(PenTest, ANegativeCountOrAMissingListIsRefused) {
    const std::int32_t length = 1;
    EXPECT_TRUE(ExtCreatePen(PenStyle::UserStyle, 1, 0, -1, &length).empty);
    EXPECT_TRUE(ExtCreatePen(PenStyle::UserStyle, 1, 0, 1, nullptr).empty);
}

TEST(PenTest, NegativeLengthsAndListsOfZerosAreRefused) {
    EXPECT_TRUE(Dashed(PenStyle::GeometricFlatUser, 2, {3, -1}).empty);
    EXPECT_TRUE(Dashed(PenStyle::GeometricFlatUser, 2, {0, 0}).empty);
    EXPECT_FALSE(Dashed(PenStyle::GeometricFlatUser, 2, {0, 1}).empty);
}

TEST(PenTest, ACosmeticUserStyleIsOnePixelWideOrRefused) {
    EXPECT_FALSE(Dashed(PenStyle::UserStyle, 1, {3, 1}).empty);
    EXPECT_TRUE(Dashed(PenStyle::UserStyle, 2, {3, 1}).empty);
    EXPECT_TRUE(Dashed(PenStyle::UserStyle, 0, {3, 1}).empty);
}

TEST(PenTest, AStandardStyleTakesNoLengths) { EXPECT_TRUE(Dashed(PenStyle::Dash, 1, {3, 1}).empty); }

TEST(PenTest, TwoPensAreEqualWhenAllOfThemIs) {
    EXPECT_EQ(Dashed(PenStyle::UserStyle, 1, {3, 1}), Dashed(PenStyle::UserStyle, 1, {3, 1}));
    EXPECT_NE(Dashed(PenStyle::UserStyle, 1, {3, 1}), Dashed(PenStyle::UserStyle, 1, {3, 2}));
    EXPECT_NE(CreatePen(PenStyle::Solid, 1, 0), CreatePen(PenStyle::Solid, 1, 1));
}

TEST(BrushTest, EachKindIsAValueOfItsOwn) {
    EXPECT_EQ(Brush{}, WhiteBrush());
    EXPECT_EQ(WhiteBrush(), CreateSolidBrush(0xFFFFFF));
    EXPECT_NE(CreateSolidBrush(0), CreateSolidBrush(1));
    EXPECT_NE(CreateHatchBrush(Hatch::Cross, 0), CreateHatchBrush(Hatch::DiagCross, 0));
    EXPECT_NE(CreateHatchBrush(Hatch::Horizontal, 0), CreateSolidBrush(0));
    EXPECT_EQ(NullBrush().style, BrushStyle::Null);
}

TEST(FaceNameTest, KeepsTheBytesAndFillsWithZeros) {
    const std::array<char, 32> face = FaceName("MS");
    EXPECT_EQ(face[0], 'M');
    EXPECT_EQ(face[1], 'S');
    for (std::size_t i = 2; i < face.size(); ++i) EXPECT_EQ(face[i], 0) << i;
}

TEST(FaceNameTest, CutsAfter32BytesWithNoZeroBehindThem) {
    const std::string name(31, 'x');
    const std::array<char, 32> face = FaceName(name + "\x95\x57\x8F");
    EXPECT_EQ(face[30], 'x');
    EXPECT_EQ(face[31], '\x95') << "half of a character is left";
}

TEST(FaceNameTest, DefaultFaceIsFourCharactersOfTheCodePage) { EXPECT_EQ(kDefaultFace.size(), 8u); }

}  // namespace
}  // namespace orvane
