// The parser of the rows: what it reads, and that it reports what it cannot read.
#include <gtest/gtest.h>

#include "control/automation/table.h"

namespace orvane {
namespace {

constexpr EnumValueRow kValues[] = {{"One", 1}};
constexpr EnumRow kEnums[] = {{"T_Kind", "A kind.", kValues}};

struct Parsed {
    explicit Parsed(std::string_view text) { ok = ParseSignature(text, kEnums, member, problem); }
    bool ok = false;
    Member member;
    std::string problem;
};

TEST(SignatureParser, ReadsEveryTypeWithItsKindAndKeepsItsName) {
    const Parsed p(
        "OLE_COLOR (VARIANT_BOOL a, short b, long c, double d, BSTR e, OLE_COLOR f, OLE_HANDLE g, T_Kind h, VARIANT i)");
    ASSERT_TRUE(p.ok) << p.problem;
    EXPECT_EQ(p.member.result.kind, ValueKind::I4);
    EXPECT_EQ(p.member.result.name, "OLE_COLOR");
    const ValueKind kinds[] = {ValueKind::Bool, ValueKind::I2, ValueKind::I4, ValueKind::R8,     ValueKind::Bstr,
                               ValueKind::I4,   ValueKind::I4, ValueKind::I4, ValueKind::Variant};
    ASSERT_EQ(p.member.args.size(), std::size(kinds));
    for (std::size_t i = 0; i < std::size(kinds); ++i) {
        EXPECT_EQ(p.member.args[i].type.kind, kinds[i]) << i;
        EXPECT_EQ(p.member.args[i].direction, Direction::In) << i;
        EXPECT_FALSE(p.member.args[i].pointer) << i;
    }
    ASSERT_NE(p.member.args[7].type.enumeration, nullptr);
    EXPECT_STREQ(p.member.args[7].type.enumeration->name, "T_Kind");
    EXPECT_EQ(p.member.args[7].type.name, "T_Kind");
}

TEST(SignatureParser, ReadsDirectionsAndLengthRules) {
    const Parsed p(
        "void (BSTR code, long meshNo, long ID, out double* px[points], inout long* m, in double* q[n], long n, out BSTR* "
        "s[active], "
        "out long* t[linetypes], VARIANT* v, out VARIANT* w)");
    ASSERT_TRUE(p.ok) << p.problem;
    const std::vector<Arg>& a = p.member.args;
    EXPECT_EQ(a[3].direction, Direction::Out);
    EXPECT_EQ(a[3].length, LengthRule::Points);
    EXPECT_EQ(a[4].direction, Direction::InOut);
    EXPECT_EQ(a[4].length, LengthRule::One);
    EXPECT_FALSE(a[4].IsBuffer());
    EXPECT_EQ(a[5].direction, Direction::In);
    EXPECT_EQ(a[5].length, LengthRule::CountArg);
    EXPECT_EQ(a[5].countArg, 6u);
    EXPECT_EQ(a[7].length, LengthRule::Active);
    EXPECT_EQ(a[8].length, LengthRule::LineTypes);
    EXPECT_EQ(a[9].direction, Direction::In);
    EXPECT_TRUE(a[9].pointer);
    EXPECT_EQ(a[10].direction, Direction::Out);
}

TEST(SignatureParser, ReadsTheCutOfATextIn) {
    const Parsed p("void (BSTR code[50], BSTR whole)");
    ASSERT_TRUE(p.ok) << p.problem;
    EXPECT_EQ(p.member.args[0].cut_bytes, 50u);
    EXPECT_FALSE(p.member.args[0].IsBuffer());
    EXPECT_EQ(p.member.args[1].cut_bytes, 0u);
}

TEST(SignatureParser, ReadsAnEventWithoutAResult) {
    Member event;
    event.kind = MemberKind::Event;
    std::string problem;
    ASSERT_TRUE(ParseSignature("(short Button, OLE_XPOS_PIXELS x, OLE_YPOS_PIXELS y)", kEnums, event, problem)) << problem;
    EXPECT_EQ(event.result.kind, ValueKind::None);
    EXPECT_EQ(event.args[1].type.kind, ValueKind::I4);
    EXPECT_EQ(event.args[2].type.name, "OLE_YPOS_PIXELS");
}

TEST(SignatureParser, ReportsEveryMalformedSignatureInsteadOfTakingIt) {
    for (const char* text : {
             "",
             "long",
             "long (",
             "long (long a",
             "long (long a,",
             "long (long a,)",
             "long (long)",
             "long (a)",
             "long (void a)",
             "long (int a)",
             "lang (long a)",
             "long (T_Unknown a)",
             "long (long a) x",
             "long (long a b)",
             "long (out long a)",
             "long (long* a)",
             "long (in out long* a)",
             "long (long a, double a)",
             "long (out double* p[points])",
             "long (long code, long meshNo, long ID, out double* p[points])",
             "long (out double* p[n])",
             "long (out double* p[n], double n)",
             "long (out double* p[n], out long* n)",
             "long (out double* p[])",
             "long (out double* p[points)",
             "long (out VARIANT* p[active])",
             "long (long a[3])",
             "long (BSTR a[0])",
             "long (BSTR a[x])",
             "long (BSTR a[99999999999999999999999])",
             "long (long a1, long a2, long a3, long a4, long a5, long a6, long a7, long a8, long a9, long a10, long a11, long "
             "a12, "
             "long a13, long a14, long a15, long a16, long a17)",
         }) {
        const Parsed p(text);
        EXPECT_FALSE(p.ok) << text;
        EXPECT_FALSE(p.problem.empty()) << text;
    }
}

TEST(SignatureParser, TakesAnEnumerationThatIsKeptInSixteenBits) {
    ValueType type;
    ASSERT_TRUE(ParseType("T_Kind short", kEnums, type));
    EXPECT_EQ(type.kind, ValueKind::I2);
    EXPECT_EQ(type.name, "T_Kind");
    EXPECT_FALSE(ParseType("long short", kEnums, type));
    EXPECT_FALSE(ParseType("", kEnums, type));
}

TEST(FailureParser, TakesOnlyWhatTheResultTypeCanHold) {
    const auto parse = [](const char* type, const char* text, Variant& value) {
        ValueType result;
        return ParseType(type, kEnums, result) && ParseFailure(text, result, value);
    };
    Variant value;
    std::int32_t number = 7;
    EXPECT_TRUE(parse("long", "-1", value));
    EXPECT_TRUE(value.ToI4(number) && number == -1);
    EXPECT_EQ(value.Type(), Vt::I4);
    EXPECT_TRUE(parse("short", "0", value));
    EXPECT_EQ(value.Type(), Vt::I2);
    EXPECT_TRUE(parse("double", "0", value));
    EXPECT_EQ(value.Type(), Vt::R8);
    EXPECT_TRUE(parse("VARIANT_BOOL", "true", value));
    EXPECT_EQ(value.Type(), Vt::Bool);
    EXPECT_TRUE(parse("BSTR", "empty", value));
    EXPECT_EQ(value.Type(), Vt::Bstr);
    EXPECT_TRUE(parse("void", "", value));
    EXPECT_TRUE(value.IsEmpty());
    EXPECT_FALSE(parse("void", "0", value));
    EXPECT_FALSE(parse("VARIANT_BOOL", "0", value));
    EXPECT_FALSE(parse("long", "", value));
    EXPECT_FALSE(parse("long", "false", value));
    EXPECT_FALSE(parse("long", "99999999999", value));
    EXPECT_FALSE(parse("short", "40000", value));
    EXPECT_FALSE(parse("BSTR", "", value));
    EXPECT_FALSE(parse("VARIANT", "empty", value));
}

}  // namespace
}  // namespace orvane
