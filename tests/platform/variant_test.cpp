#include "platform/variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/variant_array.h"

namespace orvane {
namespace {

constexpr std::int32_t kKept = -987654;

// The converted value, or kKept when there is none; a refused conversion must have left the value alone.
std::int32_t I4(const Variant& v) {
    std::int32_t out = kKept;
    const bool converted = v.ToI4(out);
    EXPECT_EQ(converted, out != kKept);
    return out;
}

std::string Bytes(const Variant& v) {
    std::string out;
    EXPECT_TRUE(v.ToBytes(out));
    return out;
}

TEST(VariantTest, EachTypeHasItsMark) {
    EXPECT_EQ(Variant().Type(), Vt::Empty);
    EXPECT_EQ(Variant(std::int16_t{1}).Type(), Vt::I2);
    EXPECT_EQ(Variant(std::int32_t{1}).Type(), Vt::I4);
    EXPECT_EQ(Variant(1.0f).Type(), Vt::R4);
    EXPECT_EQ(Variant(1.0).Type(), Vt::R8);
    EXPECT_EQ(Variant(true).Type(), Vt::Bool);
    EXPECT_EQ(Variant("a").Type(), Vt::Bstr);
}

TEST(VariantTest, AHalfRoundsToTheEvenNeighbour) {
    EXPECT_EQ(I4(Variant(0.5)), 0);
    EXPECT_EQ(I4(Variant(1.5)), 2);
    EXPECT_EQ(I4(Variant(2.5)), 2);
    EXPECT_EQ(I4(Variant(-0.5)), 0);
    EXPECT_EQ(I4(Variant(-1.5)), -2);
    EXPECT_EQ(I4(Variant(-2.5)), -2);
    EXPECT_EQ(I4(Variant(2.5f)), 2);
    EXPECT_EQ(I4(Variant("3.5")), 4);
    EXPECT_EQ(I4(Variant(2.4999)), 2);
    EXPECT_EQ(I4(Variant(2.5001)), 3);
}

TEST(VariantTest, AValueThatDoesNotFitIsRefused) {
    EXPECT_EQ(I4(Variant(2147483647.4)), 2147483647);
    EXPECT_EQ(I4(Variant(2147483647.5)), kKept);
    EXPECT_EQ(I4(Variant(-2147483648.5)), INT32_MIN);
    EXPECT_EQ(I4(Variant(-2147483648.6)), kKept);
    EXPECT_EQ(I4(Variant(1e300)), kKept);
    EXPECT_EQ(I4(Variant(std::nan(""))), kKept);
    EXPECT_EQ(I4(Variant(std::numeric_limits<double>::infinity())), kKept);

    std::int16_t small = 3;
    EXPECT_FALSE(Variant(std::int32_t{32768}).ToI2(small));
    EXPECT_FALSE(Variant(32767.5).ToI2(small));
    EXPECT_EQ(small, 3);
    EXPECT_TRUE(Variant(std::int32_t{-32768}).ToI2(small));
    EXPECT_EQ(small, -32768);
}

TEST(VariantTest, EveryInteger32SurvivesTheWayThroughADouble) {
    for (const std::int32_t v : {INT32_MIN, INT32_MIN + 1, -1, 0, 1, INT32_MAX - 1, INT32_MAX}) EXPECT_EQ(I4(Variant(v)), v);
}

TEST(VariantTest, TrueIsMinusOne) {
    EXPECT_EQ(I4(Variant(true)), -1);
    EXPECT_EQ(I4(Variant(false)), 0);
    double real = 0;
    EXPECT_TRUE(Variant(true).ToR8(real));
    EXPECT_EQ(real, -1.0);
    EXPECT_EQ(Bytes(Variant(true)), "-1");
    EXPECT_EQ(Bytes(Variant(false)), "0");
}

TEST(VariantTest, AnyNumberThatIsNotZeroIsTrue) {
    const auto truth = [](const Variant& v) {
        bool out = false;
        EXPECT_TRUE(v.ToBool(out));
        return out;
    };
    EXPECT_TRUE(truth(Variant(std::int32_t{1})));
    EXPECT_TRUE(truth(Variant(std::int16_t{-1})));
    EXPECT_TRUE(truth(Variant(0.25)));
    EXPECT_FALSE(truth(Variant(-0.0)));
    EXPECT_FALSE(truth(Variant()));
    EXPECT_TRUE(truth(Variant("TRUE")));
    EXPECT_FALSE(truth(Variant("False")));
    EXPECT_TRUE(truth(Variant("-1")));
    EXPECT_FALSE(truth(Variant("0")));
    bool kept = true;
    EXPECT_FALSE(Variant("yes").ToBool(kept));
    EXPECT_FALSE(Variant("").ToBool(kept));
    EXPECT_TRUE(kept);
}

TEST(VariantTest, ATextIsANumberOnlyAsAWhole) {
    EXPECT_EQ(I4(Variant("42")), 42);
    EXPECT_EQ(I4(Variant(" -42 ")), -42);
    EXPECT_EQ(I4(Variant("1e3")), 1000);
    for (const char* text : {"", "4 2", "42x", "True", "4294967296"}) EXPECT_EQ(I4(Variant(text)), kKept) << text;
}

TEST(VariantTest, AnEmptyValueIsZeroAndTheEmptyText) {
    EXPECT_EQ(I4(Variant()), 0);
    EXPECT_EQ(Bytes(Variant()), "");
    double real = 5;
    EXPECT_TRUE(Variant().ToR8(real));
    EXPECT_EQ(real, 0.0);
}

TEST(VariantTest, ADoubleBeyondAFloatIsRefused) {
    float real = 1.5f;
    EXPECT_FALSE(Variant(1e39).ToR4(real));
    EXPECT_FALSE(Variant("1e39").ToR4(real));
    EXPECT_EQ(real, 1.5f);
    EXPECT_TRUE(Variant(0.1).ToR4(real));
    EXPECT_EQ(real, 0.1f);
    EXPECT_TRUE(Variant(std::numeric_limits<float>::infinity()).ToR4(real));
    EXPECT_EQ(real, std::numeric_limits<float>::infinity());
}

TEST(VariantTest, AFloatWidensToItsExactValue) {
    double real = 0;
    EXPECT_TRUE(Variant(0.1f).ToR8(real));
    EXPECT_EQ(real, static_cast<double>(0.1f));
}

TEST(VariantTest, NumbersBecomeTheirShortestTexts) {
    EXPECT_EQ(Bytes(Variant(std::int16_t{-7})), "-7");
    EXPECT_EQ(Bytes(Variant(std::int32_t{2000000000})), "2000000000");
    EXPECT_EQ(Bytes(Variant(0.1)), "0.1");
    EXPECT_EQ(Bytes(Variant(0.1f)), "0.1");
    EXPECT_EQ(Bytes(Variant(100000.0)), "100000");
}

TEST(VariantTest, ATextPassesAsItsBytesHalvesOfCharactersIncluded) {
    const std::string bytes("\x82\xA0\x82\0x", 5);
    EXPECT_EQ(Bytes(Variant(bytes)), bytes);
}

TEST(VariantTest, AnArrayConvertsToNoScalar) {
    const Variant array = MakeArray(std::vector<std::int32_t>{1});
    EXPECT_EQ(I4(array), kKept);
    std::string text = "kept";
    EXPECT_FALSE(array.ToBytes(text));
    EXPECT_EQ(text, "kept");
}

TEST(VariantTest, ANullArrayIsAnEmptyValueWithoutConversions) {
    const Variant none{std::shared_ptr<const SafeArray>()};
    EXPECT_EQ(none.Type(), Vt::Empty);
    EXPECT_FALSE(none.IsArray());
    EXPECT_EQ(none.Array(), nullptr);
    EXPECT_EQ(I4(none), kKept);
}

TEST(MakeArrayTest, EveryElementTypeHasItsArrayMark) {
    const auto mark = [](const Variant& v) { return static_cast<std::uint16_t>(v.Type()); };
    EXPECT_EQ(mark(MakeArray(std::vector<std::int16_t>{1})), 0x2002);
    EXPECT_EQ(mark(MakeArray(std::vector<std::int32_t>{1})), 0x2003);
    EXPECT_EQ(mark(MakeArray(std::vector<float>{1})), 0x2004);
    EXPECT_EQ(mark(MakeArray(std::vector<double>{1})), 0x2005);
    EXPECT_EQ(mark(MakeArray(std::vector<std::string>{"a"})), 0x2008);
    EXPECT_EQ(mark(MakeArray(std::vector<bool>{true})), 0x200B);
    EXPECT_EQ(mark(MakeArray(std::vector<Variant>{Variant(1.0)})), 0x200C);
}

TEST(MakeArrayTest, OneDimensionStartsAtItsLowerBound) {
    const Variant v = MakeArray(std::vector<double>{1, 2, 3}, 5);
    ASSERT_NE(v.Array(), nullptr);
    EXPECT_EQ(v.Array()->bounds, (std::vector<ArrayBound>{{5, 3}}));
    EXPECT_EQ(v.Array()->Size(), 3u);
}

TEST(MakeArrayTest, BoundsMustMakeUpTheValuesExactly) {
    const std::vector<double> six(6);
    EXPECT_TRUE(MakeArray(six, {{0, 2}, {1, 3}}).IsArray());
    EXPECT_TRUE(MakeArray(six, {{0, 2}, {1, 4}}).IsEmpty());
    EXPECT_TRUE(MakeArray(six, {{0, -2}, {1, -3}}).IsEmpty());
    EXPECT_TRUE(MakeArray(six, {{0, INT64_MAX}, {0, INT64_MAX}}).IsEmpty());
    EXPECT_TRUE(MakeArray(six, std::vector<ArrayBound>{}).IsEmpty());
    EXPECT_TRUE(MakeArray(std::vector<double>{}, {{0, 3}, {0, 0}}).IsArray());
}

TEST(MakeArrayTest, CopiesOfAValueShareOneArray) {
    const Variant v = MakeArray(std::vector<double>{1});
    const Variant copy = v;
    EXPECT_EQ(copy.Array(), v.Array());
}

TEST(GetElementTest, GivesEachElementAsAValueOfTheArraysType) {
    Variant out;
    ASSERT_TRUE(GetElement(*MakeArray(std::vector<bool>{false, true}).Array(), 1, out));
    EXPECT_EQ(out.Type(), Vt::Bool);
    EXPECT_EQ(I4(out), -1);
    ASSERT_TRUE(GetElement(*MakeArray(std::vector<Variant>{Variant("12")}).Array(), 0, out));
    EXPECT_EQ(out.Type(), Vt::Bstr);
    ASSERT_TRUE(GetElement(*MakeArray(std::vector<std::int16_t>{9}).Array(), 0, out));
    EXPECT_EQ(out.Type(), Vt::I2);
}

TEST(GetElementTest, BeyondTheEndThereIsNone) {
    Variant out("kept");
    EXPECT_FALSE(GetElement(*MakeArray(std::vector<double>{1}).Array(), 1, out));
    EXPECT_EQ(Bytes(out), "kept");
}

}  // namespace
}  // namespace orvane
